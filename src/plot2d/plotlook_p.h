#pragma once

#include <QPen>

class QString;
class QwtPlotGrid;
class QwtPlotMarker;

/// The fixed look of a plot.
namespace PlotLook {

extern const QColor canvasColor;

/// The style sheet that gives a widget the canvas's colour as background.
QString backgroundStyleSheet();

/// A solid pen as Qt's path stroker likes it for short lines: square caps, bevelled joins.
QPen solidPen(const QColor& color, double width);

/// Shows major grid lines alone, or thicker ones with minor lines between. Minor lines that are switched off
/// keep their pen.
void setMinorGrid(QwtPlotGrid& grid, bool enabled);

/// A new marker for samples of a curve: a square of 4 by 4 pixels in the colours of the curve's pen, which
/// does not show in a legend. The caller owns it.
QwtPlotMarker* createPointMarker(const QPen& curvePen);

}
