#include "opaqueaxis_p.h"

#include <QEvent>

#include <qwt_scale_widget.h>

OpaqueAxis::OpaqueAxis(QwtScaleWidget* axis)
    : QObject(axis)
    , m_axis(axis)
{
    axis->installEventFilter(this);
}

OpaqueAxis::~OpaqueAxis() = default;

bool OpaqueAxis::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Polish:
    case QEvent::PolishRequest:
    case QEvent::StyleChange:
    case QEvent::PaletteChange:
        m_background.forget();
        update();
        break;
    case QEvent::Resize:
    case QEvent::EnabledChange:
    case QEvent::ActivationChange:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::HoverEnter:
    case QEvent::HoverLeave:
    case QEvent::Enter:
    case QEvent::Leave:
        update();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void OpaqueAxis::update()
{
    m_axis->setAttribute(Qt::WA_OpaquePaintEvent, m_background.colorOf(*m_axis).has_value());
}
