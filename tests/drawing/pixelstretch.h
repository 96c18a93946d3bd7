#pragma once

#include <plot2d/curvefolding_p.h>

#include <qwt_point_data.h>

#include <limits>
#include <memory>

/// Samples that lie on the pixels of their numbers.
class PixelStretch {
public:
    using Samples = QVector<QPointF>;

    explicit PixelStretch(const Samples& samples)
        : m_series(samples)
        , m_index(SampleIndex::of(&m_series))
    {
        m_map.setScaleInterval(0.0, 1000.0);
        m_map.setPaintInterval(0.0, 1000.0);
    }

    CurveFolding::Stretch stretch() const { return {*m_index, m_map, m_map, 0, m_index->size()}; }

    /// A sample that breaks the curve.
    static constexpr QPointF gap() { return QPointF(std::numeric_limits<double>::quiet_NaN(), 0.0); }

private:
    QwtPointSeriesData m_series;
    std::unique_ptr<SampleIndex> m_index;
    QwtScaleMap m_map;
};
