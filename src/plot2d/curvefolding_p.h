#pragma once

#include <QLine>
#include <QPolygonF>
#include <QRect>
#include <QVector>

#include <qwt_scale_map.h>

#include <algorithm>

class SampleIndex;

/// The lines of a curve in whole pixels, folded so that each column of pixels gets as few as it needs.
///
/// Samples that fall into one column lie on one vertical line, from the lowest to the highest of them, and
/// what leads from column to column needs lines of its own only where those do not cover it. With a pen of
/// one opaque pixel, not antialiased and with a cap, the same pixels are drawn as by a line from each sample
/// to the next. Samples that are not finite break the curve.
namespace CurveFolding {

/// How samples are joined: straight, or by two lines of which the horizontal one comes first or last.
enum class Shape { Straight, HorizontalFirst, VerticalFirst };

/// A stretch of a curve's samples and where they are drawn. The maps must be linear.
struct Stretch {
    const SampleIndex& index;
    QwtScaleMap xMap;
    QwtScaleMap yMap;
    /// The first sample, and the one after the last.
    int begin = 0;
    int end = 0;
    /// The rows of pixels that are surely inside of the picture.
    int topRow = 0;
    int bottomRow = -1;
};

/// The place of a coordinate in whole pixels, halves away from zero as Qwt rounds, at most 1e9 from zero:
/// what is further away than that looks the same.
inline int pixel(double coordinate)
{
    constexpr double farAway = 1e9;
    const double near = std::clamp(coordinate, -farAway, farAway);
    // Conversion cuts towards zero.
    return static_cast<int>(near >= 0.0 ? near + 0.5 : near - 0.5);
}

/// The samples that can be seen between two columns of pixels, with one more to each side; all of them where
/// they are not ascending and finite.
Stretch visibleStretch(const Stretch& all, int leftColumn, int rightColumn);

/// What is to be drawn with a pen of so many pixels. Pieces of a column are rectangles of one pixel's width,
/// to be filled with as much around them as the pen is wider. Qt fills short ones up to ten times as fast as
/// it draws lines; with a pen of one pixel, long ones are lines.
struct Strokes {
    QVector<QRect> columns;
    QVector<QLine> lines;
};
Strokes strokes(const Stretch& stretch, Shape shape, int penWidth = 1);

/// Lines through all of the samples that are seen, one for each part between breaks, for pens that are wide or
/// soft. Each column keeps its lowest and its highest sample, and the first and the last where what leads
/// there would be missed.
QVector<QPolygonF> polylines(const Stretch& stretch);

}
