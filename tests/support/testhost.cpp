#include "support/testhost.h"

#include <database/database.h>
#include <database/icore.h>

#include <QDateTime>

#include <algorithm>

namespace {

decimal toDecimal(const QVariant& value)
{
    return value.userType() == qMetaTypeId<decimal>() ? value.value<decimal>()
                                                      : decimal::fromString(value.toString());
}

qint64 toMoment(const QVariant& value)
{
    return value.userType() == QMetaType::QDateTime ? value.toDateTime().toMSecsSinceEpoch()
                                                    : value.toLongLong();
}

void write(FieldValue field, const QVariant& value)
{
    if (!value.isValid())
        return field.setNull();
    switch (field.type()) {
    case FieldType::Int32:
        return field.setInt32(value.toInt());
    case FieldType::Int64:
        return field.setInt64(value.toLongLong());
    case FieldType::Double:
        return field.setDouble(value.toDouble());
    case FieldType::Decimal:
        return field.setDecimal(toDecimal(value));
    case FieldType::Text:
        return field.setText(value.toString());
    case FieldType::Moment:
        return field.setMoment(toMoment(value));
    }
}

template <typename FieldAt> void writeRow(const Table& table, const TestHost::Row& row, FieldAt fieldAt)
{
    for (auto it = row.cbegin(); it != row.cend(); ++it) {
        const int column = table.columnIndex(it.key());
        if (column < 0)
            qFatal("table \"%s\" has no column \"%s\"", qPrintable(table.name()), qPrintable(it.key()));
        write(fieldAt(column), it.value());
    }
}

}

Table* TestHost::createTable(const QString& name, const Columns& columns)
{
    Database* database = ICore::instance()->database();
    database->dropTable(name);
    return database->createTable(name, columns);
}

Table* TestHost::createSecurities(const Columns& columns)
{
    return createTable(SecuritiesTable::securitiesName, columns);
}

Table* TestHost::createBoards(const Columns& columns)
{
    return createTable(SecuritiesTable::boardsName, columns);
}

void TestHost::dropTable(const QString& name)
{
    ICore::instance()->database()->dropTable(name);
}

void TestHost::dropSecurities()
{
    dropTable(SecuritiesTable::securitiesName);
}

void TestHost::dropBoards()
{
    dropTable(SecuritiesTable::boardsName);
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

Record TestHost::addRow(const QString& tableName, const Row& row)
{
    Table* table = ICore::instance()->database()->table(tableName);
    if (!table)
        qFatal("no table \"%s\"", qPrintable(tableName));
    const Record record = table->createRow();
    writeRow(*table, row, [&](int column) { return table->value(record, column); });
    table->appendRows({record});
    return record;
}

Record TestHost::addSecurity(const Row& row)
{
    return addRow(SecuritiesTable::securitiesName, row);
}

Record TestHost::addBoard(int stockId, int boardId, bool anonymous)
{
    return addRow(SecuritiesTable::boardsName,
        {{QStringLiteral("stock_id"), stockId}, {QStringLiteral("board_id"), boardId},
            {QStringLiteral("is_anonym"), anonymous ? 1 : 0}});
}

void TestHost::changeRow(const Record& record, const Row& row)
{
    Table* table = record.table();
    if (!table)
        qFatal("the record's table is gone");
    table->changeRows({record}, [&](const Record&, const Table::FieldAccess& field) {
        writeRow(*table, row, [&field](int column) { return field(column); });
    });
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
