#include "xsession.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QtEndian>

#include <algorithm>

namespace {

constexpr int patience = 60000;

// Whether all threads of a process wait for something: one that has work waits for a processor at most, which
// the system tells apart.
bool isAtRest(qint64 process)
{
    const QDir threads(QStringLiteral("/proc/%1/task").arg(process));
    const QStringList ids = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return std::all_of(ids.begin(), ids.end(), [&threads](const QString& id) {
        QFile file(threads.filePath(id + QStringLiteral("/stat")));
        const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        // Behind the name, which may have brackets and spaces in it; a thread that has ended has no text.
        return text.isEmpty() || text.at(text.lastIndexOf(')') + 2) == 'S';
    });
}

}

bool XSession::start()
{
    // The screen is a file.
    return m_server.start({QStringLiteral("-fbdir"), m_folder.path()});
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

// A window that comes or goes meanwhile makes a step fail: all of them are then tried again.
QString XSession::focus(const QString& title) const
{
    const QDeadlineTimer deadline(patience);
    while (!deadline.hasExpired()) {
        const QString found = QString::fromLatin1(
            tool({"search", "--onlyvisible", "--name", title}).split('\n').constFirst());
        if (found.isEmpty())
            continue;
        tool({"windowfocus", found});
        if (QString::fromLatin1(tool({"getwindowfocus", "-f"})).trimmed() == found)
            return found;
    }
    return QString();
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

QImage XSession::stillScreen(const QProcess& program) const
{
    // Also between the frames of what moves, and where one thread is about to wake another.
    constexpr int manyLooks = 20;
    const QDeadlineTimer deadline(patience);
    QImage still;
    int looks = 0;
    while (!deadline.hasExpired()) {
        // A round trip to the server: it has then handed on what came before, on a slow machine as well.
        tool({"getmouselocation"});
        const QImage now = screen();
        looks = isAtRest(program.processId()) && !now.isNull() && now == still ? looks + 1 : 0;
        if (looks == manyLooks)
            return still;
        still = now;
    }
    qWarning("the screen does not come to rest");
    return QImage();
}
