#pragma once

#include "window/curveset.h"

/// The curves of a series' position: profit and loss over the price of its future.
namespace PositionCurves {

/// The prices to evaluate the position at: ascending, over all strikes of series and legs and the
/// break-evens, densest among the visible ones, with the corners of the profit at expiry.
QVector<double> prices(const ShownSeries& series, const PriceRange& visible);

/// Profit at expiry and today at the prices; those without samples are left out.
QVector<CurveSamples> smooth(const ShownSeries& series, const QVector<double>& prices);

/// The break-evens as marked points at a profit of zero, both ends of a range of them; no points where there
/// are none.
CurveSamples breakEvens(const ShownSeries& series);

/// The prices to show first: those of the series, widened to the corners and break-evens that are not far
/// away.
PriceRange visiblePrices(const ShownSeries& series);

}
