#include "window/curveset.h"

#include <algorithm>
#include <cmath>

namespace {

using Pricing::VolatilityPoint;

constexpr int visibleSamples = 400;
constexpr int allSamples = 200;

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
    for (const VolatilityPoint& point : series.analysis.points)
        points.append({point.strike, point.*value, point.traded || !volumesKnown});
    return points;
}

// One sample for each option that has an implied volatility; the function gives its value, if any.
template <typename Function> QVector<QPointF> quoteSamples(const ShownSeries& series, Function value)
{
    QVector<QPointF> samples;
    auto point = series.analysis.points.cbegin();
    const auto end = series.analysis.points.cend();
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

void appendSteps(double from, double to, int count, QVector<double>* strikes)
{
    for (int i = 0; i <= count && from < to; ++i)
        strikes->append(i < count ? from + (to - from) * i / count : to);
}

QVector<CurveSamples> volatilityCurves(const ShownSeries& series)
{
    QVector<CurveSamples> curves;
    if (series.smile)
        curves.append(
            {CurveRole::Smile, Pricing::volatilityCurve(*series.smile, CurveSet::smileStrikes(series)), {}});
    curves.append({CurveRole::StatedVolatility, statedVolatilities(series), {}});
    curves.append({CurveRole::BidVolatility, quotedVolatilities(series, &OptionQuote::bid), {}});
    curves.append({CurveRole::AskVolatility, quotedVolatilities(series, &OptionQuote::ask), {}});
    curves.append({CurveRole::ImpliedVolatility, {}, markedPoints(series, &VolatilityPoint::volatility)});
    return curves;
}

QVector<CurveSamples> valueCurves(const ShownSeries& series)
{
    QVector<CurveSamples> curves;
    if (series.smile) {
        const QVector<double> strikes = CurveSet::smileStrikes(series);
        const auto theoretical = [&](Pricing::ValueSide side) {
            return Pricing::theoreticalCurve(*series.smile, series.market, side, strikes);
        };
        curves.append({CurveRole::CallValue, theoretical(Pricing::ValueSide::Call), {}});
        curves.append({CurveRole::PutValue, theoretical(Pricing::ValueSide::Put), {}});
    }
    curves.append({CurveRole::MarketPrice, {}, markedPoints(series, &VolatilityPoint::price)});
    return curves;
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
    std::sort(strikes.begin(), strikes.end());
    strikes.erase(std::unique(strikes.begin(), strikes.end()), strikes.end());
    return strikes;
}

QVector<CurveSamples> CurveSet::curves(const ShownSeries& series, DeskView view)
{
    QVector<CurveSamples> curves
        = view == DeskView::Volatility ? volatilityCurves(series) : valueCurves(series);
    // The plot stretches the line over the vertical scale.
    const double forward = series.market.forward;
    curves.append({CurveRole::Forward, {{forward, 0.0}, {forward, 1.0}}, {}});
    curves.erase(std::remove_if(
                     curves.begin(), curves.end(), [](const CurveSamples& curve) { return curve.isEmpty(); }),
        curves.end());
    return curves;
}
