#include "viewzoom_p.h"

#include "fuzzyequality_p.h"

#include <cmath>
#include <limits>

namespace {

using ViewZoom::Range;

/// How the part of a range above its centre relates to the part below; nothing where the centre lies on the
/// lower bound, or as far off that the parts cancel out. The bounds are compared as if moved by 10, so that
/// those near zero are not told apart by a relative tolerance.
std::optional<double> ratioAround(double centre, const Range& range)
{
    constexpr double offset = 10.0;
    if (centre == range.lower || isFuzzyEqual(centre + offset, range.lower + offset))
        return std::nullopt;
    const double ratio = (range.upper - centre) / (centre - range.lower);
    return isFuzzyEqual(ratio, -1.0) ? std::nullopt : std::optional<double>(ratio);
}

std::optional<double> ifFinite(double bound, double oppositeBound)
{
    return std::isfinite(bound) && std::isfinite(oppositeBound) ? std::optional<double>(bound) : std::nullopt;
}

double lowestPrice(const ViewZoom::Start& start, double span)
{
    const Range& view = start.prices;
    if (!start.zoomsIn() && start.curves.right() < view.upper)
        return view.upper - span;
    if (!start.zoomsIn() && start.curves.left() > view.lower)
        return view.lower;
    const std::optional<double> ratio = ratioAround(start.centre.x(), view);
    const double divisor = ratio ? *ratio + 1.0 : 1.0;
    return start.centre.x() - span / divisor;
}

double highestValue(const ViewZoom::Start& start, double span)
{
    const Range& view = start.values;
    if (!start.zoomsIn() && start.curves.bottom() < view.upper)
        return view.upper;
    if (!start.zoomsIn() && start.curves.top() > view.lower)
        return view.lower + span;
    const std::optional<double> ratio = ratioAround(start.centre.y(), view);
    return start.centre.y() + (ratio ? *ratio * span / (*ratio + 1.0) : 0.0);
}

}

int ViewZoom::notches(int angle)
{
    constexpr int eighthsOfDegree = 8;
    constexpr int degreesOfNotch = 15;
    return angle / eighthsOfDegree / degreesOfNotch;
}

std::optional<double> ViewZoom::factor(int notches)
{
    switch (notches) {
    case 0:
        return std::nullopt;
    case 1:
        return 0.9;
    case -1:
        return 1.1;
    default:
        return notches > 0 ? 0.89 : 1.11;
    }
}

ViewZoom::Spans ViewZoom::zoomedSpans(const Start& start)
{
    const double prices = start.prices.width();
    const double values = start.values.width();
    // Without a width there are no proportions to keep.
    constexpr double unknown = std::numeric_limits<double>::quiet_NaN();
    if (prices == 0.0)
        return {unknown, unknown};
    if (start.zoomsIn() || start.curves.width() > prices) {
        const double price = prices * start.factor;
        return {price, values * price / prices};
    }
    const bool grows = values < start.curves.height();
    return {prices, grows ? start.factor * prices * values / prices : values};
}

bool ViewZoom::isTooSmall(const Spans& spans, double minStep)
{
    return spans.price < minStep || spans.value < 1e-8;
}

std::optional<double> ViewZoom::zoomedLowestPrice(const Start& start, const Spans& spans)
{
    const double bound = lowestPrice(start, spans.price);
    return ifFinite(bound, bound + spans.price);
}

std::optional<double> ViewZoom::zoomedHighestValue(const Start& start, const Spans& spans)
{
    const double bound = highestValue(start, spans.value);
    return ifFinite(bound, bound - spans.value);
}

std::optional<ViewZoom::Range> ViewZoom::dragged(const Range& view, const Range& data, bool shrinks)
{
    const double step = view.width() * 0.1 * 0.5;
    Range result{view.lower + step, view.upper - step};
    if (shrinks) {
        if (!(result.lower <= result.upper))
            return std::nullopt;
    } else {
        if (!(view.lower > data.lower) && !(view.upper < data.upper))
            return std::nullopt;
        if (view.lower <= data.lower)
            result = {view.lower, view.upper + 2.0 * step};
        else if (view.upper < data.upper)
            result = {view.lower - step, view.upper + step};
        else
            result = {view.lower - 2.0 * step, view.upper};
    }
    return std::isfinite(result.lower) && std::isfinite(result.upper) && std::isfinite(result.width())
        ? std::optional<Range>(result)
        : std::nullopt;
}
