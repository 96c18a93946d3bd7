#pragma once

#include "plot2d/pricebased2dplotcurve.h"

#include <QList>
#include <QPointF>
#include <QVector>

#include <optional>

class QwtPlotMarker;

/// Puts the markers, in their order, on the marked points, shown or hidden, and gives all points as samples
/// of a curve. Nothing when a marked point finds no marker: the markers before it have been placed then.
std::optional<QVector<QPointF>> placeMarkers(
    const QVector<PriceBased2dPlotPoint>& points, const QList<QwtPlotMarker*>& markers, bool visible);
