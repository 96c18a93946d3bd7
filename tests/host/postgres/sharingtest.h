#pragma once

#include "postgresserver.h"
#include "sharingdesk.h"

#include <QtTest>

#include <memory>

/// A test with a server of its own and an empty database for each function; skipped where there is no server.
class SharingTest : public QObject {
    Q_OBJECT

protected:
    static constexpr int patience = 60000; // ms

    PostgresServer& server() const { return *m_server; }
    const QString& database() const { return m_database; }
    QString address() const { return m_server->address(m_database); }
    std::unique_ptr<SharingDesk> desk() const { return std::make_unique<SharingDesk>(address()); }
    QStringList sql(const QString& statement) const { return m_server->runSql(m_database, statement); }

    /// Waits until the server has all that a desk has committed.
    static void settle(const SharingDesk& desk) { QTRY_VERIFY_WITH_TIMEOUT(desk.isSettled(), patience); }
    /// Waits until the second desk has what the first one has.
    static void requireSame(const SharingDesk& a, const SharingDesk& b)
    {
        QTRY_VERIFY_WITH_TIMEOUT(b.content() == a.content(), patience);
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

private:
    std::unique_ptr<PostgresServer> m_server;
    QString m_database;
    int m_count = 0;
};
