#include "directory/roworder.h"

#include "database/table.h"

void RowOrder::restart()
{
    *this = RowOrder();
}

qint64 RowOrder::place(const Table& table, const QVector<Record>& run)
{
    if (run.isEmpty())
        return m_end;

    // Both ends are looked at: a row that another listener inserted into the run shifts one of them.
    const int size = static_cast<int>(run.size());
    const auto standsAt = [&](int position) {
        return table.record(position) == run.first() && table.record(position + size - 1) == run.last();
    };
    if (standsAt(table.rowCount() - size)) {
        m_end += size;
        return m_end - size;
    }
    if (standsAt(0)) {
        m_begin -= size;
        return m_begin;
    }
    m_exact = false;
    m_end += size;
    return m_end - size;
}
