#include "monkey/signalwatch.h"

#include <plot2d/pricebased2dplot.h>
#include <plot2d/pricebased2dplotlegend.h>
#include <plot2d/pricebased2dplotpointmanager.h>

#include <cmath>
#include <utility>

namespace Monkey {

namespace {

bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool isSame(const PriceInterval& a, const PriceInterval& b)
{
    return isSame(a.minPrice, b.minPrice) && isSame(a.maxPrice, b.maxPrice) && isSame(a.minStep, b.minStep)
        && a.valid == b.valid;
}

}

void SignalWatch::hear(PriceBased2dPlot& plot)
{
    m_plot = &plot;
    m_knownInterval = plot.priceInterval();
    connect(&plot, SIGNAL(updateAxisLabels()), this, SLOT(onLabels()));
    connect(&plot, SIGNAL(autoScaleEnabled(bool)), this, SLOT(onAutoScale(bool)));
}

void SignalWatch::hear(PriceBased2dPlotLegend& legend)
{
    connect(&legend, SIGNAL(visibilityChanged(QString, bool)), this, SLOT(onVisibility()));
}

void SignalWatch::hear(PriceBased2dPlotPointManager& points)
{
    connect(&points, SIGNAL(priceIntervalChanged(PriceInterval)), this, SLOT(onInterval(PriceInterval)));
}

Signals SignalWatch::take()
{
    if (m_plot) {
        m_signals.intervalChangedSilently = !isSame(m_plot->priceInterval(), m_knownInterval);
        m_knownInterval = m_plot->priceInterval();
    }
    return std::exchange(m_signals, Signals());
}

void SignalWatch::onLabels()
{
    ++m_signals.labels;
}

void SignalWatch::onAutoScale(bool on)
{
    ++m_signals.autoScale;
    if (on)
        m_signals.wrong.append(QStringLiteral("the auto-scale should be on"));
    if (m_plot && !m_plot->autoScaleEnabled())
        m_signals.wrong.append(QStringLiteral("the auto-scale should be off, which it is"));
}

void SignalWatch::onVisibility()
{
    ++m_signals.visibility;
}

void SignalWatch::onInterval(const PriceInterval& interval)
{
    ++m_signals.interval;
    if (m_plot && !isSame(interval, m_plot->priceInterval()))
        m_signals.wrong.append(QStringLiteral("another price interval than the plot's"));
    if (isSame(interval, m_knownInterval))
        m_signals.wrong.append(QStringLiteral("the price interval that was there"));
    m_knownInterval = interval;
}

}
