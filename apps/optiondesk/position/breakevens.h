#pragma once

#include <QPointF>
#include <QVector>

#include <functional>

namespace Position {

/// Prices at which a position neither earns nor loses: one price, or all from low to high, which is infinite
/// where the profit stays zero for ever.
struct BreakEven {
    double low = 0.0;
    double high = 0.0;

    bool isPoint() const { return low == high; }
};

/// A profit that is linear between points (x price, y profit; ascending, at least one) and goes on with a
/// slope behind the last one. Profits and slopes that are no larger than their rounding count as zero.
struct PolygonProfit {
    QVector<QPointF> points;
    double lastSlope = 0.0;
    double rounding = 0.0;
    double slopeRounding = 0.0;
};

/// All break-evens from the first point upwards, ascending and apart. Exact up to rounding; a point where the
/// profit only touches zero is one. None without points.
QVector<BreakEven> breakEvens(const PolygonProfit& profit);

/// A continuous profit over positive prices that has a slope of its own in the end.
struct CurvedProfit {
    std::function<double(double)> at;
    /// Prices around which it bends: strikes, forwards; positive, at least one.
    QVector<double> centres;
    double lastSlope = 0.0;
    double rounding = 0.0;
};

/// All break-evens, ascending and apart: found between some two thousand prices, densest around the centres,
/// and by the last slope behind them. Between two of these prices up to two roots are found.
QVector<BreakEven> breakEvens(const CurvedProfit& profit);

}
