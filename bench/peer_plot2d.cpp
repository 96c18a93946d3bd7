// The plot as a contender of a harness that compares plot libraries by the same work. The harness brings
// bench.h: the data, the steps, the timing.

#include "hostplot.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <bench.h>

#include <array>

namespace {

class Plot2dPeer : public bench::Peer {
public:
    QWidget* widget() override { return m_plot; }

    void build(const bench::Opts& options) override
    {
        m_plot = new HostPlot(options.legend);
        for (int i = 0; i < bench::K; ++i) {
            m_curves[std::size_t(i)] = m_plot->addCurve(
                QStringLiteral("curve %1").arg(i), QPen(bench::colour(i), options.pen), options.aa);
        }
        m_quoteLine = m_plot->addQuoteLine();
    }

    void feed(const bench::Data& data) override
    {
        for (int i = 0; i < bench::K; ++i)
            m_curves[std::size_t(i)]->setSamples(data.x.data(), data.y[i].data(), data.n);
        m_plot->showQuote(*m_quoteLine, data.ymin, data.ymax);
    }

    void setView(const bench::View& view) override { m_plot->moveTo(view.x0, view.x1); }
    bool ownYRange() const override { return true; }
    QRect plotRect() const override { return m_plot->canvas()->geometry(); }

    double nearest(double x, double y, int& curve, int& index) override
    {
        const PriceBased2dPlotCurve* found = nullptr;
        index = m_plot->nearest(x, y, &found);
        for (int i = 0; i < bench::K; ++i) {
            if (m_curves[std::size_t(i)] == found)
                curve = i;
        }
        return index;
    }

private:
    HostPlot* m_plot = nullptr;
    std::array<PriceBased2dPlotCurve*, bench::K> m_curves{};
    PriceBased2dPlotCurve* m_quoteLine = nullptr;
};

}

int main(int argc, char** argv)
{
    return bench::benchMain(argc, argv, "plot2d", [] { return new Plot2dPeer; });
}
