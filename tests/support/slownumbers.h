#pragma once

#include <QString>

#include <string>

/// The number functions of the library once more, slowly: digit by digit and in whole-number arithmetic, to
/// compare the quick ones with. Nothing here formats or rounds by way of Qt or the C library.
namespace SlowNumbers {

/// The exact value of a finite double in decimal digits.
struct ExactDecimal {
    bool negative = false; ///< False for both zeros.
    std::string whole; ///< At least one digit, no zeros in front.
    std::string fraction; ///< As long as it needs to be, no zeros at its end.
};

ExactDecimal exactDecimal(double finite);

/// Rounded to a number of decimals from 0 on, halves away from zero; keeps the sign of what becomes zero.
ExactDecimal rounded(const ExactDecimal& exact, int decimals);

/// The text in C notation that Plot2dCommon::formattedValue() owes for a finite value.
QString formattedValue(double finite, int decimals);

/// The text that Plot2dCommon::fromDoubleToSystemStringShort() owes for a finite value, put together from
/// the signs of QLocale::system() and groups of three digits.
QString systemText(double finite, int decimals);

/// What Plot2dCommon::roundValue() owes for any value. The products and sums of the rule are taken in
/// doubles, as the rule wants them; what is truncated is truncated in exact digits.
double roundedHalfUp(double value, int decimals);

/// floor(value + 1/2) in exact arithmetic, for |value| < 2^60.
double exactlyRoundedHalfUp(double value);

/// The number of divisions by ten, each rounded to the nearest double, that bring a finite value below ten,
/// plus one.
int integerLength(double finite);

/// Whether |a - b| * 100000000 <= min(|a|, |b|) holds in exact arithmetic.
bool scaleDrawEqual(double a, double b);

}
