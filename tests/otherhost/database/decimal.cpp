#include "database/decimal.h"

#include <QByteArray>

#include <algorithm>
#include <cmath>

namespace {

constexpr int groupDigits = 9;
constexpr quint32 groupBase = 1000000000;
constexpr quint32 nines = groupBase - 1;
constexpr int maxDecimals = 18;
constexpr int maxWholeDigits = 27;

bool areDigits(const QString& text)
{
    return std::all_of(text.begin(), text.end(),
        [](QChar character) { return character >= QLatin1Char('0') && character <= QLatin1Char('9'); });
}

}

const decimal decimal::zero;
const decimal decimal::minimum(true, {nines, nines, nines, nines, nines});
const decimal decimal::maximum(false, {nines, nines, nines, nines, nines});

decimal decimal::fromDouble(double value, short decimals)
{
    if (!std::isfinite(value))
        return zero;
    const QByteArray text = QByteArray::number(value, 'f', std::clamp<int>(decimals, 0, maxDecimals));
    return fromText(QString::fromLatin1(text)).value_or(value < 0.0 ? minimum : maximum);
}

double decimal::toDouble() const
{
    return toText().toDouble();
}

std::optional<decimal> decimal::fromText(const QString& text)
{
    const bool isSigned = text.startsWith(QLatin1Char('-')) || text.startsWith(QLatin1Char('+'));
    const QString digits = text.mid(isSigned ? 1 : 0);
    const int point = digits.indexOf(QLatin1Char('.'));
    QString whole = point < 0 ? digits : digits.left(point);
    const QString fraction = point < 0 ? QString() : digits.mid(point + 1);
    if (whole.isEmpty() || (point >= 0 && fraction.isEmpty()) || !areDigits(whole) || !areDigits(fraction))
        return std::nullopt;
    while (whole.size() > maxWholeDigits && whole.startsWith(QLatin1Char('0')))
        whole.remove(0, 1);
    if (whole.size() > maxWholeDigits || fraction.size() > maxDecimals)
        return std::nullopt;

    const QString all = whole.rightJustified(maxWholeDigits, QLatin1Char('0'))
        + fraction.leftJustified(maxDecimals, QLatin1Char('0'));
    Groups groups{};
    for (std::size_t i = 0; i < groups.size(); ++i)
        groups[i] = all.mid(int(i) * groupDigits, groupDigits).toUInt();
    return decimal(text.startsWith(QLatin1Char('-')) && groups != Groups{}, groups);
}

QString decimal::toText() const
{
    QString all;
    for (const quint32 group : m_groups)
        all += QString::number(group).rightJustified(groupDigits, QLatin1Char('0'));
    int first = 0;
    while (first < maxWholeDigits - 1 && all.at(first) == QLatin1Char('0'))
        ++first;
    int end = all.size();
    while (end > maxWholeDigits && all.at(end - 1) == QLatin1Char('0'))
        --end;
    QString text = all.mid(first, maxWholeDigits - first);
    if (end > maxWholeDigits)
        text += QLatin1Char('.') + all.mid(maxWholeDigits, end - maxWholeDigits);
    return m_isNegative ? QLatin1Char('-') + text : text;
}

int decimal::compare(const decimal& other) const
{
    if (m_isNegative != other.m_isNegative)
        return m_isNegative ? -1 : 1;
    if (m_groups == other.m_groups)
        return 0;
    return (m_groups < other.m_groups) == m_isNegative ? 1 : -1;
}

decimal decimal::operator-() const
{
    return m_groups == Groups{} ? *this : decimal(!m_isNegative, m_groups);
}

decimal operator+(const decimal& a, const decimal& b)
{
    if (a.m_isNegative == b.m_isNegative)
        return decimal::sumOf(a.m_isNegative, a.m_groups, b.m_groups);
    return a.m_groups < b.m_groups ? decimal::differenceOf(b.m_isNegative, b.m_groups, a.m_groups)
                                   : decimal::differenceOf(a.m_isNegative, a.m_groups, b.m_groups);
}

decimal decimal::sumOf(bool isNegative, const Groups& a, const Groups& b)
{
    Groups sum{};
    quint32 carry = 0;
    for (std::size_t i = sum.size(); i-- > 0;) {
        const quint32 digits = a[i] + b[i] + carry;
        sum[i] = digits % groupBase;
        carry = digits / groupBase;
    }
    if (carry)
        return isNegative ? minimum : maximum;
    return decimal(isNegative, sum);
}

decimal decimal::differenceOf(bool isNegative, const Groups& larger, const Groups& smaller)
{
    Groups difference{};
    quint32 borrow = 0;
    for (std::size_t i = difference.size(); i-- > 0;) {
        const quint32 taken = smaller[i] + borrow;
        borrow = larger[i] < taken ? 1 : 0;
        difference[i] = larger[i] + borrow * groupBase - taken;
    }
    return decimal(isNegative && difference != Groups{}, difference);
}
