#include "valuerange_p.h"

#include "fuzzyequality_p.h"
#include "halfuprounding_p.h"
#include "plot2d/pricebased2dplotcurve.h"
#include "sampleindex_p.h"

#include <c_api/common.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double largest = std::numeric_limits<double>::max();

bool isQuoteLine(const PriceBased2dPlotCurve& curve)
{
    return curve.dataType() == PriceBased2dPlotCurve::quoteLineType;
}

/// Whether a sample's price belongs to the range from x1 to x2. The lower end is fuzzy, the upper end is
/// exclusive: a sample on it belongs to the next range.
bool isInside(double x, double x1, double x2)
{
    const bool onLowerEnd = commonFuzzyCompare(x, x1);
    return (x > x1 || onLowerEnd) && (x < x2 || onLowerEnd);
}

void include(ValueRange::Range& range, double low, double high)
{
    range.first = std::min(range.first, low);
    range.second = std::max(range.second, high);
}

/// Extends a range by a curve's values from x1 up to x2; false at a sample that is not finite.
bool extendByWalk(ValueRange::Range& range, const PriceBased2dPlotCurve& curve, double x1, double x2)
{
    const std::size_t size = curve.dataSize();
    for (std::size_t i = 0; i < size; ++i) {
        const QPointF sample = curve.sample(static_cast<int>(i));
        const double x = sample.x();
        if (!std::isfinite(x) || !std::isfinite(sample.y()))
            return false;
        if (isInside(x, x1, x2))
            include(range, sample.y(), sample.y());
        if (x > x2)
            break;
    }
    return true;
}

/// The same for samples in ascending prices.
bool extendByIndex(ValueRange::Range& range, const SampleIndex& index, double x1, double x2)
{
    const int behind = index.upperBound(x2);
    // A walk would have come upon what is not finite before it was past the range.
    if (behind == index.finiteCount() && !index.isFinite())
        return false;

    // Prices that are fuzzily x1 stand next to it.
    int begin = index.upperBound(x1);
    while (begin > 0 && isInside(index.x(begin - 1), x1, x2))
        begin = index.lowerBound(index.x(begin - 1));
    int end = std::max(begin, index.lowerBound(x2));
    // Of those beyond the upper end a walk looks at the first one.
    while (end < index.finiteCount() && end <= behind && isInside(index.x(end), x1, x2))
        end = end < behind ? index.upperBound(index.x(end)) : end + 1;
    if (begin < end) {
        const SampleIndex::Bounds bounds = index.bounds(begin, end);
        include(range, bounds.low, bounds.high);
    }
    return true;
}

bool extend(ValueRange::Range& range, const PriceBased2dPlotCurve& curve, double x1, double x2)
{
    const SampleIndex* const index = curve.sampleIndex();
    return index && index->isAscending() ? extendByIndex(range, *index, x1, x2)
                                         : extendByWalk(range, curve, x1, x2);
}

}

double ValueRange::snapped(double price, double priceStep)
{
    if (priceStep < 0.0 || isFuzzyZero(priceStep))
        return price;

    constexpr double holdsEveryWhole = 9007199254740992.0; // 2^53
    constexpr double holdsHalves = holdsEveryWhole / 2.0;
    const double steps = price / priceStep;
    if (!(std::abs(steps) <= holdsEveryWhole))
        return price;
    const double whole = std::abs(steps) < holdsHalves ? HalfUpRounding::toWhole(steps) : steps;
    const double result = priceStep * whole;
    return std::isfinite(result) ? result : price;
}

bool ValueRange::isProperRange(double low, double high)
{
    return low <= high && std::min(std::abs(low), std::abs(high)) < std::abs(low - high) * 1e12;
}

ValueRange::Range ValueRange::ofCurves(const QList<PriceBased2dPlotCurve*>& curves, double x1, double x2)
{
    Range range{largest, -largest};
    bool considered = false;
    for (const PriceBased2dPlotCurve* curve : curves) {
        if (isQuoteLine(*curve)) {
            considered = considered || !curve->isVisible();
        } else if (curve->isValid() && curve->isVisible()) {
            if (!extend(range, *curve, x1, x2))
                return none;
            considered = true;
        }
    }
    return considered ? range : Range{0.0, 0.0};
}

QRectF ValueRange::boundingRectangle(const QList<PriceBased2dPlotCurve*>& curves)
{
    double left = largest;
    double top = largest;
    double right = -largest;
    double bottom = -largest;
    for (const PriceBased2dPlotCurve* curve : curves) {
        // Without samples Qwt gives an invalid rectangle that stands at (1, 1).
        if (!curve->isVisible() || isQuoteLine(*curve) || curve->dataSize() == 0)
            continue;
        const QRectF rectangle = curve->boundingRect();
        // In this order of arguments a NaN never replaces a bound.
        left = std::min(left, rectangle.left());
        top = std::min(top, rectangle.top());
        right = std::max(right, rectangle.left() + rectangle.width());
        bottom = std::max(bottom, rectangle.top() + rectangle.height());
    }
    if (right < left || bottom < top)
        return QRectF();
    return QRectF(left, top, right - left, bottom - top);
}

bool ValueRange::canBeViewed(const QRectF& curves)
{
    return !(curves.width() <= 0.0) && !(curves.height() < 0.0);
}
