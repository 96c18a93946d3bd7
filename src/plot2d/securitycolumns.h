#pragma once

#include "plot2d/plot2dexport.h"

#include <QString>

#include <array>

class Table;

/// The columns of the host's "securities" table that a plot relies on, in the order in which a missing one is
/// reported.
enum class SecurityColumn : int {
    StockId,
    BoardId,
    SecId,
    ExpDate,
    BaseCode,
    PriceStep,
    SecType,
    OptionType,
    Strike,
    SessId,
    IsinId,
    FutIsinId,
    BaseIsinId,
    Bid,
    Ask,
    CurKotirReal,
    CurKotir,
    OldKotir,
    VolatMin,
    VolatMax,
    LastTime
};

/// The positions of these columns in one table.
class PLOT2D_EXPORT SecurityColumns {
public:
    static constexpr int count = 21;

    /// No column has a position yet: each is -1.
    SecurityColumns();

    /// Looks all columns up; those that the table lacks are -1, all of them for a null table.
    explicit SecurityColumns(const Table* table);

    int operator[](SecurityColumn column) const;

    /// The numbers (of SecurityColumn) of the columns without a position, each followed by one blank; empty
    /// when all were found.
    QString missing() const;

private:
    std::array<int, count> m_positions;
};
