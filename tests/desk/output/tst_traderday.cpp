#include "desk/window/desktest.h"
#include "desk/window/xsession.h"
#include "support/testmain.h"

#include <QDir>
#include <QTemporaryDir>

/// A trader's day on an X server, as one who sees the screen and has a mouse and a keyboard lives it: import
/// a chain, zoom, read a value, hide a curve, export, quit, and find all as it was the next morning.
class tst_traderday : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void fromImportToTheNextMorning();

private:
    void start();
    void quit();
    void importByKeyboard(const QString& fileName);
    void zoomByWheel();
    void readAValue();
    void hideTheSmile();
    void exportPng(const QString& name);
    QImage window() const { return m_session->screen().copy(0, 0, 1000, 640); }
    // The plot with its axes and its title, between the tree and the legend.
    QImage plot() const { return m_session->screen().copy(plotArea); }
    QImage stillPlot() const { return m_session->stillScreen(m_desk).copy(plotArea); }
    QPoint iconOf(QRgb color) const;
    QPoint pointNear(const QPoint& place) const;
    QString path(const QString& name) const { return m_folder.filePath(name); }

    static const QRect plotArea;
    std::unique_ptr<XSession> m_session;
    QTemporaryDir m_folder;
    QProcess m_desk;
};

const QRect tst_traderday::plotArea(180, 62, 820, 505);

namespace {

constexpr int patience = 30000;

constexpr QRgb smileColor = qRgb(0x00, 0x72, 0xb2);
constexpr QRgb pointColor = qRgb(0xe6, 0x9f, 0x00);
constexpr QRgb forwardColor = qRgb(255, 0, 0);

const QString chainTitle = QStringLiteral("^TEST.*Option desk");

int differingPixels(const QImage& first, const QImage& second)
{
    if (first.size() != second.size())
        return first.width() * first.height();
    int count = 0;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x)
            count += first.pixel(x, y) != second.pixel(x, y) ? 1 : 0;
    }
    return count;
}

bool isSame(const QImage& first, const QImage& second)
{
    // Curves that are attached anew cross others above them instead of below: their soft edges tell.
    constexpr int fewPixels = 20;
    return differingPixels(first, second) < fewPixels;
}

}

void tst_traderday::initTestCase()
{
    if (!XServer::isPossible())
        QSKIP("Xvfb or xdotool is not there");
    m_session = std::make_unique<XSession>();
    // A server that starts anew when its last program leaves would turn away the one of the next morning.
    QVERIFY(m_session->start());
    QVERIFY(m_folder.isValid());
}

void tst_traderday::cleanup()
{
    if (m_desk.state() == QProcess::NotRunning)
        return;
    m_desk.kill();
    m_desk.waitForFinished();
}

void tst_traderday::start()
{
    m_desk.setProcessEnvironment(m_session->environment(m_folder.path()));
    m_desk.setWorkingDirectory(m_folder.path());
    m_desk.start(QStringLiteral(OPTIONDESK_PROGRAM), QStringList());
    QVERIFY(m_desk.waitForStarted(patience));
    QVERIFY(!m_session->focus(QStringLiteral("Option desk")).isEmpty());
    m_session->tool({"mousemove", "1279", "899"});
    QTRY_VERIFY_WITH_TIMEOUT(DeskTest::countPixels(plot(), forwardColor) > 200, patience);
}

void tst_traderday::quit()
{
    m_session->press({"ctrl+q"});
    QVERIFY(m_desk.waitForFinished(patience));
    QCOMPARE(m_desk.exitCode(), 0);
    QCOMPARE(m_desk.readAllStandardError(), QByteArray());
}

void tst_traderday::importByKeyboard(const QString& fileName)
{
    const QImage samples = plot();
    m_session->press({"alt+f"});
    QTRY_VERIFY_WITH_TIMEOUT(plot() != samples, patience);
    m_session->press({"i"});
    QVERIFY(!m_session->focus(QStringLiteral("Import an option chain")).isEmpty());
    m_session->tool({"type", fileName});
    m_session->press({"Return"});
    QVERIFY(!m_session->focus(chainTitle).isEmpty());
    QTRY_VERIFY_WITH_TIMEOUT(DeskTest::countPixels(plot(), pointColor) > 100, patience);
}

