#pragma once

#include <QPointF>
#include <QRectF>
#include <QVector>

#include <qwt_series_data.h>

#include <cstddef>
#include <memory>
#include <vector>

/// What is known beforehand of a curve's samples: how far they are finite and ascending, and the lowest and
/// highest value of each block of them. It makes questions about a stretch of samples cost what the stretch's
/// ends cost.
///
/// It shares the samples, so that they cannot change under it; whoever puts others in their place finds out
/// with describes().
class SampleIndex {
public:
    /// A lower and an upper bound of values; inverted where there is none.
    struct Bounds {
        double low = 0.0;
        double high = 0.0;
    };

    /// Indexes the samples of a series; null for a series whose samples cannot be shared: that is, any but
    /// those which the setSamples() of QwtPlotCurve make of vectors and of arrays. A class derived from these
    /// may answer otherwise than its samples say, so it has no index either.
    static std::unique_ptr<SampleIndex> of(const QwtSeriesData<QPointF>* series);

    /// Whether these are the series' samples still.
    bool describes(const QwtSeriesData<QPointF>* series) const;

    int size() const { return m_size; }
    double x(int i) const { return m_x[i * m_stride]; }
    double y(int i) const { return m_y[i * m_stride]; }

    /// The samples before the first one that is not finite.
    int finiteCount() const { return m_finiteCount; }
    bool isFinite() const { return m_finiteCount == m_size; }
    /// Whether the x of the samples before the first one that is not finite never falls.
    bool isAscending() const { return m_ascending; }

    /// The first of the finite samples whose x is not below, or above, a value; their number where there is
    /// none. For ascending samples.
    int lowerBound(double x) const;
    int upperBound(double x) const;

    /// The bounds of the values of the samples from begin up to, but without, end. All must be finite.
    Bounds bounds(int begin, int end) const;

    /// The rectangle around all samples, which must be finite; invalid without samples. Qwt's own differs by
    /// its rounding errors.
    QRectF boundingRectangle() const { return m_rectangle; }

    /// The bytes that the index takes beside the samples.
    std::size_t extraBytes() const;

    /// The samples of a block, and the blocks of a block of blocks.
    static constexpr int blockSize = 32;

private:
    explicit SampleIndex(const QVector<QPointF>& samples);
    SampleIndex(const QVector<double>& x, const QVector<double>& y);

    void build();
    template <int Stride> void buildBlocks();
    /// Takes so many more samples for finite; false, with nothing taken, where one of them is not.
    template <int Stride> bool extendFinite(int count);
    Bounds scanned(int begin, int end) const;
    static Bounds merged(const std::vector<Bounds>& blocks, int begin, int end, Bounds bounds);

    // Shared with the series: m_x and m_y point into them.
    QVector<QPointF> m_points;
    QVector<double> m_xs;
    QVector<double> m_ys;
    const double* m_x = nullptr;
    const double* m_y = nullptr;
    /// The doubles from one sample to the next.
    std::ptrdiff_t m_stride = 1;
    int m_size = 0;

    int m_finiteCount = 0;
    bool m_ascending = true;
    std::vector<Bounds> m_blocks;
    std::vector<Bounds> m_largeBlocks;
    QRectF m_rectangle;
};
