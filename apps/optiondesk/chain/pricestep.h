#pragma once

#include <database/decimal.h>

#include <QVector>

/// The largest of 1, 0.5, 0.25, 0.1, 0.05, 0.025, 0.01 ... that all values are multiples of; 1 without
/// values.
decimal commonStep(const QVector<decimal>& values);

/// How many decimals a value needs, 0 to 18.
short neededDecimals(const decimal& value);
