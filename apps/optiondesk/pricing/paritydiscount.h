#pragma once

#include <chain/optionchain.h>

#include <optional>

namespace Pricing {

/// The discount factor that put-call parity implies: the slope of call - put = D (F - strike) over the
/// strikes, of at most 40 strikes within a quarter of the forward, beyond which settlements are stale. With a
/// forward given the line goes through it.
///
/// Robust: the median of the slopes (H. Theil, "A rank-invariant method of linear and polynomial regression
/// analysis", 1950) finds the pairs of options that agree with each other, and least squares weighted by the
/// errors of their prices the slope of those.
///
/// 1 where the prices do not contradict it, that is unless
/// - at least five pairs agree, so that one may be wrong and the others still contradict each other;
/// - the slope differs from 1 by four of its standard errors, which the scatter of the pairs adds to;
/// - and the difference moves the outermost of these strikes by more than a price step: all prices of a
/// series
///   are rounded alike, which leaves no scatter but a slope.
/// So premiums that are margined like futures keep their full value. American options on futures need not
/// obey the equation: early exercise holds a deep option in the money at its intrinsic value, which turns the
/// slope towards 1, so what comes out lies between the two, or is 1 where the interest is small.
/// 1 also for a slope outside of 0.5 to 1.05, which no interest brings about, and for a given forward
/// that is not positive and finite.
double parityDiscount(const OptionSeries& series, const decimal& priceStep,
    const std::optional<double>& forward = std::nullopt);

}
