#include "plainanswers.h"
#include "randomcurves.h"

#include "support/testmain.h"

#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/sampleindex_p.h>
#include <plot2d/valuerange_p.h>

#include <QTest>

#include <qwt_point_data.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr int block = SampleIndex::blockSize;
constexpr int largeBlock = block * block;

using Samples = QVector<QPointF>;

std::unique_ptr<SampleIndex> indexOfPoints(const Samples& samples)
{
    const QwtPointSeriesData series(samples);
    return SampleIndex::of(&series);
}

std::unique_ptr<SampleIndex> indexOfArrays(const Samples& samples)
{
    QVector<double> x;
    QVector<double> y;
    for (const QPointF& sample : samples) {
        x.append(sample.x());
        y.append(sample.y());
    }
    const QwtPointArrayData series(x, y);
    return SampleIndex::of(&series);
}

/// Samples with ascending prices, whose values go up and down without ever being the same.
Samples restlessSamples(int count)
{
    constexpr int prime = 7919;
    Samples samples;
    for (int i = 0; i < count; ++i)
        samples.append(QPointF(i, (i * 1237) % prime));
    return samples;
}

/// Places at, before and behind the ends of blocks and of blocks of blocks, and both ends.
QVector<int> notablePlaces(int count)
{
    QVector<int> places{0, 1, 2, 3, 4, 5, count};
    for (const int end : {block, 2 * block, 3 * block, largeBlock - block, largeBlock, largeBlock + block,
             2 * largeBlock, 2 * largeBlock + block, 3 * largeBlock}) {
        for (const int place : {end - 1, end, end + 1}) {
            if (place < count)
                places.append(place);
        }
    }
    return places;
}

}

class tst_SampleIndexAnswers : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void countsFiniteSamples_data();
    void countsFiniteSamples();
    void findsFalls_data();
    void findsFalls();
    void boundsOfAnyStretch_data();
    void boundsOfAnyStretch();
    void boundsOfNothing();
    void boundingRectangle_data();
    void boundingRectangle();
    void boundsOfPrices();
    void takesLittleMemory();
    void rangesWithFuzzyEnds_data();
    void rangesWithFuzzyEnds();
};

void tst_SampleIndexAnswers::countsFiniteSamples_data()
{
    QTest::addColumn<int>("bad");
    for (const int place : notablePlaces(2 * block + 6))
        QTest::addRow("%d", place) << place;
}

void tst_SampleIndexAnswers::countsFiniteSamples()
{
    QFETCH(int, bad);
    const Samples samples = restlessSamples(2 * block + 6);
    for (const bool isPrice : {false, true}) {
        for (const double number : {infinity, -infinity, notANumber}) {
            Samples changed = samples;
            if (bad < changed.size())
                (isPrice ? changed[bad].rx() : changed[bad].ry()) = number;
            for (const auto& index : {indexOfPoints(changed), indexOfArrays(changed)}) {
                QCOMPARE(index->size(), changed.size());
                QCOMPARE(index->finiteCount(), bad);
                QCOMPARE(index->isFinite(), bad == changed.size());
                // What comes behind counts for nothing.
                QVERIFY(index->isAscending());
                QCOMPARE(index->boundingRectangle().isValid(), index->isFinite());
            }
        }
    }
}

void tst_SampleIndexAnswers::findsFalls_data()
{
    QTest::addColumn<int>("place");
    for (const int place : notablePlaces(2 * block + 6)) {
        if (place < 2 * block + 6)
            QTest::addRow("%d", place) << place;
    }
}

void tst_SampleIndexAnswers::findsFalls()
{
    QFETCH(int, place);
    Samples samples = restlessSamples(2 * block + 6);
    // As high as the one before.
    samples[place].rx() = place > 0 ? samples[place - 1].x() : -5.0;
    QVERIFY(indexOfPoints(samples)->isAscending() && indexOfArrays(samples)->isAscending());
    samples[place].rx() = place > 0 ? samples[place - 1].x() - 0.5 : 500.0;
    QVERIFY(!indexOfPoints(samples)->isAscending() && !indexOfArrays(samples)->isAscending());
    QCOMPARE(indexOfPoints(samples)->boundingRectangle(), PlainAnswers::boundingRectangle(samples));
    // Beyond what is finite nobody looks.
    samples[place].ry() = notANumber;
    QVERIFY(indexOfPoints(samples)->isAscending());
}

void tst_SampleIndexAnswers::boundsOfAnyStretch_data()
{
    QTest::addColumn<bool>("isOfPoints");
    QTest::addColumn<double>("widening");
    QTest::newRow("points, more and more apart") << true << 10.0;
    QTest::newRow("arrays, more and more apart") << false << 10.0;
    QTest::newRow("points, less and less apart") << true << -10.0;
    QTest::newRow("arrays, less and less apart") << false << -10.0;
}

void tst_SampleIndexAnswers::boundsOfAnyStretch()
{
    QFETCH(bool, isOfPoints);
    QFETCH(double, widening);
    Samples samples = restlessSamples(3 * largeBlock + 2 * block + 7);
    // The lowest and the highest values stand next to the ends of blocks.
    const QVector<int> places = notablePlaces(samples.size());
    double extreme = 15000.0;
    for (const int place : places) {
        if (place < samples.size())
            samples[place].ry() = place % 2 == 0 ? extreme : -extreme;
        extreme += widening;
    }
    const auto index = isOfPoints ? indexOfPoints(samples) : indexOfArrays(samples);
    for (const int begin : places) {
        for (const int end : places) {
            if (begin > end)
                continue;
            const SampleIndex::Bounds bounds = index->bounds(begin, end);
            const auto [low, high] = PlainAnswers::bounds(samples, begin, end);
            QVERIFY2(bounds.low == low && bounds.high == high,
                qPrintable(QStringLiteral("%1 to %2").arg(begin).arg(end)));
        }
    }
}

