#include "replay/replayfile.h"

#include "replay/replaytexts.h"
#include "replay/replaytime.h"

#include <chain/chainerror.h>
#include <chain/csvreader.h>
#include <chain/numberparser.h>
#include <chain/textdecoder.h>

#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <deque>

namespace {

constexpr int maxCellInMessage = 40;
constexpr int maxCellsInMessage = 20;
constexpr int maxHeaderCells = 1000;
// So many rows decide on the decimal mark.
constexpr int sampleRows = 1000;
constexpr QuoteField quoteFields[] = {QuoteField::Bid, QuoteField::Ask, QuoteField::Last};

QString shown(const QString& cell)
{
    return QLatin1Char('"') + cell.left(maxCellInMessage) + QLatin1Char('"');
}

struct Header {
    QChar delimiter;
    QStringList names;
    ReplayColumns columns;
};

Header bestReading(const QString& text)
{
    Header best;
    for (const char delimiter : {',', ';', '\t', '|'}) {
        Header header;
        header.delimiter = QLatin1Char(delimiter);
        splitCsv(text, header.delimiter, &header.names);
        if (header.names.size() <= maxHeaderCells)
            header.columns = ReplayColumns(header.names);
        if (best.names.isEmpty() || header.columns.knownCount() > best.columns.knownCount())
            best = header;
    }
    return best;
}

std::unique_ptr<QIODevice> opened(const QString& fileName)
{
    const QFileInfo info(fileName);
    if (!info.exists())
        throw ChainError(fileName, 0, ReplayTexts::tr("there is no such file"));
    if (!info.isFile())
        throw ChainError(fileName, 0, ReplayTexts::tr("is not an ordinary file"));
    auto file = std::make_unique<QFile>(fileName);
    if (!file->open(QIODevice::ReadOnly))
        throw ChainError(fileName, 0, ReplayTexts::tr("cannot be opened: %1").arg(file->errorString()));
    return file;
}

}

/// Reads one device.
class ReplayFile::Rows {
public:
    Rows(QIODevice& device, const QString& name, int mostInstruments);

    std::optional<RecordedQuote> read();
    const QStringList& instruments() const { return m_instruments; }

private:
    void findHeader();
    void findMark(const QVector<CsvRow>& rows);
    void readFirstRows();
    void checkCellCount(const CsvRow& row) const;
    RecordedQuote parse(const CsvRow& row);
    qint64 timeOf(const CsvRow& row);
    int instrumentOf(const CsvRow& row);
    void takePrice(const CsvRow& row, QuoteField field, RecordedQuote* quote) const;
    [[noreturn]] void fail(const CsvRow& row, int column, const QString& what) const;

    TextDecoder m_text;
    const int m_mostInstruments;
    Header m_header;
    std::optional<CsvReader> m_reader;
    DecimalMark m_mark = DecimalMark::Point;
    std::optional<TimeForm> m_form;
    qint64 m_zero = 0;
    qint64 m_lastTime = 0;
    QHash<QString, int> m_positions;
    QStringList m_instruments;
    /// Those read ahead.
    std::deque<RecordedQuote> m_first;
};

ReplayFile::Rows::Rows(QIODevice& device, const QString& name, int mostInstruments)
    : m_text(device, name)
    , m_mostInstruments(mostInstruments)
{
    findHeader();
    m_reader.emplace(m_text, m_header.delimiter);
    readFirstRows();
}

// The first line that is neither empty nor a comment, or the first comment that names the columns.
void ReplayFile::Rows::findHeader()
{
    QString line;
    while (m_text.readLine(&line)) {
        line = line.trimmed();
        const bool comment = line.startsWith(QLatin1Char('#'));
        m_header = bestReading(comment ? line.mid(1) : line);
        if (line.isEmpty() || (comment && !m_header.columns.isComplete()))
            continue;
        if (!m_header.columns.repeatedName().isEmpty())
            throw ChainError(m_text.name(), m_text.lineNumber(),
                ReplayTexts::tr("there are two columns %1").arg(shown(m_header.columns.repeatedName())));
        if (m_header.columns.isComplete())
            return;
        QStringList names;
        for (const QString& name : m_header.names.mid(0, maxCellsInMessage))
            names.append(shown(name));
        throw ChainError(m_text.name(), m_text.lineNumber(),
            ReplayTexts::tr("no header of recorded quotes: looked for time, instrument and one of bid, ask "
                            "and last; found %1")
                .arg(names.join(QStringLiteral(", "))));
    }
    throw ChainError(m_text.name(), 0, ReplayTexts::tr("the file is empty"));
}

void ReplayFile::Rows::findMark(const QVector<CsvRow>& rows)
{
    bool point = false;
    bool comma = false;
    for (const CsvRow& row : rows) {
        for (const QuoteField field : quoteFields) {
            const int column = m_header.columns.price(field);
            if (column < 0)
                continue;
            const std::optional<DecimalMark> mark = decimalMarkOf(row.cells.value(column));
            point = point || mark == DecimalMark::Point;
            comma = comma || mark == DecimalMark::Comma;
        }
    }
    m_mark = comma && !point ? DecimalMark::Comma : DecimalMark::Point;
}

