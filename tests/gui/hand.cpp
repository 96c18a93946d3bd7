#include "gui/hand.h"

#include <QApplication>
#include <QKeyEvent>
#include <QProcess>
#include <QWidget>
#include <QtTest>

namespace {

constexpr int patience = 60000; // ms

/// The key that ends each call. X delivers events in the order in which they happen, so that all others are
/// handled when this one comes; no widget gets to see it.
constexpr int markKey = Qt::Key_F12;

}

Hand::Hand()
{
    QCoreApplication::instance()->installEventFilter(this);
    // The tests are quicker than a user: their presses at one place would come as double clicks.
    QApplication::setDoubleClickInterval(0);
}

Hand::~Hand() = default;

bool Hand::does(const QStringList& actions)
{
    const int marks = m_marks;
    const QStringList all = actions + QStringList{QStringLiteral("key F12")};
    QProcess tool;
    tool.start(QStringLiteral("xdotool"), all.join(QLatin1Char(' ')).split(QLatin1Char(' ')));
    const bool done
        = tool.waitForFinished(patience) && tool.exitStatus() == QProcess::NormalExit && tool.exitCode() == 0;
    const QByteArray errors = tool.readAllStandardError();
    if (!done || !errors.isEmpty()) {
        qWarning("xdotool %s: %s %s", qPrintable(all.join(QLatin1Char(' '))), qPrintable(tool.errorString()),
            errors.constData());
        return false;
    }
    const bool handled = QTest::qWaitFor([&] { return m_marks > marks; }, patience);
    if (!handled)
        qWarning("no window has heard the end of: xdotool %s", qPrintable(all.join(QLatin1Char(' '))));
    return handled;
}

QString Hand::moveAction(const QWidget* widget, const QPoint& place)
{
    const QPoint global = widget->mapToGlobal(place);
    return QStringLiteral("mousemove %1 %2").arg(global.x()).arg(global.y());
}

bool Hand::movesTo(const QWidget* widget, const QPoint& place)
{
    return does({moveAction(widget, place)});
}

bool Hand::clicks(const QWidget* widget, const QPoint& place, int button)
{
    return movesTo(widget, place) && does({QStringLiteral("click %1").arg(button)});
}

bool Hand::drags(const QWidget* widget, const QPoint& from, const QPoint& to, int moves)
{
    bool done = movesTo(widget, from) && does({QStringLiteral("mousedown 1")});
    for (int i = 1; i <= moves && done; ++i)
        done = movesTo(widget, from + (to - from) * i / moves);
    return done && does({QStringLiteral("mouseup 1")});
}

bool Hand::eventFilter(QObject* watched, QEvent* event)
{
    // A window hears of an event before the widgets in it do.
    if (!watched->isWindowType())
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::MouseMove)
        ++m_moves;
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return QObject::eventFilter(watched, event);
    if (static_cast<const QKeyEvent*>(event)->key() != markKey)
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::KeyRelease)
        ++m_marks;
    return true;
}
