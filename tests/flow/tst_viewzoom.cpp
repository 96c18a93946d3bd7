#include "flow/wheelfactors.h"
#include "plot2d/viewzoom_p.h"
#include "support/testmain.h"

#include <cmath>
#include <limits>
#include <random>

using ViewZoom::Range;
using ViewZoom::Spans;
using ViewZoom::Start;

Q_DECLARE_METATYPE(ViewZoom::Range)

namespace {

constexpr double largest = std::numeric_limits<double>::max();
constexpr quint64 seed = 20240614;

QRectF between(double left, double right, double bottom, double top)
{
    return QRectF(left, bottom, right - left, top - bottom);
}

/// A view of the prices 100 to 200 and the values 10 to 20.
Start start(const QRectF& curves, double factor, const QPointF& centre = QPointF(125.0, 14.0))
{
    return {{100.0, 200.0}, {10.0, 20.0}, curves, centre, factor};
}

bool isAbout(double value, double expected)
{
    return std::abs(value - expected) <= 1e-9 * std::max(1.0, std::abs(expected));
}

}

class tst_viewzoom : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void notches_data();
    void notches();
    void factors_data();
    void factors();
    void onlyFactorsBelowOneZoomIn();
    void spans_data();
    void spans();
    void spansOfNoWidth();
    void tooSmall_data();
    void tooSmall();
    void lowestPrice_data();
    void lowestPrice();
    void rightEndComesFirst();
    void centreNearZero_data();
    void centreNearZero();
    void highestValue_data();
    void highestValue();
    void boundsThatAreNotFinite();
    void oppositeBoundsThatAreNotFinite();
    void centreKeepsItsPlace();
    void dragged_data();
    void dragged();
    void draggedWithoutWidth();
    void draggedToNothing_data();
    void draggedToNothing();
    void shrinkingGoesOn();
};

void tst_viewzoom::notches_data()
{
    QTest::addColumn<int>("angle");
    QTest::addColumn<int>("expected");
    for (const int sign : {1, -1}) {
        QTest::addRow("less than one, %d", sign) << sign * 119 << 0;
        QTest::addRow("one, %d", sign) << sign * 120 << sign;
        QTest::addRow("less than two, %d", sign) << sign * 239 << sign;
        QTest::addRow("two, %d", sign) << sign * 240 << sign * 2;
        QTest::addRow("eighths are dropped first, %d", sign) << sign * 127 << sign;
    }
    QTest::newRow("none") << 0 << 0;
}

void tst_viewzoom::notches()
{
    QFETCH(int, angle);
    QTEST(ViewZoom::notches(angle), "expected");
}

void tst_viewzoom::factors_data()
{
    QTest::addColumn<int>("notches");
    QTest::addColumn<double>("expected");
    QTest::newRow("one in") << 1 << WheelFactors::in;
    QTest::newRow("one out") << -1 << WheelFactors::out;
    QTest::newRow("two in") << 2 << WheelFactors::fastIn;
    QTest::newRow("two out") << -2 << WheelFactors::fastOut;
    QTest::newRow("many in") << 1000 << WheelFactors::fastIn;
    QTest::newRow("many out") << -1000 << WheelFactors::fastOut;
}

void tst_viewzoom::factors()
{
    QFETCH(int, notches);
    QFETCH(double, expected);
    QVERIFY(ViewZoom::factor(notches));
    QCOMPARE(*ViewZoom::factor(notches), expected);
    QVERIFY(!ViewZoom::factor(0));
}

void tst_viewzoom::onlyFactorsBelowOneZoomIn()
{
    QVERIFY(start({}, 0.99).zoomsIn());
    QVERIFY(!start({}, 1.0).zoomsIn());
    QVERIFY(!start({}, 1.1).zoomsIn());
}

