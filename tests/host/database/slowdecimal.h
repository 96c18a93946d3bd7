#pragma once

#include <string>
#include <utility>

/// Fixed-point numbers as strings of decimal digits, slow and plain: the model that decimal is held against.
///
/// The digits count 1e-18, without leading zeros except for "0".
struct SlowDecimal {
    bool negative = false;
    std::string digits = "0";
};

namespace SlowDecimals {

/// From C notation with any number of digits: "-12.3400".
SlowDecimal fromText(const std::string& text);
/// From a double through its complete decimal expansion.
SlowDecimal fromDouble(double value, int decimals);
/// Shortest C notation.
std::string toText(const SlowDecimal& value);

SlowDecimal rounded(const SlowDecimal& value, int decimals);
SlowDecimal sum(const SlowDecimal& a, const SlowDecimal& b);
SlowDecimal product(const SlowDecimal& a, const SlowDecimal& b);
int compare(const SlowDecimal& a, const SlowDecimal& b);

}
