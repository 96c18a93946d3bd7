#pragma once

#include "memorystream.h"
#include "replaytable.h"

#include <tuple>
#include <vector>

/// A recording of last prices: time, instrument, price.
inline RecordedQuotes recording(const std::vector<std::tuple<qint64, QString, int>>& quotes)
{
    RecordedQuotes result;
    for (const auto& [time, name, last] : quotes) {
        if (!result.instruments.contains(name))
            result.instruments.append(name);
        RecordedQuote quote;
        quote.time = time;
        quote.instrument = result.instruments.indexOf(name);
        quote.setPrice(QuoteField::Last, decimal::fromUnits(last, 0));
        result.quotes.push_back(quote);
    }
    return result;
}

/// Quotes at a rate per second, the numbers from 0 as prices, round and round over all instruments.
inline RecordedQuotes numberedQuotes(int count, int perSecond)
{
    std::vector<std::tuple<qint64, QString, int>> quotes;
    for (int i = 0; i < count; ++i) {
        const int row = i % ReplayTable::instrumentCount;
        quotes.emplace_back(
            i * 1000LL / perSecond, row == 0 ? QStringLiteral("FUT") : QStringLiteral("O%1").arg(row), i);
    }
    return recording(quotes);
}
