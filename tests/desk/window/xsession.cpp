#include "xsession.h"

#include <QFile>
#include <QProcess>
#include <QtEndian>

namespace {

constexpr int patience = 60000;

}

bool XSession::start(const QStringList& arguments)
{
    // The screen is a file.
    return m_server.start(QStringList{QStringLiteral("-fbdir"), m_folder.path()} + arguments);
}

QProcessEnvironment XSession::environment(const QString& configFolder) const
{
    QProcessEnvironment result = m_server.environment();
    result.insert(QStringLiteral("XDG_CONFIG_HOME"), configFolder.isEmpty() ? m_folder.path() : configFolder);
    result.insert(QStringLiteral("LANGUAGE"), QStringLiteral("en"));
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
