#include "futurelookup_p.h"

#include "fieldreading_p.h"
#include "fuzzyequality_p.h"
#include "plot2d/securitycolumns.h"

#include <c_api/common.h>
#include <database/table.h>
#include <directory/boarddirectory.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr char futureType = 'F';

bool isFuture(const Record& record, const SecurityColumns& columns)
{
    const Field type(FieldReading::fieldOf(record, columns[SecurityColumn::SecType]));
    return type.toChar() == futureType;
}

bool isCandidate(const Record& record, const SecurityColumns& columns, const QString& baseCode)
{
    using FieldReading::fieldOf;

    // The ids are read first, of every row: a column of the wrong type is reported whatever the row is.
    const int stockId = FieldReading::toInt(fieldOf(record, columns[SecurityColumn::StockId]));
    const int boardId = FieldReading::toInt(fieldOf(record, columns[SecurityColumn::BoardId]));
    const int sessionId = FieldReading::toInt(fieldOf(record, columns[SecurityColumn::SessId]));

    return isFuture(record, columns)
        && Field(fieldOf(record, columns[SecurityColumn::BaseCode])).toString() == baseCode
        && BoardDirectory::i()->isAnonymById(stockId, boardId) && sessionId != 0;
}

}

Record FutureLookup::earliestFuture(
    const Table* table, const SecurityColumns& columns, const QString& baseCode)
{
    Record chosen;
    if (!table || baseCode.isEmpty())
        return chosen;

    const auto expiry = [&columns](const Record& record) {
        return FieldReading::toMoment(FieldReading::fieldOf(record, columns[SecurityColumn::ExpDate]));
    };
    const IndexList rows = table->masterIndex();
    for (const Record& record : rows) {
        if (!isCandidate(record, columns, baseCode))
            continue;
        if (chosen.isNull() || expiry(record) < expiry(chosen))
            chosen = record;
    }
    return chosen;
}

decimal FutureLookup::quote(
    const Record& future, const SecurityColumns& columns, const PriceInterval& interval)
{
    if (future.isNull() || interval.minPrice > interval.maxPrice
        || commonFuzzyCompare(interval.minPrice, interval.maxPrice))
        return decimal::zero;

    for (const SecurityColumn column :
        {SecurityColumn::CurKotirReal, SecurityColumn::CurKotir, SecurityColumn::OldKotir}) {
        const FieldConstValue field = FieldReading::fieldOf(future, columns[column]);
        if (!field.isNull())
            return FieldReading::toDecimal(field);
    }
    return decimal::fromDouble((interval.minPrice + interval.maxPrice) * 0.5, 5);
}

std::pair<double, double> FutureLookup::volatilityBounds(
    const Record& future, const Table* table, const SecurityColumns& columns)
{
    if (future.isNull() || future.table() != table || !isFuture(future, columns))
        return {gc_dVolatMinDefault, gc_dVolatMaxDefault};

    double low = FieldReading::toDouble(FieldReading::fieldOf(future, columns[SecurityColumn::VolatMin]));
    double high = FieldReading::toDouble(FieldReading::fieldOf(future, columns[SecurityColumn::VolatMax]));
    if (low > high && !isFuzzyZero(low) && !isFuzzyZero(high) && high >= gc_dVolatMinDefault
        && gc_dVolatMaxDefault >= low)
        std::swap(low, high);
    if (isFuzzyZero(low))
        low = gc_dVolatMinDefault;
    if (isFuzzyZero(high))
        high = gc_dVolatMaxDefault;

    // A volatility of zero has no meaning: pricing divides by it.
    constexpr double floor = 1e-5;
    low = std::max(floor, low);
    return {low, std::max(low, high)};
}
