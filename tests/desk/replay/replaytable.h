#pragma once

#include <chain/chaintables.h>
#include <database/table.h>
#include <directory/securitiestable.h>

#include <memory>

/// A table "securities" of a future, in row 0, and options of the names "O1", "O2" ... in the rows of these
/// numbers.
namespace ReplayTable {

constexpr int instrumentCount = 50;
constexpr int futureIsinId = 1;

inline std::unique_ptr<Table> make()
{
    auto table
        = std::make_unique<Table>(SecuritiesTable::securitiesName, SecuritiesTable::securitiesColumns());
    QVector<Record> rows;
    for (int i = 0; i < instrumentCount; ++i) {
        const Record row = table->createRow();
        const auto field = [&](const char* name) {
            return table->value(row, table->columnIndex(QString::fromLatin1(name)));
        };
        field("stock_id").setInt32(chainStockId);
        field("board_id").setInt32(chainBoardId);
        field("isin_id").setInt32(futureIsinId + i);
        field("short_name").setText(i == 0 ? QStringLiteral("F") : QStringLiteral("O%1").arg(i));
        field("sectype").setText(i == 0 ? QStringLiteral("F") : QStringLiteral("O"));
        rows.append(row);
    }
    table->appendRows(rows);
    return table;
}

}
