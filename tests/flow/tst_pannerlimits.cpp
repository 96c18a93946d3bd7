#include "flow/pantest.h"
#include "support/testmain.h"

#include <qwt_plot_layout.h>

#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

}

/// What a drag of the canvas is rounded to, and what stops it or does not.
class tst_pannerlimits : public PanTest {
    Q_OBJECT

private Q_SLOTS:
    void halvesAreRoundedAwayFromZero_data();
    void halvesAreRoundedAwayFromZero();
    void lessThanHalfAPixelIsAnnounced();
    void viewThatEndsWithTheData_data();
    void viewThatEndsWithTheData();
    void samplesThatAreNotFinite_data();
    void samplesThatAreNotFinite();
    void viewBeyondTheDoubles_data();
    void viewBeyondTheDoubles();
    void canvasWithoutWidth();
    void withoutCurves_data();
    void withoutCurves();
    void zoomDisabled();

private:
    double perPixel(int axis) const
    {
        return m_plot->axisInterval(axis).width() / std::abs(m_plot->canvasMap(axis).pDist());
    }
};

void tst_pannerlimits::halvesAreRoundedAwayFromZero_data()
{
    QTest::addColumn<bool>("leftEnd");
    QTest::addColumn<int>("dx");
    QTest::addColumn<double>("expected");
    QTest::newRow("left end") << true << 129 << 65.0;
    QTest::newRow("right end") << false << -129 << -65.0;
}

void tst_pannerlimits::halvesAreRoundedAwayFromZero()
{
    QFETCH(bool, leftEnd);
    QFETCH(int, dx);
    QFETCH(double, expected);
    // Half of the drag stops just past the end, and all of it too far.
    const double beyond = 63.0 * perPixel(QwtPlot::xBottom);
    addData(*m_plot, leftEnd ? 400.0 - beyond : 0.0, leftEnd ? 1000.0 : 600.0 + beyond, 0.0, 100.0);
    const QwtInterval x = moved(*m_plot, QwtPlot::xBottom, expected);
    QCOMPARE(drag(dx, 0).size(), 2);
    COMPARE_RANGES(prices(), x);
    COMPARE_RANGES(values(), QwtInterval(40.0, 60.0));
}

void tst_pannerlimits::lessThanHalfAPixelIsAnnounced()
{
    // On four pixels, one is more than a tenth of the view, and so is half of one; a third is not.
    m_plot->enableAxis(QwtPlot::yLeft, false);
    m_plot->axisScaleDraw(QwtPlot::xBottom)->enableComponent(QwtAbstractScaleDraw::Labels, false);
    for (int width = 100; width > 1 && m_plot->canvasMap(QwtPlot::xBottom).pDist() > 4.0; --width) {
        m_plot->resize(width, 200);
        m_plot->updateLayout();
    }
    QCOMPARE(m_plot->canvasMap(QwtPlot::xBottom).pDist(), 4.0);
    addData(*m_plot, 400.0 - 0.05 * perPixel(QwtPlot::xBottom), 1000.0, -50.0, 50.0);
    QCOMPARE(
        m_panner->getShiftUntilValue(m_plot->curvesRectangle().left(), QwtPlot::xBottom, 0, 1.0), 1.0 / 3.0);
    QCOMPARE(
        drag(1, 0), QStringList({QStringLiteral("auto-scale 0 at 400"), QStringLiteral("labels at 400")}));
    COMPARE_RANGES(prices(), QwtInterval(400.0, 600.0));
}

void tst_pannerlimits::viewThatEndsWithTheData_data()
{
    QTest::addColumn<QPoint>("offset");
    QTest::newRow("left") << QPoint(12, 0);
    QTest::newRow("right") << QPoint(-12, 0);
    QTest::newRow("bottom") << QPoint(0, -12);
    QTest::newRow("top") << QPoint(0, 12);
}

void tst_pannerlimits::viewThatEndsWithTheData()
{
    QFETCH(QPoint, offset);
    const QwtInterval x = moved(*m_plot, QwtPlot::xBottom, offset.x());
    const QwtInterval y = moved(*m_plot, QwtPlot::yLeft, offset.y());
    addData(*m_plot, std::min(x.minValue(), 400.0), std::max(x.maxValue(), 600.0),
        std::min(y.minValue(), 40.0), std::max(y.maxValue(), 60.0));
    QCOMPARE(drag(offset.x(), offset.y()).size(), 2);
    COMPARE_RANGES(prices(), x);
    COMPARE_RANGES(values(), y);
}

