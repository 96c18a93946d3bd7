#pragma once

#include "flow/randomplot.h"
#include "flow/wheelfactors.h"

#include <optional>

/// A turn of the wheel, with what it starts from.
struct RandomTurn {
    RandomPlot::State before;
    QRectF curves;
    QPointF centre;
    Qt::KeyboardModifiers modifiers;
    bool onX = false;
    bool onY = false;
    double factor = 1.0;

    bool zoomsOut() const { return factor > 1.0; }
    /// Whether the vertical axis follows the data, or stays.
    bool isOfPricesOnly() const { return onX || (!onY && modifiers == Qt::ControlModifier); }
    bool movesPrices() const { return isOfPricesOnly() || (!onY && modifiers != Qt::ShiftModifier); }
    /// The part of its width that the view has after the zoom.
    double part() const { return !zoomsOut() || curves.width() > before.prices.width() ? factor : 1.0; }

    QString text() const
    {
        return QStringLiteral("about (%1, %2), on x %3, on y %4, modifiers %5, factor %6")
            .arg(QString::number(centre.x(), 'g', 17), QString::number(centre.y(), 'g', 17),
                QString::number(onX), QString::number(onY), QString::number(int(modifiers)),
                QString::number(factor));
    }
};

inline QPointF centreOf(RandomPlot& plot, const QPoint& point, bool onX, bool onY)
{
    const RandomPlot::State state = plot.state();
    const QWidget* axis = plot.plot().axisWidget(onX ? QwtPlot::xBottom : QwtPlot::yLeft);
    const QPoint place = onX || onY ? axis->mapFromGlobal(plot.plot().mapToGlobal(point)) : point;
    const double price = plot.plot().canvasMap(QwtPlot::xBottom).invTransform(place.x());
    const double value = plot.plot().canvasMap(QwtPlot::yLeft).invTransform(place.y());
    return QPointF(onY ? state.prices.lower + 0.1 * state.prices.width() : price,
        onX ? state.values.lower + 0.1 * state.values.width() : value);
}

inline RandomTurn randomTurn(ViewRandom& random, RandomPlot& plot)
{
    RandomTurn turn;
    const int place = random.integer(0, 3);
    turn.onX = place == 1;
    turn.onY = place == 2;
    turn.modifiers = random.chance(2) ? Qt::KeyboardModifiers(Qt::NoModifier)
                                      : Qt::KeyboardModifiers(random.integer(0, 3) << 25);
    const int notches = random.integer(1, 3) * (random.chance(2) ? 1 : -1);
    turn.factor = notches > 0 ? (notches > 1 ? WheelFactors::fastIn : WheelFactors::in)
                              : (notches < -1 ? WheelFactors::fastOut : WheelFactors::out);
    const QPoint point = plot.pointIn(turn.onX ? plot.area(QwtPlot::xBottom)
            : turn.onY                         ? plot.area(QwtPlot::yLeft)
                                               : plot.canvas());
    turn.before = plot.state();
    turn.curves = plot.plot().curvesRectangle();
    turn.centre = centreOf(plot, point, turn.onX, turn.onY);
    plot.turn(point, 120 * notches, turn.modifiers);
    return turn;
}

/// The price range after a zoom; nothing where the scale kept its own.
inline std::optional<ViewZoom::Range> expectedPrices(const RandomTurn& turn)
{
    const ViewZoom::Range& view = turn.before.prices;
    const double width = turn.part() * view.width();
    if (turn.zoomsOut() && turn.curves.right() < view.upper)
        return ViewZoom::Range{view.upper - width, view.upper};
    if (turn.zoomsOut() && turn.curves.left() > view.lower)
        return ViewZoom::Range{view.lower, view.lower + width};
    if (ViewProperty::isOnLowerBound(turn.centre.x(), view))
        return std::nullopt;
    const double lower = turn.centre.x() - turn.part() * (turn.centre.x() - view.lower);
    return ViewZoom::Range{lower, lower + width};
}

/// The highest value after a zoom; nothing about the lower bound.
inline std::optional<double> expectedHighest(const RandomTurn& turn, double height)
{
    const ViewZoom::Range& view = turn.before.values;
    if (turn.zoomsOut() && turn.curves.bottom() < view.upper)
        return view.upper;
    if (turn.zoomsOut() && turn.curves.top() > view.lower)
        return view.lower + height;
    if (ViewProperty::isOnLowerBound(turn.centre.y(), view))
        return std::nullopt;
    return turn.centre.y() + (view.upper - turn.centre.y()) * height / view.width();
}

/// The height of the view after a zoom, unless that of the data binds.
inline double zoomedHeight(const RandomTurn& turn)
{
    const ViewZoom::Range& values = turn.before.values;
    const bool grows = turn.part() != 1.0 || values.width() < turn.curves.height();
    return grows ? turn.factor * values.width() : values.width();
}

/// The height of the data that a zoom does not show more than; none along the value axis.
inline std::optional<double> boundOfHeight(const RandomTurn& turn)
{
    if (turn.onY)
        return std::nullopt;
    return turn.curves.height() * (turn.modifiers == Qt::ShiftModifier ? 1.0 : turn.factor);
}
