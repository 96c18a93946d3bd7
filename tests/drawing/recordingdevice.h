#pragma once

#include <QColor>
#include <QLineF>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPolygonF>
#include <QRectF>
#include <QVector>

#include <memory>

/// A rectangle that was filled, and how.
struct FilledRectangle {
    QRectF rectangle;
    QColor color;
    bool isSoft = false;
    bool isOutlined = false;
};

/// Keeps what a painter draws, instead of drawing it. To the painter it is a raster, if not said otherwise.
class RecordingDevice : public QPaintDevice {
public:
    explicit RecordingDevice(QPaintEngine::Type type = QPaintEngine::Raster);
    ~RecordingDevice() override;

    QPaintEngine* paintEngine() const override;

    QVector<QLineF> lines;
    QVector<FilledRectangle> rectangles;
    /// Also the outlines of polygons and paths.
    QVector<QPolygonF> polylines;
    QVector<QPointF> points;
    /// Where pictures were drawn, as those of symbols.
    QVector<QRectF> pictures;
    /// Within which bounds each of all these was drawn, in the order of drawing; null for none.
    QVector<QRectF> clips;
    /// Whether one of the lines was soft.
    bool hasSoftLines = false;

    bool isEmpty() const;
    /// The rectangle around all that was drawn.
    QRectF reached() const;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    class Engine;
    std::unique_ptr<Engine> m_engine;
};
