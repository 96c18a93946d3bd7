#pragma once

#include <QStringList>

class TextDecoder;

/// Cells of one line of text, each without the blanks around it.
struct CsvRow {
    /// The line that the row began in, from 1.
    int line = 0;
    QStringList cells;
};

/// Parts a text into cells. A cell that begins with a double quote goes on to the next single one, over
/// delimiters and line ends; a doubled quote in it stands for one. False, with the cells up to there, if
/// the text ends inside quotes.
bool splitCsv(const QString& text, QChar delimiter, QStringList* cells);

/// Reads the rows of a text that follow on its header.
class CsvReader {
public:
    CsvReader(TextDecoder& text, QChar delimiter);

    /// The next row that has a cell that is not empty, false at the end. Lines that begin with '#' and hold
    /// one cell are passed over. Throws ChainError for a quote that is not closed within 100 lines, besides
    /// what TextDecoder throws.
    bool readRow(CsvRow* row);

private:
    TextDecoder& m_text;
    QChar m_delimiter;
};
