#pragma once

#include <QPointer>

#include <qwt_plot.h>

/// Keeps a plot that replots by itself from doing so at each of several changes, which would call the host's
/// replot() in the middle of them. The plot replots once when the pause ends, in which the host may delete
/// anything. Nothing happens for a plot that does not replot by itself, or for none.
class ReplotPause {
public:
    explicit ReplotPause(QwtPlot* plot)
        : m_plot(plot && plot->autoReplot() ? plot : nullptr)
    {
        if (m_plot)
            m_plot->setAutoReplot(false);
    }
    ~ReplotPause()
    {
        if (!m_plot)
            return;
        m_plot->setAutoReplot(true);
        m_plot->autoRefresh();
    }
    ReplotPause(const ReplotPause&) = delete;
    ReplotPause& operator=(const ReplotPause&) = delete;

private:
    QPointer<QwtPlot> m_plot;
};
