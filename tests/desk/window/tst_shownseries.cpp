#include "desktest.h"
#include "support/testmain.h"

#include <window/shownseries.h>

#include <database/exception.h>

#include <cmath>

Q_DECLARE_METATYPE(std::optional<double>)

/// Which forward and time a series is valued with, and which prices are shown first.
class tst_shownseries : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void takesTheForwardInOrder();
    void refusesASeriesWithoutForward();
    void takesTheTimeInOrder();
    void discountsByParity_data();
    void discountsByParity();
    void recoversTheVolatilities();
    void showsThreeAndAHalfDeviations();
    void staysWithinTheStrikes();
    void leavesALoneStrikeOut();
    void countsStrikesWithAPrice();
    void showsAllStrikesWhereFewAreNear();
};

namespace {

SeriesData seriesData()
{
    const OptionChain chain = DeskTest::chain();
    return {chain.baseCode, chain.asOf, chain.priceStep, chain.decimals, chain.series.first()};
}

SeriesData callsOnly()
{
    SeriesData data = seriesData();
    auto& quotes = data.options.quotes;
    quotes.erase(std::remove_if(quotes.begin(), quotes.end(),
                     [](const OptionQuote& quote) { return quote.type == OptionType::Put; }),
        quotes.end());
    return data;
}

}

void tst_shownseries::takesTheForwardInOrder()
{
    SeriesData data = seriesData();
    ShownSeries series = valuedSeries(data, std::nullopt);
    QCOMPARE(series.forwardSource, ForwardSource::Parity);
    QVERIFY(std::abs(series.market.forward - DeskTest::forward) < 0.02);

    data.options.forward = 99.5;
    series = valuedSeries(data, std::nullopt);
    QCOMPARE(series.forwardSource, ForwardSource::Stated);
    QCOMPARE(series.market.forward, 99.5);

    series = valuedSeries(data, 101.0);
    QCOMPARE(series.forwardSource, ForwardSource::Given);
    QCOMPARE(series.market.forward, 101.0);
}

void tst_shownseries::refusesASeriesWithoutForward()
{
    const SeriesData data = callsOnly();
    QVERIFY_EXCEPTION_THROWN(valuedSeries(data, std::nullopt), Exception);
    QCOMPARE(valuedSeries(data, 100.0).market.forward, 100.0);
}

void tst_shownseries::takesTheTimeInOrder()
{
    SeriesData data = seriesData();
    ShownSeries series = valuedSeries(data, 100.0);
    QCOMPARE(series.timeSource, TimeSource::Dates);
    QCOMPARE(series.market.time, 91.0 / 365.0);

    data.options.expiry = QDate();
    series = valuedSeries(data, 100.0);
    QCOMPARE(series.timeSource, TimeSource::Assumed);
    QCOMPARE(series.market.time, 30.0 / 365.0);

    for (OptionQuote& quote : data.options.quotes)
        quote.volatility = DeskTest::volatility(quote.strike.toDouble());
    series = valuedSeries(data, 100.0);
    QCOMPARE(series.timeSource, TimeSource::Volatilities);
    QVERIFY2(std::abs(series.market.time * 365.0 - 91.0) < 0.5,
        qPrintable(QString::number(series.market.time * 365.0)));
}

void tst_shownseries::discountsByParity_data()
{
    QTest::addColumn<std::optional<double>>("given");
    QTest::addColumn<bool>("isDated");
    QTest::newRow("parity") << std::optional<double>() << true;
    QTest::newRow("given") << std::optional<double>(100.0) << true;
    QTest::newRow("time inferred") << std::optional<double>() << false;
}

void tst_shownseries::discountsByParity()
{
    QFETCH(std::optional<double>, given);
    QFETCH(bool, isDated);
    const double time = 91.0 / 365.0;
    const Pricing::Market market{DeskTest::forward, time, 0.06};
    SeriesData data = seriesData();
    for (OptionQuote& quote : data.options.quotes) {
        const double strike = quote.strike.toDouble();
        const auto value = Pricing::blackPrice(quote.type, strike, market, DeskTest::volatility(strike));
        quote.settlement = decimal::fromDouble(value.value_or(0.0), 4);
        if (!isDated)
            quote.volatility = DeskTest::volatility(strike);
    }
    data.priceStep = decimal::fromUnits(1, 4);
    if (!isDated)
        data.asOf = QDate();
    const ShownSeries series = valuedSeries(data, given);
    QVERIFY2(std::abs(series.market.rate - 0.06) < 5e-4, qPrintable(QString::number(series.market.rate)));
    QVERIFY(std::abs(series.market.time - time) < 2e-4);
    for (double strike = 75.0; strike <= 125.0; strike += 2.5) {
        const double difference
            = series.smile->volatility(strike).value_or(0.0) - DeskTest::volatility(strike);
        QVERIFY2(std::abs(difference) < 2e-4, qPrintable(QString::number(strike)));
    }
}

