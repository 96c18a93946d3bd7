#pragma once

#include <QByteArray>

/// The state that a PriceBased2dPlotLegend stores of the curves on its plot.
namespace LegendRecords {

/// A stored state, and after its records the valid ones of an earlier state whose data types it has no valid
/// record of: what the user has chosen about curves that are not on the plot now. Bytes that are no state add
/// nothing.
QByteArray withMissing(const QByteArray& state, const QByteArray& earlier);

}
