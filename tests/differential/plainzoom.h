#pragma once

#include <QPointF>
#include <QRectF>

#include <optional>
#include <utility>

namespace Plain {

using Bounds = std::pair<double, double>;

/// What the cursor is over while the wheel turns; on a common border it is over both.
struct Place {
    bool prices = false;
    bool values = false;
    bool canvas = false;

    bool isScale() const { return prices || values; }
};

/// A turn of the wheel over a view.
struct Wheel {
    Bounds prices;
    Bounds values;
    /// Around all curves.
    QRectF curves;
    /// What stands under the cursor; on an axis one coordinate of it is of no meaning.
    QPointF cursor;
    Place place;
    bool shift = false;
    bool control = false;
    /// In eighths of a degree, of the wheel that was turned further.
    int angle = 0;
    double minStep = 0.0;
    /// Labels of the vertical axis can no longer be told apart.
    bool labelsAreEqual = false;
};

/// What a turn does: the axes that get new bounds, and what goes with it.
struct Zoom {
    std::optional<Bounds> prices;
    std::optional<Bounds> values;
    bool leavesAutoScale = false;
    bool valuesFollow = false;
};

/// The factor of an angle, nothing for less than a notch.
std::optional<double> wheelFactor(int angle);

/// Nothing where the turn is refused.
std::optional<Zoom> zoomed(const Wheel& wheel);

/// The bounds of an axis after a drag on it by one step, nothing where it stays.
std::optional<Bounds> draggedAxis(const Bounds& view, const Bounds& data, bool shrinks);

}
