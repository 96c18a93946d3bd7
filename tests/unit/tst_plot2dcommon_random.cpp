#include "plot2d/plot2dcommon.h"
#include "support/numbersamples.h"
#include "support/slownumbers.h"
#include "support/testmain.h"

#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

constexpr int caseCount = 200000;

QByteArray failedCase(std::uint64_t seed, int number, const NumberCase& numberCase)
{
    return "seed " + QByteArray::number(static_cast<qulonglong>(seed)) + ", case "
        + QByteArray::number(number) + ": " + inFull(numberCase.value) + " to "
        + QByteArray::number(numberCase.decimals) + " decimals";
}

QByteArray failedPair(std::uint64_t seed, int number, double a, double b)
{
    return "seed " + QByteArray::number(static_cast<qulonglong>(seed)) + ", case "
        + QByteArray::number(number) + ": " + inFull(a) + " and " + inFull(b);
}

/// Beside a power of ten the repeated division by ten may reach ten a step too early or too late.
bool isCloseToPowerOfTen(const std::string& digits)
{
    constexpr std::size_t compared = 14;
    if (digits.size() < compared)
        return false;
    const std::string head = digits.substr(0, compared);
    return head == std::string(compared, '9') || head == "1" + std::string(compared - 1, '0');
}

/// Two values whose distance is about the tolerance of scaleDrawFuzzyCompare().
std::pair<double, double> closePair(NumberSamples& samples)
{
    const double a
        = samples.withRandomSign(std::ldexp(samples.uniform(0.5, 1.0), samples.integer(-900, 900)));
    switch (samples.integer(0, 4)) {
    case 0:
        return {a, samples.neighbour(a * (1.0 + samples.withRandomSign(1e-8)))};
    case 1:
        return {a, a * (1.0 + samples.uniform(-3e-8, 3e-8))};
    case 2:
        return {a, samples.neighbour(a)};
    case 3:
        return {a, samples.withRandomSign(a * samples.uniform(0.4, 2.5))};
    default: {
        const double step = std::ldexp(1.0, samples.integer(-900, 900));
        return {1e8 * step, samples.neighbour((1e8 + samples.integer(-1, 1)) * step)};
    }
    }
}

}

class tst_Plot2dCommonRandom : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void slowDigits_data();
    void slowDigits();
    void slowDigitsReadBack();
    void formattedValue();
    void integerLength();
    void integerLengthCountsDigits();
    void roundValue();
    void roundValueOfNoDecimalsIsExact();
    void roundValueStaysWithinHalfAStep();
    void scaleDrawFuzzyCompare();
    void scaleDrawFuzzyCompareOfAnyBits();
    void scaleDrawFuzzyCompareIsSymmetricAndScalable();
};

void tst_Plot2dCommonRandom::slowDigits_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("0") << 0.0 << QStringLiteral("0.");
    QTest::newRow("2^-4") << 0.0625 << QStringLiteral("0.0625");
    QTest::newRow("-1.5") << -1.5 << QStringLiteral("-1.5");
    QTest::newRow("1e22") << 1e22 << QStringLiteral("10000000000000000000000.");
    QTest::newRow("0.1") << 0.1
                         << QStringLiteral("0.1000000000000000055511151231257827021181583404541015625");
}

void tst_Plot2dCommonRandom::slowDigits()
{
    QFETCH(double, value);
    const SlowNumbers::ExactDecimal exact = SlowNumbers::exactDecimal(value);
    QTEST(
        QString::fromStdString((exact.negative ? "-" : "") + exact.whole + '.' + exact.fraction), "expected");
}

void tst_Plot2dCommonRandom::slowDigitsReadBack()
{
    constexpr std::uint64_t seed = 301;
    NumberSamples samples(seed);
    for (int i = 0; i < 20000; ++i) {
        const NumberCase c = samples.next();
        const SlowNumbers::ExactDecimal exact = SlowNumbers::exactDecimal(c.value);
        const double magnitude = std::strtod((exact.whole + '.' + exact.fraction).c_str(), nullptr);
        if ((exact.negative ? -magnitude : magnitude) != c.value)
            QFAIL(failedCase(seed, i, c));
    }
}

void tst_Plot2dCommonRandom::formattedValue()
{
    constexpr std::uint64_t seed = 302;
    NumberSamples samples(seed);
    for (int i = 0; i < caseCount; ++i) {
        const NumberCase c = samples.next();
        const QString text = Plot2dCommon::formattedValue(c.value, c.decimals);
        const QString expected = SlowNumbers::formattedValue(c.value, c.decimals);
        if (text != expected)
            QFAIL(failedCase(seed, i, c) + ": " + text.toUtf8() + " instead of " + expected.toUtf8());
    }
}

void tst_Plot2dCommonRandom::integerLength()
{
    constexpr std::uint64_t seed = 303;
    NumberSamples samples(seed);
    for (int i = 0; i < caseCount; ++i) {
        const NumberCase c = samples.next();
        if (Plot2dCommon::integerLength(c.value) != SlowNumbers::integerLength(c.value))
            QFAIL(failedCase(seed, i, c));
    }
}

