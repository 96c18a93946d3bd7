#pragma once

#include "database/indexlist.h"
#include "database/tablecolumndef.h"

#include <QList>
#include <QObject>
#include <QVector>

#include <functional>
#include <memory>

/// A table of packed rows. It tells its listeners of rows inserted, removed and changed, after the fact.
///
/// Rows are made by createRow(), filled through value(), and put into the table by insertRows(). For use
/// in one thread.
class Table : public QObject {
    Q_OBJECT

public:
    /// An empty table. Of columns of the same name the first is found. Database::createTable() makes those
    /// that others find.
    Table(const QString& name, const QVector<TableColumnDef>& columns, QObject* parent = nullptr);
    ~Table() override;

    /// The name by which the database knows the table.
    QString name() const;

    /// The column's position, -1 if there is none of that name.
    int columnIndex(const QString& name) const;
    /// How many columns there are.
    int columnCount() const;
    /// The columns in their order; they belong to the table.
    QList<TableColumnDef*> fieldDefs() const;

    /// How many rows stand in the table.
    int rowCount() const;
    /// All rows in the table's order.
    IndexList masterIndex() const;
    /// The record at a position, null outside 0 to rowCount() - 1.
    Record record(int position) const;

    /// A view of one field of a row of this table; of no field for a null row or an unknown column.
    FieldConstValue dataPtr(unsigned char* row, int column) const;

    /// A row that is not in the table yet, all its fields null.
    Record createRow() const;
    /// A view through which a row that createRow() made and that is not in the table yet is filled.
    /// A row of the table is written with changeRows(), a view of one here is of no field, and so is that of
    /// a row which was in the table before.
    FieldValue value(const Record& record, int column);

    /// Puts rows that createRow() of this table made before the given position (clamped to the table).
    /// Rows of another table and rows that are in the table already are passed over; a removed row can come
    /// back.
    void insertRows(int position, const QVector<Record>& records);
    /// Puts such rows at the end.
    void appendRows(const QVector<Record>& records);
    /// Takes rows out; those that are not in the table are passed over.
    void removeRows(const QVector<Record>& records);
    /// Takes all rows out and announces reset().
    void clear();
    /// Replaces all rows and announces reset() once. Rows of the table that are listed stay.
    void resetRows(const QVector<Record>& records);

    /// Gives the view to write a column of the row at hand through; of no field for an unknown column.
    using FieldAccess = std::function<FieldValue(int column)>;
    /// Writes one row.
    using Writer = std::function<void(const Record& record, const FieldAccess& field)>;
    /// Writes fields of rows of the table: the writer gets each record (those that are not in the table are
    /// passed over) and a function that gives the view to write a column through; afterwards one
    /// rowsChanged() tells of all those that were accessed through it. An exception of the writer passes
    /// through, after rowsChanged() for the rows written so far.
    void changeRows(const QVector<Record>& records, const Writer& writer);

    /// Releases a row whose last record went. For the database's own use.
    void freeRow(unsigned char* row);

Q_SIGNALS:
    /// These rows stand in the table now, one after the other.
    void rowsInserted(const QVector<Record>& records);
    /// These rows stand in the table no more.
    void rowsRemoved(const QVector<Record>& records);
    /// Fields of these rows were written.
    void rowsChanged(const QVector<Record>& records);
    /// All rows were replaced or removed at once.
    void reset();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
