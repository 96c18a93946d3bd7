#include "differential/agree.h"
#include "differential/plaindivision.h"
#include "differential/plainlabels.h"
#include "differential/plainnumbers.h"
#include "differential/plainthinning.h"
#include "support/testmain.h"

#include <plot2d/fuzzyequality_p.h>
#include <plot2d/halfuprounding_p.h>
#include <plot2d/labelthinning_p.h>
#include <plot2d/plot2dcommon.h>
#include <plot2d/pricebased2dplotconverter.h>
#include <plot2d/scaledivision_p.h>
#include <plot2d/ticklabels_p.h>

#include <qwt_scale_engine.h>

#include <cmath>
#include <limits>

using Differential::Findings;
using Differential::Random;
using Differential::told;

namespace {

/// A line: the only conversion whose results are told without a second implementation of it.
class Line : public Conversion {
public:
    Line(double factor, double offset)
        : m_factor(factor)
        , m_offset(offset)
    {
    }
    double forward(double value) const override { return value * m_factor + m_offset; }
    double backward(double value) const override { return (value - m_offset) / m_factor; }

private:
    double m_factor;
    double m_offset;
};

QString twoNumbers(double a, double b)
{
    return told(a) + QStringLiteral(" and ") + told(b);
}

Plain::Ticks ticksOf(const QwtScaleDiv& division)
{
    return {division.ticks(QwtScaleDiv::MajorTick), division.ticks(QwtScaleDiv::MediumTick),
        division.ticks(QwtScaleDiv::MinorTick)};
}

void compareTicks(Findings& findings, const Plain::Ticks& plain, const QwtScaleDiv& library)
{
    const Plain::Ticks other = ticksOf(library);
    findings.compare("major ticks", plain.major, other.major);
    findings.compare("medium ticks", plain.medium, other.medium);
    findings.compare("minor ticks", plain.minor, other.minor);
}

ScaleDivision::Request libraryRequest(const Plain::ScaleRequest& request)
{
    return {request.lower, request.upper, request.majorSteps, request.minorSteps, request.step, 10};
}

QString inWords(const Plain::ScaleRequest& request)
{
    return QStringLiteral("%1 to %2, %3 and %4 steps of %5")
        .arg(told(request.lower), told(request.upper))
        .arg(request.majorSteps)
        .arg(request.minorSteps)
        .arg(told(request.step));
}

/// Numbers of steps up to the largest, each magnitude as often as another.
int randomSteps(Random& random)
{
    return random.oneIn(2) ? random.whole(-2, 12) : std::numeric_limits<int>::max() >> random.whole(0, 30);
}

/// Bounds that are close together, or so far apart that few steps are left between them and the limits.
Plain::ScaleRequest randomRequest(Random& random)
{
    Plain::ScaleRequest request;
    request.lower = random.rarelyBad(random.oneIn(2) ? random.nasty() : random.price(), 20);
    const double width = random.oneIn(2) ? random.price() : random.nasty();
    request.upper = random.rarelyBad(random.oneIn(4) ? width : request.lower + width, 20);
    request.majorSteps = randomSteps(random);
    request.minorSteps = randomSteps(random);
    if (random.oneIn(2))
        request.step = random.rarelyBad(
            random.oneIn(2) ? random.price() : width * std::pow(10.0, random.between(-11.0, 3.0)), 20);
    return request;
}

/// Labels side by side, of widths that make some of them meet, about their places on a screen.
QHash<double, QRect> randomRectangles(Random& random, const QList<double>& values)
{
    QHash<double, QRect> rectangles;
    const int distance = random.whole(1, 40);
    const int width = random.whole(0, 80);
    for (int i = 0; i < values.size(); ++i) {
        const int own = random.oneIn(3) ? random.whole(-2, 90) : width;
        const int top = random.oneIn(20) ? random.whole(-20, 20) : 0;
        rectangles.insert(values[i], QRect(i * distance - own / 2, top, own, 12));
    }
    return rectangles;
}

}

