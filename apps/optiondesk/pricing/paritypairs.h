#pragma once

#include <chain/optionchain.h>

#include <vector>

namespace Pricing {

/// The call and the put of one strike.
struct ParityPair {
    double strike = 0.0;
    double callMinusPut = 0.0;
    /// One standard error of callMinusPut from the uncertainties of the two prices, see priceUncertainty();
    /// 0 for exact prices.
    double error = 0.0;
};

/// Of the strikes at which call and put both have a positive price, ascending. A price step that is not
/// positive counts as exact prices.
std::vector<ParityPair> parityPairs(const OptionSeries& series, const decimal& priceStep);

}
