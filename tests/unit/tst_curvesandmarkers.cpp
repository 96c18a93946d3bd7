#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotlegend.h>
#include <plot2d/pricebased2dplotscaledraw.h>

#include <qwt_plot_marker.h>
#include <qwt_symbol.h>

#include <memory>

namespace {

const QVector<QPointF> someSamples{{100.0, 1.0}, {105.0, 2.0}};

/// A curve that accepts one more type, or, once told to, none.
class ChoosyCurve : public PriceBased2dPlotCurve {
public:
    ChoosyCurve(PriceBased2dPlot& plot, int extraType)
        : PriceBased2dPlotCurve(&plot, QStringLiteral("choosy"))
        , m_extraType(extraType)
    {
        setDataType(extraType);
        attach(&plot);
    }
    bool isValidType(int type) const override { return !refusing && type == m_extraType; }

    bool refusing = false;

private:
    int m_extraType;
};

class OddMarker : public QwtPlotMarker {
public:
    int rtti() const override { return QwtPlotItem::Rtti_PlotUserItem; }
};

QwtPlotMarker* addMarker(TestPlot& plot, bool withSymbol)
{
    auto* marker = new QwtPlotMarker;
    if (withSymbol)
        marker->setSymbol(new QwtSymbol(QwtSymbol::Ellipse));
    marker->attach(&plot);
    return marker;
}

}

/// Finding, showing and hiding of attached curves and markers.
class tst_curvesandmarkers : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void visibilityChanged(const QString& labelText, bool visible);

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void directCallChangesNothing();
    void otherSenderChangesNothing();
    void legendHidesAndShows();
    void legendOfAnotherPlotServesToo();
    void emptyTitleChangesNothing();
    void unknownTitleChangesNothing();
    void equalTitlesTheFirstOnly();
    void firstInTheOrderOfThePlot();
    void invalidCurvesAreSkipped();
    void foreignCurvesAreSkipped();
    void valueCurveRescales();
    void quoteLineReplotsOnly();
    void visibleCurveIsShownBeforeTheScale();

    void allCurves();
    void curvesOfAType_data();
    void curvesOfAType();
    void curveThatRefusesItsType();
    void curveWithATypeOfItsOwn();
    void curvesAreInTheOrderOfThePlot();

    void noMarkersToCreate();
    void createdMarkers();
    void createdMarkersTakeThePensBrush();
    void createdMarkersBelongToThePlot();
    void symbolMarkersOnly();

private:
    std::unique_ptr<TestPlot> m_plot;

    void emitFromLegend(const QString& title, bool visible);
};

void tst_curvesandmarkers::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_curvesandmarkers::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_curvesandmarkers::init()
{
    m_plot = std::make_unique<TestPlot>();
}

void tst_curvesandmarkers::cleanup()
{
    m_plot.reset();
}

void tst_curvesandmarkers::emitFromLegend(const QString& title, bool visible)
{
    PriceBased2dPlotLegend legend(m_plot.get());
    QVERIFY(connect(&legend, SIGNAL(visibilityChanged(QString, bool)), m_plot.get(),
        SLOT(setCurveVisible(QString, bool))));
    m_plot->calls.clear();
    Q_EMIT legend.visibilityChanged(title, visible);
}

void tst_curvesandmarkers::directCallChangesNothing()
{
    const auto* curve = addCurve(*m_plot, 9, someSamples, "a");
    m_plot->setCurveVisible("a", false);
    QVERIFY(curve->isVisible());
    QVERIFY(QMetaObject::invokeMethod(
        m_plot.get(), "setCurveVisible", Q_ARG(QString, QStringLiteral("a")), Q_ARG(bool, false)));
    QVERIFY(curve->isVisible());
    QVERIFY(m_plot->calls.isEmpty());
}

