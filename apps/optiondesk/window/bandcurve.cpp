#include "window/bandcurve.h"

#include <QPainter>

#include <qwt_scale_map.h>

#include <algorithm>
#include <cmath>

namespace {

// In the pixels of a widget; a little wider than the points in front of them, narrower where strikes are
// close.
constexpr double widest = 7.0;
constexpr double narrowest = 1.0;
constexpr double partOfDistance = 0.7;

}

BandCurve::BandCurve(PriceBased2dPlot* plot, const QString& title)
    : PriceBased2dPlotCurve(plot, title)
{
}

double BandCurve::barWidth(const QwtScaleMap& xMap) const
{
    double width = widest;
    for (int i = 2; i < int(dataSize()); i += 2) {
        const double distance = std::abs(xMap.transform(sample(i).x()) - xMap.transform(sample(i - 2).x()));
        width = std::min(width, distance * partOfDistance);
    }
    return std::max(width, narrowest);
}

// A pair is painted whole, whichever of its samples are asked for.
void BandCurve::drawSeries(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
    const QRectF& canvasRect, int from, int to) const
{
    // A plot that is hardly higher than its axis has a canvas of less than no height.
    if (canvasRect.isEmpty())
        return;
    const int last = int(dataSize()) - 1;
    const int end = to < 0 ? last : std::min(to, last);
    const QTransform toDevice = painter->deviceTransform();
    const int width = std::max(1, qRound(barWidth(xMap) * toDevice.m11()));
    const QRectF visible = toDevice.mapRect(canvasRect);
    painter->save();
    painter->setWorldTransform(toDevice.inverted() * painter->worldTransform());
    for (int i = from - from % 2; i + 1 <= end; i += 2) {
        const double x = xMap.transform(sample(i).x());
        const QPointF low = toDevice.map(QPointF(x, yMap.transform(sample(i).y())));
        const QPointF high = toDevice.map(QPointF(x, yMap.transform(sample(i + 1).y())));
        const QRectF bar(high - QPointF(width / 2.0, 0.5), low + QPointF(width / 2.0, 0.5));
        if (!bar.intersects(visible))
            continue;
        const double top = std::clamp(high.y(), visible.top() - 1.0, visible.bottom() + 1.0);
        const double bottom = std::clamp(low.y(), visible.top() - 1.0, visible.bottom() + 1.0);
        const int height = std::max(1, qRound(bottom) - qRound(top));
        painter->fillRect(QRect(qRound(low.x() - width / 2.0), qRound(top), width, height), pen().color());
    }
    painter->restore();
}
