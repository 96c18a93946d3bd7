#include "positiontest.h"
#include "support/testmain.h"

#include <cmath>
#include <limits>
#include <random>

using namespace Position;
using namespace PositionTest;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr LegKind call = LegKind::Call;
constexpr LegKind put = LegKind::Put;
constexpr LegKind future = LegKind::Future;

// The profit at expiry of legs of one series, by the definition of an option.
double payoff(const QVector<Leg>& legs, double price)
{
    double sum = 0.0;
    for (const Leg& each : legs) {
        double value = price;
        if (each.kind == call)
            value = price > each.strike ? price - each.strike : 0.0;
        if (each.kind == put)
            value = price < each.strike ? each.strike - price : 0.0;
        sum += (value - each.price) * each.quantity;
    }
    return sum;
}

// Strikes and prices are quarters, so that sums are exact.
QVector<Leg> randomLegs(std::mt19937_64* random, bool bothExpiries)
{
    const auto upTo = [random](int most) { return std::uniform_int_distribution<int>(0, most)(*random); };
    QVector<Leg> legs;
    const int count = 1 + upTo(4);
    for (int i = 0; i < count; ++i) {
        const int quantity = upTo(1) == 0 ? 1 + upTo(2) : -1 - upTo(2);
        Leg one = leg(QVector<LegKind>{call, put, call, put, future}[upTo(4)], quantity,
            70.0 + 2.5 * upTo(24), 0.25 * upTo(60));
        if (one.kind == future)
            one.price += 90.0;
        if (bothExpiries && upTo(1) == 1)
            one.expiry = farExpiry;
        legs.append(one);
    }
    return legs;
}

int signOf(double value, double rounding)
{
    return std::abs(value) <= rounding ? 0 : value > 0.0 ? 1 : -1;
}

// Whether a profit has one sign between the ends and is nowhere zero.
bool hasOneSign(const std::function<double(double)>& profit, double low, double high, double rounding)
{
    constexpr int steps = 400;
    int first = 0;
    for (int i = 1; i < steps; ++i) {
        const int sign = signOf(profit(low + (high - low) * i / steps), rounding);
        if (sign == 0 || (i > 1 && sign != first))
            return false;
        first = sign;
    }
    return true;
}

QString describe(std::uint64_t seed, const QVector<Leg>& legs, const QVector<BreakEven>& found)
{
    QString text = QStringLiteral("seed %1:").arg(seed);
    for (const Leg& each : legs)
        text += QStringLiteral(" %1%2 %3@%4")
                    .arg(each.quantity)
                    .arg(QLatin1Char(char(each.kind)))
                    .arg(each.strike)
                    .arg(each.price);
    for (const BreakEven& each : found)
        text += QStringLiteral(" [%1, %2]").arg(each.low).arg(each.high);
    return text;
}

}

Q_DECLARE_METATYPE(QVector<Leg>)

class tst_profile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothing();
    void payoffs_data();
    void payoffs();
    void breakEvensByBruteForce();
    void breakEvensOfSeveralExpiries();
    void calendarKeepsItsTimeValue();
    void futuresKeepTheirRatio();
    void laterLegsAreDiscounted();
    void endsWithTheFirstExpiry();
    void leavesOut();
    void withoutSmile();
    void strikesBesideTheSmile();
    void greeksAreSlopes();
};

void tst_profile::nothing()
{
    for (const Profile& profile :
        {Profile(), Profile({}, bothSeries()), Profile({leg(call, 1, 100, 5)}, {})}) {
        QVERIFY(profile.isEmpty());
        QVERIFY(!profile.today(100.0));
        QVERIFY(!profile.atExpiry(100.0));
        QVERIFY(!profile.greeks());
        QVERIFY(profile.breakEvens().isEmpty());
        QVERIFY(profile.corners().isEmpty());
    }
}

