#include "differential/plainthinning.h"

namespace {

bool isProper(const QRect& rectangle)
{
    return rectangle.left() <= rectangle.right() && rectangle.top() <= rectangle.bottom();
}

/// Pixels that both rectangles have.
bool meet(const QRect& a, const QRect& b)
{
    const bool sideBySide = a.right() < b.left() || b.right() < a.left();
    const bool aboveEachOther = a.bottom() < b.top() || b.bottom() < a.top();
    return isProper(a) && isProper(b) && !sideBySide && !aboveEachOther;
}

}

void Plain::Labels::findPlace()
{
    place = -1;
    if (quote <= 0.0)
        return;
    place = 0;
    while (place < ticks.size() && ticks[place] < quote)
        place = place + 1;
}

QList<Plain::LabelPair> Plain::Labels::meeting(const LabelRectangle& rectangle) const
{
    // The labels from left to right, with the quote's at its place.
    QList<double> row = ticks;
    if (place >= 0 && place <= ticks.size() && !ticks.isEmpty())
        row.insert(place, quote);
    QList<LabelPair> pairs;
    for (int i = 1; i < row.size(); ++i) {
        if (row[i - 1] <= row[i] && meet(rectangle(row[i - 1]), rectangle(row[i])))
            pairs << LabelPair(row[i - 1], row[i]);
    }
    return pairs;
}

bool Plain::Labels::giveUpOne(const LabelPair& pair)
{
    if (pair.first > pair.second || !shown)
        return false;
    double other = 0.0;
    if (pair.first == quote)
        other = pair.second;
    else if (pair.second == quote)
        other = pair.first;
    else
        return false;
    for (int i = 0; i < ticks.size(); ++i) {
        if (ticks[i] >= other) {
            ticks.removeAt(i);
            return true;
        }
    }
    return false;
}

void Plain::thin(Labels& labels, const LabelRectangle& rectangle)
{
    const QList<LabelPair> first = labels.meeting(rectangle);
    if (first.isEmpty() || (first.size() == 1 && labels.giveUpOne(first[0])))
        return;
    const int rounds = labels.ticks.size() - 1;
    const bool hasPlace = labels.place != -1;
    for (int round = 1; round <= rounds; ++round) {
        const int parity = hasPlace ? labels.place % 2 : 0;
        QList<double> kept;
        for (int i = 0; i < labels.ticks.size(); ++i) {
            const bool isBelow = labels.ticks[i] < labels.quote;
            const int wanted = isBelow ? parity : 1 - parity;
            if (i % 2 == wanted)
                kept << labels.ticks[i];
        }
        labels.ticks = kept;
        labels.findPlace();
        const QList<LabelPair> left = labels.meeting(rectangle);
        if (left.isEmpty() || (left.size() == 1 && labels.giveUpOne(left[0])))
            return;
    }
    labels.ticks.clear();
    labels.place = -1;
}
