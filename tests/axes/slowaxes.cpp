#include "slowaxes.h"

#include <c_api/common.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

constexpr double limit = 1e16;

bool closeTo(double a, double b)
{
    const double smaller = std::fabs(a) < std::fabs(b) ? std::fabs(a) : std::fabs(b);
    return std::fabs(a - b) * 100000000 <= smaller;
}

/// Towards zero, in 64 bits; false where they do not hold it.
bool truncate(double value, std::int64_t& result)
{
    if (!(value >= -9223372036854775808.0 && value < 9223372036854775808.0))
        return false;
    result = static_cast<std::int64_t>(value);
    return true;
}

bool roundHalfUp(double value, std::int64_t& result)
{
    if (value >= 0)
        return truncate(value + 0.5, result);
    std::int64_t k = 0;
    if (!truncate(value - 1.0, k) || !truncate(value - static_cast<double>(k) + 0.5, result))
        return false;
    result += k;
    return true;
}

int length(double value)
{
    int count = 1;
    while (value >= 10.0 || value <= -10.0) {
        value /= 10.0;
        count += 1;
    }
    return count;
}

double fractionMagnitude(double value)
{
    const double fraction = value - std::trunc(value);
    if (closeTo(-1.0, fraction) || closeTo(1.0, fraction))
        return 0.0;
    return std::fabs(fraction);
}

/// The length of one label's fraction; false where the scan over the labels ends.
bool fractionLength(double value, int equalDigits, int& result)
{
    result = 0;
    const double whole = SlowAxes::integerPart(value);
    const double fraction = value - whole;
    if (fraction == 0.0)
        return true;
    int d = equalDigits - length(whole);
    if (d >= 0) {
        d += 3;
        if (d > 10)
            d = 10;
    }
    const double product = SlowAxes::rounded(fraction, d) * std::pow(10.0, d);
    if (std::isinf(product) || std::isnan(product))
        return false;
    if (product == 0.0)
        return true;
    const int zeros = d - length(product);
    if (zeros < 0)
        return true;
    std::uint64_t n = static_cast<std::uint64_t>(std::fabs(SlowAxes::integerPart(product)));
    int count = 0;
    while (count < 10 && n % 10 == 0) {
        n /= 10;
        ++count;
    }
    result = count == 10 ? 1 + zeros : length(static_cast<double>(n)) + zeros;
    return true;
}

bool valid(const QRect& rectangle)
{
    return rectangle.left() <= rectangle.right() && rectangle.top() <= rectangle.bottom();
}

void addIfOverlapping(SlowAxes::Pairs& pairs, const QRect& first, const QRect& second, double a, double b)
{
    const bool apart = first.right() < second.left() || second.right() < first.left()
        || first.bottom() < second.top() || second.bottom() < first.top();
    if (valid(first) && valid(second) && !apart && !(a > b))
        pairs.append({a, b});
}

}

QList<double> SlowAxes::candidates(const QList<double>& majorTicks, const QList<double>& mediumTicks)
{
    QList<double> result;
    for (const double tick : majorTicks) {
        if (std::isfinite(tick))
            result.append(tick);
    }
    for (const double tick : mediumTicks) {
        bool isMajor = false;
        for (const double major : majorTicks)
            isMajor = isMajor || commonFuzzyCompare(major, tick);
        if (std::isfinite(tick) && !isMajor)
            result.append(tick);
    }
    for (int i = 1; i < result.size(); ++i) {
        for (int j = i; j > 0 && result[j] < result[j - 1]; --j)
            std::swap(result[j], result[j - 1]);
    }
    return result;
}

double SlowAxes::integerPart(double value)
{
    const double fraction = value - std::trunc(value);
    std::int64_t whole = 0;
    if (!closeTo(-1.0, fraction) && !closeTo(1.0, fraction))
        return truncate(value, whole) ? static_cast<double>(whole) : value;
    return roundHalfUp(value, whole) ? static_cast<double>(whole) : value;
}

