#include "work/work.h"

#include <algorithm>

Work::Work(QObject* parent)
    : QObject(parent)
{
}

void Work::begin(const QString& text)
{
    m_isRunning = true;
    m_text = text;
    m_percent = unknownPercent;
    Q_EMIT began();
}

void Work::reach(int percent)
{
    const int reachedNow = std::min(percent, 100);
    if (!m_isRunning || reachedNow <= m_percent)
        return;
    m_percent = reachedNow;
    Q_EMIT reached(m_percent);
}

void Work::end()
{
    if (!m_isRunning)
        return;
    m_isRunning = false;
    Q_EMIT ended();
}

void Work::cancel()
{
    if (m_isRunning)
        Q_EMIT cancelWanted();
}
