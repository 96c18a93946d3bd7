#include "randomcurves.h"

#include "support/testmain.h"

#include <plot2d/columnwalk_p.h>
#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/sampleindex_p.h>

#include <QTest>

#include <cmath>

namespace {

/// The samples of an index, and how many numbers of theirs and of its blocks are looked at, and whether one
/// that is not there.
class CountedSamples {
public:
    explicit CountedSamples(const SampleIndex& index)
        : m_index(index)
    {
    }
    CountedSamples(const SampleIndex& index, int begin, int end)
        : m_index(index)
        , m_begin(begin)
        , m_end(end)
    {
    }

    int finiteCount() const { return m_index.finiteCount(); }
    bool isAscending() const { return m_index.isAscending(); }
    double x(int i) const { return isThere(i) ? m_index.x(i) : 0.0; }
    double y(int i) const { return isThere(i) ? m_index.y(i) : 0.0; }
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
    mutable bool isLookedPast = false;

private:
    bool isThere(int i) const
    {
        ++looks;
        isLookedPast = isLookedPast || i < m_begin || i >= m_end;
        return !isLookedPast;
    }

    const SampleIndex& m_index;
    int m_begin = 0;
    int m_end = m_index.size();
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

using CountedStretch = SampleStretch<CountedSamples>;

/// What a walk comes upon at one column.
struct Found {
    PixelColumn column;
    bool joined = false;
    int begin = 0;
    int end = 0;

    bool operator==(const Found& other) const
    {
        return begin == other.begin && end == other.end && joined == other.joined
            && column.x == other.column.x && column.first == other.column.first
            && column.last == other.column.last && column.low == other.column.low
            && column.high == other.column.high && column.hasLine == other.column.hasLine;
    }
};

QVector<Found> walked(const CountedStretch& stretch)
{
    ColumnWalk<CountedSamples> walk(stretch);
    QVector<Found> all;
    Found found;
    while (walk.next(found.column, found.joined)) {
        found.begin = walk.begin();
        found.end = walk.end();
        all.append(found);
    }
    return all;
}

/// The same by looking at each sample.
QVector<Found> plainlyWalked(const CountedStretch& stretch, const QVector<QPointF>& points)
{
    const auto isFinite
        = [&points](int i) { return std::isfinite(points[i].x()) && std::isfinite(points[i].y()); };
    const auto row = [&](int i) { return stretch.row(points[i].y()); };
    const auto column = [&](int i) { return wholePixel(stretch.xMap.transform(points[i].x())); };
    QVector<Found> all;
    for (int i = stretch.begin; i < stretch.end; ++i) {
        if (!isFinite(i))
            continue;
        const bool joined = i > stretch.begin && isFinite(i - 1);
        if (joined && all.last().column.x == column(i)) {
            all.last().column.append(row(i));
            all.last().end = i + 1;
        } else {
            all.append({PixelColumn::at(column(i), row(i)), joined, i, i + 1});
        }
    }
    return all;
}

/// The numbers that one walk through all columns looks at.
long looksAtAFrame(int sampleCount)
{
    RandomCurves random(1);
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
    curve.setSamples(random.samples(sampleCount, RandomCurves::Order::Ascending, false));
    const CountedSamples samples(*curve.sampleIndex());
    const auto stretch = wholeStretch(samples, sampleCount).seenBetween(0, columns);
    walked(stretch);
    return samples.looks;
}

}

class tst_ColumnWalk : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wholePixels_data();
    void wholePixels();
    void looksAtAFewSamplesOfAColumn();
    void equalsAPlainWalk_data();
    void equalsAPlainWalk();
    void knowsWhatIsFinite();
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
    QTest::newRow("one") << 1.0 << 1;
    QTest::newRow("half above one") << 1.5 << 2;
    QTest::newRow("less than half above one below zero") << -1.4 << -1;
    QTest::newRow("half above one below zero") << -1.5 << -2;
    QTest::newRow("just near") << 999999999.25 << 999999999;
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

void tst_ColumnWalk::equalsAPlainWalk_data()
{
    QTest::addColumn<RandomCurves::Order>("order");
    QTest::addColumn<bool>("bad");
    using Order = RandomCurves::Order;
    QTest::newRow("ascending") << Order::Ascending << false;
    QTest::newRow("with equals") << Order::WithEquals << false;
    QTest::newRow("in any order") << Order::Any << false;
    QTest::newRow("ascending, not finite") << Order::Ascending << true;
    QTest::newRow("in any order, not finite") << Order::Any << true;
}

void tst_ColumnWalk::equalsAPlainWalk()
{
    QFETCH(RandomCurves::Order, order);
    QFETCH(bool, bad);
    RandomCurves random(3);
    for (int i = 0; i < 250; ++i) {
        const int most = random.oneIn(10) ? 400 : 30;
        const QVector<QPointF> points = random.samples(random.integer(0, most), order, bad);
        PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
        curve.setSamples(points);
        const int begin = random.integer(0, points.size() / 2);
        const int end = random.integer(begin, points.size());
        const CountedSamples samples(*curve.sampleIndex(), begin, end);
        auto stretch = wholeStretch(samples, end);
        stretch.begin = begin;
        // From one column for all to hundreds.
        stretch.xMap.setPaintInterval(0.0, std::pow(10.0, random.number(0.0, 3.0)));
        if (random.oneIn(3))
            stretch.xMap.setScaleInterval(100.0, 0.0);
        if (random.oneIn(3))
            stretch.yMap.setPaintInterval(0.0, 600.0);
        QVERIFY2(walked(stretch) == plainlyWalked(stretch, points), QByteArray::number(i).constData());
        QVERIFY2(!samples.isLookedPast, QByteArray::number(i).constData());
    }
}

void tst_ColumnWalk::knowsWhatIsFinite()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
    curve.setSamples({{1.0, 0.0}, {2.0, 0.0}, {3.0, infinity}, {4.0, 0.0}, {infinity, 0.0}, {1.0, 0.0}});
    const CountedSamples samples(*curve.sampleIndex());
    auto stretch = wholeStretch(samples, 6);
    for (int i = 0; i < 6; ++i)
        QCOMPARE(stretch.isFinite(i), i != 2 && i != 4);
    for (int end = 0; end <= 6; ++end) {
        stretch.end = end;
        QCOMPARE(stretch.isFinite(), end <= 2);
        QCOMPARE(stretch.isAscending(), end <= 2);
    }
    curve.setSamples({{2.0, 0.0}, {1.0, 0.0}});
    const CountedSamples falling(*curve.sampleIndex());
    QVERIFY(wholeStretch(falling, 2).isFinite());
    QVERIFY(!wholeStretch(falling, 2).isAscending());
    const auto seen = wholeStretch(falling, 2).seenBetween(0, 1);
    QCOMPARE(seen.begin, 0);
    QCOMPARE(seen.end, 2);
}

