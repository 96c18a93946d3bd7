#include "database/decimal.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

__extension__ typedef __int128 int128;
__extension__ typedef unsigned __int128 uint128;

constexpr uint128 largestMagnitude = ~uint128(0) >> 1;
constexpr quint64 unitsOfOne = 1000000000000000000ULL;

constexpr quint64 powersOfTen[] = {1ULL, 10ULL, 100ULL, 1000ULL, 10000ULL, 100000ULL, 1000000ULL, 10000000ULL,
    100000000ULL, 1000000000ULL, 10000000000ULL, 100000000000ULL, 1000000000000ULL, 10000000000000ULL,
    100000000000000ULL, 1000000000000000ULL, 10000000000000000ULL, 100000000000000000ULL, unitsOfOne};

quint64 powerOfTen(int exponent)
{
    return powersOfTen[std::clamp(exponent, 0, int(decimal::maxDecimals))];
}

short clampedDecimals(short decimals)
{
    return std::clamp<short>(decimals, 0, decimal::maxDecimals);
}

/// The quotient rounded, halves up.
uint128 dividedAndRounded(uint128 dividend, quint64 divisor)
{
    const uint128 rest = dividend % divisor;
    return dividend / divisor + (rest >= divisor - rest ? 1 : 0);
}

/// dividend / 2^bits rounded, halves up; the dividend is below 2^127.
uint128 shiftedAndRounded(uint128 dividend, int bits)
{
    if (bits > 127)
        return 0;
    return (dividend + (uint128(1) << (bits - 1))) >> bits;
}

/// a * b / 10^18 rounded, halves up; largestMagnitude if it is more than that.
uint128 scaledProduct(uint128 a, uint128 b)
{
    const quint64 left[2] = {quint64(a), quint64(a >> 64)};
    const quint64 right[2] = {quint64(b), quint64(b >> 64)};
    quint64 product[4] = {};
    for (int i = 0; i < 2; ++i) {
        quint64 carry = 0;
        for (int j = 0; j < 2; ++j) {
            const uint128 sum = uint128(left[i]) * right[j] + product[i + j] + carry;
            product[i + j] = quint64(sum);
            carry = quint64(sum >> 64);
        }
        product[i + 2] = carry;
    }
    quint64 rest = 0;
    for (int i = 3; i >= 0; --i) {
        const uint128 dividend = (uint128(rest) << 64) | product[i];
        product[i] = quint64(dividend / unitsOfOne);
        rest = quint64(dividend % unitsOfOne);
    }
    const uint128 quotient = (uint128(product[1]) << 64) | product[0];
    if (product[3] != 0 || product[2] != 0 || quotient >= largestMagnitude)
        return largestMagnitude;
    return quotient + (rest >= unitsOfOne - rest ? 1 : 0);
}

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

/// Reads decimal digits from a position on and moves it behind them.
class DigitReader {
public:
    DigitReader(const QString& text, int position)
        : m_text(text)
        , m_position(position)
    {
    }

    int position() const { return m_position; }
    bool atEnd() const { return m_position == m_text.size(); }
    bool atDigit() const { return !atEnd() && isDigit(m_text[m_position]); }
    unsigned digit() { return m_text[m_position++].unicode() - unsigned('0'); }

    /// Whether a decimal point with a digit behind it was there and was passed.
    bool passPoint()
    {
        if (m_position + 1 >= m_text.size() || m_text[m_position] != QLatin1Char('.')
            || !isDigit(m_text[m_position + 1]))
            return false;
        ++m_position;
        return true;
    }

private:
    const QString& m_text;
    int m_position;
};

/// The digits before the point, in units; anything from 2e20 on counts as 2e20, which is out of range.
uint128 readWhole(DigitReader& reader)
{
    constexpr uint128 tooLarge = uint128(200) * unitsOfOne;
    uint128 whole = 0;
    while (reader.atDigit())
        whole = std::min(whole * 10 + reader.digit(), tooLarge);
    return whole * unitsOfOne;
}

uint128 readFraction(DigitReader& reader)
{
    uint128 fraction = 0;
    quint64 unit = unitsOfOne / 10;
    for (; unit > 0 && reader.atDigit(); unit /= 10)
        fraction += uint128(reader.digit()) * unit;
    if (reader.atDigit() && reader.digit() >= 5)
        ++fraction;
    while (reader.atDigit())
        reader.digit();
    return fraction;
}

}

struct decimal::Units {
    static int128 of(const decimal& value)
    {
        return static_cast<int128>((uint128(quint64(value.m_high)) << 64) | value.m_low);
    }

    static uint128 magnitude(const decimal& value)
    {
        return value.m_high < 0 ? static_cast<uint128>(-of(value)) : static_cast<uint128>(of(value));
    }

