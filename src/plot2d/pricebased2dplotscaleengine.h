#pragma once

#include "plot2d/plot2dexport.h"

#include <database/decimal.h>

#include <qwt_scale_engine.h>

class PriceBased2dPlot;
class PriceBased2dPlotScaleDraw;

/// Divides the horizontal (price) axis of a plot into ticks, one of which falls on the price to which the
/// axis's labels relate: their texts are then round numbers in the converted unit.
class PLOT2D_EXPORT PriceBased2dPlotScaleEngine : public QwtLinearScaleEngine {
public:
    /// For an axis (a QwtPlot axis id) of a plot, which may be null and must outlive the engine; base is the
    /// base of Qwt's linear division.
    PriceBased2dPlotScaleEngine(PriceBased2dPlot* plot, int axis, unsigned int base);
    ~PriceBased2dPlotScaleEngine() override;

    /// Qwt's linear division, moved so that a tick falls on the rescale factor where that lies in the closed
    /// range from x1 to x2. A step of 0 is chosen by Qwt.
    ///
    /// Bounds and steps that Qwt cannot divide in reasonable time and memory get the last division that this
    /// engine made, an empty one at first.
    QwtScaleDiv divideScale(
        double x1, double x2, int maxMajorSteps, int maxMinorSteps, double stepSize) const override;

    /// The price to which the axis's labels relate; zero (as after construction) for none. One within a unit
    /// of the last decimal of an integer counts as that integer; one beyond 32-bit integers is not anchored.
    void setRescaleFactor(const decimal& factor) { m_rescaleFactor = factor; }
    /// The price to which the labels relate, zero for none.
    decimal rescaleFactor() const { return m_rescaleFactor; }

    /// The number of decimals of strikes, as the host's securities table told it at construction; -1 where
    /// that has no strikes. Below 1 nothing is anchored.
    int strikePrecision() const { return m_strikePrecision; }

    /// Links the scale draw that says whether labels can still be told apart. With one, an engine of the
    /// vertical axis (axis 0) keeps its previous, wider division while auto-scale is off. Not owned: link
    /// another or null before it is deleted, as by an axis that gets another draw. The plot sets none.
    void setScaleDraw(PriceBased2dPlotScaleDraw* scaleDraw) { m_scaleDraw = scaleDraw; }

private:
    struct Arguments {
        double lower = 2.0;
        double upper = 1.0;
        int maxMajorSteps = 0;
        int maxMinorSteps = 0;
        double step = 0.0;
    };

    QwtScaleDiv keptOrNew(const QwtScaleDiv& division, const Arguments& arguments) const;
    bool keepsPrevious(const QwtScaleDiv& division) const;

    PriceBased2dPlot* m_plot;
    int m_axis;
    decimal m_rescaleFactor;
    int m_strikePrecision;
    PriceBased2dPlotScaleDraw* m_scaleDraw = nullptr;
    /// Those of the last division made; inverted at first.
    mutable Arguments m_previous;
    mutable QwtScaleDiv m_lastDivision;
};
