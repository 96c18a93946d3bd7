#include "plotmouse_p.h"

#include "plot2d/pricebased2dplot.h"
#include "plot2d/pricebased2dplotpicker.h"
#include "plot2d/pricebased2dplotscaledraw.h"
#include "scalerange_p.h"
#include "valuerange_p.h"
#include "viewzoom_p.h"

#include <QCursor>
#include <QPointer>
#include <QWheelEvent>

#include <qwt_plot_layout.h>
#include <qwt_scale_widget.h>

#include <cmath>
#include <optional>

namespace {

using PlotMouse::Target;
using ViewZoom::Range;

Range rangeOf(const QwtScaleDiv& division)
{
    return {division.lowerBound(), division.upperBound()};
}

/// Whether the labels of the vertical axis cannot be told apart any more. Of labels that a host's own scale
/// draw makes nothing is known, so they never are.
bool valuesAreShrinked(const Target& target)
{
    return target.valueScale && target.valueScale->ticksShrinked(QwtScaleDiv(0.0, 0.0));
}

/// The angle that a wheel was turned by, about whichever of its axes it was turned further: with Alt held Qt
/// reports the usual wheel as a horizontal one.
int angleOf(const QWheelEvent& event)
{
    const QPoint angle = event.angleDelta();
    return std::abs(qint64(angle.x())) > std::abs(qint64(angle.y())) ? angle.x() : angle.y();
}

struct Cursor {
    QPoint global;
    QPointF onPlot;
    bool onX = false;
    bool onY = false;
    bool inCanvas = false;

    bool onScale() const { return onX || onY; }
};

Cursor cursorOver(const PriceBased2dPlot& plot)
{
    Cursor cursor;
    cursor.global = QCursor::pos();
    cursor.onPlot = plot.mapFromGlobal(cursor.global);
    cursor.onX = plot.mousePositionOnXScale(cursor.onPlot);
    cursor.onY = plot.mousePositionOnYScale(cursor.onPlot);
    cursor.inCanvas = plot.plotLayout()->canvasRect().contains(cursor.onPlot);
    return cursor;
}

/// The point that a zoom keeps in place; along the axis that the cursor is not over, one near the lower
/// bound.
QPointF zoomCentre(const Target& target, const Cursor& cursor, const Range& prices, const Range& values)
{
    constexpr double nearLowerBound = 0.1;
    const auto onAxis = [&](int axis) {
        return target.picker->transformedPoint(target.plot.axisWidget(axis)->mapFromGlobal(cursor.global));
    };
    if (cursor.onY)
        return QPointF(prices.lower + nearLowerBound * prices.width(), onAxis(QwtPlot::yLeft).y());
    if (cursor.onX)
        return QPointF(onAxis(QwtPlot::xBottom).x(), values.lower + nearLowerBound * values.width());
    return target.picker->transformedPoint(cursor.onPlot);
}

struct Zoomed {
    ViewZoom::Start start;
    ViewZoom::Spans spans;
    double lowestPrice = 0.0;
    double highestValue = 0.0;

