#pragma once

#include "host/directory/tablerows.h"

#include <database/database.h>
#include <database/icore.h>
#include <directory/securitiestable.h>
#include <directory/securitydirectory.h>

namespace TestSupport {

inline Database* database()
{
    return ICore::instance()->database();
}

inline Table* createSecurities()
{
    return database()->createTable(SecuritiesTable::securitiesName, SecuritiesTable::securitiesColumns());
}

inline Record byIsin(int isinId, int boardId)
{
    return SecurityDirectory::i()->recordByIsinId(isinId, boardId);
}

inline int decimalsOf(int stockId, int boardId, long long secId)
{
    return SecurityDirectory::i()->decimalsById(stockId, boardId, secId);
}

inline Record makeSecurity(Table& table, const QVariant& isinId, const QVariant& boardId,
    const QVariant& secId, const QVariant& decimals)
{
    return makeRow(table,
        {{"stock_id", 1}, {"board_id", boardId}, {"sec_id", secId}, {"isin_id", isinId},
            {"decimals", decimals}});
}

}
