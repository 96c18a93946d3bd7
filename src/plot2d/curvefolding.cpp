#include "curvefolding_p.h"

#include "columnfold_p.h"
#include "sampleindex_p.h"

#include <algorithm>
#include <cmath>

namespace {

using CurveFolding::Shape;
using CurveFolding::Stretch;

/// Walks a stretch of samples column by column.
class ColumnWalk {
public:
    explicit ColumnWalk(const Stretch& stretch)
        : m_stretch(stretch)
        , m_next(stretch.begin)
        , m_skips(stretch.index.isAscending() && stretch.end <= stretch.index.finiteCount())
    {
    }

    /// Whether there is another column; `joined` says whether the curve leads there without a break.
    bool next(PixelColumn& column, bool& joined)
    {
        joined = m_next > m_stretch.begin;
        while (m_next < m_stretch.end && !isFinite(m_next)) {
            ++m_next;
            joined = false;
        }
        if (m_next >= m_stretch.end)
            return false;
        column = PixelColumn::at(xPixel(m_next), yPixel(m_next));
        if (m_skips)
            skipColumn(column);
        else
            walkColumn(column);
        return true;
    }

private:
    int xPixel(int i) const
    {
        return CurveFolding::pixel(m_stretch.xMap.transform(m_stretch.index.x(i)));
    }
    int yPixel(int i) const
    {
        return CurveFolding::pixel(m_stretch.yMap.transform(m_stretch.index.y(i)));
    }
    bool isFinite(int i) const
    {
        return i < m_stretch.index.finiteCount()
            || (std::isfinite(m_stretch.index.x(i)) && std::isfinite(m_stretch.index.y(i)));
    }

    void walkColumn(PixelColumn& column)
    {
        for (++m_next; m_next < m_stretch.end && isFinite(m_next) && xPixel(m_next) == column.x; ++m_next)
            column.append(yPixel(m_next));
    }

    void skipColumn(PixelColumn& column)
    {
        const int begin = m_next;
        m_next = columnEnd(begin, column.x);
        m_lastLength = m_next - begin;
        if (m_lastLength == 1)
            return;
        const SampleIndex::Bounds bounds = m_stretch.index.bounds(begin, m_next);
        column.append(yPixel(m_next - 1));
        // The values may run downwards on the screen.
        column.reach(CurveFolding::pixel(m_stretch.yMap.transform(bounds.low)));
        column.reach(CurveFolding::pixel(m_stretch.yMap.transform(bounds.high)));
    }

    /// The first sample of another column. Samples are mostly as many as in the column before.
    int columnEnd(int begin, int column) const
    {
        int inside = begin;
        int outside = m_stretch.end;
        const int guess = std::min(begin + m_lastLength, m_stretch.end - 1);
        int step = 1;
        if (xPixel(guess) != column) {
            outside = guess;
            while (outside - step > inside && xPixel(outside - step) != column) {
                outside -= step;
                step *= 2;
            }
            inside = std::max(inside, outside - step);
        } else {
            inside = guess;
            while (inside + step < outside && xPixel(inside + step) == column) {
                inside += step;
                step *= 2;
            }
            outside = std::min(outside, inside + step);
        }
        while (outside - inside > 1) {
            const int middle = inside + (outside - inside) / 2;
            (xPixel(middle) == column ? inside : outside) = middle;
        }
        return outside;
    }

    const Stretch& m_stretch;
    int m_next;
    bool m_skips;
    int m_lastLength = 1;
};

/// Makes the lines of columns.
class LineFold {
public:
    LineFold(const Stretch& stretch, Shape shape, int penWidth)
        : m_stretch(stretch)
        , m_shape(shape)
        , m_penWidth(penWidth)
    {
    }

    void add(PixelColumn column, bool joined)
    {
        if (m_hasColumn && joined)
            join(column);
        else
            finishColumn();
        m_column = column;
        m_hasColumn = true;
    }

    CurveFolding::Strokes finished()
    {
        finishColumn();
        return m_strokes;
    }

    void reserve(int strokes)
    {
        m_strokes.columns.reserve(strokes);
        m_strokes.lines.reserve(strokes);
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
        if (!hidden
            && (m_penWidth > 1 || !m_column.canJoin(next) || !isInside(m_column.last)
                || !isInside(next.first)))
            return false;
        if (!hidden)
            m_column.joinTo(next);
        m_column.hasLine = true;
        next.hasLine = true;
        return true;
    }

    /// Lines that leave the picture are cut off by Qt, and not always to the pixel.
    bool isInside(int row) const { return m_stretch.topRow <= row && row <= m_stretch.bottomRow; }

