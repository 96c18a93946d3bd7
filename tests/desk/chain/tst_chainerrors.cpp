#include "desk/chain/chaintext.h"
#include "support/testmain.h"

/// Files that must be refused.
class tst_chainerrors : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rows_data();
    void rows();
    void headers_data();
    void headers();
    void unknownColumns();
    void manyUnknownColumns();
    void tooManyOptions();
};

void tst_chainerrors::rows_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QString>("expected");

    const QByteArray plain = "type,strike,close,volume";
    const auto row = [](const char* tag, const QByteArray& header, const char* text, const char* expected) {
        QTest::newRow(tag) << header << QByteArray(text) << QString::fromUtf8(expected);
    };
    row("too few cells", plain, "C,50,1", "3 cells instead of 4");
    row("too many cells", plain, "C,50,1,2,3", "5 cells instead of 4");
    row("one cell", plain, "C", "1 cells instead of 4");
    row("decimal comma", plain, "C,50,92,85,1", "5 cells instead of 4");
    row("strike of text", plain, "C,abc,1,2", "\"abc\" in column \"strike\" is no number");
    row("no strike", plain, "C,,1,2", "\"\" in column \"strike\" is no positive strike");
    row("strike of zero", plain, "C,0,1,2", "\"0\" in column \"strike\" is no positive strike");
    row("negative strike", plain, "C,-5,1,2", "\"-5\" in column \"strike\" is no positive strike");
    row("strike in percent", plain, "C,50%,1,2", "\"50%\" in column \"strike\" is no number");
    row("strike too large", plain, "C,1e15,1,2", "\"1e15\" in column \"strike\" is no number");
    row("negative price", plain, "C,50,-0.01,2", "\"-0.01\" in column \"close\" is negative");
    row("price of text", plain, "C,50,1x,2", "\"1x\" in column \"close\" is no number");
    row("price with currency", plain, "C,50,$1,2", "\"$1\" in column \"close\" is no number");
    row("infinite price", plain, "C,50,inf,2", "\"inf\" in column \"close\" is no number");
    row("negative volume", plain, "C,50,1,-2", "\"-2\" in column \"volume\" is negative");
    row("broken volume", plain, "C,50,1,2.5", "\"2.5\" in column \"volume\" is no whole number");
    row("unknown type", plain, "X,50,1,2",
        "\"X\" in column \"type\" is no option type, such as C, P, call or put");
    row("no type", plain, ",50,1,2", "\"\" in column \"type\" is no option type, such as C, P, call or put");
    row("footer that is none", plain, "truncated", "1 cells instead of 4");
    row("open quote", plain, "C,50,\"1,2", "a quote is not closed");
    row("negative volatility", "type,strike,iv", "C,50,-0.2", "\"-0.2\" in column \"iv\" is negative");
    row("negative forward", "type,strike,close,forward", "C,50,1,-3",
        "\"-3\" in column \"forward\" is negative");
    row("expiry of text", "type,strike,close,expiry", "C,50,1,soon",
        "\"soon\" in column \"expiry\" is no date, or not in the order of day and month before it");
    row("no expiry", "type,strike,close,expiry", "C,50,1,",
        "\"\" in column \"expiry\" is no date, or not in the order of day and month before it");
    row("expiry not in the calendar", "type,strike,close,expiry", "C,50,1,20120230",
        "\"20120230\" in column \"expiry\" is no date, or not in the order of day and month before it");
    row("day of text", "type,strike,close,date", "C,50,1,today",
        "\"today\" in column \"date\" is no date, or not in the order of day and month before it");
    row("another day", "type,strike,close,date", "C,50,1,2012-10-02",
        "prices of 2012-10-02 after prices of 2012-03-16: a chain is of one day");
    row("other price", plain, "P,70,9,2", "the put of strike 70 has other values here than in line 2");
    row("other volume", plain, "p,70.0,1,3", "the put of strike 70 has other values here than in line 2");
    row("missing volume", plain, "P,70,1,", "the put of strike 70 has other values here than in line 2");
    row("put's price", "strike,call,put", "50,1,x", "\"x\" in column \"put\" is no number");
    row("option code", "symbol,strike,close", "AMB,50,1",
        "no column of the option's type (option_type, put_call, call_put, put_or_call) and no columns of "
        "calls "
        "and puts (call_..., put_...)");
}

