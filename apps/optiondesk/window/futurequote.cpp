#include "window/futurequote.h"

#include <chain/chaintables.h>
#include <database/table.h>
#include <directory/securitydirectory.h>

namespace {

// Writes the quote that a plot prefers to all others; gives the one before.
QVariant exchange(int futureIsinId, const QVariant& quote)
{
    Table* const table = ChainTables::find().securities;
    const Record future = SecurityDirectory::i()->recordByIsinId(futureIsinId, chainBoardId);
    if (!table || future.isNull())
        return QVariant();
    const int column = table->columnIndex(QStringLiteral("cur_kotir_real"));
    QVariant before = future.value(column).toVariant();
    table->changeRows(
        {future}, [&](const Record&, const Table::FieldAccess& field) { field(column).setVariant(quote); });
    return before;
}

}

FutureQuote::~FutureQuote()
{
    takeBack();
}

void FutureQuote::lend(int futureIsinId, double forward)
{
    constexpr short decimalsOfPrices = 5;
    takeBack();
    m_own = exchange(futureIsinId, QVariant::fromValue(decimal::fromDouble(forward, decimalsOfPrices)));
    m_futureIsinId = futureIsinId;
}

void FutureQuote::takeBack()
{
    if (m_futureIsinId > 0)
        exchange(m_futureIsinId, m_own);
    m_futureIsinId = 0;
}
