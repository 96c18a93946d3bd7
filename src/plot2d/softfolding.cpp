#include "softfolding_p.h"

#include <algorithm>
#include <cstdlib>

namespace {

using CurveFolding::Stretch;

/// How many rows a few of the steps from sample to sample go up and down.
struct Passed {
    double rows = 0.0;
    int steps = 0;
};

/// Those at the beginning and at the end of a column of at least two samples.
Passed passedAtEnds(const Stretch& stretch, int begin, int end)
{
    constexpr int mostSteps = 8;
    const int steps = end - begin - 1;
    Passed passed;
    const auto pass = [&](int first, int behind) {
        int from = stretch.row(stretch.samples.y(first));
        for (int i = first + 1; i <= behind; ++i) {
            const int to = stretch.row(stretch.samples.y(i));
            passed.rows += std::abs(to - from);
            from = to;
        }
        passed.steps += behind - first;
    };
    const int firstSteps = std::min(steps, mostSteps);
    pass(begin, begin + firstSteps);
    pass(begin + std::max(firstSteps, steps - mostSteps), end - 1);
    return passed;
}

int passes(const Stretch& stretch, const PixelColumn& column, int begin, int end)
{
    const int height = column.high - column.low;
    if (height == 0)
        return 1;
    const Passed passed = passedAtEnds(stretch, begin, end);
    // From one end to the other, and as far as is seen on no detours.
    if (std::abs(column.last - column.first) == height && passed.rows <= height)
        return 1;
    const double times = passed.rows / passed.steps * (end - begin - 1) / height;
    return static_cast<int>(std::clamp(times + 0.5, 1.0, double(SoftFolding::mostPasses)));
}

/// Makes the strokes of columns.
class SoftFold {
public:
    explicit SoftFold(int columns)
    {
        m_strokes.ends.reserve(2 * columns);
        m_strokes.lines.reserve(columns);
    }

    void add(const PixelColumn& column, int passes, bool joined)
    {
        // Where the curve goes up and down, the way from one column into the next is lost among the others.
        const bool isLost = m_passes > 1 && m_column.hidesLineTo(column);
        if (joined && !isLost)
            appendCorner(column.x, column.first);
        if (!joined || passes > 1)
            finishLine();
        if (passes > 1)
            appendColumn(column, passes);
        else
            passColumn(column);
        appendCorner(column.x, column.last);
        m_column = column;
        m_passes = passes;
    }

    const SoftFolding::Strokes& finished()
    {
        finishLine();
        return m_strokes;
    }

private:
    void appendColumn(const PixelColumn& column, int passes)
    {
        constexpr int width = 2;
        const int left = column.x - 1;
        m_strokes.columns[std::size_t(passes)].append(
            QRect(left, column.low, width, column.high - column.low));
        m_strokes.ends.append(QRect(left, column.low - 1, width, 1));
        m_strokes.ends.append(QRect(left, column.high, width, 1));
    }

    /// Leads the line from the first row to both ends, the nearer one first.
    void passColumn(const PixelColumn& column)
    {
        const bool lowIsNearer = column.first - column.low < column.high - column.first;
        appendCorner(column.x, column.first);
        appendCorner(column.x, lowIsNearer ? column.low : column.high);
        appendCorner(column.x, lowIsNearer ? column.high : column.low);
    }

    void appendCorner(int x, int y)
    {
        const QPointF corner(x, y);
        if (m_line.isEmpty() || m_line.last() != corner)
            m_line.append(corner);
    }

    void finishLine()
    {
        if (m_line.size() == 2)
            m_strokes.lines.append(QLine(m_line.first().toPoint(), m_line.last().toPoint()));
        else if (m_line.size() > 2)
            m_strokes.polylines.append(m_line);
        m_line.clear();
    }

    PixelColumn m_column;
    int m_passes = 1;
    /// The line that the last column belongs to.
    QPolygonF m_line;
    SoftFolding::Strokes m_strokes;
};

}

std::optional<SoftFolding::Strokes> SoftFolding::strokes(const Stretch& stretch)
{
    constexpr int columnsOfAWideCanvas = 2048;
    SoftFold fold(std::min(stretch.end - stretch.begin, columnsOfAWideCanvas));
    ColumnWalk<SampleIndex> walk(stretch);
    PixelColumn column;
    bool joined = false;
    while (walk.next(column, joined))
        fold.add(column, passes(stretch, column, walk.begin(), walk.end()), joined);
    if (walk.hasBeenFar())
        return std::nullopt;
    return fold.finished();
}
