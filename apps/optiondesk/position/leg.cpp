#include "position/leg.h"

#include <cmath>
#include <tuple>

bool Position::isValid(const Leg& leg)
{
    if (leg.quantity == 0 || leg.quantity > largestQuantity || leg.quantity < -largestQuantity
        || !(std::abs(leg.price) <= largestPrice))
        return false;
    if (leg.kind == LegKind::Future)
        return true;
    return leg.strike > 0.0 && leg.strike <= largestPrice && leg.price >= 0.0;
}

bool Position::operator==(const Leg& a, const Leg& b)
{
    const auto all = [](const Leg& leg) {
        return std::make_tuple(leg.kind, leg.expiry, leg.quantity, leg.strike, leg.price);
    };
    return all(a) == all(b);
}