void tst_viewzoom::spans_data()
{
    QTest::addColumn<QRectF>("curves");
    QTest::addColumn<double>("factor");
    QTest::addColumn<double>("price");
    QTest::addColumn<double>("value");
    QTest::newRow("in") << between(0.0, 300.0, 0.0, 30.0) << 0.9 << 90.0 << 9.0;
    QTest::newRow("in, data narrower") << between(120.0, 130.0, 14.0, 15.0) << 0.9 << 90.0 << 9.0;
    QTest::newRow("in, fast") << between(0.0, 300.0, 0.0, 30.0) << 0.89 << 89.0 << 8.9;
    QTest::newRow("out, data wider") << between(0.0, 300.0, 0.0, 30.0) << 1.1 << 110.0 << 11.0;
    QTest::newRow("out, data wider and lower") << between(0.0, 300.0, 14.0, 15.0) << 1.1 << 110.0 << 11.0;
    QTest::newRow("out, data as wide, higher") << between(100.0, 200.0, 0.0, 30.0) << 1.1 << 100.0 << 11.0;
    QTest::newRow("out, data narrower, higher") << between(120.0, 130.0, 0.0, 30.0) << 1.11 << 100.0 << 11.1;
    QTest::newRow("out, data as wide and high") << between(100.0, 200.0, 10.0, 20.0) << 1.1 << 100.0 << 10.0;
}

void tst_viewzoom::spans()
{
    QFETCH(QRectF, curves);
    QFETCH(double, factor);
    QFETCH(double, price);
    QFETCH(double, value);
    const Spans spans = ViewZoom::zoomedSpans(start(curves, factor));
    QVERIFY(isAbout(spans.price, price));
    QVERIFY(isAbout(spans.value, value));
}

void tst_viewzoom::spansOfNoWidth()
{
    for (const double factor : {0.9, 1.1}) {
        Start from = start(between(0.0, 300.0, 0.0, 30.0), factor);
        from.prices.upper = from.prices.lower;
        const Spans spans = ViewZoom::zoomedSpans(from);
        QVERIFY(!ViewZoom::zoomedLowestPrice(from, spans) && !ViewZoom::zoomedHighestValue(from, spans));
    }
}

void tst_viewzoom::tooSmall_data()
{
    QTest::addColumn<double>("price");
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("expected");
    QTest::newRow("as small as may be") << 5.0 << 1e-8 << false;
    QTest::newRow("narrower than a step") << 4.999 << 1.0 << true;
    QTest::newRow("too low") << 50.0 << 0.99e-8 << true;
}

void tst_viewzoom::tooSmall()
{
    QFETCH(double, price);
    QFETCH(double, value);
    QTEST(ViewZoom::isTooSmall({price, value}, 5.0), "expected");
}

void tst_viewzoom::lowestPrice_data()
{
    QTest::addColumn<QRectF>("curves");
    QTest::addColumn<double>("factor");
    QTest::addColumn<double>("centre");
    QTest::addColumn<double>("expected");
    const QRectF wide = between(0.0, 300.0, 0.0, 30.0);
    QTest::newRow("in") << wide << 0.9 << 125.0 << 102.5;
    QTest::newRow("out") << wide << 1.1 << 125.0 << 97.5;
    QTest::newRow("in about the upper bound") << wide << 0.9 << 200.0 << 110.0;
    QTest::newRow("in about the lower bound") << wide << 0.9 << 100.0 << 10.0;
    QTest::newRow("in about almost the lower bound") << wide << 0.9 << 100.0 + 5e-11 << 10.0;
    QTest::newRow("out about the lower bound") << wide << 1.1 << 100.0 << -10.0;
    QTest::newRow("out, left end in view") << between(120.0, 300.0, 0.0, 30.0) << 1.1 << 150.0 << 100.0;
    QTest::newRow("out, left end on the bound") << between(100.0, 300.0, 0.0, 30.0) << 1.1 << 150.0 << 95.0;
    QTest::newRow("out, right end in view") << between(0.0, 180.0, 0.0, 30.0) << 1.1 << 125.0 << 90.0;
    QTest::newRow("out, right end on the bound") << between(0.0, 200.0, 0.0, 30.0) << 1.1 << 125.0 << 97.5;
    // The data is narrower than the view then, so that the view keeps its width.
    QTest::newRow("out, both ends in view") << between(120.0, 180.0, 0.0, 30.0) << 1.1 << 125.0 << 100.0;
    QTest::newRow("in, both ends in view") << between(120.0, 180.0, 0.0, 30.0) << 0.9 << 125.0 << 102.5;
    // Beyond the lower bound the ratio is negative; far beyond, it is -1 for all that counts.
    QTest::newRow("in about a price outside") << wide << 0.9 << 50.0 << 95.0;
    QTest::newRow("in about a price far outside") << wide << 0.9 << 1e16 << 1e16 - 90.0;
}

