#include "plot2d/plot2dcommon.h"
#include "support/childrun.h"
#include "support/numbersamples.h"
#include "support/testmain.h"

#include <sys/resource.h>

#include <cmath>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();
constexpr int lowestInt = std::numeric_limits<int>::min();
constexpr int largestInt = std::numeric_limits<int>::max();
constexpr double twoTo52 = 4503599627370496.0;
constexpr double twoTo63 = 9223372036854775808.0;

#if defined(QT_NO_DEBUG) && !defined(QT_FORCE_ASSERTS)
constexpr bool hasAssertions = false;
#else
constexpr bool hasAssertions = true;
#endif

/// The largest double has 309 digits, all of them before the point.
QString digitsOfLargest()
{
    return QStringLiteral("179769313486231570814527423731704356798070567525844996598917476803157260780028"
                          "538760589558632766878171540458953514382464234321326889464182768467546703537516"
                          "986049910576551282076245490090389328944075868508455133942304583236903222948165"
                          "808559332123348274797826204144723168738177180919299881250404026184124858368");
}

}

class tst_Plot2dCommon : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void formattedValueOfNegativeDecimals_data();
    void formattedValueOfNegativeDecimals();
    void formattedValue_data();
    void formattedValue();
    void shortSystemText_data();
    void shortSystemText();
    void integerLength_data();
    void integerLength();
    void integerLengthOfInfinity_data();
    void integerLengthOfInfinity();
    void roundValue_data();
    void roundValue();
    void roundValueReturnsUnchanged_data();
    void roundValueReturnsUnchanged();
    void roundValueNeverGivesNegativeZero();
    void roundValueOfNaN();
    void scaleDrawFuzzyCompare_data();
    void scaleDrawFuzzyCompare();
};

void tst_Plot2dCommon::formattedValueOfNegativeDecimals_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");

    QTest::newRow("0") << 0.0 << -1;
    QTest::newRow("1.5") << 1.5 << -1;
    QTest::newRow("-1.5") << -1.5 << -1;
    QTest::newRow("largest") << largest << -1;
    QTest::newRow("infinity") << infinity << -1;
    QTest::newRow("NaN") << notANumber << -1;
    QTest::newRow("lowest count") << 1.5 << lowestInt;
}

void tst_Plot2dCommon::formattedValueOfNegativeDecimals()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    QCOMPARE(Plot2dCommon::formattedValue(value, decimals), QString());
}

void tst_Plot2dCommon::formattedValue_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, double value, int decimals, const char* expected) {
        QTest::newRow(name) << value << decimals << QString::fromLatin1(expected);
    };

    row("more than ten decimals", 1.5, 20, "1.5");
    row("largest count of decimals", 1.5, largestInt, "1.5");
    row("ten decimals", 0.0000000001, 10, "0.0000000001");
    row("eleven decimals are ten", 0.00048828125, 11, "0.0004882813");
    row("nothing within ten decimals", 4e-11, 20, "0");

    row("zeros of the integer part, two decimals", 100.0, 2, "100");
    row("zeros of the integer part, no decimals", 100.0, 0, "100");
    row("zeros of a long integer part", 12000000.0, 10, "12000000");
    row("no group separators", 1234567.5, 1, "1234567.5");
    row("zero, no decimals", 0.0, 0, "0");
    row("zero, five decimals", 0.0, 5, "0");
    row("one zero at the end", 1.1, 2, "1.1");
    row("zero inside the fraction", 1.01, 3, "1.01");
    row("zeros on both sides of the point", 10.01, 4, "10.01");
    row("zeros left by rounding", 1.001, 2, "1");
    row("carried into the integer part", 9.996, 2, "10");
    row("carried into the fraction", 1.2996, 3, "1.3");
    row("binary value below the tie", 1.005, 2, "1");
    row("one decimal", 0.25, 1, "0.3");

    row("0.5", 0.5, 0, "1");
    row("1.5", 1.5, 0, "2");
    row("2.5", 2.5, 0, "3");
    row("-0.5", -0.5, 0, "-1");
    row("-2.5", -2.5, 0, "-3");
    row("0.125", 0.125, 2, "0.13");
    row("-0.125", -0.125, 2, "-0.13");
    row("0.375", 0.375, 2, "0.38");
    row("below a half", std::nextafter(0.5, 0.0), 0, "0");

    row("negative zero loses its sign with the fraction", -0.0001, 3, "0");
    row("negative zero without a fraction keeps its sign", -0.3, 0, "-0");
    row("negative zero of one decimal", -0.04, 1, "0");
    row("smallest negative, ten decimals", -smallest, 10, "0");
    row("smallest negative, no decimals", -smallest, 0, "-0");
    row("smallest", smallest, 10, "0");
    row("-0.0, no decimals", -0.0, 0, "0");
    row("-0.0, three decimals", -0.0, 3, "0");
    row("-0.06", -0.06, 1, "-0.1");
    row("-10", -10.0, 1, "-10");
    row("-0.5, three decimals", -0.5, 3, "-0.5");

    row("1e22", 1e22, 5, "10000000000000000000000");
    row("1e23, not a double", 1e23, 2, "99999999999999991611392");
    row("NaN", notANumber, 2, "nan");
    row("infinity", infinity, 2, "inf");
    row("negative infinity", -infinity, 0, "-inf");
    QTest::newRow("largest, no decimals") << largest << 0 << digitsOfLargest();
    QTest::newRow("largest, ten decimals") << largest << 10 << digitsOfLargest();
    QTest::newRow("lowest") << -largest << 2 << QLatin1Char('-') + digitsOfLargest();
}

