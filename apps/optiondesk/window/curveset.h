#pragma once

#include "window/commandline.h"
#include "window/shownseries.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <QPointF>
#include <QVector>

/// What a curve of the desk shows.
enum class CurveRole {
    Smile,
    StatedVolatility,
    BidVolatility,
    AskVolatility,
    ImpliedVolatility,
    CallValue,
    PutValue,
    MarketPrice,
    Forward
};

/// A curve's samples, ascending by price. Volatilities are fractions, values in the currency of the strike.
struct CurveSamples {
    CurveRole role = CurveRole::Smile;
    QVector<QPointF> samples;
    /// Instead of samples for the roles whose points can carry markers (ImpliedVolatility, MarketPrice).
    QVector<PriceBased2dPlotPoint> points;

    bool isEmpty() const { return samples.isEmpty() && points.isEmpty(); }
};

/// The samples of a series; plain functions of it.
namespace CurveSet {

/// The curves of a view in the order of a legend, those without samples left out.
QVector<CurveSamples> curves(const ShownSeries& series, DeskView view);

/// The strikes to evaluate the smile at: ascending, a few hundred, densest among the visible prices, with
/// both ends of the smile. Empty without a smile.
QVector<double> smileStrikes(const ShownSeries& series);

}
