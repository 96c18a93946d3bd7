#include "differential/plainpoints.h"

#include "differential/plainnumbers.h"

#include <c_api/common.h>

#include <cmath>

PriceInterval Plain::strikeInterval(const Strikes& strikes, int decimals)
{
    const PriceInterval reset;
    if (strikes.all.size() < 2 || decimals < 0)
        return reset;
    PriceInterval result;
    result.minPrice = strikes.all.first().toDouble();
    result.maxPrice = strikes.all.last().toDouble();
    if (isNothing(result.minPrice) || isNothing(result.maxPrice) || result.minPrice > result.maxPrice
        || commonFuzzyCompare(result.minPrice, result.maxPrice))
        return reset;
    const double width = result.maxPrice - result.minPrice;
    const double step = strikes.smallestDistance;
    if (step < 0.0 || isNothing(step))
        return reset;
    // Two strikes are one step apart, more are further apart than one.
    if (strikes.all.size() == 2 && !fuzzyEqual(step, width))
        return reset;
    if (strikes.all.size() > 2 && (step > width || fuzzyEqual(step, width)))
        return reset;
    result.minStep = decimal::fromDouble(step, static_cast<short>(decimals)).toDouble();
    if (isNothing(result.minStep))
        return reset;
    result.valid = true;
    return result;
}

QList<double> Plain::steps(double from, double to, double step)
{
    if (from < 0.0 || isNothing(from) || to < 0.0 || isNothing(to) || from > to || fuzzyEqual(from, to))
        return {};
    const double width = to - from;
    if (step <= 0.0 || (step > width && !fuzzyEqual(step, width)) || width / step > 100000.0)
        return {};
    if (!std::isfinite(from) || !std::isfinite(to) || !std::isfinite(step))
        return {};
    QList<double> all{from};
    double price = from;
    while (price < to || fuzzyEqual(price, to)) {
        // A step below the distance of doubles would never get there.
        if (price + step == price)
            return {};
        price = price + step;
        all << price;
    }
    all.removeLast();
    return all;
}

Plain::Neighbours Plain::neighbours(const QList<decimal>& strikes, double viewLow, double viewHigh)
{
    bool hasLeft = false;
    bool hasRight = false;
    Neighbours found;
    for (int i = 0; i + 1 < strikes.size(); ++i) {
        const double a = strikes[i].toDouble();
        const double b = strikes[i + 1].toDouble();
        if (isNothing(a) || isNothing(b) || strikes[i] < decimal::zero || strikes[i + 1] < decimal::zero)
            continue;
        if (strikes[i] > strikes[i + 1])
            return {};
        const bool isVisibleA = viewLow <= a && a <= viewHigh;
        const bool isVisibleB = viewLow <= b && b <= viewHigh;
        if (a < viewLow && isVisibleB) {
            found.left = strikes[i];
            hasLeft = true;
        }
        if (isVisibleA && b > viewHigh) {
            found.right = strikes[i + 1];
            hasRight = true;
        }
    }
    if (!hasLeft)
        found.left = strikes.first();
    if (!hasRight)
        found.right = strikes.last();
    found.known = found.left < found.right;
    return found;
}

QList<double> Plain::cut(const QList<double>& points, double left, double right, double minStep)
{
    const double inner = std::trunc((right - left) / minStep - 1.0);
    if (inner > 99.0)
        return points;
    const int parts = static_cast<int>(std::ceil(100.0 / (inner + 1.0)));
    const double part = minStep / (parts + 1);
    QList<double> result;
    for (const double point : points) {
        result << point;
        const bool isFromLeft = point >= left || fuzzyEqual(point, left);
        const bool isBeforeRight = point < right && !fuzzyEqual(point, right);
        if (!isFromLeft || !isBeforeRight)
            continue;
        double price = point;
        for (int i = 0; i < parts; ++i) {
            price = price + part;
            result << price;
        }
    }
    return result;
}

QList<double> Plain::PlotPoints::answer() const
{
    if (viewLow > viewHigh || commonFuzzyCompare(viewLow, viewHigh) || strikes.size() < 2 || !interval.valid)
        return {};
    const double first = strikes.first().toDouble();
    const double last = strikes.last().toDouble();
    if (!(strikes.first() < strikes.last()))
        return {};
    if (!force && (last < viewLow || first > viewHigh))
        return {};
    const Neighbours around = neighbours(strikes, viewLow, viewHigh);
    if (!around.known || priceStep < 0.0 || isNothing(priceStep))
        return {};
    const double visible = viewHigh - viewLow;
    if (visible < 100.0 * priceStep || commonFuzzyCompare(visible, 100.0 * priceStep))
        return steps(first, last, priceStep);
    return cut(steps(first, last, interval.minStep), around.left.toDouble(), around.right.toDouble(),
        interval.minStep);
}
