#include "plainanswers.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <c_api/common.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

bool isFinite(const QPointF& sample)
{
    return std::isfinite(sample.x()) && std::isfinite(sample.y());
}

}

bool PlainAnswers::isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

int PlainAnswers::finiteCount(const QVector<QPointF>& samples)
{
    int count = 0;
    while (count < samples.size() && isFinite(samples[count]))
        ++count;
    return count;
}

bool PlainAnswers::isAscending(const QVector<QPointF>& samples)
{
    for (int i = 1; i < samples.size(); ++i) {
        if (samples[i].x() < samples[i - 1].x())
            return false;
    }
    return true;
}

QRectF PlainAnswers::boundingRectangle(const QVector<QPointF>& samples)
{
    QPointF low = samples.first();
    QPointF high = low;
    for (const QPointF& sample : samples) {
        low = QPointF(std::min(low.x(), sample.x()), std::min(low.y(), sample.y()));
        high = QPointF(std::max(high.x(), sample.x()), std::max(high.y(), sample.y()));
    }
    return QRectF(low, high);
}

int PlainAnswers::lowerBound(const QVector<QPointF>& samples, double price)
{
    int i = 0;
    while (i < samples.size() && samples[i].x() < price)
        ++i;
    return i;
}

int PlainAnswers::upperBound(const QVector<QPointF>& samples, double price)
{
    int i = 0;
    while (i < samples.size() && !(samples[i].x() > price))
        ++i;
    return i;
}

std::pair<double, double> PlainAnswers::bounds(const QVector<QPointF>& samples, int begin, int end)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    std::pair<double, double> bounds(infinity, -infinity);
    for (int i = begin; i < end; ++i) {
        bounds.first = std::min(bounds.first, samples[i].y());
        bounds.second = std::max(bounds.second, samples[i].y());
    }
    return bounds;
}

std::pair<double, double> PlainAnswers::valueRange(const QVector<QPointF>& samples, double x1, double x2)
{
    constexpr double largest = std::numeric_limits<double>::max();
    std::pair<double, double> range(largest, -largest);
    for (const QPointF& sample : samples) {
        if (!isFinite(sample))
            return {1.0, -1.0};
        const bool isAtLowEnd = commonFuzzyCompare(sample.x(), x1);
        const bool counts = (sample.x() > x1 || isAtLowEnd) && (sample.x() < x2 || isAtLowEnd);
        if (counts && sample.y() < range.first)
            range.first = sample.y();
        if (counts && sample.y() > range.second)
            range.second = sample.y();
        if (sample.x() > x2)
            break;
    }
    return range;
}

ClosestPointParams PlainAnswers::closestPoint(
    const QVector<QPointF>& samples, const ClosestPointCalcParams& params)
{
    const double width = params.xMax - params.xMin;
    const double height = params.yMax - params.yMin;
    const bool isFlat = params.yMax == params.yMin;
    const double cursorX = params.cursorX * 100.0 / width;
    const double cursorY = isFlat ? params.cursorY : params.cursorY * 100.0 / height;
    double best = std::numeric_limits<double>::max();
    ClosestPointParams nearest;
    for (int i = 0; i < samples.size(); ++i) {
        const double x = samples[i].x();
        const double y = samples[i].y();
        if (!(params.xMin <= x && x <= params.xMax && params.yMin <= y && y <= params.yMax))
            continue;
        const double xPercent = (x - params.xMin) * 100.0 / width;
        const double yPercent = isFlat ? 0.0 : (y - params.yMin) * 100.0 / height;
        const double distance = std::abs(cursorX - xPercent) + std::abs(cursorY - yPercent);
        if (distance < best) {
            best = distance;
            nearest.distance = distance;
            nearest.index = i;
        }
    }
    return nearest;
}

void setAsArrays(PriceBased2dPlotCurve& curve, const QVector<QPointF>& samples)
{
    QVector<double> x;
    QVector<double> y;
    for (const QPointF& sample : samples) {
        x.append(sample.x());
        y.append(sample.y());
    }
    curve.setSamples(x, y);
}
