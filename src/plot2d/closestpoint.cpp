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
    double distance(double x, double y) const
    {
        return std::abs(m_cursorX - xPercent(x)) + std::abs(m_cursorY - yPercent(y));
    }
    /// No more than the horizontal distance of any sample with this price or one further up, or down; below
    /// zero for one on the other side of the cursor.
    double xDistanceAbove(double x) const { return xPercent(x) - m_cursorX; }
    double xDistanceBelow(double x) const { return m_cursorX - xPercent(x); }
    /// The cursor's price.
    double cursorPrice() const { return m_params.xMin + m_params.cursorX; }

    /// No more than the vertical distance of any visible value within bounds; infinite where none is visible.
    double leastYDistance(SampleIndex::Bounds bounds) const
    {
        const double low = std::max(bounds.low, m_params.yMin);
        const double high = std::min(bounds.high, m_params.yMax);
        if (!(low <= high))
            return std::numeric_limits<double>::infinity();
        return std::max({0.0, yPercent(low) - m_cursorY, m_cursorY - yPercent(high)});
    }

private:
    double xPercent(double x) const { return (x - m_params.xMin) * percent / m_width; }
    double yPercent(double y) const { return m_hasHeight ? (y - m_params.yMin) * percent / m_height : 0.0; }

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
        const double distance = m_view.distance(x, y);
        if (distance < m_best || (distance == m_best && index < m_found.index)) {
            m_best = distance;
            m_found.distance = distance;
            m_found.index = index;
        }
    }

    void showEvery(int step, const SampleIndex& samples, int begin, int end)
    {
        for (int i = begin; i < end; i += step)
            show(samples.x(i), samples.y(i), i);
    }

    bool canBeBeatenBy(double leastDistance) const { return leastDistance <= m_best; }
    const ClosestPointParams& found() const { return m_found; }

private:
    const View& m_view;
    ClosestPointParams m_found;
    double m_best = std::numeric_limits<double>::max();
};

constexpr int block = SampleIndex::blockSize;
constexpr int largeBlock = block * block;

enum class Side { Below, Above };

/// Looks through ascending samples to one side of the cursor's price, away from it, for as long as their
/// prices alone are not too far away; what lies too high or too low is passed over in blocks.
class SideSearch {
public:
    SideSearch(const SampleIndex& index, const View& view, Nearest& nearest, Side side)
        : m_index(index)
        , m_view(view)
        , m_nearest(nearest)
        , m_side(side)
    {
    }

    /// The samples from this one on, or those before it.
    void from(int next)
    {
        while (hasMore(next) && m_nearest.canBeBeatenBy(leastXDistance(next))) {
            const int end = endOfBlock(next, largeBlock);
            if (canBeat(next, end))
                searchLargeBlock(next, end);
            next = end;
        }
    }

private:
    bool hasMore(int next) const { return m_side == Side::Above ? next < m_index.size() : next > 0; }

    /// The end, away from the cursor, of the block that begins or goes on here. Blocks lie at multiples of
    /// their size, so that their bounds are known.
    int endOfBlock(int next, int size) const
    {
        return m_side == Side::Above ? std::min(m_index.size(), (next / size + 1) * size)
                                     : (next - 1) / size * size;
    }

    double leastXDistance(int next) const
    {
        return m_side == Side::Above ? m_view.xDistanceAbove(m_index.x(next))
                                     : m_view.xDistanceBelow(m_index.x(next - 1));
    }

    bool canBeat(int next, int end) const
    {
        const auto [first, last] = std::minmax(next, end);
        return m_nearest.canBeBeatenBy(
            leastXDistance(next) + m_view.leastYDistance(m_index.bounds(first, last)));
    }

    void searchLargeBlock(int next, int end)
    {
        showEvery(block, next, end);
        while (next != end) {
            const int blockEnd = endOfBlock(next, block);
            if (canBeat(next, blockEnd))
                showEvery(1, next, blockEnd);
            next = blockEnd;
        }
    }

    void showEvery(int step, int next, int end)
    {
        const auto [first, last] = std::minmax(next, end);
        m_nearest.showEvery(step, m_index, first, last);
    }

    const SampleIndex& m_index;
    const View& m_view;
    Nearest& m_nearest;
    Side m_side;
};

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
        // A few samples from everywhere, so that most blocks are too far away from the start.
        nearest.showEvery(largeBlock, index, 0, index.size());
        const int start = index.lowerBound(view.cursorPrice());
        SideSearch(index, view, nearest, Side::Above).from(start);
        SideSearch(index, view, nearest, Side::Below).from(start);
    } else {
        nearest.showEvery(1, index, 0, index.size());
    }
    return nearest.found();
}
