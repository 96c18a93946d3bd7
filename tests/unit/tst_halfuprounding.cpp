#include "plot2d/halfuprounding_p.h"
#include "support/numbersamples.h"
#include "support/slownumbers.h"
#include "support/testmain.h"

#include <cmath>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double twoTo52 = 4503599627370496.0;
constexpr double twoTo63 = 9223372036854775808.0;

}

class tst_HalfUpRounding : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void toWhole_data();
    void toWhole();
    void toWholeKeepsWhatIsNotFinite();
    void toWholeNeverGivesNegativeZero();
    void toWholeIsExactBelowTheLastBits();
    void toInt_data();
    void toInt();
    void toLongLong_data();
    void toLongLong();
};

void tst_HalfUpRounding::toWhole_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("expected");

    QTest::newRow("0") << 0.0 << 0.0;
    QTest::newRow("2.4") << 2.4 << 2.0;
    QTest::newRow("2.5") << 2.5 << 3.0;
    QTest::newRow("2.6") << 2.6 << 3.0;
    QTest::newRow("3.5") << 3.5 << 4.0;
    QTest::newRow("0.5") << 0.5 << 1.0;
    QTest::newRow("0.3") << 0.3 << 0.0;
    QTest::newRow("-0.3") << -0.3 << 0.0;
    QTest::newRow("-0.5") << -0.5 << 0.0;
    QTest::newRow("-0.7") << -0.7 << -1.0;
    QTest::newRow("-1") << -1.0 << -1.0;
    QTest::newRow("-1.5") << -1.5 << -1.0;
    QTest::newRow("-2.4") << -2.4 << -2.0;
    QTest::newRow("-2.5") << -2.5 << -2.0;
    QTest::newRow("-2.6") << -2.6 << -3.0;
    QTest::newRow("smallest") << std::numeric_limits<double>::denorm_min() << 0.0;
    QTest::newRow("smallest negative") << -std::numeric_limits<double>::denorm_min() << 0.0;

    QTest::newRow("below a half, a sum of 1") << std::nextafter(0.5, 0.0) << 1.0;
    QTest::newRow("above minus a half") << std::nextafter(-0.5, 0.0) << 0.0;
    QTest::newRow("below minus a half") << std::nextafter(-0.5, -1.0) << -1.0;
    QTest::newRow("below minus one and a half") << std::nextafter(-1.5, -2.0) << -2.0;

    QTest::newRow("2^52") << twoTo52 << twoTo52;
    QTest::newRow("odd above 2^52") << twoTo52 + 1.0 << twoTo52 + 2.0;
    QTest::newRow("odd below -2^52") << -twoTo52 - 1.0 << -twoTo52 - 1.0;
    QTest::newRow("half below 2^52") << twoTo52 - 0.5 << twoTo52;
    QTest::newRow("half above -2^52") << 0.5 - twoTo52 << 1.0 - twoTo52;
    QTest::newRow("-2^53 - 2") << -2.0 * twoTo52 - 2.0 << -2.0 * twoTo52 - 2.0;
    QTest::newRow("1e300") << 1e300 << 1e300;
    QTest::newRow("-1e300") << -1e300 << -1e300;
    QTest::newRow("largest") << std::numeric_limits<double>::max() << std::numeric_limits<double>::max();
    QTest::newRow("lowest") << std::numeric_limits<double>::lowest() << std::numeric_limits<double>::lowest();
}

void tst_HalfUpRounding::toWhole()
{
    QFETCH(double, value);
    QFETCH(double, expected);
    const double result = HalfUpRounding::toWhole(value);
    QVERIFY2(result == expected, inFull(result));
}

void tst_HalfUpRounding::toWholeKeepsWhatIsNotFinite()
{
    QVERIFY(HalfUpRounding::toWhole(infinity) == infinity);
    QVERIFY(HalfUpRounding::toWhole(-infinity) == -infinity);
    QVERIFY(std::isnan(HalfUpRounding::toWhole(std::numeric_limits<double>::quiet_NaN())));
}

