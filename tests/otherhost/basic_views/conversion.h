#pragma once

/// A conversion of the values that a view shows.
class Conversion {
public:
    virtual ~Conversion();

    virtual double forward(double value) const = 0;
    virtual double backward(double value) const = 0;
};

using ConversionMethod = double (Conversion::*)(double) const;
