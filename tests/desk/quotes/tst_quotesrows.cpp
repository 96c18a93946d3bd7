#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <pricing/delta.h>
#include <quotes/quotesrows.h>

#include <cmath>

/// What the table says of each strike.
class tst_quotesrows : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void saysWhatIsOutOfTheMoney();
    void saysBothSides();
    void sideLeavesOutTheOther();
    void deviationsLeaveOutStrikes();
    void leavesAbsentEmpty();
    void noMiddleOfCrossedQuotes();
    void volatilityIsThePoints();
    void marksAtTheMoney();
    void findsTheNearest_data();
    void findsTheNearest();
    void nothingWithoutOptions();
};

namespace {

ShownSeries valued(const OptionChain& chain)
{
    return valuedSeries(
        {chain.baseCode, chain.asOf, chain.priceStep, chain.decimals, chain.series.first()}, std::nullopt);
}

const QuotesRow& rowAt(const QVector<QuotesRow>& rows, double strike)
{
    for (const QuotesRow& row : rows) {
        if (row.strike == strike)
            return row;
    }
    qFatal("no row of %g", strike);
}

OptionQuote& quoteAt(OptionChain& chain, OptionType type, double strike)
{
    for (OptionQuote& quote : chain.series.first().quotes) {
        if (quote.type == type && quote.strike.toDouble() == strike)
            return quote;
    }
    qFatal("no option at %g", strike);
}

}

void tst_quotesrows::saysWhatIsOutOfTheMoney()
{
    OptionChain chain = DeskTest::quotedChain();
    const QVector<QuotesRow> rows = QuotesRows::of(valued(chain));
    QCOMPARE(rows.size(), DeskTest::strikeCount);
    const QuotesRow& low = rowAt(rows, 90.0);
    const OptionQuote& put = quoteAt(chain, OptionType::Put, 90.0);
    QCOMPARE(low[QuotesColumn::Strike].value_or(0.0), 90.0);
    QCOMPARE(low[QuotesColumn::PutBid].value_or(0.0), put.bid->toDouble());
    QCOMPARE(low[QuotesColumn::PutAsk].value_or(0.0), put.ask->toDouble());
    QCOMPARE(low[QuotesColumn::PutMiddle].value_or(0.0), (put.bid->toDouble() + put.ask->toDouble()) / 2.0);
    QCOMPARE(low[QuotesColumn::PutSettlement].value_or(0.0), put.settlement->toDouble());
    const QuotesRow& high = rowAt(rows, 110.0);
    for (const QuotesColumn column : {QuotesColumn::CallBid, QuotesColumn::CallAsk, QuotesColumn::CallMiddle,
             QuotesColumn::CallSettlement}) {
        QVERIFY(!low[column]);
        QVERIFY(high[column]);
    }
    QVERIFY(!high[QuotesColumn::PutBid] && !high[QuotesColumn::PutSettlement]);
}

void tst_quotesrows::saysBothSides()
{
    ShownSeries series = valued(DeskTest::quotedChain());
    series.filter.outOfTheMoneyOnly = false;
    const QVector<QuotesRow> rows = QuotesRows::of(series);
    QCOMPARE(rows.size(), DeskTest::strikeCount);
    for (const QuotesRow& row : rows)
        QVERIFY(row[QuotesColumn::CallSettlement] && row[QuotesColumn::PutSettlement]);
}

void tst_quotesrows::sideLeavesOutTheOther()
{
    ShownSeries series = valued(DeskTest::quotedChain());
    series.filter = {false, Pricing::OptionSide::Puts, 0};
    const QVector<QuotesRow> rows = QuotesRows::of(series);
    QCOMPARE(rows.size(), DeskTest::strikeCount);
    for (const QuotesRow& row : rows)
        QVERIFY(row[QuotesColumn::PutSettlement] && !row[QuotesColumn::CallSettlement]);
    series.filter.outOfTheMoneyOnly = true;
    const QVector<QuotesRow> fewer = QuotesRows::of(series);
    QVERIFY(!fewer.isEmpty());
    QVERIFY(fewer.last().strike < series.market.forward);
}

void tst_quotesrows::deviationsLeaveOutStrikes()
{
    ShownSeries series = valued(DeskTest::quotedChain());
    series.filter.deviations = 1;
    const QVector<QuotesRow> rows = QuotesRows::of(series);
    const double limit = volatilityAtForward(series) * std::sqrt(series.market.time);
    QVERIFY(rows.size() > 5 && rows.size() < DeskTest::strikeCount);
    for (const QuotesRow& row : rows)
        QVERIFY(std::abs(std::log(row.strike / series.market.forward)) <= limit);
}

