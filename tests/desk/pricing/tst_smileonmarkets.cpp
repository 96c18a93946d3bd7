#include "pricingtestdata.h"
#include "support/testmain.h"

#include <pricing/expirytime.h>
#include <pricing/parityforward.h>
#include <pricing/smile.h>

#include <cmath>

using namespace Pricing;
using namespace PricingTest;

namespace {

// Local minima and maxima of the smile over its strikes, in steps of the log-strike.
int turningPoints(const Smile& smile)
{
    constexpr int steps = 3000;
    const double ratio = smile.maxStrike() / smile.minStrike();
    int turns = 0;
    double previous = smile.volatility(smile.minStrike()).value();
    double direction = 0.0;
    for (int i = 1; i < steps; ++i) {
        const double strike = smile.minStrike() * std::pow(ratio, static_cast<double>(i) / steps);
        const double volatility = smile.volatility(strike).value();
        const double step = volatility - previous;
        if (step * direction < 0.0)
            ++turns;
        if (step != 0.0)
            direction = step;
        previous = volatility;
    }
    return turns;
}

}

class tst_smileonmarkets : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void crudeOilFollowsThePoints();
    void crudeOilHasOneTurningPoint();
    void crudeOilValuesAreTheSettlements();
    void indexIsFittedAtEveryExpiry();

private:
    static std::optional<SeriesAnalysis> crudeOil();
};

std::optional<SeriesAnalysis> tst_smileonmarkets::crudeOil()
{
    const OptionSeries series = crudeOilSeries();
    if (series.quotes.isEmpty())
        return std::nullopt;
    return analyseSeries(series, {crudeOilForward, crudeOilTime}, crudeOilPriceStep());
}

void tst_smileonmarkets::crudeOilFollowsThePoints()
{
    const std::optional<SeriesAnalysis> analysis = crudeOil();
    if (!analysis)
        QSKIP("The crude-oil settlements are absent.");
    const Smile smile = Smile::fit(analysis->points).value();
    double largestPriced = 0.0;
    for (const VolatilityPoint& point : analysis->points) {
        const double error = std::abs(smile.volatility(point.strike).value() - point.volatility);
        if (point.price >= 0.05)
            largestPriced = std::max(largestPriced, error);
    }
    qInfo("max %.5f rms %.5f, of prices from 0.05: max %.5f", smile.maxError(), smile.rmsError(),
        largestPriced);
    QVERIFY(smile.maxError() < 0.025);
    QVERIFY(smile.rmsError() < 0.005);
    QVERIFY(largestPriced < 0.008);
}

void tst_smileonmarkets::crudeOilHasOneTurningPoint()
{
    const std::optional<SeriesAnalysis> analysis = crudeOil();
    if (!analysis)
        QSKIP("The crude-oil settlements are absent.");
    QCOMPARE(turningPoints(Smile::fit(analysis->points).value()), 1);
}

void tst_smileonmarkets::crudeOilValuesAreTheSettlements()
{
    const std::optional<SeriesAnalysis> analysis = crudeOil();
    if (!analysis)
        QSKIP("The crude-oil settlements are absent.");
    const Smile smile = Smile::fit(analysis->points).value();
    const Market market{crudeOilForward, crudeOilTime};
    double largest = 0.0;
    for (const VolatilityPoint& point : analysis->points) {
        const double value = theoreticalValue(smile, market, ValueSide::OutOfTheMoney, point.strike).value();
        largest = std::max(largest, std::abs(value - point.price));
    }
    qInfo("largest distance from a settlement %.4f", largest);
    QVERIFY(largest < 0.01);
}

void tst_smileonmarkets::indexIsFittedAtEveryExpiry()
{
    const QMap<QString, OptionSeries> all = indexSeries();
    if (all.isEmpty())
        QSKIP("The index option settlements are absent.");
    QCOMPARE(all.size(), 10);
    for (auto series = all.begin(); series != all.end(); ++series) {
        const std::optional<double> forward = parityForward(*series);
        QVERIFY2(forward && *forward > 6000.0 && *forward < 7500.0, qPrintable(series.key()));
        // The third Friday.
        const QDate first = QDate::fromString(series.key(), QStringLiteral("yyyyMM"));
        const QDate expiry = first.addDays((Qt::Friday - first.dayOfWeek() + 7) % 7 + 14);
        const double time = timeToExpiry(QDate(2012, 2, 10), expiry).value();
        const SeriesAnalysis analysis = analyseSeries(*series, {*forward, time}, indexPriceStep());
        QVERIFY2(analysis.points.size() >= 20, qPrintable(series.key()));
        const std::optional<Smile> smile = Smile::fit(analysis.points);
        QVERIFY(smile);
        qInfo("%s: forward %.2f, %d points, max %.5f rms %.5f, %d turns", qPrintable(series.key()), *forward,
            analysis.points.size(), smile->maxError(), smile->rmsError(), turningPoints(*smile));
        QVERIFY2(smile->rmsError() < 0.005, qPrintable(series.key()));
        QVERIFY2(turningPoints(*smile) <= 1, qPrintable(series.key()));
    }
}

PLOT2D_TEST_MAIN(tst_smileonmarkets)
#include "tst_smileonmarkets.moc"
