#include "support/childrun.h"
#include "support/qtversions.h"
#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotpanner.h>
#include <plot2d/pricebased2dplotpointmanager.h>
#include <plot2d/pricebased2dplotscaledraw.h>
#include <plot2d/pricebased2dplotscaleengine.h>

#include <qwt_plot_canvas.h>
#include <qwt_scale_widget.h>
#include <qwt_text.h>

namespace {

PriceBased2dPlotScaleDraw* ownScaleDraw(TestPlot& plot, int axis)
{
    return dynamic_cast<PriceBased2dPlotScaleDraw*>(plot.axisScaleDraw(axis));
}

PriceBased2dPlotPanner* panner(const TestPlot& plot)
{
    return plot.canvas()->findChild<PriceBased2dPlotPanner*>();
}

}

class tst_pricebased2dplot_setup : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void constructorsTakeTitleAndParent();
    void metaObjectIsNamed();
    void metaObjectMethods_data();
    void metaObjectMethods();
    void metaObjectHasNoOtherMethods();
    void stateAfterConstruction();
    void priceIntervalIsAMetaType();
    void priceIntervalIsAMetaTypeFromTheFirstPlotOn();
    void priceIntervalIsAMetaTypeFromTheFirstManagerOn();

    void withoutInitNothingIsCreated();
    void withoutInitSettersWork();
    void withoutInitOperationsDoNothing();
    void initPlotCanComeLater();

    void pannerIsOnTheCanvas();
    void pannerSignalsAreRelayedOnce();
    void scaleEngineIsOfThePriceAxisOnly();
    void scaleDrawsAreOfBothUsedAxesOnly();
    void eventFilterIsOnThePriceAxis();
    void canvasAndStyleSheetsAreWhite();
    void autoReplotIsSwitchedOff();
};

void tst_pricebased2dplot_setup::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_pricebased2dplot_setup::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_pricebased2dplot_setup::constructorsTakeTitleAndParent()
{
    QWidget parent;
    const auto* titled = new TestPlot(true, QwtText(QStringLiteral("Smile")), &parent);
    const auto* untitled = new TestPlot(true, &parent);
    QCOMPARE(titled->title().text(), QStringLiteral("Smile"));
    QCOMPARE(titled->parentWidget(), &parent);
    QVERIFY(untitled->title().isEmpty());
    QCOMPARE(untitled->parentWidget(), &parent);
    for (const TestPlot* plot : {titled, untitled}) {
        QVERIFY(plot->securitiesTable());
        QVERIFY(panner(*plot));
    }
}

void tst_pricebased2dplot_setup::metaObjectIsNamed()
{
    QCOMPARE(PriceBased2dPlot::staticMetaObject.className(), "PriceBased2dPlot");
    QCOMPARE(PriceBased2dPlot::staticMetaObject.superClass(), &QwtPlot::staticMetaObject);
}

void tst_pricebased2dplot_setup::metaObjectMethods_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<QList<QByteArray>>("names");

    const int signal = QMetaMethod::Signal;
    const int slot = QMetaMethod::Slot;
    QTest::newRow("updateAxisLabels")
        << 0 << signal << QByteArray("updateAxisLabels()") << QList<QByteArray>();
    QTest::newRow("autoScaleEnabled")
        << 1 << signal << QByteArray("autoScaleEnabled(bool)") << QList<QByteArray>{"enable"};
    QTest::newRow("setCurveVisible") << 2 << slot << QByteArray("setCurveVisible(QString,bool)")
                                     << QList<QByteArray>{"curveTitle", "visible"};
    QTest::newRow("setAutoScaleEnabled")
        << 3 << slot << QByteArray("setAutoScaleEnabled(bool)") << QList<QByteArray>{"enable"};
    QTest::newRow("updateScaleLabels")
        << 4 << slot << QByteArray("updateScaleLabels()") << QList<QByteArray>();
}

void tst_pricebased2dplot_setup::metaObjectMethods()
{
    QFETCH(int, index);
    QFETCH(int, kind);
    QFETCH(QByteArray, signature);
    QFETCH(QList<QByteArray>, names);
    const QMetaObject& meta = PriceBased2dPlot::staticMetaObject;
    const QMetaMethod method = meta.method(meta.methodOffset() + index);
    QCOMPARE(method.methodSignature(), signature);
    QCOMPARE(static_cast<int>(method.methodType()), kind);
    QCOMPARE(method.parameterNames(), names);
    QCOMPARE(method.access(), QMetaMethod::Public);
}

void tst_pricebased2dplot_setup::metaObjectHasNoOtherMethods()
{
    const QMetaObject& meta = PriceBased2dPlot::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 5);
}

