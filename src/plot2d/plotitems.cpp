#include "plotitems_p.h"

#include <qwt_plot_grid.h>
#include <qwt_plot_marker.h>

QList<PriceBased2dPlotCurve*> PlotItems::curves(const QwtPlotDict& plot)
{
    QList<PriceBased2dPlotCurve*> curves;
    const QwtPlotItemList items = plot.itemList(QwtPlotItem::Rtti_PlotCurve);
    for (QwtPlotItem* item : items) {
        if (auto* curve = dynamic_cast<PriceBased2dPlotCurve*>(item))
            curves.append(curve);
    }
    return curves;
}

QList<QwtPlotMarker*> PlotItems::symbolMarkers(const QwtPlotDict& plot)
{
    QList<QwtPlotMarker*> markers;
    const QwtPlotItemList items = plot.itemList(QwtPlotItem::Rtti_PlotMarker);
    for (QwtPlotItem* item : items) {
        auto* marker = dynamic_cast<QwtPlotMarker*>(item);
        if (marker && marker->symbol())
            markers.append(marker);
    }
    return markers;
}

QwtPlotGrid* PlotItems::grid(const QwtPlotDict& plot)
{
    const QwtPlotItemList items = plot.itemList(QwtPlotItem::Rtti_PlotGrid);
    return items.isEmpty() ? nullptr : dynamic_cast<QwtPlotGrid*>(items.first());
}
