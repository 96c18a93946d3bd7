#pragma once

#include "database/record.h"
#include "sqlschema_p.h"
#include "sqlsession_p.h"

#include <QSqlQuery>
#include <QStringList>
#include <QVector>

#include <optional>

/// A table's rows as they are stored, with their keys.
struct SqlTableContent {
    std::optional<SqlTableDefinition> definition;
    QVector<Record> rows;
    QVector<qint64> keys;
};

/// The columns that a table and what is stored of it have in common, with their positions in the table.
struct SqlCommonColumns {
    QStringList names;
    QVector<int> positions;
};

/// Exception if the types of a column differ.
SqlCommonColumns commonColumns(
    const SqlSession& session, const Table& table, const SqlTableDefinition& definition);

/// Fills a column of a row that is in no table. Exception if the stored value does not fit.
void readSqlField(
    const SqlSession& session, Table& table, const Record& record, int column, const QVariant& value);

/// Reads the stored rows in their order into rows that the table made. Exception if a stored value or column
/// does not fit, and for keys out of order.
SqlTableContent readSqlTable(const SqlSession& session, Table* table);

/// Writes rows of one table, one by one, through prepared statements; within a transaction.
class SqlTableWriter {
public:
    SqlTableWriter(const SqlSession& session, const QString& table, const QVector<TableColumnDef>& columns);

    void insert(qint64 key, const Record& record);
    void update(qint64 key, const Record& record);
    void move(qint64 fromKey, qint64 toKey);
    void remove(qint64 key);
    void removeAll();

private:
    void prepare(QSqlQuery& query, bool& isPrepared, const QString& statement);
    void bindFields(QSqlQuery& query, int firstPlaceholder, const Record& record);
    void runOnOneRow(QSqlQuery& query);

    const SqlSession& m_session;
    const int m_columnCount;
    const QString m_name;
    const QString m_table;
    const QString m_key;
    QString m_insertStatement;
    QString m_updateStatement;
    QSqlQuery m_insert;
    QSqlQuery m_update;
    QSqlQuery m_move;
    QSqlQuery m_remove;
    bool m_isInsertPrepared = false;
    bool m_isUpdatePrepared = false;
    bool m_isMovePrepared = false;
    bool m_isRemovePrepared = false;
};
