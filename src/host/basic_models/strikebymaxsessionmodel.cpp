#include "basic_models/strikebymaxsessionmodel.h"

#include "database/table.h"
#include "directory/optionalfield.h"

#include <algorithm>
#include <limits>

namespace {

// The value of a filter's field that filters nothing.
constexpr int anyValue = -1;

bool passesId(int wanted, const Record& option, int column)
{
    return wanted == anyValue || OptionalField::integer(option.value(column)) == qint64{wanted};
}

}

StrikeByMaxSessionModel::StrikeByMaxSessionModel(Table* table, QObject* parent)
    : StrikeByBaseCodeModel(table, parent)
{
    if (!table)
        return;
    m_stockColumn = table->columnIndex(QStringLiteral("stock_id"));
    m_boardColumn = table->columnIndex(QStringLiteral("board_id"));
    m_futureColumn = table->columnIndex(QStringLiteral("fut_isin_id"));
    m_optionTypeColumn = table->columnIndex(QStringLiteral("option_type"));
    m_sessionColumn = table->columnIndex(QStringLiteral("sess_id"));
}

StrikeByMaxSessionModel::~StrikeByMaxSessionModel() = default;

FilterParams StrikeByMaxSessionModel::filterParams() const
{
    return m_params;
}

void StrikeByMaxSessionModel::setFilterParams(const FilterParams& params)
{
    m_params = params;
    rebuild();
}

int StrikeByMaxSessionModel::session() const
{
    return shownRank();
}

bool StrikeByMaxSessionModel::accepts(const Record& option) const
{
    const FieldConstValue session = option.value(m_sessionColumn);
    if (!session.isValid() || (session.type() != FieldType::Int32 && session.type() != FieldType::Int64))
        return false;
    if (!passesId(m_params.stockId, option, m_stockColumn)
        || !passesId(m_params.boardId, option, m_boardColumn)
        || !passesId(m_params.futIsinId, option, m_futureColumn))
        return false;
    if (m_params.optionType == anyValue)
        return true;
    const Field optionType = option.field(m_optionTypeColumn);
    return !optionType.isNull() && static_cast<unsigned char>(optionType.toChar()) == m_params.optionType;
}

int StrikeByMaxSessionModel::rank(const Record& option) const
{
    using Limits = std::numeric_limits<int>;
    const qint64 session = OptionalField::integer(option.value(m_sessionColumn)).value_or(0);
    return static_cast<int>(std::clamp<qint64>(session, Limits::min(), Limits::max()));
}
