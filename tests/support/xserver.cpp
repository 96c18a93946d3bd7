#include "support/xserver.h"

#include <QStandardPaths>

#include <cstdio>

namespace {

constexpr int patience = 60000; // ms

bool isInstalled(const char* program)
{
    return !QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty();
}

}

XServer::~XServer()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    m_process.waitForFinished(patience);
}

bool XServer::isPossible()
{
    return isInstalled("Xvfb") && isInstalled("xdotool");
}

bool XServer::start(const QStringList& arguments)
{
    if (!isPossible()) {
        std::fprintf(stderr, "FAIL!  : Xvfb or xdotool is missing\n");
        return false;
    }
    // A server that starts afresh when its last client leaves may lose the next one, which comes meanwhile.
    // One that repeats keys by itself presses them again where xdotool is slow to release them.
    m_process.start(QStringLiteral("Xvfb"),
        QStringList{QStringLiteral("-noreset"), QStringLiteral("-r"), QStringLiteral("-displayfd"),
            QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
            QStringLiteral("1280x900x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp")}
            + arguments);
    // The number of the display is written once the server accepts connections.
    while (m_process.state() != QProcess::NotRunning && !m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(patience))
            break;
    }
    const QByteArray number = m_process.readLine().trimmed();
    if (number.isEmpty()) {
        std::fprintf(stderr, "FAIL!  : Xvfb does not start: %s\n%s\n", qPrintable(m_process.errorString()),
            m_process.readAllStandardError().constData());
        return false;
    }
    m_display = ':' + number;
    return true;
}

QProcessEnvironment XServer::environment() const
{
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    result.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(m_display));
    result.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    // The session of whoever runs the tests has no part in them.
    result.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("disabled:"));
    return result;
}

void XServer::enter() const
{
    const QProcessEnvironment own = environment();
    for (const char* name : {"DISPLAY", "QT_QPA_PLATFORM", "DBUS_SESSION_BUS_ADDRESS"})
        qputenv(name, own.value(QString::fromLatin1(name)).toLatin1());
}
