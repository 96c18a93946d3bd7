#pragma once

#include "position/leg.h"

#include <QVector>

#include <optional>

namespace Position {

/// What a table of legs asks of the market.
class LegMarket {
public:
    LegMarket() = default;
    LegMarket(const LegMarket&) = delete;
    LegMarket& operator=(const LegMarket&) = delete;
    virtual ~LegMarket() = default;

    /// Of the series of the underlying, ascending.
    virtual QVector<QDate> expiries() const = 0;
    /// The leg to begin with: one at the money.
    virtual Leg suggestedLeg() const = 0;
    /// What the leg trades at; nothing where nobody knows.
    virtual std::optional<double> price(const Leg& leg) const = 0;
};

}
