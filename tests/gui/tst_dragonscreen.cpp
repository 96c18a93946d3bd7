#include "flow/shownplot.h"
#include "gui/hand.h"
#include "gui/hostplot.h"
#include "gui/screenmain.h"

#include <qwt_plot_layout.h>

namespace {

const QString press = QStringLiteral("mousedown 1");
const QString release = QStringLiteral("mouseup 1");

/// A range widened (0.1) or narrowed (-0.1) by a part of its width, once per move.
QwtInterval stretched(QwtInterval range, double part, int moves)
{
    for (int i = 0; i < moves; ++i) {
        const double step = range.width() * part / 2.0;
        range = QwtInterval(range.minValue() - step, range.maxValue() + step);
    }
    return range;
}

}

/// A real pointer that drags the canvas and the scales of a plot that shows the prices 400 to 600 and the
/// values 40 to 60.
class tst_dragonscreen : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void pans_data();
    void pans();
    void pansAgainQuietly();
    void pansInOneGo();
    void releasedOutside();
    void stopsAtTheEnd_data();
    void stopsAtTheEnd();
    void noPan_data();
    void noPan();

    void stretches_data();
    void stretches();
    void valuesFollowPrices();
    void dragLeavesTheWindow();
    void movesComeAsOne();
    void releaseEnds();
    void noStretch_data();
    void noStretch();

private:
    QPoint inCanvas() const { return m_plot->plotLayout()->canvasRect().center().toPoint(); }
    QPoint onScale(int axis) const { return m_plot->plotLayout()->scaleRect(axis).center().toPoint(); }
    QwtInterval prices() { return m_plot->range(QwtPlot::xBottom); }
    QwtInterval values() { return m_plot->range(QwtPlot::yLeft); }
    /// How much of an axis a pixel of the canvas shows.
    double perPixel(int axis) const;

    std::unique_ptr<Hand> m_hand;
    std::unique_ptr<HostPlot> m_plot;
    std::unique_ptr<QSignalSpy> m_labels;
    std::unique_ptr<QSignalSpy> m_autoScale;
    const QwtInterval m_prices{400.0, 600.0};
    const QwtInterval m_values{40.0, 60.0};
};

void tst_dragonscreen::initTestCase()
{
    openMarket();
    m_hand = std::make_unique<Hand>();
}

void tst_dragonscreen::cleanupTestCase()
{
    m_hand.reset();
    closeMarket();
}

void tst_dragonscreen::init()
{
    m_plot = std::make_unique<HostPlot>();
    QVERIFY(m_plot->comesUp());
    QVERIFY(m_hand->movesTo(m_plot.get(), QPoint(-20, -20)));
    m_labels = std::make_unique<QSignalSpy>(m_plot.get(), SIGNAL(updateAxisLabels()));
    m_autoScale = std::make_unique<QSignalSpy>(m_plot.get(), SIGNAL(autoScaleEnabled(bool)));
}

void tst_dragonscreen::cleanup()
{
    m_plot.reset();
}

double tst_dragonscreen::perPixel(int axis) const
{
    const QwtScaleMap map = m_plot->canvasMap(axis);
    return map.sDist() / map.pDist();
}

void tst_dragonscreen::pans_data()
{
    QTest::addColumn<QPoint>("offset");
    QTest::newRow("right") << QPoint(90, 0);
    QTest::newRow("left") << QPoint(-90, 0);
    QTest::newRow("up") << QPoint(0, -60);
    QTest::newRow("down") << QPoint(0, 60);
    QTest::newRow("both ways") << QPoint(-71, 43);
    QTest::newRow("by a pixel") << QPoint(1, -1);
}

void tst_dragonscreen::pans()
{
    QFETCH(QPoint, offset);
    const QwtInterval pricesAfter = m_plot->panned(QwtPlot::xBottom, offset.x());
    const QwtInterval valuesAfter = m_plot->panned(QwtPlot::yLeft, offset.y());
    // What is dragged to the right shows lower prices, and what is dragged down shows higher values.
    QCOMPARE(pricesAfter.minValue() < 400.0, offset.x() > 0);
    QCOMPARE(valuesAfter.minValue() > 40.0, offset.y() > 0);

    QVERIFY(m_hand->movesTo(m_plot.get(), inCanvas()));
    QVERIFY(m_hand->does({press}));
    for (const double part : {0.3, 1.4, 0.8, 1.0})
        QVERIFY(m_hand->movesTo(m_plot.get(), inCanvas() + offset * part));
    QCOMPARE(prices(), m_prices);
    QCOMPARE(values(), m_values);
    QCOMPARE(m_labels->count(), 0);
    QVERIFY(m_hand->does({release}));

    COMPARE_RANGES(prices(), pricesAfter);
    COMPARE_RANGES(values(), valuesAfter);
    QVERIFY(std::abs(prices().width() - 200.0) < 1e-9);
    QVERIFY(std::abs(values().width() - 20.0) < 1e-9);
    QCOMPARE(m_labels->count(), 1);
    QCOMPARE(m_autoScale->count(), 1);
    QVERIFY(!m_plot->autoScaleEnabled());
}

