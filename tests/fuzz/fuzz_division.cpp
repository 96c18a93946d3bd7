#include "fuzzinput.h"

#include <plot2d/guardedscaleengine_p.h>
#include <plot2d/pricebased2dplotscaleengine.h>
#include <plot2d/scaledivision_p.h>

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const double lower = input.takeDouble();
    const double upper = input.takeDouble();
    const double step = input.take<std::uint8_t>() & 1 ? input.takeDouble() : 0.0;
    const int maxMajor = input.take<std::uint16_t>() % 301;
    const int maxMinor = input.take<std::uint8_t>() % 101;
    const double factor = input.takeDouble();

    // With a step of the caller's, Qwt itself stops at 10,000 major ticks.
    const long mostTicks = (step != 0.0 ? 10003L : 302L) * 110L;

    const GuardedScaleEngine guarded;
    const QwtScaleDiv division = guarded.divideScale(lower, upper, maxMajor, maxMinor, step);
    for (const int type : {QwtScaleDiv::MajorTick, QwtScaleDiv::MediumTick, QwtScaleDiv::MinorTick})
        FUZZ_EXPECT(division.ticks(type).size() <= mostTicks);
    FUZZ_EXPECT(std::isfinite(division.lowerBound()) && std::isfinite(division.upperBound()));

    const double price = ScaleDivision::anchorPrice(factor, 2);
    const QwtScaleDiv anchored = ScaleDivision::anchored(division, price, lower, upper);
    FUZZ_EXPECT(anchored.lowerBound() == division.lowerBound());
    if (lower < price && price < upper && !division.ticks(QwtScaleDiv::MajorTick).isEmpty()) {
        bool onPrice = false;
        for (const double tick : anchored.ticks(QwtScaleDiv::MajorTick))
            onPrice = onPrice || std::abs(tick - price) * 1e12 <= std::min(std::abs(tick), std::abs(price));
        FUZZ_EXPECT(onPrice);
    }
    PriceBased2dPlotScaleEngine(nullptr, 2, 10).divideScale(lower, upper, maxMajor, maxMinor, step);
    return 0;
}
