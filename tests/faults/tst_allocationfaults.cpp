#include "faults/exhausted.h"
#include "support/qtversions.h"
#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/closestpoint_p.h>
#include <plot2d/curvefolding_p.h>
#include <plot2d/labelthinning_p.h>
#include <plot2d/legendstate_p.h>
#include <plot2d/markerplacement_p.h>
#include <plot2d/plot2dcommon.h>
#include <plot2d/pricepoints_p.h>
#include <plot2d/quoteline_p.h>
#include <plot2d/sampleindex_p.h>
#include <plot2d/sampleruns_p.h>
#include <plot2d/scaledivision_p.h>
#include <plot2d/softfolding_p.h>
#include <plot2d/ticklabels_p.h>
#include <plot2d/valuerange_p.h>

#include <qwt_point_data.h>

#include <cmath>
#include <memory>
#include <tuple>

namespace {

QList<double> ticks()
{
    QList<double> values;
    for (int i = 0; i < 40; ++i)
        values << 100.0 + 2.5 * i;
    return values;
}

QVector<QPointF> wave(int count)
{
    QVector<QPointF> samples;
    for (int i = 0; i < count; ++i)
        samples << QPointF(0.1 * i, std::sin(0.7 * i));
    return samples;
}

template <typename Strokes> auto piecesOf(const Strokes& strokes)
{
    return std::make_tuple(strokes.columns, strokes.lines);
}

}

/// The functions that decide, and the reader of the legend's state, when memory runs out at each of their
/// allocations: they fail as a whole, keep nothing, and answer the next time.
class tst_allocationfaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init() { m_thrown = 0; }
    void cleanup();
    void faultsArrive();
    void numberTexts();
    void tickLabels();
    void thinning();
    void scales();
    void pricePoints();
    void ranges();
    void folding();
    void sampleIndex();
    void closestPoint();
    void markers();
    void legendState_data();
    void legendState();
    void curveKeepsItsSamples();

private:
    template <typename Call> void bear(const Call& call, bool allocates = true);

    /// The faults in a test function that ended a call.
    long m_thrown = 0;
    long m_thrownInAll = 0;
    std::unique_ptr<TestPlot> m_plot;
    PriceBased2dPlotCurve* m_curve = nullptr;
};

void tst_allocationfaults::initTestCase()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QSKIP("Containers of Qt 6 end the process where there is no memory.");
#endif
    TestHost::createSecurities();
    TestHost::createBoards();
    m_plot = std::make_unique<TestPlot>();
    m_curve = addCurve(*m_plot, 9, wave(5000), QStringLiteral("wave"));
    addCurve(*m_plot, 10, wave(10), QStringLiteral("short"));
}

void tst_allocationfaults::cleanupTestCase()
{
    m_plot.reset();
    TestHost::dropSecurities();
    TestHost::dropBoards();
    qInfo("%ld faults have ended a call", m_thrownInAll);
}

// A function without a fault would have tested nothing. What Qt's containers allocate goes unseen where
// malloc() does not take part.
void tst_allocationfaults::cleanup()
{
    m_thrownInAll += m_thrown;
    const QByteArray function = QTest::currentTestFunction();
    if (AllocationFault::coversMalloc() && function != "closestPoint" && function != "faultsArrive")
        QVERIFY(m_thrown > 0);
}

template <typename Call> void tst_allocationfaults::bear(const Call& call, bool allocates)
{
    const Exhausted found = exhaust(call);
    QVERIFY2(found.problem.isEmpty(), qPrintable(found.problem));
    m_thrown += found.thrown;
    QVERIFY2(allocates || found.allocations == 0, qPrintable(QString::number(found.allocations)));
}

// By the three ways of asking for memory, so that the tests below mean something.
void tst_allocationfaults::faultsArrive()
{
    const Exhausted byNew = exhaust([] { return *std::make_unique<int>(5); });
    QCOMPARE(byNew.problem, QString());
    QCOMPARE(byNew.allocations, 1L);
    QCOMPARE(byNew.thrown, 1L);
    if (AllocationFault::coversMalloc()) {
        const Exhausted byQt
            = exhaust([] { return QString(100, QLatin1Char('x')).size() + QVector<int>(9).size(); });
        QCOMPARE(byQt.problem, QString());
        QCOMPARE(byQt.allocations, 2L);
        QCOMPARE(byQt.thrown, 2L);
        static int* lost = nullptr;
        const Exhausted lostBlock = exhaust([] {
            std::unique_ptr<int> first = std::make_unique<int>(1);
            lost = first.release();
            const auto second = std::make_unique<int>(2);
            delete lost;
            return *second;
        });
        QCOMPARE(lostBlock.problem, QStringLiteral("allocation 2: 1 blocks are lost"));
        delete lost;
    }
}

