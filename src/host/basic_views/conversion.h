#pragma once

/// A conversion of the values that a view shows, say from a price into points from a reference price.
///
/// A view holds an object of a derived class and a pointer to one of its member functions of the type
/// ConversionMethod; forward() and backward() are the two that every conversion has.
class Conversion {
public:
    Conversion() = default;
    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;
    virtual ~Conversion();

    /// The shown value of a raw value. NaN or an infinity where there is none.
    virtual double forward(double value) const = 0;

    /// The raw value of a shown value: the inverse of forward() wherever that has one, else NaN.
    virtual double backward(double value) const = 0;
};

/// A member function that converts one value.
using ConversionMethod = double (Conversion::*)(double) const;
