#include "differential/agree.h"
#include "differential/plainclosest.h"
#include "differential/plainnumbers.h"
#include "differential/plainranges.h"
#include "differential/randomcurves.h"
#include "support/testmain.h"

#include <plot2d/closestpoint_p.h>
#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/quoteline_p.h>
#include <plot2d/sampleindex_p.h>
#include <plot2d/scalerange_p.h>
#include <plot2d/valuerange_p.h>

#include <QDataStream>

#include <cmath>

using Differential::Findings;
using Differential::Random;
using Differential::Samples;
using Differential::told;

namespace {

/// The library's curves of the same kinds.
class MadeCurves {
public:
    explicit MadeCurves(const QList<Plain::Curve>& plain)
    {
        for (const Plain::Curve& curve : plain)
            m_curves.push_back(Differential::made(curve));
    }
    QList<PriceBased2dPlotCurve*> all() const
    {
        QList<PriceBased2dPlotCurve*> curves;
        for (const auto& curve : m_curves)
            curves << curve.get();
        return curves;
    }

private:
    std::vector<std::unique_ptr<PriceBased2dPlotCurve>> m_curves;
};

Plain::Cursor randomCursor(Random& random)
{
    Plain::Cursor cursor;
    cursor.xMin = random.oneIn(3) ? random.price() : random.whole(95, 115);
    cursor.xMax = random.oneIn(20) ? random.nasty() : cursor.xMin + random.whole(0, 20);
    cursor.yMin = random.oneIn(10) ? random.nasty() : random.whole(-8, 5);
    cursor.yMax = random.oneIn(6) ? cursor.yMin : cursor.yMin + random.whole(-1, 12);
    cursor.x = random.oneIn(10) ? random.nasty() : random.whole(-40, 80) * 0.25;
    cursor.y = random.oneIn(10) ? random.nasty() : random.whole(-20, 40) * 0.25;
    return cursor;
}

QString toldCursor(const Plain::Cursor& cursor)
{
    return told(QList<double>{cursor.xMin, cursor.xMax, cursor.yMin, cursor.yMax, cursor.x, cursor.y});
}

}

class tst_differential_ranges : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void snapped();
    void properRanges();
    void valuesOfCurves();
    void rectangles();
    void quoteLines();
    void shownRanges();
    void validity();
    void curveRecords();
    void closestSamples();
};

void tst_differential_ranges::snapped()
{
    AGREE("snapped prices", 301, 1, ([](Random& random, Findings& findings) {
        const double step = random.oneIn(3) ? random.nasty() : std::abs(random.price());
        const double tie = step * (random.whole(-50, 5000) + 0.5);
        const double price = random.rarelyBad(random.oneIn(2) ? random.about(tie) : random.price(), 20);
        // Doubles do not hold every multiple any more.
        if (step != 0.0 && std::abs(price / step) >= 9007199254740992.0)
            return;
        findings.compare("price", Plain::snappedPrice(price, step), ValueRange::snapped(price, step));
        findings.given([&] { return told(price) + " by " + told(step); });
    }));
}

void tst_differential_ranges::properRanges()
{
    AGREE("proper ranges", 302, 1, ([](Random& random, Findings& findings) {
        const double low = random.nasty();
        const double high = random.oneIn(2) ? random.about(low) : random.nasty();
        findings.compare("apart", Plain::areApart(low, high), ValueRange::isProperRange(low, high));
        findings.given([&] { return told(low) + " to " + told(high); });
    }));
}

void tst_differential_ranges::valuesOfCurves()
{
    AGREE("values of curves", 303, 10, ([](Random& random, Findings& findings) {
        const QList<Plain::Curve> curves
            = Differential::randomCurves(random, Samples::Any, 4, Differential::randomLength(random));
        const MadeCurves library(curves);
        double x1 = random.whole(95, 115);
        if (random.oneIn(3) && !curves.isEmpty() && !curves[0].samples.isEmpty())
            x1 = random.about(curves[0].samples[random.whole(0, curves[0].samples.size() - 1)].x());
        const double x2 = random.oneIn(15) ? random.nasty() : x1 + random.whole(-1, 20);
        findings.compare(
            "range", Plain::valuesBetween(curves, x1, x2), ValueRange::ofCurves(library.all(), x1, x2));
        findings.given([&] { return told(x1) + " to " + told(x2) + Differential::told(curves); });
    }));
}

void tst_differential_ranges::rectangles()
{
    AGREE("rectangles of curves", 304, 10, ([](Random& random, Findings& findings) {
        const QList<Plain::Curve> curves
            = Differential::randomCurves(random, Samples::Finite, 4, Differential::randomLength(random));
        const MadeCurves library(curves);
        findings.compare(
            "rectangle", Plain::rectangleAround(curves), ValueRange::boundingRectangle(library.all()));
        findings.given([&] { return Differential::told(curves); });
    }));
}

void tst_differential_ranges::quoteLines()
{
    AGREE("quote lines", 305, 1, ([](Random& random, Findings& findings) {
        const double low = random.rarelyBad(random.nasty(), 40);
        const double high = random.oneIn(3) ? random.about(low)
            : random.oneIn(3)               ? random.nasty()
                                            : low + 7.0;
        const double quote = random.rarelyBad(random.price(), 30);
        const auto plain = Plain::quoteLine(low, high, quote);
        const auto library = QuoteLine::ends(low, high, quote);
        findings.compare("drawn", plain.has_value(), library.has_value());
        if (plain && library) {
            findings.compare("lower end", plain->first, (*library)[0]);
            findings.compare("upper end", plain->second, (*library)[1]);
        }
        findings.given([&] { return told(low) + " to " + told(high) + " at " + told(quote); });
    }));
}

