#include "desktest.h"
#include "support/testmain.h"
#include "xsession.h"

#include <position/positionjson.h>

#include <QPainter>
#include <QTemporaryDir>

using Position::Leg;
using Position::LegKind;

namespace {

// Of the plot on the screen.
constexpr int plotTop = 60;

}

/// A position by keyboard and pointer on an X server, over a restart of the program.
class tst_positiononscreen : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void twoLegsByKeyboard();
    void tableGoesWithItsView();
    void pointerReadsTheBreakEven();

private:
    void start();
    void quit();
    QVector<Leg> keptLegs() const;
    // The plot with its markers, above the table and the legend.
    QImage plot() const;
    int pixels(QRgb color) const { return DeskTest::countPixels(plot(), color); }
    // The middles of the markers, on the screen.
    QVector<QPoint> markers() const;
    int breakEvens() const { return markers().size(); }

    std::unique_ptr<XSession> m_session;
    std::unique_ptr<QTemporaryDir> m_config;
    QProcess m_desk;
};

namespace {

constexpr int patience = 60000;
constexpr QRgb expiryColor = qRgb(0x00, 0x72, 0xb2);
constexpr QRgb todayColor = qRgb(0x00, 0x9e, 0x73);
constexpr QRgb forwardColor = qRgb(255, 0, 0);
constexpr int markerSize = 7;

bool isBlack(const QImage& image, int x, int y)
{
    return qGray(image.pixel(x, y)) < 30;
}

// Whether a filled square of the markers' size has its upper left corner here.
bool isMarker(const QImage& image, int left, int top)
{
    for (int y = top; y < top + markerSize; ++y) {
        for (int x = left; x < left + markerSize; ++x) {
            if (!isBlack(image, x, y))
                return false;
        }
    }
    return true;
}

}

void tst_positiononscreen::initTestCase()
{
    if (!XServer::isPossible())
        QSKIP("Xvfb or xdotool is not there");
    m_session = std::make_unique<XSession>();
    QVERIFY(m_session->start());
}

void tst_positiononscreen::init()
{
    m_config = std::make_unique<QTemporaryDir>();
    QVERIFY(m_config->isValid());
}

void tst_positiononscreen::cleanup()
{
    if (m_desk.state() == QProcess::NotRunning)
        return;
    m_desk.kill();
    m_desk.waitForFinished();
}

void tst_positiononscreen::start()
{
    m_desk.setProcessEnvironment(m_session->environment(m_config->path()));
    m_desk.start(QStringLiteral(OPTIONDESK_PROGRAM), {QStringLiteral("--view"), QStringLiteral("position")});
    QVERIFY(m_desk.waitForStarted(patience));
    QVERIFY(!m_session->focus(QStringLiteral("Option desk")).isEmpty());
    QTRY_VERIFY_WITH_TIMEOUT(pixels(forwardColor) > 50, patience);
}

void tst_positiononscreen::quit()
{
    m_session->press({"ctrl+q"});
    QVERIFY(m_desk.waitForFinished(patience));
    QCOMPARE(m_desk.exitCode(), 0);
    QCOMPARE(m_desk.readAllStandardError(), QByteArray());
}