void tst_allocationfaults::numberTexts()
{
    for (const double value : {1234567.890625, -0.25, 1e300, std::nan("")}) {
        for (const int decimals : {0, 2, 10}) {
            bear([=] { return Plot2dCommon::formattedValue(value, decimals); });
            bear([=] { return Plot2dCommon::fromDoubleToSystemStringShort(value, decimals); });
        }
        bear([=] { return std::isnan(value) ? 0.0 : Plot2dCommon::roundValue(value, 3); }, false);
    }
    const decimal price = TestHost::number(QStringLiteral("1234.567"));
    bear([price] { return TestHost::text(price); });
    const QString text = TestHost::text(price);
    bear([text] { return TestHost::number(text); });
}

void tst_allocationfaults::tickLabels()
{
    const QList<double> major = ticks();
    QList<double> medium;
    for (const double tick : major)
        medium << tick + 1.25;
    bear([&] { return TickLabels::candidates(major, medium); });
    bear([&] { return TickLabels::equalDigits(major); }, false);
    bear([&] { return TickLabels::maxFractionLength(major, 2); });
    bear([&] {
        return TickLabels::readTheSame(major, [](double value) { return QString::number(value, 'f', 0); });
    });
}

void tst_allocationfaults::thinning()
{
    const QList<double> all = ticks();
    const auto measure = [](double value) { return QRect(int(value) * 2, 0, 12, 10); };
    for (const bool drawn : {false, true}) {
        const LabelThinning::QuoteLabel quote{131.0, LabelThinning::quoteIndex(all, 131.0), drawn};
        bear([&] {
            const LabelThinning::Result result = LabelThinning::thinned(all, quote, measure);
            return std::make_pair(result.ticks, result.quoteIndex);
        });
        QList<QRect> rectangles;
        for (const double tick : all)
            rectangles << measure(tick);
        bear([&] { return LabelThinning::overlaps(all, rectangles, quote, measure(quote.value)); });
        bear([&] {
            QList<double> left = all;
            const bool removed = LabelThinning::removeNeighbourOfQuote({130.0, 131.0}, quote, left);
            return std::make_pair(removed, left);
        });
    }
}

void tst_allocationfaults::scales()
{
    QList<double> medium{101.0, 103.0};
    QList<double> minor{100.5, 101.5};
    const QwtScaleDiv division(100.0, 200.0, minor, medium, ticks());
    bear([&] {
        const QwtScaleDiv moved = ScaleDivision::anchored(division, 131.3, 100.0, 200.0);
        return std::make_tuple(moved.ticks(0), moved.ticks(1), moved.ticks(2));
    });
    bear([] { return ScaleDivision::isDivisible({100.0, 200.0, 8, 5, 0.0, 10}); }, false);
}

void tst_allocationfaults::pricePoints()
{
    bear([] { return PricePoints::progression(100.0, 200.0, 0.5); });
    const QList<double> base = PricePoints::progression(100.0, 200.0, 10.0);
    bear([&] { return PricePoints::densified(base, 130.0, 150.0, 10.0); });
    QVector<decimal> strikes;
    for (int i = 0; i < 20; ++i)
        strikes << TestHost::number(QString::number(100 + 5 * i));
    bear([&] { return PricePoints::bracket(strikes, {131.0, 149.0}); });
}

void tst_allocationfaults::ranges()
{
    const QList<PriceBased2dPlotCurve*> curves = m_plot->attachedCurves(-1);
    bear([&] { return ValueRange::ofCurves(curves, 1.0, 300.0); }, false);
    bear([&] { return ValueRange::boundingRectangle(curves); }, false);
    bear([&] { return m_plot->attachedCurves(-1); });
    bear([&] { return m_plot->attachedCurves(9); });
    bear([&] { return m_plot->minMaxYAtXRange(); });
    bear([&] { return m_plot->curvesRectangle(); });
}

void tst_allocationfaults::folding()
{
    const SampleIndex* index = m_curve->sampleIndex();
    QVERIFY(index);
    CurveFolding::Stretch stretch{*index, {}, {}, 0, index->size()};
    stretch.xMap.setScaleInterval(0.0, 500.0);
    stretch.xMap.setPaintInterval(0.0, 300.0);
    stretch.yMap.setScaleInterval(-1.0, 1.0);
    stretch.yMap.setPaintInterval(200.0, 0.0);
    for (const int width : {1, 2, 8}) {
        for (const auto shape : {CurveFolding::Shape::Straight, CurveFolding::Shape::HorizontalFirst,
                 CurveFolding::Shape::VerticalFirst})
            bear([&] { return piecesOf(*CurveFolding::strokes(stretch, shape, width, {0, 200})); });
        bear([&] { return piecesOf(CurveFolding::sticks(stretch, width, 100)); });
    }
    bear([&] { return *CurveFolding::polylines(stretch); });
    bear([&] {
        const auto strokes = *SoftFolding::strokes(stretch);
        return std::make_tuple(strokes.columns, strokes.ends, strokes.lines, strokes.polylines);
    });
    bear([&] {
        QVector<int> ends;
        SampleRuns::forEach(*m_curve->data(), nullptr, stretch.xMap, stretch.yMap, 0, index->size(),
            [&ends](int first, int last) { ends << first << last; });
        return ends;
    });
}

