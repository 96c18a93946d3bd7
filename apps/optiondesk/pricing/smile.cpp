#include "smile.h"

#include "smoothingspline.h"

#include <ql/math/interpolations/cubicinterpolation.hpp>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>
#include <vector>

namespace Pricing {

namespace {

constexpr double lowestVolatility = 1e-6;
constexpr double highestVolatility = 1e6;
constexpr double smallestRelativeError = 1e-6;
// Strikes closer than this, relatively, count as one: the equations divide by their distance.
constexpr double sameStrike = 1e-6;
// How far the curve may leave the range of the points, in units of that range. Where neighbours almost
// share a strike the slope between them may be so steep that the curve would swing without bound beside
// them: Hyman's filter limits the slope at a knot by the steeper of its sides.
constexpr double largestSwing = 0.1;

bool isUsable(const VolatilityPoint& point)
{
    return std::isfinite(point.strike) && point.strike > 0.0 && point.volatility >= lowestVolatility
        && point.volatility <= highestVolatility;
}

QVector<VolatilityPoint> usablePoints(const QVector<VolatilityPoint>& points)
{
    QVector<VolatilityPoint> result;
    std::copy_if(points.begin(), points.end(), std::back_inserter(result), isUsable);
    std::stable_sort(result.begin(), result.end(),
        [](const VolatilityPoint& a, const VolatilityPoint& b) { return a.strike < b.strike; });
    return result;
}

// The relative error of a point's volatility, which is the error of its logarithm.
double logarithmError(const VolatilityPoint& point)
{
    const double error = point.volatilityError / point.volatility;
    return std::isfinite(error) ? std::max(error, smallestRelativeError) : smallestRelativeError;
}

// What the spline is fitted to.
struct Knots {
    std::vector<double> logStrikes;
    std::vector<double> logVolatilities;
    std::vector<double> errors;
};

// Joins the points of one strike, weighted by the inverse squares of their errors.
Knots knots(const QVector<VolatilityPoint>& points)
{
    Knots result;
    for (const VolatilityPoint& point : points) {
        const double logStrike = std::log(point.strike);
        const double logVolatility = std::log(point.volatility);
        const double error = logarithmError(point);
        if (result.logStrikes.empty() || logStrike - result.logStrikes.back() > sameStrike) {
            result.logStrikes.push_back(logStrike);
            result.logVolatilities.push_back(logVolatility);
            result.errors.push_back(error);
            continue;
        }
        const double before = 1.0 / (result.errors.back() * result.errors.back());
        const double weight = 1.0 / (error * error);
        result.logVolatilities.back()
            += (logVolatility - result.logVolatilities.back()) * weight / (before + weight);
        result.errors.back() = 1.0 / std::sqrt(before + weight);
    }
    return result;
}

}

struct Smile::Curve {
    void setKnots(const Knots& knots);
    void setModel(SmileModel model, const Knots& knots, const Market& market);
    void setErrors(const QVector<VolatilityPoint>& points);
    double volatility(double strike) const;

