#include "flow/pantest.h"
#include "support/testmain.h"

#include <QMouseEvent>

#include <limits>

class tst_pricebased2dplotpanner : public PanTest {
    Q_OBJECT

private Q_SLOTS:
    void metaObjectOfThePanner();
    void flag();
    void movesInsideTheData();
    void announcesInOrder();
    void announcesEachTime();
    void flagOffIsQuiet();
    void noDragInsideTheData();
    void leftEndInView();
    void stopsPastTheLeftEnd();
    void stopsPastTheTop();
    void stopsPastTheBottom();
    void pastTheData_data();
    void pastTheData();
    void oneValueHasABand();
    void disabledAxes();
    void shiftUntilValue();
    void dragWithTheMouse();
    void plotOfAnotherClass();
};

void tst_pricebased2dplotpanner::metaObjectOfThePanner()
{
    const QMetaObject& meta = PriceBased2dPlotPanner::staticMetaObject;
    QCOMPARE(meta.className(), "PriceBased2dPlotPanner");
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), QByteArray("updateLabels()"));
    QCOMPARE(meta.method(meta.methodOffset() + 1).methodSignature(), QByteArray("autoScaleEnabled(bool)"));
}

void tst_pricebased2dplotpanner::flag()
{
    QSignalSpy spy(m_panner, SIGNAL(autoScaleEnabled(bool)));
    QVERIFY(m_panner->autoScaleEnabled());
    QVERIFY(m_plot->autoScaleEnabled());
    m_plot->setAutoScaleEnabled(false);
    QVERIFY(!m_panner->autoScaleEnabled());
    m_panner->setAutoScaleEnabled(true);
    QVERIFY(m_plot->autoScaleEnabled());
    QCOMPARE(spy.count(), 0);
}

void tst_pricebased2dplotpanner::movesInsideTheData()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    const QwtInterval x = moved(*m_plot, QwtPlot::xBottom, 30.0);
    const QwtInterval y = moved(*m_plot, QwtPlot::yLeft, -20.0);
    QVERIFY(x.minValue() < 400.0);
    QVERIFY(y.minValue() < 40.0);
    drag(30, -20);
    COMPARE_RANGES(prices(), x);
    COMPARE_RANGES(values(), y);
}

void tst_pricebased2dplotpanner::announcesInOrder()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    QSignalSpy labels(m_plot.get(), SIGNAL(updateAxisLabels()));
    QSignalSpy autoScale(m_plot.get(), SIGNAL(autoScaleEnabled(bool)));
    const int left = qRound(moved(*m_plot, QwtPlot::xBottom, 30.0).minValue());
    QCOMPARE(drag(30, 0),
        QStringList({QStringLiteral("auto-scale 0 at 400"), QStringLiteral("labels at %1").arg(left)}));
    QCOMPARE(labels.count(), 1);
    QCOMPARE(autoScale.count(), 1);
    QCOMPARE(autoScale.first().first().toBool(), false);
}

void tst_pricebased2dplotpanner::announcesEachTime()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    QSignalSpy autoScale(m_panner, SIGNAL(autoScaleEnabled(bool)));
    drag(1, 0);
    drag(1, 0);
    QCOMPARE(autoScale.count(), 2);
    QVERIFY(m_panner->autoScaleEnabled());
}

void tst_pricebased2dplotpanner::flagOffIsQuiet()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->setAutoScaleEnabled(false);
    const QStringList seen = drag(30, 0);
    QCOMPARE(seen.size(), 1);
    QVERIFY(seen.first().startsWith(QStringLiteral("labels")));
}

void tst_pricebased2dplotpanner::noDragInsideTheData()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    QCOMPARE(
        drag(0, 0), QStringList({QStringLiteral("auto-scale 0 at 400"), QStringLiteral("labels at 400")}));
    COMPARE_RANGES(prices(), QwtInterval(400.0, 600.0));
}

