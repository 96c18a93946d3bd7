#include "flow/dragtest.h"
#include "support/testmain.h"

#include <plot2d/pricebased2dplotscaledraw.h>

#include <algorithm>

/// Which range a drag on a scale gives it.
class tst_axisdrag : public DragTest {
    Q_OBJECT

private Q_SLOTS:
    void prices();
    void values();
    void directions_data();
    void directions();
    void labelsFollow_data();
    void labelsFollow();
    void endsOfTheData_data();
    void endsOfTheData();
    void smallestStep_data();
    void smallestStep();
    void refused_data();
    void refused();
    void scaleThatHasGone();
    void nextPressBeginsAnew();
    void onTheAxisWidgetItself();
};

void tst_axisdrag::prices()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->fixedRange = std::make_pair(1.0, 2.0);
    QSignalSpy autoScale(m_plot.get(), SIGNAL(autoScaleEnabled(bool)));
    const QPointF from = onScale(QwtPlot::xBottom);
    press(from);
    m_plot->calls.clear();
    move(from + QPointF(5.0, 0.0));
    QVERIFY(m_plot->calls.contains(QStringLiteral("replot")));
    COMPARE_RANGES(range(QwtPlot::xBottom), QwtInterval(390.0, 610.0));
    COMPARE_RANGES(range(QwtPlot::yLeft), QwtInterval(1.0, 2.0));
    QCOMPARE(autoScale.count(), 0);
    move(from + QPointF(5.0, 3.0));
    COMPARE_RANGES(range(QwtPlot::xBottom), QwtInterval(390.0, 610.0));
    move(from + QPointF(4.0, 0.0));
    COMPARE_RANGES(range(QwtPlot::xBottom), QwtInterval(401.0, 599.0));
}

void tst_axisdrag::values()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->fixedRange = std::make_pair(1.0, 2.0);
    QSignalSpy autoScale(m_plot.get(), SIGNAL(autoScaleEnabled(bool)));
    // The owner of the plot does what the signal asks for.
    connect(m_plot.get(), SIGNAL(autoScaleEnabled(bool)), m_plot.get(), SLOT(setAutoScaleEnabled(bool)));
    const QPointF from = onScale(QwtPlot::yLeft);
    press(from);
    move(from + QPointF(0.0, 5.0));
    COMPARE_RANGES(range(QwtPlot::yLeft), QwtInterval(39.0, 61.0));
    COMPARE_RANGES(range(QwtPlot::xBottom), QwtInterval(400.0, 600.0));
    QCOMPARE(autoScale.count(), 1);
    QCOMPARE(autoScale.first().first().toBool(), false);
    move(from + QPointF(3.0, 5.0));
    COMPARE_RANGES(range(QwtPlot::yLeft), QwtInterval(39.0, 61.0));
    move(from + QPointF(0.0, 4.0));
    COMPARE_RANGES(range(QwtPlot::yLeft), QwtInterval(40.1, 59.9));
    QCOMPARE(autoScale.count(), 1);
}

void tst_axisdrag::directions_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<QPointF>("offset");
    QTest::addColumn<QwtInterval>("expected");
    QTest::newRow("right") << int(QwtPlot::xBottom) << QPointF(0.5, 0.0) << QwtInterval(390.0, 610.0);
    QTest::newRow("left") << int(QwtPlot::xBottom) << QPointF(-90.0, 0.0) << QwtInterval(410.0, 590.0);
    QTest::newRow("across") << int(QwtPlot::xBottom) << QPointF(0.0, 9.0) << QwtInterval(400.0, 600.0);
    QTest::newRow("down") << int(QwtPlot::yLeft) << QPointF(0.0, 1.0) << QwtInterval(39.0, 61.0);
    QTest::newRow("up") << int(QwtPlot::yLeft) << QPointF(0.0, -9.0) << QwtInterval(41.0, 59.0);
    QTest::newRow("along") << int(QwtPlot::yLeft) << QPointF(9.0, 0.0) << QwtInterval(40.0, 60.0);
}

void tst_axisdrag::directions()
{
    QFETCH(int, axis);
    QFETCH(QPointF, offset);
    QFETCH(QwtInterval, expected);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    QSignalSpy labels(m_plot.get(), SIGNAL(updateAxisLabels()));
    press(onScale(axis));
    move(onScale(axis) + offset);
    COMPARE_RANGES(range(axis), expected);
    QCOMPARE(labels.count(), 0);
}

void tst_axisdrag::labelsFollow_data()
{
    QTest::addColumn<int>("axis");
    QTest::newRow("prices") << int(QwtPlot::xBottom);
    QTest::newRow("values") << int(QwtPlot::yLeft);
}

// Far enough that the ticks become others.
void tst_axisdrag::labelsFollow()
{
    QFETCH(int, axis);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    const auto* const draw = dynamic_cast<const PriceBased2dPlotScaleDraw*>(m_plot->axisScaleDraw(axis));
    QVERIFY(draw);
    const QList<double> before = draw->getTicks(m_plot->axisScaleDiv(axis));
    press(onScale(axis));
    for (int step = 1; step <= 8; ++step) {
        move(onScale(axis) + QPointF(step, step));
        const QList<double> ticks = draw->getTicks(m_plot->axisScaleDiv(axis));
        const QList<double> labels = draw->labelTicks();
        QVERIFY(!labels.isEmpty());
        QVERIFY(std::includes(ticks.cbegin(), ticks.cend(), labels.cbegin(), labels.cend()));
    }
    QVERIFY(draw->getTicks(m_plot->axisScaleDiv(axis)) != before);
}