void tst_dragonscreen::pansAgainQuietly()
{
    m_plot->setZoomEnabled(false);
    QVERIFY(m_hand->drags(m_plot.get(), inCanvas(), inCanvas() + QPoint(50, 0), 3));
    const QwtInterval expected = m_plot->panned(QwtPlot::xBottom, -30);
    QVERIFY(m_hand->drags(m_plot.get(), inCanvas(), inCanvas() + QPoint(-30, 0), 2));
    COMPARE_RANGES(prices(), expected);
    QCOMPARE(m_labels->count(), 2);
    QCOMPARE(m_autoScale->count(), 1);
}

/// The events of a whole drag wait for a plot that is busy.
void tst_dragonscreen::pansInOneGo()
{
    const QwtInterval pricesAfter = m_plot->panned(QwtPlot::xBottom, -80);
    const QwtInterval valuesAfter = m_plot->panned(QwtPlot::yLeft, 30);
    QStringList actions{Hand::moveAction(m_plot.get(), inCanvas()), press};
    for (int i = 1; i <= 10; ++i)
        actions << Hand::moveAction(m_plot.get(), inCanvas() + QPoint(-8, 3) * i);
    // The pointer has gone on when the release is handled.
    actions << release << Hand::moveAction(m_plot.get(), inCanvas() + QPoint(100, 100));
    QVERIFY(m_hand->does(actions));
    COMPARE_RANGES(prices(), pricesAfter);
    COMPARE_RANGES(values(), valuesAfter);
    QCOMPARE(m_labels->count(), 1);
}

void tst_dragonscreen::releasedOutside()
{
    const QPoint outside(m_plot->width() + 15, m_plot->height() / 2);
    const QPoint offset = outside - inCanvas();
    m_plot->look({450.0, 550.0}, m_values);
    const QwtInterval expected = m_plot->panned(QwtPlot::xBottom, offset.x());
    QVERIFY(m_hand->drags(m_plot.get(), inCanvas(), outside, 4));
    COMPARE_RANGES(prices(), expected);
    QCOMPARE(m_labels->count(), 1);
}

void tst_dragonscreen::stopsAtTheEnd_data()
{
    QTest::addColumn<QPoint>("offset");
    QTest::addColumn<int>("part");
    // The data end 95 pixels beyond the view, which may go less than a tenth of itself past that: all of a
    // drag by 120 pixels, but only the half of one by 200.
    QTest::newRow("left end") << QPoint(200, 0) << 2;
    QTest::newRow("left end, all of the drag") << QPoint(120, 0) << 1;
    QTest::newRow("right end") << QPoint(-200, 0) << 2;
    QTest::newRow("upper end") << QPoint(0, 200) << 2;
    QTest::newRow("lower end") << QPoint(0, -200) << 2;
    QTest::newRow("lower end, all of the drag") << QPoint(0, -120) << 1;
}

void tst_dragonscreen::stopsAtTheEnd()
{
    QFETCH(QPoint, offset);
    QFETCH(int, part);
    constexpr double hidden = 95.0;
    const double x = hidden * std::abs(perPixel(QwtPlot::xBottom));
    const double y = hidden * std::abs(perPixel(QwtPlot::yLeft));
    const QRectF data = m_plot->curvesRectangle();
    QwtInterval priceView = m_prices;
    QwtInterval valueView = m_values;
    if (offset.x() > 0)
        priceView = QwtInterval(data.left() + x, data.left() + x + 200.0);
    else if (offset.x() < 0)
        priceView = QwtInterval(data.right() - x - 200.0, data.right() - x);
    else if (offset.y() > 0)
        valueView = QwtInterval(data.bottom() - y - 20.0, data.bottom() - y);
    else
        valueView = QwtInterval(data.top() + y, data.top() + y + 20.0);
    m_plot->look(priceView, valueView);
    const QwtInterval pricesAfter = m_plot->panned(QwtPlot::xBottom, offset.x() / part);
    const QwtInterval valuesAfter = m_plot->panned(QwtPlot::yLeft, offset.y() / part);

    const QPoint from = inCanvas() - offset / 2;
    QVERIFY(m_hand->drags(m_plot.get(), from, from + offset, 4));
    COMPARE_RANGES(prices(), pricesAfter);
    COMPARE_RANGES(values(), valuesAfter);
    QCOMPARE(m_labels->count(), 1);

    // With the end in view there is no way further.
    QVERIFY(m_hand->drags(m_plot.get(), from, from + offset, 2));
    COMPARE_RANGES(prices(), pricesAfter);
    COMPARE_RANGES(values(), valuesAfter);
    QCOMPARE(m_labels->count(), 1);
    QCOMPARE(m_autoScale->count(), 1);
}

