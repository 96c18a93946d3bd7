#pragma once

#include "host/directory/tablerows.h"

#include <basic_models/strikebybasecodemodel.h>
#include <directory/securitiestable.h>

#include <QStringList>

#include <memory>

namespace TestSupport {

/// The fields of a row that strike models read; an invalid variant is null.
struct OptionRow {
    QVariant strike = number("100");
    QVariant baseCode = QStringLiteral("AMBER");
    QVariant sectype = QStringLiteral("O");
    QVariant optionType = QStringLiteral("C");
    QVariant session = 1;
    QVariant stockId = 1;
    QVariant boardId = 2;
    QVariant futIsinId = 3;
};

inline std::unique_ptr<Table> makeSecurities()
{
    return std::make_unique<Table>(SecuritiesTable::securitiesName, SecuritiesTable::securitiesColumns());
}

inline Record makeOption(Table& table, const OptionRow& row)
{
    return makeRow(table,
        {{"strike", row.strike}, {"base_code", row.baseCode}, {"sectype", row.sectype},
            {"option_type", row.optionType}, {"sess_id", row.session}, {"stock_id", row.stockId},
            {"board_id", row.boardId}, {"fut_isin_id", row.futIsinId}});
}

inline Record makeStrike(Table& table, const char* strike)
{
    OptionRow row;
    row.strike = number(strike);
    return makeOption(table, row);
}

inline QVector<Record> makeStrikes(Table& table, std::initializer_list<const char*> strikes)
{
    QVector<Record> rows;
    for (const char* strike : strikes)
        rows.append(makeStrike(table, strike));
    return rows;
}

/// The model's strikes as text, with a blank between them.
inline QString textOf(const StrikeByBaseCodeModel& model)
{
    QStringList strikes;
    for (int row = 0; row < model.rowCount(); ++row)
        strikes << model.strike(row).toString();
    return strikes.join(QLatin1Char(' '));
}

}
