#pragma once

#include <database/decimal.h>

#include <QString>

#include <optional>

/// The character before a number's decimals.
enum class DecimalMark { Point, Comma };

/// A number as a cell states it.
struct ParsedNumber {
    decimal value;
    /// Whether a percent sign follows it; the value is the number before the sign.
    bool percent = false;
};

/// Whether a cell says that there is no value: it is empty or one of the usual words ("-", "NA", "n/a",
/// "null", "nan", "none", ".", "#N/A" ...).
bool isMissingValue(const QString& cell);

/// Reads a number: a sign, digits, decimals behind the mark, an exponent ("1e+05"), a percent sign. The
/// digits may be grouped, the last group of three, by blanks, apostrophes or whichever of comma and point
/// is not the mark. Beyond 15 significant digits the number is rounded: there stands the noise of a binary
/// fraction. No value for anything else and for a magnitude of 1e15 and more.
std::optional<ParsedNumber> parseNumber(const QString& cell, DecimalMark mark);

/// The mark that a number was certainly written with: none for a number that may be read both ways, such
/// as "1,234", and for what is no number.
std::optional<DecimalMark> decimalMarkOf(const QString& cell);
