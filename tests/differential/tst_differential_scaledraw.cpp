#include "differential/agree.h"
#include "differential/plaindivision.h"
#include "differential/plainlabels.h"
#include "differential/plainnumbers.h"
#include "differential/plainthinning.h"
#include "support/qtversions.h"
#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotscaledraw.h>
#include <plot2d/pricebased2dplotscaleengine.h>

#include <qwt_scale_engine.h>

#include <algorithm>
#include <cmath>

using Differential::Findings;
using Differential::Random;
using Differential::told;

namespace {

constexpr int bottomAxis = 2;

/// What an axis of a case is like.
struct AxisCase {
    int axis = bottomAxis;
    QwtScaleDiv division;
    int pixels = 500;
    double quote = -1.0;
    bool quoteEnabled = false;
    bool isPainted = true;
    bool converts = false;
    int decimals = 10;
    QString unit;

    bool isQuoteInside() const
    {
        return quoteEnabled && division.lowerBound() < quote && quote < division.upperBound();
    }
    QString inWords() const
    {
        return QStringLiteral("axis %1, %2 to %3, ticks %4 %5, %6 pixels, quote %7 %8, painted %9, ")
                   .arg(axis)
                   .arg(told(division.lowerBound()), told(division.upperBound()),
                       told(division.ticks(QwtScaleDiv::MajorTick)),
                       told(division.ticks(QwtScaleDiv::MediumTick)))
                   .arg(pixels)
                   .arg(told(quote), told(quoteEnabled), told(isPainted))
            + QStringLiteral("converts %1, decimals %2, unit %3").arg(converts).arg(decimals).arg(unit);
    }
};

/// A conversion that shows what it is given.
class Identity : public Conversion {
public:
    double forward(double value) const override { return value; }
    double backward(double value) const override { return value; }
};

AxisCase randomAxis(Random& random)
{
    AxisCase axis;
    axis.axis = random.oneIn(4) ? 0 : bottomAxis;
    const double low = random.oneIn(5) ? -random.price() : random.price();
    const double width = random.oneOf({1e-7, 0.01, 0.3, 2.0, 7.0, 60.0, 900.0, 33333.0});
    axis.division = QwtLinearScaleEngine(10).divideScale(
        low, low + width, random.oneOf({0, 4, 8, 20, 40}), random.oneOf({0, 5, 10}), 0.0);
    if (random.oneIn(15))
        axis.division.invert();
    axis.pixels = random.oneOf({30, 120, 250, 500, 900, 2000});
    axis.quote = random.oneIn(4) ? -1.0 : random.between(low - 0.1 * width, low + 1.1 * width);
    const QList<double> ticks = axis.division.ticks(QwtScaleDiv::MajorTick);
    if (!ticks.isEmpty() && random.oneIn(3))
        axis.quote = random.about(ticks[random.whole(0, ticks.size() - 1)]);
    axis.quoteEnabled = random.oneIn(2);
    axis.isPainted = !random.oneIn(6);
    axis.converts = random.oneIn(3);
    axis.decimals = random.oneIn(3) ? random.whole(0, 4) : 10;
    axis.unit = random.oneOf({QString(), QStringLiteral("%")});
    return axis;
}

void setUp(PriceBased2dPlotScaleDraw& draw, const AxisCase& axis)
{
    draw.setAlignment(axis.axis == bottomAxis ? QwtScaleDraw::BottomScale : QwtScaleDraw::LeftScale);
    draw.move(10.0, 20.0);
    draw.setLength(axis.pixels);
    draw.setScaleDiv(axis.division);
    draw.setDecimals(axis.decimals);
    draw.setMetricUnit(axis.unit);
    draw.setConversionEnabled(axis.converts);
    draw.setConversionMethod(&Conversion::forward);
    draw.setConvertionObject(new Identity);
    draw.setCurKotirEnabled(axis.quoteEnabled);
    draw.setCurKotirValue(axis.quote);
    if (axis.isPainted)
        draw.setPaintedOnce();
}

bool isUsable(const QwtScaleDiv& division)
{
    return division.lowerBound() < division.upperBound();
}

QList<double> candidatesOf(const QwtScaleDiv& division)
{
    if (!isUsable(division))
        return {};
    return Plain::labelCandidates(
        division.ticks(QwtScaleDiv::MajorTick), division.ticks(QwtScaleDiv::MediumTick));
}

/// A label's rectangle with half of the margin on each side.
QRect rectangleOf(const PriceBased2dPlotScaleDraw& draw, double value, int margin)
{
    if (value > 1e16 || value < -1e16)
        return QRect();
    const QRect bare = draw.boundingLabelRect(QApplication::font(), value);
    if (!bare.isValid())
        return bare;
    const int half = margin / 2;
    return QRect(bare.left() - half, bare.top() - half, bare.width() + 2 * half, bare.height() + 2 * half);
}

/// The labels that an axis keeps, the equal digits of them and its margin.
struct KeptLabels {
    Plain::Labels labels;
    int shared = -1;
    int margin = 8;
};

KeptLabels keptLabels(const PriceBased2dPlotScaleDraw& draw, const AxisCase& axis)
{
    KeptLabels kept;
    Plain::Labels& labels = kept.labels;
    labels.quote = axis.quote;
    const QList<double> candidates = candidatesOf(axis.division);
    if (candidates.isEmpty())
        return kept;
    labels.ticks = candidates;
    labels.shown = axis.isQuoteInside();
    labels.findPlace();
    if (axis.quoteEnabled && labels.place < 0) {
        labels.ticks.clear();
        return kept;
    }
    kept.shared = Plain::sharedDigits(labels.ticks);
    if (!axis.isPainted)
        return kept;
    kept.margin = axis.converts ? 4 : 8;
    Plain::thin(labels, [&](double value) { return rectangleOf(draw, value, kept.margin); });
    kept.shared = Plain::sharedDigits(labels.ticks);
    return kept;
}

/// The size of an axis across: its widest label, the gap, the ticks and the line.
double extentOf(const PriceBased2dPlotScaleDraw& draw, const AxisCase& axis)
{
    const QFont font = QApplication::font();
    double size = 0.0;
    int label = draw.maxLabelHeight(font);
    if (axis.axis == 0) {
        double widest = 0.0;
        const QList<double> candidates = candidatesOf(axis.division);
        for (const double tick : candidates) {
            if (axis.division.contains(tick))
                widest = std::max(widest, draw.labelSize(font, tick).width());
        }
        label = static_cast<int>(std::ceil(widest));
        if (candidates.isEmpty())
            label = draw.QwtScaleDraw::maxLabelWidth(font);
    }
    if (label > 0)
        size += label + draw.spacing();
    size += draw.maxTickLength();
    size += std::max(TestVersions::penWidth(draw), 1);
    return std::max(size, draw.minimumExtent());
}

Plain::ScaleRequest randomRequest(Random& random)
{
    Plain::ScaleRequest request;
    request.lower = random.oneIn(10) ? -random.price() : random.price();
    request.upper = random.oneIn(12) ? random.price() : request.lower + std::abs(random.price());
    request.majorSteps = random.whole(1, 12);
    request.minorSteps = random.whole(0, 6);
    request.step = random.oneIn(4) ? std::abs(random.price()) : 0.0;
    return request;
}

/// The request with a bound or a step that few axes take, or none.
Plain::ScaleRequest hardRequest(Random& random, Plain::ScaleRequest request)
{
    const double width = request.upper - request.lower;
    if (random.oneIn(2))
        request.upper = random.oneIn(2) ? random.notFinite() : random.nasty();
    else
        request.step
            = random.oneIn(4) ? random.notFinite() : width * std::pow(10.0, random.between(-12.0, -7.0));
    return request;
}

/// None, on the lower bound, on or about a whole number, or anywhere.
decimal randomFactor(Random& random, const Plain::ScaleRequest& request)
{
    if (random.oneIn(8))
        return decimal::zero;
    double factor = random.between(request.lower, request.upper);
    if (random.oneIn(3))
        factor = std::round(factor);
    return decimal::fromDouble(random.oneIn(8) ? request.lower : random.about(factor), 12);
}

QwtScaleDiv divided(const QwtScaleEngine& engine, const Plain::ScaleRequest& request)
{
    return engine.divideScale(
        request.lower, request.upper, request.majorSteps, request.minorSteps, request.step);
}

/// Instead of what it does not divide the engine gives its last division.
void compareRefusals(
    Findings& findings, const PriceBased2dPlotScaleEngine& engine, const Plain::ScaleRequest& request)
{
    const QwtScaleDiv last = divided(engine, {100.0, 200.0, 8, 5, 0.0});
    findings.compare("last division", true, divided(engine, request) == last);
}

void compareDivisions(Findings& findings, PriceBased2dPlotScaleEngine& engine,
    const Plain::ScaleRequest& request, const decimal& factor, int strikeDecimals)
{
    const QwtScaleDiv linear = divided(QwtLinearScaleEngine(10), request);
    Plain::Ticks plain{linear.ticks(QwtScaleDiv::MajorTick), linear.ticks(QwtScaleDiv::MediumTick),
        linear.ticks(QwtScaleDiv::MinorTick)};
    if (factor != decimal::zero && strikeDecimals >= 1)
        plain = Plain::movedOnto(plain, linear.isEmpty(), Plain::anchor(factor.toDouble(), strikeDecimals),
            request.lower, request.upper);
    engine.setRescaleFactor(factor);
    const QwtScaleDiv division = divided(engine, request);
    findings.compare("major ticks", plain.major, division.ticks(QwtScaleDiv::MajorTick));
    findings.compare("medium ticks", plain.medium, division.ticks(QwtScaleDiv::MediumTick));
    findings.compare("minor ticks", plain.minor, division.ticks(QwtScaleDiv::MinorTick));
    findings.compare("lower bound", linear.lowerBound(), division.lowerBound());
    findings.compare("upper bound", linear.upperBound(), division.upperBound());
}

}

