#include "quoteline_p.h"

#include "plot2d/pricebased2dplotcurve.h"

#include <c_api/common.h>

#include <algorithm>
#include <cmath>
#include <limits>

std::optional<QuoteLine::Ends> QuoteLine::ends(double low, double high, double price)
{
    const bool isNowhere = std::isinf(low) && low == high;
    if (!(low <= high) || isNowhere || !std::isfinite(price))
        return std::nullopt;
    if (commonFuzzyCompare(low, high)) {
        low -= 1.0;
        high += 1.0;
    }

    constexpr double limit = std::numeric_limits<double>::max() / 2.0;
    const double margin = (high - low) * 0.1;
    return Ends{
        QPointF(price, std::max(low - margin, -limit)), QPointF(price, std::min(high + margin, limit))};
}

std::optional<double> QuoteLine::price(const PriceBased2dPlotCurve& line)
{
    if (line.dataSize() != 2)
        return std::nullopt;
    const double first = line.sample(0).x();
    const double second = line.sample(1).x();
    const bool agreed = first == second && first >= 0.0 && std::isfinite(first);
    return agreed ? std::optional<double>(first) : std::nullopt;
}
