#include "database/record.h"

#include "rowlayout_p.h"

#include <utility>

Record::Record(unsigned char* row)
    : m_row(row)
{
    if (m_row)
        rowHeader(m_row)->references.ref();
}

Record::Record(const Record& other)
    : Record(other.m_row)
{
}

Record::Record(Record&& other) noexcept
    : m_row(std::exchange(other.m_row, nullptr))
{
}

Record& Record::operator=(const Record& other)
{
    Record copy(other);
    std::swap(m_row, copy.m_row);
    return *this;
}

Record& Record::operator=(Record&& other) noexcept
{
    Record moved(std::move(other));
    std::swap(m_row, moved.m_row);
    return *this;
}

Record::~Record()
{
    if (m_row)
        RowLayout::releaseRow(m_row);
}

Table* Record::table() const
{
    return m_row ? rowHeader(m_row)->layout->table() : nullptr;
}

bool Record::isInTable() const
{
    return m_row && rowHeader(m_row)->inTable;
}

Field Record::field(int column) const
{
    return Field(value(column));
}

FieldConstValue Record::value(int column) const
{
    return m_row ? rowHeader(m_row)->layout->constView(m_row, column) : FieldConstValue();
}
