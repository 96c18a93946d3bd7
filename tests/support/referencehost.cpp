#include "support/testhost.h"

#include <database/database.h>
#include <database/icore.h>
#include <directory/securitiestable.h>

#include <QDateTime>

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

TestHost::Columns TestHost::securitiesColumns()
{
    return SecuritiesTable::securitiesColumns();
}

TestHost::Columns TestHost::boardsColumns()
{
    return SecuritiesTable::boardsColumns();
}

Table* TestHost::createTable(const QString& name, const Columns& columns)
{
    Database* database = ICore::instance()->database();
    database->dropTable(name);
    return database->createTable(name, columns);
}

void TestHost::dropTable(const QString& name)
{
    ICore::instance()->database()->dropTable(name);
}

QVector<Record> TestHost::addRows(const QString& tableName, const QVector<Row>& rows)
{
    Table* table = ICore::instance()->database()->table(tableName);
    if (!table)
        qFatal("no table \"%s\"", qPrintable(tableName));
    QVector<Record> records;
    for (const Row& row : rows) {
        records.append(table->createRow());
        writeRow(*table, row, [&](int column) { return table->value(records.last(), column); });
    }
    table->appendRows(records);
    return records;
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

void TestHost::prependRow(Table* table, const Record& record)
{
    table->insertRows(0, {record});
}

void TestHost::appendRow(Table* table, const Record& record)
{
    table->appendRows({record});
}

void TestHost::removeRows(const QVector<Record>& records)
{
    if (!records.isEmpty())
        records.first().table()->removeRows(records);
}

void TestHost::clear(Table* table)
{
    table->clear();
}

decimal TestHost::number(const QString& text)
{
    bool isNumber = false;
    const decimal number = decimal::fromString(text, &isNumber);
    if (!isNumber)
        qFatal("\"%s\" is no number", qPrintable(text));
    return number;
}

QString TestHost::text(const decimal& number)
{
    return number.toString();
}

decimal TestHost::sum(const decimal& a, const decimal& b)
{
    return a + b;
}

decimal TestHost::difference(const decimal& a, const decimal& b)
{
    return a - b;
}

FilterParams TestHost::filter(int stockId, int boardId, int futIsinId, int optionType)
{
    return {stockId, boardId, futIsinId, optionType};
}
