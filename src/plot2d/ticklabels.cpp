#include "ticklabels_p.h"

#include "halfuprounding_p.h"
#include "plot2d/plot2dcommon.h"

#include <c_api/common.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Plot2dCommon::integerLength;
using Plot2dCommon::scaleDrawFuzzyCompare;

bool isWholeUnit(double fraction)
{
    return scaleDrawFuzzyCompare(-1.0, fraction) || scaleDrawFuzzyCompare(1.0, fraction);
}

bool isBeyond(double value)
{
    return !(std::abs(value) <= TickLabels::largestValue);
}

/// The magnitude of a value's fraction, 0 for one within 1e-8 of a whole unit.
double fractionOf(double value)
{
    const double fraction = value - std::trunc(value);
    return isWholeUnit(fraction) ? 0.0 : std::abs(fraction);
}

bool isCloseTo(const QList<double>& sorted, double value)
{
    // The host's equality is a tolerance, so if any tick is equal then one of the two neighbours is.
    const auto above = std::lower_bound(sorted.cbegin(), sorted.cend(), value);
    return (above != sorted.cend() && commonFuzzyCompare(*above, value))
        || (above != sorted.cbegin() && commonFuzzyCompare(*std::prev(above), value));
}

bool ascends(const QList<double>& ticks)
{
    for (int i = 1; i < ticks.size(); ++i) {
        const double a = ticks[i - 1];
        const double b = ticks[i];
        if (a > b || commonFuzzyCompare(b, a) || isBeyond(a) || isBeyond(b))
            return false;
    }
    return true;
}

/// The fraction digits of one value, 0 where there are none to show; nothing where it cannot be told.
std::optional<int> fractionLength(double value, int equalDigits)
{
    const double integerPart = TickLabels::fuzzyIntegerPart(value);
    const double fraction = value - integerPart;
    if (fraction == 0.0)
        return 0;

    constexpr int extraDigits = 3;
    constexpr int maxDigits = 10;
    int digits = equalDigits - integerLength(integerPart);
    if (digits >= 0)
        digits = std::min(digits + extraDigits, maxDigits);
    const double scaled = Plot2dCommon::roundValue(fraction, digits) * std::pow(10.0, digits);
    if (!std::isfinite(scaled))
        return std::nullopt;
    if (scaled == 0.0)
        return 0;

    const int leadingZeros = digits - integerLength(scaled);
    if (leadingZeros < 0)
        return 0;
    auto significant = static_cast<quint64>(std::abs(TickLabels::fuzzyIntegerPart(scaled)));
    while (significant >= 10 && significant % 10 == 0)
        significant /= 10;
    return leadingZeros + integerLength(static_cast<double>(significant));
}

}

QList<double> TickLabels::candidates(const QList<double>& majorTicks, const QList<double>& mediumTicks)
{
    QList<double> ticks;
    std::copy_if(majorTicks.cbegin(), majorTicks.cend(), std::back_inserter(ticks),
        [](double tick) { return std::isfinite(tick); });
    std::stable_sort(ticks.begin(), ticks.end());

    const QList<double> major = ticks;
    std::copy_if(mediumTicks.cbegin(), mediumTicks.cend(), std::back_inserter(ticks),
        [&major](double tick) { return std::isfinite(tick) && !isCloseTo(major, tick); });
    std::stable_sort(ticks.begin(), ticks.end());
    return ticks;
}

double TickLabels::fuzzyIntegerPart(double value)
{
    if (!isWholeUnit(value - std::trunc(value)))
        return std::trunc(value);
    return HalfUpRounding::toWhole(value);
}

std::optional<int> TickLabels::equalDigits(const QList<double>& ticks)
{
    if (ticks.isEmpty() || !ascends(ticks))
        return std::nullopt;

    int result = std::numeric_limits<int>::min();
    for (int i = 1; i < ticks.size(); ++i) {
        const double a = ticks[i - 1];
        const double b = ticks[i];
        const double integerA = fuzzyIntegerPart(a);
        const double integerB = fuzzyIntegerPart(b);
        const int length = integerLength(a);
        if (length != integerLength(b)) {
            // Not a maximum: a step to more digits starts the search anew.
            result = 0;
        } else if (std::abs(integerA) != std::abs(integerB)) {
            const int digits = equalDigitsInIntegerPart(
                static_cast<long long>(integerA), static_cast<long long>(integerB), length);
            if (digits >= 0)
                result = std::max(result, digits);
        } else {
            const int digits = equalDigitsInFractionPart(a, b);
            if (digits != -1)
                result = std::max(result, digits + length);
        }
    }
    return result;
}

int TickLabels::equalDigitsInIntegerPart(long long a, long long b, int n)
{
    constexpr auto largest = static_cast<long long>(largestValue);
    if (a < 0 || b < 0 || a > largest || b > largest || n < 1 || n > 16)
        return -1;
    if (a == b || n == 1)
        return 0;

    double factor = 0.1;
    for (int k = 1; k < n; ++k) {
        const double integerA = fuzzyIntegerPart(static_cast<double>(a) * factor);
        const double integerB = fuzzyIntegerPart(static_cast<double>(b) * factor);
        if (integerA == integerB)
            return n - k;
        factor /= 10.0;
    }
    return 0;
}

int TickLabels::equalDigitsInFractionPart(double a, double b)
{
    if (isBeyond(a) || isBeyond(b) || !(a < b))
        return -1;

    constexpr int mostDigits = 10;
    const double fractionA = fractionOf(a);
    const double fractionB = fractionOf(b);
    for (int k = 1; k <= mostDigits; ++k) {
        const double power = std::pow(10.0, k);
        if (fuzzyIntegerPart(fractionA * power) != fuzzyIntegerPart(fractionB * power))
            return k - 1;
    }
    return mostDigits;
}

int TickLabels::maxFractionLength(const QList<double>& ticks, int equalDigits)
{
    if (equalDigits < 0)
        return 0;

    int result = 0;
    for (const double tick : ticks) {
        const std::optional<int> length = fractionLength(tick, equalDigits);
        if (!length)
            break;
        result = std::max(result, *length);
    }
    return result;
}

bool TickLabels::readTheSame(const QList<double>& ticks, const std::function<QString(double)>& text)
{
    for (int i = 1; i < ticks.size(); ++i) {
        if (std::abs(ticks[i] - ticks[i - 1]) < 1e-8)
            return true;
    }

    bool anyEqual = false;
    QString previous = ticks.isEmpty() ? QString() : text(ticks.first());
    for (int i = 1; i < ticks.size(); ++i) {
        const QString current = text(ticks[i]);
        if (!previous.isEmpty() && !current.isEmpty()) {
            if (previous != current)
                return false;
            anyEqual = true;
        }
        previous = current;
    }
    return anyEqual;
}
