#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

/// An open SQL connection and what every statement on it needs: quoted names, and failures as Exception.
class SqlSession {
public:
    /// Place is the database as a person knows it: the file's name, or the server's and the database's.
    SqlSession(const QSqlDatabase& connection, const QString& place);

    const QSqlDatabase& connection() const { return m_connection; }
    bool isSqlite() const;

    /// A name of a table or column as SQL takes it, whatever characters it has.
    QString quoted(const QString& name) const;

    QSqlQuery prepared(const QString& statement) const;
    /// Runs a prepared statement with the values of its placeholders.
    void run(QSqlQuery& query, const QVariantList& values = {}) const;
    /// Prepares and runs a statement. On a server the values go into the statement's text, for a query that
    /// is prepared there says so on the console when it ends on a connection that is lost.
    QSqlQuery execute(const QString& statement, const QVariantList& values = {}) const;
    /// Throws if the server has cut the connection, which Qt's own functions say on the console.
    void requireConnection() const;
    /// A value as SQL text.
    QString literal(const QVariant& value) const;

    /// Throws an Exception of one line that names the place.
    [[noreturn]] void fail(const QString& what) const;
    [[noreturn]] void fail(const QSqlError& error) const;

private:
    QSqlDatabase m_connection;
    QString m_place;
};

/// A transaction that is rolled back unless commit() succeeded.
class SqlTransaction {
public:
    explicit SqlTransaction(const SqlSession& session);
    ~SqlTransaction();
    SqlTransaction(const SqlTransaction&) = delete;
    SqlTransaction& operator=(const SqlTransaction&) = delete;

    void commit();

private:
    const SqlSession& m_session;
    QSqlDatabase m_connection;
    bool m_isOpen = false;
};
