#pragma once

#include <chain/optionchain.h>

/// What must hold of chains, whatever they were read from.
namespace ChainCheck {

/// Ends the process for a chain that is not whole: out of order, empty, without a step that all prices are
/// multiples of, or with a number that cannot be.
void expectWhole(const OptionChain& chain);

/// Ends the process where two chains differ in what a table holds of them: in all but the base code and the
/// volatilities.
void expectSame(const OptionChain& a, const OptionChain& b);

}
