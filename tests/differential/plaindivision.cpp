#include "differential/plaindivision.h"

#include "differential/plainnumbers.h"

#include <cmath>

namespace {

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
