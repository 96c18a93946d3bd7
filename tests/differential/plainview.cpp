#include "differential/plainview.h"

#include "differential/plainranges.h"

#include <c_api/common.h>

#include <cmath>

Plain::Range Plain::View::visibleValues() const
{
    if (prices.first > prices.second)
        return Range(1.0, -1.0);
    const double x1 = snappedPrice(prices.first, priceStep);
    const double x2 = snappedPrice(prices.second, priceStep);
    if (!areApart(x1, x2))
        return Range(1.0, -1.0);
    return valuesBetween(curves, x1, x2);
}

void Plain::View::setAxis(int axis, double min, double max)
{
    if (!std::isfinite(min) || !std::isfinite(max) || min > max)
        return;
    if (axis == 0)
        moveLine(min, max, -1.0);
    const std::optional<Bounds> shown = shownRange(axis, min, max);
    if (shown)
        (axis == 0 ? values : prices) = *shown;
}

void Plain::View::moveLine(double low, double high, double quote)
{
    if (values.first < low)
        low = values.first;
    if (values.second > high)
        high = values.second;
    for (Curve& curve : curves) {
        if (!curve.isQuoteLine())
            continue;
        if (curve.samples.size() != 2)
            return;
        if (quote < 0.0) {
            quote = curve.samples[0].x();
            if (quote != curve.samples[1].x() || quote < 0.0)
                return;
        }
        const auto line = quoteLine(low, high, quote);
        if (line)
            curve.samples = {line->first, line->second};
        return;
    }
}

void Plain::View::fit()
{
    if (!followsCurves) {
        moveLine(0.0, 0.0, -1.0);
        return;
    }
    const Range range = visibleValues();
    if (range.first <= range.second || commonFuzzyCompare(range.first, range.second))
        setAxis(0, range.first, range.second);
}

std::optional<bool> Plain::AxisDrag::shrinks(bool isPrices, const QPointF& place) const
{
    const bool isFirst = last.x() == 0.0 && last.y() == 0.0;
    const QPointF from = isFirst ? press : last;
    const double previous = isPrices ? from.x() : from.y();
    const double current = isPrices ? place.x() : place.y();
    if (previous == current)
        return std::nullopt;
    return current < previous;
}
