#include "plot2d/pricepoints_p.h"
#include "support/testhost.h"
#include "support/testmain.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

using PricePoints::View;
using Points = QList<double>;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr quint64 seed = 20240611;

decimal number(const char* text)
{
    return TestHost::number(QString::fromLatin1(text));
}

QVector<decimal> strikesOf(const QString& texts)
{
    QVector<decimal> strikes;
    const QStringList parts = texts.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& text : parts)
        strikes.append(TestHost::number(text));
    return strikes;
}

bool isAbout(double value, double expected)
{
    return std::abs(value - expected) <= 1e-9 * std::abs(expected);
}

}

class tst_pricepoints : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void progression_data();
    void progression();
    void progressionAddsRepeatedly();
    void longestProgression();
    void stepThatDoesNotMove();
    void randomProgressions();

    void interval_data();
    void interval();
    void intervalRoundsTheStep();

    void bracket_data();
    void bracket();
    void bracketOfNothing_data();
    void bracketOfNothing();

    void densified_data();
    void densified();
    void densifiedStepsOfOne();
    void densifiedLeavesTheRestAlone();
    void densifiedByNothingSensible_data();
    void densifiedByNothingSensible();
    void randomDensified();
};

void tst_pricepoints::progression_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<double>("step");
    QTest::addColumn<Points>("expected");
    QTest::newRow("fits") << 100.0 << 110.0 << 2.5 << Points{100.0, 102.5, 105.0, 107.5, 110.0};
    QTest::newRow("does not fit") << 100.0 << 110.0 << 3.0 << Points{100.0, 103.0, 106.0, 109.0};
    QTest::newRow("one step") << 100.0 << 110.0 << 10.0 << Points{100.0, 110.0};
    QTest::newRow("step too wide") << 100.0 << 110.0 << 20.0 << Points{};
    QTest::newRow("step fuzzily too wide")
        << 100.0 << 110.0 << 10.0 * (1.0 + 5e-13) << Points{100.0, 100.0 + 10.0 * (1.0 + 5e-13)};
    QTest::newRow("step barely too wide") << 100.0 << 110.0 << 10.0 * (1.0 + 3e-12) << Points{};
    QTest::newRow("last one fuzzily at the end")
        << 100.0 << 110.0 * (1.0 - 5e-13) << 5.0 << Points{100.0, 105.0, 110.0};
    QTest::newRow("from zero") << 0.0 << 10.0 << 1.0 << Points{};
    QTest::newRow("from almost zero") << 1e-12 << 10.0 << 1.0 << Points{};
    QTest::newRow("from just above zero") << 2e-12 << 2.0 << 1.0 << Points{2e-12, 1.0 + 2e-12};
    QTest::newRow("from below zero") << -1.0 << 10.0 << 1.0 << Points{};
    QTest::newRow("to zero") << 1.0 << 0.0 << 1.0 << Points{};
    QTest::newRow("both below zero") << -2.0 << -1.0 << 0.5 << Points{};
    QTest::newRow("inverted") << 110.0 << 100.0 << 1.0 << Points{};
    QTest::newRow("no width") << 100.0 << 100.0 << 1.0 << Points{};
    QTest::newRow("fuzzily no width") << 100.0 << 100.0 * (1.0 + 5e-13) << 1e-11 << Points{};
    QTest::newRow("no step") << 100.0 << 110.0 << 0.0 << Points{};
    QTest::newRow("negative step") << 100.0 << 110.0 << -1.0 << Points{};
    QTest::newRow("NaN from") << notANumber << 110.0 << 1.0 << Points{};
    QTest::newRow("NaN to") << 100.0 << notANumber << 1.0 << Points{};
    QTest::newRow("NaN step") << 100.0 << 110.0 << notANumber << Points{};
    QTest::newRow("to infinity") << 100.0 << infinity << 1.0 << Points{};
    QTest::newRow("to infinity at once") << 100.0 << infinity << infinity << Points{};
    QTest::newRow("infinite step") << 100.0 << 110.0 << infinity << Points{};
}

