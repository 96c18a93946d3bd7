#include "axes/axisrandom.h"
#include "axes/slowaxes.h"
#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotscaleengine.h>

#include <cmath>

using Values = QList<double>;

namespace {

constexpr int bottomAxis = 2;
constexpr int leftAxis = 0;

decimal price(const char* text)
{
    return TestHost::number(QString::fromLatin1(text));
}

Values majorTicks(const QwtScaleDiv& division)
{
    return division.ticks(QwtScaleDiv::MajorTick);
}

void createSecurities(short strikeDecimals)
{
    TestHost::Columns columns = TestHost::securitiesColumns();
    for (TableColumnDef& column : columns) {
        if (column.name == QLatin1String("strike"))
            column.decimals = strikeDecimals;
    }
    TestHost::createSecurities(columns);
}

}

/// How the scale engine divides, and what it anchors the ticks on.
class tst_scaleengine : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void strikePrecision_data();
    void strikePrecision();
    void withoutFactorItIsQwts();
    void anchored_data();
    void anchored();
    void anchoredAsTheRulesSay();
    void precisionBelowOneAnchorsNothing_data();
    void precisionBelowOneAnchorsNothing();
    void factorIsOnlyStored();
    void plotsEngineKeepsNoDivision();
};

void tst_scaleengine::init()
{
    createSecurities(2);
}

void tst_scaleengine::cleanup()
{
    TestHost::dropSecurities();
}

void tst_scaleengine::strikePrecision_data()
{
    QTest::addColumn<int>("decimals");
    for (const int decimals : {0, 1, 2, 5, 18})
        QTest::addRow("%d", decimals) << decimals;
}

void tst_scaleengine::strikePrecision()
{
    QFETCH(int, decimals);
    createSecurities(static_cast<short>(decimals));
    TestPlot plot;
    QCOMPARE(PriceBased2dPlotScaleEngine(&plot, bottomAxis, 10).strikePrecision(), decimals);
    QCOMPARE(PriceBased2dPlotScaleEngine(nullptr, bottomAxis, 10).strikePrecision(), -1);
    TestHost::dropSecurities();
    QCOMPARE(PriceBased2dPlotScaleEngine(&plot, bottomAxis, 10).strikePrecision(), -1);
}

void tst_scaleengine::withoutFactorItIsQwts()
{
    TestPlot plot;
    const PriceBased2dPlotScaleEngine engine(&plot, bottomAxis, 10);
    QVERIFY(engine.rescaleFactor() == decimal::zero);
    const QwtLinearScaleEngine qwt(10);
    AxisRandom random(5);
    for (int i = 0; i < 2000; ++i) {
        const double x1 = random.uniform(-1e5, 1e5);
        const double x2 = random.uniform(-1e5, 1e5);
        const int major = random.integer(0, 20);
        const int minor = random.integer(0, 10);
        const double step = random.chance(2) ? 0.0 : (x2 - x1) / random.uniform(1, 30);
        QVERIFY(
            engine.divideScale(x1, x2, major, minor, step) == qwt.divideScale(x1, x2, major, minor, step));
    }
}

void tst_scaleengine::anchored_data()
{
    QTest::addColumn<QByteArray>("factor");
    QTest::addColumn<double>("x1");
    QTest::addColumn<double>("x2");
    QTest::addColumn<Values>("expected");

    // Of a step of 10.
    const auto row = [](const char* name, const char* factor, double x1, double x2, const Values& expected) {
        QTest::newRow(name) << QByteArray(factor) << x1 << x2 << expected;
    };
    row("none", "0", 100, 140, {100, 110, 120, 130, 140});
    row("on a tick", "120", 100, 140, {100, 110, 120, 130, 140});
    row("above a tick", "122", 100, 140, {102, 112, 122, 132});
    row("below a tick", "118", 100, 140, {108, 118, 128, 138});
    row("midway", "125", 100, 140, {105, 115, 125, 135});
    row("counts as an integer", "120.0000001", 100, 140, {100, 110, 120, 130, 140});
    row("counts as the integer above", "119.9999", 100, 140, {100, 110, 120, 130, 140});
    row("an integer off the ticks", "122.0000001", 100, 140, {102, 112, 122, 132});
    row("no integer", "122.5", 100, 140, {102.5, 112.5, 122.5, 132.5});
    row("below the range", "99", 100, 140, {100, 110, 120, 130, 140});
    row("above the range", "141", 100, 140, {100, 110, 120, 130, 140});
    row("on the lower bound", "103", 103, 140, {113, 123, 133});
    row("on the upper bound", "137", 100, 137, {107, 117, 127});
    row("beyond 32 bits", "3000000005", 3000000000.0, 3000000040.0,
        {3000000000.0, 3000000010.0, 3000000020.0, 3000000030.0, 3000000040.0});
    row("negative", "-122.0000001", -140, -100, {-132, -122, -112, -102});
}

