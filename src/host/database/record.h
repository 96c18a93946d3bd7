#pragma once

#include "database/field.h"

#include <QHashFunctions>
#include <QMetaType>

class Table;

/// A counted handle to one row of a table; null when empty.
///
/// The row lives until the last record of it goes, also when it was removed from its table or the table
/// itself was destroyed. Copies are cheap.
class Record {
public:
    /// Null.
    Record() = default;
    /// Counts the row; a null row gives a null record. For the database's own use.
    explicit Record(unsigned char* row);
    /// Handles to the same row; one that was moved from is null.
    /// @{
    Record(const Record& other);
    Record(Record&& other) noexcept;
    Record& operator=(const Record& other);
    Record& operator=(Record&& other) noexcept;
    /// @}
    ~Record();

    /// Whether there is no row.
    bool isNull() const { return m_row == nullptr; }
    /// The table that the row was made for, null when the record is null or the table is gone.
    Table* table() const;
    /// Whether the row stands in its table now.
    bool isInTable() const;
    /// The row, which stays the record's; null for a null record.
    unsigned char* row() const { return m_row; }

    /// One field for display; a null field for a null record or a column that does not exist.
    Field field(int column) const;
    /// A view of one field, valid as long as a record of the row; of no field for a null record or a column
    /// that does not exist.
    FieldConstValue value(int column) const;

    /// Whether two records are of one row, or both null.
    friend bool operator==(const Record& a, const Record& b) { return a.m_row == b.m_row; }
    /// Whether they are of different rows.
    friend bool operator!=(const Record& a, const Record& b) { return a.m_row != b.m_row; }

private:
    unsigned char* m_row = nullptr;
};

/// What qHash() takes and gives: of another width in Qt 5 than in Qt 6.
using HashValue = decltype(qHash(0));

/// By the row.
inline HashValue qHash(const Record& record, HashValue seed = 0)
{
    return ::qHash(record.row(), seed);
}

Q_DECLARE_METATYPE(Record)
