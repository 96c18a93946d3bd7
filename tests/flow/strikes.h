#pragma once

#include "support/testhost.h"

/// A row of "securities" that is an option of the base code "Amber" on the board (1, 2).
inline TestHost::Row option(const char* strike, const TestHost::Row& changes = TestHost::Row())
{
    static int lastId = 1000;
    ++lastId;
    TestHost::Row row{{"stock_id", 1}, {"board_id", 2}, {"sec_id", lastId}, {"isin_id", lastId},
        {"base_code", "Amber"}, {"sectype", "O"}, {"strike", strike}, {"decimals", 2}, {"sess_id", 7}};
    for (auto it = changes.cbegin(); it != changes.cend(); ++it)
        row.insert(it.key(), it.value());
    return row;
}

inline Record addOption(const char* strike, const TestHost::Row& changes = TestHost::Row())
{
    return TestHost::addSecurity(option(strike, changes));
}
