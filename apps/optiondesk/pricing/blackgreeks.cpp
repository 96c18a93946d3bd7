#include "blackgreeks.h"

#include <ql/pricingengines/blackcalculator.hpp>

#include <cmath>
#include <exception>

namespace Pricing {

std::optional<Greeks> blackGreeks(OptionType type, double strike, const Market& market, double volatility)
{
    const std::optional<double> price = blackPrice(type, strike, market, volatility);
    if (!price || !(volatility > 0.0))
        return std::nullopt;
    try {
        const QuantLib::BlackCalculator calculator(
            type == OptionType::Call ? QuantLib::Option::Call : QuantLib::Option::Put, strike, market.forward,
            volatility * std::sqrt(market.time), market.discount());
        Greeks greeks;
        greeks.delta = calculator.deltaForward();
        greeks.gamma = calculator.gammaForward();
        greeks.vega = calculator.vega(market.time);
        // Black's differential equation: the forward itself does not drift.
        const double deviation = volatility * market.forward;
        greeks.theta = market.rate * *price - deviation * deviation * greeks.gamma / 2.0;
        const bool isFinite = std::isfinite(greeks.delta) && std::isfinite(greeks.gamma)
            && std::isfinite(greeks.vega) && std::isfinite(greeks.theta);
        return isFinite ? std::optional<Greeks>(greeks) : std::nullopt;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

}
