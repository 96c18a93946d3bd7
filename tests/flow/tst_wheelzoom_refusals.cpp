#include "flow/wheeltest.h"
#include "support/testmain.h"

#include <plot2d/pricebased2dplotscaledraw.h>

#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

}

Q_DECLARE_METATYPE(QwtScaleDiv)

/// What the wheel refuses, and what only looks as if it had to.
class tst_wheelzoom_refusals : public WheelTest {
    Q_OBJECT

private Q_SLOTS:
    void labelsThatReadTheSame_data();
    void labelsThatReadTheSame();
    void labelsOfAnotherScaleDraw();
    void scalesWithoutARange_data();
    void scalesWithoutARange();
    void boundsBeyondTheDoubles_data();
    void boundsBeyondTheDoubles();
    void heightsBesideThePrices_data();
    void heightsBesideThePrices();
    void rangesThatCannotBeDivided_data();
    void rangesThatCannotBeDivided();
    void canvasWithoutHeight();
    void flatDataKeepsTheValues();
    void samplesThatAreNotFinite_data();
    void samplesThatAreNotFinite();
    void oneValueZooms();
    void refusedEventsStayAsTheyAre_data();
    void refusedEventsStayAsTheyAre();

private:
    void compareUnchanged(const QwtInterval& prices, const QwtInterval& values);
};

void tst_wheelzoom_refusals::compareUnchanged(const QwtInterval& oldPrices, const QwtInterval& oldValues)
{
    QCOMPARE(prices(), oldPrices);
    QCOMPARE(values(), oldValues);
    QCOMPARE(m_labels->count(), 0);
    QCOMPARE(m_autoScale->count(), 0);
    QCOMPARE(m_plot->calls, QStringList());
}

void tst_wheelzoom_refusals::labelsThatReadTheSame_data()
{
    QTest::addColumn<Place>("place");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("over the prices") << Place::Prices << Qt::KeyboardModifiers();
    QTest::newRow("over the values") << Place::Values << Qt::KeyboardModifiers();
    QTest::newRow("in the canvas") << Place::Canvas << Qt::KeyboardModifiers();
    QTest::newRow("with Shift") << Place::Canvas << Qt::KeyboardModifiers(Qt::ShiftModifier);
    QTest::newRow("with Control") << Place::Canvas << Qt::KeyboardModifiers(Qt::ControlModifier);
}

void tst_wheelzoom_refusals::labelsThatReadTheSame()
{
    QFETCH(Place, place);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    putCursor(place);
    // The labels that are drawn count, whatever the plot makes of its range.
    m_plot->axisScaleDraw(QwtPlot::yLeft)
        ->setScaleDiv(QwtScaleDiv(40.0, 60.0, {}, {}, {50.0, 50.0 + 5e-9, 55.0}));
    m_plot->calls.clear();
    turn(notch, modifiers);
    QCOMPARE(m_labels->count(), 0);
    QCOMPARE(m_autoScale->count(), 0);
    QCOMPARE(m_plot->calls, QStringList());
    COMPARE_RANGES(m_plot->axisInterval(QwtPlot::xBottom), m_prices);
    turn(-notch, modifiers);
    QCOMPARE(m_labels->count(), 1);
}

void tst_wheelzoom_refusals::labelsOfAnotherScaleDraw()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->setAxisScaleDraw(QwtPlot::yLeft, new QwtScaleDraw);
    m_plot->updateLayout();
    putCursor(Place::Values);
    turn(notch);
    QCOMPARE(qRound(values().width()), 18);
    QCOMPARE(m_labels->count(), 1);
}

void tst_wheelzoom_refusals::scalesWithoutARange_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<QwtScaleDiv>("division");
    QTest::addColumn<Place>("place");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    const QVector<std::pair<const char*, QwtScaleDiv>> divisions{
        {"empty", QwtScaleDiv(50.0, 50.0)}, {"inverted", QwtScaleDiv(60.0, 40.0)}};
    for (const auto& [name, division] : divisions) {
        for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)}) {
            const Qt::KeyboardModifiers none;
            QTest::addRow("%s %d, over the prices", name, axis) << axis << division << Place::Prices << none;
            QTest::addRow("%s %d, over the values", name, axis) << axis << division << Place::Values << none;
            QTest::addRow("%s %d, with Shift", name, axis)
                << axis << division << Place::Canvas << Qt::KeyboardModifiers(Qt::ShiftModifier);
        }
    }
}

