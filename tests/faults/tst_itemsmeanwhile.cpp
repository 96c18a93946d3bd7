#include "faults/market.h"
#include "support/testmain.h"

#include <qwt_plot_grid.h>

#include <memory>

/// Hosts that delete items while the plot makes, moves or drops its markers, or changes its grid.
class tst_itemsmeanwhile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_market = std::make_unique<Market>(); }
    void cleanup() { m_market.reset(); }

    void onAttachment_data();
    void onAttachment();
    void markersThatGoAreStillMarkers();
    void markersBelowTheCurvesGoToo();
    void onReplot_data();
    void onReplot();
    void replotsOnce_data();
    void replotsOnce();

private:
    PriceBased2dPlotCurve* markedCurve() const { return m_market->curve(QStringLiteral("curve 13")); }
    static QVector<PriceBased2dPlotPoint> markedPoints(int count);

    std::unique_ptr<Market> m_market;
};

QVector<PriceBased2dPlotPoint> tst_itemsmeanwhile::markedPoints(int count)
{
    QVector<PriceBased2dPlotPoint> points;
    for (int i = 0; i < count; ++i)
        points.append({100.0 + i, 2.0, true});
    return points;
}

void tst_itemsmeanwhile::onAttachment_data()
{
    QTest::addColumn<int>("wanted");
    QTest::addColumn<bool>("deletesCurve");
    QTest::addColumn<int>("markersLeft");
    // Two markers are there. The slot is called for the first one that comes or goes.
    QTest::newRow("curve, when markers come") << 4 << true << 4;
    QTest::newRow("curve, when markers go") << 0 << true << 0;
    QTest::newRow("older markers, when markers come") << 4 << false << 2;
    QTest::newRow("older markers, when markers go") << 1 << false << 0;
    QTest::newRow("older markers, when all of them go") << 0 << false << 0;
}

void tst_itemsmeanwhile::onAttachment()
{
    QFETCH(int, wanted);
    QFETCH(bool, deletesCurve);
    QFETCH(int, markersLeft);
    TestPlot& plot = *m_market->plot;
    const QList<QwtPlotMarker*> older = plot.attachedMarkers();
    QCOMPARE(older.size(), 2);
    PriceBased2dPlotCurve* const curve = markedCurve();
    int calls = 0;
    const QObject listener;
    connect(&plot, &QwtPlot::itemAttached, &listener, [&](QwtPlotItem* item, bool) {
        if (++calls > 1)
            return;
        if (deletesCurve) {
            delete curve;
            return;
        }
        for (QwtPlotMarker* marker : older) {
            if (marker != item)
                delete marker;
        }
    });
    curve->setMarkerSamples(markedPoints(wanted));
    QVERIFY(calls >= 1);
    QCOMPARE(plot.attachedMarkers().size(), markersLeft);
    QCOMPARE(markedCurve() == nullptr, deletesCurve);
    // With too few markers for the points the samples stay.
    if (!deletesCurve)
        QCOMPARE(curve->dataSize(), wanted == 0 ? size_t(0) : size_t(3));
}

// Who hears of them may ask what they are, which an item in its destructor no longer knows.
void tst_itemsmeanwhile::markersThatGoAreStillMarkers()
{
    TestPlot& plot = *m_market->plot;
    QVector<int> kinds;
    const QObject listener;
    connect(&plot, &QwtPlot::itemAttached, &listener,
        [&kinds](QwtPlotItem* item, bool) { kinds.append(item->rtti()); });
    markedCurve()->setMarkerSamples({});
    QCOMPARE(kinds, QVector<int>(2, QwtPlotItem::Rtti_PlotMarker));
}

void tst_itemsmeanwhile::markersBelowTheCurvesGoToo()
{
    TestPlot& plot = *m_market->plot;
    const QList<QwtPlotMarker*> markers = plot.attachedMarkers();
    for (QwtPlotMarker* marker : markers)
        marker->setZ(-1.0);
    QCOMPARE(plot.itemList().indexOf(markers.first()), 0);
    markedCurve()->setMarkerSamples({});
    QVERIFY(plot.attachedMarkers().isEmpty());
}

void tst_itemsmeanwhile::onReplot_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("deleted");
    for (const char* call : {"more markers", "fewer markers", "moved markers", "new markers", "grid"}) {
        for (const char* deleted : {"plot", "curves", "markers", "grid"})
            QTest::addRow("%s: %s", call, deleted) << call << deleted;
    }
}

void tst_itemsmeanwhile::onReplot()
{
    QFETCH(QString, call);
    QFETCH(QString, deleted);
    const QPointer<TestPlot> plot = m_market->plot;
    (new QwtPlotGrid)->attach(plot);
    int calls = 0;
    plot->setAutoReplot(true);
    // The host does not go on to the base class, which may have no plot any more.
    plot->replacesReplot = [&] {
        // An item that is deleted has the plot replot again.
        if (++calls > 1)
            return true;
        if (deleted == QLatin1String("plot"))
            delete plot;
        else if (deleted == QLatin1String("curves"))
            m_market->removeCurves();
        else
            plot->detachItems(
                deleted == QLatin1String("grid") ? QwtPlotItem::Rtti_PlotGrid : QwtPlotItem::Rtti_PlotMarker,
                true);
        return true;
    };
    if (call == QLatin1String("grid"))
        plot->setGridEnabled(true);
    else if (call == QLatin1String("new markers"))
        plot->createMarkers(3, markedCurve());
    else
        markedCurve()->setMarkerSamples(markedPoints(
            call == QLatin1String("more markers") ? 4 : (call == QLatin1String("fewer markers") ? 1 : 2)));
    QVERIFY(calls >= 1);
    QCOMPARE(plot.isNull(), deleted == QLatin1String("plot"));
    if (plot) {
        QCOMPARE(markedCurve() == nullptr, deleted == QLatin1String("curves"));
        QCOMPARE(plot->attachedMarkers().isEmpty(), deleted == QLatin1String("markers"));
        QCOMPARE(plot->itemList(QwtPlotItem::Rtti_PlotGrid).isEmpty(), deleted == QLatin1String("grid"));
        plot->replacesReplot = nullptr;
    }
}

void tst_itemsmeanwhile::replotsOnce_data()
{
    QTest::addColumn<bool>("replotsByItself");
    QTest::addColumn<int>("replots");
    QTest::newRow("by itself") << true << 3;
    QTest::newRow("when told") << false << 0;
}

// The plot shows the whole change, never half of it.
void tst_itemsmeanwhile::replotsOnce()
{
    QFETCH(bool, replotsByItself);
    TestPlot& plot = *m_market->plot;
    (new QwtPlotGrid)->attach(&plot);
    plot.setAutoReplot(replotsByItself);
    QVector<int> sizes;
    plot.onReplot = [&] { sizes.append(static_cast<int>(markedCurve()->dataSize())); };
    markedCurve()->setMarkerSamples(markedPoints(7));
    plot.setGridEnabled(true);
    plot.createMarkers(2, markedCurve());
    QCOMPARE(plot.autoReplot(), replotsByItself);
    QFETCH(int, replots);
    QCOMPARE(sizes, QVector<int>(replots, 7));
    plot.onReplot = nullptr;
}

PLOT2D_TEST_MAIN(tst_itemsmeanwhile)
#include "tst_itemsmeanwhile.moc"
