#pragma once

#include <QByteArray>
#include <QList>

#include <cstdint>
#include <random>

/// Random ticks where the rules of the axes go wrong most easily. The same seed gives the same ticks.
class AxisRandom {
public:
    explicit AxisRandom(std::uint64_t seed)
        : m_engine(seed)
    {
    }

    /// From the closed interval.
    int integer(int low, int high);
    double uniform(double low, double high);
    bool chance(int oneIn) { return integer(1, oneIn) == 1; }

    /// A value of any kind: of few decimals, close to a decimal boundary, negative, huge or tiny.
    double value();
    /// Up to some ticks: mostly ascending by a decimal step, but also unsorted ones, equal ones, and ones
    /// that are almost equal.
    QList<double> ticks(int most);
    /// A value of few decimals, moved by at most a few doubles.
    double nearDecimal(int integerDigits, int decimals);

private:
    double nudged(double value);
    QList<double> ascending(int count);

    std::mt19937_64 m_engine;
};

/// Ticks in full, for the message of a failed case.
QByteArray inFull(const QList<double>& ticks);
