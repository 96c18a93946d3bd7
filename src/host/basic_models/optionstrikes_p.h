#pragma once

#include "database/record.h"
#include "directory/roworder.h"

#include <QHash>
#include <QVector>

#include <map>
#include <optional>

class Table;

/// Options of a table by rank and strike, those of a strike in the table's order.
class OptionStrikes {
public:
    struct Option {
        decimal strike;
        int rank = 0;

        friend bool operator==(const Option& a, const Option& b)
        {
            return a.strike == b.strike && a.rank == b.rank;
        }
    };
    /// A strike's options by their number in the table's order.
    using Options = std::map<qint64, Record>;
    using Strikes = std::map<decimal, Options>;

    void clear();

    bool contains(const Record& record) const;
    /// The option that a record is in as; null if it is not in.
    const Option* find(const Record& record) const;

    /// Numbers rows of which some will be inserted; see RowOrder.
    RowOrder& order() { return m_order; }
    void insert(const Record& record, const Option& option, qint64 number);
    /// Passes a record over that is not in.
    void remove(const Record& record);

    /// Makes a record the option given, which none takes out; a row that was not in may stand anywhere.
    void update(const Record& record, const std::optional<Option>& option);

    /// The highest rank of all options, 0 without options.
    int topRank() const;
    /// The strikes of a rank, ascending.
    const Strikes& strikes(int rank) const;

    /// The first option, in the table's order, of a strike that stands in the table; null if there is none.
    Record first(int rank, const decimal& strike, const Table& table);

private:
    struct Entry {
        Option option;
        qint64 number = 0;
    };

    void put(const Record& record, const Entry& entry);
    void renumber(const Table& table);

    QHash<Record, Entry> m_entries;
    std::map<int, Strikes> m_ranks;
    RowOrder m_order;
};
