#pragma once

#include "database/shared/serverconnection_p.h"
#include "database/shared/sharedoutbox_p.h"
#include "database/shared/sharedreading_p.h"
#include "database/shared/sharedwriting_p.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

class Table;

/// Talks with the server on behalf of a SharedStorage, in a thread of its own: sends its commits in their
/// order, fetches what has changed whenever somebody announces it, and connects anew when the server was
/// lost.
///
/// All functions that do not say otherwise are to be called in the thread that the object lives in.
class SharedWorker : public QObject {
    Q_OBJECT

public:
    /// Commits that are not sent when the program ends are kept in the folder, if it is not empty.
    SharedWorker(const PostgresAddress& address, const QString& journalFolder);
    ~SharedWorker() override;

    /// Connects for the first time, and makes the layout in an empty database. Exception if that fails;
    /// nothing is tried again then.
    void open();

    /// Makes a table known and gives all its rows. Exception if that fails.
    SharedTableNews attach(const QString& table, const QVector<TableColumnDef>& columns);

    /// Takes a commit, to be sent until it has arrived. For any thread, once open() has succeeded.
    void add(const SharedCommit& commit) { m_outbox->append(commit); }
    /// Sends what has been added, if there is a connection.
    void send();

    /// Takes numbers; none without a server.
    QVector<NumberRange> takeNumbers(qint64 count);

    /// Sends what can be sent at once, gives numbers back and ends the connection.
    void finish(const QVector<NumberRange>& unusedNumbers);

    /// Whether no commit waits; for any thread when that of the object has ended.
    bool hasSentAll() const { return !m_outbox || m_outbox->isEmpty(); }

    /// Ends a statement that waits for the server. For any thread.
    void interrupt() { m_connection.interrupt(); }

Q_SIGNALS:
    void hasNews(const SharedNews& news);
    /// The reason, in one line, is empty while there is a connection.
    void connectionChanged(const QString& problem);

private Q_SLOTS:
    void work();
    void onAnnounced();
    void onLost(const QString& reason);

private:
    struct KnownTable {
        std::unique_ptr<Table> layout;
        /// What is known of it is of this revision, of none if negative.
        qint64 revision = -1;
    };

    void openFirst();
    SharedTableNews readWhole(const QString& table, const QVector<TableColumnDef>& columns);
    void connectAgain();
    void sendAbandoned();
    void sendAll();
    void follow();
    void readNews();
    bool announcesMore();
    void tell(const QString& problem);

    const PostgresAddress m_address;
    const QString m_journalFolder;
    const QString m_writer;
    ServerConnection m_connection;
    QTimer m_retry;
    int m_failures = 0;
    bool m_isFinished = false;
    QString m_problem;
    QString m_identity;
    std::unique_ptr<SharedOutbox> m_outbox;
    std::vector<KnownTable> m_tables;
    qint64 m_revision = -1;
    qint64 m_acknowledged = 0;
};
