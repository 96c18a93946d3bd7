#include "differential/plainlabels.h"

#include "differential/plainnumbers.h"

#include <c_api/common.h>

#include <QLocale>

#include <cmath>
#include <limits>

namespace {

constexpr double largest = 1e16;

bool isOutside(double value)
{
    return value > largest || value < -largest;
}

/// The fraction without its sign; one within 1e-8 of a whole unit is none.
double fractionOf(double value)
{
    const double fraction = value - std::trunc(value);
    if (Plain::looselyEqual(-1.0, fraction) || Plain::looselyEqual(1.0, fraction))
        return 0.0;
    return std::fabs(fraction);
}

bool haveNoAnswer(const QList<double>& ticks)
{
    for (int i = 1; i < ticks.size(); ++i) {
        const double a = ticks[i - 1];
        const double b = ticks[i];
        if (a > b || commonFuzzyCompare(b, a) || isOutside(a) || isOutside(b))
            return true;
    }
    return false;
}

/// The length of the fraction of one value; -1 where it needs none, -2 where no more are to be looked at.
int fractionLengthOf(double value, int shared)
{
    const double whole = Plain::looseIntegerPart(value);
    const double fraction = value - whole;
    if (fraction == 0.0)
        return -1;
    int digits = shared - Plain::integerDigits(whole);
    if (digits >= 0)
        digits = digits + 3 < 10 ? digits + 3 : 10;
    const double product = Plain::roundedAt(fraction, digits) * std::pow(10.0, digits);
    if (std::isnan(product) || std::isinf(product))
        return -2;
    if (product == 0.0)
        return -1;
    const int zeros = digits - Plain::integerDigits(product);
    if (zeros < 0)
        return -1;
    auto number = static_cast<long long>(Plain::looseIntegerPart(product));
    int stripped = 0;
    while (number != 0 && number % 10 == 0 && stripped < 10) {
        number = number / 10;
        stripped = stripped + 1;
    }
    return (stripped == 10 ? 1 : Plain::integerDigits(static_cast<double>(number))) + zeros;
}

}

QList<double> Plain::labelCandidates(const QList<double>& major, const QList<double>& medium)
{
    QList<double> all = major;
    for (const double tick : medium) {
        bool isMajor = false;
        for (const double other : major)
            isMajor = isMajor || commonFuzzyCompare(other, tick);
        if (!isMajor)
            all << tick;
    }
    QList<double> sorted;
    for (const double tick : all) {
        if (!std::isfinite(tick))
            continue;
        int place = sorted.size();
        while (place > 0 && sorted[place - 1] > tick)
            --place;
        sorted.insert(place, tick);
    }
    return sorted;
}

int Plain::sharedIntegerDigits(long long a, long long b, int n)
{
    const auto limit = static_cast<long long>(largest);
    if (a < 0 || b < 0 || a > limit || b > limit || n < 1 || n > 16)
        return -1;
    if (a == b || n == 1)
        return 0;
    double factor = 0.1;
    for (int k = 1; k < n; ++k) {
        const double first = looseIntegerPart(static_cast<double>(a) * factor);
        const double second = looseIntegerPart(static_cast<double>(b) * factor);
        if (first == second)
            return n - k;
        factor = factor / 10.0;
    }
    return 0;
}

int Plain::sharedFractionDigits(double a, double b)
{
    if (isOutside(a) || isOutside(b) || !(a < b))
        return -1;
    const double first = fractionOf(a);
    const double second = fractionOf(b);
    double factor = 1.0;
    for (int k = 1; k <= 10; ++k) {
        factor = factor * 10.0;
        if (looseIntegerPart(first * factor) != looseIntegerPart(second * factor))
            return k - 1;
    }
    return 10;
}

int Plain::sharedDigits(const QList<double>& ticks)
{
    if (ticks.isEmpty() || haveNoAnswer(ticks))
        return -1;
    int result = std::numeric_limits<int>::min();
    for (int i = 1; i < ticks.size(); ++i) {
        const double a = ticks[i - 1];
        const double b = ticks[i];
        const double wholeA = looseIntegerPart(a);
        const double wholeB = looseIntegerPart(b);
        const int digits = integerDigits(a);
        int found = -1;
        if (digits != integerDigits(b)) {
            result = 0;
            continue;
        }
        if (std::fabs(wholeA) != std::fabs(wholeB)) {
            found
                = sharedIntegerDigits(static_cast<long long>(wholeA), static_cast<long long>(wholeB), digits);
        } else {
            found = sharedFractionDigits(a, b);
            if (found != -1)
                found = found + digits;
        }
        if (found >= 0 && found > result)
            result = found;
    }
    return result;
}

int Plain::fractionLength(const QList<double>& ticks, int shared)
{
    int longest = 0;
    if (shared < 0)
        return longest;
    for (const double tick : ticks) {
        const int length = fractionLengthOf(tick, shared);
        if (length == -2)
            break;
        if (length > longest)
            longest = length;
    }
    return longest;
}

bool Plain::labelsReadTheSame(const QList<double>& ticks, const std::function<QString(double)>& text)
{
    for (int i = 1; i < ticks.size(); ++i) {
        if (std::fabs(ticks[i] - ticks[i - 1]) < 1e-8)
            return true;
    }
    int equalPairs = 0;
    for (int i = 1; i < ticks.size(); ++i) {
        const QString a = text(ticks[i - 1]);
        const QString b = text(ticks[i]);
        if (a.isEmpty() || b.isEmpty())
            continue;
        if (a != b)
            return false;
        equalPairs = equalPairs + 1;
    }
    return equalPairs > 0;
}

QString Plain::LabelText::of(double value) const
{
    if (!std::isfinite(value))
        return QString();
    if (converts) {
        if (!convert)
            return QString();
        value = convert(value);
        if (!std::isfinite(value))
            return QString();
    }
    QString text = shortText(value, decimals);
    if (text.isEmpty())
        return text;
    text = text + unit;
    if (value > 0.0 && plus)
        text = QLocale::system().positiveSign() + text;
    return text;
}
