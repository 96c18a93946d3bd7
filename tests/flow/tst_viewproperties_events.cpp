#include "flow/randomturn.h"
#include "support/testmain.h"

#include <functional>

using ViewProperty::gap;
using ViewProperty::rounding;
using ViewZoom::Range;

namespace {

constexpr quint64 seed = 20261121;
constexpr int plots = 40;
constexpr int notch = 120;

using State = RandomPlot::State;

/// A pan that was not refused.
struct AcceptedPan {
    State before;
    State after;
    /// The prices that the whole drag would show.
    Range dragged;
    double perPixel = 0.0;
};

bool isAbout(const Range& range, const Range& expected, double tolerance)
{
    return std::abs(range.lower - expected.lower) <= tolerance
        && std::abs(range.upper - expected.upper) <= tolerance;
}

QString textOf(const RandomPlot& plot, const QString& what, const State& before, const State& after)
{
    return QStringLiteral("seed %1, %2: %3; %4 and %5 became %6 and %7, %8 and %9 signals")
        .arg(QString::number(seed), plot.text(), what, ViewProperty::text(before.prices),
            ViewProperty::text(before.values), ViewProperty::text(after.prices),
            ViewProperty::text(after.values), QString::number(after.labels - before.labels),
            QString::number(after.autoScale - before.autoScale));
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
    void refusals();

private:
    void checkPan(RandomPlot& plot, const AcceptedPan& pan, const QString& where);
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
            const State before = plot.state();
            const QPoint from = plot.pointIn(plot.canvas());
            const QPoint to = plot.pointIn(plot.canvas());
            const QwtInterval dragged = moved(plot.plot(), QwtPlot::xBottom, to.x() - from.x());
            const double perPixel = before.prices.width() / plot.plot().canvasMap(QwtPlot::xBottom).pDist();
            plot.drag(from, to);
            const State after = plot.state();
            const auto where = [&] {
                return textOf(plot,
                    QStringLiteral("plot %1 pan %2 by (%3, %4)")
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
            const RandomTurn wheel = randomTurn(random, plot);
            const State& before = wheel.before;
            const State after = plot.state();
            const auto where = [&] {
                return textOf(plot,
                    QStringLiteral(
                        "plot %1 turn %2 about (%3, %4), on x %5, on y %6, modifiers %7, factor %8")
                        .arg(QString::number(i), QString::number(j),
                            QString::number(wheel.centre.x(), 'g', 17),
                            QString::number(wheel.centre.y(), 'g', 17), QString::number(wheel.onX),
                            QString::number(wheel.onY), QString::number(int(wheel.modifiers)),
                            QString::number(wheel.factor)),
                    before, after);
            };
            HOLDS(after.labels <= before.labels + 1, where());
            if (after.labels == before.labels) {
                HOLDS(after == before, where());
                continue;
            }
            const auto prices = expectedPrices(wheel);
            const bool pricesMove
                = wheel.isOfPricesOnly() || (!wheel.onY && wheel.modifiers != Qt::ShiftModifier);
            if (pricesMove && prices) {
                HOLDS(isAbout(after.prices, *prices, rounding(before.prices)), where());
                ++kept;
            }
            if (!pricesMove)
                HOLDS(after.prices.lower == before.prices.lower && after.prices.upper == before.prices.upper,
                    where());
            const bool valuesMove
                = after.values.lower != before.values.lower || after.values.upper != before.values.upper;
            if (wheel.isOfPricesOnly() || !valuesMove)
                continue;
            const double height = zoomedHeight(wheel);
            const double shown = std::min(height, boundOfHeight(wheel).value_or(height));
            const auto highest = expectedHighest(wheel, height);
            if (highest)
                HOLDS(isAbout(after.values, Range{*highest - shown, *highest}, 4.0 * rounding(before.values)),
                    where());
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
            = [&] { return textOf(plot, QStringLiteral("plot %1 in and out").arg(i), before, after); };
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
            const State after = plot.state();
            const auto where = [&] {
                return textOf(plot,
                    QStringLiteral("plot %1 drag %2 on axis %3 from (%4, %5) to (%6, %7)")
                        .arg(i)
                        .arg(j)
                        .arg(onX ? "x" : "y")
                        .arg(from.x())
                        .arg(from.y())
                        .arg(to.x())
                        .arg(to.y()),
                    before, after);
            };
            const Range& old = onX ? before.prices : before.values;
            const Range& now = onX ? after.prices : after.values;
            const int way = onX ? to.x() - from.x() : to.y() - from.y();
            HOLDS(after.labels == before.labels, where());
            HOLDS(!onX || after.autoScale == before.autoScale, where());
            if (!onX)
                HOLDS(after.prices.lower == before.prices.lower && after.prices.upper == before.prices.upper,
                    where());
            if (now.lower == old.lower && now.upper == old.upper) {
                HOLDS(onX || old.width() <= 2e-8 || after == before, where());
                continue;
            }
            ++drags;
            HOLDS(std::abs(now.width() - (way < 0 ? 0.9 : 1.1) * old.width()) <= rounding(old), where());
        }
    }
    QVERIFY2(drags > plots, qPrintable(QString::number(drags)));
}

/// Whatever is refused for a known reason leaves both scales as they are, to the last bit, and is silent.
void tst_viewproperties_events::refusals()
{
    ViewRandom random(seed + 4);
    for (int i = 0; i < plots * 2; ++i) {
        RandomPlot plot(random);
        const auto turn = [&](int angle) {
            const QRect places[] = {plot.canvas(), plot.area(QwtPlot::xBottom), plot.area(QwtPlot::yLeft)};
            plot.turn(plot.pointIn(places[random.integer(0, 2)]), angle, Qt::NoModifier);
        };
        const auto dragAxis = [&] {
            plot.drag(plot.pointIn(plot.area(random.chance(2) ? QwtPlot::xBottom : QwtPlot::yLeft)),
                plot.pointIn(plot.plot().rect()), 3);
        };
        const auto pan = [&] { plot.drag(plot.pointIn(plot.canvas()), plot.pointIn(plot.canvas())); };
        const int sign = random.chance(2) ? 1 : -1;
        const auto check = [&](const char* what, const std::function<void()>& action) {
            plot.settle();
            const State before = plot.state();
            action();
            const State after = plot.state();
            HOLDS(
                after == before, textOf(plot, QStringLiteral("plot %1 %2").arg(i).arg(what), before, after));
        };

        check("wheel without data", [&] { turn(sign * notch); });
        check("axis drag without data", dragAxis);
        check("pan without data", pan);
        plot.addCurves(
            ViewRandom::dataAround(plot.prices(), 5.0), ViewRandom::dataAround(plot.values(), 5.0));
        check("less than a notch", [&] { turn(sign * random.integer(0, notch - 1)); });
        // Wide labels may leave no corner.
        const QPoint corner(1, plot.plot().height() - 2);
        if (!plot.plot().mousePositionOnScale(corner))
            check("wheel in the corner", [&] { plot.turn(corner, sign * notch, Qt::NoModifier); });
        plot.plot().setZoomEnabled(false);
        check("wheel with zoom off", [&] { turn(sign * notch); });
        check("axis drag with zoom off", dragAxis);
        plot.plot().setZoomEnabled(true);
        PriceInterval steps;
        steps.minStep = 2.0 * plot.prices().width();
        plot.plot().setPriceInterval(steps);
        check("in below the smallest step", [&] { turn(notch); });
        check("axis narrowed below the smallest step", [&] {
            const QRect axis = plot.area(QwtPlot::xBottom);
            plot.drag(axis.center(), axis.center() - QPoint(20, 0));
        });
        plot.plot().enableAxis(QwtPlot::xBottom, false);
        check("pan without a price axis", pan);
        plot.plot().enableAxis(QwtPlot::xBottom, true);
        plot.plot().detachItems(QwtPlotItem::Rtti_PlotCurve, true);
        addData(plot.plot(), plot.prices().lower - plot.prices().width(),
            plot.prices().upper - 0.1 * plot.prices().width(), plot.values().lower, plot.values().upper);
        const QRect canvas = plot.canvas();
        check("pan past all data", [&] {
            plot.drag(
                QPoint(canvas.right() - 2, canvas.center().y()), QPoint(canvas.left() + 2, canvas.top() + 3));
        });
        if (QTest::currentTestFailed())
            return;
    }
}

PLOT2D_TEST_MAIN(tst_viewproperties_events)
#include "tst_viewproperties_events.moc"