void tst_allocationfaults::sampleIndex()
{
    const auto answers = [](const QwtSeriesData<QPointF>* series) {
        const auto index = SampleIndex::of(series);
        const SampleIndex::Bounds bounds = index->bounds(3, 2900);
        return std::make_tuple(
            index->size(), index->finiteCount(), index->isAscending(), bounds.low, bounds.high);
    };
    const QwtPointSeriesData points(wave(3000));
    bear([&] { return answers(&points); });
    QVector<double> x;
    QVector<double> y;
    for (const QPointF& point : wave(3000)) {
        x << point.x();
        y << point.y();
    }
    const TestVersions::PointArrays arrays(x, y);
    bear([&] { return answers(&arrays); });
}

void tst_allocationfaults::closestPoint()
{
    const ClosestPointCalcParams params{0.0, 500.0, -1.0, 1.0, 222.0, 0.9};
    const auto asTuple
        = [](const ClosestPointParams& found) { return std::make_tuple(found.index, found.distance); };
    bear([&] { return asTuple(ClosestPoint::find(*m_curve->sampleIndex(), params)); }, false);
    const std::function<QPointF(int)> sample = [this](int i) { return m_curve->sample(std::size_t(i)); };
    bear([&] { return asTuple(ClosestPoint::find(5000, sample, params)); }, false);
    bear(
        [] {
            const auto ends = QuoteLine::ends(1.0, 2.0, 100.0);
            return std::make_pair(ends->front(), ends->back());
        },
        false);
}

void tst_allocationfaults::markers()
{
    const QList<QwtPlotMarker*> markers = m_plot->createMarkers(2, m_curve);
    const QVector<PriceBased2dPlotPoint> points{{1.0, 2.0, true}, {2.0, 3.0, false}, {3.0, 4.0, true}};
    bear([&] { return *placeMarkers(points, markers, true); });
    bear([&] {
        QList<QwtPlotMarker*> attached = markers;
        keepAttached(*m_plot, attached);
        return attached;
    });
    QList<QwtPlotMarker*> surplus = markers;
    dropSurplusMarkers(*m_plot, surplus, 0);
    QVERIFY(surplus.isEmpty());
}

void tst_allocationfaults::legendState_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("records");
    const QByteArray whole = LegendState::write(m_plot->attachedCurves(-1));
    QTest::newRow("whole") << whole << 2;
    QTest::newRow("cut off") << whole.left(whole.size() - 1) << 1;
    QTest::newRow("more than there are")
        << whole.left(8) + QByteArray("\x7f\xff\xff\xff", 4) + whole.mid(12) << 2;
    QTest::newRow("of another version") << QByteArray(40, '\x01') << 0;
}

void tst_allocationfaults::legendState()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, records);
    const QSet<int> types{-1, 9, 10, 11};
    bear([&] {
        QVector<int> read;
        const auto found = LegendState::read(bytes, types);
        for (const auto& record : found)
            read << record.dataType << record.isValid << record.isVisible;
        return read;
    });
    QCOMPARE(LegendState::read(bytes, types).size(), records);
    const QList<PriceBased2dPlotCurve*> curves = m_plot->attachedCurves(-1);
    bear([&] { return LegendState::write(curves); });
}

// Samples are replaced as a whole, and the index of the old ones is not asked about the new ones.
void tst_allocationfaults::curveKeepsItsSamples()
{
    const QVector<QPointF> first = wave(100);
    const QVector<QPointF> second = wave(4000);
    PriceBased2dPlotCurve curve(m_plot.get(), QStringLiteral("curve"));
    const auto reset = [&] {
        curve.setSamples(first);
        return curve.boundingRect();
    };
    const QRectF before = reset();
    curve.setSamples(second);
    const QRectF after = curve.boundingRect();
    for (long failing = 1;; ++failing) {
        QCOMPARE(reset(), before);
        bool hasThrown = false;
        long asked = 0;
        try {
            const AllocationFault::Window window(failing);
            const auto note = qScopeGuard([&asked] { asked = AllocationFault::Window::count(); });
            curve.setSamples(second);
        } catch (const std::bad_alloc&) {
            hasThrown = true;
        }
        const int size = int(curve.dataSize());
        QVERIFY2(size == first.size() || size == second.size(), qPrintable(QString::number(failing)));
        QCOMPARE(curve.boundingRect(), size == first.size() ? before : after);
        const SampleIndex* index = curve.sampleIndex();
        QVERIFY(!index || index->size() == size);
        if (asked < failing && !hasThrown) {
            QCOMPARE(size, second.size());
            return;
        }
        m_thrown += hasThrown ? 1 : 0;
    }
}

PLOT2D_TEST_MAIN(tst_allocationfaults)
#include "tst_allocationfaults.moc"
