#include "database/shared/sharedschema_p.h"

#include "database/sqlmeta_p.h"
#include "database/sqlschema_p.h"
#include "database/sqlsession_p.h"
#include "database/sqltable_p.h"
#include "database/table.h"

#include <QUuid>

#include <algorithm>

const QString SharedSchema::rowOrder = QStringLiteral("host_row_order");
const QString SharedSchema::rowRevision = QStringLiteral("host_row_revision");
const QString SharedSchema::channel = QStringLiteral("host_changes");

namespace {

constexpr int formatVersion = 1;
// Any number will do that other programs do not lock at the same time.
constexpr int layoutLock = 0x686f7374;

QString kindOfDatabase()
{
    return QStringLiteral("shared host tables");
}

QString identityName()
{
    return QStringLiteral("identity");
}

bool isTrue(const SqlSession& session, const QString& expression)
{
    QSqlQuery query = session.execute(QLatin1String("SELECT ") + expression);
    return query.next() && query.value(0).toBool();
}

bool hasLayout(const SqlSession& session)
{
    // A name is not looked up, for a server remembers for a while that there was none.
    return isTrue(session,
        QStringLiteral("EXISTS (SELECT 1 FROM pg_class c WHERE c.relname = 'host_meta' AND c.relkind = 'r' "
                       "AND pg_table_is_visible(c.oid))"));
}

bool hasTables(const SqlSession& session)
{
    return isTrue(session,
        QStringLiteral(
            "EXISTS (SELECT 1 FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace "
            "WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f') AND pg_table_is_visible(c.oid) "
            "AND n.nspname <> 'information_schema' AND n.nspname !~ '^pg_' "
            "AND NOT EXISTS (SELECT 1 FROM pg_depend d WHERE d.objid = c.oid AND d.deptype = 'e'))"));
}

/// Until the end of the transaction nobody else makes tables.
void lockLayout(const SqlSession& session)
{
    session.execute(QStringLiteral("SELECT pg_advisory_xact_lock(%1)").arg(layoutLock));
}

void create(const SqlSession& session)
{
    SqlMeta::create(session, kindOfDatabase(), formatVersion);
    SqlMeta::insert(session, identityName(), QUuid::createUuid().toString(QUuid::WithoutBraces));
    SqlSchema::createDescription(session);
    for (const char* const statement :
        {"CREATE TABLE host_sharing (revision BIGINT NOT NULL, next_row BIGINT NOT NULL, "
         "next_number BIGINT NOT NULL, oldest BIGINT NOT NULL)",
            "INSERT INTO host_sharing VALUES (1, 1, 1, 1)",
            "CREATE TABLE host_removed (table_name TEXT NOT NULL, row_key TEXT NOT NULL, "
            "revision BIGINT NOT NULL, PRIMARY KEY (table_name, row_key))",
            "CREATE INDEX ON host_removed (revision)",
            "CREATE TABLE host_writers (writer TEXT PRIMARY KEY, last_commit BIGINT NOT NULL)",
            "CREATE TABLE host_numbers (first BIGINT PRIMARY KEY, last BIGINT NOT NULL)"})
        session.execute(QString::fromLatin1(statement));
}

QVector<TableColumnDef> columnsOf(const Table& table)
{
    QVector<TableColumnDef> columns;
    for (const TableColumnDef* column : table.fieldDefs())
        columns.append(*column);
    return columns;
}

void requireNames(const SqlSession& session, const Table& table)
{
    // A server cuts longer names without a word.
    constexpr int longestName = 63;
    const QVector<TableColumnDef> columns = columnsOf(table);
    const QString obstacle = SqlSchema::obstacle(table.name(), columns);
    if (!obstacle.isEmpty())
        session.fail(obstacle);
    const auto requireName = [&](const QString& name) {
        if (name.toUtf8().size() > longestName || name.startsWith(QLatin1String("host_")))
            session.fail(QStringLiteral("the name \"%1\" is too long or not available").arg(name));
    };
    requireName(table.name());
    for (const TableColumnDef& column : columns)
        requireName(column.name);
}

void createTable(const SqlSession& session, const Table& table)
{
    QString definition = session.quoted(SqlSchema::rowKey)
        + QLatin1String(" TEXT COLLATE \"C\" PRIMARY KEY, ") + session.quoted(SharedSchema::rowOrder)
        + QLatin1String(" BIGINT NOT NULL, ") + session.quoted(SharedSchema::rowRevision)
        + QLatin1String(" BIGINT NOT NULL");
    for (const TableColumnDef* column : table.fieldDefs()) {
        definition += QLatin1String(", ") + session.quoted(column->name) + QLatin1Char(' ')
            + SqlSchema::columnType(column->type);
    }
    const QString name = session.quoted(table.name());
    session.execute(
        QLatin1String("CREATE TABLE ") + name + QLatin1String(" (") + definition + QLatin1Char(')'));
    session.execute(QLatin1String("CREATE INDEX ON ") + name + QLatin1String(" (")
        + session.quoted(SharedSchema::rowRevision) + QLatin1Char(')'));
    session.execute(QStringLiteral("INSERT INTO host_tables (name, revision) VALUES (?, 1)"), {table.name()});
}

bool lacksColumns(const Table& table, const SqlTableDefinition& definition)
{
    const QList<TableColumnDef*> columns = table.fieldDefs();
    return std::any_of(columns.cbegin(), columns.cend(),
        [&](const TableColumnDef* column) { return !definition.columns.contains(column->name); });
}

}

void SharedSchema::createIfEmpty(const SqlSession& session)
{
    if (hasLayout(session))
        return;
    SqlTransaction transaction(session);
    lockLayout(session);
    if (hasLayout(session))
        return;
    if (hasTables(session))
        session.fail(QStringLiteral("it is a database of something else"));
    create(session);
    transaction.commit();
}

QString SharedSchema::requireIdentity(const SqlSession& session)
{
    if (!hasLayout(session))
        session.fail(QStringLiteral("its tables are gone"));
    SqlMeta::require(session, kindOfDatabase(), formatVersion);
    return SqlMeta::value(session, identityName());
}

void SharedSchema::checkTable(const SqlSession& session, const Table& table)
{
    const std::optional<SqlTableDefinition> definition = SqlSchema::definition(session, table.name());
    if (!definition || lacksColumns(table, *definition))
        session.fail(QStringLiteral("the stored table \"%1\" is gone or lacks columns").arg(table.name()));
    commonColumns(session, table, *definition);
}

void SharedSchema::prepareTable(const SqlSession& session, const Table& table)
{
    requireNames(session, table);
    const std::optional<SqlTableDefinition> known = SqlSchema::definition(session, table.name());
    if (known && !lacksColumns(table, *known))
        return checkTable(session, table);

    SqlTransaction transaction(session);
    lockLayout(session);
    const std::optional<SqlTableDefinition> definition = SqlSchema::definition(session, table.name());
    if (!definition)
        createTable(session, table);
    for (const TableColumnDef* column : table.fieldDefs()) {
        if (definition && definition->columns.contains(column->name))
            continue;
        if (definition) {
            session.execute(QLatin1String("ALTER TABLE ") + session.quoted(table.name())
                + QLatin1String(" ADD COLUMN ") + session.quoted(column->name) + QLatin1Char(' ')
                + SqlSchema::columnType(column->type));
        }
        session.execute(
            QStringLiteral("INSERT INTO host_columns (table_name, column_name, type) VALUES (?, ?, ?)"),
            {table.name(), column->name, static_cast<int>(column->type)});
    }
    checkTable(session, table);
    transaction.commit();
}
