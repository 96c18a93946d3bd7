#include "fuzzinput.h"

#include <plot2d/guardedscaleengine_p.h>
#include <plot2d/pricebased2dplotscaleengine.h>
#include <plot2d/scaledivision_p.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr QwtScaleDiv::TickType tickTypes[]
    = {QwtScaleDiv::MajorTick, QwtScaleDiv::MediumTick, QwtScaleDiv::MinorTick};

bool isWithin(const QList<double>& ticks, double lower, double upper)
{
    // Qwt brings ticks within a millionth of the range to its ends.
    const double margin = (upper - lower) * 1e-5 + std::max(std::abs(lower), std::abs(upper)) * 1e-14;
    return std::all_of(ticks.cbegin(), ticks.cend(),
        [&](double tick) { return lower - margin <= tick && tick <= upper + margin; });
}

void expectTicks(const QwtScaleDiv& division, double step)
{
    // With a step of the caller's, Qwt itself stops at 10,000 major ticks.
    const long mostTicks = (step != 0.0 ? 10003L : 302L) * 110L;
    FUZZ_EXPECT(std::isfinite(division.lowerBound()) && std::isfinite(division.upperBound()));
    const double lower = std::min(division.lowerBound(), division.upperBound());
    const double upper = std::max(division.lowerBound(), division.upperBound());
    for (const QwtScaleDiv::TickType type : tickTypes) {
        const QList<double> ticks = division.ticks(type);
        FUZZ_EXPECT(ticks.size() <= mostTicks);
        // A tick of a step that is wider than the range may come to lie beside it.
        FUZZ_EXPECT(std::abs(step) > upper - lower || isWithin(ticks, lower, upper));
    }
}

void expectAnchored(const QwtScaleDiv& division, double price, double lower, double upper)
{
    const QwtScaleDiv anchored = ScaleDivision::anchored(division, price, lower, upper);
    FUZZ_EXPECT(
        anchored.lowerBound() == division.lowerBound() && anchored.upperBound() == division.upperBound());
    const QList<double> major = anchored.ticks(QwtScaleDiv::MajorTick);
    if (!(lower < price && price < upper) || division.ticks(QwtScaleDiv::MajorTick).isEmpty())
        return;
    FUZZ_EXPECT(std::any_of(major.cbegin(), major.cend(), [price](double tick) {
        return std::abs(tick - price) * 1e12 <= std::min(std::abs(tick), std::abs(price));
    }));
    for (const QwtScaleDiv::TickType type : tickTypes)
        FUZZ_EXPECT(anchored.ticks(type).size() <= division.ticks(type).size());
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const double lower = input.takeDouble();
    const double upper = input.takeDouble();
    double step = input.takeFlag() ? input.takeDouble() : 0.0;
    // Thousands of ticks hardly teach what a few dozen do not, but take the time of many inputs: few have
    // them.
    const bool isLarge = input.takeBelow(64) == 63;
    const int maxMajor = input.take<std::uint16_t>() % (isLarge ? 301 : 31);
    const int maxMinor = input.takeBelow(isLarge && step == 0.0 ? 101 : 6);
    constexpr double usualSteps = 20.0;
    if (!isLarge && step != 0.0 && std::abs((upper - lower) / step) > usualSteps)
        step = (upper - lower) / usualSteps;
    const double factor = input.takeDouble();

    const GuardedScaleEngine guarded;
    const QwtScaleDiv division = guarded.divideScale(lower, upper, maxMajor, maxMinor, step);
    expectTicks(division, step);
    expectAnchored(division, ScaleDivision::anchorPrice(factor, 2), lower, upper);

    const PriceBased2dPlotScaleEngine engine(nullptr, 2, 10);
    const QwtScaleDiv same = engine.divideScale(lower, upper, maxMajor, maxMinor, step);
    FUZZ_EXPECT(same.lowerBound() == division.lowerBound() && same.upperBound() == division.upperBound());
    FUZZ_EXPECT(same.ticks(QwtScaleDiv::MajorTick) == division.ticks(QwtScaleDiv::MajorTick));
    return 0;
}
