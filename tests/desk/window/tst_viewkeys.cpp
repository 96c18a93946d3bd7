#include "shownview.h"
#include "support/testmain.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <qwt_scale_map.h>

#include <random>

namespace {

constexpr int notch = 120;
const QwtInterval somePrices(90.0, 120.0);
// Inside of the data, whose volatilities reach from 0.294 to 0.455.
const QwtInterval someValues(0.32, 0.35);

using Command = void (ViewControl::*)();
const QVector<Command> zooms{&ViewControl::zoomIn, &ViewControl::zoomOut};
const QVector<Command> pans{
    &ViewControl::panLeft, &ViewControl::panRight, &ViewControl::panUp, &ViewControl::panDown};

double center(const QwtInterval& range)
{
    return range.minValue() + range.width() / 2.0;
}

// With auto-scale on the values hang on single samples at the ends.
bool areAbout(const View& a, const View& b, double part)
{
    return isAbout(a.prices, b.prices, part) && a.autoScale == b.autoScale
        && (a.autoScale || isAbout(a.values, b.values, part));
}

}

Q_DECLARE_METATYPE(Qt::KeyboardModifiers)

/// Zooms, pans and fits by command, and where they stop.
class tst_viewkeys : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void zoomsLikeTheWheel_data();
    void zoomsLikeTheWheel();
    void zoomsOutAsFarAsTheWheel_data();
    void zoomsOutAsFarAsTheWheel();
    void zoomsInAsFarAsTheWheel();
    void zoomsInWhileLabelsDiffer();
    void autoScaleStaysOnWhileZooming();
    void pansATenth_data();
    void pansATenth();
    void pansLikeADrag();
    void stopsAtTheData_data();
    void stopsAtTheData();
    void autoScaleWhilePanning();
    void fitsAll_data();
    void fitsAll();
    void refusesWithoutData_data();
    void refusesWithoutData();
    void refusalChangesNothing();

private:
    void call(Command command) { (m_shown->control().*command)(); }
    /// Turns the wheel where the plot finds the middle of the view.
    void turnInTheMiddle(int angle, Qt::KeyboardModifiers modifiers);

    std::unique_ptr<ShownView> m_shown;
};

void tst_viewkeys::init()
{
    m_shown = std::make_unique<ShownView>();
    QVERIFY(m_shown->isShown());
    m_shown->show(somePrices, someValues);
}

void tst_viewkeys::cleanup()
{
    m_shown.reset();
}

// The plot's zoom takes a position on the plot for one on the canvas.
void tst_viewkeys::turnInTheMiddle(int angle, Qt::KeyboardModifiers modifiers)
{
    const View view = m_shown->view();
    const QPointF middle(m_shown->plot().canvasMap(QwtPlot::xBottom).transform(center(view.prices)),
        m_shown->plot().canvasMap(QwtPlot::yLeft).transform(center(view.values)));
    m_shown->putCursor(middle.toPoint());
    m_shown->turn(angle, modifiers);
}

void tst_viewkeys::zoomsLikeTheWheel_data()
{
    QTest::addColumn<bool>("autoScale");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("both axes") << false << Qt::KeyboardModifiers(Qt::NoModifier);
    QTest::newRow("prices alone") << true << Qt::KeyboardModifiers(Qt::ControlModifier);
}

void tst_viewkeys::zoomsLikeTheWheel()
{
    QFETCH(bool, autoScale);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    constexpr unsigned seed = 3;
    std::mt19937_64 engine(seed);
    std::uniform_real_distribution<double> part(0.0, 1.0);
    int changed = 0;
    for (int run = 0; run < 60; ++run) {
        const double left = 40.0 + 90.0 * part(engine);
        const double low = 0.1 + 0.3 * part(engine);
        const QwtInterval prices(left, left + 3.0 + 80.0 * part(engine));
        const QwtInterval values(low, low + 0.01 + 0.3 * part(engine));
        const auto begin = [&] { autoScale ? m_shown->show(prices) : m_shown->show(prices, values); };
        for (const bool in : {true, false}) {
            begin();
            const View before = m_shown->view();
            turnInTheMiddle(in ? notch : -notch, modifiers);
            const View expected = m_shown->view();
            begin();
            call(in ? &ViewControl::zoomIn : &ViewControl::zoomOut);
            // The middle may lie between two pixels.
            const View zoomed = m_shown->view();
            QVERIFY2(areAbout(zoomed, expected, 1e-3),
                "run " + QByteArray::number(run) + ": " + inWords(before) + " becomes " + inWords(zoomed)
                    + " instead of " + inWords(expected));
            changed += zoomed != before ? 1 : 0;
        }
    }
    QVERIFY2(changed > 60, qPrintable(QString::number(changed)));
}

void tst_viewkeys::zoomsOutAsFarAsTheWheel_data()
{
    zoomsLikeTheWheel_data();
}

