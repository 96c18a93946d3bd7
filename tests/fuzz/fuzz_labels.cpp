#include "fuzzinput.h"

#include <plot2d/ticklabels_p.h>

#include <algorithm>
#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const auto equalDigits = input.take<std::int8_t>();
    const auto majorCount = input.take<std::uint8_t>();
    QList<double> major;
    QList<double> medium;
    for (const double value : input.takeDoubles(200))
        (major.size() < majorCount % 32 ? major : medium).append(value);

    const QList<double> ticks = TickLabels::candidates(major, medium);
    FUZZ_EXPECT(std::is_sorted(ticks.cbegin(), ticks.cend()));
    FUZZ_EXPECT(std::all_of(ticks.cbegin(), ticks.cend(), [](double tick) { return std::isfinite(tick); }));

    const auto digits = TickLabels::equalDigits(ticks);
    if (digits && ticks.size() > 1)
        FUZZ_EXPECT(*digits <= 27);
    TickLabels::equalDigits(major);
    for (const int wanted : {static_cast<int>(equalDigits), digits.value_or(-1)}) {
        const int length = TickLabels::maxFractionLength(ticks, wanted);
        FUZZ_EXPECT(length >= 0 && length <= 10);
    }
    TickLabels::readTheSame(ticks, [](double value) { return QString::number(value, 'f', 2); });
    return 0;
}
