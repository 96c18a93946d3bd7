#include "database/indexlist.h"

#include "rowlayout_p.h"

IndexList::IndexList(std::shared_ptr<const Rows> rows)
    : m_rows(std::move(rows))
{
}

IndexList::const_iterator IndexList::begin() const
{
    return const_iterator(m_rows ? m_rows->rows.constData() : nullptr);
}

IndexList::const_iterator IndexList::end() const
{
    return const_iterator(m_rows ? m_rows->rows.constData() + m_rows->rows.size() : nullptr);
}

int IndexList::size() const
{
    return m_rows ? int(m_rows->rows.size()) : 0;
}
