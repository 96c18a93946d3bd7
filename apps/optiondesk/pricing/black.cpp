#include "black.h"

#include <ql/math/solvers1d/brent.hpp>
#include <ql/pricingengines/blackformula.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Pricing {

namespace {

// Beyond this total standard deviation no price differs from its upper bound.
constexpr double largestStdDev = 80.0;
// Of the logarithm of the standard deviation.
constexpr double solverAccuracy = 1e-13;
constexpr int solverEvaluations = 300;

bool isPositive(double value)
{
    return std::isfinite(value) && value > 0.0;
}

QuantLib::Option::Type quantLibType(OptionType type)
{
    return type == OptionType::Call ? QuantLib::Option::Call : QuantLib::Option::Put;
}

double intrinsicValue(OptionType type, double strike, double forward)
{
    return std::max(type == OptionType::Call ? forward - strike : strike - forward, 0.0);
}

// Undiscounted. Of two options of one strike the out-of-the-money one is computed, and the other from it
// by parity: the other way round a small time value would drown in the rounding of the large price.
double outOfTheMoneyValue(double strike, double forward, double stdDev)
{
    try {
        return QuantLib::blackFormula(
            quantLibType(outOfTheMoneyType(strike, forward)), strike, forward, stdDev);
    } catch (const std::exception&) {
        // The inputs being valid, what QuantLib refuses is a value that rounding made negative.
        return 0.0;
    }
}

// The total standard deviation that gives an undiscounted out-of-the-money value, 0 < value <
// min(strike, forward). Solved in logarithms of both, in which even the smallest values are well scaled.
std::optional<double> solveStdDev(double strike, double forward, double value)
{
    const auto logDistance = [strike, forward, logValue = std::log(value)](double logStdDev) {
        const double trial = outOfTheMoneyValue(strike, forward, std::exp(logStdDev));
        return std::log(std::max(trial, std::numeric_limits<double>::min())) - logValue;
    };
    // The derivative of the value by the standard deviation never exceeds sqrt(strike * forward / (2 pi)).
    const double steepest = std::sqrt(strike) * std::sqrt(forward) / std::sqrt(2.0 * M_PI);
    const double lowest = std::log(value / steepest) - 1.0;
    const double highest = std::log(largestStdDev);
    try {
        QuantLib::Brent solver;
        solver.setMaxEvaluations(solverEvaluations);
        return std::exp(solver.solve(logDistance, solverAccuracy, (lowest + highest) / 2.0, lowest, highest));
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

}

bool Market::isValid() const
{
    return isPositive(forward) && isPositive(time) && std::isfinite(rate) && isPositive(discount());
}

double Market::discount() const
{
    return std::exp(-rate * time);
}

OptionType outOfTheMoneyType(double strike, double forward)
{
    return strike < forward ? OptionType::Put : OptionType::Call;
}

std::optional<double> blackPrice(OptionType type, double strike, const Market& market, double volatility)
{
    const double stdDev = volatility * std::sqrt(market.time);
    if (!market.isValid() || !isPositive(strike) || !std::isfinite(stdDev) || stdDev < 0.0)
        return std::nullopt;
    const double value
        = intrinsicValue(type, strike, market.forward) + outOfTheMoneyValue(strike, market.forward, stdDev);
    const double price = market.discount() * value;
    return std::isfinite(price) ? std::optional<double>(price) : std::nullopt;
}

std::optional<double> blackVega(double strike, const Market& market, double volatility)
{
    const double stdDev = volatility * std::sqrt(market.time);
    if (!market.isValid() || !isPositive(strike) || !std::isfinite(stdDev) || stdDev < 0.0)
        return std::nullopt;
    try {
        const double vega = QuantLib::blackFormulaVolDerivative(
            strike, market.forward, stdDev, market.time, market.discount());
        return std::isfinite(vega) ? std::optional<double>(vega) : std::nullopt;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

ImpliedVolatility impliedVolatility(
    OptionType type, double strike, const Market& market, std::optional<double> price)
{
    if (!market.isValid() || !isPositive(strike))
        return {std::nullopt, Refusal::InvalidInput};
    if (!price)
        return {std::nullopt, Refusal::NoPrice};
    if (!std::isfinite(*price) || *price < 0.0)
        return {std::nullopt, Refusal::InvalidInput};
    if (*price == 0.0)
        return {std::nullopt, Refusal::ZeroPrice};

    const double epsilon = std::numeric_limits<double>::epsilon();
    const double intrinsic = intrinsicValue(type, strike, market.forward);
    const double timeValue = *price / market.discount() - intrinsic;
    const double rounding = intrinsic > 0.0 ? 8.0 * epsilon * std::max(strike, market.forward) : 0.0;
    if (timeValue <= rounding)
        return {std::nullopt, Refusal::BelowIntrinsic};
    if (timeValue >= std::min(strike, market.forward) * (1.0 - 8.0 * epsilon))
        return {std::nullopt, Refusal::AboveBound};

    const std::optional<double> stdDev = solveStdDev(strike, market.forward, timeValue);
    const double volatility = stdDev.value_or(0.0) / std::sqrt(market.time);
    if (!isPositive(volatility))
        return {std::nullopt, Refusal::NoConvergence};
    return {volatility, Refusal::NoConvergence};
}

}
