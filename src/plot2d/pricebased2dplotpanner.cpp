#include "plot2d/pricebased2dplotpanner.h"

#include "plot2d/pricebased2dplot.h"

#include <qwt_plot_canvas.h>

PriceBased2dPlotPanner::PriceBased2dPlotPanner(QwtPlotCanvas* canvas)
    : QwtPlotPanner(canvas)
    , m_plot(qobject_cast<PriceBased2dPlot*>(plot()))
{
}

PriceBased2dPlotPanner::~PriceBased2dPlotPanner() = default;

void PriceBased2dPlotPanner::setAutoScaleEnabled(bool enabled)
{
    m_autoScale = enabled;
}

bool PriceBased2dPlotPanner::autoScaleEnabled() const
{
    return m_autoScale;
}
