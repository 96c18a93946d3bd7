#include "database/shared/sharedtable_p.h"

#include "database/shared/fieldcomparison_p.h"
#include "database/shared/rowkey_p.h"
#include "database/sqlvalue_p.h"
#include "database/table.h"

#include <algorithm>
#include <limits>

namespace {

// Rows that the server has not placed yet stand behind all others, in the order of these numbers.
constexpr qint64 firstLocalOrder = std::numeric_limits<qint64>::max() / 2;

QVariantList sqlValues(const Record& record, int columns)
{
    QVariantList values;
    for (int i = 0; i < columns; ++i)
        values << SqlValue::fromField(record.value(i), false);
    return values;
}

}

SharedTable::SharedTable(Table* table, const QVector<int>& keyColumns)
    : m_table(table)
    , m_keyColumns(keyColumns)
    , m_lastLocalOrder(firstLocalOrder)
{
}

void SharedTable::follow()
{
    if (m_isFollowing)
        return;
    m_isFollowing = true;
    connect(m_table, SIGNAL(rowsInserted(QVector<Record>)), SLOT(onRowsInserted(QVector<Record>)));
    connect(m_table, SIGNAL(rowsRemoved(QVector<Record>)), SLOT(onRowsRemoved(QVector<Record>)));
    connect(m_table, SIGNAL(rowsChanged(QVector<Record>)), SLOT(onRowsChanged(QVector<Record>)));
    connect(m_table, SIGNAL(reset()), SLOT(onReset()));
}

void SharedTable::note(const QString& key, const Entry& entry)
{
    m_entries.insert(key, entry);
    m_keys.insert(entry.row, key);
}

void SharedTable::forget(const Record& row)
{
    m_entries.remove(m_keys.take(row));
    m_changed.remove(row);
}

Record SharedTable::makeRow(const QVariantList& values) const
{
    Record record = m_table->createRow();
    for (int i = 0; i < values.size(); ++i)
        m_table->value(record, i).setVariant(values[i]);
    return record;
}

Record SharedTable::copyOf(const Record& record) const
{
    Record copy = m_table->createRow();
    for (int i = 0; i < m_table->columnCount(); ++i)
        m_table->value(copy, i).setVariant(record.value(i).toVariant());
    return copy;
}

QVector<int> SharedTable::changedColumns(const Entry& entry) const
{
    QVector<int> columns;
    for (int i = 0; i < m_table->columnCount(); ++i) {
        if (!FieldComparison::isSame(entry.row.value(i), entry.committed.value(i)))
            columns << i;
    }
    return columns;
}

void SharedTable::take(const SharedTableNews& content)
{
    m_entries.clear();
    m_keys.clear();
    m_inserted.clear();
    m_changed.clear();
    m_removed.clear();
    QVector<Record> rows;
    for (const SharedTableNews::Row& row : content.rows) {
        rows.append(makeRow(row.values));
        note(row.key, {rows.last(), makeRow(row.values), row.order});
    }
    follow();
    m_table->resetRows(rows);
}

bool SharedTable::hasChanges() const
{
    if (!m_table)
        return false;
    return !m_inserted.isEmpty() || !m_removed.isEmpty()
        || std::any_of(m_changed.cbegin(), m_changed.cend(), [this](const Record& row) {
               return !changedColumns(m_entries.value(m_keys.value(row))).isEmpty();
           });
}

SharedTableChanges SharedTable::commit(qint64 number)
{
    SharedTableChanges changes;
    if (!m_table)
        return changes;
    changes.table = m_table->name();
    for (const TableColumnDef* column : m_table->fieldDefs())
        changes.columns << *column;
    UnsentCommit unsent{number, {}};
    collectUpdated(changes, unsent);
    collectPlaced(changes, unsent);
    collectRemoved(changes, unsent);
    if (!changes.isEmpty())
        m_unsent.push_back(unsent);
    return changes;
}

void SharedTable::collectUpdated(SharedTableChanges& changes, UnsentCommit& unsent)
{
    const QSet<Record> changed = m_changed;
    m_changed.clear();
    for (const Record& row : changed) {
        const QString key = m_keys.value(row);
        Entry& entry = m_entries[key];
        const QVector<int> columns = changedColumns(entry);
        if (columns.isEmpty())
            continue;
        const bool isRenamed = std::any_of(m_keyColumns.cbegin(), m_keyColumns.cend(),
            [&columns](int column) { return columns.contains(column); });
        if (isRenamed) {
            // To the others it is another row.
            m_removed.insert(key, entry);
            forget(row);
            m_inserted.insert(row);
            continue;
        }
        SharedTableChanges::Updated update{key, {}};
        for (const int column : columns) {
            update.fields.append({column, SqlValue::fromField(row.value(column), false)});
            unsent.rows[key].columns.insert(column);
        }
        changes.updated.append(update);
        entry.committed = copyOf(row);
    }
}

