#include "flow/wheeltest.h"
#include "support/testmain.h"

/// What the wheel does, by place and modifier, and where the ends of the data come in.
class tst_wheelzoom : public WheelTest {
    Q_OBJECT

private Q_SLOTS:
    void aboutTheCursor_data();
    void aboutTheCursor();
    void overTheValues();
    void overThePrices();
    void controlAlone();
    void shiftAlone();
    void heightOfTheData();
    void endsOfTheData_data();
    void endsOfTheData();
    void allPricesInView();
    void valuesCoverTheData();
    void smallestStep_data();
    void smallestStep();
    void refused_data();
    void refused();
    void refusedWithoutAPicker();
    void wheelOverTheCanvasItself();

private:
    QPointF centreInCanvas() const;
};

QPointF tst_wheelzoom::centreInCanvas() const
{
    return m_plot->picker()->transformedPoint(m_plot->mapFromGlobal(QCursor::pos()));
}

void tst_wheelzoom::aboutTheCursor_data()
{
    QTest::addColumn<int>("angle");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<double>("factor");
    const Qt::KeyboardModifiers none = Qt::NoModifier;
    QTest::newRow("in") << notch << none << WheelFactors::in;
    QTest::newRow("out") << -notch << none << WheelFactors::out;
    QTest::newRow("in, fast") << 2 * notch << none << WheelFactors::fastIn;
    QTest::newRow("out, fast") << -5 * notch << none << WheelFactors::fastOut;
    QTest::newRow("in, both modifiers")
        << notch << (Qt::ShiftModifier | Qt::ControlModifier) << WheelFactors::in;
    QTest::newRow("in, other modifier")
        << notch << Qt::KeyboardModifiers(Qt::AltModifier) << WheelFactors::in;
}

void tst_wheelzoom::aboutTheCursor()
{
    QFETCH(int, angle);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(double, factor);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    putCursor(Place::Canvas);
    const QPointF centre = centreInCanvas();
    QVERIFY(m_prices.contains(centre.x()) && m_values.contains(centre.y()));
    turn(angle, modifiers);
    COMPARE_RANGES(prices(), zoomed(m_prices, centre.x(), factor));
    COMPARE_RANGES(values(), zoomed(m_values, centre.y(), factor));
    QCOMPARE(m_labels->count(), 1);
    QCOMPARE(m_autoScale->count(), 1);
    QCOMPARE(m_autoScale->first().first().toBool(), false);
}

void tst_wheelzoom::overTheValues()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    putCursor(Place::Values);
    const QPoint onAxis = m_plot->axisWidget(QwtPlot::yLeft)->mapFromGlobal(QCursor::pos());
    const double centre = m_plot->picker()->transformedPoint(onAxis).y();
    turn(notch);
    COMPARE_RANGES(prices(), m_prices);
    COMPARE_RANGES(values(), zoomed(m_values, centre, WheelFactors::in));
    QCOMPARE(m_labels->count(), 1);
    QCOMPARE(m_autoScale->count(), 1);
}

void tst_wheelzoom::overThePrices()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->fixedRange = std::make_pair(1.0, 2.0);
    putCursor(Place::Prices);
    const QPoint onAxis = m_plot->axisWidget(QwtPlot::xBottom)->mapFromGlobal(QCursor::pos());
    const double centre = m_plot->picker()->transformedPoint(onAxis).x();
    turn(-notch);
    COMPARE_RANGES(prices(), zoomed(m_prices, centre, WheelFactors::out));
    COMPARE_RANGES(values(), QwtInterval(1.0, 2.0));
    QCOMPARE(m_labels->count(), 1);
    QCOMPARE(m_autoScale->count(), 0);
}

void tst_wheelzoom::controlAlone()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->fixedRange = std::make_pair(1.0, 2.0);
    putCursor(Place::Canvas);
    const double centre = centreInCanvas().x();
    turn(notch, Qt::ControlModifier);
    COMPARE_RANGES(prices(), zoomed(m_prices, centre, WheelFactors::in));
    COMPARE_RANGES(values(), QwtInterval(1.0, 2.0));
    QCOMPARE(m_labels->count(), 1);
    QCOMPARE(m_autoScale->count(), 0);
}

void tst_wheelzoom::shiftAlone()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    putCursor(Place::Canvas);
    const double centre = centreInCanvas().y();
    turn(notch, Qt::ShiftModifier);
    COMPARE_RANGES(prices(), m_prices);
    COMPARE_RANGES(values(), zoomed(m_values, centre, WheelFactors::in));
    QCOMPARE(m_labels->count(), 1);
    QCOMPARE(m_autoScale->count(), 1);
}

void tst_wheelzoom::heightOfTheData()
{
    addData(*m_plot, 0.0, 1000.0, 45.0, 55.0);
    putCursor(Place::Canvas);
    const double top = zoomed(m_values, centreInCanvas().y(), WheelFactors::in).maxValue();
    turn(notch, Qt::ShiftModifier);
    COMPARE_RANGES(values(), QwtInterval(top - 10.0, top));

    m_plot->QwtPlot::setAxisScale(QwtPlot::yLeft, 40.0, 60.0);
    m_plot->replot();
    turn(notch);
    COMPARE_RANGES(values(), QwtInterval(top - 10.0 * WheelFactors::in, top));
}

