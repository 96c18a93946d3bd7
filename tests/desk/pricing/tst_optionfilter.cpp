#include "support/testmain.h"

#include <pricing/optionfilter.h>

#include <cmath>
#include <limits>

using namespace Pricing;

/// Which options a filter lets through.
class tst_optionfilter : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void deviations();
    void noDeviations_data();
    void noDeviations();
    void passes_data();
    void passes();
    void limitsAreIncluded();
    void unknownVolatilityLimitsNothing();
    void textsComeBack();
    void refusesOtherTexts_data();
    void refusesOtherTexts();
};

namespace {

// A year, so that a deviation is a factor of exp(0.2).
const Market market{100.0, 1.0};
constexpr double volatility = 0.2;
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

}

void tst_optionfilter::deviations()
{
    QCOMPARE(deviationsFromForward(100.0, market, volatility).value_or(notANumber), 0.0);
    for (const double count : {-3.0, -1.0, 0.5, 2.0}) {
        const double strike = 100.0 * std::exp(count * volatility);
        QVERIFY(
            std::abs(deviationsFromForward(strike, market, volatility).value_or(notANumber) - count) < 1e-12);
        // Four times the time is twice the deviation.
        const Market later{100.0, 4.0};
        QVERIFY(std::abs(deviationsFromForward(strike, later, volatility).value_or(notANumber) - count / 2.0)
            < 1e-12);
    }
}

void tst_optionfilter::noDeviations_data()
{
    QTest::addColumn<double>("strike");
    QTest::addColumn<double>("forward");
    QTest::addColumn<double>("time");
    QTest::addColumn<double>("deviation");
    QTest::newRow("no strike") << 0.0 << 100.0 << 1.0 << 0.2;
    QTest::newRow("endless strike") << std::numeric_limits<double>::infinity() << 100.0 << 1.0 << 0.2;
    QTest::newRow("no forward") << 100.0 << 0.0 << 1.0 << 0.2;
    QTest::newRow("no time") << 100.0 << 100.0 << 0.0 << 0.2;
    QTest::newRow("no volatility") << 100.0 << 100.0 << 1.0 << 0.0;
    QTest::newRow("negative volatility") << 100.0 << 100.0 << 1.0 << -0.2;
    QTest::newRow("not a number") << 100.0 << 100.0 << 1.0 << notANumber;
}

void tst_optionfilter::noDeviations()
{
    QFETCH(double, strike);
    QFETCH(double, forward);
    QFETCH(double, time);
    QFETCH(double, deviation);
    QVERIFY(!deviationsFromForward(strike, {forward, time}, deviation));
}

void tst_optionfilter::passes_data()
{
    QTest::addColumn<bool>("outOfTheMoneyOnly");
    QTest::addColumn<int>("side");
    QTest::addColumn<int>("deviations");
    // Of the call and the put at 70, 90, 100, 110 and 140, 1 for those let through.
    QTest::addColumn<QString>("expected");
    const int both = int(OptionSide::CallsAndPuts);
    const int calls = int(OptionSide::Calls);
    const int puts = int(OptionSide::Puts);
    QTest::newRow("all") << false << both << 0 << "11 11 11 11 11";
    QTest::newRow("out of the money") << true << both << 0 << "01 01 10 10 10";
    QTest::newRow("calls") << false << calls << 0 << "10 10 10 10 10";
    QTest::newRow("puts") << false << puts << 0 << "01 01 01 01 01";
    QTest::newRow("calls out of the money") << true << calls << 0 << "00 00 10 10 10";
    QTest::newRow("puts out of the money") << true << puts << 0 << "01 01 00 00 00";
    QTest::newRow("a deviation") << false << both << 1 << "00 11 11 11 00";
    QTest::newRow("two deviations") << false << both << 2 << "11 11 11 11 11";
    QTest::newRow("all three") << true << puts << 1 << "00 01 00 00 00";
    QTest::newRow("negative counts as none") << false << both << -1 << "11 11 11 11 11";
}

void tst_optionfilter::passes()
{
    QFETCH(bool, outOfTheMoneyOnly);
    QFETCH(int, side);
    QFETCH(int, deviations);
    QFETCH(QString, expected);
    const OptionFilter filter{outOfTheMoneyOnly, OptionSide(side), deviations};
    QStringList found;
    for (const double strike : {70.0, 90.0, 100.0, 110.0, 140.0}) {
        QString both;
        for (const OptionType type : {OptionType::Call, OptionType::Put})
            both += Pricing::passes(filter, type, strike, market, volatility) ? '1' : '0';
        found.append(both);
    }
    QCOMPARE(found.join(QLatin1Char(' ')), expected);
}

void tst_optionfilter::limitsAreIncluded()
{
    // Without rounding: a forward of 1 has a logarithm of 0, and the strike's is 1.
    const Market unit{1.0, 1.0};
    const double strike = std::exp(1.0);
    const OptionFilter filter{false, OptionSide::CallsAndPuts, 1};
    QVERIFY(Pricing::passes(filter, OptionType::Call, strike, unit, std::log(strike)));
    QVERIFY(!Pricing::passes(filter, OptionType::Call, strike * (1.0 + 1e-9), unit, std::log(strike)));
}

void tst_optionfilter::unknownVolatilityLimitsNothing()
{
    const OptionFilter filter{true, OptionSide::CallsAndPuts, 1};
    for (const double unknown : {0.0, -1.0, notANumber})
        QVERIFY(Pricing::passes(filter, OptionType::Put, 1.0, market, unknown));
    QVERIFY(!Pricing::passes(filter, OptionType::Call, 1.0, market, 0.0));
}

void tst_optionfilter::textsComeBack()
{
    QCOMPARE(toText(OptionFilter()), QStringLiteral("otm both 0"));
    QSet<QString> texts;
    for (const bool outOfTheMoneyOnly : {true, false}) {
        for (const OptionSide side : {OptionSide::CallsAndPuts, OptionSide::Calls, OptionSide::Puts}) {
            for (int i = 0; i <= mostDeviations; ++i) {
                const OptionFilter filter{outOfTheMoneyOnly, side, i};
                texts.insert(toText(filter));
                const auto back = filterFromText(toText(filter));
                QVERIFY(back && *back == filter);
            }
        }
    }
    QCOMPARE(texts.size(), 2 * 3 * (mostDeviations + 1));
}

void tst_optionfilter::refusesOtherTexts_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"", "otm", "otm both", "otm both 0 ", " otm both 0", "otm  both 0", "itm both 0",
             "otm strangles 0", "otm both x", "otm both -1", "otm both 10", "otm both 1.5", "OTM both 0"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void tst_optionfilter::refusesOtherTexts()
{
    QFETCH(QString, text);
    QVERIFY(!filterFromText(text));
}

PLOT2D_TEST_MAIN(tst_optionfilter)
#include "tst_optionfilter.moc"
