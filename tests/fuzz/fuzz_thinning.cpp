#include "fuzzinput.h"

#include <plot2d/labelthinning_p.h>

#include <algorithm>
#include <cmath>
#include <set>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    LabelThinning::QuoteLabel quote;
    quote.value = input.takeDouble();
    const auto flags = input.take<std::uint8_t>();
    quote.drawn = flags & 1;
    const double pixelsPerUnit = 1.0 + input.take<std::uint8_t>();
    const int width = 1 + input.take<std::uint8_t>();
    if (!std::isfinite(quote.value))
        quote.value = -1.0;

    // Ticks as an axis has them: ascending and within reach of integer pixels.
    std::set<double> distinct;
    for (const double value : input.takeDoubles(300)) {
        if (std::abs(value) < 1e6)
            distinct.insert(value);
    }
    const QList<double> ticks(distinct.begin(), distinct.end());
    quote.index = flags & 2 ? -1 : LabelThinning::quoteIndex(ticks, quote.value);

    long measured = 0;
    const auto measure = [&](double value) {
        ++measured;
        const double left = std::clamp(value * pixelsPerUnit, -1e8, 1e8);
        return QRect(static_cast<int>(left), 0, width, 10);
    };
    const LabelThinning::Result result = LabelThinning::thinned(ticks, quote, measure);
    FUZZ_EXPECT(std::is_sorted(result.ticks.cbegin(), result.ticks.cend()));
    FUZZ_EXPECT(
        std::includes(distinct.cbegin(), distinct.cend(), result.ticks.cbegin(), result.ticks.cend()));
    FUZZ_EXPECT(measured <= 4L * ticks.size() + 64);
    return 0;
}
