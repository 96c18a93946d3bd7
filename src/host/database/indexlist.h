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

    class const_iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Record;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = Record;

        explicit const_iterator(unsigned char* const* position)
            : m_position(position)
        {
        }
        Record operator*() const { return Record(*m_position); }
        const_iterator& operator++()
        {
            ++m_position;
            return *this;
        }
        friend bool operator==(const_iterator a, const_iterator b) { return a.m_position == b.m_position; }
        friend bool operator!=(const_iterator a, const_iterator b) { return a.m_position != b.m_position; }

    private:
        unsigned char* const* m_position;
    };

    IndexList() = default;
    explicit IndexList(std::shared_ptr<const Rows> rows);

    const_iterator begin() const;
    const_iterator end() const;
    int size() const;

private:
    std::shared_ptr<const Rows> m_rows;
};
