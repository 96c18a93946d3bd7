#include "chain/chainrows.h"

#include "chain/chaintables.h"

#include <database/table.h>

#include <algorithm>

namespace {

// A plot takes session 0 for no session.
constexpr int unknownSession = 1;

int sessionOf(const QDate& asOf)
{
    return asOf.isValid() ? asOf.year() * 10000 + asOf.month() * 100 + asOf.day() : unknownSession;
}

int rowCount(const OptionChain& chain)
{
    int count = chain.series.size();
    for (const OptionSeries& series : chain.series)
        count += series.quotes.size();
    return count;
}

}

ChainRows::ChainRows(Table& table, const OptionChain& chain, TableStorage& storage)
    : m_rows(table)
    , m_chain(chain)
    , m_storage(storage)
    , m_count(rowCount(chain))
    , m_ids(m_rows, replaced(), m_storage)
{
    m_made.reserve(m_count);
}

void ChainRows::restart(const RowIds& ids)
{
    m_ids = ids;
    m_made.clear();
    m_futureIsinIds.clear();
    m_quotesMade = 0;
}

bool ChainRows::makeSome(int most)
{
    for (int left = most; left > 0 && m_made.size() < m_count; --left) {
        const int position = m_futureIsinIds.size() - 1;
        if (position < 0 || m_quotesMade == m_chain.series.at(position).quotes.size()) {
            m_made.append(makeFuture(m_chain.series.at(position + 1)));
            continue;
        }
        const OptionSeries& series = m_chain.series.at(position);
        m_made.append(makeOption(series, series.quotes.at(m_quotesMade++)));
    }
    return m_made.size() == m_count;
}

QVector<Record> ChainRows::finish()
{
    const RowIds now(m_rows, replaced(), m_storage);
    if (!now.areOfTheSameTableAs(m_ids))
        restart(now);
    makeSome(m_count);
    return m_made;
}

QVector<Record> ChainRows::replaced() const
{
    const auto isInChain = [this](const QDate& expiry) {
        return std::any_of(m_chain.series.begin(), m_chain.series.end(),
            [&expiry](const OptionSeries& series) { return series.expiry == expiry; });
    };
    QVector<Record> result;
    for (const Record& row : m_rows.table().masterIndex()) {
        if (m_rows.isOnChainBoard(row) && m_rows.text(row, "base_code") == m_chain.baseCode
            && isInChain(m_rows.day(row, "expdate")))
            result.append(row);
    }
    return result;
}

Record ChainRows::makeRow(const OptionSeries& series, const QString& nameEnd)
{
    Record row = m_rows.table().createRow();
    QString name = m_chain.baseCode;
    if (series.expiry.isValid())
        name += QLatin1Char(' ') + series.expiry.toString(Qt::ISODate);
    const RowIds::Ids ids = m_ids.idsFor(name + nameEnd);
    m_rows.setInteger(row, "stock_id", chainStockId);
    m_rows.setInteger(row, "board_id", chainBoardId);
    m_rows.setInteger(row, "isin_id", ids.isinId);
    m_rows.setInteger(row, "sec_id", ids.secId);
    m_rows.setText(row, "base_code", m_chain.baseCode);
    m_rows.setText(row, "short_name", name + nameEnd);
    m_rows.setDay(row, "expdate", series.expiry);
    m_rows.setInteger(row, "sess_id", sessionOf(m_chain.asOf));
    m_rows.setFixedPoint(row, "price_step", m_chain.priceStep);
    m_rows.setInteger(row, "decimals", m_chain.decimals);
    return row;
}

Record ChainRows::makeFuture(const OptionSeries& series)
{
    Record row = makeRow(series, QString());
    m_rows.setText(row, "sectype", QStringLiteral("F"));
    if (series.forward)
        m_rows.setFixedPoint(row, "cur_kotir_real", exactDecimal(*series.forward));
    m_futureIsinIds.append(int(m_rows.integer(row, "isin_id").value_or(0)));
    m_quotesMade = 0;
    return row;
}

Record ChainRows::makeOption(const OptionSeries& series, const OptionQuote& quote)
{
    const QString type(QLatin1Char(char(quote.type)));
    Record row = makeRow(series, QStringLiteral(" %1 %2").arg(type, quote.strike.toString()));
    m_rows.setText(row, "sectype", QStringLiteral("O"));
    m_rows.setText(row, "option_type", type);
    m_rows.setInteger(row, "fut_isin_id", m_futureIsinIds.last());
    m_rows.setFixedPoint(row, "strike", quote.strike);
    m_rows.setFixedPoint(row, "bid", quote.bid);
    m_rows.setFixedPoint(row, "ask", quote.ask);
    m_rows.setFixedPoint(row, "last", quote.last);
    m_rows.setFixedPoint(row, "settlement", quote.settlement);
    m_rows.setInteger(row, "volume", quote.volume);
    m_rows.setInteger(row, "open_interest", quote.openInterest);
    m_rows.setReal(row, "volat", quote.volatility);
    return row;
}
