#include "plot2d/panlimits_p.h"
#include "support/testmain.h"

#include <qwt_transform.h>

#include <cmath>
#include <random>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr quint64 seed = 20240613;

/// Prices on a canvas 100 pixels wide.
PanLimits::Axis prices(double lower, double upper)
{
    PanLimits::Axis axis;
    axis.map.setPaintInterval(0.0, 100.0);
    axis.map.setScaleInterval(lower, upper);
    axis.lower = lower;
    axis.upper = upper;
    return axis;
}

/// Values on a canvas 100 pixels high, the lowest at the bottom.
PanLimits::Axis values(double lower, double upper)
{
    PanLimits::Axis axis = prices(lower, upper);
    axis.map.setPaintInterval(100.0, 0.0);
    return axis;
}

QRectF between(double left, double right, double bottom, double top)
{
    return QRectF(left, bottom, right - left, top - bottom);
}

}

class tst_panlimits : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void draggedView();
    void draggedViewOfDisabledAxes();
    void draggedViewThatIsNone_data();
    void draggedViewThatIsNone();
    void withoutPixels();

    void draggedViewBeyondAllNumbers();

    void limits_data();
    void limits();
    void limitsAtTheEndsOfTheNumbers();
    void overlap_data();
    void overlap();
    void inside_data();
    void inside();
    void infiniteSides_data();
    void infiniteSides();

    void shiftUntil_data();
    void shiftUntil();
    void shiftUntilOnNoAxis();

    void limitedShiftX_data();
    void limitedShiftX();
    void limitedShiftY_data();
    void limitedShiftY();
    void randomShifts();
};

void tst_panlimits::draggedView()
{
    const auto view = PanLimits::draggedView(prices(100.0, 200.0), values(0.0, 50.0), 10.0, 20.0);
    QVERIFY(view);
    QCOMPARE(*view, between(90.0, 190.0, 10.0, 60.0));
}

void tst_panlimits::draggedViewOfDisabledAxes()
{
    PanLimits::Axis x = prices(100.0, 200.0);
    PanLimits::Axis y = values(0.0, 50.0);
    y.enabled = false;
    const auto view = PanLimits::draggedView(x, y, -10.0, 20.0);
    QVERIFY2(view, "a view without height is one");
    QCOMPARE(*view, between(110.0, 210.0, 0.0, 0.0));
    x.enabled = false;
    QVERIFY2(!PanLimits::draggedView(x, values(0.0, 50.0), 10.0, 20.0), "a view without width is none");
}

void tst_panlimits::draggedViewThatIsNone_data()
{
    QTest::addColumn<double>("left");
    QTest::addColumn<double>("right");
    QTest::addColumn<double>("bottom");
    QTest::addColumn<double>("top");
    QTest::newRow("no width") << 100.0 << 100.0 << 0.0 << 50.0;
    QTest::newRow("inverted prices") << 200.0 << 100.0 << 0.0 << 50.0;
    QTest::newRow("inverted values") << 100.0 << 200.0 << 50.0 << 0.0;
    QTest::newRow("NaN") << notANumber << 200.0 << 0.0 << 50.0;
    QTest::newRow("infinite") << 100.0 << 200.0 << 0.0 << infinity;
}

void tst_panlimits::draggedViewThatIsNone()
{
    QFETCH(double, left);
    QFETCH(double, right);
    QFETCH(double, bottom);
    QFETCH(double, top);
    QVERIFY(!PanLimits::draggedView(prices(left, right), values(bottom, top), 10.0, 20.0));
}

void tst_panlimits::withoutPixels()
{
    PanLimits::Axis flat = prices(100.0, 200.0);
    flat.map.setPaintInterval(50.0, 50.0);
    PanLimits::Axis endless = prices(100.0, 200.0);
    endless.map.setScaleInterval(-1.5e308, 1.5e308);
    for (const PanLimits::Axis& axis : {flat, endless}) {
        QVERIFY(!PanLimits::draggedView(axis, values(0.0, 50.0), 10.0, 20.0));
        QCOMPARE(PanLimits::shiftUntil(axis, 95.0, PanLimits::Lower, 12.0), PanLimits::noShift);
    }
}