void tst_pricebased2dplotpanner::leftEndInView()
{
    addData(*m_plot, 450.0, 1000.0, 0.0, 100.0);
    QCOMPARE(drag(30, 0), QStringList());
    const QwtInterval y = moved(*m_plot, QwtPlot::yLeft, 20.0);
    QCOMPARE(drag(30, 20).size(), 2);
    COMPARE_RANGES(prices(), QwtInterval(400.0, 600.0));
    COMPARE_RANGES(values(), y);
}

void tst_pricebased2dplotpanner::stopsPastTheLeftEnd()
{
    const double perPixel = 200.0 / m_plot->canvasMap(QwtPlot::xBottom).pDist();
    addData(*m_plot, 400.0 - 95.0 * perPixel, 1000.0, 0.0, 100.0);
    // The full drag goes more than a tenth of the view too far, half of it does not.
    const QwtInterval x = moved(*m_plot, QwtPlot::xBottom, 100.0);
    QCOMPARE(drag(200, 0).size(), 2);
    COMPARE_RANGES(prices(), x);
    QVERIFY(prices().minValue() < m_plot->curvesRectangle().left());
}

void tst_pricebased2dplotpanner::stopsPastTheTop()
{
    const double perPixel = 20.0 / std::abs(m_plot->canvasMap(QwtPlot::yLeft).pDist());
    addData(*m_plot, 0.0, 1000.0, 0.0, 60.0 + 63.0 * perPixel);
    const QwtInterval y = moved(*m_plot, QwtPlot::yLeft, 65.0);
    QCOMPARE(drag(0, 129).size(), 2);
    // Half of 129 pixels is rounded away from zero.
    COMPARE_RANGES(values(), y);
    COMPARE_RANGES(prices(), QwtInterval(400.0, 600.0));
}

void tst_pricebased2dplotpanner::stopsPastTheBottom()
{
    const double perPixel = 20.0 / std::abs(m_plot->canvasMap(QwtPlot::yLeft).pDist());
    addData(*m_plot, 0.0, 1000.0, 40.0 - 63.0 * perPixel, 100.0);
    const QwtInterval y = moved(*m_plot, QwtPlot::yLeft, -65.0);
    QCOMPARE(drag(0, -129).size(), 2);
    // Away from zero also below it.
    COMPARE_RANGES(values(), y);
}

void tst_pricebased2dplotpanner::pastTheData_data()
{
    QTest::addColumn<QRectF>("data");
    QTest::addColumn<QPoint>("offset");
    const QRectF right(700.0, 0.0, 100.0, 100.0);
    QTest::newRow("away from the data") << right << QPoint(30, 0);
    QTest::newRow("not up to the data") << right << QPoint(-30, 0);
    QTest::newRow("out of the data") << QRectF(590.0, 0.0, 20.0, 100.0) << QPoint(300, 0);
    QTest::newRow("one price only") << QRectF(500.0, 0.0, 0.0, 100.0) << QPoint(30, 0);
    QTest::newRow("both ends in view") << QRectF(450.0, 45.0, 100.0, 10.0) << QPoint(30, 20);
    QTest::newRow("no drag outside") << QRectF(450.0, 45.0, 100.0, 10.0) << QPoint(0, 0);
}

void tst_pricebased2dplotpanner::pastTheData()
{
    QFETCH(QRectF, data);
    QFETCH(QPoint, offset);
    addData(*m_plot, data.left(), data.right(), data.top(), data.bottom());
    QCOMPARE(drag(offset.x(), offset.y()), QStringList());
    COMPARE_RANGES(prices(), QwtInterval(400.0, 600.0));
    COMPARE_RANGES(values(), QwtInterval(40.0, 60.0));
}

void tst_pricebased2dplotpanner::oneValueHasABand()
{
    // The band around 48 is half as high as the view: from 43 to 53, so that its both ends are in view.
    addData(*m_plot, 0.0, 1000.0, 48.0, 48.0);
    QCOMPARE(drag(0, 20), QStringList());
    QCOMPARE(drag(0, -20), QStringList());
    COMPARE_RANGES(values(), QwtInterval(40.0, 60.0));
    m_plot->detachItems();
    // From 36 to 46: the lower end is hidden.
    addData(*m_plot, 0.0, 1000.0, 41.0, 41.0);
    QCOMPARE(drag(0, 20), QStringList());
    const double perPixel = 20.0 / std::abs(m_plot->canvasMap(QwtPlot::yLeft).pDist());
    const int pixels = qRound(5.0 / perPixel);
    const QwtInterval y = moved(*m_plot, QwtPlot::yLeft, -pixels);
    QCOMPARE(drag(0, -pixels).size(), 2);
    COMPARE_RANGES(values(), y);
}

