#include "randomcurves.h"

#include "support/testmain.h"

#include <plot2d/columnwalk_p.h>
#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/sampleindex_p.h>

#include <QTest>

#include <cmath>

namespace {

/// The samples of an index, and how many numbers of theirs and of its blocks are looked at.
class CountedSamples {
public:
    explicit CountedSamples(const SampleIndex& index)
        : m_index(index)
    {
    }

    int finiteCount() const { return m_index.finiteCount(); }
    bool isAscending() const { return m_index.isAscending(); }
    double x(int i) const
    {
        ++looks;
        return m_index.x(i);
    }
    double y(int i) const
    {
        ++looks;
        return m_index.y(i);
    }
    SampleIndex::Bounds bounds(int begin, int end) const
    {
        // The samples beyond whole blocks, the blocks beyond whole blocks of blocks, and these.
        constexpr int block = SampleIndex::blockSize;
        const int whole = (end - begin) / block;
        looks += whole == 0 ? end - begin
                            : std::min(end - begin, 2 * block) + std::min(whole, 2 * block) + whole / block;
        return m_index.bounds(begin, end);
    }

    mutable long looks = 0;

private:
    const SampleIndex& m_index;
};

constexpr int columns = 1200;

SampleStretch<CountedSamples> wholeStretch(const CountedSamples& samples, int count)
{
    SampleStretch<CountedSamples> stretch{samples, {}, {}, 0, count};
    stretch.xMap.setScaleInterval(0.0, 100.0);
    stretch.xMap.setPaintInterval(0.0, columns);
    stretch.yMap.setScaleInterval(-1.0, 1.0);
    stretch.yMap.setPaintInterval(600.0, 0.0);
    return stretch;
}

/// The numbers that one walk through all columns looks at.
long looksAtAFrame(int sampleCount)
{
    RandomCurves random(1);
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
    curve.setSamples(random.samples(sampleCount, RandomCurves::Order::Ascending, false));
    const CountedSamples samples(*curve.sampleIndex());
    const auto stretch = wholeStretch(samples, sampleCount).seenBetween(0, columns);
    ColumnWalk<CountedSamples> walk(stretch);
    PixelColumn column;
    bool joined = false;
    while (walk.next(column, joined)) { }
    return samples.looks;
}

}

class tst_ColumnWalk : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wholePixels_data();
    void wholePixels();
    void looksAtAFewSamplesOfAColumn();
    void findsTheSeenSamples();
    void tellsOfFarColumns();
};

void tst_ColumnWalk::wholePixels_data()
{
    QTest::addColumn<double>("coordinate");
    QTest::addColumn<int>("pixel");
    QTest::newRow("zero") << 0.0 << 0;
    QTest::newRow("half") << 0.5 << 1;
    QTest::newRow("less than half") << 0.49 << 0;
    QTest::newRow("half below zero") << -0.5 << -1;
    QTest::newRow("less than half below zero") << -0.49 << 0;
    QTest::newRow("far") << 1e9 << 1000000000;
    QTest::newRow("too far") << 1e300 << 1000000000;
    QTest::newRow("too far below zero") << -1e300 << -1000000000;
    QTest::newRow("infinite") << -std::numeric_limits<double>::infinity() << -1000000000;
    QTest::newRow("no number") << std::nan("") << 1000000000;
}

void tst_ColumnWalk::wholePixels()
{
    QFETCH(double, coordinate);
    QFETCH(int, pixel);
    QCOMPARE(wholePixel(coordinate), pixel);
}

void tst_ColumnWalk::looksAtAFewSamplesOfAColumn()
{
    const long thousand = looksAtAFrame(1000);
    const long million = looksAtAFrame(1000000);
    qInfo("%ld numbers of 1,000 samples, %ld of 1,000,000", thousand, million);
    QVERIFY(thousand < 20 * 1000);
    QVERIFY(million < 160 * columns);
    QVERIFY(looksAtAFrame(2000000) < million + 40 * columns);
}

void tst_ColumnWalk::findsTheSeenSamples()
{
    RandomCurves random(2);
    for (int i = 0; i < 2000; ++i) {
        const QVector<QPointF> points
            = random.samples(random.integer(1, 80), RandomCurves::Order::WithEquals, false);
        PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
        curve.setSamples(points);
        const CountedSamples samples(*curve.sampleIndex());
        auto stretch = wholeStretch(samples, points.size());
        if (random.oneIn(3))
            stretch.xMap.setScaleInterval(100.0, 0.0);
        const int left = random.integer(-100, columns + 100);
        const int right = left + random.integer(0, 500);
        const auto seen = stretch.seenBetween(left, right);
        for (int sample = 0; sample < points.size(); ++sample) {
            const bool isSeen = left <= stretch.column(sample) && stretch.column(sample) <= right;
            QVERIFY(!isSeen || (seen.begin <= sample && sample < seen.end));
            const bool isInside = seen.begin < sample && sample < seen.end - 1;
            QVERIFY(!isInside || isSeen);
        }
    }
}

void tst_ColumnWalk::tellsOfFarColumns()
{
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
    for (const double far : {0.5, 1e30}) {
        curve.setSamples({{1.0, 0.0}, {2.0, far}, {3.0, 0.0}});
        const CountedSamples samples(*curve.sampleIndex());
        const auto stretch = wholeStretch(samples, 3);
        ColumnWalk<CountedSamples> walk(stretch);
        PixelColumn column;
        bool joined = false;
        while (walk.next(column, joined)) { }
        QCOMPARE(walk.hasBeenFar(), far > 1e9);
    }
}

PLOT2D_TEST_MAIN(tst_ColumnWalk)
#include "tst_columnwalk.moc"
