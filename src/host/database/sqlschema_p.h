#pragma once

#include "database/tablecolumndef.h"

#include <QHash>
#include <QString>
#include <QVector>

#include <optional>

class SqlSession;

/// What is stored of a table beside its rows.
struct SqlTableDefinition {
    /// Counted up with every commit that writes the table: who finds another one than expected has been
    /// overtaken by another writer.
    qint64 revision = 0;
    /// That of the next commit: one more, or 1 behind the largest number, which only a damaged file holds.
    qint64 nextRevision() const;
    QHash<QString, FieldType> columns;
};

/// The tables that describe the others. "host_meta" marks the database as ours and holds the format's
/// version, "host_tables" the stored tables and their revisions, "host_columns" the types of their columns.
namespace SqlSchema {

/// The primary key that every stored table has beside the host table's columns; rows are in its order.
extern const QString rowKey;

/// Throws unless the file can be opened without harm: there is nothing yet, or an SQLite database that we
/// made. Reads the file's header only, so that nothing of SQLite's appears beside a file of somebody else.
void checkSqliteFile(const QString& fileName);

/// Makes the description in an empty database, accepts our own; Exception for everything else.
void adopt(const SqlSession& session);

/// The SQL type of the columns that hold fields of a type: see SqlValue.
QString columnType(FieldType type);

/// Makes "host_tables" and "host_columns", empty; within a transaction.
void createDescription(const SqlSession& session);

/// Nothing if the table was never stored.
std::optional<SqlTableDefinition> definition(const SqlSession& session, const QString& table);

/// Makes a table, or takes the next revision of a stored one and adds the columns that it lacks. For use
/// within a transaction.
void prepareWriting(const SqlSession& session, const QString& table, const QVector<TableColumnDef>& columns,
    const std::optional<SqlTableDefinition>& stored);

/// Why a table of this definition cannot be stored; empty if it can.
QString obstacle(const QString& table, const QVector<TableColumnDef>& columns);

}
