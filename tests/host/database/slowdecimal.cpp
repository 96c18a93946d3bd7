#include "slowdecimal.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int places = 18;

const std::string& largest()
{
    static const std::string digits = "170141183460469231731687303715884105727";
    return digits;
}

std::string stripped(const std::string& digits)
{
    const std::size_t first = digits.find_first_not_of('0');
    return first == std::string::npos ? "0" : digits.substr(first);
}

int compareDigits(const std::string& a, const std::string& b)
{
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    const int order = a.compare(b);
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

std::string addDigits(const std::string& a, const std::string& b)
{
    std::string result;
    int carry = 0;
    for (std::size_t i = 0; i < std::max(a.size(), b.size()) || carry; ++i) {
        const int left = i < a.size() ? a[a.size() - 1 - i] - '0' : 0;
        const int right = i < b.size() ? b[b.size() - 1 - i] - '0' : 0;
        const int digit = left + right + carry;
        result.push_back(static_cast<char>('0' + digit % 10));
        carry = digit / 10;
    }
    std::reverse(result.begin(), result.end());
    return stripped(result);
}

/// a - b for a >= b.
std::string subtractDigits(const std::string& a, const std::string& b)
{
    std::string result;
    int borrow = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        int digit = a[a.size() - 1 - i] - '0' - borrow - (i < b.size() ? b[b.size() - 1 - i] - '0' : 0);
        borrow = digit < 0 ? 1 : 0;
        digit += borrow * 10;
        result.push_back(static_cast<char>('0' + digit));
    }
    std::reverse(result.begin(), result.end());
    return stripped(result);
}

/// Cuts digits off the end; the first of them decides about the rounding.
std::string withoutLast(const std::string& digits, int count)
{
    if (count == 0)
        return digits;
    const std::string padded = std::string(static_cast<std::size_t>(count), '0') + digits;
    const std::size_t kept = padded.size() - static_cast<std::size_t>(count);
    const std::string head = stripped(padded.substr(0, kept));
    return padded[kept] >= '5' ? addDigits(head, "1") : head;
}

SlowDecimal saturated(bool negative, const std::string& digits)
{
    const std::string bounded = compareDigits(digits, largest()) > 0 ? largest() : digits;
    return {negative && bounded != "0", bounded};
}

}

SlowDecimal SlowDecimals::fromText(const std::string& text)
{
    std::string plain = text;
    const bool negative = plain[0] == '-';
    if (negative || plain[0] == '+')
        plain.erase(0, 1);
    const std::size_t point = plain.find('.');
    std::string fraction;
    if (point != std::string::npos) {
        fraction = plain.substr(point + 1);
        plain.erase(point);
    }
    if (fraction.size() < places)
        fraction.append(places - fraction.size(), '0');
    const int surplus = static_cast<int>(fraction.size()) - places;
    return saturated(negative, withoutLast(stripped(plain + fraction), surplus));
}

SlowDecimal SlowDecimals::fromDouble(double value, int decimals)
{
    if (!std::isfinite(value))
        return {};
    // A double is a whole number of its last binary digit, 2^-k, and so has k decimals at most.
    const int binaryDigits = value == 0.0 ? 0 : std::clamp(52 - std::ilogb(value), 0, 1074);
    std::vector<char> text(1500);
    std::snprintf(text.data(), text.size(), "%.*f", binaryDigits, value);
    std::string exact(text.data());
    std::replace(exact.begin(), exact.end(), ',', '.');
    const std::size_t point = exact.find('.');
    const std::size_t fraction = point == std::string::npos ? 0 : exact.size() - point - 1;
    if (fraction <= static_cast<std::size_t>(decimals))
        return fromText(exact);

    const bool negative = exact[0] == '-';
    exact.erase(point, 1);
    if (negative)
        exact.erase(0, 1);
    const std::string head = withoutLast(stripped(exact), static_cast<int>(fraction) - decimals);
    return saturated(
        negative, stripped(head + std::string(static_cast<std::size_t>(places - decimals), '0')));
}

std::string SlowDecimals::toText(const SlowDecimal& value)
{
    std::string digits = value.digits;
    if (digits.size() <= places)
        digits.insert(0, places + 1 - digits.size(), '0');
    digits.insert(digits.size() - places, ".");
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.')
        digits.pop_back();
    return value.negative ? "-" + digits : digits;
}

SlowDecimal SlowDecimals::rounded(const SlowDecimal& value, int decimals)
{
    const int cut = places - decimals;
    const std::string head = withoutLast(value.digits, cut);
    return saturated(value.negative, stripped(head + std::string(static_cast<std::size_t>(cut), '0')));
}

SlowDecimal SlowDecimals::sum(const SlowDecimal& a, const SlowDecimal& b)
{
    if (a.negative == b.negative)
        return saturated(a.negative, addDigits(a.digits, b.digits));
    return compareDigits(a.digits, b.digits) >= 0 ? saturated(a.negative, subtractDigits(a.digits, b.digits))
                                                  : saturated(b.negative, subtractDigits(b.digits, a.digits));
}

SlowDecimal SlowDecimals::product(const SlowDecimal& a, const SlowDecimal& b)
{
    std::vector<int> cells(a.digits.size() + b.digits.size(), 0);
    for (std::size_t i = 0; i < a.digits.size(); ++i) {
        for (std::size_t j = 0; j < b.digits.size(); ++j)
            cells[i + j + 1] += (a.digits[i] - '0') * (b.digits[j] - '0');
    }
    for (std::size_t i = cells.size() - 1; i > 0; --i) {
        cells[i - 1] += cells[i] / 10;
        cells[i] %= 10;
    }
    std::string digits;
    for (const int cell : cells)
        digits.push_back(static_cast<char>('0' + cell));
    return saturated(a.negative != b.negative, withoutLast(stripped(digits), places));
}

int SlowDecimals::compare(const SlowDecimal& a, const SlowDecimal& b)
{
    if (a.negative != b.negative)
        return a.negative ? -1 : 1;
    const int order = compareDigits(a.digits, b.digits);
    return a.negative ? -order : order;
}
