#include "optionstrikes_p.h"

#include "database/table.h"

void OptionStrikes::clear()
{
    m_entries.clear();
    m_ranks.clear();
    m_order.restart();
}

bool OptionStrikes::contains(const Record& record) const
{
    return m_entries.contains(record);
}

const OptionStrikes::Option* OptionStrikes::find(const Record& record) const
{
    const auto entry = m_entries.constFind(record);
    return entry == m_entries.constEnd() ? nullptr : &entry->option;
}

void OptionStrikes::insert(const Record& record, const Option& option, qint64 number)
{
    const Entry entry{option, number};
    m_entries.insert(record, entry);
    put(record, entry);
}

void OptionStrikes::put(const Record& record, const Entry& entry)
{
    m_ranks[entry.option.rank][entry.option.strike].emplace(entry.number, record);
}

void OptionStrikes::remove(const Record& record)
{
    const auto entry = m_entries.find(record);
    if (entry == m_entries.end())
        return;
    const auto rank = m_ranks.find(entry->option.rank);
    const auto strike = rank->second.find(entry->option.strike);
    strike->second.erase(entry->number);
    if (strike->second.empty())
        rank->second.erase(strike);
    if (rank->second.empty())
        m_ranks.erase(rank);
    m_entries.erase(entry);
}

void OptionStrikes::update(const Record& record, const std::optional<Option>& option)
{
    const auto entry = m_entries.constFind(record);
    if (!option) {
        remove(record);
    } else if (entry != m_entries.constEnd()) {
        const qint64 number = entry->number;
        remove(record);
        insert(record, *option, number);
    } else {
        m_order.setInexact();
        insert(record, *option, m_order.next());
    }
}

int OptionStrikes::topRank() const
{
    return m_ranks.empty() ? 0 : m_ranks.rbegin()->first;
}

const OptionStrikes::Strikes& OptionStrikes::strikes(int rank) const
{
    static const Strikes none;
    const auto found = m_ranks.find(rank);
    return found == m_ranks.end() ? none : found->second;
}

Record OptionStrikes::first(int rank, const decimal& strike, const Table& table)
{
    const auto optionsOf = [&]() -> const Options* {
        const Strikes& all = strikes(rank);
        const auto found = all.find(strike);
        return found == all.end() ? nullptr : &found->second;
    };
    const Options* options = optionsOf();
    if (options && options->size() > 1 && !m_order.isExact()) {
        renumber(table);
        options = optionsOf();
    }
    if (!options)
        return Record();
    for (const auto& [number, record] : *options) {
        if (record.isInTable())
            return record;
    }
    return Record();
}

void OptionStrikes::renumber(const Table& table)
{
    QVector<Record> all;
    all.reserve(table.rowCount());
    for (const Record& record : table.masterIndex())
        all.append(record);

    m_order.restart();
    qint64 number = m_order.place(table, all);
    QHash<Record, Entry> before;
    before.swap(m_entries);
    m_ranks.clear();
    for (const Record& record : all) {
        const auto entry = before.constFind(record);
        if (entry != before.constEnd())
            insert(record, entry->option, number);
        ++number;
    }
    // Those that left the table stay until their removal is told: the strikes must not change here.
    for (auto entry = before.cbegin(); entry != before.cend(); ++entry) {
        if (!m_entries.contains(entry.key()))
            insert(entry.key(), entry->option, m_order.next());
    }
}
