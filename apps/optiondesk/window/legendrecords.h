#pragma once

#include <QByteArray>

/// The state that a PriceBased2dPlotLegend stores of the curves on its plot.
namespace LegendRecords {

/// A stored state, and after its records those of an earlier one whose data types it says nothing of: what
/// the user has chosen about curves that are not on the plot now. Bytes that are no state add nothing.
QByteArray withMissing(const QByteArray& state, const QByteArray& earlier);

}