void tst_differential_ranges::shownRanges()
{
    AGREE("shown ranges", 306, 1, ([](Random& random, Findings& findings) {
        const int axis = random.oneIn(2) ? 0 : 2;
        const double min = random.nasty();
        const double max = random.oneIn(2) ? random.about(min) : random.nasty();
        if (min > max || !std::isfinite(max))
            return;
        const auto plain = Plain::shownRange(axis, min, max);
        const auto library = ScaleRange::shown(axis, min, max);
        findings.compare("taken", plain.has_value(), library.has_value());
        if (plain && library)
            findings.compare("range", *plain, Plain::Range(library->minValue(), library->maxValue()));
        findings.given([&] { return QString::number(axis) + ": " + told(min) + " to " + told(max); });
    }));
}

void tst_differential_ranges::validity()
{
    AGREE("validity of curves", 307, 2, ([](Random& random, Findings& findings) {
        const Plain::Curve plain = Differential::randomCurve(random, Samples::Any);
        const auto library = Differential::made(plain);
        findings.compare("valid", plain.isValid(), library->isValid());
        const int wanted = random.whole(-3, 16);
        findings.compare("valid type", Plain::isCurveType(wanted), library->isValidType(wanted));
        library->setDataType(wanted);
        findings.compare("type", Plain::typeAfter(plain.type, wanted), library->dataType());
        const bool hasColor = plain.line == Plain::Line::Lines;
        const QColor color = hasColor ? plain.color : QColor();
        findings.compare("colour", color.name(), library->getColor().name());
        findings.given([&] { return Differential::told(plain) + ", wanted " + told(wanted); });
    }));
}

/// A record is a byte for validity, one for visibility and four for the type, the highest first; a short one
/// reads as nothing.
void tst_differential_ranges::curveRecords()
{
    AGREE("records of curves", 308, 2, ([](Random& random, Findings& findings) {
        const Plain::Curve plain = Differential::randomCurve(random, Samples::Finite);
        QByteArray expected;
        expected.append(plain.isValid() ? '\1' : '\0');
        expected.append(plain.visible ? '\1' : '\0');
        for (int shift = 24; shift >= 0; shift -= 8)
            expected.append(static_cast<char>((static_cast<unsigned>(plain.type) >> shift) & 0xffU));
        QByteArray written;
        QDataStream out(&written, QIODevice::WriteOnly);
        Differential::made(plain)->write(out);
        findings.compare("bytes", QString(expected.toHex()), QString(written.toHex()));

        if (random.oneIn(2))
            written[random.whole(0, written.size() - 1)] = static_cast<char>(random.whole(0, 255));
        written.truncate(random.oneIn(3) ? random.whole(0, 6) : 6);
        const bool isWhole = written.size() == 6;
        const QByteArray bytes = isWhole ? written : QByteArray(6, '\0');
        unsigned type = 0;
        for (int i = 2; i < 6; ++i)
            type = type * 256U + static_cast<unsigned char>(bytes[i]);
        QDataStream in(written);
        PriceBased2dPlotCurve::CurveParams params;
        PriceBased2dPlotCurve::read(in, params);
        findings.compare("valid", bytes[0] != '\0', params.isValid);
        findings.compare("visible", bytes[1] != '\0', params.isVisible);
        findings.compare("type", static_cast<int>(type), params.dataType);
        findings.given([&] { return QString(written.toHex()); });
    }));
}

void tst_differential_ranges::closestSamples()
{
    AGREE("closest samples", 309, 4, ([](Random& random, Findings& findings) {
        const QVector<QPointF> samples
            = Differential::randomSamples(random, Samples::Any, Differential::randomLength(random));
        const Plain::Cursor cursor = randomCursor(random);
        const double step = random.oneOf({1.0, 0.25, 0.0, -1.0, 1e-12, 0.9e-12, 1.1e-12, 5e-13, 1e-5});
        const ClosestPointCalcParams params{
            cursor.xMin, cursor.xMax, cursor.yMin, cursor.yMax, cursor.x, cursor.y};
        const Plain::Closest plain = Plain::closestSample(samples, cursor, step);
        ClosestPointParams one;
        ClosestPointParams other;
        if (ClosestPoint::isUsableStep(step) && ClosestPoint::isUsableView(params)) {
            one = ClosestPoint::find(
                samples.size(), [&](int i) { return samples[i]; }, params);
            const QwtPointSeriesData series(samples);
            other = ClosestPoint::find(*SampleIndex::of(&series), params);
        }
        findings.compare("sample", plain.sample, one.index);
        findings.compare("sample by the index", plain.sample, other.index);
        findings.compare("distance", plain.distance, one.distance);
        findings.compare("distance by the index", plain.distance, other.distance);
        findings.given(
            [&] { return toldCursor(cursor) + QStringLiteral(" step ") + told(step) + told(samples); });
    }));
}

PLOT2D_TEST_MAIN(tst_differential_ranges)
#include "tst_differential_ranges.moc"
