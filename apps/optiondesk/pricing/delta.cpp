#include "delta.h"

#include <ql/pricingengines/blackcalculator.hpp>

#include <cmath>

namespace Pricing {

std::optional<double> blackDelta(OptionType type, double strike, const Market& market, double volatility)
{
    const double stdDev = volatility * std::sqrt(market.time);
    if (!market.isValid() || !std::isfinite(strike) || strike <= 0.0 || !std::isfinite(stdDev)
        || stdDev < 0.0)
        return std::nullopt;
    const auto side = type == OptionType::Call ? QuantLib::Option::Call : QuantLib::Option::Put;
    try {
        const QuantLib::BlackCalculator calculator(side, strike, market.forward, stdDev, market.discount());
        const double delta = calculator.deltaForward();
        return std::isfinite(delta) ? std::optional<double>(delta) : std::nullopt;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

}
