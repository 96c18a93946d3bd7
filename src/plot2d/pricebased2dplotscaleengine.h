#pragma once

#include "plot2d/plot2dexport.h"

#include <database/decimal.h>

#include <qwt_scale_engine.h>

class PriceBased2dPlot;

/// Divides the horizontal (price) axis of a plot into ticks.
class PLOT2D_EXPORT PriceBased2dPlotScaleEngine : public QwtLinearScaleEngine {
public:
    /// For an axis (a QwtPlot axis id) of a plot; base is the base of Qwt's linear division.
    PriceBased2dPlotScaleEngine(PriceBased2dPlot* plot, int axis, unsigned int base);
    ~PriceBased2dPlotScaleEngine() override;

    /// The price to which the axis's labels relate; zero (as after construction) for none.
    void setRescaleFactor(const decimal& factor) { m_rescaleFactor = factor; }
    decimal rescaleFactor() const { return m_rescaleFactor; }

private:
    PriceBased2dPlot* m_plot;
    int m_axis;
    decimal m_rescaleFactor;
};
