#include "desktest.h"
#include "support/testmain.h"
#include "xsession.h"

#include <QTemporaryDir>

/// The desk's legend on an X server, by mouse and keyboard, over restarts of the program.
class tst_desklegendonscreen : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void hidesAcrossRestarts_data();
    void hidesAcrossRestarts();
    void brokenSettingsCostNothingElse();
    void wheelDoesNothing();
    void keyboard();
    void colorsAcrossRestarts();

private:
    void start(const QStringList& arguments = QStringList());
    void quit();
    QPoint iconOf(QRgb color) const;
    int curvePixels(QRgb color) const;
    QImage window() const { return m_session->screen().copy(0, 0, 1000, 640); }
    QImage stillWindow() const { return m_session->stillScreen(m_desk).copy(0, 0, 1000, 640); }

    std::unique_ptr<XSession> m_session;
    std::unique_ptr<QTemporaryDir> m_config;
    QProcess m_desk;
};

namespace {

constexpr int patience = 60000;
constexpr int iconWidth = 24;

constexpr QRgb smileColor = qRgb(0x00, 0x72, 0xb2);
constexpr QRgb bidColor = qRgb(0x00, 0x9e, 0x73);
constexpr QRgb askColor = qRgb(0xcc, 0x79, 0xa7);
constexpr QRgb forwardColor = qRgb(255, 0, 0);
constexpr QRgb violet = qRgb(0x71, 0x35, 0xa8);
const QRgb grey = QColor(Qt::gray).rgb();

}

void tst_desklegendonscreen::initTestCase()
{
    if (!XServer::isPossible())
        QSKIP("Xvfb or xdotool is not there");
    m_session = std::make_unique<XSession>();
    QVERIFY(m_session->start());
}

void tst_desklegendonscreen::init()
{
    m_config = std::make_unique<QTemporaryDir>();
    QVERIFY(m_config->isValid());
}

void tst_desklegendonscreen::cleanup()
{
    if (m_desk.state() == QProcess::NotRunning)
        return;
    m_desk.kill();
    m_desk.waitForFinished();
}

// Ends when the window shows its legend, and has the focus, which no window manager gives it.
void tst_desklegendonscreen::start(const QStringList& arguments)
{
    m_desk.setProcessEnvironment(m_session->environment(m_config->path()));
    m_desk.start(QStringLiteral(OPTIONDESK_PROGRAM), arguments);
    QVERIFY(m_desk.waitForStarted(patience));
    QVERIFY(!m_session->focus(QStringLiteral("Option desk")).isEmpty());
    // The last entry comes last.
    QTRY_VERIFY_WITH_TIMEOUT(!iconOf(forwardColor).isNull(), patience);
}

void tst_desklegendonscreen::quit()
{
    m_session->press({"ctrl+q"});
    QVERIFY(m_desk.waitForFinished(patience));
    QCOMPARE(m_desk.exitCode(), 0);
}

// The middle of the line in the legend: as long as an icon, with nothing to its left and right.
QPoint tst_desklegendonscreen::iconOf(QRgb color) const
{
    const QImage image = window();
    for (int y = image.height() / 2; y < image.height(); ++y) {
        int length = 0;
        for (int x = 0; x < image.width(); ++x) {
            const bool isHit = (image.pixel(x, y) | 0xff000000) == color;
            if (!isHit && length == iconWidth)
                return QPoint(x - iconWidth / 2, y);
            length = isHit ? length + 1 : 0;
        }
    }
    return QPoint();
}

// Above the legend, and to the right of the tree, which has the smile's colour as its mark.
int tst_desklegendonscreen::curvePixels(QRgb color) const
{
    return DeskTest::countPixels(window().copy(180, 60, 820, 480), color);
}

void tst_desklegendonscreen::hidesAcrossRestarts_data()
{
    QTest::addColumn<int>("fromIcon");
    // Pixels to the right of the icon's middle.
    QTest::newRow("box") << -25;
    QTest::newRow("icon") << 0;
    QTest::newRow("text") << 30;
}

void tst_desklegendonscreen::hidesAcrossRestarts()
{
    QFETCH(int, fromIcon);
    start();
    const QPoint icon = iconOf(smileColor);
    QVERIFY(!icon.isNull());
    QVERIFY(curvePixels(smileColor) > 300);
    const QImage fresh = window();

    m_session->click(icon + QPoint(fromIcon, 0));
    QTRY_COMPARE_WITH_TIMEOUT(iconOf(grey), icon, patience);
    QTRY_COMPARE_WITH_TIMEOUT(curvePixels(smileColor), 0, patience);
    QVERIFY(iconOf(smileColor).isNull());
    QVERIFY(curvePixels(bidColor) > 20);
    quit();
    QVERIFY(QFile::exists(m_config->filePath(QStringLiteral("optiondesk/settings.ini"))));

    start();
    QTRY_COMPARE_WITH_TIMEOUT(iconOf(grey), icon, patience);
    QCOMPARE(curvePixels(smileColor), 0);
    QVERIFY(window() != fresh);
    m_session->click(icon + QPoint(fromIcon, 0));
    QTRY_COMPARE_WITH_TIMEOUT(iconOf(smileColor), icon, patience);
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels(smileColor) > 300, patience);
    m_session->click(icon + QPoint(fromIcon, 0));
    QTRY_COMPARE_WITH_TIMEOUT(iconOf(grey), icon, patience);
    quit();

    // Other settings are not concerned, nor is a desk without.
    for (const QStringList& arguments : {QStringList{"--no-settings"},
             QStringList{"--settings", m_config->filePath(QStringLiteral("other.ini"))}}) {
        start(arguments);
        QTRY_COMPARE_WITH_TIMEOUT(iconOf(smileColor), icon, patience);
        QVERIFY(curvePixels(smileColor) > 300);
        quit();
    }
}

