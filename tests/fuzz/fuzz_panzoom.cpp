#include "fuzzinput.h"

#include <plot2d/panlimits_p.h>
#include <plot2d/viewzoom_p.h>

#include <algorithm>
#include <cmath>

namespace {

PanLimits::Axis takeAxis(FuzzInput& input)
{
    PanLimits::Axis axis;
    axis.lower = input.takeDouble();
    axis.upper = input.takeDouble();
    axis.map.setScaleInterval(axis.lower, axis.upper);
    const auto left = input.take<std::int16_t>();
    axis.map.setPaintInterval(left, input.take<std::int16_t>());
    axis.enabled = input.take<std::uint8_t>() & 1;
    return axis;
}

QRectF takeRectangle(FuzzInput& input)
{
    const double x = input.takeDouble();
    const double y = input.takeDouble();
    const double width = input.takeDouble();
    return QRectF(x, y, width, input.takeDouble());
}

/// Whether bounds are numbers whose differences are far above the distance of doubles.
bool isModest(double lower, double upper)
{
    const double most = std::max(std::abs(lower), std::abs(upper));
    return most < 1e12 && upper - lower > 1e-6 && upper - lower > 1e-4 * most;
}

bool isModest(const PanLimits::Axis& axis)
{
    return axis.enabled && axis.map.p1() != axis.map.p2() && isModest(axis.lower, axis.upper);
}

bool isClose(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance;
}

/// What a modest axis is moved by for each pixel of a drag.
double valueOfPixel(const PanLimits::Axis& axis)
{
    return (axis.upper - axis.lower) / (axis.map.p2() - axis.map.p1());
}

/// The first part of the drag that stops clearly past a value, and by clearly less than a tenth of the span,
/// is the shift, if not one before it that lies near those bounds.
void expectFirstPart(const PanLimits::Axis& axis, double value, int side, double drag)
{
    const double shift = PanLimits::shiftUntil(axis, value, side, drag);
    const double bound = side == PanLimits::Lower ? axis.lower : axis.upper;
    const double span = axis.upper - axis.lower;
    const double ofPixel = valueOfPixel(axis);
    for (int n = 1; n <= 9; ++n) {
        for (int k = 0; k <= n; ++k) {
            const double part = drag * k / n;
            if (isClose(part, shift, 1e-9 * std::abs(drag)))
                return;
            const double reached = bound - part * ofPixel;
            const double past = side == PanLimits::Lower ? value - reached : reached - value;
            FUZZ_EXPECT(!(past > 1e-4 * span && past < 0.0999 * span));
        }
    }
    FUZZ_EXPECT(shift == PanLimits::noShift);
}

void expectShift(const PanLimits::Axis& axis, double value, double drag)
{
    for (const int side : {PanLimits::Lower, PanLimits::Upper}) {
        const double shift = PanLimits::shiftUntil(axis, value, side, drag);
        if (isModest(axis) && std::abs(value) < 1e12)
            expectFirstPart(axis, value, side, drag);
        if (shift == PanLimits::noShift)
            continue;
        FUZZ_EXPECT(std::abs(shift) <= std::abs(drag) && shift * drag >= 0.0);
        const double bound = side == PanLimits::Lower ? axis.lower : axis.upper;
        const double reached = axis.map.invTransform(axis.map.transform(bound) - shift);
        FUZZ_EXPECT(side == PanLimits::Lower ? reached < value : reached > value);
    }
}

/// Whether a bound lies at or above another one, but for the tolerance of a comparison of sides of that size.
bool reaches(double bound, double other, double size)
{
    return !(bound < other - 1e-11 * size);
}

void expectInside(const QRectF& view, const QRectF& limits)
{
    const double prices = std::abs(view.left()) + view.width();
    const double values = std::abs(view.top()) + view.height();
    FUZZ_EXPECT(reaches(view.left(), limits.left(), prices) && reaches(limits.right(), view.right(), prices));
    FUZZ_EXPECT(reaches(view.top(), limits.top(), values) && reaches(limits.bottom(), view.bottom(), values));
    FUZZ_EXPECT(PanLimits::overlapInPrice(view, limits));
}

/// A view of modest bounds that lies in the limits by more than a rounding is inside.
void expectSeenInside(const QRectF& view, const QRectF& limits)
{
    const bool isTold = PanLimits::isInside(view, limits);
    if (!isModest(view.left(), view.right()) || !isModest(view.top(), view.bottom())
        || !isModest(limits.left(), limits.right()) || !isModest(limits.top(), limits.bottom()))
        return;
    FUZZ_EXPECT(isTold
        || !(limits.left() <= view.left() && view.right() <= limits.right() && limits.top() <= view.top()
            && view.bottom() <= limits.bottom()));
}

/// A drag moves both bounds of an axis by its pixels; an axis that is not enabled stays at 0, and without
/// prices there is no view.
void expectMoved(const PanLimits::Axis& x, const PanLimits::Axis& y, int dx, int dy)
{
    const auto view = PanLimits::draggedView(x, y, dx, dy);
    FUZZ_EXPECT(x.enabled || !view);
    if (!isModest(x) || (y.enabled && !isModest(y)))
        return;
    FUZZ_EXPECT(view.has_value());
    const double moveX = dx * valueOfPixel(x);
    const double toleranceX = 1e-9 * (x.upper - x.lower + std::abs(moveX));
    FUZZ_EXPECT(isClose(view->left(), x.lower - moveX, toleranceX));
    FUZZ_EXPECT(isClose(view->right(), x.upper - moveX, toleranceX));
    const double moveY = y.enabled ? dy * valueOfPixel(y) : 0.0;
    const double toleranceY = y.enabled ? 1e-9 * (y.upper - y.lower + std::abs(moveY)) : 0.0;
    FUZZ_EXPECT(isClose(view->top(), y.enabled ? y.lower - moveY : 0.0, toleranceY));
    FUZZ_EXPECT(isClose(view->bottom(), y.enabled ? y.upper - moveY : 0.0, toleranceY));
}

/// Curves of some height are the limits, those of none get half the height of the view, where their place can
/// be told beside it and a quarter of it is neither infinite nor rounded.
void expectLimits(const QRectF& curves, const QRectF& view)
{
    const auto limits = PanLimits::limits(curves, view);
    if (!(curves.width() > 0.0) || !(curves.height() >= 0.0))
        return;
    FUZZ_EXPECT(limits && limits->width() == curves.width());
    FUZZ_EXPECT(limits->left() == curves.left() || std::isnan(curves.left()));
    if (curves.height() > 0.0) {
        FUZZ_EXPECT(limits->height() == curves.height());
        FUZZ_EXPECT(limits->top() == curves.top() || std::isnan(curves.top()));
        return;
    }
    const bool hasPlace = std::isfinite(curves.top()) && std::isfinite(view.height());
    FUZZ_EXPECT(!hasPlace || std::isfinite(limits->top()));
    if (std::abs(curves.top()) < 1e3 * view.height() && view.height() >= 1e-300
        && std::isfinite(std::abs(curves.top()) + view.height())) {
        FUZZ_EXPECT(isClose(limits->height(), 0.5 * view.height(), 1e-9 * view.height()));
        FUZZ_EXPECT(isClose(limits->center().y(), curves.top(), 1e-9 * view.height()));
    }
}

/// What is left of a drag: all of it where the end of the data stays out of the way, nothing where that is in
/// view already or never just passed.
void expectLeft(double left, const PanLimits::Axis& axis, int side, double end, bool isPassed, int drag)
{
    if (!isPassed) {
        FUZZ_EXPECT(left == drag);
        return;
    }
    const bool isHidden = side == PanLimits::Lower ? axis.lower > end : end > axis.upper;
    const double shift = isHidden ? PanLimits::shiftUntil(axis, end, side, drag) : 0.0;
    FUZZ_EXPECT(left == (shift == PanLimits::noShift ? 0.0 : shift));
}

void pan(FuzzInput& input, const QRectF& curves)
{
    const PanLimits::Axis x = takeAxis(input);
    const PanLimits::Axis y = takeAxis(input);
    const int dx = input.take<std::int16_t>();
    const int dy = input.take<std::int16_t>();
    expectShift(x, curves.left(), dx);
    expectShift(y, curves.bottom(), dy);
    expectMoved(x, y, dx, dy);
    const auto view = PanLimits::draggedView(x, y, dx, dy);
    if (!view)
        return;
    FUZZ_EXPECT(std::isfinite(view->left()) && std::isfinite(view->right()) && view->width() > 0.0);
    FUZZ_EXPECT(std::isfinite(view->top()) && std::isfinite(view->bottom()) && view->height() >= 0.0);
    expectLimits(curves, *view);
    const auto limits = PanLimits::limits(curves, *view);
    if (!limits)
        return;
    FUZZ_EXPECT(!(limits->width() <= 0.0) && !(limits->height() < 0.0));
    const bool overlap = PanLimits::overlapInPrice(*view, *limits);
    FUZZ_EXPECT(overlap == !(view->left() > limits->right() || limits->left() > view->right()));
    if (PanLimits::isInside(*view, *limits))
        expectInside(*view, *limits);
    expectSeenInside(*view, *limits);
    const double shiftX = PanLimits::limitedShiftX(x, *view, *limits, dx);
    const double shiftY = PanLimits::limitedShiftY(y, *view, *limits, dy);
    FUZZ_EXPECT(std::abs(shiftX) <= std::abs(dx) && std::abs(shiftY) <= std::abs(dy));
    FUZZ_EXPECT(shiftX * dx >= 0.0 && shiftY * dy >= 0.0);
    if (dx > 0)
        expectLeft(shiftX, x, PanLimits::Lower, limits->left(), limits->left() > view->left(), dx);
    else
        expectLeft(
            shiftX, x, PanLimits::Upper, limits->right(), dx < 0 && limits->right() < view->right(), dx);
    // The top of a rectangle is its lowest value, and a drag down shows higher ones.
    if (dy > 0)
        expectLeft(shiftY, y, PanLimits::Upper, limits->bottom(), limits->bottom() < view->bottom(), dy);
    else
        expectLeft(shiftY, y, PanLimits::Lower, limits->top(), dy < 0 && limits->top() > view->top(), dy);
}

/// Modest ranges shrink by a tenth, evenly, and grow by one towards the hidden data, if there is any.
void expectTenth(const ViewZoom::Range& view, const ViewZoom::Range& data, bool shrinks)
{
    if (!isModest(view.lower, view.upper) || !(std::abs(data.lower) < 1e12 && std::abs(data.upper) < 1e12))
        return;
    const auto range = ViewZoom::dragged(view, data, shrinks);
    const bool hidesLower = view.lower > data.lower;
    const bool hidesUpper = view.upper < data.upper;
    FUZZ_EXPECT(range.has_value() == (shrinks || hidesLower || hidesUpper));
    if (!range)
        return;
    const double tenth = 0.1 * view.width();
    const double below = shrinks ? -0.5 : hidesLower && hidesUpper ? 0.5 : hidesLower ? 1.0 : 0.0;
    const double above = shrinks ? -0.5 : 1.0 - below;
    FUZZ_EXPECT(isClose(range->lower, view.lower - below * tenth, 1e-9 * tenth));
    FUZZ_EXPECT(isClose(range->upper, view.upper + above * tenth, 1e-9 * tenth));
}

void expectDragged(const ViewZoom::Range& view, const ViewZoom::Range& data, bool shrinks)
{
    expectTenth(view, data, shrinks);
    const auto range = ViewZoom::dragged(view, data, shrinks);
    if (!range)
        return;
    FUZZ_EXPECT(std::isfinite(range->lower) && std::isfinite(range->upper) && std::isfinite(range->width()));
    if (!(view.lower <= view.upper))
        return;
    if (shrinks)
        FUZZ_EXPECT(view.lower <= range->lower && range->upper <= view.upper);
    else
        FUZZ_EXPECT(range->lower <= view.lower && view.upper <= range->upper);
}

bool isModest(const ViewZoom::Start& start)
{
    return isModest(start.prices.lower, start.prices.upper)
        && isModest(start.values.lower, start.values.upper) && std::abs(start.centre.x()) < 1e12
        && std::abs(start.centre.y()) < 1e12;
}

/// A turn of the wheel by less than 15 degrees does nothing, others zoom by about a tenth.
void expectFactor(int angle)
{
    const int notches = ViewZoom::notches(angle);
    FUZZ_EXPECT(notches * 120 + angle % 120 == angle);
    const auto factor = ViewZoom::factor(notches);
    FUZZ_EXPECT(factor.has_value() == (std::abs(angle) >= 120));
    if (factor)
        FUZZ_EXPECT(angle > 0 ? *factor > 0.85 && *factor < 0.95 : *factor > 1.05 && *factor < 1.15);
}

void expectSpans(const ViewZoom::Start& start, const ViewZoom::Spans& spans)
{
    const double width = start.prices.width();
    const double height = start.values.width();
    const bool zooms = start.zoomsIn() || start.curves.width() > width;
    const bool grows = zooms || height < start.curves.height();
    FUZZ_EXPECT(isClose(spans.price, zooms ? width * start.factor : width, 1e-9 * width));
    FUZZ_EXPECT(isClose(spans.value, grows ? height * start.factor : height, 1e-9 * height));
}

/// A new lower bound: an end of the data that is visible stays while zooming out, the one that is asked for
/// first before the other; a centre within the view keeps its relative place.
void expectLowerBound(double low, const ViewZoom::Range& view, double centre, double span, int keptEnd)
{
    const double tolerance = 1e-6 * (view.width() + span);
    if (keptEnd != 0)
        FUZZ_EXPECT(isClose(low, keptEnd > 0 ? view.upper - span : view.lower, tolerance));
    else if (centre - view.lower > 0.01 * view.width() && centre < view.upper)
        FUZZ_EXPECT(isClose(low, centre - (centre - view.lower) / view.width() * span, tolerance));
}

void expectZoomed(const ViewZoom::Start& start, const ViewZoom::Spans& spans)
{
    const auto low = ViewZoom::zoomedLowestPrice(start, spans);
    const auto high = ViewZoom::zoomedHighestValue(start, spans);
    FUZZ_EXPECT(low && high);
    const auto keptEnd = [&](double dataLow, double dataHigh, const ViewZoom::Range& view) {
        return start.zoomsIn() ? 0 : dataHigh < view.upper ? 1 : dataLow > view.lower ? -1 : 0;
    };
    const QRectF& curves = start.curves;
    expectLowerBound(*low, start.prices, start.centre.x(), spans.price,
        keptEnd(curves.left(), curves.right(), start.prices));
    expectLowerBound(*high - spans.value, start.values, start.centre.y(), spans.value,
        keptEnd(curves.top(), curves.bottom(), start.values));
}

void zoom(FuzzInput& input, const QRectF& curves)
{
    const bool near = input.takeFlag();
    const auto take = [&] { return near ? input.takePrice() : input.takeDouble(); };
    ViewZoom::Start start;
    start.prices.lower = take();
    start.prices.upper = take();
    start.values.lower = take();
    start.values.upper = take();
    start.curves = curves;
    start.centre.setX(take());
    start.centre.setY(take());
    const int angle = input.take<std::int16_t>();
    expectFactor(angle);
    const auto factor = ViewZoom::factor(ViewZoom::notches(angle));
    if (!factor)
        return;
    start.factor = *factor;
    const ViewZoom::Spans spans = ViewZoom::zoomedSpans(start);
    if (isModest(start)) {
        expectSpans(start, spans);
        expectZoomed(start, spans);
    }
    const double width = start.prices.width();
    if (std::isfinite(width) && width > 0.0 && start.zoomsIn())
        FUZZ_EXPECT(spans.price <= width);
    if (std::isfinite(width) && width > 0.0 && !start.zoomsIn())
        FUZZ_EXPECT(spans.price >= width);
    FUZZ_EXPECT(ViewZoom::isTooSmall(spans, 0.01) == (spans.price < 0.01 || spans.value < 1e-8));
    if (const auto low = ViewZoom::zoomedLowestPrice(start, spans))
        FUZZ_EXPECT(std::isfinite(*low) && std::isfinite(*low + spans.price));
    if (const auto high = ViewZoom::zoomedHighestValue(start, spans))
        FUZZ_EXPECT(std::isfinite(*high) && std::isfinite(*high - spans.value));
    expectDragged(start.prices, start.values, input.takeFlag());
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const QRectF curves = takeRectangle(input);
    pan(input, curves);
    zoom(input, curves);
    return 0;
}