void tst_pannerlimits::samplesThatAreNotFinite_data()
{
    QTest::addColumn<QVector<QPointF>>("samples");
    QTest::newRow("infinite value") << QVector<QPointF>{{450.0, 50.0}, {500.0, infinity}, {550.0, 50.0}};
    QTest::newRow("negative infinite value") << QVector<QPointF>{{450.0, 50.0}, {500.0, -infinity}};
    QTest::newRow("infinite price") << QVector<QPointF>{{450.0, 50.0}, {infinity, 55.0}};
    QTest::newRow("negative infinite price") << QVector<QPointF>{{-infinity, 50.0}, {450.0, 55.0}};
    QTest::newRow("NaN") << QVector<QPointF>{{450.0, 50.0}, {500.0, notANumber}};
}

void tst_pannerlimits::samplesThatAreNotFinite()
{
    QFETCH(QVector<QPointF>, samples);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    addCurve(*m_plot, 9, samples, QStringLiteral("bad"));
    const QwtInterval x = moved(*m_plot, QwtPlot::xBottom, 30.0);
    const QwtInterval y = moved(*m_plot, QwtPlot::yLeft, -20.0);
    QCOMPARE(drag(30, -20).size(), 2);
    COMPARE_RANGES(prices(), x);
    COMPARE_RANGES(values(), y);
}

void tst_pannerlimits::viewBeyondTheDoubles_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<QwtInterval>("range");
    QTest::addColumn<QPoint>("offset");
    const QwtInterval high(1e308, 1.79e308);
    const QwtInterval low(-1.79e308, -1e308);
    QTest::newRow("highest price") << int(QwtPlot::xBottom) << high << QPoint(-100, 0);
    QTest::newRow("lowest price") << int(QwtPlot::xBottom) << low << QPoint(100, 0);
    QTest::newRow("highest value") << int(QwtPlot::yLeft) << high << QPoint(0, 100);
    QTest::newRow("lowest value") << int(QwtPlot::yLeft) << low << QPoint(0, -100);
}

void tst_pannerlimits::viewBeyondTheDoubles()
{
    QFETCH(int, axis);
    QFETCH(QwtInterval, range);
    QFETCH(QPoint, offset);
    const double largest = std::numeric_limits<double>::max();
    const bool high = range.minValue() > 0.0;
    const double low = high ? 1e307 : -largest;
    if (axis == QwtPlot::xBottom)
        addData(*m_plot, low, low + 0.94 * largest, 0.0, 100.0);
    else
        addData(*m_plot, 0.0, 1000.0, low, low + 0.94 * largest);
    m_plot->axisScaleDraw(axis)->enableComponent(QwtAbstractScaleDraw::Labels, false);
    m_plot->QwtPlot::setAxisScale(axis, range.minValue(), range.maxValue());
    m_plot->replot();
    QCoreApplication::processEvents();
    QCOMPARE(m_plot->axisInterval(axis), range);
    QCOMPARE(drag(offset.x(), offset.y()), QStringList());
    QCOMPARE(visible(*m_plot, axis), range);
}

void tst_pannerlimits::canvasWithoutWidth()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    for (int width = 100; width > 1 && m_plot->canvasMap(QwtPlot::xBottom).pDist() > 0.0; --width) {
        m_plot->resize(width, 200);
        m_plot->updateLayout();
    }
    QCOMPARE(m_plot->canvasMap(QwtPlot::xBottom).pDist(), 0.0);
    QCOMPARE(drag(1, 0), QStringList());
    QCOMPARE(drag(0, 1), QStringList());
    QCOMPARE(drag(0, 0), QStringList());
    QCOMPARE(prices(), QwtInterval(400.0, 600.0));
    QCOMPARE(values(), QwtInterval(40.0, 60.0));
}

void tst_pannerlimits::withoutCurves_data()
{
    QTest::addColumn<bool>("hidden");
    QTest::newRow("none") << false;
    QTest::newRow("a hidden one") << true;
}

void tst_pannerlimits::withoutCurves()
{
    QFETCH(bool, hidden);
    addCurve(*m_plot, 0, {{500.0, 0.0}, {500.0, 1.0}}, QStringLiteral("quote"));
    if (hidden)
        addData(*m_plot, 0.0, 1000.0, 0.0, 100.0)->setVisible(false);
    QCOMPARE(drag(30, 20), QStringList());
    COMPARE_RANGES(prices(), QwtInterval(400.0, 600.0));
    COMPARE_RANGES(values(), QwtInterval(40.0, 60.0));
}

void tst_pannerlimits::zoomDisabled()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->setZoomEnabled(false);
    const QwtInterval x = moved(*m_plot, QwtPlot::xBottom, 30.0);
    QCOMPARE(drag(30, 0).size(), 2);
    COMPARE_RANGES(prices(), x);
}

PLOT2D_TEST_MAIN(tst_pannerlimits)
#include "tst_pannerlimits.moc"
