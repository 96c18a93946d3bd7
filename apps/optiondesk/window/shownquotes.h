#pragma once

#include "window/shownseries.h"

/// The options of a series that its filter lets through, with their implied volatilities.
class ShownQuotes {
public:
    /// The series must outlive this object.
    explicit ShownQuotes(const ShownSeries& series);

    bool contains(OptionType type, double strike) const;

    /// Those with an implied volatility, ascending by strike, a call before the put of the same strike. In
    /// the money as well where the filter wants them: by parity they carry the volatility of the other option
    /// of their strike, but with the rounding error of a large price.
    QVector<Pricing::VolatilityPoint> points() const;

    /// The same with one option of a strike, that out of the money where there are two.
    QVector<Pricing::VolatilityPoint> onePerStrike() const;

private:
    const ShownSeries& m_series;
    double m_volatility;
};
