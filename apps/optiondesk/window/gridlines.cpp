#include "window/gridlines.h"

#include <QPen>

#include <qwt_plot.h>
#include <qwt_plot_grid.h>

namespace {

QPen ofWidth(QPen pen, double width)
{
    pen.setWidthF(width);
    return pen;
}

}

void GridLines::fit(QwtPlot& plot)
{
    const double factor = plot.devicePixelRatioF();
    const double width = qRound(factor) / factor;
    const QwtPlotItemList grids = plot.itemList(QwtPlotItem::Rtti_PlotGrid);
    for (QwtPlotItem* const item : grids) {
        auto& grid = *static_cast<QwtPlotGrid*>(item);
        grid.setMajorPen(ofWidth(grid.majorPen(), width));
        grid.setMinorPen(ofWidth(grid.minorPen(), width));
    }
}
