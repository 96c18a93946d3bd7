#pragma once

#include "database/field.h"
#include "database/record.h"

#include <QList>
#include <QObject>
#include <QVector>

#include <memory>

class Columns;

/// Rows in an order. A list that was taken stays as it is.
using IndexList = QVector<Record>;

/// A table of values of the types of its columns, each of which may be null.
class Table : public QObject {
    Q_OBJECT

public:
    explicit Table(const QVector<TableColumnDef>& columns);
    ~Table() override;

    /// -1 for no column of the table's.
    int columnIndex(const QString& name) const;
    /// The table owns them.
    QList<TableColumnDef*> fieldDefs() const;
    IndexList masterIndex() const { return m_rows; }
    /// A field of a row by Record::row(); no field for a column that is none of the table's.
    FieldConstValue dataPtr(int row, int column) const;

    /// A row that is not in the table, with all values null.
    Record makeRow();
    /// Writes a field; announces nothing. The value's type is that of the column, an invalid one is a null.
    void write(const Record& record, int column, const QVariant& value);
    /// Announces that fields of rows in the table were written.
    void announce();
    /// Other rows in another order instead.
    void setRows(const IndexList& rows);

Q_SIGNALS:
    /// Rows have come or gone, or hold other values. It is the last that the table does.
    void changed();

private:
    std::shared_ptr<Columns> m_columns;
    IndexList m_rows;
};
