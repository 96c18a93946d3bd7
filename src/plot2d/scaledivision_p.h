#pragma once

#include <QtGlobal>

#include <qwt_scale_div.h>

/// The division of a scale into ticks: which bounds Qwt can divide, and how a division is moved onto a price.
/// Pure functions.
namespace ScaleDivision {

/// What a scale engine is asked to divide.
struct Request {
    double lower = 0.0;
    double upper = 0.0;
    int maxMajorSteps = 0;
    int maxMinorSteps = 0;
    /// 0 for a step of the engine's choice.
    double step = 0.0;
    /// The base of the engine.
    unsigned int base = 10;
};

/// Whether Qwt's linear division of the request ends with a modest number of ticks. A range of no width is
/// divisible: into nothing.
///
/// Not divisible are bounds and a step that are not finite; a range wider than the largest double; one so
/// wide that the step chosen for it overflows (its minor steps are then counted by a NaN, up to two thousand
/// million) and one so narrow that it cannot be mapped to pixels; more steps than an int counts; and minor
/// steps that come to more than ten million ticks.
bool isDivisible(const Request& request);

/// The price on which ticks are anchored: the factor, or the integer next to it where the two differ by less
/// than one unit of the last decimal of strikes. NaN for a factor beyond 32-bit integers.
double anchorPrice(double factor, int strikePrecision);

/// The division moved sideways so that its major tick nearest to the price (of two the lower) falls exactly
/// on it; ticks that leave the open range from x1 to x2 are dropped. Unchanged where the price lies outside
/// the closed range, is a major tick already (within 1e-12) or NaN, and without major ticks. The bounds stay.
QwtScaleDiv anchored(const QwtScaleDiv& division, double price, double x1, double x2);

}