    Range prices() const { return {lowestPrice, lowestPrice + spans.price}; }
    /// Of this height, but no higher than the zoomed view.
    Range values(double height) const
    {
        return {highestValue - (height <= spans.value ? height : spans.value), highestValue};
    }
};

std::optional<Zoomed> zoomed(const Target& target, const Cursor& cursor, int angle)
{
    const PriceBased2dPlot& plot = target.plot;
    const QwtScaleDiv& prices = plot.axisScaleDiv(QwtPlot::xBottom);
    const QwtScaleDiv& values = plot.axisScaleDiv(QwtPlot::yLeft);
    const std::optional<double> factor = ViewZoom::factor(ViewZoom::notches(angle));
    if (!ScaleRange::isUsable(prices) || !ScaleRange::isUsable(values) || !factor)
        return std::nullopt;

    Zoomed result;
    result.start = {rangeOf(prices), rangeOf(values), plot.curvesRectangle(),
        zoomCentre(target, cursor, rangeOf(prices), rangeOf(values)), *factor};
    if (!ValueRange::canBeViewed(result.start.curves))
        return std::nullopt;
    result.spans = ViewZoom::zoomedSpans(result.start);
    if (result.start.zoomsIn()
        && (ViewZoom::isTooSmall(result.spans, plot.priceInterval().minStep) || valuesAreShrinked(target)))
        return std::nullopt;

    const auto lowestPrice = ViewZoom::zoomedLowestPrice(result.start, result.spans);
    const auto highestValue = ViewZoom::zoomedHighestValue(result.start, result.spans);
    if (!lowestPrice || !highestValue)
        return std::nullopt;
    result.lowestPrice = *lowestPrice;
    result.highestValue = *highestValue;
    return result;
}

/// The ranges that axes are to get; an axis without one stays, but values follow the prices.
struct Change {
    std::optional<Range> prices;
    std::optional<Range> values;
};

Change changeTo(const Zoomed& view, const Cursor& cursor, Qt::KeyboardModifiers modifiers)
{
    const double height = view.start.curves.height();
    const bool shift = modifiers.testFlag(Qt::ShiftModifier);
    const bool control = modifiers.testFlag(Qt::ControlModifier);
    if (cursor.onX || (control && !shift && cursor.inCanvas))
        return {view.prices(), std::nullopt};
    if (cursor.onY) {
        const bool grows = view.start.values.width() < height;
        return {std::nullopt,
            view.start.zoomsIn() || grows ? std::optional<Range>(view.values(view.spans.value))
                                          : std::nullopt};
    }
    if (shift && !control && cursor.inCanvas)
        return {std::nullopt, view.values(height)};
    return {view.prices(), view.values(view.start.factor * height)};
}

bool isAcceptable(const PriceBased2dPlot& plot, int axis, const std::optional<Range>& range)
{
    return !range || ScaleRange::isAcceptable(plot, axis, range->lower, range->upper);
}

/// A slot of a signal on the way, and an overridden replot(), may delete the plot.
void apply(const QPointer<PriceBased2dPlot>& plot, const Change& change)
{
    if (change.values)
        plot->resetAutoScale();
    if (plot && change.prices)
        plot->setAxisScale(QwtPlot::xBottom, change.prices->lower, change.prices->upper, 0.0);
    if (plot && change.values)
        plot->setAxisScale(QwtPlot::yLeft, change.values->lower, change.values->upper, 0.0);
    if (plot && change.prices && !change.values)
        plot->updateYAxisScale();
}

}

bool PlotMouse::zoom(const Target& target, const QWheelEvent& event)
{
    const Cursor cursor = cursorOver(target.plot);
    if (!target.picker || (!cursor.onScale() && !cursor.inCanvas))
        return false;
    const auto view = zoomed(target, cursor, angleOf(event));
    if (!view)
        return false;
    const Change change = changeTo(*view, cursor, event.modifiers());
    if (!isAcceptable(target.plot, QwtPlot::xBottom, change.prices)
        || !isAcceptable(target.plot, QwtPlot::yLeft, change.values))
        return false;
    apply(QPointer<PriceBased2dPlot>(&target.plot), change);
    return true;
}

bool PlotMouse::drag(const Target& target, const Drag& drag)
{
    PriceBased2dPlot& plot = target.plot;
    const bool onX = plot.mousePositionOnXScale(drag.press);
    if (!onX && !plot.mousePositionOnYScale(drag.press))
        return false;

    const QPointF before = drag.last.isNull() ? drag.press : drag.last;
    const double previous = onX ? before.x() : before.y();
    const double current = onX ? drag.current.x() : drag.current.y();
    const int axis = onX ? QwtPlot::xBottom : QwtPlot::yLeft;
    const QwtScaleDiv& division = plot.axisScaleDiv(axis);
    if (previous == current || !ScaleRange::isUsable(division))
        return false;

    const bool shrinks = current < previous;
    const Range view = rangeOf(division);
    if (shrinks && (onX ? view.width() < plot.priceInterval().minStep : valuesAreShrinked(target)))
        return false;
    const QRectF curves = plot.curvesRectangle();
    if (!ValueRange::canBeViewed(curves))
        return false;
    const Range data = onX ? Range{curves.left(), curves.right()} : Range{curves.top(), curves.bottom()};
    const auto next = ViewZoom::dragged(view, data, shrinks);
    if (!next || !isAcceptable(plot, axis, next))
        return false;
    apply(QPointer<PriceBased2dPlot>(&plot), onX ? Change{next, std::nullopt} : Change{std::nullopt, next});
    return true;
}
