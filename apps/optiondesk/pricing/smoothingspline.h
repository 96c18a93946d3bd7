#pragma once

#include <vector>

namespace Pricing {

/// Smooths values over strictly ascending abscissas: of all curves whose mean square of
/// (value - curve) / error is at most 1, the one with the least integral of the squared second derivative.
/// It is a natural cubic spline; its values at the abscissas are returned.
///
/// All vectors have the same size; errors are positive. Fewer than three values come back as they are. The
/// straight line of regression comes back where it satisfies the bound, the values themselves where
/// rounding lets the equations fail.
std::vector<double> smoothed(const std::vector<double>& abscissas, const std::vector<double>& values,
    const std::vector<double>& errors);

}