void tst_dragonscreen::noPan_data()
{
    QTest::addColumn<QwtInterval>("prices");
    QTest::addColumn<QString>("pressed");
    QTest::addColumn<QString>("released");
    const QwtInterval inside(400.0, 600.0);
    QTest::newRow("all in view") << QwtInterval(-50.0, 1050.0) << press << release;
    QTest::newRow("away from the data") << QwtInterval(-900.0, -100.0) << press << release;
    QTest::newRow("right button") << inside << "mousedown 3"
                                  << "mouseup 3";
    QTest::newRow("middle button") << inside << "mousedown 2"
                                   << "mouseup 2";
    QTest::newRow("Shift") << inside << "keydown shift mousedown 1"
                           << "mouseup 1 keyup shift";
    QTest::newRow("Control") << inside << "keydown ctrl mousedown 1"
                             << "mouseup 1 keyup ctrl";
}

void tst_dragonscreen::noPan()
{
    QFETCH(QwtInterval, prices);
    QFETCH(QString, pressed);
    QFETCH(QString, released);
    m_plot->look(prices, {0.0, 100.0});
    QVERIFY(m_hand->movesTo(m_plot.get(), inCanvas()));
    QVERIFY(m_hand->does({pressed}));
    QVERIFY(m_hand->movesTo(m_plot.get(), inCanvas() + QPoint(20, 30)));
    QVERIFY(m_hand->movesTo(m_plot.get(), inCanvas() + QPoint(40, 60)));
    QVERIFY(m_hand->does({released}));
    COMPARE_RANGES(this->prices(), prices);
    COMPARE_RANGES(values(), QwtInterval(0.0, 100.0));
    QCOMPARE(m_labels->count(), 0);
    QCOMPARE(m_autoScale->count(), 0);
}

void tst_dragonscreen::stretches_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<QPoint>("step");
    QTest::addColumn<double>("part");
    QTest::newRow("prices, right") << int(QwtPlot::xBottom) << QPoint(7, 0) << 0.1;
    QTest::newRow("prices, left") << int(QwtPlot::xBottom) << QPoint(-1, 0) << -0.1;
    QTest::newRow("prices, right and up") << int(QwtPlot::xBottom) << QPoint(2, -9) << 0.1;
    QTest::newRow("prices, across") << int(QwtPlot::xBottom) << QPoint(0, 5) << 0.0;
    QTest::newRow("values, down") << int(QwtPlot::yLeft) << QPoint(0, 7) << 0.1;
    QTest::newRow("values, up") << int(QwtPlot::yLeft) << QPoint(0, -1) << -0.1;
    QTest::newRow("values, across") << int(QwtPlot::yLeft) << QPoint(5, 0) << 0.0;
}

void tst_dragonscreen::stretches()
{
    QFETCH(int, axis);
    QFETCH(QPoint, step);
    QFETCH(double, part);
    const bool onPrices = axis == QwtPlot::xBottom;
    const int otherAxis = onPrices ? QwtPlot::yLeft : QwtPlot::xBottom;
    m_plot->setAutoScaleEnabled(!onPrices);
    const QwtInterval before = m_plot->range(axis);
    const QwtInterval other = m_plot->range(otherAxis);
    const QPoint from = onScale(axis);

    QVERIFY(m_hand->movesTo(m_plot.get(), from));
    QVERIFY(m_hand->does({press}));
    for (int move = 1; move <= 4; ++move) {
        QVERIFY(m_hand->movesTo(m_plot.get(), from + step * move));
        COMPARE_RANGES(m_plot->range(axis), stretched(before, part, move));
    }
    QVERIFY(m_hand->does({release}));
    COMPARE_RANGES(m_plot->range(axis), stretched(before, part, 4));
    COMPARE_RANGES(m_plot->range(otherAxis), other);
    QCOMPARE(m_autoScale->count(), onPrices || part == 0.0 ? 0 : 1);
    QCOMPARE(m_labels->count(), 0);
}

void tst_dragonscreen::valuesFollowPrices()
{
    const QPoint from = onScale(QwtPlot::xBottom);
    QVERIFY(m_hand->drags(m_plot.get(), from, from + QPoint(60, 0), 3));
    COMPARE_RANGES(prices(), stretched(m_prices, 0.1, 3));
    COMPARE_RANGES(values(), m_plot->valuesWithin(prices()));
    QVERIFY(m_plot->autoScaleEnabled());
}

