#include "plot2d/pricebased2dplotlegend.h"

#include <qwt_plot.h>

PriceBased2dPlotLegend::PriceBased2dPlotLegend(QwtPlot* plot)
    : QwtLegend(plot)
    , m_plot(plot)
{
}

PriceBased2dPlotLegend::~PriceBased2dPlotLegend() = default;
