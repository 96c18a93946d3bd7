#pragma once

#include <chain/optionchain.h>
#include <position/profile.h>
#include <pricing/optionfilter.h>
#include <pricing/seriesanalysis.h>
#include <pricing/smile.h>

#include <QDate>
#include <QString>

#include <optional>

/// What is known of a series before it is valued.
struct SeriesData {
    QString baseCode;
    /// Invalid where it is not known.
    QDate asOf;
    decimal priceStep;
    short decimals = 2;
    /// With the stated forward and the expiry where they are known.
    OptionSeries options;
};

/// What the user says of a series beside its data; it has precedence.
struct SeriesFacts {
    std::optional<double> forward;
    QDate asOf;
    /// Names the series, or is the expiry of one that states none.
    QDate expiry;
};

enum class ForwardSource { Given, Stated, Parity };

enum class TimeSource {
    /// The days between the date of the prices and the expiry.
    Dates,
    /// Inferred from the stated volatilities.
    Volatilities,
    /// Nothing is known: assumedDays.
    Assumed
};

constexpr int assumedDays = 30;

/// A series with all that is drawn and said of it.
struct ShownSeries {
    SeriesData data;
    Pricing::Market market;
    ForwardSource forwardSource = ForwardSource::Stated;
    TimeSource timeSource = TimeSource::Dates;
    Pricing::SeriesAnalysis analysis;
    /// How the smile was to be fitted; it says itself whether it was.
    Pricing::SmileModel smileModel = Pricing::SmileModel::Spline;
    /// Empty where no option has an implied volatility.
    std::optional<Pricing::Smile> smile;
    /// Which options are shown (see ShownQuotes). What the smile is fitted to does not depend on it: the
    /// curve to compare quotes with must not move with the choice of those that one looks at.
    Pricing::OptionFilter filter;
    /// Of the underlying, valued with this series; empty without a position.
    Position::Profile position;
};

/// Values a series: its forward is the given one, else the stated one, else that of put-call parity, and its
/// rate the one with which Pricing::parityDiscount() discounts over the time to expiry. Throws Exception
/// where there is no forward of the three.
ShownSeries valuedSeries(const SeriesData& data, const std::optional<double>& givenForward,
    Pricing::SmileModel smileModel = Pricing::SmileModel::Spline);

/// The smile's volatility at the forward, at the nearest of its ends where the forward is outside; 0 without
/// a smile.
double volatilityAtForward(const ShownSeries& series);

/// One standard deviation of the logarithm of the price until expiry: volatilityAtForward() times the root of
/// the time.
double logDeviation(const ShownSeries& series);

/// A range of prices.
struct PriceRange {
    double low = 0.0;
    double high = 0.0;
};

/// The prices to show first: the forward and 3.5 standard deviations of its logarithm to each side, no
/// further than the strikes that have a price, with a small margin. In the wings beyond, prices of a step or
/// two give volatilities that would flatten the picture. A single strike that is more than two deviations
/// from the forward and half a deviation from its neighbour would leave most of the picture empty, and is not
/// counted. All strikes where the range holds fewer than three of the points.
PriceRange visiblePrices(const ShownSeries& series);
