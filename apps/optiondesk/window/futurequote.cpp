#include "window/futurequote.h"

#include <chain/chaintables.h>
#include <database/table.h>
#include <directory/optionalfield.h>
#include <directory/securitydirectory.h>

namespace {

// The field that a plot prefers to all other quotes.
const auto quoteColumn = QStringLiteral("cur_kotir_real");

Record futureOf(int isinId)
{
    return SecurityDirectory::i()->recordByIsinId(isinId, chainBoardId);
}

std::optional<decimal> quoteOf(const Record& future)
{
    const Table* const table = future.table();
    return table ? OptionalField::fixedPoint(future.value(table->columnIndex(quoteColumn))) : std::nullopt;
}

void write(const Record& future, const std::optional<decimal>& quote)
{
    Table* const table = future.table();
    if (!table || quoteOf(future) == quote)
        return;
    const int column = table->columnIndex(quoteColumn);
    table->changeRows({future}, [&](const Record&, const Table::FieldAccess& field) {
        FieldValue value = field(column);
        if (quote)
            value.setDecimal(*quote);
        else
            value.setNull();
    });
}

}

FutureQuote::~FutureQuote()
{
    takeBack();
}

std::optional<decimal> FutureQuote::own(int futureIsinId) const
{
    const std::optional<decimal> quote = quoteOf(futureOf(futureIsinId));
    const bool isLoan = futureIsinId == m_futureIsinId && quote == m_lent;
    return isLoan ? m_own : quote;
}

void FutureQuote::lend(int futureIsinId, double forward)
{
    constexpr short decimalsOfPrices = 5;
    if (futureIsinId != m_futureIsinId)
        takeBack();
    const Record future = futureOf(futureIsinId);
    if (future.isNull())
        return;
    const decimal lent = decimal::fromDouble(forward, decimalsOfPrices);
    const std::optional<decimal> quote = quoteOf(future);
    // A live quote lies over the loan: whoever wrote it may take it away again, and the loan shows again.
    if (futureIsinId == m_futureIsinId && quote == lent && quote != m_lent)
        return;
    m_own = own(futureIsinId);
    m_futureIsinId = futureIsinId;
    m_lent = lent;
    write(future, m_lent);
}

void FutureQuote::takeBack()
{
    if (m_futureIsinId > 0) {
        const std::optional<decimal> quote = own(m_futureIsinId);
        write(futureOf(m_futureIsinId), quote);
    }
    m_futureIsinId = 0;
}
