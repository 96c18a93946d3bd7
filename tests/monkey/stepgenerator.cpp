#include "monkey/stepgenerator.h"

#include "monkey/monkeyrandom.h"
#include "monkey/stepmaking.h"

#include <iterator>

namespace Monkey {

namespace {

using Make::Mood;

constexpr int stepsOfMood = 24;

struct Choice {
    int weight;
    Step (*make)(Random&, Mood);
};

constexpr Choice anything[] = {{40, Make::press}, {80, Make::move}, {40, Make::release},
    {8, Make::doubleClick}, {60, Make::turn}, {30, Make::typeKey}, {10, Make::moveCursor}, {25, Make::resize},
    {12, Make::showWindow}, {50, Make::handleEvents}, {5, Make::grab}, {10, Make::fireTimers},
    {35, Make::addCurve}, {30, Make::setSamples}, {12, Make::setMarkerSamples}, {12, Make::retitle},
    {15, Make::showCurve}, {10, Make::changeLook}, {10, Make::attachCurve}, {25, Make::deleteCurve},
    {30, Make::toggleEntry}, {5, Make::storeLegend}, {8, Make::restoreLegend}, {8, Make::restoreUnchecked},
    {4, Make::replaceLegend}, {40, Make::setScale}, {2, Make::letQwtScale}, {25, Make::switchOne},
    {12, Make::setInterval}, {15, Make::setQuote}, {15, Make::setMarket}, {10, Make::moveQuoteLine},
    {10, Make::convert}, {10, Make::rescale}, {30, Make::refresh}, {15, Make::changeStrikes},
    {10, Make::evaluate}, {3, Make::remove}, {12, Make::newPicker}, {15, Make::track}, {12, Make::listen},
    {20, Make::startOver}};
constexpr Choice drags[]
    = {{10, Make::press}, {50, Make::move}, {10, Make::release}, {4, Make::handleEvents}};
constexpr Choice turns[] = {{50, Make::turn}, {5, Make::moveCursor}, {4, Make::handleEvents}};
constexpr Choice curves[] = {{20, Make::addCurve}, {25, Make::setSamples}, {10, Make::setMarkerSamples},
    {10, Make::retitle}, {10, Make::showCurve}, {5, Make::changeLook}, {5, Make::attachCurve},
    {15, Make::deleteCurve}, {20, Make::refresh}, {5, Make::evaluate}, {5, Make::track}};
constexpr Choice legends[] = {{30, Make::toggleEntry}, {10, Make::press}, {10, Make::release},
    {5, Make::storeLegend}, {5, Make::restoreLegend}, {5, Make::restoreUnchecked}, {2, Make::replaceLegend},
    {10, Make::retitle}, {10, Make::addCurve}, {5, Make::listen}, {8, Make::handleEvents}};
constexpr Choice market[]
    = {{15, Make::setInterval}, {15, Make::setQuote}, {15, Make::setMarket}, {10, Make::moveQuoteLine},
        {10, Make::convert}, {10, Make::rescale}, {25, Make::changeStrikes}, {10, Make::evaluate},
        {15, Make::refresh}, {10, Make::setScale}, {5, Make::fireTimers}, {10, Make::track}};

template <std::size_t count> Step choose(const Choice (&choices)[count], Random& random, Mood mood)
{
    int sum = 0;
    for (const Choice& choice : choices)
        sum += choice.weight;
    int left = random.integer(1, sum);
    const Choice* choice = choices;
    for (; left > choice->weight; ++choice)
        left -= choice->weight;
    return choice->make(random, mood);
}

Mood moodAt(std::uint64_t seed, int number)
{
    constexpr std::uint64_t seriesOfMoods = std::uint64_t{1} << 40;
    Random random(seed, seriesOfMoods + static_cast<std::uint64_t>(number / stepsOfMood));
    return random.of({Mood::Anything, Mood::Anything, Mood::PanCanvas, Mood::PanCanvas, Mood::DragAxis,
        Mood::DragAxis, Mood::TurnWheel, Mood::TurnWheel, Mood::Curves, Mood::Legend, Mood::Market});
}

}

Step stepAt(std::uint64_t seed, int number)
{
    const Mood mood = moodAt(seed, number);
    Random random(seed, static_cast<std::uint64_t>(number));
    if (number % stepsOfMood == 0 && random.chance(2))
        return Make::startOver(random, mood);
    if (mood == Mood::Anything || random.chance(3))
        return choose(anything, random, mood);
    switch (mood) {
    case Mood::PanCanvas:
    case Mood::DragAxis:
        return choose(drags, random, mood);
    case Mood::TurnWheel:
        return choose(turns, random, mood);
    case Mood::Curves:
        return choose(curves, random, mood);
    case Mood::Legend:
        return choose(legends, random, mood);
    default:
        return choose(market, random, mood);
    }
}

}