double SlowAxes::rounded(double value, int decimals)
{
    const double factor = std::pow(10.0, decimals < -10 ? -10 : decimals > 10 ? 10 : decimals);
    std::int64_t whole = 0;
    if (!std::isfinite(value * factor) || !roundHalfUp(value * factor, whole))
        return value;
    return static_cast<double>(whole) / factor;
}

int SlowAxes::equalDigits(const QList<double>& ticks)
{
    if (ticks.isEmpty())
        return unknown;
    for (int i = 1; i < ticks.size(); ++i) {
        const double a = ticks[i - 1];
        const double b = ticks[i];
        if (a > b || commonFuzzyCompare(b, a) || a > limit || a < -limit || b > limit || b < -limit)
            return unknown;
    }
    int result = std::numeric_limits<int>::min();
    for (int i = 1; i < ticks.size(); ++i) {
        const double a = ticks[i - 1];
        const double b = ticks[i];
        const double wholeA = integerPart(a);
        const double wholeB = integerPart(b);
        int d = unknown;
        if (length(a) != length(b)) {
            result = 0;
        } else if (std::fabs(wholeA) != std::fabs(wholeB)) {
            d = equalIntegerDigits(static_cast<long long>(wholeA), static_cast<long long>(wholeB), length(a));
            if (d >= 0 && d > result)
                result = d;
        } else {
            d = equalFractionDigits(a, b);
            if (d != -1 && d + length(a) > result)
                result = d + length(a);
        }
    }
    return result;
}

int SlowAxes::equalIntegerDigits(long long a, long long b, int n)
{
    if (a < 0 || b < 0 || a > 10000000000000000LL || b > 10000000000000000LL || n < 1 || n > 16)
        return -1;
    if (a == b || n == 1)
        return 0;
    double factor = 0.1;
    for (int k = 1;; ++k) {
        if (k == n)
            return 0;
        if (integerPart(static_cast<double>(a) * factor) == integerPart(static_cast<double>(b) * factor))
            return n - k;
        factor /= 10.0;
    }
}

int SlowAxes::equalFractionDigits(double a, double b)
{
    if (!(a >= -limit && a <= limit && b >= -limit && b <= limit) || !(a < b))
        return -1;
    const double fractionA = fractionMagnitude(a);
    const double fractionB = fractionMagnitude(b);
    for (int k = 1;; ++k) {
        if (k == 11)
            return 10;
        const double power = std::pow(10.0, k);
        if (integerPart(fractionA * power) != integerPart(fractionB * power))
            return k - 1;
    }
}

int SlowAxes::maxFractionLength(const QList<double>& ticks, int equalDigits)
{
    int result = 0;
    if (equalDigits < 0)
        return 0;
    for (const double tick : ticks) {
        int one = 0;
        if (!fractionLength(tick, equalDigits, one))
            return result;
        if (one > result)
            result = one;
    }
    return result;
}

int SlowAxes::quoteIndex(const QList<double>& ticks, double quote)
{
    if (quote <= 0.0)
        return unknown;
    int index = 0;
    while (index < ticks.size() && ticks[index] < quote)
        ++index;
    return index;
}

SlowAxes::Pairs SlowAxes::overlaps(const QList<double>& ticks, const Quote& quote, const Rectangle& rectangle)
{
    Pairs pairs;
    if (ticks.isEmpty())
        return pairs;
    QList<QRect> rectangles;
    for (const double tick : ticks)
        rectangles.append(rectangle(tick));
    const QRect own = rectangle(quote.value);
    const int count = static_cast<int>(ticks.size());
    for (int i = 0; i <= count; ++i) {
        if (i == quote.index) {
            if (i > 0)
                addIfOverlapping(pairs, rectangles[i - 1], own, ticks[i - 1], quote.value);
            if (i < count)
                addIfOverlapping(pairs, own, rectangles[i], quote.value, ticks[i]);
        } else if (i > 0 && i < count) {
            addIfOverlapping(pairs, rectangles[i - 1], rectangles[i], ticks[i - 1], ticks[i]);
        }
    }
    return pairs;
}

