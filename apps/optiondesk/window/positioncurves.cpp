#include "window/positioncurves.h"

#include <algorithm>
#include <cmath>

namespace {

// Break-evens farther from the forward than this factor would squeeze all else together.
constexpr double farAway = 3.0;
// Of the width, beside the outermost strikes.
constexpr double margin = 0.1;
constexpr int allSamples = 200;
constexpr int visibleSamples = 400;

void widenTo(double price, double forward, PriceRange* range)
{
    if (!(price >= forward / farAway && price <= forward * farAway))
        return;
    range->low = std::min(range->low, price);
    range->high = std::max(range->high, price);
}

void widenToPosition(const ShownSeries& series, PriceRange* range)
{
    const double forward = series.market.forward;
    const QVector<double> corners = series.position.corners();
    for (const double corner : corners)
        widenTo(corner, forward, range);
    const QVector<Position::BreakEven> all = series.position.breakEvens();
    for (const Position::BreakEven& each : all) {
        widenTo(each.low, forward, range);
        widenTo(each.high, forward, range);
    }
}

PriceRange widened(const PriceRange& range, double part)
{
    const double room = (range.high - range.low) * part;
    return {range.low - room, range.high + room};
}

PriceRange allPrices(const ShownSeries& series)
{
    PriceRange range = visiblePrices(series);
    const QVector<OptionQuote>& quotes = series.data.options.quotes;
    if (!quotes.isEmpty()) {
        range.low = std::min(range.low, quotes.first().strike.toDouble());
        range.high = std::max(range.high, quotes.last().strike.toDouble());
    }
    widenToPosition(series, &range);
    return widened(range, margin);
}

void appendSteps(double from, double to, int count, QVector<double>* prices)
{
    for (int i = 0; i <= count && from < to; ++i)
        prices->append(i < count ? from + (to - from) * i / count : to);
}

CurveSamples samplesOf(
    CurveRole role, const QVector<double>& prices, const std::function<std::optional<double>(double)>& profit)
{
    CurveSamples curve{role, {}, {}};
    for (const double price : prices) {
        if (const std::optional<double> value = profit(price))
            curve.samples.append({price, *value});
    }
    return curve;
}

}

QVector<double> PositionCurves::prices(const ShownSeries& series, const PriceRange& visible)
{
    PriceRange all = allPrices(series);
    // The prices of futures that options are valued on are positive.
    all.low = std::max(all.low, series.market.forward * 1e-6);
    QVector<double> prices = series.position.corners();
    appendSteps(all.low, all.high, allSamples, &prices);
    const PriceRange dense = widened(visible, margin);
    appendSteps(std::max(dense.low, all.low), std::min(dense.high, all.high), visibleSamples, &prices);
    prices.erase(std::remove_if(prices.begin(), prices.end(),
                     [&all](double price) { return price < all.low || price > all.high; }),
        prices.end());
    std::sort(prices.begin(), prices.end());
    prices.erase(std::unique(prices.begin(), prices.end()), prices.end());
    return prices;
}

QVector<CurveSamples> PositionCurves::smooth(const ShownSeries& series, const QVector<double>& prices)
{
    const Position::Profile& position = series.position;
    return {
        samplesOf(CurveRole::ProfitAtExpiry, prices, [&](double price) { return position.atExpiry(price); }),
        samplesOf(CurveRole::ProfitToday, prices, [&](double price) { return position.today(price); })};
}

CurveSamples PositionCurves::breakEvens(const ShownSeries& series)
{
    CurveSamples curve{CurveRole::BreakEven, {}, {}};
    const QVector<Position::BreakEven> all = series.position.breakEvens();
    for (const Position::BreakEven& each : all) {
        curve.points.append({each.low, 0.0, true});
        if (!each.isPoint() && std::isfinite(each.high))
            curve.points.append({each.high, 0.0, true});
    }
    return curve;
}

PriceRange PositionCurves::visiblePrices(const ShownSeries& series)
{
    const PriceRange ofSeries = ::visiblePrices(series);
    PriceRange range = ofSeries;
    widenToPosition(series, &range);
    constexpr double room = 0.05;
    const double width = (range.high - range.low) * room;
    return {range.low < ofSeries.low ? range.low - width : range.low,
        range.high > ofSeries.high ? range.high + width : range.high};
}
