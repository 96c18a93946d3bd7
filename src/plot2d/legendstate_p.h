#pragma once

#include "plot2d/pricebased2dplotcurve.h"

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QVector>

/// The stored state of a legend: a header (tag 1, version 5, number of curves, each 32 bits) and the record
/// of each curve, as a big-endian QDataStream of version Qt 4.0.
namespace LegendState {

/// The record of each curve, in their order.
QByteArray write(const QList<PriceBased2dPlotCurve*>& curves);

/// The valid records of a stored state for these data types, the first of each, in their order. Reading ends
/// at the first record that is not whole; bytes with another header hold no records. No more is kept than
/// there are types, whatever the bytes say.
QVector<PriceBased2dPlotCurve::CurveParams> read(const QByteArray& bytes, const QSet<int>& types);

}