void tst_desklegendonscreen::brokenSettingsCostNothingElse()
{
    const QString file = m_config->filePath(QStringLiteral("broken.ini"));
    DeskTest::write(file, "[volatility\nlegendItemKeys=5\n");
    start({"--settings", file});
    const QPoint icon = iconOf(smileColor);
    m_session->click(icon);
    QTRY_COMPARE_WITH_TIMEOUT(iconOf(grey), icon, patience);
    quit();
    const QByteArray said = m_desk.readAllStandardError();
    QCOMPARE(said.count('\n'), 1);
    QVERIFY2(said.contains(QFile::encodeName(file)), said);
    QFile aside(file + QStringLiteral(".broken"));
    QVERIFY(aside.open(QIODevice::ReadOnly));
    QCOMPARE(aside.readAll(), QByteArray("[volatility\nlegendItemKeys=5\n"));

    // What was chosen since is kept.
    start({"--settings", file});
    QTRY_COMPARE_WITH_TIMEOUT(iconOf(grey), icon, patience);
    quit();
    QCOMPARE(m_desk.readAllStandardError(), QByteArray());
}

void tst_desklegendonscreen::wheelDoesNothing()
{
    start();
    const QPoint icon = iconOf(bidColor);
    m_session->click(icon);
    QTRY_COMPARE_WITH_TIMEOUT(iconOf(grey), icon, patience);
    const QImage before = stillWindow();
    for (const int button : {4, 5, 5})
        m_session->click(icon, button);
    // What the wheel had done would be seen before this has been undone.
    m_session->click(icon);
    QTRY_COMPARE_WITH_TIMEOUT(iconOf(bidColor), icon, patience);
    m_session->click(icon);
    QTRY_COMPARE_WITH_TIMEOUT(window(), before, patience);
}

void tst_desklegendonscreen::keyboard()
{
    start();
    const QPoint icon = iconOf(bidColor);
    // Into the box, and out of it again by the mouse.
    m_session->click(icon - QPoint(25, 0));
    QTRY_COMPARE_WITH_TIMEOUT(iconOf(grey), icon, patience);
    m_session->press({"space"});
    QTRY_COMPARE_WITH_TIMEOUT(iconOf(bidColor), icon, patience);
    m_session->press({"shift+F10"});
    m_session->press({"o"});
    QTRY_COMPARE_WITH_TIMEOUT(curvePixels(smileColor), 0, patience);
    QTRY_VERIFY_WITH_TIMEOUT(iconOf(forwardColor).isNull(), patience);
    QVERIFY(curvePixels(bidColor) > 20);
    m_session->press({"Tab"});
    m_session->press({"space"});
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels(askColor) > 20, patience);
    m_session->press({"Menu"});
    m_session->press({"a"});
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels(smileColor) > 300, patience);
    QTRY_VERIFY_WITH_TIMEOUT(!iconOf(forwardColor).isNull(), patience);
}

void tst_desklegendonscreen::colorsAcrossRestarts()
{
    start();
    const QPoint icon = iconOf(smileColor);
    m_session->click(icon, 3);
    m_session->press({"c"});
    QVERIFY(!m_session->focus(QStringLiteral("Colour of the curve Smile")).isEmpty());
    m_session->press({"alt+h"});
    m_session->press({"ctrl+a"});
    m_session->tool({"type", "#7135a8"});
    m_session->press({"Return"});
    QTRY_COMPARE_WITH_TIMEOUT(iconOf(violet), icon, patience);
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels(violet) > 300, patience);
    QCOMPARE(curvePixels(smileColor), 0);
    QVERIFY(!m_session->focus(QStringLiteral("Option desk")).isEmpty());
    quit();
    start();
    QTRY_COMPARE_WITH_TIMEOUT(iconOf(violet), icon, patience);
    QVERIFY(curvePixels(violet) > 300);
    QCOMPARE(curvePixels(smileColor), 0);
    quit();
    QCOMPARE(m_desk.readAllStandardError(), QByteArray());
}

PLOT2D_TEST_MAIN(tst_desklegendonscreen)
#include "tst_desklegendonscreen.moc"
