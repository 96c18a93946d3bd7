#include "plainanswers.h"
#include "randomcurves.h"
#include "support/qtversions.h"

#include "support/testmain.h"

#include <plot2d/closestpoint_p.h>
#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/sampleindex_p.h>
#include <plot2d/valuerange_p.h>

#include <QTest>

#include <qwt_point_data.h>

#include <cmath>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

using Order = RandomCurves::Order;

/// Samples of a few, rarely of some thousand, so that blocks of blocks come in as well. Half of them lie on a
/// grid, where distances tie and values repeat.
QVector<QPointF> randomSamples(RandomCurves& random)
{
    const int most = random.oneIn(40) ? 3000 : random.oneIn(3) ? 200 : 40;
    const Order orders[] = {Order::Ascending, Order::WithEquals, Order::Any};
    const Order order = orders[random.integer(0, 2)];
    QVector<QPointF> samples = random.samples(random.integer(0, most), order, random.oneIn(4));
    if (random.oneIn(2)) {
        for (QPointF& sample : samples)
            sample = QPointF(std::floor(sample.x()), std::floor(sample.y() * 4.0));
    }
    return samples;
}

void setRandomData(RandomCurves& random, PriceBased2dPlotCurve& curve, const QVector<QPointF>& samples)
{
    if (random.oneIn(2))
        curve.setSamples(samples);
    else
        setAsArrays(curve, samples);
}

/// A price at, next to, between or far from the samples.
double randomPrice(RandomCurves& random, const QVector<QPointF>& samples)
{
    if (samples.isEmpty() || random.oneIn(4))
        return random.oneIn(10) ? (random.oneIn(2) ? infinity : -infinity) : random.number(-20.0, 120.0);
    const double price = samples[random.integer(0, samples.size() - 1)].x();
    switch (random.integer(0, 3)) {
    case 0:
        return std::nextafter(price, infinity);
    case 1:
        return price * (1.0 - 5e-13);
    default:
        return price;
    }
}

QString describe(int seed, int round, const QVector<QPointF>& samples)
{
    return QStringLiteral("seed %1, series %2 of %3 samples").arg(seed).arg(round).arg(samples.size());
}

/// Calls check(random, curve, samples) for so many series.
template <class Check> void forRandomCurves(int seed, int series, const Check& check)
{
    RandomCurves random(static_cast<unsigned>(seed));
    for (int round = 0; round < series && !QTest::currentTestFailed(); ++round) {
        const QVector<QPointF> samples = randomSamples(random);
        PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
        curve.setDataType(9);
        curve.setLegendAttribute(QwtPlotCurve::LegendShowLine);
        setRandomData(random, curve, samples);
        check(random, curve, samples);
        if (QTest::currentTestFailed())
            qInfo("%s", qPrintable(describe(seed, round, samples)));
    }
}

// What is asked of each series: together with the numbers of series more than a million questions.
constexpr int questions = 40;

}

class tst_SampleIndex : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatItKnows();
    void boundsOfStretches();
    void rangeOfVisibleValues();
    void closestPoint();
    void followsWhatTheCurveShows();
    void hasNoIndexOfAHostsSeries();
    void extraMemory();
};

void tst_SampleIndex::tellsWhatItKnows()
{
    forRandomCurves(1, 5000, [](RandomCurves& random, auto& curve, const auto& samples) {
        const SampleIndex* const index = curve.sampleIndex();
        QVERIFY(index);
        QCOMPARE(index->size(), samples.size());
        const int finite = PlainAnswers::finiteCount(samples);
        QCOMPARE(index->finiteCount(), finite);
        QCOMPARE(index->isFinite(), finite == samples.size());
        QCOMPARE(index->isAscending(), PlainAnswers::isAscending(samples.mid(0, finite)));
        if (index->isFinite() && !samples.isEmpty())
            QCOMPARE(curve.boundingRect(), PlainAnswers::boundingRectangle(samples));
        if (!index->isAscending())
            return;
        for (int i = 0; i < questions; ++i) {
            const double price = randomPrice(random, samples);
            QCOMPARE(index->lowerBound(price), PlainAnswers::lowerBound(samples.mid(0, finite), price));
            QCOMPARE(index->upperBound(price), PlainAnswers::upperBound(samples.mid(0, finite), price));
        }
    });
}

void tst_SampleIndex::boundsOfStretches()
{
    forRandomCurves(2, 10000, [](RandomCurves& random, auto& curve, const auto& samples) {
        const SampleIndex* const index = curve.sampleIndex();
        for (int i = 0; i < questions; ++i) {
            const int begin = random.integer(0, index->finiteCount());
            const int end = random.integer(begin, index->finiteCount());
            const SampleIndex::Bounds bounds = index->bounds(begin, end);
            const auto [low, high] = PlainAnswers::bounds(samples, begin, end);
            QVERIFY(bounds.low == low && bounds.high == high);
        }
    });
}

