#include "plot2d/scaledivision_p.h"
#include "support/testmain.h"

#include <cmath>
#include <limits>

using ScaleDivision::Request;
using Values = QList<double>;

Q_DECLARE_METATYPE(ScaleDivision::Request)

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();

QwtScaleDiv division(
    double lower, double upper, const Values& minor, const Values& medium, const Values& major)
{
    return QwtScaleDiv(lower, upper, minor, medium, major);
}

Values majorTicks(const QwtScaleDiv& division)
{
    return division.ticks(QwtScaleDiv::MajorTick);
}

}

class tst_scaledivision : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void divisible_data();
    void divisible();
    void anchorPrice_data();
    void anchorPrice();
    void anchorPriceBeyond32Bits_data();
    void anchorPriceBeyond32Bits();
    void anchored_data();
    void anchored();
    void unchanged_data();
    void unchanged();
    void allTypesAreMoved();
    void boundsStay();
    void anchoredTickIsExact();
};

void tst_scaledivision::divisible_data()
{
    QTest::addColumn<Request>("request");
    QTest::addColumn<bool>("expected");

    const auto row = [](const char* name, bool expected, const Request& request) {
        QTest::newRow(name) << request << expected;
    };
    constexpr bool yes = true;
    constexpr bool no = false;
    row("ordinary", yes, {100.0, 200.0, 8, 5, 0.0});
    row("inverted", yes, {200.0, 100.0, 8, 5, 0.0});
    row("empty", yes, {5.0, 5.0, 8, 5, 0.0});
    row("empty, with a step", yes, {5.0, 5.0, 8, 5, 1.0});
    row("empty, with an infinite step", no, {5.0, 5.0, 8, 5, infinity});
    row("empty, with a step that is no number", no, {5.0, 5.0, 8, 5, notANumber});
    row("infinite step", no, {0.0, 1.0, 8, 5, infinity});
    row("step that is no number", no, {0.0, 1.0, 8, 5, notANumber});
    for (const double step : {0.0, 1.0}) {
        row(step > 0.0 ? "NaN below, step" : "NaN below", no, {notANumber, 1.0, 8, 5, step});
        row(step > 0.0 ? "NaN above, step" : "NaN above", no, {0.0, notANumber, 8, 5, step});
        row(step > 0.0 ? "infinite below, step" : "infinite below", no, {-infinity, 1.0, 8, 5, step});
        row(step > 0.0 ? "infinite above, step" : "infinite above", no, {0.0, infinity, 8, 5, step});
        row(step > 0.0 ? "both infinite, step" : "both infinite", no, {infinity, infinity, 8, 5, step});
    }
    row("of infinite width", no, {-largest, largest, 8, 5, 0.0});
    row("of infinite width, step", no, {-largest, largest, 8, 5, 1e308});
    row("as wide as the largest double", yes, {0.0, largest, 8, 5, 1e307});
    // As doubles, the difference of these is the largest.
    row("hardly wider", no, {-1e290, largest, 8, 5, 0.0});
    row("hardly wider, step", no, {-1e290, largest, 8, 5, 1e307});
    row("hardly wider, inverted", no, {1e290, -largest, 8, 5, 0.0});
    row("chosen step overflows", no, {0.0, largest, 1, 0, 0.0});
    row("no major steps, chosen step overflows", no, {0.0, largest, 0, 0, 0.0});
    row("no major steps", yes, {0.0, 100.0, 0, 5, 0.0});
    row("the narrowest", yes, {0.0, 1e-300, 8, 5, 0.0});
    row("narrower", no, {0.0, 0.9e-300, 8, 5, 0.0});
    row("not narrow, with a wide step", yes, {0.0, 1.5e-300, 8, 5, 1.0});
    row("narrow, with a wide step", no, {0.0, 0.5e-300, 8, 5, 1.0});
    row("the most steps", yes, {0.0, 2e9, 8, 0, 1.0});
    row("the most steps downwards", yes, {0.0, 2e9, 8, 0, -1.0});
    row("the most steps far from zero", yes, {1e12, 1e12 + 2e9, 8, 0, 1.0});
    row("more steps", no, {0.0, 2e9 + 1.0, 8, 0, 1.0});
    row("more steps downwards", no, {0.0, 2e9 + 1.0, 8, 0, -1.0});
    // The ends of the range add three to the steps.
    row("the most minor steps of ten ticks", yes, {0.0, 7.0, 8, 1000000, 1.0});
    row("more minor steps of ten ticks", no, {0.0, 7.0, 8, 1000001, 1.0});
    row("the most minor steps of ten ticks of half a point", yes, {0.0, 3.5, 8, 1000000, 0.5});
    row("more minor steps of ten ticks of half a point", no, {0.0, 3.5, 8, 1000001, 0.5});
    row("ten million and one ticks", no, {0.0, 8.0, 8, 909091, 1.0});
    row("no minor steps", yes, {0.0, 1e6, 8, 0, 1.0});
    row("a negative number of minor steps", yes, {0.0, 1e6, 8, -1000000000, 1.0});
    row("the most minor steps of all major ticks", yes, {0.0, 1e8, 8, 1000, 1.0});
    row("more minor steps of all major ticks", no, {0.0, 1e8, 8, 1001, 1.0});
    // Of the base 2 the step is 8, of the base 10 it is 10.
    row("the most minor steps of the base 2", yes, {0.0, 56.0, 7, 1000000, 0.0, 2});
    row("more minor steps of the base 2", no, {0.0, 56.0, 7, 1000001, 0.0, 2});
    row("as many of the base 10", yes, {0.0, 56.0, 7, 1000001, 0.0, 10});
}

