#include "pricingtestdata.h"
#include "support/testmain.h"

#include <pricing/expirytime.h>
#include <pricing/parityforward.h>
#include <pricing/smile.h>

#include <QElapsedTimer>

#include <cmath>
#include <random>

using namespace Pricing;
using namespace PricingTest;

Q_DECLARE_METATYPE(QVector<Pricing::VolatilityPoint>)

namespace {

const Market market{100.0, 0.25};

VolatilityPoint point(double strike, double volatility)
{
    VolatilityPoint result;
    result.strike = strike;
    result.volatility = volatility;
    result.volatilityError = 0.001;
    return result;
}

// Gatheral's formula, with total variance over log-moneyness.
double sviVolatility(double strike)
{
    const double distance = std::log(strike / market.forward) - 0.02;
    const double variance = 0.004 + 0.06 * (-0.4 * distance + std::sqrt(distance * distance + 0.04));
    return std::sqrt(variance / market.time);
}

// Hagan's formula for beta 1, written out.
double sabrVolatility(double strike)
{
    const double alpha = 0.3, nu = 0.8, rho = -0.3;
    const double correction
        = 1.0 + market.time * (rho * nu * alpha / 4.0 + (2.0 - 3.0 * rho * rho) * nu * nu / 24.0);
    const double z = nu / alpha * std::log(market.forward / strike);
    if (std::abs(z) < 1e-9)
        return alpha * correction;
    const double x = std::log((std::sqrt(1.0 - 2.0 * rho * z + z * z) + z - rho) / (1.0 - rho));
    return alpha * z / x * correction;
}

QVector<VolatilityPoint> pointsOf(double (*volatility)(double))
{
    QVector<VolatilityPoint> points;
    for (int strike = 70; strike <= 140; strike += 2)
        points.append(point(strike, volatility(strike)));
    return points;
}

double largestError(const Smile& smile, double (*volatility)(double))
{
    double largest = 0.0;
    for (double strike = 70.0; strike <= 140.0; strike += 0.5)
        largest = std::max(largest, std::abs(smile.volatility(strike).value() - volatility(strike)));
    return largest;
}

// The root mean square distance from the points whose strikes lie within two standard deviations.
double nearError(const Smile& smile, const SeriesAnalysis& analysis, const Market& at)
{
    const double volatility = smile.volatility(at.forward).value();
    double squares = 0.0;
    int count = 0;
    for (const VolatilityPoint& each : analysis.points) {
        if (std::abs(std::log(each.strike / at.forward)) > 2.0 * volatility * std::sqrt(at.time))
            continue;
        squares += std::pow(smile.volatility(each.strike).value() - each.volatility, 2);
        ++count;
    }
    return std::sqrt(squares / std::max(count, 1));
}

}

class tst_parametricsmile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsItsOwnSmile();
    void fallsBackToTheSpline_data();
    void fallsBackToTheSpline();
    void staysPositiveAndFinite();
    void marketsAndTheirErrors();
};

void tst_parametricsmile::findsItsOwnSmile()
{
    const std::optional<Smile> svi = Smile::fit(pointsOf(sviVolatility), SmileModel::Svi, market);
    QVERIFY(svi && svi->model() == SmileModel::Svi);
    QVERIFY2(largestError(*svi, sviVolatility) < 1e-3, qPrintable(QString::number(svi->maxError())));
    const std::optional<Smile> sabr = Smile::fit(pointsOf(sabrVolatility), SmileModel::Sabr, market);
    QVERIFY(sabr && sabr->model() == SmileModel::Sabr);
    QVERIFY2(largestError(*sabr, sabrVolatility) < 1e-3, qPrintable(QString::number(sabr->maxError())));
    QVERIFY(!sabr->volatility(69.9) && !sabr->volatility(140.1));
    // The models are not the same.
    QVERIFY(Smile::fit(pointsOf(sviVolatility), SmileModel::Sabr, market)->maxError() > 1e-4);
}

void tst_parametricsmile::fallsBackToTheSpline_data()
{
    QTest::addColumn<QVector<VolatilityPoint>>("points");
    QTest::addColumn<double>("time");
    QTest::newRow("one point") << QVector<VolatilityPoint>{point(100.0, 0.3)} << 0.25;
    QTest::newRow("two points") << QVector<VolatilityPoint>{point(90.0, 0.3), point(110.0, 0.2)} << 0.25;
    QTest::newRow("many of two strikes") << QVector<VolatilityPoint>{point(90.0, 0.3), point(90.0, 0.31),
        point(90.0, 0.3), point(110.0, 0.2), point(110.0, 0.2), point(110.0, 0.2)}
                                         << 0.25;
    QTest::newRow("no time") << pointsOf(sviVolatility) << 0.0;
    QTest::newRow("time of NaN") << pointsOf(sviVolatility) << notANumber;
}

