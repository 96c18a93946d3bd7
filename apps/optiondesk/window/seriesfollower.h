#pragma once

#include <database/record.h>

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <QVector>

/// Tells when the rows of one series in the host's table "securities" have changed.
///
/// Changes are gathered: the first one is announced in the next turn of the event loop, those that follow
/// wait for shortestPause, and for at least as long as the work on the last announcement has taken, its
/// painting included. However fast quotes come, half of the time is left to the user.
class SeriesFollower : public QObject {
    Q_OBJECT

public:
    /// Between two announcements, in milliseconds.
    static constexpr int shortestPause = 30;

    explicit SeriesFollower(QObject* parent = nullptr);

    /// Follows the future of this ISIN id on the chains' board and its options; an id below 1 nothing.
    /// Changes of the series followed so far that are not announced yet never will be.
    void follow(int futureIsinId);

    /// While it lives, changes of the followed future alone are not heard: they are the desk's own.
    class OwnWrites {
    public:
        explicit OwnWrites(SeriesFollower& follower);
        OwnWrites(const OwnWrites&) = delete;
        OwnWrites& operator=(const OwnWrites&) = delete;
        ~OwnWrites();

    private:
        SeriesFollower& m_follower;
    };

Q_SIGNALS:
    /// Rows of the series have come, gone or changed.
    void changed();

private Q_SLOTS:
    void onRows(const QVector<Record>& records);
    void onReset();
    void onTimeout();

private:
    bool concerns(const Record& record) const;
    void schedule();
    void wait();

    int m_futureIsinId = 0;
    int m_futureColumn = -1;
    int m_isinColumn = -1;
    int m_boardColumn = -1;
    int m_ownWrites = 0;

    QTimer m_timer;
    bool m_pending = false;
    /// Since an announcement until all that it led to is done.
    bool m_working = false;
    QElapsedTimer m_workClock;
    QElapsedTimer m_pauseClock;
    qint64 m_pause = shortestPause;
};
