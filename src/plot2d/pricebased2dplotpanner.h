#pragma once

#include "plot2d/plot2dexport.h"

#include <QList>
#include <QPointer>

#include <qwt_plot_panner.h>

class PriceBased2dPlot;
class QwtPlotCanvas;

/// Lets the user drag the canvas of a plot, within the data, and holds the plot's auto-scale flag.
class PLOT2D_EXPORT PriceBased2dPlotPanner : public QwtPlotPanner {
    Q_OBJECT

public:
    /// A panner of the plot whose canvas this is; the canvas owns it. On the canvas of another plot than a
    /// PriceBased2dPlot nothing moves.
    explicit PriceBased2dPlotPanner(QwtPlotCanvas* canvas);
    ~PriceBased2dPlotPanner() override;

    /// Whether the vertical axis is to follow the curves; on after construction. Emits nothing, moves
    /// nothing.
    void setAutoScaleEnabled(bool enabled);
    /// Whether the vertical axis follows the curves.
    bool autoScaleEnabled() const;

    /// A shift in pixels, from 0 to maxShift, that brings one bound of an axis (side 0 the lower, 1 the
    /// upper) just past a value, by less than a tenth of the span; the largest double where there is none,
    /// and for any other side or axis.
    double getShiftUntilValue(double value, int axis, int side, double maxShift);

    /// Moves the scales by an offset in pixels, shortened where the view would pass the end of the data, and
    /// has Qwt replot. Emits autoScaleEnabled(false) before, if the auto-scale is on, and updateLabels()
    /// after.
    ///
    /// Nothing moves, and nothing is emitted, without data, where no price with data would be left in view,
    /// where the data ends already, and where a scale would not take its new range.
    void moveCanvas(int dx, int dy) override;

    /// Handles the canvas's events as Qwt does. One at whose end the canvas is no more, deleted by a slot, is
    /// kept from Qt, which would go on to the canvas's next filter.
    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The scales have moved by a drag.
    void updateLabels();
    /// Panning asks for the auto-scale to be switched off, by false, each time before the scales move as long
    /// as it is on. The panner itself keeps its flag.
    void autoScaleEnabled(bool enable);

private:
    void announceAndMove(int dx, int dy);
    /// Whether the ranges that a drag gives to the axes in sight are finite, and the view's own divisible.
    bool canMove(int dx, int dy) const;
    /// Switches off the axes that a drag would give a range which Qwt cannot divide, and names them.
    QList<int> holdAxes(int dx, int dy);

    QPointer<PriceBased2dPlot> m_plot;
    bool m_autoScale = true;
};
