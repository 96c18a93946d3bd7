#pragma once

#include "plot2d/pricebased2dplotcurve.h"

#include <QList>
#include <QPointF>
#include <QVector>

#include <optional>

class QwtPlotDict;
class QwtPlotMarker;

/// Detaches and deletes markers from the end of a list until no more than so many are left. Who hears that
/// one is detached may have deleted others: those are only taken off the list.
void dropSurplusMarkers(const QwtPlotDict& plot, QList<QwtPlotMarker*>& markers, int wanted);

/// Takes off a list what is not, or no longer, attached to the plot.
void keepAttached(const QwtPlotDict& plot, QList<QwtPlotMarker*>& markers);

/// Puts the markers, in their order, on the marked points, shown or hidden, and gives all points as samples
/// of a curve. Nothing when a marked point finds no marker: the markers before it have been placed then.
std::optional<QVector<QPointF>> placeMarkers(
    const QVector<PriceBased2dPlotPoint>& points, const QList<QwtPlotMarker*>& markers, bool visible);
