#include "differential/plainpan.h"

#include "differential/plainnumbers.h"

#include <cmath>
#include <limits>

namespace {

bool isUsable(const QRectF& rectangle)
{
    return rectangle.width() > 0.0 && rectangle.height() >= 0.0;
}

bool sameRectangle(const QRectF& a, const QRectF& b)
{
    return Plain::fuzzyEqual(a.x(), b.x()) && Plain::fuzzyEqual(a.y(), b.y())
        && Plain::fuzzyEqual(a.width(), b.width()) && Plain::fuzzyEqual(a.height(), b.height());
}

double orNothing(double shift, double most)
{
    return std::fabs(shift) > std::fabs(most) ? 0.0 : shift;
}

double allowedX(const Plain::Pan& pan, const QRectF& view, const QRectF& data, int dx)
{
    double shift = dx;
    if (dx >= 1 && data.x() > view.x())
        shift = pan.x.lower > data.x() ? orNothing(Plain::shiftTo(pan.x, data.x(), false, dx), dx) : 0.0;
    const double dataEnd = data.x() + data.width();
    if (dx < 0 && view.x() + view.width() > dataEnd)
        shift = dataEnd > pan.x.upper ? orNothing(Plain::shiftTo(pan.x, dataEnd, true, dx), dx) : 0.0;
    return shift;
}

double allowedY(const Plain::Pan& pan, const QRectF& view, const QRectF& data, int dy)
{
    double shift = dy;
    const double dataEnd = data.y() + data.height();
    if (dy >= 1 && view.y() + view.height() > dataEnd)
        shift = dataEnd > pan.y.upper ? orNothing(Plain::shiftTo(pan.y, dataEnd, true, dy), dy) : 0.0;
    if (dy < 0 && data.y() > view.y())
        shift = pan.y.lower > data.y() ? orNothing(Plain::shiftTo(pan.y, data.y(), false, dy), dy) : 0.0;
    return shift;
}

bool isNoMove(double shift)
{
    return Plain::fuzzyEqual(1.0 + shift, 1.0);
}

int wholePixels(double shift)
{
    return static_cast<int>(shift < 0.0 ? shift - 0.5 : shift + 0.5);
}

}

double Plain::noShift()
{
    return std::numeric_limits<double>::max();
}

double Plain::shiftTo(const ScreenAxis& axis, double value, bool upperBound, double most)
{
    if (!axis.enabled || axis.lower > axis.upper || axis.lower == axis.upper)
        return noShift();
    const double tolerance = 0.1 * (axis.upper - axis.lower);
    const double pixel = axis.pixelOf(upperBound ? axis.upper : axis.lower);
    for (int parts = 1; parts <= 9; ++parts) {
        for (int taken = 0; taken <= parts; ++taken) {
            const double shift = taken * most / parts;
            const double bound = axis.valueAt(pixel - shift);
            const double past = upperBound ? bound - value : value - bound;
            const bool isPast = upperBound ? bound > value : value > bound;
            if (isPast && past < tolerance)
                return shift;
        }
    }
    return noShift();
}

QRectF Plain::Pan::viewAfter(double dx, double dy) const
{
    double left = 0.0;
    double right = 0.0;
    double bottom = 0.0;
    double top = 0.0;
    if (x.enabled) {
        left = x.valueAt(x.pixelOf(x.lower) - dx);
        right = x.valueAt(x.pixelOf(x.upper) - dx);
    }
    if (y.enabled) {
        bottom = y.valueAt(y.pixelOf(y.lower) - dy);
        top = y.valueAt(y.pixelOf(y.upper) - dy);
    }
    return QRectF(left, bottom, right - left, top - bottom);
}

std::optional<std::pair<int, int>> Plain::Pan::allowed(int dx, int dy) const
{
    const QRectF view = viewAfter(dx, dy);
    if (!isUsable(view) || !isUsable(curves))
        return std::nullopt;
    QRectF data = curves;
    if (data.height() == 0.0) {
        const double quarter = view.height() * 0.5 * 0.5;
        data = QRectF(data.x(), data.y() - quarter, data.width(), 2.0 * quarter);
    }
    if (view.left() > data.right() || data.left() > view.right())
        return std::nullopt;
    if (sameRectangle(data & view, view))
        return std::make_pair(dx, dy);
    const double shiftX = allowedX(*this, view, data, dx);
    const double shiftY = allowedY(*this, view, data, dy);
    if (isNoMove(shiftY) && isNoMove(shiftX))
        return std::nullopt;
    return std::make_pair(wholePixels(shiftX), wholePixels(shiftY));
}
