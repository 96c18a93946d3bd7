#pragma once

#include "differential/plaincurves.h"

namespace Plain {

/// A view and a cursor in it; the cursor's place is counted from the view's lower left corner.
struct Cursor {
    double xMin = 0.0;
    double xMax = 0.0;
    double yMin = 0.0;
    double yMax = 0.0;
    double x = 0.0;
    double y = 0.0;
};

/// A sample that was found: -1 for none.
struct Closest {
    int curve = -1;
    int sample = -1;
    double distance = -1.0;
};

/// The visible sample of one curve that is nearest in percent of the view.
Closest closestSample(const QVector<QPointF>& samples, const Cursor& cursor, double priceStep);

/// The nearest of all curves that can be picked; the cursor stands at a place of the plot and is moved to the
/// next price first.
Closest closestCurve(const QList<Curve>& curves, const Cursor& view, const QPointF& place, double priceStep);

}
