#pragma once

#include "plot2d/priceinterval.h"

#include <database/decimal.h>
#include <database/record.h>

#include <utility>

class SecurityColumns;
class Table;

/// What a plot reads of futures in the host's securities table.
///
/// A field of a type that its meaning does not allow throws Exception("Incorrect type conversion.").
namespace FutureLookup {

/// The future of a base code with the earliest expiry among those of anonymous boards and of a session; of
/// equal expiries the first in the table's order. An expiry that is null comes before every date. A null
/// record for a null table, an empty code, or when there is none.
Record earliestFuture(const Table* table, const SecurityColumns& columns, const QString& baseCode);

/// The quote of a future: the first of its three quotes that is not null, else the middle of the price
/// interval to five decimals. Zero for a null record, and whatever the record holds while the interval is
/// inverted or has no width: without a usable interval a plot shows no quote.
decimal quote(const Record& future, const SecurityColumns& columns, const PriceInterval& interval);

/// The bounds (lower, upper) of a future's volatility, as fractions: positive, the upper not below the
/// lower. The host's defaults stand for bounds that are null or zero, and for a record that is null, of
/// another table or no future. Bounds in the wrong order are swapped where they meet the defaults' range.
std::pair<double, double> volatilityBounds(
    const Record& future, const Table* table, const SecurityColumns& columns);

}