void tst_panlimits::draggedViewBeyondAllNumbers()
{
    PanLimits::Axis x = prices(1.0, 1e300);
    x.map.setTransformation(new QwtLogTransform);
    x.map.setScaleInterval(1.0, 1e300);
    QVERIFY(PanLimits::draggedView(x, values(0.0, 50.0), -1.0, 0.0));
    QVERIFY2(!PanLimits::draggedView(x, values(0.0, 50.0), -50.0, 0.0), "its upper price is infinite");
    PanLimits::Axis y = values(1.0, 1e300);
    y.map.setTransformation(new QwtLogTransform);
    y.map.setScaleInterval(1.0, 1e300);
    QVERIFY(PanLimits::draggedView(prices(100.0, 200.0), y, 0.0, 1.0));
    QVERIFY2(!PanLimits::draggedView(prices(100.0, 200.0), y, 0.0, 50.0), "its upper value is infinite");
}

void tst_panlimits::limits_data()
{
    QTest::addColumn<QRectF>("curves");
    QTest::addColumn<QRectF>("expected"); // null for none
    QTest::newRow("usual") << between(1.0, 2.0, 3.0, 4.0) << between(1.0, 2.0, 3.0, 4.0);
    QTest::newRow("one value") << between(1.0, 2.0, 3.0, 3.0) << between(1.0, 2.0, -7.0, 13.0);
    constexpr double largest = std::numeric_limits<double>::max();
    QTest::newRow("the largest value") << QRectF(1.0, largest, 1.0, 0.0) << QRectF(1.0, largest, 1.0, 20.0);
    QTest::newRow("one price") << between(1.0, 1.0, 3.0, 4.0) << QRectF();
    QTest::newRow("no curves") << QRectF() << QRectF();
    QTest::newRow("negative height") << between(1.0, 2.0, 4.0, 3.0) << QRectF();
    QTest::newRow("negative width") << between(2.0, 1.0, 3.0, 4.0) << QRectF();
}

void tst_panlimits::limits()
{
    QFETCH(QRectF, curves);
    QFETCH(QRectF, expected);
    const QRectF view = between(0.0, 10.0, 0.0, 40.0);
    const auto limits = PanLimits::limits(curves, view);
    QCOMPARE(limits.has_value(), !expected.isNull());
    if (limits)
        QCOMPARE(*limits, expected);
    // Around one value as much is free as a quarter of the view.
    const double none = std::numeric_limits<double>::quiet_NaN();
    QVERIFY(PanLimits::limits(between(1.0, 2.0, 3.0, 3.0), QRectF(0.0, 0.0, 10.0, none)));
    QVERIFY(!PanLimits::limits(between(1.0, 2.0, 3.0, 3.0), QRectF(0.0, 0.0, 10.0, -40.0)));
}

void tst_panlimits::limitsAtTheEndsOfTheNumbers()
{
    constexpr double lowest = std::numeric_limits<double>::lowest();
    const QRectF view(0.0, lowest, 10.0, 1e308);
    const auto limits = PanLimits::limits(QRectF(1.0, lowest, 1.0, 0.0), view);
    QVERIFY(limits);
    QCOMPARE(limits->top(), lowest);
    QCOMPARE(limits->height(), 0.5e308);
    // An end that is no number limits nothing.
    const auto endless = PanLimits::limits(QRectF(1.0, -lowest, 1.0, 0.0), view);
    QVERIFY(endless && std::isinf(endless->bottom()));
    const PanLimits::Axis low = values(-2e307, 0.0);
    QCOMPARE(PanLimits::limitedShiftY(low, between(0.0, 10.0, -1e307, 1e307), *endless, 5.0), 5.0);
}

void tst_panlimits::overlap_data()
{
    QTest::addColumn<QRectF>("view");
    QTest::addColumn<bool>("expected");
    QTest::newRow("inside") << between(120.0, 130.0, 0.0, 1.0) << true;
    QTest::newRow("around") << between(50.0, 250.0, 0.0, 1.0) << true;
    QTest::newRow("left") << between(50.0, 99.0, 0.0, 1.0) << false;
    QTest::newRow("touching on the left") << between(50.0, 100.0, 0.0, 1.0) << true;
    QTest::newRow("right") << between(201.0, 250.0, 0.0, 1.0) << false;
    QTest::newRow("touching on the right") << between(200.0, 250.0, 0.0, 1.0) << true;
    QTest::newRow("above") << between(120.0, 130.0, 90.0, 91.0) << true;
}