class tst_differential_labels : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void equality();
    void rounding();
    void texts();
    void convertedTexts();
    void divisibility();
    void divisions();
    void anchors();
    void candidates();
    void sharedDigits();
    void sharedDigitsOfTwo();
    void fractionLengths();
    void readTheSame();
    void thinning();
};

void tst_differential_labels::equality()
{
    AGREE("equality", 101, 1, ([](Random& random, Findings& findings) {
        const double a = random.rarelyBad(random.nasty(), 50);
        const double b = random.oneIn(3) ? random.nasty() : random.about(a);
        // Two infinities have no distance to compare.
        if (std::isinf(a) && std::isinf(b))
            return;
        findings.compare("1e-8", Plain::looselyEqual(a, b), Plot2dCommon::scaleDrawFuzzyCompare(a, b));
        findings.compare("1e-12", Plain::fuzzyEqual(a, b), isFuzzyEqual(a, b));
        findings.given([&] { return twoNumbers(a, b); });
    }));
}

void tst_differential_labels::rounding()
{
    AGREE("rounding", 102, 1, ([](Random& random, Findings& findings) {
        const double value = random.oneIn(60) ? random.notFinite() : random.nasty();
        const int decimals = random.whole(-13, 13);
        if (!std::isinf(value))
            findings.compare(
                "integer digits", Plain::integerDigits(value), Plot2dCommon::integerLength(value));
        findings.compare(
            "rounded", Plain::roundedAt(value, decimals), Plot2dCommon::roundValue(value, decimals));
        if (std::isfinite(value))
            findings.compare("whole", Plain::roundedHalfUp(value), HalfUpRounding::toWhole(value));
        findings.compare("integer part", Plain::looseIntegerPart(value), TickLabels::fuzzyIntegerPart(value));
        findings.given([&] { return twoNumbers(value, decimals); });
    }));
}

void tst_differential_labels::texts()
{
    AGREE("texts", 103, 1, ([](Random& random, Findings& findings) {
        const double value = random.rarelyBad(random.nasty(), 80);
        const int decimals = random.whole(-3, 14);
        findings.compare("short", Plain::shortText(value, decimals),
            Plot2dCommon::fromDoubleToSystemStringShort(value, decimals));
        findings.compare(
            "long", Plain::longText(value, decimals), Plot2dCommon::formattedValue(value, decimals));
        findings.given([&] { return twoNumbers(value, decimals); });
    }));
}

void tst_differential_labels::convertedTexts()
{
    AGREE("converted texts", 104, 1, ([](Random& random, Findings& findings) {
        Plain::LabelText plain;
        PriceBased2dPlotConverter converter;
        plain.converts = random.oneIn(2);
        if (random.oneIn(2)) {
            const double factor = random.rarelyBad(random.oneOf({1.0, -1.0, 0.01, 0.0, 1e300}), 30);
            const double offset = random.oneOf({0.0, -100.0, 0.5, -1e-13});
            plain.convert = [=](double value) { return value * factor + offset; };
            converter.setConvertionObject(new Line(factor, offset));
        }
        plain.unit = random.oneOf({QString(), QStringLiteral("%"), QStringLiteral(" %1 %2")});
        plain.plus = random.oneIn(2);
        plain.decimals = random.whole(-2, 13);
        converter.setConversionEnabled(plain.converts);
        converter.setConversionMethod(&Conversion::forward);
        converter.setMetricUnit(plain.unit);
        converter.setPlusSignShown(plain.plus);
        converter.setDecimals(plain.decimals);
        const double value = random.rarelyBad(random.nasty(), 30);
        findings.compare("text", plain.of(value), converter.convertedValue(value));
        findings.given([&] { return twoNumbers(value, plain.decimals) + told(plain.unit); });
    }));
}

void tst_differential_labels::divisibility()
{
    AGREE("divisibility", 113, 1, ([](Random& random, Findings& findings) {
        const Plain::ScaleRequest request = randomRequest(random);
        if (const std::optional<bool> plain = Plain::canBeDivided(request))
            findings.compare("divisible", *plain, ScaleDivision::isDivisible(libraryRequest(request)));
        else
            findings.leaveOut();
        findings.given([&] { return inWords(request); });
    }));
}

