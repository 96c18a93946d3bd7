#pragma once

#include "replay/quotestream.h"

#include <memory>

class QIODevice;

/// A file of recorded quotes: CSV with a header that names a time, an instrument and one or more of bid, ask
/// and last, in any order and with any other columns beside them.
///
/// The cells are parted by commas, semicolons, tabs or bars. Times are in one form throughout (see
/// parseQuoteTime()) and never go back; those of TimeForm::Elapsed count from the start of the replay,
/// others from the first quote. An empty price, or one of the usual words for none, leaves the price as it
/// was. Decimals stand behind a comma where the first 1000 rows say so.
///
/// The file is read row by row as its quotes are asked for, so that it may have any length. The first 1000
/// rows are read at once.
class ReplayFile : public QuoteStream {
public:
    /// The most instruments of a file: their names are kept in memory.
    static constexpr int maxInstruments = 200000;

    /// Throws ChainError for a file that cannot be opened, has another header or no quotes, and for what is
    /// wrong in the first rows.
    explicit ReplayFile(const QString& fileName);
    /// The same from an open device, which outlives this object; the name is for the errors.
    ReplayFile(QIODevice& device, const QString& name, int mostInstruments = maxInstruments);
    ~ReplayFile() override;

    /// Throws ChainError for a row that is none of the above and for too many instruments.
    std::optional<RecordedQuote> read() override;
    const QStringList& instruments() const override;

private:
    class Rows;

    std::unique_ptr<QIODevice> m_file;
    std::unique_ptr<Rows> m_rows;
};
