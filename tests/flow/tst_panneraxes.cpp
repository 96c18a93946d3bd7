#include "flow/pantest.h"
#include "support/testmain.h"

#include <qwt_plot_layout.h>
#include <qwt_scale_engine.h>
#include <qwt_transform.h>

#include <cmath>

namespace {

/// A range that no vertical drag leaves the doubles with, but one of many pixels down does.
const QwtInterval nearTheLargest(1e308, 1.79e308);
/// Too narrow to be divided.
const QwtInterval tooNarrow(0.0, 1e-301);

}

/// Which axes a drag of the canvas moves, and which of them can stop it.
class tst_panneraxes : public PanTest {
    Q_OBJECT

private Q_SLOTS:
    void otherAxesMoveToo_data();
    void otherAxesMoveToo();
    void axesOffInThePanner();
    void valuesHidden();
    void hiddenAxesDoNotStop_data();
    void hiddenAxesDoNotStop();
    void narrowAxisInSightStays();
    void infiniteAxisInSightStops_data();
    void infiniteAxisInSightStops();
    void axisOfInfiniteWidthStops();
    void narrowValues();
    void canvasWithoutHeight();
    void viewThatCannotBeDivided();
    void scalesSetInTheSlot();

private:
    void setRange(int axis, const QwtInterval& range);
};

void tst_panneraxes::setRange(int axis, const QwtInterval& range)
{
    m_plot->axisScaleDraw(axis)->enableComponent(QwtAbstractScaleDraw::Labels, false);
    // Without Qwt's own division, which is not sure to end.
    m_plot->setAxisScaleDiv(axis, QwtScaleDiv(range.minValue(), range.maxValue()));
    m_plot->replot();
    QCoreApplication::processEvents();
    QCOMPARE(m_plot->axisScaleDiv(axis).interval(), range);
}

void tst_panneraxes::otherAxesMoveToo_data()
{
    QTest::addColumn<bool>("shown");
    QTest::newRow("shown") << true;
    QTest::newRow("hidden") << false;
}

void tst_panneraxes::otherAxesMoveToo()
{
    QFETCH(bool, shown);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    for (const int axis : {QwtPlot::yRight, QwtPlot::xTop}) {
        m_plot->enableAxis(axis, shown);
        m_plot->QwtPlot::setAxisScale(axis, 0.0, 1.0);
    }
    m_plot->replot();
    QCoreApplication::processEvents();
    const QwtInterval right = moved(*m_plot, QwtPlot::yRight, -20.0);
    const QwtInterval top = moved(*m_plot, QwtPlot::xTop, 30.0);
    QCOMPARE(drag(30, -20).size(), 2);
    COMPARE_RANGES(visible(*m_plot, QwtPlot::yRight), right);
    COMPARE_RANGES(visible(*m_plot, QwtPlot::xTop), top);
    QVERIFY(right.minValue() < 0.0 && top.minValue() < 0.0);
}

void tst_panneraxes::axesOffInThePanner()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_panner->setAxisEnabled(QwtPlot::yRight, false);
    m_plot->enableAxis(QwtPlot::yRight);
    setRange(QwtPlot::yRight, nearTheLargest);
    const QwtInterval x = moved(*m_plot, QwtPlot::xBottom, 30.0);
    QCOMPARE(drag(30, 200).size(), 2);
    COMPARE_RANGES(prices(), x);
    QCOMPARE(m_plot->axisScaleDiv(QwtPlot::yRight).interval(), nearTheLargest);
    QVERIFY(!m_panner->isAxisEnabled(QwtPlot::yRight));
}

void tst_panneraxes::valuesHidden()
{
    // Without values in sight the view has no height, which is no reason to stop.
    addData(*m_plot, 0.0, 1000.0, -50.0, 50.0);
    m_plot->enableAxis(QwtPlot::yLeft, false);
    m_plot->replot();
    QCoreApplication::processEvents();
    const QwtInterval x = moved(*m_plot, QwtPlot::xBottom, 30.0);
    const QwtInterval y = moved(*m_plot, QwtPlot::yLeft, 0.0);
    QCOMPARE(drag(30, 0).size(), 2);
    COMPARE_RANGES(prices(), x);
    COMPARE_RANGES(values(), y);
}

