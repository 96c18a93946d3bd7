#pragma once

#include <pricing/black.h>

#include <optional>

namespace Pricing {

/// The derivative of blackPrice() by the forward: from 0 to 1 for a call, from -1 to 0 for a put, times the
/// discount factor. A volatility of 0 gives the derivative of the intrinsic value, of a call at the forward
/// 0. nullopt as for blackGreeks() otherwise.
std::optional<double> blackDelta(OptionType type, double strike, const Market& market, double volatility);

}
