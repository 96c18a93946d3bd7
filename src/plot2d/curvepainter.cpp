#include "curvepainter_p.h"

#include "softfolding_p.h"

#include <QPaintEngine>
#include <QPainter>

#include <qwt_clipper.h>
#include <qwt_painter.h>

#include <cmath>

namespace {

bool isWhole(double number)
{
    return std::floor(number) == number;
}

/// Whether the painter takes what it is given, turned nowhere and blended with nothing.
bool isPlainPainter(QPainter& painter)
{
    const QPaintEngine* const engine = painter.paintEngine();
    return engine && engine->type() == QPaintEngine::Raster && painter.opacity() >= 1.0
        && painter.compositionMode() == QPainter::CompositionMode_SourceOver
        && painter.deviceTransform().type() <= QTransform::TxScale && QwtPainter::roundingAlignment(&painter);
}

/// Whether whole numbers are pixels of the device.
bool isPixelPainter(const QPainter& painter)
{
    const QTransform transform = painter.deviceTransform();
    return transform.type() <= QTransform::TxTranslate && isWhole(transform.dx()) && isWhole(transform.dy())
        && !painter.testRenderHint(QPainter::Qt4CompatiblePainting);
}

bool isOpaqueLine(const QPen& pen)
{
    return pen.style() == Qt::SolidLine && pen.brush().style() == Qt::SolidPattern
        && pen.color().alpha() == 255;
}

/// The width of a pen whose lines are made of whole pixels, as long as they run along rows or columns, and
/// cover their ends; 0 for any other.
int pixelWidth(const QPen& pen)
{
    constexpr double widest = 8.0;
    const double width = pen.widthF();
    if (width <= 1.0)
        return pen.capStyle() == Qt::FlatCap ? 0 : 1;
    const bool isSquare = pen.capStyle() == Qt::SquareCap && !pen.isCosmetic();
    return isSquare && isWhole(width) && width <= widest ? static_cast<int>(width) : 0;
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

void drawSoftStrokes(QPainter& painter, const SoftFolding::Strokes& strokes)
{
    painter.drawLines(strokes.lines);
    painter.save();
    // Qwt asks for antialiasing by more than one hint.
    painter.setRenderHints(painter.renderHints(), false);
    QColor color = painter.pen().color();
    painter.setPen(Qt::NoPen);
    const auto fill = [&](const QVector<QRect>& rectangles, double cover) {
        color.setAlphaF(cover);
        painter.setBrush(color);
        painter.drawRects(rectangles);
    };
    for (int passes = 1; passes <= SoftFolding::mostPasses; ++passes)
        fill(strokes.columns[std::size_t(passes)], SoftFolding::coverOfPasses(passes));
    fill(strokes.ends, SoftFolding::coverOfEnds);
    painter.restore();
}

void drawPolylines(QPainter& painter, const QVector<QPolygonF>& lines, const QRectF& area)
{
    // Far corners cost the rasteriser its precision.
    const double reach = std::max(1.0, painter.pen().widthF());
    const QRectF clip = area.adjusted(-reach, -reach, reach, reach);
    for (const QPolygonF& line : lines)
        QwtPainter::drawPolyline(&painter, QwtClipper::clipPolygonF(clip, line));
}

/// Whether wide or soft lines through the samples look the same through the columns.
bool areCloseTogether(const CurveFolding::Stretch& seen, const QRectF& area)
{
    constexpr double samplesToAColumn = 2.0;
    return seen.end - seen.begin >= samplesToAColumn * area.width();
}

CurveFolding::Rows rowsInside(const QRectF& area)
{
    return {static_cast<int>(std::ceil(area.top())), static_cast<int>(std::floor(area.bottom())) - 1};
}

/// By which lines a pen's way through the samples is drawn.
enum class Folding { None, Strokes, SoftStrokes, Polylines };

Folding foldingFor(const QPainter& painter, const CurveFolding::Stretch& seen, const QRectF& area,
    CurveFolding::Shape shape)
{
    const QPen pen = painter.pen();
    const bool isSoft = painter.testRenderHint(QPainter::Antialiasing);
    const int width = isPixelPainter(painter) ? pixelWidth(pen) : 0;
    if (width == 1 && !isSoft)
        return Folding::Strokes;
    const bool hasMitres = pen.joinStyle() == Qt::MiterJoin || pen.joinStyle() == Qt::SvgMiterJoin;
    if (shape != CurveFolding::Shape::Straight || hasMitres || !areCloseTogether(seen, area))
        return Folding::None;
    if (width == 1 && isWhole(pen.widthF()))
        return Folding::SoftStrokes;
    return width > 1 && !isSoft ? Folding::Strokes : Folding::Polylines;
}

}

bool CurvePainter::draw(
    QPainter& painter, const CurveFolding::Stretch& all, const QRectF& area, CurveFolding::Shape shape)
{
    const QPen pen = painter.pen();
    if (all.xMap.transformation() || all.yMap.transformation() || !isPlainPainter(painter)
        || !isOpaqueLine(pen))
        return false;

    const int reach = 1 + static_cast<int>(std::ceil(pen.widthF()));
    const CurveFolding::Stretch seen
        = all.seenBetween(wholePixel(area.left()) - reach, wholePixel(area.right()) + reach);
    switch (foldingFor(painter, seen, area, shape)) {
    case Folding::None:
        return false;
    case Folding::Strokes: {
        const int width = pixelWidth(pen);
        drawStrokes(painter, CurveFolding::strokes(seen, shape, width, rowsInside(area)), width);
        break;
    }
    case Folding::SoftStrokes:
        drawSoftStrokes(painter, SoftFolding::strokes(seen));
        break;
    case Folding::Polylines:
        drawPolylines(painter, CurveFolding::polylines(seen), area);
        break;
    }
    return true;
}