void tst_panneraxes::hiddenAxesDoNotStop_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<QwtInterval>("range");
    QTest::newRow("right, too narrow") << int(QwtPlot::yRight) << tooNarrow;
    QTest::newRow("right, out of the doubles") << int(QwtPlot::yRight) << nearTheLargest;
    QTest::newRow("top, too narrow") << int(QwtPlot::xTop) << tooNarrow;
    QTest::newRow("top, out of the doubles")
        << int(QwtPlot::xTop) << QwtInterval(-nearTheLargest.maxValue(), -1e308);
}

void tst_panneraxes::hiddenAxesDoNotStop()
{
    QFETCH(int, axis);
    QFETCH(QwtInterval, range);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    setRange(axis, range);
    const QwtInterval x = moved(*m_plot, QwtPlot::xBottom, 30.0);
    const QwtInterval y = moved(*m_plot, QwtPlot::yLeft, 200.0);
    QCOMPARE(drag(30, 200).size(), 2);
    COMPARE_RANGES(prices(), x);
    COMPARE_RANGES(values(), y);
    // The axis stays this time, and is free to follow the next.
    QCOMPARE(m_plot->axisScaleDiv(axis).interval(), range);
    QVERIFY(m_panner->isAxisEnabled(axis));
}

void tst_panneraxes::narrowAxisInSightStays()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->enableAxis(QwtPlot::yRight);
    setRange(QwtPlot::yRight, tooNarrow);
    const QwtInterval x = moved(*m_plot, QwtPlot::xBottom, 30.0);
    QCOMPARE(drag(30, 20).size(), 2);
    COMPARE_RANGES(prices(), x);
    QCOMPARE(m_plot->axisScaleDiv(QwtPlot::yRight).interval(), tooNarrow);
}

void tst_panneraxes::infiniteAxisInSightStops_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<QwtInterval>("range");
    QTest::addColumn<QPoint>("outwards");
    QTest::newRow("right") << int(QwtPlot::yRight) << nearTheLargest << QPoint(0, 200);
    QTest::newRow("top") << int(QwtPlot::xTop) << QwtInterval(-nearTheLargest.maxValue(), -1e308)
                         << QPoint(200, 0);
}

void tst_panneraxes::infiniteAxisInSightStops()
{
    QFETCH(int, axis);
    QFETCH(QwtInterval, range);
    QFETCH(QPoint, outwards);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->enableAxis(axis);
    setRange(axis, range);
    QCOMPARE(drag(outwards.x(), outwards.y()), QStringList());
    COMPARE_RANGES(prices(), QwtInterval(400.0, 600.0));
    COMPARE_RANGES(values(), QwtInterval(40.0, 60.0));
    QCOMPARE(m_plot->axisScaleDiv(axis).interval(), range);
    // No drag moves nothing, and the other way there is room.
    QCOMPARE(drag(0, 0).size(), 2);
    QCOMPARE(drag(-outwards.x() / 20, -outwards.y() / 20).size(), 2);
}

// On a scale that is not linear a drag changes the width: both ends are doubles, and the width is none.
void tst_panneraxes::axisOfInfiniteWidthStops()
{
    class CubeRoot : public QwtTransform {
    public:
        double transform(double value) const override { return std::cbrt(value); }
        double invTransform(double value) const override { return value * value * value; }
        QwtTransform* copy() const override { return new CubeRoot; }
    };
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->enableAxis(QwtPlot::yRight);
    m_plot->axisScaleEngine(QwtPlot::yRight)->setTransformation(new CubeRoot);
    const QwtInterval range(-1e308, 5e307);
    setRange(QwtPlot::yRight, range);
    const QwtScaleMap map = m_plot->canvasMap(QwtPlot::yRight);
    // To an upper end of 1.66e308 and a lower one of -2.2e307.
    const int outwards = qRound(map.transform(range.maxValue()) - map.transform(1.66e308));
    QVERIFY(outwards > 0);
    QCOMPARE(drag(0, outwards), QStringList());
    QCOMPARE(m_plot->axisScaleDiv(QwtPlot::yRight).interval(), range);
    QCOMPARE(drag(0, -outwards / 10).size(), 2);
}

