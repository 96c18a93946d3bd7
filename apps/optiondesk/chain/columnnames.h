#pragma once

#include <QString>

#include <optional>

/// What a column of a chain's file may hold.
enum class Column {
    Strike,
    Type,
    Expiry,
    QuoteDate,
    Settlement,
    Bid,
    Ask,
    Last,
    Volume,
    /// Named "vol": a volume or a volatility.
    VolumeOrVolatility,
    OpenInterest,
    Volatility,
    Forward,
    UnderlyingPrice,
    /// Named "underlying" or "future": a price or a code.
    UnderlyingOrCode,
    /// A code of the underlying, or of the option.
    Code,
    /// Named after the side alone: a price.
    SidePrice
};
constexpr int columnCount = int(Column::SidePrice) + 1;

/// Which options of a row a column is about: the row's only one, or the call or the put of its strike.
enum class Side { Row, Call, Put };
constexpr int sideCount = int(Side::Put) + 1;

/// What a column's name says.
struct ColumnName {
    Column column = Column::Strike;
    Side side = Side::Row;
    /// Of several names for the same, the one of the lowest rank is the column's proper name.
    int rank = 0;
    /// Whether the name says that the values are in percent.
    bool percent = false;
};

/// Reads a column's name: odd case, blanks, underscores and dots do not matter, nor does a unit in
/// parentheses
/// ("Settle (USD)"). The side stands before the name or behind it: "call_bid", "C_Bid", "Puts Bid", "bid.p",
/// "Bid (call)". Empty for a name that is not known.
std::optional<ColumnName> recogniseColumn(const QString& header);

/// The first names of a column, for a message: "strike, strike_price, ...".
QString columnExamples(Column column);
