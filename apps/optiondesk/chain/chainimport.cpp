#include "chain/chainimport.h"

#include "chain/chaintables.h"
#include "chain/rowids.h"
#include "chain/securityrows.h"

#include <database/exception.h>
#include <database/table.h>
#include <database/tablestorage.h>

#include <algorithm>
#include <cmath>

namespace {

// A plot takes session 0 for no session.
constexpr int unknownSession = 1;
// Quotes are exact decimals of 15 digits up to here.
constexpr double maxForward = 1e15;

int sessionOf(const QDate& asOf)
{
    return asOf.isValid() ? asOf.year() * 10000 + asOf.month() * 100 + asOf.day() : unknownSession;
}

void checkForward(const std::optional<double>& forward)
{
    if (forward && !(*forward > 0.0 && *forward < maxForward))
        throw Exception(QStringLiteral("A forward of %1 is not positive or too large.").arg(*forward));
}

void checkChain(const OptionChain& chain)
{
    if (chain.baseCode.isEmpty())
        throw Exception(QStringLiteral("The chain has no base code."));
    if (chain.series.isEmpty())
        throw Exception(QStringLiteral("The chain of %1 has no series.").arg(chain.baseCode));
    if (chain.priceStep <= decimal::zero || chain.decimals < 0 || chain.decimals > decimal::maxDecimals)
        throw Exception(QStringLiteral("The chain of %1 has no valid price step.").arg(chain.baseCode));
    for (const OptionSeries& series : chain.series) {
        checkForward(series.forward);
        if (series.quotes.isEmpty())
            throw Exception(QStringLiteral("A series of %1 has no options.").arg(chain.baseCode));
    }
}

/// Makes the rows of a chain and hands out their ids.
class ChainRows {
public:
    ChainRows(Table& table, const OptionChain& chain, TableStorage& storage);

    /// The rows of the stored series that the chain's take the place of.
    QVector<Record> replaced() const;
    QVector<Record> made();

private:
    Record makeRow(const OptionSeries& series, const QString& nameEnd);
    Record makeFuture(const OptionSeries& series, int* isinId);
    Record makeOption(const OptionSeries& series, const OptionQuote& quote, int futureIsinId);

    SecurityRows m_rows;
    const OptionChain& m_chain;
    RowIds m_ids;
};

ChainRows::ChainRows(Table& table, const OptionChain& chain, TableStorage& storage)
    : m_rows(table)
    , m_chain(chain)
    , m_ids(m_rows, storage)
{
    m_ids.reuse(replaced());
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

Record ChainRows::makeFuture(const OptionSeries& series, int* isinId)
{
    Record row = makeRow(series, QString());
    *isinId = int(m_rows.integer(row, "isin_id").value_or(0));
    m_rows.setText(row, "sectype", QStringLiteral("F"));
    if (series.forward)
        m_rows.setFixedPoint(row, "cur_kotir_real", exactDecimal(*series.forward));
    return row;
}

Record ChainRows::makeOption(const OptionSeries& series, const OptionQuote& quote, int futureIsinId)
{
    const QString type(QLatin1Char(char(quote.type)));
    Record row = makeRow(series, QStringLiteral(" %1 %2").arg(type, quote.strike.toString()));
    m_rows.setText(row, "sectype", QStringLiteral("O"));
    m_rows.setText(row, "option_type", type);
    m_rows.setInteger(row, "fut_isin_id", futureIsinId);
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

QVector<Record> ChainRows::made()
{
    QVector<Record> result;
    for (const OptionSeries& series : m_chain.series) {
        int futureIsinId = 0;
        result.append(makeFuture(series, &futureIsinId));
        for (const OptionQuote& quote : series.quotes)
            result.append(makeOption(series, quote, futureIsinId));
    }
    return result;
}

// Sees to it that the chains' board is there and anonymous: a plot passes over futures of other boards.
void ensureBoard(Table& boards)
{
    SecurityRows rows(boards);
    const int anonymous = rows.column("is_anonym");
    QVector<Record> known;
    for (const Record& row : boards.masterIndex()) {
        if (!rows.isOnChainBoard(row))
            continue;
        if (rows.integer(row, "is_anonym") == qint64(1))
            return;
        known.append(row);
    }
    boards.changeRows(
        known, [anonymous](const Record&, const Table::FieldAccess& field) { field(anonymous).setInt32(1); });
    if (!known.isEmpty())
        return;
    const Record row = boards.createRow();
    rows.setInteger(row, "stock_id", chainStockId);
    rows.setInteger(row, "board_id", chainBoardId);
    rows.setInteger(row, "is_anonym", 1);
    rows.setText(row, "name", QStringLiteral("Option chains"));
    boards.appendRows({row});
}

}

ChainImport::ChainImport(TableStorage& storage)
    : m_storage(storage)
{
}

void ChainImport::commitChange(const std::function<void()>& change)
{
    try {
        change();
        m_storage.commit();
    } catch (...) {
        m_storage.rollback();
        throw;
    }
}

void ChainImport::import(const OptionChain& chain)
{
    checkChain(chain);
    const ChainTables tables = ChainTables::make();
    commitChange([&] {
        ensureBoard(*tables.boards);
        ChainRows rows(*tables.securities, chain, m_storage);
        const QVector<Record> made = rows.made();
        tables.securities->removeRows(rows.replaced());
        tables.securities->appendRows(made);
    });
}

bool ChainImport::storeForward(int futureIsinId, std::optional<double> forward)
{
    checkForward(forward);
    const ChainTables tables = ChainTables::make();
    const SecurityRows rows(*tables.securities);
    QVector<Record> futures;
    for (const Record& row : tables.securities->masterIndex()) {
        if (rows.isOnChainBoard(row) && rows.text(row, "sectype") == QLatin1String("F")
            && rows.integer(row, "isin_id") == qint64(futureIsinId))
            futures.append(row);
    }
    if (futures.isEmpty())
        return false;
    const int column = rows.column("cur_kotir_real");
    commitChange([&] {
        tables.securities->changeRows(futures, [&](const Record&, const Table::FieldAccess& field) {
            if (forward)
                field(column).setDecimal(exactDecimal(*forward));
            else
                field(column).setNull();
        });
    });
    return true;
}
