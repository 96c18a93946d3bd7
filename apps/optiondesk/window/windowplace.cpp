#include "window/windowplace.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace {

enum { X, Y, Width, Height, State, Count };

const auto normal = QStringLiteral("normal");
const auto maximized = QStringLiteral("maximized");

constexpr QSize smallest(200, 150);

constexpr auto placeProperty = "placeWhenNotMaximized";

// Whether a hand can reach the window where a frame mostly has its title.
bool isReachable(const QRect& frame)
{
    constexpr int titleHeight = 30;
    constexpr int enough = 60;
    const QRect title(frame.topLeft(), QSize(frame.width(), titleHeight));
    const QList<QScreen*> screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(), [&title](const QScreen* screen) {
        const QRect visible = screen->availableGeometry() & title;
        return visible.width() >= enough && visible.height() >= titleHeight / 2;
    });
}

// The corner with the frame, the size without.
QRect placeOf(const QWidget& window)
{
    if (!window.isMaximized() && !window.isFullScreen())
        return {window.pos(), window.size()};
    // A window that came maximized has not had its frame at the place that it was given.
    const QRect given = window.property(placeProperty).toRect();
    if (given == window.normalGeometry())
        return given;
    // What is known of another state is without the frame.
    return window.normalGeometry().translated(window.pos() - window.geometry().topLeft());
}

}

QStringList WindowPlace::toTexts(const QWidget& window)
{
    const QRect place = placeOf(window);
    return {QString::number(place.x()), QString::number(place.y()), QString::number(place.width()),
        QString::number(place.height()), window.isMaximized() ? maximized : normal};
}

void WindowPlace::restore(QWidget& window, const QStringList& texts)
{
    if (texts.size() != Count)
        return;
    int numbers[State];
    for (int i = 0; i < State; ++i) {
        bool ok = false;
        numbers[i] = texts.at(i).toInt(&ok);
        if (!ok)
            return;
    }
    const QSize all = QGuiApplication::primaryScreen()->availableVirtualSize().expandedTo(smallest);
    const QSize size = QSize(numbers[Width], numbers[Height]).expandedTo(smallest).boundedTo(all);
    const QPoint corner(numbers[X], numbers[Y]);
    window.resize(size);
    // Corners far off would overflow.
    constexpr int farthest = 1 << 20;
    if (std::abs(qint64(corner.x())) < farthest && std::abs(qint64(corner.y())) < farthest
        && isReachable(QRect(corner, size)))
        window.move(corner);
    if (texts.at(State) != maximized)
        return;
    window.setProperty(placeProperty, QRect(window.pos(), size));
    window.setWindowState(Qt::WindowMaximized);
}
