#pragma once

#include <basic_views/conversion.h>

/// Shows fractions as percent: 0.3 as 30.
class PercentConversion : public Conversion {
public:
    double forward(double value) const override { return value * 100.0; }
    double backward(double value) const override { return value / 100.0; }
};
