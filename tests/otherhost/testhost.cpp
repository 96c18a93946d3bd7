#include "support/testhost.h"

#include <database/icore.h>

#include <QDateTime>

#include <algorithm>

namespace {

QVariant decimalOf(const QVariant& value)
{
    if (value.userType() == qMetaTypeId<decimal>())
        return value;
    return QVariant::fromValue(TestHost::number(value.toString()));
}

/// The value as a column of the type holds it.
QVariant converted(const QVariant& value, FieldType type)
{
    if (!value.isValid())
        return value;
    switch (type) {
    case FieldType::Int32:
        return value.toInt();
    case FieldType::Int64:
        return value.toLongLong();
    case FieldType::Double:
        return value.toDouble();
    case FieldType::Decimal:
        return decimalOf(value);
    case FieldType::Text:
        return value.toString();
    case FieldType::Moment:
        return value.userType() == QMetaType::QDateTime ? value.toDateTime().toMSecsSinceEpoch()
                                                        : value.toLongLong();
    }
    return QVariant();
}

void write(Table& table, const Record& record, const TestHost::Row& row)
{
    const QList<TableColumnDef*> columns = table.fieldDefs();
    for (auto it = row.cbegin(); it != row.cend(); ++it) {
        const int column = table.columnIndex(it.key());
        if (column < 0)
            qFatal("the table has no column \"%s\"", qPrintable(it.key()));
        table.write(record, column, converted(it.value(), columns.at(column)->type));
    }
}

TestHost::Columns columns(FieldType type, std::initializer_list<const char*> names, short decimals = 0)
{
    TestHost::Columns result;
    for (const char* name : names)
        result.append({QString::fromLatin1(name), type, decimals});
    return result;
}

}

// Those that the library does not ask for come last, and the host's numbers are wide where they may be.
TestHost::Columns TestHost::securitiesColumns()
{
    constexpr short priceDecimals = 5;
    return columns(FieldType::Double, {"volat_max", "volat_min"})
        + columns(FieldType::Decimal,
            {"strike", "price_step", "bid", "ask", "cur_kotir_real", "cur_kotir", "old_kotir"}, priceDecimals)
        + columns(FieldType::Text, {"sectype", "base_code", "option_type"})
        + columns(FieldType::Int64, {"sec_id"})
        + columns(FieldType::Int32,
            {"sess_id", "board_id", "stock_id", "isin_id", "fut_isin_id", "base_isin_id", "decimals"})
        + columns(FieldType::Moment, {"expdate", "lasttime"}) + columns(FieldType::Text, {"short_name"});
}

TestHost::Columns TestHost::boardsColumns()
{
    return columns(FieldType::Int32, {"is_anonym", "board_id", "stock_id"})
        + columns(FieldType::Text, {"name"});
}

Table* TestHost::createTable(const QString& name, const Columns& columns)
{
    return ICore::instance()->database()->replaceTable(name, columns);
}

void TestHost::dropTable(const QString& name)
{
    ICore::instance()->database()->removeTable(name);
}

QVector<Record> TestHost::addRows(const QString& tableName, const QVector<Row>& rows)
{
    Table* table = ICore::instance()->database()->table(tableName);
    if (!table)
        qFatal("no table \"%s\"", qPrintable(tableName));
    QVector<Record> records;
    for (const Row& row : rows) {
        records.append(table->makeRow());
        write(*table, records.last(), row);
    }
    table->setRows(table->masterIndex() + records);
    return records;
}

void TestHost::changeRow(const Record& record, const Row& row)
{
    Table* table = record.table();
    if (!table)
        qFatal("the record's table is gone");
    write(*table, record, row);
    table->announce();
}

void TestHost::prependRow(Table* table, const Record& record)
{
    table->setRows(IndexList{record} + table->masterIndex());
}

void TestHost::appendRow(Table* table, const Record& record)
{
    table->setRows(table->masterIndex() + IndexList{record});
}

void TestHost::removeRows(const QVector<Record>& records)
{
    if (records.isEmpty())
        return;
    Table* table = records.first().table();
    IndexList rows = table->masterIndex();
    const auto isGone = [&records](const Record& row) { return records.contains(row); };
    rows.erase(std::remove_if(rows.begin(), rows.end(), isGone), rows.end());
    table->setRows(rows);
}

void TestHost::clear(Table* table)
{
    table->setRows(IndexList());
}

decimal TestHost::number(const QString& text)
{
    const std::optional<decimal> number = decimal::fromText(text);
    if (!number)
        qFatal("\"%s\" is no number", qPrintable(text));
    return *number;
}

QString TestHost::text(const decimal& number)
{
    return number.toText();
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
    FilterParams params;
    params.stockId = stockId;
    params.boardId = boardId;
    params.futIsinId = futIsinId;
    params.optionType = optionType;
    return params;
}