void tst_SampleIndex::rangeOfVisibleValues()
{
    forRandomCurves(3, 12000, [](RandomCurves& random, auto& curve, const auto& samples) {
        // Without samples, or around NaN, a curve is not asked.
        const bool isAsked = curve.isValid();
        for (int i = 0; isAsked && i < questions; ++i) {
            const double x1 = randomPrice(random, samples);
            const double x2 = randomPrice(random, samples);
            const auto found = ValueRange::ofCurves({&curve}, x1, x2);
            const auto expected = PlainAnswers::valueRange(samples, x1, x2);
            QVERIFY2(found == expected,
                qPrintable(QStringLiteral("%1 to %2").arg(x1, 0, 'g', 17).arg(x2, 0, 'g', 17)));
        }
    });
}

void tst_SampleIndex::closestPoint()
{
    forRandomCurves(4, 12000, [](RandomCurves& random, auto& curve, const auto& samples) {
        for (int i = 0; i < questions; ++i) {
            const double grid = random.oneIn(2) ? 1.0 : 0.0;
            const auto number = [&](double low, double high) {
                const double any = random.number(low, high);
                return grid > 0.0 ? std::floor(any) : any;
            };
            ClosestPointCalcParams params;
            params.xMin = number(-10.0, 90.0);
            params.xMax = params.xMin + number(1.0, 120.0);
            params.yMin = number(-6.0, 4.0);
            params.yMax = params.yMin + (random.oneIn(10) ? 0.0 : number(0.0, 10.0));
            params.cursorX = number(-10.0, 120.0);
            params.cursorY = number(-2.0, 10.0);
            const ClosestPointParams found = ClosestPoint::find(*curve.sampleIndex(), params);
            const ClosestPointParams expected = PlainAnswers::closestPoint(samples, params);
            QCOMPARE(found.index, expected.index);
            QVERIFY(found.distance == expected.distance);
        }
    });
}

void tst_SampleIndex::followsWhatTheCurveShows()
{
    RandomCurves random(5);
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
    for (int i = 0; i < 2000; ++i) {
        const QVector<QPointF> samples = randomSamples(random);
        auto* const points = dynamic_cast<QwtPointSeriesData*>(curve.data());
        switch (random.integer(0, 3)) {
        case 0:
            curve.setData(new QwtPointSeriesData(samples));
            break;
        case 1:
            setAsArrays(curve, samples);
            break;
        case 2:
            curve.setSamples(samples);
            break;
        default:
            // The series' own setter tells nobody.
            if (points)
                points->setSamples(samples);
            else
                curve.setSamples(samples);
        }
        const SampleIndex* const index = curve.sampleIndex();
        QVERIFY(index);
        QCOMPARE(index->size(), samples.size());
        for (int sample = 0; sample < samples.size(); ++sample) {
            QVERIFY(PlainAnswers::isSame(index->x(sample), samples[sample].x()));
            QVERIFY(PlainAnswers::isSame(index->y(sample), samples[sample].y()));
        }
    }
}

void tst_SampleIndex::hasNoIndexOfAHostsSeries()
{
    class Halved : public QwtPointSeriesData {
    public:
        using QwtPointSeriesData::QwtPointSeriesData;
        QPointF sample(std::size_t i) const override { return QwtPointSeriesData::sample(i) / 2.0; }
    };
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
    curve.setDataType(9);
    curve.setLegendAttribute(QwtPlotCurve::LegendShowLine);
    const QVector<QPointF> samples{{2.0, 8.0}, {4.0, 20.0}, {6.0, 12.0}};
    curve.setSamples(samples);
    QVERIFY(curve.sampleIndex());
    curve.setSamples(new Halved(samples));
    QVERIFY(!curve.sampleIndex());
    QCOMPARE(ValueRange::ofCurves({&curve}, 1.0, 3.0), ValueRange::Range(4.0, 10.0));
    curve.setSamples(static_cast<QwtSeriesData<QPointF>*>(nullptr));
    QVERIFY(!curve.sampleIndex());
}

void tst_SampleIndex::extraMemory()
{
    constexpr int count = 100000;
    RandomCurves random(6);
    const QVector<QPointF> samples = random.samples(count, Order::Ascending, false);
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
    curve.setSamples(samples);
    constexpr std::size_t sampleBytes = sizeof(QPointF) * count;
    QVERIFY(curve.sampleIndex()->extraBytes() < sampleBytes / 20);
    QVector<double> numbers(count, 1.0);
    curve.setSamples(numbers.constData(), numbers.constData(), count);
    QCOMPARE(static_cast<TestVersions::PointArrays*>(curve.data())->xData().capacity(), count);
    curve.setSamples(samples);
    // The samples themselves are the caller's, not a copy of them.
    QVERIFY(static_cast<QwtPointSeriesData*>(curve.data())->samples().constData() == samples.constData());
}

PLOT2D_TEST_MAIN(tst_SampleIndex)
#include "tst_sampleindex.moc"
