#include "chain/chaintables.h"

#include <database/database.h>
#include <database/icore.h>
#include <directory/securitiestable.h>

namespace {

Table* madeTable(const QString& name, const QVector<TableColumnDef>& columns)
{
    Database* const database = ICore::instance()->database();
    Table* const table = database->table(name);
    return table ? table : database->createTable(name, columns);
}

}

ChainTables ChainTables::make()
{
    return {madeTable(SecuritiesTable::securitiesName, SecuritiesTable::securitiesColumns()),
        madeTable(SecuritiesTable::boardsName, SecuritiesTable::boardsColumns())};
}

ChainTables ChainTables::find()
{
    Database* const database = ICore::instance()->database();
    return {database->table(SecuritiesTable::securitiesName), database->table(SecuritiesTable::boardsName)};
}

QStringList ChainTables::securitiesKey()
{
    return {QStringLiteral("stock_id"), QStringLiteral("board_id"), QStringLiteral("short_name")};
}

QStringList ChainTables::boardsKey()
{
    return {QStringLiteral("stock_id"), QStringLiteral("board_id")};
}
