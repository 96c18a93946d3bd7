#include "sampletable.h"

QVector<TableColumnDef> SampleTable::columns()
{
    return {{QStringLiteral("id"), FieldType::Int32, 0}, {QStringLiteral("count"), FieldType::Int64, 0},
        {QStringLiteral("ratio"), FieldType::Double, 0}, {QStringLiteral("price"), FieldType::Decimal, 2},
        {QStringLiteral("name"), FieldType::Text, 0}, {QStringLiteral("time"), FieldType::Moment, 0}};
}

Record SampleTable::makeRow(Table& table, int id)
{
    const Record record = table.createRow();
    table.value(record, Id).setInt32(id);
    table.value(record, Count).setInt64(qint64(id) * 10000000000);
    table.value(record, Ratio).setDouble(id / 3.0);
    table.value(record, Price).setDecimal(decimal::fromUnits(id, 2));
    table.value(record, Name).setText(QStringLiteral("row %1").arg(id));
    table.value(record, Time).setMoment(qint64(id) * 1000);
    return record;
}

QVector<Record> SampleTable::makeRows(Table& table, int firstId, int count)
{
    QVector<Record> records;
    for (int i = 0; i < count; ++i)
        records.append(makeRow(table, firstId + i));
    return records;
}

QVector<int> SampleTable::ids(const Table& table)
{
    return ids(table.masterIndex());
}

QVector<int> SampleTable::ids(const IndexList& list)
{
    QVector<int> result;
    for (const Record& record : list)
        result.append(record.value(Id).toInt32());
    return result;
}

QVector<int> SampleTable::ids(const QVector<Record>& records)
{
    QVector<int> result;
    for (const Record& record : records)
        result.append(record.value(Id).toInt32());
    return result;
}
