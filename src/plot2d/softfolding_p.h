#pragma once

#include "curvefolding_p.h"

#include <array>
#include <cmath>
#include <optional>

/// The lines of a curve of close samples, folded into what an antialiased pen of one pixel leaves.
///
/// Between whole numbers such a pen covers half of the pixels to both sides, and of what is left there half
/// again each time it comes by. A single line through a column would be pale and, beside others, striped.
namespace SoftFolding {

/// Passes beyond these make no difference that is seen.
constexpr int mostPasses = 8;

/// What the passes of a pen along a column cover of it, from 0 to 1.
inline double coverOfPasses(int passes)
{
    return 1.0 - std::pow(0.5, passes);
}

/// What the end of a line to an extreme, and the beginning of the next, cover of the pixels beyond.
constexpr double coverOfEnds = 0.4375;

struct Strokes {
    /// The pieces of columns by the times that the curve passes along them, from 2.
    std::array<QVector<QRect>, mostPasses + 1> columns;
    /// The pixels above and below them.
    QVector<QRect> ends;
    /// Lines from column to column, and those that pass through columns once.
    QVector<QLine> lines;
    QVector<QPolygonF> polylines;
};

/// Nothing where the stretch goes further away than whole numbers of pixels reach.
std::optional<Strokes> strokes(const CurveFolding::Stretch& stretch);

}
