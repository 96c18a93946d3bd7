#include "sharingtest.h"

namespace {

QtMessageHandler nextHandler = nullptr;

/// Passes over what Qt's driver itself says of a server that goes in the moment in which a connection is
/// made.
void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const bool isOfDriver = text.startsWith(QLatin1String("This version of PostgreSQL is not supported"))
        || text.startsWith(QLatin1String("no connection to the server"))
        || text.startsWith(QLatin1String("server closed the connection unexpectedly"));
    if (!isOfDriver)
        nextHandler(type, context, text);
}

}

void SharingTest::initTestCase()
{
    const QString obstacle = PostgresServer::obstacle();
    if (!obstacle.isEmpty())
        QSKIP(qPrintable(obstacle));
    m_server = std::make_unique<PostgresServer>();
}

void SharingTest::init()
{
    PostgresServer::allowSlowConnections();
    if (!m_server->isRunning())
        m_server->start();
    m_database = QStringLiteral("desk%1").arg(++m_count);
    m_server->createDatabase(m_database);
    nextHandler = qInstallMessageHandler(handleMessage);
}

void SharingTest::cleanup()
{
    qInstallMessageHandler(nextHandler);
}