void tst_parametricsmile::fallsBackToTheSpline()
{
    QFETCH(QVector<VolatilityPoint>, points);
    QFETCH(double, time);
    const Smile spline = Smile::fit(points).value();
    for (const SmileModel model : {SmileModel::Svi, SmileModel::Sabr}) {
        const std::optional<Smile> smile = Smile::fit(points, model, {100.0, time});
        QVERIFY(smile && smile->model() == SmileModel::Spline);
        QCOMPARE(smile->volatility(90.0), spline.volatility(90.0));
    }
    QVERIFY(!Smile::fit({}, SmileModel::Svi, market));
}

void tst_parametricsmile::staysPositiveAndFinite()
{
    int parametric = 0;
    for (std::uint64_t seed = 1; seed <= 60; ++seed) {
        std::mt19937_64 random(seed);
        std::uniform_real_distribution<double> unit(0.0, 1.0);
        QVector<VolatilityPoint> points;
        const int count = 3 + static_cast<int>(unit(random) * 40.0);
        const bool areEqual = seed % 10 == 0;
        for (int i = 0; i < count; ++i)
            points.append(point(
                std::exp(3.0 + 3.0 * unit(random)), areEqual ? 0.2 : std::exp(-3.0 + 3.0 * unit(random))));
        points.append(point(notANumber, 0.2));
        points.append(point(90.0, infinity));
        for (const SmileModel model : {SmileModel::Svi, SmileModel::Sabr}) {
            const std::optional<Smile> smile = Smile::fit(points, model, market);
            QVERIFY2(smile, qPrintable(QString::number(seed)));
            parametric += smile->model() == model ? 1 : 0;
            for (int i = 0; i <= 300; ++i) {
                const double strike
                    = smile->minStrike() + (smile->maxStrike() - smile->minStrike()) * i / 300.0;
                const double volatility = smile->volatility(std::min(strike, smile->maxStrike())).value();
                QVERIFY2(std::isfinite(volatility) && volatility > 0.0, qPrintable(QString::number(seed)));
            }
        }
    }
    QVERIFY2(parametric > 60, qPrintable(QString::number(parametric)));
}

void tst_parametricsmile::marketsAndTheirErrors()
{
    const QMap<QString, OptionSeries> all = indexSeries();
    if (all.isEmpty())
        QSKIP("The index option settlements are absent.");
    QElapsedTimer timer;
    qint64 fitting = 0;
    for (auto series = all.begin(); series != all.end(); ++series) {
        const QDate first = QDate::fromString(series.key(), QStringLiteral("yyyyMM"));
        const QDate expiry = first.addDays((Qt::Friday - first.dayOfWeek() + 7) % 7 + 14);
        const Market at{parityForward(*series).value(), timeToExpiry(QDate(2012, 2, 10), expiry).value()};
        const SeriesAnalysis analysis = analyseSeries(*series, at, indexPriceStep());
        double errors[3];
        double largest[3];
        for (const SmileModel model : {SmileModel::Spline, SmileModel::Svi, SmileModel::Sabr}) {
            timer.start();
            const Smile smile = Smile::fit(analysis.points, model, at).value();
            fitting += timer.nsecsElapsed();
            QVERIFY2(smile.model() == model, qPrintable(series.key()));
            errors[int(model)] = 100.0 * nearError(smile, analysis, at);
            largest[int(model)] = 100.0 * smile.maxError();
        }
        qInfo("%s: near the money spline %.3f, SVI %.3f, SABR %.3f vol points, at most %.1f %.1f %.1f",
            qPrintable(series.key()), errors[0], errors[1], errors[2], largest[0], largest[1], largest[2]);
        QVERIFY2(errors[0] < 0.05, qPrintable(series.key()));
        QVERIFY2(errors[1] < 0.5 && errors[2] < 0.5, qPrintable(series.key()));
        QVERIFY2(errors[0] < errors[1] && errors[0] < errors[2], qPrintable(series.key()));
    }
    qInfo("%.1f ms for thirty fits", static_cast<double>(fitting) / 1e6);
    QVERIFY(fitting < 3000000000LL);
}

PLOT2D_TEST_MAIN(tst_parametricsmile)
#include "tst_parametricsmile.moc"
