#include "basic_models/strikebymaxsessionmodel.h"

#include "database/table.h"

#include <algorithm>
#include <optional>

namespace {

/// The number of a column of integers, null counting as so much; nothing for another column.
std::optional<qint64> number(const Record& record, const char* column, std::optional<qint64> null)
{
    const Table* table = record.table();
    const int index = table->columnIndex(QLatin1String(column));
    const FieldConstValue field = table->dataPtr(record.row(), index);
    if (index < 0 || (field.type() != FieldType::Int32 && field.type() != FieldType::Int64))
        return std::nullopt;
    if (field.isNull())
        return null;
    return field.type() == FieldType::Int32 ? field.toInt32() : field.toInt64();
}

std::optional<qint64> session(const Record& record)
{
    return number(record, "sess_id", 0);
}

bool passes(const Record& record, const char* column, int wanted)
{
    return wanted == -1 || number(record, column, std::nullopt) == wanted;
}

bool hasType(const Record& record, int wanted)
{
    const Table* table = record.table();
    const Field type(table->dataPtr(record.row(), table->columnIndex(QStringLiteral("option_type"))));
    return wanted == -1 || type.toChar() == wanted;
}

}

void StrikeByMaxSessionModel::setFilterParams(const FilterParams& params)
{
    m_params = params;
    reread();
}

QVector<Record> StrikeByMaxSessionModel::chosen(const QVector<Record>& options) const
{
    QVector<Record> records;
    qint64 latest = 0;
    for (const Record& option : options) {
        const std::optional<qint64> own = session(option);
        if (!own || !passes(option, "stock_id", m_params.stockId)
            || !passes(option, "board_id", m_params.boardId)
            || !passes(option, "fut_isin_id", m_params.futIsinId) || !hasType(option, m_params.optionType))
            continue;
        if (records.isEmpty() || *own > latest) {
            latest = *own;
            records.clear();
        }
        if (*own == latest)
            records.append(option);
    }
    return records;
}
