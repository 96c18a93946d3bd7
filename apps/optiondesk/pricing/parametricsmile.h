#pragma once

#include <pricing/black.h>

#include <functional>
#include <vector>

namespace Pricing {

/// How a smile is fitted.
enum class SmileModel {
    /// A smoothing spline through the points, see Smile.
    Spline,
    /// J. Gatheral's "stochastic volatility inspired" total variance: five parameters.
    Svi,
    /// The stochastic volatility model of P. Hagan and others (2002), with beta 1: three parameters.
    Sabr
};

/// The volatility over strikes of a model whose parameters QuantLib has fitted to the points by least squares
/// weighted with their vegas, from one guess, so that equal points give equal smiles.
///
/// Strikes are positive and strictly ascending; volatilities are positive, one for each. A null function for
/// the spline, for an invalid market, for fewer points than parameters, and where the fit fails or gives
/// volatilities between the outermost strikes that are not positive and finite.
std::function<double(double)> parametricSmile(SmileModel model, const std::vector<double>& strikes,
    const std::vector<double>& volatilities, const Market& market);

}
