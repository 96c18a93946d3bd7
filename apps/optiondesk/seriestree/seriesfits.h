#pragma once

#include <window/deskdata.h>

#include <QMutex>
#include <QObject>
#include <QSet>
#include <QThreadPool>
#include <QVector>

#include <atomic>
#include <map>
#include <memory>
#include <optional>

/// Values series beside all else that the window does, each from a snapshot.
///
/// The threads get copies and give back copies. What they share is a list of results, behind a mutex, and a
/// flag for each snapshot that says whether it is still wanted. Of QuantLib they use functions of numbers,
/// and interpolations and optimisers that they make themselves. Its state that belongs to the whole process
/// (singletons such as Settings with the evaluation date, index fixings, the observers, which Debian's build
/// guards with neither QL_ENABLE_SESSIONS nor QL_ENABLE_THREAD_SAFE_OBSERVER_PATTERN) is not touched: time is
/// a number in Pricing. Whoever brings dates, quotes or term structures of QuantLib's there has to keep them
/// in one thread.
class SeriesFits : public QObject {
    Q_OBJECT

public:
    explicit SeriesFits(QObject* parent = nullptr);
    /// Waits for the fits that are being made; the others are not begun.
    ~SeriesFits() override;

    /// Values a series. What comes of an earlier snapshot of it is dropped.
    void start(int futureIsinId, const SeriesSnapshot& snapshot);

    /// The results that wait or are being made for a series, or for all, are dropped.
    void drop(int futureIsinId);
    void dropAll();

    bool isPending(int futureIsinId) const { return m_wanted.count(futureIsinId) > 0; }
    int pendingCount() const { return int(m_wanted.size()); }

    /// Waits until all are valued, and tells of them.
    void finish();

    /// A result that valued() tells of, during the signal only; empty where the series cannot be valued.
    const std::optional<ShownSeries>& result(int futureIsinId) const { return m_results.at(futureIsinId); }

Q_SIGNALS:
    /// Results are there; those that came meanwhile come together.
    void valued(const QVector<int>& futureIsinIds);

private Q_SLOTS:
    void deliver();

private:
    using Ticket = std::shared_ptr<std::atomic<bool>>;
    struct Result {
        int futureIsinId = 0;
        Ticket ticket;
        std::optional<ShownSeries> series;
    };

    void take(const Result& result);

    QThreadPool m_pool;
    /// Of the last snapshot of each series; false once nobody wants its result.
    std::map<int, Ticket> m_wanted;
    std::map<int, std::optional<ShownSeries>> m_results;
    QMutex m_mutex;
    /// Guarded by the mutex.
    QVector<Result> m_done;
};
