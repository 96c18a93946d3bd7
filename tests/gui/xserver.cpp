#include "gui/xserver.h"

#include <QStandardPaths>

#include <cstdio>

namespace {

constexpr int patience = 60000; // ms

bool isInstalled(const char* program)
{
    if (!QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty())
        return true;
    std::fprintf(stderr, "FAIL!  : the program %s is missing; this test needs Xvfb and xdotool\n", program);
    return false;
}

}

XServer::~XServer()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    m_process.waitForFinished(patience);
}

bool XServer::start()
{
    if (!isInstalled("Xvfb") || !isInstalled("xdotool"))
        return false;

    m_process.start(QStringLiteral("Xvfb"),
        {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
            QStringLiteral("1280x900x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp"),
            QStringLiteral("-terminate")});
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
    qputenv("DISPLAY", ':' + number);
    qputenv("QT_QPA_PLATFORM", "xcb");
    // The session of whoever runs the tests has no part in them.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    return true;
}