void tst_profile::payoffs_data()
{
    QTest::addColumn<QVector<Leg>>("legs");
    QTest::addColumn<QVector<QPointF>>("points");
    QTest::addColumn<QVector<QPointF>>("breakEvens");
    using Points = QVector<QPointF>;
    QTest::newRow("long call") << QVector<Leg>{leg(call, 1, 100, 5)}
                               << Points{{50, -5}, {100, -5}, {105, 0}, {120, 15}} << Points{{105, 105}};
    QTest::newRow("short puts") << QVector<Leg>{leg(put, -2, 90, 3)}
                                << Points{{80, -14}, {87, 0}, {90, 6}, {150, 6}} << Points{{87, 87}};
    QTest::newRow("future") << QVector<Leg>{leg(future, -3, 0, 98)} << Points{{98, 0}, {100, -6}, {90, 24}}
                            << Points{{98, 98}};
    QTest::newRow("straddle") << QVector<Leg>{leg(call, 1, 100, 6), leg(put, 1, 100, 5)}
                              << Points{{100, -11}, {80, 9}, {120, 9}} << Points{{89, 89}, {111, 111}};
    QTest::newRow("butterfly") << QVector<Leg>{leg(call, 1, 90, 12), leg(call, -2, 100, 6),
        leg(call, 1, 110, 3)} << Points{{80, -3}, {90, -3}, {100, 7}, {110, -3}, {200, -3}}
                               << Points{{93, 93}, {107, 107}};
    QTest::newRow("covered call") << QVector<Leg>{leg(future, 1, 0, 100), leg(call, -1, 110, 2)}
                                  << Points{{98, 0}, {110, 12}, {130, 12}} << Points{{98, 98}};
    QTest::newRow("free butterfly touches")
        << QVector<Leg>{leg(put, 1, 90, 2), leg(put, -2, 100, 6), leg(put, 1, 110, 10)}
        << Points{{80, 0}, {90, 0}, {100, 10}, {110, 0}} << Points{{0, 90}, {110, infinity}};
    QTest::newRow("touches from below") << QVector<Leg>{leg(call, -1, 100, 5), leg(put, -1, 100, 5)}
                                        << Points{{100, 10}, {110, 0}} << Points{{90, 90}, {110, 110}};
    QTest::newRow("just touches") << QVector<Leg>{leg(call, 1, 90, 10), leg(call, -2, 100, 0),
        leg(call, 1, 110, 0)} << Points{{90, -10}, {100, 0}, {110, -10}}
                                  << Points{{100, 100}};
    QTest::newRow("box without profit")
        << QVector<Leg>{leg(call, 1, 90, 12), leg(call, -1, 100, 5), leg(put, 1, 100, 6), leg(put, -1, 90, 3)}
        << Points{{10, 0}, {95, 0}, {400, 0}} << Points{{0, infinity}};
    QTest::newRow("never") << QVector<Leg>{leg(put, 1, 60, 70)} << Points{{10, -20}, {60, -70}} << Points{};
}

void tst_profile::payoffs()
{
    QFETCH(QVector<Leg>, legs);
    QFETCH(QVector<QPointF>, points);
    QFETCH(QVector<QPointF>, breakEvens);
    const Profile profile(legs, bothSeries());
    QVERIFY(profile.isPolygon());
    for (const QPointF& point : points)
        QVERIFY2(std::abs(profile.atExpiry(point.x()).value() - point.y()) < 1e-12,
            qPrintable(QStringLiteral("%1: %2").arg(point.x()).arg(*profile.atExpiry(point.x()))));
    const QVector<BreakEven> found = profile.breakEvens();
    QCOMPARE(found.size(), breakEvens.size());
    for (int i = 0; i < found.size(); ++i) {
        QCOMPARE(found[i].low, breakEvens[i].x());
        QCOMPARE(found[i].high, breakEvens[i].y());
    }
    for (const double bad : {0.0, -1.0, notANumber, infinity}) {
        QVERIFY(!profile.atExpiry(bad));
        QVERIFY(!profile.today(bad));
    }
}

void tst_profile::breakEvensByBruteForce()
{
    int roots = 0;
    int ranges = 0;
    for (std::uint64_t seed = 1; seed <= 3000; ++seed) {
        std::mt19937_64 random(seed);
        const QVector<Leg> legs = randomLegs(&random, false);
        const Profile profile(legs, bothSeries());
        const QVector<BreakEven> found = profile.breakEvens();
        const auto profit = [&legs](double price) { return payoff(legs, price); };
        double after = 0.0;
        for (const BreakEven& each : found) {
            const double inside = std::isinf(each.high) ? each.low + 1e4 : (each.low + each.high) / 2.0;
            const bool isZero = std::abs(profit(each.low)) < 1e-9 && std::abs(profit(inside)) < 1e-9;
            const bool isApart = each.low == 0.0 || hasOneSign(profit, after, each.low, 1e-9);
            QVERIFY2(isZero && isApart, qPrintable(describe(seed, legs, found)));
            after = each.high;
            ++(each.isPoint() ? roots : ranges);
        }
        if (!std::isinf(after))
            QVERIFY2(hasOneSign(profit, after, 2e4, 1e-9), qPrintable(describe(seed, legs, found)));
    }
    qInfo("%d roots, %d ranges", roots, ranges);
    QVERIFY(roots > 2000 && ranges > 10);
}

