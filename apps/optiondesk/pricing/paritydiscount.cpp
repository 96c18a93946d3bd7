#include "paritydiscount.h"

#include "median.h"
#include "parityforward.h"
#include "paritypairs.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <vector>

namespace Pricing {

namespace {

using Pairs = std::vector<ParityPair>;

constexpr std::size_t mostPairs = 40;
constexpr std::size_t fewestPairs = 5;
// Of the forward.
constexpr double farthest = 0.25;
constexpr double lowestDiscount = 0.5;
constexpr double highestDiscount = 1.05;
// In standard errors.
constexpr double outlying = 4.0;
constexpr double significant = 4.0;
// The standard deviation of a normal distribution in units of its median absolute deviation.
constexpr double normalDeviation = 1.4826;
// Of an exact price, relative to the strike.
constexpr double smallestError = 1e-12;

// A line call - put = -discount * (strike - origin.strike) + origin.callMinusPut.
struct Line {
    ParityPair origin;
    double discount = 1.0;

    double residual(const ParityPair& pair) const
    {
        return pair.callMinusPut - origin.callMinusPut + discount * (pair.strike - origin.strike);
    }
};

// The nearest to the money, as one walks away from it.
Pairs pairsNear(double money, Pairs pairs)
{
    const auto distance = [money](const ParityPair& pair) { return std::abs(pair.strike - money); };
    pairs.erase(std::remove_if(pairs.begin(), pairs.end(),
                    [&](const ParityPair& pair) { return distance(pair) > farthest * money; }),
        pairs.end());
    std::stable_sort(pairs.begin(), pairs.end(),
        [&](const ParityPair& a, const ParityPair& b) { return distance(a) < distance(b); });
    pairs.resize(std::min(pairs.size(), mostPairs));
    for (ParityPair& pair : pairs)
        pair.error = std::max(pair.error, smallestError * pair.strike);
    return pairs;
}

void appendSlope(const ParityPair& a, const ParityPair& b, std::vector<double>* slopes)
{
    if (a.strike != b.strike)
        slopes->push_back((a.callMinusPut - b.callMinusPut) / (b.strike - a.strike));
}

// Of the medians of slopes and distances; nothing where all pairs are at one strike.
std::optional<Line> medianLine(const Pairs& pairs, const std::optional<double>& forward)
{
    std::vector<double> slopes;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        if (forward)
            appendSlope({*forward, 0.0, 0.0}, pairs[i], &slopes);
        for (std::size_t j = 0; j < i && !forward; ++j)
            appendSlope(pairs[j], pairs[i], &slopes);
    }
    const std::optional<double> slope = median(slopes);
    if (!slope)
        return std::nullopt;
    Line line{{forward.value_or(pairs.front().strike), 0.0, 0.0}, *slope};
    if (!forward) {
        std::vector<double> heights;
        for (const ParityPair& pair : pairs)
            heights.push_back(line.residual(pair));
        line.origin.callMinusPut = median(heights).value_or(0.0);
    }
    return line;
}

Pairs agreeing(const Pairs& pairs, const Line& line)
{
    const auto distance
        = [&line](const ParityPair& pair) { return std::abs(line.residual(pair)) / pair.error; };
    std::vector<double> distances;
    std::transform(pairs.begin(), pairs.end(), std::back_inserter(distances), distance);
    const double scatter = std::max(1.0, normalDeviation * median(distances).value_or(0.0));
    Pairs result;
    std::copy_if(pairs.begin(), pairs.end(), std::back_inserter(result),
        [&](const ParityPair& pair) { return distance(pair) <= outlying * scatter; });
    return result;
}

ParityPair centre(const Pairs& pairs)
{
    ParityPair sum;
    double weights = 0.0;
    for (const ParityPair& pair : pairs) {
        const double weight = 1.0 / (pair.error * pair.error);
        sum.strike += weight * pair.strike;
        sum.callMinusPut += weight * pair.callMinusPut;
        weights += weight;
    }
    return {sum.strike / weights, sum.callMinusPut / weights, 0.0};
}

// Least squares, of a line whose origin is known.
struct FittedLine {
    FittedLine(const ParityPair& origin, const Pairs& pairs, std::size_t parameters);

    Line line;
    double error = 0.0;
    // The farthest strike's distance from the origin.
    double reach = 0.0;
};

FittedLine::FittedLine(const ParityPair& origin, const Pairs& pairs, std::size_t parameters)
    : line{origin, 1.0}
{
    double squares = 0.0, products = 0.0, chiSquare = 0.0;
    for (const ParityPair& pair : pairs) {
        const double weight = 1.0 / (pair.error * pair.error);
        const double distance = origin.strike - pair.strike;
        squares += weight * distance * distance;
        products += weight * distance * (pair.callMinusPut - origin.callMinusPut);
        reach = std::max(reach, std::abs(distance));
    }
    line.discount = products / squares;
    for (const ParityPair& pair : pairs) {
        const double distance = line.residual(pair) / pair.error;
        chiSquare += distance * distance;
    }
    const double freedom = static_cast<double>(pairs.size() - parameters);
    error = std::sqrt(std::max(1.0, chiSquare / freedom) / squares);
}

bool contradictsOne(const FittedLine& fit, double priceStep)
{
    const double difference = std::abs(fit.line.discount - 1.0);
    return difference > significant * fit.error && difference * fit.reach > priceStep;
}

}

double parityDiscount(
    const OptionSeries& series, const decimal& priceStep, const std::optional<double>& forward)
{
    const std::optional<double> money = forward ? forward : parityForward(series);
    if (!money || !std::isfinite(*money) || *money <= 0.0)
        return 1.0;
    const Pairs pairs = pairsNear(*money, parityPairs(series, priceStep));
    const std::optional<Line> median = medianLine(pairs, forward);
    if (!median)
        return 1.0;
    const Pairs used = agreeing(pairs, *median);
    if (used.size() < fewestPairs)
        return 1.0;
    const FittedLine fit(forward ? ParityPair{*forward, 0.0, 0.0} : centre(used), used, forward ? 1 : 2);
    const double discount = fit.line.discount;
    const bool isSane = discount >= lowestDiscount && discount <= highestDiscount;
    return isSane && contradictsOne(fit, priceStep.toDouble()) ? discount : 1.0;
}

}
