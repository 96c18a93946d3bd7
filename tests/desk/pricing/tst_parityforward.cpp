#include "pricingtestdata.h"
#include "support/testmain.h"

#include <pricing/black.h>
#include <pricing/parityforward.h>

#include <cmath>
#include <random>

Q_DECLARE_METATYPE(OptionSeries)

using namespace PricingTest;
using Pricing::parityForward;

namespace {

void addPair(OptionSeries& series, const QString& strike, const QString& call, const QString& put)
{
    series.quotes.append(settledQuote(OptionType::Call, strike, call));
    series.quotes.append(settledQuote(OptionType::Put, strike, put));
}

}

class tst_parityforward : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void crudeOil();
    void index_data();
    void index();
    void oneStrike();
    void outlierDoesNotMoveIt();
    void onlyStrikesWithBothPricesCount();
    void recoversForwardFromRoundedPrices();
    void nothingToUse_data();
    void nothingToUse();
};

void tst_parityforward::crudeOil()
{
    const OptionSeries series = crudeOilSeries();
    if (series.quotes.isEmpty())
        QSKIP("The crude-oil settlements are absent.");
    const std::optional<double> forward = parityForward(series);
    QVERIFY(forward);
    QVERIFY2(std::abs(*forward - 92.85) < 0.005, qPrintable(QString::number(*forward, 'g', 10)));

    OptionSeries middle;
    for (const OptionQuote& quote : series.quotes) {
        if (quote.strike >= decimal::fromUnits(75, 0) && quote.strike <= decimal::fromUnits(110, 0))
            middle.quotes.append(quote);
    }
    QVERIFY(std::abs(parityForward(middle).value_or(0.0) - 92.85) < 0.005);
}

void tst_parityforward::index_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::newRow("201203") << 6697.0 << 6697.9;
    QTest::newRow("201206") << 6709.5 << 6712.0;
}

void tst_parityforward::index()
{
    QFETCH(double, low);
    QFETCH(double, high);
    const QMap<QString, OptionSeries> all = indexSeries();
    if (all.isEmpty())
        QSKIP("The index option settlements are absent.");
    const std::optional<double> forward
        = parityForward(all.value(QString::fromLatin1(QTest::currentDataTag())));
    QVERIFY(forward);
    QVERIFY2(*forward >= low && *forward <= high, qPrintable(QString::number(*forward, 'g', 10)));
}

void tst_parityforward::oneStrike()
{
    OptionSeries series;
    addPair(series, QStringLiteral("100"), QStringLiteral("7.5"), QStringLiteral("5"));
    QCOMPARE(parityForward(series), std::optional<double>(102.5));
}

void tst_parityforward::outlierDoesNotMoveIt()
{
    OptionSeries series;
    addPair(series, QStringLiteral("90"), QStringLiteral("12"), QStringLiteral("2"));
    addPair(series, QStringLiteral("95"), QStringLiteral("8"), QStringLiteral("3"));
    // Seems to be the nearest to the money, and says 105.
    addPair(series, QStringLiteral("105"), QStringLiteral("3"), QStringLiteral("3"));
    addPair(series, QStringLiteral("110"), QStringLiteral("1"), QStringLiteral("11"));
    QCOMPARE(parityForward(series), std::optional<double>(100.0));
}

void tst_parityforward::onlyStrikesWithBothPricesCount()
{
    OptionSeries series;
    addPair(series, QStringLiteral("100"), QStringLiteral("6"), QStringLiteral("5"));
    series.quotes.append(settledQuote(OptionType::Call, QStringLiteral("101"), QStringLiteral("9")));
    series.quotes.append(settledQuote(OptionType::Put, QStringLiteral("102"), QStringLiteral("1")));
    addPair(series, QStringLiteral("103"), QStringLiteral("0"), QStringLiteral("0"));
    addPair(series, QStringLiteral("104"), QStringLiteral("4"), QStringLiteral("3"));
    series.quotes.last().settlement.reset();
    QCOMPARE(parityForward(series), std::optional<double>(101.0));
}

void tst_parityforward::recoversForwardFromRoundedPrices()
{
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    for (int i = 0; i < 300; ++i) {
        const Pricing::Market market{80.0 + 40.0 * unit(random), 0.05 + unit(random), 0.05 * unit(random)};
        OptionSeries series;
        for (int strike = 60; strike <= 140; ++strike) {
            for (const OptionType type : {OptionType::Call, OptionType::Put}) {
                OptionQuote quote;
                quote.type = type;
                quote.strike = decimal::fromUnits(strike, 0);
                quote.settlement
                    = decimal::fromDouble(Pricing::blackPrice(type, strike, market, 0.3).value(), 2);
                series.quotes.append(quote);
            }
        }
        // A cent of rounding, and the interest on the distance of the strikes, at most half a strike's
        // distance on the median.
        const double tolerance = 0.011 + 0.5 * (1.0 - market.discount());
        QVERIFY2(std::abs(parityForward(series).value_or(0.0) - market.forward) <= tolerance,
            qPrintable(QStringLiteral("seed 7 case %1 forward %2").arg(i).arg(market.forward)));
    }
}

void tst_parityforward::nothingToUse_data()
{
    QTest::addColumn<OptionSeries>("series");
    QTest::newRow("empty") << OptionSeries();

    OptionSeries onlyCalls;
    onlyCalls.quotes.append(settledQuote(OptionType::Call, QStringLiteral("100"), QStringLiteral("5")));
    onlyCalls.quotes.append(settledQuote(OptionType::Call, QStringLiteral("105"), QStringLiteral("3")));
    QTest::newRow("only calls") << onlyCalls;

    OptionSeries differentStrikes = onlyCalls;
    differentStrikes.quotes.last().type = OptionType::Put;
    QTest::newRow("different strikes") << differentStrikes;

    OptionSeries unpriced;
    addPair(unpriced, QStringLiteral("100"), QStringLiteral("5"), QStringLiteral("5"));
    unpriced.quotes.first().settlement.reset();
    QTest::newRow("no price of the call") << unpriced;

    OptionSeries negative;
    addPair(negative, QStringLiteral("1"), QStringLiteral("5"), QStringLiteral("7"));
    QTest::newRow("forward below zero") << negative;
}

void tst_parityforward::nothingToUse()
{
    QFETCH(OptionSeries, series);
    QCOMPARE(parityForward(series), std::nullopt);
}

PLOT2D_TEST_MAIN(tst_parityforward)
#include "tst_parityforward.moc"
