#include "directory/securitydirectory.h"

#include "rowsearch_p.h"

namespace {

QString tableName()
{
    return QStringLiteral("securities");
}

}

SecurityDirectory* SecurityDirectory::i()
{
    static SecurityDirectory directory;
    return &directory;
}

Record SecurityDirectory::recordByIsinId(int isinId, int boardId) const
{
    return RowSearch::first(tableName(), {{"isin_id", isinId}, {"board_id", boardId}});
}

int SecurityDirectory::decimalsById(int stockId, int boardId, long long secId) const
{
    const Record security
        = RowSearch::first(tableName(), {{"stock_id", stockId}, {"board_id", boardId}, {"sec_id", secId}});
    const qint64 decimals = RowSearch::integer(security, "decimals").value_or(-1);
    constexpr int most = 18;
    return decimals >= 0 && decimals <= most ? int(decimals) : -1;
}
