#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <qwt_scale_div.h>

#include <limits>
#include <memory>

namespace {

constexpr double largest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

}

/// setAxisScale() and updateYAxisScale().
class tst_verticalscale : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void refusedScales_data();
    void refusedScales();
    void verticalScales_data();
    void verticalScales();
    void horizontalScales_data();
    void horizontalScales();
    void stepIsHandedOn();
    void quoteLineIsStretchedBeforeTheScale();
    void narrowRangeStretchesTheQuoteLine();

    void autoScaleOffStretchesTheQuoteLine();
    void autoScaleOffKeepsTheScale();
    void autoScaleFitsTheCurves();
    void autoScaleFitsPricesThatWereNotReplotted();
    void autoScaleWithoutCurves();
    void autoScaleRanges_data();
    void autoScaleRanges();
    void autoScaleKeepsTheScaleAtABadSample();
    void autoScaleKeepsTheScaleWithoutASampleInside();

private:
    std::unique_ptr<TestPlot> m_plot;

    QwtInterval scale(int axis);
};

void tst_verticalscale::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_verticalscale::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_verticalscale::init()
{
    m_plot = std::make_unique<TestPlot>();
    for (int axis = 0; axis < QwtPlot::axisCnt; ++axis)
        m_plot->QwtPlot::setAxisScale(axis, 200.0, 300.0, 25.0);
    m_plot->updateAxes();
}

void tst_verticalscale::cleanup()
{
    m_plot.reset();
}

QwtInterval tst_verticalscale::scale(int axis)
{
    m_plot->updateAxes();
    return m_plot->axisScaleDiv(axis).interval();
}

void tst_verticalscale::refusedScales_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::newRow("yRight") << 1 << 0.0 << 10.0;
    QTest::newRow("xTop") << 3 << 0.0 << 10.0;
    QTest::newRow("axis -1") << -1 << 0.0 << 10.0;
    QTest::newRow("axis 4") << 4 << 0.0 << 10.0;
    for (const int axis : {QwtPlot::yLeft, QwtPlot::xBottom}) {
        const char* name = axis == QwtPlot::yLeft ? "yLeft" : "xBottom";
        QTest::addRow("%s from NaN", name) << axis << notANumber << 10.0;
        QTest::addRow("%s to NaN", name) << axis << 0.0 << notANumber;
        QTest::addRow("%s from infinity", name) << axis << -infinity << 10.0;
        QTest::addRow("%s to infinity", name) << axis << 0.0 << infinity;
        QTest::addRow("%s inverted", name) << axis << 10.0 << 0.0;
        QTest::addRow("%s barely inverted", name) << axis << 5.0 * (1.0 + 5e-13) << 5.0;
    }
}

void tst_verticalscale::refusedScales()
{
    QFETCH(int, axis);
    QFETCH(double, min);
    QFETCH(double, max);
    m_plot->setAxisScale(axis, min, max, 1.0);
    QVERIFY(m_plot->calls.isEmpty());
    for (int each = 0; each < QwtPlot::axisCnt; ++each) {
        QCOMPARE(scale(each), QwtInterval(200.0, 300.0));
        QCOMPARE(m_plot->axisStepSize(each), 25.0);
    }
}

void tst_verticalscale::verticalScales_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<QwtInterval>("expected");
    const QwtInterval unchanged(200.0, 300.0);
    QTest::newRow("usual") << 1.0 << 2.5 << QwtInterval(1.0, 2.5);
    QTest::newRow("equal") << 5.0 << 5.0 << QwtInterval(4.0, 6.0);
    QTest::newRow("fuzzily equal") << 1e6 << 1e6 + 5e-7 << QwtInterval(1e6 - 1.0, 1e6 + 5e-7 + 1.0);
    QTest::newRow("zero") << 0.0 << 0.0 << QwtInterval(-1.0, 1.0);
    QTest::newRow("not quite equal") << 5.0 << 5.000000001 << unchanged;
    QTest::newRow("1e-8 apart") << 0.0 << 1e-8 << unchanged;
    QTest::newRow("more than 1e-8 apart") << 0.0 << 1.0001e-8 << QwtInterval(0.0, 1.0001e-8);
    QTest::newRow("width not finite") << -largest << largest << unchanged;
    QTest::newRow("too large to be widened by 1") << 1e17 << 1e17 << unchanged;
    QTest::newRow("too far below zero to be widened by 1") << -1e17 << -1e17 << unchanged;
}

