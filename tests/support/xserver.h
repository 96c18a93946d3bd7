#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/// An X server of the test's own, without a screen to look at: Xvfb on the first display that is free, 1280
/// by 900 pixels.
class XServer {
public:
    XServer() = default;
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;
    ~XServer();

    /// Whether Xvfb is installed, and xdotool, which moves the pointer there.
    static bool isPossible();

    /// Starts the server, with more arguments; false, with a message on standard error, if a program is
    /// missing or the server does not come up.
    bool start(const QStringList& arguments = QStringList());

    /// The system's, for a program on the server.
    QProcessEnvironment environment() const;
    /// Makes the server that of this process and of its children. To be called before the application object
    /// is made.
    void enter() const;

private:
    QProcess m_process;
    QByteArray m_display;
};
