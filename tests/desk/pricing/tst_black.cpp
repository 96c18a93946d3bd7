#include "pricingtestdata.h"
#include "support/testmain.h"

#include <pricing/black.h>

#include <cmath>
#include <random>

Q_DECLARE_METATYPE(std::optional<double>)
Q_DECLARE_METATYPE(Pricing::Refusal)

using namespace Pricing;
using PricingTest::badNumbers;
using PricingTest::infinity;
using PricingTest::notANumber;

namespace {

constexpr int randomCases = 20000;
constexpr std::uint64_t seed = 20121001;

struct Case {
    OptionType type;
    double strike;
    Market market;
    double volatility;
};

class Cases {
public:
    Case next()
    {
        Case result;
        result.type = m_unit(m_random) < 0.5 ? OptionType::Call : OptionType::Put;
        result.market.forward = std::exp(between(-5.0, 12.0));
        result.market.time = std::exp(between(std::log(1.0 / 365.0), std::log(5.0)));
        result.market.rate = m_unit(m_random) < 0.5 ? 0.0 : between(-0.05, 0.2);
        result.volatility = std::exp(between(std::log(0.01), std::log(3.0)));
        const double stdDev = result.volatility * std::sqrt(result.market.time);
        result.strike = result.market.forward * std::exp(stdDev * between(-6.0, 6.0));
        return result;
    }

    double between(double low, double high) { return low + (high - low) * m_unit(m_random); }

private:
    std::mt19937_64 m_random{seed};
    std::uniform_real_distribution<double> m_unit{0.0, 1.0};
};

QByteArray describe(int index, const Case& c)
{
    return QStringLiteral("seed %1 case %2: %3 strike %4 forward %5 time %6 rate %7 volatility %8")
        .arg(seed)
        .arg(index)
        .arg(QLatin1Char(static_cast<char>(c.type)))
        .arg(c.strike, 0, 'g', 17)
        .arg(c.market.forward, 0, 'g', 17)
        .arg(c.market.time, 0, 'g', 17)
        .arg(c.market.rate, 0, 'g', 17)
        .arg(c.volatility, 0, 'g', 17)
        .toLatin1();
}

bool isNear(double a, double b, double relative)
{
    return std::abs(a - b) <= relative * std::max(std::abs(a), std::abs(b));
}

// The out-of-the-money value in long double with the complementary error function, which stays accurate
// in the tail.
double referenceValue(double strike, double forward, double stdDev)
{
    const auto normal = [](long double x) { return 0.5L * std::erfc(-x / std::sqrt(2.0L)); };
    const long double k = strike, f = forward, s = stdDev;
    const long double sign = strike < forward ? -1.0L : 1.0L;
    const long double d1 = std::log(f / k) / s + s / 2.0L;
    return static_cast<double>(sign * (f * normal(sign * d1) - k * normal(sign * (d1 - s))));
}

}

class tst_black : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void price_data();
    void price();
    void priceOfZeroVolatilityIsIntrinsic();
    void priceAgreesWithReference();
    void vegaIsSlopeOfPrice();
    void priceOfBadInput();
    void parityAndMonotonicity();
    void roundTrip();
    void tinyPrices();
    void refusals_data();
    void refusals();
    void impliedVolatilityOfBadInput();
    void extremeInputsNeverThrow();
};

void tst_black::price_data()
{
    QTest::addColumn<bool>("call");
    QTest::addColumn<double>("strike");
    QTest::addColumn<double>("time");
    QTest::addColumn<double>("rate");
    QTest::addColumn<double>("volatility");
    QTest::addColumn<double>("expected");

    // At the money 100 (2 N(v sqrt(T) / 2) - 1); the other values by numerical integration of the payoff.
    QTest::newRow("at the money") << true << 100.0 << 1.0 << 0.0 << 0.2 << 7.965567455405796;
    QTest::newRow("at the money, put") << false << 100.0 << 1.0 << 0.0 << 0.2 << 7.965567455405796;
    QTest::newRow("discounted") << true << 100.0 << 1.0 << 0.05 << 0.2 << 7.577082146427272;
    QTest::newRow("quarter, call 110") << true << 110.0 << 0.25 << 0.0 << 0.4 << 4.2920109414091;
    QTest::newRow("quarter, put 110") << false << 110.0 << 0.25 << 0.0 << 0.4 << 14.2920109414099;
}

void tst_black::price()
{
    QFETCH(bool, call);
    QFETCH(double, strike);
    QFETCH(double, time);
    QFETCH(double, rate);
    QFETCH(double, volatility);
    QFETCH(double, expected);

    const OptionType type = call ? OptionType::Call : OptionType::Put;
    const std::optional<double> value = blackPrice(type, strike, {100.0, time, rate}, volatility);
    QVERIFY(value);
    QVERIFY2(std::abs(*value - expected) < 1e-10, qPrintable(QString::number(*value, 'g', 17)));
}

