#include "pricingtestdata.h"
#include "support/testmain.h"

#include <pricing/seriesanalysis.h>

#include <cmath>

using namespace Pricing;
using namespace PricingTest;

class tst_seriesanalysis : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reproducesStatedVolatilitiesOfCrudeOil();
    void crudeOilIsComplete();
    void takesTheSideOutOfTheMoney();
    void countsLeftOutByReason();
    void errorComesFromStepOrSpread();
    void invalidMarketLeavesOutEverything();
};

void tst_seriesanalysis::reproducesStatedVolatilitiesOfCrudeOil()
{
    const OptionSeries series = crudeOilSeries();
    if (series.quotes.isEmpty())
        QSKIP("The crude-oil settlements are absent.");
    const SeriesAnalysis analysis
        = analyseSeries(series, {crudeOilForward, crudeOilTime}, crudeOilPriceStep());
    int compared = 0;
    double largest = 0.0;
    for (const VolatilityPoint& point : analysis.points) {
        if (point.price < 0.05)
            continue;
        const auto quote
            = std::find_if(series.quotes.begin(), series.quotes.end(), [&point](const OptionQuote& q) {
                  return q.type == point.type && q.strike.toDouble() == point.strike;
              });
        QVERIFY(quote != series.quotes.end());
        ++compared;
        const double distance = std::abs(point.volatility - quote->volatility.value());
        QVERIFY2(distance <= 1e-5, qPrintable(QStringLiteral("strike %1").arg(point.strike)));
        largest = std::max(largest, distance);
    }
    QCOMPARE(compared, 149);
    qInfo("largest distance %.2g", largest);
}

void tst_seriesanalysis::crudeOilIsComplete()
{
    const OptionSeries series = crudeOilSeries();
    if (series.quotes.isEmpty())
        QSKIP("The crude-oil settlements are absent.");
    const SeriesAnalysis analysis
        = analyseSeries(series, {crudeOilForward, crudeOilTime}, crudeOilPriceStep());
    QVERIFY(analysis.leftOut.isEmpty());
    QCOMPARE(analysis.points.size() + analysis.inTheMoney, 332);
    QCOMPARE(analysis.points.first().strike, 20.0);
    QCOMPARE(analysis.points.last().strike, 400.0);
    for (int i = 0; i < analysis.points.size(); ++i) {
        const VolatilityPoint& point = analysis.points[i];
        QVERIFY(i == 0 || point.strike > analysis.points[i - 1].strike);
        QCOMPARE(point.type, point.strike < crudeOilForward ? OptionType::Put : OptionType::Call);
        QVERIFY(point.volatilityError > 0.0 && point.volatilityError < point.volatility);
    }
}

void tst_seriesanalysis::takesTheSideOutOfTheMoney()
{
    OptionSeries series;
    for (const char* strike : {"95", "100", "105"}) {
        for (const OptionType type : {OptionType::Call, OptionType::Put}) {
            series.quotes.append(settledQuote(type, QString::fromLatin1(strike), QStringLiteral("8")));
            series.quotes.last().volume = series.quotes.size() - 2;
        }
    }
    series.quotes.last().volume.reset();
    const Market market{100.0, 0.5, 0.02};
    const SeriesAnalysis analysis = analyseSeries(series, market, decimal::fromUnits(1, 1));
    QCOMPARE(analysis.inTheMoney, 3);
    QVERIFY(analysis.leftOut.isEmpty());
    QCOMPARE(analysis.points.size(), 3);
    QCOMPARE(analysis.points[0].type, OptionType::Put);
    QCOMPARE(analysis.points[1].type, OptionType::Call);
    QCOMPARE(analysis.points[2].type, OptionType::Call);
    QCOMPARE(analysis.points[0].traded, false);
    QCOMPARE(analysis.points[1].traded, true);
    for (const VolatilityPoint& point : analysis.points) {
        QCOMPARE(point.price, 8.0);
        const double again = blackPrice(point.type, point.strike, market, point.volatility).value();
        QVERIFY(std::abs(again - 8.0) < 1e-9);
    }
}

