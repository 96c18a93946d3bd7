#pragma once

#include "replay/replaycolumns.h"

#include <database/decimal.h>

#include <QStringList>

#include <optional>

/// A change of an instrument's prices.
struct RecordedQuote {
    /// Milliseconds since the start of the recording, 0 or more.
    qint64 time = 0;
    /// A position in QuoteStream::instruments().
    int instrument = 0;
    /// Of meaning where the field's bit is set in given: prices of 0 or more.
    std::array<decimal, quoteFieldCount> prices;
    unsigned given = 0;

    bool has(QuoteField field) const { return (given >> unsigned(field) & 1U) != 0; }
    const decimal& price(QuoteField field) const { return prices[std::size_t(field)]; }
    void setPrice(QuoteField field, const decimal& price)
    {
        prices[std::size_t(field)] = price;
        given |= 1U << unsigned(field);
    }
};

/// A recording: quotes in the order of their time, one after the other.
class QuoteStream {
public:
    QuoteStream() = default;
    QuoteStream(const QuoteStream&) = delete;
    QuoteStream& operator=(const QuoteStream&) = delete;
    virtual ~QuoteStream() = default;

    /// The next quote, none at the end. Throws Exception where the recording goes wrong: then it has ended.
    virtual std::optional<RecordedQuote> read() = 0;

    /// The instruments of the quotes so far, in the order in which they came; it grows.
    virtual const QStringList& instruments() const = 0;
};
