#pragma once

#include <window/deskdata.h>
#include <window/deskplot.h>

#include <chain/optionchain.h>
#include <plot2d/pricebased2dplotcurve.h>

#include <QImage>

#include <memory>

/// A plot of the test's chain, with a stated volatility at each strike, that no screen shows.
class ShownPlot {
public:
    /// The colour of the line at the forward.
    static constexpr QRgb red = qRgb(255, 0, 0);

    ShownPlot();

    DeskPlot& plot() { return *m_plot; }
    /// The series to show is the first one of this chain from now on.
    void import(const OptionChain& chain);
    ShownSeries show(DeskView view, const SeriesFacts& given = SeriesFacts());
    QImage picture(const QSize& size = QSize(1000, 600));
    /// The canvas within the picture.
    QRectF canvasRect() const { return m_plot->canvas()->geometry(); }
    /// The only curve of a type; null where there is none, or more.
    const PriceBased2dPlotCurve* curve(int type) const;

private:
    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskPlot> m_plot;
    int m_futureIsinId = 0;
};
