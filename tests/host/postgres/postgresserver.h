#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/// A PostgreSQL server of its own in a temporary folder, which listens on a socket in that folder only.
///
/// It has the role traderName() with a password, and databases that createDatabase() makes. It ends with this
/// object, and with the process. Failures end the process with a text.
class PostgresServer {
public:
    /// Why there can be no server on this machine; empty if there can.
    static QString obstacle();
    /// Lets the connections of this process, and of those that it starts, take as long as they need on a
    /// machine with other work.
    static void allowSlowConnections();

    PostgresServer();
    ~PostgresServer();

    void start();
    /// Ends all its processes without a chance to say good-bye.
    void kill();
    /// Ends it as an administrator would who is in a hurry: connections are cut with a message.
    void stop();
    /// Stops and continues all its processes, so that connections stay and nobody answers.
    void freeze();
    void thaw();
    bool isRunning() const { return m_process != nullptr; }

    /// Makes an empty database that belongs to the trader.
    void createDatabase(const QString& name);
    /// Runs SQL as administrator; the rows with '|' between the fields.
    QStringList runSql(const QString& database, const QString& statement) const;
    /// The server's log since the last start.
    QByteArray log();

    static QString traderName() { return QStringLiteral("trader"); }
    static QString password() { return QStringLiteral("Qv7;s'e\\c r&t"); }
    QString folder() const { return m_folder.path(); }
    /// The address for the trader, with the password.
    QString address(const QString& database) const;
    /// An address of any parts; empty ones are left out.
    QString address(const QString& database, const QString& user, const QString& secret) const;

private:
    bool startsUp();
    QProcess* newProcess() const;
    QByteArray run(const QString& program, const QStringList& arguments) const;
    QList<qint64> processes() const;
    void signalAll(int signal) const;

    QTemporaryDir m_folder;
    std::unique_ptr<QProcess> m_process;
    QByteArray m_log;
};
