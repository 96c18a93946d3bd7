#pragma once

#include <chain/optionchain.h>

#include <QDate>

#include <optional>

namespace Pricing {

/// Days from one date to the other over 365. nullopt where a date is invalid or no day is left.
std::optional<double> timeToExpiry(const QDate& asOf, const QDate& expiry);

/// The years to expiry with which the stated volatilities of the series explain its prices at a discount
/// factor: Black's formula is solved for the total standard deviation, T = (stdDev / volatility)^2, and the
/// median taken over the out-of-the-money options with a stated volatility and a price of five price steps or
/// more (below that the rounding of the price drowns the result).
/// nullopt where no option qualifies, or forward, step or discount factor is not positive and finite.
std::optional<double> inferTime(
    const OptionSeries& series, double forward, const decimal& priceStep, double discount = 1.0);

}
