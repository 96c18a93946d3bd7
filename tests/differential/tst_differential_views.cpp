#include "differential/agree.h"
#include "differential/plaindivision.h"
#include "differential/plainranges.h"
#include "differential/realplot.h"
#include "support/testmain.h"

#include <qwt_plot_marker.h>
#include <qwt_symbol.h>

#include <cmath>

using Differential::Findings;
using Differential::Random;
using Differential::RealPlot;
using Differential::Samples;
using Differential::told;

namespace {

/// Whether an axis takes what it is to show, if anything; nothing where either is right.
std::optional<bool> canBeDivided(
    const QwtPlot& plot, int axis, const std::optional<Plain::Bounds>& bounds, double step)
{
    if (!bounds)
        return true;
    if (!(bounds->first < bounds->second))
        return false;
    return Plain::canBeDivided(
        {bounds->first, bounds->second, plot.axisMaxMajor(axis), plot.axisMaxMinor(axis), step});
}

double randomBound(Random& random)
{
    return random.oneIn(4) ? random.rarelyBad(random.nasty(), 5) : random.whole(-200, 200) * 0.5;
}

QString setAxis(Random& random, RealPlot& both, Findings& findings)
{
    const int axis = random.oneIn(8) ? random.whole(-1, 4) : random.oneIn(2) ? 0 : 2;
    const double min = randomBound(random);
    const double max = random.oneIn(3) ? random.about(min)
        : random.oneIn(2)              ? min + 20.0
                                       : randomBound(random);
    const double step = random.oneIn(3) ? random.oneOf({2.5, 2.5, 0.01, 1e-9}) : 0.0;
    const QString words
        = QStringLiteral("axis %1 from %2 to %3 by %4").arg(axis).arg(told(min), told(max), told(step));
    if (axis == 0 || axis == 2) {
        const auto isDivisible = canBeDivided(both.plot(), axis, Plain::shownRange(axis, min, max), step);
        if (!isDivisible) {
            findings.leaveOut();
            return words + QStringLiteral(", left out");
        }
        Plain::Bounds& bounds = axis == 2 ? both.view().prices : both.view().values;
        const Plain::Bounds before = bounds;
        both.view().setAxis(axis, min, max);
        if (!*isDivisible)
            bounds = before;
    }
    both.plot().setAxisScale(axis, min, max, step);
    return words;
}

QString moveLine(Random& random, RealPlot& both)
{
    const double low = randomBound(random);
    const double high = random.oneIn(3) ? random.about(low) : randomBound(random);
    const double quote
        = random.oneIn(3) ? random.oneOf({-1.0, 0.0, -0.0}) : random.rarelyBad(random.price(), 10);
    both.view().moveLine(low, high, quote);
    both.plot().updateCurKotirPoints(low, high, quote);
    return QStringLiteral("line from %1 to %2 at %3").arg(told(low), told(high), told(quote));
}

QString fit(RealPlot& both)
{
    both.view().fit();
    both.plot().updateYAxisScale();
    return QStringLiteral("fit");
}

/// Points of which some are marked.
QVector<PriceBased2dPlotPoint> randomPoints(Random& random)
{
    QVector<PriceBased2dPlotPoint> points;
    for (int count = random.whole(0, 6); count > 0; --count) {
        PriceBased2dPlotPoint point;
        point.x = random.price();
        point.y = random.price();
        point.marked = random.oneIn(2);
        points << point;
    }
    return points;
}

QList<QPointF> placesOf(const TestPlot& plot)
{
    QList<QPointF> places;
    const auto markers = plot.attachedMarkers();
    for (const QwtPlotMarker* marker : markers)
        places << marker->value();
    return places;
}

}

class tst_differential_views : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void scales();
    void visibleValues();
    void closestCurves();
    void markers();

private:
    Record m_future;
};

void tst_differential_views::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
    TestHost::addBoard(1, 2, true);
    m_future = TestHost::addSecurity(TestHost::future());
}

