#pragma once

#include <QDate>

namespace Position {

enum class LegKind : char { Future = 'F', Call = 'C', Put = 'P' };

/// One part of a position: a number of futures or of options of one strike. Prices and strikes are in the
/// currency of the underlying, for one unit of it.
struct Leg {
    LegKind kind = LegKind::Call;
    /// The series', which names it within its underlying; invalid for the series that states none.
    QDate expiry;
    /// Positive for bought, negative for sold.
    int quantity = 1;
    /// Positive; of no meaning for a future.
    double strike = 0.0;
    /// What was paid or got per unit.
    double price = 0.0;
};

constexpr int largestQuantity = 1000000;
/// Of strikes and prices.
constexpr double largestPrice = 1e9;

/// Whether every number is finite and in its range: a quantity other than 0, a positive strike of an option,
/// a price of an option that is not negative. A future's price may be negative.
bool isValid(const Leg& leg);

bool operator==(const Leg& a, const Leg& b);
inline bool operator!=(const Leg& a, const Leg& b)
{
    return !(a == b);
}

}
