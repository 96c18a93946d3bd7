#pragma once

#include <QPointF>
#include <QVector>

#include <random>

/// Samples of many kinds for tests against a plain walk; the same on every platform for a seed.
class RandomCurves {
public:
    explicit RandomCurves(unsigned seed)
        : m_engine(seed)
    {
    }

    /// What the prices of samples do.
    enum class Order { Ascending, WithEquals, Any };

    /// Samples with prices of this order, mostly between 0 and 100; `bad` makes a few of them NaN or
    /// infinite.
    QVector<QPointF> samples(int count, Order order, bool bad);

    /// From a lower to an upper bound, and whole numbers with both bounds.
    double number(double low, double high);
    int integer(int low, int high);
    bool oneIn(int n) { return integer(1, n) == 1; }

private:
    QVector<double> prices(int count, Order order);
    double nextValue(int kind, double value);

    std::mt19937_64 m_engine;
};
