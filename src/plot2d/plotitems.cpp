#include "plotitems_p.h"

#include <qwt_plot_grid.h>
#include <qwt_plot_marker.h>
#include <qwt_text.h>

#include <algorithm>

namespace {

template <class Condition> PriceBased2dPlotCurve* firstCurve(const QwtPlotDict& plot, Condition condition)
{
    const QList<PriceBased2dPlotCurve*> curves = PlotItems::curves(plot);
    const auto curve = std::find_if(curves.cbegin(), curves.cend(),
        [&condition](const PriceBased2dPlotCurve* candidate) { return condition(*candidate); });
    return curve == curves.cend() ? nullptr : *curve;
}

}

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

QList<PriceBased2dPlotCurve*> PlotItems::curvesOfType(const QwtPlotDict& plot, int type)
{
    QList<PriceBased2dPlotCurve*> found = curves(plot);
    const auto isOther = [type](const PriceBased2dPlotCurve* curve) {
        return curve->dataType() != type || !curve->isValidType(type);
    };
    found.erase(std::remove_if(found.begin(), found.end(), isOther), found.end());
    return found;
}

PriceBased2dPlotCurve* PlotItems::validCurve(const QwtPlotDict& plot, const QString& title)
{
    return firstCurve(plot, [&title](const PriceBased2dPlotCurve& curve) {
        return curve.isValid() && curve.title().text() == title;
    });
}

PriceBased2dPlotCurve* PlotItems::quoteLine(const QwtPlotDict& plot)
{
    return firstCurve(plot, [](const PriceBased2dPlotCurve& curve) {
        return curve.dataType() == PriceBased2dPlotCurve::quoteLineType;
    });
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
