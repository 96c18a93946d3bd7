#include "chain/numberparser.h"
#include "support/testmain.h"

Q_DECLARE_METATYPE(DecimalMark)

class tst_numberparser : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void numbers_data();
    void numbers();
    void notNumbers_data();
    void notNumbers();
    void marks_data();
    void marks();
    void missing_data();
    void missing();
};

void tst_numberparser::numbers_data()
{
    QTest::addColumn<QString>("cell");
    QTest::addColumn<DecimalMark>("mark");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("percent");

    const auto point = DecimalMark::Point;
    const auto comma = DecimalMark::Comma;
    QTest::newRow("whole") << "50" << point << "50" << false;
    QTest::newRow("decimals") << "92.850" << point << "92.85" << false;
    QTest::newRow("no integer part") << ".5" << point << "0.5" << false;
    QTest::newRow("no decimals") << "5." << point << "5" << false;
    QTest::newRow("zero") << "0.00" << point << "0" << false;
    QTest::newRow("leading zeros") << "007.5" << point << "7.5" << false;
    QTest::newRow("negative") << "-1.25" << point << "-1.25" << false;
    QTest::newRow("plus") << "+1.25" << point << "1.25" << false;
    QTest::newRow("typographic minus") << QStringLiteral("\u22121.25") << point << "-1.25" << false;
    QTest::newRow("thousands") << "1,234.50" << point << "1234.5" << false;
    QTest::newRow("millions") << "1,234,567" << point << "1234567" << false;
    QTest::newRow("lakhs") << "12,34,567" << point << "1234567" << false;
    QTest::newRow("blanks as groups") << "1 234.5" << point << "1234.5" << false;
    QTest::newRow("no-break blanks") << QStringLiteral("1\u00a0234\u202f567,5") << comma << QString()
                                     << false;
    QTest::newRow("one no-break blank") << QStringLiteral("1\u00a0234,5") << comma << "1234.5" << false;
    QTest::newRow("apostrophes") << "1'234.5" << point << "1234.5" << false;
    QTest::newRow("comma") << "92,85" << comma << "92.85" << false;
    QTest::newRow("comma and groups") << "1.234,50" << comma << "1234.5" << false;
    QTest::newRow("three decimals") << "1,234" << comma << "1.234" << false;
    QTest::newRow("percent") << "35.2%" << point << "35.2" << true;
    QTest::newRow("percent after a blank") << "35,2 %" << comma << "35.2" << true;
    QTest::newRow("exponent up") << "1e+05" << point << "100000" << false;
    QTest::newRow("exponent down") << "1.5E-3" << point << "0.0015" << false;
    QTest::newRow("tiny") << "1e-30" << point << "0" << false;
    QTest::newRow("binary noise above") << "0.30000000000000004" << point << "0.3" << false;
    QTest::newRow("binary noise below") << "92.849999999999994" << point << "92.85" << false;
    QTest::newRow("noise of nines") << "99999.9999999999999" << point << "100000" << false;
    QTest::newRow("15 digits") << "123456789.012345" << point << "123456789.012345" << false;
    QTest::newRow("largest") << "999999999999999" << point << "999999999999999" << false;
}

void tst_numberparser::numbers()
{
    QFETCH(QString, cell);
    QFETCH(DecimalMark, mark);
    QFETCH(QString, expected);
    QFETCH(bool, percent);

    const std::optional<ParsedNumber> number = parseNumber(cell, mark);
    QCOMPARE(number ? number->value.toString() : QString(), expected);
    if (number)
        QCOMPARE(number->percent, percent);
}

void tst_numberparser::notNumbers_data()
{
    QTest::addColumn<QString>("cell");

    const QStringList cells = {"", "abc", "12a", "a12", "1.2.3", "1,23", "1,2345", ",123", "1234,567",
        "1,234,56", "1,234 567", "1.234,50", "--1", "1-", "1e", "1e1.5", "e5", ".", ",", "%", "$5", "5 USD",
        "0x10", "1/2", "nan", "inf", "1e15", "1000000000000000", "999999999999999.5", "1 2", "12'5",
        "1 234 56", "\u0661\u0662", QString(100, QLatin1Char('1'))};
    for (const QString& cell : cells)
        QTest::newRow(qPrintable(QLatin1Char('<') + cell.left(20) + QLatin1Char('>'))) << cell;
}

void tst_numberparser::notNumbers()
{
    QFETCH(QString, cell);

    QVERIFY(!parseNumber(cell, DecimalMark::Point));
}

void tst_numberparser::marks_data()
{
    QTest::addColumn<QString>("cell");
    QTest::addColumn<QString>("expected");

    QTest::newRow("whole") << "1234"
                           << "";
    QTest::newRow("point") << "92.85"
                           << "point";
    QTest::newRow("comma") << "92,85"
                           << "comma";
    QTest::newRow("point or groups") << "1.234"
                                     << "";
    QTest::newRow("comma or groups") << "1,234"
                                     << "";
    QTest::newRow("below one") << "0,125"
                               << "comma";
    QTest::newRow("bare point") << ".125"
                                << "point";
    QTest::newRow("too long for groups") << "1234.125"
                                         << "point";
    QTest::newRow("both, point last") << "1,234.500"
                                      << "point";
    QTest::newRow("both, comma last") << "1.234,500"
                                      << "comma";
    QTest::newRow("several commas") << "1,234,567"
                                    << "point";
    QTest::newRow("several points") << "1.234.567"
                                    << "comma";
    QTest::newRow("percent") << "35,2%"
                             << "comma";
    QTest::newRow("text") << "a,b"
                          << "";
}

void tst_numberparser::marks()
{
    QFETCH(QString, cell);
    QFETCH(QString, expected);

    const std::optional<DecimalMark> mark = decimalMarkOf(cell);
    const QString name = mark == DecimalMark::Point ? "point" : "comma";
    QCOMPARE(mark ? name : QString(), expected);
}

void tst_numberparser::missing_data()
{
    QTest::addColumn<QString>("cell");
    QTest::addColumn<bool>("expected");

    for (const char* word :
        {"", " ", "-", "--", "NA", "N/A", "n/a", "null", "NULL", "nan", "NaN", "None", "#N/A", "<NA>", "."})
        QTest::newRow(word) << QString::fromLatin1(word) << true;
    for (const char* word : {"0", "-1", "nano", "abc", "inf"})
        QTest::newRow(word) << QString::fromLatin1(word) << false;
}

void tst_numberparser::missing()
{
    QFETCH(QString, cell);
    QFETCH(bool, expected);

    QCOMPARE(isMissingValue(cell), expected);
}

PLOT2D_TEST_MAIN(tst_numberparser)
#include "tst_numberparser.moc"
