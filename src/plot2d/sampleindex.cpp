#include "sampleindex_p.h"

#include <qwt_point_data.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

static_assert(sizeof(QPointF) == 2 * sizeof(double), "samples are read as pairs of doubles");

namespace {

using Bounds = SampleIndex::Bounds;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr Bounds noBounds{infinity, -infinity};

Bounds united(Bounds a, Bounds b)
{
    return {b.low < a.low ? b.low : a.low, b.high > a.high ? b.high : a.high};
}

/// The exponent of an infinity or a NaN, which a comparison of integers finds faster than one of doubles.
bool isNotFinite(double value)
{
    constexpr std::uint64_t exponent = 0x7ff0000000000000u;
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof(bits));
    return (bits & exponent) == exponent;
}

}

std::unique_ptr<SampleIndex> SampleIndex::of(const QwtSeriesData<QPointF>* series)
{
    if (const auto* points = dynamic_cast<const QwtPointSeriesData*>(series))
        return std::unique_ptr<SampleIndex>(new SampleIndex(points->samples()));
    if (const auto* arrays = dynamic_cast<const QwtPointArrayData*>(series))
        return std::unique_ptr<SampleIndex>(new SampleIndex(arrays->xData(), arrays->yData()));
    return nullptr;
}

SampleIndex::SampleIndex(const QVector<QPointF>& samples)
    : m_points(samples)
    , m_stride(2)
    , m_size(samples.size())
{
    m_x = reinterpret_cast<const double*>(m_points.constData());
    m_y = m_x + 1;
    build();
}

SampleIndex::SampleIndex(const QVector<double>& x, const QVector<double>& y)
    : m_xs(x)
    , m_ys(y)
    , m_x(m_xs.constData())
    , m_y(m_ys.constData())
    , m_size(std::min(x.size(), y.size()))
{
    build();
}

bool SampleIndex::describes(const QwtSeriesData<QPointF>* series) const
{
    // Vectors that this index shares keep their place as long as it lives.
    if (const auto* points = dynamic_cast<const QwtPointSeriesData*>(series)) {
        const QVector<QPointF> samples = points->samples();
        return m_stride == 2 && samples.constData() == m_points.constData() && samples.size() == m_size;
    }
    if (const auto* arrays = dynamic_cast<const QwtPointArrayData*>(series)) {
        return m_stride == 1 && arrays->xData().constData() == m_xs.constData()
            && arrays->yData().constData() == m_ys.constData()
            && std::min(arrays->xData().size(), arrays->yData().size()) == m_size;
    }
    return false;
}

void SampleIndex::findFiniteCount()
{
    constexpr int stretch = 256;
    int begin = 0;
    double last = -infinity;
    while (begin < m_size) {
        const int end = std::min(m_size, begin + stretch);
        bool broken = false;
        bool falls = false;
        for (int i = begin; i < end; ++i) {
            broken |= isNotFinite(x(i)) | isNotFinite(y(i));
            falls |= x(i) < last;
            last = x(i);
        }
        if (broken)
            break;
        m_ascending = m_ascending && !falls;
        begin = end;
    }
    // What is left of the stretch that is broken.
    last = begin > 0 ? x(begin - 1) : -infinity;
    while (begin < m_size && std::isfinite(x(begin)) && std::isfinite(y(begin))) {
        m_ascending = m_ascending && !(x(begin) < last);
        last = x(begin++);
    }
    m_finiteCount = begin;
}

void SampleIndex::build()
{
    findFiniteCount();
    const int blocks = m_finiteCount / blockSize;
    m_blocks.reserve(std::size_t(blocks));
    for (int i = 0; i < blocks; ++i)
        m_blocks.push_back(scanned(i * blockSize, (i + 1) * blockSize));
    for (int i = 0; i < blocks / blockSize; ++i)
        m_largeBlocks.push_back(merged(m_blocks, i * blockSize, (i + 1) * blockSize, noBounds));

    m_rectangle = QRectF(1.0, 1.0, -2.0, -2.0);
    if (!isFinite() || m_size == 0)
        return;
    double left = x(0);
    double right = x(m_size - 1);
    if (!m_ascending) {
        for (int i = 0; i < m_size; ++i) {
            left = std::min(left, x(i));
            right = std::max(right, x(i));
        }
    }
    const Bounds values = bounds(0, m_size);
    m_rectangle.setCoords(left, values.low, right, values.high);
}

int SampleIndex::lowerBound(double value) const
{
    int begin = 0;
    int count = m_finiteCount;
    while (count > 0) {
        const int half = count / 2;
        if (x(begin + half) < value) {
            begin += half + 1;
            count -= half + 1;
        } else {
            count = half;
        }
    }
    return begin;
}

int SampleIndex::upperBound(double value) const
{
    int begin = 0;
    int count = m_finiteCount;
    while (count > 0) {
        const int half = count / 2;
        if (!(value < x(begin + half))) {
            begin += half + 1;
            count -= half + 1;
        } else {
            count = half;
        }
    }
    return begin;
}

SampleIndex::Bounds SampleIndex::scanned(int begin, int end) const
{
    // Four chains of comparisons that do not wait for each other.
    Bounds a = noBounds;
    Bounds b = noBounds;
    Bounds c = noBounds;
    Bounds d = noBounds;
    int i = begin;
    for (; i + 4 <= end; i += 4) {
        a = united(a, {y(i), y(i)});
        b = united(b, {y(i + 1), y(i + 1)});
        c = united(c, {y(i + 2), y(i + 2)});
        d = united(d, {y(i + 3), y(i + 3)});
    }
    for (; i < end; ++i)
        a = united(a, {y(i), y(i)});
    return united(united(a, b), united(c, d));
}

SampleIndex::Bounds SampleIndex::merged(
    const std::vector<Bounds>& blocks, int begin, int end, Bounds bounds)
{
    for (int i = begin; i < end; ++i)
        bounds = united(bounds, blocks[std::size_t(i)]);
    return bounds;
}

SampleIndex::Bounds SampleIndex::bounds(int begin, int end) const
{
    const int firstBlock = (begin + blockSize - 1) / blockSize;
    const int lastBlock = end / blockSize;
    if (firstBlock >= lastBlock)
        return scanned(begin, end);
    const Bounds ends
        = united(scanned(begin, firstBlock * blockSize), scanned(lastBlock * blockSize, end));

    const int firstLarge = (firstBlock + blockSize - 1) / blockSize;
    const int lastLarge = lastBlock / blockSize;
    if (firstLarge >= lastLarge)
        return merged(m_blocks, firstBlock, lastBlock, ends);
    const Bounds left = merged(m_blocks, firstBlock, firstLarge * blockSize, ends);
    const Bounds right = merged(m_blocks, lastLarge * blockSize, lastBlock, left);
    return merged(m_largeBlocks, firstLarge, lastLarge, right);
}

std::size_t SampleIndex::extraBytes() const
{
    return sizeof(*this) + (m_blocks.capacity() + m_largeBlocks.capacity()) * sizeof(Bounds);
}
