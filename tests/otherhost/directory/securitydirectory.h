#pragma once

#include "database/record.h"

/// Looks securities up in the table "securities" of now.
class SecurityDirectory {
public:
    static SecurityDirectory* i();

    /// The first security of this ISIN id on this board, or no row.
    Record recordByIsinId(int isinId, int boardId) const;
    /// The decimals of a security's prices, 0 to 18; -1 where they are not known.
    int decimalsById(int stockId, int boardId, long long secId) const;
};
