#pragma once

#include "plot2d/securitycolumns.h"

#include <QLatin1String>

#include <array>

/// The names of the columns in the host's table "securities", which stand here and nowhere else in the
/// library.
namespace ColumnNames {

/// In the order of SecurityColumn.
constexpr std::array<const char*, SecurityColumns::count> all{"stock_id", "board_id", "sec_id", "expdate",
    "base_code", "price_step", "sectype", "option_type", "strike", "sess_id", "isin_id", "fut_isin_id",
    "base_isin_id", "bid", "ask", "cur_kotir_real", "cur_kotir", "old_kotir", "volat_min", "volat_max",
    "lasttime"};

inline QLatin1String of(SecurityColumn column)
{
    return QLatin1String(all[static_cast<std::size_t>(column)]);
}

}