void tst_differential_labels::divisions()
{
    AGREE("divisions", 105, 2, ([](Random& random, Findings& findings) {
        double x1 = random.oneIn(8) ? random.nasty() : random.price();
        double x2 = random.oneIn(8) ? random.nasty() : x1 + std::abs(random.price());
        if (random.oneIn(12))
            std::swap(x1, x2);
        const Plain::ScaleRequest request{x1, x2, random.whole(0, 12), random.whole(0, 6),
            random.oneIn(3) ? std::abs(random.price()) : 0.0};
        const std::optional<bool> isDivisible = Plain::canBeDivided(request);
        if (!isDivisible)
            findings.leaveOut();
        if (!isDivisible.value_or(false))
            return;
        const QwtScaleDiv division = QwtLinearScaleEngine(10).divideScale(
            x1, x2, request.majorSteps, request.minorSteps, request.step);
        const QList<double> major = division.ticks(QwtScaleDiv::MajorTick);
        double price = random.oneIn(4) ? random.oneOf({x1, x2, 0.5 * x1 + 0.5 * x2}) : random.between(x1, x2);
        // On a tick, about one, and in the middle of two.
        if (!major.isEmpty() && random.oneIn(2)) {
            const int i = random.whole(0, major.size() - 1);
            price = random.about(random.oneIn(2) ? major[i] : 0.5 * (major[i] + major[qMax(i - 1, 0)]));
        }
        if (!std::isfinite(price))
            return;
        const Plain::Ticks plain = Plain::movedOnto(ticksOf(division), division.isEmpty(), price, x1, x2);
        compareTicks(findings, plain, ScaleDivision::anchored(division, price, x1, x2));
        findings.given([&] { return QStringLiteral("price %1, ").arg(told(price)) + inWords(request); });
    }));
}

void tst_differential_labels::anchors()
{
    AGREE("anchors", 106, 1, ([](Random& random, Findings& findings) {
        const int decimals = random.whole(1, 12);
        const double unit = std::pow(10.0, -decimals);
        const double near
            = random.whole(-5000, 5000) + unit * random.oneOf({0.0, 1.0, -1.0, 0.5, 0.999, 1.001});
        const double factor = random.oneIn(3) ? random.nasty() : random.about(near);
        if (std::abs(factor) > 2147483646.0)
            return;
        findings.compare(
            "price", Plain::anchor(factor, decimals), ScaleDivision::anchorPrice(factor, decimals));
        findings.given([&] { return twoNumbers(factor, decimals); });
    }));
}

void tst_differential_labels::candidates()
{
    AGREE("candidates", 107, 2, ([](Random& random, Findings& findings) {
        QList<double> major = random.ascending(random.whole(0, 8));
        QList<double> medium = random.ascending(random.whole(0, 8));
        for (const double tick : qAsConst(major)) {
            if (random.oneIn(2))
                medium.insert(random.whole(0, medium.size()), random.about(tick));
        }
        if (random.oneIn(20))
            major << random.notFinite();
        findings.compare(
            "ticks", Plain::labelCandidates(major, medium), TickLabels::candidates(major, medium));
        findings.given([&] { return told(major) + told(medium); });
    }));
}

void tst_differential_labels::sharedDigits()
{
    AGREE("shared digits", 108, 2, ([](Random& random, Findings& findings) {
        QList<double> ticks = random.ascending(random.whole(0, 7));
        if (random.oneIn(10) && !ticks.isEmpty())
            ticks.move(0, random.whole(0, ticks.size() - 1));
        findings.compare("digits", Plain::sharedDigits(ticks), TickLabels::equalDigits(ticks).value_or(-1));
        findings.given([&] { return told(ticks); });
    }));
}

