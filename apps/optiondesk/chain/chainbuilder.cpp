#include "chain/chainbuilder.h"

#include "chain/chainerror.h"
#include "chain/chaintexts.h"
#include "chain/pricestep.h"

#include <QMap>

#include <algorithm>
#include <tuple>

namespace {

constexpr double percentMedian = 2.0;

bool sameQuote(const OptionQuote& a, const OptionQuote& b)
{
    const auto values = [](const OptionQuote& quote) {
        return std::tie(quote.bid, quote.ask, quote.last, quote.settlement, quote.volume, quote.openInterest,
            quote.volatility);
    };
    return values(a) == values(b);
}

// The upper median; the values must not be empty.
double median(QVector<double> values)
{
    const auto middle = values.begin() + values.size() / 2;
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void addPrecision(OptionChain* chain)
{
    QVector<decimal> values;
    for (const OptionSeries& series : qAsConst(chain->series)) {
        for (const OptionQuote& quote : series.quotes) {
            values.append(quote.strike);
            for (const std::optional<decimal>& price : {quote.bid, quote.ask, quote.last, quote.settlement}) {
                if (price)
                    values.append(*price);
            }
        }
    }
    chain->priceStep = commonStep(values);
    chain->decimals = neededDecimals(chain->priceStep);
}

}

ChainBuilder::ChainBuilder(const QString& fileName)
    : m_fileName(fileName)
{
}

void ChainBuilder::add(const ReadOption& option)
{
    if (m_options.size() >= maxOptions)
        throw ChainError(m_fileName, option.line, ChainTexts::tr("more than %1 options").arg(maxOptions));
    m_options.append(option);
}

bool ChainBuilder::addQuoteDate(const QString& cell, int line)
{
    const std::optional<int> number = m_quoteDates.add(cell);
    if (number && *number == m_quoteDateLines.size())
        m_quoteDateLines.append(line);
    return number.has_value();
}

QDate ChainBuilder::expiryOf(const ReadOption& option) const
{
    return option.expiry < 0 ? QDate() : m_expiries.date(option.expiry);
}

QDate ChainBuilder::singleQuoteDate() const
{
    for (int number = 1; number < m_quoteDates.size(); ++number) {
        const QDate first = m_quoteDates.date(0);
        const QDate other = m_quoteDates.date(number);
        if (other != first)
            throw ChainError(m_fileName, m_quoteDateLines.at(number),
                ChainTexts::tr("prices of %1 after prices of %2: a chain is of one day")
                    .arg(other.toString(Qt::ISODate), first.toString(Qt::ISODate)));
    }
    return m_quoteDates.size() > 0 ? m_quoteDates.date(0) : QDate();
}

void ChainBuilder::scaleVolatilities()
{
    QVector<double> values;
    for (const ReadOption& option : qAsConst(m_options)) {
        if (option.quote.volatility)
            values.append(*option.quote.volatility);
    }
    if (values.isEmpty() || (!m_percent && median(values) <= percentMedian))
        return;
    for (ReadOption& option : m_options) {
        if (option.quote.volatility)
            option.quote.volatility = *option.quote.volatility / 100.0;
    }
}

void ChainBuilder::sortAndMerge()
{
    const auto key = [this](const ReadOption& option) {
        return std::make_tuple(expiryOf(option), option.quote.strike, char(option.quote.type));
    };
    std::stable_sort(m_options.begin(), m_options.end(),
        [&key](const ReadOption& a, const ReadOption& b) { return key(a) < key(b); });
    const auto isRepeated = [&](const ReadOption& first, const ReadOption& second) {
        if (key(first) != key(second))
            return false;
        if (!sameQuote(first.quote, second.quote))
            throw ChainError(m_fileName, second.line,
                ChainTexts::tr("the %1 of strike %2 has other values here than in line %3")
                    .arg(second.quote.type == OptionType::Call ? ChainTexts::tr("call")
                                                               : ChainTexts::tr("put"),
                        second.quote.strike.toString(), QString::number(first.line)));
        return true;
    };
    m_options.erase(std::unique(m_options.begin(), m_options.end(), isRepeated), m_options.end());
}

void ChainBuilder::addForwards(OptionChain* chain) const
{
    QMap<QDate, QVector<double>> forwards;
    QMap<QDate, QVector<double>> underlyings;
    for (const ReadOption& option : m_options) {
        if (option.forward)
            forwards[expiryOf(option)].append(*option.forward);
        if (option.underlying)
            underlyings[expiryOf(option)].append(*option.underlying);
    }
    QVector<double> spots;
    for (const QVector<double>& values : qAsConst(underlyings))
        spots.append(median(values));
    const bool isSpot = spots.size() > 1 && spots.count(spots.first()) == spots.size();
    for (OptionSeries& series : chain->series) {
        if (forwards.contains(series.expiry))
            series.forward = median(forwards.value(series.expiry));
        else if (underlyings.contains(series.expiry) && !isSpot)
            series.forward = median(underlyings.value(series.expiry));
    }
}

OptionChain ChainBuilder::finish()
{
    if (m_options.isEmpty())
        throw ChainError(m_fileName, 0, ChainTexts::tr("no options below the header"));
    OptionChain chain;
    chain.asOf = singleQuoteDate();
    scaleVolatilities();
    sortAndMerge();
    for (const ReadOption& option : qAsConst(m_options)) {
        const QDate expiry = expiryOf(option);
        if (chain.series.isEmpty() || chain.series.last().expiry != expiry)
            chain.series.append(OptionSeries{expiry, std::nullopt, {}});
        chain.series.last().quotes.append(option.quote);
    }
    addForwards(&chain);
    addPrecision(&chain);
    return chain;
}
