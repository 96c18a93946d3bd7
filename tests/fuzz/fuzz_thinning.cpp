#include "fuzzinput.h"

#include <plot2d/labelthinning_p.h>

#include <algorithm>
#include <cmath>

namespace {

/// Labels of one width that stand where their values are.
struct Row {
    double pixelsPerUnit = 1.0;
    int width = 1;

    QRect operator()(double value) const
    {
        const double left = std::clamp(value * pixelsPerUnit, -1e8, 1e8);
        return QRect(static_cast<int>(left), 0, width, 10);
    }
};

QList<LabelThinning::Overlap> overlaps(
    const QList<double>& ticks, const LabelThinning::QuoteLabel& quote, const Row& row)
{
    QList<QRect> rectangles;
    std::transform(ticks.cbegin(), ticks.cend(), std::back_inserter(rectangles), row);
    return LabelThinning::overlaps(ticks, rectangles, quote, quote.index < 0 ? QRect() : row(quote.value));
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    LabelThinning::QuoteLabel quote;
    quote.value = input.takeDouble();
    const auto flags = input.take<std::uint8_t>();
    quote.drawn = flags & 1;
    Row row;
    row.pixelsPerUnit = 1.0 + input.take<std::uint8_t>();
    row.width = 1 + input.take<std::uint8_t>();
    if (!std::isfinite(quote.value))
        quote.value = -1.0;

    // Ticks as an axis has them: ascending and within reach of integer pixels. Few inputs have many of them.
    static FuzzDoubles<100> values;
    input.takeDoubles(values, (flags & 4) != 0 ? values.values.size() : 20);
    double* const first = values.values.data();
    double* last
        = std::remove_if(first, first + values.count, [](double value) { return !(std::abs(value) < 1e6); });
    std::sort(first, last);
    last = std::unique(first, last);
    const QList<double> ticks(first, last);
    quote.index = flags & 2 ? -1 : LabelThinning::quoteIndex(ticks, quote.value);

    long measured = 0;
    const auto measure = [&](double value) {
        ++measured;
        return row(value);
    };
    const LabelThinning::Result result = LabelThinning::thinned(ticks, quote, measure);
    FUZZ_EXPECT(std::is_sorted(result.ticks.cbegin(), result.ticks.cend()));
    FUZZ_EXPECT(std::includes(ticks.cbegin(), ticks.cend(), result.ticks.cbegin(), result.ticks.cend()));
    FUZZ_EXPECT(measured <= 4L * ticks.size() + 64);

    LabelThinning::QuoteLabel left = quote;
    left.index = result.quoteIndex < 0 ? -1 : LabelThinning::quoteIndex(result.ticks, quote.value);
    FUZZ_EXPECT(overlaps(result.ticks, left, row).isEmpty());
    FUZZ_EXPECT(result.ticks.size() == ticks.size() || !overlaps(ticks, quote, row).isEmpty());
    return 0;
}
