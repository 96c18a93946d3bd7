#include "desk/window/desktest.h"
#include "desk/window/xsession.h"
#include "support/testmain.h"

#include <QDir>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <cstdlib>
#include <limits>

/// A day at the desk on an X server, by mouse and keyboard: export, quit, and come back.
class tst_sessiononscreen : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void exports_data();
    void exports();
    void remembersWhereItExported();
    void tellsOfAnExportThatFails();
    void comesBackAsItWas();
    void comesBackAfterAKill();
    void commandLineWins();
    void keepsBrokenSettings();

private:
    void start(const QStringList& arguments = QStringList());
    void quit();
    void answerDialog(const QString& title, const QString& text);
    void exportSvg(const char* name);
    QImage window() const { return m_session->screen().copy(0, 0, 1000, 640); }
    QImage stillWindow() const { return m_session->stillScreen(m_desk).copy(0, 0, 1000, 640); }
    // Right of the tree, which shows looks of curves.
    int curvePixels(QRgb color) const
    {
        return DeskTest::countPixels(window().copy(180, 60, 820, 480), color);
    }
    QString path(const char* name) const { return m_folder->filePath(QString::fromLatin1(name)); }
    QString settingsFile() const { return path("optiondesk/settings.ini"); }
    static int differingPixels(const QImage& first, const QImage& second);
    QByteArray content(const QString& fileName) const;

    std::unique_ptr<XSession> m_session;
    std::unique_ptr<QTemporaryDir> m_folder;
    QProcess m_desk;
};

namespace {

constexpr int patience = 30000;

constexpr QRgb smileColor = qRgb(0x00, 0x72, 0xb2);
constexpr QRgb askColor = qRgb(0xcc, 0x79, 0xa7);
constexpr QRgb red = qRgb(255, 0, 0);

bool areAlike(QRgb first, QRgb second)
{
    constexpr int roundingSteps = 4;
    return std::abs(qRed(first) - qRed(second)) <= roundingSteps
        && std::abs(qGreen(first) - qGreen(second)) <= roundingSteps
        && std::abs(qBlue(first) - qBlue(second)) <= roundingSteps;
}

const QString deskTitle = QStringLiteral("Option desk");
const QString exportTitle = QStringLiteral("Export the plot");

}

void tst_sessiononscreen::initTestCase()
{
    if (!XServer::isPossible())
        QSKIP("Xvfb or xdotool is not there");
    m_session = std::make_unique<XSession>();
    QVERIFY(m_session->start());
}

void tst_sessiononscreen::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_sessiononscreen::cleanup()
{
    if (m_desk.state() == QProcess::NotRunning)
        return;
    m_desk.kill();
    m_desk.waitForFinished();
}

QByteArray tst_sessiononscreen::content(const QString& fileName) const
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Ends when the window shows its curves and the line at the forward.
void tst_sessiononscreen::start(const QStringList& arguments)
{
    m_desk.setProcessEnvironment(m_session->environment(m_folder->path()));
    m_desk.setWorkingDirectory(m_folder->path());
    m_desk.start(QStringLiteral(OPTIONDESK_PROGRAM), arguments);
    QVERIFY(m_desk.waitForStarted(patience));
    QVERIFY(!m_session->focus(deskTitle).isEmpty());
    // A server that the last program has left puts the cursor in the middle.
    m_session->tool({"mousemove", "1279", "899"});
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels(red) > 200, patience);
}

void tst_sessiononscreen::quit()
{
    m_session->press({"ctrl+q"});
    QVERIFY(m_desk.waitForFinished(patience));
    QCOMPARE(m_desk.exitCode(), 0);
}

void tst_sessiononscreen::answerDialog(const QString& title, const QString& text)
{
    QVERIFY(!m_session->focus(title).isEmpty());
    m_session->press({"ctrl+a"});
    m_session->tool({"type", text});
    m_session->press({"Return"});
}

// Of what is shown once all keys have done their work.
void tst_sessiononscreen::exportSvg(const char* name)
{
    m_session->press({"ctrl+shift+s"});
    answerDialog(exportTitle, path(name));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path(name)), patience);
    QVERIFY(!m_session->focus(deskTitle).isEmpty());
}

void tst_sessiononscreen::exports_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("begin");
    QTest::newRow("png") << "ctrl+s"
                         << "a.png" << QByteArray("\x89PNG");
    QTest::newRow("svg, suffix by the desk") << "ctrl+shift+s"
                                             << "a" << QByteArray("<?xml");
    QTest::newRow("pdf") << "ctrl+shift+d"
                         << "a.pdf" << QByteArray("%PDF-1");
    QTest::newRow("csv") << "ctrl+shift+e"
                         << "a.csv" << QByteArray("Strike,Smile");
}

void tst_sessiononscreen::exports()
{
    QFETCH(QString, keys);
    QFETCH(QString, name);
    QFETCH(QByteArray, begin);
    start();
    m_session->press({"ctrl+alt+2"});
    m_session->press({keys});
    answerDialog(exportTitle, m_folder->filePath(name));
    const QString fileName
        = m_folder->filePath(name.contains(QLatin1Char('.')) ? name : name + QStringLiteral(".svg"));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(fileName), patience);
    QCOMPARE(content(fileName).left(begin.size()), begin);
    if (name == QLatin1String("a.png")) {
        const QImage image(fileName);
        // The plot's pixels twice; the tree takes some of the window's thousand.
        QVERIFY(image.width() > 1500 && image.width() < 1800);
        QVERIFY(DeskTest::countPixels(image, smileColor) > 4 * 300);
    }
    QVERIFY(!m_session->focus(deskTitle).isEmpty());
    quit();
    QCOMPARE(m_desk.readAllStandardError(), QByteArray());
}