void tst_Plot2dCommon::formattedValue()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    QTEST(Plot2dCommon::formattedValue(value, decimals), "expected");
}

void tst_Plot2dCommon::shortSystemText_data()
{
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("expected");
    QTest::newRow("lowest count") << lowestInt << QStringLiteral("1");
    QTest::newRow("negative") << -1 << QStringLiteral("1");
    QTest::newRow("none") << 0 << QStringLiteral("1");
    QTest::newRow("some") << 2 << QStringLiteral("1.25");
    QTest::newRow("ten") << 10 << QStringLiteral("1.2500000001");
    QTest::newRow("eleven are ten") << 11 << QStringLiteral("1.2500000001");
    QTest::newRow("largest count") << largestInt << QStringLiteral("1.2500000001");
}

/// In the locale C, in which the test runs.
void tst_Plot2dCommon::shortSystemText()
{
    QFETCH(int, decimals);
    QTEST(Plot2dCommon::fromDoubleToSystemStringShort(1.25000000014, decimals), "expected");
}

void tst_Plot2dCommon::integerLength_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("expected");

    QTest::newRow("0") << 0.0 << 1;
    QTest::newRow("-0.0") << -0.0 << 1;
    QTest::newRow("0.5") << 0.5 << 1;
    QTest::newRow("-0.5") << -0.5 << 1;
    QTest::newRow("smallest") << smallest << 1;
    QTest::newRow("-9.99") << -9.99 << 1;
    QTest::newRow("9.999999") << 9.999999 << 1;
    QTest::newRow("last below 10") << std::nextafter(10.0, 0.0) << 1;
    QTest::newRow("10") << 10.0 << 2;
    QTest::newRow("-10") << -10.0 << 2;
    QTest::newRow("first above -10") << std::nextafter(-10.0, 0.0) << 1;
    QTest::newRow("99.99") << 99.99 << 2;
    QTest::newRow("100") << 100.0 << 3;
    QTest::newRow("-123.4") << -123.4 << 3;
    QTest::newRow("999999.5") << 999999.5 << 6;
    QTest::newRow("1000000") << 1000000.0 << 7;
    QTest::newRow("1e22") << 1e22 << 23;
    QTest::newRow("-1e22") << -1e22 << 23;
    QTest::newRow("largest") << largest << 309;
    QTest::newRow("lowest") << -largest << 309;
    QTest::newRow("NaN") << notANumber << 1;
}

void tst_Plot2dCommon::integerLength()
{
    QFETCH(double, value);
    QTEST(Plot2dCommon::integerLength(value), "expected");
}

void tst_Plot2dCommon::integerLengthOfInfinity_data()
{
    QTest::addColumn<double>("value");

    QTest::newRow("infinity") << infinity;
    QTest::newRow("negative infinity") << -infinity;
}

