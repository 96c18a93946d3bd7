#include "styledbackground_p.h"

#include <QImage>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QWidget>

#include <algorithm>

namespace {

/// The colour of all pixels of an image; nothing where they differ or let something shine through.
std::optional<QColor> uniformColor(const QImage& image)
{
    const QRgb first = image.pixel(0, 0);
    if (qAlpha(first) != 0xff)
        return std::nullopt;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        if (!std::all_of(line, line + image.width(), [first](QRgb pixel) { return pixel == first; }))
            return std::nullopt;
    }
    return QColor(first);
}

/// Somewhat more than a widget has, for a layout that moves it by some pixels.
int roomyLength(int length)
{
    constexpr int room = 64;
    return (length / room + 1) * room;
}

bool contains(const QSize& outer, const QSize& inner)
{
    return inner.width() <= outer.width() && inner.height() <= outer.height();
}

}

std::optional<QColor> StyledBackground::colorOf(const QWidget& widget)
{
    QStyleOption option;
    option.initFrom(&widget);
    const auto state = static_cast<int>(option.state);
    if (!m_known || m_known->state != state || !contains(m_known->size, widget.size())) {
        const QSize size(roomyLength(widget.width()), roomyLength(widget.height()));
        m_known = Known{state, size, painted(widget, option, size)};
    }
    return m_known->color;
}

std::optional<QColor> StyledBackground::painted(
    const QWidget& widget, const QStyleOption& option, const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QStyleOption whole = option;
    whole.rect = QRect(QPoint(0, 0), size);
    {
        QPainter painter(&image);
        widget.style()->drawPrimitive(QStyle::PE_Widget, &whole, &painter, &widget);
    }
    return uniformColor(image);
}