void tst_panneraxes::narrowValues()
{
    addData(*m_plot, 0.0, 1000.0, -1.0, 1.0);
    setRange(QwtPlot::yLeft, tooNarrow);
    QCOMPARE(drag(30, 0), QStringList());
    COMPARE_RANGES(prices(), QwtInterval(400.0, 600.0));
    // Out of sight they stop nothing, and stay.
    m_plot->enableAxis(QwtPlot::yLeft, false);
    QCoreApplication::processEvents();
    const QwtInterval x = moved(*m_plot, QwtPlot::xBottom, 30.0);
    QCOMPARE(drag(30, 20).size(), 2);
    COMPARE_RANGES(prices(), x);
    QCOMPARE(m_plot->axisScaleDiv(QwtPlot::yLeft).interval(), tooNarrow);
    QVERIFY(m_panner->isAxisEnabled(QwtPlot::yLeft));
}

void tst_panneraxes::canvasWithoutHeight()
{
    addData(*m_plot, 0.0, 1000.0, -50.0, 50.0);
    m_plot->enableAxis(QwtPlot::yLeft, false);
    for (int height = 60; height > 20 && m_plot->canvasMap(QwtPlot::yLeft).pDist() > 0.0; --height) {
        m_plot->resize(600, height);
        m_plot->updateLayout();
    }
    QCOMPARE(m_plot->canvasMap(QwtPlot::yLeft).pDist(), 0.0);
    const QwtInterval x = moved(*m_plot, QwtPlot::xBottom, 30.0);
    QCOMPARE(drag(30, 0).size(), 2);
    COMPARE_RANGES(prices(), x);
    COMPARE_RANGES(values(), QwtInterval(40.0, 60.0));

    m_plot->enableAxis(QwtPlot::yLeft);
    m_plot->updateLayout();
    QCOMPARE(m_plot->canvasMap(QwtPlot::yLeft).pDist(), 0.0);
    QCOMPARE(drag(30, 0), QStringList());
    QCOMPARE(drag(0, 0), QStringList());
    COMPARE_RANGES(prices(), x);
}

void tst_panneraxes::viewThatCannotBeDivided()
{
    addData(*m_plot, -8e307, 8e307, 0.0, 100.0);
    const QwtInterval wide(-5.2e307, 5.2e307);
    m_plot->setAxisMaxMajor(QwtPlot::xBottom, 1);
    setRange(QwtPlot::xBottom, wide);
    // Along the other axis neither.
    for (const QPoint& by : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)})
        QCOMPARE(drag(by.x(), by.y()), QStringList());
    QCOMPARE(m_plot->axisScaleDiv(QwtPlot::xBottom).interval(), wide);
    COMPARE_RANGES(values(), QwtInterval(40.0, 60.0));
    m_plot->setAxisMaxMajor(QwtPlot::xBottom, 8);
    setRange(QwtPlot::xBottom, wide);
    QCOMPARE(drag(1, 0).size(), 2);
}

void tst_panneraxes::scalesSetInTheSlot()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    connect(m_panner, QOverload<bool>::of(&PriceBased2dPlotPanner::autoScaleEnabled), this,
        [this] { setRange(QwtPlot::yRight, nearTheLargest); });
    const QwtInterval x = moved(*m_plot, QwtPlot::xBottom, 30.0);
    m_panner->moveCanvas(30, 200);
    COMPARE_RANGES(prices(), x);
    QCOMPARE(m_plot->axisScaleDiv(QwtPlot::yRight).interval(), nearTheLargest);
}

PLOT2D_TEST_MAIN(tst_panneraxes)
#include "tst_panneraxes.moc"
