#include "monkey/stepexecutor.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>
#include <QtTest>

#include <qwt_plot_layout.h>

// The part of the driver that does what the user, the window system and the event loop do.

namespace Monkey {

namespace {

QPointF pointOf(const QRectF& rectangle, const Place& place)
{
    return QPointF(rectangle.left() + place.across * rectangle.width(),
        rectangle.top() + place.down * rectangle.height());
}

}

StepExecutor::StepExecutor(Host& host)
    : m_host(host)
    , m_plot(host.plot())
    , m_settings(m_folder.filePath(QStringLiteral("settings.ini")))
{
}

void StepExecutor::run(const Step& step)
{
    std::visit([this](const auto& one) { perform(one); }, step);
}

void StepExecutor::releaseButtons()
{
    m_plot.show();
    for (unsigned button = Qt::LeftButton; m_buttons != Qt::NoButton; button <<= 1U) {
        if (m_buttons.testFlag(Qt::MouseButton(button)))
            perform(Release{{}, Qt::MouseButton(button)});
    }
}

QPointF StepExecutor::resolved(const Place& place) const
{
    const QRectF window = m_plot.rect();
    switch (place.area) {
    case Area::Canvas:
        return pointOf(m_plot.plotLayout()->canvasRect(), place);
    case Area::Prices:
        return pointOf(m_plot.plotLayout()->scaleRect(QwtPlot::xBottom), place);
    case Area::Values:
        return pointOf(m_plot.plotLayout()->scaleRect(QwtPlot::yLeft), place);
    case Area::Legend:
        return pointOf(m_plot.plotLayout()->legendRect(), place);
    case Area::Window:
        return pointOf(window, place);
    case Area::Outside:
        break;
    }
    return pointOf(
        window.adjusted(-window.width(), -window.height(), window.width(), window.height()), place);
}

void StepExecutor::putCursor(const QPointF& position)
{
    QCursor::setPos(m_plot.mapToGlobal(position.toPoint()));
}

void StepExecutor::send(QEvent& event)
{
    if (!m_plot.isVisible() || !m_plot.windowHandle())
        return;
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(m_plot.windowHandle(), &event);
}

void StepExecutor::sendMouse(
    QEvent::Type type, const QPointF& position, Qt::MouseButton button, int modifiers)
{
    putCursor(position);
    const QPointF global = position + QPointF(m_plot.mapToGlobal(QPoint()));
    QMouseEvent event(type, position, position, global, button, m_buttons, Qt::KeyboardModifiers(modifiers));
    send(event);
}

void StepExecutor::perform(const Press& step)
{
    m_buttons |= step.button;
    sendMouse(QEvent::MouseButtonPress, resolved(step.place), step.button, step.modifiers);
}

void StepExecutor::perform(const Move& step)
{
    sendMouse(QEvent::MouseMove, resolved(step.place), Qt::NoButton, Qt::NoModifier);
}

void StepExecutor::perform(const Release& step)
{
    m_buttons &= ~Qt::MouseButtons(step.button);
    sendMouse(QEvent::MouseButtonRelease, resolved(step.place), step.button, Qt::NoModifier);
}

void StepExecutor::perform(const DoubleClick& step)
{
    m_buttons |= step.button;
    sendMouse(QEvent::MouseButtonDblClick, resolved(step.place), step.button, Qt::NoModifier);
}

void StepExecutor::perform(const Turn& step)
{
    putCursor(resolved(step.cursor));
    const QPointF position = resolved(step.event);
    const QPointF global = position + QPointF(m_plot.mapToGlobal(QPoint()));
    QWheelEvent event(position, global, QPoint(), step.angle, m_buttons,
        Qt::KeyboardModifiers(step.modifiers), Qt::NoScrollPhase, false);
    send(event);
}

void StepExecutor::perform(const Type& step)
{
    const Qt::KeyboardModifiers modifiers(step.modifiers);
    QKeyEvent press(QEvent::KeyPress, step.key, modifiers);
    send(press);
    QKeyEvent release(QEvent::KeyRelease, step.key, modifiers);
    send(release);
}

void StepExecutor::perform(const MoveCursor& step)
{
    putCursor(resolved(step.place));
}

void StepExecutor::perform(const Resize& step)
{
    m_plot.resize(step.width, step.height);
}

void StepExecutor::perform(const ShowWindow& step)
{
    m_plot.setVisible(step.on);
}

void StepExecutor::perform(const HandleEvents& step)
{
    QCoreApplication::processEvents();
    if (step.deferredDeletes)
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void StepExecutor::perform(const Grab&)
{
    m_plot.grab();
}

void StepExecutor::perform(const FireTimers&)
{
    const QList<QTimer*> timers = m_plot.findChildren<QTimer*>();
    for (QTimer* timer : timers) {
        QTimerEvent event(timer->timerId());
        QCoreApplication::sendEvent(timer, &event);
    }
}

}
