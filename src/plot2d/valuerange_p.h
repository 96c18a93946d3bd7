#pragma once

#include <QList>
#include <QRectF>

#include <utility>

class PriceBased2dPlotCurve;

/// Ranges of prices and of curve values: what a vertical auto-scale shows.
namespace ValueRange {

/// A lower and an upper bound; inverted where there is no range.
using Range = std::pair<double, double>;

/// The answer that leaves a scale as it is.
constexpr Range none{1.0, -1.0};

/// A price moved to the nearest multiple of the price step, halves upwards. The price itself where the step
/// is negative (unknown) or zero, where the result is not finite, and beyond 2^53 steps, where doubles no
/// longer hold every multiple.
double snapped(double price, double priceStep);

/// Whether two prices, the first not above the second, are further apart than 1e-12 of the nearer to zero.
bool isProperRange(double low, double high);

/// The range of the values that the visible curves take from x1 (inclusive, fuzzily) up to x2 (exclusive).
///
/// Samples are walked by their index, whatever their order, and only as far as the first sample beyond x2.
/// One sample on the way that is not finite gives none; no value in range gives the inverted pair of the
/// largest doubles. Where there is no curve to consider the answer is (0, 0); a hidden quote line counts as
/// one considered.
Range ofCurves(const QList<PriceBased2dPlotCurve*>& curves, double x1, double x2);

/// The union of the bounding rectangles of the visible value curves that have samples, a null rectangle if
/// there is none. A bound that is NaN counts for nothing.
QRectF boundingRectangle(const QList<PriceBased2dPlotCurve*>& curves);

/// Whether a view can be panned and zoomed over the rectangle of the curves: it has a width, and a height
/// that is not negative. Zero height will do (all curves at one value), and so will sides that are not
/// finite: one infinite sample leaves the finite ones to look at.
bool canBeViewed(const QRectF& curves);

}