void tst_SampleIndexAnswers::boundsOfNothing()
{
    const auto index = indexOfPoints(restlessSamples(3 * block));
    for (const int place : {0, 1, block, block + 1, 3 * block}) {
        const SampleIndex::Bounds none = index->bounds(place, place);
        QVERIFY(none.low == infinity && none.high == -infinity);
    }
}

void tst_SampleIndexAnswers::boundingRectangle_data()
{
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<QRectF>("expected");
    QTest::newRow("none") << Samples{} << QRectF(1.0, 1.0, -2.0, -2.0);
    QTest::newRow("one") << Samples{{3.0, 4.0}} << QRectF(3.0, 4.0, 0.0, 0.0);
    QTest::newRow("ascending") << Samples{{3.0, 4.0}, {5.0, 2.0}, {9.0, 3.0}} << QRectF(3.0, 2.0, 6.0, 2.0);
    QTest::newRow("descending") << Samples{{9.0, 4.0}, {5.0, 2.0}, {3.0, 3.0}} << QRectF(3.0, 2.0, 6.0, 2.0);
    QTest::newRow("ends in the middle")
        << Samples{{5.0, 4.0}, {9.0, 2.0}, {3.0, 3.0}, {4.0, 3.0}} << QRectF(3.0, 2.0, 6.0, 2.0);
    QTest::newRow("not finite") << Samples{{3.0, 4.0}, {5.0, infinity}} << QRectF(1.0, 1.0, -2.0, -2.0);
}

void tst_SampleIndexAnswers::boundingRectangle()
{
    QFETCH(Samples, samples);
    QFETCH(QRectF, expected);
    QCOMPARE(indexOfPoints(samples)->boundingRectangle(), expected);
    QCOMPARE(indexOfArrays(samples)->boundingRectangle(), expected);
}

void tst_SampleIndexAnswers::boundsOfPrices()
{
    RandomCurves random(7);
    for (const int count : {0, 1, 2, 3, 7, 8, 100}) {
        Samples samples = random.samples(count, RandomCurves::Order::WithEquals, false);
        for (QPointF& sample : samples)
            sample.rx() = std::floor(sample.x() / 4.0);
        // Behind it stands what must not be found.
        samples.append(QPointF(notANumber, 0.0));
        samples.append(QPointF(3.0, 0.0));
        for (const auto& index : {indexOfPoints(samples), indexOfArrays(samples)}) {
            for (double price = -1.0; price < 27.0; price += 0.5) {
                const Samples finite = samples.mid(0, count);
                QCOMPARE(index->lowerBound(price), PlainAnswers::lowerBound(finite, price));
                QCOMPARE(index->upperBound(price), PlainAnswers::upperBound(finite, price));
            }
        }
    }
}

void tst_SampleIndexAnswers::takesLittleMemory()
{
    const auto bytesOf = [](int count) { return indexOfPoints(restlessSamples(count))->extraBytes(); };
    constexpr std::size_t pair = sizeof(SampleIndex::Bounds);
    QCOMPARE(bytesOf(0), sizeof(SampleIndex));
    QCOMPARE(bytesOf(block - 1), sizeof(SampleIndex));
    QCOMPARE(bytesOf(block), sizeof(SampleIndex) + pair);
    QCOMPARE(bytesOf(10 * block + 5), sizeof(SampleIndex) + 10 * pair);
    QCOMPARE(bytesOf(2 * largeBlock + 5), sizeof(SampleIndex) + (2 * block + 2) * pair);
}

void tst_SampleIndexAnswers::rangesWithFuzzyEnds_data()
{
    QTest::addColumn<double>("price");
    for (const double price : {100.0, -100.0, 1e-9, 0.0})
        QTest::addRow("%g", price) << price;
}

void tst_SampleIndexAnswers::rangesWithFuzzyEnds()
{
    QFETCH(double, price);
    // Some of these are equal to others within 1e-12 and some are not.
    QVector<double> prices{price - 1.0, price + 1.0, price + 2.0};
    for (const double part : {-2e-12, -1.2e-12, -8e-13, -4e-13, 0.0, 4e-13, 8e-13, 1.2e-12, 2e-12})
        prices.append(price * (1.0 + part));
    std::sort(prices.begin(), prices.end());
    RandomCurves random(8);
    for (int i = 0; i < 40; ++i) {
        Samples samples;
        for (const double each : prices) {
            for (int copies = random.integer(0, 2); copies > 0; --copies)
                samples.append(QPointF(each, random.integer(-50, 50)));
        }
        if (samples.isEmpty())
            continue;
        const bool endsBadly = random.oneIn(5);
        PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
        curve.setDataType(9);
        curve.setLegendAttribute(QwtPlotCurve::LegendShowLine);
        if (endsBadly)
            samples.append(QPointF(price + 3.0, infinity));
        curve.setSamples(samples);
        if (!curve.isValid())
            continue;
        for (const double x1 : prices) {
            for (const double x2 : prices) {
                QVERIFY2(ValueRange::ofCurves({&curve}, x1, x2) == PlainAnswers::valueRange(samples, x1, x2),
                    qPrintable(QStringLiteral("series %1, %2 to %3")
                                   .arg(i)
                                   .arg(x1, 0, 'g', 17)
                                   .arg(x2, 0, 'g', 17)));
            }
        }
    }
}

PLOT2D_TEST_MAIN(tst_SampleIndexAnswers)
#include "tst_sampleindex_answers.moc"
