#include "flow/viewcases.h"
#include "support/testmain.h"

#include <c_api/common.h>
#include <plot2d/scalerange_p.h>

#include <qwt_plot.h>
#include <qwt_scale_engine.h>

#include <optional>

using ViewProperty::gap;
using ViewProperty::isOnLowerBound;
using ViewProperty::Pan;
using ViewProperty::randomPan;
using ViewProperty::randomZoom;
using ViewProperty::rounding;
using ViewProperty::seed;
using ViewProperty::textOf;
using ViewZoom::Range;
using ViewZoom::Spans;
using ViewZoom::Start;

namespace {

constexpr int cases = 100000;

/// The whole pixels by which a drag moves the view in the end; nothing where it is refused.
std::optional<QPoint> shiftOf(const Pan& pan)
{
    const auto view = PanLimits::draggedView(pan.x, pan.y, pan.dx, pan.dy);
    const auto limits = view ? PanLimits::limits(pan.curves, *view) : std::nullopt;
    if (!limits || !PanLimits::overlapInPrice(*view, *limits))
        return std::nullopt;
    if (PanLimits::isInside(*view, *limits))
        return QPoint(pan.dx, pan.dy);
    const double shiftX = PanLimits::limitedShiftX(pan.x, *view, *limits, pan.dx);
    const double shiftY = PanLimits::limitedShiftY(pan.y, *view, *limits, pan.dy);
    return QPoint(static_cast<int>(std::round(shiftX)), static_cast<int>(std::round(shiftY)));
}

/// Whether a shift goes the way of a drag and no farther.
bool isPartOf(int shift, int drag)
{
    return shift * drag >= 0 && std::abs(shift) <= std::abs(drag);
}

/// The view after a zoom; nothing where it is refused.
std::optional<Start> zoomed(const Start& start)
{
    const Spans spans = ViewZoom::zoomedSpans(start);
    const auto low = ViewZoom::zoomedLowestPrice(start, spans);
    const auto high = ViewZoom::zoomedHighestValue(start, spans);
    if (!low || !high)
        return std::nullopt;
    Start next = start;
    next.prices = {*low, *low + spans.price};
    next.values = {*high - spans.value, *high};
    return next;
}

}

/// What holds of all pans, zooms and drags on an axis, whatever the view and the data.
class tst_viewproperties : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void panKeepsSpans();
    void panKeepsDataInView();
    void shiftsStopJustPastAnEnd();
    void zoomKeepsItsCentre();
    void endsOfTheDataStay();
    void oneInAndOneOut();
    void axisDragSteps();
    void shownRanges();
    void acceptableRanges();
};

void tst_viewproperties::panKeepsSpans()
{
    ViewRandom random(seed);
    for (int i = 0; i < cases; ++i) {
        const Pan pan = randomPan(random);
        const auto view = PanLimits::draggedView(pan.x, pan.y, pan.dx, pan.dy);
        HOLDS(view, textOf(pan, i));
        HOLDS(std::abs(view->width() - pan.prices().width()) <= pan.priceRounding(), textOf(pan, i));
        HOLDS(std::abs(view->height() - pan.values().width()) <= pan.valueRounding(), textOf(pan, i));
        // To the right shows lower prices, down shows higher values.
        const double left = pan.x.lower - pan.dx * pan.pricePerPixel();
        const double low = pan.y.lower + pan.dy * pan.valuePerPixel();
        HOLDS(std::abs(view->left() - left) <= pan.priceRounding(), textOf(pan, i));
        HOLDS(std::abs(view->top() - low) <= pan.valueRounding(), textOf(pan, i));
    }
}