void tst_quotesrows::leavesAbsentEmpty()
{
    OptionChain chain = DeskTest::quotedChain();
    quoteAt(chain, OptionType::Put, 90.0).bid.reset();
    quoteAt(chain, OptionType::Put, 92.5).bid = decimal::zero;
    OptionQuote& gone = quoteAt(chain, OptionType::Put, 95.0);
    gone.bid.reset();
    gone.ask.reset();
    gone.settlement.reset();
    const QVector<QuotesRow> rows = QuotesRows::of(valued(chain));
    QVERIFY(!rowAt(rows, 90.0)[QuotesColumn::PutBid]);
    QVERIFY(!rowAt(rows, 90.0)[QuotesColumn::PutMiddle]);
    QVERIFY(rowAt(rows, 90.0)[QuotesColumn::PutAsk]);
    QCOMPARE(rowAt(rows, 92.5)[QuotesColumn::PutBid].value_or(9.0), 0.0);
    QVERIFY(!rowAt(rows, 92.5)[QuotesColumn::PutMiddle]);
    const QuotesRow& empty = rowAt(rows, 95.0);
    for (int i = 1; i < quotesColumnCount; ++i)
        QVERIFY(!empty[QuotesColumn(i)]);
}

void tst_quotesrows::noMiddleOfCrossedQuotes()
{
    OptionChain chain = DeskTest::quotedChain();
    OptionQuote& quote = quoteAt(chain, OptionType::Put, 90.0);
    std::swap(quote.bid, quote.ask);
    const QVector<QuotesRow> rows = QuotesRows::of(valued(chain));
    QVERIFY(!rowAt(rows, 90.0)[QuotesColumn::PutMiddle]);
    QVERIFY(rowAt(rows, 90.0)[QuotesColumn::PutBid]);
}

void tst_quotesrows::volatilityIsThePoints()
{
    const ShownSeries series = valued(DeskTest::quotedChain());
    const QVector<QuotesRow> rows = QuotesRows::of(series);
    int count = 0;
    for (const auto& point : series.analysis.points) {
        const QuotesRow& row = rowAt(rows, point.strike);
        QCOMPARE(row[QuotesColumn::Volatility].value_or(0.0), point.volatility);
        const auto delta = Pricing::blackDelta(point.type, point.strike, series.market, point.volatility);
        QCOMPARE(row[QuotesColumn::Delta].value_or(9.0), delta.value_or(0.0));
        ++count;
    }
    QVERIFY(count > 20);
    QVERIFY(rowAt(rows, 90.0)[QuotesColumn::Delta].value_or(1.0) < 0.0);
    QVERIFY(rowAt(rows, 110.0)[QuotesColumn::Delta].value_or(-1.0) > 0.0);
}

void tst_quotesrows::marksAtTheMoney()
{
    const QVector<QuotesRow> rows = QuotesRows::of(valued(DeskTest::chain()));
    for (const QuotesRow& row : rows)
        QCOMPARE(row.isAtTheMoney, row.strike == DeskTest::forward);
}

void tst_quotesrows::findsTheNearest_data()
{
    QTest::addColumn<double>("price");
    QTest::addColumn<double>("strike");
    QTest::newRow("on a strike") << 90.0 << 90.0;
    QTest::newRow("above it") << 91.0 << 90.0;
    QTest::newRow("below it") << 89.0 << 90.0;
    QTest::newRow("in the middle") << 91.25 << 90.0;
    QTest::newRow("below all") << -1e9 << 60.0;
    QTest::newRow("above all") << 1e9 << 140.0;
}

void tst_quotesrows::findsTheNearest()
{
    QFETCH(double, price);
    QFETCH(double, strike);
    const QVector<QuotesRow> rows = QuotesRows::of(valued(DeskTest::chain()));
    QCOMPARE(rows.at(QuotesRows::nearest(rows, price)).strike, strike);
}

void tst_quotesrows::nothingWithoutOptions()
{
    ShownSeries series = valued(DeskTest::chain());
    series.data.options.quotes.clear();
    series.analysis.points.clear();
    QVERIFY(QuotesRows::of(series).isEmpty());
    QCOMPARE(QuotesRows::nearest({}, 100.0), -1);
}

PLOT2D_TEST_MAIN(tst_quotesrows)
#include "tst_quotesrows.moc"
