#include "labelthinning_p.h"

#include <algorithm>

namespace {

using LabelThinning::Measure;
using LabelThinning::Overlap;
using LabelThinning::QuoteLabel;

QList<Overlap> measuredOverlaps(const QList<double>& ticks, const QuoteLabel& quote, const Measure& measure)
{
    QList<QRect> rectangles;
    rectangles.reserve(ticks.size());
    std::transform(ticks.cbegin(), ticks.cend(), std::back_inserter(rectangles), measure);
    const QRect quoteRectangle = quote.index == -1 || ticks.isEmpty() ? QRect() : measure(quote.value);
    return LabelThinning::overlaps(ticks, rectangles, quote, quoteRectangle);
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
    QList<Overlap> found;
    const int count = static_cast<int>(ticks.size());
    if (count == 0 || rectangles.size() != count)
        return found;

    const auto add = [&found](const QRect& first, const QRect& second, double a, double b) {
        const Overlap overlap = intersectedPair(first, second, a, b);
        if (!(overlap.first > overlap.second))
            found.append(overlap);
    };
    if (quote.index == 0)
        add(quoteRectangle, rectangles[0], quote.value, ticks[0]);
    for (int i = 1; i < count; ++i) {
        if (i == quote.index) {
            add(rectangles[i - 1], quoteRectangle, ticks[i - 1], quote.value);
            add(quoteRectangle, rectangles[i], quote.value, ticks[i]);
        } else {
            add(rectangles[i - 1], rectangles[i], ticks[i - 1], ticks[i]);
        }
    }
    if (quote.index == count)
        add(rectangles[count - 1], quoteRectangle, ticks[count - 1], quote.value);
    return found;
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
