#include "plainanswers.h"
#include "randomcurves.h"

#include "support/testmain.h"

#include <plot2d/closestpoint_p.h>
#include <plot2d/sampleindex_p.h>

#include <QTest>

#include <qwt_point_data.h>

#include <cmath>
#include <memory>

namespace {

using Samples = QVector<QPointF>;

std::unique_ptr<SampleIndex> indexOf(const Samples& samples)
{
    const QwtPointSeriesData series(samples);
    return SampleIndex::of(&series);
}

/// Samples at the whole prices from 0 on, with a value for each.
template <class Value> Samples samplesOf(int count, const Value& value)
{
    Samples samples;
    for (int i = 0; i < count; ++i)
        samples.append(QPointF(i, value(i)));
    return samples;
}

}

/// The nearest of samples that are indexed.
class tst_ClosestIndexed : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void equalsAWalk_data();
    void equalsAWalk();
    void ofEquallyNearOnesTheFirst();
    void belowTheView();
    void noneInFrontOfTheFirst();
    void noneBehindTheLast();
    void amongMoreThanAMillion();
};

void tst_ClosestIndexed::equalsAWalk_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<RandomCurves::Order>("order");
    // Around the ends of blocks, and of blocks of blocks.
    for (const int count : {0, 1, 2, 31, 32, 33, 64, 65, 1023, 1024, 1025, 2048, 2049, 3300}) {
        QTest::addRow("%d", count) << count << RandomCurves::Order::Ascending;
        QTest::addRow("%d with equal prices", count) << count << RandomCurves::Order::WithEquals;
        QTest::addRow("%d in any order", count) << count << RandomCurves::Order::Any;
    }
}

void tst_ClosestIndexed::equalsAWalk()
{
    QFETCH(int, count);
    QFETCH(RandomCurves::Order, order);
    RandomCurves random(static_cast<unsigned>(count));
    for (int series = 0; series < 4; ++series) {
        Samples samples = random.samples(count, order, random.oneIn(4));
        const bool isOnGrid = random.oneIn(2);
        if (isOnGrid) {
            for (QPointF& sample : samples)
                sample = QPointF(std::floor(sample.x()), std::floor(sample.y() * 4.0));
        }
        const auto index = indexOf(samples);
        for (int i = 0; i < 16; ++i) {
            const auto number = [&](double low, double high) {
                const double any = random.number(low, high);
                return isOnGrid ? std::floor(any) : any;
            };
            ClosestPointCalcParams params;
            params.xMin = number(-10.0, 90.0);
            params.xMax = params.xMin + number(1.0, 120.0);
            params.yMin = number(-6.0, 4.0);
            params.yMax = params.yMin + (random.oneIn(10) ? 0.0 : number(0.0, 10.0));
            params.cursorX = number(-10.0, 120.0);
            params.cursorY = number(-2.0, 10.0);
            const ClosestPointParams found = ClosestPoint::find(*index, params);
            const ClosestPointParams expected = PlainAnswers::closestPoint(samples, params);
            const QByteArray where = QStringLiteral("series %1, question %2").arg(series).arg(i).toUtf8();
            QVERIFY2(found.index == expected.index, where.constData());
            QVERIFY2(found.distance == expected.distance, where.constData());
        }
    }
}

void tst_ClosestIndexed::ofEquallyNearOnesTheFirst()
{
    // A view of 100 by 100: a unit is a percent. The cursor is at 50, and 10 above the middle.
    const ClosestPointCalcParams params{0.0, 100.0, 0.0, 100.0, 50.0, 60.0};
    const auto nearest
        = [&params](const Samples& samples) { return ClosestPoint::find(*indexOf(samples), params).index; };
    QCOMPARE(nearest({{20.0, 60.0}, {40.0, 60.0}, {60.0, 60.0}, {80.0, 60.0}}), 1);
    QCOMPARE(nearest({{20.0, 60.0}, {45.0, 55.0}, {50.0, 50.0}, {55.0, 65.0}}), 1);
    QCOMPARE(nearest({{20.0, 60.0}, {50.0, 50.0}, {50.0, 50.0}, {50.0, 70.0}}), 1);
    QCOMPARE(nearest({{20.0, 60.0}, {49.5, 60.0}, {50.0, 60.5}, {50.5, 60.0}}), 1);
    QCOMPARE(nearest({{0.0, 0.0}, {20.0, 60.0}, {49.5, 60.0}, {50.25, 60.0}, {51.0, 60.0}}), 3);
}

void tst_ClosestIndexed::belowTheView()
{
    const ClosestPointCalcParams params{1000.0, 3000.0, 10.0, 20.0, 1000.0, 5.0};
    const auto isSeen = [](int i) { return i == 1300 || i == 2700; };
    const Samples samples = samplesOf(4000, [&isSeen](int i) { return isSeen(i) ? 15.0 : 9.0; });
    const ClosestPointParams found = ClosestPoint::find(*indexOf(samples), params);
    QCOMPARE(found.index, 1300);
    QCOMPARE(found.distance, 35.0);
    QCOMPARE(ClosestPoint::find(*indexOf(samples), {1301.0, 2699.0, 10.0, 20.0, 0.0, 0.0}).index, -1);
}

void tst_ClosestIndexed::noneInFrontOfTheFirst()
{
    // What stands in memory in front of samples reads like very small numbers.
    const ClosestPointCalcParams params{-50.0, 50.0, -50.0, 50.0, 50.0, 50.0};
    const ClosestPointParams found = ClosestPoint::find(*indexOf({{20.0, 20.0}, {30.0, 30.0}}), params);
    QCOMPARE(found.index, 0);
    QCOMPARE(found.distance, 40.0);
}

void tst_ClosestIndexed::noneBehindTheLast()
{
    // Prices without values, which are no samples.
    const QVector<double> prices{10.0, 20.0, 30.0, -1e6, -1e6, -1e6};
    const QwtPointArrayData series(prices, {5.0, 5.0, 5.0});
    const auto index = SampleIndex::of(&series);
    const ClosestPointParams found
        = ClosestPoint::find(*index, ClosestPointCalcParams{0.0, 100.0, 0.0, 10.0, 60.0, 5.0});
    QCOMPARE(found.index, 2);
    QCOMPARE(found.distance, 30.0);
}

void tst_ClosestIndexed::amongMoreThanAMillion()
{
    constexpr int count = 1024 * 1024 + 2;
    const auto index = indexOf(samplesOf(count, [](int) { return 1.0; }));
    const ClosestPointCalcParams params{0.0, 2.0 * count, 0.0, 2.0, 1.5 * count, 1.0};
    QCOMPARE(ClosestPoint::find(*index, params).index, count - 1);
}

Q_DECLARE_METATYPE(RandomCurves::Order)

PLOT2D_TEST_MAIN(tst_ClosestIndexed)
#include "tst_closestindexed.moc"