void tst_pricepoints::progression()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(double, step);
    QFETCH(Points, expected);
    QCOMPARE(PricePoints::progression(from, to, step), expected);
}

void tst_pricepoints::progressionAddsRepeatedly()
{
    const Points points = PricePoints::progression(1.0, 2.0, 0.1);
    double x = 1.0;
    for (const double point : points) {
        QCOMPARE(std::memcmp(&point, &x, sizeof x), 0);
        x += 0.1;
    }
    QCOMPARE(points.size(), 11);
    QVERIFY2(points.last() != 2.0, "a sum of tenths misses 2");
}

void tst_pricepoints::longestProgression()
{
    QCOMPARE(PricePoints::progression(1.0, 100001.0, 1.0).size(), 100001);
    QVERIFY(PricePoints::progression(1.0, 100002.0, 1.0).isEmpty());
}

void tst_pricepoints::stepThatDoesNotMove()
{
    // Doubles are 2 apart at 1e16, and half of that rounds to the even one below.
    QVERIFY(PricePoints::progression(1e16, 1e16 + 40000.0, 1.0).isEmpty());
}

void tst_pricepoints::randomProgressions()
{
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> exponent(-3.0, 6.0);
    std::uniform_real_distribution<double> part(0.001, 1.0);
    for (int i = 0; i < 2000; ++i) {
        const double from = std::pow(10.0, exponent(random));
        const double to = from + std::pow(10.0, exponent(random));
        const double step = (to - from) * part(random);
        const Points points = PricePoints::progression(from, to, step);
        const QString where = QStringLiteral("seed %1 case %2: %3 to %4 by %5")
                                  .arg(seed)
                                  .arg(i)
                                  .arg(from, 0, 'g', 17)
                                  .arg(to, 0, 'g', 17)
                                  .arg(step, 0, 'g', 17);
        QVERIFY2(!points.isEmpty() && points.first() == from, qPrintable(where));
        QVERIFY2(points.last() <= to * (1.0 + 2e-12), qPrintable(where));
        QVERIFY2(points.last() + step > to, qPrintable(where));
        for (int k = 1; k < points.size(); ++k)
            QVERIFY2(points[k] == points[k - 1] + step, qPrintable(where));
    }
}

