#include "differential/plainranges.h"

#include "differential/plainnumbers.h"

#include <c_api/common.h>

#include <cmath>

double Plain::snappedPrice(double price, double priceStep)
{
    if (priceStep < 0.0 || isNothing(priceStep))
        return price;
    // From 2^52 on every double is a whole number.
    const double steps = price / priceStep;
    const double snapped = priceStep * (std::fabs(steps) < 4503599627370496.0 ? roundedHalfUp(steps) : steps);
    return std::isfinite(snapped) ? snapped : price;
}

bool Plain::areApart(double low, double high)
{
    const double smaller = std::fabs(low) < std::fabs(high) ? std::fabs(low) : std::fabs(high);
    return low <= high && smaller < std::fabs(low - high) * 1e12;
}

std::optional<std::pair<double, double>> Plain::shownRange(int axis, double min, double max)
{
    if (axis != 0 && axis != 2)
        return std::nullopt;
    if (!std::isfinite(min) || !std::isfinite(max) || min > max)
        return std::nullopt;
    const bool areEqual = commonFuzzyCompare(min, max);
    if (axis == 2)
        return areEqual ? std::nullopt : std::make_optional(std::make_pair(min, max));
    if (areEqual)
        return std::make_pair(min - 1.0, max + 1.0);
    if (max - min > 1e-8)
        return std::make_pair(min, max);
    return std::nullopt;
}

std::optional<std::pair<QPointF, QPointF>> Plain::quoteLine(double low, double high, double quote)
{
    if (!(low <= high) || !std::isfinite(quote) || (std::isinf(low) && low == high))
        return std::nullopt;
    if (commonFuzzyCompare(low, high)) {
        low = low - 1.0;
        high = high + 1.0;
    }
    const double half = 8.988465674311579e307;
    const double more = (high - low) * 0.1;
    const double lower = low - more > -half ? low - more : -half;
    const double upper = high + more < half ? high + more : half;
    return std::make_pair(QPointF(quote, lower), QPointF(quote, upper));
}