void tst_curvesandmarkers::otherSenderChangesNothing()
{
    const auto* curve = addCurve(*m_plot, 9, someSamples, "a");
    QVERIFY(connect(
        this, SIGNAL(visibilityChanged(QString, bool)), m_plot.get(), SLOT(setCurveVisible(QString, bool))));
    Q_EMIT visibilityChanged("a", false);
    QVERIFY(curve->isVisible());
    QVERIFY(m_plot->calls.isEmpty());
}

void tst_curvesandmarkers::legendHidesAndShows()
{
    const auto* curve = addCurve(*m_plot, 9, someSamples, "a");
    emitFromLegend("a", false);
    QVERIFY(!curve->isVisible());
    emitFromLegend("a", true);
    QVERIFY(curve->isVisible());
}

void tst_curvesandmarkers::legendOfAnotherPlotServesToo()
{
    const auto* curve = addCurve(*m_plot, 9, someSamples, "a");
    TestPlot other;
    PriceBased2dPlotLegend legend(&other);
    connect(&legend, SIGNAL(visibilityChanged(QString, bool)), m_plot.get(),
        SLOT(setCurveVisible(QString, bool)));
    Q_EMIT legend.visibilityChanged("a", false);
    QVERIFY(!curve->isVisible());
}

void tst_curvesandmarkers::emptyTitleChangesNothing()
{
    // Invalid for its empty title, the curve would be skipped anyway: no replot tells that nothing was done.
    const auto* curve = addCurve(*m_plot, 9, someSamples, QString());
    emitFromLegend(QString(), false);
    QVERIFY(curve->isVisible());
    QVERIFY(m_plot->calls.isEmpty());
}

void tst_curvesandmarkers::unknownTitleChangesNothing()
{
    const auto* curve = addCurve(*m_plot, 9, someSamples, "a");
    for (const char* title : {"b", "A", "a ", "aa"}) {
        emitFromLegend(QString::fromLatin1(title), false);
        QVERIFY2(curve->isVisible(), title);
        QVERIFY2(m_plot->calls.isEmpty(), title);
    }
}

void tst_curvesandmarkers::equalTitlesTheFirstOnly()
{
    const auto* first = addCurve(*m_plot, 9, someSamples, "a");
    const auto* second = addCurve(*m_plot, 10, someSamples, "a");
    emitFromLegend("a", false);
    QVERIFY(!first->isVisible());
    QVERIFY(second->isVisible());
    emitFromLegend("a", false);
    QVERIFY(second->isVisible());
}

void tst_curvesandmarkers::firstInTheOrderOfThePlot()
{
    auto* above = addCurve(*m_plot, 9, someSamples, "a");
    above->setZ(50.0);
    const auto* below = addCurve(*m_plot, 9, someSamples, "a");
    emitFromLegend("a", false);
    QVERIFY(above->isVisible());
    QVERIFY(!below->isVisible());
}

void tst_curvesandmarkers::invalidCurvesAreSkipped()
{
    const auto* empty = addCurve(*m_plot, 9, {}, "a");
    const auto* typeless = addCurve(*m_plot, -1, someSamples, "a");
    const auto* valid = addCurve(*m_plot, 9, someSamples, "a");
    emitFromLegend("a", false);
    QVERIFY(empty->isVisible());
    QVERIFY(typeless->isVisible());
    QVERIFY(!valid->isVisible());
}

void tst_curvesandmarkers::foreignCurvesAreSkipped()
{
    auto* foreign = new QwtPlotCurve(QStringLiteral("a"));
    foreign->setSamples(someSamples);
    foreign->attach(m_plot.get());
    const auto* own = addCurve(*m_plot, 9, someSamples, "a");
    emitFromLegend("a", false);
    QVERIFY(foreign->isVisible());
    QVERIFY(!own->isVisible());
}

void tst_curvesandmarkers::valueCurveRescales()
{
    addCurve(*m_plot, 9, someSamples, "a");
    m_plot->setAxisScaleDiv(QwtPlot::xBottom, QwtScaleDiv(90.0, 120.0));
    m_plot->setAutoScaleEnabled(true);
    emitFromLegend("a", true);
    QCOMPARE(m_plot->calls, (QStringList{"range", "quote line 1 2 -1", "replot", "replot"}));
    QCOMPARE(m_plot->axisScaleDiv(QwtPlot::yLeft).interval(), QwtInterval(1.0, 2.0));
}

