#include "desk/window/choosingdesk.h"
#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <output/legendrows.h>
#include <output/visiblecurves.h>

#include <QCheckBox>
#include <QPainter>

/// The legend of a printed plot: which entries, in which order, and how they are laid out.
class tst_legendrows : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void keepsTheOrderOfTheLegend();
    void takesRowsAsNeeded_data();
    void takesRowsAsNeeded();
    void needsNoRoomWithoutCurves();
    void paintsVisibleCurvesAlone();

private:
    QImage painted(const QSize& size) const;

    std::unique_ptr<ChoosingDesk> m_desk;
};

namespace {

constexpr QRgb smileColor = qRgb(0x00, 0x72, 0xb2);
constexpr QRgb pointColor = qRgb(0xe6, 0x9f, 0x00);

QStringList titles(const PriceBased2dPlot& plot)
{
    QStringList found;
    const QVector<const PriceBased2dPlotCurve*> curves = visibleCurves(plot);
    for (const PriceBased2dPlotCurve* curve : curves)
        found << curve->title().text();
    return found;
}

}

void tst_legendrows::init()
{
    m_desk = std::make_unique<ChoosingDesk>();
    m_desk->start(DeskView::Volatility, ChoosingDesk::Keeping::Nowhere);
}

QImage tst_legendrows::painted(const QSize& size) const
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    LegendRows(*m_desk->plot).paint(painter, QRectF(QPointF(), size));
    return image;
}

void tst_legendrows::keepsTheOrderOfTheLegend()
{
    const QStringList all{"Smile", "Stated volatility", "Bid volatility", "Ask volatility", "Bid-ask band",
        "Implied volatility", "Forward"};
    QCOMPARE(titles(*m_desk->plot), all);
    m_desk->box(QStringLiteral("Smile"))->setChecked(false);
    QCOMPARE(titles(*m_desk->plot), all.mid(1));
}

void tst_legendrows::takesRowsAsNeeded_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("rows");
    QTest::newRow("wide") << 2000 << 1;
    QTest::newRow("half") << 700 << 2;
    QTest::newRow("narrower than an entry") << 20 << 7;
    QTest::newRow("no width") << 0 << 7;
}

void tst_legendrows::takesRowsAsNeeded()
{
    QFETCH(int, width);
    QFETCH(int, rows);
    const LegendRows legend(*m_desk->plot);
    const double row = legend.heightFor(1e6);
    QVERIFY(row > 10.0 && row < 40.0);
    QCOMPARE(legend.heightFor(width), row * rows);
}

void tst_legendrows::needsNoRoomWithoutCurves()
{
    m_desk->legend->showOnly(QStringLiteral("none of them"));
    QCOMPARE(LegendRows(*m_desk->plot).heightFor(100.0), 0.0);
}

void tst_legendrows::paintsVisibleCurvesAlone()
{
    const QSize size(1100, 30);
    const QImage all = painted(size);
    // A line of 24 by 2 pixels, and a square of six.
    QVERIFY(DeskTest::countPixels(all, smileColor) >= 24);
    QVERIFY(DeskTest::countPixels(all, smileColor) <= 24 * 3);
    QVERIFY(DeskTest::countPixels(all, pointColor) >= 36);
    QVERIFY(DeskTest::countPixels(all, pointColor) <= 64);
    m_desk->box(QStringLiteral("Smile"))->setChecked(false);
    const QImage fewer = painted(size);
    QCOMPARE(DeskTest::countPixels(fewer, smileColor), 0);
    QVERIFY(DeskTest::countPixels(fewer, pointColor) >= 36);
    // In the middle.
    QCOMPARE(DeskTest::countPixels(fewer.copy(0, 0, 20, 30), qRgb(255, 255, 255)), 20 * 30);
}

PLOT2D_TEST_MAIN(tst_legendrows)
#include "tst_legendrows.moc"