void tst_ColumnWalk::findsTheSeenSamples()
{
    RandomCurves random(2);
    for (int i = 0; i < 2000; ++i) {
        const QVector<QPointF> points
            = random.samples(random.integer(1, 80), RandomCurves::Order::WithEquals, false);
        PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
        curve.setSamples(points);
        const int begin = random.integer(0, points.size() - 1);
        const int end = random.integer(begin, points.size());
        const CountedSamples samples(*curve.sampleIndex(), begin, end);
        auto stretch = wholeStretch(samples, end);
        stretch.begin = begin;
        const bool isMirrored = random.oneIn(3);
        if (isMirrored)
            stretch.xMap.setScaleInterval(100.0, 0.0);
        const int left = random.integer(-100, columns + 100);
        const int right = left + random.integer(0, 500);
        const auto seen = stretch.seenBetween(left, right);
        int firstSeen = begin;
        while (firstSeen < end
            && (isMirrored ? stretch.column(firstSeen) > right : stretch.column(firstSeen) < left))
            ++firstSeen;
        int firstBehind = firstSeen;
        while (firstBehind < end
            && (isMirrored ? stretch.column(firstBehind) >= left : stretch.column(firstBehind) <= right))
            ++firstBehind;
        QCOMPARE(seen.begin, std::max(begin, firstSeen - 1));
        QCOMPARE(seen.end, std::min(end, firstBehind + 1));
        QVERIFY(!samples.isLookedPast);
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
        QVERIFY(!walk.hasBeenFar());
        PixelColumn column;
        bool joined = false;
        while (walk.next(column, joined)) { }
        QCOMPARE(walk.hasBeenFar(), far > 1e9);
    }
}

Q_DECLARE_METATYPE(RandomCurves::Order)

PLOT2D_TEST_MAIN(tst_ColumnWalk)
#include "tst_columnwalk.moc"
