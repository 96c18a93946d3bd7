#pragma once

#include <QPointF>

#include <array>
#include <optional>

class PriceBased2dPlotCurve;

/// The vertical line at the current quote, drawn from below to above the visible values.
namespace QuoteLine {

using Ends = std::array<QPointF, 2>;

/// The lower and the upper end of the line at a price: a tenth of the range beyond it on either side, a range
/// without width being widened by one on either side first. The lower end is at least minus half the
/// largest double and the upper one at most half of it, so that they are finite; a range beyond one of these
/// is drawn upside down. Nothing for an inverted range, for NaN, for a range of one infinity, and for a price
/// that is not finite.
std::optional<Ends> ends(double low, double high, double price);

/// The price at which a line stands whose two samples agree on it; nothing for a curve of another number of
/// samples and for a price that is negative or not finite.
std::optional<double> price(const PriceBased2dPlotCurve& line);

}
