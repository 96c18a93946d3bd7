#pragma once

#include "window/curveset.h"

class PriceBased2dPlotCurve;

/// How the curves of the desk look.
///
/// The colours are from the palette of M. Okabe and K. Ito ("Color Universal Design", 2008), which people
/// with any of the common colour deficiencies tell apart; the quote line's red is the library's. Lines differ
/// in width and style as well.
namespace CurveLook {

/// The curve's title, which names it in the legend.
QString title(CurveRole role);

/// One of the data types of PriceBased2dPlotCurve, no two the same in one view.
int dataType(CurveRole role);

/// Gives a curve the data type and look for its samples, which it does not take.
void apply(const CurveSamples& samples, PriceBased2dPlotCurve& curve);

/// Gives a curve of points the symbols for its new samples where they differ from those it has.
void updateMarks(const CurveSamples& samples, PriceBased2dPlotCurve& curve);

}
