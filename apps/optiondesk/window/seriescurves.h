#pragma once

#include "window/curveset.h"

#include <QColor>
#include <QMap>

class PriceBased2dPlot;
class PriceBased2dPlotCurve;

/// The curves of a series on a plot, one for each role. Curves that stay keep their object, their visibility
/// and their entry in the legend; those of other series (OverlayCurve) are left alone.
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

    /// Gives the curve of this title a colour, and its markers with it, now or when it is attached. The line
    /// at the forward keeps its own.
    void setColor(const QString& title, const QColor& color);
    /// The colour that the curve of a role has when it is attached.
    QColor color(CurveRole role) const;
    /// The colour of the attached curve of this title; invalid if there is none.
    QColor color(const QString& title) const;

private:
    PriceBased2dPlotCurve* find(CurveRole role) const;
    PriceBased2dPlotCurve* find(int dataType, const QString& title) const;
    void colorMarkers(const QColor& color);
    void attach(const CurveSamples& samples);
    bool removeOthers(const QVector<CurveSamples>& curves);
    static void fill(PriceBased2dPlotCurve& curve, const CurveSamples& samples);

    PriceBased2dPlot& m_plot;
    /// What the user has chosen, by titles.
    QMap<QString, QColor> m_colors;
};