void tst_chainerrors::rows()
{
    QFETCH(QByteArray, header);
    QFETCH(QByteArray, row);
    QFETCH(QString, expected);

    // A good row before the broken one and another after it.
    const QByteArrayList names = header.split(',');
    QByteArrayList good;
    for (const QByteArray& name : names) {
        const bool isDate = name == "date" || name == "expiry";
        good.append(name == "type" ? "P"
                : name == "strike" ? "70"
                : name == "symbol" ? "AMB231215C00070000"
                : isDate           ? "2012-03-16"
                : name == "volume" ? "2"
                : name == "iv"     ? "0.2"
                                   : "1");
    }
    QByteArrayList other = good;
    other[names.indexOf("strike")] = "80";
    const QByteArray text = header + '\n' + good.join(',') + '\n' + row + '\n' + other.join(',') + '\n';
    const int line = names.first() == "symbol" ? 1 : 3;
    QCOMPARE(ChainText::errorOf(text), QStringLiteral("%1: %2").arg(line).arg(expected));
}

void tst_chainerrors::headers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("nothing") << QByteArray() << "0: the file is empty";
    QTest::newRow("blank lines") << QByteArray("\n  \n\n") << "0: the file is empty";
    QTest::newRow("mark only") << QByteArray("\xef\xbb\xbf") << "0: the file is empty";
    QTest::newRow("header only") << QByteArray("type,strike,close\n") << "0: no options below the header";
    QTest::newRow("blank rows only") << QByteArray("type,strike,close\n,,\n\n")
                                     << "0: no options below the header";
    QTest::newRow("strikes without options")
        << QByteArray("strike,call,put\n50,,\n60,-,-\n") << "0: no options below the header";
    QTest::newRow("the same name twice")
        << QByteArray("type,strike,bid,bid\nC,50,1,2\n") << "1: the column \"bid\" occurs twice";
    QTest::newRow("two strikes") << QByteArray("\ntype,strike,Strike,bid\nC,50,60,1\n")
                                 << "2: the column \"Strike\" occurs twice";
    QTest::newRow("NUL in the rows") << QByteArray("type,strike,bid\nC,50,1\nC,6\0,1\n", 31)
                                     << "3: not a text file";
}

void tst_chainerrors::headers()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, expected);

    QCOMPARE(ChainText::errorOf(text), expected);
}

void tst_chainerrors::unknownColumns()
{
    const QString lookedFor = "no header of an option chain: looked for a strike (strike, strike_price, ";
    const QString nameless = ChainText::errorOf("C,50.00,42.85\nP,60.00,0.10\n");
    QVERIFY2(nameless.startsWith("1: " + lookedFor), qPrintable(nameless));
    QVERIFY2(nameless.endsWith("; found \"C\", \"50.00\", \"42.85\""), qPrintable(nameless));

    // The line that comes closest is named.
    const QString close = ChainText::errorOf("Options of today\nstrike;delta;\xc3\xa4nderung\n50;1;2\n");
    QVERIFY2(close.startsWith("2: " + lookedFor), qPrintable(close));
    QVERIFY2(close.endsWith(QStringLiteral("; found \"strike\", \"delta\", \"\u00e4nderung\"")),
        qPrintable(close));
    for (const char* name : {"option_type", "call_...", "settle", "bid", "last", "implied_volatility"})
        QVERIFY2(close.contains(QLatin1String(name)), name);

    for (const char* header :
        {"type,strike,volume", "strike,close", "type,close", "strike,call", "call,put,bid"})
        QVERIFY2(ChainText::errorOf(QByteArray(header) + "\n1,2,3\n").contains(lookedFor), header);
}

void tst_chainerrors::manyUnknownColumns()
{
    const QString error
        = ChainText::errorOf(QByteArray("some long name of a column that is not known here,").repeated(500));
    QVERIFY2(error.size() < 2000, qPrintable(error));
    QVERIFY2(error.endsWith("and 481 more"), qPrintable(error));
    QVERIFY(ChainText::errorOf(QByteArray(60000, ',')).startsWith("1: no header of an option chain"));
}

void tst_chainerrors::tooManyOptions()
{
    QByteArray text = "strike,call,put\n";
    for (int strike = 1; strike <= 100001; ++strike)
        text += QByteArray::number(strike) + ",1,1\n";
    QCOMPARE(ChainText::errorOf(text), QStringLiteral("100002: more than 200000 options"));
}

PLOT2D_TEST_MAIN(tst_chainerrors)
#include "tst_chainerrors.moc"
