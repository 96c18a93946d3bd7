#include "chain/rowids.h"

#include <database/exception.h>
#include <database/table.h>
#include <database/tablestorage.h>

#include <algorithm>
#include <limits>

RowIds::RowIds(const SecurityRows& rows, TableStorage& storage)
    : m_rows(rows)
    , m_storage(storage)
{
    for (const Record& row : m_rows.table().masterIndex()) {
        for (const char* column : {"isin_id", "fut_isin_id", "base_isin_id"}) {
            const qint64 isinId = m_rows.integer(row, column).value_or(0);
            m_last.isinId = std::max(m_last.isinId, isinId);
            m_used.insert(isinId);
        }
        const qint64 secId = m_rows.integer(row, "sec_id").value_or(0);
        m_last.secId = std::max(m_last.secId, secId);
        m_used.insert(secId);
    }
}

void RowIds::reuse(const QVector<Record>& rows)
{
    if (!m_storage.isShared())
        return;
    for (const Record& row : rows) {
        const Ids ids{m_rows.integer(row, "isin_id").value_or(0), m_rows.integer(row, "sec_id").value_or(0)};
        if (ids.isinId > 0 && ids.secId > 0)
            m_reusable.insert(m_rows.text(row, "short_name"), ids);
    }
}

RowIds::Ids RowIds::idsFor(const QString& shortName)
{
    if (m_reusable.contains(shortName))
        return m_reusable.take(shortName);
    if (m_storage.isShared()) {
        const qint64 number = sharedNumber();
        return {number, number};
    }
    return nextIds();
}

qint64 RowIds::sharedNumber()
{
    // Rows that other programs have written may have any number.
    qint64 number = 0;
    do
        number = m_storage.takeNumbers(1).first();
    while (m_used.contains(number));
    return number;
}

RowIds::Ids RowIds::nextIds()
{
    if (m_last.isinId >= std::numeric_limits<qint32>::max()
        || m_last.secId >= std::numeric_limits<qint64>::max())
        throw Exception(QStringLiteral("There are no ids left in the table of securities."));
    ++m_last.isinId;
    ++m_last.secId;
    return m_last;
}
