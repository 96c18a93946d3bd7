#include "differential/plaincurves.h"

#include <c_api/common.h>

#include <cmath>
#include <limits>

namespace {

constexpr double largest = std::numeric_limits<double>::max();

/// Lowers and raises a range to the values of a curve; false for a sample that is no number.
bool addValues(const Plain::Curve& curve, double x1, double x2, Plain::Range& range)
{
    for (const QPointF& sample : curve.samples) {
        if (!std::isfinite(sample.x()) || !std::isfinite(sample.y()))
            return false;
        // Both ends look at x1: the right end never counts, a price equal to the left one always does.
        const bool isAtStart = commonFuzzyCompare(sample.x(), x1);
        const bool isAfterStart = sample.x() > x1 || isAtStart;
        const bool isBeforeEnd = sample.x() < x2 || isAtStart;
        if (isAfterStart && isBeforeEnd) {
            if (sample.y() < range.first)
                range.first = sample.y();
            if (sample.y() > range.second)
                range.second = sample.y();
        }
        if (sample.x() > x2)
            break;
    }
    return true;
}

}

bool Plain::isCurveType(int type)
{
    return type == 0 || type == 9 || type == 10 || type == 11 || type == 12 || type == 13;
}

int Plain::typeAfter(int type, int wanted)
{
    return wanted == -1 || isCurveType(wanted) ? wanted : type;
}

bool Plain::Curve::isValid() const
{
    if (samples.isEmpty() || title.isEmpty() || line == Line::None)
        return false;
    if (!legendShowsLine && !legendShowsSymbol)
        return false;
    if (legendShowsLine && (!hasPen || !color.isValid()))
        return false;
    if (!isCurveType(type))
        return false;
    if (type != 0)
        return true;
    return color == QColor(Qt::red) && line == Line::Sticks && samples.size() == 2;
}

QRectF Plain::Curve::rectangle() const
{
    double left = samples[0].x();
    double right = left;
    double top = samples[0].y();
    double bottom = top;
    for (const QPointF& sample : samples) {
        left = sample.x() < left ? sample.x() : left;
        right = sample.x() > right ? sample.x() : right;
        top = sample.y() < top ? sample.y() : top;
        bottom = sample.y() > bottom ? sample.y() : bottom;
    }
    return QRectF(left, top, right - left, bottom - top);
}

Plain::Range Plain::valuesBetween(const QList<Curve>& curves, double x1, double x2)
{
    Range range(largest, -largest);
    bool hasLookedAtOne = false;
    for (const Curve& curve : curves) {
        if (curve.isQuoteLine() && !curve.visible)
            hasLookedAtOne = true;
        if (curve.isQuoteLine() || !curve.visible || !curve.isValid())
            continue;
        hasLookedAtOne = true;
        if (!addValues(curve, x1, x2, range))
            return Range(1.0, -1.0);
    }
    return hasLookedAtOne ? range : Range(0.0, 0.0);
}

QRectF Plain::rectangleAround(const QList<Curve>& curves)
{
    double left = largest;
    double top = largest;
    double right = -largest;
    double bottom = -largest;
    for (const Curve& curve : curves) {
        if (!curve.visible || curve.isQuoteLine() || curve.samples.isEmpty())
            continue;
        const QRectF own = curve.rectangle();
        if (own.x() < left)
            left = own.x();
        if (own.y() < top)
            top = own.y();
        if (own.x() + own.width() > right)
            right = own.x() + own.width();
        if (own.y() + own.height() > bottom)
            bottom = own.y() + own.height();
    }
    if (right < left || bottom < top)
        return QRectF();
    return QRectF(left, top, right - left, bottom - top);
}
