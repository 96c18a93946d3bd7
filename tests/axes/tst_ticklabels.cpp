#include "plot2d/ticklabels_p.h"
#include "support/testmain.h"

#include <cmath>
#include <limits>

using Values = QList<double>;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr int smallestInt = std::numeric_limits<int>::min();
/// What the rows write where there is no answer.
constexpr int none = -1;

double above(double value)
{
    return std::nextafter(value, infinity);
}

double below(double value)
{
    return std::nextafter(value, -infinity);
}

}

class tst_ticklabels : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void candidates_data();
    void candidates();
    void candidatesKeepEqualMajorTicks();
    void integerPart_data();
    void integerPart();
    void equalDigits_data();
    void equalDigits();
    void differentLengthsWipeOutWhatWasFound();
    void integerDigits_data();
    void integerDigits();
    void fractionDigits_data();
    void fractionDigits();
};

void tst_ticklabels::candidates_data()
{
    QTest::addColumn<Values>("major");
    QTest::addColumn<Values>("medium");
    QTest::addColumn<Values>("expected");

    QTest::newRow("nothing") << Values{} << Values{} << Values{};
    QTest::newRow("major only") << Values{1, 2, 3} << Values{} << Values{1, 2, 3};
    QTest::newRow("medium only") << Values{} << Values{1, 2, 3} << Values{1, 2, 3};
    QTest::newRow("medium between major") << Values{1, 2} << Values{1.5, 2.5} << Values{1, 1.5, 2, 2.5};
    QTest::newRow("unsorted") << Values{3, 1} << Values{4, 2} << Values{1, 2, 3, 4};
    QTest::newRow("medium on a major one") << Values{1, 2} << Values{2, 2.5} << Values{1, 2, 2.5};
    QTest::newRow("medium as good as on a major one")
        << Values{1000, 2000} << Values{1000.0000000005, 2000.000001} << Values{1000, 2000, 2000.000001};
    QTest::newRow("below a major one") << Values{1000} << Values{999.9999999995} << Values{1000};
    QTest::newRow("on the first of unsorted major ones")
        << Values{5, 1, 3} << Values{5, 2} << Values{1, 2, 3, 5};
    QTest::newRow("equal medium ticks") << Values{1} << Values{2, 2} << Values{1, 2, 2};
    QTest::newRow("around zero") << Values{-1, 0, 1} << Values{-0.5, 1e-300, 0.5}
                                 << Values{-1, -0.5, 0, 1e-300, 0.5, 1};
    QTest::newRow("negative") << Values{-1000, -2000} << Values{-1000.0000000005, -1500}
                              << Values{-2000, -1500, -1000};
    QTest::newRow("not finite") << Values{notANumber, 1, infinity} << Values{-infinity, notANumber, 2}
                                << Values{1, 2};
}

void tst_ticklabels::candidates()
{
    QFETCH(Values, major);
    QFETCH(Values, medium);
    QTEST(TickLabels::candidates(major, medium), "expected");
}

void tst_ticklabels::candidatesKeepEqualMajorTicks()
{
    const QList<double> ticks = TickLabels::candidates({2, 1, 2}, {});
    QCOMPARE(ticks, (QList<double>{1, 2, 2}));

    // A stable sort leaves zeros of both signs in their order.
    const QList<double> zeros = TickLabels::candidates({0.0, -0.0}, {});
    QVERIFY(!std::signbit(zeros[0]));
    QVERIFY(std::signbit(zeros[1]));
}

