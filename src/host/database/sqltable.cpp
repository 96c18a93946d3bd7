#include "sqltable_p.h"

#include "database/table.h"
#include "sqlvalue_p.h"

#include <QStringList>

namespace {

/// Qualified names, which SQLite cannot take for texts when there is no such column.
QString selectStatement(const SqlSession& session, const QString& table, const QStringList& columns)
{
    const QString name = session.quoted(table);
    QStringList places;
    for (const QString& column : QStringList(SqlSchema::rowKey) + columns)
        places << name + QLatin1Char('.') + session.quoted(column);
    return QLatin1String("SELECT ") + places.join(QLatin1String(", ")) + QLatin1String(" FROM ") + name
        + QLatin1String(" ORDER BY ") + places.first();
}

QString placeholders(int count)
{
    QStringList list;
    for (int i = 0; i < count; ++i)
        list << QStringLiteral("?");
    return list.join(QLatin1String(", "));
}

}

SqlCommonColumns commonColumns(
    const SqlSession& session, const Table& table, const SqlTableDefinition& definition)
{
    SqlCommonColumns result;
    const QList<TableColumnDef*> columns = table.fieldDefs();
    for (int i = 0; i < columns.size(); ++i) {
        const auto stored = definition.columns.constFind(columns[i]->name);
        if (stored == definition.columns.cend())
            continue;
        if (*stored != columns[i]->type) {
            session.fail(QStringLiteral("the stored column \"%1\" of \"%2\" is of another type")
                             .arg(columns[i]->name, table.name()));
        }
        result.names << columns[i]->name;
        result.positions << i;
    }
    return result;
}

void readSqlField(
    const SqlSession& session, Table& table, const Record& record, int column, const QVariant& value)
{
    if (!SqlValue::toField(value, table.value(record, column))) {
        session.fail(QStringLiteral("a stored value of \"%1\" in \"%2\" cannot be read")
                         .arg(table.fieldDefs().at(column)->name, table.name()));
    }
}

SqlTableContent readSqlTable(const SqlSession& session, Table* table)
{
    SqlTransaction transaction(session);
    SqlTableContent content;
    content.definition = SqlSchema::definition(session, table->name());
    if (!content.definition)
        return content;

    const SqlCommonColumns columns = commonColumns(session, *table, *content.definition);
    QSqlQuery query = session.execute(selectStatement(session, table->name(), columns.names));
    while (query.next()) {
        const Record record = table->createRow();
        for (int i = 0; i < columns.positions.size(); ++i)
            readSqlField(session, *table, record, columns.positions[i], query.value(i + 1));
        const qint64 key = query.value(0).toLongLong();
        // SQLite's check of the file compares no index with its table.
        if (!content.keys.isEmpty() && key <= content.keys.last())
            session.fail(
                QStringLiteral("the rows of \"%1\" are out of order: it is damaged").arg(table->name()));
        content.keys.append(key);
        content.rows.append(record);
    }
    if (query.lastError().isValid())
        session.fail(query.lastError());
    return content;
}

SqlTableWriter::SqlTableWriter(
    const SqlSession& session, const QString& table, const QVector<TableColumnDef>& columns)
    : m_session(session)
    , m_columnCount(int(columns.size()))
    , m_name(table)
    , m_table(session.quoted(table))
    , m_key(session.quoted(SqlSchema::rowKey))
{
    QString names = m_key;
    QStringList assignments;
    for (const TableColumnDef& column : columns) {
        names += QLatin1String(", ") + session.quoted(column.name);
        assignments << session.quoted(column.name) + QLatin1String(" = ?");
    }
    m_insertStatement = QLatin1String("INSERT INTO ") + m_table + QLatin1String(" (") + names
        + QLatin1String(") VALUES (") + placeholders(m_columnCount + 1) + QLatin1Char(')');
    m_updateStatement = QLatin1String("UPDATE ") + m_table + QLatin1String(" SET ")
        + assignments.join(QLatin1String(", ")) + QLatin1String(" WHERE ") + m_key + QLatin1String(" = ?");
}

void SqlTableWriter::prepare(QSqlQuery& query, bool& isPrepared, const QString& statement)
{
    if (isPrepared)
        return;
    query = m_session.prepared(statement);
    isPrepared = true;
}

void SqlTableWriter::bindFields(QSqlQuery& query, int firstPlaceholder, const Record& record)
{
    const bool isSqlite = m_session.isSqlite();
    for (int i = 0; i < m_columnCount; ++i)
        query.bindValue(firstPlaceholder + i, SqlValue::fromField(record.value(i), isSqlite));
}

void SqlTableWriter::runOnOneRow(QSqlQuery& query)
{
    m_session.run(query);
    if (query.numRowsAffected() != 1)
        m_session.fail(QStringLiteral("a stored row of \"%1\" is not there any more").arg(m_name));
}

void SqlTableWriter::insert(qint64 key, const Record& record)
{
    prepare(m_insert, m_isInsertPrepared, m_insertStatement);
    m_insert.bindValue(0, key);
    bindFields(m_insert, 1, record);
    m_session.run(m_insert);
}

void SqlTableWriter::update(qint64 key, const Record& record)
{
    if (m_columnCount == 0)
        return;
    prepare(m_update, m_isUpdatePrepared, m_updateStatement);
    bindFields(m_update, 0, record);
    m_update.bindValue(m_columnCount, key);
    runOnOneRow(m_update);
}

void SqlTableWriter::move(qint64 fromKey, qint64 toKey)
{
    prepare(m_move, m_isMovePrepared,
        QLatin1String("UPDATE ") + m_table + QLatin1String(" SET ") + m_key + QLatin1String(" = ? WHERE ")
            + m_key + QLatin1String(" = ?"));
    m_move.bindValue(0, toKey);
    m_move.bindValue(1, fromKey);
    runOnOneRow(m_move);
}

void SqlTableWriter::remove(qint64 key)
{
    prepare(m_remove, m_isRemovePrepared,
        QLatin1String("DELETE FROM ") + m_table + QLatin1String(" WHERE ") + m_key + QLatin1String(" = ?"));
    m_remove.bindValue(0, key);
    runOnOneRow(m_remove);
}

void SqlTableWriter::removeAll()
{
    m_session.execute(QLatin1String("DELETE FROM ") + m_table);
}
