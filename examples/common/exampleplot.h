#pragma once

#include <plot2d/pricebased2dplot.h>

class PriceBased2dPlotCurve;

/// The plot as the examples have it in common: it shows the market's future over all strikes, has a picker,
/// and follows its own signals as most hosts want it.
class ExamplePlot : public PriceBased2dPlot {
public:
    ExamplePlot();

    void curveIconReset(const PriceBased2dPlotCurve*) override { }

    /// Attaches an empty curve, a line of two pixels that the legend shows.
    PriceBased2dPlotCurve* addCurve(const QString& title, int dataType, const QColor& color);

protected:
    /// Puts a picker of the example's own in the place of the plain one.
    void usePicker(PriceBased2dPlotPicker* picker);
};
