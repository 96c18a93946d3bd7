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

/// The markers that carry a symbol.
QList<QwtPlotMarker*> symbolMarkers(const QwtPlotDict& plot);

/// The first grid, null if there is none.
QwtPlotGrid* grid(const QwtPlotDict& plot);

}
