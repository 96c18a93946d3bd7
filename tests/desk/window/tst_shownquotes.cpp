#include "desktest.h"
#include "support/testmain.h"

#include <window/curveset.h>
#include <window/shownquotes.h>

/// Which options of a series are drawn under a filter.
class tst_shownquotes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsOutOfTheMoneyAtFirst();
    void addsInTheMoney();
    void sidesAndStrikes_data();
    void sidesAndStrikes();
    void onePerStrikeIsOutOfTheMoney();
    void smileStaysAsItIs();
    void curvesFollowTheFilter();
    void bandHasBothSides();
    void noBandWhereASideIsMissing();
    void noBandOfCrossedQuotes();
    void bandFollowsTheFilter();
};

namespace {

ShownSeries valued(const OptionChain& chain)
{
    return valuedSeries(
        {chain.baseCode, chain.asOf, chain.priceStep, chain.decimals, chain.series.first()}, std::nullopt);
}

CurveSamples curve(const ShownSeries& series, CurveRole role, DeskView view = DeskView::Volatility)
{
    const QVector<CurveSamples> curves = CurveSet::curves(series, view);
    for (const CurveSamples& one : curves) {
        if (one.role == role)
            return one;
    }
    return CurveSamples();
}

OptionQuote* find(OptionChain* chain, OptionType type, double strike)
{
    for (OptionQuote& quote : chain->series.first().quotes) {
        if (quote.type == type && quote.strike.toDouble() == strike)
            return &quote;
    }
    qFatal("no option at %g", strike);
}

}

void tst_shownquotes::showsOutOfTheMoneyAtFirst()
{
    const ShownSeries series = valued(DeskTest::chain());
    const auto points = ShownQuotes(series).points();
    QCOMPARE(points.size(), series.analysis.points.size());
    QVERIFY(points.size() > 25);
    for (const auto& point : points)
        QCOMPARE(point.type, Pricing::outOfTheMoneyType(point.strike, series.market.forward));
}

void tst_shownquotes::addsInTheMoney()
{
    ShownSeries series = valued(DeskTest::chain());
    const int before = ShownQuotes(series).points().size();
    series.filter.outOfTheMoneyOnly = false;
    const auto points = ShownQuotes(series).points();
    QVERIFY(points.size() > before + 20);
    for (int i = 1; i < points.size(); ++i) {
        const bool ascends = points[i - 1].strike < points[i].strike;
        const bool isPair = points[i - 1].strike == points[i].strike && points[i - 1].type == OptionType::Call
            && points[i].type == OptionType::Put;
        QVERIFY(ascends || isPair);
    }
    // Of one volatility by parity, but for the rounding of the prices to cents.
    for (const auto& point : points) {
        if (point.strike >= 85.0 && point.strike <= 115.0)
            QVERIFY(std::abs(point.volatility - DeskTest::volatility(point.strike)) < 5e-3);
    }
}

void tst_shownquotes::sidesAndStrikes_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<int>("deviations");
    const int both = int(Pricing::OptionSide::CallsAndPuts);
    QTest::newRow("calls") << int(Pricing::OptionSide::Calls) << 0;
    QTest::newRow("puts") << int(Pricing::OptionSide::Puts) << 0;
    QTest::newRow("one deviation") << both << 1;
    QTest::newRow("two deviations") << both << 2;
}

void tst_shownquotes::sidesAndStrikes()
{
    QFETCH(int, side);
    QFETCH(int, deviations);
    ShownSeries series = valued(DeskTest::chain());
    const int all = ShownQuotes(series).points().size();
    series.filter.side = Pricing::OptionSide(side);
    series.filter.deviations = deviations;
    const ShownQuotes shown(series);
    const auto points = shown.points();
    QVERIFY(!points.isEmpty() && points.size() < all);
    const double deviation = volatilityAtForward(series) * std::sqrt(series.market.time);
    for (const auto& point : points) {
        QVERIFY(shown.contains(point.type, point.strike));
        if (series.filter.side != Pricing::OptionSide::CallsAndPuts)
            QCOMPARE(point.type == OptionType::Call, series.filter.side == Pricing::OptionSide::Calls);
        if (deviations > 0)
            QVERIFY(std::abs(std::log(point.strike / series.market.forward)) <= deviations * deviation);
    }
}

