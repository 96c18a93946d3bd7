#pragma once

#include <QProcess>
#include <QProcessEnvironment>

/// An X server without a screen of its own, and a hand on its mouse and keyboard.
class XServer {
public:
    /// Whether the programs that it needs are there.
    static bool isAvailable();

    /// Ends the server.
    ~XServer();

    /// Starts the server on a free display; whether it runs.
    bool start();

    /// That of a program which shows its windows on the server.
    QProcessEnvironment environment() const;

    /// What xdotool writes in an environment, empty where it fails.
    static QByteArray tool(const QStringList& arguments, const QProcessEnvironment& environment);
    QByteArray tool(const QStringList& arguments) const { return tool(arguments, environment()); }

private:
    QProcess m_server;
    QString m_display;
};
