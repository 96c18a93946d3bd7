#include "closestpoint_p.h"

#include "fuzzyequality_p.h"
#include "sampleindex_p.h"

#include <algorithm>
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

namespace {

/// The visible ranges and the cursor, in percent of the ranges.
class View {
public:
    explicit View(const ClosestPointCalcParams& params)
        : m_params(params)
        , m_width(params.xMax - params.xMin)
        , m_height(params.yMax - params.yMin)
        , m_hasHeight(params.yMax != params.yMin)
        , m_cursorX(params.cursorX * percent / m_width)
        , m_cursorY(m_hasHeight ? params.cursorY * percent / m_height : params.cursorY)
    {
    }

    bool shows(double x, double y) const
    {
        return m_params.xMin <= x && x <= m_params.xMax && m_params.yMin <= y && y <= m_params.yMax;
    }
    double xDistance(double x) const
    {
        return std::abs(m_cursorX - (x - m_params.xMin) * percent / m_width);
    }
    double yDistance(double y) const
    {
        return std::abs(m_cursorY - (m_hasHeight ? (y - m_params.yMin) * percent / m_height : 0.0));
    }
    /// The cursor's price.
    double cursorPrice() const { return m_params.xMin + m_params.cursorX; }

    /// No more than the vertical distance of any visible value within bounds; infinite where none is visible.
    double leastYDistance(SampleIndex::Bounds bounds) const
    {
        const double low = std::max(bounds.low, m_params.yMin);
        const double high = std::min(bounds.high, m_params.yMax);
        if (!(low <= high))
            return std::numeric_limits<double>::infinity();
        const double fromLow = m_cursorY - (m_hasHeight ? (low - m_params.yMin) * percent / m_height : 0.0);
        const double fromHigh
            = (m_hasHeight ? (high - m_params.yMin) * percent / m_height : 0.0) - m_cursorY;
        return std::max({0.0, -fromLow, -fromHigh});
    }

private:
    const ClosestPointCalcParams& m_params;
    double m_width;
    double m_height;
    bool m_hasHeight;
    double m_cursorX;
    double m_cursorY;
};

/// The nearest of the samples shown so far, of equally near ones the first.
class Nearest {
public:
    explicit Nearest(const View& view)
        : m_view(view)
    {
    }

    void show(double x, double y, int index)
    {
        if (!m_view.shows(x, y))
            return;
        const double distance = m_view.xDistance(x) + m_view.yDistance(y);
        if (distance < m_best || (distance == m_best && index < m_found.index)) {
            m_best = distance;
            m_found.distance = distance;
            m_found.index = index;
        }
    }

    bool canBeBeatenBy(double leastDistance) const { return leastDistance <= m_best; }
    const ClosestPointParams& found() const { return m_found; }

private:
    const View& m_view;
    ClosestPointParams m_found;
    double m_best = std::numeric_limits<double>::max();
};

/// Looks through blocks of samples to one side of the cursor's price, away from it, for as long as their
/// prices are not too far away by themselves.
void showSide(const SampleIndex& index, const View& view, Nearest& nearest, int from, bool upwards)
{
    constexpr int size = SampleIndex::blockSize;
    const int count = index.size();
    while (upwards ? from < count : from > 0) {
        // Blocks begin at multiples of their size, so that their bounds are known.
        const int begin = upwards ? from : (from - 1) / size * size;
        const int end = upwards ? std::min(count, (from / size + 1) * size) : from;
        const double leastX = view.xDistance(index.x(upwards ? begin : end - 1));
        if (!nearest.canBeBeatenBy(leastX))
            return;
        if (nearest.canBeBeatenBy(leastX + view.leastYDistance(index.bounds(begin, end)))) {
            for (int i = begin; i < end; ++i)
                nearest.show(index.x(i), index.y(i), i);
        }
        from = upwards ? end : begin;
    }
}

}

ClosestPointParams ClosestPoint::find(
    int count, const std::function<QPointF(int)>& sample, const ClosestPointCalcParams& params)
{
    const View view(params);
    Nearest nearest(view);
    for (int i = 0; i < count; ++i) {
        const QPointF point = sample(i);
        nearest.show(point.x(), point.y(), i);
    }
    return nearest.found();
}

ClosestPointParams ClosestPoint::find(const SampleIndex& index, const ClosestPointCalcParams& params)
{
    const View view(params);
    Nearest nearest(view);
    if (index.isAscending() && index.isFinite()) {
        const int start = index.lowerBound(view.cursorPrice());
        showSide(index, view, nearest, start, true);
        showSide(index, view, nearest, start, false);
    } else {
        for (int i = 0; i < index.size(); ++i)
            nearest.show(index.x(i), index.y(i), i);
    }
    return nearest.found();
}
