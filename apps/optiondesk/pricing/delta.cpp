#include "delta.h"

#include <cmath>
#include <limits>

namespace Pricing {

namespace {

double normalDistribution(double x)
{
    return std::erfc(-x / std::sqrt(2.0)) / 2.0;
}

}

std::optional<double> blackDelta(OptionType type, double strike, const Market& market, double volatility)
{
    const double stdDev = volatility * std::sqrt(market.time);
    if (!market.isValid() || !std::isfinite(strike) || strike <= 0.0 || !std::isfinite(stdDev)
        || stdDev < 0.0)
        return std::nullopt;
    // At the forward itself a call without volatility has no intrinsic value to gain or lose.
    const double moneyness = std::log(market.forward / strike);
    const double d1 = stdDev > 0.0
        ? moneyness / stdDev + stdDev / 2.0
        : std::copysign(std::numeric_limits<double>::infinity(), moneyness > 0.0 ? 1.0 : -1.0);
    return market.discount() * (type == OptionType::Call ? normalDistribution(d1) : -normalDistribution(-d1));
}

}
