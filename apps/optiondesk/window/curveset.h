#pragma once

#include "window/commandline.h"
#include "window/shownseries.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <QList>
#include <QPointF>
#include <QVector>

/// What a curve of the desk shows.
enum class CurveRole {
    Smile,
    StatedVolatility,
    BidVolatility,
    AskVolatility,
    BidAskBand,
    ImpliedVolatility,
    CallValue,
    PutValue,
    MarketPrice,
    ProfitAtExpiry,
    ProfitToday,
    BreakEven,
    Forward
};

/// A curve's samples, ascending by price, those of the band in pairs of bid and ask at one strike.
/// Volatilities are fractions, values in the currency of the strike.
struct CurveSamples {
    CurveRole role = CurveRole::Smile;
    QVector<QPointF> samples;
    /// Instead of samples for the roles whose points can carry markers (ImpliedVolatility, MarketPrice,
    /// BreakEven).
    QVector<PriceBased2dPlotPoint> points;

    bool isEmpty() const { return samples.isEmpty() && points.isEmpty(); }
};

/// The samples of a series; plain functions of it.
namespace CurveSet {

/// The curves of a view in the order of a legend, those without samples left out. The smooth ones are
/// evaluated at the given strikes, volatilities and values outside the smile left out.
QVector<CurveSamples> curves(const ShownSeries& series, DeskView view, const QVector<double>& strikes);

/// The same, evaluated at smileStrikes().
QVector<CurveSamples> curves(const ShownSeries& series, DeskView view);

/// Of the curves only the smooth ones: the fitted smile, the theoretical values, or profit and loss.
QVector<CurveSamples> smoothCurves(const ShownSeries& series, DeskView view, const QVector<double>& strikes);

/// The strikes to evaluate the smile at: ascending, a few hundred, densest among the prices shown first, with
/// both ends of the smile. Empty without a smile.
QVector<double> smileStrikes(const ShownSeries& series);

/// Where a plot shows a series, and at which points it asks for values.
struct PlotPoints {
    /// Ascending; none where the plot knows none.
    QList<double> points;
    /// The smallest distance of neighbouring strikes.
    double minStep = 0.0;
    PriceRange visible;
};

/// The strikes to evaluate the smile at for a plot: ascending, with both ends of the smile and at least a
/// hundred among the visible ones. The plot's points far outside the visible range are thinned to its
/// smallest distance of strikes. smileStrikes() where the plot has no points.
QVector<double> smileStrikes(const ShownSeries& series, const PlotPoints& plot);

}