/// In a process of its own: it may be aborted, and must not go on for ever.
void tst_Plot2dCommon::integerLengthOfInfinity()
{
    QFETCH(double, value);
    if (TestSupport::isChild()) {
        const rlimit noCoreFile = {0, 0};
        setrlimit(RLIMIT_CORE, &noCoreFile);
        QCOMPARE(Plot2dCommon::integerLength(value), 1);
        return;
    }

    const TestSupport::ChildRun run = TestSupport::repeatRowInChild(QProcessEnvironment::systemEnvironment());
    QVERIFY2(run.finished, run.output);
    QCOMPARE(run.crashed, hasAssertions);
    if (hasAssertions)
        QVERIFY2(run.output.contains("ASSERT failure in integerLength"), run.output);
    else
        QVERIFY2(run.passed(), run.output);
}

void tst_Plot2dCommon::roundValue_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<double>("expected");

    QTest::newRow("2.4") << 2.4 << 0 << 2.0;
    QTest::newRow("2.5") << 2.5 << 0 << 3.0;
    QTest::newRow("-2.5") << -2.5 << 0 << -2.0;
    QTest::newRow("-2.6") << -2.6 << 0 << -3.0;
    QTest::newRow("0.5") << 0.5 << 0 << 1.0;
    QTest::newRow("-0.5") << -0.5 << 0 << 0.0;
    QTest::newRow("-1") << -1.0 << 0 << -1.0;
    QTest::newRow("0") << 0.0 << 3 << 0.0;
    QTest::newRow("smallest") << smallest << 10 << 0.0;
    QTest::newRow("smallest negative") << -smallest << 10 << 0.0;
    QTest::newRow("half, one decimal") << 0.25 << 1 << 0.3;
    QTest::newRow("negative half, one decimal") << -0.25 << 1 << -0.2;
    QTest::newRow("negative half, two decimals") << -0.375 << 2 << -0.37;
    QTest::newRow("price") << 12.3456 << 2 << 12.35;

    QTest::newRow("binary product below the tie") << 1.005 << 2 << 1.0;
    QTest::newRow("sum of 1 below a half") << std::nextafter(0.5, 0.0) << 0 << 1.0;
    QTest::newRow("above minus a half") << std::nextafter(-0.5, 0.0) << 0 << 0.0;
    QTest::newRow("below minus a half") << std::nextafter(-0.5, -1.0) << 0 << -1.0;
    QTest::newRow("odd above 2^52") << twoTo52 + 1.0 << 0 << twoTo52 + 2.0;
    QTest::newRow("odd below -2^52") << -twoTo52 - 1.0 << 0 << -twoTo52 - 1.0;

    QTest::newRow("tens") << 1234.0 << -1 << 1230.0;
    QTest::newRow("half a hundred") << 1250.0 << -2 << 1300.0;
    QTest::newRow("negative half a hundred") << -1250.0 << -2 << -1200.0;
    QTest::newRow("thousands of less than half of one") << 499.0 << -3 << 0.0;

    QTest::newRow("nine decimals") << 0.00048828125 << 9 << 0.000488281;
    QTest::newRow("ten decimals") << 0.00048828125 << 10 << 0.0004882813;
    QTest::newRow("eleven decimals are ten") << 0.00048828125 << 11 << 0.0004882813;
    QTest::newRow("largest count of decimals") << 0.00048828125 << largestInt << 0.0004882813;
    QTest::newRow("minus nine decimals") << 26e9 << -9 << 26e9;
    QTest::newRow("minus ten decimals") << 26e9 << -10 << 3e10;
    QTest::newRow("minus eleven decimals are minus ten") << 26e9 << -11 << 3e10;
    QTest::newRow("lowest count of decimals") << 26e9 << lowestInt << 3e10;

    QTest::newRow("-2^63") << -twoTo63 << 0 << -twoTo63;
    QTest::newRow("last below 2^63") << twoTo63 - 1024.0 << 0 << twoTo63 - 1024.0;
}

void tst_Plot2dCommon::roundValue()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    QFETCH(double, expected);
    // Not QCOMPARE, which takes neighbouring doubles for equal.
    const double result = Plot2dCommon::roundValue(value, decimals);
    QVERIFY2(result == expected, inFull(result));
}

void tst_Plot2dCommon::roundValueReturnsUnchanged_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");

    QTest::newRow("infinite product") << 1e300 << 10;
    QTest::newRow("infinite negative product") << -1e300 << 10;
    QTest::newRow("infinity") << infinity << 0;
    QTest::newRow("negative infinity") << -infinity << 2;
    QTest::newRow("infinity in tens") << infinity << -1;
    QTest::newRow("largest") << largest << 0;
    QTest::newRow("lowest") << -largest << 0;
    QTest::newRow("largest, minus ten decimals") << largest << -10;
    QTest::newRow("2^63") << twoTo63 << 0;
    QTest::newRow("below -2^63") << -twoTo63 - 2048.0 << 0;
    // A division of the product by the factor would not give these two back.
    QTest::newRow("product above 2^63") << 9223372036.854797 << 9;
    QTest::newRow("product below -2^63") << -9223372036.854797 << 9;
}

