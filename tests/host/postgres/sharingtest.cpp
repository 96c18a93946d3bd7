#include "sharingtest.h"

void SharingTest::initTestCase()
{
    const QString obstacle = PostgresServer::obstacle();
    if (!obstacle.isEmpty())
        QSKIP(qPrintable(obstacle));
    m_server = std::make_unique<PostgresServer>();
}

void SharingTest::init()
{
    if (!m_server->isRunning())
        m_server->start();
    m_database = QStringLiteral("desk%1").arg(++m_count);
    m_server->createDatabase(m_database);
}
