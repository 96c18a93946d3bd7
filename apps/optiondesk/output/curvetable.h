#pragma once

#include <QByteArray>
#include <QPointF>
#include <QString>
#include <QVector>

class PriceBased2dPlot;

/// The samples behind a plot as a table for spreadsheets.
namespace CurveTable {

/// A curve with its title.
struct Column {
    QString title;
    QVector<QPointF> samples;
};

/// The data type of curves whose samples are the ends of bars between other curves.
constexpr int barsType = 14;

/// The visible value curves of a plot. The line at the quote, whose ends are those of the picture, and bars,
/// which tell nothing that the curves at their ends do not, are none of them.
QVector<Column> columns(const PriceBased2dPlot& plot);

/// The table as CSV (RFC 4180, UTF-8): a row of titles, then a row for each price that any curve has a sample
/// at, ascending, with the value of every curve there or an empty field. A curve with several samples at one
/// price takes as many rows, in the order of its samples.
///
/// Numbers have a decimal point whatever the locale, and the fewest digits that read back as the same double.
/// A sample whose price is not finite is left out, a value that is not finite leaves its field empty.
QByteArray csv(const QString& priceTitle, const QVector<Column>& columns);

}
