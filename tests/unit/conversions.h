#pragma once

#include <basic_views/conversion.h>

#include <limits>

/// The distance from a reference, which counts its calls and tells of its end.
class Distance : public Conversion {
public:
    explicit Distance(double reference, bool* destroyed = nullptr)
        : m_reference(reference)
        , m_destroyed(destroyed)
    {
    }
    ~Distance() override
    {
        if (m_destroyed)
            *m_destroyed = true;
    }
    double forward(double value) const override
    {
        ++calls;
        return value - m_reference;
    }
    double backward(double value) const override { return value + m_reference; }
    double percent(double value) const { return (value / m_reference - 1.0) * 100.0; }

    mutable int calls = 0;

private:
    double m_reference;
    bool* m_destroyed;
};

/// A distance whose forward() is another one.
class Doubled : public Distance {
public:
    using Distance::Distance;
    double forward(double value) const override { return 2.0 * Distance::forward(value); }
};

/// Converts all values to one.
class Constant : public Conversion {
public:
    explicit Constant(double value)
        : m_value(value)
    {
    }
    double forward(double) const override { return m_value; }
    double backward(double) const override { return std::numeric_limits<double>::quiet_NaN(); }

private:
    double m_value;
};
