#include "support/qtversions.h"
#include "support/testmain.h"

#include <plot2d/sampleindex_p.h>

#include <QTest>

#include <qwt_point_data.h>

#include <memory>

namespace {

using Series = std::shared_ptr<QwtSeriesData<QPointF>>;

Series points(const QVector<QPointF>& samples)
{
    return std::make_shared<QwtPointSeriesData>(samples);
}

Series arrays(const QVector<double>& x, const QVector<double>& y)
{
    return std::make_shared<TestVersions::PointArrays>(x, y);
}

}

Q_DECLARE_METATYPE(Series)

/// An index knows the series it was made of by the place of its samples.
class tst_SampleIndexSeries : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void describesItsOwnSamplesOnly_data();
    void describesItsOwnSamplesOnly();
    void thereIsNoneOfOtherSeries();
    void arraysOfUnequalLengthsEndWithTheShorter();
};

void tst_SampleIndexSeries::describesItsOwnSamplesOnly_data()
{
    QTest::addColumn<Series>("indexed");
    QTest::addColumn<Series>("asked");
    QTest::addColumn<bool>("described");

    const QVector<QPointF> samples{{1.0, 5.0}, {2.0, 6.0}};
    const QVector<QPointF> equalSamples{{1.0, 5.0}, {2.0, 6.0}};
    const QVector<double> x{1.0, 2.0};
    const QVector<double> y{5.0, 6.0};
    const QVector<double> otherX{1.0, 2.0};
    const QVector<double> otherY{5.0, 6.0};
    QVector<double> longer = x;
    longer.append(3.0);
    QTest::newRow("the same points") << points(samples) << points(samples) << true;
    QTest::newRow("equal points elsewhere") << points(samples) << points(equalSamples) << false;
    QTest::newRow("the same arrays") << arrays(x, y) << arrays(x, y) << true;
    QTest::newRow("other prices") << arrays(x, y) << arrays(otherX, y) << false;
    QTest::newRow("other values") << arrays(x, y) << arrays(x, otherY) << false;
    QTest::newRow("longer prices") << arrays(x, y) << arrays(longer, y) << false;
    QTest::newRow("arrays for points") << points(samples) << arrays(x, y) << false;
    QTest::newRow("points for arrays") << arrays(x, y) << points(samples) << false;
    QTest::newRow("none for points") << points(samples) << Series() << false;
    QTest::newRow("none for arrays") << arrays(x, y) << Series() << false;
    QTest::newRow("no samples") << points({}) << points({}) << true;
    QTest::newRow("fewer") << points(samples) << points({}) << false;
}

void tst_SampleIndexSeries::describesItsOwnSamplesOnly()
{
    QFETCH(Series, indexed);
    QFETCH(Series, asked);
    QFETCH(bool, described);
    const std::unique_ptr<SampleIndex> index = SampleIndex::of(indexed.get());
    QVERIFY(index);
    QCOMPARE(index->describes(asked.get()), described);
}

void tst_SampleIndexSeries::thereIsNoneOfOtherSeries()
{
    class Derived : public QwtPointSeriesData {
    public:
        using QwtPointSeriesData::QwtPointSeriesData;
    };
    QVERIFY(!SampleIndex::of(nullptr));
    const Derived derived(QVector<QPointF>{{1.0, 1.0}});
    QVERIFY(!SampleIndex::of(&derived));
    QVERIFY(SampleIndex::of(points({{1.0, 1.0}}).get()));
}

void tst_SampleIndexSeries::arraysOfUnequalLengthsEndWithTheShorter()
{
    const Series series = arrays({1.0, 2.0, 3.0}, {5.0, 6.0});
    const std::unique_ptr<SampleIndex> index = SampleIndex::of(series.get());
    QCOMPARE(index->size(), 2);
    QCOMPARE(index->boundingRectangle(), QRectF(1.0, 5.0, 1.0, 1.0));
    QVERIFY(index->describes(series.get()));
}

PLOT2D_TEST_MAIN(tst_SampleIndexSeries)
#include "tst_sampleindex_series.moc"