void tst_viewzoom::lowestPrice()
{
    QFETCH(QRectF, curves);
    QFETCH(double, factor);
    QFETCH(double, centre);
    QFETCH(double, expected);
    const Start from = start(curves, factor, QPointF(centre, 14.0));
    const auto bound = ViewZoom::zoomedLowestPrice(from, ViewZoom::zoomedSpans(from));
    QVERIFY(bound);
    QVERIFY2(isAbout(*bound, expected), qPrintable(QString::number(*bound, 'g', 17)));
}

void tst_viewzoom::rightEndComesFirst()
{
    // Both ends are in view: the right one stays, and the view grows to the left.
    const auto bound
        = ViewZoom::zoomedLowestPrice(start(between(120.0, 180.0, 0.0, 30.0), 1.1), {110.0, 11.0});
    QVERIFY(bound);
    QCOMPARE(*bound, 90.0);
}

void tst_viewzoom::centreNearZero_data()
{
    QTest::addColumn<double>("centre");
    QTest::addColumn<bool>("onLowerBound");
    // What separates the centre from the bound 0 counts in comparison with 10.
    QTest::newRow("within the tolerance of 10") << 5e-12 << true;
    QTest::newRow("just beyond it") << 1.05e-11 << false;
    QTest::newRow("within the tolerance of 100 alone") << 5e-11 << false;
}

void tst_viewzoom::centreNearZero()
{
    QFETCH(double, centre);
    QFETCH(bool, onLowerBound);
    const QRectF wide = between(-1000.0, 1000.0, -1000.0, 1000.0);
    const Start from{{0.0, 100.0}, {0.0, 10.0}, wide, QPointF(centre, centre), 0.9};
    const auto price = ViewZoom::zoomedLowestPrice(from, {90.0, 9.0});
    QVERIFY(price);
    QVERIFY2(isAbout(*price, onLowerBound ? -90.0 : 0.0), qPrintable(QString::number(*price)));
    const auto value = ViewZoom::zoomedHighestValue(from, {90.0, 9.0});
    QVERIFY(value);
    QVERIFY2(isAbout(*value, onLowerBound ? 0.0 : 9.0), qPrintable(QString::number(*value)));
}