void tst_wheelzoom_refusals::scalesWithoutARange()
{
    QFETCH(int, axis);
    QFETCH(QwtScaleDiv, division);
    QFETCH(Place, place);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    putCursor(place);
    m_plot->setAxisScaleDiv(axis, division);
    m_plot->updateAxes();
    const QwtInterval oldPrices = prices();
    const QwtInterval oldValues = values();
    m_plot->calls.clear();
    for (const int angle : {notch, -notch}) {
        turn(angle, modifiers);
        compareUnchanged(oldPrices, oldValues);
    }
}

void tst_wheelzoom_refusals::boundsBeyondTheDoubles_data()
{
    QTest::addColumn<QwtInterval>("prices");
    QTest::addColumn<QwtInterval>("values");
    QTest::addColumn<QRectF>("data");
    const QwtInterval high(1e308, 1.73e308);
    const QwtInterval low(-1.73e308, -1e308);
    const QwtInterval small(0.2, 0.6);
    // Only one end of the data is in view, from which the view grows away.
    QTest::newRow("highest price") << high << small << QRectF(1.05e308, 0.0, 0.74e308, 1.0);
    QTest::newRow("lowest price") << low << small << QRectF(-1.79e308, 0.0, 0.74e308, 1.0);
    QTest::newRow("highest value") << small << high << QRectF(0.0, 1.05e308, 1.0, 0.74e308);
    QTest::newRow("lowest value") << small << low << QRectF(0.0, -1.79e308, 1.0, 0.74e308);
}

void tst_wheelzoom_refusals::boundsBeyondTheDoubles()
{
    QFETCH(QwtInterval, prices);
    QFETCH(QwtInterval, values);
    QFETCH(QRectF, data);
    addData(*m_plot, data.left(), data.right(), data.top(), data.bottom());
    show(prices, values);
    putCursor(Place::Canvas);
    const Qt::KeyboardModifiers none;
    for (const auto& modifiers : {none, none | Qt::ShiftModifier, none | Qt::ControlModifier}) {
        turn(-2 * notch, modifiers);
        compareUnchanged(prices, values);
    }
}

void tst_wheelzoom_refusals::heightsBesideThePrices_data()
{
    QTest::addColumn<QwtInterval>("values");
    QTest::addColumn<bool>("zooms");
    // Nine parts of the view lie above what keeps its place, and their product with its height is on the way.
    QTest::newRow("with a ninefold") << QwtInterval(0.0, 2e307) << true;
    QTest::newRow("without a ninefold") << QwtInterval(0.0, 1e308) << false;
}

void tst_wheelzoom_refusals::heightsBesideThePrices()
{
    QFETCH(QwtInterval, values);
    QFETCH(bool, zooms);
    addData(*m_plot, 0.0, 1.0, 0.0, 1.0);
    const QwtInterval shown(0.0, 1.0);
    show(shown, values);
    putCursor(Place::Prices);
    const double centre = valueAt(cursorOn(m_plot->axisWidget(QwtPlot::xBottom))).x();
    turn(notch);
    if (!zooms) {
        compareUnchanged(shown, values);
        return;
    }
    COMPARE_RANGES(prices(), zoomed(shown, centre, WheelFactors::in));
    QCOMPARE(m_labels->count(), 1);
}

void tst_wheelzoom_refusals::rangesThatCannotBeDivided_data()
{
    QTest::addColumn<QwtInterval>("prices");
    QTest::addColumn<QwtInterval>("values");
    QTest::addColumn<int>("axis");
    const QwtInterval wide(-4.79e307, 4.79e307);
    const QwtInterval small(0.2, 0.6);
    QTest::newRow("prices") << wide << small << int(QwtPlot::xBottom);
    QTest::newRow("values") << small << wide << int(QwtPlot::yLeft);
}

void tst_wheelzoom_refusals::rangesThatCannotBeDivided()
{
    QFETCH(QwtInterval, prices);
    QFETCH(QwtInterval, values);
    QFETCH(int, axis);
    // One step over a little more than what is shown would be of an infinite size.
    m_plot->setAxisMaxMajor(axis, 1);
    addData(*m_plot, -8e307, 8e307, -8e307, 8e307);
    show(prices, values);
    putCursor(Place::Canvas);
    turn(-notch);
    compareUnchanged(prices, values);
    turn(-notch, axis == QwtPlot::xBottom ? Qt::ControlModifier : Qt::ShiftModifier);
    compareUnchanged(prices, values);

    turn(-notch, axis == QwtPlot::xBottom ? Qt::ShiftModifier : Qt::ControlModifier);
    QCOMPARE(m_labels->count(), 1);
}

