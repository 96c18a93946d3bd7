#pragma once

#include <plot2d/priceinterval.h>

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

class PriceBased2dPlot;
class PriceBased2dPlotLegend;
class PriceBased2dPlotPointManager;

namespace Monkey {

/// How often the signals that a host hears came in a step.
struct Signals {
    int labels = 0;
    int autoScale = 0;
    int visibility = 0;
    int interval = 0;
    /// The plot's interval is not the one of the last signal.
    bool intervalChangedSilently = false;
    /// What was wrong at the moment of a signal.
    QStringList wrong;
};

/// Hears the signals of a plot, its legend and its point manager.
class SignalWatch : public QObject {
    Q_OBJECT

public:
    /// Of the plot; of others as the host makes them.
    void hear(PriceBased2dPlot& plot);
    void hear(PriceBased2dPlotLegend& legend);
    /// Before it computes its first interval.
    void hear(PriceBased2dPlotPointManager& points);

    /// Those since the last call.
    Signals take();

private Q_SLOTS:
    void onLabels();
    void onAutoScale(bool on);
    void onVisibility();
    void onInterval(const PriceInterval& interval);

private:
    QPointer<PriceBased2dPlot> m_plot;
    PriceInterval m_knownInterval;
    Signals m_signals;
};

}
