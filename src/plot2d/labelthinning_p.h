#pragma once

#include <QList>
#include <QRect>

#include <functional>
#include <utility>

/// Which labels of an axis overlap, and which of them go. Pure functions over tick values and rectangles.
namespace LabelThinning {

/// Two neighbouring labels that overlap, by their values in ascending order.
using Overlap = std::pair<double, double>;

/// No overlap: told by its first value being greater than its second.
constexpr Overlap noOverlap{1.0, -1.0};

/// The label of the current quote among those of the ticks.
struct QuoteLabel {
    double value = -1.0;
    /// The number of ticks below the quote; -1 keeps the quote out of everything.
    int index = -1;
    /// Whether the label is drawn: switched on, and the quote strictly inside the scale.
    bool drawn = false;
};

using Measure = std::function<QRect(double)>;

/// The number of ticks (ascending) below the quote; -1 for a quote of 0 or less.
int quoteIndex(const QList<double>& ticks, double quote);

/// The two values where both rectangles are valid and intersect, noOverlap otherwise.
Overlap intersectedPair(const QRect& first, const QRect& second, double a, double b);

/// The neighbours among the ticks (ascending) and the quote whose rectangles overlap, from left to right. The
/// quote's rectangle takes part whether its label is drawn or not. None where the rectangles are not one for
/// each tick.
QList<Overlap> overlaps(const QList<double>& ticks, const QList<QRect>& rectangles, const QuoteLabel& quote,
    const QRect& quoteRectangle);

/// Takes out of the ticks the one that overlaps the drawn quote's label; false, with nothing changed, where
/// the quote is not drawn or not part of the overlap, or no tick is left to take.
///
/// It is the first tick not below the overlapping value that goes, without a look at whether it is that
/// value.
bool removeNeighbourOfQuote(const Overlap& overlap, const QuoteLabel& quote, QList<double>& ticks);

/// The ticks that keep a label, and the quote's index among them.
struct Result {
    QList<double> ticks;
    int quoteIndex = -1;
};

/// Thins overlapping candidates (ascending) until the rest fit side by side.
///
/// A single overlap with the drawn quote costs one label. Otherwise every second label goes, round by round,
/// on each side of the quote counted from its slot, until no overlap is left, or a single one that costs one
/// label; when the rounds (one fewer than candidates) run out, no label is left. Each round measures the
/// quote's label, where it takes part, and then its own from the left, each once, up to the second overlap:
/// of ten thousand labels that are in each other's way only a few need a text.
Result thinned(const QList<double>& candidates, const QuoteLabel& quote, const Measure& measure);

}
