#pragma once

#include <pricing/black.h>

#include <QMap>
#include <QVector>

namespace Pricing {

/// The implied volatility of one option.
struct VolatilityPoint {
    double strike = 0.0;
    OptionType type = OptionType::Call;
    /// As a fraction; positive.
    double volatility = 0.0;
    /// The price it was computed from.
    double price = 0.0;
    /// One standard error of the volatility from the uncertainty of the price: the rounding to the price
    /// step, or the distance of bid and ask where the price is their middle. Positive.
    double volatilityError = 0.0;
    /// Volume above zero.
    bool traded = false;
};

/// What an option's price says: a point, or the reason why there is none.
struct ValuedQuote {
    std::optional<VolatilityPoint> point;
    /// Meaningful only where there is no point.
    Refusal refusal = Refusal::NoPrice;
};

/// The width of the interval in which the true price lies that OptionQuote::price() stands for: the distance
/// of bid and ask where the price is their middle, the price step where that is larger or there is but one
/// price. A step that is not positive counts as an exact price.
double priceUncertainty(const OptionQuote& quote, const decimal& priceStep);

/// Values an option, in the money or out of it, by OptionQuote::price(). A step that is not positive counts
/// as an exact price.
ValuedQuote valueQuote(const OptionQuote& quote, const Market& market, const decimal& priceStep);

struct SeriesAnalysis {
    /// Of the out-of-the-money options, ascending by strike.
    QVector<VolatilityPoint> points;
    /// How many out-of-the-money quotes have no point, by reason; reasons that did not occur are absent.
    QMap<Refusal, int> leftOut;
    /// How many quotes were not considered for being in the money.
    int inTheMoney = 0;
};

/// Implied volatilities of the out-of-the-money options (puts below the forward, calls from it upwards)
/// from OptionQuote::price(). In-the-money options carry the same volatility by parity, but with the
/// rounding error of a large price. An invalid market leaves out all quotes as InvalidInput; a step that is
/// not positive counts as exact prices.
SeriesAnalysis analyseSeries(const OptionSeries& series, const Market& market, const decimal& priceStep);

}
