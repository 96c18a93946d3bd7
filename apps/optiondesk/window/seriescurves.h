#pragma once

#include "window/curveset.h"

#include <QPointer>

class PriceBased2dPlot;
class PriceBased2dPlotCurve;

/// The curves of a series on a plot, one for each role. Curves that stay keep their object, their visibility
/// and their entry in the legend.
class SeriesCurves {
public:
    /// The plot must outlive this object.
    explicit SeriesCurves(PriceBased2dPlot& plot);

    /// Gives the curves of these roles their samples, attaches those that are missing and takes all others
    /// away. Whether a curve was attached or taken away.
    bool set(const QVector<CurveSamples>& curves);

    /// Gives attached curves new samples; others are passed over.
    void resample(const QVector<CurveSamples>& curves);

    void clear();

private:
    PriceBased2dPlotCurve* find(CurveRole role) const;
    void attach(const CurveSamples& samples);
    bool removeOthers(const QVector<CurveSamples>& curves);
    static void fill(PriceBased2dPlotCurve& curve, const CurveSamples& samples);

    PriceBased2dPlot& m_plot;
};
