#include "database/shared/sharedreading_p.h"

#include "database/shared/sharedschema_p.h"
#include "database/sqlschema_p.h"
#include "database/sqlsession_p.h"
#include "database/sqltable_p.h"
#include "database/table.h"

namespace {

QString selectStatement(const SqlSession& session, const Table& layout, qint64 since)
{
    const QString key = session.quoted(SqlSchema::rowKey);
    const QString order = session.quoted(SharedSchema::rowOrder);
    QStringList columns{key, order};
    for (const TableColumnDef* column : layout.fieldDefs())
        columns << session.quoted(column->name);
    QString statement = QLatin1String("SELECT ") + columns.join(QLatin1String(", ")) + QLatin1String(" FROM ")
        + session.quoted(layout.name());
    if (since >= 0) {
        statement += QLatin1String(" WHERE ") + session.quoted(SharedSchema::rowRevision)
            + QStringLiteral(" > %1").arg(since);
    }
    return statement + QLatin1String(" ORDER BY ") + order + QLatin1String(", ") + key;
}

SharedTableNews::Row row(const SqlSession& session, Table& layout, const QSqlQuery& query)
{
    SharedTableNews::Row result;
    result.key = query.value(0).toString();
    if (result.key.isEmpty() || query.value(1).isNull())
        session.fail(QStringLiteral("a stored row of \"%1\" has no key or place").arg(layout.name()));
    result.order = query.value(1).toLongLong();
    const Record record = layout.createRow();
    for (int i = 0; i < layout.columnCount(); ++i) {
        readSqlField(session, layout, record, i, query.value(i + 2));
        result.values << record.value(i).toVariant();
    }
    return result;
}

}

void SharedReading::begin(const SqlSession& session)
{
    session.execute(QStringLiteral("SET TRANSACTION ISOLATION LEVEL REPEATABLE READ, READ ONLY"));
}

SharedProgress SharedReading::progress(const SqlSession& session, const QString& writer)
{
    QSqlQuery query = session.execute(
        QStringLiteral(
            "SELECT revision, oldest, "
            "COALESCE((SELECT last_commit FROM host_writers WHERE writer = ?), 0) FROM host_sharing"),
        {writer});
    if (!query.next())
        session.fail(QStringLiteral("its counters are gone"));
    return {query.value(0).toLongLong(), query.value(1).toLongLong(), query.value(2).toLongLong()};
}

SharedTableNews SharedReading::news(const SqlSession& session, Table& layout, qint64 since)
{
    SharedTableNews result;
    result.table = layout.name();
    result.isWhole = since < 0;
    QSqlQuery rows = session.execute(selectStatement(session, layout, since));
    while (rows.next())
        result.rows.append(row(session, layout, rows));
    if (result.isWhole)
        return result;
    QSqlQuery removed = session.execute(
        QStringLiteral("SELECT row_key FROM host_removed WHERE table_name = ? AND revision > ?"),
        {layout.name(), since});
    while (removed.next())
        result.removed << removed.value(0).toString();
    return result;
}
