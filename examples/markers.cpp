// A curve of which some points carry markers, here each tenth.
#include "common/exampleplot.h"
#include "common/market.h"
#include "common/program.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <QApplication>

class TradesPlot : public ExamplePlot {
public:
    TradesPlot()
        : m_trades(addCurve("Trades", PriceBased2dPlotCurve::markedType, QColor(213, 94, 0)))
    {
        mark(10);
    }

    /// Marks each n-th sample. Markers are made and deleted as needed; the plot owns them.
    void mark(int n)
    {
        QVector<PriceBased2dPlotPoint> points;
        const QVector<QPointF> smile = Market::smile();
        for (const QPointF& sample : smile)
            points.append({sample.x(), sample.y(), points.size() % n == 0});
        m_trades->setMarkerSamples(points);
        updateYAxisScale();
    }

private:
    PriceBased2dPlotCurve* m_trades;
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Market::open();
    TradesPlot plot;
    return Program::show(plot);
}
