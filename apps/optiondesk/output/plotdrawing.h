#pragma once

#include <QRectF>
#include <QSizeF>

class PriceBased2dPlot;
class QPainter;

/// A plot as it is printed: its title, axes and curves, and a legend of the curves that are visible, without
/// anything to click on.
namespace PlotDrawing {

/// Draws a plot, laid out anew for a size in the plot's own pixels, into a rectangle of the painter of the
/// same shape. All is drawn as lines and texts that scale with it. The plot's own scales and labels are as
/// they were afterwards.
void paint(PriceBased2dPlot& plot, const QSizeF& size, QPainter& painter, const QRectF& target);

}
