#pragma once

#include "flow/viewrandom.h"

#include <plot2d/panlimits_p.h>

/// Random pans and zooms, and their texts for the message of a failed case.
namespace ViewProperty {

constexpr quint64 seed = 20261107;

/// A drag of a canvas.
struct Pan {
    PanLimits::Axis x;
    PanLimits::Axis y;
    QRectF curves;
    int dx = 0;
    int dy = 0;

    Range prices() const { return {x.lower, x.upper}; }
    Range values() const { return {y.lower, y.upper}; }
    double pricePerPixel() const { return prices().width() / x.map.pDist(); }
    double valuePerPixel() const { return values().width() / y.map.pDist(); }
    /// What the bounds may be off by rounding after the drag.
    double priceRounding() const { return rounding(prices()) + 1e-14 * std::abs(dx) * pricePerPixel(); }
    double valueRounding() const { return rounding(values()) + 1e-14 * std::abs(dy) * valuePerPixel(); }
};

inline PanLimits::Axis axisOf(const Range& range, double first, double last)
{
    PanLimits::Axis axis;
    axis.lower = range.lower;
    axis.upper = range.upper;
    axis.map.setScaleInterval(range.lower, range.upper);
    axis.map.setPaintInterval(first, last);
    return axis;
}

inline int drag(ViewRandom& random, int pixels)
{
    return random.chance(8) ? random.integer(-1, 1) : random.integer(-pixels * 3 / 2, pixels * 3 / 2);
}

inline Pan randomPan(ViewRandom& random)
{
    Pan pan;
    const Range prices = random.range();
    const Range values = random.range();
    const int width = random.integer(2, 3000);
    const int height = random.integer(2, 2000);
    pan.x = axisOf(prices, 0.0, width);
    pan.y = axisOf(values, height, 0.0);
    const Range dataValues = random.dataAbout(values);
    pan.curves = rectangle(random.dataAbout(prices), dataValues);
    if (random.chance(8))
        pan.curves.setHeight(0.0);
    pan.dx = drag(random, width);
    pan.dy = drag(random, height);
    return pan;
}

inline QString textOf(const Pan& pan, int number)
{
    return QStringLiteral("seed %1 case %2: prices %3 on %4 pixels, values %5 on %6, data %7 and %8, drag %9")
        .arg(QString::number(seed), QString::number(number), text(pan.prices()),
            QString::number(pan.x.map.pDist()), text(pan.values()), QString::number(pan.y.map.pDist()),
            text({pan.curves.left(), pan.curves.right()}), text({pan.curves.top(), pan.curves.bottom()}),
            QStringLiteral("(%1, %2)").arg(pan.dx).arg(pan.dy));
}

/// A zoom about a centre in the view, or beside it as on the axes.
inline ViewZoom::Start randomZoom(ViewRandom& random)
{
    ViewZoom::Start start;
    start.prices = random.range();
    start.values = random.range();
    start.curves = rectangle(random.dataAbout(start.prices), random.dataAbout(start.values));
    if (random.chance(3))
        start.curves = rectangle(ViewRandom::dataAround(start.prices, random.power(-2.0, 2.0)),
            ViewRandom::dataAround(start.values, random.power(-2.0, 2.0)));
    const double across = random.chance(4) ? random.uniform(-0.5, 1.5) : random.uniform(0.0, 1.0);
    const double along = random.chance(4) ? random.uniform(-0.5, 1.5) : random.uniform(0.0, 1.0);
    start.centre = QPointF(start.prices.lower + (random.chance(20) ? 0.0 : across * start.prices.width()),
        start.values.lower + (random.chance(20) ? 0.0 : along * start.values.width()));
    start.factor = *ViewZoom::factor((random.chance(2) ? 1 : -1) * random.integer(1, 3));
    return start;
}

inline QString textOf(const ViewZoom::Start& start, int number)
{
    return QStringLiteral("seed %1 case %2: prices %3, values %4, data %5 and %6, centre (%7, %8), factor %9")
        .arg(QString::number(seed), QString::number(number), text(start.prices), text(start.values),
            text({start.curves.left(), start.curves.right()}),
            text({start.curves.top(), start.curves.bottom()}), QString::number(start.centre.x(), 'g', 17),
            QString::number(start.centre.y(), 'g', 17), QString::number(start.factor));
}

}