void tst_Plot2dCommon::roundValueReturnsUnchanged()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    const double result = Plot2dCommon::roundValue(value, decimals);
    QVERIFY2(result == value, inFull(result));
}

void tst_Plot2dCommon::roundValueNeverGivesNegativeZero()
{
    for (const double value : {-0.0, -0.001, -0.05}) {
        const double result = Plot2dCommon::roundValue(value, 1);
        QVERIFY2(result == 0.0 && !std::signbit(result), inFull(value));
    }
}

void tst_Plot2dCommon::roundValueOfNaN()
{
    for (const int decimals : {-11, -1, 0, 2, 11})
        QVERIFY(std::isnan(Plot2dCommon::roundValue(notANumber, decimals)));
}

void tst_Plot2dCommon::scaleDrawFuzzyCompare_data()
{
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<bool>("expected");

    QTest::newRow("one part in a thousand million") << 100.0 << 100.0000001 << true;
    QTest::newRow("one part in ten million") << 100.0 << 100.00001 << false;
    QTest::newRow("equal") << 0.1 << 0.1 << true;
    QTest::newRow("ten steps of a tenth") << 0.1 * 3.0 << 0.3 << true;
    QTest::newRow("far apart") << 1.0 << 2.0 << false;
    QTest::newRow("opposite") << 1.0 << -1.0 << false;
    QTest::newRow("opposite, close to zero") << 1e-300 << -1e-300 << false;

    QTest::newRow("at the tolerance") << 100000000.0 << 100000001.0 << true;
    QTest::newRow("at the tolerance, negative") << -100000000.0 << -100000001.0 << true;
    QTest::newRow("beyond the tolerance") << 100000000.0 << std::nextafter(100000001.0, infinity) << false;
    QTest::newRow("tolerance of the smaller only") << 99999999.0 << 100000000.0 << false;
    QTest::newRow("tolerance of the smaller only, negative") << -99999999.0 << -100000000.0 << false;

    QTest::newRow("zeros") << 0.0 << 0.0 << true;
    QTest::newRow("zeros of both signs") << 0.0 << -0.0 << true;
    QTest::newRow("zero and nearly zero") << 0.0 << 1e-300 << false;
    QTest::newRow("zero and the smallest") << 0.0 << smallest << false;
    QTest::newRow("smallest twice") << smallest << smallest << true;
    QTest::newRow("smallest and the next") << smallest << 2.0 * smallest << false;
    QTest::newRow("subnormals at the tolerance") << 1e8 * smallest << (1e8 + 1.0) * smallest << true;
    QTest::newRow("subnormals beyond the tolerance") << 6e7 * smallest << (6e7 + 1.0) * smallest << false;
    QTest::newRow("largest twice") << largest << largest << true;
    QTest::newRow("largest and the one below") << largest << std::nextafter(largest, 0.0) << true;
    QTest::newRow("largest and lowest") << largest << -largest << false;

    QTest::newRow("NaN and 1") << notANumber << 1.0 << false;
    QTest::newRow("NaN and zero") << notANumber << 0.0 << false;
    QTest::newRow("NaN and infinity") << notANumber << infinity << false;
    QTest::newRow("NaN twice") << notANumber << notANumber << false;
    QTest::newRow("infinity and 1") << infinity << 1.0 << false;
    QTest::newRow("infinity and the largest") << infinity << largest << false;
    // What the rule says of infinities: their difference is NaN or infinite.
    QTest::newRow("infinity twice") << infinity << infinity << false;
    QTest::newRow("infinities of both signs") << infinity << -infinity << true;
}

void tst_Plot2dCommon::scaleDrawFuzzyCompare()
{
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(bool, expected);
    QCOMPARE(Plot2dCommon::scaleDrawFuzzyCompare(a, b), expected);
    QCOMPARE(Plot2dCommon::scaleDrawFuzzyCompare(b, a), expected);
}

PLOT2D_TEST_MAIN(tst_Plot2dCommon)

#include "tst_plot2dcommon.moc"
