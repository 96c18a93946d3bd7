#include "xserver.h"

#include <QStandardPaths>

namespace {

constexpr int patience = 60000; // ms

}

bool XServer::isAvailable()
{
    return !QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty()
        && !QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty();
}

XServer::~XServer()
{
    m_server.terminate();
    m_server.waitForFinished(patience);
}

bool XServer::start()
{
    // The server chooses a free display and writes its number on standard output.
    m_server.start(
        QStringLiteral("Xvfb"), {"-displayfd", "1", "-screen", "0", "1280x900x24", "-nolisten", "tcp"});
    if (!m_server.waitForReadyRead(patience))
        return false;
    m_display = QLatin1Char(':') + QString::fromLatin1(m_server.readLine().trimmed());
    return true;
}

QProcessEnvironment XServer::environment() const
{
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    result.insert(QStringLiteral("DISPLAY"), m_display);
    result.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    // The session of whoever runs the tests has no part in them.
    result.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("disabled:"));
    return result;
}

QByteArray XServer::tool(const QStringList& arguments, const QProcessEnvironment& environment)
{
    QProcess tool;
    tool.setProcessEnvironment(environment);
    tool.start(QStringLiteral("xdotool"), arguments);
    if (!tool.waitForFinished(patience) || tool.exitCode() != 0) {
        tool.kill();
        tool.waitForFinished();
        return QByteArray();
    }
    return tool.readAllStandardOutput();
}
