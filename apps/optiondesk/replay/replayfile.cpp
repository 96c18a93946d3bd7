#include "replay/replayfile.h"

#include "replay/replaytime.h"

#include <chain/chainerror.h>
#include <chain/csvreader.h>
#include <chain/numberparser.h>
#include <chain/textdecoder.h>

#include <QFile>
#include <QFileInfo>

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

/// Reads one device.
class Recording {
public:
    Recording(QIODevice& device, const QString& name, int maxQuotes);

    RecordedQuotes read();

private:
    void findHeader();
    void findMark(const QVector<CsvRow>& rows);
    void checkCellCount(const CsvRow& row) const;
    void parse(const CsvRow& row);
    qint64 timeOf(const CsvRow& row);
    int instrumentOf(const CsvRow& row);
    void takePrice(const CsvRow& row, QuoteField field, RecordedQuote* quote) const;
    [[noreturn]] void fail(const CsvRow& row, int column, const QString& what) const;

    TextDecoder m_text;
    const int m_maxQuotes;
    Header m_header;
    DecimalMark m_mark = DecimalMark::Point;
    std::optional<TimeForm> m_form;
    qint64 m_zero = 0;
    QHash<QString, int> m_positions;
    RecordedQuotes m_result;
};

Recording::Recording(QIODevice& device, const QString& name, int maxQuotes)
    : m_text(device, name)
    , m_maxQuotes(maxQuotes)
{
}

// The first line that is neither empty nor a comment, or the first comment that names the columns.
void Recording::findHeader()
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
                QStringLiteral("there are two columns %1").arg(shown(m_header.columns.repeatedName())));
        if (m_header.columns.isComplete())
            return;
        QStringList names;
        for (const QString& name : m_header.names.mid(0, maxCellsInMessage))
            names.append(shown(name));
        throw ChainError(m_text.name(), m_text.lineNumber(),
            QStringLiteral("no header of recorded quotes: looked for time, instrument and one of bid, ask "
                           "and last; found %1")
                .arg(names.join(QStringLiteral(", "))));
    }
    throw ChainError(m_text.name(), 0, QStringLiteral("the file is empty"));
}

void Recording::findMark(const QVector<CsvRow>& rows)
{
    bool point = false;
    bool comma = false;
    for (const CsvRow& row : rows) {
        for (const QuoteField field : quoteFields) {
            const int column = m_header.columns.price(field);
            const std::optional<DecimalMark> mark
                = column >= 0 ? decimalMarkOf(row.cells.value(column)) : std::nullopt;
            point = point || mark == DecimalMark::Point;
            comma = comma || mark == DecimalMark::Comma;
        }
    }
    m_mark = comma && !point ? DecimalMark::Comma : DecimalMark::Point;
}

RecordedQuotes Recording::read()
{
    findHeader();
    CsvReader reader(m_text, m_header.delimiter);
    QVector<CsvRow> first;
    CsvRow row;
    while (first.size() < sampleRows && reader.readRow(&row))
        first.append(row);
    findMark(first);
    for (const CsvRow& early : qAsConst(first))
        parse(early);
    while (reader.readRow(&row))
        parse(row);
    if (m_result.quotes.empty())
        throw ChainError(m_text.name(), 0, QStringLiteral("there are no quotes"));
    return std::move(m_result);
}

void Recording::checkCellCount(const CsvRow& row) const
{
    int filled = row.cells.size();
    while (filled > 0 && row.cells.at(filled - 1).isEmpty())
        --filled;
    if (row.cells.size() < m_header.columns.cellCount() || filled > m_header.names.size())
        throw ChainError(m_text.name(), row.line,
            QStringLiteral("%1 cells instead of %2").arg(row.cells.size()).arg(m_header.names.size()));
}

void Recording::parse(const CsvRow& row)
{
    checkCellCount(row);
    if (int(m_result.quotes.size()) >= m_maxQuotes)
        throw ChainError(
            m_text.name(), row.line, QStringLiteral("there are more than %1 quotes").arg(m_maxQuotes));
    RecordedQuote quote;
    quote.time = timeOf(row);
    quote.instrument = instrumentOf(row);
    for (const QuoteField field : quoteFields)
        takePrice(row, field, &quote);
    m_result.quotes.push_back(quote);
}

qint64 Recording::timeOf(const CsvRow& row)
{
    const int column = m_header.columns.time();
    const std::optional<QuoteTime> time = parseQuoteTime(row.cells.at(column));
    if (!time)
        fail(row, column, QStringLiteral("is no time (milliseconds, HH:MM:SS.zzz or an ISO date and time)"));
    if (!m_form) {
        m_form = time->form;
        m_zero = time->form == TimeForm::Elapsed ? 0 : time->milliseconds;
    }
    if (time->form != *m_form)
        fail(row, column, QStringLiteral("is a time of another form than those before"));
    const qint64 sinceStart = time->milliseconds - m_zero;
    if (sinceStart < (m_result.quotes.empty() ? 0 : m_result.quotes.back().time))
        fail(row, column, QStringLiteral("is before the time of the row before"));
    return sinceStart;
}

int Recording::instrumentOf(const CsvRow& row)
{
    const int column = m_header.columns.instrument();
    const QString& name = row.cells.at(column);
    if (name.isEmpty())
        fail(row, column, QStringLiteral("names no instrument"));
    const auto known = m_positions.constFind(name);
    if (known != m_positions.constEnd())
        return *known;
    const int position = m_result.instruments.size();
    m_positions.insert(name, position);
    m_result.instruments.append(name);
    return position;
}

void Recording::takePrice(const CsvRow& row, QuoteField field, RecordedQuote* quote) const
{
    const int column = m_header.columns.price(field);
    if (column < 0 || isMissingValue(row.cells.at(column)))
        return;
    const std::optional<ParsedNumber> number = parseNumber(row.cells.at(column), m_mark);
    if (!number || number->percent)
        fail(row, column, QStringLiteral("is no price"));
    if (number->value < decimal::zero)
        fail(row, column, QStringLiteral("is negative"));
    quote->setPrice(field, number->value);
}

void Recording::fail(const CsvRow& row, int column, const QString& what) const
{
    throw ChainError(m_text.name(), row.line,
        QStringLiteral("%1 in column %2 %3")
            .arg(shown(row.cells.value(column)), shown(m_header.names.value(column)), what));
}

}

void RecordedQuote::setPrice(QuoteField field, const decimal& price)
{
    prices[std::size_t(field)] = price;
    given |= 1U << unsigned(field);
}

RecordedQuotes readRecordedQuotes(const QString& fileName)
{
    const QFileInfo info(fileName);
    if (!info.exists())
        throw ChainError(fileName, 0, QStringLiteral("there is no such file"));
    if (!info.isFile())
        throw ChainError(fileName, 0, QStringLiteral("is not an ordinary file"));
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw ChainError(fileName, 0, QStringLiteral("cannot be opened: %1").arg(file.errorString()));
    return readRecordedQuotes(file, fileName);
}

RecordedQuotes readRecordedQuotes(QIODevice& device, const QString& name, int maxQuotes)
{
    return Recording(device, name, maxQuotes).read();
}
