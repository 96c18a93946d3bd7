#pragma once

#include "database/field.h"

#include <QVector>

#include <memory>
#include <vector>

class Table;

/// The values of a table's rows, column by column. It lives as long as its table or a record of it does.
class Columns {
public:
    Columns(Table* owner, const QVector<TableColumnDef>& definitions);

    /// Null when the table is gone.
    Table* table = nullptr;

    int columnIndex(const QString& name) const;
    QList<TableColumnDef*> definitions();

    /// A place for a row's values, all of them null.
    int takePlace();
    void giveBack(int place);

    bool has(int column) const { return column >= 0 && column < int(m_columns.size()); }
    FieldType typeOf(int column) const { return m_definitions[std::size_t(column)].type; }
    const QVariant& at(int place, int column) const;
    void set(int place, int column, const QVariant& value);

private:
    std::vector<TableColumnDef> m_definitions;
    std::vector<std::vector<QVariant>> m_columns;
    std::vector<int> m_free;
    int m_places = 0;
};

/// What the records of a row share.
class RowPlace {
public:
    explicit RowPlace(const std::shared_ptr<Columns>& columns);
    RowPlace(const RowPlace&) = delete;
    RowPlace& operator=(const RowPlace&) = delete;
    ~RowPlace();

    const std::shared_ptr<Columns> columns;
    const int place;
};
