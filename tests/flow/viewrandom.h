#pragma once

#include <plot2d/viewzoom_p.h>

#include <QRectF>
#include <QString>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

/// Random views and data, of sizes from 1e-9 to 1e15 and as near to the end of the doubles' precision as a
/// view may come. The same seed gives the same ones.
class ViewRandom {
public:
    explicit ViewRandom(quint64 seed)
        : m_seed(seed)
        , m_engine(seed)
    {
    }

    quint64 seed() const { return m_seed; }

    /// From the closed interval.
    int integer(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_engine); }
    bool chance(int oneIn) { return integer(1, oneIn) == 1; }
    double uniform(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(m_engine);
    }
    /// A power of ten with an exponent from the interval.
    double power(double low, double high) { return std::pow(10.0, uniform(low, high)); }

    /// A view; its width is at least so many powers of ten below its bounds.
    ViewZoom::Range range(double mostPrecision = 9.0)
    {
        const double width = power(-9.0, 15.0);
        double lower = uniform(-3.0, 2.0) * width;
        if (chance(3))
            lower = (chance(2) ? 1.0 : -1.0) * width * power(0.0, mostPrecision);
        else if (chance(8))
            lower = 0.0;
        return {lower, lower + width};
    }

    /// Data about a view: within it, around it, aside, to its very bounds.
    ViewZoom::Range dataAbout(const ViewZoom::Range& view)
    {
        const double width = view.width() * power(-2.0, 2.0);
        ViewZoom::Range data;
        data.lower = chance(8) ? view.lower : view.lower + uniform(-1.0, 1.0) * std::max(width, view.width());
        data.upper = chance(8) && view.upper > data.lower ? view.upper : data.lower + width;
        return data;
    }

    /// Data that reaches so many widths of the view beyond it on either side.
    static ViewZoom::Range dataAround(const ViewZoom::Range& view, double widths)
    {
        return {view.lower - widths * view.width(), view.upper + widths * view.width()};
    }

private:
    const quint64 m_seed;
    std::mt19937_64 m_engine;
};

namespace ViewProperty {

using ViewZoom::Range;

inline QRectF rectangle(const Range& prices, const Range& values)
{
    return QRectF(prices.lower, values.lower, prices.width(), values.width());
}

/// What a few operations on the bounds of a range may be off by rounding.
inline double rounding(const Range& range)
{
    return 64.0 * std::numeric_limits<double>::epsilon()
        * (std::abs(range.lower) + std::abs(range.upper) + std::abs(range.width()));
}

/// How far apart two ranges are; 0 where they touch.
inline double gap(const Range& a, const Range& b)
{
    return std::max({0.0, a.lower - b.upper, b.lower - a.upper});
}

/// Whether a centre counts as one on the lower bound: by 1e-12 of the smaller magnitude, both moved by 10.
inline bool isOnLowerBound(double centre, const Range& range)
{
    const double a = centre + 10.0;
    const double b = range.lower + 10.0;
    return std::abs(a - b) * 1e12 <= std::min(std::abs(a), std::abs(b));
}

inline QString text(const Range& range)
{
    return QStringLiteral("[%1, %2]").arg(range.lower, 0, 'g', 17).arg(range.upper, 0, 'g', 17);
}

}

/// Fails the test function with the text of a case, which is only made then.
#define HOLDS(condition, text)                                                                               \
    do {                                                                                                     \
        if (!(condition))                                                                                    \
            QFAIL(qPrintable(QStringLiteral("%1: %2").arg(QStringLiteral(#condition), text)));               \
    } while (false)