    static decimal make(bool negative, uint128 magnitude)
    {
        const auto count = static_cast<int128>(std::min(magnitude, largestMagnitude));
        const auto bits = static_cast<uint128>(negative ? -count : count);
        return decimal(qint64(quint64(bits >> 64)), quint64(bits));
    }

    static decimal make(int128 count)
    {
        return make(count < 0, count < 0 ? ~static_cast<uint128>(count) + 1 : static_cast<uint128>(count));
    }
};

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
namespace {

// Two QVariants that hold equal numbers are equal only with this; Qt 6 finds the operators itself.
const bool comparableInVariants = QMetaType::registerComparators<decimal>();

}
#endif

const decimal decimal::zero;
const decimal decimal::minimum(std::numeric_limits<qint64>::min(), 1);
const decimal decimal::maximum(std::numeric_limits<qint64>::max(), std::numeric_limits<quint64>::max());

decimal decimal::fromDouble(double value, short decimals)
{
    if (!std::isfinite(value))
        return zero;
    const bool negative = std::signbit(value);
    const double magnitude = std::abs(value);
    if (magnitude >= 2e20)
        return negative ? minimum : maximum;

    int exponent = 0;
    const double fraction = std::frexp(magnitude, &exponent);
    constexpr int mantissaBits = std::numeric_limits<double>::digits;
    const uint128 mantissa = quint64(std::ldexp(fraction, mantissaBits));
    exponent -= mantissaBits;
    if (exponent >= 0)
        return Units::make(negative, (mantissa << exponent) * unitsOfOne);

    const short places = clampedDecimals(decimals);
    const uint128 count = shiftedAndRounded(mantissa * powerOfTen(places), -exponent);
    return Units::make(negative, count * powerOfTen(maxDecimals - places));
}

decimal decimal::fromUnits(qint64 count, short decimals)
{
    return Units::make(int128(count) * powerOfTen(maxDecimals - clampedDecimals(decimals)));
}

decimal decimal::fromString(const QString& text, bool* ok)
{
    const bool negative = text.startsWith(QLatin1Char('-'));
    const bool isSigned = negative || text.startsWith(QLatin1Char('+'));
    DigitReader reader(text, isSigned ? 1 : 0);
    const bool hasDigits = reader.atDigit();
    uint128 magnitude = readWhole(reader);
    if (hasDigits && reader.passPoint())
        magnitude += readFraction(reader);

    const bool valid = hasDigits && reader.atEnd();
    if (ok)
        *ok = valid;
    return valid ? Units::make(negative, magnitude) : zero;
}

double decimal::toDouble() const
{
    uint128 count = Units::magnitude(*this);
    int decimals = maxDecimals;
    while (decimals > 0 && count % 10 == 0) {
        count /= 10;
        --decimals;
    }
    constexpr uint128 exactLimit = uint128(1) << std::numeric_limits<double>::digits;
    if (count > exactLimit)
        return toString().toLatin1().toDouble();
    // Both numbers are exact doubles, so their quotient is rounded just once.
    const double result = double(quint64(count)) / double(powerOfTen(decimals));
    return m_high < 0 ? -result : result;
}

QString decimal::toString() const
{
    const uint128 count = Units::magnitude(*this);
    uint128 whole = count / unitsOfOne;
    QString digits;
    do {
        digits.prepend(QChar(ushort('0' + int(whole % 10))));
        whole /= 10;
    } while (whole != 0);
    if (m_high < 0)
        digits.prepend(QLatin1Char('-'));

    quint64 fraction = quint64(count % unitsOfOne);
    if (fraction == 0)
        return digits;
    int places = maxDecimals;
    for (; fraction % 10 == 0; fraction /= 10)
        --places;
    return digits + QLatin1Char('.') + QString::number(fraction).rightJustified(places, QLatin1Char('0'));
}

decimal decimal::rounded(short decimals) const
{
    const quint64 step = powerOfTen(maxDecimals - clampedDecimals(decimals));
    return Units::make(m_high < 0, dividedAndRounded(Units::magnitude(*this), step) * step);
}

int decimal::compare(const decimal& other) const
{
    const int128 left = Units::of(*this);
    const int128 right = Units::of(other);
    return left < right ? -1 : left > right ? 1 : 0;
}

bool decimal::isZero() const
{
    return m_high == 0 && m_low == 0;
}

decimal decimal::operator-() const
{
    return Units::make(m_high >= 0, Units::magnitude(*this));
}

decimal& decimal::operator+=(const decimal& other)
{
    int128 sum = 0;
    if (__builtin_add_overflow(Units::of(*this), Units::of(other), &sum))
        return *this = other.m_high < 0 ? minimum : maximum;
    return *this = Units::make(sum);
}

decimal& decimal::operator-=(const decimal& other)
{
    return *this += -other;
}

decimal& decimal::operator*=(const decimal& other)
{
    const bool negative = (m_high < 0) != (other.m_high < 0);
    return *this = Units::make(negative, scaledProduct(Units::magnitude(*this), Units::magnitude(other)));
}
