#pragma once

#include "chain/optionchain.h"

#include <QByteArray>
#include <QStringList>

/// Chains as text, for comparison in tests.
namespace ChainText {

/// Reads a chain from text under a file's name.
OptionChain read(const QByteArray& text, const QString& name = QStringLiteral("test.csv"));

/// The error that reading ends with, as "LINE: reason"; empty if it ends with none.
QString errorOf(const QByteArray& text);

/// The chain in lines: "BASE DAY step STEP decimals N", for each series "EXPIRY FORWARD", for each option
/// "C STRIKE b=BID a=ASK l=LAST s=SETTLEMENT v=VOLUME i=INTEREST iv=VOLATILITY" with what is known.
QStringList describe(const OptionChain& chain);

/// The lines of the options only.
QStringList describeOptions(const OptionChain& chain);

}
