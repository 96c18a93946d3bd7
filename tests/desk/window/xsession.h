#pragma once

#include "support/xserver.h"

#include <QImage>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>

/// An X server of the test's own, without a window manager, and a user at its mouse and keyboard.
class XSession {
public:
    /// Starts the server; false if it does not come up.
    bool start();

    /// That of a program on the server, which keeps its settings in the folder, for all programs if it is
    /// empty.
    QProcessEnvironment environment(const QString& configFolder = QString()) const;

    /// Runs xdotool, also in the environment of a child on the server; its output, empty where it fails.
    QByteArray tool(const QStringList& arguments) const { return tool(arguments, environment()); }
    static QByteArray tool(const QStringList& arguments, const QProcessEnvironment& environment);
    /// Gives the keyboard to the window that has this in its title, as soon as it is there: no window manager
    /// does it. The window's id; empty where it does not come.
    QString focus(const QString& title) const;
    /// Then moves the cursor to the lower right corner of the screen, where it covers nothing.
    void click(const QPoint& place, int button = 1) const;
    void press(const QStringList& keys) const;

    /// What the screen shows, 1280 by 900 pixels.
    QImage screen() const;
    /// The same once the program has nothing more to do and the screen no longer changes: a picture to
    /// compare others with. Null, with a warning, where that does not come.
    QImage stillScreen(const QProcess& program) const;

private:
    QTemporaryDir m_folder;
    XServer m_server;
};
