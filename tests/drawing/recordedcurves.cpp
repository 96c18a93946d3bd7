#include "recordedcurves.h"

#include <QTest>

#include <qwt_scale_map.h>

namespace {

QwtScaleMap pixels()
{
    QwtScaleMap map;
    map.setScaleInterval(0.0, 1000.0);
    map.setPaintInterval(0.0, 1000.0);
    return map;
}

}

RecordedCurves::Curve::Curve(const QVector<QPointF>& samples)
    : m_series(samples)
    , m_index(SampleIndex::of(&m_series))
{
}

CurveFolding::Stretch RecordedCurves::Curve::stretch(int begin) const
{
    return {*m_index, pixels(), pixels(), begin, m_index->size()};
}

QVector<QPointF> RecordedCurves::zigzag(int count, double low, double high)
{
    constexpr int columns = 100;
    QVector<QPointF> samples;
    for (int i = 0; i < count; ++i)
        samples.append(QPointF(i * columns / count, i % 2 == 0 ? low : high));
    return samples;
}

void RecordedCurves::appendColumn(QVector<QPointF>& samples, double x, const QVector<double>& rows)
{
    for (const double row : rows)
        samples.append(QPointF(x, row));
}

QPen RecordedCurves::pen(double width, Qt::PenCapStyle cap, Qt::PenJoinStyle join)
{
    return QPen(QBrush(Qt::blue), width, Qt::SolidLine, cap, join);
}

void RecordedCurves::hard(QPainter& painter)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void RecordedCurves::soft(QPainter& painter)
{
    painter.setRenderHint(QPainter::Antialiasing);
}

bool RecordedCurves::draws(RecordingDevice& device, const Prepare& prepare, const QPen& used,
    const std::function<bool(QPainter&)>& draw)
{
    const QBrush brush(Qt::cyan);
    QPainter painter(&device);
    prepare(painter);
    painter.setPen(used);
    painter.setBrush(brush);
    const QPainter::RenderHints hints = painter.renderHints();
    const bool isClipped = painter.hasClipping();
    const bool answer = draw(painter);
    const bool isSame = painter.pen() == used && painter.brush() == brush && painter.renderHints() == hints
        && painter.hasClipping() == isClipped;
    // Qt warns of a painter that ends with a state saved.
    painter.end();
    if (!isSame)
        QTest::qFail("the painter was not left as it was", __FILE__, __LINE__);
    return answer;
}

QVector<QRectF> RecordedCurves::bounds(const RecordingDevice& device)
{
    QVector<QRectF> found;
    for (const FilledRectangle& filled : device.rectangles)
        found.append(filled.rectangle);
    return found;
}
