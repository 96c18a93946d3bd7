#include "flow/wheeltest.h"
#include "support/testmain.h"

/// The point that a zoom keeps in place, and what counts where places meet or modifiers are held.
class tst_wheelzoom_places : public WheelTest {
    Q_OBJECT

private Q_SLOTS:
    void centreInTheCanvas();
    void centreOnTheValues();
    void centreOnThePrices();
    void edgeOfTheValues_data();
    void edgeOfTheValues();
    void edgeOfThePrices_data();
    void edgeOfThePrices();
    void modifiersOverTheValues_data();
    void modifiersOverTheValues();
    void modifiersOverThePrices_data();
    void modifiersOverThePrices();
    void sidewaysWheel_data();
    void sidewaysWheel();

private:
    void addTitle();
    static void modifierRows();
};

/// Above the canvas, so that it does not begin where the plot does.
void tst_wheelzoom_places::addTitle()
{
    m_plot->setTitle(QStringLiteral("title"));
    m_plot->replot();
    m_plot->updateLayout();
    QCoreApplication::processEvents();
    QVERIFY(m_plot->plotLayout()->canvasRect().top() > 5.0);
}

void tst_wheelzoom_places::centreInTheCanvas()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    addTitle();
    putCursor(Place::Canvas);
    const QPointF centre = valueAt(cursorOn(m_plot.get()));
    turn(notch);
    COMPARE_RANGES(prices(), zoomed(m_prices, centre.x(), WheelFactors::in));
    COMPARE_RANGES(values(), zoomed(m_values, centre.y(), WheelFactors::in));
}

void tst_wheelzoom_places::centreOnTheValues()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    // The labels at the ends of the axis then reach beyond the canvas.
    m_plot->plotLayout()->setAlignCanvasToScales(true);
    addTitle();
    putCursor(Place::Values);
    const QPoint onAxis = cursorOn(m_plot->axisWidget(QwtPlot::yLeft));
    QVERIFY(onAxis.y() != cursorOn(m_plot.get()).y());
    QVERIFY(onAxis.y() != cursorOn(m_plot->canvas()).y());
    const double centre = valueAt(onAxis).y();
    turn(notch);
    COMPARE_RANGES(values(), zoomed(m_values, centre, WheelFactors::in));
}

void tst_wheelzoom_places::centreOnThePrices()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    putCursor(Place::Prices);
    const QPoint onAxis = cursorOn(m_plot->axisWidget(QwtPlot::xBottom));
    QVERIFY(onAxis.x() != cursorOn(m_plot.get()).x());
    QVERIFY(onAxis.x() != cursorOn(m_plot->canvas()).x());
    const double centre = valueAt(onAxis).x();
    turn(notch);
    COMPARE_RANGES(prices(), zoomed(m_prices, centre, WheelFactors::in));
}

void tst_wheelzoom_places::edgeOfTheValues_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<bool>("zoomsPrices");
    QTest::newRow("none") << Qt::KeyboardModifiers() << false;
    QTest::newRow("Shift") << Qt::KeyboardModifiers(Qt::ShiftModifier) << false;
    QTest::newRow("Control") << Qt::KeyboardModifiers(Qt::ControlModifier) << true;
    QTest::newRow("both") << (Qt::ShiftModifier | Qt::ControlModifier) << false;
}

void tst_wheelzoom_places::edgeOfTheValues()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(bool, zoomsPrices);
    // Lower than the view, which a zoom about a point of the canvas would shrink to.
    addData(*m_plot, 0.0, 1000.0, 49.0, 51.0);
    m_plot->fixedRange = std::make_pair(1.0, 2.0);
    const QRectF canvas = m_plot->plotLayout()->canvasRect();
    const QPoint edge(qRound(canvas.left()), 150);
    putCursor(edge);
    QVERIFY(m_plot->mousePositionOnYScale(edge) && canvas.contains(edge));
    const double centre = valueAt(cursorOn(m_plot->axisWidget(QwtPlot::yLeft))).y();
    turn(notch, modifiers);
    // The price to keep lies a tenth of the view above the lowest one.
    COMPARE_RANGES(prices(), zoomsPrices ? QwtInterval(402.0, 582.0) : m_prices);
    COMPARE_RANGES(
        values(), zoomsPrices ? QwtInterval(1.0, 2.0) : zoomed(m_values, centre, WheelFactors::in));
}