void tst_pricepoints::interval_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("lowest");
    QTest::addColumn<QString>("highest");
    QTest::addColumn<double>("minStep");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<bool>("valid");
    QTest::newRow("two strikes") << 2 << "100"
                                 << "110" << 10.0 << 0 << true;
    QTest::newRow("two strikes, smaller step") << 2 << "100"
                                               << "110" << 5.0 << 0 << false;
    QTest::newRow("two strikes, larger step") << 2 << "100"
                                              << "110" << 11.0 << 0 << false;
    QTest::newRow("two strikes, fuzzy step") << 2 << "100"
                                             << "110" << 10.0 * (1.0 + 5e-13) << 0 << true;
    QTest::newRow("three strikes") << 3 << "100"
                                   << "110" << 5.0 << 0 << true;
    QTest::newRow("three strikes, step of the width") << 3 << "100"
                                                      << "110" << 10.0 << 0 << false;
    QTest::newRow("three strikes, fuzzily so") << 3 << "100"
                                               << "110" << 10.0 * (1.0 - 5e-13) << 0 << false;
    QTest::newRow("three strikes, step too wide") << 3 << "100"
                                                  << "110" << 12.0 << 0 << false;
    QTest::newRow("no strikes") << 0 << "0"
                                << "0" << 0.0 << 0 << false;
    QTest::newRow("one strike") << 1 << "100"
                                << "100" << 0.0 << 0 << false;
    QTest::newRow("one strike of a range") << 1 << "100"
                                           << "110" << 5.0 << 0 << false;
    QTest::newRow("no decimals known") << 3 << "100"
                                       << "110" << 5.0 << -1 << false;
    QTest::newRow("lowest zero") << 3 << "0"
                                 << "110" << 5.0 << 0 << false;
    QTest::newRow("highest zero") << 3 << "-10"
                                  << "0" << 5.0 << 0 << false;
    QTest::newRow("lowest negative") << 3 << "-10"
                                     << "10" << 5.0 << 0 << true;
    QTest::newRow("inverted") << 3 << "110"
                              << "100" << 5.0 << 0 << false;
    QTest::newRow("no width") << 3 << "100"
                              << "100" << 5.0 << 0 << false;
    QTest::newRow("as good as no width") << 3 << "100000000"
                                         << "100000000.00003" << 1e-5 << 5 << false;
    QTest::newRow("two as good as equal") << 2 << "92233720368546"
                                          << "92233720368547" << 1.0 << 0 << false;
    QTest::newRow("step zero") << 3 << "100"
                               << "110" << 0.0 << 0 << false;
    QTest::newRow("step almost zero") << 3 << "100"
                                      << "110" << 1e-12 << 18 << false;
    QTest::newRow("step just negative") << 3 << "100"
                                        << "110" << -0.5 << 1 << false;
    QTest::newRow("step negative") << 3 << "100"
                                   << "110" << -5.0 << 0 << false;
    QTest::newRow("step NaN") << 3 << "100"
                              << "110" << notANumber << 0 << false;
    QTest::newRow("step rounds to zero") << 3 << "100"
                                         << "110" << 0.4 << 0 << false;
    QTest::newRow("step rounds to one") << 3 << "100"
                                        << "110" << 0.6 << 0 << true;
}

void tst_pricepoints::interval()
{
    QFETCH(int, count);
    QFETCH(QString, lowest);
    QFETCH(QString, highest);
    QFETCH(double, minStep);
    QFETCH(int, decimals);
    QFETCH(bool, valid);
    const PricePoints::StrikeRange strikes{
        count, TestHost::number(lowest), TestHost::number(highest), minStep};
    const PriceInterval result = PricePoints::interval(strikes, decimals);
    QCOMPARE(result.valid, valid);
    if (!valid) {
        QCOMPARE(result.minPrice, std::numeric_limits<double>::max());
        QCOMPARE(result.maxPrice, -std::numeric_limits<double>::max());
        QCOMPARE(result.minStep, 0.0);
    } else {
        QCOMPARE(result.minPrice, lowest.toDouble());
        QCOMPARE(result.maxPrice, highest.toDouble());
        QCOMPARE(result.minStep, std::round(minStep));
    }
}

void tst_pricepoints::intervalRoundsTheStep()
{
    const PriceInterval result = PricePoints::interval({3, number("1"), number("2"), 0.12345678}, 3);
    QVERIFY(result.valid);
    QVERIFY(result.minStep == 0.123);
    // As many as no instrument has, and more than the host's numbers of decimals reach.
    for (const int decimals : {100, 65536, std::numeric_limits<int>::max()}) {
        const PricePoints::StrikeRange strikes{3, number("1"), number("2"), 0.125};
        QCOMPARE(PricePoints::interval(strikes, decimals).minStep, 0.125);
    }
}

