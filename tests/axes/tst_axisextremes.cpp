#include "axes/childlimits.h"
#include "support/childrun.h"
#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <c_api/common.h>
#include <plot2d/pricebased2dplotscaledraw.h>

#include <qwt_scale_widget.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

const int axes[] = {QwtPlot::xBottom, QwtPlot::yLeft};

void show(TestPlot& plot, int width = 400, int height = 200)
{
    plot.resize(width, height);
    plot.replot();
    plot.show();
    QCoreApplication::processEvents();
    plot.updateScaleLabels();
    plot.updateAxisWidgets();
    QCoreApplication::processEvents();
}

const PriceBased2dPlotScaleDraw& drawOf(const TestPlot& plot, int axis)
{
    return dynamic_cast<const PriceBased2dPlotScaleDraw&>(*plot.axisScaleDraw(axis));
}

}

/// Each function runs in a child of bounded time and memory.
class tst_axisextremes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void refusedRangesLeaveTheScale_data();
    void refusedRangesLeaveTheScale();
    void strangeRangesArePainted_data();
    void strangeRangesArePainted();
    void numbersOfSteps_data();
    void numbersOfSteps();
    void sizes_data();
    void sizes();
    void samplesOfAnAutoScale_data();
    void samplesOfAnAutoScale();
    void foreignDivisions_data();
    void foreignDivisions();

private:
    bool runsHere();
};

void tst_axisextremes::initTestCase()
{
    TestHost::createSecurities();
}

void tst_axisextremes::cleanupTestCase()
{
    TestHost::dropSecurities();
}

bool tst_axisextremes::runsHere()
{
    if (TestSupport::isChild()) {
        limitProcess(40);
        return true;
    }
    const TestSupport::ChildRun run = TestSupport::repeatRowInChild(QProcessEnvironment::systemEnvironment());
    if (!run.passed())
        QTest::qFail(run.output.constData(), __FILE__, __LINE__);
    return false;
}

void tst_axisextremes::refusedRangesLeaveTheScale_data()
{
    QTest::addColumn<double>("lower");
    QTest::addColumn<double>("upper");
    QTest::addColumn<double>("step");

    const auto row = [](const char* name, double lower, double upper, double step) {
        QTest::newRow(name) << lower << upper << step;
    };
    row("NaN below", notANumber, 1, 0);
    row("NaN above", 0, notANumber, 0);
    row("infinite below", -infinity, 0, 0);
    row("infinite above", 0, infinity, 0);
    row("inverted", 200, 100, 0);
    row("of infinite width", -largest, largest, 0);
    row("NaN as step", 0, 1, notANumber);
    row("infinite step", 0, 1, -infinity);
    row("more steps than an int counts", 0, 1000, 1e-8);
    row("denormal step", 0, 1, smallest);
    row("denormal range", 0, smallest, 0);
    row("narrow range", 0, 1e-305, 0);
}

void tst_axisextremes::refusedRangesLeaveTheScale()
{
    if (!runsHere())
        return;
    QFETCH(double, lower);
    QFETCH(double, upper);
    QFETCH(double, step);
    for (const int axis : axes) {
        TestPlot plot;
        plot.setAxisScale(axis, 100, 200, 10);
        show(plot);
        const QwtScaleDiv before = plot.axisScaleDiv(axis);
        QCOMPARE(before.upperBound(), 200.0);
        plot.setAxisScale(axis, lower, upper, step);
        show(plot);
        QVERIFY(plot.axisScaleDiv(axis) == before);
        QVERIFY(!drawOf(plot, axis).labelTicks().isEmpty());
    }
}

void tst_axisextremes::strangeRangesArePainted_data()
{
    QTest::addColumn<double>("lower");
    QTest::addColumn<double>("upper");
    QTest::addColumn<double>("step");

    const auto row = [](const char* name, double lower, double upper, double step) {
        QTest::newRow(name) << lower << upper << step;
    };
    row("one unit in the last place", 1e15, 1e15 + 0.125, 0);
    row("a few units in the last place", 1e15, 1e15 + 1, 0);
    row("at the limit of labels", 1e16, 1e16 + 16, 0);
    row("huge", -8e307, 8e307, 0);
    row("from 1e300 on", 1e300, 1.5e300, 0);
    row("tiny", 0, 1e-290, 0);
    row("tiny about zero", -1e-200, 1e-200, 0);
    row("a step beyond the range", 0, 1, 1e300);
    row("a negative step", 0, 1, -0.1);
    row("a tiny step", 0, 1000, 1e-5);
}

