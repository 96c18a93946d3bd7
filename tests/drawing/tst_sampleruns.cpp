#include "support/testmain.h"

#include <plot2d/sampleindex_p.h>
#include <plot2d/sampleruns_p.h>

#include <QTest>

#include <qwt_point_data.h>
#include <qwt_transform.h>

#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

using Samples = QVector<QPointF>;
using Runs = QVector<QPair<int, int>>;

QwtScaleMap map(double low, double high)
{
    QwtScaleMap made;
    made.setScaleInterval(low, high);
    made.setPaintInterval(0.0, 100.0);
    return made;
}

Runs runs(const Samples& samples, bool isIndexed, const QwtScaleMap& xMap, const QwtScaleMap& yMap, int begin,
    int end)
{
    const QwtPointSeriesData series(samples);
    const auto index = isIndexed ? SampleIndex::of(&series) : nullptr;
    Runs found;
    SampleRuns::forEach(series, index.get(), xMap, yMap, begin, end, [&found](int first, int last) {
        found.append({first, last});
    });
    return found;
}

}

Q_DECLARE_METATYPE(Runs)

class tst_SampleRuns : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void standBetweenWhatHasNoPlace_data();
    void standBetweenWhatHasNoPlace();
    void endWhereAScaleHasNoPlace();
    void endWherePixelsAreInfinite();
    void askForNoSampleThatTheIndexKnows();
};

void tst_SampleRuns::standBetweenWhatHasNoPlace_data()
{
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<int>("begin");
    QTest::addColumn<int>("end");
    QTest::addColumn<Runs>("expected");

    const Samples good{{1.0, 1.0}, {2.0, 5.0}, {3.0, 2.0}, {4.0, 4.0}};
    QTest::newRow("all") << good << 0 << 4 << Runs{{0, 3}};
    QTest::newRow("a part") << good << 1 << 3 << Runs{{1, 2}};
    QTest::newRow("one") << good << 2 << 3 << Runs{{2, 2}};
    QTest::newRow("none") << good << 2 << 2 << Runs{};
    QTest::newRow("backwards") << good << 3 << 1 << Runs{};
    QTest::newRow("hole") << Samples{{1.0, 1.0}, {2.0, notANumber}, {3.0, 2.0}} << 0 << 3
                          << Runs{{0, 0}, {2, 2}};
    QTest::newRow("holes side by side") << Samples{{1.0, 1.0}, {notANumber, 2.0}, {infinity, 2.0}, {3.0, 2.0}}
                                        << 0 << 4 << Runs{{0, 0}, {3, 3}};
    QTest::newRow("hole first") << Samples{{-infinity, 1.0}, {2.0, 1.0}, {3.0, 2.0}} << 0 << 3
                                << Runs{{1, 2}};
    QTest::newRow("hole last") << Samples{{1.0, 1.0}, {2.0, 1.0}, {3.0, -infinity}} << 0 << 3 << Runs{{0, 1}};
    QTest::newRow("hole outside") << Samples{{notANumber, 1.0}, {2.0, 1.0}, {3.0, 1.0}} << 1 << 3
                                  << Runs{{1, 2}};
    QTest::newRow("nothing but holes") << Samples{{notANumber, 1.0}, {2.0, infinity}} << 0 << 2 << Runs{};
}

void tst_SampleRuns::standBetweenWhatHasNoPlace()
{
    QFETCH(Samples, samples);
    QFETCH(int, begin);
    QFETCH(int, end);
    QFETCH(Runs, expected);
    for (const bool isIndexed : {false, true})
        QCOMPARE(runs(samples, isIndexed, map(0.0, 10.0), map(0.0, 10.0), begin, end), expected);
}

void tst_SampleRuns::endWhereAScaleHasNoPlace()
{
    // What a transformation makes of a number within a range is not bounded by what it makes of the range's
    // ends.
    class Pole : public QwtTransform {
    public:
        double transform(double value) const override
        {
            return value == 2.0 ? infinity : 1.0 / (value - 2.0);
        }
        double invTransform(double value) const override { return 2.0 + 1.0 / value; }
        QwtTransform* copy() const override { return new Pole; }
    };
    const Samples samples{{1.0, 1.0}, {2.0, 2.0}, {3.0, 3.0}};
    QwtScaleMap pole = map(3.0, 10.0);
    pole.setTransformation(new Pole);
    const Runs expected{{0, 0}, {2, 2}};
    for (const bool isIndexed : {false, true}) {
        QCOMPARE(runs(samples, isIndexed, pole, map(0.0, 10.0), 0, 3), expected);
        QCOMPARE(runs(samples, isIndexed, map(0.0, 10.0), pole, 0, 3), expected);
    }
}

void tst_SampleRuns::endWherePixelsAreInfinite()
{
    const Samples samples{{1.0, 1.0}, {1e300, 2.0}, {2.0, -1e300}, {3.0, 3.0}, {-1e300, 1.0}, {4.0, 1e300}};
    const QwtScaleMap narrow = map(0.0, 1e-20);
    for (const bool isIndexed : {false, true}) {
        QCOMPARE(runs(samples, isIndexed, narrow, map(0.0, 10.0), 0, 6), (Runs{{0, 0}, {2, 3}, {5, 5}}));
        QCOMPARE(runs(samples, isIndexed, map(0.0, 10.0), narrow, 0, 6), (Runs{{0, 1}, {3, 4}}));
        // To one side only.
        const Samples rising{{1.0, 1.0}, {1e300, 2.0}};
        QCOMPARE(runs(rising, isIndexed, narrow, map(0.0, 10.0), 0, 2), (Runs{{0, 0}}));
        const Samples falling{{-1e300, 1.0}, {1.0, 2.0}};
        QCOMPARE(runs(falling, isIndexed, narrow, map(0.0, 10.0), 0, 2), (Runs{{1, 1}}));
    }
}

void tst_SampleRuns::askForNoSampleThatTheIndexKnows()
{
    class Counting : public QwtPointSeriesData {
    public:
        using QwtPointSeriesData::QwtPointSeriesData;
        QPointF sample(std::size_t i) const override
        {
            ++asked;
            return QwtPointSeriesData::sample(i);
        }
        mutable int asked = 0;
    };
    const Samples samples{{1.0, 1.0}, {2.0, 5.0}, {3.0, 2.0}};
    const QwtPointSeriesData indexed(samples);
    const Counting counting(samples);
    const auto index = SampleIndex::of(&indexed);
    Runs found;
    const auto add = [&found](int first, int last) { found.append({first, last}); };
    SampleRuns::forEach(counting, index.get(), map(0.0, 10.0), map(0.0, 10.0), 0, 3, add);
    QCOMPARE(found, (Runs{{0, 2}}));
    QCOMPARE(counting.asked, 0);
    SampleRuns::forEach(counting, nullptr, map(0.0, 10.0), map(0.0, 10.0), 0, 3, add);
    QCOMPARE(counting.asked, 3);
}

PLOT2D_TEST_MAIN(tst_SampleRuns)
#include "tst_sampleruns.moc"