void tst_shownquotes::onePerStrikeIsOutOfTheMoney()
{
    ShownSeries series = valued(DeskTest::chain());
    series.filter.outOfTheMoneyOnly = false;
    const auto points = ShownQuotes(series).onePerStrike();
    for (int i = 0; i < points.size(); ++i) {
        QVERIFY(i == 0 || points[i - 1].strike < points[i].strike);
        const bool near = points[i].strike >= 80.0 && points[i].strike <= 120.0;
        if (near)
            QCOMPARE(points[i].type, Pricing::outOfTheMoneyType(points[i].strike, series.market.forward));
    }
    series.filter.side = Pricing::OptionSide::Puts;
    const auto puts = ShownQuotes(series).onePerStrike();
    QVERIFY(puts.last().strike > 105.0);
    QCOMPARE(puts.last().type, OptionType::Put);
}

void tst_shownquotes::smileStaysAsItIs()
{
    ShownSeries series = valued(DeskTest::chain());
    const CurveSamples before = curve(series, CurveRole::Smile);
    series.filter = {false, Pricing::OptionSide::Calls, 1};
    QCOMPARE(curve(series, CurveRole::Smile).samples, before.samples);
}

void tst_shownquotes::curvesFollowTheFilter()
{
    ShownSeries series = valued(DeskTest::quotedChain());
    series.filter.deviations = 1;
    const auto points = ShownQuotes(series).points();
    for (const CurveRole role :
        {CurveRole::BidVolatility, CurveRole::AskVolatility, CurveRole::StatedVolatility}) {
        const CurveSamples one = curve(series, role);
        QVERIFY(!one.samples.isEmpty());
        QVERIFY(one.samples.first().x() >= points.first().strike);
        QVERIFY(one.samples.last().x() <= points.last().strike);
    }
    QCOMPARE(curve(series, CurveRole::ImpliedVolatility).points.size(), points.size());
    QCOMPARE(curve(series, CurveRole::MarketPrice, DeskView::Value).points.size(), points.size());
    series.filter.outOfTheMoneyOnly = false;
    QCOMPARE(curve(series, CurveRole::MarketPrice, DeskView::Value).points.size(),
        ShownQuotes(series).points().size());
    QVERIFY(ShownQuotes(series).points().size() > points.size());
}

void tst_shownquotes::bandHasBothSides()
{
    const ShownSeries series = valued(DeskTest::quotedChain());
    const CurveSamples band = curve(series, CurveRole::BidAskBand);
    const CurveSamples bids = curve(series, CurveRole::BidVolatility);
    QCOMPARE(band.samples.size(), 2 * bids.samples.size());
    for (int i = 0; i + 1 < band.samples.size(); i += 2) {
        QCOMPARE(band.samples[i], bids.samples[i / 2]);
        QCOMPARE(band.samples[i + 1].x(), band.samples[i].x());
        QVERIFY(band.samples[i].y() < DeskTest::volatility(band.samples[i].x()));
        QVERIFY(band.samples[i + 1].y() > DeskTest::volatility(band.samples[i].x()));
    }
}

void tst_shownquotes::noBandWhereASideIsMissing()
{
    OptionChain chain = DeskTest::quotedChain();
    find(&chain, OptionType::Put, 90.0)->bid.reset();
    find(&chain, OptionType::Put, 95.0)->ask.reset();
    const CurveSamples band = curve(valued(chain), CurveRole::BidAskBand);
    QSet<double> strikes;
    for (const QPointF& sample : band.samples)
        strikes.insert(sample.x());
    QVERIFY(!strikes.contains(90.0) && !strikes.contains(95.0));
    QVERIFY(strikes.contains(92.5) && strikes.contains(97.5));
}

void tst_shownquotes::noBandOfCrossedQuotes()
{
    OptionChain chain = DeskTest::quotedChain();
    OptionQuote* quote = find(&chain, OptionType::Call, 105.0);
    std::swap(quote->bid, quote->ask);
    const CurveSamples band = curve(valued(chain), CurveRole::BidAskBand);
    QVERIFY(!band.samples.isEmpty());
    for (const QPointF& sample : band.samples)
        QVERIFY(sample.x() != 105.0);
}

void tst_shownquotes::bandFollowsTheFilter()
{
    ShownSeries series = valued(DeskTest::quotedChain());
    series.filter.side = Pricing::OptionSide::Calls;
    const CurveSamples band = curve(series, CurveRole::BidAskBand);
    QVERIFY(!band.samples.isEmpty());
    QVERIFY(band.samples.first().x() >= series.market.forward);
}

PLOT2D_TEST_MAIN(tst_shownquotes)
#include "tst_shownquotes.moc"
