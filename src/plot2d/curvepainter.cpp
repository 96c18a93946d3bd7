#include "curvepainter_p.h"

#include "qtversions_p.h"
#include "softfolding_p.h"

#include <QPaintEngine>
#include <QPainter>

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
    const QTransform& transform = painter.deviceTransform();
    return transform.type() <= QTransform::TxTranslate && isWhole(transform.dx()) && isWhole(transform.dy())
        && !QtVersions::paintsAsQt4(painter);
}

/// By how much a painter that turns nowhere makes the widths of a pen larger, at least.
double scaleOf(const QPainter& painter, const QPen& pen)
{
    const QTransform& transform = painter.deviceTransform();
    return pen.isCosmetic() ? 1.0 : std::min(std::abs(transform.m11()), std::abs(transform.m22()));
}

/// Qt makes lines of less than a pixel of the device paler, but for those of no width.
bool isOpaqueLine(const QPainter& painter)
{
    const QPen& pen = painter.pen();
    const double width = pen.widthF() * scaleOf(painter, pen);
    return pen.style() == Qt::SolidLine && pen.brush().style() == Qt::SolidPattern
        && pen.color().alpha() == 255 && (width == 0.0 || width >= 1.0);
}

/// The width of a pen whose lines are made of whole pixels, as long as they run along rows or columns, and
/// cover their ends; 0 for any other. Lines of an odd width stand between pixels where they are not straight.
int pixelWidth(const QPen& pen)
{
    constexpr double widest = 8.0;
    const double width = pen.widthF();
    if (width <= 1.0)
        return pen.capStyle() == Qt::FlatCap ? 0 : 1;
    const bool isSquare = pen.capStyle() == Qt::SquareCap && !pen.isCosmetic();
    return isSquare && isWhole(width / 2.0) && width <= widest ? static_cast<int>(width) : 0;
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

/// How far around an area Qwt draws lines.
double reachOf(const QPen& pen)
{
    return std::max(1.0, pen.widthF());
}

QRectF reachedAround(const QRectF& area, const QPen& pen)
{
    const double reach = reachOf(pen);
    return area.adjusted(-reach, -reach, reach, reach);
}

void drawPolylines(QPainter& painter, const QVector<QPolygonF>& lines, const QRectF& area)
{
    // Far corners cost the rasteriser its precision.
    const QRectF clip = reachedAround(area, painter.pen());
    for (const QPolygonF& line : lines)
        QwtPainter::drawPolyline(&painter, QtVersions::clippedLine(clip, line));
}

void drawSoftStrokes(QPainter& painter, const SoftFolding::Strokes& strokes, const QRectF& area)
{
    painter.drawLines(strokes.lines);
    drawPolylines(painter, strokes.polylines, area);
    painter.save();
    // Qwt asks for antialiasing by more than one hint.
    painter.setRenderHints(painter.renderHints(), false);
    QColor color = painter.pen().color();
    painter.setPen(Qt::NoPen);
    const auto fill = [&](const QVector<QRect>& rectangles, double cover) {
        color.setAlphaF(QtVersions::ColorPart(cover));
        painter.setBrush(color);
        painter.drawRects(rectangles);
    };
    for (int passes = 2; passes <= SoftFolding::mostPasses; ++passes)
        fill(strokes.columns[std::size_t(passes)], SoftFolding::coverOfPasses(passes));
    fill(strokes.ends, SoftFolding::coverOfEnds);
    painter.restore();
}

/// Whether wide or soft lines through the samples look the same through the columns.
bool areCloseTogether(const CurveFolding::Stretch& seen, const QRectF& area)
{
    constexpr double samplesToAColumn = 2.0;
    return seen.end - seen.begin >= samplesToAColumn * area.width();
}

CurveFolding::Rows rowsInside(const QRectF& area)
{
    return {wholePixel(std::ceil(area.top())), wholePixel(std::floor(area.bottom())) - 1};
}

/// Keeps a painter that is not clipped within an area, and a line's width around it as Qwt does. Qt cuts
/// lines off far sooner by a rectangle than one by one where they leave the picture.
class Clip {
public:
    Clip(QPainter& painter, const QRectF& area)
        : m_painter(painter)
        , m_isNeeded(!painter.hasClipping())
    {
        if (!m_isNeeded)
            return;
        painter.save();
        painter.setClipRect(reachedAround(area, painter.pen()));
    }
    ~Clip()
    {
        if (m_isNeeded)
            m_painter.restore();
    }
    Clip(const Clip&) = delete;
    Clip& operator=(const Clip&) = delete;

private:
    QPainter& m_painter;
    bool m_isNeeded;
};

/// By which lines a pen's way through the samples is drawn.
enum class Folding { None, Strokes, SoftStrokes, Polylines };

Folding foldingFor(
    const QPainter& painter, const CurveFolding::Stretch& seen, const QRectF& area, CurveFolding::Shape shape)
{
    const QPen& pen = painter.pen();
    const bool isSoft = painter.testRenderHint(QPainter::Antialiasing);
    const int width = isPixelPainter(painter) ? pixelWidth(pen) : 0;
    if (width == 1 && !isSoft)
        return Folding::Strokes;
    const bool hasMitres = pen.joinStyle() == Qt::MiterJoin || pen.joinStyle() == Qt::SvgMiterJoin;
    if (shape != CurveFolding::Shape::Straight || hasMitres || !areCloseTogether(seen, area))
        return Folding::None;
    if (isSoft)
        return width == 1 ? Folding::SoftStrokes : Folding::Polylines;
    return width == 0 ? Folding::Polylines : Folding::Strokes;
}

/// The samples that may be seen of a pen's way through them.
CurveFolding::Stretch seenOf(const CurveFolding::Stretch& all, const QRectF& area, const QPen& pen)
{
    const double reach = std::ceil(reachOf(pen));
    return all.seenBetween(wholePixel(area.left() - reach), wholePixel(area.right() + reach));
}

bool canFold(QPainter& painter, const CurveFolding::Stretch& stretch)
{
    return !stretch.xMap.transformation() && !stretch.yMap.transformation() && isPlainPainter(painter)
        && isOpaqueLine(painter);
}

}

