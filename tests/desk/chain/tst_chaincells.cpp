#include "desk/chain/chaintext.h"
#include "support/testmain.h"

/// What is decided over whole columns.
class tst_chaincells : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void volatility_data();
    void volatility();
    void vol_data();
    void vol();
    void forward_data();
    void forward();
    void decimalMark_data();
    void decimalMark();
    void duplicates();
    void types_data();
    void types();
    void dates();
    void lateDecision();
};

namespace {

// A file of calls of one column besides the strike.
QByteArray column(const QByteArray& name, const QStringList& cells, const QByteArray& more = QByteArray())
{
    QByteArray text = "type;strike;" + name + (more.isEmpty() ? QByteArray() : ';' + more) + ";close\n";
    int strike = 50;
    for (const QString& cell : cells)
        text += "C;" + QByteArray::number(strike++) + ';' + cell.toUtf8() + (more.isEmpty() ? "" : ";5")
            + ";1\n";
    return text;
}

}

void tst_chaincells::volatility_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QStringList>("cells");
    QTest::addColumn<QStringList>("expected");

    const QByteArray iv = "iv";
    QTest::newRow("fractions") << iv << QStringList{"0.25", "0.3"} << QStringList{"0.25", "0.3"};
    QTest::newRow("percent") << iv << QStringList{"25", "30.5"} << QStringList{"0.25", "0.305"};
    QTest::newRow("signs") << iv << QStringList{"0.5%", "0.7%"} << QStringList{"0.005", "0.007"};
    QTest::newRow("one sign") << iv << QStringList{"0.5", "0.7 %"} << QStringList{"0.005", "0.007"};
    QTest::newRow("unit in the name")
        << QByteArray("IV (%)") << QStringList{"0.5", "0.7"} << QStringList{"0.005", "0.007"};
    QTest::newRow("high fractions in the wings") << iv << QStringList{"3.5", "0.6", "0.5", "0.4", "2.5"}
                                                 << QStringList{"3.5", "0.6", "0.5", "0.4", "2.5"};
    QTest::newRow("low percents in the wings") << iv << QStringList{"1.5", "60", "50", "40", "0.5"}
                                               << QStringList{"0.015", "0.6", "0.5", "0.4", "0.005"};
    QTest::newRow("missing ones") << iv << QStringList{"-", "25", "0", "NA", "30"}
                                  << QStringList{"", "0.25", "", "", "0.3"};
}

void tst_chaincells::volatility()
{
    QFETCH(QByteArray, name);
    QFETCH(QStringList, cells);
    QFETCH(QStringList, expected);

    const OptionChain chain = ChainText::read(column(name, cells));
    QStringList found;
    for (const OptionQuote& quote : chain.series.first().quotes)
        found.append(quote.volatility ? QString::number(*quote.volatility, 'g', 12) : QString());
    QCOMPARE(found, expected);
}

void tst_chaincells::vol_data()
{
    QTest::addColumn<QStringList>("cells");
    QTest::addColumn<QByteArray>("more");
    QTest::addColumn<QString>("expected");

    QTest::newRow("whole numbers") << QStringList{"12", "0", "7"} << QByteArray() << "C 50 s=1 v=12";
    QTest::newRow("whole numbers of pandas")
        << QStringList{"12.0", "", "7.0"} << QByteArray() << "C 50 s=1 v=12";
    QTest::newRow("fractions") << QStringList{"0.25", "0.3"} << QByteArray() << "C 50 s=1 iv=0.25";
    QTest::newRow("percent signs") << QStringList{"25%", "30%"} << QByteArray() << "C 50 s=1 iv=0.25";
    QTest::newRow("beside a volume") << QStringList{"25", "30"} << QByteArray("volume")
                                     << "C 50 s=1 v=5 iv=0.25";
    QTest::newRow("beside a volatility")
        << QStringList{"25", "30"} << QByteArray("iv") << "C 50 s=1 v=25 iv=0.05";
}

void tst_chaincells::vol()
{
    QFETCH(QStringList, cells);
    QFETCH(QByteArray, more);
    QFETCH(QString, expected);

    QCOMPARE(ChainText::describeOptions(ChainText::read(column("vol", cells, more))).first(), expected);
}

void tst_chaincells::forward_data()
{
    QTest::addColumn<QByteArray>("names");
    // Two rows of the first expiry, one of the second.
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<QByteArray>("later");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char* tag, const char* names, const char* first, const char* second,
                         const char* later, const char* expected) {
        QTest::newRow(tag) << QByteArray(names) << QByteArray(first) << QByteArray(second)
                           << QByteArray(later) << QString::fromLatin1(expected);
    };
    row("forwards", "forward,x1", "92.5,", "92.5,", "93.5,", "92.5 93.5");
    row("missing in places", "forward,x1", ",", "92.5,", "-,", "92.5 -");
    row("zero is none", "forward,x1", "0,", "0,", "93.5,", "- 93.5");
    row("the same everywhere", "future price,x1", "92.5,", "92.5,", "92.5,", "92.5 92.5");
    row("underlyings of their own", "underlying_price,x1", "92.5,", "92.5,", "93.5,", "92.5 93.5");
    row("one underlying traded for cash", "underlying_price,x1", "92.5,", "92.5,", "92.5,", "- -");
    row("forward before underlying", "underlying_price,forward", "90,92.5", "90,92.5", "90,93.5",
        "92.5 93.5");
    row("price in underlying", "underlying,x1", "92.5,", "92.5,", "93.5,", "92.5 93.5");
    row("code in future", "future,x1", "AMBZ2,", "AMBZ2,", "AMBF3,", "- -");
}

