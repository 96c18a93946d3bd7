#pragma once

#include "position/profile.h"

#include <QCoreApplication>
#include <QString>

#include <optional>

namespace Position {

/// Legs and their numbers in the user's locale.
class LegTexts {
    Q_DECLARE_TR_FUNCTIONS(LegTexts)

public:
    static QString kind(LegKind kind);
    /// "14 Nov 2012" in the language of the texts; "none" for an invalid date.
    static QString expiry(const QDate& date);

    /// With at most this many decimals, without trailing zeros and without separators of thousands, so that
    /// number() reads it again.
    static QString number(double value, int decimals);
    /// The same with a plus before what is positive.
    static QString signedNumber(double value, int decimals);
    /// The number that a user types in the locale's way; nothing for anything else.
    static std::optional<double> number(const QString& text);

    /// "94.85 and 105.15"; "96 to 98" for a range, "above 105" for one without end. With at most this many
    /// decimals.
    static QString breakEvens(const QVector<BreakEven>& all, int decimals);

    /// What a position is worth, in one line: profit now, break-evens, delta, gamma, vega for a point of
    /// volatility, theta for a day, and what is left out of it. Prices have at most this many decimals.
    static QString summary(const Profile& profile, int decimals);
};

}
