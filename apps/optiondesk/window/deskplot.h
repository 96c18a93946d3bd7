#pragma once

#include "window/axismode.h"
#include "window/commandline.h"
#include "window/curveset.h"
#include "window/shownseries.h"

#include <plot2d/pricebased2dplot.h>

class PriceBased2dPlotLegend;

/// The plot of one series: its curves over the strikes, with a grid, a legend, and the line at the forward.
class DeskPlot : public PriceBased2dPlot {
    Q_OBJECT

public:
    /// The host's tables must exist (see ChainTables).
    explicit DeskPlot(QWidget* parent = nullptr);

    /// Replaces all curves. The future of this ISIN id on the chains' board is the plot's instrument; its
    /// quote must be the series' forward.
    void showSeries(int futureIsinId, const ShownSeries& series, DeskView view);

    /// What the labels of the price axis show from now on: prices, or prices relative to the forward, on
    /// which the ticks are anchored then.
    void setAxisMode(AxisMode mode);

    /// Takes all curves away and says why instead of a title.
    void showNothing(const QString& reason);

    /// Shows the prices that showSeries() begins with, with auto-scale on.
    void resetView();

    /// The values of the curves with some room above and below, so that no point is cut.
    std::pair<double, double> minMaxYAtXRange() override;

    /// Sees to it that converted labels are round before it paints.
    void replot() override;

    /// The desk shows icons of curves in the legend alone.
    void curveIconReset(const PriceBased2dPlotCurve* curve) override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private Q_SLOTS:
    void followScales();

private:
    void setUpItems();
    void setUpFonts();
    void setUpObservers();
    void removeCurves();
    void attachCurve(const CurveSamples& samples);
    void setUpAxes(const ShownSeries& series, DeskView view);
    void makeRoomForLabels(double forward);
    void applyAxisMode();
    void chooseRoundStep();
    void showForward(double forward);
    void setPlotTitle(const QString& text);
    void arrangeLegend();

    PriceBased2dPlotLegend* m_legend;
    AxisMode m_axisMode = AxisMode::Price;
    double m_forward = 0.0;
    PriceRange m_firstPrices;
};
