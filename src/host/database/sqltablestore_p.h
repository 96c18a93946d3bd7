#pragma once

#include "sqltable_p.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>

class Table;

/// Follows one table: knows the key of every stored row and which rows wait to be written.
class SqlTableStore : public QObject {
    Q_OBJECT

public:
    SqlTableStore(Table* table, const SqlSession& session);

    /// Null once the table is gone; what waited is forgotten then.
    Table* table() const { return m_table; }
    bool hasChanges() const;
    /// Whether the stored table lacks a column of the host table.
    bool lacksColumns() const;

    /// Puts what was read into the table and begins to follow it.
    void take(const SqlTableContent& content);

    /// Writes what waits; within a transaction. It waits on until markWritten().
    void write();
    void markWritten();

private Q_SLOTS:
    void onRowsInserted(const QVector<Record>& records);
    void onRowsRemoved(const QVector<Record>& records);
    void onRowsChanged(const QVector<Record>& records);
    void onReset();

private:
    /// What has to be written of rows that get a new key.
    struct Plan {
        bool replacesAll = false;
        QVector<std::pair<Record, qint64>> moved;
        QVector<std::pair<Record, qint64>> inserted;

        void insert(const QVector<Record>& rows, const QVector<qint64>& keys);
    };

    void follow();
    void forgetKey(const Record& record);
    void forgetChanges();
    Plan plan() const;
    bool planAppended(Plan& plan) const;
    bool planBetween(Plan& plan) const;
    bool planMoved(Plan& plan) const;
    QVector<TableColumnDef> columns() const;

    QPointer<Table> m_table;
    const SqlSession& m_session;
    std::optional<SqlTableDefinition> m_definition;
    /// The keys of the table's rows that are stored.
    QHash<Record, qint64> m_keys;
    bool m_isFollowing = false;
    int m_ownResets = 0;

    bool m_isReplaced = false;
    QSet<Record> m_inserted;
    QSet<Record> m_changed;
    QVector<qint64> m_removedKeys;
    /// What the last write() did, of effect once the transaction is committed.
    Plan m_plan;
};
