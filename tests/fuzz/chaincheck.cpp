#include "chaincheck.h"

#include "fuzzinput.h"

#include <cmath>
#include <tuple>

namespace {

bool isNumber(const std::optional<double>& value)
{
    return !value || (std::isfinite(*value) && *value > 0.0);
}

bool isMultiple(const decimal& value, const decimal& step)
{
    const double steps = value.toDouble() / step.toDouble();
    // Beyond that a double says nothing of the fraction.
    return steps > 1e11 || std::abs(steps - std::round(steps)) < 1e-4;
}

void expectQuote(const OptionQuote& quote, const decimal& step)
{
    FUZZ_EXPECT(quote.strike > decimal::zero && isMultiple(quote.strike, step));
    for (const std::optional<decimal>& price : {quote.bid, quote.ask, quote.last, quote.settlement})
        FUZZ_EXPECT(!price || (*price >= decimal::zero && isMultiple(*price, step)));
    FUZZ_EXPECT(quote.volume.value_or(0) >= 0 && quote.openInterest.value_or(0) >= 0);
    FUZZ_EXPECT(isNumber(quote.volatility));
    const std::optional<double> price = quote.price();
    FUZZ_EXPECT(!price || (std::isfinite(*price) && *price >= 0.0));
}

bool ascends(const OptionQuote& a, const OptionQuote& b)
{
    return a.strike < b.strike
        || (a.strike == b.strike && a.type == OptionType::Call && b.type == OptionType::Put);
}

bool isSame(const OptionQuote& a, const OptionQuote& b)
{
    const auto values = [](const OptionQuote& quote) {
        return std::tie(quote.type, quote.strike, quote.bid, quote.ask, quote.last, quote.settlement,
            quote.volume, quote.openInterest);
    };
    return values(a) == values(b);
}

}

void ChainCheck::expectWhole(const OptionChain& chain)
{
    FUZZ_EXPECT(!chain.baseCode.isEmpty() && !chain.series.isEmpty());
    FUZZ_EXPECT(chain.priceStep > decimal::zero && chain.decimals >= 0 && chain.decimals <= 18);
    FUZZ_EXPECT(chain.priceStep.rounded(chain.decimals) == chain.priceStep);
    for (int i = 0; i < chain.series.size(); ++i) {
        const OptionSeries& series = chain.series.at(i);
        FUZZ_EXPECT(!series.quotes.isEmpty() && isNumber(series.forward));
        FUZZ_EXPECT(i == 0 || chain.series.at(i - 1).expiry < series.expiry);
        for (int k = 0; k < series.quotes.size(); ++k) {
            expectQuote(series.quotes.at(k), chain.priceStep);
            FUZZ_EXPECT(k == 0 || ascends(series.quotes.at(k - 1), series.quotes.at(k)));
        }
    }
}

void ChainCheck::expectSame(const OptionChain& a, const OptionChain& b)
{
    FUZZ_EXPECT(a.asOf == b.asOf && a.priceStep == b.priceStep && a.decimals == b.decimals);
    FUZZ_EXPECT(a.series.size() == b.series.size());
    for (int i = 0; i < a.series.size(); ++i) {
        const OptionSeries& first = a.series.at(i);
        const OptionSeries& second = b.series.at(i);
        FUZZ_EXPECT(first.expiry == second.expiry && first.forward == second.forward);
        FUZZ_EXPECT(first.quotes.size() == second.quotes.size());
        for (int k = 0; k < first.quotes.size(); ++k)
            FUZZ_EXPECT(isSame(first.quotes.at(k), second.quotes.at(k)));
    }
}
