#pragma once

#include "chain/optionchain.h"

#include <database/record.h>

#include <QStringList>

#include <map>

/// What the table knows of a series, without its options.
struct StoredSeries {
    /// The future's ISIN id; with chainBoardId it names the instrument to a plot.
    int futureIsinId = 0;
    QString baseCode;
    /// Invalid where it is not known.
    QDate expiry;
    /// The day of the prices, invalid where it is not known.
    QDate asOf;
    std::optional<double> forward;
    /// Step and decimals of the prices; positive, and 0 to 18.
    decimal priceStep;
    short decimals = 2;
    int optionCount = 0;
};

/// Reads stored chains back from the host's table "securities". Rows of other boards, and rows that an
/// import cannot have written, are passed over; without a table nothing is stored.
namespace ChainStore {

/// The base codes of all stored series, sorted, each once.
QStringList baseCodes();

/// All series, by base code, then by expiry.
QVector<StoredSeries> series();

/// The series of a base code, ascending by expiry, one of no expiry first.
QVector<StoredSeries> series(const QString& baseCode);

/// One series by its future; empty without such a future.
std::optional<StoredSeries> seriesById(int futureIsinId);

/// What the row of a future says of its series, without the number of its options; empty for any other row.
std::optional<StoredSeries> seriesOf(const Record& row);

/// The options of a series, ascending by strike, the call first; with the series' expiry and forward.
/// No quotes and no expiry without such a future.
OptionSeries options(int futureIsinId);

/// A series with its options.
struct WholeSeries {
    StoredSeries stored;
    /// As options() gives them.
    OptionSeries options;
};

/// Several series by their futures, in one pass over the table; those that are not stored are left out.
std::map<int, WholeSeries> wholeSeries(const QVector<int>& futureIsinIds);

/// All series of a base code that have options; empty if there is none. The day is the latest of the
/// series' days, the price step the smallest of theirs, the decimals the largest of theirs.
std::optional<OptionChain> chain(const QString& baseCode);

}
