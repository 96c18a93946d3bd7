#pragma once

/// Whether two doubles are to be treated as the same value.
///
/// True for equal values (equal infinities included) and for values whose distance is at most 1e-12 of
/// the smaller magnitude, so zero is close to zero alone. NaN equals nothing.
bool commonFuzzyCompare(double first, double second);

/// The lower bound of volatility, as a fraction, of an instrument that states none.
extern const double gc_dVolatMinDefault;
/// The upper bound of volatility, as a fraction, of an instrument that states none.
extern const double gc_dVolatMaxDefault;