bool CurvePainter::draw(
    QPainter& painter, const CurveFolding::Stretch& all, const QRectF& area, CurveFolding::Shape shape)
{
    if (!canFold(painter, all))
        return false;
    const QPen pen = painter.pen();
    const CurveFolding::Stretch seen = seenOf(all, area, pen);
    const Clip clip(painter, area);
    switch (foldingFor(painter, seen, area, shape)) {
    case Folding::Strokes: {
        const int width = pixelWidth(pen);
        const auto strokes = CurveFolding::strokes(seen, shape, width, rowsInside(area));
        if (strokes)
            drawStrokes(painter, *strokes, width);
        return strokes.has_value();
    }
    case Folding::SoftStrokes: {
        const auto strokes = SoftFolding::strokes(seen);
        if (strokes)
            drawSoftStrokes(painter, *strokes, area);
        return strokes.has_value();
    }
    case Folding::Polylines: {
        const auto lines = CurveFolding::polylines(seen);
        if (lines)
            drawPolylines(painter, *lines, area);
        return lines.has_value();
    }
    case Folding::None:
        break;
    }
    return false;
}

bool CurvePainter::drawSticks(
    QPainter& painter, const CurveFolding::Stretch& all, const QRectF& area, double baseline)
{
    const int width = pixelWidth(painter.pen());
    if (width == 0 || !canFold(painter, all) || !isPixelPainter(painter))
        return false;
    const Clip clip(painter, area);
    // Qwt draws sticks hard.
    const bool isSoft = painter.testRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const CurveFolding::Stretch seen = seenOf(all, area, painter.pen());
    drawStrokes(painter, CurveFolding::sticks(seen, width, all.row(baseline)), width);
    painter.setRenderHint(QPainter::Antialiasing, isSoft);
    return true;
}