QVector<Record> SharedTable::insertedInOrder() const
{
    QVector<Record> rows;
    if (m_inserted.isEmpty())
        return rows;
    for (const Record& row : m_table->masterIndex()) {
        if (m_inserted.contains(row))
            rows.append(row);
    }
    return rows;
}

QString SharedTable::keyForNew(const Record& row, const QSet<QString>& placed)
{
    const QString key = RowKey::of(row, m_keyColumns);
    QString result = key;
    for (int number = 2; placed.contains(result); ++number)
        result = RowKey::repeated(key, number);
    return result;
}

// To the others they come behind all rows that are there.
void SharedTable::moveInsertedToEnd()
{
    const QVector<Record> inserted = insertedInOrder();
    int last = m_table->rowCount() - 1;
    while (last >= 0 && m_inserted.contains(m_table->record(last)))
        --last;
    const int inPlace = m_table->rowCount() - 1 - last;
    if (inPlace == inserted.size())
        return;
    m_table->removeRows(inserted);
    if (m_table)
        m_table->appendRows(inserted);
}

void SharedTable::collectPlaced(SharedTableChanges& changes, UnsentCommit& unsent)
{
    if (!m_inserted.isEmpty())
        moveInsertedToEnd();
    if (!m_table)
        return;
    QSet<QString> placed;
    QVector<Record> replaced;
    const QVector<Record> inserted = insertedInOrder();
    m_inserted.clear();
    for (const Record& row : inserted) {
        const QString key = keyForNew(row, placed);
        placed.insert(key);
        const auto known = m_entries.constFind(key);
        if (known != m_entries.cend()) {
            replaced.append(known->row);
            forget(replaced.last());
        }
        m_removed.remove(key);
        note(key, {row, copyOf(row), ++m_lastLocalOrder});
        changes.placed.append({key, sqlValues(row, m_table->columnCount())});
        unsent.rows[key].isRow = true;
    }
    m_table->removeRows(replaced);
}

void SharedTable::collectRemoved(SharedTableChanges& changes, UnsentCommit& unsent)
{
    for (auto removed = m_removed.cbegin(); removed != m_removed.cend(); ++removed) {
        changes.removed << removed.key();
        unsent.rows[removed.key()].isRow = true;
    }
    m_removed.clear();
}

void SharedTable::rollback()
{
    if (!m_table || !hasChanges())
        return;
    const bool isMoved = !m_inserted.isEmpty() || !m_removed.isEmpty();
    Steps steps;
    for (const Record& row : qAsConst(m_changed)) {
        const Entry entry = m_entries.value(m_keys.value(row));
        const QVector<int> columns = changedColumns(entry);
        for (const int column : columns)
            steps.fields[row].append({column, entry.committed.value(column).toVariant()});
        if (!columns.isEmpty())
            steps.changed.append(row);
    }
    m_changed.clear();
    m_inserted.clear();
    for (auto removed = m_removed.begin(); removed != m_removed.end(); ++removed) {
        // A row that is out of its table cannot be written any more.
        if (!changedColumns(*removed).isEmpty())
            removed->row = copyOf(removed->committed);
        note(removed.key(), *removed);
    }
    m_removed.clear();
    carryOut(steps);
    if (!m_table || !isMoved)
        return;
    QVector<QPair<qint64, Record>> rows;
    for (const Entry& entry : qAsConst(m_entries))
        rows.append({entry.order, entry.row});
    std::sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    QVector<Record> records;
    for (const auto& row : qAsConst(rows))
        records.append(row.second);
    m_table->resetRows(records);
}

// Another listener may have taken rows out or put them back before the signal arrives here, so it is the row
// that tells whether it stands in the table.
void SharedTable::onRowsInserted(const QVector<Record>& records)
{
    for (const Record& record : records) {
        if (record.isInTable() && !m_keys.contains(record))
            m_inserted.insert(record);
    }
}

void SharedTable::onRowsRemoved(const QVector<Record>& records)
{
    for (const Record& record : records) {
        if (record.isInTable())
            continue;
        m_inserted.remove(record);
        const auto key = m_keys.constFind(record);
        if (key == m_keys.cend())
            continue;
        m_removed.insert(*key, m_entries.value(*key));
        forget(record);
    }
}

void SharedTable::onRowsChanged(const QVector<Record>& records)
{
    for (const Record& record : records) {
        const auto key = m_keys.constFind(record);
        if (key != m_keys.cend() && !changedColumns(m_entries.value(*key)).isEmpty())
            m_changed.insert(record);
    }
}

void SharedTable::onReset()
{
    onRowsRemoved(m_keys.keys().toVector() + QVector<Record>(m_inserted.cbegin(), m_inserted.cend()));
    QVector<Record> rows;
    for (const Record& row : m_table->masterIndex())
        rows.append(row);
    onRowsInserted(rows);
}
