#include "chain/columnmap.h"

#include "chain/chaintexts.h"

#include <algorithm>

namespace {

constexpr Column valueColumns[]
    = {Column::Settlement, Column::Bid, Column::Ask, Column::Last, Column::Volatility};

bool isValueColumn(Column column)
{
    return std::find(std::begin(valueColumns), std::end(valueColumns), column) != std::end(valueColumns);
}

// Whether there is one of each option of a row.
bool isPerOption(Column column)
{
    return isValueColumn(column) || column == Column::Volume || column == Column::VolumeOrVolatility
        || column == Column::OpenInterest || column == Column::SidePrice;
}

int findStrike(const QVector<std::optional<ColumnName>>& names)
{
    for (int cell = 0; cell < names.size(); ++cell) {
        if (names.at(cell) && names.at(cell)->column == Column::Strike && names.at(cell)->side == Side::Row)
            return cell;
    }
    return -1;
}

}

ColumnMap::ColumnMap(const QStringList& header)
    : m_cellCount(header.size())
{
    while (m_cellCount > 0 && header.at(m_cellCount - 1).isEmpty())
        --m_cellCount;
    QVector<std::optional<ColumnName>> names;
    for (int cell = 0; cell < m_cellCount; ++cell)
        names.append(recogniseColumn(header.at(cell)));
    assignMirrored(&names);
    for (int cell = 0; cell < names.size(); ++cell) {
        if (names.at(cell))
            take(*names.at(cell), cell, header.at(cell));
    }
    const bool bothPrices = has(Column::SidePrice, Side::Call) && has(Column::SidePrice, Side::Put);
    for (const Side side : {Side::Call, Side::Put}) {
        if (bothPrices)
            reassign(Column::SidePrice, Column::Settlement, side);
        drop(Column::SidePrice, side);
    }
}

// Tables of an exchange repeat the names on both sides of the strike: the calls' to the left, the puts' to
// the right.
void ColumnMap::assignMirrored(QVector<std::optional<ColumnName>>* names) const
{
    const int strike = findStrike(*names);
    bool mirrored = false;
    for (int left = 0; left < names->size(); ++left) {
        const std::optional<ColumnName>& name = names->at(left);
        if (!name)
            continue;
        if (name->column == Column::Type || (name->side != Side::Row && isPerOption(name->column)))
            return;
        for (int right = strike + 1; left < strike && right < names->size(); ++right)
            mirrored = mirrored
                || (isValueColumn(name->column) && names->at(right)
                    && names->at(right)->column == name->column);
    }
    for (int cell = 0; mirrored && cell < names->size(); ++cell) {
        std::optional<ColumnName>& name = (*names)[cell];
        if (name && isPerOption(name->column))
            name->side = cell < strike ? Side::Call : Side::Put;
    }
}

void ColumnMap::take(const ColumnName& name, int cell, const QString& header)
{
    if (!isPerOption(name.column) && name.side != Side::Row)
        return;
    ++m_knownCount;
    if (name.column == Column::Code) {
        const auto behind = std::upper_bound(m_codeRanks.begin(), m_codeRanks.end(), name.rank);
        const int position = int(behind - m_codeRanks.begin());
        m_codeRanks.insert(position, name.rank);
        m_codes.insert(position, cell);
        return;
    }
    Place& known = place(name.column, name.side);
    if (known.cell >= 0 && known.rank == name.rank)
        m_ambiguity = ChainTexts::tr("the column \"%1\" occurs twice").arg(header);
    if (known.cell < 0 || name.rank < known.rank)
        known = {cell, name.rank, name.percent};
}

ColumnMap::Place& ColumnMap::place(Column column, Side side)
{
    return m_places[size_t(column)][size_t(side)];
}

const ColumnMap::Place& ColumnMap::place(Column column, Side side) const
{
    return m_places[size_t(column)][size_t(side)];
}

int ColumnMap::index(Column column, Side side) const
{
    return place(column, side).cell;
}

bool ColumnMap::isPercent(Side side) const
{
    return place(Column::Volatility, side).percent;
}

bool ColumnMap::hasValues(Side side) const
{
    return std::any_of(std::begin(valueColumns), std::end(valueColumns), [this, side](Column column) {
        return has(column, side);
    }) || has(Column::VolumeOrVolatility, side);
}

bool ColumnMap::hasSides() const
{
    if (has(Column::Type) && hasValues(Side::Row))
        return false;
    return hasValues(Side::Call) || hasValues(Side::Put);
}

bool ColumnMap::isComplete() const
{
    if (!has(Column::Strike))
        return false;
    const bool typed = has(Column::Type) || !m_codes.isEmpty();
    return hasSides() || (typed && hasValues(Side::Row));
}

void ColumnMap::reassign(Column from, Column to, Side side)
{
    if (!has(to, side))
        place(to, side) = place(from, side);
    drop(from, side);
}

void ColumnMap::reassignToCode(Column from)
{
    if (!has(from))
        return;
    m_codes.append(index(from));
    drop(from);
}

void ColumnMap::drop(Column column, Side side)
{
    place(column, side) = {};
}
