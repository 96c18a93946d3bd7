#pragma once

#include <QRectF>

#include <qwt_interval.h>

#include <optional>
#include <utility>

/// The views that the desk itself finds, for keys and fits. Pure functions; a rectangle of data has the
/// lowest price at its left and the lowest value at its top.
namespace ViewFit {

/// The prices that show all data, with a little room on both sides. Of data at one price the smallest step to
/// both sides is shown. Nothing for a null rectangle, one that is not finite, and where the step would have
/// to help and is not positive.
std::optional<QwtInterval> allPrices(const QRectF& data, double smallestStep);

/// The values that show those of the curves, from the lowest to the highest, with a little room above and
/// below. A range without width and an inverted one, which stands for none, come back as they are.
std::pair<double, double> allValues(double low, double high);

/// The same for volatilities as fractions: there is no room below 0. Of one volatility half of it to both
/// sides is shown, of none, which is 0, those up to 1.
std::pair<double, double> allVolatilities(double low, double high);

/// What a zoom starts from.
struct Start {
    QwtInterval prices;
    QwtInterval values;
    QRectF data;
};

struct Ranges {
    QwtInterval prices;
    QwtInterval values;
};

/// The ranges after one notch of the plot's wheel with the cursor in the middle of the canvas: a tenth less,
/// but no fewer prices than the smallest step and no fewer values than 1e-8. Nothing where that refuses, for
/// ranges without width and for data without.
std::optional<Ranges> zoomedIn(const Start& start, double smallestStep);

/// The same for a notch back: a tenth more, an end of the data that is visible stays in its place, and a view
/// that shows all prices grows in height alone, while it does not show all values. Nothing also where that
/// leaves the ranges as they are.
std::optional<Ranges> zoomedOut(const Start& start);

}