    double minStrike = 0.0;
    double maxStrike = 0.0;
    double maxError = 0.0;
    double rmsError = 0.0;
    double lowestLogVolatility = 0.0;
    double highestLogVolatility = 0.0;
    // The interpolation refers to these vectors, so a curve is neither copied nor moved.
    std::vector<double> logStrikes;
    std::vector<double> logVolatilities;
    // Empty of one knot.
    QuantLib::Interpolation interpolation;
    SmileModel model = SmileModel::Spline;
    // Null for the spline.
    std::function<double(double)> parametric;
};

void Smile::Curve::setKnots(const Knots& knots)
{
    logStrikes = knots.logStrikes;
    logVolatilities = smoothed(knots.logStrikes, knots.logVolatilities, knots.errors);
    const auto [lowest, highest]
        = std::minmax_element(knots.logVolatilities.begin(), knots.logVolatilities.end());
    const double swing = largestSwing * (*highest - *lowest);
    lowestLogVolatility = *lowest - swing;
    highestLogVolatility = *highest + swing;
    if (logStrikes.size() > 1)
        interpolation = QuantLib::MonotonicCubicNaturalSpline(
            logStrikes.begin(), logStrikes.end(), logVolatilities.begin());
}

void Smile::Curve::setModel(SmileModel wanted, const Knots& knots, const Market& market)
{
    SmilePoints points;
    for (std::size_t i = 0; i < knots.logStrikes.size(); ++i) {
        const double volatility = std::exp(knots.logVolatilities[i]);
        points.strikes.push_back(std::exp(knots.logStrikes[i]));
        points.volatilities.push_back(volatility);
        points.errors.push_back(knots.errors[i] * volatility);
    }
    parametric = parametricSmile(wanted, points, market);
    if (parametric)
        model = wanted;
}

void Smile::Curve::setErrors(const QVector<VolatilityPoint>& points)
{
    double squares = 0.0;
    double weights = 0.0;
    for (const VolatilityPoint& point : points) {
        const double error = std::abs(volatility(point.strike) - point.volatility);
        const double pointError = logarithmError(point) * point.volatility;
        const double weight = 1.0 / (pointError * pointError);
        maxError = std::max(maxError, error);
        squares += weight * error * error;
        weights += weight;
    }
    rmsError = std::sqrt(squares / weights);
}

double Smile::Curve::volatility(double strike) const
{
    if (parametric)
        return parametric(std::clamp(strike, minStrike, maxStrike));
    if (interpolation.empty())
        return std::exp(logVolatilities.front());
    const double logStrike = std::clamp(std::log(strike), logStrikes.front(), logStrikes.back());
    return std::exp(std::clamp(interpolation(logStrike), lowestLogVolatility, highestLogVolatility));
}

Smile::Smile(std::shared_ptr<const Curve> curve)
    : m_curve(std::move(curve))
{
}

std::optional<Smile> Smile::fit(const QVector<VolatilityPoint>& points)
{
    return fit(points, SmileModel::Spline, Market());
}

std::optional<Smile> Smile::fit(
    const QVector<VolatilityPoint>& points, SmileModel model, const Market& market)
{
    const QVector<VolatilityPoint> usable = usablePoints(points);
    if (usable.isEmpty())
        return std::nullopt;
    const auto curve = std::make_shared<Curve>();
    curve->minStrike = usable.first().strike;
    curve->maxStrike = usable.last().strike;
    try {
        const Knots all = knots(usable);
        curve->setKnots(all);
        curve->setModel(model, all, market);
    } catch (const std::exception&) {
        return std::nullopt;
    }
    curve->setErrors(usable);
    return Smile(curve);
}

std::optional<double> Smile::volatility(double strike) const
{
    if (!(strike >= m_curve->minStrike && strike <= m_curve->maxStrike))
        return std::nullopt;
    return m_curve->volatility(strike);
}

SmileModel Smile::model() const
{
    return m_curve->model;
}

double Smile::minStrike() const
{
    return m_curve->minStrike;
}

double Smile::maxStrike() const
{
    return m_curve->maxStrike;
}

double Smile::maxError() const
{
    return m_curve->maxError;
}

double Smile::rmsError() const
{
    return m_curve->rmsError;
}

QVector<QPointF> volatilityCurve(const Smile& smile, const QVector<double>& strikes)
{
    QVector<QPointF> result;
    for (const double strike : strikes) {
        if (const std::optional<double> volatility = smile.volatility(strike))
            result.append({strike, *volatility});
    }
    return result;
}

std::optional<double> theoreticalValue(
    const Smile& smile, const Market& market, ValueSide side, double strike)
{
    const std::optional<double> volatility = smile.volatility(strike);
    if (!volatility)
        return std::nullopt;
    OptionType type = outOfTheMoneyType(strike, market.forward);
    if (side != ValueSide::OutOfTheMoney)
        type = side == ValueSide::Call ? OptionType::Call : OptionType::Put;
    return blackPrice(type, strike, market, *volatility);
}

QVector<QPointF> theoreticalCurve(
    const Smile& smile, const Market& market, ValueSide side, const QVector<double>& strikes)
{
    QVector<QPointF> result;
    for (const double strike : strikes) {
        if (const std::optional<double> value = theoreticalValue(smile, market, side, strike))
            result.append({strike, *value});
    }
    return result;
}

}
