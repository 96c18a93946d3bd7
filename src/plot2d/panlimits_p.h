#pragma once

#include <QRectF>

#include <qwt_scale_map.h>

#include <limits>
#include <optional>

/// How far a drag of the canvas moves the view before the ends of the data stop it. Pure functions.
namespace PanLimits {

/// One axis of the view: its map to pixels and its current bounds.
struct Axis {
    QwtScaleMap map;
    double lower = 0.0;
    double upper = 0.0;
    bool enabled = true;
};

enum Side { Lower = 0, Upper = 1 };

/// The answer of shiftUntil() that is no shift: larger than any drag.
constexpr double noShift = std::numeric_limits<double>::max();

/// The view (left and top are the lower bounds) after a drag by pixels, 0 for an axis that is not enabled.
/// Nothing for a view without width, of negative height, or that is not finite, and for an enabled axis
/// without pixels or of infinite width.
std::optional<QRectF> draggedView(const Axis& x, const Axis& y, double dx, double dy);

/// The rectangle that limits a view: that of the curves, of zero height widened to half the view's height.
/// Nothing for one without width or of negative height. A side that is not finite limits nothing.
std::optional<QRectF> limits(const QRectF& curves, const QRectF& view);

/// Whether two rectangles have prices in common.
bool overlapInPrice(const QRectF& view, const QRectF& limits);

/// Whether a view lies within the limits (all four sides to 1e-12).
bool isInside(const QRectF& view, const QRectF& limits);

/// A shift in pixels, between 0 and maxShift, after which a bound of an axis lies just past a value: above it
/// for the upper bound, below it for the lower one, by less than a tenth of the span. It is the first k-th
/// n-th of maxShift that does, for n from 1 to 9 and k from 0 to n; noShift where none does, and for a side
/// that is neither.
double shiftUntil(const Axis& axis, double value, int side, double maxShift);

/// The shifts that are left of a drag into a view that would leave the limits: 0 along an axis where the data
/// ends already or no shift stops just past its end.
double limitedShiftX(const Axis& x, const QRectF& view, const QRectF& limits, double dx);
double limitedShiftY(const Axis& y, const QRectF& view, const QRectF& limits, double dy);

}
