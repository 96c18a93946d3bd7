#include "desktest.h"
#include "support/testmain.h"

#include <window/curvelook.h>
#include <window/curveset.h>

#include <algorithm>
#include <cmath>

/// The samples of the curves.
class tst_curveset : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void smileStrikesAscendAndSpanTheSmile();
    void volatilityCurvesOfSettlements();
    void volatilityCurvesOfQuotes();
    void statedVolatilitiesOfTheSameOptions();
    void valueCurves();
    void marksWhatTraded();
    void showsTheForwardAlone();
    void looksAreValidAndDistinct_data();
    void looksAreValidAndDistinct();
};

namespace {

ShownSeries valued(const OptionChain& chain)
{
    return valuedSeries({chain.baseCode, chain.asOf, chain.priceStep, chain.decimals, chain.series.first()},
        DeskTest::forward);
}

QVector<CurveRole> rolesOf(const QVector<CurveSamples>& curves)
{
    QVector<CurveRole> roles;
    for (const CurveSamples& curve : curves)
        roles.append(curve.role);
    return roles;
}

CurveSamples curveOf(const QVector<CurveSamples>& curves, CurveRole role)
{
    for (const CurveSamples& curve : curves) {
        if (curve.role == role)
            return curve;
    }
    return CurveSamples();
}

bool ascends(const QVector<QPointF>& samples)
{
    return std::is_sorted(
        samples.begin(), samples.end(), [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); });
}

}

void tst_curveset::smileStrikesAscendAndSpanTheSmile()
{
    const ShownSeries series = valued(DeskTest::chain());
    const QVector<double> strikes = CurveSet::smileStrikes(series);
    QVERIFY(strikes.size() > 200 && strikes.size() < 1000);
    QVERIFY(std::adjacent_find(strikes.begin(), strikes.end(), std::greater_equal<>()) == strikes.end());
    QCOMPARE(strikes.first(), series.smile->minStrike());
    QCOMPARE(strikes.last(), series.smile->maxStrike());
}

void tst_curveset::volatilityCurvesOfSettlements()
{
    const ShownSeries series = valued(DeskTest::chain());
    const QVector<CurveSamples> curves = CurveSet::curves(series, DeskView::Volatility);
    QCOMPARE(rolesOf(curves),
        (QVector<CurveRole>{CurveRole::Smile, CurveRole::ImpliedVolatility, CurveRole::Forward}));

    const CurveSamples smile = curveOf(curves, CurveRole::Smile);
    QVERIFY(ascends(smile.samples));
    for (const QPointF& sample : smile.samples) {
        if (sample.x() > 75.0 && sample.x() < 125.0)
            QVERIFY(std::abs(sample.y() - DeskTest::volatility(sample.x())) < 2e-3);
    }

    const CurveSamples points = curveOf(curves, CurveRole::ImpliedVolatility);
    QCOMPARE(points.points.size(), series.analysis.points.size());
    QVERIFY(points.points.size() > 25);
    QVERIFY(points.samples.isEmpty());
    for (const PriceBased2dPlotPoint& point : points.points) {
        QVERIFY(point.marked);
        if (point.x > 75.0 && point.x < 125.0)
            QVERIFY(std::abs(point.y - DeskTest::volatility(point.x)) < 2e-3);
    }
}

void tst_curveset::volatilityCurvesOfQuotes()
{
    OptionChain chain = DeskTest::chain();
    const decimal cents = decimal::fromUnits(10, 2);
    for (OptionQuote& quote : chain.series.first().quotes) {
        if (*quote.settlement <= cents)
            continue;
        quote.bid = *quote.settlement - cents;
        quote.ask = *quote.settlement + cents;
    }
    const ShownSeries series = valued(chain);
    const QVector<CurveSamples> curves = CurveSet::curves(series, DeskView::Volatility);
    const CurveSamples bid = curveOf(curves, CurveRole::BidVolatility);
    const CurveSamples ask = curveOf(curves, CurveRole::AskVolatility);
    QVERIFY(bid.samples.size() > 15);
    QVERIFY(ascends(bid.samples) && ascends(ask.samples));
    QCOMPARE(bid.samples.size(), ask.samples.size());
    for (int i = 0; i < bid.samples.size(); ++i) {
        const double strike = bid.samples[i].x();
        QCOMPARE(ask.samples[i].x(), strike);
        QVERIFY(bid.samples[i].y() < DeskTest::volatility(strike));
        QVERIFY(ask.samples[i].y() > DeskTest::volatility(strike));
    }
}

