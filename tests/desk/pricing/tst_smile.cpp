#include "pricingtestdata.h"
#include "support/leasttime.h"
#include "support/testmain.h"

#include <pricing/smile.h>

#include <cmath>
#include <random>

using namespace Pricing;
using namespace PricingTest;

namespace {

VolatilityPoint point(double strike, double volatility, double error = 0.001)
{
    VolatilityPoint result;
    result.strike = strike;
    result.volatility = volatility;
    result.volatilityError = error;
    return result;
}

// A skewed smile on a forward of 100.
double trueVolatility(double strike)
{
    const double moneyness = std::log(strike / 100.0);
    return 0.25 - 0.1 * moneyness + 0.4 * moneyness * moneyness;
}

bool isSound(const Smile& smile)
{
    for (int i = 0; i <= 2000; ++i) {
        const double strike = smile.minStrike() + (smile.maxStrike() - smile.minStrike()) * i / 2000.0;
        const std::optional<double> volatility = smile.volatility(std::min(strike, smile.maxStrike()));
        if (!volatility || !std::isfinite(*volatility) || *volatility <= 0.0)
            return false;
    }
    return std::isfinite(smile.maxError()) && std::isfinite(smile.rmsError())
        && smile.rmsError() <= smile.maxError() * (1.0 + 1e-12);
}

}

class tst_smile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void noPoints();
    void onePoint();
    void twoPoints();
    void threePoints();
    void duplicates();
    void orderDoesNotMatter();
    void badPointsAreIgnored();
    void badErrorsCountAsExact();
    void outsideTheStrikes();
    void followsPointsWithinTheirErrors();
    void doesNotSwingBesideASteepStep();
    void copiesOutliveTheOriginal();
    void staysPositiveAndFinite();
    void isFast();
    void volatilityCurveLeavesOutOtherStrikes();
    void theoreticalValues();
    void theoreticalValueOfBadInput();
};

void tst_smile::noPoints()
{
    QVERIFY(!Smile::fit({}));
}

void tst_smile::onePoint()
{
    const std::optional<Smile> smile = Smile::fit({point(100.0, 0.3)});
    QVERIFY(smile);
    QCOMPARE(smile->minStrike(), 100.0);
    QCOMPARE(smile->maxStrike(), 100.0);
    QCOMPARE(smile->volatility(100.0).value(), 0.3);
    QVERIFY(!smile->volatility(100.01));
}

void tst_smile::twoPoints()
{
    const std::optional<Smile> smile = Smile::fit({point(64.0, 0.4), point(100.0, 0.1)});
    QVERIFY(smile && isSound(*smile));
    QCOMPARE(smile->volatility(64.0).value(), 0.4);
    QCOMPARE(smile->volatility(80.0).value(), 0.2);
    QCOMPARE(smile->volatility(100.0).value(), 0.1);
}

void tst_smile::threePoints()
{
    const std::optional<Smile> smile = Smile::fit({point(80.0, 0.3), point(100.0, 0.2), point(150.0, 0.25)});
    QVERIFY(smile && isSound(*smile));
    QVERIFY2(smile->maxError() < 0.002, qPrintable(QString::number(smile->maxError())));
    QVERIFY(smile->maxError() > 0.0);
}

void tst_smile::duplicates()
{
    // The errors 1 and 2 weigh 4 to 1; in the logarithm 0.2 * 1.1^(1/5).
    const std::optional<Smile> same = Smile::fit({point(100.0, 0.2, 0.01), point(100.0, 0.22, 0.022)});
    QVERIFY(same);
    QCOMPARE(same->volatility(100.0).value(), 0.2 * std::pow(1.1, 0.2));

    const std::optional<Smile> smile = Smile::fit({point(90.0, 0.3), point(100.0, 0.19), point(100.0, 0.21),
        point(100.0, 0.2), point(120.0, 0.25), point(120.0, 0.25)});
    QVERIFY(smile && isSound(*smile));
    QVERIFY(std::abs(smile->volatility(100.0).value() - 0.2) < 0.003);
    QVERIFY(smile->maxError() >= 0.007);
}

