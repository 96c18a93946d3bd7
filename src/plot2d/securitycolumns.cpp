#include "plot2d/securitycolumns.h"

#include "columnnames_p.h"

#include <database/table.h>

SecurityColumns::SecurityColumns()
{
    m_positions.fill(-1);
}

SecurityColumns::SecurityColumns(const Table* table)
    : SecurityColumns()
{
    if (!table)
        return;
    for (std::size_t i = 0; i < m_positions.size(); ++i)
        m_positions[i] = table->columnIndex(ColumnNames::of(static_cast<SecurityColumn>(i)));
}

int SecurityColumns::operator[](SecurityColumn column) const
{
    return m_positions[static_cast<std::size_t>(column)];
}

QString SecurityColumns::missing() const
{
    QString text;
    for (std::size_t i = 0; i < m_positions.size(); ++i) {
        if (m_positions[i] == -1)
            text += QString::number(i) + QLatin1Char(' ');
    }
    return text;
}
