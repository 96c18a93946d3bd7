#pragma once

#include "columnwalk_p.h"
#include "sampleindex_p.h"

#include <QLine>
#include <QPolygonF>
#include <QRect>
#include <QVector>

#include <optional>

/// The lines of a curve in whole pixels, folded so that each column of pixels gets as few as it needs.
///
/// Samples that fall into one column lie on one vertical line, from the lowest to the highest of them, and
/// what leads from column to column needs lines of its own only where those do not cover it. With a pen of
/// one opaque pixel, not antialiased and with a cap, the same pixels are drawn as by a line from each sample
/// to the next. Samples that are not finite break the curve. A curve that goes further away than whole
/// numbers of pixels reach is not folded.
namespace CurveFolding {

using Stretch = SampleStretch<SampleIndex>;

/// How samples are joined: straight, or by two lines of which the horizontal one comes first or last.
enum class Shape { Straight, HorizontalFirst, VerticalFirst };

/// Rows of pixels, with both ends.
struct Rows {
    int top = 0;
    int bottom = -1;

    bool contain(int row) const { return top <= row && row <= bottom; }
};

/// What is to be drawn with a pen of so many pixels. Pieces of a column are rectangles of one pixel's width,
/// to be filled with as much around them as the pen is wider. Qt fills short ones up to ten times as fast as
/// it draws lines; with a pen of one pixel, long ones are lines.
struct Strokes {
    QVector<QRect> columns;
    QVector<QLine> lines;
};

/// The rows are those that are surely inside of the picture: a line that leaves it is drawn as it is.
std::optional<Strokes> strokes(const Stretch& stretch, Shape shape, int penWidth, Rows rows);

/// Lines from each sample up or down to a row.
Strokes sticks(const Stretch& stretch, int penWidth, int baseRow);

/// Lines through all of the samples, one for each part between breaks, for pens that are wide or soft. Each
/// column keeps its lowest and its highest sample, and the first and the last where what leads there would be
/// missed.
std::optional<QVector<QPolygonF>> polylines(const Stretch& stretch);

}
