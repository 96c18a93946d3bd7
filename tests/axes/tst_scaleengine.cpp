#include "axes/axisrandom.h"
#include "axes/scaledrawprobe.h"
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

/// A scale draw under which all labels read the same, or none.
class LinkedDraw : public ScaleDrawProbe {
public:
    LinkedDraw()
        : ScaleDrawProbe(leftAxis)
    {
        setShrunk(true);
    }

    void setShrunk(bool shrunk)
    {
        text = [shrunk](double value) { return shrunk ? QStringLiteral("100") : QString::number(value); };
    }
};

}

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
    void narrowerDivisionIsNotTaken();
    void whatIsKept_data();
    void whatIsKept();
    void keptDivisionLeavesTheCacheAlone();
    void keptOnlyWithItsConditions_data();
    void keptOnlyWithItsConditions();
    void stepsAsGoodAsZeroAreKept_data();
    void stepsAsGoodAsZeroAreKept();
    void divisionsOfBeforeAreNotKept_data();
    void divisionsOfBeforeAreNotKept();
    void keptDivisionIsAnchored();
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

void tst_scaleengine::narrowerDivisionIsNotTaken()
{
    TestPlot plot;
    plot.setAutoScaleEnabled(false);
    LinkedDraw draw;
    PriceBased2dPlotScaleEngine engine(&plot, leftAxis, 10);
    engine.setScaleDraw(&draw);
    const QwtScaleDiv first = engine.divideScale(0, 100, 8, 5, 0);
    QVERIFY(first == QwtLinearScaleEngine(10).divideScale(0, 100, 8, 5, 0));
    QVERIFY(engine.divideScale(10, 20, 4, 2, 1) == first);
    draw.setShrunk(false);
    const QwtScaleDiv narrow = QwtLinearScaleEngine(10).divideScale(10, 20, 4, 2, 1);
    QVERIFY(engine.divideScale(10, 20, 4, 2, 1) == narrow);
    // An engine that belongs to no plot keeps nothing.
    draw.setShrunk(true);
    PriceBased2dPlotScaleEngine free(nullptr, leftAxis, 10);
    free.setScaleDraw(&draw);
    QVERIFY(free.divideScale(0, 100, 8, 5, 0) == first);
    QVERIFY(free.divideScale(10, 20, 4, 2, 1) == narrow);
}

void tst_scaleengine::whatIsKept_data()
{
    QTest::addColumn<double>("lower");
    QTest::addColumn<double>("upper");
    QTest::addColumn<bool>("kept");

    // After a division from 0 to 100.
    QTest::newRow("narrower") << 10.0 << 20.0 << true;
    QTest::newRow("barely narrower") << 0.0 << 99.999 << true;
    QTest::newRow("fuzzily as wide") << 0.0 << 99.99999999999 << false;
    QTest::newRow("as wide") << 50.0 << 150.0 << false;
    QTest::newRow("wider") << 0.0 << 200.0 << false;
    QTest::newRow("narrower and elsewhere") << 1000.0 << 1010.0 << true;
    // No candidate, so nothing reads the same.
    QTest::newRow("inverted") << 20.0 << 10.0 << false;
}

void tst_scaleengine::whatIsKept()
{
    QFETCH(double, lower);
    QFETCH(double, upper);
    QFETCH(bool, kept);
    TestPlot plot;
    plot.setAutoScaleEnabled(false);
    LinkedDraw draw;
    PriceBased2dPlotScaleEngine engine(&plot, leftAxis, 10);
    engine.setScaleDraw(&draw);
    const QwtScaleDiv first = engine.divideScale(0, 100, 8, 5, 0);
    const QwtScaleDiv second = QwtLinearScaleEngine(10).divideScale(lower, upper, 8, 5, 0);
    QVERIFY(engine.divideScale(lower, upper, 8, 5, 0) == (kept ? first : second));
}

void tst_scaleengine::keptDivisionLeavesTheCacheAlone()
{
    TestPlot plot;
    plot.setAutoScaleEnabled(false);
    LinkedDraw draw;
    PriceBased2dPlotScaleEngine engine(&plot, leftAxis, 10);
    engine.setScaleDraw(&draw);
    const QwtScaleDiv first = engine.divideScale(0, 100, 8, 5, 0);
    QVERIFY(engine.divideScale(10, 20, 8, 5, 0) == first);
    // Wider than the second request, narrower than the first.
    QVERIFY(engine.divideScale(10, 60, 8, 5, 0) == first);
    // A new division is the one to keep next.
    const QwtScaleDiv wide = engine.divideScale(0, 200, 8, 5, 0);
    QCOMPARE(wide.upperBound(), 200.0);
    QVERIFY(engine.divideScale(0, 100, 8, 5, 0) == wide);
}

