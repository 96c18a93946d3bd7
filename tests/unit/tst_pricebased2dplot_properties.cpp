#include "support/paintcounter.h"
#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotpanner.h>
#include <plot2d/pricebased2dplotscaledraw.h>

#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
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

QwtPlotGrid* addGrid(TestPlot& plot)
{
    auto* grid = new QwtPlotGrid;
    grid->attach(&plot);
    return grid;
}

}

/// The setters of a plot, and what they leave alone.
class tst_pricebased2dplot_properties : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void autoScaleIsThePanners();
    void resetAutoScaleAsks();
    void resetAutoScaleOffEmitsNothing();
    void minimumSizeHintIsFixed();
    void gridVisibleActsOnTheFirstGrid();
    void gridEnabledThenDisabled();
    void gridDisabledKeepsTheMinorPen();
    void gridEnabledActsOnTheFirstGrid();
    void gridOperationsWithoutGrid();
    void updateScaleLabelsReplotsOnce();
    void updateAxisWidgetsReplotsTwice();
    void updateScaleLabelsChoosesThemAnew();
    void updateScaleLabelsDividesTheAxes();
    void updateAxisWidgetsChoosesLabelsOfPrices();
    void updateAxisWidgetsDividesTheAxes();
    void updateAxisWidgetsForgetsTexts();
    void updateAxisWidgetsPaintsThePriceAxis();
    void quoteLabelSettersReachThePriceAxis();
    void priceIntervalIsStoredAsItIs();
    void mousePositionOnScales();
    void settersEmitAndReplotNothing();
};

void tst_pricebased2dplot_properties::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_pricebased2dplot_properties::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_pricebased2dplot_properties::autoScaleIsThePanners()
{
    TestPlot plot;
    QSignalSpy spy(&plot, SIGNAL(autoScaleEnabled(bool)));
    for (const bool on : {true, false, true}) {
        plot.setAutoScaleEnabled(on);
        QCOMPARE(panner(plot)->autoScaleEnabled(), on);
        QCOMPARE(plot.autoScaleEnabled(), on);
    }
    panner(plot)->setAutoScaleEnabled(false);
    QVERIFY(!plot.autoScaleEnabled());
    QCOMPARE(spy.count(), 0);
}

void tst_pricebased2dplot_properties::resetAutoScaleAsks()
{
    TestPlot plot;
    plot.setAutoScaleEnabled(true);
    QSignalSpy spy(&plot, SIGNAL(autoScaleEnabled(bool)));
    plot.resetAutoScale();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toBool(), false);
    QVERIFY(plot.autoScaleEnabled());
}

void tst_pricebased2dplot_properties::resetAutoScaleOffEmitsNothing()
{
    TestPlot plot;
    plot.setAutoScaleEnabled(false);
    QSignalSpy spy(&plot, SIGNAL(autoScaleEnabled(bool)));
    plot.resetAutoScale();
    QCOMPARE(spy.count(), 0);
}

void tst_pricebased2dplot_properties::minimumSizeHintIsFixed()
{
    const TestPlot plain(false);
    QCOMPARE(plain.minimumSizeHint(), QSize(20, 20));
    TestPlot plot(true, QwtText(QString(300, QLatin1Char('W'))));
    plot.setAxisTitle(QwtPlot::yLeft, QString(100, QLatin1Char('W')));
    plot.resize(800, 600);
    QCOMPARE(plot.minimumSizeHint(), QSize(20, 20));
}

void tst_pricebased2dplot_properties::gridVisibleActsOnTheFirstGrid()
{
    TestPlot plot;
    const QwtPlotGrid* first = addGrid(plot);
    const QwtPlotGrid* second = addGrid(plot);
    plot.setGridVisible(false);
    QVERIFY(!first->isVisible());
    QVERIFY(second->isVisible());
    QVERIFY(!first->xMinEnabled() && !first->yMinEnabled());
    plot.setGridVisible(true);
    QVERIFY(first->isVisible());
}