void tst_shownseries::recoversTheVolatilities()
{
    const ShownSeries series = valuedSeries(seriesData(), 100.0);
    QVERIFY(series.smile.has_value());
    for (double strike = 75.0; strike <= 125.0; strike += 1.0) {
        const double difference
            = series.smile->volatility(strike).value_or(0.0) - DeskTest::volatility(strike);
        QVERIFY2(std::abs(difference) < 2e-3, qPrintable(QString::number(strike)));
    }
}

void tst_shownseries::showsThreeAndAHalfDeviations()
{
    const double time = 91.0 / 365.0;
    const double deviation = 0.12 * std::sqrt(time);
    SeriesData data = seriesData();
    for (OptionQuote& quote : data.options.quotes) {
        const auto value = Pricing::blackPrice(quote.type, quote.strike.toDouble(), {100.0, time}, 0.12);
        quote.settlement = decimal::fromDouble(value.value_or(0.0), 10);
    }
    data.priceStep = decimal::fromUnits(1, 10);
    const ShownSeries series = valuedSeries(data, 100.0);
    const double low = 100.0 * std::exp(-3.5 * deviation);
    const double high = 100.0 * std::exp(3.5 * deviation);
    const PriceRange range = visiblePrices(series);
    QVERIFY(range.low < low && range.low > low - 0.05 * (high - low));
    QVERIFY(range.high > high && range.high < high + 0.05 * (high - low));
}

void tst_shownseries::staysWithinTheStrikes()
{
    SeriesData data = seriesData();
    data.options.expiry = data.asOf.addYears(5);
    const PriceRange range = visiblePrices(valuedSeries(data, 100.0));
    QVERIFY(range.low < 60.0 && range.low > 56.0);
    QVERIFY(range.high > 140.0 && range.high < 144.0);
}

void tst_shownseries::leavesALoneStrikeOut()
{
    SeriesData data = seriesData();
    OptionQuote lone = data.options.quotes.first();
    lone.type = OptionType::Call;
    lone.strike = decimal::fromUnits(160, 0);
    lone.settlement = decimal::fromUnits(1, 2);
    data.options.quotes.append(lone);
    const ShownSeries series = valuedSeries(data, 100.0);
    QVERIFY(100.0 * std::exp(3.5 * logDeviation(series)) > 160.0);
    QVERIFY(visiblePrices(series).high < 144.0);
    // A neighbour makes it one of many.
    lone.strike = decimal::fromUnits(155, 0);
    data.options.quotes.insert(data.options.quotes.size() - 1, lone);
    QVERIFY(visiblePrices(valuedSeries(data, 100.0)).high > 160.0);
}

void tst_shownseries::countsStrikesWithAPrice()
{
    SeriesData data = seriesData();
    OptionQuote bare;
    for (const int strike : {145, 150}) {
        bare.strike = decimal::fromUnits(strike, 0);
        data.options.quotes.append(bare);
    }
    QVERIFY(visiblePrices(valuedSeries(data, 100.0)).high < 144.0);
    data.options.quotes.last().bid = decimal::fromUnits(1, 2);
    QVERIFY(visiblePrices(valuedSeries(data, 100.0)).high > 150.0);
}

void tst_shownseries::showsAllStrikesWhereFewAreNear()
{
    SeriesData data = seriesData();
    QVector<OptionQuote> wide;
    for (const OptionQuote& quote : qAsConst(data.options.quotes)) {
        if (quote.strike == decimal::fromUnits(60, 0) || quote.strike == decimal::fromUnits(140, 0))
            wide.append(quote);
    }
    data.options.quotes = wide;
    const PriceRange range = visiblePrices(valuedSeries(data, 100.0));
    QVERIFY(range.low < 60.0);
    QVERIFY(range.high > 140.0);
}

PLOT2D_TEST_MAIN(tst_shownseries)
#include "tst_shownseries.moc"
