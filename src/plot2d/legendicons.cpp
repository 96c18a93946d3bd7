#include "legendicons_p.h"

#include "plotlook_p.h"

#include <QPainter>
#include <QPainterPath>

#include <qwt_symbol.h>

namespace {

constexpr int width = 50;
constexpr int height = 13;
const QColor iconColor(Qt::gray);

QPixmap blank()
{
    QPixmap pixmap(width, height);
    pixmap.fill(Qt::white);
    return pixmap;
}

QPixmap triangle(const QVector<QPointF>& corners)
{
    QPixmap pixmap = blank();
    QPainter painter(&pixmap);
    QPainterPath path;
    path.addPolygon(corners);
    painter.fillPath(path, QBrush(iconColor));
    return pixmap;
}

QPixmap line()
{
    QPixmap pixmap = blank();
    QPainter painter(&pixmap);
    painter.setPen(PlotLook::solidPen(iconColor, 2.0));
    painter.drawLine(QPointF(1.0, height / 2.0), QPointF(width - 1.0, height / 2.0));
    return pixmap;
}

}

QMap<int, QPixmap> LegendIcons::create()
{
    const double middle = width / 2.0;
    return {
        {QwtSymbol::DTriangle, triangle({{middle, height}, {middle - 5.0, 3.25}, {middle + 5.0, 3.25}})},
        {QwtSymbol::UTriangle, triangle({{middle, 0.0}, {middle - 5.0, 9.75}, {middle + 5.0, 9.75}})},
        {QwtSymbol::Rect, line()},
    };
}
