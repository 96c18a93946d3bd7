#include "support/slownumbers.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <optional>
#include <vector>

namespace {

__extension__ typedef __int128 Wide;

constexpr int mantissaBits = 53;

/// |value| = mantissa * 2^exponent
struct Binary {
    std::uint64_t mantissa = 0;
    int exponent = 0;
};

/// The mantissa of 53 bits, of normal and subnormal values alike; both zeros give 0.
Binary binaryOf(double finite)
{
    Binary result;
    const double fraction = std::frexp(std::abs(finite), &result.exponent);
    result.mantissa = static_cast<std::uint64_t>(std::ldexp(fraction, mantissaBits));
    result.exponent -= mantissaBits;
    return result;
}

/// A natural number in nine-digit limbs, the lowest first.
class Natural {
public:
    explicit Natural(std::uint64_t value)
    {
        for (; value > 0; value /= limbBase)
            m_limbs.push_back(static_cast<std::uint32_t>(value % limbBase));
    }

    void multiply(std::uint32_t factor, int times)
    {
        for (; times > 0; --times)
            multiply(factor);
    }

    std::string digits() const
    {
        std::string text;
        for (auto limb = m_limbs.crbegin(); limb != m_limbs.crend(); ++limb) {
            const std::string part = std::to_string(*limb);
            text.append(text.empty() ? 0 : limbDigits - part.size(), '0');
            text += part;
        }
        return text;
    }

private:
    void multiply(std::uint32_t factor)
    {
        std::uint64_t carry = 0;
        for (std::uint32_t& limb : m_limbs) {
            const std::uint64_t product = std::uint64_t{limb} * factor + carry;
            limb = static_cast<std::uint32_t>(product % limbBase);
            carry = product / limbBase;
        }
        if (carry > 0)
            m_limbs.push_back(static_cast<std::uint32_t>(carry));
    }

    static constexpr std::uint32_t limbBase = 1000000000;
    static constexpr std::size_t limbDigits = 9;
    std::vector<std::uint32_t> m_limbs;
};

/// factor^exponent multiplied in, in powers that fit a limb.
void multiplyPower(Natural& number, std::uint32_t factor, int exponent, int atOnce)
{
    std::uint32_t power = 1;
    for (int i = 0; i < atOnce; ++i)
        power *= factor;
    number.multiply(power, exponent / atOnce);
    number.multiply(factor, exponent % atOnce);
}

void increment(std::string& digits)
{
    auto digit = digits.rbegin();
    for (; digit != digits.rend() && *digit == '9'; ++digit)
        *digit = '0';
    if (digit == digits.rend())
        digits.insert(digits.begin(), '1');
    else
        ++*digit;
}

void removeZerosAtEnd(std::string& digits)
{
    digits.erase(digits.find_last_not_of('0') + 1);
}

/// Toward zero; nothing for NaN and for what does not fit.
std::optional<std::int64_t> truncated(double value)
{
    if (!std::isfinite(value))
        return std::nullopt;
    const SlowNumbers::ExactDecimal exact = SlowNumbers::exactDecimal(value);
    if (exact.whole.size() > 19)
        return std::nullopt;
    const Wide sign = exact.negative ? -1 : 1;
    Wide whole = 0;
    for (const char digit : exact.whole)
        whole = whole * 10 + sign * (digit - '0');
    if (whole < INT64_MIN || whole > INT64_MAX)
        return std::nullopt;
    return static_cast<std::int64_t>(whole);
}

std::optional<std::int64_t> roundedToInteger(double scaled)
{
    if (scaled >= 0.0)
        return truncated(scaled + 0.5);
    const std::optional<std::int64_t> shift = truncated(scaled - 1.0);
    if (!shift)
        return std::nullopt;
    const std::optional<std::int64_t> moved = truncated(scaled - static_cast<double>(*shift) + 0.5);
    return moved ? std::optional<std::int64_t>(*moved + *shift) : std::nullopt;
}

/// Exactly 10^decimals, or the double nearest to it.
double powerOfTen(int decimals)
{
    static constexpr double powers[] = {1e-10, 1e-9, 1e-8, 1e-7, 1e-6, 1e-5, 1e-4, 1e-3, 1e-2, 1e-1, 1.0, 1e1,
        1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10};
    return powers[std::clamp(decimals, -10, 10) + 10];
}

bool isAtLeastTen(const Binary& value)
{
    constexpr std::uint64_t ten = std::uint64_t{10} << 49;
    constexpr int exponentOfTen = -49;
    return value.exponent > exponentOfTen || (value.exponent == exponentOfTen && value.mantissa >= ten);
}

/// The double nearest to a tenth, ties to the even mantissa. The value has 53 bits and is at least ten.
Binary tenthOf(const Binary& value)
{
    constexpr int moreBits = 60;
    const Wide dividend = Wide{value.mantissa} << moreBits;
    Wide quotient = dividend / 10;
    const bool isInexact = quotient * 10 != dividend;

    int dropped = 0;
    while ((quotient >> dropped) >= (Wide{1} << mantissaBits))
        ++dropped;
    const Wide half = Wide{1} << (dropped - 1);
    const Wide rest = quotient & ((Wide{1} << dropped) - 1);
    quotient >>= dropped;
    if (rest > half || (rest == half && (isInexact || quotient % 2 == 1)))
        ++quotient;
    if (quotient == (Wide{1} << mantissaBits)) {
        quotient /= 2;
        ++dropped;
    }
    return {static_cast<std::uint64_t>(quotient), value.exponent - moreBits + dropped};
}

QString localizedDigits(const std::string& digits, QChar zero)
{
    QString text;
    for (const char digit : digits)
        text += QChar(static_cast<ushort>(zero.unicode() + (digit - '0')));
    return text;
}

}

