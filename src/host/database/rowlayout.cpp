#include "rowlayout_p.h"

#include "database/exception.h"
#include "database/table.h"

#include <cstring>
#include <memory>

namespace {

struct ValueShape {
    std::size_t size;
    std::size_t alignment;
};

ValueShape shapeOf(FieldType type)
{
    switch (type) {
    case FieldType::Int32:
        return {sizeof(qint32), alignof(qint32)};
    case FieldType::Int64:
    case FieldType::Moment:
        return {sizeof(qint64), alignof(qint64)};
    case FieldType::Double:
        return {sizeof(double), alignof(double)};
    case FieldType::Decimal:
        return {sizeof(decimal), alignof(decimal)};
    case FieldType::Text:
        return {sizeof(QString), alignof(QString)};
    }
    throw Exception(QStringLiteral("A column has no type of a field."));
}

std::size_t alignedUp(std::size_t offset, std::size_t alignment)
{
    return (offset + alignment - 1) / alignment * alignment;
}

}

RowLayout::RowLayout(Table* table, const QVector<TableColumnDef>& columns)
    : m_table(table)
{
    std::size_t position = 0;
    for (const TableColumnDef& column : columns) {
        const auto bit = static_cast<unsigned char>(1U << (position % 8));
        m_columns.push_back({column.type, 0, sizeof(RowHeader) + position / 8, bit});
        ++position;
    }
    std::size_t end = sizeof(RowHeader) + (position + 7) / 8;
    // The wide ones first: then there is no gap between two values.
    place(alignof(quint64), end);
    place(alignof(qint32), end);
    m_rowSize = end;
}

void RowLayout::place(std::size_t alignment, std::size_t& end)
{
    for (Column& column : m_columns) {
        const ValueShape shape = shapeOf(column.type);
        if (shape.alignment != alignment)
            continue;
        column.offset = alignedUp(end, alignment);
        end = column.offset + shape.size;
        if (column.type == FieldType::Text)
            m_textOffsets.push_back(column.offset);
    }
}

void RowLayout::deref()
{
    if (!m_references.deref())
        delete this;
}

unsigned char* RowLayout::createRow()
{
    static_assert(alignof(QString) <= alignof(quint64) && alignof(decimal) <= alignof(quint64),
        "the values are placed at multiples of eight at most");
    auto* const row = static_cast<unsigned char*>(::operator new(m_rowSize));
    std::memset(row, 0, m_rowSize);
    RowHeader* const header = new (row) RowHeader;
    header->layout = this;
    for (const std::size_t offset : m_textOffsets)
        new (row + offset) QString;
    ref();
    return row;
}

void RowLayout::destroyRow(unsigned char* row)
{
    RowLayout* const layout = rowHeader(row)->layout;
    for (const std::size_t offset : layout->m_textOffsets)
        std::destroy_at(std::launder(reinterpret_cast<QString*>(row + offset)));
    std::destroy_at(rowHeader(row));
    ::operator delete(row);
    layout->deref();
}

void RowLayout::releaseRow(unsigned char* row)
{
    RowHeader* const header = rowHeader(row);
    if (header->references.deref())
        return;
    if (Table* const table = header->layout->table())
        table->freeRow(row);
    else
        destroyRow(row);
}

FieldConstValue RowLayout::constView(const unsigned char* row, int column) const
{
    if (!hasColumn(column))
        return FieldConstValue();
    const Column& place = m_columns[static_cast<std::size_t>(column)];
    return FieldConstValue(place.type, row + place.offset, row + place.maskOffset, place.maskBit);
}

FieldValue RowLayout::view(unsigned char* row, int column) const
{
    if (!hasColumn(column))
        return FieldValue();
    const Column& place = m_columns[static_cast<std::size_t>(column)];
    return FieldValue(place.type, row + place.offset, row + place.maskOffset, place.maskBit);
}

IndexList::Rows::~Rows()
{
    if (!m_held)
        return;
    for (unsigned char* row : rows)
        RowLayout::releaseRow(row);
}

void IndexList::Rows::hold()
{
    if (m_held)
        return;
    m_held = true;
    for (unsigned char* row : rows)
        rowHeader(row)->references.ref();
}
