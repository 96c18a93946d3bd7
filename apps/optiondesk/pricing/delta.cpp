#include "delta.h"

#include "blackgreeks.h"

namespace Pricing {

std::optional<double> blackDelta(OptionType type, double strike, const Market& market, double volatility)
{
    if (const std::optional<Greeks> greeks = blackGreeks(type, strike, market, volatility))
        return greeks->delta;
    if (volatility != 0.0 || !blackPrice(type, strike, market, volatility))
        return std::nullopt;
    // At the forward itself a call without volatility has no intrinsic value to gain or lose.
    const double ofCall = market.forward > strike ? 1.0 : 0.0;
    return market.discount() * (type == OptionType::Call ? ofCall : ofCall - 1.0);
}

}