void tst_panlimits::overlap()
{
    QFETCH(QRectF, view);
    QTEST(PanLimits::overlapInPrice(view, between(100.0, 200.0, 0.0, 10.0)), "expected");
}

void tst_panlimits::inside_data()
{
    QTest::addColumn<QRectF>("view");
    QTest::addColumn<bool>("expected");
    QTest::newRow("inside") << between(120.0, 130.0, 4.0, 5.0) << true;
    QTest::newRow("the same") << between(100.0, 200.0, 1.0, 10.0) << true;
    QTest::newRow("fuzzily inside") << between(100.0 - 1e-11, 200.0, 1.0, 10.0) << true;
    QTest::newRow("too far left") << between(99.0, 200.0, 1.0, 10.0) << false;
    QTest::newRow("too far right") << between(100.0, 201.0, 1.0, 10.0) << false;
    QTest::newRow("too low") << between(100.0, 200.0, 0.5, 10.0) << false;
    QTest::newRow("too high") << between(100.0, 200.0, 1.0, 11.0) << false;
    QTest::newRow("apart") << between(300.0, 400.0, 1.0, 10.0) << false;
}

void tst_panlimits::infiniteSides_data()
{
    QTest::addColumn<QRectF>("limits");
    // As the bounding rectangle of an infinite sample is: its far side is NaN where the near one is infinite.
    QTest::newRow("above") << QRectF(0.0, 0.0, 300.0, infinity);
    QTest::newRow("below") << QRectF(0.0, -infinity, 300.0, infinity);
    QTest::newRow("right") << QRectF(0.0, 0.0, infinity, 100.0);
    QTest::newRow("left") << QRectF(-infinity, 0.0, infinity, 100.0);
    QTest::newRow("all NaN") << QRectF(notANumber, notANumber, notANumber, notANumber);
}

void tst_panlimits::infiniteSides()
{
    QFETCH(QRectF, limits);
    const QRectF view = between(112.0, 212.0, 10.0, 20.0);
    QVERIFY(PanLimits::limits(limits, view));
    QVERIFY(PanLimits::overlapInPrice(view, limits));
    QCOMPARE(PanLimits::isInside(view, limits), !std::isnan(limits.width()));
    QCOMPARE(PanLimits::limitedShiftX(prices(100.0, 200.0), view, limits, -12.0), -12.0);
    QCOMPARE(PanLimits::limitedShiftX(prices(124.0, 224.0), view, limits, 12.0), 12.0);
    QCOMPARE(PanLimits::limitedShiftY(values(8.0, 18.0), view, limits, 20.0), 20.0);
    QCOMPARE(PanLimits::limitedShiftY(values(12.0, 22.0), view, limits, -20.0), -20.0);
}

void tst_panlimits::inside()
{
    QFETCH(QRectF, view);
    QTEST(PanLimits::isInside(view, between(100.0, 200.0, 1.0, 10.0)), "expected");
}

void tst_panlimits::shiftUntil_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("side");
    QTest::addColumn<double>("maxShift");
    QTest::addColumn<double>("expected");
    const double none = PanLimits::noShift;
    // A pixel is one unit of price, the view is 100 to 200.
    QTest::newRow("all of it") << 95.0 << 0 << 12.0 << 12.0;
    QTest::newRow("a third") << 95.0 << 0 << 36.0 << 12.0;
    QTest::newRow("a sixth would overshoot by a tenth") << 95.0 << 0 << 90.0 << 90.0 / 7.0;
    QTest::newRow("a ninth") << 95.0 << 0 << 126.0 << 14.0;
    QTest::newRow("a tenth is not tried") << 95.0 << 0 << 140.0 << none;
    QTest::newRow("two thirds") << 50.0 << 0 << 80.0 << 160.0 / 3.0;
    QTest::newRow("too short") << 95.0 << 0 << 5.0 << none;
    QTest::newRow("too coarse") << 95.0 << 0 << 1000.0 << none;
    QTest::newRow("past it already") << 105.0 << 0 << 12.0 << 0.0;
    QTest::newRow("far past it") << 150.0 << 0 << 12.0 << none;
    QTest::newRow("on it") << 100.0 << 0 << 12.0 << 6.0;
    QTest::newRow("upper, all of it") << 205.0 << 1 << -12.0 << -12.0;
    QTest::newRow("upper, a third") << 205.0 << 1 << -36.0 << -12.0;
    QTest::newRow("upper, wrong way") << 205.0 << 1 << 12.0 << none;
    QTest::newRow("upper, past it already") << 195.0 << 1 << -12.0 << 0.0;
    QTest::newRow("no side") << 95.0 << 2 << 12.0 << none;
    QTest::newRow("no side, past the upper end already") << 205.0 << 2 << 12.0 << none;
    QTest::newRow("no side below") << 95.0 << -1 << 12.0 << none;
    QTest::newRow("NaN") << notANumber << 0 << 12.0 << none;
}