void tst_smile::orderDoesNotMatter()
{
    QVector<VolatilityPoint> points;
    for (int strike = 70; strike <= 140; ++strike)
        points.append(point(strike, trueVolatility(strike)));
    const Smile ascending = Smile::fit(points).value();
    std::shuffle(points.begin(), points.end(), std::mt19937_64(5));
    const Smile shuffled = Smile::fit(points).value();
    for (double strike = 70.0; strike <= 140.0; strike += 0.3)
        QCOMPARE(shuffled.volatility(strike), ascending.volatility(strike));
}

void tst_smile::badPointsAreIgnored()
{
    QVector<VolatilityPoint> points;
    for (const double bad : badNumbers()) {
        points.append(point(bad, 0.2));
        points.append(point(100.0, bad));
    }
    points.append(point(100.0, 1e-7));
    points.append(point(100.0, 1e7));
    QVERIFY(!Smile::fit(points));
    points.append(point(90.0, 0.3));
    const std::optional<Smile> smile = Smile::fit(points);
    QVERIFY(smile);
    QCOMPARE(smile->volatility(90.0).value(), 0.3);
    QVERIFY(!smile->volatility(100.0));
}

void tst_smile::badErrorsCountAsExact()
{
    for (const double bad : badNumbers()) {
        const std::optional<Smile> smile
            = Smile::fit({point(80.0, 0.3, bad), point(90.0, 0.2, bad), point(100.0, 0.4, bad)});
        QVERIFY(smile && isSound(*smile));
        QVERIFY2(smile->maxError() < 1e-5, qPrintable(QString::number(bad)));
    }
}

void tst_smile::outsideTheStrikes()
{
    const Smile smile = Smile::fit({point(80.0, 0.3), point(90.0, 0.2), point(100.0, 0.4)}).value();
    QVERIFY(smile.volatility(80.0));
    QVERIFY(smile.volatility(100.0));
    for (const double strike : {79.999, 100.001, 0.0, -90.0, notANumber, infinity, -infinity})
        QVERIFY2(!smile.volatility(strike), qPrintable(QString::number(strike)));
}

void tst_smile::followsPointsWithinTheirErrors()
{
    for (std::uint64_t seed = 1; seed <= 50; ++seed) {
        std::mt19937_64 random(seed);
        std::normal_distribution<double> noise(0.0, 0.004);
        QVector<VolatilityPoint> points;
        for (int strike = 60; strike <= 160; ++strike)
            points.append(point(strike, trueVolatility(strike) + noise(random), 0.004));
        const Smile smile = Smile::fit(points).value();
        double squares = 0.0;
        for (const VolatilityPoint& p : points)
            squares += std::pow(smile.volatility(p.strike).value() - trueVolatility(p.strike), 2);
        const double distance = std::sqrt(squares / points.size());
        QVERIFY2(distance < 0.003, qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(distance)));
        QVERIFY2(smile.rmsError() > 0.003 && smile.rmsError() < 0.005,
            qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(smile.rmsError())));
    }
}

void tst_smile::doesNotSwingBesideASteepStep()
{
    const Smile smile
        = Smile::fit({point(80.0, 0.3, 0.0), point(90.0, 0.3, 0.0), point(100.0, 0.3, 0.0),
                         point(101.0, 0.2, 0.0), point(150.0, 0.2, 0.0), point(200.0, 0.2, 0.0)})
              .value();
    for (double strike = 80.0; strike <= 200.0; strike += 0.25) {
        const double volatility = smile.volatility(strike).value();
        QVERIFY2(volatility > 0.1999 && volatility < 0.3001, qPrintable(QString::number(strike)));
    }
}

void tst_smile::copiesOutliveTheOriginal()
{
    std::optional<Smile> original = Smile::fit({point(80.0, 0.3), point(90.0, 0.2), point(100.0, 0.4)});
    const std::optional<double> expected = original->volatility(85.0);
    const Smile copy = *original;
    original.reset();
    QCOMPARE(copy.volatility(85.0), expected);
}