void tst_sessiononscreen::remembersWhereItExported()
{
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("out")));
    start();
    exportSvg("out/first.svg");
    quit();
    start();
    m_session->press({"ctrl+shift+s"});
    // Only its name.
    answerDialog(exportTitle, QStringLiteral("second.svg"));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path("out/second.svg")), patience);
    QXmlStreamReader reader(content(path("out/second.svg")));
    while (!reader.atEnd())
        reader.readNext();
    QVERIFY(!reader.hasError());
}

void tst_sessiononscreen::tellsOfAnExportThatFails()
{
    start();
    m_session->press({"ctrl+shift+e"});
    answerDialog(exportTitle, QStringLiteral("/proc/table.csv"));
    QVERIFY(!m_session->focus(QStringLiteral("^Export$|^Export . Option desk$")).isEmpty());
    m_session->press({"Return"});
    QVERIFY(!m_session->focus(deskTitle).isEmpty());
    quit();
}

void tst_sessiononscreen::comesBackAsItWas()
{
    start();
    const QImage fresh = stillWindow();
    // Another view, axis and range, without the grid.
    m_session->press({"ctrl+2"});
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels(askColor) == 0, patience);
    m_session->press({"alt+3"});
    m_session->press({"ctrl+g"});
    m_session->press({"ctrl+a"});
    m_session->press({"plus", "plus", "plus", "Right"});
    exportSvg("before.svg");
    quit();
    QVERIFY(QFile::exists(settingsFile()));

    start();
    exportSvg("after.svg");
    QVERIFY(content(path("after.svg")).contains("percent of the quote"));
    QVERIFY(content(path("after.svg")) == content(path("before.svg")));
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels(smileColor) > 100, patience);
    quit();
    QCOMPARE(m_desk.readAllStandardError(), QByteArray());

    // Without its settings the desk is as new.
    start({"--no-settings"});
    QTRY_VERIFY_WITH_TIMEOUT(window() == fresh, patience);
    quit();
}

// Curves that are attached anew are painted in another order, which rounds the colours otherwise where their
// soft edges cross: nothing that an eye can see.
int tst_sessiononscreen::differingPixels(const QImage& first, const QImage& second)
{
    if (first.size() != second.size())
        return std::numeric_limits<int>::max();
    int count = 0;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x)
            count += areAlike(first.pixel(x, y), second.pixel(x, y)) ? 0 : 1;
    }
    return count;
}

void tst_sessiononscreen::comesBackAfterAKill()
{
    start();
    const QImage fresh = stillWindow();
    m_session->press({"ctrl+2"});
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels(askColor) == 0, patience);
    quit();
    start();
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels(askColor) == 0, patience);
    const QImage value = stillWindow();
    m_session->press({"ctrl+1"});
    QTRY_VERIFY_WITH_TIMEOUT(differingPixels(window(), fresh) == 0, patience);
    m_desk.kill();
    QVERIFY(m_desk.waitForFinished(patience));
    start();
    // What was kept last.
    QTRY_VERIFY_WITH_TIMEOUT(window() == value, patience);
    quit();
    QCOMPARE(m_desk.readAllStandardError(), QByteArray());
}

void tst_sessiononscreen::commandLineWins()
{
    start();
    const QImage fresh = stillWindow();
    m_session->press({"ctrl+2"});
    m_session->press({"alt+2"});
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels(askColor) == 0, patience);
    quit();
    start({"--view", "volatility", "--axis", "price"});
    QTRY_VERIFY_WITH_TIMEOUT(window() == fresh, patience);
    quit();
}

void tst_sessiononscreen::keepsBrokenSettings()
{
    start();
    const QImage fresh = stillWindow();
    quit();
    for (const QByteArray& broken : {QByteArray("[session\nview=value\n"), QByteArray(5000, '\xfe'),
             content(settingsFile()) + "[more]\nkey=@Variant(\\0\\0\\0\\x9\\x7f\\xff\\xff\\xff)\n"}) {
        QDir(path("optiondesk")).remove(QStringLiteral("settings.ini.broken"));
        DeskTest::write(settingsFile(), broken);
        start();
        // The status bar says so, and nothing else is another.
        const QRect status(0, 615, 1000, 25);
        QTRY_VERIFY_WITH_TIMEOUT(window().copy(0, 0, 1000, 615) == fresh.copy(0, 0, 1000, 615), patience);
        QVERIFY(window().copy(status) != fresh.copy(status));
        quit();
        const QByteArray said = m_desk.readAllStandardError();
        QVERIFY2(said.count('\n') == 1 && said.contains("settings.ini.broken"), said);
        QCOMPARE(content(settingsFile() + QStringLiteral(".broken")), broken);
        start();
        QTRY_VERIFY_WITH_TIMEOUT(window() == fresh, patience);
        quit();
        QCOMPARE(m_desk.readAllStandardError(), QByteArray());
    }
}

PLOT2D_TEST_MAIN(tst_sessiononscreen)
#include "tst_sessiononscreen.moc"
