#include "monkey/monkeyrandom.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace Monkey {

namespace {

using Limits = std::numeric_limits<double>;

/// Spreads neighbouring numbers over all bits (the finalizer of SplitMix64).
std::uint64_t mixed(std::uint64_t value)
{
    value += 0x9e3779b97f4a7c15u;
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9u;
    value = (value ^ (value >> 27)) * 0x94d049bb133111ebu;
    return value ^ (value >> 31);
}

}

Random::Random(std::uint64_t seed)
    : m_engine(mixed(seed))
{
}

Random::Random(std::uint64_t seed, std::uint64_t place)
    : m_engine(mixed(mixed(seed) ^ place))
{
}

int Random::integer(int low, int high)
{
    const auto count = static_cast<std::uint64_t>(static_cast<std::int64_t>(high) - low + 1);
    return static_cast<int>(low + static_cast<std::int64_t>(m_engine() % count));
}

double Random::unit()
{
    return std::ldexp(static_cast<double>(m_engine() >> 11), -53);
}

double Random::decimalNumber(double low, double high)
{
    return std::floor(uniform(low, high) * 100.0) / 100.0;
}

double Random::anyDouble()
{
    static const double special[]
        = {0.0, -0.0, 1.0, -1.0, Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), Limits::max(),
            -Limits::max(), 1e300, -1e300, 8.9e307, Limits::min(), -Limits::min(), Limits::denorm_min(),
            1e-300, 1e-9, 1e-8, 1e16, 9007199254740992.0, 2147483648.0, -2147483649.0, 1e10};
    switch (integer(0, 4)) {
    case 0: {
        const std::uint64_t bits = m_engine();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    case 1:
        return integer(-1000, 1000);
    case 2:
        return decimalNumber(50.0, 150.0);
    default:
        return of(special);
    }
}

QVector<QPointF> Random::smoothSamples()
{
    const int count = integer(2, 60);
    const double from = integer(50, 120);
    const double step = of({0.25, 0.5, 1.0, 2.5});
    const double lowest = decimalNumber(-5.0, 40.0);
    const double curvature = of({0.0, 0.001, 0.01, -0.002});
    QVector<QPointF> result;
    for (int i = 0; i < count; ++i) {
        const double price = from + i * step;
        result.append(QPointF(price, lowest + curvature * (price - 100.0) * (price - 100.0)));
    }
    return result;
}

QVector<QPointF> Random::hostileSamples()
{
    QVector<QPointF> result = smoothSamples();
    const int last = static_cast<int>(result.size()) - 1;
    switch (integer(0, 7)) {
    case 0:
        return {};
    case 1:
        return {result.first()};
    case 2: // one price
        for (QPointF& sample : result)
            sample.setX(100.0);
        return result;
    case 3: // one bad value
        result[integer(0, last)].setY(anyDouble());
        return result;
    case 4: // one bad price
        result[integer(0, last)].setX(anyDouble());
        return result;
    case 5: // unsorted
        for (int i = 0; i < 3; ++i)
            std::swap(result[integer(0, last)], result[0]);
        return result;
    case 6: { // ordinary in shape, extreme in size
        const double factor = anyDouble();
        for (QPointF& sample : result)
            sample *= factor;
        return result;
    }
    default:
        for (QPointF& sample : result)
            sample = QPointF{anyDouble(), anyDouble()};
        return result;
    }
}

QVector<QPointF> Random::samples()
{
    return chance(3) ? hostileSamples() : smoothSamples();
}

}
