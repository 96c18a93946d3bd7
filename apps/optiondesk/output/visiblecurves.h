#pragma once

#include <QVector>

class PriceBased2dPlot;
class PriceBased2dPlotCurve;

/// The visible curves of a plot in the order of its legend, or of its items where it has none.
QVector<const PriceBased2dPlotCurve*> visibleCurves(const PriceBased2dPlot& plot);
