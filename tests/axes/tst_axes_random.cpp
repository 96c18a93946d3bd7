#include "axes/axisrandom.h"
#include "axes/slowaxes.h"
#include "plot2d/labelthinning_p.h"
#include "plot2d/scaledivision_p.h"
#include "plot2d/ticklabels_p.h"
#include "support/testmain.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::uint64_t seed = 20240607;

QByteArray caseText(int number, const QList<double>& ticks)
{
    return "case " + QByteArray::number(number) + ": " + inFull(ticks);
}

/// Ends the test at the first case that differs, and says which it was.
#define VERIFY_CASE(condition, index, ticks)                                                                 \
    do {                                                                                                     \
        if (!(condition))                                                                                    \
            QFAIL(caseText(index, ticks).constData());                                                       \
    } while (false)

bool sameTicks(const QList<double>& a, const QList<double>& b)
{
    return a == b;
}

/// Rectangles of labels on an axis of a random resolution; now and then one that is not valid, or higher.
class RandomRectangles {
public:
    explicit RandomRectangles(AxisRandom& random)
        : m_pixels(random.uniform(0.01, 30.0))
        , m_width(random.integer(0, 60))
        , m_vertical(random.chance(4))
        , m_odd(random.chance(5) ? random.integer(2, 5) : 0)
    {
    }

    QRect operator()(double value) const
    {
        const double place = std::clamp(value * m_pixels, -1e8, 1e8);
        const int center = static_cast<int>(std::lround(place));
        const int kind = m_odd == 0 ? 1 : std::abs(center) % m_odd;
        if (kind == 0)
            return QRect(center, 0, -3, 10);
        const int width = m_width + (kind == 2 ? 15 : 0);
        return m_vertical ? QRect(0, center - width / 2, 10, width) : QRect(center - width / 2, 0, width, 10);
    }

private:
    double m_pixels;
    int m_width;
    bool m_vertical;
    int m_odd;
};

}

class tst_axes_random : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void candidates();
    void integerParts();
    void equalDigits();
    void digitFunctions();
    void fractionLengths();
    void overlaps();
    void thinning();
    void shrinking();
    void anchoring();
};

void tst_axes_random::candidates()
{
    AxisRandom random(seed);
    for (int i = 0; i < 40000; ++i) {
        const QList<double> major = random.ticks(8);
        QList<double> medium = random.ticks(8);
        for (const double tick : major) {
            if (random.chance(3))
                medium.append(tick * (1.0 + random.integer(-3, 3) * 5e-13));
        }
        VERIFY_CASE(sameTicks(TickLabels::candidates(major, medium), SlowAxes::candidates(major, medium)), i,
            major + medium);
    }
}

void tst_axes_random::integerParts()
{
    AxisRandom random(seed + 1);
    for (int i = 0; i < 300000; ++i) {
        const double value = random.value();
        VERIFY_CASE(TickLabels::fuzzyIntegerPart(value) == SlowAxes::integerPart(value), i, {value});
    }
}

void tst_axes_random::equalDigits()
{
    AxisRandom random(seed + 2);
    int known = 0;
    for (int i = 0; i < 100000; ++i) {
        const QList<double> ticks = random.ticks(10);
        const int expected = SlowAxes::equalDigits(ticks);
        known += expected > 0;
        VERIFY_CASE(TickLabels::equalDigits(ticks).value_or(SlowAxes::unknown) == expected, i, ticks);
    }
    QVERIFY(known > 20000);
}

void tst_axes_random::digitFunctions()
{
    AxisRandom random(seed + 3);
    for (int i = 0; i < 200000; ++i) {
        const double a = random.value();
        const double b = random.chance(2) ? random.value() : a + std::pow(10.0, random.integer(-12, 3));
        VERIFY_CASE(TickLabels::equalDigitsInFractionPart(a, b) == SlowAxes::equalFractionDigits(a, b), i,
            (QList<double>{a, b}));
        if (!(std::abs(a) < 1e18 && std::abs(b) < 1e18))
            continue;
        const auto wholeA = static_cast<long long>(a);
        const auto wholeB = static_cast<long long>(b);
        const int n = random.integer(-1, 18);
        VERIFY_CASE(TickLabels::equalDigitsInIntegerPart(wholeA, wholeB, n)
                == SlowAxes::equalIntegerDigits(wholeA, wholeB, n),
            i, (QList<double>{a, b}));
    }
}

void tst_axes_random::fractionLengths()
{
    AxisRandom random(seed + 4);
    int found = 0;
    for (int i = 0; i < 100000; ++i) {
        const QList<double> ticks = random.ticks(6);
        const int digits = random.chance(2) ? SlowAxes::equalDigits(ticks) : random.integer(-2, 16);
        const int expected = SlowAxes::maxFractionLength(ticks, digits);
        found += expected > 0;
        VERIFY_CASE(TickLabels::maxFractionLength(ticks, digits) == expected, i, ticks);
    }
    QVERIFY(found > 10000);
}

