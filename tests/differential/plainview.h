#pragma once

#include "differential/plainclosest.h"
#include "differential/plainzoom.h"

#include <QList>

namespace Plain {

/// What a plot shows, with what its scales and the line at the quote do.
struct View {
    Bounds prices;
    Bounds values;
    QList<Curve> curves;
    bool followsCurves = true;
    double priceStep = -1.0;

    /// The visible values; inverted where there is no range.
    Range visibleValues() const;
    /// Asks an axis for a range.
    void setAxis(int axis, double min, double max);
    /// Stretches the line at the quote over values; a negative quote leaves it at its price.
    void moveLine(double low, double high, double quote);
    /// The vertical axis follows the curves, or the line at the quote follows the vertical axis.
    void fit();
};

/// A drag on an axis.
struct AxisDrag {
    QPointF press;
    QPointF last;

    /// Whether a move to a place of an axis shrinks it, nothing where it does not move along it.
    std::optional<bool> shrinks(bool isPrices, const QPointF& place) const;
};

}