void tst_viewkeys::zoomsOutAsFarAsTheWheel()
{
    QFETCH(bool, autoScale);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    const auto begin = [&] { autoScale ? m_shown->show(somePrices) : m_shown->show(somePrices, someValues); };
    begin();
    for (int i = 0; i < 100; ++i)
        turnInTheMiddle(-notch, modifiers);
    const View farthest = m_shown->view();
    begin();
    for (int i = 0; i < 100; ++i)
        m_shown->control().zoomOut();
    QVERIFY2(areAbout(m_shown->view(), farthest, 1e-2),
        inWords(m_shown->view()) + " instead of " + inWords(farthest));
    const View stopped = m_shown->view();
    m_shown->control().forget();
    m_shown->control().zoomOut();
    COMPARE_VIEWS(m_shown->view(), stopped);
    QVERIFY(!m_shown->control().canUndo());
}

void tst_viewkeys::zoomsInAsFarAsTheWheel()
{
    m_shown->plot().setPriceInterval({60.0, 140.0, 2.5, true});
    for (int i = 0; i < 100; ++i)
        turnInTheMiddle(notch, Qt::NoModifier);
    const View nearest = m_shown->view();
    m_shown->show(somePrices, someValues);
    for (int i = 0; i < 100; ++i)
        m_shown->control().zoomIn();
    QVERIFY(isAbout(m_shown->view().prices, nearest.prices, 0.1));
    QCOMPARE(m_shown->view().prices.width(), nearest.prices.width());
    QVERIFY(nearest.prices.width() >= 2.5 && nearest.prices.width() < 3.0);
    m_shown->control().forget();
    m_shown->control().zoomIn();
    QVERIFY(!m_shown->control().canUndo());
}

void tst_viewkeys::zoomsInWhileLabelsDiffer()
{
    m_shown->plot().setPriceInterval({60.0, 140.0, 1e-9, true});
    for (int i = 0; i < 250; ++i)
        turnInTheMiddle(notch, Qt::NoModifier);
    const View nearest = m_shown->view();
    m_shown->show(somePrices, someValues);
    for (int i = 0; i < 250; ++i)
        m_shown->control().zoomIn();
    QVERIFY(std::abs(m_shown->view().values.width() / nearest.values.width() - 1.0) < 1e-6);
    // Neither the strikes nor the values have stopped it.
    QVERIFY(0.9 * nearest.prices.width() > 1e-9 && 0.9 * nearest.values.width() > 1e-8);
}

void tst_viewkeys::autoScaleStaysOnWhileZooming()
{
    m_shown->show(somePrices);
    const View before = m_shown->view();
    m_shown->control().zoomIn();
    QVERIFY(m_shown->view().autoScale);
    QVERIFY(m_shown->view().values != before.values);
    const auto [low, high] = m_shown->plot().minMaxYAtXRange();
    QCOMPARE(m_shown->view().values, QwtInterval(low, high));
    QCOMPARE(center(m_shown->view().prices), center(before.prices));
}

void tst_viewkeys::pansATenth_data()
{
    QTest::addColumn<int>("pan");
    QTest::addColumn<double>("prices");
    QTest::addColumn<double>("values");
    QTest::newRow("left") << 0 << -0.1 << 0.0;
    QTest::newRow("right") << 1 << 0.1 << 0.0;
    QTest::newRow("up") << 2 << 0.0 << 0.1;
    QTest::newRow("down") << 3 << 0.0 << -0.1;
}

void tst_viewkeys::pansATenth()
{
    QFETCH(int, pan);
    QFETCH(double, prices);
    QFETCH(double, values);
    m_shown->show(somePrices, someValues);
    const View before = m_shown->view();
    call(pans[pan]);
    const View after = m_shown->view();
    // Whole pixels.
    const double movedPrices = (center(after.prices) - center(before.prices)) / before.prices.width();
    const double movedValues = (center(after.values) - center(before.values)) / before.values.width();
    QVERIFY2(std::abs(movedPrices - prices) < 3e-3, qPrintable(QString::number(movedPrices)));
    QVERIFY2(std::abs(movedValues - values) < 3e-3, qPrintable(QString::number(movedValues)));
    QCOMPARE(after.prices.width(), before.prices.width());
    QVERIFY(std::abs(after.values.width() - before.values.width()) < 1e-12);
    m_shown->control().undo();
    COMPARE_VIEWS(m_shown->view(), before);
}

void tst_viewkeys::pansLikeADrag()
{
    const QSize tenth = m_shown->plot().canvas()->contentsRect().size() / 10;
    const QVector<QPoint> offsets{
        {tenth.width(), 0}, {-tenth.width(), 0}, {0, tenth.height()}, {0, -tenth.height()}};
    constexpr unsigned seed = 5;
    std::mt19937_64 engine(seed);
    std::uniform_real_distribution<double> part(0.0, 1.0);
    int changed = 0;
    for (int run = 0; run < 40; ++run) {
        const double left = 40.0 + 90.0 * part(engine);
        const double low = 0.2 + 0.3 * part(engine);
        const QwtInterval prices(left, left + 3.0 + 80.0 * part(engine));
        const QwtInterval values(low, low + 0.01 + 0.3 * part(engine));
        const int pan = run % 4;
        m_shown->show(prices, values);
        const View before = m_shown->view();
        m_shown->drag(m_shown->middle(ShownView::Canvas), offsets[pan]);
        const View expected = m_shown->view();
        m_shown->show(prices, values);
        call(pans[pan]);
        // Half a pixel and its rounding are all they may differ in.
        QVERIFY2(areAbout(m_shown->view(), expected, 4e-3),
            "run " + QByteArray::number(run) + ": " + inWords(before) + " becomes " + inWords(m_shown->view())
                + " instead of " + inWords(expected));
        changed += m_shown->view() != before ? 1 : 0;
    }
    QVERIFY2(changed > 10, qPrintable(QString::number(changed)));
}