void tst_differential_views::cleanupTestCase()
{
    m_future = Record();
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_differential_views::scales()
{
    RealPlot both;
    QVERIFY(both.isReady());
    AGREE("scales of a plot", 801, 60, ([&](Random& random, Findings& findings) {
        both.setUp(random);
        QStringList history;
        for (int changes = random.whole(1, 4); changes > 0 && !findings.differ(); --changes) {
            const int kind = random.whole(0, 4);
            history << (kind < 2 ? setAxis(random, both, findings)
                    : kind < 4   ? moveLine(random, both)
                                 : fit(both));
            both.compare(findings);
        }
        findings.given([&] { return told(history) + both.inWords(); });
    }));
}

void tst_differential_views::visibleValues()
{
    RealPlot both;
    QVERIFY(both.isReady());
    both.plot().setBaseCode(QStringLiteral("Amber"));
    AGREE("visible values of a plot", 802, 40, ([&](Random& random, Findings& findings) {
        both.setUp(random);
        Plain::View& view = both.view();
        view.priceStep = random.oneOf({0.0, 0.5, 1.0, 5.0, 2.5, 100.0, -1.0});
        TestHost::changeRow(m_future, {{"price_step", QString::number(view.priceStep)}});
        both.plot().picker()->setPriceStep();
        if (random.oneIn(10)) {
            std::swap(view.prices.first, view.prices.second);
            both.plot().QwtPlot::setAxisScale(QwtPlot::xBottom, view.prices.first, view.prices.second);
            both.plot().updateAxes();
        }
        const double price = random.price();
        findings.compare(
            "rounded price", Plain::snappedPrice(price, view.priceStep), both.plot().roundedXValue(price));
        findings.compare("range", view.visibleValues(), both.plot().minMaxYAtXRange());
        findings.compare("rectangle", Plain::rectangleAround(view.curves), both.plot().curvesRectangle());
        findings.given([&] { return told(price) + both.inWords(); });
    }));
}

void tst_differential_views::closestCurves()
{
    RealPlot both;
    QVERIFY(both.isReady());
    both.plot().setBaseCode(QStringLiteral("Amber"));
    AGREE("closest curves of a plot", 803, 40, ([&](Random& random, Findings& findings) {
        both.setUp(random);
        Plain::View& view = both.view();
        view.priceStep = random.oneOf({0.0, 0.5, 1.0, 2.5, -1.0, 0.25});
        TestHost::changeRow(m_future, {{"price_step", QString::number(view.priceStep)}});
        both.plot().picker()->setPriceStep();
        const QPointF place(random.whole(75, 125) + random.oneOf({0.0, 0.25, 0.5, 0.75, 0.24, 0.26}),
            random.oneIn(8) ? random.nasty() : random.whole(-12, 12) * 0.5);
        both.plot().picker()->setPosition(place);
        const Plain::Cursor cursor{
            view.prices.first, view.prices.second, view.values.first, view.values.second, 0.0, 0.0};
        const Plain::Closest plain = Plain::closestCurve(view.curves, cursor, place, view.priceStep);
        const QList<PriceBased2dPlotCurve*> curves = both.plot().attachedCurves(-1);
        const ClosestPointParams library = both.plot().picker()->getClosestCurveParams(curves);
        findings.compare(
            "curve", plain.curve, int(curves.indexOf(const_cast<PriceBased2dPlotCurve*>(library.curve))));
        findings.compare("sample", plain.sample, library.index);
        findings.compare("distance", -1.0, library.distance);
        findings.given([&] { return told(place) + both.inWords(); });
    }));
}

/// Markers of a plot stand on the marked points, in their order, as many as there are such points.
void tst_differential_views::markers()
{
    AGREE("markers of a plot", 804, 200, ([&](Random& random, Findings& findings) {
        TestPlot plot;
        const Plain::Curve plain = Differential::randomCurve(random, Samples::Finite);
        PriceBased2dPlotCurve* curve = Differential::made(plain, &plot).release();
        curve->attach(&plot);
        QList<QPointF> places;
        for (int count = random.whole(0, 4); count > 0; --count) {
            auto* marker = new QwtPlotMarker;
            marker->setValue(1.0, count);
            if (!random.oneIn(4)) {
                marker->setSymbol(new QwtSymbol(QwtSymbol::Rect));
                places << marker->value();
            }
            marker->attach(&plot);
        }
        QVector<QPointF> samples = plain.samples;
        const QVector<PriceBased2dPlotPoint> points = randomPoints(random);
        curve->setMarkerSamples(points);
        if (plain.type == 13) {
            samples.clear();
            places.clear();
            for (const PriceBased2dPlotPoint& point : points) {
                samples << QPointF(point.x, point.y);
                if (point.marked)
                    places << samples.last();
            }
        }
        findings.compare("places", places, placesOf(plot));
        QVector<QPointF> left;
        for (std::size_t i = 0; i < curve->dataSize(); ++i)
            left << curve->sample(static_cast<int>(i));
        findings.compare("samples", samples, left);
        if (plain.type == 13) {
            const auto markers = plot.attachedMarkers();
            for (const QwtPlotMarker* marker : markers)
                findings.compare("marker shown", plain.visible, marker->isVisible());
        }
        findings.given([&] { return Differential::told(plain) + told(places); });
    }));
}

PLOT2D_TEST_MAIN(tst_differential_views)
#include "tst_differential_views.moc"
