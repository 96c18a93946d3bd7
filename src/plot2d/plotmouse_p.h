#pragma once

#include <QPointF>

class PriceBased2dPlot;
class PriceBased2dPlotPicker;
class PriceBased2dPlotScaleDraw;
class QWheelEvent;

/// What the wheel and a drag on an axis do to a plot: they collect what ViewZoom needs and apply its answer.
namespace PlotMouse {

/// The objects of a plot that the mouse works on.
struct Target {
    PriceBased2dPlot& plot;
    const PriceBased2dPlotPicker* picker = nullptr;
    const PriceBased2dPlotScaleDraw* valueScale = nullptr;
};

/// Zooms about the cursor, or along one axis when the cursor is over it or a modifier asks for it. False
/// where nothing was done: without a picker, which tells the values under the cursor, and for a view that is
/// not finite or that a scale would not take. The plot may be gone afterwards.
bool zoom(const Target& target, const QWheelEvent& event);

/// Where a drag began, where it was last, and where it is; (0, 0) means nowhere.
struct Drag {
    QPointF press;
    QPointF last;
    QPointF current;
};

/// Stretches or shrinks the axis on which a drag began by one step; false if nothing was done, also where the
/// scale would not take the step. The plot may be gone afterwards.
bool drag(const Target& target, const Drag& drag);

}
