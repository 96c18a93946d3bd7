#pragma once

#include <window/commandline.h>
#include <window/shownseries.h>

#include <QPointF>
#include <QVector>

/// What is drawn of a series beside the chosen one.
namespace OverlaySamples {

/// Its smile (as fractions), or the theoretical value of its out-of-the-money options, over the prices that
/// it would show first by itself: beyond 3.5 standard deviations, prices of a step or two give volatilities
/// that would flatten the other curves. Ascending by price, dense enough to zoom in; empty without a smile,
/// and in the view of the position, which is one curve for all series.
QVector<QPointF> of(const ShownSeries& series, DeskView view);

}
