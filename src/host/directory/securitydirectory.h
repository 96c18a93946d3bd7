#pragma once

#include "database/record.h"

#include <memory>

/// Finds securities in the host's "securities" table. Answers follow the table, also when it is dropped and
/// made anew; without a table nothing is found.
class SecurityDirectory {
public:
    /// The directory, made at the first call; never null.
    static SecurityDirectory* i();

    /// The security with this ISIN id on this board; of several the first in the table's order. A null
    /// record if there is none.
    Record recordByIsinId(int isinId, int boardId) const;

    /// The decimals of the security's prices, 0 to 18; -1 if there is no such security or its "decimals" is
    /// null or outside that range.
    int decimalsById(int stockId, int boardId, long long secId) const;

private:
    SecurityDirectory();
    ~SecurityDirectory();

    class Index;
    std::unique_ptr<Index> m_index;
};
