#include "fuzzinput.h"

#include <plot2d/panlimits_p.h>
#include <plot2d/viewzoom_p.h>

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

void expectShift(const PanLimits::Axis& axis, double value, double drag)
{
    for (const int side : {PanLimits::Lower, PanLimits::Upper}) {
        const double shift = PanLimits::shiftUntil(axis, value, side, drag);
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

void pan(FuzzInput& input, const QRectF& curves)
{
    const PanLimits::Axis x = takeAxis(input);
    const PanLimits::Axis y = takeAxis(input);
    const int dx = input.take<std::int16_t>();
    const int dy = input.take<std::int16_t>();
    expectShift(x, curves.left(), dx);
    const auto view = PanLimits::draggedView(x, y, dx, dy);
    if (!view)
        return;
    FUZZ_EXPECT(std::isfinite(view->left()) && std::isfinite(view->right()) && view->width() > 0.0);
    FUZZ_EXPECT(std::isfinite(view->top()) && std::isfinite(view->bottom()) && view->height() >= 0.0);
    const auto limits = PanLimits::limits(curves, *view);
    if (!limits)
        return;
    FUZZ_EXPECT(!(limits->width() <= 0.0) && !(limits->height() < 0.0));
    const bool overlap = PanLimits::overlapInPrice(*view, *limits);
    FUZZ_EXPECT(overlap == !(view->left() > limits->right() || limits->left() > view->right()));
    if (PanLimits::isInside(*view, *limits))
        expectInside(*view, *limits);
    const double shiftX = PanLimits::limitedShiftX(x, *view, *limits, dx);
    const double shiftY = PanLimits::limitedShiftY(y, *view, *limits, dy);
    FUZZ_EXPECT(std::abs(shiftX) <= std::abs(dx) && std::abs(shiftY) <= std::abs(dy));
    FUZZ_EXPECT(shiftX * dx >= 0.0 && shiftY * dy >= 0.0);
}

void expectDragged(const ViewZoom::Range& view, const ViewZoom::Range& data, bool shrinks)
{
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
    const auto factor = ViewZoom::factor(ViewZoom::notches(input.take<std::int16_t>()));
    if (!factor)
        return;
    start.factor = *factor;
    const ViewZoom::Spans spans = ViewZoom::zoomedSpans(start);
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
