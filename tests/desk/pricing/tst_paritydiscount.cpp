#include "pricingtestdata.h"
#include "support/testmain.h"

#include <pricing/black.h>
#include <pricing/expirytime.h>
#include <pricing/paritydiscount.h>
#include <pricing/parityforward.h>

#include <cmath>
#include <random>

using namespace PricingTest;
using Pricing::Market;
using Pricing::parityDiscount;

Q_DECLARE_METATYPE(OptionSeries)

namespace {

const decimal cent = decimal::fromUnits(1, 2);
constexpr double forward = 100.0;

struct Strikes {
    int from = 70;
    int to = 130;
    int apart = 2;
};

OptionQuote settled(OptionType type, int strike, double price)
{
    OptionQuote quote;
    quote.type = type;
    quote.strike = decimal::fromUnits(strike, 0);
    quote.settlement = decimal::fromDouble(price, 2);
    return quote;
}

// Black's values to the cent, over one year.
OptionSeries european(double discount, const Strikes& strikes = {})
{
    const Market market{forward, 1.0, -std::log(discount)};
    OptionSeries series;
    for (int strike = strikes.from; strike <= strikes.to; strike += strikes.apart) {
        for (const OptionType type : {OptionType::Call, OptionType::Put})
            series.quotes.append(
                settled(type, strike, Pricing::blackPrice(type, strike, market, 0.25).value()));
    }
    return series;
}

void shift(OptionQuote& quote, double by)
{
    quote.settlement = decimal::fromDouble(quote.settlement->toDouble() + by, 2);
}

// By J. Cox, S. Ross and M. Rubinstein's tree, 1979, of a future, which does not drift.
double americanPrice(OptionType type, double strike, const Market& market, double volatility)
{
    constexpr int steps = 200;
    const double up = std::exp(volatility * std::sqrt(market.time / steps));
    const double probability = (1.0 - 1.0 / up) / (up - 1.0 / up);
    const double discount = std::exp(-market.rate * market.time / steps);
    const auto exercised = [&](int step, int ups) {
        const double price = market.forward * std::pow(up, 2 * ups - step);
        return std::max(type == OptionType::Call ? price - strike : strike - price, 0.0);
    };
    std::vector<double> values;
    for (int ups = 0; ups <= steps; ++ups)
        values.push_back(exercised(steps, ups));
    for (int step = steps - 1; step >= 0; --step) {
        for (int ups = 0; ups <= step; ++ups) {
            const auto i = static_cast<std::size_t>(ups);
            const double held = discount * (probability * values[i + 1] + (1.0 - probability) * values[i]);
            values[i] = std::max(held, exercised(step, ups));
        }
    }
    return values.front();
}

OptionSeries american(double rate, double time)
{
    OptionSeries series;
    for (int strike = 70; strike <= 130; strike += 2) {
        for (const OptionType type : {OptionType::Call, OptionType::Put})
            series.quotes.append(
                settled(type, strike, americanPrice(type, strike, {forward, time, rate}, 0.25)));
    }
    return series;
}

}

/// Which discount factors put-call parity gives, and which it does not.
class tst_paritydiscount : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void recoversTheFactor_data();
    void recoversTheFactor();
    void withstandsNoiseAndOutliers();
    void noiseIsNoInterest();
    void wideQuotesProveLess();
    void tooLittleIsNoInterest_data();
    void tooLittleIsNoInterest();
    void roundingIsNoInterest();
    void refusesWhatNoInterestBringsAbout();
    void earlyExerciseLiesBetween();
    void badForwards();
    void crudeOil();
    void index_data();
    void index();
    void indexCallsAndPutsAgree_data();
    void indexCallsAndPutsAgree();
};

void tst_paritydiscount::recoversTheFactor_data()
{
    QTest::addColumn<double>("discount");
    QTest::addColumn<bool>("isForwardGiven");
    for (const double discount : {0.55, 0.8, 0.944, 0.99, 1.0, 1.01, 1.045}) {
        QTest::addRow("%.3f", discount) << discount << false;
        QTest::addRow("%.3f, forward given", discount) << discount << true;
    }
}

void tst_paritydiscount::recoversTheFactor()
{
    QFETCH(double, discount);
    QFETCH(bool, isForwardGiven);
    const OptionSeries series = european(discount);
    const double found
        = parityDiscount(series, cent, isForwardGiven ? std::optional<double>(forward) : std::nullopt);
    if (discount == 1.0)
        QCOMPARE(found, 1.0);
    QVERIFY2(std::abs(found - discount) < 2e-4, qPrintable(QString::number(found, 'g', 10)));
    const double parityForward = Pricing::parityForward(series, found).value_or(0.0);
    QVERIFY2(std::abs(parityForward - forward) < 0.012, qPrintable(QString::number(parityForward, 'g', 10)));
}

