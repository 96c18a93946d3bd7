#pragma once

#include <window/shownseries.h>

#include <QVector>

#include <array>
#include <optional>

/// A column of the table of quotes. Prices are in the currency of the strike.
enum class QuotesColumn {
    Strike,
    /// As a fraction: that of the point on the plot.
    Volatility,
    /// Of the option whose volatility it is, by the forward.
    Delta,
    CallBid,
    CallAsk,
    /// Of bid and ask where both are positive and not crossed.
    CallMiddle,
    CallSettlement,
    PutBid,
    PutAsk,
    PutMiddle,
    PutSettlement
};

constexpr int quotesColumnCount = int(QuotesColumn::PutSettlement) + 1;

/// The options of a strike.
struct QuotesRow {
    double strike = 0.0;
    /// By column; empty where there is nothing.
    std::array<std::optional<double>, quotesColumnCount> values;
    /// Whether no other row's strike is nearer to the forward.
    bool isAtTheMoney = false;

    std::optional<double>& operator[](QuotesColumn column) { return values.at(std::size_t(column)); }
    const std::optional<double>& operator[](QuotesColumn column) const
    {
        return values.at(std::size_t(column));
    }

    friend bool operator==(const QuotesRow& a, const QuotesRow& b)
    {
        return a.values == b.values && a.isAtTheMoney == b.isAtTheMoney;
    }
    friend bool operator!=(const QuotesRow& a, const QuotesRow& b) { return !(a == b); }
};

namespace QuotesRows {

/// The strikes of which the series' filter lets an option through, ascending; of the other option of such a
/// strike nothing is said.
QVector<QuotesRow> of(const ShownSeries& series);

/// The position of the row whose strike is nearest to a price, the lower one of equally near ones; -1 without
/// rows.
int nearest(const QVector<QuotesRow>& rows, double price);

}
