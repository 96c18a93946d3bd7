#include "position/profile.h"

#include <algorithm>
#include <cmath>

namespace Position {

namespace {

// A second, in years: series of one expiry may have got their times by different ways.
constexpr double sameTime = 1.0 / (365.0 * 86400.0);
// Of sums of prices, relative to their largest part.
constexpr double relativeRounding = 1e-12;
// Of the highest strike or forward. What the small difference of two futures' slopes brings about beyond is
// no price that anybody waits for.
constexpr double farthest = 10.0;

bool isPrice(double price)
{
    return std::isfinite(price) && price > 0.0;
}

OptionType typeOf(const Leg& leg)
{
    return leg.kind == LegKind::Call ? OptionType::Call : OptionType::Put;
}

double intrinsicValue(const Leg& leg, double price)
{
    switch (leg.kind) {
    case LegKind::Future:
        return price;
    case LegKind::Call:
        return std::max(price - leg.strike, 0.0);
    case LegKind::Put:
        return std::max(leg.strike - price, 0.0);
    }
    return 0.0;
}

std::optional<double> volatilityAt(const std::optional<Pricing::Smile>& smile, double strike)
{
    if (!smile)
        return std::nullopt;
    return smile->volatility(std::clamp(strike, smile->minStrike(), smile->maxStrike()));
}

}

std::optional<double> unitValue(const ValuedLeg& leg, double price, double timeLeft)
{
    const double own = price * leg.ratio;
    if (!isPrice(own))
        return std::nullopt;
    if (leg.leg.kind == LegKind::Future || timeLeft <= sameTime)
        return intrinsicValue(leg.leg, own);
    if (!leg.volatility)
        return std::nullopt;
    return Pricing::blackPrice(
        typeOf(leg.leg), leg.leg.strike, {own, timeLeft, leg.market.rate}, *leg.volatility);
}

std::optional<Pricing::Greeks> unitGreeks(const ValuedLeg& leg)
{
    Pricing::Greeks greeks;
    if (leg.leg.kind == LegKind::Future) {
        greeks.delta = leg.ratio;
        return greeks;
    }
    if (!leg.volatility)
        return std::nullopt;
    std::optional<Pricing::Greeks> option
        = Pricing::blackGreeks(typeOf(leg.leg), leg.leg.strike, leg.market, *leg.volatility);
    if (option) {
        option->delta *= leg.ratio;
        option->gamma *= leg.ratio * leg.ratio;
    }
    return option;
}

Profile::Profile(const QVector<Leg>& legs, const QVector<SeriesValuation>& series)
{
    if (!series.isEmpty() && series.first().market.isValid()) {
        m_forward = series.first().market.forward;
        m_horizon = series.first().market.time;
        for (const Leg& leg : legs)
            add(leg, series);
    }
    m_leftOut = legs.size() - m_legs.size();
    for (const ValuedLeg& leg : qAsConst(m_legs))
        m_horizon = std::min(m_horizon, leg.market.time);
    m_breakEvens = foundBreakEvens();
}

void Profile::add(const Leg& leg, const QVector<SeriesValuation>& series)
{
    const auto own = std::find_if(series.begin(), series.end(), [&leg](const SeriesValuation& valuation) {
        return valuation.expiry == leg.expiry && valuation.market.isValid();
    });
    if (own == series.end() || !isValid(leg))
        return;
    ValuedLeg valued{leg, own->market, own->market.forward / m_forward, std::nullopt};
    if (leg.kind != LegKind::Future)
        valued.volatility = volatilityAt(own->smile, leg.strike);
    m_legs.append(valued);
}

bool Profile::isPolygon() const
{
    return std::all_of(m_legs.begin(), m_legs.end(), [this](const ValuedLeg& leg) {
        return leg.leg.kind == LegKind::Future || leg.market.time - m_horizon <= sameTime;
    });
}

std::optional<double> Profile::profit(double price, double passed) const
{
    if (m_legs.isEmpty())
        return std::nullopt;
    double sum = 0.0;
    for (const ValuedLeg& leg : m_legs) {
        const std::optional<double> value = unitValue(leg, price, leg.market.time - passed);
        if (!value)
            return std::nullopt;
        sum += leg.leg.quantity * (*value - leg.leg.price);
    }
    return sum;
}

std::optional<double> Profile::today(double price) const
{
    return profit(price, 0.0);
}

std::optional<double> Profile::atExpiry(double price) const
{
    return profit(price, m_horizon);
}

QVector<double> Profile::corners() const
{
    QVector<double> prices;
    for (const ValuedLeg& leg : m_legs) {
        if (leg.leg.kind != LegKind::Future && leg.market.time - m_horizon <= sameTime)
            prices.append(leg.leg.strike / leg.ratio);
    }
    std::sort(prices.begin(), prices.end());
    prices.erase(std::unique(prices.begin(), prices.end()), prices.end());
    return prices;
}

double Profile::lastSlope() const
{
    double slope = 0.0;
    for (const ValuedLeg& leg : m_legs) {
        const double slopeOfOne = leg.leg.kind == LegKind::Put ? 0.0 : leg.leg.quantity * leg.ratio;
        // A call of a later expiry is worth its intrinsic value of then, discounted.
        const bool isPaidLater = leg.leg.kind == LegKind::Call && leg.market.time - m_horizon > sameTime;
        slope += isPaidLater ? slopeOfOne * std::exp(-leg.market.rate * (leg.market.time - m_horizon))
                             : slopeOfOne;
    }
    return slope;
}

double Profile::rounding() const
{
    double largest = 0.0;
    for (const ValuedLeg& leg : m_legs) {
        const double scale = std::max({leg.leg.strike, std::abs(leg.leg.price), leg.market.forward});
        largest += std::abs(leg.leg.quantity) * scale;
    }
    return largest * relativeRounding;
}

PolygonProfit Profile::polygon() const
{
    PolygonProfit polygon;
    const auto at = [this](double price) {
        double sum = 0.0;
        for (const ValuedLeg& leg : m_legs)
            sum += leg.leg.quantity * (intrinsicValue(leg.leg, price * leg.ratio) - leg.leg.price);
        return sum;
    };
    polygon.points.append({0.0, at(0.0)});
    const QVector<double> prices = corners();
    for (const double price : prices)
        polygon.points.append({price, at(price)});
    polygon.lastSlope = lastSlope();
    polygon.rounding = rounding();
    for (const ValuedLeg& leg : m_legs)
        polygon.slopeRounding += std::abs(leg.leg.quantity) * leg.ratio * relativeRounding;
    return polygon;
}

QVector<BreakEven> Profile::foundBreakEvens() const
{
    if (!atExpiry(m_forward))
        return {};
    const PolygonProfit corners = polygon();
    if (isPolygon())
        return Position::breakEvens(corners);
    CurvedProfit profit;
    profit.at = [this](double price) { return atExpiry(price).value_or(0.0); };
    profit.centres = {m_forward};
    for (const ValuedLeg& leg : m_legs) {
        if (leg.leg.kind != LegKind::Future)
            profit.centres.append(leg.leg.strike / leg.ratio);
    }
    profit.lastSlope = std::abs(corners.lastSlope) <= corners.slopeRounding ? 0.0 : corners.lastSlope;
    profit.rounding = corners.rounding;
    QVector<BreakEven> found = Position::breakEvens(profit);
    const double tooHigh = farthest * *std::max_element(profit.centres.begin(), profit.centres.end());
    found.erase(std::remove_if(found.begin(), found.end(),
                    [tooHigh](const BreakEven& each) { return each.low > tooHigh; }),
        found.end());
    return found;
}

std::optional<Pricing::Greeks> Profile::greeks() const
{
    if (m_legs.isEmpty())
        return std::nullopt;
    Pricing::Greeks sum;
    for (const ValuedLeg& leg : m_legs) {
        const std::optional<Pricing::Greeks> one = unitGreeks(leg);
        if (!one)
            return std::nullopt;
        sum.delta += leg.leg.quantity * one->delta;
        sum.gamma += leg.leg.quantity * one->gamma;
        sum.vega += leg.leg.quantity * one->vega;
        sum.theta += leg.leg.quantity * one->theta;
    }
    return sum;
}

}
