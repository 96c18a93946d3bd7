#pragma once

#include <chain/optionchain.h>

class QWidget;

/// Reads a chain's file and shows the progress, with a way to stop, when that takes more than half a second.
/// Throws ChainError as readChain() does. A null parent is allowed.
OptionChain loadChain(const QString& fileName, QWidget* parent);
