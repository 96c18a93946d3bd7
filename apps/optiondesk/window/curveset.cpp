#include "window/curveset.h"

#include "window/positioncurves.h"
#include "window/shownquotes.h"

#include <algorithm>
#include <cmath>

namespace {

using Pricing::VolatilityPoint;

constexpr int visibleSamples = 400;
constexpr int allSamples = 200;
// On the visible part of a plot, however narrow.
constexpr int fewestVisible = 100;

// Whether the source says anything of volumes; if not, every strike counts as traded.
bool knowsVolumes(const ShownSeries& series)
{
    const QVector<OptionQuote>& quotes = series.data.options.quotes;
    return std::any_of(
        quotes.begin(), quotes.end(), [](const OptionQuote& quote) { return quote.volume.has_value(); });
}

QVector<PriceBased2dPlotPoint> markedPoints(const ShownSeries& series, double VolatilityPoint::*value)
{
    const bool volumesKnown = knowsVolumes(series);
    QVector<PriceBased2dPlotPoint> points;
    const QVector<VolatilityPoint> shown = ShownQuotes(series).points();
    for (const VolatilityPoint& point : shown)
        points.append({point.strike, point.*value, point.traded || !volumesKnown});
    return points;
}

// One sample for each strike that shows an implied volatility; the function gives its value, if any.
template <typename Function> QVector<QPointF> quoteSamples(const ShownSeries& series, Function value)
{
    QVector<QPointF> samples;
    const QVector<VolatilityPoint> shown = ShownQuotes(series).onePerStrike();
    auto point = shown.cbegin();
    const auto end = shown.cend();
    for (const OptionQuote& quote : series.data.options.quotes) {
        const double strike = quote.strike.toDouble();
        while (point != end && point->strike < strike)
            ++point;
        if (point == end || point->strike != strike || point->type != quote.type)
            continue;
        const std::optional<double> y = value(quote, strike);
        if (y && std::isfinite(*y))
            samples.append({strike, *y});
    }
    return samples;
}

QVector<QPointF> statedVolatilities(const ShownSeries& series)
{
    return quoteSamples(series, [](const OptionQuote& quote, double) -> std::optional<double> {
        return quote.volatility && *quote.volatility > 0.0 ? quote.volatility : std::nullopt;
    });
}

QVector<QPointF> quotedVolatilities(const ShownSeries& series, std::optional<decimal> OptionQuote::*price)
{
    return quoteSamples(series, [&](const OptionQuote& quote, double strike) -> std::optional<double> {
        if (!(quote.*price))
            return std::nullopt;
        return Pricing::impliedVolatility(quote.type, strike, series.market, (quote.*price)->toDouble())
            .volatility;
    });
}

// Where a side is missing, or both are crossed, there is no band.
QVector<QPointF> band(const QVector<QPointF>& bids, const QVector<QPointF>& asks)
{
    QVector<QPointF> pairs;
    auto ask = asks.cbegin();
    for (const QPointF& bid : bids) {
        while (ask != asks.cend() && ask->x() < bid.x())
            ++ask;
        if (ask != asks.cend() && ask->x() == bid.x() && bid.y() <= ask->y())
            pairs << bid << *ask;
    }
    return pairs;
}

void appendSteps(double from, double to, int count, QVector<double>* strikes)
{
    for (int i = 0; i <= count && from < to; ++i)
        strikes->append(i < count ? from + (to - from) * i / count : to);
}

QVector<CurveSamples> smoothVolatilities(const ShownSeries& series, const QVector<double>& strikes)
{
    return {{CurveRole::Smile, Pricing::volatilityCurve(*series.smile, strikes), {}}};
}

QVector<CurveSamples> smoothValues(const ShownSeries& series, const QVector<double>& strikes)
{
    const auto theoretical = [&](Pricing::ValueSide side) {
        return Pricing::theoreticalCurve(*series.smile, series.market, side, strikes);
    };
    return {{CurveRole::CallValue, theoretical(Pricing::ValueSide::Call), {}},
        {CurveRole::PutValue, theoretical(Pricing::ValueSide::Put), {}}};
}

QVector<CurveSamples> quotedCurves(const ShownSeries& series, DeskView view)
{
    if (view == DeskView::Position)
        return {PositionCurves::breakEvens(series)};
    if (view == DeskView::Value)
        return {{CurveRole::MarketPrice, {}, markedPoints(series, &VolatilityPoint::price)}};
    const QVector<QPointF> bids = quotedVolatilities(series, &OptionQuote::bid);
    const QVector<QPointF> asks = quotedVolatilities(series, &OptionQuote::ask);
    return {{CurveRole::StatedVolatility, statedVolatilities(series), {}},
        {CurveRole::BidVolatility, bids, {}}, {CurveRole::AskVolatility, asks, {}},
        {CurveRole::BidAskBand, band(bids, asks), {}},
        {CurveRole::ImpliedVolatility, {}, markedPoints(series, &VolatilityPoint::volatility)}};
}

void sortUnique(QVector<double>* strikes)
{
    std::sort(strikes->begin(), strikes->end());
    strikes->erase(std::unique(strikes->begin(), strikes->end()), strikes->end());
}

// A little more than is visible, so that the lines across its ends are as smooth as those inside.
PriceRange widened(const PriceRange& range)
{
    constexpr double part = 0.1;
    const double margin = (range.high - range.low) * part;
    return {range.low - margin, range.high + margin};
}

bool contains(const PriceRange& range, double price)
{
    return price >= range.low && price <= range.high;
}

}

