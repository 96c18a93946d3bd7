#pragma once

#include <chain/optionchain.h>

#include <optional>

namespace Pricing {

/// The forward that put-call parity implies without interest: F = strike + call - put, the median over the
/// five strikes (fewer where there are not so many) around the one with the smallest |call - put|.
///
/// Close to the money call - put is nearly zero, so the discount factor, which multiplies it, does not
/// matter there; a regression over all strikes would yield it as well, but from the far in-the-money
/// settlements, which are the stale ones. The median keeps one bad quote from moving the result.
/// nullopt where no strike has a positive price of both a call and a put, or the result is not positive.
std::optional<double> parityForward(const OptionSeries& series);

}
