#pragma once

#include "plot2d/plot2dexport.h"

#include <QString>

/// Short texts of prices and values, and the arithmetic of axis labels. Pure functions; the text for the
/// user also depends on the system's locale.
namespace Plot2dCommon {

/// The value in the notation of QLocale::system(), group separators included, with at most the given
/// decimals (clamped to 0 to 10) and without zeros at the end of its fraction. NaN and infinities read as
/// that locale writes them.
PLOT2D_EXPORT QString fromDoubleToSystemStringShort(double value, int decimals);

/// The value in C notation, ungrouped, with at most the given decimals (10 at the most) and without zeros at
/// the end of its fraction; an empty text for negative decimals.
///
/// A value that rounds to zero loses its sign together with its fraction only: -0.0001 to three decimals
/// is "0", but -0.3 to none is "-0".
PLOT2D_EXPORT QString formattedValue(double value, int decimals);

/// The number of digits of the integer part, at least 1, the sign not counted; 1 for NaN. An infinity has
/// no answer and must not be passed: asserted in a debug build, 1 otherwise.
PLOT2D_EXPORT int integerLength(double value);

/// The value rounded half up (-2.5 becomes -2) to a number of decimals, clamped to -10 to 10; negative
/// decimals round to tens, hundreds and so on.
///
/// It is the binary product of the value and the power of ten that is rounded: 1.005 to two decimals is 1.0.
/// A value whose product does not fit a 64-bit integer comes back unchanged, as do NaN and infinities.
PLOT2D_EXPORT double roundValue(double value, int decimals);

/// Whether two axis values are equal within 1e-8 of the smaller magnitude, a tolerance for positions that
/// come out of repeated additions of a price step. Zero equals zero alone, NaN nothing; infinities are not
/// for it.
PLOT2D_EXPORT bool scaleDrawFuzzyCompare(double a, double b);

}