void tst_paritydiscount::withstandsNoiseAndOutliers()
{
    std::mt19937_64 random(11);
    std::normal_distribution<double> noise(0.0, 0.03);
    std::uniform_int_distribution<int> which(0, 61);
    for (int i = 0; i < 200; ++i) {
        OptionSeries series = european(0.95);
        for (OptionQuote& quote : series.quotes)
            shift(quote, std::max(noise(random), 0.01 - quote.settlement->toDouble()));
        for (int bad = 0; bad < 6; ++bad)
            shift(series.quotes[which(random)], 3.0);
        const double found = parityDiscount(series, cent);
        QVERIFY2(std::abs(found - 0.95) < 0.004,
            qPrintable(QStringLiteral("seed 11 case %1: %2").arg(i).arg(found)));
    }
}

void tst_paritydiscount::noiseIsNoInterest()
{
    std::mt19937_64 random(12);
    std::normal_distribution<double> noise(0.0, 0.2);
    for (int i = 0; i < 200; ++i) {
        OptionSeries series = european(1.0);
        for (OptionQuote& quote : series.quotes)
            shift(quote, std::max(noise(random), 0.01 - quote.settlement->toDouble()));
        const double found = parityDiscount(series, cent);
        QVERIFY2(
            found == 1.0, qPrintable(QStringLiteral("seed 12 case %1: %2").arg(i).arg(found, 0, 'g', 10)));
    }
}

void tst_paritydiscount::wideQuotesProveLess()
{
    const auto quoted = [](double discount, double halfWidth) {
        OptionSeries series = european(discount, {90, 110, 2});
        for (OptionQuote& quote : series.quotes) {
            quote.bid = decimal::fromDouble(quote.settlement->toDouble() - halfWidth, 2);
            quote.ask = decimal::fromDouble(quote.settlement->toDouble() + halfWidth, 2);
        }
        return series;
    };
    QVERIFY(std::abs(parityDiscount(quoted(0.98, 0.05), cent) - 0.98) < 1e-3);
    QCOMPARE(parityDiscount(quoted(0.98, 0.5), cent), 1.0);
}

void tst_paritydiscount::tooLittleIsNoInterest_data()
{
    QTest::addColumn<OptionSeries>("series");
    QTest::newRow("none") << OptionSeries();
    QTest::newRow("one pair") << european(0.9, {100, 100, 1});
    QTest::newRow("four pairs") << european(0.9, {85, 115, 10});
    // A few cents on the calls are worth more than the interest between neighbours.
    OptionSeries close = european(0.9, {98, 102, 1});
    for (int i = 0; i < close.quotes.size(); i += 2)
        shift(close.quotes[i], i % 4 == 0 ? 0.15 : -0.15);
    QTest::newRow("strikes too close") << close;
    OptionSeries calls = european(0.9);
    calls.quotes.erase(std::remove_if(calls.quotes.begin(), calls.quotes.end(),
                           [](const OptionQuote& quote) { return quote.type == OptionType::Put; }),
        calls.quotes.end());
    QTest::newRow("calls alone") << calls;
    // The stale prices far from the money alone would tell of interest.
    QTest::newRow("far strikes") << european(0.9, {20, 70, 10});
}

void tst_paritydiscount::tooLittleIsNoInterest()
{
    QFETCH(OptionSeries, series);
    QCOMPARE(parityDiscount(series, cent, forward), 1.0);
    QCOMPARE(parityDiscount(series, cent), 1.0);
}

void tst_paritydiscount::roundingIsNoInterest()
{
    // Every pair is rounded to the same side, so nothing scatters.
    OptionSeries series;
    for (int strike = 80; strike <= 120; ++strike) {
        series.quotes.append(settled(OptionType::Call, strike, strike < 100 ? 109.99 - strike : 10.0));
        series.quotes.append(settled(OptionType::Put, strike, strike < 100 ? 10.0 : strike - 90.0));
    }
    QCOMPARE(parityDiscount(series, cent), 1.0);
    QCOMPARE(parityDiscount(series, cent, forward), 1.0);
}

void tst_paritydiscount::refusesWhatNoInterestBringsAbout()
{
    for (const double discount : {0.3, 0.45, 1.06, 1.2})
        QCOMPARE(parityDiscount(european(discount), cent), 1.0);
}