void tst_wheelzoom::endsOfTheData_data()
{
    QTest::addColumn<double>("left");
    QTest::addColumn<double>("right");
    QTest::addColumn<QwtInterval>("expected");
    QTest::newRow("left end in view")
        << 450.0 << 1000.0 << QwtInterval(400.0, 400.0 + 200.0 * WheelFactors::out);
    QTest::newRow("right end in view")
        << 0.0 << 550.0 << QwtInterval(600.0 - 200.0 * WheelFactors::out, 600.0);
}

void tst_wheelzoom::endsOfTheData()
{
    QFETCH(double, left);
    QFETCH(double, right);
    QFETCH(QwtInterval, expected);
    addData(*m_plot, left, right, 0.0, 100.0);
    putCursor(Place::Canvas);
    turn(-notch, Qt::ControlModifier);
    COMPARE_RANGES(prices(), expected);
}

void tst_wheelzoom::allPricesInView()
{
    addData(*m_plot, 450.0, 550.0, 0.0, 100.0);
    putCursor(Place::Canvas);
    const double centre = centreInCanvas().y();
    turn(-notch);
    COMPARE_RANGES(prices(), m_prices);
    COMPARE_RANGES(values(), zoomed(m_values, centre, WheelFactors::out));
}

void tst_wheelzoom::valuesCoverTheData()
{
    addData(*m_plot, 0.0, 1000.0, 45.0, 55.0);
    putCursor(Place::Values);
    turn(-notch);
    COMPARE_RANGES(values(), m_values);
    QCOMPARE(m_autoScale->count(), 0);
    QCOMPARE(m_labels->count(), 1);
}

void tst_wheelzoom::smallestStep_data()
{
    QTest::addColumn<int>("angle");
    QTest::addColumn<double>("minStep");
    QTest::addColumn<bool>("zooms");
    QTest::newRow("in, too narrow") << notch << 200.0 * WheelFactors::in + 0.001 << false;
    QTest::newRow("in, wide enough") << notch << 200.0 * WheelFactors::in - 0.001 << true;
    QTest::newRow("out") << -notch << 500.0 << true;
}

void tst_wheelzoom::smallestStep()
{
    QFETCH(int, angle);
    QFETCH(double, minStep);
    QFETCH(bool, zooms);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->setPriceInterval({100.0, 900.0, minStep, true});
    putCursor(Place::Canvas);
    turn(angle);
    QCOMPARE(prices() != m_prices, zooms);
    QCOMPARE(values() != m_values, zooms);
    QCOMPARE(m_labels->count(), zooms ? 1 : 0);
}

void tst_wheelzoom::refused_data()
{
    QTest::addColumn<Place>("place");
    QTest::addColumn<int>("angle");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QRectF>("data");
    const QRectF wide(0.0, 0.0, 1000.0, 100.0);
    QTest::newRow("less than a notch in") << Place::Canvas << notch - 1 << true << wide;
    QTest::newRow("less than a notch out") << Place::Canvas << 1 - notch << true << wide;
    QTest::newRow("nothing") << Place::Canvas << 0 << true << wide;
    QTest::newRow("beside scales and canvas") << Place::Corner << notch << true << wide;
    QTest::newRow("zoom disabled") << Place::Canvas << notch << false << wide;
    QTest::newRow("zoom disabled over a scale") << Place::Values << notch << false << wide;
    QTest::newRow("data of one price") << Place::Canvas << notch << true << QRectF(500.0, 0.0, 0.0, 100.0);
    QTest::newRow("no data") << Place::Canvas << notch << true << QRectF();
}

void tst_wheelzoom::refused()
{
    QFETCH(Place, place);
    QFETCH(int, angle);
    QFETCH(bool, enabled);
    QFETCH(QRectF, data);
    if (!data.isNull())
        addData(*m_plot, data.left(), data.right(), data.top(), data.bottom());
    m_plot->setZoomEnabled(enabled);
    putCursor(place);
    turn(angle);
    COMPARE_RANGES(prices(), m_prices);
    COMPARE_RANGES(values(), m_values);
    QCOMPARE(m_labels->count(), 0);
    QCOMPARE(m_autoScale->count(), 0);
}

void tst_wheelzoom::refusedWithoutAPicker()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    putCursor(Place::Canvas);
    delete m_plot->picker();
    turn(notch);
    COMPARE_RANGES(prices(), m_prices);
    QCOMPARE(m_labels->count(), 0);
}

void tst_wheelzoom::wheelOverTheCanvasItself()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    putCursor(Place::Canvas);
    const QPoint place = m_plot->canvas()->mapFromGlobal(QCursor::pos());
    QWheelEvent event(place, QCursor::pos(), QPoint(), QPoint(0, notch), Qt::NoButton, Qt::NoModifier,
        Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(m_plot->canvas(), &event);
    QCOMPARE(m_labels->count(), 1);
    QCOMPARE(qRound(prices().width()), qRound(200.0 * WheelFactors::in));
}

PLOT2D_TEST_MAIN(tst_wheelzoom)
#include "tst_wheelzoom.moc"