void tst_pricebased2dplot_setup::stateAfterConstruction()
{
    const TestPlot plot;
    QVERIFY(!plot.picker());
    QVERIFY(plot.m_hostContext.isNull());
    QVERIFY(plot.baseCode().isEmpty());
    QVERIFY(plot.securitiesTable());
    const PriceInterval interval = plot.priceInterval();
    QCOMPARE(interval.minPrice, 1.7976931348623157e308);
    QCOMPARE(interval.maxPrice, -1.7976931348623157e308);
    QCOMPARE(interval.minStep, 0.0);
    QVERIFY(!interval.valid);
    QVERIFY(plot.getFuture().isNull());
}

void tst_pricebased2dplot_setup::priceIntervalIsAMetaType()
{
    const TestPlot plot;
    QCOMPARE(TestVersions::typeNamed("PriceInterval"), qMetaTypeId<PriceInterval>());
}

void tst_pricebased2dplot_setup::priceIntervalIsAMetaTypeFromTheFirstPlotOn()
{
    // Once registered a type stays so until the process ends.
    if (!TestSupport::isChild()) {
        const TestSupport::ChildRun run
            = TestSupport::repeatRowInChild(QProcessEnvironment::systemEnvironment());
        QVERIFY2(run.passed(), run.output.constData());
        return;
    }
    QCOMPARE(TestVersions::typeNamed("PriceInterval"), int(QMetaType::UnknownType));
    const TestPlot plot(false);
    const int type = TestVersions::typeNamed("PriceInterval");
    QVERIFY(type != QMetaType::UnknownType);
    QCOMPARE(type, qMetaTypeId<PriceInterval>());
}

void tst_pricebased2dplot_setup::priceIntervalIsAMetaTypeFromTheFirstManagerOn()
{
    if (!TestSupport::isChild()) {
        const TestSupport::ChildRun run
            = TestSupport::repeatRowInChild(QProcessEnvironment::systemEnvironment());
        QVERIFY2(run.passed(), run.output.constData());
        return;
    }
    QCOMPARE(TestVersions::typeNamed("PriceInterval"), int(QMetaType::UnknownType));
    const PriceBased2dPlotPointManager manager(false, nullptr);
    QVERIFY(TestVersions::typeNamed("PriceInterval") != QMetaType::UnknownType);
}

void tst_pricebased2dplot_setup::withoutInitNothingIsCreated()
{
    TestPlot plot(false);
    QVERIFY(!panner(plot));
    QVERIFY(!ownScaleDraw(plot, QwtPlot::xBottom));
    QVERIFY(!ownScaleDraw(plot, QwtPlot::yLeft));
    QVERIFY(!dynamic_cast<PriceBased2dPlotScaleEngine*>(plot.axisScaleEngine(QwtPlot::xBottom)));
    QVERIFY(plot.styleSheet().isEmpty());
    QVERIFY(plot.securitiesTable());
}

void tst_pricebased2dplot_setup::withoutInitSettersWork()
{
    TestPlot plot(false);
    const PriceInterval interval{100.0, 110.0, 5.0, true};
    plot.setPriceInterval(interval);
    QVERIFY(plot.priceInterval() == interval);
    plot.setBaseCode(QStringLiteral("Amber"));
    QCOMPARE(plot.baseCode(), QStringLiteral("Amber"));
    plot.setIsinId(10);
    QVERIFY(plot.baseCode().isEmpty());
    plot.setZoomEnabled(false);
}

void tst_pricebased2dplot_setup::withoutInitOperationsDoNothing()
{
    TestPlot plot(false);
    QSignalSpy spy(&plot, SIGNAL(autoScaleEnabled(bool)));
    QVERIFY(!plot.autoScaleEnabled());
    plot.setAutoScaleEnabled(true);
    QVERIFY(!plot.autoScaleEnabled());
    plot.resetAutoScale();
    plot.setTrackerMode();
    plot.resetTrackerMode();
    plot.setTrackerColor(Qt::red);
    plot.setCanvasObservers();
    plot.setCurKotirEnabled(true);
    plot.setCurKotirValue(100.0);
    plot.setRescaleFactor(decimal());
    plot.updateAxisWidgets();
    plot.updateScaleLabels();
    QVERIFY(!plot.getTrackerColor().isValid());
    QCOMPARE(plot.priceStep(), -1.0);
    QVERIFY(!plot.conversionEnabled(QwtPlot::xBottom));
    QVERIFY(!plot.conversionEnabled(QwtPlot::yLeft));
    QVERIFY(plot.xAxisConvertedValue(1.0).isEmpty());
    QVERIFY(plot.xAxisMetricUnit().isEmpty());
    QCOMPARE(spy.count(), 0);
}

void tst_pricebased2dplot_setup::initPlotCanComeLater()
{
    TestPlot plot(false);
    plot.initPlot();
    QVERIFY(panner(plot));
    QVERIFY(ownScaleDraw(plot, QwtPlot::xBottom));
}

