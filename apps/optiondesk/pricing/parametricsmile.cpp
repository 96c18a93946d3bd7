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

Function fittedSvi(
    const std::vector<double>& strikes, const std::vector<double>& volatilities, const Market& market)
{
    QuantLib::SviInterpolation fit(strikes.begin(), strikes.end(), volatilities.begin(), market.time,
        market.forward, unknown, unknown, unknown, unknown, unknown, false, false, false, false, false, true,
        endCriteria(), nullptr, acceptedError, false, guesses);
    fit.update();
    return
        [a = fit.a(), b = fit.b(), sigma = fit.sigma(), rho = fit.rho(), m = fit.m(), market](double strike) {
            const double distance = std::log(strike / market.forward) - m;
            const double variance = a + b * (rho * distance + std::sqrt(distance * distance + sigma * sigma));
            return std::sqrt(variance / market.time);
        };
}

Function fittedSabr(
    const std::vector<double>& strikes, const std::vector<double>& volatilities, const Market& market)
{
    constexpr double beta = 1.0;
    QuantLib::SABRInterpolation fit(strikes.begin(), strikes.end(), volatilities.begin(), market.time,
        market.forward, unknown, beta, unknown, unknown, false, true, false, false, true, endCriteria(),
        nullptr, acceptedError, false, guesses);
    fit.update();
    return [alpha = fit.alpha(), nu = fit.nu(), rho = fit.rho(), market](double strike) {
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
        Function fitted = model == SmileModel::Svi ? fittedSvi(used.strikes, used.volatilities, market)
                                                   : fittedSabr(used.strikes, used.volatilities, market);
        return isSound(fitted, points.strikes.front(), points.strikes.back()) ? fitted : nullptr;
    } catch (const std::exception&) {
        return nullptr;
    }
}

}
