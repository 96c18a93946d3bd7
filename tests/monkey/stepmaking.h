#pragma once

#include "monkey/monkeyrandom.h"
#include "monkey/steps.h"

/// Steps at random: of each kind, with everything in them chosen.
namespace Monkey::Make {

/// What the driver is mostly at for a while.
enum class Mood { Anything, PanCanvas, DragAxis, TurnWheel, Curves, Legend, Market };

// The user, the window and the event loop.
Step press(Random& random, Mood mood);
Step move(Random& random, Mood mood);
Step release(Random& random, Mood mood);
Step doubleClick(Random& random, Mood mood);
Step turn(Random& random, Mood mood);
Step typeKey(Random& random, Mood mood);
Step moveCursor(Random& random, Mood mood);
Step resize(Random& random, Mood mood);
Step showWindow(Random& random, Mood mood);
Step handleEvents(Random& random, Mood mood);
Step grab(Random& random, Mood mood);
Step fireTimers(Random& random, Mood mood);

// The host.
Step addCurve(Random& random, Mood mood);
Step setSamples(Random& random, Mood mood);
Step setMarkerSamples(Random& random, Mood mood);
Step retitle(Random& random, Mood mood);
Step showCurve(Random& random, Mood mood);
Step changeLook(Random& random, Mood mood);
Step attachCurve(Random& random, Mood mood);
Step deleteCurve(Random& random, Mood mood);
Step toggleEntry(Random& random, Mood mood);
Step storeLegend(Random& random, Mood mood);
Step restoreLegend(Random& random, Mood mood);
Step restoreUnchecked(Random& random, Mood mood);
Step replaceLegend(Random& random, Mood mood);
Step setScale(Random& random, Mood mood);
Step letQwtScale(Random& random, Mood mood);
Step switchOne(Random& random, Mood mood);
Step setInterval(Random& random, Mood mood);
Step setQuote(Random& random, Mood mood);
Step setMarket(Random& random, Mood mood);
Step moveQuoteLine(Random& random, Mood mood);
Step convert(Random& random, Mood mood);
Step rescale(Random& random, Mood mood);
Step refresh(Random& random, Mood mood);
Step changeStrikes(Random& random, Mood mood);
Step evaluate(Random& random, Mood mood);
Step remove(Random& random, Mood mood);
Step newPicker(Random& random, Mood mood);
Step track(Random& random, Mood mood);
Step listen(Random& random, Mood mood);
Step startOver(Random& random, Mood mood);

}