void tst_axisextremes::strangeRangesArePainted()
{
    if (!runsHere())
        return;
    QFETCH(double, lower);
    QFETCH(double, upper);
    QFETCH(double, step);
    for (const int axis : axes) {
        TestPlot plot;
        plot.setCurKotirEnabled(true);
        plot.setCurKotirValue(lower + 0.5 * (upper - lower));
        plot.setRescaleFactor(TestHost::number(QStringLiteral("100.5")));
        plot.setAxisScale(axis, lower, upper, step);
        show(plot);
        // As good as empty for a plot, though not for its engines.
        if (commonFuzzyCompare(lower, upper) || (axis == QwtPlot::yLeft && upper - lower <= 1e-8))
            continue;
        QCOMPARE(plot.axisScaleDiv(axis).lowerBound(), lower);
        QCOMPARE(plot.axisScaleDiv(axis).upperBound(), upper);
    }
}

void tst_axisextremes::numbersOfSteps_data()
{
    QTest::addColumn<int>("major");
    QTest::addColumn<int>("minor");
    QTest::newRow("one major step") << 1 << 0;
    QTest::newRow("one of each") << 1 << 1;
    QTest::newRow("the most major steps") << 10000 << 0;
    QTest::newRow("the most major steps, and medium ticks") << 10000 << 2;
    QTest::newRow("the most minor steps") << 1 << 100;
}

void tst_axisextremes::numbersOfSteps()
{
    if (!runsHere())
        return;
    QFETCH(int, major);
    QFETCH(int, minor);
    TestPlot plot;
    for (const int axis : axes) {
        plot.setAxisMaxMajor(axis, major);
        plot.setAxisMaxMinor(axis, minor);
        plot.setAxisScale(axis, 0, 1000, 0);
    }
    plot.resize(400, 200);
    plot.replot();
    plot.show();
    QCoreApplication::processEvents();
    QVERIFY(drawOf(plot, QwtPlot::xBottom).isPaintedOnce());
    const auto& draw = drawOf(plot, QwtPlot::xBottom);
    const QList<QRect> rectangles = draw.getBoundingRects(draw.labelTicks());
    for (int i = 1; i < rectangles.size(); ++i)
        QVERIFY(!rectangles[i].intersects(rectangles[i - 1]));
}

void tst_axisextremes::sizes_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("nothing") << QSize(0, 0);
    QTest::newRow("one pixel") << QSize(1, 1);
    QTest::newRow("no width") << QSize(0, 300);
    QTest::newRow("no height") << QSize(300, 0);
    QTest::newRow("no canvas") << QSize(30, 300);
}

void tst_axisextremes::sizes()
{
    if (!runsHere())
        return;
    QFETCH(QSize, size);
    TestPlot plot;
    plot.setMinimumSize(0, 0);
    plot.setAxisScale(QwtPlot::xBottom, 100000, 100010, 0);
    plot.setAxisScale(QwtPlot::yLeft, 100000, 100010, 0);
    plot.setCurKotirEnabled(true);
    plot.setCurKotirValue(100005);
    show(plot, size.width(), size.height());
    plot.canvas()->resize(0, 0);
    plot.updateScaleLabels();
    // And it recovers.
    show(plot, 600, 300);
    QVERIFY(!drawOf(plot, QwtPlot::xBottom).labelTicks().isEmpty());
}