/// A drag that would leave no prices of the data in view is refused. Any other never moves the view away from
/// the data (to nothing in common, or farther than it was), nor its bounds past an end of the data by more
/// than a tenth of the view and the half pixel that a shift is rounded by, unless they were there before.
void tst_viewproperties::panKeepsDataInView()
{
    constexpr double most = 0.1;
    ViewRandom random(seed + 1);
    int moves = 0;
    int limited = 0;
    for (int i = 0; i < cases; ++i) {
        const Pan pan = randomPan(random);
        const Range data{pan.curves.left(), pan.curves.right()};
        const QRectF dragged = *PanLimits::draggedView(pan.x, pan.y, pan.dx, pan.dy);
        const double away = gap({dragged.left(), dragged.right()}, data);
        const auto shift = shiftOf(pan);
        HOLDS(shift || away > 0.0, textOf(pan, i));
        HOLDS(!shift || away <= pan.priceRounding(), textOf(pan, i));
        if (!shift)
            continue;
        HOLDS(isPartOf(shift->x(), pan.dx) && isPartOf(shift->y(), pan.dy), textOf(pan, i));
        moves += !shift->isNull();
        limited += *shift != QPoint(pan.dx, pan.dy);

        // An end that is in view, or just on its bound, does not come in farther.
        if ((pan.dx > 0 && data.lower >= pan.x.lower) || (pan.dx < 0 && data.upper <= pan.x.upper))
            HOLDS(shift->x() == 0, textOf(pan, i));
        const QRectF view = *PanLimits::draggedView(pan.x, pan.y, shift->x(), shift->y());
        const Range prices{view.left(), view.right()};
        HOLDS(gap(prices, data) <= gap(pan.prices(), data) + pan.priceRounding(), textOf(pan, i));
        const double past = most * pan.prices().width() + 0.5 * pan.pricePerPixel() + pan.priceRounding();
        HOLDS(prices.lower >= std::min(pan.x.lower, data.lower) - past, textOf(pan, i));
        HOLDS(prices.upper <= std::max(pan.x.upper, data.upper) + past, textOf(pan, i));

        // Data of one value counts as a band of half the view's height about it.
        const double margin = pan.curves.height() == 0.0 ? 0.25 * pan.values().width() : 0.0;
        const double beyond = most * pan.values().width() + 0.5 * pan.valuePerPixel() + pan.valueRounding();
        HOLDS(view.top() >= std::min(pan.y.lower, pan.curves.top() - margin) - beyond, textOf(pan, i));
        HOLDS(view.bottom() <= std::max(pan.y.upper, pan.curves.bottom() + margin) + beyond, textOf(pan, i));
    }
    QVERIFY(moves > cases / 4);
    QVERIFY(limited > cases / 4);
}

/// The first fraction of a drag that lands past a value, among the halves, thirds and so on to the ninths.
void tst_viewproperties::shiftsStopJustPastAnEnd()
{
    QVector<QPair<int, int>> fractions;
    for (int n = 1; n <= 9; ++n) {
        for (int k = 0; k <= n; ++k)
            fractions.append({k, n});
    }
    ViewRandom random(seed + 2);
    int found = 0;
    for (int i = 0; i < cases; ++i) {
        const Pan pan = randomPan(random);
        const int side = random.integer(0, 1);
        const double bound = side == PanLimits::Upper ? pan.x.upper : pan.x.lower;
        const double value = bound - random.uniform(-0.2, 1.2) * pan.dx * pan.pricePerPixel();
        double expected = PanLimits::noShift;
        for (const auto& [k, n] : qAsConst(fractions)) {
            const double shift = k * double(pan.dx) / n;
            const double reached = pan.x.map.invTransform(pan.x.map.transform(bound) - shift);
            const double past = side == PanLimits::Upper ? reached - value : value - reached;
            if (past > 0.0 && past < 0.1 * pan.prices().width()) {
                expected = shift;
                break;
            }
        }
        const double shift = PanLimits::shiftUntil(pan.x, value, side, pan.dx);
        HOLDS(shift == expected, textOf(pan, i));
        HOLDS(PanLimits::shiftUntil(pan.x, value, 2, pan.dx) == PanLimits::noShift, textOf(pan, i));
        found += shift != PanLimits::noShift;
    }
    QVERIFY(found > cases / 4);
}