void tst_pricebased2dplotpanner::disabledAxes()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->enableAxis(QwtPlot::xBottom, false);
    QCOMPARE(drag(30, 20), QStringList());
    QCOMPARE(
        m_panner->getShiftUntilValue(390.0, QwtPlot::xBottom, 0, 50.0), std::numeric_limits<double>::max());
}

void tst_pricebased2dplotpanner::shiftUntilValue()
{
    const double none = 1.7976931348623157e308;
    const double perPixel = 200.0 / m_plot->canvasMap(QwtPlot::xBottom).pDist();
    const double value = 400.0 - 35.0 * perPixel;
    QCOMPARE(m_panner->getShiftUntilValue(value, QwtPlot::xBottom, 0, 40.0), 40.0);
    QCOMPARE(m_panner->getShiftUntilValue(value, QwtPlot::xBottom, 1, 40.0), none);
    QCOMPARE(m_panner->getShiftUntilValue(value, QwtPlot::xBottom, 2, 40.0), none);
    const double perUpright = 20.0 / std::abs(m_plot->canvasMap(QwtPlot::yLeft).pDist());
    QCOMPARE(m_panner->getShiftUntilValue(40.0 - 35.0 * perUpright, QwtPlot::yLeft, 0, -40.0), -40.0);
    QCOMPARE(m_panner->getShiftUntilValue(60.0 + 35.0 * perUpright, QwtPlot::yLeft, 1, 40.0), 40.0);
    QCOMPARE(m_panner->getShiftUntilValue(value, QwtPlot::xTop, 0, 40.0), none);
    QCOMPARE(m_panner->getShiftUntilValue(value, -1, 0, 40.0), none);
    QCOMPARE(m_panner->getShiftUntilValue(value, QwtPlot::axisCnt, 0, 40.0), none);
    m_plot->setAxisScaleDiv(QwtPlot::xBottom, QwtScaleDiv(0.0, 0.0));
    m_plot->updateAxes();
    QCOMPARE(m_panner->getShiftUntilValue(value, QwtPlot::xBottom, 0, 40.0), none);
}

void tst_pricebased2dplotpanner::dragWithTheMouse()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    const QwtInterval x = moved(*m_plot, QwtPlot::xBottom, 25.0);
    const QwtInterval y = moved(*m_plot, QwtPlot::yLeft, 15.0);
    QWidget* canvas = m_plot->canvas();
    const auto send = [canvas](QEvent::Type type, const QPoint& place, Qt::MouseButtons buttons) {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, place, canvas->mapToGlobal(place), button, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(canvas, &event);
    };
    const QPoint from(100, 100);
    const QPoint to(125, 115);
    send(QEvent::MouseButtonPress, from, Qt::LeftButton);
    send(QEvent::MouseMove, to, Qt::LeftButton);
    COMPARE_RANGES(prices(), QwtInterval(400.0, 600.0));
    send(QEvent::MouseButtonRelease, to, Qt::NoButton);
    COMPARE_RANGES(prices(), x);
    COMPARE_RANGES(values(), y);
}

void tst_pricebased2dplotpanner::plotOfAnotherClass()
{
    QwtPlot plot;
    PriceBased2dPlotPanner panner(qobject_cast<QwtPlotCanvas*>(plot.canvas()));
    QSignalSpy spy(&panner, SIGNAL(updateLabels()));
    panner.moveCanvas(10, 10);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(panner.getShiftUntilValue(0.0, QwtPlot::xBottom, 0, 10.0), std::numeric_limits<double>::max());
}

PLOT2D_TEST_MAIN(tst_pricebased2dplotpanner)
#include "tst_pricebased2dplotpanner.moc"
