#pragma once

#include <chain/optionchain.h>

#include <optional>

namespace Pricing {

/// What a series of options is valued with.
struct Market {
    /// The forward's or future's price; positive.
    double forward = 0.0;
    /// Years to expiry, actual/365; positive.
    double time = 0.0;
    /// Continuously compounded rate that discounts the option's price; 0 for options whose premium is
    /// margined like a future.
    double rate = 0.0;

    /// Whether every value is finite and in its range, and the discount factor neither vanishes nor
    /// overflows.
    bool isValid() const;
    /// exp(-rate * time).
    double discount() const;
};

/// Why a price has no implied volatility.
enum class Refusal {
    /// A strike, forward, time or rate out of its range, or a price that is negative or not finite.
    InvalidInput,
    NoPrice,
    ZeroPrice,
    /// At or below the discounted intrinsic value: any volatility gives more.
    BelowIntrinsic,
    /// At or above what an infinite volatility gives: the discounted forward (call) or strike (put).
    AboveBound,
    NoConvergence,
};

/// A volatility, or the reason why there is none.
struct ImpliedVolatility {
    /// Per year, as a fraction (0.30 is 30 %); positive and finite where present.
    std::optional<double> volatility;
    /// Meaningful only where there is no volatility.
    Refusal refusal = Refusal::NoPrice;
};

/// Puts below the forward, calls from it upwards: the type of the option at this strike that has no
/// intrinsic value.
OptionType outOfTheMoneyType(double strike, double forward);

/// The value of a European option on a forward (F. Black, "The pricing of commodity contracts", 1976).
/// Never negative and never below intrinsic; put and call of one strike obey the parity exactly up to
/// rounding. nullopt where the market is invalid, the strike not positive and finite, or the volatility
/// negative or not finite; a volatility of 0 gives the intrinsic value. Exact to 1e-14 of the larger of
/// strike and forward.
std::optional<double> blackPrice(OptionType type, double strike, const Market& market, double volatility);

/// The derivative of the price by the volatility, per 1.0 of volatility; the same for call and put.
/// nullopt as for blackPrice().
std::optional<double> blackVega(double strike, const Market& market, double volatility);

/// The volatility with which blackPrice() gives this price. An in-the-money option is solved by its time
/// value; what is left of that after the subtraction must exceed the rounding of the inputs.
ImpliedVolatility impliedVolatility(
    OptionType type, double strike, const Market& market, std::optional<double> price);

}
