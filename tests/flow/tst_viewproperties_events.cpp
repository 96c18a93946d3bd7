#include "flow/randomturn.h"
#include "support/testmain.h"

#include <functional>
#include <optional>

using ViewProperty::gap;
using ViewProperty::rounding;
using ViewZoom::Range;

namespace {

constexpr quint64 seed = 20261121;
constexpr int plots = 40;
constexpr int notch = 120;

using State = RandomPlot::State;

/// What is said of a property that does not hold; made only then.
using Where = std::function<QString()>;

/// A pan that was not refused.
struct AcceptedPan {
    State before;
    State after;
    /// The prices that the whole drag would show.
    Range dragged;
    double perPixel = 0.0;
};

/// A drag on an axis.
struct AxisDrag {
    bool onX = false;
    /// In pixels, positive to the right and down.
    int way = 0;
    State before;
    State after;

    const Range& dragged(const State& state) const { return onX ? state.prices : state.values; }
    bool moved() const
    {
        return dragged(after).lower != dragged(before).lower || dragged(after).upper != dragged(before).upper;
    }
};

bool isAbout(const Range& range, const Range& expected, double tolerance)
{
    return std::abs(range.lower - expected.lower) <= tolerance
        && std::abs(range.upper - expected.upper) <= tolerance;
}

}

/// What holds of the mouse's and the wheel's events on a shown plot, whatever the view and the data.
class tst_viewproperties_events : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void pans();
    void zooms();
    void oneInAndOneOut();
    void axisDrags();

private:
    static void checkPan(RandomPlot& plot, const AcceptedPan& pan, const QString& where);
    static void checkZoomedPrices(const RandomTurn& wheel, const State& after, const Where& where);
    static void checkZoomedValues(const RandomTurn& wheel, const State& after, const Where& where);
    static void checkAxisDrag(const AxisDrag& drag, const Where& where);
};

void tst_viewproperties_events::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_viewproperties_events::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

/// The view keeps data in sight, and goes no farther past an end than a tenth of it and half a pixel.
void tst_viewproperties_events::checkPan(RandomPlot& plot, const AcceptedPan& pan, const QString& where)
{
    const QRectF curves = plot.plot().curvesRectangle();
    const Range data{curves.left(), curves.right()};
    const double tolerance = rounding(pan.before.prices) + 1e-12 * pan.before.prices.width();
    HOLDS(std::abs(pan.after.prices.width() - pan.before.prices.width()) <= tolerance, where);
    HOLDS(std::abs(pan.after.values.width() - pan.before.values.width())
            <= rounding(pan.before.values) + 1e-12 * pan.before.values.width(),
        where);
    HOLDS(gap(pan.dragged, data) <= tolerance, where);
    HOLDS(gap(pan.after.prices, data) <= gap(pan.before.prices, data) + tolerance, where);
    const double past = 0.1 * pan.before.prices.width() + 0.5 * pan.perPixel + tolerance;
    HOLDS(pan.after.prices.lower >= std::min(pan.before.prices.lower, data.lower) - past, where);
    HOLDS(pan.after.prices.upper <= std::max(pan.before.prices.upper, data.upper) + past, where);
}

void tst_viewproperties_events::pans()
{
    ViewRandom random(seed);
    int moves = 0;
    int refused = 0;
    for (int i = 0; i < plots; ++i) {
        RandomPlot plot(random);
        plot.addCurves(random.dataAbout(plot.prices()), random.dataAbout(plot.values()));
        for (int j = 0; j < 15; ++j) {
            if (!plot.hasRoomForPrices())
                break;
            const State before = plot.state();
            const QPoint from = plot.pointIn(plot.canvas());
            const QPoint to = plot.pointIn(plot.canvas());
            const QwtInterval dragged = moved(plot.plot(), QwtPlot::xBottom, to.x() - from.x());
            const double perPixel = before.prices.width() / plot.plot().canvasMap(QwtPlot::xBottom).pDist();
            plot.drag(from, to);
            const State after = plot.state();
            const auto where = [&] {
                return plot.text(QStringLiteral("plot %1 pan %2 by (%3, %4)")
                                     .arg(i)
                                     .arg(j)
                                     .arg(to.x() - from.x())
                                     .arg(to.y() - from.y()),
                    before, after);
            };
            HOLDS(after.labels <= before.labels + 1, where());
            if (after.labels == before.labels) {
                HOLDS(after == before, where());
                ++refused;
                continue;
            }
            moves += !after.showsSame(before);
            checkPan(plot, {before, after, {dragged.minValue(), dragged.maxValue()}, perPixel}, where());
            if (QTest::currentTestFailed())
                return;
        }
    }
    QVERIFY2(moves > plots * 3, qPrintable(QString::number(moves)));
    QVERIFY2(refused > plots, qPrintable(QString::number(refused)));
}

/// The prices are where the wheel says; those that it does not move stay to the last bit.
void tst_viewproperties_events::checkZoomedPrices(
    const RandomTurn& wheel, const State& after, const Where& where)
{
    const Range& before = wheel.before.prices;
    const std::optional<Range> expected = expectedPrices(wheel);
    if (!wheel.movesPrices())
        HOLDS(after.prices.lower == before.lower && after.prices.upper == before.upper, where());
    else if (expected)
        HOLDS(isAbout(after.prices, *expected, rounding(before)), where());
}

