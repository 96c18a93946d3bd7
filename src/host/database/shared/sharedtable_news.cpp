// What comes from the server: see sharedtable.cpp for what goes there.
#include "database/shared/sharedtable_p.h"

#include "database/shared/fieldcomparison_p.h"
#include "database/table.h"

#include <algorithm>
#include <limits>

void SharedTable::acknowledge(qint64 number)
{
    while (!m_unsent.empty() && m_unsent.front().number <= number)
        m_unsent.pop_front();
}

SharedTable::Unsent SharedTable::unsentOf(const QString& key) const
{
    Unsent result;
    for (const UnsentCommit& commit : m_unsent) {
        const Unsent row = commit.rows.value(key);
        result.isRow |= row.isRow;
        result.columns.unite(row.columns);
    }
    return result;
}

QStringList SharedTable::removedBy(const SharedTableNews& news) const
{
    if (!news.isWhole)
        return news.removed;
    QSet<QString> there;
    for (const SharedTableNews::Row& row : news.rows)
        there.insert(row.key);
    QStringList removed;
    const QStringList known = m_entries.keys() + m_removed.keys();
    for (const QString& key : known) {
        if (!there.contains(key))
            removed << key;
    }
    return removed;
}

void SharedTable::apply(const SharedTableNews& news)
{
    if (!m_table)
        return;
    Steps steps;
    const QStringList removed = removedBy(news);
    for (const QString& key : removed)
        applyRemoved(key, steps);
    for (const SharedTableNews::Row& row : news.rows)
        applyRow(row, steps);
    carryOut(steps);
    if (m_table)
        insertInOrder(steps.inserted);
}

void SharedTable::applyRemoved(const QString& key, Steps& steps)
{
    if (unsentOf(key).isRow)
        return;
    m_removed.remove(key);
    const auto entry = m_entries.constFind(key);
    if (entry == m_entries.cend())
        return;
    const Record row = entry->row;
    steps.removed.append(row);
    forget(row);
}

void SharedTable::applyRow(const SharedTableNews::Row& row, Steps& steps)
{
    const Unsent unsent = unsentOf(row.key);
    // The row will come once more when the server has taken the commit.
    if (unsent.isRow)
        return;
    const auto removed = m_removed.find(row.key);
    if (removed != m_removed.end()) {
        removed->committed = makeRow(row.values);
        removed->order = row.order;
        return;
    }
    const auto known = m_entries.find(row.key);
    const bool isPlacedAnew = known != m_entries.end() && known->order != row.order
        && known->order < std::numeric_limits<qint64>::max() / 2;
    if (known != m_entries.end() && !isPlacedAnew) {
        known->order = row.order;
        applyFields(*known, row.values, unsent.columns, steps);
        return;
    }
    QVariantList values = row.values;
    if (isPlacedAnew) {
        const Record old = known->row;
        for (const int column : unsent.columns)
            values[column] = old.value(column).toVariant();
        steps.removed.append(old);
        forget(old);
    }
    steps.inserted.append({row.key, Entry{makeRow(values), makeRow(row.values), row.order}});
}

void SharedTable::applyFields(Entry& entry, const QVariantList& values, const QSet<int>& kept, Steps& steps)
{
    const Record news = makeRow(values);
    QVector<QPair<int, QVariant>> fields;
    for (int i = 0; i < m_table->columnCount(); ++i) {
        if (kept.contains(i) || FieldComparison::isSame(news.value(i), entry.committed.value(i)))
            continue;
        m_table->value(entry.committed, i).setVariant(values[i]);
        fields.append({i, values[i]});
    }
    if (fields.isEmpty())
        return;
    steps.changed.append(entry.row);
    steps.fields.insert(entry.row, fields);
}

void SharedTable::carryOut(const Steps& steps)
{
    m_table->removeRows(steps.removed);
    if (!m_table)
        return;
    m_table->changeRows(steps.changed, [&steps](const Record& record, const Table::FieldAccess& field) {
        const QVector<QPair<int, QVariant>> fields = steps.fields.value(record);
        for (const auto& [column, value] : fields)
            field(column).setVariant(value);
    });
}

qint64 SharedTable::orderOf(const Record& row) const
{
    const auto key = m_keys.constFind(row);
    return key == m_keys.cend() ? std::numeric_limits<qint64>::max() : m_entries.constFind(*key)->order;
}

int SharedTable::positionFor(qint64 order) const
{
    int first = 0;
    int count = m_table->rowCount();
    while (count > 0) {
        const int half = count / 2;
        if (orderOf(m_table->record(first + half)) < order) {
            first += half + 1;
            count -= half + 1;
        } else {
            count = half;
        }
    }
    return first;
}

// Rows that find their place between the same two go in together.
void SharedTable::insertInOrder(QVector<QPair<QString, Entry>> rows)
{
    std::stable_sort(rows.begin(), rows.end(),
        [](const auto& a, const auto& b) { return a.second.order < b.second.order; });
    for (int i = 0; m_table && i < rows.size();) {
        const int position = positionFor(rows[i].second.order);
        const qint64 next = orderOf(m_table->record(position));
        QVector<Record> together;
        for (; i < rows.size() && (together.isEmpty() || rows[i].second.order < next); ++i) {
            together.append(rows[i].second.row);
            note(rows[i].first, rows[i].second);
        }
        m_table->insertRows(position, together);
    }
}