void tst_black::priceOfZeroVolatilityIsIntrinsic()
{
    const Market market{100.0, 0.5, 0.1};
    QCOMPARE(blackPrice(OptionType::Call, 90.0, market, 0.0).value(), 10.0 * std::exp(-0.05));
    QCOMPARE(blackPrice(OptionType::Put, 90.0, market, 0.0).value(), 0.0);
    QCOMPARE(blackPrice(OptionType::Call, 100.0, market, 0.0).value(), 0.0);
}

void tst_black::priceAgreesWithReference()
{
    Cases cases;
    for (int i = 0; i < randomCases; ++i) {
        Case c = cases.next();
        c.market.rate = 0.0;
        c.type = outOfTheMoneyType(c.strike, c.market.forward);
        const double expected
            = referenceValue(c.strike, c.market.forward, c.volatility * std::sqrt(c.market.time));
        const double value = blackPrice(c.type, c.strike, c.market, c.volatility).value();
        QVERIFY2(std::abs(value - expected) <= 1e-14 * std::max(c.strike, c.market.forward), describe(i, c));
    }
}

void tst_black::vegaIsSlopeOfPrice()
{
    const Market market{100.0, 0.25, 0.03};
    const double step = 1e-4;
    for (const double strike : {80.0, 100.0, 130.0}) {
        const double above = blackPrice(OptionType::Call, strike, market, 0.3 + step).value();
        const double below = blackPrice(OptionType::Call, strike, market, 0.3 - step).value();
        const double vega = blackVega(strike, market, 0.3).value();
        QVERIFY(isNear(vega, (above - below) / (2.0 * step), 1e-5));
    }
}

void tst_black::priceOfBadInput()
{
    const Market market{100.0, 0.5, 0.0};
    for (const double bad : badNumbers()) {
        QVERIFY2(!blackPrice(OptionType::Call, bad, market, 0.2), qPrintable(QString::number(bad)));
        QVERIFY(!blackPrice(OptionType::Put, 100.0, {bad, 0.5, 0.0}, 0.2));
        QVERIFY(!blackPrice(OptionType::Put, 100.0, {100.0, bad, 0.0}, 0.2));
        QVERIFY(!blackVega(bad, market, 0.2));
        QVERIFY(!blackVega(100.0, {bad, 0.5, 0.0}, 0.2));
        if (bad != 0.0) {
            QVERIFY(!blackPrice(OptionType::Call, 100.0, market, bad));
            QVERIFY(!blackVega(100.0, market, bad));
        }
    }
    for (const double rate : {notANumber, infinity, -infinity, 1e4, -1e4})
        QVERIFY(!blackPrice(OptionType::Call, 100.0, {100.0, 0.5, rate}, 0.2));
}

void tst_black::parityAndMonotonicity()
{
    Cases cases;
    for (int i = 0; i < randomCases; ++i) {
        const Case c = cases.next();
        const double scale = c.market.discount() * std::max(c.strike, c.market.forward);
        const double rounding = 1e-13 * scale;
        const double call = blackPrice(OptionType::Call, c.strike, c.market, c.volatility).value();
        const double put = blackPrice(OptionType::Put, c.strike, c.market, c.volatility).value();
        const double forwardValue = c.market.discount() * (c.market.forward - c.strike);
        QVERIFY2(std::abs(call - put - forwardValue) <= rounding, describe(i, c));
        QVERIFY2(call >= 0.0 && put >= 0.0, describe(i, c));

        const double higherStrike = c.strike * 1.01;
        QVERIFY2(
            blackPrice(OptionType::Call, higherStrike, c.market, c.volatility).value() <= call + rounding,
            describe(i, c));
        QVERIFY2(blackPrice(OptionType::Put, higherStrike, c.market, c.volatility).value() >= put - rounding,
            describe(i, c));
        const double more = blackPrice(OptionType::Call, c.strike, c.market, c.volatility * 1.01).value();
        QVERIFY2(more >= call - rounding, describe(i, c));
    }
}

void tst_black::roundTrip()
{
    Cases cases;
    int solved = 0;
    for (int i = 0; i < randomCases; ++i) {
        const Case c = cases.next();
        const double price = blackPrice(c.type, c.strike, c.market, c.volatility).value();
        const ImpliedVolatility implied = impliedVolatility(c.type, c.strike, c.market, price);
        if (!implied.volatility) {
            // Only the time value of an option in the money can drown in its price.
            QVERIFY2(c.type != outOfTheMoneyType(c.strike, c.market.forward), describe(i, c));
            QVERIFY2(implied.refusal == Refusal::BelowIntrinsic, describe(i, c));
            continue;
        }
        ++solved;
        const double again = blackPrice(c.type, c.strike, c.market, *implied.volatility).value();
        const double rounding = 1e-14 * std::max(c.strike, c.market.forward) * c.market.discount();
        QVERIFY2(std::abs(again - price) <= 1e-9 * price + rounding, describe(i, c));
        // Rounding of the price over the vega is what the volatility can be known to.
        const double vega = blackVega(c.strike, c.market, c.volatility).value();
        QVERIFY2(std::abs(*implied.volatility - c.volatility) <= 1e-6 * c.volatility + rounding / vega,
            describe(i, c));
    }
    QVERIFY2(solved > randomCases * 9 / 10, qPrintable(QString::number(solved)));
}