void tst_smile::staysPositiveAndFinite()
{
    for (std::uint64_t seed = 1; seed <= 500; ++seed) {
        std::mt19937_64 random(seed);
        std::uniform_real_distribution<double> unit(0.0, 1.0);
        const int count = 1 + static_cast<int>(unit(random) * 250.0);
        QVector<VolatilityPoint> points;
        for (int i = 0; i < count; ++i) {
            const double volatility = std::exp(-10.0 + 12.0 * unit(random));
            const double strike = i > 0 && unit(random) < 0.1
                ? points.last().strike * (1.0 + 1e-5 * unit(random))
                : std::exp(-3.0 + 12.0 * unit(random));
            points.append(point(strike, volatility, volatility * std::exp(-14.0 * unit(random))));
        }
        const std::optional<Smile> smile = Smile::fit(points);
        QVERIFY2(smile && isSound(*smile), qPrintable(QStringLiteral("seed %1").arg(seed)));
    }
}

void tst_smile::isFast()
{
    std::mt19937_64 random(9);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    QVector<VolatilityPoint> points;
    for (int i = 0; i < 200; ++i) {
        const double strike = 50.0 + i;
        points.append(point(strike, trueVolatility(strike) + 0.01 * unit(random), 0.003));
    }
    const qint64 nanoseconds = TestSupport::leastTime([&] { QVERIFY(Smile::fit(points)); });
    QVERIFY2(nanoseconds < 100'000'000, qPrintable(QString::number(nanoseconds)));
}

void tst_smile::volatilityCurveLeavesOutOtherStrikes()
{
    const Smile smile = Smile::fit({point(64.0, 0.4), point(100.0, 0.1)}).value();
    const QVector<QPointF> curve = volatilityCurve(smile, {50.0, 80.0, notANumber, 100.0, 110.0});
    QCOMPARE(curve, (QVector<QPointF>{{80.0, 0.2}, {100.0, 0.1}}));
    QVERIFY(volatilityCurve(smile, {}).isEmpty());
}

void tst_smile::theoreticalValues()
{
    const Smile smile = Smile::fit({point(64.0, 0.4), point(100.0, 0.1)}).value();
    const Market market{90.0, 0.5, 0.03};
    const auto expected = [&market](OptionType type) { return blackPrice(type, 80.0, market, 0.2).value(); };
    QCOMPARE(theoreticalValue(smile, market, ValueSide::Call, 80.0).value(), expected(OptionType::Call));
    QCOMPARE(theoreticalValue(smile, market, ValueSide::Put, 80.0).value(), expected(OptionType::Put));
    QCOMPARE(
        theoreticalValue(smile, market, ValueSide::OutOfTheMoney, 80.0).value(), expected(OptionType::Put));
    QCOMPARE(theoreticalValue(smile, market, ValueSide::OutOfTheMoney, 95.0),
        theoreticalValue(smile, market, ValueSide::Call, 95.0));

    const QVector<QPointF> curve = theoreticalCurve(smile, market, ValueSide::Call, {50.0, 80.0, 101.0});
    QCOMPARE(curve, (QVector<QPointF>{{80.0, expected(OptionType::Call)}}));
}

void tst_smile::theoreticalValueOfBadInput()
{
    const Smile smile = Smile::fit({point(64.0, 0.4), point(100.0, 0.1)}).value();
    for (const double bad : badNumbers()) {
        QVERIFY(!theoreticalValue(smile, {bad, 0.5}, ValueSide::Call, 80.0));
        QVERIFY(!theoreticalValue(smile, {90.0, bad}, ValueSide::Call, 80.0));
        QVERIFY(!theoreticalValue(smile, {90.0, 0.5}, ValueSide::Call, bad));
        QVERIFY(theoreticalCurve(smile, {bad, 0.5}, ValueSide::Put, {80.0, 90.0}).isEmpty());
    }
}

PLOT2D_TEST_MAIN(tst_smile)
#include "tst_smile.moc"
