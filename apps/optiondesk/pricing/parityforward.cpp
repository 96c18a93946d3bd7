#include "parityforward.h"

#include "median.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace Pricing {

namespace {

// Strikes to each side of the one nearest the money.
constexpr std::ptrdiff_t sideStrikes = 2;

struct Parity {
    double strike;
    double callMinusPut;
};

std::optional<double> usablePrice(const OptionQuote& quote)
{
    const std::optional<double> price = quote.price();
    return price && std::isfinite(*price) && *price > 0.0 ? price : std::nullopt;
}

// Of the strikes with both prices, ascending.
std::vector<Parity> parities(const OptionSeries& series)
{
    std::vector<Parity> result;
    for (int i = 0; i + 1 < series.quotes.size(); ++i) {
        const OptionQuote& call = series.quotes[i];
        const OptionQuote& put = series.quotes[i + 1];
        if (call.type != OptionType::Call || put.type != OptionType::Put || call.strike != put.strike)
            continue;
        const std::optional<double> callPrice = usablePrice(call);
        const std::optional<double> putPrice = usablePrice(put);
        if (callPrice && putPrice)
            result.push_back({call.strike.toDouble(), *callPrice - *putPrice});
    }
    return result;
}

}

std::optional<double> parityForward(const OptionSeries& series)
{
    const std::vector<Parity> candidates = parities(series);
    const auto nearest = std::min_element(candidates.begin(), candidates.end(),
        [](const Parity& a, const Parity& b) { return std::abs(a.callMinusPut) < std::abs(b.callMinusPut); });
    const auto first = nearest - std::min(sideStrikes, nearest - candidates.begin());
    const auto last = nearest + std::min(sideStrikes + 1, candidates.end() - nearest);
    std::vector<double> forwards;
    for (auto parity = first; parity != last; ++parity)
        forwards.push_back(parity->strike + parity->callMinusPut);
    const std::optional<double> forward = median(forwards);
    return forward && *forward > 0.0 ? forward : std::nullopt;
}

}
