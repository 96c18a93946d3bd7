#include "scaledivision_p.h"

#include "halfuprounding_p.h"

#include <qwt_scale_engine.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Qwt counts steps in an int, and rounds a range to whole steps before it does.
constexpr double mostSteps = 2e9;
/// Qwt makes no more major ticks than these, however many steps there are.
constexpr double mostMajorTicks = 10000.0;
/// Ten times what a plot asks for at the most, with its 100 minor steps.
constexpr double mostTicks = 1e7;
/// Of a narrower range a pixel's place overflows.
constexpr double smallestWidth = 1e-300;

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
    // Qwt measures the range in this type as well, and warns where only that shows it to be beyond the
    // doubles.
    const long double wholeWidth = std::abs(static_cast<long double>(request.upper) - request.lower);
    if (!(wholeWidth <= std::numeric_limits<double>::max()) || !std::isfinite(request.step))
        return false;
    const double width = std::abs(request.upper - request.lower);
    if (width == 0.0)
        return true;

    const double step = request.step != 0.0
        ? std::abs(request.step)
        : QwtScaleArithmetic::divideInterval(width, std::max(request.maxMajorSteps, 1), request.base);
    if (width < smallestWidth || !std::isfinite(step) || !(width / step <= mostSteps))
        return false;
    // The ends of the range, brought to whole steps, add up to three ticks.
    const double majorTicks = std::min(width / step + 3.0, mostMajorTicks);
    return majorTicks * request.maxMinorSteps <= mostTicks;
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
