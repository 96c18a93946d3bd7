#include "database/record.h"

#include "database/columns_p.h"

Table* Record::table() const
{
    return m_place ? m_place->columns->table : nullptr;
}

int Record::row() const
{
    return m_place ? m_place->place : -1;
}
