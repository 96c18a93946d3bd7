#include "seriesanalysis.h"

#include <algorithm>
#include <cmath>

namespace Pricing {

namespace {

// Limits of the volatility's error in units of the volatility.
constexpr double smallestRelativeError = 1e-6;
constexpr double largestRelativeError = 1.0;

double volatilityError(double uncertainty, double vega, double volatility)
{
    // The standard deviation of a uniform distribution is its width over sqrt(12). Where the vega vanishes,
    // the quotient is infinite or, with exact prices, not a number.
    const double error = uncertainty > 0.0 ? uncertainty / std::sqrt(12.0) / vega : 0.0;
    return std::clamp(error, smallestRelativeError * volatility, largestRelativeError * volatility);
}

}

double priceUncertainty(const OptionQuote& quote, const decimal& priceStep)
{
    const double step = std::max(priceStep.toDouble(), 0.0);
    const bool isMiddle = quote.bid && quote.ask && *quote.bid > decimal::zero && *quote.ask >= *quote.bid;
    return isMiddle ? std::max(step, (*quote.ask - *quote.bid).toDouble()) : step;
}

ValuedQuote valueQuote(const OptionQuote& quote, const Market& market, const decimal& priceStep)
{
    const double strike = quote.strike.toDouble();
    const std::optional<double> price = quote.price();
    const ImpliedVolatility implied = impliedVolatility(quote.type, strike, market, price);
    if (!implied.volatility)
        return {std::nullopt, implied.refusal};
    const double error = volatilityError(priceUncertainty(quote, priceStep),
        blackVega(strike, market, *implied.volatility).value_or(0.0), *implied.volatility);
    const VolatilityPoint point{
        strike, quote.type, *implied.volatility, *price, error, quote.volume.value_or(0) > 0};
    return {point, Refusal::NoPrice};
}

SeriesAnalysis analyseSeries(const OptionSeries& series, const Market& market, const decimal& priceStep)
{
    SeriesAnalysis result;
    if (!market.isValid()) {
        if (!series.quotes.isEmpty())
            result.leftOut[Refusal::InvalidInput] = series.quotes.size();
        return result;
    }
    for (const OptionQuote& quote : series.quotes) {
        const double strike = quote.strike.toDouble();
        if (quote.type != outOfTheMoneyType(strike, market.forward)) {
            ++result.inTheMoney;
            continue;
        }
        const ValuedQuote valued = valueQuote(quote, market, priceStep);
        if (valued.point)
            result.points.append(*valued.point);
        else
            ++result.leftOut[valued.refusal];
    }
    return result;
}

}
