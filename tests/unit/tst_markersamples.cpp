#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/markerplacement_p.h>

#include <qwt_plot_marker.h>
#include <qwt_symbol.h>

#include <memory>

namespace {

using Points = QVector<PriceBased2dPlotPoint>;

const Points fivePoints{
    {100.0, 1.0, false}, {101.0, 2.0, true}, {102.0, 3.0, false}, {103.0, 4.0, true}, {104.0, 5.0, false}};

QwtPlotMarker* addMarker(TestPlot& plot, bool withSymbol)
{
    auto* marker = new QwtPlotMarker;
    if (withSymbol)
        marker->setSymbol(new QwtSymbol(QwtSymbol::Ellipse));
    marker->attach(&plot);
    return marker;
}

bool hasSamples(const PriceBased2dPlotCurve* curve, const Points& points)
{
    bool equal = curve->dataSize() == static_cast<std::size_t>(points.size());
    for (int i = 0; equal && i < points.size(); ++i)
        equal = curve->sample(i) == QPointF(points.at(i).x, points.at(i).y);
    return equal;
}

}

/// The markers of a curve with marked points.
class tst_markersamples : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void markersFollowTheirCurve();
    void markerSamplesNeedTypeAndPlot_data();
    void markerSamplesNeedTypeAndPlot();
    void surplusMarkersAreDeletedFromTheEnd();
    void oneSurplusMarkerIsDeleted();
    void missingMarkersAreCreated();
    void enoughMarkersStay();
    void noMarkedPointDeletesAllMarkers();
    void markersTakeTheVisibilityOfTheCurve();
    void lastCurveWins();
    void markersRunOut_data();
    void markersRunOut();

private:
    std::unique_ptr<TestPlot> m_plot;
};

void tst_markersamples::init()
{
    TestHost::createSecurities();
    TestHost::createBoards();
    m_plot = std::make_unique<TestPlot>();
}

void tst_markersamples::cleanup()
{
    m_plot.reset();
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_markersamples::markersFollowTheirCurve()
{
    auto* curve = addCurve(*m_plot, 13, {{100.0, 1.0}}, "a");
    const auto* first = addMarker(*m_plot, true);
    const auto* plain = addMarker(*m_plot, false);
    const auto* second = addMarker(*m_plot, true);
    m_plot->calls.clear();
    curve->setVisible(false);
    QVERIFY(!curve->isVisible() && !first->isVisible() && !second->isVisible());
    QVERIFY(plain->isVisible());
    curve->setVisible(true);
    QVERIFY(curve->isVisible() && first->isVisible() && second->isVisible());
    QVERIFY(m_plot->calls.isEmpty());
}

void tst_markersamples::markerSamplesNeedTypeAndPlot_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("plot");
    for (const int type : {-1, 0, 9, 12})
        QTest::addRow("type %d", type) << type << true;
    QTest::newRow("no plot") << 13 << false;
}

void tst_markersamples::markerSamplesNeedTypeAndPlot()
{
    QFETCH(int, type);
    QFETCH(bool, plot);
    auto* curve = new PriceBased2dPlotCurve(plot ? m_plot.get() : nullptr, QStringLiteral("a"));
    curve->setDataType(type);
    curve->setSamples(QVector<QPointF>{{1.0, 1.0}});
    curve->attach(m_plot.get());
    const QList<QwtPlotMarker*> markers{
        addMarker(*m_plot, true), addMarker(*m_plot, true), addMarker(*m_plot, true)};
    curve->setMarkerSamples(fivePoints);
    QVERIFY(hasSamples(curve, {{1.0, 1.0, false}}));
    QCOMPARE(m_plot->attachedMarkers(), markers);
    for (const QwtPlotMarker* marker : markers)
        QCOMPARE(marker->value(), QPointF(0.0, 0.0));
}

void tst_markersamples::surplusMarkersAreDeletedFromTheEnd()
{
    auto* curve = addCurve(*m_plot, 13, {{1.0, 1.0}}, "a");
    auto* first = addMarker(*m_plot, true);
    auto* plain = addMarker(*m_plot, false);
    auto* second = addMarker(*m_plot, true);
    addMarker(*m_plot, true);
    addMarker(*m_plot, true);
    curve->setMarkerSamples(fivePoints);
    const QList<QwtPlotMarker*> left{first, second};
    QCOMPARE(m_plot->attachedMarkers(), left);
    QCOMPARE(m_plot->itemList(QwtPlotItem::Rtti_PlotMarker).size(), 3);
    QCOMPARE(first->value(), QPointF(101.0, 2.0));
    QCOMPARE(second->value(), QPointF(103.0, 4.0));
    QCOMPARE(plain->value(), QPointF(0.0, 0.0));
    QVERIFY(hasSamples(curve, fivePoints));
}

