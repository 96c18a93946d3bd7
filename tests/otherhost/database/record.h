#pragma once

#include <memory>

class RowPlace;
class Table;

/// One row of a table, or none. The row's values are there as long as a record of it is, in its table or not.
class Record {
public:
    Record() = default;
    explicit Record(const std::shared_ptr<const RowPlace>& place)
        : m_place(place)
    {
    }

    bool isNull() const { return !m_place; }
    /// Null for no row, and when the table is gone.
    Table* table() const;
    /// The row's place among its table's values; -1 for no row.
    int row() const;

    friend bool operator==(const Record& a, const Record& b) { return a.m_place == b.m_place; }
    friend bool operator!=(const Record& a, const Record& b) { return a.m_place != b.m_place; }

private:
    std::shared_ptr<const RowPlace> m_place;
};