void tst_scaledivision::divisible()
{
    QFETCH(Request, request);
    QTEST(ScaleDivision::isDivisible(request), "expected");
}

void tst_scaledivision::anchorPrice_data()
{
    QTest::addColumn<double>("factor");
    QTest::addColumn<int>("precision");
    QTest::addColumn<double>("expected");

    const auto row = [](const char* name, double factor, int precision, double expected) {
        QTest::newRow(name) << factor << precision << expected;
    };
    row("integer", 100.0, 2, 100.0);
    row("almost an integer", 100.0000001, 2, 100.0);
    row("within a unit of the last decimal", 100.009, 2, 100.0);
    row("within a unit below", 99.991, 2, 100.0);
    row("a unit off", 100.25, 2, 100.25);
    row("exactly a unit off", 100.125, 3, 100.125);
    row("half a point with a precision of 1", 100.5, 1, 100.5);
    row("exactly a unit off, near zero", 0.1, 1, 0.1);
    row("barely less than a unit of 0.1", 100.0999, 1, 100.0);
    row("many decimals", 100.0000001, 8, 100.0000001);
    row("negative", -2.001, 2, -2.0);
    row("negative, a unit off", -2.25, 2, -2.25);
    row("half up below zero", -2.5, 2, -2.5);
    row("near zero", 0.001, 2, 0.0);
    row("largest", 2147483647.0, 2, 2147483647.0);
    row("just above the largest", 2147483647.001, 2, 2147483647.0);
    row("below the end of the rounding", 2147483647.49, 2, 2147483647.49);
    row("smallest", -2147483648.0, 2, -2147483648.0);
}

void tst_scaledivision::anchorPrice()
{
    QFETCH(double, factor);
    QFETCH(int, precision);
    QFETCH(double, expected);
    // Exactly: QCOMPARE's tolerance is wider than the unit of some rows.
    QVERIFY(ScaleDivision::anchorPrice(factor, precision) == expected);
}

void tst_scaledivision::anchorPriceBeyond32Bits_data()
{
    QTest::addColumn<double>("factor");
    for (const double factor :
        {2147483647.5, 2147483648.0, -2147483648.6, 1e10, -1e10, 1e300, infinity, -infinity, notANumber})
        QTest::newRow(qPrintable(QString::number(factor, 'g', 12))) << factor;
}

void tst_scaledivision::anchorPriceBeyond32Bits()
{
    QFETCH(double, factor);
    QVERIFY(std::isnan(ScaleDivision::anchorPrice(factor, 2)));
}

