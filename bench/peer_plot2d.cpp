// The plot as a host sets it up, with all that a user has on, for a harness that compares plot libraries by the
// same work. The harness brings bench.h: the data, the steps, the timing.

#include "support/testhost.h"

#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotlegend.h>
#include <plot2d/pricebased2dplotpicker.h>

#include <bench.h>
#include <qwt_plot_canvas.h>
#include <qwt_scale_map.h>

#include <array>

namespace {

class HostPlot : public PriceBased2dPlot {
public:
    HostPlot()
        : PriceBased2dPlot(true)
    {
        m_picker = new PriceBased2dPlotPicker(canvas());
        setIsinId(10);
        setBoardId(2);
        m_picker->initTimer();
        setCanvasObservers();
        auto* const plotLegend = new PriceBased2dPlotLegend(this);
        plotLegend->initCore();
        insertLegend(plotLegend, BottomLegend);
        connect(plotLegend, SIGNAL(visibilityChanged(QString, bool)), this,
            SLOT(setCurveVisible(QString, bool)));
        connect(this, SIGNAL(autoScaleEnabled(bool)), this, SLOT(setAutoScaleEnabled(bool)));
        connect(this, SIGNAL(updateAxisLabels()), this, SLOT(updateScaleLabels()));
        setAutoScaleEnabled(true);
    }

    void curveIconReset(const PriceBased2dPlotCurve*) override { }

    /// A user's step along the price axis.
    void moveTo(double low, double high)
    {
        setAxisScale(xBottom, low, high, 0.0);
        updateYAxisScale();
        Q_EMIT updateAxisLabels();
    }

    PriceBased2dPlotPicker& picker() { return *m_picker; }
};

class Plot2dPeer : public bench::Peer {
public:
    QWidget* widget() override { return m_plot; }

    void build(const bench::Opts& options) override
    {
        TestHost::createBoards();
        TestHost::createSecurities();
        TestHost::addSecurity(TestHost::future(
            {{QStringLiteral("price_step"), QStringLiteral("0.01")},
                {QStringLiteral("cur_kotir"), QStringLiteral("101.37")}}));
        m_plot = new HostPlot;
        for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)})
            m_plot->setAxisFont(axis, QApplication::font());
        if (auto* const frame = qobject_cast<QwtPlotCanvas*>(m_plot->canvas()))
            frame->setFrameStyle(QFrame::NoFrame);
        if (!options.legend)
            m_plot->insertLegend(nullptr);
        for (int i = 0; i <= bench::K; ++i) {
            const bool isQuote = i == bench::K;
            auto* const curve = new PriceBased2dPlotCurve(
                m_plot, isQuote ? QStringLiteral("quote") : QStringLiteral("curve %1").arg(i));
            constexpr int firstType = 9;
            curve->setDataType(isQuote ? PriceBased2dPlotCurve::quoteLineType : firstType + i % 4);
            curve->setPen(QPen(isQuote ? QColor(Qt::red) : bench::colour(i), options.pen));
            curve->setStyle(isQuote ? QwtPlotCurve::Sticks : QwtPlotCurve::Lines);
            curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
            curve->setRenderHint(QwtPlotItem::RenderAntialiased, options.aa);
            curve->attach(m_plot);
            m_curves[std::size_t(i)] = curve;
        }
    }

    void feed(const bench::Data& data) override
    {
        for (int i = 0; i < bench::K; ++i)
            m_curves[std::size_t(i)]->setSamples(data.x.data(), data.y[i].data(), data.n);
        const double prices[] = {bench::QUOTE, bench::QUOTE};
        const double values[] = {data.ymin, data.ymax};
        m_curves[bench::K]->setSamples(prices, values, 2);
        m_plot->setCurKotirValue(bench::QUOTE);
        m_plot->setCurKotirEnabled(true);
    }

    void setView(const bench::View& view) override { m_plot->moveTo(view.x0, view.x1); }
    bool ownYRange() const override { return true; }
    QRect plotRect() const override { return m_plot->canvas()->geometry(); }

    double nearest(double x, double y, int& curve, int& index) override
    {
        const QPoint position(int(x * m_plot->canvas()->width()), int(y * m_plot->canvas()->height()));
        PriceBased2dPlotPicker& picker = m_plot->picker();
        picker.setPosition(picker.transformedPoint(position));
        const ClosestPointParams found = picker.getClosestCurveParams(picker.usedCurves());
        index = found.index;
        for (int i = 0; i < bench::K; ++i) {
            if (m_curves[std::size_t(i)] == found.curve)
                curve = i;
        }
        return index;
    }

private:
    HostPlot* m_plot = nullptr;
    std::array<PriceBased2dPlotCurve*, bench::K + 1> m_curves{};
};

}

int main(int argc, char** argv)
{
    return bench::benchMain(argc, argv, "plot2d", [] { return new Plot2dPeer; });
}
