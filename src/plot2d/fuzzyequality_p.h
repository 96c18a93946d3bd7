#pragma once

#include <algorithm>
#include <cmath>

/// Whether two doubles are within 1e-12 of the smaller magnitude of each other. Zero equals zero alone, NaN
/// nothing.
inline bool isFuzzyEqual(double x, double y)
{
    return std::min(std::abs(x), std::abs(y)) >= std::abs(x - y) * 1e12;
}

/// Whether a double is within 1e-12 of zero. NaN is not.
inline bool isFuzzyZero(double x)
{
    return std::abs(x) <= 1e-12;
}
