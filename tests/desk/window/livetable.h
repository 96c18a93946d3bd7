#pragma once

#include <database/record.h>

#include <QString>
#include <QVector>

/// Writes into the host's table "securities" as a feed does.
namespace LiveTable {

/// The options of a future.
QVector<Record> options(int futureIsinId);

/// Gives options the settlement of a forward and of a volatility above that of the test chains, in one go.
/// Their expiry is that of the test chains.
void price(const QVector<Record>& records, double forward, double volatilityShift);

/// Takes all prices of options away, in one go.
void takePrices(const QVector<Record>& records);

/// Puts a call and a put of each strike at the end of the table, in one go; all else as in the series'
/// options.
void addStrikes(int futureIsinId, const QVector<double>& strikes);

/// Puts a copy of a series at the end of the table, in one go; the ISIN id of its future.
int addSeries(int futureIsinId, const QString& baseCode);
/// Takes a future and its options out, in one go; the rows.
QVector<Record> removeSeries(int futureIsinId);
/// The row of a future.
Record future(int futureIsinId);

/// The current quote of a future.
void setQuote(int futureIsinId, double quote);
/// Its text, empty for none.
QString quote(int futureIsinId);

}
