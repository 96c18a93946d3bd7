#include "common/market.h"

#include <database/database.h>
#include <database/icore.h>
#include <database/table.h>
#include <directory/securitiestable.h>

void Market::open()
{
    constexpr short decimals = 5;
    Database* const database = ICore::instance()->database();
    database->dropTable(SecuritiesTable::securitiesName);
    Table* const table
        = database->createTable(SecuritiesTable::securitiesName, SecuritiesTable::securitiesColumns());

    const Record future = table->createRow();
    table->value(future, table->columnIndex("isin_id")).setInt32(isinId);
    table->value(future, table->columnIndex("board_id")).setInt32(boardId);
    table->value(future, table->columnIndex("price_step"))
        .setDecimal(decimal::fromDouble(priceStep, decimals));
    table->value(future, table->columnIndex("cur_kotir")).setDecimal(decimal::fromDouble(quote, decimals));
    table->appendRows({future});
}

QVector<QPointF> Market::smile(double level)
{
    constexpr int perPoint = 4;
    constexpr double atTheMoney = 0.252;
    constexpr double bend = 0.0006;
    QVector<QPointF> samples;
    for (int i = 0; i <= int(highest - lowest) * perPoint; ++i) {
        const double strike = lowest + double(i) / perPoint;
        const double distance = strike - quote;
        samples.append({strike, level + atTheMoney + bend * distance * distance});
    }
    return samples;
}
