#pragma once

#include <QByteArray>

#include <random>

/// A value together with a number of decimals to write it or round it to.
struct NumberCase {
    double value;
    int decimals;
};

/// Random values where formatting and rounding go wrong most easily. The same seed gives the same values.
class NumberSamples {
public:
    explicit NumberSamples(std::uint64_t seed)
        : m_engine(seed)
    {
    }

    /// Finite values of every kind below, decimals from -15 to 25 but mostly those at which the value is
    /// interesting.
    NumberCase next();

    /// Any bit pattern but those of NaN and the infinities.
    double anyBits();
    /// A few steps of a double beside the middle between two neighbours of that many decimals.
    double nearHalf(int decimals);
    /// An odd number over 2^(decimals + 1): exactly in the middle at that many decimals.
    double exactTie(int decimals);
    /// A power of ten within the type's range, or a double close to one.
    double nearPowerOfTen();
    /// Whole numbers about the end of the mantissa and of the 64-bit integers.
    double largeWhole();
    /// A value that 10^decimals brings to the end of the 64-bit integers.
    double nearIntegerLimit(int decimals);
    /// Zeros, subnormals and what rounds to zero.
    double nearZero();
    /// A number of price steps, summed up in one multiplication.
    double price(int decimals);

    /// From the closed interval.
    int integer(int low, int high);
    double uniform(double low, double high);
    /// At most four doubles away.
    double neighbour(double value);
    double withRandomSign(double value);

private:
    std::mt19937_64 m_engine;
};

/// The value in full, for the message of a failed case.
QByteArray inFull(double value);
