#pragma once

#include <position/profile.h>

/// Series and legs for the tests of positions.
namespace PositionTest {

inline const QDate nearExpiry(2024, 4, 2);
inline const QDate farExpiry(2024, 7, 2);
constexpr double forward = 100.0;
constexpr double nearTime = 91.0 / 365.0;
constexpr double farTime = 182.0 / 365.0;

/// A smile through three points at the strikes 50, 100 and 200.
inline Pricing::Smile smile(double low, double middle, double high)
{
    QVector<Pricing::VolatilityPoint> points;
    for (const auto& [strike, volatility] : {std::pair(50.0, low), {100.0, middle}, {200.0, high}}) {
        Pricing::VolatilityPoint point;
        point.strike = strike;
        point.volatility = volatility;
        point.volatilityError = 1e-9;
        points.append(point);
    }
    return Pricing::Smile::fit(points).value();
}

/// At a forward of 100 with 91 days left, and at 104 with 182.
inline QVector<Position::SeriesValuation> bothSeries()
{
    return {{nearExpiry, {forward, nearTime}, smile(0.4, 0.3, 0.35)},
        {farExpiry, {104.0, farTime}, smile(0.35, 0.28, 0.3)}};
}

inline Position::Leg leg(Position::LegKind kind, int quantity, double strike, double price)
{
    return {kind, nearExpiry, quantity, strike, price};
}

inline Position::Leg farLeg(Position::LegKind kind, int quantity, double strike, double price)
{
    return {kind, farExpiry, quantity, strike, price};
}

}
