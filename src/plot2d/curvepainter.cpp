#include "curvepainter_p.h"

#include "sampleindex_p.h"

#include <QPaintEngine>
#include <QPainter>

#include <qwt_painter.h>

#include <cmath>

namespace {

bool isPlainPainter(const QPainter& painter)
{
    const QPaintEngine* const engine = painter.paintEngine();
    return engine && engine->type() == QPaintEngine::Raster && painter.opacity() >= 1.0
        && painter.compositionMode() == QPainter::CompositionMode_SourceOver
        && painter.deviceTransform().type() <= QTransform::TxTranslate;
}

bool isOpaqueLine(const QPen& pen)
{
    return pen.style() == Qt::SolidLine && pen.brush().style() == Qt::SolidPattern
        && pen.color().alpha() == 255;
}

/// Whether a line covers its end pixels and is one pixel wide.
bool isPixelLine(const QPainter& painter)
{
    return !painter.testRenderHint(QPainter::Antialiasing) && painter.pen().widthF() <= 1.0
        && painter.pen().capStyle() != Qt::FlatCap;
}

void drawStrokes(QPainter& painter, const CurveFolding::Strokes& strokes)
{
    painter.drawLines(strokes.lines);
    const QPen pen = painter.pen();
    const QBrush brush = painter.brush();
    painter.setPen(Qt::NoPen);
    painter.setBrush(pen.brush());
    painter.drawRects(strokes.columns);
    painter.setBrush(brush);
    painter.setPen(pen);
}

}

bool CurvePainter::draw(
    QPainter& painter, const CurveFolding::Stretch& all, const QRectF& area, CurveFolding::Shape shape)
{
    if (all.xMap.transformation() || all.yMap.transformation() || !QwtPainter::roundingAlignment(&painter)
        || !isPlainPainter(painter) || !isOpaqueLine(painter.pen()))
        return false;

    const int reach = 1 + static_cast<int>(std::ceil(painter.pen().widthF()));
    CurveFolding::Stretch seen = CurveFolding::visibleStretch(
        all, CurveFolding::pixel(area.left()) - reach, CurveFolding::pixel(area.right()) + reach);
    if (isPixelLine(painter)) {
        seen.topRow = static_cast<int>(std::ceil(area.top()));
        seen.bottomRow = static_cast<int>(std::floor(area.bottom())) - 1;
        drawStrokes(painter, CurveFolding::strokes(seen, shape));
        return true;
    }

    constexpr double samplesWorthFolding = 2.0;
    if (shape != CurveFolding::Shape::Straight
        || (all.index.isFinite() && seen.end - seen.begin < samplesWorthFolding * area.width()))
        return false;
    const QVector<QPolygonF> lines = CurveFolding::polylines(seen);
    for (const QPolygonF& line : lines)
        painter.drawPolyline(line);
    return true;
}
