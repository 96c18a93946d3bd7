#pragma once

#include <QRectF>

#include <functional>
#include <optional>
#include <utility>

namespace Plain {

/// One axis on the screen: where its values lie in pixels, and which of them are seen.
struct ScreenAxis {
    std::function<double(double)> pixelOf;
    std::function<double(double)> valueAt;
    double lower = 0.0;
    double upper = 0.0;
    bool enabled = true;
};

/// The canvas while it is dragged.
struct Pan {
    ScreenAxis x;
    ScreenAxis y;
    /// Around all curves.
    QRectF curves;

    /// The view after a drag; left and top are its lowest price and value.
    QRectF viewAfter(double dx, double dy) const;
    /// The whole pixels by which the view really moves, nothing where it stays.
    std::optional<std::pair<int, int>> allowed(int dx, int dy) const;
};

/// The answer of shiftTo() where there is none.
double noShift();

/// The first part of a shift that brings a bound of an axis just past a value: of its ninths at most, in the
/// order of whole, half, thirds and so on.
double shiftTo(const ScreenAxis& axis, double value, bool upperBound, double most);

}