void tst_curvesandmarkers::quoteLineReplotsOnly()
{
    // Hiding the line refreshes the price axis, which replots twice, before the slot's own replot.
    const auto* line = addCurve(*m_plot, 0, {{105.0, 0.0}, {105.0, 1.0}}, "quote");
    m_plot->setAutoScaleEnabled(true);
    emitFromLegend("quote", false);
    QVERIFY(!line->isVisible());
    QCOMPARE(m_plot->calls, (QStringList{"replot", "replot", "replot"}));
}

void tst_curvesandmarkers::visibleCurveIsShownBeforeTheScale()
{
    auto* curve = addCurve(*m_plot, 9, someSamples, "a");
    curve->setVisible(false);
    QVector<bool> visibleAtReplot;
    m_plot->onReplot = [&] { visibleAtReplot << curve->isVisible(); };
    emitFromLegend("a", true);
    QVERIFY(!visibleAtReplot.isEmpty());
    QVERIFY(!visibleAtReplot.contains(false));
}

void tst_curvesandmarkers::allCurves()
{
    QVERIFY(m_plot->attachedCurves(-1).isEmpty());
    auto* line = addCurve(*m_plot, 0, {}, "line");
    auto* value = addCurve(*m_plot, 9, someSamples, "value");
    auto* typeless = addCurve(*m_plot, -1, someSamples, "typeless");
    auto* hidden = addCurve(*m_plot, 12, someSamples, "hidden");
    hidden->setVisible(false);
    auto* foreign = new QwtPlotCurve;
    foreign->attach(m_plot.get());
    addMarker(*m_plot, true);
    const QList<PriceBased2dPlotCurve*> expected{line, value, typeless, hidden};
    QCOMPARE(m_plot->attachedCurves(-1), expected);
}

void tst_curvesandmarkers::curvesOfAType_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {0, 9, 10, 11, 12, 13})
        QTest::addRow("%d", type) << type;
}

void tst_curvesandmarkers::curvesOfAType()
{
    QFETCH(int, type);
    PriceBased2dPlotCurve detached(m_plot.get(), QStringLiteral("detached"));
    detached.setDataType(type);
    QVERIFY(m_plot->attachedCurves(type).isEmpty());

    QList<PriceBased2dPlotCurve*> expected;
    for (const int attached : {-1, 0, 9, 10, 11, 12, 13}) {
        auto* curve = addCurve(*m_plot, attached, {}, "attached");
        curve->setVisible(false);
        if (attached == type)
            expected << curve;
    }
    QCOMPARE(m_plot->attachedCurves(type), expected);
    for (const int none : {1, 8, 14, -2})
        QVERIFY(m_plot->attachedCurves(none).isEmpty());
}

void tst_curvesandmarkers::curveThatRefusesItsType()
{
    auto* curve = new ChoosyCurve(*m_plot, 9);
    QCOMPARE(m_plot->attachedCurves(9).size(), 1);
    curve->refusing = true;
    QVERIFY(m_plot->attachedCurves(9).isEmpty());
    QCOMPARE(m_plot->attachedCurves(-1), QList<PriceBased2dPlotCurve*>{curve});
}

void tst_curvesandmarkers::curveWithATypeOfItsOwn()
{
    auto* curve = new ChoosyCurve(*m_plot, 20);
    QCOMPARE(m_plot->attachedCurves(20), QList<PriceBased2dPlotCurve*>{curve});
}

void tst_curvesandmarkers::curvesAreInTheOrderOfThePlot()
{
    auto* above = addCurve(*m_plot, 9, someSamples, "above");
    above->setZ(50.0);
    auto* below = addCurve(*m_plot, 9, someSamples, "below");
    const QList<PriceBased2dPlotCurve*> expected{below, above};
    QCOMPARE(m_plot->attachedCurves(9), expected);
    QCOMPARE(m_plot->attachedCurves(-1), expected);
}

