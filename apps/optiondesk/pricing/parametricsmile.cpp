#include "parametricsmile.h"

#include <ql/experimental/volatility/sviinterpolation.hpp>
#include <ql/math/interpolations/sabrinterpolation.hpp>
#include <ql/termstructures/volatility/sabr.hpp>

#include <cmath>
#include <exception>

namespace Pricing {

namespace {

using Function = std::function<double(double)>;

const double unknown = QuantLib::Null<double>();
constexpr std::size_t guesses = 1;

QuantLib::ext::shared_ptr<QuantLib::EndCriteria> endCriteria()
{
    constexpr std::size_t iterations = 400;
    constexpr std::size_t stationary = 50;
    constexpr double accuracy = 1e-8;
    return QuantLib::ext::make_shared<QuantLib::EndCriteria>(
        iterations, stationary, accuracy, accuracy, accuracy);
}

// A good enough error ends the search; with one guess there is no other one anyway.
constexpr double acceptedError = 0.002;

// Weighs with the square of the vega, so that the sum of squares is one of prices, which QuantLib's own fits
// would weigh with the vega: enough to let the worthless strikes of a wing, which are many, prevail.
template <typename Model> struct PriceWeighted : Model {
    QuantLib::Real weight(QuantLib::Real strike, QuantLib::Real forward, QuantLib::Real stdDev,
        const std::vector<QuantLib::Real>& additional)
    {
        const QuantLib::Real vega = Model::weight(strike, forward, stdDev, additional);
        return vega * vega;
    }
};

// The parameters of a model with the given first guesses, unknown ones being QuantLib's.
template <typename Model>
std::vector<double> fittedParameters(const SmilePoints& points, const Market& market,
    const std::vector<double>& first, const std::vector<bool>& isFixed,
    const std::vector<double>& additional = {})
{
    using Iterator = std::vector<double>::const_iterator;
    QuantLib::detail::XABRInterpolationImpl<Iterator, Iterator, PriceWeighted<Model>> fit(
        points.strikes.begin(), points.strikes.end(), points.volatilities.begin(), market.time,
        market.forward, first, isFixed, true, endCriteria(), nullptr, acceptedError, false, guesses,
        additional);
    fit.update();
    return fit.params_;
}

Function fittedSvi(const SmilePoints& points, const Market& market)
{
    const std::vector<double> fitted = fittedParameters<QuantLib::detail::SviSpecs>(
        points, market, std::vector<double>(5, unknown), std::vector<bool>(5, false));
    return [a = fitted[0], b = fitted[1], sigma = fitted[2], rho = fitted[3], m = fitted[4], market](
               double strike) {
        const double distance = std::log(strike / market.forward) - m;
        const double variance = a + b * (rho * distance + std::sqrt(distance * distance + sigma * sigma));
        return std::sqrt(variance / market.time);
    };
}

Function fittedSabr(const SmilePoints& points, const Market& market)
{
    constexpr double beta = 1.0;
    constexpr double shift = 0.0;
    const std::vector<double> fitted = fittedParameters<QuantLib::detail::SABRSpecs>(
        points, market, {unknown, beta, unknown, unknown}, {false, true, false, false}, {shift});
    return [alpha = fitted[0], nu = fitted[2], rho = fitted[3], market](double strike) {
        return QuantLib::unsafeSabrVolatility(
            strike, market.forward, market.time, alpha, beta, nu, rho, QuantLib::ShiftedLognormal);
    };
}

SmilePoints precisePoints(const SmilePoints& points)
{
    constexpr double largestError = 0.005;
    SmilePoints precise;
    for (std::size_t i = 0; i < points.strikes.size(); ++i) {
        if (points.errors[i] > largestError)
            continue;
        precise.strikes.push_back(points.strikes[i]);
        precise.volatilities.push_back(points.volatilities[i]);
        precise.errors.push_back(points.errors[i]);
    }
    return precise;
}

bool isSound(const Function& volatility, double low, double high)
{
    constexpr int steps = 500;
    for (int i = 0; i <= steps; ++i) {
        const double strike = low * std::pow(high / low, static_cast<double>(i) / steps);
        const double value = volatility(strike);
        if (!std::isfinite(value) || value <= 0.0)
            return false;
    }
    return true;
}

}

Function parametricSmile(SmileModel model, const SmilePoints& points, const Market& market)
{
    const std::size_t parameters = model == SmileModel::Svi ? 5 : 3;
    if (model == SmileModel::Spline || !market.isValid() || points.strikes.size() < parameters)
        return nullptr;
    try {
        SmilePoints used = precisePoints(points);
        if (used.strikes.size() < 2 * parameters)
            used = points;
        Function fitted = model == SmileModel::Svi ? fittedSvi(used, market) : fittedSabr(used, market);
        return isSound(fitted, points.strikes.front(), points.strikes.back()) ? fitted : nullptr;
    } catch (const std::exception&) {
        return nullptr;
    }
}

}