void tst_Plot2dCommonRandom::integerLengthCountsDigits()
{
    constexpr std::uint64_t seed = 304;
    NumberSamples samples(seed);
    int counted = 0;
    for (int i = 0; counted < caseCount; ++i) {
        const NumberCase c = samples.next();
        const std::string digits = SlowNumbers::exactDecimal(c.value).whole;
        if (isCloseToPowerOfTen(digits))
            continue;
        ++counted;
        if (Plot2dCommon::integerLength(c.value) != static_cast<int>(digits.size()))
            QFAIL(failedCase(seed, i, c));
    }
}

void tst_Plot2dCommonRandom::roundValue()
{
    constexpr std::uint64_t seed = 305;
    NumberSamples samples(seed);
    for (int i = 0; i < caseCount; ++i) {
        const NumberCase c = samples.next();
        const double result = Plot2dCommon::roundValue(c.value, c.decimals);
        const double expected = SlowNumbers::roundedHalfUp(c.value, c.decimals);
        if (result != expected)
            QFAIL(failedCase(seed, i, c) + ": " + inFull(result) + " instead of " + inFull(expected));
    }
}

void tst_Plot2dCommonRandom::roundValueOfNoDecimalsIsExact()
{
    constexpr std::uint64_t seed = 306;
    NumberSamples samples(seed);
    for (int i = 0; i < caseCount; ++i) {
        const double value = std::ldexp(std::floor(samples.uniform(-1e12, 1e12)), -samples.integer(0, 8));
        if (Plot2dCommon::roundValue(value, 0) != SlowNumbers::exactlyRoundedHalfUp(value))
            QFAIL(failedCase(seed, i, {value, 0}));
    }
}

void tst_Plot2dCommonRandom::roundValueStaysWithinHalfAStep()
{
    constexpr std::uint64_t seed = 307;
    NumberSamples samples(seed);
    for (int i = 0; i < caseCount; ++i) {
        const NumberCase c = {samples.uniform(-1e5, 1e5), samples.integer(-4, 8)};
        const double halfStep = std::pow(10.0, -c.decimals) / 2.0;
        const double distance = std::abs(Plot2dCommon::roundValue(c.value, c.decimals) - c.value);
        // Beside the half step, the rounding errors of values up to 1e5.
        if (!(distance <= halfStep + 1e-10))
            QFAIL(failedCase(seed, i, c));
    }
}

void tst_Plot2dCommonRandom::scaleDrawFuzzyCompare()
{
    constexpr std::uint64_t seed = 308;
    NumberSamples samples(seed);
    int equalCount = 0;
    for (int i = 0; i < caseCount; ++i) {
        const auto [a, b] = closePair(samples);
        const bool expected = SlowNumbers::scaleDrawEqual(a, b);
        equalCount += expected ? 1 : 0;
        if (Plot2dCommon::scaleDrawFuzzyCompare(a, b) != expected)
            QFAIL(failedPair(seed, i, a, b));
    }
    // Both answers have to come up often for the comparison to mean something.
    QVERIFY(equalCount > caseCount / 5 && equalCount < caseCount * 4 / 5);
}

void tst_Plot2dCommonRandom::scaleDrawFuzzyCompareOfAnyBits()
{
    constexpr std::uint64_t seed = 309;
    NumberSamples samples(seed);
    for (int i = 0; i < caseCount; ++i) {
        const double a = samples.next().value;
        const double b = i % 2 == 0 ? samples.next().value : samples.neighbour(a);
        if (Plot2dCommon::scaleDrawFuzzyCompare(a, b) != SlowNumbers::scaleDrawEqual(a, b))
            QFAIL(failedPair(seed, i, a, b));
        if (!Plot2dCommon::scaleDrawFuzzyCompare(a, a))
            QFAIL(failedPair(seed, i, a, a));
        if (Plot2dCommon::scaleDrawFuzzyCompare(a, std::numeric_limits<double>::quiet_NaN()))
            QFAIL(failedPair(seed, i, a, std::numeric_limits<double>::quiet_NaN()));
        if (Plot2dCommon::scaleDrawFuzzyCompare(a, 0.0) != (a == 0.0))
            QFAIL(failedPair(seed, i, a, 0.0));
    }
}

void tst_Plot2dCommonRandom::scaleDrawFuzzyCompareIsSymmetricAndScalable()
{
    constexpr std::uint64_t seed = 310;
    NumberSamples samples(seed);
    for (int i = 0; i < caseCount; ++i) {
        const auto [a, b] = closePair(samples);
        // No power of two in this range takes the values or their difference out of the normal doubles.
        const double scale = std::ldexp(1.0, samples.integer(-60, 60));
        const bool isEqual = Plot2dCommon::scaleDrawFuzzyCompare(a, b);
        if (Plot2dCommon::scaleDrawFuzzyCompare(b, a) != isEqual
            || Plot2dCommon::scaleDrawFuzzyCompare(-a, -b) != isEqual
            || Plot2dCommon::scaleDrawFuzzyCompare(a * scale, b * scale) != isEqual)
            QFAIL(failedPair(seed, i, a, b));
    }
}

PLOT2D_TEST_MAIN(tst_Plot2dCommonRandom)

#include "tst_plot2dcommon_random.moc"
