#include "window/shownseries.h"

#include "window/desktexts.h"
#include "window/smilemodels.h"
#include "window/texts.h"

#include <database/exception.h>
#include <pricing/expirytime.h>
#include <pricing/paritydiscount.h>
#include <pricing/parityforward.h>

#include <QLoggingCategory>

#include <algorithm>
#include <cmath>

namespace {

Q_LOGGING_CATEGORY(pricingLog, "optiondesk.pricing", QtWarningMsg)

constexpr double daysPerYear = 365.0;
constexpr double visibleDeviations = 3.5;
// Of the width, on each side.
constexpr double margin = 0.02;

// What a quotient adds behind a tenth of the last decimal is noise, and would be read off the axis.
std::optional<double> rounded(const std::optional<double>& forward, int decimals)
{
    if (!forward)
        return std::nullopt;
    const double factor = std::pow(10.0, decimals + 1);
    const double result = std::round(*forward * factor) / factor;
    return result > 0.0 && std::isfinite(result) ? result : *forward;
}

// With the discount factor of the expiry, which parity gives whoever states the forward. A stated one moves
// with each tick of the future, ahead of the options: it would bend the line, so it is not asked.
double findForward(const std::optional<double>& given, ShownSeries* series)
{
    const OptionSeries& options = series->data.options;
    const auto take = [series](const std::optional<double>& forward, ForwardSource source) {
        if (!forward)
            return false;
        series->market.forward = *forward;
        series->forwardSource = source;
        return true;
    };
    const double discount = Pricing::parityDiscount(options, series->data.priceStep, given);
    if (!take(given, ForwardSource::Given) && !take(options.forward, ForwardSource::Stated)
        && !take(
            rounded(Pricing::parityForward(options, discount), series->data.decimals), ForwardSource::Parity))
        throw Exception(
            DeskTexts::tr("%1: no forward is stated, and no strike has the prices of a call and a "
                          "put to take it from; --forward gives one")
                .arg(Texts::seriesName(series->data)));
    return discount;
}

void findTime(double discount, ShownSeries* series)
{
    const SeriesData& data = series->data;
    if (const auto time = Pricing::timeToExpiry(data.asOf, data.options.expiry)) {
        series->market.time = *time;
        series->timeSource = TimeSource::Dates;
    } else if (const auto inferred
        = Pricing::inferTime(data.options, series->market.forward, data.priceStep, discount)) {
        series->market.time = *inferred;
        series->timeSource = TimeSource::Volatilities;
    } else {
        series->market.time = assumedDays / daysPerYear;
        series->timeSource = TimeSource::Assumed;
    }
}

PriceRange strikesWithForward(const ShownSeries& series)
{
    const QVector<OptionQuote>& quotes = series.data.options.quotes;
    const double forward = series.market.forward;
    if (quotes.isEmpty())
        return {forward, forward};
    return {std::min(quotes.first().strike.toDouble(), forward),
        std::max(quotes.last().strike.toDouble(), forward)};
}

QVector<double> pricedStrikes(const ShownSeries& series)
{
    QVector<double> strikes;
    for (const OptionQuote& quote : series.data.options.quotes) {
        const double strike = quote.strike.toDouble();
        if ((quote.price() || quote.bid || quote.ask) && (strikes.isEmpty() || strikes.last() != strike))
            strikes.append(strike);
    }
    return strikes;
}

// The outermost of ascending strikes to the side of the forward that the iterators begin at.
template <typename Iterator> double outermost(Iterator first, Iterator last, double forward, double deviation)
{
    constexpr double farDeviations = 2.0;
    constexpr double loneDeviations = 0.5;
    const auto distance = [deviation](double a, double b) { return std::abs(std::log(a / b)) / deviation; };
    const bool isLone = std::distance(first, last) > 1 && distance(*first, forward) > farDeviations
        && distance(*first, *std::next(first)) > loneDeviations;
    return isLone ? *std::next(first) : *first;
}

PriceRange strikesThatMatter(const ShownSeries& series)
{
    const QVector<double> strikes = pricedStrikes(series);
    const double forward = series.market.forward;
    const double deviation = logDeviation(series);
    if (strikes.isEmpty() || !(strikes.first() > 0.0) || !(forward > 0.0) || !(deviation > 0.0))
        return strikesWithForward(series);
    return {std::min(forward, outermost(strikes.begin(), strikes.end(), forward, deviation)),
        std::max(forward, outermost(strikes.rbegin(), strikes.rend(), forward, deviation))};
}

bool holdsPoints(const PriceRange& range, const ShownSeries& series)
{
    constexpr int fewest = 3;
    const auto& points = series.analysis.points;
    return std::count_if(points.begin(), points.end(), [&range](const Pricing::VolatilityPoint& point) {
        return point.strike >= range.low && point.strike <= range.high;
    }) >= fewest;
}

}

ShownSeries valuedSeries(
    const SeriesData& data, const std::optional<double>& givenForward, Pricing::SmileModel smileModel)
{
    ShownSeries series;
    series.data = data;
    const double discount = findForward(givenForward, &series);
    findTime(discount, &series);
    series.market.rate = discount == 1.0 ? 0.0 : -std::log(discount) / series.market.time;
    series.analysis = Pricing::analyseSeries(data.options, series.market, data.priceStep);
    series.smileModel = smileModel;
    series.smile = Pricing::Smile::fit(series.analysis.points, smileModel, series.market);
    qCDebug(pricingLog) << data.baseCode << data.options.expiry << "forward" << series.market.forward
                        << "discount" << discount << "years" << series.market.time << "points"
                        << series.analysis.points.size() << "smile"
                        << SmileModels::key(series.smile ? series.smile->model() : smileModel) << "error"
                        << (series.smile ? series.smile->rmsError() : -1.0);
    return series;
}

double volatilityAtForward(const ShownSeries& series)
{
    if (!series.smile)
        return 0.0;
    const double strike
        = std::clamp(series.market.forward, series.smile->minStrike(), series.smile->maxStrike());
    return series.smile->volatility(strike).value_or(0.0);
}

double logDeviation(const ShownSeries& series)
{
    return volatilityAtForward(series) * std::sqrt(series.market.time);
}

PriceRange visiblePrices(const ShownSeries& series)
{
    const PriceRange strikes = strikesWithForward(series);
    PriceRange range = strikes;
    if (series.smile) {
        const double factor = std::exp(visibleDeviations * logDeviation(series));
        const PriceRange mattering = strikesThatMatter(series);
        const PriceRange near{std::max(mattering.low, series.market.forward / factor),
            std::min(mattering.high, series.market.forward * factor)};
        if (holdsPoints(near, series))
            range = near;
    }
    double width = range.high - range.low;
    if (width <= 0.0)
        width = range.high;
    return {range.low - margin * width, range.high + margin * width};
}
