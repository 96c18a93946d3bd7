#include "sqltablestore_p.h"

#include "database/table.h"
#include "sqlrowkeys_p.h"

#include <algorithm>

void SqlTableStore::Plan::insert(const QVector<Record>& rows, const QVector<qint64>& keys)
{
    for (int i = 0; i < rows.size(); ++i)
        inserted.append({rows[i], keys[i]});
}

SqlTableStore::SqlTableStore(Table* table, const SqlSession& session)
    : m_table(table)
    , m_session(session)
{
}

bool SqlTableStore::hasChanges() const
{
    return m_table
        && (m_isReplaced || !m_inserted.isEmpty() || !m_changed.isEmpty() || !m_removedKeys.isEmpty());
}

bool SqlTableStore::lacksColumns() const
{
    if (!m_table || !m_definition)
        return false;
    const QVector<TableColumnDef> all = columns();
    return std::any_of(all.cbegin(), all.cend(),
        [&](const TableColumnDef& column) { return !m_definition->columns.contains(column.name); });
}

void SqlTableStore::follow()
{
    if (m_isFollowing)
        return;
    m_isFollowing = true;
    connect(m_table, SIGNAL(rowsInserted(QVector<Record>)), SLOT(onRowsInserted(QVector<Record>)));
    connect(m_table, SIGNAL(rowsRemoved(QVector<Record>)), SLOT(onRowsRemoved(QVector<Record>)));
    connect(m_table, SIGNAL(rowsChanged(QVector<Record>)), SLOT(onRowsChanged(QVector<Record>)));
    connect(m_table, SIGNAL(reset()), SLOT(onReset()));
}

void SqlTableStore::take(const SqlTableContent& content)
{
    forgetChanges();
    m_definition = content.definition;
    m_keys.clear();
    m_keys.reserve(content.rows.size());
    for (int i = 0; i < content.rows.size(); ++i)
        m_keys.insert(content.rows[i], content.keys[i]);
    follow();
    // Another listener may change the table before the reset arrives here; hence all is ready by now.
    ++m_ownResets;
    m_table->resetRows(content.rows);
}

void SqlTableStore::write()
{
    SqlSchema::prepareWriting(m_session, m_table->name(), columns(), m_definition);
    m_plan = plan();
    SqlTableWriter writer(m_session, m_table->name(), columns());
    if (m_plan.replacesAll)
        writer.removeAll();
    else {
        for (const qint64 key : qAsConst(m_removedKeys))
            writer.remove(key);
        for (const Record& record : qAsConst(m_changed))
            writer.update(m_keys.value(record), record);
    }
    for (const auto& [record, key] : qAsConst(m_plan.moved))
        writer.move(m_keys.value(record), key);
    for (const auto& [record, key] : qAsConst(m_plan.inserted))
        writer.insert(key, record);
}

void SqlTableStore::markWritten()
{
    if (m_plan.replacesAll)
        m_keys.clear();
    for (const auto& [record, key] : qAsConst(m_plan.moved))
        m_keys.insert(record, key);
    for (const auto& [record, key] : qAsConst(m_plan.inserted))
        m_keys.insert(record, key);
    SqlTableDefinition written = m_definition.value_or(SqlTableDefinition());
    written.revision = written.nextRevision();
    for (const TableColumnDef& column : columns())
        written.columns.insert(column.name, column.type);
    m_definition = written;
    forgetChanges();
}

void SqlTableStore::forgetChanges()
{
    m_isReplaced = false;
    m_inserted.clear();
    m_changed.clear();
    m_removedKeys.clear();
    m_plan = Plan();
}

SqlTableStore::Plan SqlTableStore::plan() const
{
    Plan result;
    if (!m_isReplaced && (planAppended(result) || planBetween(result) || planMoved(result)))
        return result;
    result = Plan();
    result.replacesAll = true;
    QVector<Record> rows;
    for (const Record& record : m_table->masterIndex())
        rows.append(record);
    result.insert(rows, *SqlRowKeys::between(std::nullopt, std::nullopt, int(rows.size())));
    return result;
}

bool SqlTableStore::planAppended(Plan& plan) const
{
    int kept = m_table->rowCount();
    QVector<Record> rows;
    for (; kept > 0 && !m_keys.contains(m_table->record(kept - 1)); --kept)
        rows.append(m_table->record(kept - 1));
    std::reverse(rows.begin(), rows.end());
    if (kept != m_keys.size())
        return false;
    const std::optional<qint64> last
        = kept > 0 ? std::optional(m_keys.value(m_table->record(kept - 1))) : std::nullopt;
    const auto keys = SqlRowKeys::between(last, std::nullopt, int(rows.size()));
    if (keys)
        plan.insert(rows, *keys);
    return keys.has_value();
}

bool SqlTableStore::planBetween(Plan& plan) const
{
    std::optional<qint64> before;
    QVector<Record> rows;
    const auto place = [&](std::optional<qint64> after) {
        const auto keys = SqlRowKeys::between(before, after, int(rows.size()));
        if (keys)
            plan.insert(rows, *keys);
        rows.clear();
        before = after;
        return keys.has_value();
    };
    plan = Plan();
    for (const Record& record : m_table->masterIndex()) {
        if (!m_keys.contains(record))
            rows.append(record);
        else if (rows.isEmpty())
            before = m_keys.value(record);
        else if (!place(m_keys.value(record)))
            return false;
    }
    return place(std::nullopt);
}

bool SqlTableStore::planMoved(Plan& plan) const
{
    plan = Plan();
    std::optional<qint64> largest;
    for (const qint64 key : m_keys)
        largest = largest ? std::max(*largest, key) : key;
    const auto keys = SqlRowKeys::between(largest, std::nullopt, m_table->rowCount());
    if (!keys)
        return false;
    int position = 0;
    for (const Record& record : m_table->masterIndex()) {
        const qint64 key = (*keys)[position++];
        if (m_keys.contains(record))
            plan.moved.append({record, key});
        else
            plan.inserted.append({record, key});
    }
    return true;
}

QVector<TableColumnDef> SqlTableStore::columns() const
{
    QVector<TableColumnDef> result;
    for (const TableColumnDef* column : m_table->fieldDefs())
        result.append(*column);
    return result;
}

// Another listener may have taken rows out or put them back before the signal arrives here, so it is the row
// that tells whether it stands in the table.
void SqlTableStore::onRowsInserted(const QVector<Record>& records)
{
    if (m_isReplaced)
        return;
    for (const Record& record : records) {
        forgetKey(record);
        if (record.isInTable())
            m_inserted.insert(record);
    }
}

void SqlTableStore::onRowsRemoved(const QVector<Record>& records)
{
    if (m_isReplaced)
        return;
    for (const Record& record : records) {
        forgetKey(record);
        if (record.isInTable())
            m_inserted.insert(record);
        else
            m_inserted.remove(record);
    }
}

void SqlTableStore::forgetKey(const Record& record)
{
    const auto key = m_keys.find(record);
    if (key == m_keys.end())
        return;
    m_removedKeys.append(*key);
    m_keys.erase(key);
    m_changed.remove(record);
}

void SqlTableStore::onRowsChanged(const QVector<Record>& records)
{
    if (m_isReplaced)
        return;
    for (const Record& record : records) {
        if (m_keys.contains(record))
            m_changed.insert(record);
    }
}

void SqlTableStore::onReset()
{
    if (m_ownResets > 0) {
        --m_ownResets;
        return;
    }
    forgetChanges();
    m_isReplaced = true;
}
