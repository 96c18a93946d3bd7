#include "chain/chainstore.h"

#include "chain/chaintables.h"
#include "chain/securityrows.h"

#include <database/table.h>

#include <QHash>

#include <algorithm>
#include <tuple>

namespace {

QDate dayOfSession(qint64 session)
{
    return QDate::fromString(QString::number(session), QStringLiteral("yyyyMMdd"));
}

bool isOf(const SecurityRows& rows, const Record& row, const char* type)
{
    return rows.isOnChainBoard(row) && rows.text(row, "sectype") == QLatin1String(type);
}

// Whether readOption() finds one in an option's row; most of a large table's rows are only counted.
bool isReadable(const SecurityRows& rows, const Record& row)
{
    const std::optional<decimal> strike = rows.fixedPoint(row, "strike");
    const QString type = rows.text(row, "option_type");
    return strike && *strike > decimal::zero && (type == QLatin1String("C") || type == QLatin1String("P"));
}

std::optional<StoredSeries> readFuture(const SecurityRows& rows, const Record& row)
{
    if (!isOf(rows, row, "F"))
        return std::nullopt;
    const std::optional<decimal> step = rows.fixedPoint(row, "price_step");
    const qint64 decimals = rows.integer(row, "decimals").value_or(-1);
    StoredSeries series;
    series.futureIsinId = int(rows.integer(row, "isin_id").value_or(0));
    series.baseCode = rows.text(row, "base_code");
    if (series.futureIsinId <= 0 || series.baseCode.isEmpty() || !step || *step <= decimal::zero
        || decimals < 0 || decimals > decimal::maxDecimals)
        return std::nullopt;
    series.expiry = rows.day(row, "expdate");
    series.asOf = dayOfSession(rows.integer(row, "sess_id").value_or(0));
    series.priceStep = *step;
    series.decimals = short(decimals);
    const std::optional<decimal> forward = rows.fixedPoint(row, "cur_kotir_real");
    if (forward && *forward > decimal::zero)
        series.forward = forward->toDouble();
    return series;
}

std::optional<OptionQuote> readOption(const SecurityRows& rows, const Record& row)
{
    if (!isReadable(rows, row))
        return std::nullopt;
    OptionQuote quote;
    quote.type = rows.text(row, "option_type") == QLatin1String("C") ? OptionType::Call : OptionType::Put;
    quote.strike = rows.fixedPoint(row, "strike").value_or(decimal::zero);
    quote.bid = rows.fixedPoint(row, "bid");
    quote.ask = rows.fixedPoint(row, "ask");
    quote.last = rows.fixedPoint(row, "last");
    quote.settlement = rows.fixedPoint(row, "settlement");
    quote.volume = rows.integer(row, "volume");
    quote.openInterest = rows.integer(row, "open_interest");
    quote.volatility = rows.real(row, "volat");
    return quote;
}

void sortByStrike(QVector<OptionQuote>* quotes)
{
    std::stable_sort(quotes->begin(), quotes->end(), [](const OptionQuote& a, const OptionQuote& b) {
        return std::make_tuple(a.strike, char(a.type)) < std::make_tuple(b.strike, char(b.type));
    });
}

// All stored series, in the order of their expiry.
QVector<StoredSeries> allSeries()
{
    Table* const table = ChainTables::find().securities;
    if (!table)
        return {};
    const SecurityRows rows(*table);
    QVector<StoredSeries> result;
    QHash<qint64, int> optionCounts;
    for (const Record& row : table->masterIndex()) {
        if (isOf(rows, row, "O")) {
            if (isReadable(rows, row))
                ++optionCounts[rows.integer(row, "fut_isin_id").value_or(0)];
        } else if (const std::optional<StoredSeries> series = readFuture(rows, row)) {
            result.append(*series);
        }
    }
    for (StoredSeries& series : result)
        series.optionCount = optionCounts.value(series.futureIsinId);
    std::stable_sort(result.begin(), result.end(),
        [](const StoredSeries& a, const StoredSeries& b) { return a.expiry < b.expiry; });
    return result;
}

}

QStringList ChainStore::baseCodes()
{
    QStringList codes;
    const QVector<StoredSeries> all = allSeries();
    for (const StoredSeries& series : all)
        codes.append(series.baseCode);
    codes.sort();
    codes.removeDuplicates();
    return codes;
}

QVector<StoredSeries> ChainStore::series()
{
    QVector<StoredSeries> result = allSeries();
    std::stable_sort(result.begin(), result.end(),
        [](const StoredSeries& a, const StoredSeries& b) { return a.baseCode < b.baseCode; });
    return result;
}

QVector<StoredSeries> ChainStore::series(const QString& baseCode)
{
    QVector<StoredSeries> result = allSeries();
    const auto isOther = [&baseCode](const StoredSeries& series) { return series.baseCode != baseCode; };
    result.erase(std::remove_if(result.begin(), result.end(), isOther), result.end());
    return result;
}

std::optional<StoredSeries> ChainStore::seriesById(int futureIsinId)
{
    const QVector<StoredSeries> all = allSeries();
    for (const StoredSeries& series : all) {
        if (series.futureIsinId == futureIsinId)
            return series;
    }
    return std::nullopt;
}

std::optional<StoredSeries> ChainStore::seriesOf(const Record& row)
{
    Table* const table = row.table();
    return table ? readFuture(SecurityRows(*table), row) : std::nullopt;
}

std::map<int, ChainStore::WholeSeries> ChainStore::wholeSeries(const QVector<int>& futureIsinIds)
{
    std::map<int, WholeSeries> found;
    std::map<qint64, QVector<OptionQuote>> quotes;
    for (const int id : futureIsinIds)
        quotes[id];
    Table* const table = ChainTables::find().securities;
    if (!table)
        return found;
    const SecurityRows rows(*table);
    for (const Record& row : table->masterIndex()) {
        const auto list = quotes.find(rows.integer(row, "fut_isin_id").value_or(0));
        if (list != quotes.end() && isOf(rows, row, "O")) {
            if (const std::optional<OptionQuote> quote = readOption(rows, row))
                list->second.append(*quote);
        } else if (quotes.count(rows.integer(row, "isin_id").value_or(0)) > 0) {
            const std::optional<StoredSeries> stored = readFuture(rows, row);
            if (stored)
                found.insert({stored->futureIsinId, {*stored, {stored->expiry, stored->forward, {}}}});
        }
    }
    for (auto& [id, series] : found) {
        series.options.quotes = std::move(quotes[id]);
        sortByStrike(&series.options.quotes);
        series.stored.optionCount = series.options.quotes.size();
    }
    return found;
}

OptionSeries ChainStore::options(int futureIsinId)
{
    const std::map<int, WholeSeries> found = wholeSeries({futureIsinId});
    return found.empty() ? OptionSeries() : found.begin()->second.options;
}

std::optional<OptionChain> ChainStore::chain(const QString& baseCode)
{
    OptionChain chain;
    chain.baseCode = baseCode;
    const QVector<StoredSeries> stored = series(baseCode);
    for (const StoredSeries& one : stored) {
        if (one.optionCount == 0)
            continue;
        const bool first = chain.series.isEmpty();
        chain.asOf = first ? one.asOf : std::max(chain.asOf, one.asOf);
        chain.priceStep = first ? one.priceStep : std::min(chain.priceStep, one.priceStep);
        chain.decimals = first ? one.decimals : std::max(chain.decimals, one.decimals);
        chain.series.append(options(one.futureIsinId));
    }
    if (chain.series.isEmpty())
        return std::nullopt;
    return chain;
}