void tst_viewzoom::highestValue_data()
{
    QTest::addColumn<QRectF>("curves");
    QTest::addColumn<double>("factor");
    QTest::addColumn<double>("centre");
    QTest::addColumn<double>("expected");
    const QRectF high = between(0.0, 300.0, 0.0, 30.0);
    QTest::newRow("in") << high << 0.9 << 14.0 << 19.4;
    QTest::newRow("out") << high << 1.1 << 14.0 << 20.6;
    QTest::newRow("in about the upper bound") << high << 0.9 << 20.0 << 20.0;
    QTest::newRow("in about the lower bound") << high << 0.9 << 10.0 << 10.0;
    QTest::newRow("out about the lower bound") << high << 1.1 << 10.0 << 10.0;
    QTest::newRow("out, bottom in view") << between(0.0, 300.0, 12.0, 30.0) << 1.1 << 14.0 << 21.0;
    QTest::newRow("out, top in view") << between(0.0, 300.0, 0.0, 18.0) << 1.1 << 14.0 << 20.0;
    QTest::newRow("out, both in view") << between(0.0, 300.0, 12.0, 18.0) << 1.1 << 14.0 << 20.0;
    QTest::newRow("out, bottom on the bound") << between(0.0, 300.0, 10.0, 30.0) << 1.1 << 14.0 << 20.6;
    QTest::newRow("out, top on the bound") << between(0.0, 300.0, 0.0, 20.0) << 1.1 << 14.0 << 20.6;
    QTest::newRow("in, both in view") << between(0.0, 300.0, 12.0, 18.0) << 0.9 << 14.0 << 19.4;
    QTest::newRow("in about a value far outside") << high << 0.9 << 1e16 << 1e16;
}

void tst_viewzoom::highestValue()
{
    QFETCH(QRectF, curves);
    QFETCH(double, factor);
    QFETCH(double, centre);
    QFETCH(double, expected);
    const Start from = start(curves, factor, QPointF(125.0, centre));
    const auto bound = ViewZoom::zoomedHighestValue(from, ViewZoom::zoomedSpans(from));
    QVERIFY(bound);
    QVERIFY2(isAbout(*bound, expected), qPrintable(QString::number(*bound, 'g', 17)));
}

void tst_viewzoom::boundsThatAreNotFinite()
{
    Start from = start(between(0.0, 300.0, 0.0, 30.0), 0.9);
    from.centre = QPointF(std::numeric_limits<double>::quiet_NaN(), 14.0);
    QVERIFY(!ViewZoom::zoomedLowestPrice(from, {90.0, 9.0}));
    QVERIFY(ViewZoom::zoomedHighestValue(from, {90.0, 9.0}));
    from.centre = QPointF(125.0, std::numeric_limits<double>::infinity());
    QVERIFY(ViewZoom::zoomedLowestPrice(from, {90.0, 9.0}));
    QVERIFY(!ViewZoom::zoomedHighestValue(from, {90.0, 9.0}));
}

void tst_viewzoom::oppositeBoundsThatAreNotFinite()
{
    const Range high{0.6 * largest, 0.98 * largest};
    const Range low{-0.98 * largest, -0.6 * largest};
    const Spans spans{0.42 * largest, 0.42 * largest};
    // The data reaches further than the view, which zooms out about its bound nearer to zero.
    const QRectF positive(0.01 * largest, 0.01 * largest, 0.98 * largest, 0.98 * largest);
    const Start above{high, high, positive, QPointF(high.lower * 1.0001, high.lower * 1.0001), 1.1};
    QVERIFY(!ViewZoom::zoomedLowestPrice(above, spans));
    QVERIFY(!ViewZoom::zoomedHighestValue(above, spans));
    const QRectF negative(-0.99 * largest, -0.99 * largest, 0.98 * largest, 0.98 * largest);
    const Start below{low, low, negative, QPointF(low.upper * 1.0001, low.upper * 1.0001), 1.1};
    QVERIFY(!ViewZoom::zoomedLowestPrice(below, spans));
    QVERIFY(!ViewZoom::zoomedHighestValue(below, spans));
}