void tst_panlimits::shiftUntil()
{
    QFETCH(double, value);
    QFETCH(int, side);
    QFETCH(double, maxShift);
    QTEST(PanLimits::shiftUntil(prices(100.0, 200.0), value, side, maxShift), "expected");
}

void tst_panlimits::shiftUntilOnNoAxis()
{
    QCOMPARE(PanLimits::noShift, 1.7976931348623157e308);
    PanLimits::Axis axis = prices(100.0, 200.0);
    axis.enabled = false;
    QCOMPARE(PanLimits::shiftUntil(axis, 95.0, 0, 12.0), PanLimits::noShift);
    QCOMPARE(PanLimits::shiftUntil(prices(100.0, 100.0), 95.0, 0, 12.0), PanLimits::noShift);
    QCOMPARE(PanLimits::shiftUntil(prices(200.0, 100.0), 95.0, 0, 12.0), PanLimits::noShift);
}

void tst_panlimits::limitedShiftX_data()
{
    QTest::addColumn<double>("dataLeft");
    QTest::addColumn<double>("dataRight");
    QTest::addColumn<double>("dx");
    QTest::addColumn<double>("expected");
    QTest::newRow("away from the ends") << 0.0 << 300.0 << 12.0 << 12.0;
    QTest::newRow("up to the left end") << 88.0 << 300.0 << 12.0 << 12.0;
    QTest::newRow("just past the left end") << 95.0 << 300.0 << 12.0 << 12.0;
    QTest::newRow("far past the left end") << 95.0 << 300.0 << 36.0 << 12.0;
    QTest::newRow("much too far") << 95.0 << 300.0 << 1000.0 << 0.0;
    QTest::newRow("left end on the bound") << 100.0 << 300.0 << 12.0 << 0.0;
    QTest::newRow("left end in view") << 120.0 << 300.0 << 12.0 << 0.0;
    QTest::newRow("left end in view, not dragged") << 120.0 << 300.0 << 0.0 << 0.0;
    QTest::newRow("left end in view, dragged left") << 120.0 << 300.0 << -12.0 << -12.0;
    QTest::newRow("left end in view, less than a pixel") << 120.0 << 300.0 << 0.5 << 0.5;
    QTest::newRow("left end in view, a pixel") << 120.0 << 300.0 << 1.0 << 0.0;
    QTest::newRow("right end in view, less than a pixel") << 0.0 << 180.0 << 0.5 << 0.5;
    QTest::newRow("up to the right end") << 0.0 << 212.0 << -12.0 << -12.0;
    QTest::newRow("right end in view, not dragged") << 0.0 << 180.0 << 0.0 << 0.0;
    QTest::newRow("just past the right end") << 0.0 << 205.0 << -12.0 << -12.0;
    QTest::newRow("far past the right end") << 0.0 << 205.0 << -36.0 << -12.0;
    QTest::newRow("right end on the bound") << 0.0 << 200.0 << -12.0 << 0.0;
    QTest::newRow("right end in view") << 0.0 << 180.0 << -12.0 << 0.0;
    QTest::newRow("right end in view, dragged right") << 0.0 << 180.0 << 12.0 << 12.0;
}

void tst_panlimits::limitedShiftX()
{
    QFETCH(double, dataLeft);
    QFETCH(double, dataRight);
    QFETCH(double, dx);
    const QRectF view = between(100.0 - dx, 200.0 - dx, 0.0, 50.0);
    const QRectF data = between(dataLeft, dataRight, 10.0, 20.0);
    QTEST(PanLimits::limitedShiftX(prices(100.0, 200.0), view, data, dx), "expected");
}