void tst_viewproperties::zoomKeepsItsCentre()
{
    ViewRandom random(seed + 3);
    int kept = 0;
    for (int i = 0; i < cases; ++i) {
        const Start start = randomZoom(random);
        const auto next = zoomed(start);
        HOLDS(next, textOf(start, i));
        const bool out = start.factor > 1.0;
        const Spans spans = ViewZoom::zoomedSpans(start);
        const double tolerance = rounding(start.prices);
        if (isOnLowerBound(start.centre.x(), start.prices)) {
            if (!out)
                HOLDS(next->prices.lower == start.centre.x() - spans.price, textOf(start, i));
        } else if (!out
            || (start.curves.left() <= start.prices.lower && start.curves.right() >= start.prices.upper)) {
            const double part = (start.centre.x() - start.prices.lower) / start.prices.width();
            HOLDS(std::abs(next->prices.lower - (start.centre.x() - part * spans.price)) <= tolerance,
                textOf(start, i));
            ++kept;
        }
        if (isOnLowerBound(start.centre.y(), start.values)) {
            if (!out)
                HOLDS(next->values.upper == start.centre.y(), textOf(start, i));
        } else if (!out
            || (start.curves.top() <= start.values.lower && start.curves.bottom() >= start.values.upper)) {
            const double part = (start.values.upper - start.centre.y()) / start.values.width();
            HOLDS(std::abs(next->values.upper - (start.centre.y() + part * spans.value))
                    <= rounding(start.values),
                textOf(start, i));
        }
    }
    QVERIFY(kept > cases / 2);
}

void tst_viewproperties::endsOfTheDataStay()
{
    ViewRandom random(seed + 4);
    int ends = 0;
    for (int i = 0; i < cases; ++i) {
        Start start = randomZoom(random);
        start.factor = random.chance(2) ? 1.1 : 1.11;
        const auto next = zoomed(start);
        HOLDS(next, textOf(start, i));
        const bool rightEnd = start.curves.right() < start.prices.upper;
        const bool leftEnd = start.curves.left() > start.prices.lower;
        if (rightEnd)
            HOLDS(std::abs(next->prices.upper - start.prices.upper) <= rounding(start.prices),
                textOf(start, i));
        else if (leftEnd)
            HOLDS(next->prices.lower == start.prices.lower, textOf(start, i));
        if (start.curves.bottom() < start.values.upper)
            HOLDS(next->values.upper == start.values.upper, textOf(start, i));
        else if (start.curves.top() > start.values.lower)
            HOLDS(std::abs(next->values.lower - start.values.lower) <= rounding(start.values),
                textOf(start, i));
        ends += rightEnd || leftEnd;
    }
    QVERIFY(ends > cases / 4);
}

void tst_viewproperties::oneInAndOneOut()
{
    ViewRandom random(seed + 5);
    for (int i = 0; i < cases; ++i) {
        Start start = randomZoom(random);
        start.curves = ViewProperty::rectangle(
            ViewRandom::dataAround(start.prices, 5.0), ViewRandom::dataAround(start.values, 5.0));
        start.factor = *ViewZoom::factor(1);
        auto next = zoomed(start);
        HOLDS(next, textOf(start, i));
        next->factor = *ViewZoom::factor(-1);
        next = zoomed(*next);
        HOLDS(next, textOf(start, i));
        HOLDS(std::abs(next->prices.width() - 0.99 * start.prices.width()) <= rounding(start.prices),
            textOf(start, i));
        HOLDS(std::abs(next->values.width() - 0.99 * start.values.width()) <= rounding(start.values),
            textOf(start, i));
    }
}