void tst_HalfUpRounding::toWholeNeverGivesNegativeZero()
{
    for (const double value : {-0.0, -0.2, -0.5})
        QVERIFY2(!std::signbit(HalfUpRounding::toWhole(value)), inFull(value));
}

void tst_HalfUpRounding::toWholeIsExactBelowTheLastBits()
{
    constexpr std::uint64_t seed = 401;
    NumberSamples samples(seed);
    for (int i = 0; i < 200000; ++i) {
        const double value = std::ldexp(std::floor(samples.uniform(-1e12, 1e12)), -samples.integer(0, 8));
        const double result = HalfUpRounding::toWhole(value);
        if (result != SlowNumbers::exactlyRoundedHalfUp(value))
            QFAIL(QByteArray("seed 401: ") + inFull(value) + " became " + inFull(result));
    }
}

void tst_HalfUpRounding::toInt_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("fits");
    QTest::addColumn<int>("expected");

    QTest::newRow("2.5") << 2.5 << true << 3;
    QTest::newRow("-2.5") << -2.5 << true << -2;
    QTest::newRow("-0.0") << -0.0 << true << 0;
    QTest::newRow("largest") << 2147483647.0 << true << 2147483647;
    QTest::newRow("rounded down to the largest") << 2147483647.25 << true << 2147483647;
    QTest::newRow("rounded up from the largest") << 2147483647.5 << false << 0;
    QTest::newRow("above the largest") << 2147483648.0 << false << 0;
    QTest::newRow("lowest") << -2147483648.0 << true << std::numeric_limits<int>::min();
    QTest::newRow("rounded up to the lowest") << -2147483648.5 << true << std::numeric_limits<int>::min();
    QTest::newRow("rounded down from the lowest") << -2147483648.75 << false << 0;
    QTest::newRow("far above") << 1e300 << false << 0;
    QTest::newRow("far below") << -1e300 << false << 0;
    QTest::newRow("infinity") << infinity << false << 0;
    QTest::newRow("negative infinity") << -infinity << false << 0;
    QTest::newRow("NaN") << std::numeric_limits<double>::quiet_NaN() << false << 0;
}

void tst_HalfUpRounding::toInt()
{
    QFETCH(double, value);
    QFETCH(bool, fits);
    QFETCH(int, expected);
    const std::optional<int> result = HalfUpRounding::toInteger<int>(value);
    QCOMPARE(result.has_value(), fits);
    QCOMPARE(result.value_or(0), expected);
}

void tst_HalfUpRounding::toLongLong_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("fits");
    QTest::addColumn<qint64>("expected");

    QTest::newRow("-2.6") << -2.6 << true << qint64{-3};
    QTest::newRow("largest double below 2^63")
        << twoTo63 - 1024.0 << true << std::numeric_limits<qint64>::max() - 1023;
    QTest::newRow("2^63") << twoTo63 << false << qint64{0};
    QTest::newRow("-2^63") << -twoTo63 << true << std::numeric_limits<qint64>::min();
    QTest::newRow("below -2^63") << -twoTo63 - 2048.0 << false << qint64{0};
    QTest::newRow("infinity") << infinity << false << qint64{0};
    QTest::newRow("NaN") << std::numeric_limits<double>::quiet_NaN() << false << qint64{0};
}

void tst_HalfUpRounding::toLongLong()
{
    QFETCH(double, value);
    QFETCH(bool, fits);
    QFETCH(qint64, expected);
    const std::optional<qint64> result = HalfUpRounding::toInteger<qint64>(value);
    QCOMPARE(result.has_value(), fits);
    QCOMPARE(result.value_or(0), expected);
}

PLOT2D_TEST_MAIN(tst_HalfUpRounding)

#include "tst_halfuprounding.moc"
