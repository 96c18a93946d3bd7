#include "contender.h"
#include "hostplot.h"

#include <QApplication>

#include <qcustomplot.h>

#include <limits>

namespace {

class QCustomPlotContender : public Contender {
public:
    explicit QCustomPlotContender(const BenchLook& look)
    {
        for (QCPAxis* const axis : {m_plot.xAxis, m_plot.yAxis}) {
            axis->setTickLabelFont(QApplication::font());
            axis->grid()->setVisible(false);
        }
        m_plot.legend->setVisible(true);
        for (int i = 0; i <= look.curves; ++i) {
            QCPGraph* const graph = m_plot.addGraph();
            const bool isQuote = i == look.curves;
            graph->setName(QStringLiteral("curve %1").arg(i));
            graph->setPen(isQuote ? QPen(Qt::red, 1.0) : QPen(curveColor(i), look.penWidth));
            graph->setAntialiased(look.isSoft && !isQuote);
            m_graphs.push_back(graph);
        }
    }

    QWidget* widget() override { return &m_plot; }

    void feed(const BenchData& data) override
    {
        m_data = &data;
        // It keeps samples of its own kind, made of the arrays.
        for (std::size_t i = 0; i + 1 < m_graphs.size(); ++i)
            m_graphs[i]->setData(data.prices, data.values[i]);
    }

    void show(double left, double right) override
    {
        const BenchView view = viewOf(*m_data, left, right);
        m_graphs.back()->setData({HostPlot::quote, HostPlot::quote}, {view.low, view.high}, true);
        m_plot.xAxis->setRange(left, right);
        m_plot.yAxis->setRange(view.low, view.high);
        m_plot.replot(QCustomPlot::rpQueuedRefresh);
    }

    void pick(double x, double y) override
    {
        const QRect canvas = m_plot.axisRect()->rect();
        const QPointF place(canvas.left() + x * canvas.width(), canvas.top() + y * canvas.height());
        double best = std::numeric_limits<double>::max();
        for (std::size_t i = 0; i + 1 < m_graphs.size(); ++i) {
            QVariant details;
            const double distance = m_graphs[i]->selectTest(place, false, &details);
            if (distance >= 0.0 && distance < best)
                best = distance;
        }
    }

    void findRange(double left, double right) override
    {
        for (std::size_t i = 0; i + 1 < m_graphs.size(); ++i) {
            bool isFound = false;
            m_graphs[i]->getValueRange(isFound, QCP::sdBoth, QCPRange(left, right));
        }
    }

private:
    QCustomPlot m_plot;
    std::vector<QCPGraph*> m_graphs;
    const BenchData* m_data = nullptr;
};

}

std::unique_ptr<Contender> createQCustomPlotContender(const BenchLook& look)
{
    return std::make_unique<QCustomPlotContender>(look);
}
