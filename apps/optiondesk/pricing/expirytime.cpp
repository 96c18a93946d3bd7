#include "expirytime.h"

#include "black.h"
#include "median.h"

#include <cmath>
#include <vector>

namespace Pricing {

namespace {

constexpr double daysPerYear = 365.0;
constexpr double fewestPriceSteps = 5.0;

// The time that one option implies, valued with a market of one year.
std::optional<double> quoteTime(const OptionQuote& quote, const Market& year, double lowestPrice)
{
    const double strike = quote.strike.toDouble();
    const std::optional<double> price = quote.price();
    const double stated = quote.volatility.value_or(0.0);
    if (!price || *price < lowestPrice || !std::isfinite(stated) || stated <= 0.0
        || quote.type != outOfTheMoneyType(strike, year.forward))
        return std::nullopt;
    // Over one year the volatility is the total standard deviation.
    const ImpliedVolatility stdDev = impliedVolatility(quote.type, strike, year, price);
    if (!stdDev.volatility)
        return std::nullopt;
    const double rootTime = *stdDev.volatility / stated;
    const double time = rootTime * rootTime;
    return std::isfinite(time) && time > 0.0 ? std::optional<double>(time) : std::nullopt;
}

}

std::optional<double> timeToExpiry(const QDate& asOf, const QDate& expiry)
{
    if (!asOf.isValid() || !expiry.isValid() || expiry <= asOf)
        return std::nullopt;
    return static_cast<double>(asOf.daysTo(expiry)) / daysPerYear;
}

std::optional<double> inferTime(
    const OptionSeries& series, double forward, const decimal& priceStep, double discount)
{
    const Market year{forward, 1.0, -std::log(discount)};
    if (!year.isValid() || priceStep <= decimal::zero)
        return std::nullopt;
    // A shade lower, so that a price of exactly five steps is not lost to the product's rounding.
    const double lowestPrice = fewestPriceSteps * priceStep.toDouble() * (1.0 - 1e-9);
    std::vector<double> times;
    for (const OptionQuote& quote : series.quotes) {
        if (const std::optional<double> time = quoteTime(quote, year, lowestPrice))
            times.push_back(*time);
    }
    return median(times);
}

}