class tst_differential_scaledraw : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void labels();
    void shrunkTicks();
    void engine();
};

void tst_differential_scaledraw::labels()
{
    AGREE("labels of an axis", 901, 40, ([](Random& random, Findings& findings) {
        const AxisCase axis = randomAxis(random);
        PriceBased2dPlotScaleDraw draw(axis.axis);
        setUp(draw, axis);
        findings.compare("candidates", candidatesOf(axis.division), draw.getTicks(axis.division));
        draw.updateLabels();
        const KeptLabels plain = keptLabels(draw, axis);
        findings.compare("labels", plain.labels.ticks, draw.labelTicks());
        findings.compare("place of the quote", plain.labels.place, draw.curKotirIndex());
        findings.compare("margin", plain.margin, draw.labelMargin());
        findings.compare("equal digits", plain.shared, draw.equalDigits());
        findings.compare("fraction length", Plain::fractionLength(candidatesOf(axis.division), plain.shared),
            draw.maxFractionLength());
        findings.compareNear("extent", extentOf(draw, axis), draw.extent(QApplication::font()), 1.0);
        const double value = random.oneIn(3) ? random.nasty() : axis.quote;
        const Plain::LabelText text{
            axis.converts, [](double same) { return same; }, axis.unit, false, axis.decimals};
        findings.compare(
            "text", isUsable(axis.division) ? text.of(value) : QString(), draw.label(value).text());
        findings.given([&] { return axis.inWords() + told(value); });
    }));
}

