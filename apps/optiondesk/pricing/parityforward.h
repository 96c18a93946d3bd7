#pragma once

#include <chain/optionchain.h>

#include <optional>

namespace Pricing {

/// The forward that put-call parity implies: F = strike + (call - put) / discount, the median over the five
/// strikes (fewer where there are not so many) around the one with the smallest |call - put|.
///
/// Close to the money call - put is nearly zero, so the discount factor (see parityDiscount()) matters
/// little; without one the result is still good to the interest on the distance of the strikes. The median
/// keeps one bad quote from moving the result.
/// nullopt where no strike has a positive price of both a call and a put, or the result is not positive.
/// The discount factor is positive.
std::optional<double> parityForward(const OptionSeries& series, double discount = 1.0);

}