void tst_markersamples::oneSurplusMarkerIsDeleted()
{
    auto* curve = addCurve(*m_plot, 13, {{1.0, 1.0}}, "a");
    for (int i = 0; i < 3; ++i)
        addMarker(*m_plot, true);
    curve->setMarkerSamples(fivePoints);
    const QList<QwtPlotMarker*> left = m_plot->attachedMarkers();
    QCOMPARE(left.size(), 2);
    QCOMPARE(left.at(0)->value(), QPointF(101.0, 2.0));
    QCOMPARE(left.at(1)->value(), QPointF(103.0, 4.0));
    QCOMPARE(static_cast<int>(curve->dataSize()), 5);
}

void tst_markersamples::missingMarkersAreCreated()
{
    auto* curve = addCurve(*m_plot, 13, {{1.0, 1.0}}, "a");
    curve->setPen(QPen(Qt::magenta));
    auto* present = addMarker(*m_plot, true);
    curve->setMarkerSamples(fivePoints);
    const QList<QwtPlotMarker*> markers = m_plot->attachedMarkers();
    QCOMPARE(markers.size(), 2);
    QCOMPARE(markers.at(0), present);
    QCOMPARE(markers.at(0)->symbol()->style(), QwtSymbol::Ellipse);
    QCOMPARE(markers.at(0)->value(), QPointF(101.0, 2.0));
    QCOMPARE(markers.at(1)->symbol()->style(), QwtSymbol::Rect);
    QCOMPARE(markers.at(1)->symbol()->brush().color(), QColor(Qt::magenta));
    QCOMPARE(markers.at(1)->value(), QPointF(103.0, 4.0));
    QVERIFY(hasSamples(curve, fivePoints));
}

void tst_markersamples::enoughMarkersStay()
{
    auto* curve = addCurve(*m_plot, 13, {}, "a");
    const QList<QwtPlotMarker*> markers{addMarker(*m_plot, true), addMarker(*m_plot, true)};
    curve->setMarkerSamples(fivePoints);
    QCOMPARE(m_plot->attachedMarkers(), markers);
    QCOMPARE(markers.at(1)->value(), QPointF(103.0, 4.0));
}

void tst_markersamples::noMarkedPointDeletesAllMarkers()
{
    auto* curve = addCurve(*m_plot, 13, {{1.0, 1.0}}, "a");
    addMarker(*m_plot, true);
    addMarker(*m_plot, true);
    const Points points{{100.0, 1.0, false}};
    curve->setMarkerSamples(points);
    QVERIFY(m_plot->attachedMarkers().isEmpty());
    QVERIFY(hasSamples(curve, points));
    curve->setMarkerSamples({});
    QCOMPARE(curve->dataSize(), std::size_t(0));
}

void tst_markersamples::markersTakeTheVisibilityOfTheCurve()
{
    auto* curve = addCurve(*m_plot, 13, {{1.0, 1.0}}, "a");
    curve->setVisible(false);
    curve->setMarkerSamples(fivePoints);
    for (const QwtPlotMarker* marker : m_plot->attachedMarkers())
        QVERIFY(!marker->isVisible());
    curve->QwtPlotItem::setVisible(true);
    curve->setMarkerSamples(fivePoints);
    for (const QwtPlotMarker* marker : m_plot->attachedMarkers())
        QVERIFY(marker->isVisible());
    QCOMPARE(m_plot->attachedMarkers().size(), 2);
}

void tst_markersamples::lastCurveWins()
{
    auto* first = addCurve(*m_plot, 13, {}, "a");
    auto* second = addCurve(*m_plot, 13, {}, "b");
    first->setMarkerSamples(fivePoints);
    second->setMarkerSamples({{105.0, 9.0, true}});
    QCOMPARE(m_plot->attachedMarkers().size(), 1);
    QCOMPARE(m_plot->attachedMarkers().constFirst()->value(), QPointF(105.0, 9.0));
    QVERIFY(hasSamples(first, fivePoints));
}

void tst_markersamples::markersRunOut_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("nullAtTheEnd");
    QTest::addColumn<bool>("placed");
    QTest::newRow("no marker") << 0 << false << false;
    QTest::newRow("one marker") << 1 << false << false;
    QTest::newRow("the second one null") << 1 << true << false;
    QTest::newRow("enough") << 2 << false << true;
    QTest::newRow("a null one that is not needed") << 2 << true << true;
}

void tst_markersamples::markersRunOut()
{
    QFETCH(int, count);
    QFETCH(bool, nullAtTheEnd);
    QFETCH(bool, placed);
    QwtPlotMarker first;
    QwtPlotMarker second;
    QList<QwtPlotMarker*> markers = QList<QwtPlotMarker*>{&first, &second}.mid(0, count);
    if (nullAtTheEnd)
        markers << nullptr;
    const auto samples = placeMarkers(fivePoints, markers, false);
    QCOMPARE(samples.has_value(), placed);
    if (placed)
        QCOMPARE(samples->size(), 5);
    QCOMPARE(first.value(), count > 0 ? QPointF(101.0, 2.0) : QPointF());
    QCOMPARE(first.isVisible(), count == 0);
    QCOMPARE(second.value(), count > 1 ? QPointF(103.0, 4.0) : QPointF());
}

PLOT2D_TEST_MAIN(tst_markersamples)
#include "tst_markersamples.moc"
