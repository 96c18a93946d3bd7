#pragma once

#include <QList>
#include <QRect>

#include <functional>
#include <utility>

namespace Plain {

using LabelPair = std::pair<double, double>;
using LabelRectangle = std::function<QRect(double)>;

/// The labels of an axis while they are chosen: the ticks, and the quote with its place among them.
struct Labels {
    QList<double> ticks;
    double quote = -1.0;
    int place = -1;
    /// The quote's label is switched on and lies within the scale.
    bool shown = false;

    /// Finds the quote's place: the first tick not below it, -1 for a quote that is not above zero.
    void findPlace();
    /// The pairs of neighbours, the quote among them, whose rectangles meet.
    QList<LabelPair> meeting(const LabelRectangle& rectangle) const;
    /// Gives up the tick that meets the quote's label; false where that is not what the pair is about.
    bool giveUpOne(const LabelPair& pair);
};

/// Leaves the labels that stand side by side: every other one goes, on both sides of the quote, until no two
/// meet.
void thin(Labels& labels, const LabelRectangle& rectangle);

}
