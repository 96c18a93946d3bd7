#include "scaledivision_p.h"

#include "halfuprounding_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// The number of steps into which Qwt's engines divide at the most.
constexpr double maxSteps = 10000.0;

bool isTick(double tick, double price)
{
    return std::abs(tick - price) * 1e12 <= std::min(std::abs(tick), std::abs(price));
}

/// The same ticks moved so that one of them, the pivot, comes to lie on the price.
QList<double> moved(const QList<double>& ticks, double pivot, double price, double x1, double x2)
{
    const double shift = pivot - price;
    QList<double> result;
    for (const double tick : ticks) {
        // The difference of a difference is not always exact.
        const double value = tick == pivot ? price : tick - shift;
        if (value > x1 && value < x2)
            result.append(value);
    }
    return result;
}

}

bool ScaleDivision::isDivisible(const Request& request)
{
    const double width = std::abs(request.upper - request.lower);
    if (!std::isfinite(request.lower) || !std::isfinite(request.upper) || !std::isfinite(width)
        || !std::isfinite(request.step))
        return false;
    if (request.step != 0.0)
        return width / std::abs(request.step) <= maxSteps;

    // Rounding up to 1, 2, 5 or 10 of a power of ten makes a step of less than 2.5 parts.
    const double part = width / std::max(request.maxMajorSteps, 1);
    const double minorPart = part / std::max(request.maxMinorSteps, 1);
    return part < std::numeric_limits<double>::max() / 2.5
        && (width == 0.0 || minorPart > std::numeric_limits<double>::min());
}

double ScaleDivision::anchorPrice(double factor, int strikePrecision)
{
    const auto whole = HalfUpRounding::toInteger<qint32>(factor);
    if (!whole)
        return std::numeric_limits<double>::quiet_NaN();
    const double unit = 1.0 / std::pow(10.0, strikePrecision);
    return unit > std::abs(factor - *whole) ? *whole : factor;
}

QwtScaleDiv ScaleDivision::anchored(const QwtScaleDiv& division, double price, double x1, double x2)
{
    if (!(x1 <= price && price <= x2))
        return division;

    const QList<double> majorTicks = division.ticks(QwtScaleDiv::MajorTick);
    if (majorTicks.isEmpty() || std::any_of(majorTicks.cbegin(), majorTicks.cend(), [price](double tick) {
            return isTick(tick, price);
        }))
        return division;

    const double pivot = *std::min_element(majorTicks.cbegin(), majorTicks.cend(),
        [price](double a, double b) { return std::abs(a - price) < std::abs(b - price); });
    QwtScaleDiv result = division;
    for (const int type : {QwtScaleDiv::MajorTick, QwtScaleDiv::MediumTick, QwtScaleDiv::MinorTick})
        result.setTicks(type, moved(division.ticks(type), pivot, price, x1, x2));
    return result;
}