SlowNumbers::ExactDecimal SlowNumbers::exactDecimal(double finite)
{
    ExactDecimal result;
    if (finite == 0.0) {
        result.whole = "0";
        return result;
    }
    result.negative = finite < 0.0;

    Binary binary = binaryOf(finite);
    for (; binary.mantissa % 2 == 0 && binary.exponent < 0; ++binary.exponent)
        binary.mantissa /= 2;
    Natural digits(binary.mantissa);
    if (binary.exponent >= 0) {
        multiplyPower(digits, 2, binary.exponent, 29);
        result.whole = digits.digits();
        return result;
    }
    // m / 2^n is m * 5^n / 10^n.
    multiplyPower(digits, 5, -binary.exponent, 12);
    const auto decimals = static_cast<std::size_t>(-binary.exponent);
    std::string text = digits.digits();
    if (text.size() <= decimals)
        text.insert(0, decimals + 1 - text.size(), '0');
    result.whole = text.substr(0, text.size() - decimals);
    result.fraction = text.substr(text.size() - decimals);
    removeZerosAtEnd(result.fraction);
    return result;
}

SlowNumbers::ExactDecimal SlowNumbers::rounded(const ExactDecimal& exact, int decimals)
{
    const auto kept = static_cast<std::size_t>(decimals);
    if (exact.fraction.size() <= kept)
        return exact;

    std::string digits = exact.whole + exact.fraction.substr(0, kept);
    if (exact.fraction[kept] >= '5')
        increment(digits);
    ExactDecimal result;
    result.negative = exact.negative;
    result.whole = digits.substr(0, digits.size() - kept);
    result.fraction = digits.substr(digits.size() - kept);
    removeZerosAtEnd(result.fraction);
    return result;
}

QString SlowNumbers::formattedValue(double finite, int decimals)
{
    if (decimals < 0)
        return QString();
    const ExactDecimal number = rounded(exactDecimal(finite), std::min(decimals, 10));
    const bool isZero = number.whole == "0" && number.fraction.empty();
    std::string text = number.negative && !(isZero && decimals > 0) ? "-" : "";
    text += number.whole;
    if (!number.fraction.empty())
        text += '.' + number.fraction;
    return QString::fromStdString(text);
}

QString SlowNumbers::systemText(double finite, int decimals)
{
    const QLocale locale = QLocale::system();
    const ExactDecimal number = rounded(exactDecimal(finite), std::clamp(decimals, 0, 10));
    const QChar zero = QString(locale.zeroDigit()).at(0);
    QString text = localizedDigits(number.whole, zero);
    for (int position = text.size() - 3; position > 0; position -= 3)
        text.insert(position, locale.groupSeparator());
    if (number.negative)
        text.prepend(locale.negativeSign());
    if (!number.fraction.empty())
        text += locale.decimalPoint() + localizedDigits(number.fraction, zero);
    return text;
}

double SlowNumbers::roundedHalfUp(double value, int decimals)
{
    const double factor = powerOfTen(decimals);
    const std::optional<std::int64_t> integer = roundedToInteger(value * factor);
    return integer ? static_cast<double>(*integer) / factor : value;
}

double SlowNumbers::exactlyRoundedHalfUp(double value)
{
    const ExactDecimal exact = exactDecimal(value);
    std::int64_t magnitude = std::stoll(exact.whole);
    const bool isHalf = exact.fraction == "5";
    const bool isAboveHalf = !isHalf && !exact.fraction.empty() && exact.fraction.front() >= '5';
    if (isAboveHalf || (isHalf && !exact.negative))
        ++magnitude;
    return static_cast<double>(exact.negative ? -magnitude : magnitude);
}

int SlowNumbers::integerLength(double finite)
{
    if (finite == 0.0)
        return 1;
    int length = 1;
    for (Binary value = binaryOf(finite); isAtLeastTen(value); value = tenthOf(value))
        ++length;
    return length;
}

bool SlowNumbers::scaleDrawEqual(double a, double b)
{
    if (!std::isfinite(a) || !std::isfinite(b))
        return false;
    if (a == 0.0 || b == 0.0)
        return a == b;
    if ((a < 0.0) != (b < 0.0))
        return false; // They are farther apart than either is from zero.

    Binary larger = binaryOf(a);
    Binary smaller = binaryOf(b);
    if (std::abs(a) < std::abs(b))
        std::swap(larger, smaller);
    // More than a factor of two apart: the difference exceeds the smaller.
    if (larger.exponent - smaller.exponent > 1)
        return false;
    const Wide aligned = Wide{larger.mantissa} << (larger.exponent - smaller.exponent);
    return (aligned - smaller.mantissa) * 100000000 <= smaller.mantissa;
}
