#include "sqlschema_p.h"

#include "database/exception.h"
#include "sqlmeta_p.h"
#include "sqlsession_p.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QtEndian>

#include <limits>

const QString SqlSchema::rowKey = QStringLiteral("host_row_key");

namespace {

// SQLite keeps this number in the file's header for the program whose file it is.
constexpr quint32 applicationId = 0x686f7374;
constexpr int formatVersion = 1;

QString tablesTable()
{
    return QStringLiteral("host_tables");
}

QString columnsTable()
{
    return QStringLiteral("host_columns");
}

QString kindOfDatabase()
{
    return QStringLiteral("host tables");
}

[[noreturn]] void refuse(const QString& fileName, const QString& why)
{
    throw Exception(QStringLiteral("Database \"%1\": %2.").arg(fileName.simplified(), why));
}

void requireSound(const SqlSession& session)
{
    QSqlQuery check = session.execute(QStringLiteral("PRAGMA quick_check(1)"));
    if (!check.next() || check.value(0).toString() != QLatin1String("ok"))
        session.fail(QStringLiteral("it is damaged"));
}

void create(const SqlSession& session)
{
    SqlTransaction transaction(session);
    if (session.isSqlite())
        session.execute(QStringLiteral("PRAGMA application_id = %1").arg(applicationId));
    SqlMeta::create(session, kindOfDatabase(), formatVersion);
    SqlSchema::createDescription(session);
    transaction.commit();
}

void createTable(const SqlSession& session, const QString& table, const QVector<TableColumnDef>& columns)
{
    QString definition = session.quoted(SqlSchema::rowKey) + QLatin1String(" BIGINT PRIMARY KEY");
    for (const TableColumnDef& column : columns)
        definition += QLatin1String(", ") + session.quoted(column.name) + QLatin1Char(' ')
            + SqlSchema::columnType(column.type);
    session.execute(QLatin1String("CREATE TABLE ") + session.quoted(table) + QLatin1String(" (") + definition
        + QLatin1Char(')'));
    session.execute(QStringLiteral("INSERT INTO host_tables (name, revision) VALUES (?, 1)"), {table});
}

void takeNextRevision(const SqlSession& session, const QString& table, const SqlTableDefinition& stored)
{
    const QSqlQuery update = session.execute(
        QStringLiteral("UPDATE host_tables SET revision = ? WHERE name = ? AND revision = ?"),
        {stored.nextRevision(), table, stored.revision});
    if (update.numRowsAffected() != 1)
        session.fail(
            QStringLiteral("another program has changed the table \"%1\" in the meantime").arg(table));
}

}

qint64 SqlTableDefinition::nextRevision() const
{
    return revision < std::numeric_limits<qint64>::max() ? revision + 1 : 1;
}

void SqlSchema::checkSqliteFile(const QString& fileName)
{
    const QFileInfo info(fileName);
    if (!info.exists())
        return;
    QFile file(fileName);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        refuse(fileName, QStringLiteral("it is not a file that can be read"));
    // An empty file holds nothing to lose; a crash while the database is made leaves one.
    if (file.size() == 0)
        return;

    // https://www.sqlite.org/fileformat.html, "The Database Header".
    constexpr int headerSize = 100;
    constexpr int writeVersionOffset = 18;
    constexpr int readVersionOffset = 19;
    constexpr int applicationIdOffset = 68;
    constexpr char rollbackJournal = 1;
    const QByteArray header = file.read(headerSize);
    if (header.size() < headerSize || !header.startsWith(QByteArray("SQLite format 3\0", 16)))
        refuse(fileName, QStringLiteral("it is damaged or not a database"));
    if (qFromBigEndian<quint32>(header.constData() + applicationIdOffset) != applicationId)
        refuse(fileName, QStringLiteral("it is a database of something else"));
    // Ours never use a write-ahead log; to read such a file would make one.
    if (header[writeVersionOffset] != rollbackJournal || header[readVersionOffset] != rollbackJournal)
        refuse(fileName, QStringLiteral("it is damaged"));
}

QString SqlSchema::columnType(FieldType type)
{
    switch (type) {
    case FieldType::Int32:
        return QStringLiteral("INTEGER");
    case FieldType::Int64:
    case FieldType::Moment:
        return QStringLiteral("BIGINT");
    case FieldType::Double:
    case FieldType::Decimal:
    case FieldType::Text:
        break;
    }
    return QStringLiteral("TEXT");
}

void SqlSchema::createDescription(const SqlSession& session)
{
    session.execute(
        QStringLiteral("CREATE TABLE host_tables (name TEXT PRIMARY KEY, revision BIGINT NOT NULL)"));
    session.execute(QStringLiteral("CREATE TABLE host_columns (table_name TEXT NOT NULL, "
                                   "column_name TEXT NOT NULL, type INTEGER NOT NULL, "
                                   "PRIMARY KEY (table_name, column_name))"));
}

void SqlSchema::adopt(const SqlSession& session)
{
    if (session.isSqlite())
        requireSound(session);
    const QStringList tables = session.connection().tables();
    if (tables.contains(SqlMeta::table))
        SqlMeta::require(session, kindOfDatabase(), formatVersion);
    else if (tables.isEmpty())
        create(session);
    else
        session.fail(QStringLiteral("it is a database of something else"));
}

std::optional<SqlTableDefinition> SqlSchema::definition(const SqlSession& session, const QString& table)
{
    QSqlQuery tables
        = session.execute(QStringLiteral("SELECT revision FROM host_tables WHERE name = ?"), {table});
    if (!tables.next())
        return std::nullopt;
    SqlTableDefinition result;
    result.revision = tables.value(0).toLongLong();
    QSqlQuery columns = session.execute(
        QStringLiteral("SELECT column_name, type FROM host_columns WHERE table_name = ?"), {table});
    while (columns.next())
        result.columns.insert(columns.value(0).toString(), static_cast<FieldType>(columns.value(1).toInt()));
    return result;
}

void SqlSchema::prepareWriting(const SqlSession& session, const QString& table,
    const QVector<TableColumnDef>& columns, const std::optional<SqlTableDefinition>& stored)
{
    if (stored)
        takeNextRevision(session, table, *stored);
    else
        createTable(session, table, columns);

    QSqlQuery insert = session.prepared(
        QStringLiteral("INSERT INTO host_columns (table_name, column_name, type) VALUES (?, ?, ?)"));
    for (const TableColumnDef& column : columns) {
        if (stored && stored->columns.contains(column.name))
            continue;
        if (stored) {
            session.execute(QLatin1String("ALTER TABLE ") + session.quoted(table)
                + QLatin1String(" ADD COLUMN ") + session.quoted(column.name) + QLatin1Char(' ')
                + SqlSchema::columnType(column.type));
        }
        session.run(insert, {table, column.name, static_cast<int>(column.type)});
    }
}

QString SqlSchema::obstacle(const QString& table, const QVector<TableColumnDef>& columns)
{
    const QString lower = table.toLower();
    if (table.isEmpty() || lower == SqlMeta::table || lower == tablesTable() || lower == columnsTable())
        return QStringLiteral("the name \"%1\" of a table is not available").arg(table);
    QSet<QString> names{rowKey};
    for (const TableColumnDef& column : columns) {
        // SQLite tells names by their letters, not by their case.
        const QString name = column.name.toLower();
        if (name.isEmpty() || names.contains(name))
            return QStringLiteral("the name \"%1\" of a column is not available").arg(column.name);
        names.insert(name);
    }
    return QString();
}
