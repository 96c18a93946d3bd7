#include "chain/rowids.h"

#include "chain/chaintexts.h"

#include <database/exception.h>
#include <database/table.h>
#include <database/tablestorage.h>

#include <algorithm>
#include <limits>

bool RowIds::Found::operator==(const Found& other) const
{
    return last == other.last && used == other.used && reusable == other.reusable;
}

RowIds::RowIds(const SecurityRows& rows, const QVector<Record>& replaced, TableStorage& storage)
    : m_storage(&storage)
    , m_found(find(rows, replaced, storage.isShared()))
    , m_last(m_found.last)
    , m_reusable(m_found.reusable)
{
}

RowIds::Found RowIds::find(const SecurityRows& rows, const QVector<Record>& replaced, bool isShared)
{
    Found found;
    for (const Record& row : rows.table().masterIndex()) {
        for (const char* column : {"isin_id", "fut_isin_id", "base_isin_id"}) {
            const qint64 isinId = rows.integer(row, column).value_or(0);
            found.last.isinId = std::max(found.last.isinId, isinId);
            found.used.insert(isinId);
        }
        const qint64 secId = rows.integer(row, "sec_id").value_or(0);
        found.last.secId = std::max(found.last.secId, secId);
        found.used.insert(secId);
    }
    if (!isShared)
        return found;
    for (const Record& row : replaced) {
        const Ids ids{rows.integer(row, "isin_id").value_or(0), rows.integer(row, "sec_id").value_or(0)};
        if (ids.isinId > 0 && ids.secId > 0)
            found.reusable.insert(rows.text(row, "short_name"), ids);
    }
    return found;
}

RowIds::Ids RowIds::idsFor(const QString& shortName)
{
    if (m_reusable.contains(shortName))
        return m_reusable.take(shortName);
    if (m_storage->isShared()) {
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
        number = m_storage->takeNumbers(1).first();
    while (m_found.used.contains(number));
    return number;
}

RowIds::Ids RowIds::nextIds()
{
    if (m_last.isinId >= std::numeric_limits<qint32>::max()
        || m_last.secId >= std::numeric_limits<qint64>::max())
        throw Exception(ChainTexts::tr("There are no ids left in the table of securities."));
    ++m_last.isinId;
    ++m_last.secId;
    return m_last;
}