void tst_pricepoints::bracket_data()
{
    QTest::addColumn<QString>("strikes");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<QString>("expected");
    const QString tens = "100 110 120 130 140 150 160 170 180 190 200";
    QTest::newRow("inside") << tens << 131.0 << 149.0 << "130 150";
    QTest::newRow("bounds on strikes") << tens << 130.0 << 150.0 << "120 160";
    QTest::newRow("strike at the end of the view") << tens << 131.0 << 150.0 << "130 160";
    QTest::newRow("one strike, at the end of the view") << tens << 141.0 << 150.0 << "140 160";
    QTest::newRow("one strike, at its beginning") << tens << 130.0 << 135.0 << "120 140";
    QTest::newRow("the first strike alone") << tens << 100.0 << 105.0 << "100 110";
    QTest::newRow("between two neighbours") << tens << 141.0 << 149.0 << "100 200";
    QTest::newRow("all visible") << tens << 50.0 << 250.0 << "100 200";
    QTest::newRow("left end visible") << tens << 50.0 << 145.0 << "100 150";
    QTest::newRow("right end visible") << tens << 145.0 << 250.0 << "140 200";
    QTest::newRow("not visible") << tens << 10.0 << 50.0 << "100 200";
    QTest::newRow("not visible, right") << tens << 210.0 << 250.0 << "100 200";
    QTest::newRow("equal neighbours") << "100 110 110 120" << 105.0 << 115.0 << "100 120";
    QTest::newRow("negative ones set nothing") << "-10 10 20 30" << 5.0 << 15.0 << "-10 20";
    QTest::newRow("zero sets nothing") << "0 10 20 30" << 5.0 << 15.0 << "0 20";
    QTest::newRow("negative ones may be unsorted") << "-10 -20 10 20 30" << 15.0 << 25.0 << "10 30";
    QTest::newRow("next to zero nothing is set") << "0 10 20" << -5.0 << 5.0 << "0 20";
    QTest::newRow("across zero nothing is set") << "-10 10 20" << -20.0 << 5.0 << "-10 20";
    QTest::newRow("zero may be unsorted") << "10 0 20" << 12.0 << 15.0 << "10 20";
    QTest::newRow("a negative one may be unsorted") << "10 -5 20" << 12.0 << 15.0 << "10 20";
    QTest::newRow("zero after the end of the view") << "90 100 0 200" << 80.0 << 100.0 << "90 200";
    QTest::newRow("a negative one after it") << "90 100 -5 200" << 80.0 << 100.0 << "90 200";
    QTest::newRow("two") << "100 110" << 105.0 << 120.0 << "100 110";
}

void tst_pricepoints::bracket()
{
    QFETCH(QString, strikes);
    QFETCH(double, low);
    QFETCH(double, high);
    QFETCH(QString, expected);
    const auto result = PricePoints::bracket(strikesOf(strikes), View{low, high});
    QVERIFY(result);
    QCOMPARE(TestHost::text(result->first) + ' ' + TestHost::text(result->second), expected);
}

void tst_pricepoints::bracketOfNothing_data()
{
    QTest::addColumn<QString>("strikes");
    QTest::newRow("none") << "";
    QTest::newRow("one") << "100";
    QTest::newRow("equal") << "100 100";
    QTest::newRow("descending") << "120 110 100";
    QTest::newRow("descending after the view") << "100 110 120 200 190";
}

void tst_pricepoints::bracketOfNothing()
{
    QFETCH(QString, strikes);
    QVERIFY(!PricePoints::bracket(strikesOf(strikes), View{105.0, 115.0}));
}

void tst_pricepoints::densified_data()
{
    QTest::addColumn<double>("lo");
    QTest::addColumn<double>("hi");
    QTest::addColumn<int>("added"); // per cell
    QTest::newRow("two cells") << 130.0 << 150.0 << 50;
    QTest::newRow("one cell") << 130.0 << 140.0 << 100;
    QTest::newRow("three cells") << 130.0 << 160.0 << 34;
    QTest::newRow("ten cells") << 100.0 << 200.0 << 10;
    QTest::newRow("99 cells") << 100.0 << 1090.0 << 2;
    QTest::newRow("100 cells") << 100.0 << 1100.0 << 1;
    QTest::newRow("101 cells") << 100.0 << 1110.0 << 0;
    QTest::newRow("half a cell") << 130.0 << 135.0 << 100;
}

