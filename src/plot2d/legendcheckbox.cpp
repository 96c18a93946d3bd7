#include "legendcheckbox_p.h"

#include "pixelpainter_p.h"

#include <QEvent>
#include <QStyleOptionButton>
#include <QStylePainter>

#include <cmath>

LegendCheckBox::LegendCheckBox(QWidget* parent)
    : QCheckBox(parent)
{
}

LegendCheckBox::~LegendCheckBox() = default;

bool LegendCheckBox::event(QEvent* event)
{
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::PolishRequest
        || event->type() == QEvent::LayoutDirectionChange)
        m_picture = QPixmap();
    return QCheckBox::event(event);
}

bool LegendCheckBox::isSettled() const
{
    constexpr qint64 longestAnimation = 1000; // milliseconds
    return !m_changed.isValid() || m_changed.hasExpired(longestAnimation);
}

QPixmap LegendCheckBox::drawn(const QStyleOptionButton& option) const
{
    QPixmap picture(size() * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    style()->drawControl(QStyle::CE_CheckBox, &option, &painter, this);
    return picture;
}

void LegendCheckBox::paintEvent(QPaintEvent* event)
{
    // A picture of a part of a pixel too much would be stretched.
    const bool hasWholePixels = std::floor(devicePixelRatioF()) == devicePixelRatioF();
    if (!text().isEmpty() || !icon().isNull() || size().isEmpty() || !hasWholePixels) {
        QCheckBox::paintEvent(event);
        return;
    }
    QStyleOptionButton option;
    initStyleOption(&option);
    const Look look{static_cast<int>(option.state), option.palette.cacheKey()};
    if (!m_look || *m_look != look) {
        // Some styles blend one state into the other.
        if (m_look)
            m_changed.start();
        m_look = look;
        m_picture = QPixmap();
    }
    if (!isSettled()) {
        QCheckBox::paintEvent(event);
        return;
    }
    if (m_picture.size() != size() * devicePixelRatioF())
        m_picture = drawn(option);
    if (!paintPicture())
        QCheckBox::paintEvent(event);
}

bool LegendCheckBox::paintPicture()
{
    QPainter painter(this);
    if (!isOnPixelsOf(*this, painter))
        return false;
    painter.drawPixmap(0, 0, m_picture);
    return true;
}