void tst_viewkeys::stopsAtTheData_data()
{
    QTest::addColumn<int>("pan");
    for (int pan = 0; pan < 4; ++pan)
        QTest::addRow("%d", pan) << pan;
}

void tst_viewkeys::stopsAtTheData()
{
    QFETCH(int, pan);
    for (int i = 0; i < 200; ++i)
        call(pans[pan]);
    const QRectF data = m_shown->plot().curvesRectangle();
    const View stopped = m_shown->view();
    const QVector<double> beyond{(data.left() - stopped.prices.minValue()) / stopped.prices.width(),
        (stopped.prices.maxValue() - data.right()) / stopped.prices.width(),
        (stopped.values.maxValue() - data.bottom()) / stopped.values.width(),
        (data.top() - stopped.values.minValue()) / stopped.values.width()};
    QVERIFY2(beyond[pan] > 0.0 && beyond[pan] < 0.1, qPrintable(QString::number(beyond[pan])));
    m_shown->control().forget();
    call(pans[pan]);
    COMPARE_VIEWS(m_shown->view(), stopped);
    QVERIFY(!m_shown->control().canUndo());
}

void tst_viewkeys::autoScaleWhilePanning()
{
    m_shown->show(somePrices);
    m_shown->control().panRight();
    QVERIFY(m_shown->view().autoScale);
    QVERIFY(m_shown->view().prices.minValue() > somePrices.minValue());
    const auto [low, high] = m_shown->plot().minMaxYAtXRange();
    QCOMPARE(m_shown->view().values, QwtInterval(low, high));
    m_shown->control().panUp();
    QVERIFY(!m_shown->view().autoScale);
    m_shown->control().panRight();
    QVERIFY(!m_shown->view().autoScale);
    m_shown->control().undo();
    QVERIFY(m_shown->view().autoScale);
}

void tst_viewkeys::fitsAll_data()
{
    QTest::addColumn<bool>("autoScale");
    QTest::newRow("with auto-scale") << true;
    QTest::newRow("without") << false;
}

void tst_viewkeys::fitsAll()
{
    QFETCH(bool, autoScale);
    if (autoScale)
        m_shown->show(somePrices);
    m_shown->control().fitAll();
    const View fitted = m_shown->view();
    const QRectF data = m_shown->plot().curvesRectangle();
    QVERIFY2(isAbout(fitted.prices, QwtInterval(60.0 - 1.6, 140.0 + 1.6)), inWords(fitted.prices));
    QVERIFY(fitted.values.minValue() < data.top() && fitted.values.maxValue() > data.bottom());
    QVERIFY(fitted.values.width() < 1.2 * data.height());
    QCOMPARE(fitted.autoScale, autoScale);
}

void tst_viewkeys::refusesWithoutData_data()
{
    QTest::addColumn<bool>("curves");
    QTest::newRow("hidden curves") << true;
    QTest::newRow("no curves") << false;
}

void tst_viewkeys::refusesWithoutData()
{
    QFETCH(bool, curves);
    if (curves) {
        const QList<PriceBased2dPlotCurve*> all = m_shown->plot().attachedCurves(-1);
        for (PriceBased2dPlotCurve* const curve : all)
            curve->setVisible(false);
    } else {
        m_shown->plot().showNothing(QString());
    }
    for (const bool autoScale : {true, false}) {
        m_shown->plot().setAutoScaleEnabled(autoScale);
        const View before = m_shown->view();
        for (const Command command : zooms + pans + QVector<Command>{&ViewControl::fitAll}) {
            call(command);
            COMPARE_VIEWS(m_shown->view(), before);
        }
        QVERIFY(!m_shown->control().canUndo());
    }
}

void tst_viewkeys::refusalChangesNothing()
{
    // All data is visible: nothing is left to pan to or to zoom out to.
    m_shown->show({58.0, 142.0});
    const View before = m_shown->view();
    QSignalSpy autoScale(&m_shown->plot(), SIGNAL(autoScaleEnabled(bool)));
    for (const Command command : pans + QVector<Command>{&ViewControl::zoomOut}) {
        call(command);
        COMPARE_VIEWS(m_shown->view(), before);
        QCOMPARE(m_shown->view().values, before.values);
    }
    QVERIFY(!m_shown->control().canUndo());
    QCOMPARE(autoScale.size(), 0);
}

PLOT2D_TEST_MAIN(tst_viewkeys)
#include "tst_viewkeys.moc"
