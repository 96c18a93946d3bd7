#include "seriestree/expirylook.h"

#include <QPainter>

namespace {

constexpr QRgb vermillion = 0xffd55e00;
constexpr QRgb skyBlue = 0xff56b4e9;
constexpr QRgb black = 0xff000000;
constexpr QRgb reddishPurple = 0xffcc79a7;
constexpr QRgb bluishGreen = 0xff009e73;
constexpr QRgb orange = 0xffe69f00;

struct Look {
    QRgb color;
    Qt::PenStyle style;
};

// First the colours that no curve of the chosen series has. A dashed green is its value of puts.
constexpr Look looks[] = {
    {vermillion, Qt::SolidLine},
    {skyBlue, Qt::SolidLine},
    {black, Qt::SolidLine},
    {reddishPurple, Qt::SolidLine},
    {bluishGreen, Qt::SolidLine},
    {orange, Qt::SolidLine},
    {vermillion, Qt::DashLine},
    {skyBlue, Qt::DashLine},
    {black, Qt::DashLine},
    {reddishPurple, Qt::DashLine},
    {orange, Qt::DashLine},
    {vermillion, Qt::DashDotLine},
    {skyBlue, Qt::DashDotLine},
    {black, Qt::DashDotLine},
    {reddishPurple, Qt::DashDotLine},
    {bluishGreen, Qt::DashDotLine},
    {orange, Qt::DashDotLine},
};
static_assert(sizeof(looks) / sizeof(looks[0]) == ExpiryLook::count);

constexpr double lineWidth = 1.5;

QPixmap blank(double devicePixelRatio, const QColor& background)
{
    const QSizeF size = QSizeF(ExpiryLook::swatchWidth, ExpiryLook::swatchHeight) * devicePixelRatio;
    QPixmap pixmap(size.toSize());
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(background);
    return pixmap;
}

}

QPen ExpiryLook::pen(int position)
{
    const Look& look = looks[position % count];
    return QPen(QColor(look.color), lineWidth, look.style);
}

QPixmap ExpiryLook::swatch(const QPen& pen, double devicePixelRatio)
{
    constexpr double thickness = 2.0;
    QPixmap pixmap = blank(devicePixelRatio, Qt::white);
    QPainter painter(&pixmap);
    painter.setPen(QPen(pen.color(), thickness, pen.style(), Qt::FlatCap));
    constexpr double middle = swatchHeight / 2.0;
    painter.drawLine(QPointF(0.0, middle), QPointF(swatchWidth, middle));
    return pixmap;
}

QPixmap ExpiryLook::chosenMark(const QColor& color, double devicePixelRatio)
{
    constexpr double radius = 4.0;
    QPixmap pixmap = blank(devicePixelRatio, Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QPointF(swatchWidth / 2.0, swatchHeight / 2.0), radius, radius);
    return pixmap;
}