void tst_pricebased2dplot_properties::gridEnabledThenDisabled()
{
    TestPlot plot;
    QwtPlotGrid* grid = addGrid(plot);
    grid->enableX(false);
    grid->enableY(false);

    plot.setGridEnabled(true);
    QVERIFY(grid->xEnabled() && grid->yEnabled());
    QVERIFY(grid->xMinEnabled() && grid->yMinEnabled());
    QCOMPARE(grid->majorPen().style(), Qt::SolidLine);
    QCOMPARE(grid->majorPen().widthF(), 2.0);
    QCOMPARE(grid->majorPen().color(), QColor(0xb2, 0xbe, 0xb5));
    QCOMPARE(grid->minorPen().style(), Qt::SolidLine);
    QCOMPARE(grid->minorPen().widthF(), 1.0);
    QCOMPARE(grid->minorPen().color(), QColor(0xcc, 0xcc, 0xcc));

    const QPen minor = grid->minorPen();
    grid->enableX(false);
    grid->enableY(false);
    plot.setGridEnabled(false);
    QVERIFY(grid->xEnabled() && grid->yEnabled());
    QVERIFY(!grid->xMinEnabled() && !grid->yMinEnabled());
    QCOMPARE(grid->majorPen().style(), Qt::SolidLine);
    QCOMPARE(grid->majorPen().widthF(), 1.0);
    QCOMPARE(grid->majorPen().color(), QColor(0xb2, 0xbe, 0xb5));
    QCOMPARE(grid->minorPen(), minor);
}

void tst_pricebased2dplot_properties::gridDisabledKeepsTheMinorPen()
{
    TestPlot plot;
    QwtPlotGrid* grid = addGrid(plot);
    const QPen minor(QColor(Qt::red), 3.0, Qt::DashLine);
    grid->setMinorPen(minor);
    plot.setGridEnabled(false);
    QCOMPARE(grid->minorPen(), minor);
}

void tst_pricebased2dplot_properties::gridEnabledActsOnTheFirstGrid()
{
    TestPlot plot;
    const QwtPlotGrid* first = addGrid(plot);
    const QwtPlotGrid* second = addGrid(plot);
    plot.setGridEnabled(true);
    QVERIFY(first->xMinEnabled());
    QVERIFY(!second->xMinEnabled());
}

void tst_pricebased2dplot_properties::gridOperationsWithoutGrid()
{
    TestPlot plot;
    plot.setGridVisible(true);
    plot.setGridEnabled(true);
    plot.setGridEnabled(false);
    QVERIFY(plot.itemList().isEmpty());
}

void tst_pricebased2dplot_properties::updateScaleLabelsReplotsOnce()
{
    TestPlot plot;
    plot.updateScaleLabels();
    QCOMPARE(plot.calls, QStringList{QStringLiteral("replot")});
}

void tst_pricebased2dplot_properties::updateAxisWidgetsReplotsTwice()
{
    TestPlot plot;
    plot.updateAxisWidgets();
    QCOMPARE(plot.calls, (QStringList{QStringLiteral("replot"), QStringLiteral("replot")}));
}

void tst_pricebased2dplot_properties::updateScaleLabelsChoosesThemAnew()
{
    TestPlot plot;
    const auto labelTicks = [&](int axis) { return ownScaleDraw(plot, axis)->labelTicks(); };
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)})
        plot.setAxisScale(axis, 100.0, 110.0, 5.0);
    plot.updateAxes();
    QVERIFY(labelTicks(QwtPlot::xBottom).isEmpty() && labelTicks(QwtPlot::yLeft).isEmpty());
    plot.updateScaleLabels();
    QCOMPARE(labelTicks(QwtPlot::xBottom), QList<double>({100.0, 105.0, 110.0}));
    QCOMPARE(labelTicks(QwtPlot::yLeft), QList<double>({100.0, 105.0, 110.0}));
}

void tst_pricebased2dplot_properties::updateScaleLabelsDividesTheAxes()
{
    TestPlot plot;
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)})
        plot.setAxisScale(axis, 100.0, 110.0, 5.0);
    plot.updateScaleLabels();
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)})
        QCOMPARE(ownScaleDraw(plot, axis)->labelTicks(), QList<double>({100.0, 105.0, 110.0}));
}

void tst_pricebased2dplot_properties::updateAxisWidgetsChoosesLabelsOfPrices()
{
    TestPlot plot;
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)})
        plot.setAxisScale(axis, 100.0, 110.0, 5.0);
    plot.updateAxes();
    plot.updateAxisWidgets();
    QCOMPARE(ownScaleDraw(plot, QwtPlot::xBottom)->labelTicks(), QList<double>({100.0, 105.0, 110.0}));
    QVERIFY(ownScaleDraw(plot, QwtPlot::yLeft)->labelTicks().isEmpty());
}

void tst_pricebased2dplot_properties::updateAxisWidgetsDividesTheAxes()
{
    // Also under a host's replot() that does not.
    TestPlot plot;
    plot.replacesReplot = [] { return true; };
    plot.setAxisScale(QwtPlot::xBottom, 100.0, 110.0, 5.0);
    plot.updateAxisWidgets();
    QCOMPARE(plot.axisScaleDiv(QwtPlot::xBottom).upperBound(), 110.0);
}