// The middle of the line in the legend: as long as an icon, with nothing to its left and right.
QPoint tst_traderday::iconOf(QRgb color) const
{
    constexpr int iconWidth = 24;
    const QImage image = window();
    for (int y = plotArea.bottom(); y < image.height(); ++y) {
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

// The pixel of a point that is nearest to a place on the screen; null where there is none.
QPoint tst_traderday::pointNear(const QPoint& place) const
{
    const QImage image = plot();
    QPoint best;
    int least = image.width() + image.height();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QPoint here = plotArea.topLeft() + QPoint(x, y);
            const int distance = (here - place).manhattanLength();
            if (distance >= least || (image.pixel(x, y) | 0xff000000) != pointColor)
                continue;
            best = here;
            least = distance;
        }
    }
    return best;
}

void tst_traderday::zoomByWheel()
{
    const QImage before = stillPlot();
    const QPoint place = pointNear(plotArea.center());
    QVERIFY(!place.isNull());
    m_session->tool({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", "4",
        "click", "4", "click", "4", "mousemove", "1279", "899"});
    constexpr int many = 2000;
    QTRY_VERIFY_WITH_TIMEOUT(differingPixels(plot(), before) > many, patience);
}

// A text comes beside the pointer, another one for another point, and goes with the pointer.
void tst_traderday::readAValue()
{
    const QImage before = stillPlot();
    // Away from the edges, where the text would have to move.
    const QPoint point = pointNear(plotArea.center() + QPoint(200, 0));
    const QPoint other = pointNear(plotArea.center() - QPoint(200, 0));
    QVERIFY(!point.isNull() && !other.isNull());
    QVERIFY((other - point).manhattanLength() > 100);
    constexpr int textPixels = 500;
    m_session->tool({"mousemove", QString::number(point.x()), QString::number(point.y())});
    QTRY_VERIFY_WITH_TIMEOUT(differingPixels(plot(), before) > textPixels, patience);
    const QImage first = stillPlot();
    m_session->tool({"mousemove", QString::number(other.x()), QString::number(other.y())});
    QTRY_VERIFY_WITH_TIMEOUT(
        differingPixels(plot(), first) > textPixels && differingPixels(plot(), before) > textPixels,
        patience);
    m_session->tool({"mousemove", "1279", "899"});
    QTRY_VERIFY_WITH_TIMEOUT(plot() == before, patience);
}

void tst_traderday::hideTheSmile()
{
    QVERIFY(DeskTest::countPixels(plot(), smileColor) > 200);
    const QPoint icon = iconOf(smileColor);
    QVERIFY(!icon.isNull());
    constexpr int fromBoxToIcon = 25;
    m_session->click(icon - QPoint(fromBoxToIcon, 0));
    QTRY_COMPARE_WITH_TIMEOUT(DeskTest::countPixels(plot(), smileColor), 0, patience);
    QVERIFY(DeskTest::countPixels(plot(), pointColor) > 100);
}

void tst_traderday::exportPng(const QString& name)
{
    m_session->press({"ctrl+s"});
    QVERIFY(!m_session->focus(QStringLiteral("Export the plot")).isEmpty());
    m_session->press({"ctrl+a"});
    m_session->tool({"type", path(name)});
    m_session->press({"Return"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path(name)), patience);
    QVERIFY(!m_session->focus(chainTitle).isEmpty());
}

void tst_traderday::fromImportToTheNextMorning()
{
    DeskTest::write(path(QStringLiteral("chain.csv")), DeskTest::csv());
    start();
    importByKeyboard(path(QStringLiteral("chain.csv")));
    zoomByWheel();
    readAValue();
    hideTheSmile();
    // What the status bar says of the export is not for the next day.
    const QRect above(0, 0, 1000, 610);
    const QImage evening = m_session->stillScreen(m_desk).copy(above);
    exportPng(QStringLiteral("evening.png"));
    QTRY_VERIFY_WITH_TIMEOUT(isSame(window().copy(above), evening), patience);
    quit();
    const QImage exported(path(QStringLiteral("evening.png")));
    QVERIFY(DeskTest::countPixels(exported, pointColor) > 100);
    QCOMPARE(DeskTest::countPixels(exported, smileColor), 0);

    start();
    QVERIFY(!m_session->focus(chainTitle).isEmpty());
    QTRY_VERIFY_WITH_TIMEOUT(isSame(window().copy(above), evening), patience);
    exportPng(QStringLiteral("morning.png"));
    QVERIFY(isSame(QImage(path(QStringLiteral("morning.png"))), exported));
    quit();
}

PLOT2D_TEST_MAIN(tst_traderday)
#include "tst_traderday.moc"
