#pragma once

#include "database/record.h"
#include "directory/roworder.h"
#include "rowindex_p.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVector>

#include <vector>

class Table;

/// Finds rows of the database's table of a name by one or more sets of key columns.
///
/// The rows are gathered at the first question and followed through the table's signals from then on. Rows
/// of the same key are found in the table's order; where rows were inserted between others that costs one
/// walk through the table at the next question for a key that several rows share.
class TableIndex : public QObject {
    Q_OBJECT

public:
    TableIndex(const QString& tableName, const QVector<QStringList>& keys);
    ~TableIndex() override;

    /// Listens to the table of the name if there is one.
    void follow();

    /// The first row, in the table's order, of a key in the set of key columns at that position; null if
    /// there is none.
    Record first(int keySet, const RowKey& key);

    /// The column's position in the followed table, -1 without a table or a column of that name.
    int columnIndex(const QString& name) const;

private Q_SLOTS:
    void onRowsInserted(const QVector<Record>& records);
    void onRowsRemoved(const QVector<Record>& records);
    void onRowsChanged(const QVector<Record>& records);
    void forget();

private:
    void build();
    void addMissing();
    void add(const QVector<Record>& run);

    const QString m_tableName;
    QPointer<Table> m_table;
    bool m_built = false;
    RowOrder m_order;
    QHash<Record, qint64> m_numbers;
    std::vector<RowIndex> m_indexes;
};