void tst_axes_random::overlaps()
{
    AxisRandom random(seed + 5);
    for (int i = 0; i < 50000; ++i) {
        const QList<double> ticks = random.ticks(12);
        const RandomRectangles rectangle(random);
        SlowAxes::Quote quote;
        quote.value = ticks.isEmpty() || random.chance(2)
            ? random.value()
            : ticks[random.integer(0, static_cast<int>(ticks.size()) - 1)];
        quote.index = random.chance(3) ? random.integer(-1, 14) : SlowAxes::quoteIndex(ticks, quote.value);
        QList<QRect> rectangles;
        for (const double tick : ticks)
            rectangles.append(rectangle(tick));
        VERIFY_CASE(LabelThinning::overlaps(
                        ticks, rectangles, {quote.value, quote.index, false}, rectangle(quote.value))
                == SlowAxes::overlaps(ticks, quote, rectangle),
            i, ticks);
    }
}

void tst_axes_random::thinning()
{
    AxisRandom random(seed + 6);
    int thinned = 0;
    int gone = 0;
    for (int i = 0; i < 150000; ++i) {
        QList<double> ticks = random.ticks(random.chance(20) ? 120 : 16);
        std::sort(ticks.begin(), ticks.end());
        const RandomRectangles rectangle(random);
        SlowAxes::Quote quote;
        if (!ticks.isEmpty() && !random.chance(4))
            quote.value = ticks[random.integer(0, static_cast<int>(ticks.size()) - 1)]
                + (random.chance(2) ? 0.0 : random.uniform(-1.0, 1.0));
        quote.enabled = quote.value > 0.0 && random.chance(2);
        quote.inside = quote.enabled && !random.chance(5);

        const SlowAxes::Labels expected = SlowAxes::labels(ticks, quote, true, rectangle);
        const LabelThinning::Result result = LabelThinning::thinned(ticks,
            {quote.value, LabelThinning::quoteIndex(ticks, quote.value), quote.enabled && quote.inside},
            rectangle);
        thinned += result.ticks.size() < ticks.size();
        gone += result.ticks.isEmpty() && !ticks.isEmpty();
        VERIFY_CASE(sameTicks(result.ticks, expected.ticks), i, ticks);
        VERIFY_CASE(result.quoteIndex == expected.quoteIndex, i, ticks);
    }
    QVERIFY(thinned > 50000);
    QVERIFY(gone > 1000);
}

void tst_axes_random::shrinking()
{
    AxisRandom random(seed + 7);
    int shrunk = 0;
    for (int i = 0; i < 100000; ++i) {
        const QList<double> ticks = random.ticks(8);
        const int decimals = random.integer(0, 6);
        const int skipped = random.integer(1, 6);
        const auto text = [&](double value) {
            const auto at = ticks.indexOf(value);
            return at % 6 == skipped ? QString() : QString::number(value, 'f', decimals).left(12);
        };
        const bool expected = SlowAxes::ticksShrinked(ticks, text);
        shrunk += expected;
        VERIFY_CASE(TickLabels::readTheSame(ticks, text) == expected, i, ticks);
    }
    QVERIFY(shrunk > 5000 && shrunk < 95000);
}

void tst_axes_random::anchoring()
{
    AxisRandom random(seed + 8);
    int moved = 0;
    for (int i = 0; i < 200000; ++i) {
        SlowAxes::Ticks ticks;
        for (QList<double>& list : ticks.lists)
            list = random.ticks(8);
        double factor = random.value();
        if (!ticks.lists[2].isEmpty() && !random.chance(3))
            factor = ticks.lists[2].first() + random.uniform(-1.0, 30.0);
        if (random.chance(3))
            factor = std::floor(factor) + random.integer(-12, 12) * 1e-3;
        const int precision = random.integer(1, 6);
        const double x1 = random.chance(4) ? factor : factor - random.uniform(-1.0, 100.0);
        const double x2 = random.chance(4) ? factor : factor + random.uniform(-1.0, 100.0);
        if (factor == 0.0)
            continue;

        const SlowAxes::Ticks expected = SlowAxes::anchored(ticks, factor, precision, x1, x2);
        const QwtScaleDiv result
            = ScaleDivision::anchored(QwtScaleDiv(x1, x2, ticks.lists[0], ticks.lists[1], ticks.lists[2]),
                ScaleDivision::anchorPrice(factor, precision), x1, x2);
        moved += !sameTicks(expected.lists[2], ticks.lists[2]);
        for (int type = 0; type < 3; ++type)
            VERIFY_CASE(sameTicks(result.ticks(type), expected.lists[type]), i, ticks.lists[2]);
    }
    QVERIFY(moved > 20000);
}

PLOT2D_TEST_MAIN(tst_axes_random)

#include "tst_axes_random.moc"