void tst_viewproperties::axisDragSteps()
{
    ViewRandom random(seed + 6);
    for (int i = 0; i < cases; ++i) {
        const Range view = random.range();
        const Range data = random.dataAbout(view);
        const auto where = [&] {
            return QStringLiteral("seed %1 case %2: view %3, data %4")
                .arg(seed)
                .arg(i)
                .arg(ViewProperty::text(view), ViewProperty::text(data));
        };
        const auto narrower = ViewZoom::dragged(view, data, true);
        HOLDS(narrower, where());
        HOLDS(std::abs(narrower->width() - 0.9 * view.width()) <= rounding(view), where());
        HOLDS(std::abs(narrower->lower - view.lower - (view.upper - narrower->upper)) <= rounding(view),
            where());

        const auto wider = ViewZoom::dragged(view, data, false);
        const bool hidesLow = view.lower > data.lower;
        const bool hidesHigh = view.upper < data.upper;
        HOLDS(wider.has_value() == (hidesLow || hidesHigh), where());
        if (!wider)
            continue;
        HOLDS(std::abs(wider->width() - 1.1 * view.width()) <= rounding(view), where());
        HOLDS((wider->lower < view.lower) == hidesLow, where());
        HOLDS((wider->upper > view.upper) == hidesHigh, where());
    }
}

void tst_viewproperties::shownRanges()
{
    ViewRandom random(seed + 7);
    for (int i = 0; i < cases; ++i) {
        const double min = random.chance(8) ? 0.0 : random.range().lower;
        const double max = min + (random.chance(8) ? 0.0 : random.power(-18.0, 3.0));
        const bool empty = commonFuzzyCompare(min, max);
        const auto where = [&] {
            return QStringLiteral("seed %1 case %2: %3").arg(seed).arg(i).arg(ViewProperty::text({min, max}));
        };
        const auto prices = ScaleRange::shown(QwtPlot::xBottom, min, max);
        HOLDS(prices.has_value() == !empty, where());
        HOLDS(!prices || (prices->minValue() == min && prices->maxValue() == max), where());

        const auto values = ScaleRange::shown(QwtPlot::yLeft, min, max);
        const double margin = empty ? 1.0 : 0.0;
        HOLDS(values.has_value() == (empty || max - min > 1e-8), where());
        HOLDS(!values || (values->minValue() == min - margin && values->maxValue() == max + margin), where());
    }
}

/// What is accepted can be divided into a few finite ticks, and every ordinary range is accepted.
void tst_viewproperties::acceptableRanges()
{
    constexpr double odd[] = {std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN(),
        std::numeric_limits<double>::max(), -std::numeric_limits<double>::max(), 1e300, -1e300, 1e-310};
    const QwtPlot plot;
    const QwtLinearScaleEngine engine;
    ViewRandom random(seed + 8);
    for (int i = 0; i < cases; ++i) {
        Range range = random.range(18.0);
        const bool ordinary = range.width() > 1e-7 && range.width() > 1e-9 * std::abs(range.lower);
        const int special = random.integer(0, 9);
        if (special == 0)
            range.lower = odd[random.integer(0, 7)];
        else if (special == 1)
            range.upper = odd[random.integer(0, 7)];
        else if (special == 2)
            std::swap(range.lower, range.upper);
        const auto where = [&] {
            return QStringLiteral("seed %1 case %2: %3").arg(seed).arg(i).arg(ViewProperty::text(range));
        };
        const bool proper
            = std::isfinite(range.lower) && std::isfinite(range.upper) && range.lower <= range.upper;
        for (const int axis : {QwtPlot::xBottom, QwtPlot::yLeft}) {
            const bool acceptable = ScaleRange::isAcceptable(plot, axis, range.lower, range.upper);
            HOLDS(proper || !acceptable, where());
            HOLDS(acceptable || !ordinary || special <= 2, where());
            const auto shown = acceptable ? ScaleRange::shown(axis, range.lower, range.upper) : std::nullopt;
            if (!shown)
                continue;
            HOLDS(shown->minValue() < shown->maxValue(), where());
            const QwtScaleDiv division = engine.divideScale(
                shown->minValue(), shown->maxValue(), plot.axisMaxMajor(axis), plot.axisMaxMinor(axis), 0.0);
            const QList<double> ticks = division.ticks(QwtScaleDiv::MajorTick);
            HOLDS(ticks.size() <= 2 * plot.axisMaxMajor(axis) + 3, where());
            HOLDS(std::all_of(ticks.cbegin(), ticks.cend(), [](double tick) { return std::isfinite(tick); }),
                where());
        }
    }
}

PLOT2D_TEST_MAIN(tst_viewproperties)
#include "tst_viewproperties.moc"