void tst_black::tinyPrices()
{
    const Market market{100.0, 0.1, 0.0};
    double previous = infinity;
    for (int exponent = -2; exponent >= -250; --exponent) {
        const double price = std::pow(10.0, exponent);
        const ImpliedVolatility implied = impliedVolatility(OptionType::Call, 150.0, market, price);
        QVERIFY2(implied.volatility, qPrintable(QString::number(exponent)));
        QVERIFY2(*implied.volatility < previous, qPrintable(QString::number(exponent)));
        previous = *implied.volatility;
        QVERIFY(isNear(blackPrice(OptionType::Call, 150.0, market, previous).value(), price, 1e-6));
    }
    QVERIFY(previous > 0.0);
}

void tst_black::refusals_data()
{
    QTest::addColumn<bool>("call");
    QTest::addColumn<double>("strike");
    QTest::addColumn<std::optional<double>>("price");
    QTest::addColumn<Refusal>("refusal");

    using Price = std::optional<double>;
    QTest::newRow("no price") << true << 50.0 << Price() << Refusal::NoPrice;
    QTest::newRow("zero") << true << 50.0 << Price(0.0) << Refusal::ZeroPrice;
    QTest::newRow("negative") << true << 50.0 << Price(-0.01) << Refusal::InvalidInput;
    QTest::newRow("not a number") << true << 50.0 << Price(notANumber) << Refusal::InvalidInput;
    QTest::newRow("infinite") << true << 50.0 << Price(infinity) << Refusal::InvalidInput;
    QTest::newRow("a cent below intrinsic") << true << 50.0 << Price(42.84) << Refusal::BelowIntrinsic;
    QTest::newRow("intrinsic") << true << 50.0 << Price(42.85) << Refusal::BelowIntrinsic;
    QTest::newRow("put at intrinsic") << false << 100.35 << Price(7.5) << Refusal::BelowIntrinsic;
    QTest::newRow("call at the forward") << true << 50.0 << Price(92.85) << Refusal::AboveBound;
    QTest::newRow("call above the forward") << true << 100.0 << Price(93.0) << Refusal::AboveBound;
    QTest::newRow("put at the strike") << false << 50.0 << Price(50.0) << Refusal::AboveBound;
    QTest::newRow("price near the largest number") << true << 50.0 << Price(1e308) << Refusal::AboveBound;
    QTest::newRow("below the smallest normal number")
        << true << 150.0 << Price(1e-310) << Refusal::NoConvergence;
}

void tst_black::refusals()
{
    QFETCH(bool, call);
    QFETCH(double, strike);
    QFETCH(std::optional<double>, price);
    QFETCH(Refusal, refusal);

    const OptionType type = call ? OptionType::Call : OptionType::Put;
    const ImpliedVolatility implied = impliedVolatility(type, strike, {92.85, 0.12}, price);
    QVERIFY(!implied.volatility);
    QCOMPARE(implied.refusal, refusal);
}

void tst_black::impliedVolatilityOfBadInput()
{
    const auto isInvalid = [](double strike, const Market& market) {
        const ImpliedVolatility implied = impliedVolatility(OptionType::Call, strike, market, 1.0);
        return !implied.volatility && implied.refusal == Refusal::InvalidInput;
    };
    QVERIFY(!isInvalid(100.0, {100.0, 0.5}));
    for (const double bad : badNumbers()) {
        QVERIFY2(isInvalid(bad, {100.0, 0.5}), qPrintable(QString::number(bad)));
        QVERIFY2(isInvalid(100.0, {bad, 0.5}), qPrintable(QString::number(bad)));
        QVERIFY2(isInvalid(100.0, {100.0, bad}), qPrintable(QString::number(bad)));
    }
    for (const double rate : {notANumber, infinity, -infinity, 1e4, -1e4})
        QVERIFY2(isInvalid(100.0, {100.0, 0.5, rate}), qPrintable(QString::number(rate)));
}

void tst_black::extremeInputsNeverThrow()
{
    const QVector<double> numbers{notANumber, infinity, -infinity, -1.0, 0.0, 5e-324, 1e-308, 1e-150, 1e-9,
        0.5, 1.0, 100.0, 1e9, 1e150, 1e308};
    for (const double forward : numbers)
        for (const double strike : numbers)
            for (const double time : numbers)
                for (const double value : numbers)
                    for (const OptionType type : {OptionType::Call, OptionType::Put}) {
                        const Market market{forward, time};
                        const std::optional<double> price = blackPrice(type, strike, market, value);
                        QVERIFY(!price || (std::isfinite(*price) && *price >= 0.0));
                        const std::optional<double> vega = blackVega(strike, market, value);
                        QVERIFY(!vega || std::isfinite(*vega));
                        const ImpliedVolatility implied = impliedVolatility(type, strike, market, value);
                        QVERIFY(!implied.volatility
                            || (std::isfinite(*implied.volatility) && *implied.volatility > 0.0));
                    }
}

PLOT2D_TEST_MAIN(tst_black)
#include "tst_black.moc"
