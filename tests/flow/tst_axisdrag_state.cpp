#include "flow/dragtest.h"
#include "support/testmain.h"

/// What a drag on a scale remembers between its events.
class tst_axisdrag_state : public DragTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void releaseKeepsThePress();
    void placesAtZero_data();
    void placesAtZero();
    void originIsNoPlace();
    void fractionsOfPixels_data();
    void fractionsOfPixels();
    void pressOffTheScalesEndsIt_data();
    void pressOffTheScalesEndsIt();
    void refusedMoveIsForgotten();
    void eventsGoOnToTheParent();

private:
    QwtInterval prices() { return range(QwtPlot::xBottom); }
    QwtInterval values() { return range(QwtPlot::yLeft); }
};

void tst_axisdrag_state::init()
{
    DragTest::init();
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
}

void tst_axisdrag_state::releaseKeepsThePress()
{
    const QPointF from = onScale(QwtPlot::xBottom);
    press(from);
    QMouseEvent release(
        QEvent::MouseButtonRelease, from, from, QCursor::pos(), Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_plot.get(), &release);
    move(from + QPointF(5.0, 0.0), Qt::NoButton);
    COMPARE_RANGES(prices(), QwtInterval(390.0, 610.0));
    QCoreApplication::sendEvent(m_plot.get(), &release);
    move(from + QPointF(4.0, 0.0), Qt::NoButton);
    COMPARE_RANGES(prices(), QwtInterval(401.0, 599.0));
}

void tst_axisdrag_state::placesAtZero_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<QPointF>("zero");
    QTest::addColumn<QPointF>("beyond");
    QTest::newRow("prices") << int(QwtPlot::xBottom) << QPointF(0.0, 390.0) << QPointF(1.0, 390.0);
    QTest::newRow("values") << int(QwtPlot::yLeft) << QPointF(10.0, 0.0) << QPointF(10.0, 1.0);
    QTest::newRow("prices, negative zero")
        << int(QwtPlot::xBottom) << QPointF(-0.0, 390.0) << QPointF(1.0, 390.0);
}

void tst_axisdrag_state::placesAtZero()
{
    QFETCH(int, axis);
    QFETCH(QPointF, zero);
    QFETCH(QPointF, beyond);
    press(onScale(axis));
    move(zero);
    const QwtInterval shrunk = range(axis);
    QVERIFY(shrunk.width() < (axis == QwtPlot::xBottom ? 200.0 : 20.0));
    // Right of, or below, where it was last, though not of the press.
    move(beyond);
    const double step = shrunk.width() * 0.05;
    COMPARE_RANGES(range(axis), QwtInterval(shrunk.minValue() - step, shrunk.maxValue() + step));
}

void tst_axisdrag_state::originIsNoPlace()
{
    press(onScale(QwtPlot::xBottom));
    move(QPointF(-0.0, 0.0));
    COMPARE_RANGES(prices(), QwtInterval(410.0, 590.0));
    // Left of the press.
    move(QPointF(1.0, 0.0));
    COMPARE_RANGES(prices(), QwtInterval(419.0, 581.0));
}

void tst_axisdrag_state::fractionsOfPixels_data()
{
    QTest::addColumn<double>("press");
    QTest::addColumn<double>("move");
    QTest::addColumn<QwtInterval>("expected");
    QTest::newRow("right within a pixel") << 200.2 << 200.4 << QwtInterval(390.0, 610.0);
    QTest::newRow("left within a pixel") << 200.4 << 200.2 << QwtInterval(410.0, 590.0);
}

void tst_axisdrag_state::fractionsOfPixels()
{
    QFETCH(double, press);
    QFETCH(double, move);
    QFETCH(QwtInterval, expected);
    const double y = onScale(QwtPlot::xBottom).y();
    this->press(QPointF(press, y));
    this->move(QPointF(move, y));
    COMPARE_RANGES(prices(), expected);
    // Back, to the left or to the right of the last place alone.
    this->move(QPointF((press + move) / 2.0, y));
    const bool grows = press > move;
    COMPARE_RANGES(prices(),
        QwtInterval(expected.minValue() - (grows ? 0.05 : -0.05) * expected.width(),
            expected.maxValue() + (grows ? 0.05 : -0.05) * expected.width()));
}

void tst_axisdrag_state::pressOffTheScalesEndsIt_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<bool>("onScale");
    QTest::newRow("left in the canvas") << Qt::LeftButton << false;
    QTest::newRow("right on the scale") << Qt::RightButton << true;
    QTest::newRow("right in the canvas") << Qt::RightButton << false;
}

void tst_axisdrag_state::pressOffTheScalesEndsIt()
{
    QFETCH(Qt::MouseButton, button);
    QFETCH(bool, onScale);
    const QPointF from = this->onScale(QwtPlot::xBottom);
    press(from);
    move(from + QPointF(5.0, 0.0));
    COMPARE_RANGES(prices(), QwtInterval(390.0, 610.0));
    press(onScale ? from : m_plot->plotLayout()->canvasRect().center(), button);
    move(from + QPointF(9.0, 0.0));
    COMPARE_RANGES(prices(), QwtInterval(390.0, 610.0));
    COMPARE_RANGES(values(), QwtInterval(40.0, 60.0));
}

void tst_axisdrag_state::refusedMoveIsForgotten()
{
    const QPointF from = onScale(QwtPlot::xBottom);
    m_plot->setPriceInterval({100.0, 900.0, 300.0, true});
    press(from);
    move(from - QPointF(10.0, 0.0));
    // Right of the refused place, but left of the press.
    move(from - QPointF(5.0, 0.0));
    COMPARE_RANGES(prices(), QwtInterval(400.0, 600.0));
    move(from + QPointF(1.0, 0.0));
    COMPARE_RANGES(prices(), QwtInterval(390.0, 610.0));
}

void tst_axisdrag_state::eventsGoOnToTheParent()
{
    // What a plain widget does with an event of the mouse is to ignore it.
    const QPointF from = onScale(QwtPlot::xBottom);
    for (const QPointF& place : {from, m_plot->plotLayout()->canvasRect().center()}) {
        QMouseEvent press(QEvent::MouseButtonPress, place, place, QCursor::pos(), Qt::LeftButton,
            Qt::LeftButton, Qt::NoModifier);
        m_plot->mousePressEvent(&press);
        QVERIFY(!press.isAccepted());
        QMouseEvent move(QEvent::MouseMove, place + QPointF(1.0, 0.0), place + QPointF(1.0, 0.0),
            QCursor::pos(), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        m_plot->mouseMoveEvent(&move);
        QVERIFY(!move.isAccepted());
    }
}

PLOT2D_TEST_MAIN(tst_axisdrag_state)
#include "tst_axisdrag_state.moc"
