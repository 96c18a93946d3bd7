#include "positiontest.h"
#include "support/testmain.h"

#include <ql/exercise.hpp>
#include <ql/instruments/vanillaoption.hpp>
#include <ql/pricingengines/vanilla/analyticeuropeanengine.hpp>
#include <ql/processes/blackscholesprocess.hpp>
#include <ql/quotes/simplequote.hpp>
#include <ql/settings.hpp>
#include <ql/termstructures/volatility/equityfx/blackconstantvol.hpp>
#include <ql/termstructures/yield/flatforward.hpp>
#include <ql/time/calendars/nullcalendar.hpp>
#include <ql/time/daycounters/actual365fixed.hpp>

#include <cmath>

using namespace Position;
using namespace PositionTest;

namespace {

namespace Ql = QuantLib;

const Ql::Date today(2, Ql::January, 2024);

struct Terms {
    LegKind kind;
    double strike;
    double forward;
    int days;
    double volatility;
    double rate;
};

// The option as an instrument with an engine of the library.
struct Instrument {
    explicit Instrument(const Terms& terms)
        : option(Ql::ext::make_shared<Ql::PlainVanillaPayoff>(
                     terms.kind == LegKind::Call ? Ql::Option::Call : Ql::Option::Put, terms.strike),
            Ql::ext::make_shared<Ql::EuropeanExercise>(today + terms.days))
    {
        Ql::Settings::instance().evaluationDate() = today;
        const Ql::Actual365Fixed days;
        option.setPricingEngine(
            Ql::ext::make_shared<Ql::AnalyticEuropeanEngine>(Ql::ext::make_shared<Ql::BlackProcess>(
                Ql::Handle<Ql::Quote>(Ql::ext::make_shared<Ql::SimpleQuote>(terms.forward)),
                Ql::Handle<Ql::YieldTermStructure>(
                    Ql::ext::make_shared<Ql::FlatForward>(today, terms.rate, days)),
                Ql::Handle<Ql::BlackVolTermStructure>(Ql::ext::make_shared<Ql::BlackConstantVol>(
                    today, Ql::NullCalendar(), terms.volatility, days)))));
    }

    Ql::VanillaOption option;
};

bool areClose(double a, double b)
{
    return std::abs(a - b) <= 1e-9 * std::max({1.0, std::abs(a), std::abs(b)});
}

QString text(const Terms& terms)
{
    return QStringLiteral("%1 strike %2 forward %3 days %4 volatility %5 rate %6")
        .arg(QLatin1Char(char(terms.kind)))
        .arg(terms.strike)
        .arg(terms.forward)
        .arg(terms.days)
        .arg(terms.volatility)
        .arg(terms.rate);
}

QVector<Terms> manyTerms()
{
    QVector<Terms> all;
    for (const LegKind kind : {LegKind::Call, LegKind::Put}) {
        for (const double strike : {50.0, 92.5, 100.0, 107.5, 180.0}) {
            for (const double forward : {80.0, 100.0, 125.0}) {
                for (const int days : {1, 30, 365}) {
                    for (const double rate : {0.0, 0.05})
                        all.append({kind, strike, forward, days, 0.1 + strike / 500.0, rate});
                }
            }
        }
    }
    return all;
}

}

/// Values and derivatives against the engines of QuantLib.
class tst_positionvalues : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void unitValues();
    void unitDerivatives();
    void noDerivatives();
    void profitOfAPosition();
};

void tst_positionvalues::unitValues()
{
    const QVector<Terms> all = manyTerms();
    for (const Terms& terms : all) {
        const ValuedLeg valued{{terms.kind, QDate(), 1, terms.strike, 0.0},
            {100.0, terms.days / 365.0, terms.rate}, 1.0, terms.volatility};
        const double value = unitValue(valued, terms.forward, terms.days / 365.0).value();
        QVERIFY2(areClose(value, Instrument(terms).option.NPV()), qPrintable(text(terms)));
    }
}

void tst_positionvalues::unitDerivatives()
{
    const QVector<Terms> all = manyTerms();
    for (const Terms& terms : all) {
        const Pricing::Market market{terms.forward, terms.days / 365.0, terms.rate};
        const OptionType type = terms.kind == LegKind::Call ? OptionType::Call : OptionType::Put;
        const Pricing::Greeks greeks
            = Pricing::blackGreeks(type, terms.strike, market, terms.volatility).value();
        const Ql::VanillaOption option = Instrument(terms).option;
        QVERIFY2(areClose(greeks.delta, option.delta()), qPrintable(text(terms)));
        QVERIFY2(areClose(greeks.gamma, option.gamma()), qPrintable(text(terms)));
        QVERIFY2(areClose(greeks.vega, option.vega()), qPrintable(text(terms)));
        QVERIFY2(areClose(greeks.theta, option.theta()),
            qPrintable(QStringLiteral("%1: %2 %3").arg(text(terms)).arg(greeks.theta).arg(option.theta())));
    }
}

void tst_positionvalues::noDerivatives()
{
    QVERIFY(!Pricing::blackGreeks(OptionType::Call, 100.0, {100.0, 0.5}, 0.0));
    QVERIFY(!Pricing::blackGreeks(OptionType::Call, 100.0, {100.0, 0.5}, -0.1));
    QVERIFY(!Pricing::blackGreeks(OptionType::Call, 0.0, {100.0, 0.5}, 0.3));
    QVERIFY(!Pricing::blackGreeks(OptionType::Put, 100.0, {100.0, 0.0}, 0.3));
    QVERIFY(!Pricing::blackGreeks(OptionType::Put, 100.0, {100.0, 0.5}, std::nan("")));
}

void tst_positionvalues::profitOfAPosition()
{
    const QVector<SeriesValuation> series = bothSeries();
    const QVector<Leg> legs{leg(LegKind::Call, -2, 110.0, 3.25), farLeg(LegKind::Put, 3, 95.0, 4.5),
        leg(LegKind::Future, 1, 0.0, 99.0)};
    const Profile profile(legs, series);
    double vega = 0.0;
    double theta = 0.0;
    for (const double price : {70.0, 100.0, 131.0}) {
        const double callVolatility = series[0].smile->volatility(110.0).value();
        const double putVolatility = series[1].smile->volatility(95.0).value();
        const Instrument shortCall({LegKind::Call, 110.0, price, 91, callVolatility, 0.0});
        const Instrument longPut({LegKind::Put, 95.0, price * 1.04, 182, putVolatility, 0.0});
        const double expected
            = -2.0 * (shortCall.option.NPV() - 3.25) + 3.0 * (longPut.option.NPV() - 4.5) + (price - 99.0);
        QVERIFY2(areClose(profile.today(price).value(), expected), qPrintable(QString::number(price)));
        if (price == forward) {
            vega = -2.0 * shortCall.option.vega() + 3.0 * longPut.option.vega();
            theta = -2.0 * shortCall.option.theta() + 3.0 * longPut.option.theta();
        }
    }
    QVERIFY(areClose(profile.greeks()->vega, vega));
    QVERIFY(areClose(profile.greeks()->theta, theta));
}

PLOT2D_TEST_MAIN(tst_positionvalues)
#include "tst_positionvalues.moc"
