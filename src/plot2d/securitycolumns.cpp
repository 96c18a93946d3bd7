#include "plot2d/securitycolumns.h"

#include <database/table.h>

namespace {

constexpr std::array<const char*, SecurityColumns::count> columnNames{"stock_id", "board_id", "sec_id",
    "expdate", "base_code", "price_step", "sectype", "option_type", "strike", "sess_id", "isin_id",
    "fut_isin_id", "base_isin_id", "bid", "ask", "cur_kotir_real", "cur_kotir", "old_kotir", "volat_min",
    "volat_max", "lasttime"};

}

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
        m_positions[i] = table->columnIndex(QLatin1String(columnNames[i]));
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