void tst_viewzoom::centreKeepsItsPlace()
{
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> place(-1000.0, 1000.0);
    std::uniform_real_distribution<double> width(0.1, 500.0);
    std::uniform_real_distribution<double> part(0.01, 0.99);
    std::uniform_int_distribution<int> notches(0, 3);
    for (int i = 0; i < 2000; ++i) {
        const double left = place(random);
        const double bottom = place(random);
        const double across = part(random);
        const double along = part(random);
        Start from{{left, left + width(random)}, {bottom, bottom + width(random)},
            QRectF(-1e5, -1e5, 2e5, 2e5), QPointF(), QVector<double>{0.9, 1.1, 0.89, 1.11}[notches(random)]};
        from.centre = QPointF(left + across * from.prices.width(), bottom + along * from.values.width());
        const Spans spans = ViewZoom::zoomedSpans(from);
        const auto low = ViewZoom::zoomedLowestPrice(from, spans);
        const auto high = ViewZoom::zoomedHighestValue(from, spans);
        const QString where = QStringLiteral("seed %1 case %2").arg(seed).arg(i);
        QVERIFY2(low && high, qPrintable(where));
        QVERIFY2(std::abs((from.centre.x() - *low) / spans.price - across) < 1e-8, qPrintable(where));
        QVERIFY2(std::abs((*high - from.centre.y()) / spans.value - (1.0 - along)) < 1e-8, qPrintable(where));
    }
}

void tst_viewzoom::dragged_data()
{
    QTest::addColumn<Range>("data");
    QTest::addColumn<bool>("shrinks");
    QTest::addColumn<Range>("expected");
    QTest::newRow("shrinks") << Range{0.0, 300.0} << true << Range{105.0, 195.0};
    QTest::newRow("shrinks around all data") << Range{120.0, 130.0} << true << Range{105.0, 195.0};
    QTest::newRow("grows to both sides") << Range{0.0, 300.0} << false << Range{95.0, 205.0};
    QTest::newRow("grows to the right") << Range{100.0, 300.0} << false << Range{100.0, 210.0};
    QTest::newRow("left end in view") << Range{120.0, 300.0} << false << Range{100.0, 210.0};
    QTest::newRow("grows to the left") << Range{0.0, 200.0} << false << Range{90.0, 200.0};
    QTest::newRow("right end in view") << Range{0.0, 180.0} << false << Range{90.0, 200.0};
}

void tst_viewzoom::dragged()
{
    QFETCH(Range, data);
    QFETCH(bool, shrinks);
    QFETCH(Range, expected);
    const auto range = ViewZoom::dragged({100.0, 200.0}, data, shrinks);
    QVERIFY(range);
    QCOMPARE(range->lower, expected.lower);
    QCOMPARE(range->upper, expected.upper);
}

void tst_viewzoom::draggedWithoutWidth()
{
    const auto range = ViewZoom::dragged({5.0, 5.0}, {0.0, 10.0}, true);
    QVERIFY2(range, "what has no width cannot shrink, and stays");
    QCOMPARE(range->lower, 5.0);
    QCOMPARE(range->upper, 5.0);
}

void tst_viewzoom::draggedToNothing_data()
{
    QTest::addColumn<Range>("view");
    QTest::addColumn<Range>("data");
    QTest::newRow("covers the data") << Range{100.0, 200.0} << Range{100.0, 200.0};
    QTest::newRow("wider than the data") << Range{100.0, 200.0} << Range{120.0, 130.0};
    QTest::newRow("wider than any number")
        << Range{-0.495 * largest, 0.495 * largest} << Range{-largest, largest};
    QTest::newRow("not finite") << Range{-0.9 * largest, 0.9 * largest} << Range{-largest, largest};
}

void tst_viewzoom::draggedToNothing()
{
    QFETCH(Range, view);
    QFETCH(Range, data);
    QVERIFY(!ViewZoom::dragged(view, data, false));
}

void tst_viewzoom::shrinkingGoesOn()
{
    Range view{100.0, 200.0};
    for (int i = 0; i < 100; ++i) {
        const auto next = ViewZoom::dragged(view, {0.0, 300.0}, true);
        QVERIFY(next);
        QVERIFY(isAbout(next->width(), view.width() * 0.9));
        view = *next;
    }
    QVERIFY(isAbout(view.lower + view.upper, 300.0));
}

PLOT2D_TEST_MAIN(tst_viewzoom)
#include "tst_viewzoom.moc"
