#pragma once

#include "recordingdevice.h"

#include <plot2d/curvefolding_p.h>

#include <QPainter>
#include <QPen>

#include <qwt_point_data.h>

#include <functional>
#include <memory>

/// Curves whose numbers are pixels, drawn into a RecordingDevice.
namespace RecordedCurves {

using Prepare = std::function<void(QPainter&)>;

/// The area of a hundred columns that tests draw into.
const QRectF area(0.0, 0.0, 100.0, 50.0);

/// Samples and their index.
class Curve {
public:
    explicit Curve(const QVector<QPointF>& samples);
    /// All samples from one on.
    CurveFolding::Stretch stretch(int begin = 0) const;

private:
    QwtPointSeriesData m_series;
    std::unique_ptr<SampleIndex> m_index;
};

/// Up and down over the columns from 0 to 99.
QVector<QPointF> zigzag(int count, double low = 10.0, double high = 20.0);

/// Adds samples of one column.
void appendColumn(QVector<QPointF>& samples, double x, const QVector<double>& rows);

/// A blue one.
QPen pen(double width, Qt::PenCapStyle cap = Qt::SquareCap, Qt::PenJoinStyle join = Qt::BevelJoin);

/// For a painter that is to be as it comes, and for an antialiased one.
void hard(QPainter& painter);
void soft(QPainter& painter);

/// What a drawing answers. The test fails where it leaves the painter otherwise than it was.
bool draws(RecordingDevice& device, const Prepare& prepare, const QPen& used,
    const std::function<bool(QPainter&)>& draw);

/// Where rectangles were filled.
QVector<QRectF> bounds(const RecordingDevice& device);

}
