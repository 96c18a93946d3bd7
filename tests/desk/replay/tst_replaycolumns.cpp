#include "support/testmain.h"

#include <replay/replaycolumns.h>

/// Which columns of a header the quotes are taken from.
class tst_replaycolumns : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void finds_data();
    void finds();
    void namesRepeatedColumns_data();
    void namesRepeatedColumns();
};

void tst_replaycolumns::finds_data()
{
    QTest::addColumn<QString>("header");
    // Time, instrument, bid, ask, last.
    QTest::addColumn<QString>("indices");
    QTest::addColumn<bool>("complete");
    const auto row = [](const char* header, const char* indices, bool complete) {
        QTest::newRow(header) << QString::fromLatin1(header) << QString::fromLatin1(indices) << complete;
    };
    row("time,instrument,bid,ask,last", "0 1 2 3 4", true);
    row("last,ask,bid,instrument,time", "4 3 2 1 0", true);
    row("Timestamp,SYMBOL,Best Bid,offer,Last_Price", "0 1 2 3 4", true);
    row("ts,isin_id,ltp", "0 1 -1 -1 2", true);
    row("time,seq,short name,bid px", "0 2 3 -1 -1", true);
    row("symbol,instrument,timestamp,time,bid", "3 1 4 -1 -1", true);
    row("time,instrument,best bid,bid", "0 1 3 -1 -1", true);
    row("time,instrument,bid,best bid", "0 1 2 -1 -1", true);
    row("time,instrument,volume", "0 1 -1 -1 -1", false);
    row("time,bid,ask", "0 -1 1 2 -1", false);
    row("instrument,bid,ask", "-1 0 1 2 -1", false);
    row("time,instrument,call_bid,put_bid", "0 1 -1 -1 -1", false);
    row("", "-1 -1 -1 -1 -1", false);
}

void tst_replaycolumns::finds()
{
    QFETCH(QString, header);
    QFETCH(QString, indices);
    QFETCH(bool, complete);
    const ReplayColumns columns(header.split(QLatin1Char(',')));
    QStringList found;
    for (const int index : {columns.time(), columns.instrument(), columns.price(QuoteField::Bid),
             columns.price(QuoteField::Ask), columns.price(QuoteField::Last)})
        found.append(QString::number(index));
    QCOMPARE(found.join(QLatin1Char(' ')), indices);
    QCOMPARE(columns.isComplete(), complete);
    QCOMPARE(columns.knownCount(), 5 - found.count(QStringLiteral("-1")));
    QCOMPARE(columns.repeatedName(), QString());
}

void tst_replaycolumns::namesRepeatedColumns_data()
{
    QTest::addColumn<QString>("header");
    QTest::addColumn<QString>("name");
    QTest::newRow("time") << "time,TIME,instrument,bid"
                          << "time";
    QTest::newRow("instrument") << "time,instrument,Instrument,bid"
                                << "instrument";
    QTest::newRow("price") << "time,instrument,bid,ask,Bid"
                           << "Bid";
}

void tst_replaycolumns::namesRepeatedColumns()
{
    QFETCH(QString, header);
    QFETCH(QString, name);
    QCOMPARE(ReplayColumns(header.split(QLatin1Char(','))).repeatedName(), name);
}

PLOT2D_TEST_MAIN(tst_replaycolumns)
#include "tst_replaycolumns.moc"
