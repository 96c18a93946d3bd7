#include "chain/columnnames.h"
#include "support/testmain.h"

Q_DECLARE_METATYPE(Column)
Q_DECLARE_METATYPE(Side)

class tst_columnnames : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void names_data();
    void names();
    void percent_data();
    void percent();
    void unknown_data();
    void unknown();
    void ranks();
    void examples();

private:
    static void add(const char* names, Column column, Side side = Side::Row);
};

void tst_columnnames::add(const char* names, Column column, Side side)
{
    const QStringList all = QString::fromUtf8(names).split(QLatin1Char('|'));
    for (const QString& name : all)
        QTest::newRow(qPrintable(name)) << name << column << side;
}

void tst_columnnames::names_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Column>("column");
    QTest::addColumn<Side>("side");

    add("strike|Strike|STRIKE|strike_price|Strike Price|StrikePrice|strike.price|K|k|x|exercise price|"
        "Strike (USD)|[STRIKE]| strike |strikePrice",
        Column::Strike);
    add("type|Type|right|cp|c/p|C_P|option_type|optionType|put_call|Put/Call|call_put|cp_flag|Option "
        "Right|CALL/PUT",
        Column::Type);
    add("expiry|expiration|exp_date|maturity|expdate|contract month|Expiration "
        "Date|ExpiryDate|exdate|EXPIRE_DATE",
        Column::Expiry);
    add("quote_date|date|as of|As Of Date|trade_date|[QUOTE_DATE]|asof", Column::QuoteDate);
    add("settle|settlement|Settle Price|settlement_price|close|price|premium|Settle (USD/bbl)|option_price",
        Column::Settlement);
    add("bid|Bid Price|best_bid|BID_PRICE", Column::Bid);
    add("ask|offer|Best Offer|ask_price", Column::Ask);
    add("last|last_price|lastPrice|trade|LTP", Column::Last);
    add("volume|Volume (contracts)|total_volume", Column::Volume);
    add("vol|Vol.", Column::VolumeOrVolatility);
    add("open interest|openInt|openint|open_interest|OI|Open Int|openInterest", Column::OpenInterest);
    add("iv|IV|impliedvol|implied_volatility|impliedvolatility|ImpliedVolatility|sigma|volatility|impl_"
        "volatility|"
        "Implied Volatility (%)",
        Column::Volatility);
    add("forward|forward_price|future_price|futures price|Futures Settle|fwd|F", Column::Forward);
    add("underlying_price|UnderlyingPrice|[UNDERLYING_LAST]|underlying settle", Column::UnderlyingPrice);
    add("underlying|future", Column::UnderlyingOrCode);
    add("symbol|root|underlying_symbol|contractSymbol|ticker|product code", Column::Code);

    add("call_settle|Call Settle|CallSettle|callsettle|CALLSETTLE|c_settle|settle.c|settle_c|Settle (call)|"
        "Calls Settle|settle_call|Settlement Call|settlecall|call_price|Call Premium (USD)",
        Column::Settlement, Side::Call);
    add("put_bid|Puts Bid|p_bid|bid.p|bid_p|Bid (put)|PUTBID|[P_BID]|bidPut|putBid", Column::Bid, Side::Put);
    add("p_ask|put offer", Column::Ask, Side::Put);
    add("c_iv|[C_IV]|Call IV|call_implied_volatility", Column::Volatility, Side::Call);
    add("c_Openinterest|call_oi|Call Open Interest", Column::OpenInterest, Side::Call);
    add("put vol", Column::VolumeOrVolatility, Side::Put);
    add("call|Calls|C", Column::SidePrice, Side::Call);
    add("put|P", Column::SidePrice, Side::Put);
}

void tst_columnnames::names()
{
    QFETCH(QString, name);
    QFETCH(Column, column);
    QFETCH(Side, side);

    const std::optional<ColumnName> read = recogniseColumn(name);
    QVERIFY(read);
    QCOMPARE(int(read->column), int(column));
    QCOMPARE(int(read->side), int(side));
}

void tst_columnnames::percent_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("expected");

    for (const char* name :
        {"IV (%)", "IV %", "iv_pct", "Implied Volatility [%]", "call_iv (percent)", "% IV"})
        QTest::newRow(name) << QString::fromLatin1(name) << true;
    for (const char* name : {"IV", "IV (fraction)"})
        QTest::newRow(name) << QString::fromLatin1(name) << false;
}

void tst_columnnames::percent()
{
    QFETCH(QString, name);
    QFETCH(bool, expected);

    const std::optional<ColumnName> read = recogniseColumn(name);
    QVERIFY(read);
    QCOMPARE(int(read->column), int(Column::Volatility));
    QCOMPARE(read->percent, expected);
}

void tst_columnnames::unknown_data()
{
    QTest::addColumn<QString>("name");

    for (const char* name : {"", " ", "%", "delta", "lastTradeDate", "percentChange", "bid_size", "Vol/OI",
             "c_delta", "inTheMoney", "put_call_ratio", "callable", "bid_iv", "()", "1", "strike2", "spot"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_columnnames::unknown()
{
    QFETCH(QString, name);

    QVERIFY(!recogniseColumn(name));
}

void tst_columnnames::ranks()
{
    const auto rank = [](const char* name) { return recogniseColumn(QString::fromLatin1(name))->rank; };
    QVERIFY(rank("settle") < rank("close"));
    QVERIFY(rank("settlement") < rank("price"));
    QVERIFY(rank("option_type") < rank("type"));
    QVERIFY(rank("underlying_symbol") < rank("symbol"));
    QVERIFY(rank("bid") < rank("bid.1"));
}

void tst_columnnames::examples()
{
    QCOMPARE(
        columnExamples(Column::Strike), QStringLiteral("strike, strike_price, strike_px, exercise_price"));
    for (int column = 0; column < int(Column::SidePrice); ++column)
        QVERIFY(!columnExamples(Column(column)).isEmpty());
}

PLOT2D_TEST_MAIN(tst_columnnames)
#include "tst_columnnames.moc"