bool SlowAxes::removeOneTick(const std::pair<double, double>& pair, const Quote& quote, QList<double>& ticks)
{
    if (pair.first > pair.second || !quote.enabled || !quote.inside)
        return false;
    double sought = 0.0;
    if (pair.first == quote.value)
        sought = pair.second;
    else if (pair.second == quote.value)
        sought = pair.first;
    else
        return false;
    for (int i = 0; i < ticks.size(); ++i) {
        if (!(ticks[i] < sought)) {
            ticks.removeAt(i);
            return true;
        }
    }
    return false;
}

SlowAxes::Labels SlowAxes::labels(
    const QList<double>& candidates, Quote quote, bool paintedOnce, const Rectangle& rectangle)
{
    Labels labels;
    if (candidates.isEmpty())
        return labels;
    quote.index = labels.quoteIndex = quoteIndex(candidates, quote.value);
    if (quote.enabled && (quote.index < 0 || quote.index > candidates.size()))
        return labels;
    labels.ticks = candidates;
    labels.equalDigits = equalDigits(labels.ticks);
    if (!paintedOnce)
        return labels;

    Pairs found = overlaps(candidates, quote, rectangle);
    if (found.isEmpty())
        return labels;
    if (found.size() == 1 && removeOneTick(found.first(), quote, labels.ticks)) {
        labels.equalDigits = equalDigits(labels.ticks);
        return labels;
    }

    const bool hadIndex = quote.index != -1;
    QList<double> working = candidates;
    for (int r = 1;; ++r) {
        if (r >= candidates.size()) {
            labels.ticks.clear();
            labels.quoteIndex = -1;
            break;
        }
        const int parity = hadIndex ? quote.index % 2 : 0;
        labels.ticks.clear();
        for (int j = 0; j < working.size(); ++j) {
            if (working[j] < quote.value ? j % 2 == parity : j % 2 == 1 - parity)
                labels.ticks.append(working[j]);
        }
        quote.index = labels.quoteIndex = quoteIndex(labels.ticks, quote.value);
        found = overlaps(labels.ticks, quote, rectangle);
        if (found.size() == 1 && removeOneTick(found.first(), quote, labels.ticks))
            break;
        if (found.isEmpty())
            break;
        working = labels.ticks;
    }
    labels.equalDigits = equalDigits(labels.ticks);
    return labels;
}

bool SlowAxes::ticksShrinked(const QList<double>& ticks, const Text& text)
{
    for (int i = 1; i < ticks.size(); ++i) {
        if (std::fabs(ticks[i] - ticks[i - 1]) < 1e-8)
            return true;
    }
    int equal = 0;
    for (int i = 1; i < ticks.size(); ++i) {
        const QString a = text(ticks[i - 1]);
        const QString b = text(ticks[i]);
        if (a.isEmpty() || b.isEmpty())
            continue;
        if (a != b)
            return false;
        ++equal;
    }
    return equal > 0;
}

SlowAxes::Ticks SlowAxes::anchored(
    const Ticks& ticks, double factor, int strikePrecision, double x1, double x2)
{
    constexpr double lowest = -2147483648.0;
    constexpr double highest = 2147483647.0;
    const QList<double>& major = ticks.lists[2];
    std::int64_t n = 0;
    if (factor == 0.0 || strikePrecision < 1 || !roundHalfUp(factor, n) || static_cast<double>(n) < lowest
        || static_cast<double>(n) > highest)
        return ticks;
    double r = factor;
    if (1.0 / std::pow(10.0, strikePrecision) > std::fabs(r - static_cast<double>(n)))
        r = static_cast<double>(n);
    if (x1 > r || r > x2 || major.isEmpty())
        return ticks;

    double nearest = major.first();
    for (const double t : major) {
        const double smaller = std::fabs(t) < std::fabs(r) ? std::fabs(t) : std::fabs(r);
        if (std::fabs(t - r) * 1e12 <= smaller)
            return ticks;
        if (std::fabs(t - r) < std::fabs(nearest - r))
            nearest = t;
    }
    Ticks result;
    for (int type = 0; type < 3; ++type) {
        for (const double t : ticks.lists[type]) {
            const double moved = t == nearest ? r : t - (nearest - r);
            if (moved > x1 && moved < x2)
                result.lists[type].append(moved);
        }
    }
    return result;
}
