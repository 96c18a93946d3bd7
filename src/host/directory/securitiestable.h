#pragma once

#include "database/tablecolumndef.h"

#include <QString>
#include <QVector>

/// Names and columns of the tables that the directories read.
///
/// "securities" has a row for each instrument:
/// - stock_id, board_id (int), sec_id (64 bits): exchange, board and security, together the row's identity;
/// - isin_id (int): the instrument's id on every board; fut_isin_id: an option's future; base_isin_id: a
///   future's underlying;
/// - base_code: the underlying's code; short_name: the instrument's own;
/// - sectype: 'F' future, 'O' option; option_type: 'C' call, 'P' put; strike;
/// - expdate (moment): the expiry; sess_id: the trading session that the row belongs to, 0 for none;
/// - price_step and decimals of its prices;
/// - cur_kotir_real, cur_kotir, old_kotir: the quote traded now, the one shown now, the one before;
/// - bid, ask, last, settlement, lasttime (moment), volume, open_interest (64 bits);
/// - volat_min, volat_max: bounds of the volatility, as fractions; volat: the stated volatility, a fraction.
///
/// Texts are base_code, short_name, sectype and option_type; prices, the strike among them, are decimals with
/// 5 digits after the point; the volatilities are doubles.
///
/// "boards" has a row for each board: stock_id, board_id, is_anonym (0 or 1), name.
namespace SecuritiesTable {

/// "securities".
extern const QString securitiesName;
/// "boards".
extern const QString boardsName;

/// The columns of "securities".
QVector<TableColumnDef> securitiesColumns();

/// The columns of "boards".
QVector<TableColumnDef> boardsColumns();

}
