#include "desktest.h"
#include "support/programend.h"
#include "support/testmain.h"
#include "xsession.h"

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
    std::unique_ptr<XSession> m_session;
};

namespace {

constexpr int patience = 60000;

}

void tst_optiondeskonscreen::initTestCase()
{
    if (!XServer::isPossible())
        QSKIP("Xvfb or xdotool is not there");
    m_session = std::make_unique<XSession>();
    QVERIFY(m_session->start());
}

void tst_optiondeskonscreen::cleanupTestCase()
{
    m_session.reset();
}

void tst_optiondeskonscreen::quitsByItsShortcut()
{
    QProcess desk;
    desk.setProcessEnvironment(m_session->environment());
    desk.start(QStringLiteral(OPTIONDESK_PROGRAM), QStringList());
    QVERIFY(desk.waitForStarted(patience));

    const QString window = m_session->focus(QStringLiteral("Option desk"));
    QVERIFY(!window.isEmpty());
    const QByteArray geometry = m_session->tool({"getwindowgeometry", window});
    QVERIFY2(geometry.contains("1000x640"), geometry);

    m_session->tool({"key", "--clearmodifiers", "ctrl+q"});
    const bool ended = desk.waitForFinished(patience);
    if (!ended) {
        desk.kill();
        desk.waitForFinished();
    }
    QVERIFY(ended);
    QCOMPARE(TestSupport::troubleOf(desk), QByteArray());
}

void tst_optiondeskonscreen::drawsPicturesOnAnXServer()
{
    const QTemporaryDir folder;
    QProcess desk;
    desk.setProcessEnvironment(m_session->environment());
    const QString file = folder.filePath(QStringLiteral("p.png"));
    // Larger than the screen.
    desk.start(QStringLiteral(OPTIONDESK_PROGRAM), {"--picture", file, "--size", "1600x1100"});
    QVERIFY(desk.waitForFinished(patience));
    QCOMPARE(TestSupport::troubleOf(desk), QByteArray());
    const QImage image(file);
    QCOMPARE(image.size(), QSize(1600, 1100));
    QVERIFY(DeskTest::countPixels(image, qRgb(255, 0, 0)) > 400);
}

PLOT2D_TEST_MAIN(tst_optiondeskonscreen)
#include "tst_optiondeskonscreen.moc"
