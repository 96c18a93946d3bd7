#include "pricingtestdata.h"
#include "support/testmain.h"

#include <pricing/black.h>
#include <pricing/expirytime.h>

#include <cmath>
#include <random>

using namespace PricingTest;
using Pricing::inferTime;
using Pricing::timeToExpiry;

namespace {

OptionSeries flatSeries(const Pricing::Market& market, double volatility)
{
    OptionSeries series;
    for (int strike = 80; strike <= 120; strike += 5) {
        for (const OptionType type : {OptionType::Call, OptionType::Put}) {
            OptionQuote quote;
            quote.type = type;
            quote.strike = decimal::fromUnits(strike, 0);
            quote.settlement
                = decimal::fromDouble(Pricing::blackPrice(type, strike, market, volatility).value(), 18);
            quote.volatility = volatility;
            series.quotes.append(quote);
        }
    }
    return series;
}

}

class tst_expirytime : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void timeBetweenDates_data();
    void timeBetweenDates();
    void crudeOil();
    void infersTheTimeOfItsPrices();
    void smallPricesDoNotCount();
    void inTheMoneyOptionsDoNotCount();
    void wrongVolatilityDoesNotMoveIt();
    void nothingToInferFrom();
};

void tst_expirytime::timeBetweenDates_data()
{
    QTest::addColumn<QDate>("asOf");
    QTest::addColumn<QDate>("expiry");
    QTest::addColumn<double>("days");
    QTest::newRow("crude oil") << QDate(2012, 10, 1) << QDate(2012, 11, 14) << 44.0;
    QTest::newRow("over a leap day") << QDate(2012, 2, 1) << QDate(2013, 2, 1) << 366.0;
    QTest::newRow("tomorrow") << QDate(2012, 2, 29) << QDate(2012, 3, 1) << 1.0;
    QTest::newRow("today") << QDate(2012, 2, 29) << QDate(2012, 2, 29) << 0.0;
    QTest::newRow("past") << QDate(2012, 2, 29) << QDate(2012, 2, 28) << 0.0;
    QTest::newRow("no date") << QDate() << QDate(2012, 2, 28) << 0.0;
    QTest::newRow("no expiry") << QDate(2012, 2, 28) << QDate() << 0.0;
}

void tst_expirytime::timeBetweenDates()
{
    QFETCH(QDate, asOf);
    QFETCH(QDate, expiry);
    QFETCH(double, days);
    const std::optional<double> time = timeToExpiry(asOf, expiry);
    QCOMPARE(time.has_value(), days > 0.0);
    QCOMPARE(time.value_or(0.0), days / 365.0);
}

void tst_expirytime::crudeOil()
{
    const OptionSeries series = crudeOilSeries();
    if (series.quotes.isEmpty())
        QSKIP("The crude-oil settlements are absent.");
    const std::optional<double> time = inferTime(series, crudeOilForward, crudeOilPriceStep());
    QVERIFY(time);
    QVERIFY2(std::abs(*time * 365.0 - 44.0) < 1e-3, qPrintable(QString::number(*time * 365.0, 'g', 12)));
}

void tst_expirytime::infersTheTimeOfItsPrices()
{
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    for (int i = 0; i < 200; ++i) {
        const Pricing::Market market{90.0 + 20.0 * unit(random), 0.1 + 2.0 * unit(random)};
        const double volatility = 0.2 + unit(random);
        const std::optional<double> time
            = inferTime(flatSeries(market, volatility), market.forward, decimal::fromUnits(1, 2));
        QVERIFY2(time && std::abs(*time - market.time) < 1e-9 * market.time,
            qPrintable(QStringLiteral("seed 11 case %1").arg(i)));
    }
}

void tst_expirytime::smallPricesDoNotCount()
{
    OptionSeries series;
    series.quotes.append(settledQuote(OptionType::Call, QStringLiteral("110"), QStringLiteral("0.05")));
    series.quotes.last().volatility = 0.3;
    QVERIFY(inferTime(series, 100.0, decimal::fromUnits(1, 2)));
    QVERIFY(!inferTime(series, 100.0, decimal::fromUnits(11, 3)));
}

void tst_expirytime::inTheMoneyOptionsDoNotCount()
{
    OptionSeries series;
    series.quotes.append(settledQuote(OptionType::Call, QStringLiteral("90"), QStringLiteral("12")));
    series.quotes.append(settledQuote(OptionType::Put, QStringLiteral("110"), QStringLiteral("12")));
    for (OptionQuote& quote : series.quotes)
        quote.volatility = 0.3;
    QVERIFY(!inferTime(series, 100.0, decimal::fromUnits(1, 2)));
    QVERIFY(inferTime(series, 90.0, decimal::fromUnits(1, 2)));
}

void tst_expirytime::wrongVolatilityDoesNotMoveIt()
{
    const Pricing::Market market{101.0, 0.25};
    OptionSeries series = flatSeries(market, 0.4);
    series.quotes[9].volatility = 4.0;
    const std::optional<double> time = inferTime(series, market.forward, decimal::fromUnits(1, 2));
    QVERIFY(time && std::abs(*time - market.time) < 1e-9);
}

void tst_expirytime::nothingToInferFrom()
{
    const OptionSeries series = flatSeries({100.0, 0.25}, 0.4);
    const decimal step = decimal::fromUnits(1, 2);
    QVERIFY(inferTime(series, 100.0, step));
    QVERIFY(!inferTime(OptionSeries(), 100.0, step));
    QVERIFY(!inferTime(series, 100.0, decimal::zero));
    QVERIFY(!inferTime(series, 100.0, -step));
    for (const double forward : badNumbers())
        QVERIFY2(!inferTime(series, forward, step), qPrintable(QString::number(forward)));

    OptionSeries badVolatilities = series;
    for (const double volatility : badNumbers()) {
        for (OptionQuote& quote : badVolatilities.quotes)
            quote.volatility = volatility;
        QVERIFY2(!inferTime(badVolatilities, 100.0, step), qPrintable(QString::number(volatility)));
    }
    OptionSeries unstated = series;
    for (OptionQuote& quote : unstated.quotes)
        quote.volatility.reset();
    QVERIFY(!inferTime(unstated, 100.0, step));
    OptionSeries unpriced = series;
    for (OptionQuote& quote : unpriced.quotes)
        quote.settlement.reset();
    QVERIFY(!inferTime(unpriced, 100.0, step));
}

PLOT2D_TEST_MAIN(tst_expirytime)
#include "tst_expirytime.moc"