    /// A sample that stands alone in its column is drawn by the lines that lead to it, if any.
    void finishColumn()
    {
        if (m_hasColumn && m_column.hasLine)
            appendColumn();
        m_hasColumn = false;
    }

    void appendColumn()
    {
        constexpr int longestRectangle = 24;
        if (m_penWidth > 1 || m_column.high - m_column.low < longestRectangle)
            m_strokes.columns.append(
                QRect(QPoint(m_column.x, m_column.low), QPoint(m_column.x, m_column.high)));
        else
            m_strokes.lines.append(QLine(m_column.x, m_column.low, m_column.x, m_column.high));
    }

    const Stretch& m_stretch;
    Shape m_shape;
    int m_penWidth;
    PixelColumn m_column;
    bool m_hasColumn = false;
    CurveFolding::Strokes m_strokes;
};

/// Makes the corners of the lines through columns.
class CornerFold {
public:
    void add(const PixelColumn& column, bool joined)
    {
        const bool hidden = joined && m_hasColumn && m_column.hidesLineTo(column);
        finishColumn(!hidden);
        if (!joined)
            finishLine();
        m_column = column;
        m_hasColumn = true;
        m_entersAnywhere = hidden;
    }

    QVector<QPolygonF> finished()
    {
        finishColumn(true);
        finishLine();
        return m_lines;
    }

private:
    void append(int y)
    {
        const QPointF corner(m_column.x, y);
        if (m_line.isEmpty() || m_line.last() != corner)
            m_line.append(corner);
    }

    void finishColumn(bool leavesAtLast)
    {
        if (!m_hasColumn)
            return;
        if (!m_entersAnywhere)
            append(m_column.first);
        const double here = m_line.last().y();
        const bool lowIsNearer = std::abs(here - m_column.low) < std::abs(here - m_column.high);
        append(lowIsNearer ? m_column.low : m_column.high);
        append(lowIsNearer ? m_column.high : m_column.low);
        if (leavesAtLast)
            append(m_column.last);
        m_hasColumn = false;
    }

    void finishLine()
    {
        if (m_line.size() > 1)
            m_lines.append(m_line);
        m_line.clear();
    }

    PixelColumn m_column;
    bool m_hasColumn = false;
    /// Whether it makes no difference where the line comes into the column.
    bool m_entersAnywhere = false;
    QPolygonF m_line;
    QVector<QPolygonF> m_lines;
};

}

CurveFolding::Stretch CurveFolding::visibleStretch(const Stretch& all, int leftColumn, int rightColumn)
{
    Stretch stretch = all;
    if (!all.index.isAscending() || all.end > all.index.finiteCount())
        return stretch;
    const bool leftToRight = !all.xMap.isInverting();
    const auto columnOf = [&all](int i) { return pixel(all.xMap.transform(all.index.x(i))); };
    const auto isBefore = [&](int i) {
        return leftToRight ? columnOf(i) < leftColumn : columnOf(i) > rightColumn;
    };
    const auto isNotBehind = [&](int i) {
        return leftToRight ? columnOf(i) <= rightColumn : columnOf(i) >= leftColumn;
    };
    const auto firstWithout = [&](const auto& predicate, int begin) {
        int count = all.end - begin;
        while (count > 0) {
            const int half = count / 2;
            if (predicate(begin + half)) {
                begin += half + 1;
                count -= half + 1;
            } else {
                count = half;
            }
        }
        return begin;
    };
    const int firstSeen = firstWithout(isBefore, all.begin);
    const int firstBehind = firstWithout(isNotBehind, firstSeen);
    stretch.begin = std::max(all.begin, firstSeen - 1);
    stretch.end = std::min(all.end, firstBehind + 1);
    return stretch;
}

CurveFolding::Strokes CurveFolding::strokes(const Stretch& stretch, Shape shape, int penWidth)
{
    LineFold fold(stretch, shape, penWidth);
    constexpr int linesOfAWideCanvas = 4096;
    fold.reserve(std::min(2 * (stretch.end - stretch.begin), linesOfAWideCanvas));
    ColumnWalk walk(stretch);
    PixelColumn column;
    bool joined = false;
    while (walk.next(column, joined))
        fold.add(column, joined);
    return fold.finished();
}

QVector<QPolygonF> CurveFolding::polylines(const Stretch& stretch)
{
    CornerFold fold;
    ColumnWalk walk(stretch);
    PixelColumn column;
    bool joined = false;
    while (walk.next(column, joined))
        fold.add(column, joined);
    return fold.finished();
}
