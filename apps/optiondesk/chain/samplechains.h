#pragma once

#include <QStringList>

/// The names of the built-in sample chains, files of Qt's resources that readChain() takes; sorted.
QStringList sampleChainFiles();
