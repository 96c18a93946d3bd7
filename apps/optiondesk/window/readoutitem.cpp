#include "window/readoutitem.h"

#include <QPainter>

#include <qwt_scale_map.h>

namespace {

constexpr double radius = 6.0;
constexpr double thickness = 2.0;
constexpr double gap = 10.0;
constexpr double padding = 4.0;

// Above the point and to its right where there is room.
QRectF placed(const QSizeF& size, const QPointF& point, const QRectF& canvas)
{
    QRectF box(point + QPointF(gap, -gap - size.height()), size);
    if (box.right() > canvas.right())
        box.moveRight(point.x() - gap);
    if (box.top() < canvas.top())
        box.moveTop(point.y() + gap);
    box.moveLeft(qMax(canvas.left(), box.left()));
    box.moveBottom(qMin(canvas.bottom(), box.bottom()));
    return box;
}

}

ReadOutItem::ReadOutItem()
{
    constexpr double aboveAll = 100.0;
    setZ(aboveAll);
    setRenderHint(QwtPlotItem::RenderAntialiased);
    setVisible(false);
}

void ReadOutItem::paintRing(QPainter* painter, const QPointF& center)
{
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(Qt::black, thickness));
    painter->drawEllipse(center, radius, radius);
}

QRect ReadOutItem::ringBounds(const QPointF& center)
{
    constexpr double reach = radius + thickness;
    return QRectF(center - QPointF(reach, reach), QSizeF(2.0 * reach, 2.0 * reach)).toAlignedRect();
}

int ReadOutItem::rtti() const
{
    return QwtPlotItem::Rtti_PlotUserItem + 1;
}

void ReadOutItem::draw(
    QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap, const QRectF& canvasRect) const
{
    const QPointF center(xMap.transform(m_point.x()), yMap.transform(m_point.y()));
    paintRing(painter, center);

    const QSizeF size = m_text.textSize() + QSizeF(2.0 * padding, 2.0 * padding);
    const QRectF box = placed(size, center, canvasRect);
    painter->setBrush(Qt::white);
    painter->setPen(QPen(Qt::black, 1.0));
    painter->drawRoundedRect(box, padding, padding);
    m_text.draw(painter, box.adjusted(padding, padding, -padding, -padding));
}
