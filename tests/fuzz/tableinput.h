#pragma once

#include "fuzzinput.h"

#include <QByteArray>

/// What a column of a table of text holds.
enum class CellKind : std::uint8_t { Number, Count, Date, Time, Type, Code, Any };

/// A column's name and what usually stands below it.
struct NamedColumn {
    const char* name;
    CellKind kind;
};

/// Tables of text out of the bytes of a fuzzer: a header of known names, and cells that mostly suit them.
class TableInput {
public:
    TableInput(FuzzInput& input, const NamedColumn* columns, int columnCount);

    /// The table. Every other input is no table but the bytes themselves.
    QByteArray take();

private:
    void takeHeader();
    void takeRow();
    QByteArray takeCell(CellKind kind);
    QByteArray takeNumber(bool whole);
    QByteArray takeDate();
    QByteArray takeTime();
    QByteArray takeBytes();
    QByteArray quoted(const QByteArray& cell);

    FuzzInput& m_input;
    const NamedColumn* m_columns;
    int m_columnCount;
    char m_delimiter = ',';
    const char* m_lineEnd = "\n";
    QByteArray m_text;
    CellKind m_kinds[16] = {};
    int m_width = 0;
};