QVector<Leg> tst_positiononscreen::keptLegs() const
{
    QFile file(m_config->filePath(QStringLiteral("optiondesk/positions.json")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return PositionJson::read(file.readAll())
        .value_or(PositionJson::Positions())
        .value(QStringLiteral("AMBER"));
}

QVector<QPoint> tst_positiononscreen::markers() const
{
    const QImage image = plot();
    QVector<QPoint> found;
    for (int y = 0; y + markerSize < image.height(); ++y) {
        for (int x = 0; x + markerSize < image.width(); ++x) {
            const bool isKnown = std::any_of(found.begin(), found.end(), [x, y](const QPoint& other) {
                return (other - QPoint(x, y)).manhattanLength() < 2 * markerSize;
            });
            if (!isKnown && isMarker(image, x, y))
                found.append({x, y});
        }
    }
    for (QPoint& marker : found)
        marker += QPoint(markerSize / 2, markerSize / 2 + plotTop);
    return found;
}

// Without the tree, which has a curve's colour as its mark.
QImage tst_positiononscreen::plot() const
{
    constexpr int treeWidth = 175;
    QImage image = m_session->screen().copy(0, plotTop, 1000, 300);
    QPainter(&image).fillRect(0, 0, treeWidth, image.height(), Qt::white);
    return image;
}

void tst_positiononscreen::twoLegsByKeyboard()
{
    start();
    QCOMPARE(pixels(expiryColor), 0);
    QCOMPARE(breakEvens(), 0);

    // A call at the money.
    m_session->press({"Insert"});
    QTRY_VERIFY_WITH_TIMEOUT(pixels(expiryColor) > 300, patience);
    QVERIFY(pixels(todayColor) > 100);
    QTRY_COMPARE_WITH_TIMEOUT(breakEvens(), 1, patience);
    QCOMPARE(keptLegs().size(), 1);

    // With a put it is a straddle, twice of it.
    m_session->press({"Insert"});
    m_session->press({"p", "Return"});
    QTRY_VERIFY_WITH_TIMEOUT(keptLegs().size() == 2 && keptLegs()[1].kind == LegKind::Put, patience);
    QTRY_COMPARE_WITH_TIMEOUT(breakEvens(), 2, patience);
    QCOMPARE(keptLegs()[0].strike, keptLegs()[1].strike);
    QVERIFY(keptLegs()[1].price > 0.0);
    m_session->press({"Right", "Right", "2", "Return"});
    QTRY_COMPARE_WITH_TIMEOUT(keptLegs().value(1).quantity, 2, patience);
    // Nonsense is refused.
    m_session->press({"0", "Return"});
    m_session->press({"Right", "8", "0", "Return"});
    QTRY_COMPARE_WITH_TIMEOUT(keptLegs().value(1).strike, 80.0, patience);
    QCOMPARE(keptLegs()[1].quantity, 2);
    QTRY_COMPARE_WITH_TIMEOUT(breakEvens(), 2, patience);
    const QVector<Leg> legs = keptLegs();
    quit();

    start();
    QTRY_COMPARE_WITH_TIMEOUT(breakEvens(), 2, patience);
    QVERIFY(pixels(expiryColor) > 300);
    QCOMPARE(keptLegs(), legs);
    m_session->press({"ctrl+l"});
    m_session->press({"Delete"});
    QTRY_COMPARE_WITH_TIMEOUT(keptLegs().size(), 1, patience);
    QTRY_COMPARE_WITH_TIMEOUT(breakEvens(), 1, patience);
    m_session->press({"Delete"});
    QTRY_COMPARE_WITH_TIMEOUT(pixels(expiryColor), 0, patience);
    QVERIFY(keptLegs().isEmpty());
    quit();
}

void tst_positiononscreen::tableGoesWithItsView()
{
    start();
    m_session->press({"Insert"});
    QTRY_COMPARE_WITH_TIMEOUT(keptLegs().size(), 1, patience);
    // The view of the volatility has no table; the keys bring view and table back.
    m_session->press({"ctrl+1"});
    QTRY_COMPARE_WITH_TIMEOUT(breakEvens(), 0, patience);
    m_session->press({"ctrl+3"});
    QTRY_COMPARE_WITH_TIMEOUT(breakEvens(), 1, patience);
    quit();
}

void tst_positiononscreen::pointerReadsTheBreakEven()
{
    start();
    m_session->press({"Insert"});
    QTRY_COMPARE_WITH_TIMEOUT(breakEvens(), 1, patience);
    QVERIFY(!m_session->stillScreen(m_desk).isNull());
    const QPoint marker = markers().first();
    const auto darkPixels = [this, marker] {
        const QImage around = m_session->screen().copy(marker.x() + 10, marker.y() - 100, 200, 200);
        return DeskTest::countPixels(around, qRgb(0, 0, 0));
    };
    const int before = darkPixels();
    m_session->tool({"mousemove", QString::number(marker.x() + 1), QString::number(marker.y() - 1)});
    // Three lines of text: what it is, the price, the profit.
    QTRY_VERIFY_WITH_TIMEOUT(darkPixels() > before + 150, patience);
    m_session->tool({"mousemove", "1279", "899"});
    QTRY_VERIFY_WITH_TIMEOUT(darkPixels() <= before, patience);
    quit();
}

PLOT2D_TEST_MAIN(tst_positiononscreen)
#include "tst_positiononscreen.moc"