void tst_curveset::statedVolatilitiesOfTheSameOptions()
{
    OptionChain chain = DeskTest::chain();
    for (OptionQuote& quote : chain.series.first().quotes) {
        const bool outOfTheMoney
            = quote.type == Pricing::outOfTheMoneyType(quote.strike.toDouble(), DeskTest::forward);
        quote.volatility = outOfTheMoney ? DeskTest::volatility(quote.strike.toDouble()) : 9.0;
    }
    chain.series.first().quotes.first().volatility = 0.0;
    const ShownSeries series = valued(chain);
    const CurveSamples stated
        = curveOf(CurveSet::curves(series, DeskView::Volatility), CurveRole::StatedVolatility);
    QCOMPARE(stated.samples.size(), series.analysis.points.size());
    for (int i = 0; i < stated.samples.size(); ++i) {
        QCOMPARE(stated.samples[i].x(), series.analysis.points[i].strike);
        QCOMPARE(stated.samples[i].y(), DeskTest::volatility(stated.samples[i].x()));
    }
}

void tst_curveset::valueCurves()
{
    const ShownSeries series = valued(DeskTest::chain());
    const QVector<CurveSamples> curves = CurveSet::curves(series, DeskView::Value);
    QCOMPARE(rolesOf(curves),
        (QVector<CurveRole>{
            CurveRole::CallValue, CurveRole::PutValue, CurveRole::MarketPrice, CurveRole::Forward}));
    const CurveSamples calls = curveOf(curves, CurveRole::CallValue);
    const CurveSamples puts = curveOf(curves, CurveRole::PutValue);
    QCOMPARE(calls.samples.size(), puts.samples.size());
    for (int i = 0; i < calls.samples.size(); ++i) {
        const double parity = calls.samples[i].y() - puts.samples[i].y();
        QVERIFY(std::abs(parity - (DeskTest::forward - calls.samples[i].x())) < 1e-9);
    }
    for (const PriceBased2dPlotPoint& point : curveOf(curves, CurveRole::MarketPrice).points) {
        const auto theory = Pricing::theoreticalValue(
            *series.smile, series.market, Pricing::ValueSide::OutOfTheMoney, point.x);
        QVERIFY(std::abs(theory.value_or(0.0) - point.y) < 0.03);
    }
}

void tst_curveset::marksWhatTraded()
{
    OptionChain chain = DeskTest::chain();
    const decimal tradedStrike = decimal::fromUnits(110, 0);
    for (OptionQuote& quote : chain.series.first().quotes)
        quote.volume = quote.strike == tradedStrike ? 5 : 0;
    for (const DeskView view : {DeskView::Volatility, DeskView::Value}) {
        const QVector<CurveSamples> curves = CurveSet::curves(valued(chain), view);
        const CurveRole role
            = view == DeskView::Volatility ? CurveRole::ImpliedVolatility : CurveRole::MarketPrice;
        for (const PriceBased2dPlotPoint& point : curveOf(curves, role).points)
            QCOMPARE(point.marked, point.x == 110.0);
    }
}

void tst_curveset::showsTheForwardAlone()
{
    OptionChain chain = DeskTest::chain();
    for (OptionQuote& quote : chain.series.first().quotes)
        quote.settlement.reset();
    for (const DeskView view : {DeskView::Volatility, DeskView::Value}) {
        const QVector<CurveSamples> curves = CurveSet::curves(valued(chain), view);
        QCOMPARE(rolesOf(curves), QVector<CurveRole>{CurveRole::Forward});
        QCOMPARE(curves.first().samples.size(), 2);
        QCOMPARE(curves.first().samples.first().x(), DeskTest::forward);
    }
}

void tst_curveset::looksAreValidAndDistinct_data()
{
    QTest::addColumn<QVector<int>>("roles");
    const auto numbers = [](const QVector<CurveRole>& roles) {
        QVector<int> result;
        for (const CurveRole role : roles)
            result.append(int(role));
        return result;
    };
    QTest::newRow("volatility") << numbers(
        {CurveRole::Smile, CurveRole::StatedVolatility, CurveRole::BidVolatility, CurveRole::AskVolatility,
            CurveRole::ImpliedVolatility, CurveRole::Forward});
    QTest::newRow("value") << numbers(
        {CurveRole::CallValue, CurveRole::PutValue, CurveRole::MarketPrice, CurveRole::Forward});
}

void tst_curveset::looksAreValidAndDistinct()
{
    QFETCH(QVector<int>, roles);
    QSet<int> types;
    QSet<QString> titles;
    QSet<QRgb> colors;
    for (const int number : qAsConst(roles)) {
        CurveSamples samples;
        samples.role = CurveRole(number);
        PriceBased2dPlotCurve curve(nullptr, CurveLook::title(samples.role));
        CurveLook::apply(samples, curve);
        curve.setSamples(QVector<QPointF>{{1.0, 1.0}, {2.0, 2.0}});
        QVERIFY2(curve.isValid(), qPrintable(curve.title().text()));
        types.insert(curve.dataType());
        titles.insert(curve.title().text());
        colors.insert(curve.pen().color().rgb());
    }
    QCOMPARE(types.size(), roles.size());
    QCOMPARE(titles.size(), roles.size());
    QCOMPARE(colors.size(), roles.size());
}

PLOT2D_TEST_MAIN(tst_curveset)
#include "tst_curveset.moc"