void tst_profile::breakEvensOfSeveralExpiries()
{
    int roots = 0;
    for (std::uint64_t seed = 1; seed <= 300; ++seed) {
        std::mt19937_64 random(seed);
        const QVector<Leg> legs = randomLegs(&random, true);
        const Profile profile(legs, bothSeries());
        const auto profit = [&profile](double price) { return profile.atExpiry(price).value(); };
        const QVector<BreakEven> found = profile.breakEvens();
        double after = 20.0;
        for (const BreakEven& each : found) {
            QVERIFY2(
                std::abs(profit(std::max(each.low, 1e-3))) < 1e-7, qPrintable(describe(seed, legs, found)));
            if (each.low > after)
                QVERIFY2(hasOneSign(profit, after, each.low, 1e-11), qPrintable(describe(seed, legs, found)));
            after = std::max(after, each.high);
            ++roots;
        }
        if (!std::isinf(after))
            QVERIFY2(hasOneSign(profit, after, 1e3, 1e-11), qPrintable(describe(seed, legs, found)));
    }
    qInfo("%d roots", roots);
    QVERIFY(roots > 200);
}

void tst_profile::calendarKeepsItsTimeValue()
{
    const Profile profile({leg(call, -1, 100, 6), farLeg(call, 1, 100, 9)}, bothSeries());
    QVERIFY(!profile.isPolygon());
    QCOMPARE(profile.timeToExpiry(), nearTime);
    QCOMPARE(profile.corners(), QVector<double>{100.0});
    // At 100 the near call ends worthless; the far one is worth Black's value of what is left.
    const double left = Pricing::blackPrice(OptionType::Call, 100.0, {104.0, farTime - nearTime},
        bothSeries()[1].smile->volatility(100.0).value())
                            .value();
    QVERIFY(std::abs(profile.atExpiry(100.0).value() - (left - 9.0 + 6.0)) < 1e-9);
    // The far future gains faster, so the profit of the right wing stays.
    const QVector<BreakEven> found = profile.breakEvens();
    QCOMPARE(found.size(), 1);
    QVERIFY(found[0].isPoint() && found[0].low < 100.0);
    QVERIFY(profile.atExpiry(40.0).value() < -2.9);
}

void tst_profile::futuresKeepTheirRatio()
{
    const Profile profile({farLeg(future, 2, 0, 100), farLeg(put, 1, 104, 5)}, bothSeries());
    // At 50 the far future stands at 52, and the far series ends after the near one.
    QCOMPARE(profile.timeToExpiry(), nearTime);
    QVERIFY(!profile.isPolygon());
    const Profile onlyFuture({farLeg(future, 2, 0, 100)}, bothSeries());
    QCOMPARE(onlyFuture.atExpiry(50.0).value(), 2.0 * (52.0 - 100.0));
    QCOMPARE(onlyFuture.today(100.0).value(), 2.0 * (104.0 - 100.0));
    QCOMPARE(onlyFuture.greeks()->delta, 2.0 * 1.04);
    QCOMPARE(onlyFuture.lastSlope(), 2.0 * 1.04);
    QCOMPARE(onlyFuture.breakEvens().size(), 1);
    QVERIFY(std::abs(onlyFuture.breakEvens().first().low - 100.0 / 1.04) < 1e-9);
}

void tst_profile::laterLegsAreDiscounted()
{
    QVector<SeriesValuation> series = bothSeries();
    series[0].market.rate = 0.08;
    series[1].market.rate = 0.06;
    const double later = std::exp(-0.06 * (farTime - nearTime));
    const Profile profile({leg(call, -1, 100, 5), farLeg(call, 1, 104, 5)}, series);
    const double slope = 1.04 * later - 1.0;
    QVERIFY(std::abs(profile.lastSlope() - slope) < 1e-12);
    const double high = 1e5;
    const double gain = profile.atExpiry(2.0 * high).value() - profile.atExpiry(high).value();
    QVERIFY2(std::abs(gain / high - slope) < 1e-9, qPrintable(QString::number(gain / high, 'g', 12)));

    // Of the value today the discount factor to the own expiry, at expiry none.
    const Profile near({leg(call, 1, 20, 0)}, series);
    QVERIFY(std::abs(near.today(1000.0).value() - 980.0 * std::exp(-0.08 * nearTime)) < 1e-6);
    QCOMPARE(near.atExpiry(1000.0).value(), 980.0);
    QCOMPARE(near.lastSlope(), 1.0);
}

