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

/// Zooms about the cursor, or along one axis when the cursor is over it or a modifier asks for it. Whether a
/// scale was set, so that labels are out of date.
bool zoom(const Target& target, const QWheelEvent& event);

/// Where a drag began, where it was last, and where it is; (0, 0) means nowhere.
struct Drag {
    QPointF press;
    QPointF last;
    QPointF current;
};

/// Stretches or shrinks the axis on which a drag began by one step; false if nothing was to be done.
bool drag(const Target& target, const Drag& drag);

}
