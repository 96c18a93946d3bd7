#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotscaledraw.h>
#include <plot2d/pricebased2dplotscaleengine.h>

#include <qwt_scale_engine.h>

#include <array>

namespace {

/// Qwt's scale draw, as large as the library's, so that it may come to lie where one was.
class LargeScaleDraw : public QwtScaleDraw {
private:
    std::array<char, sizeof(PriceBased2dPlotScaleDraw) - sizeof(QwtScaleDraw)> m_room{};
};

class LargeScaleEngine : public QwtLinearScaleEngine {
private:
    std::array<char, sizeof(PriceBased2dPlotScaleEngine) - sizeof(QwtLinearScaleEngine)> m_room{};
};

}

/// Scale draws and engines that a host puts in the place of the plot's own.
class tst_hostsscales : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void plainOnesAreLeftAlone();
    void derivedDrawIsServed();
    void derivedEngineIsServed();
};

void tst_hostsscales::init()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

// Again and again, as an object may get the place of the one that went.
void tst_hostsscales::plainOnesAreLeftAlone()
{
    TestPlot plot;
    for (int i = 0; i < 20; ++i) {
        for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)})
            plot.setAxisScaleDraw(axis, new LargeScaleDraw);
        plot.setAxisScaleEngine(QwtPlot::xBottom, new LargeScaleEngine);
        plot.setCurKotirValue(5.0);
        plot.setCurKotirEnabled(true);
        plot.setRescaleFactor(decimal::fromDouble(3.0, 0));
        QVERIFY(!plot.conversionEnabled(QwtPlot::xBottom));
        QVERIFY(!plot.conversionEnabled(QwtPlot::yLeft));
        QCOMPARE(plot.xAxisMetricUnit(), QString());
        plot.updateScaleLabels();
        plot.calls.clear();
        plot.updateAxisWidgets();
        QCOMPARE(plot.calls.count(QStringLiteral("replot")), 2);
    }
}

void tst_hostsscales::derivedDrawIsServed()
{
    class HostDraw : public PriceBased2dPlotScaleDraw {
    public:
        using PriceBased2dPlotScaleDraw::PriceBased2dPlotScaleDraw;
    };
    TestPlot plot;
    auto* const draw = new HostDraw(QwtPlot::xBottom);
    plot.setAxisScaleDraw(QwtPlot::xBottom, draw);
    plot.setCurKotirEnabled(true);
    plot.setCurKotirValue(7.5);
    QVERIFY(draw->isCurKotirEnabled());
    QCOMPARE(draw->curKotirValue(), 7.5);
}

void tst_hostsscales::derivedEngineIsServed()
{
    class HostEngine : public PriceBased2dPlotScaleEngine {
    public:
        using PriceBased2dPlotScaleEngine::PriceBased2dPlotScaleEngine;
    };
    TestPlot plot;
    auto* const engine = new HostEngine(&plot, QwtPlot::xBottom, 10);
    plot.setAxisScaleEngine(QwtPlot::xBottom, engine);
    plot.setRescaleFactor(decimal::fromDouble(3.0, 0));
    QCOMPARE(engine->rescaleFactor().toDouble(), 3.0);
}

PLOT2D_TEST_MAIN(tst_hostsscales)
#include "tst_hostsscales.moc"
