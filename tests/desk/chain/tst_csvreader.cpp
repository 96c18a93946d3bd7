#include "chain/chainerror.h"
#include "chain/csvreader.h"
#include "chain/textdecoder.h"
#include "support/testmain.h"

#include <QBuffer>

class tst_csvreader : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void split_data();
    void split();
    void openQuote();
    void rows();
    void quotedLineEnd();
    void unclosedQuote_data();
    void unclosedQuote();
};

void tst_csvreader::split_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QChar>("delimiter");
    QTest::addColumn<QStringList>("expected");

    const QChar comma = ',';
    QTest::newRow("empty") << "" << comma << QStringList{""};
    QTest::newRow("plain") << "a,b,c" << comma << QStringList{"a", "b", "c"};
    QTest::newRow("blanks") << " a ,  b,c  " << comma << QStringList{"a", "b", "c"};
    QTest::newRow("empty cells") << ",a,," << comma << QStringList{"", "a", "", ""};
    QTest::newRow("quoted") << R"("a","b c")" << comma << QStringList{"a", "b c"};
    QTest::newRow("quoted delimiter") << R"("1,234.50",2)" << comma << QStringList{"1,234.50", "2"};
    QTest::newRow("doubled quotes") << R"("say ""x""",2)" << comma << QStringList{R"(say "x")", "2"};
    QTest::newRow("empty quotes") << R"("","")" << comma << QStringList{"", ""};
    QTest::newRow("blanks around quotes") << R"( "a" , "b" )" << comma << QStringList{"a", "b"};
    QTest::newRow("quote inside") << R"(3" pipe,2)" << comma << QStringList{R"(3" pipe)", "2"};
    QTest::newRow("text behind a quote") << R"("a"b,2)" << comma << QStringList{"ab", "2"};
    QTest::newRow("semicolons") << "92,85;1" << QChar(';') << QStringList{"92,85", "1"};
    QTest::newRow("tabs") << "a\t\tb\t" << QChar('\t') << QStringList{"a", "", "b", ""};
}

void tst_csvreader::split()
{
    QFETCH(QString, text);
    QFETCH(QChar, delimiter);
    QFETCH(QStringList, expected);

    QStringList cells;
    QVERIFY(splitCsv(text, delimiter, &cells));
    QCOMPARE(cells, expected);
}

void tst_csvreader::openQuote()
{
    QStringList cells;
    QVERIFY(!splitCsv(R"(a,"b,c)", ',', &cells));
    QCOMPARE(cells, QStringList({"a", "b,c"}));
    QVERIFY(!splitCsv(R"("a"")", ',', &cells));
}

void tst_csvreader::rows()
{
    QBuffer buffer;
    buffer.setData("a,b\n\n,,\n# a remark\n1,2\n#3,4\n");
    buffer.open(QIODevice::ReadOnly);
    TextDecoder text(buffer, QStringLiteral("name"));
    CsvReader reader(text, ',');
    CsvRow row;
    QVERIFY(reader.readRow(&row));
    QCOMPARE(row.line, 1);
    QVERIFY(reader.readRow(&row));
    QCOMPARE(row.line, 5);
    QCOMPARE(row.cells, QStringList({"1", "2"}));
    QVERIFY(reader.readRow(&row));
    QCOMPARE(row.cells, QStringList({"#3", "4"}));
    QVERIFY(!reader.readRow(&row));
}

void tst_csvreader::quotedLineEnd()
{
    QBuffer buffer;
    buffer.setData("\"a\r\nb\",1\r\n2,3\r\n");
    buffer.open(QIODevice::ReadOnly);
    TextDecoder text(buffer, QStringLiteral("name"));
    CsvReader reader(text, ',');
    CsvRow row;
    QVERIFY(reader.readRow(&row));
    QCOMPARE(row.line, 1);
    QCOMPARE(row.cells, QStringList({"a\nb", "1"}));
    QVERIFY(reader.readRow(&row));
    QCOMPARE(row.line, 3);
}

void tst_csvreader::unclosedQuote_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("at the end") << QByteArray("1,2\n\"a,3\n");
    QTest::newRow("over many lines") << "1,2\n\"a,3\n" + QByteArray("1,2\n").repeated(100000);
}

void tst_csvreader::unclosedQuote()
{
    QFETCH(QByteArray, bytes);

    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    TextDecoder text(buffer, QStringLiteral("name"));
    CsvReader reader(text, ',');
    CsvRow row;
    QVERIFY(reader.readRow(&row));
    try {
        reader.readRow(&row);
        QFAIL("no error");
    } catch (const ChainError& error) {
        QCOMPARE(error.text(), QStringLiteral("name:2: a quote is not closed"));
    }
}

PLOT2D_TEST_MAIN(tst_csvreader)
#include "tst_csvreader.moc"
