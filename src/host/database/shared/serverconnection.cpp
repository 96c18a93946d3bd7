#include "database/shared/serverconnection_p.h"

#include "database/exception.h"

#include <libpq-fe.h>

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QSocketNotifier>
#include <QSqlDriver>
#include <QUuid>

#include <sys/socket.h>

#include <cstring>

namespace {

Q_LOGGING_CATEGORY(serverLog, "host.database.server", QtWarningMsg)

const auto driverName = QStringLiteral("QPSQL");

/// Where the address says nothing else: a server that cannot be reached, or is not there any more, is told
/// within seconds. https://www.postgresql.org/docs/15/libpq-connect.html
QVector<QPair<QString, QString>> defaultParameters()
{
    QVector<QPair<QString, QString>> parameters{{QStringLiteral("keepalives_idle"), QStringLiteral("10")},
        {QStringLiteral("keepalives_interval"), QStringLiteral("5")},
        {QStringLiteral("keepalives_count"), QStringLiteral("3")},
        {QStringLiteral("tcp_user_timeout"), QStringLiteral("15000")},
        {QStringLiteral("fallback_application_name"), QCoreApplication::applicationName()}};
    if (!qEnvironmentVariableIsSet("PGCONNECT_TIMEOUT"))
        parameters.append({QStringLiteral("connect_timeout"), QStringLiteral("5")});
    return parameters;
}

QString option(const QString& name, QString value)
{
    value.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('\''), QLatin1String("\\'"));
    return name + QLatin1String("='") + value + QLatin1Char('\'');
}

void setParameters(QSqlDatabase& database, const PostgresAddress& address)
{
    QStringList options;
    for (const auto& [name, value] : defaultParameters()) {
        if (address.parameter(name).isEmpty())
            options << option(name, value);
    }
    for (const auto& [name, value] : address.parameters()) {
        if (name == QLatin1String("host"))
            database.setHostName(value);
        else if (name == QLatin1String("dbname"))
            database.setDatabaseName(value);
        else if (name == QLatin1String("user"))
            database.setUserName(value);
        else if (name == QLatin1String("password"))
            database.setPassword(value);
        else if (value.contains(QLatin1Char(';')))
            throw Exception(
                QStringLiteral("Database \"%1\": the parameter \"%2\" must not contain a semicolon.")
                    .arg(address.place(), name));
        else
            options << option(name, value);
    }
    database.setConnectOptions(options.join(QLatin1Char(' ')));
}

/// The driver's own connection, of its type as the driver's documentation names it.
PGconn* handleOf(const QSqlDatabase& database)
{
    const QVariant handle = database.driver()->handle();
    if (!handle.isValid() || std::strcmp(handle.typeName(), "PGconn*") != 0)
        return nullptr;
    return *static_cast<PGconn* const*>(handle.constData());
}

void onNotice(void*, const char* text)
{
    qCInfo(serverLog, "%s", QString::fromUtf8(text).simplified().toUtf8().constData());
}

}

ServerConnection::ServerConnection(const PostgresAddress& address, QObject* parent)
    : QObject(parent)
    , m_address(address)
    , m_name(QLatin1String("host_server_") + QUuid::createUuid().toString(QUuid::WithoutBraces))
{
}

ServerConnection::~ServerConnection()
{
    close();
}

void ServerConnection::open()
{
    close();
    const QString place = m_address.place();
    if (!QSqlDatabase::isDriverAvailable(driverName))
        throw Exception(
            QStringLiteral("Database \"%1\": Qt's driver for PostgreSQL is not installed.").arg(place));
    try {
        QSqlDatabase database = QSqlDatabase::addDatabase(driverName, m_name);
        setParameters(database, m_address);
        m_session = std::make_unique<SqlSession>(database, place);
        if (!database.open())
            m_session->fail(database.lastError());
        watch();
        // Somebody who has locked what a commit needs and left must not stop this desk for good.
        for (const char* const setting : {"SET lock_timeout = '10s'", "SET statement_timeout = '60s'",
                 "SET client_min_messages = warning", "SET standard_conforming_strings = on"})
            m_session->execute(QString::fromLatin1(setting));
    } catch (...) {
        close();
        throw;
    }
}

void ServerConnection::watch()
{
    m_session->requireConnection();
    PGconn* const handle = handleOf(m_session->connection());
    if (!handle)
        m_session->fail(QStringLiteral("Qt's driver for PostgreSQL does not fit"));
    PQsetNoticeProcessor(handle, onNotice, nullptr);
    const QMutexLocker locker(&m_socketMutex);
    m_socket = PQsocket(handle);
    m_notifier = std::make_unique<QSocketNotifier>(m_socket, QSocketNotifier::Read);
    connect(
        m_notifier.get(), SIGNAL(activated(QSocketDescriptor, QSocketNotifier::Type)), SLOT(onReadable()));
}

void ServerConnection::close()
{
    {
        const QMutexLocker locker(&m_socketMutex);
        m_socket = -1;
        m_notifier.reset();
    }
    m_session.reset();
    if (QSqlDatabase::contains(m_name))
        QSqlDatabase::removeDatabase(m_name);
}

void ServerConnection::listen(const QString& channel)
{
    m_session->execute(QLatin1String("LISTEN ") + m_session->quoted(channel));
}

QStringList ServerConnection::takeAnnouncements()
{
    QStringList texts;
    PGconn* const handle = handleOf(m_session->connection());
    while (PGnotify* const notify = PQnotifies(handle)) {
        texts << QString::fromUtf8(notify->extra);
        PQfreemem(notify);
    }
    return texts;
}

void ServerConnection::onReadable()
{
    PGconn* const handle = handleOf(m_session->connection());
    if (PQconsumeInput(handle) == 1 && PQstatus(handle) == CONNECTION_OK) {
        Q_EMIT announced();
        return;
    }
    const QString reason
        = QString::fromUtf8(PQerrorMessage(handle)).section(QLatin1Char('\n'), 0, 0).simplified();
    // The notifier whose signal this is must not go yet.
    m_notifier->setEnabled(false);
    m_notifier.release()->deleteLater();
    close();
    Q_EMIT lost(reason);
}

void ServerConnection::interrupt()
{
    const QMutexLocker locker(&m_socketMutex);
    if (m_socket >= 0)
        ::shutdown(m_socket, SHUT_RDWR);
}
