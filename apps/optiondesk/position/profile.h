#pragma once

#include "position/breakevens.h"
#include "position/leg.h"

#include <pricing/blackgreeks.h>
#include <pricing/smile.h>

#include <QVector>

#include <optional>

namespace Position {

/// What the legs of one series are valued with.
struct SeriesValuation {
    /// Names the series.
    QDate expiry;
    Pricing::Market market;
    std::optional<Pricing::Smile> smile;
};

/// A leg with all that its value depends on.
struct ValuedLeg {
    Leg leg;
    Pricing::Market market;
    /// Its future's price over that of the series shown.
    double ratio = 1.0;
    /// The smile's at the strike, that of its nearest end outside of it; nothing for a future, and for an
    /// option without a smile.
    std::optional<double> volatility;
};

/// The value of one unit of a leg, at a price of the future of the series shown and some time before the
/// leg's expiry in years, none of it left for 0 and below. Black's with the volatility of the strike as it is
/// today, whatever the price (the smile sticks to the strikes); the intrinsic value at expiry. nullopt
/// where a volatility is needed and there is none, and for a price that is not positive and finite.
std::optional<double> unitValue(const ValuedLeg& leg, double price, double timeLeft);

/// Profit and loss of a position over the price of the future of the series shown, in the currency of the
/// legs, for quantities of one unit.
///
/// The futures of other series keep the ratio that their prices have now. "At expiry" is when the first of
/// the series shown and the legs' series expires: legs of later ones keep their time value. What was paid
/// bears no interest.
class Profile {
public:
    Profile() = default;
    /// Legs that are not valid or whose series is not among those of the valuations are left out, as are
    /// series with an invalid market. The first valuation is that of the series shown.
    Profile(const QVector<Leg>& legs, const QVector<SeriesValuation>& series);

    /// One for each leg that is not left out, in their order.
    const QVector<ValuedLeg>& legs() const { return m_legs; }
    int leftOut() const { return m_leftOut; }
    bool isEmpty() const { return m_legs.isEmpty(); }

    /// Of the future of the series shown.
    double forward() const { return m_forward; }
    /// Years until "at expiry".
    double timeToExpiry() const { return m_horizon; }
    /// Whether all legs expire then, so that the profit is linear between strikes.
    bool isPolygon() const;

    /// nullopt for prices that are not positive and finite, for no legs, and where an option has no
    /// volatility.
    std::optional<double> today(double price) const;
    /// The same; options that expire then need no volatility.
    std::optional<double> atExpiry(double price) const;

    /// Where the profit at expiry has a corner: prices of the future of the series shown, ascending, each
    /// once.
    QVector<double> corners() const;
    /// Of the profit at expiry, from a price of 0 upwards. None where atExpiry() has no value, and of legs of
    /// several expiries none beyond ten times the highest strike or forward.
    const QVector<BreakEven>& breakEvens() const { return m_breakEvens; }
    /// What the profit at expiry gains per price beyond all strikes.
    double lastSlope() const;

    /// Today's, at the forward, of all legs: delta and gamma by the price of the future of the series shown.
    /// nullopt where today() is.
    std::optional<Pricing::Greeks> greeks() const;

private:
    void add(const Leg& leg, const QVector<SeriesValuation>& series);
    std::optional<double> profit(double price, double passed) const;
    double rounding() const;
    PolygonProfit polygon() const;
    QVector<BreakEven> foundBreakEvens() const;

    QVector<ValuedLeg> m_legs;
    int m_leftOut = 0;
    double m_forward = 0.0;
    double m_horizon = 0.0;
    QVector<BreakEven> m_breakEvens;
};

/// The derivatives of unitValue() today at the forward, delta and gamma by the price of the future of the
/// series shown.
std::optional<Pricing::Greeks> unitGreeks(const ValuedLeg& leg);

}
