#pragma once

#include "chain/chaintables.h"

#include <database/record.h>
#include <database/sqlstorage.h>

#include <QStringList>
#include <QTemporaryDir>
#include <QVariantMap>

#include <memory>

/// The host's tables over a database in a file of their own, for one test.
class ChainDatabase {
public:
    ChainDatabase();
    /// Drops the tables.
    ~ChainDatabase();

    SqlStorage& storage() const { return *m_storage; }
    const ChainTables& tables() const { return m_tables; }

    /// Drops the tables and the storage.
    void close();
    /// Makes the tables and fills them from the file.
    void open();
    /// Runs a statement on the file beside the storage; aborts if it fails.
    void execute(const QString& statement) const;
    /// Adds a row to "securities".
    void addRow(const QVariantMap& fields) const;

    /// All rows of a table, a line of all its fields for each, "-" for null.
    static QStringList rowsOf(Table* table);
    QStringList securities() const { return rowsOf(m_tables.securities); }
    QStringList boards() const { return rowsOf(m_tables.boards); }
    /// Fields of a row of "securities", parted by blanks like their names.
    QString fields(int position, const char* names) const;

private:
    QString fileName() const { return m_folder.filePath(QStringLiteral("chains.sqlite")); }

    QTemporaryDir m_folder;
    std::unique_ptr<SqlStorage> m_storage;
    ChainTables m_tables;
};
