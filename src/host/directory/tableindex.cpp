#include "tableindex_p.h"

#include "database/database.h"
#include "database/icore.h"
#include "database/table.h"

TableIndex::TableIndex(const QString& tableName, const QVector<QStringList>& keys)
    : m_tableName(tableName)
    , m_indexes(keys.begin(), keys.end())
{
}

TableIndex::~TableIndex() = default;

void TableIndex::follow()
{
    const Database* database = ICore::instance()->database();
    Table* table = database ? database->table(m_tableName) : nullptr;
    if (table == m_table)
        return;

    if (m_table)
        disconnect(m_table, nullptr, this, nullptr);
    forget();
    m_table = table;
    if (!table)
        return;
    connect(table, SIGNAL(rowsInserted(QVector<Record>)), this, SLOT(onRowsInserted(QVector<Record>)));
    connect(table, SIGNAL(rowsRemoved(QVector<Record>)), this, SLOT(onRowsRemoved(QVector<Record>)));
    connect(table, SIGNAL(rowsChanged(QVector<Record>)), this, SLOT(onRowsChanged(QVector<Record>)));
    connect(table, SIGNAL(reset()), this, SLOT(forget()));
    connect(table, SIGNAL(destroyed()), this, SLOT(forget()));
}

Record TableIndex::first(int keySet, const RowKey& key)
{
    follow();
    if (!m_table)
        return Record();
    if (m_built)
        addMissing();
    else
        build();

    const RowIndex& index = m_indexes[static_cast<std::size_t>(keySet)];
    if (!m_order.isExact() && index.count(key) > 1)
        build();
    return index.first(key);
}

int TableIndex::columnIndex(const QString& name) const
{
    return m_table ? m_table->columnIndex(name) : -1;
}

void TableIndex::onRowsInserted(const QVector<Record>& records)
{
    if (!m_built || !m_table)
        return;
    // Other listeners, called earlier, may have taken rows out again or may have asked for them already.
    QVector<Record> run;
    run.reserve(records.size());
    for (const Record& record : records) {
        if (record.isInTable() && !m_numbers.contains(record))
            run.append(record);
    }
    add(run);
}

void TableIndex::onRowsRemoved(const QVector<Record>& records)
{
    for (const Record& record : records) {
        const auto number = m_numbers.find(record);
        if (number == m_numbers.end())
            continue;
        if (record.isInTable()) {
            // Another listener put the row back, perhaps elsewhere.
            m_order.setInexact();
            continue;
        }
        for (RowIndex& index : m_indexes)
            index.remove(record, *number);
        m_numbers.erase(number);
    }
}

void TableIndex::onRowsChanged(const QVector<Record>& records)
{
    for (const Record& record : records) {
        const auto number = m_numbers.constFind(record);
        if (number == m_numbers.constEnd())
            continue;
        for (RowIndex& index : m_indexes)
            index.update(record, *number);
    }
}

void TableIndex::forget()
{
    m_built = false;
    m_numbers.clear();
    for (RowIndex& index : m_indexes)
        index.clear(nullptr);
}

void TableIndex::build()
{
    forget();
    for (RowIndex& index : m_indexes)
        index.clear(m_table);
    m_order.restart();
    QVector<Record> all;
    all.reserve(m_table->rowCount());
    for (const Record& record : m_table->masterIndex())
        all.append(record);
    m_numbers.reserve(all.size());
    add(all);
    m_built = true;
}

void TableIndex::addMissing()
{
    const int missing = m_table->rowCount() - static_cast<int>(m_numbers.size());
    if (missing <= 0)
        return;
    // Rows are there that this index was not told of yet, since listeners connected earlier hear first. New
    // rows mostly stand at the end.
    QVector<Record> tail;
    tail.reserve(missing);
    for (int i = m_table->rowCount() - missing; i < m_table->rowCount(); ++i) {
        const Record record = m_table->record(i);
        if (m_numbers.contains(record)) {
            build();
            return;
        }
        tail.append(record);
    }
    add(tail);
}

void TableIndex::add(const QVector<Record>& run)
{
    qint64 number = m_order.place(*m_table, run);
    for (const Record& record : run) {
        m_numbers.insert(record, number);
        for (RowIndex& index : m_indexes)
            index.insert(record, number);
        ++number;
    }
}
