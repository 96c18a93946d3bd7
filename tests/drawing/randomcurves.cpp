#include "randomcurves.h"

#include <algorithm>
#include <cmath>
#include <limits>

double RandomCurves::number(double low, double high)
{
    constexpr double steps = 9007199254740992.0;
    return low + (high - low) * (static_cast<double>(m_engine() >> 11) / steps);
}

int RandomCurves::integer(int low, int high)
{
    return low + static_cast<int>(m_engine() % static_cast<std::uint64_t>(high - low + 1));
}

QVector<double> RandomCurves::prices(int count, Order order)
{
    QVector<double> prices;
    const bool even = oneIn(2);
    for (int i = 0; i < count; ++i)
        prices.append(even ? 100.0 * i / count : number(0.0, 100.0));
    if (order == Order::WithEquals) {
        const double step = number(0.01, 5.0);
        for (double& price : prices)
            price = std::floor(price / step) * step;
    }
    if (order == Order::Any)
        std::shuffle(prices.begin(), prices.end(), m_engine);
    else
        std::sort(prices.begin(), prices.end());
    return prices;
}

double RandomCurves::nextValue(int kind, double value)
{
    switch (kind) {
    case 0:
        return number(-1.0, 1.0);
    case 1:
        return value + number(-0.05, 0.05);
    case 2:
        return value + number(0.0, 0.01);
    case 3:
        return oneIn(20) ? number(-1.0, 1.0) : value;
    default:
        return oneIn(10) ? number(-100.0, 100.0) : number(-0.1, 0.1);
    }
}

QVector<QPointF> RandomCurves::samples(int count, Order order, bool bad)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
    const int kind = integer(0, 4);
    double value = 0.0;
    QVector<QPointF> samples;
    for (const double price : prices(count, order)) {
        value = nextValue(kind, value);
        samples.append(QPointF(price, value));
    }
    for (int i = bad ? integer(1, 5) : 0; i > 0 && count > 0; --i) {
        QPointF& sample = samples[integer(0, count - 1)];
        const double badNumber = oneIn(2) ? noNumber : oneIn(2) ? infinity : -infinity;
        (oneIn(2) ? sample.rx() : sample.ry()) = badNumber;
    }
    return samples;
}
