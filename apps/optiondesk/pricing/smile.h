#pragma once

#include <pricing/parametricsmile.h>
#include <pricing/seriesanalysis.h>

#include <QPointF>
#include <QVector>

#include <memory>
#include <optional>

namespace Pricing {

/// A smooth curve of volatility over strike through the points of one series.
///
/// Model: a cubic smoothing spline (C. Reinsch, "Smoothing by spline functions", 1967) of the logarithm of
/// the volatility over the logarithm of the strike: the curve of least curvature that misses the points, in
/// the mean square, by no more than their volatilityError. Close to the money, where a price step is worth
/// little volatility, it therefore follows the points; where prices are a step or two it cuts through the
/// saw teeth that rounding leaves. The smoothed points are joined by QuantLib's natural cubic spline with
/// Hyman's monotonicity filter, which does not swing in the gaps between irregular strikes. The logarithm
/// keeps the volatility positive whatever the points.
///
/// Why not a parametric model: at the settlements of a crude-oil future and of ten expiries of an index, SVI
/// and SABR, which have five and three parameters, miss the points near the money by 0.01 to 0.15 and 0.01 to
/// 0.8 volatility points where the spline misses them by less than 0.06; and those of the far wings of short
/// expiries, whose prices stand at the smallest step, by tens where the spline stays below 2.1. Whoever wants
/// their shape all the same can have it.
///
/// A value: copies share the immutable curve.
class Smile {
public:
    /// Points may come in any order. Points whose strike is not positive and finite, or whose volatility is
    /// not between 1e-6 and 1e6, are ignored; points of one strike (to a relative 1e-6) count as their
    /// weighted mean. One point gives a constant, two a power of the strike. A volatilityError that is not
    /// positive and finite, or below 1e-6 of the volatility, counts as that. nullopt where no point is left.
    static std::optional<Smile> fit(const QVector<VolatilityPoint>& points);

    /// The same by a model of a market; by the spline where parametricSmile() refuses.
    static std::optional<Smile> fit(
        const QVector<VolatilityPoint>& points, SmileModel model, const Market& market);

    /// What the curve is, which may be the spline though another model was asked for.
    SmileModel model() const;

    /// The volatility at a strike from minStrike() to maxStrike(), positive and finite; nullopt elsewhere.
    std::optional<double> volatility(double strike) const;

    double minStrike() const;
    double maxStrike() const;

    /// The largest and the root mean square distance of the curve from the points, as volatilities. The mean
    /// is weighted by the inverse squares of the points' volatilityError, that is, by the vega over the
    /// distance of bid and ask or the price step: far strikes, whose volatilities say next to nothing, do not
    /// count in it.
    double maxError() const;
    double rmsError() const;

private:
    struct Curve;
    explicit Smile(std::shared_ptr<const Curve> curve);

    std::shared_ptr<const Curve> m_curve;
};

/// The smile over the given strikes: x strike, y volatility. Strikes outside the smile are left out.
QVector<QPointF> volatilityCurve(const Smile& smile, const QVector<double>& strikes);

/// Which option's value to draw at a strike.
enum class ValueSide { OutOfTheMoney, Call, Put };

/// Black's value at a strike with the smile's volatility there; nullopt outside the smile and for an
/// invalid market.
std::optional<double> theoreticalValue(
    const Smile& smile, const Market& market, ValueSide side, double strike);

/// theoreticalValue() over the given strikes: x strike, y value. Strikes without a value are left out.
QVector<QPointF> theoreticalCurve(
    const Smile& smile, const Market& market, ValueSide side, const QVector<double>& strikes);

}
