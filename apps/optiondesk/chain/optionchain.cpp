#include "chain/optionchain.h"

std::optional<double> OptionQuote::price() const
{
    const bool quoted = bid && ask && *bid > decimal::zero && *ask >= *bid;
    if (quoted)
        return (bid->toDouble() + ask->toDouble()) / 2.0;
    if (settlement)
        return settlement->toDouble();
    if (last)
        return last->toDouble();
    return std::nullopt;
}
