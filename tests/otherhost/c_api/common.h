#pragma once

/// Whether two doubles are the same value but for the errors of a few additions: at most 2e-12 of the larger
/// one apart. Infinities are equal to themselves alone, NaN to nothing.
bool commonFuzzyCompare(double first, double second);

/// Volatility bounds, as fractions, of an instrument that states none.
extern const double gc_dVolatMinDefault;
extern const double gc_dVolatMaxDefault;
