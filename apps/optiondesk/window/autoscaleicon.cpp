#include "window/autoscaleicon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

namespace {

/// The drawing is made for a square of this size and scaled from there.
constexpr double grid = 16.0;

QPixmap drawn(int size, const QColor& color)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / grid, size / grid);

    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRect(QRectF(1.0, 1.0, 14.0, 2.0));
    painter.drawRect(QRectF(1.0, 13.0, 14.0, 2.0));

    QPainterPath smile(QPointF(2.0, 4.5));
    smile.cubicTo(QPointF(5.0, 14.5), QPointF(10.0, 14.5), QPointF(14.0, 6.0));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(smile);
    return pixmap;
}

}

QIcon autoScaleIcon(const QPalette& palette)
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48}) {
        icon.addPixmap(drawn(size, palette.color(QPalette::Active, QPalette::ButtonText)));
        icon.addPixmap(drawn(size, palette.color(QPalette::Disabled, QPalette::ButtonText)), QIcon::Disabled);
    }
    return icon;
}
