#pragma once

#include <plot2d/priceinterval.h>

#include <database/decimal.h>

#include <QList>

namespace Plain {

/// What a strike model answers.
struct Strikes {
    QList<decimal> all;
    double smallestDistance = 0.0;
};

/// The interval of strikes; the reset value where there is no use in them.
PriceInterval strikeInterval(const Strikes& strikes, int decimals);

/// from, from + step and so on up to the last one not above `to`.
QList<double> steps(double from, double to, double step);

/// The strikes next to the view on both sides; `known` is false where there are none.
struct Neighbours {
    bool known = false;
    decimal left;
    decimal right;
};
Neighbours neighbours(const QList<decimal>& strikes, double viewLow, double viewHigh);

/// Each cell between the two prices cut into so many equal parts that about a hundred points lie there.
QList<double> cut(const QList<double>& points, double left, double right, double minStep);

/// The points at which a plot's curves are evaluated.
struct PlotPoints {
    QList<decimal> strikes;
    PriceInterval interval;
    double viewLow = 0.0;
    double viewHigh = 0.0;
    double priceStep = -1.0;
    bool force = false;

    QList<double> answer() const;
};

}