void tst_differential_labels::sharedDigitsOfTwo()
{
    AGREE("shared digits of two", 109, 1, ([](Random& random, Findings& findings) {
        const double a = random.nasty();
        const double b
            = random.oneIn(3) ? random.nasty() : a + random.oneOf({1e-3, 1.0, 10.0, 1e-9, 1e-11, 0.05});
        findings.compare(
            "fraction", Plain::sharedFractionDigits(a, b), TickLabels::equalDigitsInFractionPart(a, b));
        const auto first = static_cast<long long>(random.bits() >> random.whole(0, 63));
        const long long second
            = random.oneIn(3) ? static_cast<long long>(random.bits() >> 20) : first + random.whole(-20, 2000);
        const int n
            = random.oneIn(2) ? random.whole(-1, 18) : Plain::integerDigits(static_cast<double>(first));
        findings.compare("integer", Plain::sharedIntegerDigits(first, second, n),
            TickLabels::equalDigitsInIntegerPart(first, second, n));
        findings.given([&] { return twoNumbers(a, b) + told(QList<qint64>{first, second, qint64(n)}); });
    }));
}

void tst_differential_labels::fractionLengths()
{
    AGREE("fraction lengths", 110, 1, ([](Random& random, Findings& findings) {
        const QList<double> ticks = random.ascending(random.whole(0, 6));
        const int own = Plain::sharedDigits(ticks);
        const int shared = random.oneIn(2) ? random.whole(-2, 18) : own;
        findings.compare(
            "length", Plain::fractionLength(ticks, shared), TickLabels::maxFractionLength(ticks, shared));
        findings.given([&] { return told(ticks) + told(shared); });
    }));
}

void tst_differential_labels::readTheSame()
{
    AGREE("reading the same", 111, 2, ([](Random& random, Findings& findings) {
        QList<double> ticks = random.ascending(random.whole(0, 6));
        if (random.oneIn(10))
            ticks = QList<double>{0.0, random.about(1e-8)};
        const int decimals = random.whole(0, 10);
        const bool hides = random.oneIn(4);
        const auto text = [=](double value) {
            return hides && value > 100.0 ? QString() : Plain::shortText(value, decimals);
        };
        findings.compare(
            "answer", Plain::labelsReadTheSame(ticks, text), TickLabels::readTheSame(ticks, text));
        findings.given([&] { return told(ticks) + told(decimals) + told(hides); });
    }));
}

void tst_differential_labels::thinning()
{
    AGREE("thinning", 112, 2, ([](Random& random, Findings& findings) {
        Plain::Labels plain;
        plain.ticks = random.ascending(random.whole(0, 14));
        if (!plain.ticks.isEmpty() && random.oneIn(2))
            plain.quote = random.about(plain.ticks[random.whole(0, plain.ticks.size() - 1)]);
        else
            plain.quote = random.price();
        plain.findPlace();
        plain.shown = random.oneIn(2);
        QList<double> all = plain.ticks;
        all.insert(qMax(plain.place, 0), plain.quote);
        const QHash<double, QRect> rectangles = randomRectangles(random, all);
        const auto measure = [&](double value) { return rectangles.value(value); };

        const LabelThinning::QuoteLabel quote{plain.quote, plain.place, plain.shown};
        const QList<double> candidates = plain.ticks;
        findings.compare(
            "place of the quote", plain.place, LabelThinning::quoteIndex(candidates, plain.quote));
        QList<QRect> ordered;
        for (const double tick : candidates)
            ordered << measure(tick);
        findings.compare("overlaps", plain.meeting(measure),
            LabelThinning::overlaps(candidates, ordered, quote, measure(plain.quote)));
        const LabelThinning::Result library = LabelThinning::thinned(candidates, quote, measure);
        Plain::thin(plain, measure);
        findings.compare("ticks left", plain.ticks, library.ticks);
        findings.compare("place left", plain.place, library.quoteIndex);
        findings.given([&] {
            return QStringLiteral("%1, quote %2 (shown: %3), rectangles %4")
                .arg(told(candidates), told(quote.value), told(quote.drawn), told(ordered));
        });
    }));
}

PLOT2D_TEST_MAIN(tst_differential_labels)
#include "tst_differential_labels.moc"
