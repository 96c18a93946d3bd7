#include "output/visiblecurves.h"

#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotcurve.h>

#include <QLayout>

#include <qwt_legend.h>

#include <algorithm>
#include <limits>

namespace {

// Curves that are not in the legend come last.
int positionIn(const QwtLegend* legend, const QwtPlotCurve& curve)
{
    const QWidget* const entry = legend
        ? legend->legendWidget(curve.plot()->itemToInfo(const_cast<QwtPlotCurve*>(&curve)))
        : nullptr;
    const QLayout* const layout = entry ? legend->contentsWidget()->layout() : nullptr;
    const int index = layout ? layout->indexOf(const_cast<QWidget*>(entry)) : -1;
    return index < 0 ? std::numeric_limits<int>::max() : index;
}

}

QVector<const PriceBased2dPlotCurve*> visibleCurves(const PriceBased2dPlot& plot)
{
    const auto* const legend = qobject_cast<const QwtLegend*>(plot.legend());
    QVector<const PriceBased2dPlotCurve*> curves;
    const QList<PriceBased2dPlotCurve*> attached = plot.attachedCurves(-1);
    for (const PriceBased2dPlotCurve* const curve : attached) {
        if (curve->isVisible())
            curves.append(curve);
    }
    std::stable_sort(
        curves.begin(), curves.end(), [legend](const QwtPlotCurve* first, const QwtPlotCurve* second) {
            return positionIn(legend, *first) < positionIn(legend, *second);
        });
    return curves;
}
