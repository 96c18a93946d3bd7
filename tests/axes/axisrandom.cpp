#include "axisrandom.h"

#include <algorithm>
#include <cmath>
#include <limits>

int AxisRandom::integer(int low, int high)
{
    return std::uniform_int_distribution<int>(low, high)(m_engine);
}

double AxisRandom::uniform(double low, double high)
{
    return std::uniform_real_distribution<double>(low, high)(m_engine);
}

double AxisRandom::nudged(double value)
{
    const double towards = chance(2) ? std::numeric_limits<double>::infinity() : 0.0;
    for (int i = integer(0, 3); i > 0; --i)
        value = std::nextafter(value, towards);
    return value;
}

double AxisRandom::nearDecimal(int integerDigits, int decimals)
{
    const double limit = std::pow(10.0, integerDigits);
    const double unit = std::pow(10.0, decimals);
    return nudged(std::floor(uniform(0.0, limit) * unit) / unit);
}

double AxisRandom::value()
{
    const double sign = chance(3) ? -1.0 : 1.0;
    switch (integer(0, 7)) {
    case 0:
        return sign * nudged(std::pow(10.0, integer(-12, 18)));
    case 1:
        return sign * (std::floor(uniform(0.0, 1e4)) + uniform(-2e-8, 2e-8));
    case 2:
        return sign * std::pow(10.0, uniform(-320.0, 308.0));
    case 3:
        return sign * integer(0, 20);
    case 4:
        return chance(4) ? std::copysign(1e16, sign) * (1.0 + integer(-1, 1) * 2e-16) : 0.0;
    default:
        return sign * nearDecimal(integer(0, 9), integer(0, 11));
    }
}

QList<double> AxisRandom::ascending(int count)
{
    const double step = std::pow(10.0, integer(-9, 5)) * (chance(2) ? 1.0 : 2.5);
    const double start = chance(3) ? -step * integer(0, 50) : nearDecimal(integer(0, 6), integer(0, 6));
    QList<double> ticks;
    for (int i = 0; i < count; ++i)
        ticks.append(chance(2) ? start + i * step : nudged(start + i * step));
    return ticks;
}

QList<double> AxisRandom::ticks(int most)
{
    const int count = integer(0, most);
    if (!chance(3))
        return ascending(count);
    QList<double> ticks;
    for (int i = 0; i < count; ++i) {
        const bool repeats = !ticks.isEmpty() && chance(8);
        ticks.append(repeats ? nudged(ticks[integer(0, i - 1)]) : value());
    }
    if (!chance(4))
        std::sort(ticks.begin(), ticks.end());
    return ticks;
}

QByteArray inFull(const QList<double>& ticks)
{
    QByteArray text;
    for (const double tick : ticks)
        text += QByteArray::number(tick, 'g', 17) + ' ';
    return text;
}