void tst_profile::endsWithTheFirstExpiry()
{
    QVector<SeriesValuation> farFirst = bothSeries();
    std::swap(farFirst[0], farFirst[1]);
    QCOMPARE(Profile({farLeg(call, 1, 100, 5)}, farFirst).timeToExpiry(), farTime);
    QCOMPARE(Profile({farLeg(call, 1, 100, 5), leg(call, 1, 90, 5)}, farFirst).timeToExpiry(), nearTime);
    QCOMPARE(Profile({farLeg(call, 1, 100, 5)}, farFirst).forward(), 104.0);
}

void tst_profile::leavesOut()
{
    Leg stranger = leg(call, 1, 100, 5);
    stranger.expiry = QDate(2030, 1, 1);
    Leg nameless = leg(call, 1, 100, 5);
    nameless.expiry = QDate();
    const Profile profile(
        {stranger, leg(call, 1, 100, 5), leg(call, 0, 100, 5), leg(put, 1, -3, 5), nameless}, bothSeries());
    QCOMPARE(profile.legs().size(), 1);
    QCOMPARE(profile.leftOut(), 4);
    QCOMPARE(profile.atExpiry(110.0).value(), 5.0);

    QVector<SeriesValuation> broken = bothSeries();
    broken[1].market.time = notANumber;
    QCOMPARE(Profile({farLeg(call, 1, 100, 5), leg(call, 1, 100, 5)}, broken).leftOut(), 1);
    broken[0].market.forward = 0.0;
    QCOMPARE(Profile({farLeg(call, 1, 100, 5), leg(call, 1, 100, 5)}, broken).leftOut(), 2);
    // A series that states no expiry is one as well.
    QVector<SeriesValuation> unstated = bothSeries();
    unstated[0].expiry = QDate();
    QCOMPARE(Profile({nameless}, unstated).leftOut(), 0);
}

void tst_profile::withoutSmile()
{
    QVector<SeriesValuation> series = bothSeries();
    series[0].smile.reset();
    const Profile profile({leg(call, 1, 100, 5)}, series);
    QVERIFY(!profile.today(110.0));
    QVERIFY(!profile.greeks());
    QCOMPARE(profile.atExpiry(110.0).value(), 5.0);
    QCOMPARE(profile.breakEvens().size(), 1);
    QVERIFY(Profile({leg(future, 1, 0, 100)}, series).today(110.0));

    series[1].smile.reset();
    const Profile later({leg(call, 1, 100, 5), farLeg(call, 1, 100, 5)}, series);
    QVERIFY(!later.atExpiry(110.0));
    QVERIFY(later.breakEvens().isEmpty());
}

void tst_profile::strikesBesideTheSmile()
{
    const Profile profile({leg(call, 1, 20, 80), leg(put, 1, 500, 400)}, bothSeries());
    QVERIFY(std::abs(profile.legs()[0].volatility.value() - 0.4) < 1e-5);
    QVERIFY(std::abs(profile.legs()[1].volatility.value() - 0.35) < 1e-5);
}

void tst_profile::greeksAreSlopes()
{
    for (std::uint64_t seed = 1; seed <= 200; ++seed) {
        std::mt19937_64 random(seed);
        const QVector<Leg> legs = randomLegs(&random, true);
        const Profile profile(legs, bothSeries());
        const Pricing::Greeks greeks = profile.greeks().value();
        constexpr double step = 1e-3;
        const double up = profile.today(forward + step).value();
        const double down = profile.today(forward - step).value();
        const double middle = profile.today(forward).value();
        QVERIFY2(
            std::abs((up - down) / (2.0 * step) - greeks.delta) < 1e-5, qPrintable(describe(seed, legs, {})));
        QVERIFY2(std::abs((up - 2.0 * middle + down) / (step * step) - greeks.gamma) < 1e-4,
            qPrintable(describe(seed, legs, {})));
    }
}

PLOT2D_TEST_MAIN(tst_profile)
#include "tst_profile.moc"
