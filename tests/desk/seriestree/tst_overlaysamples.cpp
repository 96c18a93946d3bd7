#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <seriestree/overlaysamples.h>

/// What is drawn of a series beside the chosen one.
class tst_overlaysamples : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void smile();
    void values();
    void staysInSight_data();
    void staysInSight();
    void nothingWithoutASmile();
    void nothingBesideAPosition();
};

namespace {

ShownSeries valued(const OptionChain& chain)
{
    return valuedSeries(
        {chain.baseCode, chain.asOf, chain.priceStep, chain.decimals, chain.series.first()}, std::nullopt);
}

}

void tst_overlaysamples::smile()
{
    const ShownSeries series = valued(DeskTest::chain());
    const QVector<QPointF> samples = OverlaySamples::of(series, DeskView::Volatility);
    QVERIFY(samples.size() > 400);
    for (int i = 0; i < samples.size(); ++i) {
        QVERIFY(i == 0 || samples.at(i - 1).x() < samples.at(i).x());
        QCOMPARE(samples.at(i).y(), series.smile->volatility(samples.at(i).x()).value_or(0.0));
    }
}

void tst_overlaysamples::values()
{
    const ShownSeries series = valued(DeskTest::chain());
    const QVector<QPointF> samples = OverlaySamples::of(series, DeskView::Value);
    QVERIFY(samples.size() > 400);
    for (const QPointF& sample : samples) {
        const OptionType type = Pricing::outOfTheMoneyType(sample.x(), series.market.forward);
        const auto price = Pricing::blackPrice(
            type, sample.x(), series.market, series.smile->volatility(sample.x()).value_or(0.0));
        QCOMPARE(sample.y(), price.value_or(-1.0));
    }
}

void tst_overlaysamples::staysInSight_data()
{
    QTest::addColumn<int>("days");
    QTest::newRow("long") << 91;
    QTest::newRow("short") << 7;
}

void tst_overlaysamples::staysInSight()
{
    QFETCH(int, days);
    OptionChain chain = DeskTest::chain();
    chain.series.first().expiry = chain.asOf.addDays(days);
    const ShownSeries series = valued(chain);
    const PriceRange range = visiblePrices(series);
    const QVector<QPointF> samples = OverlaySamples::of(series, DeskView::Volatility);
    QVERIFY(!samples.isEmpty());
    QVERIFY(samples.first().x() >= range.low && samples.last().x() <= range.high);
    QCOMPARE(samples.first().x(), std::max(range.low, series.smile->minStrike()));
    QCOMPARE(samples.last().x(), std::min(range.high, series.smile->maxStrike()));
}

void tst_overlaysamples::nothingWithoutASmile()
{
    ShownSeries series = valued(DeskTest::chain());
    series.smile.reset();
    for (const DeskView view : {DeskView::Volatility, DeskView::Value})
        QVERIFY(OverlaySamples::of(series, view).isEmpty());
}

void tst_overlaysamples::nothingBesideAPosition()
{
    QVERIFY(OverlaySamples::of(valued(DeskTest::chain()), DeskView::Position).isEmpty());
}

PLOT2D_TEST_MAIN(tst_overlaysamples)
#include "tst_overlaysamples.moc"
