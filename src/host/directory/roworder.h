#pragma once

#include "database/record.h"

#include <QVector>

class Table;

/// Numbers the rows of a table so that a row further down has a larger number, as far as that can be told.
///
/// A table does not say where rows were inserted. Rows that came at its end or at its beginning are found
/// there and numbered exactly; rows that came anywhere else are not looked for, since that would cost a walk
/// through the table for each insertion. The numbers are then not exact until all rows are numbered anew.
class RowOrder {
public:
    /// Forgets all rows; the numbers to come are exact.
    void restart();

    /// The number of the first row of a run that was just inserted, the others of the run follow it one by
    /// one. The rows must stand in the table; an empty run gets a number that stays unused.
    qint64 place(const Table& table, const QVector<Record>& run);

    /// A number after all others.
    qint64 next() { return m_end++; }

    /// Tells that the number of a row may not fit its place.
    void setInexact() { m_exact = false; }
    /// Whether the order of the numbers is that of the table.
    bool isExact() const { return m_exact; }

private:
    qint64 m_begin = 0;
    qint64 m_end = 0;
    bool m_exact = true;
};
