#include "window/entryicon.h"

#include <QPainter>
#include <QPen>

#include <qwt_plot_curve.h>
#include <qwt_symbol.h>

namespace {

void paintLine(QPainter& painter, const QRect& place, const QPen& pen, const QColor& color, double ratio)
{
    const int thickness = qRound(pen.widthF() * ratio);
    const int top = place.top() + (place.height() - thickness) / 2;
    const double middle = top + thickness / 2.0;
    // One of no width is one pixel thick.
    painter.setPen(QPen(color, thickness, pen.style(), Qt::FlatCap));
    painter.drawLine(QPointF(place.left(), middle), QPointF(place.left() + place.width(), middle));
}

void paintSymbol(
    QPainter& painter, const QRect& place, const QwtSymbol& symbol, const QColor& color, double ratio)
{
    const double border = symbol.pen().widthF() * ratio;
    const int side = qRound(symbol.size().width() * ratio + border);
    const QRect square(
        place.left() + (place.width() - side) / 2, place.top() + (place.height() - side) / 2, side, side);
    if (symbol.style() == QwtSymbol::Rect) {
        painter.fillRect(square, color);
        return;
    }
    const double inset = border / 2.0;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, border));
    painter.setBrush(symbol.brush());
    painter.drawEllipse(QRectF(square).adjusted(inset, inset, -inset, -inset));
}

}

void EntryIcon::paint(
    QPainter& painter, const QRect& rectangle, const QwtPlotCurve& curve, const QColor& color)
{
    const QTransform toDevice = painter.deviceTransform();
    const double ratio = toDevice.m22();
    const QRect place = toDevice.mapRect(QRectF(rectangle)).toRect();
    painter.save();
    painter.setWorldTransform(toDevice.inverted() * painter.worldTransform());
    if (curve.testLegendAttribute(QwtPlotCurve::LegendShowSymbol) && curve.symbol())
        paintSymbol(painter, place, *curve.symbol(), color, ratio);
    else
        paintLine(painter, place, curve.pen(), color, ratio);
    painter.restore();
}
