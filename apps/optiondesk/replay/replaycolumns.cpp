#include "replay/replaycolumns.h"

#include <chain/columnnames.h>

#include <algorithm>

namespace {

QString normalised(const QString& name)
{
    QString result;
    for (const QChar character : name) {
        if (character.isLetterOrNumber())
            result += character.toLower();
    }
    return result;
}

std::optional<QuoteField> priceOf(const ColumnName& name)
{
    if (name.side != Side::Row)
        return std::nullopt;
    switch (name.column) {
    case Column::Bid:
        return QuoteField::Bid;
    case Column::Ask:
        return QuoteField::Ask;
    case Column::Last:
        return QuoteField::Last;
    default:
        return std::nullopt;
    }
}

}

ReplayColumns::ReplayColumns(const QStringList& header)
{
    static const QStringList times = QStringLiteral("time timestamp datetime timems timestampms quotetime "
                                                    "eventtime milliseconds msecs ms epochms moment ts t")
                                         .split(QLatin1Char(' '));
    static const QStringList instruments
        = QStringLiteral("instrument shortname instrumentname name symbol code security contract ticker "
                         "isinid isin instrumentid")
              .split(QLatin1Char(' '));
    m_time = find(header, times);
    m_instrument = find(header, instruments);
    findPrices(header);
}

int ReplayColumns::find(const QStringList& header, const QStringList& names)
{
    QStringList titles;
    for (const QString& title : header)
        titles.append(normalised(title));
    for (const QString& name : names) {
        const int index = titles.indexOf(name);
        if (index < 0)
            continue;
        if (titles.indexOf(name, index + 1) >= 0)
            m_repeatedName = header.at(index);
        return index;
    }
    return -1;
}

void ReplayColumns::findPrices(const QStringList& header)
{
    std::array<int, quoteFieldCount> ranks = {};
    for (int index = 0; index < header.size(); ++index) {
        const std::optional<ColumnName> name = recogniseColumn(header.at(index));
        const std::optional<QuoteField> field = name ? priceOf(*name) : std::nullopt;
        if (!field)
            continue;
        int& place = m_prices[std::size_t(*field)];
        int& rank = ranks[std::size_t(*field)];
        if (place >= 0 && name->rank == rank)
            m_repeatedName = header.at(index);
        if (place >= 0 && name->rank >= rank)
            continue;
        place = index;
        rank = name->rank;
    }
}

std::array<int, 5> ReplayColumns::all() const
{
    return {m_time, m_instrument, m_prices[0], m_prices[1], m_prices[2]};
}

bool ReplayColumns::isComplete() const
{
    return m_time >= 0 && m_instrument >= 0
        && std::any_of(m_prices.begin(), m_prices.end(), [](int index) { return index >= 0; });
}

int ReplayColumns::knownCount() const
{
    const std::array<int, 5> indices = all();
    return int(std::count_if(indices.begin(), indices.end(), [](int index) { return index >= 0; }));
}

int ReplayColumns::cellCount() const
{
    const std::array<int, 5> indices = all();
    return *std::max_element(indices.begin(), indices.end()) + 1;
}
