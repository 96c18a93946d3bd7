#include "panlimits_p.h"

#include "fuzzyequality_p.h"
#include "pixelvalue_p.h"
#include "valuerange_p.h"

#include <algorithm>
#include <cmath>

namespace {

using PanLimits::Axis;
using PanLimits::Side;

bool isFinite(const QRectF& rectangle)
{
    return std::isfinite(rectangle.x()) && std::isfinite(rectangle.y()) && std::isfinite(rectangle.width())
        && std::isfinite(rectangle.height());
}

double moved(const Axis& axis, double bound, double shift)
{
    return PixelValue::at(axis.map, axis.map.transform(bound) - shift);
}

/// The shift that brings a bound just past the end of the data: 0 where the end is in view already, and where
/// no part of the drag stops there.
double shiftToEnd(const Axis& axis, double end, Side side, double drag)
{
    const bool endIsHidden = side == PanLimits::Lower ? axis.lower > end : end > axis.upper;
    if (!endIsHidden)
        return 0.0;
    const double shift = PanLimits::shiftUntil(axis, end, side, drag);
    return std::abs(shift) > std::abs(drag) ? 0.0 : shift;
}

}

std::optional<QRectF> PanLimits::draggedView(const Axis& x, const Axis& y, double dx, double dy)
{
    const double left = x.enabled ? moved(x, x.lower, dx) : 0.0;
    const double right = x.enabled ? moved(x, x.upper, dx) : 0.0;
    const double bottom = y.enabled ? moved(y, y.lower, dy) : 0.0;
    const double top = y.enabled ? moved(y, y.upper, dy) : 0.0;
    const QRectF view(left, bottom, right - left, top - bottom);
    return ValueRange::canBeViewed(view) && isFinite(view) ? std::optional<QRectF>(view) : std::nullopt;
}

std::optional<QRectF> PanLimits::limits(const QRectF& curves, const QRectF& view)
{
    QRectF result = curves;
    if (!ValueRange::canBeViewed(result))
        return std::nullopt;
    if (result.height() == 0.0) {
        const double margin = view.height() * 0.5 * 0.5;
        // A rectangle that begins at minus infinity would end there as well.
        const double low = std::max(curves.y() - margin, std::numeric_limits<double>::lowest());
        result = QRectF(curves.x(), low, curves.width(), 2.0 * margin);
    }
    return ValueRange::canBeViewed(result) ? std::optional<QRectF>(result) : std::nullopt;
}

bool PanLimits::overlapInPrice(const QRectF& view, const QRectF& limits)
{
    const QRectF a = view.normalized();
    const QRectF b = limits.normalized();
    return !(a.left() > b.right()) && !(b.left() > a.right());
}

bool PanLimits::isInside(const QRectF& view, const QRectF& limits)
{
    const QRectF common = limits & view;
    return isFuzzyEqual(common.x(), view.x()) && isFuzzyEqual(common.y(), view.y())
        && isFuzzyEqual(common.width(), view.width()) && isFuzzyEqual(common.height(), view.height());
}

double PanLimits::shiftUntil(const Axis& axis, double value, int side, double maxShift)
{
    if (!axis.enabled || !(axis.lower < axis.upper) || (side != Lower && side != Upper)
        || !PixelValue::isKnown(axis.map))
        return noShift;

    constexpr int finestPart = 9;
    const double bound = axis.map.transform(side == Lower ? axis.lower : axis.upper);
    const double tolerance = 0.1 * (axis.upper - axis.lower);
    for (int n = 1; n <= finestPart; ++n) {
        for (int k = 0; k <= n; ++k) {
            const double shift = k * maxShift / n;
            const double reached = axis.map.invTransform(bound - shift);
            const double past = side == Upper ? reached - value : value - reached;
            if (past > 0.0 && past < tolerance)
                return shift;
        }
    }
    return noShift;
}

double PanLimits::limitedShiftX(const Axis& x, const QRectF& view, const QRectF& limits, double dx)
{
    double shift = dx;
    if (dx >= 1.0 && limits.left() > view.left())
        shift = shiftToEnd(x, limits.left(), Lower, dx);
    if (view.right() > limits.right() && dx < 0.0)
        shift = shiftToEnd(x, limits.right(), Upper, dx);
    return shift;
}

double PanLimits::limitedShiftY(const Axis& y, const QRectF& view, const QRectF& limits, double dy)
{
    // In Qt's terms the lower values are the top of these rectangles.
    const double viewLow = view.top();
    const double viewHigh = view.bottom();
    const double dataLow = limits.top();
    const double dataHigh = limits.bottom();

    double shift = dy;
    if (dy >= 1.0 && viewHigh > dataHigh)
        shift = shiftToEnd(y, dataHigh, Upper, dy);
    if (dataLow > viewLow && dy < 0.0)
        shift = shiftToEnd(y, dataLow, Lower, dy);
    return shift;
}
