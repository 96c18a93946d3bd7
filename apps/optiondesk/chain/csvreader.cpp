#include "chain/csvreader.h"

#include "chain/chainerror.h"
#include "chain/chaintexts.h"
#include "chain/textdecoder.h"

#include <algorithm>

namespace {

const QChar quote = QLatin1Char('"');
// A cell of more lines is a quote that somebody forgot to close.
constexpr int maxRowLines = 100;

bool isBlank(const QStringList& cells)
{
    return std::all_of(cells.begin(), cells.end(), [](const QString& cell) { return cell.isEmpty(); });
}

// Reads a quoted cell whose first quote stands at the position; leaves the position behind the last one.
bool takeQuoted(const QString& text, int* position, QString* cell)
{
    for (++*position; *position < text.size(); ++*position) {
        if (text.at(*position) != quote) {
            cell->append(text.at(*position));
        } else if (*position + 1 < text.size() && text.at(*position + 1) == quote) {
            cell->append(quote);
            ++*position;
        } else {
            ++*position;
            return true;
        }
    }
    return false;
}

}

bool splitCsv(const QString& text, QChar delimiter, QStringList* cells)
{
    cells->clear();
    int position = 0;
    for (;;) {
        while (position < text.size() && text.at(position) != delimiter && text.at(position).isSpace())
            ++position;
        QString cell;
        if (position < text.size() && text.at(position) == quote && !takeQuoted(text, &position, &cell)) {
            cells->append(cell);
            return false;
        }
        const int end = text.indexOf(delimiter, position);
        cell += text.mid(position, end < 0 ? -1 : end - position);
        cells->append(cell.trimmed());
        if (end < 0)
            return true;
        position = end + 1;
    }
}

CsvReader::CsvReader(TextDecoder& text, QChar delimiter)
    : m_text(text)
    , m_delimiter(delimiter)
{
}

bool CsvReader::readRow(CsvRow* row)
{
    QString text;
    while (m_text.readLine(&text)) {
        row->line = m_text.lineNumber();
        bool complete = splitCsv(text, m_delimiter, &row->cells);
        QString next;
        for (int lines = 1; !complete && lines < maxRowLines && m_text.readLine(&next); ++lines) {
            text += QLatin1Char('\n') + next;
            complete = splitCsv(text, m_delimiter, &row->cells);
        }
        if (!complete)
            throw ChainError(m_text.name(), row->line, ChainTexts::tr("a quote is not closed"));
        const bool comment = row->cells.size() == 1 && row->cells.first().startsWith(QLatin1Char('#'));
        if (!comment && !isBlank(row->cells))
            return true;
    }
    return false;
}
