#include "seriestree/seriesfits.h"

#include <database/exception.h>

#include <QThread>

#include <algorithm>

namespace {

// One processor stays with the widgets.
int threadCount()
{
    return std::max(1, QThread::idealThreadCount() - 1);
}

/// A function for a pool of threads.
class Task : public QRunnable {
public:
    explicit Task(std::function<void()> function)
        : m_function(std::move(function))
    {
    }

    void run() override { m_function(); }

private:
    std::function<void()> m_function;
};

std::optional<ShownSeries> valuedOrNothing(const SeriesSnapshot& snapshot)
{
    try {
        return snapshot.valued();
    } catch (const Exception&) {
        // Its prices may still come.
        return std::nullopt;
    }
}

}

SeriesFits::SeriesFits(QObject* parent)
    : QObject(parent)
{
    m_pool.setMaxThreadCount(threadCount());
}

SeriesFits::~SeriesFits()
{
    dropAll();
    m_pool.waitForDone();
}

void SeriesFits::start(int futureIsinId, const SeriesSnapshot& snapshot)
{
    drop(futureIsinId);
    const auto ticket = std::make_shared<std::atomic<bool>>(true);
    m_wanted[futureIsinId] = ticket;
    m_pool.start(new Task([this, futureIsinId, snapshot, ticket] {
        if (*ticket)
            take({futureIsinId, ticket, valuedOrNothing(snapshot)});
    }));
}

// In a thread of the pool.
void SeriesFits::take(const Result& result)
{
    const QMutexLocker locker(&m_mutex);
    m_done.append(result);
    if (m_done.size() == 1)
        QMetaObject::invokeMethod(this, "deliver", Qt::QueuedConnection);
}

void SeriesFits::drop(int futureIsinId)
{
    const auto wanted = m_wanted.find(futureIsinId);
    if (wanted == m_wanted.end())
        return;
    *wanted->second = false;
    m_wanted.erase(wanted);
}

void SeriesFits::dropAll()
{
    for (const auto& [id, ticket] : m_wanted)
        *ticket = false;
    m_wanted.clear();
    m_pool.clear();
}

void SeriesFits::finish()
{
    m_pool.waitForDone();
    deliver();
}

void SeriesFits::deliver()
{
    QVector<Result> done;
    {
        const QMutexLocker locker(&m_mutex);
        done.swap(m_done);
    }
    QVector<int> ids;
    m_results.clear();
    for (const Result& result : qAsConst(done)) {
        const auto wanted = m_wanted.find(result.futureIsinId);
        if (wanted == m_wanted.end() || wanted->second != result.ticket)
            continue;
        m_wanted.erase(wanted);
        m_results[result.futureIsinId] = result.series;
        ids.append(result.futureIsinId);
    }
    if (!ids.isEmpty())
        Q_EMIT valued(ids);
    m_results.clear();
}
