#include "desk/chain/chaindatabase.h"

#include <database/database.h>
#include <database/icore.h>
#include <database/table.h>

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace {

QString fieldText(const Field& field)
{
    return field.isNull() ? QStringLiteral("-") : field.toString();
}

}

ChainDatabase::ChainDatabase()
{
    open();
}

ChainDatabase::~ChainDatabase()
{
    close();
}

void ChainDatabase::open()
{
    SqlStorage::Connection connection;
    connection.databaseName = fileName();
    m_storage = std::make_unique<SqlStorage>(connection);
    m_storage->open();
    m_tables = ChainTables::make();
    m_storage->attach(m_tables.securities);
    m_storage->attach(m_tables.boards);
}

void ChainDatabase::close()
{
    m_storage.reset();
    m_tables = {};
    ICore::instance()->database()->dropTable(QStringLiteral("securities"));
    ICore::instance()->database()->dropTable(QStringLiteral("boards"));
}

void ChainDatabase::execute(const QString& statement) const
{
    const QString name = QStringLiteral("beside");
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(fileName());
        database.open();
        QSqlQuery query(database);
        if (!query.exec(statement))
            qFatal("%s", qPrintable(query.lastError().text()));
    }
    QSqlDatabase::removeDatabase(name);
}

void ChainDatabase::addRow(const QVariantMap& fields) const
{
    Table* const table = m_tables.securities;
    const Record row = table->createRow();
    for (auto field = fields.begin(); field != fields.end(); ++field)
        table->value(row, table->columnIndex(field.key())).setVariant(field.value());
    table->appendRows({row});
}

QStringList ChainDatabase::rowsOf(Table* table)
{
    QStringList rows;
    for (const Record& row : table->masterIndex()) {
        QStringList fields;
        for (int column = 0; column < table->columnCount(); ++column)
            fields.append(fieldText(row.field(column)));
        rows.append(fields.join(QLatin1Char(' ')));
    }
    return rows;
}

QString ChainDatabase::fields(int position, const char* names) const
{
    QStringList texts;
    const QStringList columns = QString::fromLatin1(names).split(QLatin1Char(' '));
    for (const QString& name : columns)
        texts.append(
            fieldText(m_tables.securities->record(position).field(m_tables.securities->columnIndex(name))));
    return texts.join(QLatin1Char(' '));
}
