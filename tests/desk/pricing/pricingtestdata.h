#pragma once

#include <chain/optionchain.h>

#include <QMap>
#include <QVector>

#include <limits>

namespace PricingTest {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// What a careless caller may pass where a positive number is expected.
const QVector<double>& badNumbers();

OptionQuote settledQuote(OptionType type, const QString& strike, const QString& settlement);

/// The settlements of options on a crude-oil future; no quotes where the file is absent.
OptionSeries crudeOilSeries();
decimal crudeOilPriceStep();
constexpr double crudeOilForward = 92.85;
constexpr double crudeOilTime = 44.0 / 365.0;

/// The settlements of options on an index by expiry (YYYYMM); empty where the file is absent.
QMap<QString, OptionSeries> indexSeries();
decimal indexPriceStep();

}
