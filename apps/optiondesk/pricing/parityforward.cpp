#include "parityforward.h"

#include "median.h"
#include "paritypairs.h"

#include <algorithm>
#include <cmath>

namespace Pricing {

namespace {

// Strikes to each side of the one nearest the money.
constexpr std::ptrdiff_t sideStrikes = 2;

}

std::optional<double> parityForward(const OptionSeries& series, double discount)
{
    const std::vector<ParityPair> pairs = parityPairs(series, decimal::zero);
    const auto nearest
        = std::min_element(pairs.begin(), pairs.end(), [](const ParityPair& a, const ParityPair& b) {
              return std::abs(a.callMinusPut) < std::abs(b.callMinusPut);
          });
    const auto first = nearest - std::min(sideStrikes, nearest - pairs.begin());
    const auto last = nearest + std::min(sideStrikes + 1, pairs.end() - nearest);
    std::vector<double> forwards;
    for (auto pair = first; pair != last; ++pair)
        forwards.push_back(pair->strike + pair->callMinusPut / discount);
    const std::optional<double> forward = median(forwards);
    return forward && *forward > 0.0 ? forward : std::nullopt;
}

}
