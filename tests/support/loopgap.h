#pragma once

#include <QObject>
#include <QSemaphore>
#include <QTimer>

#include <atomic>
#include <memory>

class QThread;

namespace TestSupport {

/// The longest time between two turns of this thread's event loop while it lives.
///
/// It is counted in ticks of a second thread: a stalled machine stops both, what blocks this thread stops
/// only this one.
class LoopGap : public QObject {
    Q_OBJECT

public:
    LoopGap();
    ~LoopGap() override;

    /// In milliseconds of the second thread; the time since the last turn counts as well.
    qint64 longest() const;
    int turns() const { return m_turns; }

private Q_SLOTS:
    void onTurn();

private:
    qint64 longestTicks() const;

    QTimer m_timer;
    std::atomic<qint64> m_ticks{0};
    qint64 m_lastTurn = 0;
    qint64 m_longest = 0;
    int m_turns = 0;
    QSemaphore m_end;
    std::unique_ptr<QThread> m_ticker;
};

}
