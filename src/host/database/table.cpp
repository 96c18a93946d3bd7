#include "database/table.h"

#include "rowlayout_p.h"

#include <QHash>
#include <QPointer>
#include <QSet>

#include <algorithm>

struct Table::Private {
    QString name;
    std::vector<TableColumnDef> columns;
    QHash<QString, int> positions;
    RowLayout* layout = nullptr;
    QVector<unsigned char*> rows;
    /// The list that was taken of the rows as they are now, if it is still in use.
    std::weak_ptr<IndexList::Rows> snapshot;

    bool isOwn(unsigned char* row) const { return row && rowHeader(row)->layout == layout; }

    bool isInTable(unsigned char* row) const { return isOwn(row) && rowHeader(row)->inTable; }

    /// To be called before the rows change: a list of them becomes its own keeper of its rows.
    void releaseSnapshot()
    {
        if (const std::shared_ptr<IndexList::Rows> list = snapshot.lock())
            list->hold();
        snapshot.reset();
    }

    /// Marks those that can be put into the table as its rows and counts them.
    QVector<Record> admit(const QVector<Record>& records)
    {
        QVector<Record> admitted;
        admitted.reserve(records.size());
        for (const Record& record : records) {
            if (!isOwn(record.row()) || record.isInTable())
                continue;
            RowHeader* const header = rowHeader(record.row());
            header->inTable = true;
            header->removed = false;
            header->references.ref();
            admitted.append(record);
        }
        return admitted;
    }

    static void dismiss(unsigned char* row)
    {
        rowHeader(row)->inTable = false;
        rowHeader(row)->removed = true;
    }

    void takeOut(const QVector<Record>& dismissed)
    {
        if (dismissed.size() == 1) {
            rows.removeOne(dismissed.first().row());
        } else {
            const auto gone = [](unsigned char* row) { return !rowHeader(row)->inTable; };
            rows.erase(std::remove_if(rows.begin(), rows.end(), gone), rows.end());
        }
        for (const Record& record : dismissed)
            RowLayout::releaseRow(record.row());
    }
};

Table::Table(const QString& name, const QVector<TableColumnDef>& columns, QObject* parent)
    : QObject(parent)
    , d(new Private)
{
    d->name = name;
    d->columns.assign(columns.cbegin(), columns.cend());
    for (int i = 0; i < columns.size(); ++i) {
        if (!d->positions.contains(columns[i].name))
            d->positions.insert(columns[i].name, i);
    }
    d->layout = new RowLayout(this, columns);
}

Table::~Table()
{
    d->releaseSnapshot();
    d->layout->forgetTable();
    const QVector<unsigned char*> rows = std::move(d->rows);
    for (unsigned char* row : rows) {
        Private::dismiss(row);
        RowLayout::releaseRow(row);
    }
    d->layout->deref();
}

QString Table::name() const
{
    return d->name;
}

int Table::columnIndex(const QString& name) const
{
    return d->positions.value(name, -1);
}

int Table::columnCount() const
{
    return static_cast<int>(d->columns.size());
}

QList<TableColumnDef*> Table::fieldDefs() const
{
    QList<TableColumnDef*> result;
    for (TableColumnDef& column : d->columns)
        result.append(&column);
    return result;
}

int Table::rowCount() const
{
    return int(d->rows.size());
}

IndexList Table::masterIndex() const
{
    std::shared_ptr<IndexList::Rows> list = d->snapshot.lock();
    if (!list) {
        list = std::make_shared<IndexList::Rows>(d->rows);
        d->snapshot = list;
    }
    return IndexList(list);
}

Record Table::record(int position) const
{
    return Record(d->rows.value(position, nullptr));
}

FieldConstValue Table::dataPtr(unsigned char* row, int column) const
{
    return d->isOwn(row) ? d->layout->constView(row, column) : FieldConstValue();
}

Record Table::createRow() const
{
    return Record(d->layout->createRow());
}

FieldValue Table::value(const Record& record, int column)
{
    unsigned char* const row = record.row();
    const bool isFresh = d->isOwn(row) && !rowHeader(row)->inTable && !rowHeader(row)->removed;
    return isFresh ? d->layout->view(row, column) : FieldValue();
}

void Table::insertRows(int position, const QVector<Record>& records)
{
    const QVector<Record> inserted = d->admit(records);
    if (inserted.isEmpty())
        return;
    d->releaseSnapshot();
    const int at = std::clamp(position, 0, int(d->rows.size()));
    d->rows.insert(at, inserted.size(), nullptr);
    std::transform(inserted.cbegin(), inserted.cend(), d->rows.begin() + at,
        [](const Record& record) { return record.row(); });
    Q_EMIT rowsInserted(inserted);
}

void Table::appendRows(const QVector<Record>& records)
{
    insertRows(int(d->rows.size()), records);
}

void Table::removeRows(const QVector<Record>& records)
{
    QVector<Record> removed;
    for (const Record& record : records) {
        if (!d->isInTable(record.row()))
            continue;
        Private::dismiss(record.row());
        removed.append(record);
    }
    if (removed.isEmpty())
        return;
    d->releaseSnapshot();
    d->takeOut(removed);
    Q_EMIT rowsRemoved(removed);
}

void Table::clear()
{
    resetRows({});
}

void Table::resetRows(const QVector<Record>& records)
{
    d->releaseSnapshot();
    const QVector<unsigned char*> old = std::move(d->rows);
    d->rows.clear();
    std::for_each(old.cbegin(), old.cend(), Private::dismiss);
    for (const Record& record : d->admit(records))
        d->rows.append(record.row());
    std::for_each(old.cbegin(), old.cend(), RowLayout::releaseRow);
    Q_EMIT reset();
}

void Table::changeRows(const QVector<Record>& records, const Writer& writer)
{
    QVector<Record> changed;
    QSet<Record> seen;
    bool written = false;
    const QPointer<Table> self(this);
    try {
        for (const Record& record : records) {
            if (!self)
                return;
            if (!d->isInTable(record.row()) || seen.contains(record))
                continue;
            seen.insert(record);
            written = false;
            writer(record, [&](int column) {
                if (!record.isInTable())
                    return FieldValue();
                if (!written)
                    changed.append(record);
                written = true;
                return rowHeader(record.row())->layout->view(record.row(), column);
            });
        }
    } catch (...) {
        if (self && !changed.isEmpty())
            Q_EMIT rowsChanged(changed);
        throw;
    }
    if (self && !changed.isEmpty())
        Q_EMIT rowsChanged(changed);
}

void Table::freeRow(unsigned char* row)
{
    if (d->isOwn(row) && rowHeader(row)->references.loadRelaxed() == 0)
        RowLayout::destroyRow(row);
}