void tst_pricebased2dplot_setup::pannerIsOnTheCanvas()
{
    const TestPlot plot;
    QCOMPARE(plot.findChildren<PriceBased2dPlotPanner*>().size(), 1);
    const PriceBased2dPlotPanner* own = panner(plot);
    QVERIFY(own);
    QCOMPARE(own->parent(), static_cast<const QObject*>(plot.canvas()));
    Qt::MouseButton button = Qt::NoButton;
    Qt::KeyboardModifiers modifiers = Qt::ShiftModifier;
    own->getMouseButton(button, modifiers);
    QCOMPARE(button, Qt::LeftButton);
    QCOMPARE(modifiers, Qt::KeyboardModifiers(Qt::NoModifier));
}

void tst_pricebased2dplot_setup::pannerSignalsAreRelayedOnce()
{
    TestPlot plot;
    QSignalSpy labels(&plot, SIGNAL(updateAxisLabels()));
    QSignalSpy autoScale(&plot, SIGNAL(autoScaleEnabled(bool)));

    Q_EMIT panner(plot)->updateLabels();
    QCOMPARE(labels.count(), 1);
    QCOMPARE(autoScale.count(), 0);
    Q_EMIT panner(plot)->autoScaleEnabled(false);
    Q_EMIT panner(plot)->autoScaleEnabled(true);
    QCOMPARE(autoScale.count(), 2);
    QCOMPARE(autoScale.at(0).at(0).toBool(), false);
    QCOMPARE(autoScale.at(1).at(0).toBool(), true);
    QCOMPARE(labels.count(), 1);

    QVERIFY(!connect(
        panner(plot), SIGNAL(updateLabels()), &plot, SIGNAL(updateAxisLabels()), Qt::UniqueConnection));
    QVERIFY(!connect(panner(plot), SIGNAL(autoScaleEnabled(bool)), &plot, SIGNAL(autoScaleEnabled(bool)),
        Qt::UniqueConnection));
}

void tst_pricebased2dplot_setup::scaleEngineIsOfThePriceAxisOnly()
{
    TestPlot plot;
    const auto* engine = dynamic_cast<PriceBased2dPlotScaleEngine*>(plot.axisScaleEngine(QwtPlot::xBottom));
    QVERIFY(engine);
    QCOMPARE(engine->base(), 10u);
    for (const int axis : {QwtPlot::yLeft, QwtPlot::yRight, QwtPlot::xTop})
        QVERIFY(!dynamic_cast<PriceBased2dPlotScaleEngine*>(plot.axisScaleEngine(axis)));
}

void tst_pricebased2dplot_setup::scaleDrawsAreOfBothUsedAxesOnly()
{
    TestPlot plot;
    QVERIFY(ownScaleDraw(plot, QwtPlot::xBottom));
    QVERIFY(ownScaleDraw(plot, QwtPlot::yLeft));
    QVERIFY(ownScaleDraw(plot, QwtPlot::xBottom) != ownScaleDraw(plot, QwtPlot::yLeft));
    QVERIFY(!ownScaleDraw(plot, QwtPlot::yRight));
    QVERIFY(!ownScaleDraw(plot, QwtPlot::xTop));
}

void tst_pricebased2dplot_setup::eventFilterIsOnThePriceAxis()
{
    TestPlot plot;
    for (int axis = 0; axis < QwtPlot::axisCnt; ++axis) {
        QEvent event(QEvent::User);
        QCoreApplication::sendEvent(plot.axisWidget(axis), &event);
    }
    QCOMPARE(plot.filtered, QVector<QObject*>{plot.axisWidget(QwtPlot::xBottom)});
}

void tst_pricebased2dplot_setup::canvasAndStyleSheetsAreWhite()
{
    const TestPlot plot;
    QCOMPARE(plot.canvasBackground(), QBrush(Qt::white));
    const QString sheet = QStringLiteral("QWidget { background-color: #ffffff }");
    QCOMPARE(plot.styleSheet(), sheet);
    QCOMPARE(plot.axisWidget(QwtPlot::xBottom)->styleSheet(), sheet);
    QCOMPARE(plot.axisWidget(QwtPlot::yLeft)->styleSheet(), sheet);
    QVERIFY(plot.axisWidget(QwtPlot::yRight)->styleSheet().isEmpty());
    QVERIFY(plot.axisWidget(QwtPlot::xTop)->styleSheet().isEmpty());
}

void tst_pricebased2dplot_setup::autoReplotIsSwitchedOff()
{
    TestPlot plot(false);
    plot.setAutoReplot(true);
    plot.initPlot();
    QVERIFY(!plot.autoReplot());
}

PLOT2D_TEST_MAIN(tst_pricebased2dplot_setup)
#include "tst_pricebased2dplot_setup.moc"
