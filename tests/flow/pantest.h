#pragma once

#include "flow/shownplot.h"

/// A drag of the canvas of a plot that shows the prices 400 to 600 and the values 40 to 60.
class PanTest : public QObject {
    Q_OBJECT

protected:
    /// Drags by an offset and gives the signals that came, with the lower end of the prices at that moment.
    QStringList drag(int dx, int dy)
    {
        QStringList signalsSeen;
        QObject context;
        const auto note = [&](const QString& text) {
            signalsSeen << QStringLiteral("%1 at %2").arg(text).arg(prices().minValue(), 0, 'f', 0);
        };
        connect(m_panner, QOverload<bool>::of(&PriceBased2dPlotPanner::autoScaleEnabled), &context,
            [&](bool on) { note(QStringLiteral("auto-scale %1").arg(on)); });
        connect(m_panner, &PriceBased2dPlotPanner::updateLabels, &context,
            [&] { note(QStringLiteral("labels")); });
        m_panner->moveCanvas(dx, dy);
        return signalsSeen;
    }

    QwtInterval prices() { return visible(*m_plot, QwtPlot::xBottom); }
    QwtInterval values() { return visible(*m_plot, QwtPlot::yLeft); }

    std::unique_ptr<TestPlot> m_plot;
    PriceBased2dPlotPanner* m_panner = nullptr;

private Q_SLOTS:
    void initTestCase()
    {
        TestHost::createSecurities();
        TestHost::createBoards();
    }
    void cleanupTestCase()
    {
        TestHost::dropSecurities();
        TestHost::dropBoards();
    }
    void init()
    {
        m_plot = shownPlot();
        QVERIFY(m_plot);
        m_panner = m_plot->findChild<PriceBased2dPlotPanner*>();
        QVERIFY(m_panner);
    }
    void cleanup() { m_plot.reset(); }
};