void tst_pricebased2dplot_properties::updateAxisWidgetsForgetsTexts()
{
    TestPlot plot;
    plot.setAxisScale(QwtPlot::xBottom, 100.0, 110.0, 5.0);
    plot.updateAxes();
    auto* draw = ownScaleDraw(plot, QwtPlot::xBottom);
    // Without a quote among the ticks there are no labels whose digits could be compared.
    draw->setCurKotirEnabled(true);
    const double before = draw->boundingLabelRect(QFont(), 105.0).width();
    draw->setMetricUnit(QStringLiteral(" per cent"));
    QCOMPARE(draw->boundingLabelRect(QFont(), 105.0).width(), before);
    plot.updateAxisWidgets();
    QVERIFY(draw->boundingLabelRect(QFont(), 105.0).width() > before);
}

void tst_pricebased2dplot_properties::updateAxisWidgetsPaintsThePriceAxis()
{
    TestPlot plot;
    plot.resize(400, 300);
    plot.show();
    QVERIFY(QTest::qWaitForWindowExposed(&plot));
    plot.updateAxisWidgets();
    QCoreApplication::processEvents();
    PaintCounter prices(*plot.axisWidget(QwtPlot::xBottom));
    PaintCounter values(*plot.axisWidget(QwtPlot::yLeft));
    QCoreApplication::processEvents();
    QCOMPARE(prices.count, 0);
    plot.updateAxisWidgets();
    QTRY_VERIFY(prices.count > 0);
    QCOMPARE(values.count, 0);
}

void tst_pricebased2dplot_properties::quoteLabelSettersReachThePriceAxis()
{
    TestPlot plot;
    const auto* price = ownScaleDraw(plot, QwtPlot::xBottom);
    const auto* value = ownScaleDraw(plot, QwtPlot::yLeft);
    plot.setCurKotirEnabled(true);
    plot.setCurKotirValue(105.5);
    QVERIFY(price->isCurKotirEnabled());
    QCOMPARE(price->curKotirValue(), 105.5);
    QVERIFY(!value->isCurKotirEnabled());
    QCOMPARE(value->curKotirValue(), -1.0);
    plot.setCurKotirEnabled(false);
    QVERIFY(!price->isCurKotirEnabled());
    QCOMPARE(price->curKotirValue(), 105.5);
    QVERIFY(plot.calls.isEmpty());
}

void tst_pricebased2dplot_properties::priceIntervalIsStoredAsItIs()
{
    TestPlot plot;
    const PriceInterval inverted{110.0, 100.0, -5.0, true};
    plot.setPriceInterval(inverted);
    QCOMPARE(plot.priceInterval().minPrice, 110.0);
    QCOMPARE(plot.priceInterval().maxPrice, 100.0);
    QCOMPARE(plot.priceInterval().minStep, -5.0);
    QVERIFY(plot.priceInterval().valid);
}

void tst_pricebased2dplot_properties::mousePositionOnScales()
{
    TestPlot plot;
    plot.resize(400, 300);
    plot.updateLayout();
    const QPointF onX = plot.plotLayout()->scaleRect(QwtPlot::xBottom).center();
    const QPointF onY = plot.plotLayout()->scaleRect(QwtPlot::yLeft).center();
    const QPointF onCanvas = plot.plotLayout()->canvasRect().center();

    QVERIFY(plot.mousePositionOnXScale(onX));
    QVERIFY(!plot.mousePositionOnYScale(onX));
    QVERIFY(plot.mousePositionOnScale(onX));
    QVERIFY(!plot.mousePositionOnXScale(onY));
    QVERIFY(plot.mousePositionOnYScale(onY));
    QVERIFY(plot.mousePositionOnScale(onY));
    QVERIFY(!plot.mousePositionOnXScale(onCanvas));
    QVERIFY(!plot.mousePositionOnYScale(onCanvas));
    QVERIFY(!plot.mousePositionOnScale(onCanvas));
}

void tst_pricebased2dplot_properties::settersEmitAndReplotNothing()
{
    TestPlot plot;
    QSignalSpy labels(&plot, SIGNAL(updateAxisLabels()));
    QSignalSpy autoScale(&plot, SIGNAL(autoScaleEnabled(bool)));
    plot.setZoomEnabled(false);
    plot.setAutoScaleEnabled(false);
    plot.setPriceInterval(PriceInterval{100.0, 110.0, 5.0, true});
    plot.setIsinId(10);
    plot.setBoardId(2);
    plot.setBaseCode(QStringLiteral("Amber"));
    plot.setRescaleFactor(TestHost::number(QStringLiteral("100")));
    QCOMPARE(labels.count(), 0);
    QCOMPARE(autoScale.count(), 0);
    QVERIFY(plot.calls.isEmpty());
}

PLOT2D_TEST_MAIN(tst_pricebased2dplot_properties)
#include "tst_pricebased2dplot_properties.moc"
