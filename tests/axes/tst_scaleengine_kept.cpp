#include "axes/scaledrawprobe.h"
#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotscaleengine.h>

namespace {

constexpr int bottomAxis = 2;
constexpr int leftAxis = 0;

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

/// A plot, and an engine and a scale draw of a vertical scale that are linked.
struct LinkedPlot {
    LinkedPlot()
    {
        plot.setAutoScaleEnabled(false);
        engine.setScaleDraw(&draw);
    }

    TestPlot plot;
    LinkedDraw draw;
    PriceBased2dPlotScaleEngine engine{&plot, leftAxis, 10};
};

}

/// When the division of before stays, since the labels of the next one would all read the same.
class tst_scaleengine_kept : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void narrowerDivisionIsNotTaken();
    void whatIsKept_data();
    void whatIsKept();
    void widthCountsAndNotThePlace();
    void keptDivisionLeavesTheCacheAlone();
    void keptOnlyWithItsConditions_data();
    void keptOnlyWithItsConditions();
    void stepsAsGoodAsZeroAreKept_data();
    void stepsAsGoodAsZeroAreKept();
    void divisionsOfBeforeAreNotKept_data();
    void divisionsOfBeforeAreNotKept();
    void keptDivisionIsAnchored();
};

void tst_scaleengine_kept::init()
{
    TestHost::createSecurities();
}

void tst_scaleengine_kept::cleanup()
{
    TestHost::dropSecurities();
}

void tst_scaleengine_kept::narrowerDivisionIsNotTaken()
{
    LinkedPlot linked;
    PriceBased2dPlotScaleEngine& engine = linked.engine;
    const QwtScaleDiv first = engine.divideScale(0, 100, 8, 5, 0);
    QVERIFY(first == QwtLinearScaleEngine(10).divideScale(0, 100, 8, 5, 0));
    QVERIFY(engine.divideScale(10, 20, 4, 2, 1) == first);
    linked.draw.setShrunk(false);
    const QwtScaleDiv narrow = QwtLinearScaleEngine(10).divideScale(10, 20, 4, 2, 1);
    QVERIFY(engine.divideScale(10, 20, 4, 2, 1) == narrow);
    // An engine that belongs to no plot keeps nothing.
    linked.draw.setShrunk(true);
    PriceBased2dPlotScaleEngine free(nullptr, leftAxis, 10);
    free.setScaleDraw(&linked.draw);
    QVERIFY(free.divideScale(0, 100, 8, 5, 0) == first);
    QVERIFY(free.divideScale(10, 20, 4, 2, 1) == narrow);
}

void tst_scaleengine_kept::whatIsKept_data()
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

void tst_scaleengine_kept::whatIsKept()
{
    QFETCH(double, lower);
    QFETCH(double, upper);
    QFETCH(bool, kept);
    LinkedPlot linked;
    PriceBased2dPlotScaleEngine& engine = linked.engine;
    const QwtScaleDiv first = engine.divideScale(0, 100, 8, 5, 0);
    const QwtScaleDiv second = QwtLinearScaleEngine(10).divideScale(lower, upper, 8, 5, 0);
    QVERIFY(engine.divideScale(lower, upper, 8, 5, 0) == (kept ? first : second));
}

void tst_scaleengine_kept::widthCountsAndNotThePlace()
{
    LinkedPlot linked;
    const QwtScaleDiv first = linked.engine.divideScale(1000, 1100, 8, 5, 0);
    QVERIFY(linked.engine.divideScale(0, 99, 8, 5, 0) == first);
    QVERIFY(
        linked.engine.divideScale(0, 101, 8, 5, 0) == QwtLinearScaleEngine(10).divideScale(0, 101, 8, 5, 0));
}

void tst_scaleengine_kept::keptDivisionLeavesTheCacheAlone()
{
    LinkedPlot linked;
    PriceBased2dPlotScaleEngine& engine = linked.engine;
    const QwtScaleDiv first = engine.divideScale(0, 100, 8, 5, 0);
    QVERIFY(engine.divideScale(10, 20, 8, 5, 0) == first);
    // Wider than the second request, narrower than the first.
    QVERIFY(engine.divideScale(10, 60, 8, 5, 0) == first);
    // A new division is the one to keep next.
    const QwtScaleDiv wide = engine.divideScale(0, 200, 8, 5, 0);
    QCOMPARE(wide.upperBound(), 200.0);
    QVERIFY(engine.divideScale(0, 100, 8, 5, 0) == wide);
}

void tst_scaleengine_kept::keptOnlyWithItsConditions_data()
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

void tst_scaleengine_kept::keptOnlyWithItsConditions()
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

void tst_scaleengine_kept::stepsAsGoodAsZeroAreKept_data()
{
    QTest::addColumn<double>("step");
    QTest::addColumn<bool>("kept");
    QTest::newRow("zero") << 0.0 << true;
    QTest::newRow("next to zero") << -1e-12 << true;
    QTest::newRow("below that") << -1.5e-12 << false;
}

void tst_scaleengine_kept::stepsAsGoodAsZeroAreKept()
{
    QFETCH(double, step);
    QFETCH(bool, kept);
    LinkedPlot linked;
    PriceBased2dPlotScaleEngine& engine = linked.engine;
    const QwtScaleDiv first = engine.divideScale(0, 1e-3, 1, 1, step);
    const QwtScaleDiv second = QwtLinearScaleEngine(10).divideScale(1e-4, 2e-4, 1, 1, 0);
    QVERIFY(engine.divideScale(1e-4, 2e-4, 1, 1, 0) == (kept ? first : second));
}

void tst_scaleengine_kept::divisionsOfBeforeAreNotKept_data()
{
    QTest::addColumn<bool>("autoScale");
    QTest::addColumn<bool>("linked");
    QTest::newRow("no scale draw") << false << false;
    QTest::newRow("auto-scale") << true << true;
    QTest::newRow("auto-scale, and no scale draw") << true << false;
}

void tst_scaleengine_kept::divisionsOfBeforeAreNotKept()
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

void tst_scaleengine_kept::keptDivisionIsAnchored()
{
    LinkedPlot linked;
    PriceBased2dPlotScaleEngine& engine = linked.engine;
    engine.divideScale(0, 100, 8, 5, 10);
    engine.setRescaleFactor(TestHost::number(QStringLiteral("24")));
    // The bounds that count are those of the request.
    const QwtScaleDiv kept = engine.divideScale(10, 40, 8, 5, 0);
    QCOMPARE(kept.upperBound(), 100.0);
    QCOMPARE(kept.ticks(QwtScaleDiv::MajorTick), (QList<double>{14, 24, 34}));
}

PLOT2D_TEST_MAIN(tst_scaleengine_kept)

#include "tst_scaleengine_kept.moc"