void tst_ticklabels::integerPart_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("expected");

    const auto row
        = [](const char* name, double value, double expected) { QTest::newRow(name) << value << expected; };
    row("zero", 0.0, 0.0);
    row("fraction", 2.7, 2.0);
    row("negative fraction", -2.7, -2.0);
    row("just below a whole unit", 2.9999999999, 3.0);
    row("just above a negative whole unit", -2.9999999999, -3.0);
    row("just above a whole unit", 3.0000000001, 3.0);
    row("less than 1e-8 off counts", 0.999999991, 1.0);
    row("1e-8 off does not", 0.99999999, 0.0);
    row("-1e-8 off counts", -0.999999991, -1.0);
    row("-2e-8 off does not", -0.99999998, 0.0);
    row("last 32-bit integer", 2147483647.5, 2147483647.0);
    row("beyond 32 bits", 3000000000.25, 3000000000.0);
    row("2^62", 4611686018427387904.0, 4611686018427387904.0);
    row("beyond 64 bits", 1e20, 1e20);
    row("-beyond 64 bits", -1e300, -1e300);
}

void tst_ticklabels::integerPart()
{
    QFETCH(double, value);
    QTEST(TickLabels::fuzzyIntegerPart(value), "expected");
}

void tst_ticklabels::equalDigits_data()
{
    QTest::addColumn<Values>("ticks");
    QTest::addColumn<int>("expected");

    const auto row = [](const char* name, const Values& ticks, int expected) {
        QTest::newRow(name) << ticks << expected;
    };
    row("no tick", {}, none);
    row("single tick", {100}, smallestInt);
    row("single tick beyond the limit", {1e17}, smallestInt);
    row("integers", {1234, 1238}, 3);
    row("lengths differ", {99, 101}, 0);
    row("fractions", {12.345, 12.349}, 4);
    row("descending", {2, 1}, none);
    row("descending at the end", {1, 2, 3, 2.5}, none);
    row("duplicate", {1, 2, 2}, none);
    row("as good as a duplicate", {1000, 1000.0000000005}, none);
    row("barely no duplicate", {1000, 1000.00000001}, 11);
    row("on the limits", {-1e16, 1e16}, 27);
    row("beyond the upper limit", {1, above(1e16)}, none);
    row("beyond the lower limit", {below(-1e16), 1}, none);
    row("infinite", {1, infinity}, none);
    row("nothing in common", {1234, 2234}, 0);
    row("largest of the pairs", {1210, 1230, 1231, 1310}, 3);
    row("one digit each", {1, 2, 3}, 0);
    row("first fraction digit differs", {12.3, 12.4}, 2);
    row("whole and fraction", {12, 12.5}, 2);
    row("length by the value, not its fuzzy integer part", {9.9999999999, 10.5}, 0);
    row("fuzzy integer parts are the same", {2.9999999999, 3.5}, 1);
    row("two negative integers", {-1238, -1234}, smallestInt);
    row("two negative values of one integer part", {-12.349, -12.345}, 4);
    row("two negative values of different lengths", {-101, -99}, 0);
    row("negative pair leaves what was found", {-1238, -1234, 1231, 1239}, 3);
    row("magnitudes are the same", {-12.5, 12.5}, 12);
    row("magnitudes of the integer parts are the same", {-12.3, 12.4}, 2);
    row("across zero", {-0.5, 0.5}, 11);
    row("16 digits", {1234567890000000.0, 1234567899990000.0}, 9);
    row("17 digits", {9e15, 1e16}, 0);
}

void tst_ticklabels::equalDigits()
{
    QFETCH(Values, ticks);
    QTEST(TickLabels::equalDigits(ticks).value_or(none), "expected");
}

void tst_ticklabels::differentLengthsWipeOutWhatWasFound()
{
    QCOMPARE(TickLabels::equalDigits({9991, 9992}), std::optional<int>(3));
    QCOMPARE(TickLabels::equalDigits({9991, 9992, 10001}), std::optional<int>(0));
    QCOMPARE(TickLabels::equalDigits({9991, 9992, 10001, 10101}), std::optional<int>(2));
    QCOMPARE(TickLabels::equalDigits({95, 105, 205}), std::optional<int>(0));
}

