#pragma once

#include <plot2d/pricebased2dplot.h>

#include <QPen>

#include <vector>

class PriceBased2dPlotCurve;
class PriceBased2dPlotPicker;

/// The plot as a host sets it up, with all that a user has on: the fixed style sheet, a legend with check
/// boxes, thinned labels, the quote line with its red label, picker, panner and auto-scale. The tables of the
/// host are made with it.
class HostPlot : public PriceBased2dPlot {
    Q_OBJECT

public:
    static constexpr double quote = 101.37;

    explicit HostPlot(bool hasLegend);

    void curveIconReset(const PriceBased2dPlotCurve*) override { }

    /// A user's step along the price axis.
    void moveTo(double low, double high);

    PriceBased2dPlotCurve* addCurve(const QString& title, const QPen& pen, bool antialiased);
    PriceBased2dPlotCurve* addQuoteLine();
    /// Shows the quote, its line over these values.
    void showQuote(PriceBased2dPlotCurve& line, double low, double high);

    /// The nearest sample of all curves to a place on the canvas, in parts of its size. Its index, -1 for
    /// none.
    int nearest(double x, double y, const PriceBased2dPlotCurve** curve);

private:
    int m_curves = 0;
};
