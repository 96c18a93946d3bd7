#pragma once

#include "plot2d/plot2dexport.h"

#include <QString>

#include <array>

class Table;

/// The columns of the host's "securities" table that a plot relies on, in the order in which a missing one is
/// reported.
///
/// Ids are integers of 32 or 64 bits, quotes decimals, price step and volatilities numbers of any type. Where
/// the plot reads another type it throws Exception("Incorrect type conversion."); of a base code, a type of
/// security or a strike another type finds nothing.
enum class SecurityColumn : int {
    StockId, ///< The exchange.
    BoardId, ///< The board of the exchange.
    SecId, ///< The security; with exchange and board the row's identity.
    ExpDate, ///< The expiry: a moment, or a text of a date.
    BaseCode, ///< The code of the underlying.
    PriceStep, ///< The price step of the future.
    SecType, ///< 'F' for a future, 'O' for an option.
    OptionType, ///< 'C' for a call, 'P' for a put.
    Strike, ///< An option's strike; the column's decimals are those of all strikes.
    SessId, ///< The trading session; 0 for none.
    IsinId, ///< The instrument's id on every board.
    FutIsinId, ///< An option's future.
    BaseIsinId, ///< A future's underlying.
    Bid, ///< The best bid.
    Ask, ///< The best ask.
    CurKotirReal, ///< The quote traded now, taken before CurKotir.
    CurKotir, ///< The quote shown now, taken before OldKotir.
    OldKotir, ///< The quote before.
    VolatMin, ///< The lower bound of the volatility, as a fraction.
    VolatMax, ///< The upper bound of the volatility, as a fraction.
    LastTime ///< The moment of the last trade.
};

/// The positions of these columns in one table.
class PLOT2D_EXPORT SecurityColumns {
public:
    /// How many columns there are.
    static constexpr int count = 21;

    /// No column has a position yet: each is -1.
    SecurityColumns();

    /// Looks all columns up by their names; those that the table lacks are -1, all of them for a null table.
    /// The table is not kept.
    explicit SecurityColumns(const Table* table);

    /// The position of a column, -1 where it has none.
    int operator[](SecurityColumn column) const;

    /// The numbers (of SecurityColumn) of the columns without a position, each followed by one blank; empty
    /// when all were found.
    QString missing() const;

private:
    std::array<int, count> m_positions;
};
