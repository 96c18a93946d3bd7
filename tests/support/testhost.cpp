#include "support/testhost.h"

#include <QDateTime>

#include <algorithm>

namespace {

const QString securitiesName = QStringLiteral("securities");
const QString boardsName = QStringLiteral("boards");

}

Table* TestHost::createSecurities(const Columns& columns)
{
    return createTable(securitiesName, columns);
}

Table* TestHost::createBoards(const Columns& columns)
{
    return createTable(boardsName, columns);
}

void TestHost::dropSecurities()
{
    dropTable(securitiesName);
}

void TestHost::dropBoards()
{
    dropTable(boardsName);
}

TestHost::Columns TestHost::without(Columns columns, const QStringList& names)
{
    const auto isNamed = [&names](const TableColumnDef& column) { return names.contains(column.name); };
    columns.erase(std::remove_if(columns.begin(), columns.end(), isNamed), columns.end());
    return columns;
}

TestHost::Columns TestHost::withType(Columns columns, const QString& name, FieldType type)
{
    for (TableColumnDef& column : columns) {
        if (column.name == name)
            column.type = type;
    }
    return columns;
}

Record TestHost::addRow(const QString& table, const Row& row)
{
    return addRows(table, {row}).first();
}

Record TestHost::addSecurity(const Row& row)
{
    return addRow(securitiesName, row);
}

QVector<Record> TestHost::addSecurities(const QVector<Row>& rows)
{
    return addRows(securitiesName, rows);
}

Record TestHost::addBoard(int stockId, int boardId, bool anonymous)
{
    return addRow(boardsName,
        {{QStringLiteral("stock_id"), stockId}, {QStringLiteral("board_id"), boardId},
            {QStringLiteral("is_anonym"), anonymous ? 1 : 0}});
}

Record TestHost::recordAt(const Table* table, int number)
{
    const IndexList rows = table->masterIndex();
    auto row = rows.begin();
    for (int i = 0; i < number && row != rows.end(); ++i)
        ++row;
    return row != rows.end() ? *row : Record();
}

int TestHost::rowCount(const Table* table)
{
    const IndexList rows = table->masterIndex();
    int count = 0;
    for (auto row = rows.begin(); row != rows.end(); ++row)
        ++count;
    return count;
}

TestHost::Row TestHost::future(const Row& changes)
{
    Row row{{QStringLiteral("stock_id"), 1}, {QStringLiteral("board_id"), 2}, {QStringLiteral("sec_id"), 100},
        {QStringLiteral("isin_id"), 10}, {QStringLiteral("base_code"), QStringLiteral("Amber")},
        {QStringLiteral("sectype"), QStringLiteral("F")}, {QStringLiteral("sess_id"), 7},
        {QStringLiteral("expdate"), moment(2030, 6, 20)}};
    for (auto it = changes.cbegin(); it != changes.cend(); ++it)
        row.insert(it.key(), it.value());
    return row;
}

qint64 TestHost::moment(int year, int month, int day)
{
    return QDateTime(QDate(year, month, day), QTime(0, 0), Qt::UTC).toMSecsSinceEpoch();
}
