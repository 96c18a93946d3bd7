#pragma once

#include <QMetaType>

#include <limits>

/// The range of prices that a plot's strikes span; a plain value.
///
/// A default interval is the reset value: inverted, without a step and not valid.
struct PriceInterval {
    /// The lowest strike.
    double minPrice = std::numeric_limits<double>::max();
    /// The highest strike.
    double maxPrice = -std::numeric_limits<double>::max();
    /// The smallest distance between neighbouring strikes, rounded to the instrument's decimals.
    double minStep = 0.0;
    /// Whether the other three fields come from strikes; false for the reset value.
    bool valid = false;
};

/// Whether all four fields are exactly equal.
inline bool operator==(const PriceInterval& a, const PriceInterval& b)
{
    return a.minPrice == b.minPrice && a.maxPrice == b.maxPrice && a.minStep == b.minStep
        && a.valid == b.valid;
}

/// Whether a field differs.
inline bool operator!=(const PriceInterval& a, const PriceInterval& b)
{
    return !(a == b);
}

Q_DECLARE_METATYPE(PriceInterval)
