#include "legendcheckbox_p.h"

#include <QEvent>
#include <QStyleOptionButton>
#include <QStylePainter>

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
    if (!text().isEmpty() || !icon().isNull() || size().isEmpty()) {
        QCheckBox::paintEvent(event);
        return;
    }
    QStyleOptionButton option;
    initStyleOption(&option);
    const int state = option.state;
    const qint64 colors = option.palette.cacheKey();
    if (m_picture.size() != size() * devicePixelRatioF() || m_state != state || m_palette != colors) {
        m_picture = drawn(option);
        m_state = state;
        m_palette = colors;
    }
    QPainter(this).drawPixmap(0, 0, m_picture);
}