void tst_ticklabels::integerDigits_data()
{
    QTest::addColumn<long long>("a");
    QTest::addColumn<long long>("b");
    QTest::addColumn<int>("n");
    QTest::addColumn<int>("expected");

    const auto row = [](const char* name, long long a, long long b, int n, int expected) {
        QTest::newRow(name) << a << b << n << expected;
    };
    constexpr long long limit = 10000000000000000;
    row("three", 1234, 1238, 4, 3);
    row("two", 1234, 1244, 4, 2);
    row("one", 1234, 1334, 4, 1);
    row("none", 1234, 2234, 4, 0);
    row("equal", 1234, 1234, 4, 0);
    row("one of two", 12, 15, 2, 1);
    row("one digit", 1, 2, 1, 0);
    row("first zero", 0, 5, 1, 0);
    row("second zero", 5, 0, 1, 0);
    row("order does not matter", 1238, 1234, 4, 3);
    row("first negative", -1, 1, 1, -1);
    row("second negative", 1, -1, 1, -1);
    row("n of 0", 1, 2, 0, -1);
    row("n of 16", 1000000000000001, 1000000000000002, 16, 15);
    row("n of 17", 1, 2, 17, -1);
    row("negative n", 1, 2, -1, -1);
    row("on the limit", limit, limit / 2, 16, 0);
    row("second on the limit", limit / 2, limit, 16, 0);
    row("first beyond the limit", limit + 1, 1, 16, -1);
    row("second beyond the limit", 1, limit + 1, 16, -1);
    row("equal and beyond the limit", limit + 1, limit + 1, 16, -1);
    row("equal, but n is out of range", 7, 7, 17, -1);
    row("fewer digits than n", 1, 2, 5, 4);
    row("more digits than n", 123456, 123789, 2, 0);
    // 999999999 * 1e-8 is within 1e-8 of 10: the digits are those of the fuzzy integer part.
    row("fuzzy integer parts", 999999999, 1000000009, 9, 1);
}

void tst_ticklabels::integerDigits()
{
    QFETCH(long long, a);
    QFETCH(long long, b);
    QFETCH(int, n);
    QTEST(TickLabels::equalDigitsInIntegerPart(a, b, n), "expected");
}

void tst_ticklabels::fractionDigits_data()
{
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<int>("expected");

    const auto row = [](const char* name, double a, double b, int expected) {
        QTest::newRow(name) << a << b << expected;
    };
    row("two", 12.345, 12.349, 2);
    row("none", 12.3, 12.4, 0);
    row("not ascending", 2.0, 1.0, -1);
    row("equal values", 1.5, 1.5, -1);
    row("NaN first", notANumber, 1.0, -1);
    row("NaN second", 1.0, notANumber, -1);
    row("beyond the limit", 1.0, above(1e16), -1);
    row("below the limit", below(-1e16), 1.0, -1);
    row("infinite", -infinity, infinity, -1);
    row("on the limits", -1e16, 1e16, 10);
    row("ten at the most", 0.1, above(0.1), 10);
    row("the tenth differs", 0.1234567891, 0.1234567892, 9);
    row("the eleventh differs", 0.12345678911, 0.12345678912, 10);
    row("whole numbers", 1.0, 2.0, 10);
    row("different integer parts", 1.25, 2.26, 1);
    row("negative", -12.349, -12.345, 2);
    row("of both signs", -0.5, 0.5, 10);
    row("as good as a whole unit is no fraction", 1.999999995, 3.0, 10);
    row("-as good as a whole unit", -1.999999995, 3.0, 10);
    row("2e-8 short of a whole unit is nines", 1.99999998, 3.0, 0);
    // The original fraction is scaled: 0.29 * 100 is just below 29, which the fuzzy integer part forgives.
    row("products just below a whole number", 0.29, 1.2900001, 6);
}

void tst_ticklabels::fractionDigits()
{
    QFETCH(double, a);
    QFETCH(double, b);
    QTEST(TickLabels::equalDigitsInFractionPart(a, b), "expected");
}

PLOT2D_TEST_MAIN(tst_ticklabels)

#include "tst_ticklabels.moc"