void tst_seriesanalysis::countsLeftOutByReason()
{
    OptionSeries series;
    const auto add = [&series](OptionType type, const char* strike, const char* price) {
        series.quotes.append(settledQuote(type, QString::fromLatin1(strike), QString::fromLatin1(price)));
    };
    add(OptionType::Put, "-1", "1");
    add(OptionType::Put, "80", "0");
    add(OptionType::Put, "85", "0");
    add(OptionType::Put, "90", "90");
    add(OptionType::Call, "100", "-3");
    add(OptionType::Call, "105", "5");
    add(OptionType::Call, "110", "5");
    series.quotes.last().settlement.reset();
    add(OptionType::Put, "120", "5");

    const SeriesAnalysis analysis = analyseSeries(series, {100.0, 0.5}, decimal::fromUnits(1, 1));
    const QMap<Refusal, int> expected{
        {Refusal::InvalidInput, 2}, {Refusal::NoPrice, 1}, {Refusal::ZeroPrice, 2}, {Refusal::AboveBound, 1}};
    QCOMPARE(analysis.leftOut, expected);
    QCOMPARE(analysis.inTheMoney, 1);
    QCOMPARE(analysis.points.size(), 1);
    QCOMPARE(analysis.points.first().strike, 105.0);
}

void tst_seriesanalysis::errorComesFromStepOrSpread()
{
    OptionSeries series;
    series.quotes.append(settledQuote(OptionType::Call, QStringLiteral("100"), QStringLiteral("5")));
    const Market market{100.0, 0.5};
    const auto error = [&series, &market](const decimal& step) {
        return analyseSeries(series, market, step).points.value(0).volatilityError;
    };
    const double settled = error(decimal::fromUnits(1, 1));
    const double volatility = impliedVolatility(OptionType::Call, 100.0, market, 5.0).volatility.value();
    const double vega = blackVega(100.0, market, volatility).value();
    QCOMPARE(settled, 0.1 / std::sqrt(12.0) / vega);
    QCOMPARE(error(decimal::zero), 1e-6 * volatility);
    QCOMPARE(error(decimal::fromUnits(1000000, 0)), volatility);

    series.quotes[0].bid = decimal::fromUnits(4, 0);
    series.quotes[0].ask = decimal::fromUnits(6, 0);
    QCOMPARE(error(decimal::fromUnits(1, 1)), 20.0 * settled);
    series.quotes[0].ask = decimal::fromUnits(3, 0);
    QCOMPARE(error(decimal::fromUnits(1, 1)), settled);
}

void tst_seriesanalysis::invalidMarketLeavesOutEverything()
{
    OptionSeries series;
    series.quotes.append(settledQuote(OptionType::Call, QStringLiteral("100"), QStringLiteral("5")));
    series.quotes.append(settledQuote(OptionType::Put, QStringLiteral("100"), QStringLiteral("5")));
    const auto isAllInvalid = [&series](const Market& market) {
        const SeriesAnalysis analysis = analyseSeries(series, market, decimal::fromUnits(1, 2));
        return analysis.points.isEmpty() && analysis.inTheMoney == 0
            && analysis.leftOut == QMap<Refusal, int>{{Refusal::InvalidInput, 2}};
    };
    for (const double bad : badNumbers()) {
        QVERIFY2(isAllInvalid({bad, 0.5}), qPrintable(QString::number(bad)));
        QVERIFY2(isAllInvalid({100.0, bad}), qPrintable(QString::number(bad)));
    }
    QVERIFY(isAllInvalid({100.0, 0.5, notANumber}));
    QVERIFY(analyseSeries(OptionSeries(), {notANumber, 0.5}, decimal::zero).leftOut.isEmpty());
}

PLOT2D_TEST_MAIN(tst_seriesanalysis)
#include "tst_seriesanalysis.moc"
