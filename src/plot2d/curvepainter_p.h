#pragma once

#include "curvefolding_p.h"

class QPainter;

/// Draws the line of a curve by its index, where that leaves the pixels of its segments drawn one by one.
namespace CurvePainter {

/// Draws a stretch of a curve with the painter's pen into an area; false, with nothing drawn, where that is
/// not to be done by folding: for maps that are not linear, pens that are dotted or let something shine
/// through, painters that turn or do not round to pixels, and for soft and wide pens, also of painters that
/// scale, where there are few samples to a column of pixels. Nor for samples further away than whole numbers
/// of pixels reach.
bool draw(QPainter& painter, const CurveFolding::Stretch& all, const QRectF& area, CurveFolding::Shape shape);

/// The same of sticks that stand on, or hang from, a value.
bool drawSticks(QPainter& painter, const CurveFolding::Stretch& all, const QRectF& area, double baseline);

}
