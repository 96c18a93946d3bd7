#pragma once

#include "monkey/signalwatch.h"
#include "monkey/snapshot.h"
#include "monkey/steps.h"

#include <QString>

/// What always holds of a plot, whatever was done to it. Each function says what is broken; an empty text
/// means that it holds.
namespace Monkey::Invariants {

/// Bounds are finite, the lower one less; ticks are finite and ascend; there are no more than the axis asks
/// for where the step is Qwt's choice, and no more than Qwt makes at the most where it is the host's.
QString scale(const Snapshot::Scale& scale);

/// A quote line has the host's samples, or two finite ones at one price, the lower first.
QString quoteLine(const Snapshot::QuoteLine& line);

/// The labels are candidates, in ascending order, and do not overlap.
QString labels(const Snapshot::Labels& labels);

/// Each curve has one entry of its title, and all widgets are the legend's.
QString legend(const Snapshot::Legend& legend);

/// A vertical scale that the user has moved has switched the auto-scale off, or is the one that the
/// auto-scale finds.
QString followedValues(const Snapshot& before, const Snapshot& after);

/// What the user does leaves labels of the scale of this moment. They need not be the very ones that would be
/// chosen anew: Qwt settles its margins, by a few pixels, only when it lays out afterwards.
QString followedLabels(const Snapshot::Labels& labels);

/// A turn of the wheel and the end of a drag on the canvas say that scales have moved, a drag on an axis does
/// not; what moves the mouse alone switches the auto-scale off. Entries are checked by the user or by what is
/// restored.
QString signalsOf(const Step& step, const Signals& heard, bool pricesMoved);

/// Whether two moments show different prices.
bool pricesMoved(const Snapshot& before, const Snapshot& after);

/// All that need no signals, after a step; `byUser` when nobody but the user has done anything.
QString broken(const Snapshot& before, const Snapshot& after, bool byUser);

}
