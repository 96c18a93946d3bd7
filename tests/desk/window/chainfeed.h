#pragma once

#include <replay/quotestream.h>

#include <QVector>

#include <deque>

/// A feed of quotes of one stored series, round and round over its future and its options at an even rate.
/// The prices stay within three price steps of those that the chain has.
class ChainFeed : public QuoteStream {
public:
    /// The rate is 1 or more quotes a second. The series must be stored.
    ChainFeed(int futureIsinId, int quotesPerSecond, double seconds);

    std::optional<RecordedQuote> read() override;
    const QStringList& instruments() const override { return m_names; }

    int quoteCount() const { return m_count; }
    /// The last price of an instrument's last quote.
    decimal lastPrice(int instrument) const;

private:
    RecordedQuote quote(int number) const;
    decimal shifted(int number, int steps) const;

    const int m_perSecond;
    const int m_count;
    int m_next = 0;
    decimal m_step;
    QStringList m_names;
    /// The price around which an instrument's quotes move.
    QVector<decimal> m_prices;
};
