#include "contender.h"
#include "hostplot.h"

#include <plot2d/pricebased2dplotcurve.h>

namespace {

class Plot2dContender : public Contender {
public:
    explicit Plot2dContender(const BenchLook& look)
        : m_plot(true)
    {
        for (int i = 0; i < look.curves; ++i) {
            m_curves.push_back(m_plot.addCurve(
                QStringLiteral("curve %1").arg(i), QPen(curveColor(i), look.penWidth), look.isSoft));
        }
        m_quoteLine = m_plot.addQuoteLine();
    }

    QWidget* widget() override { return &m_plot; }

    void feed(const BenchData& data) override
    {
        for (std::size_t i = 0; i < m_curves.size(); ++i)
            m_curves[i]->setSamples(data.prices.constData(), data.values[i].constData(), data.size());
        m_plot.showQuote(*m_quoteLine, 0.0, 1.0);
    }

    void show(double left, double right) override { m_plot.moveTo(left, right); }

    void pick(double x, double y) override
    {
        const PriceBased2dPlotCurve* curve = nullptr;
        m_plot.nearest(x, y, &curve);
    }

    void findRange(double left, double right) override
    {
        m_plot.setAxisScale(QwtPlot::xBottom, left, right, 0.0);
        m_plot.updateAxes();
        m_plot.minMaxYAtXRange();
    }

private:
    HostPlot m_plot;
    std::vector<PriceBased2dPlotCurve*> m_curves;
    PriceBased2dPlotCurve* m_quoteLine = nullptr;
};

}

std::unique_ptr<Contender> createPlot2dContender(const BenchLook& look)
{
    return std::make_unique<Plot2dContender>(look);
}
