#include "fuzzinput.h"

#include <plot2d/fuzzyequality_p.h>
#include <plot2d/halfuprounding_p.h>
#include <plot2d/plot2dcommon.h>
#include <plot2d/valuerange_p.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double holdsEveryWhole = 9007199254740992.0; // 2^53

void expectWhole(double value)
{
    const double whole = HalfUpRounding::toWhole(value);
    FUZZ_EXPECT(std::isfinite(whole) == std::isfinite(value));
    if (!std::isfinite(value))
        return;
    FUZZ_EXPECT(whole == std::trunc(whole));
    if (std::abs(value) < holdsEveryWhole / 4.0)
        FUZZ_EXPECT(whole - value <= 0.5000000000000001 && value - whole < 0.5000000000000001);
    else
        FUZZ_EXPECT(std::abs(whole - value) <= 2.0);

    const auto narrow = HalfUpRounding::toInteger<qint32>(value);
    const auto wide = HalfUpRounding::toInteger<qint64>(value);
    FUZZ_EXPECT(!narrow || (wide && *narrow == *wide));
    FUZZ_EXPECT(!wide || static_cast<double>(*wide) == whole);
    FUZZ_EXPECT(wide.has_value() == (whole >= -9223372036854775808.0 && whole < 9223372036854775808.0));
    FUZZ_EXPECT(narrow.has_value() == (whole >= -2147483648.0 && whole < 2147483648.0));
}

void expectRounded(double value, int decimals)
{
    const double rounded = Plot2dCommon::roundValue(value, decimals);
    FUZZ_EXPECT(std::isnan(value) == std::isnan(rounded));
    FUZZ_EXPECT(std::isfinite(value) == std::isfinite(rounded));
    if (!std::isfinite(value))
        return;
    const double unit = std::pow(10.0, -std::clamp(decimals, -10, 10));
    FUZZ_EXPECT(std::abs(rounded - value) <= unit * 0.5 + std::abs(value) * 1e-15);
}

void expectIntegerLength(double value)
{
    if (std::isinf(value))
        return;
    const int length = Plot2dCommon::integerLength(value);
    FUZZ_EXPECT(length >= 1 && length <= 310 && length == Plot2dCommon::integerLength(-value));
    // Ten times a tenth is not always the same number, so next to a power of ten it is one or the other.
    if (std::abs(value) >= 1.0)
        FUZZ_EXPECT(std::abs(length - 1 - std::log10(std::abs(value)) + 0.5) <= 0.5000001);
    else
        FUZZ_EXPECT(length == 1);
}

void expectSnapped(double price, double step)
{
    const double snapped = ValueRange::snapped(price, step);
    if (std::isfinite(price) && step > 1e-12 && std::abs(price / step) < holdsEveryWhole / 4.0
        && std::isfinite(snapped))
        FUZZ_EXPECT(std::abs(snapped - price) <= step * 0.5 + std::abs(price) * 1e-15);
    else
        FUZZ_EXPECT(!std::isfinite(price) || std::isfinite(snapped));
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const int decimals = input.take<std::int8_t>();
    const double a = input.takeDouble();
    const double b = input.takeDouble();

    expectWhole(a);
    expectRounded(a, decimals);
    expectIntegerLength(a);
    expectSnapped(a, b);
    FUZZ_EXPECT(Plot2dCommon::scaleDrawFuzzyCompare(a, b) == Plot2dCommon::scaleDrawFuzzyCompare(b, a));
    FUZZ_EXPECT(isFuzzyEqual(a, b) == isFuzzyEqual(b, a));
    FUZZ_EXPECT(!isFuzzyEqual(a, b) || Plot2dCommon::scaleDrawFuzzyCompare(a, b));
    if (a <= b && std::abs(a) < holdsEveryWhole / 4.0 && std::abs(b) < holdsEveryWhole / 4.0)
        FUZZ_EXPECT(HalfUpRounding::toWhole(a) <= HalfUpRounding::toWhole(b));
    return 0;
}
