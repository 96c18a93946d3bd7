#pragma once

#include "database/field.h"
#include "database/indexlist.h"

#include <QAtomicInt>
#include <QVector>

#include <new>
#include <vector>

class RowLayout;
class Table;

/// What stands at the head of a row's buffer; a row's address is that of its header. The null mask and the
/// values follow it.
struct RowHeader {
    /// Records of the row, and one more while the row is in its table.
    QAtomicInt references;
    bool inTable = false;
    /// Whether the row was in its table once and was taken out.
    bool removed = false;
    RowLayout* layout = nullptr;
};

inline RowHeader* rowHeader(unsigned char* row)
{
    return std::launder(reinterpret_cast<RowHeader*>(row));
}

/// The place of each field in the rows of one table. It lives as long as the table or one of its rows.
class RowLayout {
public:
    /// Exception if a column's type is none of FieldType. The table holds the first reference.
    RowLayout(Table* table, const QVector<TableColumnDef>& columns);
    RowLayout(const RowLayout&) = delete;
    RowLayout& operator=(const RowLayout&) = delete;

    void ref() { m_references.ref(); }
    void deref();

    /// Null once the table is gone.
    Table* table() const { return m_table; }
    void forgetTable() { m_table = nullptr; }

    /// A row without references, all its fields null.
    unsigned char* createRow();
    static void destroyRow(unsigned char* row);
    /// Takes a reference away and lets the row's table free it after the last one.
    static void releaseRow(unsigned char* row);

    /// Views of no field for a column that does not exist.
    FieldConstValue constView(const unsigned char* row, int column) const;
    FieldValue view(unsigned char* row, int column) const;

private:
    ~RowLayout() = default;

    struct Column {
        FieldType type;
        std::size_t offset;
        std::size_t maskOffset;
        unsigned char maskBit;
    };

    bool hasColumn(int column) const
    {
        return column >= 0 && static_cast<std::size_t>(column) < m_columns.size();
    }
    void place(std::size_t alignment, std::size_t& end);

    QAtomicInt m_references = 1;
    Table* m_table;
    std::vector<Column> m_columns;
    std::vector<std::size_t> m_textOffsets;
    std::size_t m_rowSize = 0;
};

/// The rows of an IndexList. While the table still has the same rows they are kept alive by the table; before
/// it changes them it calls hold().
struct IndexList::Rows {
    explicit Rows(const QVector<unsigned char*>& tableRows)
        : rows(tableRows)
    {
    }
    Rows(const Rows&) = delete;
    Rows& operator=(const Rows&) = delete;
    ~Rows();

    /// Counts every row, once.
    void hold();

    const QVector<unsigned char*> rows;

private:
    bool m_held = false;
};
