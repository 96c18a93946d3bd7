#pragma once

#include "database/tablestorage.h"

#include <QString>

#include <memory>

class Table;

/// Keeps a table in an SQL database through Qt SQL.
///
/// The SQL table has the host table's name and a column for each of its columns. Changes of the host
/// table are gathered and written by commit(), in one transaction: what was committed survives a kill of
/// the process at any moment, what was not leaves no trace.
///
/// The rows keep their order through a key of the SQL table's own, the column "host_row_key". Numbers come
/// back bit for bit, also a double's NaN and infinities. A table that another program has changed since it
/// was read is not written: commit() says so, and rollback() gets what is stored now.
class SqlStorage : public TableStorage {
    Q_OBJECT

public:
    /// Where the database is.
    struct Connection {
        /// A Qt SQL driver's name.
        QString driver = QStringLiteral("QSQLITE");
        /// For SQLite a file, or ":memory:"; for a server the name of the database.
        QString databaseName;
        /// The server; empty for SQLite.
        QString hostName;
        /// -1 for the driver's default.
        int port = -1;
        /// The user's name at the server.
        QString userName;
        /// The user's password at the server.
        QString password;
        /// The driver's options, as QSqlDatabase::setConnectOptions() takes them.
        QString options;
    };

    /// Keeps the connection for open(); opens nothing.
    explicit SqlStorage(const Connection& connection, QObject* parent = nullptr);
    ~SqlStorage() override;

    /// Opens the connection. A file that does not exist or is empty is made; one that is damaged, not a
    /// database, or a database of something else is left as it is, byte for byte, and Exception says so in
    /// one line.
    void open();
    /// Whether open() has succeeded.
    bool isOpen() const;

    /// Replaces the rows of a table by those stored under its name (none if it was never stored) and follows
    /// its changes from now on. Exception, with the table unchanged, if they cannot be read or a stored
    /// column's type does not fit. A column that the stored table lacks reads as null and is added at
    /// the next commit. Exception as well for a name that SQL cannot keep beside the others: names that
    /// differ in their case only, "host_meta", "host_tables", "host_columns" and the key's. A table that is
    /// destroyed is not followed any more, what waited to be written of it is dropped.
    void attach(Table* table);

    /// Whether a change of a table's rows waits to be written.
    bool hasChanges() const override;

    /// Writes all changes since the last commit in one transaction. Exception if that fails: nothing is
    /// stored then and the changes wait on.
    void commit() override;

    /// Drops the changes since the last commit: the table gets its stored rows back.
    void rollback() override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
