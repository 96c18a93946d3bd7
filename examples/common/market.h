#pragma once

#include <QPointF>
#include <QVector>

/// The made-up market of the examples: one future in the host's table "securities", without a feed.
namespace Market {

/// The future's ids, by which a plot finds it.
constexpr int isinId = 10;
constexpr int boardId = 2;
constexpr double quote = 92.5;
constexpr double priceStep = 0.5;
/// The lowest and the highest strike.
constexpr double lowest = 80.0;
constexpr double highest = 105.0;

/// Makes the table, anew if it is there.
void open();

/// Volatilities, as fractions, over the strikes; a level raises them all.
QVector<QPointF> smile(double level = 0.0);

}
