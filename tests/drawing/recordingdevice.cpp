#include "recordingdevice.h"

#include <QPainter>
#include <QPainterPath>

class RecordingDevice::Engine : public QPaintEngine {
public:
    Engine(RecordingDevice& device, Type type)
        : QPaintEngine(AllFeatures)
        , m_device(device)
        , m_type(type)
    {
    }

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return m_type; }
    using QPaintEngine::drawLines;
    using QPaintEngine::drawPoints;
    using QPaintEngine::drawPolygon;
    using QPaintEngine::drawRects;
    void updateState(const QPaintEngineState&) override { }
    void drawPixmap(const QRectF& place, const QPixmap&, const QRectF&) override
    {
        noteClip();
        m_device.pictures.append(place);
    }

    void drawLines(const QLineF* lines, int count) override
    {
        noteClip();
        m_device.hasSoftLines = m_device.hasSoftLines || painter()->testRenderHint(QPainter::Antialiasing);
        for (int i = 0; i < count; ++i)
            m_device.lines.append(lines[i]);
    }

    void drawRects(const QRectF* rectangles, int count) override
    {
        noteClip();
        for (int i = 0; i < count; ++i)
            m_device.rectangles.append({rectangles[i], painter()->brush().color(),
                painter()->testRenderHint(QPainter::Antialiasing), painter()->pen().style() != Qt::NoPen});
    }

    void drawPolygon(const QPointF* points, int count, PolygonDrawMode) override
    {
        noteClip();
        QPolygonF polyline;
        for (int i = 0; i < count; ++i)
            polyline.append(points[i]);
        m_device.polylines.append(polyline);
    }

    void drawPath(const QPainterPath& path) override
    {
        noteClip();
        const QList<QPolygonF> polylines = path.toSubpathPolygons();
        for (const QPolygonF& polyline : polylines)
            m_device.polylines.append(polyline);
    }

    void drawPoints(const QPointF* points, int count) override
    {
        noteClip();
        for (int i = 0; i < count; ++i)
            m_device.points.append(points[i]);
    }

private:
    void noteClip()
    {
        m_device.clips.append(painter()->hasClipping() ? painter()->clipBoundingRect() : QRectF());
    }

    RecordingDevice& m_device;
    Type m_type;
};

RecordingDevice::RecordingDevice(QPaintEngine::Type type)
    : m_engine(std::make_unique<Engine>(*this, type))
{
}

RecordingDevice::~RecordingDevice() = default;

QPaintEngine* RecordingDevice::paintEngine() const
{
    return m_engine.get();
}

bool RecordingDevice::isEmpty() const
{
    return lines.isEmpty() && rectangles.isEmpty() && polylines.isEmpty() && points.isEmpty()
        && pictures.isEmpty();
}

QRectF RecordingDevice::reached() const
{
    QPolygonF corners;
    for (const FilledRectangle& filled : rectangles)
        corners << filled.rectangle.topLeft() << filled.rectangle.bottomRight();
    for (const QRectF& picture : pictures)
        corners << picture.topLeft() << picture.bottomRight();
    for (const QLineF& line : lines)
        corners << line.p1() << line.p2();
    for (const QPolygonF& line : polylines)
        corners << line;
    for (const QPointF& point : points)
        corners << point;
    return corners.boundingRect();
}

int RecordingDevice::metric(PaintDeviceMetric metric) const
{
    constexpr int size = 1000;
    constexpr int dotsPerInch = 96;
    switch (metric) {
    case PdmWidth:
    case PdmHeight:
    case PdmWidthMM:
    case PdmHeightMM:
        return size;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return dotsPerInch;
    case PdmDevicePixelRatio:
        return 1;
    default:
        return QPaintDevice::metric(metric);
    }
}
