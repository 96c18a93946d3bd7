#include "contender.h"
#include "hostplot.h"

#include <QApplication>

#include <qwt_legend.h>
#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>

#include <limits>

namespace {

class QwtContender : public Contender {
public:
    explicit QwtContender(const BenchLook& look)
    {
        for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)})
            m_plot.setAxisFont(axis, QApplication::font());
        m_plot.setCanvasBackground(Qt::white);
        m_plot.setAutoReplot(false);
        qobject_cast<QwtPlotCanvas*>(m_plot.canvas())->setFrameStyle(QFrame::NoFrame);
        auto* const legend = new QwtLegend;
        legend->setDefaultItemMode(QwtLegendData::Checkable);
        m_plot.insertLegend(legend, QwtPlot::BottomLegend);
        for (int i = 0; i <= look.curves; ++i) {
            auto* const curve = new QwtPlotCurve(QStringLiteral("curve %1").arg(i));
            const bool isQuote = i == look.curves;
            curve->setPen(isQuote ? QPen(Qt::red, 1.0) : QPen(curveColor(i), look.penWidth));
            curve->setRenderHint(QwtPlotItem::RenderAntialiased, look.isSoft && !isQuote);
            curve->attach(&m_plot);
            m_curves.push_back(curve);
        }
    }

    QWidget* widget() override { return &m_plot; }

    void feed(const BenchData& data) override
    {
        m_data = &data;
        for (std::size_t i = 0; i + 1 < m_curves.size(); ++i)
            m_curves[i]->setSamples(data.prices.constData(), data.values[i].constData(), data.size());
    }

    void show(double left, double right) override
    {
        const BenchView view = viewOf(*m_data, left, right);
        m_curves.back()->setSamples(
            {QPointF(HostPlot::quote, view.low), QPointF(HostPlot::quote, view.high)});
        m_plot.setAxisScale(QwtPlot::xBottom, left, right);
        m_plot.setAxisScale(QwtPlot::yLeft, view.low, view.high);
        m_plot.replot();
    }

    void pick(double x, double y) override
    {
        const QPoint place(int(x * m_plot.canvas()->width()), int(y * m_plot.canvas()->height()));
        double best = std::numeric_limits<double>::max();
        for (std::size_t i = 0; i + 1 < m_curves.size(); ++i) {
            double distance = 0.0;
            if (m_curves[i]->closestPoint(place, &distance) >= 0 && distance < best)
                best = distance;
        }
    }

    void findRange(double left, double right) override { viewOf(*m_data, left, right); }

private:
    QwtPlot m_plot;
    std::vector<QwtPlotCurve*> m_curves;
    const BenchData* m_data = nullptr;
};

}

std::unique_ptr<Contender> createQwtContender(const BenchLook& look)
{
    return std::make_unique<QwtContender>(look);
}