void tst_wheelzoom_places::edgeOfThePrices_data()
{
    modifierRows();
}

void tst_wheelzoom_places::edgeOfThePrices()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->fixedRange = std::make_pair(1.0, 2.0);
    const QRectF canvas = m_plot->plotLayout()->canvasRect();
    const QPoint edge(200, qRound(canvas.bottom()));
    putCursor(edge);
    QVERIFY(m_plot->mousePositionOnXScale(edge) && canvas.contains(edge));
    const double centre = valueAt(cursorOn(m_plot->axisWidget(QwtPlot::xBottom))).x();
    turn(notch, modifiers);
    COMPARE_RANGES(prices(), zoomed(m_prices, centre, WheelFactors::in));
    COMPARE_RANGES(values(), QwtInterval(1.0, 2.0));
    QCOMPARE(m_autoScale->count(), 0);
}

void tst_wheelzoom_places::modifierRows()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("none") << Qt::KeyboardModifiers();
    QTest::newRow("Shift") << Qt::KeyboardModifiers(Qt::ShiftModifier);
    QTest::newRow("Control") << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("both") << (Qt::ShiftModifier | Qt::ControlModifier);
}

void tst_wheelzoom_places::modifiersOverTheValues_data()
{
    modifierRows();
}

void tst_wheelzoom_places::modifiersOverTheValues()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    addData(*m_plot, 0.0, 1000.0, 49.0, 51.0);
    putCursor(Place::Values);
    const double centre = valueAt(cursorOn(m_plot->axisWidget(QwtPlot::yLeft))).y();
    turn(notch, modifiers);
    COMPARE_RANGES(prices(), m_prices);
    COMPARE_RANGES(values(), zoomed(m_values, centre, WheelFactors::in));
    QCOMPARE(m_autoScale->count(), 1);
    QCOMPARE(m_labels->count(), 1);
}

void tst_wheelzoom_places::modifiersOverThePrices_data()
{
    modifierRows();
}

void tst_wheelzoom_places::modifiersOverThePrices()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    addData(*m_plot, 0.0, 1000.0, 49.0, 51.0);
    m_plot->fixedRange = std::make_pair(1.0, 2.0);
    putCursor(Place::Prices);
    const double centre = valueAt(cursorOn(m_plot->axisWidget(QwtPlot::xBottom))).x();
    turn(notch, modifiers);
    COMPARE_RANGES(prices(), zoomed(m_prices, centre, WheelFactors::in));
    COMPARE_RANGES(values(), QwtInterval(1.0, 2.0));
    QCOMPARE(m_autoScale->count(), 0);
    QCOMPARE(m_labels->count(), 1);
}

void tst_wheelzoom_places::sidewaysWheel_data()
{
    QTest::addColumn<QPoint>("angle");
    QTest::addColumn<double>("factor");
    QTest::newRow("sideways in") << QPoint(notch, 0) << WheelFactors::in;
    QTest::newRow("sideways out") << QPoint(-notch, 0) << WheelFactors::out;
    QTest::newRow("more sideways") << QPoint(-2 * notch, notch) << WheelFactors::fastOut;
    QTest::newRow("more upwards") << QPoint(-notch, 2 * notch) << WheelFactors::fastIn;
    QTest::newRow("as far sideways as upwards") << QPoint(-notch, notch) << WheelFactors::in;
    QTest::newRow("less than a notch sideways") << QPoint(notch - 1, 0) << 1.0;
}

/// With Alt held Qt reports a wheel as turned sideways.
void tst_wheelzoom_places::sidewaysWheel()
{
    QFETCH(QPoint, angle);
    QFETCH(double, factor);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    putCursor(Place::Canvas);
    const QPointF centre = valueAt(cursorOn(m_plot.get()));
    turn(angle, Qt::AltModifier);
    COMPARE_RANGES(prices(), zoomed(m_prices, centre.x(), factor));
    COMPARE_RANGES(values(), zoomed(m_values, centre.y(), factor));
}

PLOT2D_TEST_MAIN(tst_wheelzoom_places)
#include "tst_wheelzoom_places.moc"