void ReplayFile::Rows::readFirstRows()
{
    QVector<CsvRow> rows;
    CsvRow row;
    while (rows.size() < sampleRows && m_reader->readRow(&row))
        rows.append(row);
    if (rows.isEmpty())
        throw ChainError(m_text.name(), 0, ReplayTexts::tr("there are no quotes"));
    findMark(rows);
    for (const CsvRow& early : qAsConst(rows))
        m_first.push_back(parse(early));
}

std::optional<RecordedQuote> ReplayFile::Rows::read()
{
    if (!m_first.empty()) {
        const RecordedQuote quote = m_first.front();
        m_first.pop_front();
        return quote;
    }
    CsvRow row;
    return m_reader->readRow(&row) ? std::optional<RecordedQuote>(parse(row)) : std::nullopt;
}

void ReplayFile::Rows::checkCellCount(const CsvRow& row) const
{
    int filled = row.cells.size();
    while (filled > 0 && row.cells.at(filled - 1).isEmpty())
        --filled;
    if (row.cells.size() < m_header.columns.cellCount() || filled > m_header.names.size())
        throw ChainError(m_text.name(), row.line,
            ReplayTexts::tr("%1 cells instead of %2").arg(row.cells.size()).arg(m_header.names.size()));
}

RecordedQuote ReplayFile::Rows::parse(const CsvRow& row)
{
    checkCellCount(row);
    RecordedQuote quote;
    quote.time = timeOf(row);
    quote.instrument = instrumentOf(row);
    for (const QuoteField field : quoteFields)
        takePrice(row, field, &quote);
    return quote;
}

qint64 ReplayFile::Rows::timeOf(const CsvRow& row)
{
    const int column = m_header.columns.time();
    const std::optional<QuoteTime> time = parseQuoteTime(row.cells.at(column));
    if (!time)
        fail(row, column, ReplayTexts::tr("is no time (milliseconds, HH:MM:SS.zzz or an ISO date and time)"));
    if (!m_form) {
        m_form = time->form;
        m_zero = time->form == TimeForm::Elapsed ? 0 : time->milliseconds;
    }
    if (time->form != *m_form)
        fail(row, column, ReplayTexts::tr("is a time of another form than those before"));
    const qint64 sinceStart = time->milliseconds - m_zero;
    if (sinceStart < m_lastTime)
        fail(row, column, ReplayTexts::tr("is before the time of the row before"));
    m_lastTime = sinceStart;
    return sinceStart;
}

int ReplayFile::Rows::instrumentOf(const CsvRow& row)
{
    const int column = m_header.columns.instrument();
    const QString& name = row.cells.at(column);
    if (name.isEmpty())
        fail(row, column, ReplayTexts::tr("names no instrument"));
    const auto known = m_positions.constFind(name);
    if (known != m_positions.constEnd())
        return *known;
    const int position = m_instruments.size();
    if (position == m_mostInstruments)
        throw ChainError(m_text.name(), row.line,
            ReplayTexts::tr("there are more than %1 instruments").arg(m_mostInstruments));
    m_positions.insert(name, position);
    m_instruments.append(name);
    return position;
}

void ReplayFile::Rows::takePrice(const CsvRow& row, QuoteField field, RecordedQuote* quote) const
{
    const int column = m_header.columns.price(field);
    if (column < 0 || isMissingValue(row.cells.at(column)))
        return;
    const std::optional<ParsedNumber> number = parseNumber(row.cells.at(column), m_mark);
    if (!number || number->percent)
        fail(row, column, ReplayTexts::tr("is no price"));
    if (number->value < decimal::zero)
        fail(row, column, ReplayTexts::tr("is negative"));
    quote->setPrice(field, number->value);
}

void ReplayFile::Rows::fail(const CsvRow& row, int column, const QString& what) const
{
    throw ChainError(m_text.name(), row.line,
        ReplayTexts::tr("%1 in column %2 %3")
            .arg(shown(row.cells.value(column)), shown(m_header.names.value(column)), what));
}

ReplayFile::ReplayFile(const QString& fileName)
    : m_file(opened(fileName))
    , m_rows(std::make_unique<Rows>(*m_file, fileName, maxInstruments))
{
}

ReplayFile::ReplayFile(QIODevice& device, const QString& name, int mostInstruments)
    : m_rows(std::make_unique<Rows>(device, name, mostInstruments))
{
}

ReplayFile::~ReplayFile() = default;

std::optional<RecordedQuote> ReplayFile::read()
{
    return m_rows->read();
}

const QStringList& ReplayFile::instruments() const
{
    return m_rows->instruments();
}