void tst_dragonscreen::dragLeavesTheWindow()
{
    m_plot->setAutoScaleEnabled(false);
    QVERIFY(m_hand->movesTo(m_plot.get(), onScale(QwtPlot::xBottom)));
    QVERIFY(m_hand->does({press}));
    const QPoint outside(m_plot->width() + 10, m_plot->height() + 10);
    QVERIFY(m_hand->movesTo(m_plot.get(), outside));
    QVERIFY(m_hand->movesTo(m_plot.get(), outside + QPoint(10, 0)));
    COMPARE_RANGES(prices(), stretched(m_prices, 0.1, 2));
    QVERIFY(m_hand->movesTo(m_plot.get(), QPoint(-40, 100)));
    COMPARE_RANGES(prices(), stretched(stretched(m_prices, 0.1, 2), -0.1, 1));
    QVERIFY(m_hand->does({release}));
    QVERIFY(m_hand->movesTo(m_plot.get(), outside));
    COMPARE_RANGES(prices(), stretched(stretched(m_prices, 0.1, 2), -0.1, 1));
}

/// Moves that a busy plot could not handle in time reach it as fewer, and count as what comes.
void tst_dragonscreen::movesComeAsOne()
{
    m_plot->setAutoScaleEnabled(false);
    const QPoint from = onScale(QwtPlot::xBottom);
    QVERIFY(m_hand->movesTo(m_plot.get(), from));
    QVERIFY(m_hand->does({press}));
    const int movesBefore = m_hand->moves();
    QStringList actions;
    for (int i = 1; i <= 10; ++i)
        actions << Hand::moveAction(m_plot.get(), from + QPoint(3 * i, 0));
    QVERIFY(m_hand->does(actions));
    const int moves = m_hand->moves() - movesBefore;
    QVERIFY(moves >= 1 && moves <= 10);
    COMPARE_RANGES(prices(), stretched(m_prices, 0.1, moves));
    QVERIFY(m_hand->does({release}));
    COMPARE_RANGES(prices(), stretched(m_prices, 0.1, moves));
}

void tst_dragonscreen::releaseEnds()
{
    m_plot->setAutoScaleEnabled(false);
    const QPoint from = onScale(QwtPlot::xBottom);
    QVERIFY(m_hand->drags(m_plot.get(), from, from + QPoint(30, 0), 1));
    const QwtInterval once = stretched(m_prices, 0.1, 1);
    // Without a button, with another one, and as a drag of the canvas.
    QVERIFY(m_hand->movesTo(m_plot.get(), from + QPoint(50, 0)));
    QVERIFY(m_hand->movesTo(m_plot.get(), inCanvas()));
    COMPARE_RANGES(prices(), once);
    QVERIFY(m_hand->does({QStringLiteral("mousedown 3")}));
    QVERIFY(m_hand->movesTo(m_plot.get(), inCanvas() + QPoint(40, 0)));
    QVERIFY(m_hand->does({QStringLiteral("mouseup 3")}));
    COMPARE_RANGES(prices(), once);
    const QwtInterval expected = m_plot->panned(QwtPlot::xBottom, 20);
    QVERIFY(m_hand->drags(m_plot.get(), inCanvas(), inCanvas() + QPoint(20, 0), 2));
    COMPARE_RANGES(prices(), expected);
}

void tst_dragonscreen::noStretch_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<int>("button");
    QTest::newRow("prices, disabled") << int(QwtPlot::xBottom) << false << 1;
    QTest::newRow("values, disabled") << int(QwtPlot::yLeft) << false << 1;
    QTest::newRow("prices, right button") << int(QwtPlot::xBottom) << true << 3;
    QTest::newRow("values, middle button") << int(QwtPlot::yLeft) << true << 2;
}

void tst_dragonscreen::noStretch()
{
    QFETCH(int, axis);
    QFETCH(bool, enabled);
    QFETCH(int, button);
    m_plot->setZoomEnabled(enabled);
    QVERIFY(m_hand->movesTo(m_plot.get(), onScale(axis)));
    QVERIFY(m_hand->does({QStringLiteral("mousedown %1").arg(button)}));
    QVERIFY(m_hand->movesTo(m_plot.get(), onScale(axis) + QPoint(10, 10)));
    QVERIFY(m_hand->does({QStringLiteral("mouseup %1").arg(button)}));
    QCOMPARE(prices(), m_prices);
    QCOMPARE(values(), m_values);
}

PLOT2D_SCREEN_TEST_MAIN(tst_dragonscreen)
#include "tst_dragonscreen.moc"
