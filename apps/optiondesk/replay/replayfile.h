#pragma once

#include "replay/replaycolumns.h"

#include <database/decimal.h>

#include <QHash>
#include <QStringList>

#include <deque>

class QIODevice;

/// A change of an instrument's prices.
struct RecordedQuote {
    /// Milliseconds since the start of the recording, 0 or more.
    qint64 time = 0;
    /// A position in RecordedQuotes::instruments.
    int instrument = 0;
    /// Of meaning where the field's bit is set in given: prices of 0 or more.
    std::array<decimal, quoteFieldCount> prices;
    unsigned given = 0;

    bool has(QuoteField field) const { return (given >> unsigned(field) & 1U) != 0; }
    const decimal& price(QuoteField field) const { return prices[std::size_t(field)]; }
    void setPrice(QuoteField field, const decimal& price);
};

/// A recording: quotes in the order of their time.
struct RecordedQuotes {
    QStringList instruments;
    std::deque<RecordedQuote> quotes;
};

/// The most quotes of a file, which are kept in memory: 64 bytes each.
constexpr int maxRecordedQuotes = 5000000;

/// Reads a file of recorded quotes: CSV with a header that names a time, an instrument and one or more of
/// bid, ask and last, in any order and with any other columns beside them.
///
/// The cells are parted by commas, semicolons, tabs or bars. Times are in one form throughout (see
/// parseQuoteTime()) and never go back; those of TimeForm::Elapsed count from the start of the replay,
/// others from the first quote. An empty price, or one of the usual words for none, leaves the price as it
/// was. Decimals stand behind a comma where the first 1000 rows say so. Throws ChainError for what is none of
/// that and for more quotes than the given number.
RecordedQuotes readRecordedQuotes(const QString& fileName);
RecordedQuotes readRecordedQuotes(QIODevice& device, const QString& name, int maxQuotes = maxRecordedQuotes);
