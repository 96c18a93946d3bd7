#include "chain/chainimport.h"

#include "chain/chainrows.h"
#include "chain/chaintables.h"
#include "chain/chaintexts.h"
#include "chain/securityrows.h"

#include <database/exception.h>
#include <database/table.h>
#include <database/tablestorage.h>

#include <algorithm>

namespace {

// Quotes are exact decimals of 15 digits up to here.
constexpr double maxForward = 1e15;

void checkForward(const std::optional<double>& forward)
{
    if (forward && !(*forward > 0.0 && *forward < maxForward))
        throw Exception(ChainTexts::tr("A forward of %1 is not positive or too large.").arg(*forward));
}

void checkChain(const OptionChain& chain)
{
    if (chain.baseCode.isEmpty())
        throw Exception(ChainTexts::tr("The chain has no base code."));
    if (chain.series.isEmpty())
        throw Exception(ChainTexts::tr("The chain of %1 has no series.").arg(chain.baseCode));
    if (chain.priceStep <= decimal::zero || chain.decimals < 0 || chain.decimals > decimal::maxDecimals)
        throw Exception(ChainTexts::tr("The chain of %1 has no valid price step.").arg(chain.baseCode));
    for (const OptionSeries& series : chain.series) {
        checkForward(series.forward);
        if (series.quotes.isEmpty())
            throw Exception(ChainTexts::tr("A series of %1 has no options.").arg(chain.baseCode));
    }
}

// Sees to it that the chains' board is there and anonymous: a plot passes over futures of other boards.
void ensureBoard(Table& boards)
{
    SecurityRows rows(boards);
    const int anonymous = rows.column("is_anonym");
    QVector<Record> known;
    for (const Record& row : boards.masterIndex()) {
        if (!rows.isOnChainBoard(row))
            continue;
        if (rows.integer(row, "is_anonym") == qint64(1))
            return;
        known.append(row);
    }
    boards.changeRows(
        known, [anonymous](const Record&, const Table::FieldAccess& field) { field(anonymous).setInt32(1); });
    if (!known.isEmpty())
        return;
    const Record row = boards.createRow();
    rows.setInteger(row, "stock_id", chainStockId);
    rows.setInteger(row, "board_id", chainBoardId);
    rows.setInteger(row, "is_anonym", 1);
    rows.setText(row, "name", QStringLiteral("Option chains"));
    boards.appendRows({row});
}

}

ChainImport::ChainImport(TableStorage& storage)
    : m_storage(storage)
{
}

void ChainImport::commitChange(const std::function<void()>& change)
{
    try {
        change();
        m_storage.commit();
    } catch (...) {
        m_storage.rollback();
        throw;
    }
}

std::unique_ptr<ChainRows> ChainImport::rows(const OptionChain& chain)
{
    checkChain(chain);
    return std::make_unique<ChainRows>(*ChainTables::make().securities, chain, m_storage);
}

void ChainImport::store(ChainRows& rows)
{
    const ChainTables tables = ChainTables::make();
    commitChange([&] {
        ensureBoard(*tables.boards);
        const QVector<Record> made = rows.finish();
        tables.securities->removeRows(rows.replaced());
        tables.securities->appendRows(made);
    });
}

void ChainImport::import(const OptionChain& chain)
{
    store(*rows(chain));
}

bool ChainImport::storeForward(int futureIsinId, std::optional<double> forward)
{
    checkForward(forward);
    const ChainTables tables = ChainTables::make();
    const SecurityRows rows(*tables.securities);
    QVector<Record> futures;
    for (const Record& row : tables.securities->masterIndex()) {
        if (rows.isOnChainBoard(row) && rows.text(row, "sectype") == QLatin1String("F")
            && rows.integer(row, "isin_id") == qint64(futureIsinId))
            futures.append(row);
    }
    if (futures.isEmpty())
        return false;
    const int column = rows.column("cur_kotir_real");
    commitChange([&] {
        tables.securities->changeRows(futures, [&](const Record&, const Table::FieldAccess& field) {
            if (forward)
                field(column).setDecimal(exactDecimal(*forward));
            else
                field(column).setNull();
        });
    });
    return true;
}
