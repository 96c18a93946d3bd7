#include "chainfeed.h"

#include <chain/chainstore.h>
#include <pricing/parityforward.h>

#include <algorithm>

ChainFeed::ChainFeed(int futureIsinId, int quotesPerSecond, double seconds)
    : m_perSecond(quotesPerSecond)
    , m_count(int(quotesPerSecond * seconds))
{
    const std::optional<StoredSeries> series = ChainStore::seriesById(futureIsinId);
    if (!series)
        qFatal("no series %d", futureIsinId);
    m_step = series->priceStep;
    const OptionSeries options = ChainStore::options(futureIsinId);
    const auto add = [this, &series](const QString& name, double price) {
        m_names.append(name);
        m_prices.append(decimal::fromDouble(price, series->decimals));
    };
    add(QStringLiteral("FUT"),
        options.forward.value_or(
            Pricing::parityForward(options).value_or(options.quotes.first().strike.toDouble())));
    QString start = series->baseCode;
    if (series->expiry.isValid())
        start += QLatin1Char(' ') + series->expiry.toString(Qt::ISODate);
    for (const OptionQuote& option : options.quotes)
        add(QStringLiteral("%1 %2 %3")
                .arg(start)
                .arg(QLatin1Char(char(option.type)))
                .arg(option.strike.toString()),
            option.price().value_or(0.0));
}

// Steps from -1 to 1 that differ from one round to the next.
decimal ChainFeed::shifted(int number, int steps) const
{
    const int instrument = number % m_names.size();
    const int round = number / m_names.size();
    decimal price = m_prices.at(instrument);
    const int all = steps + (round + instrument) % 3 - 1;
    for (int i = 0; i < std::abs(all); ++i)
        price = all > 0 ? price + m_step : price - m_step;
    return std::max(price, decimal::zero);
}

RecordedQuote ChainFeed::quote(int number) const
{
    RecordedQuote result;
    result.time = qint64(number) * 1000 / m_perSecond;
    result.instrument = number % m_names.size();
    result.setPrice(QuoteField::Bid, shifted(number, -2));
    result.setPrice(QuoteField::Ask, shifted(number, 2));
    result.setPrice(QuoteField::Last, shifted(number, 0));
    return result;
}

std::optional<RecordedQuote> ChainFeed::read()
{
    return m_next < m_count ? std::optional<RecordedQuote>(quote(m_next++)) : std::nullopt;
}

decimal ChainFeed::lastPrice(int instrument) const
{
    const int lastRound = (m_count - 1 - instrument) / m_names.size();
    return shifted(lastRound * m_names.size() + instrument, 0);
}
