// A curve, and the line at the current quote with its red label on the axis of prices.
#include "common/market.h"
#include "common/program.h"

#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotcurve.h>

#include <QApplication>

class QuotePlot : public PriceBased2dPlot {
public:
    QuotePlot()
        : PriceBased2dPlot(true)
    {
        setIsinId(Market::isinId);
        setBoardId(Market::boardId);
        // The line is shown for a quote within the prices that are known.
        setPriceInterval({Market::lowest, Market::highest, Market::priceStep, true});
        setAxisScale(QwtPlot::xBottom, Market::lowest, Market::highest, 0.0);
        addSmile();
        addQuote();
        updateYAxisScale();
    }

    // Nothing but the legend, which this plot has not, shows a curve's icon.
    void curveIconReset(const PriceBased2dPlotCurve*) override { }

private:
    void addSmile()
    {
        auto* const curve = new PriceBased2dPlotCurve(this, QString("Volatility"));
        curve->setDataType(9);
        curve->setPen(QColor(0, 114, 178), 2.0);
        curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
        curve->setSamples(Market::smile());
        curve->attach(this);
    }

    // Two samples at the quote, drawn as sticks: the plot stretches the line over the vertical scale.
    void addQuote()
    {
        auto* const line = new PriceBased2dPlotCurve(this, QString("Quote"));
        line->setDataType(PriceBased2dPlotCurve::quoteLineType);
        line->setPen(PriceBased2dPlotCurve::CurKotirCurveColor, 1.0);
        line->setStyle(QwtPlotCurve::Sticks);
        line->setLegendAttribute(QwtPlotCurve::LegendShowLine);
        line->setSamples(QVector<QPointF>{{Market::quote, 0.0}, {Market::quote, 1.0}});
        line->attach(this);
        // Reads the quote from the host's table for the label.
        line->setVisible(true);
    }
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Market::open();
    QuotePlot plot;
    plot.resize(640, 400);
    return Program::show(plot);
}