void tst_scaleengine::anchored()
{
    QFETCH(QByteArray, factor);
    QFETCH(double, x1);
    QFETCH(double, x2);
    TestPlot plot;
    PriceBased2dPlotScaleEngine engine(&plot, bottomAxis, 10);
    engine.setRescaleFactor(price(factor.constData()));
    const QwtScaleDiv division = engine.divideScale(x1, x2, 8, 5, 10.0);
    QTEST(majorTicks(division), "expected");
    QCOMPARE(division.lowerBound(), x1);
    QCOMPARE(division.upperBound(), x2);
    // A range without width has no ticks to anchor.
    QVERIFY(engine.divideScale(x1, x1, 8, 5, 0.0).isEmpty());

    // Inverted it is Qwt's.
    const QwtScaleDiv inverted = engine.divideScale(x2, x1, 8, 5, 10.0);
    QVERIFY(inverted == QwtLinearScaleEngine(10).divideScale(x2, x1, 8, 5, 10.0));
}

void tst_scaleengine::anchoredAsTheRulesSay()
{
    TestPlot plot;
    PriceBased2dPlotScaleEngine engine(&plot, bottomAxis, 10);
    const QwtLinearScaleEngine qwt(10);
    AxisRandom random(6);
    int exact = 0;
    for (int i = 0; i < 20000; ++i) {
        const double x1 = random.uniform(-1000, 1000);
        const double x2 = x1 + std::pow(10.0, random.uniform(-4, 5));
        const double step = random.chance(2) ? 0.0 : (x2 - x1) / random.uniform(1, 30);
        const decimal factor
            = decimal::fromDouble(random.chance(8) ? x1 : x1 + (x2 - x1) * random.uniform(-0.1, 1.1),
                static_cast<short>(random.integer(0, 6)));
        engine.setRescaleFactor(factor);
        const QwtScaleDiv division = engine.divideScale(x1, x2, 8, 5, step);
        const QwtScaleDiv plain = qwt.divideScale(x1, x2, 8, 5, step);
        const SlowAxes::Ticks expected = SlowAxes::anchored(
            {{plain.ticks(0), plain.ticks(1), plain.ticks(2)}}, factor.toDouble(), 2, x1, x2);
        for (int type = 0; type < QwtScaleDiv::NTickTypes; ++type)
            QVERIFY2(division.ticks(type) == expected.lists[type], QByteArray::number(i).constData());
        exact += majorTicks(division).contains(factor.toDouble());
    }
    QVERIFY(exact > 2000);
}

void tst_scaleengine::precisionBelowOneAnchorsNothing_data()
{
    QTest::addColumn<bool>("withPlot");
    QTest::newRow("precision 0") << true;
    QTest::newRow("no strikes") << false;
}

void tst_scaleengine::precisionBelowOneAnchorsNothing()
{
    QFETCH(bool, withPlot);
    createSecurities(0);
    TestPlot plot;
    PriceBased2dPlotScaleEngine engine(withPlot ? &plot : nullptr, bottomAxis, 10);
    QCOMPARE(engine.strikePrecision(), withPlot ? 0 : -1);
    engine.setRescaleFactor(price("122.5"));
    QVERIFY(engine.divideScale(100, 140, 8, 5, 0) == QwtLinearScaleEngine(10).divideScale(100, 140, 8, 5, 0));
}

void tst_scaleengine::factorIsOnlyStored()
{
    TestPlot plot;
    plot.setAxisScale(QwtPlot::xBottom, 100, 140, 10);
    plot.replot();
    plot.calls.clear();
    const QwtScaleDiv before = plot.axisScaleDiv(QwtPlot::xBottom);
    plot.setRescaleFactor(price("122.5"));
    QVERIFY(plot.axisScaleDiv(QwtPlot::xBottom) == before);
    QVERIFY(plot.calls.isEmpty());
    plot.setAxisScale(QwtPlot::xBottom, 100, 140, 10);
    plot.replot();
    QCOMPARE(majorTicks(plot.axisScaleDiv(QwtPlot::xBottom)), (Values{102.5, 112.5, 122.5, 132.5}));
    // The vertical axis knows nothing of it.
    plot.setAxisScale(QwtPlot::yLeft, 100, 140, 10);
    plot.replot();
    QCOMPARE(majorTicks(plot.axisScaleDiv(QwtPlot::yLeft)), (Values{100, 110, 120, 130, 140}));
}

void tst_scaleengine::plotsEngineKeepsNoDivision()
{
    TestPlot plot;
    plot.setAutoScaleEnabled(false);
    for (const double upper : {200.0, 110.0, 150.0}) {
        plot.setAxisScale(QwtPlot::xBottom, 100, upper, 0);
        plot.replot();
        QCOMPARE(plot.axisScaleDiv(QwtPlot::xBottom).upperBound(), upper);
    }
}

PLOT2D_TEST_MAIN(tst_scaleengine)

#include "tst_scaleengine.moc"
