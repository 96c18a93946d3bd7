#include "xsession.h"

#include <QFile>
#include <QStandardPaths>
#include <QtEndian>

namespace {

constexpr int patience = 60000;

}

XSession::~XSession()
{
    if (m_server.state() == QProcess::NotRunning)
        return;
    m_server.terminate();
    m_server.waitForFinished(patience);
}

bool XSession::isPossible()
{
    return !QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty()
        && !QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty();
}

bool XSession::start()
{
    // The server chooses a free display and writes its number on standard output; the screen is a file.
    m_server.start(QStringLiteral("Xvfb"),
        {"-displayfd", "1", "-screen", "0", "1280x900x24", "-nolisten", "tcp", "-fbdir", m_folder.path()});
    if (!m_server.waitForReadyRead(patience))
        return false;
    m_display = QLatin1Char(':') + QString::fromLatin1(m_server.readLine().trimmed());
    return true;
}

QProcessEnvironment XSession::environment(const QString& configFolder) const
{
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    result.insert(QStringLiteral("DISPLAY"), m_display);
    result.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    result.insert(QStringLiteral("XDG_CONFIG_HOME"), configFolder.isEmpty() ? m_folder.path() : configFolder);
    // The session of whoever runs the tests has no part in them.
    result.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("disabled:"));
    return result;
}

QByteArray XSession::tool(const QStringList& arguments, const QProcessEnvironment& environment)
{
    QProcess tool;
    tool.setProcessEnvironment(environment);
    tool.start(QStringLiteral("xdotool"), arguments);
    if (tool.waitForFinished(patience) && tool.exitCode() == 0)
        return tool.readAllStandardOutput();
    tool.kill();
    tool.waitForFinished();
    return QByteArray();
}

void XSession::click(const QPoint& place, int button) const
{
    tool({"mousemove", QString::number(place.x()), QString::number(place.y()), "click",
        QString::number(button), "mousemove", "1279", "899"});
}

void XSession::press(const QStringList& keys) const
{
    tool(QStringList{"key", "--clearmodifiers"} + keys);
}

// A window dump of the X Window System, version 7: a header of big-endian numbers, the table of colours, the
// pixels.
QImage XSession::screen() const
{
    QFile file(m_folder.filePath(QStringLiteral("Xvfb_screen0")));
    if (!file.open(QIODevice::ReadOnly))
        return QImage();
    const QByteArray dump = file.readAll();
    const auto number = [&dump](int index) {
        return dump.size() < 4 * (index + 1) ? 0 : qFromBigEndian<qint32>(dump.constData() + 4 * index);
    };
    const int headerSize = number(0);
    const QSize size(number(4), number(5));
    const int bitsPerPixel = number(11);
    const int bytesPerLine = number(12);
    const int colors = number(19);
    constexpr int colorSize = 12;
    const int offset = headerSize + colors * colorSize;
    if (bitsPerPixel != 32 || dump.size() < offset + bytesPerLine * size.height())
        return QImage();
    return QImage(reinterpret_cast<const uchar*>(dump.constData()) + offset, size.width(), size.height(),
        bytesPerLine, QImage::Format_RGB32)
        .copy();
}
