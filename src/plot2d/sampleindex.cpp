#include "sampleindex_p.h"

#include "qtversions_p.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <typeinfo>

static_assert(sizeof(QPointF) == 2 * sizeof(double), "samples are read as pairs of doubles");

namespace {

using Bounds = SampleIndex::Bounds;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr Bounds noBounds{infinity, -infinity};

Bounds united(Bounds a, Bounds b)
{
    return {b.low < a.low ? b.low : a.low, b.high > a.high ? b.high : a.high};
}

std::uint64_t bitsOf(double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

/// The bounds of a stretch of values that stand `Stride` doubles apart.
template <int Stride> Bounds boundsOf(const double* y, std::ptrdiff_t count)
{
    // Four chains of comparisons that do not wait for each other.
    Bounds a = noBounds;
    Bounds b = noBounds;
    Bounds c = noBounds;
    Bounds d = noBounds;
    const std::ptrdiff_t inFours = count - count % 4;
    for (std::ptrdiff_t i = 0; i < inFours; i += 4) {
        a = united(a, {y[i * Stride], y[i * Stride]});
        b = united(b, {y[(i + 1) * Stride], y[(i + 1) * Stride]});
        c = united(c, {y[(i + 2) * Stride], y[(i + 2) * Stride]});
        d = united(d, {y[(i + 3) * Stride], y[(i + 3) * Stride]});
    }
    for (std::ptrdiff_t i = inFours; i < count; ++i)
        a = united(a, {y[i * Stride], y[i * Stride]});
    return united(united(a, b), united(c, d));
}

// The tests of a stretch gather bits instead of branching, so that compilers make vectors of them.

template <int Stride> bool areFinite(const double* numbers, std::ptrdiff_t count)
{
    // A finite number less itself is zero, whose bits are zero; any other gives a NaN.
    std::uint64_t bits = 0;
    for (std::ptrdiff_t i = 0; i < count; ++i)
        bits |= bitsOf(numbers[i * Stride] - numbers[i * Stride]);
    return bits == 0;
}

template <int Stride> bool areAscending(const double* x, std::ptrdiff_t count)
{
    std::uint64_t falls = 0;
    for (std::ptrdiff_t i = 1; i < count; ++i)
        falls |= std::uint64_t(x[i * Stride] < x[(i - 1) * Stride]);
    return falls == 0;
}

/// The series as one of exactly this class; null for any other, and for none.
template <class Series> const Series* exactly(const QwtSeriesData<QPointF>* series)
{
    return series && typeid(*series) == typeid(Series) ? static_cast<const Series*>(series) : nullptr;
}

}

std::unique_ptr<SampleIndex> SampleIndex::of(const QwtSeriesData<QPointF>* series)
{
    if (const auto* points = exactly<QwtPointSeriesData>(series))
        return std::unique_ptr<SampleIndex>(new SampleIndex(points->samples()));
    if (const auto* arrays = exactly<QtVersions::PointArrays>(series))
        return std::unique_ptr<SampleIndex>(new SampleIndex(arrays->xData(), arrays->yData()));
    return nullptr;
}

SampleIndex::SampleIndex(const QVector<QPointF>& samples)
    : m_points(samples)
    , m_stride(2)
    , m_size(int(samples.size()))
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
    , m_size(int(std::min(x.size(), y.size())))
{
    build();
}

bool SampleIndex::describes(const QwtSeriesData<QPointF>* series) const
{
    // Vectors that this index shares keep their place as long as it lives.
    if (const auto* points = exactly<QwtPointSeriesData>(series)) {
        const QVector<QPointF> samples = points->samples();
        return m_stride == 2 && samples.constData() == m_points.constData() && samples.size() == m_size;
    }
    if (const auto* arrays = exactly<QtVersions::PointArrays>(series)) {
        return m_stride == 1 && arrays->xData().constData() == m_xs.constData()
            && arrays->yData().constData() == m_ys.constData()
            && std::min(arrays->xData().size(), arrays->yData().size()) == m_size;
    }
    return false;
}

template <int Stride> bool SampleIndex::extendFinite(int count)
{
    const double* const x = m_x + std::ptrdiff_t(m_finiteCount) * Stride;
    const double* const y = m_y + std::ptrdiff_t(m_finiteCount) * Stride;
    if (!areFinite<Stride>(x, count) || !areFinite<Stride>(y, count))
        return false;
    m_ascending
        = m_ascending && areAscending<Stride>(x, count) && (m_finiteCount == 0 || !(*x < *(x - Stride)));
    m_finiteCount += count;
    return true;
}

template <int Stride> void SampleIndex::buildBlocks()
{
    m_blocks.reserve(std::size_t(m_size / blockSize));
    while (m_finiteCount + blockSize <= m_size && extendFinite<Stride>(blockSize))
        m_blocks.push_back(
            boundsOf<Stride>(m_y + std::ptrdiff_t(m_finiteCount - blockSize) * Stride, blockSize));
    while (m_finiteCount < m_size && extendFinite<Stride>(1)) { }

    const int blocks = static_cast<int>(m_blocks.size());
    m_largeBlocks.reserve(std::size_t(blocks / blockSize));
    for (int i = 0; i < blocks / blockSize; ++i)
        m_largeBlocks.push_back(merged(m_blocks, i * blockSize, (i + 1) * blockSize, noBounds));
}

void SampleIndex::build()
{
    if (m_stride == 1)
        buildBlocks<1>();
    else
        buildBlocks<2>();
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
    const double* const y = m_y + begin * m_stride;
    return m_stride == 1 ? boundsOf<1>(y, end - begin) : boundsOf<2>(y, end - begin);
}

SampleIndex::Bounds SampleIndex::merged(const std::vector<Bounds>& blocks, int begin, int end, Bounds bounds)
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
    const Bounds ends = united(scanned(begin, firstBlock * blockSize), scanned(lastBlock * blockSize, end));

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