QVector<double> CurveSet::smileStrikes(const ShownSeries& series)
{
    if (!series.smile)
        return {};
    const double low = series.smile->minStrike();
    const double high = series.smile->maxStrike();
    const PriceRange visible = visiblePrices(series);
    QVector<double> strikes{low, high};
    appendSteps(low, high, allSamples, &strikes);
    appendSteps(std::max(low, visible.low), std::min(high, visible.high), visibleSamples, &strikes);
    sortUnique(&strikes);
    return strikes;
}

QVector<double> CurveSet::smileStrikes(const ShownSeries& series, const PlotPoints& plot)
{
    if (!series.smile || plot.points.isEmpty())
        return smileStrikes(series);
    const PriceRange smile{series.smile->minStrike(), series.smile->maxStrike()};
    const PriceRange dense = widened(plot.visible);
    QVector<double> strikes{smile.low, smile.high};
    double last = smile.low;
    int visible = 0;
    for (const double point : plot.points) {
        if (!contains(smile, point) || (!contains(dense, point) && point - last < plot.minStep))
            continue;
        strikes.append(point);
        last = point;
        visible += contains(plot.visible, point) ? 1 : 0;
    }
    if (visible < fewestVisible)
        appendSteps(std::max(smile.low, dense.low), std::min(smile.high, dense.high), fewestVisible * 5 / 4,
            &strikes);
    sortUnique(&strikes);
    return strikes;
}

QVector<CurveSamples> CurveSet::smoothCurves(
    const ShownSeries& series, DeskView view, const QVector<double>& strikes)
{
    if (view == DeskView::Position)
        return PositionCurves::smooth(series, strikes);
    if (!series.smile)
        return {};
    return view == DeskView::Volatility ? smoothVolatilities(series, strikes) : smoothValues(series, strikes);
}

QVector<CurveSamples> CurveSet::curves(
    const ShownSeries& series, DeskView view, const QVector<double>& strikes)
{
    QVector<CurveSamples> curves = smoothCurves(series, view, strikes) + quotedCurves(series, view);
    // The plot stretches the line over the vertical scale.
    const double forward = series.market.forward;
    curves.append({CurveRole::Forward, {{forward, 0.0}, {forward, 1.0}}, {}});
    curves.erase(std::remove_if(
                     curves.begin(), curves.end(), [](const CurveSamples& curve) { return curve.isEmpty(); }),
        curves.end());
    return curves;
}

QVector<CurveSamples> CurveSet::curves(const ShownSeries& series, DeskView view)
{
    return curves(series, view, smileStrikes(series));
}
