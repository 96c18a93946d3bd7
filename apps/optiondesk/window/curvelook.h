#pragma once

#include "window/curveset.h"

#include <QColor>

class PriceBased2dPlotCurve;

/// How the curves of the desk look.
///
/// The colours are from the palette of M. Okabe and K. Ito ("Color Universal Design", 2008), which people
/// with any of the common colour deficiencies tell apart; the quote line's red is the library's. Lines differ
/// in width and style as well. The user may choose other colours.
namespace CurveLook {

/// All of them.
const QVector<CurveRole>& roles();

/// The curve's title, which names it in the legend, in the language of the user.
QString title(CurveRole role);

/// The name in settings and tables of the curve with this title, the same in every language; the title
/// itself where no curve of ours has it.
QString key(const QString& title);

/// Whether the prices under the curve of this title are strikes; those under a profit are prices of the
/// future.
bool isOverStrikes(const QString& title);

/// One of the data types of PriceBased2dPlotCurve or BandCurve's, no two the same in one view.
int dataType(CurveRole role);

/// The colour of its curve unless the user chooses another.
QColor color(CurveRole role);

/// Gives a curve the data type and look for its samples, which it does not take.
void apply(const CurveSamples& samples, PriceBased2dPlotCurve& curve);

/// Gives a curve of points the symbols for its new samples where they differ from those it has.
void updateMarks(const CurveSamples& samples, PriceBased2dPlotCurve& curve);

/// Whether a curve may have another colour: the line at the forward must be red, and the curves of other
/// series have the colours of their expiries.
bool hasFreeColor(const PriceBased2dPlotCurve& curve);

/// Gives a curve another colour, and its symbols with it.
void setColor(PriceBased2dPlotCurve& curve, const QColor& color);

}
