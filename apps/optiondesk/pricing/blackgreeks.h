#pragma once

#include <pricing/black.h>

#include <optional>

namespace Pricing {

/// Derivatives of a value.
struct Greeks {
    /// By the forward, and by the forward twice.
    double delta = 0.0;
    double gamma = 0.0;
    /// Per 1.0 of volatility.
    double vega = 0.0;
    /// Per year that passes, so mostly negative for options held.
    double theta = 0.0;
};

/// The derivatives of blackPrice(). nullopt where that has none, and for a volatility of 0, with which the
/// value has a kink at the strike.
std::optional<Greeks> blackGreeks(OptionType type, double strike, const Market& market, double volatility);

}
