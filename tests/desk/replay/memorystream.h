#pragma once

#include <replay/quotestream.h>

#include <deque>

/// A recording in memory.
struct RecordedQuotes {
    QStringList instruments;
    std::deque<RecordedQuote> quotes;
};

/// Gives the quotes of a recording in memory, all of whose instruments are known from the start.
class MemoryStream : public QuoteStream {
public:
    explicit MemoryStream(const RecordedQuotes& recording)
        : m_recording(recording)
    {
    }

    std::optional<RecordedQuote> read() override
    {
        if (m_recording.quotes.empty())
            return std::nullopt;
        const RecordedQuote quote = m_recording.quotes.front();
        m_recording.quotes.pop_front();
        return quote;
    }

    int quotesLeft() const { return int(m_recording.quotes.size()); }

    const QStringList& instruments() const override { return m_recording.instruments; }

private:
    RecordedQuotes m_recording;
};
