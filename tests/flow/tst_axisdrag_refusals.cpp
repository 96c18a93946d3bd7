#include "flow/dragtest.h"
#include "support/testmain.h"

#include <plot2d/pricebased2dplotscaledraw.h>

#include <limits>

Q_DECLARE_METATYPE(QwtScaleDiv)

namespace {

constexpr double largest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();

}

/// Steps of a drag on a scale that are refused without a trace, and what an accepted one leads to.
class tst_axisdrag_refusals : public DragTest {
    Q_OBJECT

private Q_SLOTS:
    void labelsThatReadTheSame();
    void scalesWithoutARange_data();
    void scalesWithoutARange();
    void rangesThatCannotBeShown_data();
    void rangesThatCannotBeShown();
    void dataOfOneValue();
    void dataOfOnePrice();
    void samplesThatAreNotFinite();
    void autoScaleIsResetFirst();
    void labelsAreChosenAnew_data();
    void labelsAreChosenAnew();

private:
    void show(int axis, const QwtInterval& range);
    QList<double> labelTicks(int axis) const;
};

/// Sets a range of any size and leaves no labels, which need room.
void tst_axisdrag_refusals::show(int axis, const QwtInterval& range)
{
    m_plot->axisScaleDraw(axis)->enableComponent(QwtAbstractScaleDraw::Labels, false);
    m_plot->QwtPlot::setAxisScale(axis, range.minValue(), range.maxValue());
    m_plot->replot();
    QCoreApplication::processEvents();
    m_plot->calls.clear();
}

QList<double> tst_axisdrag_refusals::labelTicks(int axis) const
{
    const auto* draw = dynamic_cast<const PriceBased2dPlotScaleDraw*>(m_plot->axisScaleDraw(axis));
    return draw ? draw->labelTicks() : QList<double>();
}

void tst_axisdrag_refusals::labelsThatReadTheSame()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    const auto shrinkLabels = [this] {
        m_plot->axisScaleDraw(QwtPlot::yLeft)
            ->setScaleDiv(QwtScaleDiv(40.0, 60.0, {}, {}, {50.0, 50.0 + 5e-9, 55.0}));
    };
    QSignalSpy autoScale(m_plot.get(), SIGNAL(autoScaleEnabled(bool)));
    const QPointF onValues = onScale(QwtPlot::yLeft);
    press(onValues);
    shrinkLabels();
    m_plot->calls.clear();
    move(onValues - QPointF(0.0, 5.0));
    QCOMPARE(m_plot->calls, QStringList());
    QCOMPARE(autoScale.count(), 0);
    move(onValues + QPointF(0.0, 5.0));
    COMPARE_RANGES(range(QwtPlot::yLeft), QwtInterval(39.0, 61.0));

    shrinkLabels();
    press(onScale(QwtPlot::xBottom));
    move(onScale(QwtPlot::xBottom) - QPointF(5.0, 0.0));
    COMPARE_RANGES(range(QwtPlot::xBottom), QwtInterval(410.0, 590.0));
}

void tst_axisdrag_refusals::scalesWithoutARange_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<QwtScaleDiv>("division");
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)}) {
        QTest::addRow("empty %d", axis) << axis << QwtScaleDiv(50.0, 50.0);
        QTest::addRow("inverted %d", axis) << axis << QwtScaleDiv(60.0, 40.0);
    }
}

void tst_axisdrag_refusals::scalesWithoutARange()
{
    QFETCH(int, axis);
    QFETCH(QwtScaleDiv, division);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    const QPointF from = onScale(axis);
    press(from);
    m_plot->setAxisScaleDiv(axis, division);
    m_plot->updateAxes();
    m_plot->calls.clear();
    QSignalSpy autoScale(m_plot.get(), SIGNAL(autoScaleEnabled(bool)));
    for (const QPointF& offset : {QPointF(5.0, 5.0), QPointF(-5.0, -5.0)}) {
        move(from + offset);
        QCOMPARE(m_plot->calls, QStringList());
        QCOMPARE(range(axis), division.interval());
        QCOMPARE(autoScale.count(), 0);
    }
}

void tst_axisdrag_refusals::rangesThatCannotBeShown_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<QwtInterval>("view");
    QTest::addColumn<int>("maxMajor");
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)}) {
        // Of a little wider range the width, and one step over it, would be infinite.
        QTest::addRow("beyond the doubles, %d", axis) << axis << QwtInterval(-8.9e307, 8.9e307) << 8;
        QTest::addRow("not divisible, %d", axis) << axis << QwtInterval(-4.79e307, 4.79e307) << 1;
    }
}

