#pragma once

#include "database/record.h"

#include <memory>

/// Finds securities in the host's "securities" table. Answers follow the table, also when it is dropped and
/// made anew; without a table nothing is found.
///
/// Ids are read from columns of 32 or 64 bit integers. A security with a null among the ids asked for is not
/// found, nor is any when the column is missing or of another type.
///
/// The directory learns of changes from the table's signals. Whoever looks securities up while handling such
/// a signal calls i() before connecting to the table: the directory then hears of the change first.
class SecurityDirectory {
public:
    /// The directory, made at the first call; never null. Each call makes it listen to the table of now.
    static SecurityDirectory* i();

    /// The security with this ISIN id on this board; of several the first in the table's order. A null
    /// record if there is none.
    Record recordByIsinId(int isinId, int boardId) const;

    /// The decimals of the security's prices, 0 to 18; -1 if there is no such security or its "decimals" is
    /// null, outside that range or no integer. Of several securities with these ids the first in the
    /// table's order counts.
    int decimalsById(int stockId, int boardId, long long secId) const;

private:
    SecurityDirectory();
    ~SecurityDirectory();

    class Index;
    std::unique_ptr<Index> m_index;
};