void tst_scaleengine::keptOnlyWithItsConditions_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<bool>("autoScale");
    QTest::addColumn<bool>("linked");
    QTest::addColumn<int>("major");
    QTest::addColumn<int>("minor");
    QTest::addColumn<double>("step");
    QTest::addColumn<bool>("kept");

    const auto row = [](const char* name, int axis, bool autoScale, bool linked, int major, int minor,
                         double step, bool kept) {
        QTest::newRow(name) << axis << autoScale << linked << major << minor << step << kept;
    };
    row("all met", leftAxis, false, true, 8, 5, 0.0, true);
    row("another axis", bottomAxis, false, true, 8, 5, 0.0, false);
    row("auto-scale", leftAxis, true, true, 8, 5, 0.0, false);
    row("no scale draw", leftAxis, false, false, 8, 5, 0.0, false);
    row("no major steps", leftAxis, false, true, 0, 5, 10.0, false);
    row("no minor steps", leftAxis, false, true, 8, 0, 0.0, false);
    row("one of each", leftAxis, false, true, 1, 1, 0.0, true);
    row("a step", leftAxis, false, true, 8, 5, 10.0, true);
    row("a step below one", leftAxis, false, true, 8, 5, 0.5, true);
    row("negative step", leftAxis, false, true, 8, 5, -10.0, false);
    row("negative step above minus one", leftAxis, false, true, 8, 5, -0.5, false);
}

void tst_scaleengine::keptOnlyWithItsConditions()
{
    QFETCH(int, axis);
    QFETCH(bool, autoScale);
    QFETCH(bool, linked);
    QFETCH(int, major);
    QFETCH(int, minor);
    QFETCH(double, step);
    QFETCH(bool, kept);
    TestPlot plot;
    plot.setAutoScaleEnabled(autoScale);
    LinkedDraw draw;
    // Labels for the bottom axis to judge by.
    draw.setScaleDiv(QwtScaleDiv(0, 100, {}, {}, {10, 20}));
    draw.updateLabels();
    PriceBased2dPlotScaleEngine engine(&plot, axis, 10);
    if (linked)
        engine.setScaleDraw(&draw);
    const QwtScaleDiv first = engine.divideScale(0, 100, major, minor, step);
    const QwtScaleDiv second = QwtLinearScaleEngine(10).divideScale(10, 20, 8, 5, 0);
    QVERIFY(engine.divideScale(10, 20, 8, 5, 0) == (kept ? first : second));
}

void tst_scaleengine::stepsAsGoodAsZeroAreKept_data()
{
    QTest::addColumn<double>("step");
    QTest::addColumn<bool>("kept");
    QTest::newRow("zero") << 0.0 << true;
    QTest::newRow("next to zero") << -1e-12 << true;
    QTest::newRow("below that") << -1.5e-12 << false;
}

void tst_scaleengine::stepsAsGoodAsZeroAreKept()
{
    QFETCH(double, step);
    QFETCH(bool, kept);
    TestPlot plot;
    plot.setAutoScaleEnabled(false);
    LinkedDraw draw;
    PriceBased2dPlotScaleEngine engine(&plot, leftAxis, 10);
    engine.setScaleDraw(&draw);
    const QwtScaleDiv first = engine.divideScale(0, 1e-3, 1, 1, step);
    const QwtScaleDiv second = QwtLinearScaleEngine(10).divideScale(1e-4, 2e-4, 1, 1, 0);
    QVERIFY(engine.divideScale(1e-4, 2e-4, 1, 1, 0) == (kept ? first : second));
}

void tst_scaleengine::divisionsOfBeforeAreNotKept_data()
{
    QTest::addColumn<bool>("autoScale");
    QTest::addColumn<bool>("linked");
    QTest::newRow("no scale draw") << false << false;
    QTest::newRow("auto-scale") << true << true;
    QTest::newRow("auto-scale, and no scale draw") << true << false;
}

void tst_scaleengine::divisionsOfBeforeAreNotKept()
{
    QFETCH(bool, autoScale);
    QFETCH(bool, linked);
    TestPlot plot;
    plot.setAutoScaleEnabled(autoScale);
    LinkedDraw draw;
    PriceBased2dPlotScaleEngine engine(&plot, leftAxis, 10);
    engine.setScaleDraw(linked ? &draw : nullptr);
    engine.divideScale(0, 100, 8, 5, 0);

    engine.setScaleDraw(&draw);
    plot.setAutoScaleEnabled(false);
    const QwtScaleDiv first = engine.divideScale(10, 20, 8, 5, 0);
    QVERIFY(first == QwtLinearScaleEngine(10).divideScale(10, 20, 8, 5, 0));
    // This one is kept.
    QVERIFY(engine.divideScale(12, 14, 8, 5, 0) == first);
}

void tst_scaleengine::keptDivisionIsAnchored()
{
    TestPlot plot;
    plot.setAutoScaleEnabled(false);
    LinkedDraw draw;
    PriceBased2dPlotScaleEngine engine(&plot, leftAxis, 10);
    engine.setScaleDraw(&draw);
    engine.divideScale(0, 100, 8, 5, 10);
    engine.setRescaleFactor(price("24"));
    // The bounds that count are those of the request.
    const QwtScaleDiv kept = engine.divideScale(10, 40, 8, 5, 0);
    QCOMPARE(kept.upperBound(), 100.0);
    QCOMPARE(majorTicks(kept), (Values{14, 24, 34}));
}

PLOT2D_TEST_MAIN(tst_scaleengine)

#include "tst_scaleengine.moc"
