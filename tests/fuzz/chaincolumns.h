#pragma once

#include "tableinput.h"

/// Names of a chain's columns, one or more for each meaning.
inline constexpr NamedColumn chainColumns[] = {{"strike", CellKind::Number},
    {"Strike Price", CellKind::Number}, {"option type", CellKind::Type}, {"type", CellKind::Type},
    {"cp", CellKind::Type}, {"expiry", CellKind::Date}, {"expiration", CellKind::Date},
    {"month", CellKind::Date}, {"quote date", CellKind::Date}, {"date", CellKind::Date},
    {"settle", CellKind::Number}, {"price", CellKind::Number}, {"bid", CellKind::Number},
    {"ask", CellKind::Number}, {"last", CellKind::Number}, {"LTP", CellKind::Number},
    {"volume", CellKind::Count}, {"vol", CellKind::Number}, {"open interest", CellKind::Count},
    {"OI", CellKind::Count}, {"iv", CellKind::Number}, {"implied volatility (%)", CellKind::Number},
    {"forward", CellKind::Number}, {"underlying price", CellKind::Number}, {"underlying", CellKind::Code},
    {"futures", CellKind::Number}, {"symbol", CellKind::Code}, {"contractSymbol", CellKind::Code},
    {"call bid", CellKind::Number}, {"call_ask", CellKind::Number}, {"put bid", CellKind::Number},
    {"put_ask", CellKind::Number}, {"Call Last", CellKind::Number}, {"P Last", CellKind::Number},
    {"call iv", CellKind::Number}, {"put iv", CellKind::Number}, {"Calls OI", CellKind::Count},
    {"puts volume", CellKind::Count}, {"remark", CellKind::Any}, {"", CellKind::Any}};
