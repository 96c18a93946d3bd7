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
    axis.map.setPaintInterval(input.take<std::int16_t>(), input.take<std::int16_t>());
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

void pan(FuzzInput& input, const QRectF& curves)
{
    const PanLimits::Axis x = takeAxis(input);
    const PanLimits::Axis y = takeAxis(input);
    const int dx = input.take<std::int16_t>();
    const int dy = input.take<std::int16_t>();
    const auto view = PanLimits::draggedView(x, y, dx, dy);
    if (!view)
        return;
    const auto limits = PanLimits::limits(curves, *view);
    if (!limits)
        return;
    PanLimits::overlapInPrice(*view, *limits);
    PanLimits::isInside(*view, *limits);
    const double shiftX = PanLimits::limitedShiftX(x, *view, *limits, dx);
    const double shiftY = PanLimits::limitedShiftY(y, *view, *limits, dy);
    FUZZ_EXPECT(std::abs(shiftX) <= std::abs(dx) && std::abs(shiftY) <= std::abs(dy));
    FUZZ_EXPECT(shiftX * dx >= 0.0 && shiftY * dy >= 0.0);
}

void zoom(FuzzInput& input, const QRectF& curves)
{
    ViewZoom::Start start;
    start.prices = {input.takeDouble(), input.takeDouble()};
    start.values = {input.takeDouble(), input.takeDouble()};
    start.curves = curves;
    start.centre = QPointF(input.takeDouble(), input.takeDouble());
    const auto factor = ViewZoom::factor(ViewZoom::notches(input.take<std::int16_t>()));
    if (!factor)
        return;
    start.factor = *factor;
    const ViewZoom::Spans spans = ViewZoom::zoomedSpans(start);
    ViewZoom::isTooSmall(spans, 0.01);
    if (const auto low = ViewZoom::zoomedLowestPrice(start, spans))
        FUZZ_EXPECT(std::isfinite(*low) && std::isfinite(*low + spans.price));
    if (const auto high = ViewZoom::zoomedHighestValue(start, spans))
        FUZZ_EXPECT(std::isfinite(*high) && std::isfinite(*high - spans.value));

    const bool shrinks = input.take<std::uint8_t>() & 1;
    if (const auto range = ViewZoom::dragged(start.prices, start.values, shrinks))
        FUZZ_EXPECT(std::isfinite(range->width()));
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
