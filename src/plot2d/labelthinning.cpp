#include "labelthinning_p.h"

#include <algorithm>
#include <limits>

namespace {

using LabelThinning::Measure;
using LabelThinning::Overlap;
using LabelThinning::QuoteLabel;

/// Walks neighbours from left to right until so many overlaps are found, or a few more; a tick's rectangle is
/// asked for when the walk comes to it.
template <typename RectangleOfTick>
QList<Overlap> firstOverlaps(const QList<double>& ticks, const RectangleOfTick& rectangleOfTick,
    const QuoteLabel& quote, const QRect& quoteRectangle, int most)
{
    QList<Overlap> found;
    QRect lastRectangle;
    double lastValue = 0.0;
    const auto meet = [&](const QRect& rectangle, double value) {
        const Overlap overlap = LabelThinning::intersectedPair(lastRectangle, rectangle, lastValue, value);
        if (!(overlap.first > overlap.second))
            found.append(overlap);
        lastRectangle = rectangle;
        lastValue = value;
    };
    const int count = static_cast<int>(ticks.size());
    for (int i = 0; i <= count && found.size() < most; ++i) {
        if (i == quote.index)
            meet(quoteRectangle, quote.value);
        if (i < count)
            meet(rectangleOfTick(i), ticks[i]);
    }
    return found;
}

/// All overlaps where there is one at the most, else two or more: nobody asks how many.
QList<Overlap> measuredOverlaps(const QList<double>& ticks, const QuoteLabel& quote, const Measure& measure)
{
    constexpr int enough = 2;
    const QRect quoteRectangle = quote.index == -1 || ticks.isEmpty() ? QRect() : measure(quote.value);
    return firstOverlaps(
        ticks, [&](int i) { return measure(ticks[i]); }, quote, quoteRectangle, enough);
}

/// Every second tick on each side of the quote. The parity is that of the quote's slot, so that the ticks
/// next to the slot are the first to go and the pattern stays where it is from round to round.
QList<double> everySecond(const QList<double>& ticks, double quote, int parity)
{
    QList<double> kept;
    kept.reserve(ticks.size() / 2 + 1);
    for (int i = 0; i < ticks.size(); ++i) {
        const int wanted = ticks[i] < quote ? parity : 1 - parity;
        if (i % 2 == wanted)
            kept.append(ticks[i]);
    }
    return kept;
}

}

int LabelThinning::quoteIndex(const QList<double>& ticks, double quote)
{
    if (quote <= 0.0)
        return -1;
    return static_cast<int>(
        std::distance(ticks.cbegin(), std::lower_bound(ticks.cbegin(), ticks.cend(), quote)));
}

LabelThinning::Overlap LabelThinning::intersectedPair(
    const QRect& first, const QRect& second, double a, double b)
{
    return first.isValid() && second.isValid() && first.intersects(second) ? Overlap(a, b) : noOverlap;
}

QList<LabelThinning::Overlap> LabelThinning::overlaps(const QList<double>& ticks,
    const QList<QRect>& rectangles, const QuoteLabel& quote, const QRect& quoteRectangle)
{
    if (rectangles.size() != ticks.size())
        return QList<Overlap>();
    return firstOverlaps(
        ticks, [&](int i) { return rectangles[i]; }, quote, quoteRectangle, std::numeric_limits<int>::max());
}

bool LabelThinning::removeNeighbourOfQuote(
    const Overlap& overlap, const QuoteLabel& quote, QList<double>& ticks)
{
    if (overlap.first > overlap.second || !quote.drawn)
        return false;
    if (overlap.first != quote.value && overlap.second != quote.value)
        return false;

    const double neighbour = overlap.first == quote.value ? overlap.second : overlap.first;
    const auto tick = std::lower_bound(ticks.begin(), ticks.end(), neighbour);
    if (tick == ticks.end())
        return false;
    ticks.erase(tick);
    return true;
}

LabelThinning::Result LabelThinning::thinned(
    const QList<double>& candidates, const QuoteLabel& quote, const Measure& measure)
{
    Result result{candidates, quote.index};
    QuoteLabel current = quote;
    QList<Overlap> found = measuredOverlaps(candidates, current, measure);
    const auto settled = [&] {
        return found.isEmpty()
            || (found.size() == 1 && removeNeighbourOfQuote(found.first(), current, result.ticks));
    };
    if (settled())
        return result;

    const bool hasIndex = quote.index != -1;
    for (int round = 1; round < candidates.size(); ++round) {
        const auto countBefore = result.ticks.size();
        const int indexBefore = current.index;
        result.ticks = everySecond(result.ticks, quote.value, hasIndex ? current.index % 2 : 0);
        current.index = quoteIndex(result.ticks, quote.value);
        result.quoteIndex = current.index;
        // One tick on each side of the quote may stay for ever: the rounds left would find the same.
        if (result.ticks.size() == countBefore && current.index == indexBefore)
            break;
        found = measuredOverlaps(result.ticks, current, measure);
        if (settled())
            return result;
    }
    return Result();
}
