#include "support/leasttime.h"
#include "support/testmain.h"

#include <plot2d/closestpoint_p.h>
#include <plot2d/sampleindex_p.h>

#include <QTest>

#include <qwt_point_data.h>

#include <algorithm>
#include <functional>
#include <memory>

namespace {

constexpr int count = 1 << 20;
constexpr int middle = count / 2;
// The index takes a few thousandths of what a walk does; a tenth leaves room for other builds and machines.
constexpr int leastGain = 10;

void compareTimes(const std::function<void()>& indexed, const std::function<void()>& walk)
{
    const qint64 indexedTime = TestSupport::leastTime(indexed);
    const qint64 walkTime = TestSupport::leastTime(walk);
    QVERIFY2(indexedTime * leastGain < walkTime,
        qPrintable(QStringLiteral("%1 ns, and %2 ns for a walk").arg(indexedTime).arg(walkTime)));
}

/// Samples of one value at the whole prices from 0 on.
QVector<QPointF> levelSamples(double value)
{
    QVector<QPointF> samples;
    samples.reserve(count);
    for (int i = 0; i < count; ++i)
        samples.append(QPointF(i, value));
    return samples;
}

}

/// What is asked of many indexed samples costs a small part of a walk over them.
class tst_SearchCost : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ofTheClosest_data();
    void ofTheClosest();
    void ofBounds();
};

void tst_SearchCost::ofTheClosest_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("isFound");
    // The samples are half the view or more away from the cursor, so that their prices alone rule none of
    // them out.
    QTest::newRow("below the cursor") << 0.0 << true;
    QTest::newRow("above the cursor") << 2.0 << true;
    QTest::newRow("outside the view") << 3.0 << false;
}

void tst_SearchCost::ofTheClosest()
{
    QFETCH(double, value);
    QFETCH(bool, isFound);
    const QVector<QPointF> samples = levelSamples(value);
    const QwtPointSeriesData series(samples);
    const std::unique_ptr<SampleIndex> index = SampleIndex::of(&series);
    QVERIFY(index);

    ClosestPointCalcParams params;
    params.xMin = 0.0;
    params.xMax = count;
    params.yMin = 0.0;
    params.yMax = 2.0;
    params.cursorX = middle;
    params.cursorY = 1.0;
    const int expected = isFound ? middle : ClosestPointParams().index;
    compareTimes([&] { QCOMPARE(ClosestPoint::find(*index, params).index, expected); },
        [&] {
            const auto sample = [&samples](int i) { return samples.at(i); };
            QCOMPARE(ClosestPoint::find(count, sample, params).index, expected);
        });
}

void tst_SearchCost::ofBounds()
{
    QVector<QPointF> samples = levelSamples(1.0);
    samples[middle].setY(2.0);
    const QwtPointSeriesData series(samples);
    const std::unique_ptr<SampleIndex> index = SampleIndex::of(&series);
    QVERIFY(index);
    // Neither end is one of a block.
    constexpr int begin = 1001;
    constexpr int end = count - 1;
    compareTimes(
        [&] {
            const SampleIndex::Bounds bounds = index->bounds(begin, end);
            QCOMPARE(bounds.low, 1.0);
            QCOMPARE(bounds.high, 2.0);
        },
        [&] {
            double low = samples.at(begin).y();
            double high = low;
            for (int i = begin; i < end; ++i) {
                low = std::min(low, samples.at(i).y());
                high = std::max(high, samples.at(i).y());
            }
            QCOMPARE(low, 1.0);
            QCOMPARE(high, 2.0);
        });
}

PLOT2D_TEST_MAIN(tst_SearchCost)
#include "tst_searchcost.moc"
