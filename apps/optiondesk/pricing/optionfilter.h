#pragma once

#include <pricing/black.h>

#include <QString>

#include <optional>

namespace Pricing {

enum class OptionSide { CallsAndPuts, Calls, Puts };

/// Which options of a series are shown.
struct OptionFilter {
    /// Puts below the forward and calls from it upwards alone.
    bool outOfTheMoneyOnly = true;
    OptionSide side = OptionSide::CallsAndPuts;
    /// The strikes within so many standard deviations of the forward; all for 0.
    int deviations = 0;

    friend bool operator==(const OptionFilter& a, const OptionFilter& b)
    {
        return a.outOfTheMoneyOnly == b.outOfTheMoneyOnly && a.side == b.side && a.deviations == b.deviations;
    }
    friend bool operator!=(const OptionFilter& a, const OptionFilter& b) { return !(a == b); }
};

/// The most deviations that a filter is read with.
constexpr int mostDeviations = 9;

/// How far a strike is from the forward, in standard deviations of the forward's logarithm at expiry:
/// ln(strike / forward) / (volatility * sqrt(time)). Negative below the forward; nullopt where the market is
/// invalid, or strike or volatility not positive and finite.
std::optional<double> deviationsFromForward(double strike, const Market& market, double volatility);

/// Whether a filter lets an option through. The volatility is that at the forward, one for all strikes, so
/// that the strikes let through are an interval; where it is not positive and finite, or the market invalid,
/// the strikes are not limited. A strike on the limit is let through.
bool passes(const OptionFilter& filter, OptionType type, double strike, const Market& market,
    double volatilityAtForward);

/// A filter as one line of text for a session's memory, "otm both 2".
QString toText(const OptionFilter& filter);
/// The filter of such a text; nullopt for any other text.
std::optional<OptionFilter> filterFromText(const QString& text);

}
