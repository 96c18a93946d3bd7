#include "support/loopgap.h"

#include <QThread>

#include <algorithm>

namespace {

constexpr int tickMilliseconds = 5;

}

TestSupport::LoopGap::LoopGap()
    : m_ticker(QThread::create([this] {
        while (!m_end.tryAcquire(1, tickMilliseconds))
            ++m_ticks;
    }))
{
    connect(&m_timer, SIGNAL(timeout()), SLOT(onTurn()));
    m_timer.start(tickMilliseconds);
    m_ticker->start();
}

TestSupport::LoopGap::~LoopGap()
{
    m_end.release();
    m_ticker->wait();
}

qint64 TestSupport::LoopGap::longest() const
{
    return longestTicks() * tickMilliseconds;
}

qint64 TestSupport::LoopGap::longestTicks() const
{
    return std::max(m_longest, m_ticks - m_lastTurn);
}

void TestSupport::LoopGap::onTurn()
{
    m_longest = longestTicks();
    m_lastTurn = m_ticks;
    ++m_turns;
}
