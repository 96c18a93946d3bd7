#include "window/viewfit.h"

#include <algorithm>
#include <cmath>

namespace {

using ViewFit::Ranges;
using ViewFit::Start;

// Of the width, on each side.
constexpr double margin = 0.02;
// Of the height, above and below the curves.
constexpr double verticalMargin = 0.05;
// Volatilities that differ by less, relatively, are one.
constexpr double sameVolatility = 1e-6;

// Those of a notch of the plot's wheel.
constexpr double inFactor = 0.9;
constexpr double outFactor = 1.1;
constexpr double fewestValues = 1e-8;

bool isFinite(const QRectF& data)
{
    return std::isfinite(data.left()) && std::isfinite(data.right()) && std::isfinite(data.top())
        && std::isfinite(data.bottom());
}

bool isFinite(const QwtInterval& range)
{
    return std::isfinite(range.minValue()) && std::isfinite(range.maxValue());
}

bool isUsable(const Start& start)
{
    return isFinite(start.data) && start.data.width() > 0.0 && start.data.height() >= 0.0
        && start.prices.width() > 0.0 && start.values.width() > 0.0 && isFinite(start.prices)
        && isFinite(start.values);
}

double middle(const QwtInterval& range)
{
    return range.minValue() + range.width() / 2.0;
}

QwtInterval below(double upper, double width)
{
    return QwtInterval(upper - width, upper);
}

// The plot's wheel shows no more values above nothing than the data has.
double notMuchMoreThanData(double height, double factor, const QRectF& data)
{
    return std::min(height, factor * data.height());
}

std::optional<Ranges> ifFinite(const Ranges& ranges)
{
    return isFinite(ranges.prices) && isFinite(ranges.values) ? std::optional<Ranges>(ranges) : std::nullopt;
}

bool isSame(const QwtInterval& a, const QwtInterval& b)
{
    constexpr double tolerance = 1e-9;
    return std::abs(a.minValue() - b.minValue()) <= tolerance * b.width()
        && std::abs(a.maxValue() - b.maxValue()) <= tolerance * b.width();
}

}

std::optional<QwtInterval> ViewFit::allPrices(const QRectF& data, double smallestStep)
{
    if (data.isNull() || !isFinite(data))
        return std::nullopt;
    const double room = data.width() > 0.0 ? data.width() * margin : smallestStep;
    const QwtInterval prices(data.left() - room, data.right() + room);
    return prices.width() > 0.0 && isFinite(prices) ? std::optional<QwtInterval>(prices) : std::nullopt;
}

std::pair<double, double> ViewFit::allValues(double low, double high)
{
    if (!(low < high))
        return {low, high};
    const double room = (high - low) * verticalMargin;
    return {low - room, high + room};
}

std::pair<double, double> ViewFit::allVolatilities(double low, double high)
{
    if (!(low <= high))
        return {low, high};
    if (high <= 0.0)
        return {0.0, 1.0};
    if (high - low <= sameVolatility * high)
        return {low / 2.0, high * 1.5};
    const auto [lowest, highest] = allValues(low, high);
    return {std::max(lowest, 0.0), highest};
}

std::optional<Ranges> ViewFit::zoomedIn(const Start& start, double smallestStep)
{
    if (!isUsable(start))
        return std::nullopt;
    const double width = start.prices.width() * inFactor;
    const double height = start.values.width() * inFactor;
    if (width < smallestStep || height < fewestValues)
        return std::nullopt;
    const double lowest = middle(start.prices) - width / 2.0;
    const double highest = middle(start.values) + height / 2.0;
    return ifFinite({QwtInterval(lowest, lowest + width),
        below(highest, notMuchMoreThanData(height, inFactor, start.data))});
}

std::optional<Ranges> ViewFit::zoomedOut(const Start& start)
{
    if (!isUsable(start))
        return std::nullopt;
    const QRectF& data = start.data;
    const bool showsAllPrices = data.width() <= start.prices.width();
    const bool grows = !showsAllPrices || start.values.width() < data.height();
    const double width = start.prices.width() * (showsAllPrices ? 1.0 : outFactor);
    const double height = start.values.width() * (grows ? outFactor : 1.0);

    double lowest = middle(start.prices) - width / 2.0;
    if (data.right() < start.prices.maxValue())
        lowest = start.prices.maxValue() - width;
    else if (data.left() > start.prices.minValue())
        lowest = start.prices.minValue();

    double highest = middle(start.values) + height / 2.0;
    if (data.bottom() < start.values.maxValue())
        highest = start.values.maxValue();
    else if (data.top() > start.values.minValue())
        highest = start.values.minValue() + height;
    const Ranges ranges{
        QwtInterval(lowest, lowest + width), below(highest, notMuchMoreThanData(height, outFactor, data))};
    if (isSame(ranges.prices, start.prices) && isSame(ranges.values, start.values))
        return std::nullopt;
    return ifFinite(ranges);
}