void tst_chaincells::forward()
{
    QFETCH(QByteArray, names);
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    QFETCH(QByteArray, later);
    QFETCH(QString, expected);

    const OptionChain chain = ChainText::read("expiry,type,strike,close," + names + "\n20120316,C,50,1,"
        + first + "\n20120316,C,51,1," + second + "\n20120615,C,50,1," + later + '\n');
    QStringList found;
    for (const OptionSeries& series : chain.series)
        found.append(series.forward ? QString::number(*series.forward) : QStringLiteral("-"));
    QCOMPARE(found.join(' '), expected);
}

void tst_chaincells::decimalMark_data()
{
    QTest::addColumn<QStringList>("cells");
    QTest::addColumn<QString>("expected");

    QTest::newRow("commas") << QStringList{"92,85", "1"} << "92.85";
    QTest::newRow("undecided commas group") << QStringList{"1,250", "2,000"} << "1250";
    QTest::newRow("undecided commas beside a comma") << QStringList{"1,250", "2,5"} << "1.25";
    QTest::newRow("undecided points are decimals") << QStringList{"1.250", "2.000"} << "1.25";
    QTest::newRow("undecided points beside a comma") << QStringList{"1.250", "2,5"} << "1250";
    QTest::newRow("both in one cell") << QStringList{"1.250,5", "2"} << "1250.5";
    QTest::newRow("small comma") << QStringList{"1,250", "0,125"} << "1.25";
    QTest::newRow("blanks group") << QStringList{"1 250,5", "2"} << "1250.5";
}

void tst_chaincells::decimalMark()
{
    QFETCH(QStringList, cells);
    QFETCH(QString, expected);

    const OptionChain chain = ChainText::read(column("last", cells));
    QCOMPARE(chain.series.first().quotes.first().last->toString(), expected);
}

void tst_chaincells::duplicates()
{
    const OptionChain chain = ChainText::read("expiry,type,strike,bid,ask\n2012-03-16,C,50,1,2\n2012-03-16,C,"
                                              "50.0,1.00,2\n16.03.2012,call,50,1,2\n");
    QCOMPARE(ChainText::describeOptions(chain), QStringList{"C 50 b=1 a=2"});
}

void tst_chaincells::types_data()
{
    QTest::addColumn<QByteArray>("call");
    QTest::addColumn<QByteArray>("put");

    const QVector<QPair<QByteArray, QByteArray>> pairs
        = {{"C", "P"}, {"c", "p"}, {"CALL", "PUT"}, {"Call", "Put"}, {"calls", "puts"}, {"CE", "PE"},
            {"Call Option", "Put Option"}, {"\" C \"", "\"P\""}};
    for (const auto& pair : pairs)
        QTest::newRow(pair.first) << pair.first << pair.second;
}

void tst_chaincells::types()
{
    QFETCH(QByteArray, call);
    QFETCH(QByteArray, put);

    const OptionChain chain = ChainText::read("type,strike,close\n" + call + ",50,1\n" + put + ",50,2\n");
    QCOMPARE(ChainText::describeOptions(chain), QStringList({"C 50 s=1", "P 50 s=2"}));
}

void tst_chaincells::dates()
{
    const QByteArray header = "date,expiry,type,strike,close\n";
    const OptionChain american
        = ChainText::read(header + "10/01/2012,01/02/2013,C,50,1\n10/01/2012,03/15/2013,C,50,1\n");
    QCOMPARE(american.asOf, QDate(2012, 10, 1));
    QCOMPARE(american.series.at(0).expiry, QDate(2013, 1, 2));
    const OptionChain european
        = ChainText::read(header + "30/09/2012,01/02/2013,C,50,1\n30/09/2012,15/03/2013,C,50,1\n");
    QCOMPARE(european.asOf, QDate(2012, 9, 30));
    QCOMPARE(european.series.at(0).expiry, QDate(2013, 2, 1));
}

void tst_chaincells::lateDecision()
{
    QByteArray text = "type,strike,close,iv,expiry\n";
    for (int strike = 1; strike <= 3000; ++strike)
        text += "C," + QByteArray::number(strike) + ",1,0.9,04/05/2012\n";
    text += "P,1,1,0.4%,16/03/2012\n";
    const OptionChain chain = ChainText::read(text);
    QCOMPARE(chain.series.size(), 2);
    QCOMPARE(chain.series.at(0).expiry, QDate(2012, 3, 16));
    QCOMPARE(chain.series.at(1).expiry, QDate(2012, 5, 4));
    QCOMPARE(chain.series.at(1).quotes.size(), 3000);
    QCOMPARE(*chain.series.at(1).quotes.at(0).volatility, 0.009);
}

PLOT2D_TEST_MAIN(tst_chaincells)
#include "tst_chaincells.moc"
