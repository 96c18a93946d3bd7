#pragma once

#include <QList>
#include <QString>

#include <initializer_list>
#include <iterator>
#include <random>

namespace Differential {

/// The generator of one case: the same seed and number give the same case again.
class Random {
public:
    Random(quint64 seed, quint64 number);

    quint64 bits() { return m_engine(); }
    /// A whole number from low to high, both included.
    int whole(int low, int high);
    bool oneIn(int n) { return whole(1, n) == 1; }
    double between(double low, double high);
    template <class T> T oneOf(std::initializer_list<T> values)
    {
        return *std::next(values.begin(), whole(0, static_cast<int>(values.size()) - 1));
    }

    /// Finite doubles where arithmetic goes wrong: zeros, subnormals, halves, borders of tolerances and of
    /// integer types, powers of ten, any bits.
    double nasty();
    /// A number as prices are: a few digits, by a multiplication of steps, mostly positive.
    double price();
    /// A value itself, a few doubles beside it, or about a tolerance of 1e-12, 1e-8 or 1e-5 away.
    double about(double value);
    double notFinite();
    /// Now and then something that is not finite or nasty, otherwise the value.
    double rarelyBad(double value, int oneInHowMany);

    /// So many numbers in ascending order, at equal distances or not, with equal or nearly equal neighbours
    /// now and then.
    QList<double> ascending(int count);
    QString title();

private:
    double anyBits();
    double nearHalf();
    double nearPowerOfTen();
    double nearLimit();

    std::mt19937_64 m_engine;
};

}
