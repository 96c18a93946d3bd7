#include "rowsearch_p.h"

#include "database/icore.h"
#include "database/table.h"

#include <algorithm>

std::optional<qint64> RowSearch::integer(const Record& record, const char* column)
{
    const Table* table = record.table();
    if (!table)
        return std::nullopt;
    const FieldConstValue field = table->dataPtr(record.row(), table->columnIndex(QLatin1String(column)));
    if (!field.isNull() && field.type() == FieldType::Int32)
        return field.toInt32();
    if (!field.isNull() && field.type() == FieldType::Int64)
        return field.toInt64();
    return std::nullopt;
}

Record RowSearch::first(const QString& tableName, std::initializer_list<Id> ids)
{
    const Table* table = ICore::instance()->database()->table(tableName);
    if (!table)
        return Record();
    const IndexList rows = table->masterIndex();
    const auto found = std::find_if(rows.begin(), rows.end(), [ids](const Record& row) {
        return std::all_of(
            ids.begin(), ids.end(), [&row](const Id& id) { return integer(row, id.column) == id.value; });
    });
    return found == rows.end() ? Record() : *found;
}
