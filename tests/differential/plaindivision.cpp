#include "differential/plaindivision.h"

#include "differential/plainnumbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// A number that is known to lie between two, and what is allowed of it: all up to the one limit, and nothing
/// beyond the other. What lies between the limits may be either.
struct Limited {
    long double least;
    long double most;
    long double allowed;
    long double refused;
};

/// The same of a number that is known, and of a limit but for roundings.
Limited limited(long double number, long double limit)
{
    return {number, number, limit * 0.99999L, limit * 1.00001L};
}

/// What the steps of a range, by number, come to. Qwt makes ten thousand major ticks at the most, up to one
/// less or three more than there are steps.
Limited minorTicks(long double leastSteps, long double mostSteps, int minorSteps)
{
    const long double each = std::max(minorSteps, 0);
    const long double least = std::min(leastSteps - 1.0L, 10000.0L);
    return {
        std::max(least, 0.0L) * each, std::min(mostSteps + 3.0L, 10000.0L) * each, 0.99999e7L, 1.00001e7L};
}

/// The nearest tick lands on the price itself, whatever the subtractions round to.
QList<double> movedInside(const QList<double>& ticks, double nearest, double price, double x1, double x2)
{
    QList<double> moved;
    for (const double tick : ticks) {
        const double place = tick == nearest ? price : tick - (nearest - price);
        if (place > x1 && place < x2)
            moved << place;
    }
    return moved;
}

}

std::optional<bool> Plain::canBeDivided(const ScaleRequest& request)
{
    if (!std::isfinite(request.lower) || !std::isfinite(request.upper) || !std::isfinite(request.step))
        return false;
    if (request.lower == request.upper)
        return true;
    const long double width = std::fabs(static_cast<long double>(request.upper) - request.lower);
    QList<Limited> numbers{limited(width, std::numeric_limits<double>::max())};
    // The pixels of a unit of the values overflow on a wide screen sooner than on a narrow one.
    numbers << Limited{1.0L / width, 1.0L / width, 1e299L, 1e303L};
    long double most = std::max(request.majorSteps, 1);
    // Qwt takes the next of the steps 1, 2 and 5 and of their tenfolds, which is up to 2.5 times as wide.
    long double least = most / 2.5L;
    if (request.step == 0.0)
        numbers << limited(width / most, 1e308L);
    else
        least = most = width / std::fabs(static_cast<long double>(request.step));
    // Not all of what an int counts: Qwt brings the range to whole steps first.
    numbers << Limited{least, most, 1.99e9L, 2147483648.0L} << minorTicks(least, most, request.minorSteps);

    const auto isRefused = [](const Limited& number) { return number.least > number.refused; };
    const auto isAllowed = [](const Limited& number) { return number.most <= number.allowed; };
    if (std::any_of(numbers.cbegin(), numbers.cend(), isRefused))
        return false;
    return std::all_of(numbers.cbegin(), numbers.cend(), isAllowed) ? std::make_optional(true) : std::nullopt;
}

double Plain::anchor(double factor, int strikeDecimals)
{
    const double whole = roundedHalfUp(factor);
    const double unit = 1.0 / std::pow(10.0, strikeDecimals);
    return unit > std::fabs(factor - whole) ? whole : factor;
}

Plain::Ticks Plain::movedOnto(const Ticks& ticks, bool isEmpty, double price, double x1, double x2)
{
    if (isEmpty || x1 > price || price > x2 || ticks.major.isEmpty())
        return ticks;
    double nearest = ticks.major[0];
    for (const double tick : ticks.major) {
        if (fuzzyEqual(tick, price))
            return ticks;
        if (std::fabs(tick - price) < std::fabs(nearest - price))
            nearest = tick;
    }
    return {movedInside(ticks.major, nearest, price, x1, x2),
        movedInside(ticks.medium, nearest, price, x1, x2), movedInside(ticks.minor, nearest, price, x1, x2)};
}