void tst_paritydiscount::earlyExerciseLiesBetween()
{
    // Six weeks of half a percent are within the rounding.
    QCOMPARE(parityDiscount(american(0.005, 0.12), cent), 1.0);
    const double time = 1.0;
    const double rate = 0.06;
    const OptionSeries series = american(rate, time);
    const double found = parityDiscount(series, cent);
    QVERIFY2(found >= std::exp(-rate * time) && found <= 1.0, qPrintable(QString::number(found)));
    // What interest there is brings the volatilities nearer to the tree's.
    const auto worst = [&](double discount) {
        double result = 0.0;
        const Market market{
            Pricing::parityForward(series, discount).value(), time, -std::log(discount) / time};
        for (const OptionQuote& quote : series.quotes) {
            const double strike = quote.strike.toDouble();
            if (quote.type != Pricing::outOfTheMoneyType(strike, forward))
                continue;
            const auto implied = Pricing::impliedVolatility(quote.type, strike, market, quote.price());
            result = std::max(result, std::abs(implied.volatility.value_or(9.9) - 0.25));
        }
        return result;
    };
    QVERIFY2(
        worst(found) <= worst(1.0), qPrintable(QStringLiteral("%1 %2").arg(worst(found)).arg(worst(1.0))));
}

void tst_paritydiscount::badForwards()
{
    for (const double bad : badNumbers())
        QCOMPARE(parityDiscount(european(0.9), cent, bad), 1.0);
    // A forward beside the prices contradicts itself more than it tells of interest.
    QCOMPARE(parityDiscount(european(1.0), cent, 103.0), 1.0);
    QVERIFY(std::abs(parityDiscount(european(0.9), decimal::zero) - 0.9) < 1e-3);
}

void tst_paritydiscount::crudeOil()
{
    const OptionSeries series = crudeOilSeries();
    if (series.quotes.isEmpty())
        QSKIP("The crude-oil settlements are absent.");
    // Its stated volatilities are computed without interest; the little that there is moves no price by a
    // cent.
    QCOMPARE(parityDiscount(series, crudeOilPriceStep()), 1.0);
    QCOMPARE(parityDiscount(series, crudeOilPriceStep(), crudeOilForward), 1.0);
}

void tst_paritydiscount::index_data()
{
    QTest::addColumn<double>("discount");
    QTest::addColumn<double>("forward");
    QTest::newRow("201203") << 0.99934 << 6697.5;
    QTest::newRow("201206") << 0.9982 << 6710.8;
    QTest::newRow("201209") << 0.9967 << 6718.4;
    QTest::newRow("201212") << 0.9953 << 6727.5;
    QTest::newRow("201406") << 0.9841 << 6828.6;
    QTest::newRow("201512") << 0.9637 << 7001.2;
    QTest::newRow("201612") << 0.9440 << 7157.3;
}

void tst_paritydiscount::index()
{
    QFETCH(double, discount);
    QFETCH(double, forward);
    const OptionSeries series = indexSeries().value(QString::fromLatin1(QTest::currentDataTag()));
    if (series.quotes.isEmpty())
        QSKIP("The index option settlements are absent.");
    const double found = parityDiscount(series, indexPriceStep());
    QVERIFY2(std::abs(found - discount) < 2e-4, qPrintable(QString::number(found, 'g', 10)));
    const double parity = Pricing::parityForward(series, found).value_or(0.0);
    QVERIFY2(std::abs(parity - forward) < 0.2, qPrintable(QString::number(parity, 'g', 10)));
    QVERIFY(std::abs(parityDiscount(series, indexPriceStep(), parity) - found) < 2e-4);
}

void tst_paritydiscount::indexCallsAndPutsAgree_data()
{
    QTest::addColumn<QString>("expiry");
    QTest::addColumn<QDate>("day");
    QTest::addColumn<int>("strike");
    QTest::addColumn<double>("percent");
    const QDate december(2016, 12, 16);
    QTest::newRow("5000") << "201612" << december << 5000 << 29.83;
    QTest::newRow("7200") << "201612" << december << 7200 << 24.04;
    QTest::newRow("8000") << "201612" << december << 8000 << 22.48;
    QTest::newRow("6800") << "201406" << QDate(2014, 6, 20) << 6800 << 24.15;
}

void tst_paritydiscount::indexCallsAndPutsAgree()
{
    QFETCH(QString, expiry);
    QFETCH(QDate, day);
    QFETCH(int, strike);
    QFETCH(double, percent);
    const OptionSeries series = indexSeries().value(expiry);
    if (series.quotes.isEmpty())
        QSKIP("The index option settlements are absent.");
    const double discount = parityDiscount(series, indexPriceStep());
    const double time = Pricing::timeToExpiry(QDate(2012, 2, 10), day).value();
    const Market market{Pricing::parityForward(series, discount).value(), time, -std::log(discount) / time};
    int seen = 0;
    for (const OptionQuote& quote : series.quotes) {
        if (quote.strike != decimal::fromUnits(strike, 0))
            continue;
        ++seen;
        const auto implied = Pricing::impliedVolatility(quote.type, strike, market, quote.price());
        const double found = implied.volatility.value_or(0.0) * 100.0;
        QVERIFY2(std::abs(found - percent) < 0.05, qPrintable(QString::number(found)));
    }
    QCOMPARE(seen, 2);
}

PLOT2D_TEST_MAIN(tst_paritydiscount)
#include "tst_paritydiscount.moc"
