#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/plotitems_p.h>
#include <plot2d/pricebased2dplotlegend.h>

#include <QApplication>
#include <QTest>

#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_marker.h>
#include <qwt_point_data.h>
#include <qwt_symbol.h>

namespace {

/// Items of a host that say they are curves, markers and grids, and are not.
class Pretender : public QwtPlotItem {
public:
    explicit Pretender(int kind)
        : m_kind(kind)
    {
    }
    int rtti() const override { return m_kind; }
    void draw(QPainter*, const QwtScaleMap&, const QwtScaleMap&, const QRectF&) const override { }

private:
    int m_kind;
};

/// A series whose class the library does not know.
class HostSeries : public QwtPointSeriesData {
public:
    using QwtPointSeriesData::QwtPointSeriesData;
};

}

/// What a host attaches beside the library's own items, and pickers that stand anywhere.
class tst_HostsItems : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void findsItsOwnItemsOnly();
    void picksSamplesOfAHostsSeries();
    void picksEntriesOfTheLegendOnly();
    void aPickerWithoutAPlotKnowsNothing();
    void enlargesTheApplicationsFont_data();
    void enlargesTheApplicationsFont();
};

void tst_HostsItems::init()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_HostsItems::findsItsOwnItemsOnly()
{
    TestPlot plot;
    // The plot's own grid and marker aside.
    plot.detachItems();
    for (const int kind : {int(QwtPlotItem::Rtti_PlotCurve), int(QwtPlotItem::Rtti_PlotMarker),
             int(QwtPlotItem::Rtti_PlotGrid)})
        (new Pretender(kind))->attach(&plot);
    (new QwtPlotCurve(QStringLiteral("plain")))->attach(&plot);
    (new QwtPlotMarker)->attach(&plot);
    QVERIFY(PlotItems::curves(plot).isEmpty());
    QVERIFY(PlotItems::symbolMarkers(plot).isEmpty());
    QVERIFY(!PlotItems::grid(plot));

    auto* const curve = addCurve(plot, 9, {{1.0, 1.0}}, QStringLiteral("curve"));
    auto* const marker = new QwtPlotMarker;
    marker->setSymbol(new QwtSymbol(QwtSymbol::Ellipse));
    marker->attach(&plot);
    QCOMPARE(PlotItems::curves(plot), QList<PriceBased2dPlotCurve*>{curve});
    QCOMPARE(PlotItems::symbolMarkers(plot), QList<QwtPlotMarker*>{marker});
}

void tst_HostsItems::picksSamplesOfAHostsSeries()
{
    TestHost::addSecurity(TestHost::future({{QStringLiteral("price_step"), QStringLiteral("0.5")}}));
    TestPlot plot;
    plot.setIsinId(10);
    plot.setBoardId(2);
    PriceBased2dPlotPicker picker(plot.canvas());
    picker.setPriceStep();
    QCOMPARE(picker.priceStep(), 0.5);
    auto* const curve = addCurve(plot, 9, {}, QStringLiteral("curve"));
    const QVector<QPointF> samples{{10.0, 1.0}, {20.0, 2.0}, {30.0, 3.0}};
    plot.setAxisScale(QwtPlot::xBottom, 0.0, 40.0, 0.0);
    plot.setAxisScale(QwtPlot::yLeft, 0.0, 4.0, 0.0);
    plot.updateAxes();
    const ClosestPointCalcParams params{0.0, 40.0, 0.0, 4.0, 21.0, 2.0};
    curve->setSamples(samples);
    const ClosestPointParams indexed = picker.getClosestPointParams(curve, params);
    curve->setSamples(new HostSeries(samples));
    const ClosestPointParams found = picker.getClosestPointParams(curve, params);
    QCOMPARE(found.index, 1);
    QCOMPARE(found.index, indexed.index);
    QCOMPARE(found.distance, indexed.distance);
}

void tst_HostsItems::picksEntriesOfTheLegendOnly()
{
    TestPlot plot;
    const auto* const picker = plot.createPicker();
    auto* const legend = new PriceBased2dPlotLegend(&plot);
    legend->initCore();
    plot.insertLegend(legend, QwtPlot::RightLegend);
    auto* const shown = addCurve(plot, 9, {{1.0, 1.0}}, QStringLiteral("shown"));
    auto* const unchecked = addCurve(plot, 9, {{1.0, 1.0}}, QStringLiteral("unchecked"));
    auto* const without = new PriceBased2dPlotCurve(&plot, QStringLiteral("without an entry"));
    without->setDataType(9);
    without->setSamples(QVector<QPointF>{{1.0, 1.0}});
    without->setItemAttribute(QwtPlotItem::Legend, false);
    without->attach(&plot);
    addCurve(plot, 9, {}, QStringLiteral("without samples"));
    legend->setCheckBoxChecked(QStringLiteral("unchecked"), false);
    QCOMPARE(picker->usedCurves(), QList<PriceBased2dPlotCurve*>{shown});
    legend->setCheckBoxChecked(QStringLiteral("unchecked"), true);
    QCOMPARE(picker->usedCurves(), (QList<PriceBased2dPlotCurve*>{shown, unchecked}));
}

void tst_HostsItems::aPickerWithoutAPlotKnowsNothing()
{
    TestPlot plot;
    QWidget elsewhere;
    PriceBased2dPlotPicker picker(plot.canvas());
    plot.canvas()->setParent(&elsewhere);
    QVERIFY(!picker.plot());
    QCOMPARE(picker.transformedPoint(QPointF(5.0, 7.0)), QPointF());
    QVERIFY(picker.usedCurves().isEmpty());
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
    curve.setSamples(QVector<QPointF>{{1.0, 1.0}});
    const ClosestPointParams found = picker.getClosestCurveParams({&curve});
    QVERIFY(!found.curve);
    QCOMPARE(found.index, -1);
    QCOMPARE(picker.renderedText(QStringLiteral("text")).text(), QStringLiteral("text"));
}

void tst_HostsItems::enlargesTheApplicationsFont_data()
{
    QTest::addColumn<bool>("inPixels");
    QTest::newRow("of points") << false;
    QTest::newRow("of pixels") << true;
}

void tst_HostsItems::enlargesTheApplicationsFont()
{
    QFETCH(bool, inPixels);
    const QFont before = QApplication::font();
    QFont font = before;
    if (inPixels)
        font.setPixelSize(20);
    else
        font.setPointSize(10);
    QApplication::setFont(font);
    TestPlot plot;
    const PriceBased2dPlotPicker picker(plot.canvas());
    const QFont rendered = picker.renderedText(QStringLiteral("text")).font();
    const QFont own = plot.font();
    QApplication::setFont(before);
    QCOMPARE(rendered.pointSize(), inPixels ? own.pointSize() : 12);
    QCOMPARE(rendered.pixelSize(), inPixels ? 20 : -1);
}

PLOT2D_TEST_MAIN(tst_HostsItems)
#include "tst_hostsitems.moc"
