#include "rowindex_p.h"

#include "database/table.h"
#include "directory/optionalfield.h"

HashValue qHash(const RowKey& key, HashValue seed)
{
    return qHashRange(key.values.begin(), key.values.end(), seed);
}

RowIndex::RowIndex(const QStringList& columns)
    : m_names(columns)
{
    Q_ASSERT(!columns.isEmpty() && static_cast<std::size_t>(columns.size()) <= m_columns.size());
}

void RowIndex::clear(const Table* table)
{
    m_rows.clear();
    m_keys.clear();
    for (int i = 0; i < m_names.size(); ++i)
        m_columns[static_cast<std::size_t>(i)] = table ? table->columnIndex(m_names.at(i)) : -1;
}

void RowIndex::insert(const Record& record, qint64 order)
{
    put(record, order, keyOf(record));
}

void RowIndex::put(const Record& record, qint64 order, const std::optional<RowKey>& key)
{
    if (!key)
        return;
    m_rows[*key].emplace(order, record);
    m_keys.insert(record, *key);
}

void RowIndex::remove(const Record& record, qint64 order)
{
    const auto key = m_keys.find(record);
    if (key == m_keys.end())
        return;
    const auto rows = m_rows.find(*key);
    rows->erase(order);
    if (rows->empty())
        m_rows.erase(rows);
    m_keys.erase(key);
}

void RowIndex::update(const Record& record, qint64 order)
{
    const std::optional<RowKey> now = keyOf(record);
    const auto before = m_keys.constFind(record);
    const bool same = before == m_keys.constEnd() ? !now : now && *now == *before;
    if (same)
        return;
    remove(record, order);
    put(record, order, now);
}

int RowIndex::count(const RowKey& key) const
{
    const auto rows = m_rows.constFind(key);
    return rows == m_rows.constEnd() ? 0 : static_cast<int>(rows->size());
}

Record RowIndex::first(const RowKey& key) const
{
    const auto rows = m_rows.constFind(key);
    if (rows == m_rows.constEnd())
        return Record();
    // A listener that hears of a change before this index may ask already: what it finds must hold.
    for (const auto& [order, record] : *rows) {
        const std::optional<RowKey> now = keyOf(record);
        if (record.isInTable() && now && *now == key)
            return record;
    }
    return Record();
}

std::optional<RowKey> RowIndex::keyOf(const Record& record) const
{
    RowKey key;
    for (std::size_t i = 0; i < static_cast<std::size_t>(m_names.size()); ++i) {
        const std::optional<qint64> id = OptionalField::integer(record.value(m_columns[i]));
        if (!id)
            return std::nullopt;
        key.values[i] = *id;
    }
    return key;
}
