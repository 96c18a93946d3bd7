#include "plot2d/closestpoint_p.h"
#include "support/testmain.h"

#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr quint64 seed = 20240612;

using Samples = QVector<QPointF>;

ClosestPointParams find(const Samples& samples, const ClosestPointCalcParams& params)
{
    return ClosestPoint::find(
        samples.size(), [&samples](int i) { return samples[i]; }, params);
}

}

class tst_closestpoint : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void recordDefaults();
    void steps_data();
    void steps();
    void views_data();
    void views();
    void nearest_data();
    void nearest();
    void distanceIsInPercent();
    void flatView();
    void randomSamples();
};

void tst_closestpoint::recordDefaults()
{
    const ClosestPointCalcParams params;
    const double bounds[]
        = {params.xMin, params.xMax, params.yMin, params.yMax, params.cursorX, params.cursorY};
    for (const double bound : bounds)
        QCOMPARE(bound, 0.0);
    const ClosestPointParams nothing;
    QVERIFY(!nothing.curve);
    QCOMPARE(nothing.distance, -1.0);
    QCOMPARE(nothing.index, -1);
}

void tst_closestpoint::steps_data()
{
    QTest::addColumn<double>("step");
    QTest::addColumn<bool>("usable");
    QTest::newRow("unknown") << -1.0 << false;
    QTest::newRow("zero") << 0.0 << false;
    QTest::newRow("minus zero") << -0.0 << false;
    QTest::newRow("almost zero") << 1e-13 << false;
    // What counts is the difference that the step makes to 1, as far as doubles tell it.
    QTest::newRow("almost the tolerance") << 9.9997e-13 << false;
    QTest::newRow("the tolerance") << 1e-12 << true;
    QTest::newRow("small") << 1e-11 << true;
    QTest::newRow("usual") << 0.5 << true;
    QTest::newRow("NaN") << notANumber << false;
}

void tst_closestpoint::steps()
{
    QFETCH(double, step);
    QTEST(ClosestPoint::isUsableStep(step), "usable");
}

void tst_closestpoint::views_data()
{
    QTest::addColumn<QVector<double>>("bounds");
    QTest::addColumn<bool>("usable");
    QTest::newRow("usual") << QVector<double>{0.0, 1.0, 0.0, 1.0} << true;
    QTest::newRow("flat") << QVector<double>{0.0, 1.0, 2.0, 2.0} << true;
    QTest::newRow("no width") << QVector<double>{1.0, 1.0, 0.0, 1.0} << false;
    QTest::newRow("prices inverted") << QVector<double>{2.0, 1.0, 0.0, 1.0} << false;
    QTest::newRow("values inverted") << QVector<double>{0.0, 1.0, 2.0, 1.0} << false;
}

void tst_closestpoint::views()
{
    QFETCH(QVector<double>, bounds);
    QTEST(ClosestPoint::isUsableView({bounds[0], bounds[1], bounds[2], bounds[3], 0.0, 0.0}), "usable");
}

void tst_closestpoint::nearest_data()
{
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<int>("index");
    // The view is 100 to 200 by 0 to 10, the cursor at (150, 5).
    QTest::newRow("none") << Samples{} << -1;
    QTest::newRow("one, far off") << Samples{{100.0, 0.0}} << 0;
    QTest::newRow("nearer one") << Samples{{110.0, 5.0}, {140.0, 5.0}, {190.0, 5.0}} << 1;
    QTest::newRow("equally near") << Samples{{190.0, 5.0}, {140.0, 5.0}, {160.0, 5.0}} << 1;
    QTest::newRow("equally near by both axes") << Samples{{160.0, 5.0}, {150.0, 6.0}} << 0;
    QTest::newRow("not by the straight distance") << Samples{{156.0, 5.6}, {160.0, 5.0}} << 1;
    QTest::newRow("corners") << Samples{{200.0, 10.0}} << 0;
    QTest::newRow("left of the view") << Samples{{std::nextafter(100.0, 0.0), 5.0}} << -1;
    QTest::newRow("right of the view") << Samples{{std::nextafter(200.0, 300.0), 5.0}} << -1;
    QTest::newRow("below the view") << Samples{{150.0, std::nextafter(0.0, -1.0)}} << -1;
    QTest::newRow("above the view") << Samples{{150.0, std::nextafter(10.0, 11.0)}} << -1;
    QTest::newRow("hidden ones are nearer") << Samples{{150.0, 11.0}, {100.0, 0.0}} << 1;
    QTest::newRow("not finite") << Samples{{notANumber, 5.0}, {150.0, notANumber}, {infinity, 5.0},
        {150.0, -infinity}, {100.0, 0.0}}
                                << 4;
}

void tst_closestpoint::nearest()
{
    QFETCH(Samples, samples);
    QFETCH(int, index);
    const ClosestPointParams found = find(samples, {100.0, 200.0, 0.0, 10.0, 50.0, 5.0});
    QCOMPARE(found.index, index);
    QVERIFY(!found.curve);
    if (index < 0)
        QCOMPARE(found.distance, -1.0);
}

void tst_closestpoint::distanceIsInPercent()
{
    const ClosestPointCalcParams params{100.0, 300.0, 0.0, 50.0, 100.0, 25.0};
    QCOMPARE(find({{202.0, 25.0}}, params).distance, 1.0);
    QCOMPARE(find({{200.0, 25.5}}, params).distance, 1.0);
    QCOMPARE(find({{198.0, 24.0}}, params).distance, 3.0);
    QCOMPARE(find({{200.0, 25.0}}, params).distance, 0.0);
    const ClosestPointCalcParams elsewhere{100.0, 300.0, -125.0, -75.0, 100.0, 25.0};
    QCOMPARE(find({{198.0, -101.0}}, elsewhere).distance, 3.0);
}

void tst_closestpoint::flatView()
{
    const ClosestPointCalcParams params{0.0, 100.0, 7.0, 7.0, 50.0, 3.0};
    const ClosestPointParams found = find({{60.0, 8.0}, {52.0, 7.0}}, params);
    QCOMPARE(found.index, 1);
    QCOMPARE(found.distance, 5.0);
}

void tst_closestpoint::randomSamples()
{
    std::mt19937_64 random(seed);
    std::uniform_int_distribution<int> coordinate(-2, 12);
    std::uniform_int_distribution<int> count(1, 12);
    for (int i = 0; i < 3000; ++i) {
        Samples samples(count(random));
        for (QPointF& sample : samples)
            sample = QPointF(coordinate(random), coordinate(random));
        const QPointF cursor(coordinate(random), coordinate(random));
        // Percents of 10 are tens: the distances of whole coordinates are exact.
        int expected = -1;
        double best = infinity;
        for (int k = 0; k < samples.size(); ++k) {
            const QPointF sample = samples[k];
            const double distance = 10.0 * (sample - cursor).manhattanLength();
            if (QRectF(0.0, 0.0, 10.0, 10.0).contains(sample) && distance < best) {
                best = distance;
                expected = k;
            }
        }
        const ClosestPointParams found = find(samples, {0.0, 10.0, 0.0, 10.0, cursor.x(), cursor.y()});
        const QString where = QStringLiteral("seed %1 case %2").arg(seed).arg(i);
        QVERIFY2(found.index == expected, qPrintable(where));
        QVERIFY2(expected < 0 || found.distance == best, qPrintable(where));
    }
}

PLOT2D_TEST_MAIN(tst_closestpoint)
#include "tst_closestpoint.moc"
