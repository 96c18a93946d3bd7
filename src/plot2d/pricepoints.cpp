#include "pricepoints_p.h"

#include "fuzzyequality_p.h"

#include <c_api/common.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// The number of points wanted between the strikes around a view.
constexpr double wantedPoints = 100.0;

constexpr double maxSteps = 100000.0;

bool canProgress(double from, double to, double step)
{
    if (std::isnan(from) || std::isnan(to) || std::isnan(step))
        return false;
    if (from < 0.0 || isFuzzyZero(from) || to < 0.0 || isFuzzyZero(to) || from > to || isFuzzyEqual(from, to)
        || step <= 0.0)
        return false;
    const double width = to - from;
    return !(step > width && !isFuzzyEqual(step, width)) && width / step <= maxSteps;
}

/// Whether the smallest step fits the range that a number of strikes spans.
bool stepFits(int count, double step, double width)
{
    if (step < 0.0 || isFuzzyZero(step))
        return false;
    const bool spansAll = isFuzzyEqual(step, width);
    return count == 2 ? spansAll : step <= width && !spansAll;
}

}

PriceInterval PricePoints::interval(const StrikeRange& strikes, int decimals)
{
    const PriceInterval none;
    if (strikes.count < 2 || decimals < 0)
        return none;

    PriceInterval result;
    result.minPrice = strikes.lowest.toDouble();
    result.maxPrice = strikes.highest.toDouble();
    if (isFuzzyZero(result.minPrice) || isFuzzyZero(result.maxPrice) || result.minPrice > result.maxPrice
        || commonFuzzyCompare(result.minPrice, result.maxPrice)
        || !stepFits(strikes.count, strikes.minStep, result.maxPrice - result.minPrice))
        return none;

    const int mostDecimals = std::numeric_limits<short>::max();
    result.minStep
        = decimal::fromDouble(strikes.minStep, static_cast<short>(std::min(decimals, mostDecimals)))
              .toDouble();
    if (isFuzzyZero(result.minStep))
        return none;
    result.valid = true;
    return result;
}

QList<double> PricePoints::progression(double from, double to, double step)
{
    QList<double> points;
    if (!canProgress(from, to, step))
        return points;

    double x = from;
    points.append(x);
    while (x < to || isFuzzyEqual(x, to)) {
        const double next = x + step;
        if (!(next > x))
            return QList<double>();
        x = next;
        points.append(x);
    }
    points.removeLast();
    return points;
}

std::optional<std::pair<decimal, decimal>> PricePoints::bracket(
    const QVector<decimal>& strikes, const View& view)
{
    decimal lo = decimal::maximum;
    decimal hi = decimal::minimum;
    for (int i = 0; i + 1 < strikes.size(); ++i) {
        const double a = strikes[i].toDouble();
        const double b = strikes[i + 1].toDouble();
        if (isFuzzyZero(a) || isFuzzyZero(b) || strikes[i] < decimal::zero || strikes[i + 1] < decimal::zero)
            continue;
        if (strikes[i] > strikes[i + 1])
            return std::nullopt;
        if (a < view.low && view.low <= b && b <= view.high)
            lo = strikes[i];
        if (view.low <= a && a <= view.high && b > view.high)
            hi = strikes[i + 1];
    }
    if (strikes.isEmpty())
        return std::nullopt;
    if (lo == decimal::maximum)
        lo = strikes.first();
    if (hi == decimal::minimum)
        hi = strikes.last();
    if (lo >= hi)
        return std::nullopt;
    return std::pair(lo, hi);
}

QList<double> PricePoints::densified(const QList<double>& base, double lo, double hi, double minStep)
{
    if (minStep == 0.0)
        return base;
    const double inner = std::trunc((hi - lo) / minStep - 1.0);
    if (!(inner > -1.0 && inner < wantedPoints))
        return base;
    const int parts = static_cast<int>(std::ceil(wantedPoints / (inner + 1.0))) + 1;
    const double step = minStep / parts;

    QList<double> points;
    for (const double point : base) {
        points.append(point);
        if (!(point >= lo || isFuzzyEqual(point, lo)) || !(point < hi) || isFuzzyEqual(point, hi))
            continue;
        double x = point;
        for (int i = 1; i < parts; ++i) {
            x += step;
            points.append(x);
        }
    }
    return points;
}
