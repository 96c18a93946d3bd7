#pragma once

#include "database/record.h"
#include "database/shared/sharedchanges_p.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QVector>

#include <deque>
#include <optional>

class Table;

/// Follows one table that desks share: knows what the others know of its rows, gathers what this desk
/// changes, and brings in what the others change.
///
/// Fields that this desk has committed and the server has not taken yet keep their values against news, for
/// they will be written later than what the news tell of. Fields that are changed and not committed take the
/// news.
class SharedTable : public QObject {
    Q_OBJECT

public:
    /// Rows whose fields in the key columns are the same are one row to all desks.
    SharedTable(Table* table, const QVector<int>& keyColumns);

    /// Null once the table is gone.
    Table* table() const { return m_table; }

    /// Replaces the rows by these and begins to follow the table.
    void take(const SharedTableNews& content);

    /// Whether something waits for commit().
    bool hasChanges() const;

    /// What has changed since the last commit, which is the commit of this number from now on.
    SharedTableChanges commit(qint64 number);

    /// Takes back what has changed since the last commit.
    void rollback();

    /// The server has taken all commits up to this one.
    void acknowledge(qint64 number);

    /// Brings in what has changed on the server.
    void apply(const SharedTableNews& news);

private Q_SLOTS:
    void onRowsInserted(const QVector<Record>& records);
    void onRowsRemoved(const QVector<Record>& records);
    void onRowsChanged(const QVector<Record>& records);
    void onReset();

private:
    /// A row that the others know, or will know when the server has taken this desk's commits.
    struct Entry {
        Record row;
        /// The row's fields as they were committed or came in last; in no table.
        Record committed;
        qint64 order = 0;
    };
    /// What a commit that the server has not taken yet writes of a row.
    struct Unsent {
        bool isRow = false;
        QSet<int> columns;
    };
    struct UnsentCommit {
        qint64 number = 0;
        QHash<QString, Unsent> rows;
    };
    /// What news do to the table.
    struct Steps {
        QVector<Record> removed;
        QVector<Record> changed;
        QHash<Record, QVector<QPair<int, QVariant>>> fields;
        QVector<QPair<QString, Entry>> inserted;
    };

    void follow();
    void note(const QString& key, const Entry& entry);
    void forget(const Record& row);

    Record makeRow(const QVariantList& values) const;
    Record copyOf(const Record& record) const;
    QVector<int> changedColumns(const Entry& entry) const;
    QVector<Record> insertedInOrder() const;

    void moveInsertedToEnd();
    void collectRemoved(SharedTableChanges& changes, UnsentCommit& unsent);
    void collectPlaced(SharedTableChanges& changes, UnsentCommit& unsent);
    void collectUpdated(SharedTableChanges& changes, UnsentCommit& unsent);
    QString keyForNew(const Record& row, const QSet<QString>& placed);

    Unsent unsentOf(const QString& key) const;
    QStringList removedBy(const SharedTableNews& news) const;
    void applyRemoved(const QString& key, Steps& steps);
    void applyRow(const SharedTableNews::Row& row, Steps& steps);
    void applyFields(Entry& entry, const QVariantList& values, const QSet<int>& kept, Steps& steps);
    void carryOut(const Steps& steps);
    void insertInOrder(QVector<QPair<QString, Entry>> rows);
    int positionFor(qint64 order) const;
    qint64 orderOf(const Record& row) const;

    QPointer<Table> m_table;
    const QVector<int> m_keyColumns;
    bool m_isFollowing = false;

    QHash<QString, Entry> m_entries;
    QHash<Record, QString> m_keys;
    qint64 m_lastLocalOrder;

    QSet<Record> m_inserted;
    QSet<Record> m_changed;
    /// Taken out and not committed.
    QHash<QString, Entry> m_removed;
    std::deque<UnsentCommit> m_unsent;
};
