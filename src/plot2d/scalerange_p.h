#pragma once

#include <qwt_interval.h>

#include <optional>

class QwtPlot;
class QwtScaleDiv;

/// What becomes of a range that an axis of a plot is asked to show. Pure functions.
namespace ScaleRange {

/// Whether an axis with this division shows a range: it is not empty, and its bounds are not invalid.
bool isUsable(const QwtScaleDiv& division);

/// The range that QwtPlot::yLeft or xBottom shows instead: the range itself, a vertical one without width
/// widened by 1 to both sides. Nothing where the axis keeps its range: a horizontal one without width, and a
/// vertical one of 1e-8 or less that is not fuzzily empty.
std::optional<QwtInterval> shown(int axis, double min, double max);

/// Whether Qwt can divide a range into as many ticks as an axis of this plot asks for. False also for a range
/// without width: far from zero doubles are more than 1 apart, so that widening does not always widen.
bool isDivisible(const QwtPlot& plot, int axis, const QwtInterval& range, double step);

/// Whether an axis of the plot shows what it is asked for, or keeps its range by the rule of shown(). False
/// for bounds that are not finite or inverted, and where Qwt cannot divide what would be shown.
bool isAcceptable(const QwtPlot& plot, int axis, double min, double max);

}