/// The values are where the wheel says, and show no more than the data bind them to.
void tst_viewproperties_events::checkZoomedValues(
    const RandomTurn& wheel, const State& after, const Where& where)
{
    const Range& before = wheel.before.values;
    const bool moved = after.values.lower != before.lower || after.values.upper != before.upper;
    if (wheel.isOfPricesOnly() || !moved)
        return;
    const double height = zoomedHeight(wheel);
    const double shown = std::min(height, boundOfHeight(wheel).value_or(height));
    const std::optional<double> highest = expectedHighest(wheel, height);
    if (highest)
        HOLDS(isAbout(after.values, Range{*highest - shown, *highest}, 4.0 * rounding(before)), where());
}

void tst_viewproperties_events::zooms()
{
    ViewRandom random(seed + 1);
    int kept = 0;
    for (int i = 0; i < plots * 2; ++i) {
        RandomPlot plot(random);
        if (random.chance(2))
            plot.addCurves(random.dataAbout(plot.prices()), random.dataAbout(plot.values()));
        else
            plot.addCurves(ViewRandom::dataAround(plot.prices(), random.power(-2.0, 2.0)),
                ViewRandom::dataAround(plot.values(), random.power(-2.0, 2.0)));
        for (int j = 0; j < 12; ++j) {
            plot.settle();
            if (!plot.hasRoomForPrices())
                break;
            const RandomTurn wheel = randomTurn(random, plot);
            const State& before = wheel.before;
            const State after = plot.state();
            const Where where = [&] {
                return plot.text(
                    QStringLiteral("plot %1 turn %2 %3").arg(i).arg(j).arg(wheel.text()), before, after);
            };
            HOLDS(after.labels <= before.labels + 1, where());
            if (after.labels == before.labels) {
                HOLDS(after == before, where());
                continue;
            }
            checkZoomedPrices(wheel, after, where);
            checkZoomedValues(wheel, after, where);
            if (QTest::currentTestFailed())
                return;
            kept += wheel.movesPrices() && expectedPrices(wheel);
        }
    }
    QVERIFY2(kept > plots * 5, qPrintable(QString::number(kept)));
}

void tst_viewproperties_events::oneInAndOneOut()
{
    ViewRandom random(seed + 2);
    int done = 0;
    for (int i = 0; i < plots * 2; ++i) {
        RandomPlot plot(random);
        plot.addCurves(
            ViewRandom::dataAround(plot.prices(), 5.0), ViewRandom::dataAround(plot.values(), 5.0));
        const QPoint point = plot.pointIn(plot.canvas());
        const State before = plot.state();
        plot.turn(point, notch, Qt::NoModifier);
        const State between = plot.state();
        plot.settle();
        plot.turn(point, -notch, Qt::NoModifier);
        const State after = plot.state();
        const auto where
            = [&] { return plot.text(QStringLiteral("plot %1 in and out").arg(i), before, after); };
        if (between.labels == before.labels || after.labels == between.labels)
            continue;
        ++done;
        HOLDS(std::abs(after.prices.width() - 0.99 * before.prices.width()) <= rounding(before.prices),
            where());
        // A vertical scale of 1e-8 or less keeps its range.
        if (before.values.width() > 2e-8)
            HOLDS(std::abs(after.values.width() - 0.99 * before.values.width()) <= rounding(before.values),
                where());
    }
    QVERIFY2(done > plots, qPrintable(QString::number(done)));
}

/// The scale widens or narrows by a tenth, or stays as it is, and the other one stays.
void tst_viewproperties_events::checkAxisDrag(const AxisDrag& drag, const Where& where)
{
    const auto& [onX, way, before, after] = drag;
    HOLDS(after.labels == before.labels, where());
    HOLDS(!onX || after.autoScale == before.autoScale, where());
    if (!onX)
        HOLDS(
            after.prices.lower == before.prices.lower && after.prices.upper == before.prices.upper, where());
    const Range& old = drag.dragged(before);
    const Range& now = drag.dragged(after);
    if (drag.moved())
        HOLDS(std::abs(now.width() - (way < 0 ? 0.9 : 1.1) * old.width()) <= rounding(old), where());
    else
        HOLDS(onX || old.width() <= 2e-8 || after == before, where());
}

void tst_viewproperties_events::axisDrags()
{
    ViewRandom random(seed + 3);
    int drags = 0;
    for (int i = 0; i < plots; ++i) {
        RandomPlot plot(random);
        plot.addCurves(random.dataAbout(plot.prices()), random.dataAbout(plot.values()));
        for (int j = 0; j < 8; ++j) {
            plot.settle();
            const bool onX = random.chance(2);
            const State before = plot.state();
            const QPoint from = plot.pointIn(plot.area(onX ? QwtPlot::xBottom : QwtPlot::yLeft));
            const QPoint to = plot.pointIn(plot.plot().rect());
            plot.drag(from, to);
            const AxisDrag drag{onX, onX ? to.x() - from.x() : to.y() - from.y(), before, plot.state()};
            const Where where = [&] {
                return plot.text(QStringLiteral("plot %1 drag %2 on axis %3 from (%4, %5) to (%6, %7)")
                                     .arg(i)
                                     .arg(j)
                                     .arg(onX ? "x" : "y")
                                     .arg(from.x())
                                     .arg(from.y())
                                     .arg(to.x())
                                     .arg(to.y()),
                    before, drag.after);
            };
            checkAxisDrag(drag, where);
            if (QTest::currentTestFailed())
                return;
            drags += drag.moved();
        }
    }
    QVERIFY2(drags > plots, qPrintable(QString::number(drags)));
}

PLOT2D_TEST_MAIN(tst_viewproperties_events)
#include "tst_viewproperties_events.moc"