void tst_axisdrag::endsOfTheData_data()
{
    QTest::addColumn<QRectF>("data");
    QTest::addColumn<int>("axis");
    QTest::addColumn<QwtInterval>("expected");
    const int x = QwtPlot::xBottom;
    const int y = QwtPlot::yLeft;
    QTest::newRow("left") << QRectF(450.0, 0.0, 500.0, 100.0) << x << QwtInterval(400.0, 620.0);
    QTest::newRow("right") << QRectF(0.0, 0.0, 550.0, 100.0) << x << QwtInterval(380.0, 600.0);
    QTest::newRow("both") << QRectF(450.0, 0.0, 100.0, 100.0) << x << QwtInterval(400.0, 600.0);
    QTest::newRow("bottom") << QRectF(0.0, 50.0, 1000.0, 50.0) << y << QwtInterval(40.0, 62.0);
    QTest::newRow("top") << QRectF(0.0, 0.0, 1000.0, 50.0) << y << QwtInterval(38.0, 60.0);
    QTest::newRow("bottom and top") << QRectF(0.0, 45.0, 1000.0, 10.0) << y << QwtInterval(40.0, 60.0);
}

void tst_axisdrag::endsOfTheData()
{
    QFETCH(QRectF, data);
    QFETCH(int, axis);
    QFETCH(QwtInterval, expected);
    addData(*m_plot, data.left(), data.right(), data.top(), data.bottom());
    press(onScale(axis));
    move(onScale(axis) + QPointF(5.0, 5.0));
    COMPARE_RANGES(range(axis), expected);
}

void tst_axisdrag::smallestStep_data()
{
    QTest::addColumn<double>("minStep");
    QTest::addColumn<double>("dx");
    QTest::addColumn<QwtInterval>("expected");
    QTest::newRow("shrinks") << 200.0 << -5.0 << QwtInterval(410.0, 590.0);
    QTest::newRow("too narrow") << 200.001 << -5.0 << QwtInterval(400.0, 600.0);
    QTest::newRow("grows") << 300.0 << 5.0 << QwtInterval(390.0, 610.0);
}

void tst_axisdrag::smallestStep()
{
    QFETCH(double, minStep);
    QFETCH(double, dx);
    QFETCH(QwtInterval, expected);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->setPriceInterval({100.0, 900.0, minStep, true});
    press(onScale(QwtPlot::xBottom));
    move(onScale(QwtPlot::xBottom) + QPointF(dx, 0.0));
    COMPARE_RANGES(range(QwtPlot::xBottom), expected);
}

void tst_axisdrag::refused_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<bool>("onScale");
    QTest::addColumn<bool>("withData");
    QTest::newRow("zoom disabled") << false << Qt::LeftButton << true << true;
    QTest::newRow("right button") << true << Qt::RightButton << true << true;
    QTest::newRow("in the canvas") << true << Qt::LeftButton << false << true;
    QTest::newRow("no data") << true << Qt::LeftButton << true << false;
}

void tst_axisdrag::refused()
{
    QFETCH(bool, enabled);
    QFETCH(Qt::MouseButton, button);
    QFETCH(bool, onScale);
    QFETCH(bool, withData);
    if (withData)
        addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->setZoomEnabled(enabled);
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)}) {
        const QPointF from = onScale ? this->onScale(axis) : m_plot->plotLayout()->canvasRect().center();
        press(from, button);
        m_plot->calls.clear();
        move(from + QPointF(5.0, 5.0));
        QCOMPARE(m_plot->calls, QStringList());
    }
    COMPARE_RANGES(range(QwtPlot::xBottom), QwtInterval(400.0, 600.0));
    COMPARE_RANGES(range(QwtPlot::yLeft), QwtInterval(40.0, 60.0));
}

void tst_axisdrag::scaleThatHasGone()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)}) {
        const QPointF from = onScale(axis);
        const QwtInterval shown = range(axis);
        press(from);
        m_plot->enableAxis(axis, false);
        m_plot->replot();
        QCoreApplication::processEvents();
        m_plot->calls.clear();
        move(from + QPointF(5.0, 5.0));
        QCOMPARE(m_plot->calls, QStringList());
        COMPARE_RANGES(range(axis), shown);
        m_plot->enableAxis(axis, true);
        m_plot->replot();
        QCoreApplication::processEvents();
    }
}

void tst_axisdrag::nextPressBeginsAnew()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    const QPointF from = onScale(QwtPlot::xBottom);
    press(from);
    move(from + QPointF(5.0, 0.0));
    // Left of the last place, but right of where this drag begins.
    press(from);
    move(from + QPointF(2.0, 0.0));
    COMPARE_RANGES(range(QwtPlot::xBottom), QwtInterval(379.0, 621.0));
    press(from, Qt::RightButton);
    move(from + QPointF(9.0, 0.0));
    COMPARE_RANGES(range(QwtPlot::xBottom), QwtInterval(379.0, 621.0));
}

void tst_axisdrag::onTheAxisWidgetItself()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    QWidget* axis = m_plot->axisWidget(QwtPlot::xBottom);
    const QPoint from = axis->mapFrom(m_plot.get(), onScale(QwtPlot::xBottom).toPoint());
    QMouseEvent pressed(
        QEvent::MouseButtonPress, from, from, QCursor::pos(), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(axis, &pressed);
    QMouseEvent dragged(QEvent::MouseMove, from - QPoint(5, 0), from - QPoint(5, 0), QCursor::pos(),
        Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(axis, &dragged);
    COMPARE_RANGES(range(QwtPlot::xBottom), QwtInterval(410.0, 590.0));
}

PLOT2D_TEST_MAIN(tst_axisdrag)
#include "tst_axisdrag.moc"
