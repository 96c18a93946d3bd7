#include "closestpoint_p.h"

#include "fuzzyequality_p.h"

#include <cmath>
#include <limits>

namespace {

constexpr double percent = 100.0;

}

bool ClosestPoint::isUsableStep(double priceStep)
{
    return priceStep >= 0.0 && !isFuzzyEqual(1.0, 1.0 + priceStep);
}

bool ClosestPoint::isUsableView(const ClosestPointCalcParams& params)
{
    return !(params.yMin > params.yMax) && !(params.xMin >= params.xMax);
}

ClosestPointParams ClosestPoint::find(
    int count, const std::function<QPointF(int)>& sample, const ClosestPointCalcParams& params)
{
    const double width = params.xMax - params.xMin;
    const double height = params.yMax - params.yMin;
    const bool hasHeight = params.yMax != params.yMin;
    const double cursorX = params.cursorX * percent / width;
    const double cursorY = hasHeight ? params.cursorY * percent / height : params.cursorY;

    ClosestPointParams nearest;
    double best = std::numeric_limits<double>::max();
    for (int i = 0; i < count; ++i) {
        const QPointF point = sample(i);
        if (!(params.xMin <= point.x() && point.x() <= params.xMax && params.yMin <= point.y()
                && point.y() <= params.yMax))
            continue;
        const double x = (point.x() - params.xMin) * percent / width;
        const double y = hasHeight ? (point.y() - params.yMin) * percent / height : 0.0;
        const double distance = std::abs(cursorX - x) + std::abs(cursorY - y);
        if (distance < best) {
            best = distance;
            nearest.distance = distance;
            nearest.index = i;
        }
    }
    return nearest;
}
