#pragma once

#include "plot2d/pricebased2dplotcurve.h"

#include <QList>

#include <qwt_plot_dict.h>

class QwtPlotGrid;
class QwtPlotMarker;

/// The items attached to a plot, by their class and in the plot's order.
namespace PlotItems {

/// The curves of this library.
QList<PriceBased2dPlotCurve*> curves(const QwtPlotDict& plot);

/// Those of one data type that do not refuse it themselves.
QList<PriceBased2dPlotCurve*> curvesOfType(const QwtPlotDict& plot, int type);

/// The first valid curve of a title, null if there is none.
PriceBased2dPlotCurve* validCurve(const QwtPlotDict& plot, const QString& title);

/// The first curve of the type of the line at the current quote, valid or not; null if there is none.
PriceBased2dPlotCurve* quoteLine(const QwtPlotDict& plot);

/// The markers that carry a symbol.
QList<QwtPlotMarker*> symbolMarkers(const QwtPlotDict& plot);

/// The first grid, null if there is none.
QwtPlotGrid* grid(const QwtPlotDict& plot);

}