void tst_differential_scaledraw::shrunkTicks()
{
    AGREE("shrunk ticks", 902, 40, ([](Random& random, Findings& findings) {
        const AxisCase axis = randomAxis(random);
        PriceBased2dPlotScaleDraw draw(axis.axis);
        setUp(draw, axis);
        draw.updateLabels();
        const QwtScaleDiv other = random.oneIn(3) ? QwtScaleDiv(0.0, 0.0) : randomAxis(random).division;
        QList<double> ticks = draw.labelTicks();
        if (other.isEmpty())
            ticks = candidatesOf(axis.division);
        else if (axis.axis == 0)
            ticks = candidatesOf(other);
        const Plain::LabelText text{
            axis.converts, [](double same) { return same; }, axis.unit, false, axis.decimals};
        findings.compare("shrunk",
            Plain::labelsReadTheSame(ticks, [&](double value) { return text.of(value); }),
            draw.ticksShrinked(other));
        findings.given([&] { return axis.inWords() + told(other.lowerBound()) + told(other.upperBound()); });
    }));
}

/// The engine of a plot over a table whose strikes have so many decimals.
void tst_differential_scaledraw::engine()
{
    for (const short decimals : {short(0), short(1), short(2), short(5)}) {
        TestHost::Columns columns = TestHost::securitiesColumns();
        for (TableColumnDef& column : columns) {
            if (column.name == QLatin1String("strike"))
                column.decimals = decimals;
        }
        TestHost::createSecurities(columns);
        TestHost::createBoards();
        TestPlot plot;
        PriceBased2dPlotScaleEngine engine(&plot, QwtPlot::xBottom, 10);
        AGREE("divisions of an engine", 903U + static_cast<unsigned>(decimals), 15,
            ([&](Random& random, Findings& findings) {
                Plain::ScaleRequest request = randomRequest(random);
                const decimal factor = randomFactor(random, request);
                if (random.oneIn(8))
                    request = hardRequest(random, request);
                const std::optional<bool> isDivisible = Plain::canBeDivided(request);
                if (!isDivisible)
                    findings.leaveOut();
                else if (*isDivisible)
                    compareDivisions(findings, engine, request, factor, decimals);
                else
                    compareRefusals(findings, engine, request);
                findings.given([&] {
                    return QStringLiteral("%1 to %2 about %3, %4 and %5 steps of %6")
                        .arg(told(request.lower), told(request.upper), TestHost::text(factor))
                        .arg(request.majorSteps)
                        .arg(request.minorSteps)
                        .arg(told(request.step));
                });
            }));
    }
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

PLOT2D_TEST_MAIN(tst_differential_scaledraw)
#include "tst_differential_scaledraw.moc"
