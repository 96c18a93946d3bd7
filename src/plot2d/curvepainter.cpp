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

/// The width of a pen whose lines along a column are rectangles of whole pixels; 0 for any other.
int squareWidth(const QPainter& painter)
{
    constexpr double widest = 8.0;
    const QPen& pen = painter.pen();
    const double width = pen.widthF();
    const bool isWhole = width >= 2.0 && width <= widest && std::floor(width) == width;
    return isWhole && pen.capStyle() == Qt::SquareCap && !pen.isCosmetic()
            && !painter.testRenderHint(QPainter::Antialiasing)
        ? static_cast<int>(width)
        : 0;
}

void drawStrokes(QPainter& painter, CurveFolding::Strokes strokes, int penWidth)
{
    painter.drawLines(strokes.lines);
    for (QRect& column : strokes.columns) {
        const QPoint corner = column.topLeft() - QPoint(penWidth / 2, penWidth / 2);
        column = QRect(corner, column.size() + QSize(penWidth - 1, penWidth - 1));
    }
    const QPen pen = painter.pen();
    const QBrush brush = painter.brush();
    painter.setPen(Qt::NoPen);
    painter.setBrush(pen.brush());
    painter.drawRects(strokes.columns);
    painter.setBrush(brush);
    painter.setPen(pen);
}

bool isWorthFolding(const CurveFolding::Stretch& seen, const QRectF& area)
{
    constexpr double samplesToAColumn = 2.0;
    return !seen.index.isFinite() || seen.end - seen.begin >= samplesToAColumn * area.width();
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
    const bool isPixelPen = isPixelLine(painter);
    if (isPixelPen) {
        seen.topRow = static_cast<int>(std::ceil(area.top()));
        seen.bottomRow = static_cast<int>(std::floor(area.bottom())) - 1;
    } else if (shape != CurveFolding::Shape::Straight || !isWorthFolding(seen, area)) {
        return false;
    }
    const int penWidth = isPixelPen ? 1 : squareWidth(painter);
    if (penWidth > 0) {
        drawStrokes(painter, CurveFolding::strokes(seen, shape, penWidth), penWidth);
        return true;
    }
    const QVector<QPolygonF> lines = CurveFolding::polylines(seen);
    for (const QPolygonF& line : lines)
        painter.drawPolyline(line);
    return true;
}