void tst_verticalscale::verticalScales()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(QwtInterval, expected);
    m_plot->setAxisScale(QwtPlot::yLeft, min, max, 0.0);
    QVERIFY(!m_plot->calls.contains("replot"));
    QCOMPARE(scale(QwtPlot::yLeft), expected);
    QCOMPARE(scale(QwtPlot::xBottom), QwtInterval(200.0, 300.0));
}

void tst_verticalscale::horizontalScales_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<QwtInterval>("expected");
    const QwtInterval unchanged(200.0, 300.0);
    QTest::newRow("usual") << 100.0 << 110.0 << QwtInterval(100.0, 110.0);
    QTest::newRow("equal") << 5.0 << 5.0 << unchanged;
    QTest::newRow("fuzzily equal") << 1e6 << 1e6 + 5e-7 << unchanged;
    QTest::newRow("narrow") << 5.0 << 5.000000001 << QwtInterval(5.0, 5.000000001);
    QTest::newRow("width not finite") << -largest << largest << unchanged;
}

void tst_verticalscale::horizontalScales()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(QwtInterval, expected);
    m_plot->setAxisScale(QwtPlot::xBottom, min, max, 0.0);
    QVERIFY(m_plot->calls.isEmpty());
    QCOMPARE(scale(QwtPlot::xBottom), expected);
    QCOMPARE(scale(QwtPlot::yLeft), QwtInterval(200.0, 300.0));
}

void tst_verticalscale::stepIsHandedOn()
{
    m_plot->setAxisScale(QwtPlot::yLeft, 0.0, 10.0, 2.5);
    m_plot->setAxisScale(QwtPlot::xBottom, 100.0, 110.0, 3.0);
    QCOMPARE(m_plot->axisStepSize(QwtPlot::yLeft), 2.5);
    QCOMPARE(m_plot->axisStepSize(QwtPlot::xBottom), 3.0);
    m_plot->setAxisScale(QwtPlot::yLeft, 5.0, 5.0, 0.5);
    QCOMPARE(m_plot->axisStepSize(QwtPlot::yLeft), 0.5);
}

void tst_verticalscale::quoteLineIsStretchedBeforeTheScale()
{
    // The line still reaches over the scale of before.
    const auto* line = addCurve(*m_plot, 0, {{105.0, 0.0}, {105.0, 1.0}}, "quote");
    m_plot->setAxisScale(QwtPlot::yLeft, 100.0, 250.0, 0.0);
    QCOMPARE(m_plot->calls, QStringList{"quote line 100 250 -1"});
    QCOMPARE(line->sample(0), QPointF(105.0, 80.0));
    QCOMPARE(line->sample(1), QPointF(105.0, 320.0));
}

void tst_verticalscale::narrowRangeStretchesTheQuoteLine()
{
    m_plot->setAxisScale(QwtPlot::yLeft, 5.0, 5.000000001, 0.0);
    QCOMPARE(m_plot->calls, QStringList{"quote line 5 5 -1"});
}

void tst_verticalscale::autoScaleOffStretchesTheQuoteLine()
{
    const auto* line = addCurve(*m_plot, 0, {{105.0, 0.0}, {105.0, 1.0}}, "quote");
    m_plot->setAutoScaleEnabled(false);
    m_plot->calls.clear();
    m_plot->updateYAxisScale();
    QCOMPARE(m_plot->calls, (QStringList{"quote line 0 0 -1", "replot", "replot"}));
    QCOMPARE(line->sample(0), QPointF(105.0, -30.0));
    QCOMPARE(line->sample(1), QPointF(105.0, 330.0));
}

void tst_verticalscale::autoScaleOffKeepsTheScale()
{
    addCurve(*m_plot, 9, {{210.0, 1.0}, {220.0, 2.0}}, "a");
    m_plot->setAutoScaleEnabled(false);
    m_plot->updateYAxisScale();
    QCOMPARE(scale(QwtPlot::yLeft), QwtInterval(200.0, 300.0));
}

void tst_verticalscale::autoScaleFitsTheCurves()
{
    addCurve(*m_plot, 9, {{210.0, 1.0}, {220.0, 2.0}}, "a");
    m_plot->setAutoScaleEnabled(true);
    m_plot->calls.clear();
    m_plot->updateYAxisScale();
    QCOMPARE(m_plot->calls, (QStringList{"range", "quote line 1 2 -1", "replot", "replot"}));
    QCOMPARE(scale(QwtPlot::yLeft), QwtInterval(1.0, 2.0));
    QCOMPARE(m_plot->axisStepSize(QwtPlot::yLeft), 0.0);
}