void tst_curvesandmarkers::noMarkersToCreate()
{
    auto* curve = addCurve(*m_plot, 13, someSamples, "a");
    QVERIFY(m_plot->createMarkers(0, curve).isEmpty());
    QVERIFY(m_plot->createMarkers(-1, curve).isEmpty());
    QVERIFY(m_plot->createMarkers(3, nullptr).isEmpty());
    QVERIFY(m_plot->itemList(QwtPlotItem::Rtti_PlotMarker).isEmpty());
}

void tst_curvesandmarkers::createdMarkers()
{
    auto* curve = addCurve(*m_plot, 13, someSamples, "a");
    curve->setPen(QPen(QColor(Qt::blue), 7.0, Qt::DotLine, Qt::RoundCap, Qt::RoundJoin));
    const QList<QwtPlotMarker*> markers = m_plot->createMarkers(3, curve);
    QCOMPARE(markers.size(), 3);
    QCOMPARE(m_plot->attachedMarkers(), markers);
    for (const QwtPlotMarker* marker : markers) {
        QVERIFY(marker->title().isEmpty());
        QVERIFY(marker->testRenderHint(QwtPlotItem::RenderAntialiased));
        QVERIFY(!marker->testItemAttribute(QwtPlotItem::Legend));
        QCOMPARE(marker->plot(), static_cast<QwtPlot*>(m_plot.get()));
        QVERIFY(marker->isVisible());
        const QwtSymbol* symbol = marker->symbol();
        QVERIFY(symbol);
        QCOMPARE(symbol->style(), QwtSymbol::Rect);
        QCOMPARE(symbol->size(), QSize(4, 4));
        QCOMPARE(symbol->brush(), curve->pen().brush());
        QCOMPARE(symbol->pen(),
            QPen(QBrush(Qt::blue, Qt::SolidPattern), 4.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    }
    QVERIFY(m_plot->calls.isEmpty());
}

void tst_curvesandmarkers::createdMarkersTakeThePensBrush()
{
    auto* curve = addCurve(*m_plot, 13, someSamples, "a");
    curve->setPen(QPen(QBrush(Qt::green, Qt::Dense4Pattern), 2.0));
    const QList<QwtPlotMarker*> markers = m_plot->createMarkers(1, curve);
    const QwtSymbol* symbol = markers.constFirst()->symbol();
    QCOMPARE(symbol->brush(), QBrush(Qt::green, Qt::Dense4Pattern));
    QCOMPARE(symbol->pen().brush(), QBrush(Qt::green, Qt::SolidPattern));
}

void tst_curvesandmarkers::createdMarkersBelongToThePlot()
{
    auto* curve = addCurve(*m_plot, 13, someSamples, "a");
    m_plot->createMarkers(2, curve);
    QVERIFY(m_plot->autoDelete());
    m_plot->detachItems(QwtPlotItem::Rtti_PlotCurve, true);
    QCOMPARE(m_plot->attachedMarkers().size(), 2);
    m_plot->detachItems(QwtPlotItem::Rtti_PlotMarker, true);
    QVERIFY(m_plot->attachedMarkers().isEmpty());
}

void tst_curvesandmarkers::symbolMarkersOnly()
{
    QVERIFY(m_plot->attachedMarkers().isEmpty());
    addMarker(*m_plot, false);
    auto* first = addMarker(*m_plot, true);
    auto* second = addMarker(*m_plot, true);
    second->setVisible(false);
    first->setZ(1000.0);
    auto* odd = new OddMarker;
    odd->setSymbol(new QwtSymbol(QwtSymbol::Ellipse));
    odd->attach(m_plot.get());
    const QList<QwtPlotMarker*> expected{second, first};
    QCOMPARE(m_plot->attachedMarkers(), expected);
}

PLOT2D_TEST_MAIN(tst_curvesandmarkers)
#include "tst_curvesandmarkers.moc"
