#pragma once

#include <QPointF>
#include <QVector>

#include <cstddef>
#include <cstdint>
#include <random>

namespace Monkey {

/// Random choices that are the same on every platform: the engine is defined to the bit, the distributions of
/// the standard library are not.
class Random {
public:
    explicit Random(std::uint64_t seed);
    /// The choices that belong to one place in a series.
    Random(std::uint64_t seed, std::uint64_t place);

    /// From the closed interval.
    int integer(int low, int high);
    /// True once in so many times.
    bool chance(int oneIn) { return integer(1, oneIn) == 1; }
    /// From 0 (inclusive) to 1 (exclusive).
    double unit();
    double uniform(double low, double high) { return low + (high - low) * unit(); }
    template <typename Value, std::size_t count> Value of(const Value (&choices)[count])
    {
        return choices[integer(0, static_cast<int>(count) - 1)];
    }

    /// Any double: NaN, infinities, zeros, the ends of the type's range, whole and short decimal numbers, and
    /// plain random bits.
    double anyDouble();
    /// A number of two decimals from the closed interval.
    double decimalNumber(double low, double high);

    /// Samples of a curve. Two in three times they are a host's: ascending prices around 100 and smooth
    /// values; else few, none, unsorted, not finite, extreme, or at one price.
    QVector<QPointF> samples();

private:
    QVector<QPointF> smoothSamples();
    QVector<QPointF> hostileSamples();

    std::mt19937_64 m_engine;
};

}
