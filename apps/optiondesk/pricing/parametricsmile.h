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

/// The points that a smile is fitted to; strikes are positive and strictly ascending, volatilities and their
/// errors positive, one of each for each point.
struct SmilePoints {
    std::vector<double> strikes;
    std::vector<double> volatilities;
    std::vector<double> errors;
};

/// The volatility over strikes of a model whose parameters QuantLib has fitted to the points by least squares
/// weighted with the squares of their vegas, from one guess, so that equal points give equal smiles. Points
/// whose error is above half a volatility point are left out where enough others remain: in far wings, where
/// the prices are a few steps, they would draw the few parameters away from the money.
///
/// A null function for the spline, for an invalid market, for fewer points than parameters, and where the fit
/// fails or gives volatilities between the outermost strikes that are not positive and finite.
std::function<double(double)> parametricSmile(
    SmileModel model, const SmilePoints& points, const Market& market);

}