void tst_wheelzoom_refusals::canvasWithoutHeight()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->enableAxis(QwtPlot::yLeft, false);
    const QwtPlotLayout* layout = m_plot->plotLayout();
    int height = 60;
    for (; height > 20 && m_plot->canvasMap(QwtPlot::yLeft).pDist() > 0.0; --height) {
        m_plot->resize(600, height);
        m_plot->updateLayout();
    }
    QCOMPARE(m_plot->canvasMap(QwtPlot::yLeft).pDist(), 0.0);
    const QPoint inCanvas = layout->canvasRect().center().toPoint();
    QVERIFY(layout->canvasRect().contains(inCanvas));
    putCursor(inCanvas);
    m_plot->calls.clear();
    for (const int angle : {notch, -notch})
        turn(angle);
    compareUnchanged(m_prices, m_values);
}

void tst_wheelzoom_refusals::flatDataKeepsTheValues()
{
    // Too low for a vertical scale, but no reason not to look closer at the prices.
    addData(*m_plot, 0.0, 1000.0, 50.0, 50.0 + 5e-9);
    putCursor(Place::Canvas);
    const double centre = valueAt(cursorOn(m_plot.get())).x();
    turn(notch);
    COMPARE_RANGES(prices(), zoomed(m_prices, centre, WheelFactors::in));
    COMPARE_RANGES(values(), m_values);
    QCOMPARE(m_autoScale->count(), 1);
    QCOMPARE(m_labels->count(), 1);
}

void tst_wheelzoom_refusals::samplesThatAreNotFinite_data()
{
    QTest::addColumn<QVector<QPointF>>("samples");
    QTest::newRow("infinite value") << QVector<QPointF>{{450.0, 50.0}, {500.0, infinity}, {550.0, 50.0}};
    QTest::newRow("negative infinite value") << QVector<QPointF>{{450.0, 50.0}, {500.0, -infinity}};
    QTest::newRow("infinite price") << QVector<QPointF>{{450.0, 50.0}, {infinity, 55.0}};
    QTest::newRow("negative infinite price") << QVector<QPointF>{{-infinity, 50.0}, {450.0, 55.0}};
    QTest::newRow("NaN") << QVector<QPointF>{{450.0, 50.0}, {500.0, notANumber}};
}

void tst_wheelzoom_refusals::samplesThatAreNotFinite()
{
    QFETCH(QVector<QPointF>, samples);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    addCurve(*m_plot, 9, samples, QStringLiteral("bad"));
    putCursor(Place::Canvas);
    const QPointF centre = valueAt(cursorOn(m_plot.get()));
    turn(notch);
    COMPARE_RANGES(prices(), zoomed(m_prices, centre.x(), WheelFactors::in));
    COMPARE_RANGES(values(), zoomed(m_values, centre.y(), WheelFactors::in));
}

void tst_wheelzoom_refusals::oneValueZooms()
{
    addData(*m_plot, 0.0, 1000.0, 50.0, 50.0);
    putCursor(Place::Canvas);
    const QPointF centre = valueAt(cursorOn(m_plot.get()));
    turn(notch);
    COMPARE_RANGES(prices(), zoomed(m_prices, centre.x(), WheelFactors::in));
    const double top = zoomed(m_values, centre.y(), WheelFactors::in).maxValue();
    COMPARE_RANGES(values(), QwtInterval(top - 1.0, top + 1.0));
}

void tst_wheelzoom_refusals::refusedEventsStayAsTheyAre_data()
{
    QTest::addColumn<Place>("place");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<int>("angle");
    QTest::addColumn<bool>("withData");
    QTest::newRow("zoom disabled") << Place::Canvas << false << notch << true;
    QTest::newRow("beside scales and canvas") << Place::Corner << true << notch << true;
    QTest::newRow("less than a notch") << Place::Canvas << true << notch - 1 << true;
    QTest::newRow("no data") << Place::Canvas << true << notch << false;
}

void tst_wheelzoom_refusals::refusedEventsStayAsTheyAre()
{
    QFETCH(Place, place);
    QFETCH(bool, enabled);
    QFETCH(int, angle);
    QFETCH(bool, withData);
    if (withData)
        addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->setZoomEnabled(enabled);
    putCursor(place);
    for (const bool accepted : {true, false}) {
        QWheelEvent event = turned(QPoint(0, angle), Qt::NoModifier);
        event.setAccepted(accepted);
        m_plot->wheelEvent(&event);
        QCOMPARE(event.isAccepted(), accepted);
    }
    QCOMPARE(m_labels->count(), 0);
}

PLOT2D_TEST_MAIN(tst_wheelzoom_refusals)
#include "tst_wheelzoom_refusals.moc"
