#include "softfolding_p.h"

#include <algorithm>
#include <cstdlib>

namespace {

using CurveFolding::Stretch;

/// How many rows the curve goes up and down in a column of at least two samples, by a few of the steps from
/// sample to sample at its beginning and at its end.
double rowsPassed(const Stretch& stretch, int begin, int end)
{
    constexpr int mostSteps = 8;
    const int steps = end - begin - 1;
    double rows = 0.0;
    const auto pass = [&](int first, int behind) {
        int from = stretch.row(stretch.samples.y(first));
        for (int i = first + 1; i <= behind; ++i) {
            const int to = stretch.row(stretch.samples.y(i));
            rows += std::abs(to - from);
            from = to;
        }
        return behind - first;
    };
    const int firstSteps = std::min(steps, mostSteps);
    int passed = pass(begin, begin + firstSteps);
    passed += pass(begin + std::max(firstSteps, steps - mostSteps), end - 1);
    return rows / passed * steps;
}

int passes(const Stretch& stretch, const PixelColumn& column, int begin, int end)
{
    if (column.low == column.high)
        return 0;
    const double times = rowsPassed(stretch, begin, end) / (column.high - column.low);
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
        if (passes > 0)
            appendColumn(column, passes);
        // Where the curve goes up and down, the way from one column into the next is lost among the others.
        const bool isLost = passes > 1 && m_passes > 1 && m_column.hidesLineTo(column);
        if (joined && !isLost)
            m_strokes.lines.append(QLine(m_column.x, m_column.last, column.x, column.first));
        m_column = column;
        m_passes = passes;
    }

    const SoftFolding::Strokes& strokes() const { return m_strokes; }

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

    PixelColumn m_column;
    int m_passes = 0;
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
    return fold.strokes();
}
