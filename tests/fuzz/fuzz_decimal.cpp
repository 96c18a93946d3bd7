#include "fuzzinput.h"

#include <database/decimal.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

/// Numbers of any text and any double, and the ends of the range.
decimal takeDecimal(FuzzInput& input)
{
    const int kind = input.takeBelow(5);
    const auto number = input.take<qint64>();
    switch (kind) {
    case 0: {
        const double value = input.takeDouble();
        return decimal::fromDouble(value, input.take<std::int8_t>());
    }
    case 1:
        return decimal::fromUnits(number, input.take<std::int8_t>());
    case 2:
        return number < 0 ? decimal::minimum : decimal::maximum;
    case 3:
        return decimal::fromUnits(number, 18) * decimal::fromUnits(input.take<qint64>(), 5);
    default:
        return decimal::fromUnits(number, 0) + decimal::fromUnits(input.take<qint64>(), 18);
    }
}

void expectText(const decimal& value)
{
    bool ok = false;
    const QString text = value.toString();
    FUZZ_EXPECT(decimal::fromString(text, &ok) == value && ok);
    FUZZ_EXPECT(std::strtod(text.toLatin1().constData(), nullptr) == value.toDouble());
}

void expectRounded(const decimal& value, short decimals)
{
    const decimal rounded = value.rounded(decimals);
    FUZZ_EXPECT(rounded.rounded(decimals) == rounded);
    const bool saturates = rounded == decimal::maximum || rounded == decimal::minimum;
    const decimal off = rounded < value ? value - rounded : rounded - value;
    const decimal unit = decimal::fromUnits(1, decimals);
    FUZZ_EXPECT(saturates || off + off <= unit);
}

bool isModest(const decimal& value)
{
    static const decimal limit = decimal::fromUnits(5000000000, 0);
    return -limit < value && value < limit;
}

void expectArithmetic(const decimal& a, const decimal& b)
{
    FUZZ_EXPECT(a + b == b + a && a * b == b * a && a - b == -(b - a) && -(-a) == a);
    FUZZ_EXPECT((a < b) == (b > a) && (a == b) == (a.compare(b) == 0) && a.compare(b) == -b.compare(a));
    FUZZ_EXPECT(decimal::minimum <= a && a <= decimal::maximum && a - a == decimal::zero);
    FUZZ_EXPECT(a * decimal::fromUnits(1, 0) == a);
    if (!isModest(a) || !isModest(b))
        return;
    FUZZ_EXPECT(a + b - b == a);
    const double product = a.toDouble() * b.toDouble();
    FUZZ_EXPECT(std::abs((a * b).toDouble() - product) <= std::abs(product) * 1e-14 + 1e-18);
}

void expectOfText(FuzzInput& input)
{
    static const char characters[] = "0123456789.-+e x";
    QString text;
    for (int length = input.takeBelow(60); length > 0; --length)
        text += QLatin1Char(characters[input.takeBelow(16)]);
    bool ok = false;
    const decimal value = decimal::fromString(text, &ok);
    FUZZ_EXPECT(ok || value.isZero());
    const bool isPlain = std::none_of(text.cbegin(), text.cend(), [](QChar character) {
        return character == QLatin1Char('e') || character == QLatin1Char('x')
            || character == QLatin1Char(' ');
    });
    FUZZ_EXPECT(isPlain || !ok);
    const double number = std::strtod(text.toLatin1().constData(), nullptr);
    if (ok && std::abs(number) < 1.7e20)
        FUZZ_EXPECT(std::abs(value.toDouble() - number) <= std::abs(number) * 1e-15 + 1e-18);
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const decimal a = takeDecimal(input);
    const decimal b = takeDecimal(input);
    const short decimals = input.take<std::int8_t>();
    expectText(a);
    expectRounded(a, decimals);
    expectArithmetic(a, b);

    const double number = input.takeDouble();
    const decimal nearest = decimal::fromDouble(number, decimal::maxDecimals);
    if (std::abs(number) < 1.7e20)
        FUZZ_EXPECT(std::abs(nearest.toDouble() - number) <= std::abs(number) * 3e-16 + 1e-18);
    expectOfText(input);
    return 0;
}
