#include "window/storedserieswatch.h"

#include <chain/chainstore.h>
#include <chain/chaintables.h>
#include <database/table.h>

#include <algorithm>

StoredSeriesWatch::StoredSeriesWatch(QObject* parent)
    : QObject(parent)
    , m_table(ChainTables::find().securities)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(onTimeout()));
    if (!m_table)
        return;
    m_typeColumn = m_table->columnIndex(QStringLiteral("sectype"));
    m_names = namesInTable();
    for (const char* const signal : {SIGNAL(rowsInserted(QVector<Record>)),
             SIGNAL(rowsRemoved(QVector<Record>)), SIGNAL(rowsChanged(QVector<Record>))})
        connect(m_table, signal, this, SLOT(onRows(QVector<Record>)));
    connect(m_table, SIGNAL(reset()), this, SLOT(onReset()));
}

StoredSeriesWatch::Name StoredSeriesWatch::nameOf(const Record& row) const
{
    // Most rows are options, and their quotes come by the thousand.
    if (!row.isInTable() || row.field(m_typeColumn).toChar() != 'F')
        return {};
    const std::optional<StoredSeries> series = ChainStore::seriesOf(row);
    return series ? Name{series->futureIsinId, series->baseCode, series->expiry} : Name();
}

QHash<Record, StoredSeriesWatch::Name> StoredSeriesWatch::namesInTable() const
{
    QHash<Record, Name> names;
    if (!m_table)
        return names;
    for (const Record& row : m_table->masterIndex()) {
        const Name name = nameOf(row);
        if (name.futureIsinId > 0)
            names.insert(row, name);
    }
    return names;
}

void StoredSeriesWatch::onRows(const QVector<Record>& records)
{
    if (m_timer.isActive())
        return;
    const bool renamed = std::any_of(records.begin(), records.end(),
        [this](const Record& row) { return !(nameOf(row) == m_names.value(row)); });
    if (renamed)
        m_timer.start(0);
}

void StoredSeriesWatch::onReset()
{
    m_timer.start(0);
}

void StoredSeriesWatch::onTimeout()
{
    const QHash<Record, Name> names = namesInTable();
    if (names == m_names)
        return;
    m_names = names;
    Q_EMIT changed();
}
