#include "paritypairs.h"

#include "seriesanalysis.h"

#include <cmath>

namespace Pricing {

namespace {

std::optional<double> usablePrice(const OptionQuote& quote)
{
    const std::optional<double> price = quote.price();
    return price && std::isfinite(*price) && *price > 0.0 ? price : std::nullopt;
}

}

std::vector<ParityPair> parityPairs(const OptionSeries& series, const decimal& priceStep)
{
    // The standard deviation of a uniform distribution is its width over sqrt(12).
    const double rootTwelve = std::sqrt(12.0);
    std::vector<ParityPair> result;
    for (int i = 0; i + 1 < series.quotes.size(); ++i) {
        const OptionQuote& call = series.quotes[i];
        const OptionQuote& put = series.quotes[i + 1];
        if (call.type != OptionType::Call || put.type != OptionType::Put || call.strike != put.strike)
            continue;
        const std::optional<double> callPrice = usablePrice(call);
        const std::optional<double> putPrice = usablePrice(put);
        if (!callPrice || !putPrice)
            continue;
        const double error
            = std::hypot(priceUncertainty(call, priceStep), priceUncertainty(put, priceStep)) / rootTwelve;
        result.push_back({call.strike.toDouble(), *callPrice - *putPrice, error});
    }
    return result;
}

}
