#include "fuzzinput.h"

#include <plot2d/plot2dcommon.h>
#include <plot2d/ticklabels_p.h>

#include <cmath>
#include <limits>

namespace {

/// The leading digits that two numbers of n digits share, without a tolerance.
int sharedDigits(long long a, long long b, int n)
{
    if (a == b)
        return 0;
    for (int k = 1; k < n; ++k) {
        a /= 10;
        b /= 10;
        if (a == b)
            return n - k;
    }
    return 0;
}

void expectInIntegerPart(FuzzInput& input)
{
    const auto a = input.take<std::int64_t>();
    const auto b = input.take<std::int64_t>();
    const int n = input.take<std::int8_t>();
    const int digits = TickLabels::equalDigitsInIntegerPart(a, b, n);
    FUZZ_EXPECT(digits >= -1 && digits < std::max(n, 1));
    FUZZ_EXPECT(digits == TickLabels::equalDigitsInIntegerPart(b, a, n));

    // Up to here a tenth, a hundredth and so on is further from a whole number than the tolerance.
    constexpr long long exact = 10000000;
    const long long small = std::abs(a % exact);
    const long long other = std::abs(b % exact);
    const int length = Plot2dCommon::integerLength(static_cast<double>(std::max(small, other)));
    FUZZ_EXPECT(
        TickLabels::equalDigitsInIntegerPart(small, other, length) == sharedDigits(small, other, length));
}

void expectOfPair(double a, double b)
{
    const int inFraction = TickLabels::equalDigitsInFractionPart(a, b);
    FUZZ_EXPECT(inFraction >= -1 && inFraction <= 10);
    FUZZ_EXPECT(a < b || inFraction == -1);

    QList<double> pair{a, b};
    const auto digits = TickLabels::equalDigits(pair);
    if (!digits)
        return;
    FUZZ_EXPECT(a < b && !TickLabels::equalDigits({b, a}));
    FUZZ_EXPECT(*digits == std::numeric_limits<int>::min() || (*digits >= 0 && *digits <= 27));
    const int length = TickLabels::maxFractionLength(pair, *digits);
    FUZZ_EXPECT(length >= 0 && length <= 10 && (length == 0 || *digits >= 0));
    FUZZ_EXPECT(length
        == std::max(
            TickLabels::maxFractionLength({a}, *digits), TickLabels::maxFractionLength({b}, *digits)));
}

void expectIntegerPart(double value)
{
    const double whole = TickLabels::fuzzyIntegerPart(value);
    FUZZ_EXPECT(std::isfinite(value) == std::isfinite(whole));
    if (std::isfinite(value))
        FUZZ_EXPECT(whole == std::trunc(whole) && std::abs(whole - value) < 1.0);
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    expectInIntegerPart(input);
    const double a = input.takeDouble();
    const double b = input.takeDouble();
    expectIntegerPart(a);
    expectOfPair(a, b);
    const double price = input.takePrice();
    expectOfPair(price, input.takePrice());
    return 0;
}
