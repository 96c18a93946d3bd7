#include "fuzzinput.h"

#include <plot2d/fuzzyequality_p.h>
#include <plot2d/pricepoints_p.h>

#include <algorithm>
#include <cmath>

namespace {

bool ascends(const QList<double>& points)
{
    return std::adjacent_find(points.cbegin(), points.cend(), [](double a, double b) { return !(a < b); })
        == points.cend();
}

void expectProgression(const QList<double>& points, double from, double to, double step)
{
    FUZZ_EXPECT(points.size() <= 100002);
    if (points.isEmpty())
        return;
    FUZZ_EXPECT(from > 0.0 && from < to && points.first() == from && ascends(points));
    FUZZ_EXPECT(points.last() < to || isFuzzyEqual(points.last(), to));
    const double next = points.last() + step;
    FUZZ_EXPECT(next > to && !isFuzzyEqual(next, to));
}

void expectDensified(const QList<double>& base, double lo, double hi, double step)
{
    const QList<double> points = PricePoints::densified(base, lo, hi, step);
    FUZZ_EXPECT(points.size() >= base.size() && points.size() <= base.size() * 102);
    if (points.isEmpty() || points.size() == base.size())
        return;
    FUZZ_EXPECT(points.first() == base.first());
    FUZZ_EXPECT(points.last() < base.last() + step && std::isfinite(points.last()));
    if (std::is_sorted(points.cbegin(), points.cend()))
        FUZZ_EXPECT(std::includes(points.cbegin(), points.cend(), base.cbegin(), base.cend()));
    // A step that is not far from the distance of doubles is cut into parts that are none.
    else
        FUZZ_EXPECT(step < base.last() * 1e-10);
}

void expectBracket(const QVector<decimal>& strikes, const PricePoints::View& view)
{
    const auto bracket = PricePoints::bracket(strikes, view);
    if (!bracket)
        return;
    FUZZ_EXPECT(bracket->first < bracket->second);
    FUZZ_EXPECT(strikes.contains(bracket->first) && strikes.contains(bracket->second));
}

/// Of strikes that ascend, all of them above zero: the one before the first visible strike, and the one after
/// the last; where none is visible, or none lies beside, the ends.
void expectBracketOfAscending(const QVector<decimal>& strikes, const PricePoints::View& view)
{
    const auto lowest = std::find_if(strikes.cbegin(), strikes.cend(),
        [&](const decimal& strike) { return !(strike.toDouble() < view.low); });
    const auto behind = std::find_if(strikes.cbegin(), strikes.cend(),
        [&](const decimal& strike) { return strike.toDouble() > view.high; });
    const bool isVisible = lowest < behind;
    const decimal lo = isVisible && lowest != strikes.cbegin() ? *std::prev(lowest) : strikes.first();
    const decimal hi = isVisible && behind != strikes.cend() ? *behind : strikes.last();
    const auto bracket = PricePoints::bracket(strikes, view);
    FUZZ_EXPECT(bracket.has_value() == (lo < hi));
    FUZZ_EXPECT(!bracket || (bracket->first == lo && bracket->second == hi));
}

void expectInterval(FuzzInput& input)
{
    PricePoints::StrikeRange range;
    range.count = input.take<std::int8_t>();
    range.lowest = decimal::fromDouble(input.takePrice(), 5);
    range.highest = decimal::fromDouble(input.takePrice(), 5);
    range.minStep = input.takeDouble();
    const PriceInterval interval = PricePoints::interval(range, input.take<std::int8_t>());
    if (interval.valid)
        FUZZ_EXPECT(interval.minPrice < interval.maxPrice && interval.minStep > 0.0
            && interval.minStep <= (interval.maxPrice - interval.minPrice) * (1.0 + 1e-9) + 1.0);
    else
        FUZZ_EXPECT(interval == PriceInterval());
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const double from = input.takeDouble();
    const double to = input.takeDouble();
    double step = input.takeDouble();
    const double lo = input.takeDouble();
    const double hi = input.takeDouble();
    // Long progressions hardly teach what short ones do not, but take the time of many: few inputs have them.
    constexpr double usualSteps = 40.0;
    if (input.takeBelow(64) != 63 && step > 0.0 && (to - from) / step > usualSteps)
        step = (to - from) / usualSteps;

    const QList<double> points = PricePoints::progression(from, to, step);
    expectProgression(points, from, to, step);
    if (points.size() < 2000)
        expectDensified(points, lo, hi, step);

    expectInterval(input);
    static FuzzDoubles<20> values;
    input.takeDoubles(values);
    QVector<decimal> strikes;
    strikes.reserve(int(values.size()));
    for (const double strike : values)
        strikes.append(decimal::fromDouble(strike, 5));
    expectBracket(strikes, {lo, hi});
    std::sort(strikes.begin(), strikes.end());
    expectBracket(strikes, {lo, hi});
    strikes.erase(std::remove_if(strikes.begin(), strikes.end(),
                      [](const decimal& strike) { return !(strike.toDouble() > 1e-3); }),
        strikes.end());
    if (!strikes.isEmpty() && !std::isnan(lo) && !std::isnan(hi))
        expectBracketOfAscending(strikes, {lo, hi});
    return 0;
}
