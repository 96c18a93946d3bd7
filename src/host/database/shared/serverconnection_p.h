#pragma once

#include "database/postgresaddress.h"
#include "database/sqlsession_p.h"

#include <QMutex>
#include <QObject>
#include <QStringList>

#include <memory>

class QSocketNotifier;

/// A connection to a PostgreSQL server. It notices by itself what other connections announce and that the
/// server is gone.
///
/// For one thread with an event loop; interrupt() is for others.
class ServerConnection : public QObject {
    Q_OBJECT

public:
    explicit ServerConnection(const PostgresAddress& address, QObject* parent = nullptr);
    ~ServerConnection() override;

    /// Exception, after a few seconds at most, if there is no connection to be had.
    void open();
    void close();
    bool isOpen() const { return m_session != nullptr; }

    /// Of an open connection.
    const SqlSession& session() const { return *m_session; }

    /// Hears of announcements under a name; until then none is.
    void listen(const QString& channel);
    /// The texts that have been announced since the last call.
    QStringList takeAnnouncements();

    /// Cuts an open connection, which ends a statement that waits for the server. For any thread.
    void interrupt();

Q_SIGNALS:
    void announced();
    /// The server has cut the connection, which is closed now.
    void lost(const QString& reason);

private Q_SLOTS:
    void onReadable();

private:
    void watch();

    const PostgresAddress m_address;
    const QString m_name;
    std::unique_ptr<SqlSession> m_session;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QMutex m_socketMutex;
    int m_socket = -1;
};
