#include "chain/pricestep.h"

#include <algorithm>

namespace {

// Whether all values are multiples of 10^-decimals / divisor.
bool fits(const QVector<decimal>& values, const decimal& divisor, short decimals)
{
    return std::all_of(values.begin(), values.end(), [&](const decimal& value) {
        const decimal scaled = value * divisor;
        return scaled.rounded(decimals) == scaled;
    });
}

}

decimal commonStep(const QVector<decimal>& values)
{
    for (short decimals = 0; decimals + 2 <= decimal::maxDecimals; ++decimals) {
        if (fits(values, decimal::fromUnits(1, 0), decimals))
            return decimal::fromUnits(1, decimals);
        if (fits(values, decimal::fromUnits(2, 0), decimals))
            return decimal::fromUnits(5, short(decimals + 1));
        if (fits(values, decimal::fromUnits(4, 0), decimals))
            return decimal::fromUnits(25, short(decimals + 2));
    }
    return decimal::fromUnits(1, decimal::maxDecimals);
}

short neededDecimals(const decimal& value)
{
    short decimals = 0;
    while (decimals < decimal::maxDecimals && value.rounded(decimals) != value)
        ++decimals;
    return decimals;
}
