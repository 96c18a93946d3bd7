#include "curvefolding_p.h"

#include <algorithm>

namespace {

using CurveFolding::Rows;
using CurveFolding::Shape;
using CurveFolding::Stretch;

void append(CurveFolding::Strokes& strokes, const PixelColumn& column, int penWidth)
{
    constexpr int longestRectangle = 24;
    if (penWidth > 1 || column.high - column.low < longestRectangle)
        strokes.columns.append(QRect(QPoint(column.x, column.low), QPoint(column.x, column.high)));
    else
        strokes.lines.append(QLine(column.x, column.low, column.x, column.high));
}

/// Makes the strokes of columns.
class StrokeFold {
public:
    StrokeFold(Shape shape, int penWidth, Rows rows, int expectedStrokes)
        : m_shape(shape)
        , m_penWidth(penWidth)
        , m_rows(rows)
    {
        m_strokes.columns.reserve(expectedStrokes);
        m_strokes.lines.reserve(expectedStrokes);
    }

    void add(PixelColumn column, bool joined)
    {
        if (joined)
            join(column);
        else
            finishColumn();
        m_column = column;
    }

    CurveFolding::Strokes finished()
    {
        finishColumn();
        return m_strokes;
    }

private:
    void join(PixelColumn& next)
    {
        if (m_shape == Shape::VerticalFirst) {
            m_column.append(next.first);
        } else if (m_shape == Shape::HorizontalFirst) {
            next.reach(m_column.last);
            next.first = m_column.last;
            next.hasLine = true;
        }
        const QLine line(m_column.x, m_column.last, next.x, next.first);
        const bool isDrawn = !joinColumns(next);
        finishColumn();
        if (isDrawn)
            m_strokes.lines.append(line);
    }

    /// Whether the columns draw the line between them.
    bool joinColumns(PixelColumn& next)
    {
        const bool hidden = m_column.hidesLineTo(next);
        if (!hidden && !canTakeLineTo(next))
            return false;
        if (!hidden)
            m_column.joinTo(next);
        m_column.hasLine = true;
        next.hasLine = true;
        return true;
    }

    /// Lines that leave the picture are cut off by Qt, and not always to the pixel.
    bool canTakeLineTo(const PixelColumn& next) const
    {
        return m_penWidth == 1 && m_column.canJoin(next) && m_rows.contain(m_column.last)
            && m_rows.contain(next.first);
    }

    /// A sample that stands alone in its column is drawn by the lines that lead to it, if any.
    void finishColumn()
    {
        if (m_column.hasLine)
            append(m_strokes, m_column, m_penWidth);
    }

    Shape m_shape;
    int m_penWidth;
    Rows m_rows;
    PixelColumn m_column;
    CurveFolding::Strokes m_strokes;
};

/// Makes the corners of the lines through columns.
class CornerFold {
public:
    void add(const PixelColumn& column, bool joined)
    {
        const bool hidden = joined && m_column.hidesLineTo(column);
        if (hidden)
            leaveTo(column);
        else
            finishColumn();
        if (!joined)
            finishLine();
        m_column = column;
        if (!hidden)
            append(m_column.first);
    }

    QVector<QPolygonF> finished()
    {
        finishColumn();
        finishLine();
        return m_lines;
    }

private:
    int row() const { return static_cast<int>(m_line.last().y()); }

    void append(int y)
    {
        const QPointF corner(m_column.x, y);
        if (m_line.isEmpty() || m_line.last() != corner)
            m_line.append(corner);
    }

    /// Draws the column from where the line has come into it.
    void drawColumn()
    {
        const bool lowIsNearer = row() - m_column.low < m_column.high - row();
        append(lowIsNearer ? m_column.low : m_column.high);
        append(lowIsNearer ? m_column.high : m_column.low);
    }

    /// Goes over into the next column where both reach, no matter at which row.
    void leaveTo(const PixelColumn& next)
    {
        drawColumn();
        const int y = std::clamp(row(), next.low, next.high);
        append(y);
        m_line.append(QPointF(next.x, y));
    }

    void finishColumn()
    {
        // Only in front of the first column there is no line.
        if (m_line.isEmpty())
            return;
        drawColumn();
        append(m_column.last);
    }

    void finishLine()
    {
        if (m_line.size() > 1)
            m_lines.append(m_line);
        m_line.clear();
    }

    PixelColumn m_column;
    QPolygonF m_line;
    QVector<QPolygonF> m_lines;
};

/// False where the stretch goes too far away.
template <class Fold> bool addColumns(Fold& fold, const Stretch& stretch)
{
    ColumnWalk<SampleIndex> walk(stretch);
    PixelColumn column;
    bool joined = false;
    while (walk.next(column, joined))
        fold.add(column, joined);
    return !walk.hasBeenFar();
}

int expectedStrokes(const Stretch& stretch)
{
    constexpr int strokesOfAWideCanvas = 4096;
    return std::min(stretch.end - stretch.begin, strokesOfAWideCanvas);
}

}

std::optional<CurveFolding::Strokes> CurveFolding::strokes(
    const Stretch& stretch, Shape shape, int penWidth, Rows rows)
{
    StrokeFold fold(shape, penWidth, rows, expectedStrokes(stretch));
    if (!addColumns(fold, stretch))
        return std::nullopt;
    return fold.finished();
}

CurveFolding::Strokes CurveFolding::sticks(const Stretch& stretch, int penWidth, int baseRow)
{
    Strokes strokes;
    strokes.columns.reserve(expectedStrokes(stretch));
    ColumnWalk<SampleIndex> walk(stretch);
    PixelColumn column;
    bool joined = false;
    while (walk.next(column, joined)) {
        column.reach(baseRow);
        append(strokes, column, penWidth);
    }
    return strokes;
}

std::optional<QVector<QPolygonF>> CurveFolding::polylines(const Stretch& stretch)
{
    CornerFold fold;
    if (!addColumns(fold, stretch))
        return std::nullopt;
    return fold.finished();
}
