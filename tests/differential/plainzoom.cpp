#include "differential/plainzoom.h"

#include "differential/plainnumbers.h"

#include <cmath>

namespace {

double widthOf(const Plain::Bounds& bounds)
{
    return bounds.second - bounds.first;
}

/// Of what the parts below and above the centre are shares of; where there is no part below it counts as all.
struct Shares {
    double ratio = 0.0;
    double divisor = 1.0;
    bool isDegenerate = true;
};

Shares sharesAt(double centre, const Plain::Bounds& bounds)
{
    Shares shares;
    if (Plain::fuzzyEqual(centre + 10.0, bounds.first + 10.0))
        return shares;
    shares.ratio = (bounds.second - centre) / (centre - bounds.first);
    if (Plain::fuzzyEqual(shares.ratio, -1.0))
        return shares;
    shares.divisor = shares.ratio + 1.0;
    shares.isDegenerate = false;
    return shares;
}

std::optional<double> newLowestPrice(const Plain::Wheel& wheel, double centre, double span, bool zoomsOut)
{
    if (zoomsOut && wheel.curves.x() + wheel.curves.width() < wheel.prices.second)
        return wheel.prices.second - span;
    if (zoomsOut && wheel.curves.x() > wheel.prices.first)
        return wheel.prices.first;
    const double offset = span / sharesAt(centre, wheel.prices).divisor;
    if (!std::isfinite(offset))
        return std::nullopt;
    return centre - offset;
}

std::optional<double> newHighestValue(const Plain::Wheel& wheel, double centre, double span, bool zoomsOut)
{
    if (zoomsOut && wheel.curves.y() + wheel.curves.height() < wheel.values.second)
        return wheel.values.second;
    if (zoomsOut && wheel.curves.y() > wheel.values.first)
        return wheel.values.first + span;
    const Shares shares = sharesAt(centre, wheel.values);
    if (shares.isDegenerate)
        return centre;
    const double offset = shares.ratio * span / shares.divisor;
    if (!std::isfinite(offset))
        return std::nullopt;
    return centre + offset;
}

/// The centre of a zoom: a tenth of the way along the axis that the cursor says nothing of.
QPointF centreOf(const Plain::Wheel& wheel)
{
    QPointF centre = wheel.cursor;
    if (wheel.place.values)
        centre.setX(wheel.prices.first + 0.1 * widthOf(wheel.prices));
    else if (wheel.place.prices)
        centre.setY(wheel.values.first + 0.1 * widthOf(wheel.values));
    return centre;
}

/// The spans of prices and values.
std::pair<double, double> newSpans(const Plain::Wheel& wheel, double factor)
{
    const double rangeX = widthOf(wheel.prices);
    const double rangeY = widthOf(wheel.values);
    if (factor < 1.0 || wheel.curves.width() > rangeX) {
        const double newX = rangeX * factor;
        return {newX, rangeY * newX / rangeX};
    }
    const bool canGrow = rangeY < wheel.curves.height();
    return {rangeX, canGrow ? factor * rangeX * rangeY / rangeX : rangeY};
}

}

std::optional<double> Plain::wheelFactor(int angle)
{
    const int notches = angle / 8 / 15;
    if (notches == 0)
        return std::nullopt;
    if (notches == 1)
        return 0.9;
    if (notches == -1)
        return 1.1;
    return notches > 0 ? 0.89 : 1.11;
}

std::optional<Plain::Zoom> Plain::zoomed(const Wheel& wheel)
{
    const std::optional<double> factor = wheelFactor(wheel.angle);
    if ((!wheel.place.isScale() && !wheel.place.canvas) || !factor || wheel.curves.width() <= 0.0
        || wheel.curves.height() < 0.0)
        return std::nullopt;
    const bool zoomsOut = *factor > 1.0;
    const auto [newX, newY] = newSpans(wheel, *factor);
    if (!zoomsOut && (newX < wheel.minStep || newY < 1e-8 || wheel.labelsAreEqual))
        return std::nullopt;
    const QPointF centre = centreOf(wheel);
    const std::optional<double> lowest = newLowestPrice(wheel, centre.x(), newX, zoomsOut);
    const std::optional<double> highest = newHighestValue(wheel, centre.y(), newY, zoomsOut);
    if (!lowest || !highest)
        return std::nullopt;

    const Bounds prices(*lowest, *lowest + newX);
    Zoom zoom;
    const bool oneModifier = wheel.shift != wheel.control;
    const bool alongAnAxis = oneModifier || wheel.place.isScale();
    if ((alongAnAxis && wheel.place.prices) || (oneModifier && wheel.control && wheel.place.canvas)) {
        zoom.prices = prices;
        zoom.valuesFollow = true;
    } else if (alongAnAxis && wheel.place.values) {
        if (!zoomsOut || widthOf(wheel.values) < wheel.curves.height()) {
            zoom.leavesAutoScale = true;
            zoom.values = Bounds(*highest - newY, *highest);
        }
    } else {
        const double tallest = (oneModifier ? 1.0 : *factor) * wheel.curves.height();
        zoom.leavesAutoScale = true;
        zoom.values = Bounds(*highest - (tallest <= newY ? tallest : newY), *highest);
        if (!oneModifier)
            zoom.prices = prices;
    }
    return zoom;
}

std::optional<Plain::Bounds> Plain::draggedAxis(const Bounds& view, const Bounds& data, bool shrinks)
{
    const double step = widthOf(view) * 0.1 * 0.5;
    const bool coversData = view.first <= data.first && view.second >= data.second;
    if (coversData && !shrinks)
        return std::nullopt;
    if (shrinks) {
        if (view.first + step > view.second - step)
            return std::nullopt;
        return Bounds(view.first + step, view.second - step);
    }
    if (view.first <= data.first)
        return Bounds(view.first, view.second + 2.0 * step);
    if (view.second < data.second)
        return Bounds(view.first - step, view.second + step);
    return Bounds(view.first - 2.0 * step, view.second);
}
