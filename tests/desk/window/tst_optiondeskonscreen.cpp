#include "desktest.h"
#include "support/testmain.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

/// The option desk's window on an X server, driven by mouse and keyboard.
class tst_optiondeskonscreen : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void quitsByItsShortcut();
    void drawsPicturesOnAnXServer();

private:
    QByteArray toolOutput(const QStringList& arguments);
    QProcessEnvironment environment() const;

    QProcess m_server;
    QString m_display;
    QTemporaryDir m_settings;
};

namespace {

constexpr int patience = 60000;

}

void tst_optiondeskonscreen::initTestCase()
{
    for (const char* program : {"Xvfb", "xdotool"}) {
        if (QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty())
            QSKIP("Xvfb or xdotool is not there");
    }
    // The server chooses a free display and writes its number on standard output.
    m_server.start(
        QStringLiteral("Xvfb"), {"-displayfd", "1", "-screen", "0", "1280x900x24", "-nolisten", "tcp"});
    QVERIFY(m_server.waitForReadyRead(patience));
    m_display = QLatin1Char(':') + QString::fromLatin1(m_server.readLine().trimmed());
}

void tst_optiondeskonscreen::cleanupTestCase()
{
    if (m_server.state() == QProcess::NotRunning)
        return;
    m_server.terminate();
    QVERIFY(m_server.waitForFinished(patience));
}

QProcessEnvironment tst_optiondeskonscreen::environment() const
{
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    result.insert(QStringLiteral("DISPLAY"), m_display);
    result.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    // The session of whoever runs the tests has no part in them.
    result.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("disabled:"));
    result.insert(QStringLiteral("XDG_CONFIG_HOME"), m_settings.path());
    return result;
}

QByteArray tst_optiondeskonscreen::toolOutput(const QStringList& arguments)
{
    QProcess tool;
    tool.setProcessEnvironment(environment());
    tool.start(QStringLiteral("xdotool"), arguments);
    if (!tool.waitForFinished(patience) || tool.exitCode() != 0) {
        tool.kill();
        tool.waitForFinished();
        return QByteArray();
    }
    return tool.readAllStandardOutput();
}

void tst_optiondeskonscreen::quitsByItsShortcut()
{
    QProcess desk;
    desk.setProcessEnvironment(environment());
    desk.start(QStringLiteral(OPTIONDESK_PROGRAM), QStringList());
    QVERIFY(desk.waitForStarted(patience));

    const QByteArray found
        = toolOutput({"search", "--sync", "--onlyvisible", "--name", "Option desk"}).split('\n').first();
    QVERIFY(!found.isEmpty());
    const QString window = QString::fromLatin1(found);
    const QByteArray geometry = toolOutput({"getwindowgeometry", window});
    QVERIFY2(geometry.contains("1000x640"), geometry);

    // No window manager gives the window the focus.
    toolOutput({"windowfocus", "--sync", window});
    toolOutput({"key", "--clearmodifiers", "ctrl+q"});
    const bool ended = desk.waitForFinished(patience);
    if (!ended) {
        desk.kill();
        desk.waitForFinished();
    }
    QVERIFY(ended);
    QCOMPARE(desk.exitStatus(), QProcess::NormalExit);
    QCOMPARE(desk.exitCode(), 0);
    QCOMPARE(desk.readAllStandardError(), QByteArray());
}

void tst_optiondeskonscreen::drawsPicturesOnAnXServer()
{
    const QTemporaryDir folder;
    QProcess desk;
    desk.setProcessEnvironment(environment());
    const QString file = folder.filePath(QStringLiteral("p.png"));
    // Larger than the screen.
    desk.start(QStringLiteral(OPTIONDESK_PROGRAM), {"--picture", file, "--size", "1600x1100"});
    QVERIFY(desk.waitForFinished(patience));
    QCOMPARE(desk.exitCode(), 0);
    const QImage image(file);
    QCOMPARE(image.size(), QSize(1600, 1100));
    QVERIFY(DeskTest::countPixels(image, qRgb(255, 0, 0)) > 400);
}

PLOT2D_TEST_MAIN(tst_optiondeskonscreen)
#include "tst_optiondeskonscreen.moc"
