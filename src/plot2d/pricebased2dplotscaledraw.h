#pragma once

#include "plot2d/pricebased2dplotconverter.h"

#include <qwt_scale_draw.h>

/// Draws an axis of a plot: its ticks, its labels and the label of the current quote.
class PLOT2D_EXPORT PriceBased2dPlotScaleDraw : public QwtScaleDraw,
                                                public virtual PriceBased2dPlotConverter {
public:
    /// For an axis: QwtPlot::xBottom or QwtPlot::yLeft.
    explicit PriceBased2dPlotScaleDraw(int axis);
    ~PriceBased2dPlotScaleDraw() override;

    /// The label's text; empty while the scale is empty or its interval is not valid.
    QwtText label(double value) const override;

    /// Chooses anew which ticks carry a label.
    virtual void updateLabels();

    /// Whether the current quote has a label of its own; off after construction.
    void setCurKotirEnabled(bool enabled);
    bool isCurKotirEnabled() const { return m_quoteEnabled; }

    /// The price of the current quote; -1.0 after construction.
    void setCurKotirValue(double quote) { m_quote = quote; }
    double curKotirValue() const { return m_quote; }

    using QwtAbstractScaleDraw::invalidateCache;

private:
    int m_axis;
    bool m_quoteEnabled = false;
    double m_quote = -1.0;
};
