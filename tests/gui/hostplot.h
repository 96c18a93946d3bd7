#pragma once

#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotlegend.h>

#include <QCheckBox>
#include <QPointer>

#include <qwt_interval.h>
#include <qwt_legend_label.h>

/// Makes the host's tables with the future that a HostPlot shows, and drops them.
void openMarket();
void closeMarket();

/// A plot set up as a host does it: picker, panner, grid, a legend on the right, two value curves and the
/// line at the quote, with the auto-scale following the plot's wish to switch it off.
///
/// The curves' rectangle goes from 0 to 1000 in price and from 10 to 90 in value; the price step is 5, the
/// smallest distance of strikes 10.
class HostPlot : public PriceBased2dPlot {
    Q_OBJECT

public:
    HostPlot();
    ~HostPlot() override;

    void curveIconReset(const PriceBased2dPlotCurve*) override { }

    /// Shows the plot, 800 by 500 pixels, with the keyboard's focus in it and prices 400 to 600 and values 40
    /// to 60 in view. False if the window does not come up.
    bool comesUp();
    /// Puts ranges into view.
    void look(const QwtInterval& prices, const QwtInterval& values);
    /// The range in view.
    QwtInterval range(int axis);

    /// The scale's range moved by a drag of the canvas of that many pixels.
    QwtInterval panned(int axis, int pixels) const;
    /// The range of the values of the shown value curves at the prices of a range, snapped to the price step,
    /// without its upper end.
    QwtInterval valuesWithin(const QwtInterval& prices) const;

    QCheckBox* checkBox(const PriceBased2dPlotCurve* curve) const;
    QwtLegendLabel* label(const PriceBased2dPlotCurve* curve) const;

    PriceBased2dPlotCurve* theory = nullptr; ///< A parabola, 90 at both ends and 10 in the middle; blue.
    PriceBased2dPlotCurve* market = nullptr; ///< A straight line from 20 to 80; dark green.
    PriceBased2dPlotCurve* quote = nullptr;
    QPointer<PriceBased2dPlotLegend> entries;

private:
    void addCurves();
};