void tst_axisextremes::samplesOfAnAutoScale_data()
{
    QTest::addColumn<QVector<QPointF>>("samples");

    const auto row
        = [](const char* name, const QVector<QPointF>& samples) { QTest::newRow(name) << samples; };
    row("infinite value", {{100, 1}, {110, infinity}, {120, 2}});
    row("infinite value alone", {{100, infinity}});
    row("infinite value downwards", {{100, 1}, {110, -infinity}, {120, 2}});
    row("infinite price", {{100, 1}, {infinity, 2}});
    row("infinite price downwards", {{-infinity, 1}, {100, 2}});
    row("both infinities", {{-infinity, -infinity}, {infinity, infinity}});
    row("NaN", {{notANumber, notANumber}, {100, notANumber}});
    row("huge", {{-1e308, -1e308}, {1e308, 1e308}});
    row("huge values", {{100, -1.7e308}, {110, 1.7e308}});
    row("huge prices", {{-1.7e308, 1}, {1.7e308, 2}});
    row("huge prices and values", {{-1.7e308, -1.7e308}, {1.7e308, 1.7e308}});
    row("a huge place", {{1.7e308, 1.7e308}});
    row("a huge place below zero", {{-1.7e308, -1.7e308}});
    row("largest", {{-largest, -largest}, {largest, largest}});
    row("largest upwards", {{0, 0}, {largest, largest}});
    row("1e300", {{1e300, 1e300}, {2e300, 2e300}});
    row("denormal", {{0, 0}, {smallest, smallest}});
    row("tiny", {{0, 0}, {1e-306, 1e-306}});
    row("one place", {{5, 5}, {5, 5}});
    row("one unit in the last place", {{1e15, 1e15}, {1e15 + 0.125, 1e15 + 0.125}});
}

void tst_axisextremes::samplesOfAnAutoScale()
{
    if (!runsHere())
        return;
    QFETCH(QVector<QPointF>, samples);
    TestPlot plot;
    addCurve(plot, 9, samples, QStringLiteral("curve"));
    show(plot);
    for (const int axis : axes) {
        QVERIFY(plot.axisAutoScale(axis));
        const QwtScaleDiv division = plot.axisScaleDiv(axis);
        QVERIFY(std::isfinite(division.lowerBound()) && std::isfinite(division.upperBound()));
        QVERIFY(division.ticks(QwtScaleDiv::MajorTick).size() < 100);
    }
    // A sane scale is set and shown afterwards.
    plot.setAxisScale(QwtPlot::xBottom, 100, 200, 0);
    show(plot);
    QCOMPARE(plot.axisScaleDiv(QwtPlot::xBottom).upperBound(), 200.0);
}

void tst_axisextremes::foreignDivisions_data()
{
    QTest::addColumn<double>("lower");
    QTest::addColumn<double>("upper");
    QTest::addColumn<QList<double>>("ticks");

    using Values = QList<double>;
    QTest::newRow("empty") << 5.0 << 5.0 << Values{5};
    QTest::newRow("inverted") << 10.0 << 0.0 << Values{0, 5, 10};
    QTest::newRow("ticks that are not finite")
        << 0.0 << 10.0 << Values{-infinity, 1, notANumber, 2, infinity};
    QTest::newRow("ticks all over") << 0.0 << 10.0 << Values{-largest, -1e17, 1, 1, 1e17, largest};
    QTest::newRow("unsorted") << 0.0 << 10.0 << Values{9, 1, 5, 1};
    QTest::newRow("none") << 0.0 << 10.0 << Values{};
}

void tst_axisextremes::foreignDivisions()
{
    if (!runsHere())
        return;
    QFETCH(double, lower);
    QFETCH(double, upper);
    QFETCH(QList<double>, ticks);
    for (const int axis : axes) {
        PriceBased2dPlotScaleDraw draw(axis);
        draw.setLength(300);
        draw.setPaintedOnce();
        draw.setCurKotirEnabled(true);
        draw.setScaleDiv(QwtScaleDiv(lower, upper, ticks, ticks, ticks));
        for (const double quote : {5.0, 1e300, infinity, -infinity, notANumber, smallest}) {
            draw.setCurKotirValue(quote);
            draw.updateLabels();
            const QList<double> labels = draw.labelTicks();
            QVERIFY(std::is_sorted(labels.cbegin(), labels.cend()));
            QVERIFY(
                std::all_of(labels.cbegin(), labels.cend(), [](double tick) { return std::isfinite(tick); }));
            draw.ticksShrinked(draw.scaleDiv());
            draw.maxFractionLength();
            draw.extent(QApplication::font());
        }
    }
}

PLOT2D_TEST_MAIN(tst_axisextremes)

#include "tst_axisextremes.moc"