void tst_panlimits::limitedShiftY_data()
{
    QTest::addColumn<double>("dataLow");
    QTest::addColumn<double>("dataHigh");
    QTest::addColumn<double>("dy");
    QTest::addColumn<double>("expected");
    // Dragged down the view moves up.
    QTest::newRow("away from the ends") << 0.0 << 300.0 << 12.0 << 12.0;
    QTest::newRow("up to the top") << 0.0 << 212.0 << 12.0 << 12.0;
    QTest::newRow("down to the bottom") << 88.0 << 300.0 << -12.0 << -12.0;
    QTest::newRow("top in view, less than a pixel") << 0.0 << 180.0 << 0.5 << 0.5;
    QTest::newRow("top in view, a pixel") << 0.0 << 180.0 << 1.0 << 0.0;
    QTest::newRow("top in view, more than a pixel") << 0.0 << 180.0 << 1.5 << 0.0;
    QTest::newRow("bottom in view, less than a pixel") << 120.0 << 300.0 << 0.5 << 0.5;
    QTest::newRow("bottom in view, less than a pixel up") << 120.0 << 300.0 << -0.5 << 0.0;
    QTest::newRow("just past the top") << 0.0 << 205.0 << 12.0 << 12.0;
    QTest::newRow("far past the top") << 0.0 << 205.0 << 36.0 << 12.0;
    QTest::newRow("top on the bound") << 0.0 << 200.0 << 12.0 << 0.0;
    QTest::newRow("top in view") << 0.0 << 180.0 << 12.0 << 0.0;
    QTest::newRow("top in view, dragged up") << 0.0 << 180.0 << -12.0 << -12.0;
    QTest::newRow("just past the bottom") << 95.0 << 300.0 << -12.0 << -12.0;
    QTest::newRow("far past the bottom") << 95.0 << 300.0 << -36.0 << -12.0;
    QTest::newRow("much too far") << 95.0 << 300.0 << -1000.0 << 0.0;
    QTest::newRow("bottom on the bound") << 100.0 << 300.0 << -12.0 << 0.0;
    QTest::newRow("bottom in view") << 120.0 << 300.0 << -12.0 << 0.0;
    QTest::newRow("bottom in view, dragged down") << 120.0 << 300.0 << 12.0 << 12.0;
}

void tst_panlimits::limitedShiftY()
{
    QFETCH(double, dataLow);
    QFETCH(double, dataHigh);
    QFETCH(double, dy);
    const QRectF view = between(0.0, 50.0, 100.0 + dy, 200.0 + dy);
    const QRectF data = between(10.0, 20.0, dataLow, dataHigh);
    QTEST(PanLimits::limitedShiftY(values(100.0, 200.0), view, data, dy), "expected");
}

void tst_panlimits::randomShifts()
{
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> place(-500.0, 500.0);
    std::uniform_real_distribution<double> width(1.0, 300.0);
    std::uniform_int_distribution<int> drag(-200, 200);
    for (int i = 0; i < 5000; ++i) {
        const double lower = place(random);
        const double span = width(random);
        const double dataLeft = place(random);
        const QRectF data = between(dataLeft, dataLeft + width(random) * 4.0, 0.0, 1.0);
        const double dx = drag(random);
        const double perPixel = span / 100.0;
        const QRectF view = between(lower - dx * perPixel, lower + span - dx * perPixel, 0.0, 1.0);
        const double shift = PanLimits::limitedShiftX(prices(lower, lower + span), view, data, dx);
        const QString where = QStringLiteral("seed %1 case %2").arg(seed).arg(i);
        QVERIFY2(shift * dx >= 0.0 && std::abs(shift) <= std::abs(dx), qPrintable(where));
        if (shift == 0.0)
            continue;
        const double past = dx > 0.0 ? data.left() - (lower - shift * perPixel)
                                     : lower + span - shift * perPixel - data.right();
        QVERIFY2(past < span * 0.1 * (1.0 + 1e-9), qPrintable(where));
    }
}

PLOT2D_TEST_MAIN(tst_panlimits)
#include "tst_panlimits.moc"
