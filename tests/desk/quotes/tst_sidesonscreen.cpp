#include "../window/xsession.h"
#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <QTemporaryDir>

#include <optional>

/// The tree and the table at the sides of the plot, on an X server, by mouse and keyboard.
class tst_sidesonscreen : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void checksASecondExpiry();
    void choosesAnotherExpiry();
    void rowAndPointFollowEachOther();

private:
    QImage window() const { return m_session->screen().copy(0, 0, 1000, 640); }
    QImage stillWindow() const { return m_session->stillScreen(m_desk).copy(0, 0, 1000, 640); }
    QPoint swatch() const;
    int curvePixels() const;
    int rowOf(QRgb background) const;
    QRect changedSince(const QImage& before) const;
    void hover(const QPoint& place) const;

    std::unique_ptr<XSession> m_session;
    std::unique_ptr<QTemporaryDir> m_folder;
    QProcess m_desk;
};

namespace {

constexpr int patience = 30000;

// Of the second of three expiries.
constexpr QRgb olive = 0xff999933;
constexpr int swatchWidth = 18;
constexpr int treeWidth = 190;
// The plot without its legend, beside the tree and, once it is there, the table.
constexpr QRect plotPlace(treeWidth + 70, 110, 700 - treeWidth - 80, 340);
constexpr int tableLeft = 740;
// What the soft edges of other curves have of the colour.
constexpr int blendedPixels = 50;

// Three expiries of the same options at the same prices.
QByteArray threeExpiries()
{
    QByteArray text("underlying,quote_date,expiry,type,strike,settlement\n");
    const OptionChain chain = DeskTest::chain();
    for (const char* expiry : {"2024-04-02", "2024-06-21", "2024-09-20"}) {
        for (const OptionQuote& one : chain.series.first().quotes)
            text += QByteArray("TEST,2024-01-02,") + expiry + ',' + char(one.type) + ','
                + one.strike.toString().toLatin1() + ',' + one.settlement->toString().toLatin1() + '\n';
    }
    return text;
}

}

void tst_sidesonscreen::initTestCase()
{
    if (!XServer::isPossible())
        QSKIP("Xvfb or xdotool is not there");
    m_session = std::make_unique<XSession>();
    QVERIFY(m_session->start());
}

// Ends when the second expiry is in the tree and on the plot, and the window has the focus, which no window
// manager gives it.
void tst_sidesonscreen::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    const QString chain = DeskTest::write(m_folder->filePath(QStringLiteral("c.csv")), threeExpiries());
    m_desk.setProcessEnvironment(m_session->environment(m_folder->path()));
    m_desk.start(QStringLiteral(OPTIONDESK_PROGRAM), {"--chain", chain});
    QVERIFY(m_desk.waitForStarted(patience));
    QVERIFY(!m_session->focus(QStringLiteral("Option desk")).isEmpty());
    QTRY_VERIFY_WITH_TIMEOUT(!swatch().isNull(), patience);
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels() > 200, patience);
}

void tst_sidesonscreen::cleanup()
{
    if (m_desk.state() == QProcess::NotRunning)
        return;
    m_session->press({"ctrl+q"});
    QVERIFY(m_desk.waitForFinished(patience));
    QCOMPARE(m_desk.exitCode(), 0);
    QCOMPARE(m_desk.readAllStandardError(), QByteArray());
}

// The left end of the piece of line in the tree.
QPoint tst_sidesonscreen::swatch() const
{
    const QImage image = window();
    for (int y = 70; y < 400; ++y) {
        int length = 0;
        for (int x = 0; x < treeWidth; ++x) {
            length = (image.pixel(x, y) | 0xff000000) == olive ? length + 1 : 0;
            if (length == swatchWidth)
                return QPoint(x - swatchWidth + 1, y);
        }
    }
    return QPoint();
}

int tst_sidesonscreen::curvePixels() const
{
    return DeskTest::countPixels(window().copy(plotPlace), olive);
}

// The middle of the row of the table that has this background; -1 if there is none.
int tst_sidesonscreen::rowOf(QRgb background) const
{
    const QImage image = window();
    std::optional<int> top;
    for (int y = 130; y < image.height(); ++y) {
        int count = 0;
        for (int x = tableLeft; x < image.width(); ++x)
            count += (image.pixel(x, y) | 0xff000000) == background ? 1 : 0;
        if (count > 60 && !top)
            top = y;
        if (count <= 20 && top)
            return (*top + y) / 2;
    }
    return -1;
}

