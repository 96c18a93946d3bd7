#include "quotes/quotesrows.h"

#include <pricing/delta.h>
#include <window/shownquotes.h>

#include <algorithm>
#include <cmath>

namespace {

std::optional<double> toDouble(const std::optional<decimal>& price)
{
    return price ? std::optional<double>(price->toDouble()) : std::nullopt;
}

std::optional<double> middle(const OptionQuote& quote)
{
    if (!quote.bid || !quote.ask || *quote.bid <= decimal::zero || *quote.ask < *quote.bid)
        return std::nullopt;
    return (quote.bid->toDouble() + quote.ask->toDouble()) / 2.0;
}

void addPrices(const OptionQuote& quote, QuotesRow* row)
{
    const bool isCall = quote.type == OptionType::Call;
    (*row)[isCall ? QuotesColumn::CallBid : QuotesColumn::PutBid] = toDouble(quote.bid);
    (*row)[isCall ? QuotesColumn::CallAsk : QuotesColumn::PutAsk] = toDouble(quote.ask);
    (*row)[isCall ? QuotesColumn::CallMiddle : QuotesColumn::PutMiddle] = middle(quote);
    (*row)[isCall ? QuotesColumn::CallSettlement : QuotesColumn::PutSettlement] = toDouble(quote.settlement);
}

void addVolatilities(
    const QVector<Pricing::VolatilityPoint>& points, const Pricing::Market& market, QVector<QuotesRow>* rows)
{
    auto point = points.cbegin();
    for (QuotesRow& row : *rows) {
        while (point != points.cend() && point->strike < row.strike)
            ++point;
        if (point == points.cend() || point->strike != row.strike)
            continue;
        row[QuotesColumn::Volatility] = point->volatility;
        row[QuotesColumn::Delta] = Pricing::blackDelta(point->type, point->strike, market, point->volatility);
    }
}

}

QVector<QuotesRow> QuotesRows::of(const ShownSeries& series)
{
    const ShownQuotes shown(series);
    QVector<QuotesRow> rows;
    for (const OptionQuote& quote : series.data.options.quotes) {
        const double strike = quote.strike.toDouble();
        if (!shown.contains(quote.type, strike))
            continue;
        if (rows.isEmpty() || rows.last().strike != strike) {
            QuotesRow row;
            row.strike = strike;
            row[QuotesColumn::Strike] = strike;
            rows.append(row);
        }
        addPrices(quote, &rows.last());
    }
    addVolatilities(shown.onePerStrike(), series.market, &rows);
    const int atTheMoney = nearest(rows, series.market.forward);
    if (atTheMoney >= 0)
        rows[atTheMoney].isAtTheMoney = true;
    return rows;
}

int QuotesRows::nearest(const QVector<QuotesRow>& rows, double price)
{
    const auto found
        = std::min_element(rows.begin(), rows.end(), [price](const QuotesRow& a, const QuotesRow& b) {
              return std::abs(a.strike - price) < std::abs(b.strike - price);
          });
    return found == rows.end() ? -1 : int(found - rows.begin());
}
