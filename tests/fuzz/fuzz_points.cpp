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
    // A hundred thousand steps, of which one and a half units in the last place move a price by one, and up
    // to the end that is only fuzzily beyond, of ranges hardly wider than that.
    FUZZ_EXPECT(points.size() <= 2 * 150000 + 2);
    const bool isModest = from > 1e-6 && from < to && to < 1e12 && step > 1e-9 * to && step < to - from
        && (to - from) / step < 1000.0;
    FUZZ_EXPECT(!isModest || !points.isEmpty());
    if (points.isEmpty())
        return;
    for (int i = 1; i < points.size(); ++i)
        FUZZ_EXPECT(points[i] == points[i - 1] + step);
    FUZZ_EXPECT(from > 0.0 && from < to && points.first() == from && ascends(points));
    FUZZ_EXPECT(points.last() < to || isFuzzyEqual(points.last(), to));
    const double next = points.last() + step;
    FUZZ_EXPECT(next > to && !isFuzzyEqual(next, to));
}

double cellsOf(double lo, double hi, double step)
{
    return step == 0.0 ? 0.0 : (hi - lo) / step;
}

/// How many points each cell between two prices is cut by: none where a hundred cells lie there already.
int cutsOfCell(double lo, double hi, double step)
{
    const double cells = cellsOf(lo, hi, step);
    if (!(cells > 0.0 && cells < 101.0))
        return 0;
    return static_cast<int>(std::ceil(100.0 / std::max(1.0, std::floor(cells))));
}

void expectCut(const QList<double>& points, const QList<double>& base, double lo, double hi, double step)
{
    const int cuts = cutsOfCell(lo, hi, step);
    int next = 0;
    for (const double point : base) {
        FUZZ_EXPECT(next < points.size() && points[next] == point);
        ++next;
        const bool isBefore = point < lo && !isFuzzyEqual(point, lo);
        if (isBefore || !(point < hi) || isFuzzyEqual(point, hi))
            continue;
        const double tolerance = 1e-12 * (point + step);
        for (int i = 1; i <= cuts; ++i, ++next)
            FUZZ_EXPECT(next < points.size()
                && std::abs(points[next] - (point + i * (step / (cuts + 1)))) <= tolerance);
    }
    FUZZ_EXPECT(next == points.size());
}

void expectDensified(const QList<double>& base, double lo, double hi, double step)
{
    const QList<double> points = PricePoints::densified(base, lo, hi, step);
    FUZZ_EXPECT(points.size() >= base.size() && points.size() <= base.size() * 102);
    // A part of a cell that is lost beside 1 is no part of one step.
    const double cells = cellsOf(lo, hi, step);
    if (!(cells > 0.0 && cells < 1e-9))
        expectCut(points, base, lo, hi, step);
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

/// Of strikes that lie well apart, with a step that the decimals show.
bool isModest(const PricePoints::StrikeRange& range, int decimals)
{
    const double lowest = range.lowest.toDouble();
    const double highest = range.highest.toDouble();
    const double width = highest - lowest;
    const bool stepFits = range.count == 2 ? range.minStep == width : range.minStep < 0.999 * width;
    return range.count >= 2 && decimals >= 0 && lowest > 1e-3 && width > 1e-6 * highest && stepFits
        && range.minStep > 1e-9 && range.minStep > std::pow(10.0, -decimals);
}

void expectIntervalOf(const PricePoints::StrikeRange& range, int decimals)
{
    const PriceInterval interval = PricePoints::interval(range, decimals);
    FUZZ_EXPECT(interval.valid || !isModest(range, decimals));
    if (!interval.valid) {
        FUZZ_EXPECT(interval == PriceInterval());
        return;
    }
    FUZZ_EXPECT(range.count >= 2 && decimals >= 0);
    FUZZ_EXPECT(interval.minPrice == range.lowest.toDouble());
    FUZZ_EXPECT(interval.maxPrice == range.highest.toDouble());
    FUZZ_EXPECT(interval.minPrice < interval.maxPrice && interval.minStep > 0.0
        && interval.minStep <= (interval.maxPrice - interval.minPrice) * (1.0 + 1e-9) + 1.0);
    const double rounding = 0.5 * std::pow(10.0, -std::min(decimals, int(decimal::maxDecimals)));
    FUZZ_EXPECT(std::abs(interval.minStep - range.minStep) <= rounding * 1.001 + 1e-12 * range.minStep);
}

void expectInterval(FuzzInput& input)
{
    PricePoints::StrikeRange range;
    range.count = input.take<std::int8_t>();
    range.lowest = decimal::fromDouble(input.takePrice(), 5);
    range.highest = decimal::fromDouble(input.takePrice(), 5);
    range.minStep = input.takeDouble();
    const int decimals = input.take<std::int8_t>();
    expectIntervalOf(range, decimals);

    // A step that fits, which hardly an input has.
    range.minStep = range.highest.toDouble() - range.lowest.toDouble();
    if (range.count != 2)
        range.minStep /= 4.0;
    expectIntervalOf(range, decimals);
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
