#include "window/seriesfollower.h"

#include <chain/chaintables.h>
#include <database/table.h>
#include <directory/optionalfield.h>

#include <algorithm>

SeriesFollower::SeriesFollower(QObject* parent)
    : QObject(parent)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(onTimeout()));
}

SeriesFollower::OwnWrites::OwnWrites(SeriesFollower& follower)
    : m_follower(follower)
{
    ++m_follower.m_ownWrites;
}

SeriesFollower::OwnWrites::~OwnWrites()
{
    --m_follower.m_ownWrites;
}

void SeriesFollower::follow(int futureIsinId)
{
    m_futureIsinId = futureIsinId;
    m_pending = false;
    Table* const table = ChainTables::find().securities;
    if (!table)
        return;
    m_futureColumn = table->columnIndex(QStringLiteral("fut_isin_id"));
    m_isinColumn = table->columnIndex(QStringLiteral("isin_id"));
    m_boardColumn = table->columnIndex(QStringLiteral("board_id"));
    for (const char* const signal : {SIGNAL(rowsInserted(QVector<Record>)),
             SIGNAL(rowsRemoved(QVector<Record>)), SIGNAL(rowsChanged(QVector<Record>))})
        connect(table, signal, this, SLOT(onRows(QVector<Record>)), Qt::UniqueConnection);
    connect(table, SIGNAL(reset()), this, SLOT(onReset()), Qt::UniqueConnection);
}

bool SeriesFollower::concerns(const Record& record) const
{
    if (OptionalField::integer(record.value(m_boardColumn)) != qint64(chainBoardId))
        return false;
    const bool isFuture = OptionalField::integer(record.value(m_isinColumn)) == qint64(m_futureIsinId);
    const bool isOption = OptionalField::integer(record.value(m_futureColumn)) == qint64(m_futureIsinId);
    return isOption || (isFuture && m_ownWrites == 0);
}

void SeriesFollower::onRows(const QVector<Record>& records)
{
    if (m_futureIsinId < 1 || m_pending)
        return;
    if (std::any_of(records.begin(), records.end(), [this](const Record& row) { return concerns(row); }))
        schedule();
}

void SeriesFollower::onReset()
{
    if (m_futureIsinId > 0)
        schedule();
}

void SeriesFollower::schedule()
{
    m_pending = true;
    if (!m_working)
        wait();
}

void SeriesFollower::wait()
{
    const qint64 passed = m_pauseClock.isValid() ? m_pauseClock.elapsed() : m_pause;
    m_timer.start(int(std::max<qint64>(0, m_pause - passed)));
}

void SeriesFollower::onTimeout()
{
    if (m_working) {
        m_working = false;
        m_pause = std::max<qint64>(shortestPause, m_workClock.elapsed());
        m_pauseClock.start();
        if (m_pending)
            wait();
        return;
    }
    if (!m_pending)
        return;
    m_pending = false;
    m_working = true;
    m_workClock.start();
    // Paint events of this turn come before the timer.
    m_timer.start(0);
    Q_EMIT changed();
}
