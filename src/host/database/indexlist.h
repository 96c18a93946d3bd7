#pragma once

#include "database/record.h"

#include <QVector>

#include <memory>

/// The rows of a table in their order, as they stood when the list was taken.
///
/// Taking one is cheap. A change of the table's rows during a walk does not disturb the walk: the list
/// keeps its own rows, removed ones included.
class IndexList {
public:
    struct Rows;

    /// Walks over the rows; valid as long as the list or a copy of it.
    class const_iterator {
    public:
        /// What the standard library asks of an iterator.
        /// @{
        using iterator_category = std::input_iterator_tag;
        using value_type = Record;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = Record;
        /// @}

        /// At a row of the list. For the list's own use.
        explicit const_iterator(unsigned char* const* position)
            : m_position(position)
        {
        }
        /// The record of the row.
        Record operator*() const { return Record(*m_position); }
        /// Goes on to the next row.
        const_iterator& operator++()
        {
            ++m_position;
            return *this;
        }
        /// Whether two iterators of one list stand at the same row.
        friend bool operator==(const_iterator a, const_iterator b) { return a.m_position == b.m_position; }
        /// Whether they stand at different ones.
        friend bool operator!=(const_iterator a, const_iterator b) { return a.m_position != b.m_position; }

    private:
        unsigned char* const* m_position;
    };

    /// No rows.
    IndexList() = default;
    /// For the table's own use.
    explicit IndexList(std::shared_ptr<const Rows> rows);

    /// At the first row.
    const_iterator begin() const;
    /// Behind the last row.
    const_iterator end() const;
    /// How many rows there are.
    int size() const;

private:
    std::shared_ptr<const Rows> m_rows;
};
