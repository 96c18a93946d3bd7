#include "desktest.h"
#include "support/testmain.h"

#include <window/curvelook.h>
#include <window/positioncurves.h>

#include <algorithm>
#include <cmath>

using Position::Leg;
using Position::LegKind;

namespace {

Leg leg(LegKind kind, int quantity, double strike, double price)
{
    return {kind, QDate(2024, 4, 2), quantity, strike, price};
}

ShownSeries seriesWith(const QVector<Leg>& legs)
{
    const OptionChain chain = DeskTest::chain();
    ShownSeries series
        = valuedSeries({chain.baseCode, chain.asOf, chain.priceStep, chain.decimals, chain.series.first()},
            DeskTest::forward);
    series.position = Position::Profile(legs, {{QDate(2024, 4, 2), series.market, series.smile}});
    return series;
}

const CurveSamples* curveOf(const QVector<CurveSamples>& curves, CurveRole role)
{
    const auto found = std::find_if(
        curves.begin(), curves.end(), [role](const CurveSamples& curve) { return curve.role == role; });
    return found == curves.end() ? nullptr : &*found;
}

}

class tst_positioncurves : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void noPosition();
    void curvesAreTheProfit();
    void pricesHoldCornersAndView();
    void breakEvensAreMarked();
    void firstPricesShowTheBreakEvens();
    void looks();
};

void tst_positioncurves::noPosition()
{
    const ShownSeries series = seriesWith({});
    const QVector<CurveSamples> curves = CurveSet::curves(series, DeskView::Position);
    QCOMPARE(curves.size(), 1);
    QVERIFY(curves.first().role == CurveRole::Forward);
    const PriceRange first = PositionCurves::visiblePrices(series);
    QCOMPARE(first.low, visiblePrices(series).low);
    QCOMPARE(first.high, visiblePrices(series).high);
}

void tst_positioncurves::curvesAreTheProfit()
{
    const ShownSeries series = seriesWith({leg(LegKind::Call, 1, 95, 8), leg(LegKind::Call, -1, 105, 3.5)});
    const QVector<double> prices = PositionCurves::prices(series, {90.0, 110.0});
    const QVector<CurveSamples> curves = CurveSet::curves(series, DeskView::Position, prices);
    QCOMPARE(curves.size(), 4);
    const CurveSamples* const expiry = curveOf(curves, CurveRole::ProfitAtExpiry);
    const CurveSamples* const today = curveOf(curves, CurveRole::ProfitToday);
    QVERIFY(expiry && today);
    QCOMPARE(expiry->samples.size(), prices.size());
    QCOMPARE(today->samples.size(), prices.size());
    for (const QPointF& sample : expiry->samples) {
        const double spread = std::max(sample.x() - 95.0, 0.0) - std::max(sample.x() - 105.0, 0.0);
        QVERIFY(std::abs(sample.y() - (spread - 4.5)) < 1e-9);
    }
    for (const QPointF& sample : today->samples)
        QVERIFY(sample.y() > -4.5 && sample.y() < 5.5);
}

void tst_positioncurves::pricesHoldCornersAndView()
{
    const ShownSeries series = seriesWith(
        {leg(LegKind::Call, 1, 97.123, 8), leg(LegKind::Put, -1, 40, 0.5), leg(LegKind::Call, 1, 5000, 0)});
    for (const PriceRange& visible :
        {PriceRange{96.0, 98.0}, {60.0, 140.0}, {-50.0, 400.0}, {500.0, 501.0}}) {
        const QVector<double> prices = PositionCurves::prices(series, visible);
        QVERIFY(std::is_sorted(prices.begin(), prices.end(), std::less_equal<double>()));
        QVERIFY(prices.contains(97.123));
        QVERIFY(prices.contains(40.0));
        QVERIFY(prices.first() > 0.0 && prices.first() < 40.0);
        // The strike far away does not draw everything out.
        QVERIFY(prices.last() > 140.0 && prices.last() < 500.0);
        QVERIFY(prices.size() < 700);
    }
    const QVector<double> narrow = PositionCurves::prices(series, {96.0, 98.0});
    QVERIFY(
        std::count_if(narrow.begin(), narrow.end(), [](double p) { return p >= 96.0 && p <= 98.0; }) > 300);
}

void tst_positioncurves::breakEvensAreMarked()
{
    const ShownSeries series = seriesWith(
        {leg(LegKind::Call, 1, 90, 12), leg(LegKind::Call, -2, 100, 6), leg(LegKind::Call, 1, 110, 3)});
    const CurveSamples marks = PositionCurves::breakEvens(series);
    QCOMPARE(marks.points.size(), 2);
    QCOMPARE(marks.points[0].x, 93.0);
    QCOMPARE(marks.points[1].x, 107.0);
    for (const PriceBased2dPlotPoint& point : marks.points) {
        QCOMPARE(point.y, 0.0);
        QVERIFY(point.marked);
    }
    // Both ends of a range, and only the first of one without end.
    const ShownSeries ranges = seriesWith(
        {leg(LegKind::Put, 1, 90, 2), leg(LegKind::Put, -2, 100, 6), leg(LegKind::Put, 1, 110, 10)});
    QCOMPARE(PositionCurves::breakEvens(ranges).points.size(), 3);
    QVERIFY(PositionCurves::breakEvens(seriesWith({})).points.isEmpty());
}

void tst_positioncurves::firstPricesShowTheBreakEvens()
{
    const PriceRange plain = visiblePrices(seriesWith({}));
    const ShownSeries wide = seriesWith({leg(LegKind::Future, 1, 0, plain.high + 30.0)});
    const PriceRange first = PositionCurves::visiblePrices(wide);
    QCOMPARE(first.low, plain.low);
    QVERIFY(first.high > plain.high + 30.0 && first.high < plain.high + 40.0);
    const ShownSeries far = seriesWith({leg(LegKind::Future, 1, 0, 5000.0)});
    QCOMPARE(PositionCurves::visiblePrices(far).high, plain.high);
}

void tst_positioncurves::looks()
{
    const auto roles
        = {CurveRole::ProfitAtExpiry, CurveRole::ProfitToday, CurveRole::BreakEven, CurveRole::Forward};
    QSet<int> types;
    for (const CurveRole role : roles)
        types.insert(CurveLook::dataType(role));
    QCOMPARE(types.size(), int(roles.size()));
    QCOMPARE(CurveLook::dataType(CurveRole::BreakEven), int(PriceBased2dPlotCurve::markedType));
    QVERIFY(!CurveLook::isOverStrikes(CurveLook::title(CurveRole::ProfitToday)));
    QVERIFY(CurveLook::isOverStrikes(CurveLook::title(CurveRole::Smile)));
}

PLOT2D_TEST_MAIN(tst_positioncurves)
#include "tst_positioncurves.moc"
