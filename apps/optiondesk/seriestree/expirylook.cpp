#include "seriestree/expirylook.h"

#include <QPainter>

namespace {

// No two alike for people with a deficiency of the cones for long or middle waves, nor like one of the chosen
// series' colours (see CurveLook).
constexpr QRgb colors[] = {0xff332288, 0xff999933, 0xff800000, 0xff7b68ee, 0xff004d40};
constexpr Qt::PenStyle styles[] = {Qt::SolidLine, Qt::DashLine, Qt::DashDotLine, Qt::DashDotDotLine};
constexpr int colorCount = int(sizeof(colors) / sizeof(colors[0]));
static_assert(colorCount * int(sizeof(styles) / sizeof(styles[0])) == ExpiryLook::count);

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
    const int look = position % count;
    return QPen(QColor(colors[look % colorCount]), lineWidth, styles[look / colorCount]);
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
    QPixmap pixmap = blank(devicePixelRatio, Qt::white);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QPointF(swatchWidth / 2.0, swatchHeight / 2.0), radius, radius);
    return pixmap;
}
