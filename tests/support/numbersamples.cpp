#include "support/numbersamples.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace {

double tenTo(int exponent)
{
    return std::pow(10.0, exponent);
}

}

NumberCase NumberSamples::next()
{
    const int decimals = integer(0, 7) == 0 ? integer(-15, 25) : integer(-2, 10);
    switch (integer(0, 9)) {
    case 0:
        return {anyBits(), decimals};
    case 1:
    case 2:
        return {nearHalf(decimals), decimals};
    case 3:
        return {exactTie(std::abs(decimals)), std::abs(decimals)};
    case 4:
        return {nearPowerOfTen(), decimals};
    case 5:
        return {largeWhole(), decimals};
    case 6:
        return {nearIntegerLimit(decimals), decimals};
    case 7:
        return {nearZero(), decimals};
    case 8:
        return {withRandomSign(std::ldexp(uniform(0.5, 1.0), integer(-40, 70))), decimals};
    default:
        return {price(decimals), integer(decimals - 1, decimals + 1)};
    }
}

double NumberSamples::anyBits()
{
    double value = std::numeric_limits<double>::infinity();
    while (!std::isfinite(value)) {
        const std::uint64_t bits = m_engine();
        std::memcpy(&value, &bits, sizeof value);
    }
    return value;
}

double NumberSamples::nearHalf(int decimals)
{
    const double steps = std::floor(std::ldexp(uniform(0.0, 1.0), integer(0, 45)));
    return neighbour(withRandomSign((steps + 0.5) / tenTo(decimals)));
}

double NumberSamples::exactTie(int decimals)
{
    const double odd = 2.0 * std::floor(uniform(0.0, 1e6)) + 1.0;
    return withRandomSign(std::ldexp(odd, -decimals - 1));
}

double NumberSamples::nearPowerOfTen()
{
    const int exponent = integer(0, 1) == 0 ? integer(-12, 24) : integer(-320, 308);
    return neighbour(withRandomSign(tenTo(exponent)));
}

double NumberSamples::largeWhole()
{
    return neighbour(withRandomSign(std::floor(std::ldexp(uniform(0.5, 1.0), integer(50, 66)))));
}

double NumberSamples::nearIntegerLimit(int decimals)
{
    const double limit = std::ldexp(1.0, 63) / tenTo(decimals);
    return neighbour(withRandomSign(integer(0, 1) == 0 ? limit : limit * uniform(0.9, 1.1)));
}

double NumberSamples::nearZero()
{
    switch (integer(0, 3)) {
    case 0:
        return withRandomSign(0.0);
    case 1:
        return withRandomSign(std::numeric_limits<double>::denorm_min() * integer(1, 1000));
    default:
        return withRandomSign(uniform(0.0, 1.0) * tenTo(-integer(0, 14)));
    }
}

double NumberSamples::price(int decimals)
{
    return withRandomSign(integer(0, 100000000) * tenTo(-decimals));
}

int NumberSamples::integer(int low, int high)
{
    return std::uniform_int_distribution<int>(low, high)(m_engine);
}

double NumberSamples::uniform(double low, double high)
{
    return std::uniform_real_distribution<double>(low, high)(m_engine);
}

double NumberSamples::neighbour(double value)
{
    const int steps = integer(-4, 4);
    const double end = std::copysign(std::numeric_limits<double>::max(), steps);
    for (int i = std::abs(steps); i > 0; --i)
        value = std::nextafter(value, end);
    return value;
}

double NumberSamples::withRandomSign(double value)
{
    return integer(0, 1) == 0 ? value : -value;
}

QByteArray inFull(double value)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.17g (%a)", value, value);
    return text;
}