void tst_verticalscale::autoScaleFitsPricesThatWereNotReplotted()
{
    TestPlot plot;
    QVERIFY(plot.autoScaleEnabled());
    auto* curve = addCurve(plot, 9, {{100.0, 1.0}, {110.0, 2.0}}, "a");
    plot.setAxisScale(QwtPlot::xBottom, 100.0, 111.0, 0.0);
    plot.updateYAxisScale();
    QCOMPARE(plot.axisScaleDiv(QwtPlot::xBottom).interval(), QwtInterval(100.0, 111.0));
    QCOMPARE(plot.axisScaleDiv(QwtPlot::yLeft).interval(), QwtInterval(1.0, 2.0));

    curve->setSamples(QVector<QPointF>{{100.0, 1.0}, {105.0, 3.0}, {110.0, 2.0}, {110.5, 7.0}, {120.0, 9.0}});
    plot.setAxisScale(QwtPlot::xBottom, 105.0, 111.0, 0.0);
    plot.updateYAxisScale();
    QCOMPARE(plot.axisScaleDiv(QwtPlot::xBottom).interval(), QwtInterval(105.0, 111.0));
    QCOMPARE(plot.axisScaleDiv(QwtPlot::yLeft).interval(), QwtInterval(2.0, 7.0));
}

void tst_verticalscale::autoScaleWithoutCurves()
{
    m_plot->setAutoScaleEnabled(true);
    m_plot->updateYAxisScale();
    QCOMPARE(scale(QwtPlot::yLeft), QwtInterval(-1.0, 1.0));
}

void tst_verticalscale::autoScaleRanges_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<QwtInterval>("expected");
    QTest::addColumn<int>("replots");
    const QwtInterval unchanged(200.0, 300.0);
    QTest::newRow("proper") << 1.0 << 2.0 << QwtInterval(1.0, 2.0) << 2;
    QTest::newRow("none") << 1.0 << -1.0 << unchanged << 1;
    QTest::newRow("no sample") << largest << -largest << unchanged << 1;
    QTest::newRow("equal") << 3.0 << 3.0 << QwtInterval(2.0, 4.0) << 2;
    QTest::newRow("inverted") << 5.0 * (1.0 + 5e-12) << 5.0 << unchanged << 1;
    QTest::newRow("inverted but fuzzily equal") << 5.0 * (1.0 + 5e-13) << 5.0 << unchanged << 2;
    QTest::newRow("too narrow") << 5.0 << 5.000000001 << unchanged << 2;
    QTest::newRow("NaN") << notANumber << 5.0 << unchanged << 2;
}

void tst_verticalscale::autoScaleRanges()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(QwtInterval, expected);
    QFETCH(int, replots);
    m_plot->setAutoScaleEnabled(true);
    m_plot->fixedRange = std::pair(min, max);
    m_plot->calls.clear();
    m_plot->updateYAxisScale();
    QCOMPARE(m_plot->calls.count("replot"), replots);
    QCOMPARE(scale(QwtPlot::yLeft), expected);
}

void tst_verticalscale::autoScaleKeepsTheScaleAtABadSample()
{
    addCurve(*m_plot, 9, {{210.0, 1.0}, {220.0, 2.0}}, "a");
    auto* bad = addCurve(*m_plot, 9, {{210.0, 1.0}, {220.0, notANumber}}, "b");
    QVERIFY(bad->isValid());
    m_plot->setAutoScaleEnabled(true);
    m_plot->updateYAxisScale();
    QCOMPARE(scale(QwtPlot::yLeft), QwtInterval(200.0, 300.0));
}

void tst_verticalscale::autoScaleKeepsTheScaleWithoutASampleInside()
{
    addCurve(*m_plot, 9, {{110.0, 1.0}, {300.0, 2.0}}, "a");
    m_plot->setAutoScaleEnabled(true);
    m_plot->updateYAxisScale();
    QCOMPARE(scale(QwtPlot::yLeft), QwtInterval(200.0, 300.0));
}

PLOT2D_TEST_MAIN(tst_verticalscale)
#include "tst_verticalscale.moc"
