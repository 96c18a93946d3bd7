#pragma once

#include <QString>

/// A second, slow and plain implementation of what the library decides.
namespace Plain {

/// Whole numbers with halves upwards, as a double so that no size is too large: values that are not negative
/// lose the fraction of their sum with a half, negative ones are first moved above zero by a whole number.
double roundedHalfUp(double value);

/// Equal to 1e-12 of the smaller magnitude.
bool fuzzyEqual(double x, double y);
/// Equal to 1e-8 of the smaller magnitude.
bool looselyEqual(double a, double b);
/// Zero for a price: at most 1e-12 to either side.
bool isNothing(double value);

/// The system's text with at most so many decimals, 0 to 10, and no zeros at the end of the fraction.
QString shortText(double value, int decimals);
/// The same in C notation; the "-0" that is left of a fraction loses its sign, the one without a fraction
/// does not.
QString longText(double value, int decimals);

/// The digits before the point, at least one.
int integerDigits(double value);
/// Rounded half up at a decimal; a value too large for 64 bits at that decimal stays.
double roundedAt(double value, int decimals);

/// Towards zero, but a value within 1e-8 of the next whole number counts as that.
double looseIntegerPart(double value);

}
