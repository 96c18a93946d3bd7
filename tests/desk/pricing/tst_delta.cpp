#include "support/testmain.h"

#include <pricing/delta.h>

#include <cmath>
#include <limits>

using namespace Pricing;

/// The derivative of Black's value by the forward.
class tst_delta : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isTheSlopeOfThePrice_data();
    void isTheSlopeOfThePrice();
    void obeysParity();
    void ofTheIntrinsicValue();
    void nothingForBadInput_data();
    void nothingForBadInput();
};

void tst_delta::isTheSlopeOfThePrice_data()
{
    QTest::addColumn<double>("strike");
    QTest::addColumn<double>("time");
    QTest::addColumn<double>("rate");
    QTest::addColumn<double>("volatility");
    QTest::newRow("at the money") << 100.0 << 0.25 << 0.0 << 0.3;
    QTest::newRow("low strike") << 80.0 << 0.25 << 0.0 << 0.3;
    QTest::newRow("high strike") << 130.0 << 0.25 << 0.0 << 0.3;
    QTest::newRow("with a rate") << 110.0 << 2.0 << 0.05 << 0.2;
    QTest::newRow("a day") << 100.5 << 1.0 / 365.0 << 0.0 << 0.4;
}

void tst_delta::isTheSlopeOfThePrice()
{
    QFETCH(double, strike);
    QFETCH(double, time);
    QFETCH(double, rate);
    QFETCH(double, volatility);
    constexpr double step = 1e-3;
    for (const OptionType type : {OptionType::Call, OptionType::Put}) {
        const auto price = [&](double forward) {
            return blackPrice(type, strike, {forward, time, rate}, volatility).value_or(0.0);
        };
        const double slope = (price(100.0 + step) - price(100.0 - step)) / (2.0 * step);
        const auto delta = blackDelta(type, strike, {100.0, time, rate}, volatility);
        QVERIFY(delta);
        QVERIFY2(std::abs(*delta - slope) < 1e-6, qPrintable(QString::number(*delta - slope)));
        QCOMPARE(*delta > 0.0, type == OptionType::Call);
    }
}

void tst_delta::obeysParity()
{
    const Market market{100.0, 0.5, 0.03};
    for (const double strike : {50.0, 99.0, 100.0, 150.0}) {
        const double call = blackDelta(OptionType::Call, strike, market, 0.25).value_or(0.0);
        const double put = blackDelta(OptionType::Put, strike, market, 0.25).value_or(0.0);
        QVERIFY(std::abs(call - put - market.discount()) < 1e-14);
    }
}

void tst_delta::ofTheIntrinsicValue()
{
    const Market market{100.0, 0.5};
    QCOMPARE(blackDelta(OptionType::Call, 90.0, market, 0.0).value_or(-9.0), 1.0);
    QCOMPARE(blackDelta(OptionType::Call, 110.0, market, 0.0).value_or(-9.0), 0.0);
    QCOMPARE(blackDelta(OptionType::Put, 110.0, market, 0.0).value_or(-9.0), -1.0);
    QCOMPARE(blackDelta(OptionType::Put, 90.0, market, 0.0).value_or(-9.0), 0.0);
    QCOMPARE(blackDelta(OptionType::Call, 100.0, market, 0.0).value_or(-9.0), 0.0);
    QCOMPARE(blackDelta(OptionType::Put, 100.0, market, 0.0).value_or(-9.0), -1.0);
}

void tst_delta::nothingForBadInput_data()
{
    QTest::addColumn<double>("strike");
    QTest::addColumn<double>("forward");
    QTest::addColumn<double>("time");
    QTest::addColumn<double>("volatility");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("strike") << 0.0 << 100.0 << 1.0 << 0.2;
    QTest::newRow("strike no number") << nan << 100.0 << 1.0 << 0.2;
    QTest::newRow("forward") << 100.0 << -1.0 << 1.0 << 0.2;
    QTest::newRow("time") << 100.0 << 100.0 << 0.0 << 0.2;
    QTest::newRow("volatility") << 100.0 << 100.0 << 1.0 << -0.2;
    QTest::newRow("volatility no number") << 100.0 << 100.0 << 1.0 << nan;
}

void tst_delta::nothingForBadInput()
{
    QFETCH(double, strike);
    QFETCH(double, forward);
    QFETCH(double, time);
    QFETCH(double, volatility);
    QVERIFY(!blackDelta(OptionType::Call, strike, {forward, time}, volatility));
}

PLOT2D_TEST_MAIN(tst_delta)
#include "tst_delta.moc"
