#pragma once

#include "plot2d/priceinterval.h"

#include <database/decimal.h>

#include <QList>
#include <QVector>

#include <optional>
#include <utility>

/// The prices at which curves are evaluated, and the interval that they span. Pure functions.
namespace PricePoints {

/// What a strike model says of its strikes.
struct StrikeRange {
    int count = 0;
    decimal lowest;
    decimal highest;
    /// The smallest distance between neighbouring strikes.
    double minStep = 0.0;
};

/// The interval of the strikes, its step rounded to the instrument's decimals. The reset value for fewer than
/// two strikes, negative (unknown) decimals, zero or inverted bounds, and a step that does not fit: of two
/// strikes it must be their distance, of more it must be smaller than that.
PriceInterval interval(const StrikeRange& strikes, int decimals);

/// The prices from, from + step, ... up to the last one below or fuzzily equal to `to`, by repeated addition.
///
/// Empty unless 0 < from < to and 0 < step <= to - from (fuzzily); empty for more than 100,000 steps, for
/// infinities and NaN, and where a step is too small to move the price.
QList<double> progression(double from, double to, double step);

/// A visible range of prices.
struct View {
    double low = 0.0;
    double high = 0.0;
};

/// The strikes around a view: the last one left of it, else the first of all, and the first one right of it,
/// else the last of all. A pair of neighbours that straddles the whole view, and one with a strike that is
/// not positive, sets neither. Nothing when the strikes do not ascend, and when the left one is not below the
/// right one.
std::optional<std::pair<decimal, decimal>> bracket(const QVector<decimal>& strikes, const View& view);

/// The points of a progression at minStep with every cell from lo up to hi cut into equal parts, so that
/// about a hundred points lie between lo and hi. The points as they are where that many lie there already.
QList<double> densified(const QList<double>& base, double lo, double hi, double minStep);

}
