#pragma once

#include "database/tablestorage.h"

#include <QStringList>

#include <memory>

class PostgresAddress;
class Table;

/// Keeps tables in a PostgreSQL database that several programs share, and brings what the others commit into
/// them soon after.
///
/// commit() never waits for the server. What it takes is sent in the background, in the order of the commits,
/// each as a whole and once, however often the server is lost in between. While there is no server the tables
/// stand as they are and commits wait; the connection comes back by itself. Should the program end first, the
/// commits that wait are kept in a file and sent by the next program of the same user that opens the
/// database.
///
/// Where programs write the same, the server's order decides: the last one to arrive wins, field by field. A
/// row that is put in takes the place of one of the same key; a change of a field of a row that is removed
/// already has no effect.
class SharedStorage : public TableStorage {
    Q_OBJECT

public:
    /// Commits that cannot be sent are kept in the folder, which is made then; an empty name keeps none.
    explicit SharedStorage(
        const PostgresAddress& address, const QString& folder = QString(), QObject* parent = nullptr);
    ~SharedStorage() override;

    /// Connects, which takes some seconds at most. An empty database gets the tables that describe the
    /// others. Exception, in one line and without a password, if there is no connection or the database is of
    /// something else.
    void open();

    /// Replaces the rows of a table by those stored under its name and follows its changes, and those of
    /// others, from now on; waits for the server. Rows with the same values in the key columns are one row,
    /// whoever puts them in; without key columns, or with a null in one of them, each is a row of its own.
    /// Rows of the table stand in the order in which they came into the database. Exception, with the table
    /// unchanged, if the rows cannot be read, do not fit, or there is no connection, or for a key column that
    /// the table lacks. Names of more than 63 bytes, and names that begin with "host_", cannot be stored.
    void attach(Table* table, const QStringList& keyColumns = {});

    bool hasChanges() const override;
    void commit() override;
    void rollback() override;
    bool isShared() const override { return true; }
    /// Some ten thousand numbers are always there, also without a connection.
    QVector<qint32> takeNumbers(int count) override;

    /// The database as a person knows it, without a password.
    QString place() const;
    /// Why the database does not answer, in one line; empty while it does.
    QString problem() const;
    /// How many commits the database has not confirmed yet.
    int waitingCommits() const;

    /// Ends the connection for good, after some seconds at most. What could not be sent is kept in the
    /// folder; false if there is something.
    bool close();

Q_SIGNALS:
    /// problem() or waitingCommits() is another one now.
    void statusChanged();

private Q_SLOTS:
    void onConnectionChanged(const QString& problem);
    void onPatienceOver();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
