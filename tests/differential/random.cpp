#include "differential/random.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Differential {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// The double that lies so many doubles above or below.
double stepped(double value, int steps)
{
    for (; steps > 0; --steps)
        value = std::nextafter(value, infinity);
    for (; steps < 0; ++steps)
        value = std::nextafter(value, -infinity);
    return std::isfinite(value) ? value : std::numeric_limits<double>::max();
}

}

Random::Random(quint64 seed, quint64 number)
    // Neighbouring seeds of this engine give unlike numbers; the factor keeps subjects off each other's.
    : m_engine(seed * 0x9e3779b97f4a7c15ULL + number)
{
}

int Random::whole(int low, int high)
{
    const auto count = static_cast<quint64>(static_cast<qint64>(high) - low + 1);
    return static_cast<int>(low + static_cast<qint64>(bits() % count));
}

double Random::between(double low, double high)
{
    const double share = static_cast<double>(bits() >> 11) / 9007199254740992.0;
    return low + (high - low) * share;
}

double Random::anyBits()
{
    const int exponent = oneIn(2) ? whole(-20, 60) : whole(-1080, 1023);
    const double value = std::ldexp(between(1.0, 2.0), exponent);
    return oneIn(2) ? value : -value;
}

double Random::nearHalf()
{
    const double scale = std::pow(10.0, whole(-3, 11));
    const double tie = (whole(-3000, 3000) + 0.5) / scale;
    return stepped(tie, whole(-2, 2));
}

double Random::nearPowerOfTen()
{
    const double power = std::pow(10.0, oneIn(3) ? whole(-300, 300) : whole(-14, 20));
    const double value = stepped(power, whole(-2, 2));
    return oneIn(2) ? value : -value;
}

double Random::nearLimit()
{
    const double limit = oneOf({2147483648.0, 4503599627370496.0, 9007199254740992.0, 9223372036854775808.0,
        1e16, 1e300, std::numeric_limits<double>::max(), std::numeric_limits<double>::min(), 1e-12, 1e-8});
    const double value = stepped(limit + (limit < 1e16 && oneIn(2) ? whole(-2, 2) : 0), whole(-2, 2));
    return oneIn(2) ? value : -value;
}

double Random::nasty()
{
    switch (whole(0, 9)) {
    case 0:
        return oneOf({0.0, -0.0, 1.0, -1.0, 0.5, -0.5, 2.5, -2.5, 1e-12, -1e-12, 0.49999999999999994,
            std::numeric_limits<double>::denorm_min(), -std::numeric_limits<double>::denorm_min()});
    case 1:
        return nearHalf();
    case 2:
        return nearPowerOfTen();
    case 3:
        return nearLimit();
    case 4:
        return anyBits();
    case 5:
        return about(whole(-1000, 1000));
    case 6:
        return whole(-100000, 100000) / std::pow(10.0, whole(0, 8));
    case 7:
        return between(-10.0, 10.0);
    default:
        return price();
    }
}

double Random::price()
{
    const double step = oneOf({1.0, 0.5, 0.25, 0.1, 0.05, 0.01, 0.001, 10.0, 250.0, 2.5});
    const double value = whole(1, 5000) * step;
    return oneIn(12) ? -value : value;
}

double Random::about(double value)
{
    switch (whole(0, 5)) {
    case 0:
        return stepped(value, whole(-3, 3));
    case 1:
        return value + value * 1e-12 * oneOf({1.0, -1.0, 0.999, -0.999, 1.001, -1.001});
    case 2:
        return value + value * 1e-8 * oneOf({1.0, -1.0, 0.999, -0.999, 1.001, -1.001});
    case 3:
        return value + oneOf({1e-8, -1e-8, 0.999e-8, -1.001e-8, 1e-12, -1e-12});
    case 4:
        return value + oneOf({1e-5, -1e-5, 0.99e-5, 1.01e-5});
    default:
        return value;
    }
}

double Random::notFinite()
{
    return oneOf({infinity, -infinity, std::numeric_limits<double>::quiet_NaN()});
}

double Random::rarelyBad(double value, int oneInHowMany)
{
    if (!oneIn(oneInHowMany))
        return value;
    return oneIn(2) ? notFinite() : nasty();
}

QList<double> Random::ascending(int count)
{
    QList<double> values;
    const double start = oneIn(4) ? nasty() : oneIn(3) ? -price() : price();
    const double step = oneIn(6) ? std::abs(nasty()) : std::abs(price()) / oneOf({1.0, 10.0, 1000.0});
    const bool even = !oneIn(3);
    double value = start;
    for (int i = 0; i < count; ++i) {
        values << value;
        if (oneIn(25))
            value = about(value);
        else
            value += even ? step : between(0.0, 2.0 * step);
    }
    std::sort(values.begin(), values.end());
    values.erase(std::remove_if(values.begin(), values.end(), [](double v) { return !std::isfinite(v); }),
        values.end());
    return values;
}

QString Random::title()
{
    return oneOf(
        {QStringLiteral("bid"), QStringLiteral("ask"), QStringLiteral("smile"), QStringLiteral("theory"),
            QStringLiteral("quote"), QStringLiteral("today"), QStringLiteral("expiry")});
}

}
