// A legend that hides and shows curves, and knows after a restart which ones were hidden.
#include "common/exampleplot.h"
#include "common/market.h"
#include "common/program.h"

#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotlegend.h>

#include <database/settings.h>

#include <QApplication>

class RememberingPlot : public ExamplePlot {
public:
    explicit RememberingPlot(Settings& settings)
        : m_settings(settings)
        , m_legend(new PriceBased2dPlotLegend(this))
    {
        m_legend->initCore();
        insertLegend(m_legend, QwtPlot::RightLegend);
        connect(m_legend, SIGNAL(visibilityChanged(QString, bool)), SLOT(setCurveVisible(QString, bool)));

        // Settings know curves by their data types, so each one has its own.
        addCurve("Bid", 9, QColor(0, 114, 178))->setSamples(Market::smile(-0.01));
        addCurve("Middle", 10, QColor(0, 158, 115))->setSamples(Market::smile());
        addCurve("Ask", 11, QColor(230, 159, 0))->setSamples(Market::smile(0.01));
        m_legend->restore(m_settings);
        updateYAxisScale();
    }

    // While the curves are still there.
    ~RememberingPlot() override { m_legend->store(m_settings); }

private:
    Settings& m_settings;
    PriceBased2dPlotLegend* m_legend;
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName("plot2d");
    QCoreApplication::setApplicationName("legend_memory");
    Market::open();
    Settings settings;
    RememberingPlot plot(settings);
    return Program::show(plot);
}