void tst_scaledivision::anchored_data()
{
    QTest::addColumn<double>("price");
    QTest::addColumn<double>("x1");
    QTest::addColumn<double>("x2");
    QTest::addColumn<Values>("expected");

    // Major ticks at 0, 10, 20, 30, 40.
    const auto row = [](const char* name, double price, double x1, double x2, const Values& expected) {
        QTest::newRow(name) << price << x1 << x2 << expected;
    };
    row("to the right", 12, 0, 40, {2, 12, 22, 32});
    row("to the left", 18, 0, 40, {8, 18, 28, 38});
    row("two equally near: the lower goes right", 15, 0, 40, {5, 15, 25, 35});
    row("onto the lower bound: dropped", 5, 5, 45, {15, 25, 35});
    row("onto the upper bound: dropped", 35, -5, 35, {5, 15, 25});
    row("another onto the lower bound", 25, 15, 45, {25, 35});
    row("another onto the upper bound", 25, 0, 35, {5, 15, 25});
    row("beyond the last", 48, 0, 100, {8, 18, 28, 38, 48});
    row("before the first", -3, -50, 40, {-3, 7, 17, 27, 37});
    constexpr double little = 1.0 / 65536;
    row("barely off a tick", 20 + little, 0, 40, {little, 10 + little, 20 + little, 30 + little});
}

void tst_scaledivision::anchored()
{
    QFETCH(double, price);
    QFETCH(double, x1);
    QFETCH(double, x2);
    QTEST(majorTicks(ScaleDivision::anchored(division(0, 40, {}, {}, {0, 10, 20, 30, 40}), price, x1, x2)),
        "expected");
}

void tst_scaledivision::unchanged_data()
{
    QTest::addColumn<Values>("major");
    QTest::addColumn<double>("price");
    QTest::addColumn<double>("x1");
    QTest::addColumn<double>("x2");

    const Values ticks{0, 1000, 2000};
    const auto row = [&ticks](const char* name, double price, double x1, double x2) {
        QTest::newRow(name) << ticks << price << x1 << x2;
    };
    row("below the range", 99, 100, 1900);
    row("above the range", 1901, 100, 1900);
    row("barely below", std::nextafter(100.0, 0.0), 100, 1900);
    row("barely above", std::nextafter(1900.0, 2000.0), 100, 1900);
    row("inverted", 1500, 1900, 100);
    row("on a tick", 1000, 0, 2000);
    row("as good as on a tick", 1000.0000000005, 0, 2000);
    row("as good as on a tick, by most of the tolerance", 1000.0000000009, 0, 2000);
    row("on zero", 0, -1, 2000);
    row("NaN", notANumber, 0, 2000);
    QTest::newRow("no major tick") << Values{} << 1500.0 << 0.0 << 2000.0;
}

void tst_scaledivision::unchanged()
{
    QFETCH(Values, major);
    QFETCH(double, price);
    QFETCH(double, x1);
    QFETCH(double, x2);
    const QwtScaleDiv before = division(0, 2000, {100, 200}, {500, 1500}, major);
    QVERIFY(ScaleDivision::anchored(before, price, x1, x2) == before);
}

void tst_scaledivision::allTypesAreMoved()
{
    const QwtScaleDiv result
        = ScaleDivision::anchored(division(0, 40, {2, 8, 12, 38}, {5, 15, 39, 35}, {0, 20, 40}), 21.0, 0, 40);
    QCOMPARE(result.ticks(QwtScaleDiv::MinorTick), (Values{3, 9, 13, 39}));
    // In their old order, and without the one that reaches the bound.
    QCOMPARE(result.ticks(QwtScaleDiv::MediumTick), (Values{6, 16, 36}));
    QCOMPARE(result.ticks(QwtScaleDiv::MajorTick), (Values{1, 21}));
}

void tst_scaledivision::boundsStay()
{
    const QwtScaleDiv result = ScaleDivision::anchored(division(3, 37, {}, {}, {10, 20, 30}), 12.0, 3, 37);
    QCOMPARE(result.lowerBound(), 3.0);
    QCOMPARE(result.upperBound(), 37.0);
}

void tst_scaledivision::anchoredTickIsExact()
{
    // A difference of a difference is not what it should be.
    const double price = 0.1;
    const QwtScaleDiv result = ScaleDivision::anchored(division(0, 2, {}, {}, {0.7, 1.4}), price, 0, 2);
    QVERIFY(0.7 - (0.7 - price) != price);
    QVERIFY(majorTicks(result).first() == price);
}

PLOT2D_TEST_MAIN(tst_scaledivision)

#include "tst_scaledivision.moc"
