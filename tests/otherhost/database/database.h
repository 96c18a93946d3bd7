#pragma once

#include "database/tablecolumndef.h"

#include <QVector>

#include <map>
#include <memory>

class Table;

/// Owns the tables, by their names.
class Database {
public:
    Database();
    ~Database();

    /// Null for a name without a table.
    Table* table(const QString& name) const;

    /// Makes a table in place of that of the name, if there is one.
    Table* replaceTable(const QString& name, const QVector<TableColumnDef>& columns);
    void removeTable(const QString& name);

private:
    std::map<QString, std::unique_ptr<Table>> m_tables;
};
