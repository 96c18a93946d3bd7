#pragma once

#include <cmath>
#include <limits>
#include <optional>

/// Rounding of doubles to whole numbers with halves upwards: 2.5 gives 3, -2.5 gives -2.
namespace HalfUpRounding {

/// The rounded value as a double; NaN and infinities stay what they are.
///
/// The sum with one half is taken in doubles, so the largest double below a half (0.49999999999999994)
/// counts as a half, and from 2^52 on an odd number may become its even neighbour.
inline double toWhole(double value)
{
    if (!std::isfinite(value))
        return value;
    if (value >= 0.0)
        return std::trunc(value + 0.5);
    // A negative value is moved to a positive one, where truncation rounds down.
    const double shift = std::trunc(value - 1.0);
    return std::trunc(value - shift + 0.5) + shift;
}

/// The rounded value, nothing for NaN and for a value that does not fit the integer type.
template <typename Integer> std::optional<Integer> toInteger(double value)
{
    // A power of two, exact in a double: the largest value of a 64-bit integer is not.
    constexpr double lowest = static_cast<double>(std::numeric_limits<Integer>::min());
    const double whole = toWhole(value);
    if (!(whole >= lowest && whole < -lowest))
        return std::nullopt;
    return static_cast<Integer>(whole);
}

}