void tst_axisdrag_refusals::rangesThatCannotBeShown()
{
    QFETCH(int, axis);
    QFETCH(QwtInterval, view);
    QFETCH(int, maxMajor);
    addData(*m_plot, -0.499 * largest, 0.499 * largest, -0.499 * largest, 0.499 * largest);
    const auto* quote = addCurve(*m_plot, 0, {{500.0, 0.0}, {500.0, 1.0}}, QStringLiteral("quote"));
    m_plot->setAxisMaxMajor(axis, maxMajor);
    show(axis, view);
    QCOMPARE(range(axis), view);
    QSignalSpy autoScale(m_plot.get(), SIGNAL(autoScaleEnabled(bool)));
    const QPointF from = onScale(axis);
    press(from);
    move(from + QPointF(10.0, 10.0));
    // Between the press and the refused place: it grows still.
    move(from + QPointF(5.0, 5.0));
    QCOMPARE(range(axis), view);
    QCOMPARE(m_plot->calls, QStringList());
    QCOMPARE(autoScale.count(), 0);
    QCOMPARE(quote->sample(1), QPointF(500.0, 1.0));

    move(from - QPointF(5.0, 5.0));
    COMPARE_RANGES(range(axis), QwtInterval(view.minValue() * 0.9, view.maxValue() * 0.9));
}

void tst_axisdrag_refusals::dataOfOneValue()
{
    addData(*m_plot, 0.0, 1000.0, 50.0, 50.0);
    press(onScale(QwtPlot::xBottom));
    move(onScale(QwtPlot::xBottom) + QPointF(5.0, 0.0));
    COMPARE_RANGES(range(QwtPlot::xBottom), QwtInterval(390.0, 610.0));
    press(onScale(QwtPlot::yLeft));
    move(onScale(QwtPlot::yLeft) - QPointF(0.0, 5.0));
    COMPARE_RANGES(range(QwtPlot::yLeft), QwtInterval(41.0, 59.0));
}

void tst_axisdrag_refusals::dataOfOnePrice()
{
    addData(*m_plot, 500.0, 500.0, 0.0, 100.0);
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)}) {
        press(onScale(axis));
        move(onScale(axis) + QPointF(5.0, 5.0));
        move(onScale(axis) - QPointF(5.0, 5.0));
    }
    COMPARE_RANGES(range(QwtPlot::xBottom), QwtInterval(400.0, 600.0));
    COMPARE_RANGES(range(QwtPlot::yLeft), QwtInterval(40.0, 60.0));
}

void tst_axisdrag_refusals::samplesThatAreNotFinite()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    addCurve(*m_plot, 9, {{450.0, 50.0}, {500.0, infinity}, {550.0, -infinity}}, QStringLiteral("bad"));
    press(onScale(QwtPlot::xBottom));
    move(onScale(QwtPlot::xBottom) + QPointF(5.0, 0.0));
    COMPARE_RANGES(range(QwtPlot::xBottom), QwtInterval(390.0, 610.0));
}

void tst_axisdrag_refusals::autoScaleIsResetFirst()
{
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    QVector<QwtInterval> seen;
    connect(m_plot.get(), QOverload<bool>::of(&PriceBased2dPlot::autoScaleEnabled), this,
        [&] { seen << range(QwtPlot::yLeft); });
    press(onScale(QwtPlot::yLeft));
    move(onScale(QwtPlot::yLeft) + QPointF(0.0, 5.0));
    QCOMPARE(seen, QVector<QwtInterval>{QwtInterval(40.0, 60.0)});
    COMPARE_RANGES(range(QwtPlot::yLeft), QwtInterval(39.0, 61.0));
}

void tst_axisdrag_refusals::labelsAreChosenAnew_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<int>("replots");
    // To choose labels takes one, to lay out the axis two, and to fit the values to the prices two before.
    QTest::newRow("values") << int(QwtPlot::yLeft) << 3;
    QTest::newRow("prices") << int(QwtPlot::xBottom) << 5;
}

void tst_axisdrag_refusals::labelsAreChosenAnew()
{
    QFETCH(int, axis);
    QFETCH(int, replots);
    addData(*m_plot, 0.0, 1000.0, 0.0, 100.0);
    m_plot->fixedRange = std::make_pair(1.0, 2.0);
    // The labels are still those of another range.
    m_plot->QwtPlot::setAxisScale(axis, 20.5, 29.5);
    m_plot->updateAxes();
    const QList<double> oldTicks = labelTicks(axis);
    m_plot->calls.clear();
    press(onScale(axis));
    move(onScale(axis) + QPointF(5.0, 5.0));
    QCOMPARE(m_plot->calls.count(QStringLiteral("replot")), replots);
    const QList<double> ticks = labelTicks(axis);
    QVERIFY(!ticks.isEmpty());
    QVERIFY(ticks != oldTicks);
    QVERIFY(range(axis).contains(ticks.first()) && range(axis).contains(ticks.last()));
}

PLOT2D_TEST_MAIN(tst_axisdrag_refusals)
#include "tst_axisdrag_refusals.moc"