// Where the plot has changed.
QRect tst_sidesonscreen::changedSince(const QImage& before) const
{
    const QImage now = window();
    QRect changed;
    for (int y = plotPlace.top(); y < plotPlace.bottom(); ++y) {
        for (int x = plotPlace.left(); x < plotPlace.right(); ++x) {
            if (now.pixel(x, y) != before.pixel(x, y))
                changed |= QRect(x, y, 1, 1);
        }
    }
    return changed;
}

void tst_sidesonscreen::hover(const QPoint& place) const
{
    m_session->tool({"mousemove", QString::number(place.x()), QString::number(place.y())});
}

void tst_sidesonscreen::checksASecondExpiry()
{
    const QPoint box = swatch() - QPoint(13, 0);
    m_session->click(box);
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels() < blendedPixels, patience);
    QVERIFY(!swatch().isNull());
    m_session->click(box);
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels() > 200, patience);
    // And by the keyboard, which the click has brought there.
    m_session->press({"space"});
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels() < blendedPixels, patience);
    m_session->press({"space"});
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels() > 200, patience);
}

// The chosen one has a mark instead of its line, and its curves have their own colours.
void tst_sidesonscreen::choosesAnotherExpiry()
{
    m_session->click(swatch() + QPoint(50, 0));
    QTRY_VERIFY_WITH_TIMEOUT(swatch().isNull(), patience);
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels() < blendedPixels, patience);
    m_session->press({"Up", "Return"});
    QTRY_VERIFY_WITH_TIMEOUT(!swatch().isNull(), patience);
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels() > 200, patience);
}

void tst_sidesonscreen::rowAndPointFollowEachOther()
{
    m_session->press({"ctrl+t"});
    // At the money: a light tone of the selection's colour.
    const QPalette palette;
    const QColor base = palette.color(QPalette::Base);
    const QColor highlight = palette.color(QPalette::Highlight);
    const auto mixed = [](int a, int b) { return qRound(a + (b - a) * 0.2); };
    const QRgb tint = qRgb(mixed(base.red(), highlight.red()), mixed(base.green(), highlight.green()),
        mixed(base.blue(), highlight.blue()));
    QTRY_VERIFY_WITH_TIMEOUT(rowOf(tint) > 0, patience);
    const QImage unmarked = stillWindow();
    const int middle = rowOf(tint);

    // Strikes below the forward have room for the text at their right: the ring is the leftmost part of the
    // read-out.
    constexpr int rowHeight = 21;
    m_session->click(QPoint(tableLeft + 40, middle - 8 * rowHeight));
    QTRY_VERIFY_WITH_TIMEOUT(changedSince(unmarked).width() > 50, patience);
    QTRY_VERIFY_WITH_TIMEOUT(std::abs(rowOf(highlight.rgb()) - middle + 8 * rowHeight) < 5, patience);
    QVERIFY(!stillWindow().isNull());
    const QRect lower = changedSince(unmarked);
    m_session->click(QPoint(tableLeft + 40, middle - 3 * rowHeight));
    QTRY_VERIFY_WITH_TIMEOUT(changedSince(unmarked).left() > lower.left() + 30, patience);
    QTRY_VERIFY_WITH_TIMEOUT(std::abs(rowOf(highlight.rgb()) - middle + 3 * rowHeight) < 5, patience);

    QVERIFY(!stillWindow().isNull());
    const int left = changedSince(unmarked).left();
    m_session->press({"Up"});
    QTRY_VERIFY_WITH_TIMEOUT(changedSince(unmarked).left() < left, patience);

    // The mouse takes the row along, from the left end of the plot to the right one.
    const auto highlighted = [&] { return rowOf(highlight.rgb()); };
    hover(plotPlace.center() - QPoint(40, 0));
    QTRY_VERIFY_WITH_TIMEOUT(highlighted() > 0 && highlighted() < middle, patience);
    hover(plotPlace.center() + QPoint(60, 0));
    QTRY_VERIFY_WITH_TIMEOUT(highlighted() > middle, patience);
    hover(QPoint(1279, 899));
}

PLOT2D_TEST_MAIN(tst_sidesonscreen)
#include "tst_sidesonscreen.moc"