void tst_pricepoints::densified()
{
    QFETCH(double, lo);
    QFETCH(double, hi);
    QFETCH(int, added);
    const Points base = PricePoints::progression(100.0, 1200.0, 10.0);
    const Points points = PricePoints::densified(base, lo, hi, 10.0);
    int next = 0;
    for (const double point : base) {
        QCOMPARE(points.value(next++), point);
        const int inner = point >= lo && point < hi ? added : 0;
        for (int i = 1; i <= inner; ++i)
            QVERIFY(isAbout(points.value(next++), point + i * 10.0 / (added + 1)));
    }
    QCOMPARE(points.size(), next);
}

void tst_pricepoints::densifiedStepsOfOne()
{
    const Points points = PricePoints::densified({1.0, 2.0, 3.0, 4.0}, 2.0, 3.0, 1.0);
    QCOMPARE(points.size(), 4 + 100);
    QVERIFY(isAbout(points[2], 2.0 + 1.0 / 101.0));
}

void tst_pricepoints::densifiedLeavesTheRestAlone()
{
    const Points base{129.0, 130.0 * (1.0 - 5e-13), 140.0, 150.0 * (1.0 - 5e-13), 160.0};
    const Points points = PricePoints::densified(base, 130.0, 150.0, 10.0);
    QCOMPARE(points.size(), 5 + 2 * 50);
    QCOMPARE(points[0], 129.0);
    QCOMPARE(points[1], base[1]);
    QVERIFY2(points[2] > 130.0, "the one fuzzily on the lower end has points behind it");
    QCOMPARE(points.mid(103), Points({base[3], base[4]}));
}

void tst_pricepoints::densifiedByNothingSensible_data()
{
    QTest::addColumn<double>("lo");
    QTest::addColumn<double>("hi");
    QTest::addColumn<double>("minStep");
    QTest::newRow("inverted") << 150.0 << 130.0 << 10.0;
    QTest::newRow("no width") << 130.0 << 130.0 << 10.0;
    QTest::newRow("more than an int") << 100.0 << 1e20 << 1e-5;
    QTest::newRow("less than an int") << 1e20 << 100.0 << 1e-5;
    QTest::newRow("no step") << 100.0 << 110.0 << 0.0;
    QTest::newRow("NaN") << notANumber << 110.0 << 10.0;
}

void tst_pricepoints::densifiedByNothingSensible()
{
    QFETCH(double, lo);
    QFETCH(double, hi);
    QFETCH(double, minStep);
    const Points base{100.0, 110.0, 120.0, 130.0};
    QCOMPARE(PricePoints::densified(base, lo, hi, minStep), base);
}

void tst_pricepoints::randomDensified()
{
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> size(0.01, 1000.0);
    std::uniform_int_distribution<int> cells(1, 99);
    for (int i = 0; i < 300; ++i) {
        const double from = size(random);
        const double step = size(random);
        const int inside = cells(random);
        const Points base = PricePoints::progression(from, from + 100.5 * step, step);
        const Points points = PricePoints::densified(base, base[1], base[1 + inside], step);
        const QString where = QStringLiteral("seed %1 case %2: from %3 by %4, %5 cells")
                                  .arg(seed)
                                  .arg(i)
                                  .arg(from, 0, 'g', 17)
                                  .arg(step, 0, 'g', 17)
                                  .arg(inside);
        QVERIFY2(std::is_sorted(points.begin(), points.end()), qPrintable(where));
        QVERIFY2(std::adjacent_find(points.begin(), points.end()) == points.end(), qPrintable(where));
        const auto within = std::count_if(points.begin(), points.end(),
            [&](double point) { return point > base[1] * (1.0 + 1e-11) && point < base[1 + inside]; });
        // The quotient that counts the cells may round to one cell less.
        const int atMost = inside * (2 + 100 / std::max(1, inside - 1));
        QVERIFY2(within >= 99 && within < atMost, qPrintable(where));
        for (const double point : base)
            QVERIFY2(points.contains(point), qPrintable(where));
    }
}

PLOT2D_TEST_MAIN(tst_pricepoints)
#include "tst_pricepoints.moc"
