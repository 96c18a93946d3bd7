#include "plot2d/pricebased2dplotscaleengine.h"

PriceBased2dPlotScaleEngine::PriceBased2dPlotScaleEngine(PriceBased2dPlot* plot, int axis, unsigned int base)
    : QwtLinearScaleEngine(base)
    , m_plot(plot)
    , m_axis(axis)
{
}

PriceBased2dPlotScaleEngine::~PriceBased2dPlotScaleEngine() = default;
