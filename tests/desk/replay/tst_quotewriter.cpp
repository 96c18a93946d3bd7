#include "desk/chain/chaindatabase.h"
#include "support/testmain.h"

#include <chain/chainimport.h>
#include <database/database.h>
#include <database/exception.h>
#include <database/icore.h>
#include <database/table.h>
#include <replay/quotewriter.h>

/// Where live quotes are written to, and that none of them is stored.
class tst_quotewriter : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void findsInstruments_data();
    void findsInstruments();
    void passesOverOtherBoards();
    void writesTheFuture();
    void leavesWhatIsNotGiven();
    void writesOnceForManyNames();
    void takesFurtherInstruments();
    void writesNothingWithoutQuotes();
    void takesBack();
    void keepsWhatOthersWrote();
    void givesBackAtTheEnd();
    void staysOutOfAnImport();
    void survivesARollback();
    void followsAReplacedSeries();
    void needsThePriceColumns();
    void worksWithoutATable();

private:
    // bid, ask, last and current quote of a row.
    QString prices(int position) const { return m_database->fields(position, "bid ask last cur_kotir_real"); }
    Table* securities() const { return m_database->tables().securities; }

    std::unique_ptr<ChainDatabase> m_database;
};

namespace {

// The rows of the chain below in the table, and the ids that the import gives.
constexpr int future = 0;
constexpr int call = 1;
constexpr int futureIsinId = 1;

OptionChain chain(const QString& baseCode, const QDate& expiry)
{
    OptionQuote option;
    option.type = OptionType::Call;
    option.strike = decimal::fromString(QStringLiteral("81"));
    option.bid = decimal::fromString(QStringLiteral("2.5"));
    OptionChain result;
    result.baseCode = baseCode;
    result.asOf = QDate(2024, 3, 15);
    result.priceStep = decimal::fromString(QStringLiteral("0.01"));
    result.series = {{expiry, 80.5, {option}}};
    return result;
}

OptionChain amber()
{
    return chain(QStringLiteral("AMBER"), QDate(2024, 4, 19));
}

std::optional<decimal> price(const char* text)
{
    return *text ? std::optional<decimal>(decimal::fromString(QString::fromLatin1(text))) : std::nullopt;
}

RecordedQuote quote(int instrument, const char* bid, const char* ask, const char* last)
{
    RecordedQuote result;
    result.instrument = instrument;
    if (price(bid))
        result.setPrice(QuoteField::Bid, *price(bid));
    if (price(ask))
        result.setPrice(QuoteField::Ask, *price(ask));
    if (price(last))
        result.setPrice(QuoteField::Last, *price(last));
    return result;
}

const auto futureName = QStringLiteral("AMBER 2024-04-19");
const auto callName = QStringLiteral("AMBER 2024-04-19 C 81");

}

void tst_quotewriter::init()
{
    m_database = std::make_unique<ChainDatabase>();
    ChainImport(m_database->storage()).import(amber());
    QCOMPARE(prices(future), QStringLiteral("- - - 80.5"));
    QCOMPARE(prices(call), QStringLiteral("2.5 - - -"));
}

void tst_quotewriter::cleanup()
{
    m_database.reset();
}

void tst_quotewriter::findsInstruments_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("row");
    QTest::newRow("future's short name") << futureName << future;
    QTest::newRow("option's short name") << callName << call;
    QTest::newRow("future's id") << QStringLiteral("1") << future;
    QTest::newRow("option's id") << QStringLiteral("2") << call;
    QTest::newRow("future") << QStringLiteral("FUT") << future;
    QTest::newRow("future, other case") << QStringLiteral("fut") << future;
    QTest::newRow("unknown name") << QStringLiteral("AMBER 2024-04-19 C 82") << -1;
    QTest::newRow("unknown id") << QStringLiteral("3") << -1;
    QTest::newRow("id beyond 32 bits") << QStringLiteral("4294967297") << -1;
    QTest::newRow("other case") << callName.toLower() << -1;
}

void tst_quotewriter::findsInstruments()
{
    QFETCH(QString, name);
    QFETCH(int, row);
    QuoteWriter writer(securities(), {name}, futureIsinId);
    QCOMPARE(writer.note(quote(0, "", "3.25", "")), row >= 0);
    writer.flush();
    for (const int position : {future, call})
        QCOMPARE(m_database->fields(position, "ask"),
            position == row ? QStringLiteral("3.25") : QStringLiteral("-"));
}

void tst_quotewriter::passesOverOtherBoards()
{
    m_database->addRow({{"stock_id", 1}, {"board_id", 2}, {"isin_id", 7}, {"short_name", "OTHER"}});
    QuoteWriter writer(securities(), {"OTHER", "7"}, futureIsinId);
    QVERIFY(!writer.note(quote(0, "1", "", "")));
    QVERIFY(!writer.note(quote(1, "1", "", "")));
}

void tst_quotewriter::writesTheFuture()
{
    QuoteWriter writer(securities(), {futureName}, futureIsinId);
    QVERIFY(writer.note(quote(0, "80.25", "80.75", "80.6")));
    writer.flush();
    QCOMPARE(prices(future), QStringLiteral("80.25 80.75 80.6 80.6"));
    // No market has a forward of zero.
    QVERIFY(writer.note(quote(0, "", "", "0")));
    writer.flush();
    QCOMPARE(prices(future), QStringLiteral("80.25 80.75 0 80.6"));
}

void tst_quotewriter::leavesWhatIsNotGiven()
{
    QuoteWriter writer(securities(), {callName}, futureIsinId);
    writer.note(quote(0, "", "2.75", ""));
    writer.flush();
    QCOMPARE(prices(call), QStringLiteral("2.5 2.75 - -"));
    writer.note(quote(0, "2.25", "", ""));
    writer.note(quote(0, "", "", "2.5"));
    writer.note(quote(0, "2.375", "", ""));
    writer.flush();
    QCOMPARE(prices(call), QStringLiteral("2.375 2.75 2.5 -"));
}

void tst_quotewriter::writesOnceForManyNames()
{
    QuoteWriter writer(securities(), {"FUT", futureName, "1", callName}, futureIsinId);
    const QSignalSpy changed(securities(), SIGNAL(rowsChanged(QVector<Record>)));
    writer.note(quote(0, "1", "", ""));
    writer.note(quote(1, "2", "", ""));
    writer.note(quote(3, "5", "", ""));
    writer.note(quote(2, "3", "", ""));
    writer.flush();
    QCOMPARE(changed.size(), 1);
    const auto records = changed.first().first().value<QVector<Record>>();
    QCOMPARE(records, (QVector<Record>{securities()->record(future), securities()->record(call)}));
    QCOMPARE(prices(future), QStringLiteral("3 - - 80.5"));
    QCOMPARE(prices(call), QStringLiteral("5 - - -"));
}

void tst_quotewriter::takesFurtherInstruments()
{
    QuoteWriter writer(securities(), {callName}, futureIsinId);
    // One before the first quote, the others behind it.
    writer.addInstrument(QStringLiteral("unknown"));
    QVERIFY(!writer.note(quote(1, "1", "", "")));
    for (const char* name : {"FUT", "2", "also unknown"})
        writer.addInstrument(QString::fromLatin1(name));
    QCOMPARE(writer.instrumentCount(), 5);
    QVERIFY(writer.note(quote(0, "2.25", "", "")));
    QVERIFY(writer.note(quote(2, "80.25", "", "")));
    QVERIFY(writer.note(quote(3, "", "2.75", "")));
    QVERIFY(!writer.note(quote(4, "1", "", "")));
    writer.flush();
    QCOMPARE(prices(future), QStringLiteral("80.25 - - 80.5"));
    QCOMPARE(prices(call), QStringLiteral("2.25 2.75 - -"));
    // They are found again in other rows.
    ChainImport(m_database->storage()).import(chain(QStringLiteral("COBALT"), QDate(2024, 6, 21)));
    QVERIFY(writer.note(quote(3, "", "3", "")));
    writer.flush();
    QCOMPARE(prices(call), QStringLiteral("2.25 3 - -"));
    m_database->close();
    writer.addInstrument(callName);
    QVERIFY(!writer.note(quote(5, "1", "", "")));
}

void tst_quotewriter::writesNothingWithoutQuotes()
{
    QuoteWriter writer(securities(), {callName}, futureIsinId);
    const QSignalSpy changed(securities(), SIGNAL(rowsChanged(QVector<Record>)));
    QVERIFY(writer.note(quote(0, "", "", "")));
    writer.flush();
    writer.note(quote(0, "1", "", ""));
    writer.flush();
    writer.flush();
    QCOMPARE(changed.size(), 1);
}

void tst_quotewriter::takesBack()
{
    const QStringList before = m_database->securities();
    QuoteWriter writer(securities(), {"FUT", callName}, futureIsinId);
    for (const char* last : {"80.6", "80.7"}) {
        writer.note(quote(0, "80.25", "", last));
        writer.note(quote(1, "2.75", "3", last));
        writer.flush();
    }
    QVERIFY(m_database->securities() != before);
    const QSignalSpy changed(securities(), SIGNAL(rowsChanged(QVector<Record>)));
    writer.takeBack();
    QCOMPARE(m_database->securities(), before);
    QCOMPARE(changed.size(), 1);
    writer.takeBack();
    QCOMPARE(changed.size(), 1);
}

void tst_quotewriter::keepsWhatOthersWrote()
{
    QuoteWriter writer(securities(), {"FUT", callName}, futureIsinId);
    const auto writeQuote = [this](const char* value) {
        securities()->changeRows(
            {securities()->record(future)}, [&](const Record&, const Table::FieldAccess& field) {
                field(securities()->columnIndex(QStringLiteral("cur_kotir_real"))).setDecimal(*price(value));
            });
    };
    writer.note(quote(0, "80.25", "", "80.6"));
    writer.flush();
    writeQuote("79");
    writer.takeBack();
    QCOMPARE(prices(future), QStringLiteral("- - - 79"));

    writer.note(quote(0, "80.25", "", "80.6"));
    writer.flush();
    writeQuote("78");
    writer.note(quote(0, "", "", "80.7"));
    writer.flush();
    QCOMPARE(prices(future), QStringLiteral("80.25 - 80.7 80.7"));
    writer.takeBack();
    QCOMPARE(prices(future), QStringLiteral("- - - 78"));
}

void tst_quotewriter::givesBackAtTheEnd()
{
    const QStringList before = m_database->securities();
    {
        QuoteWriter writer(securities(), {"FUT", callName}, futureIsinId);
        writer.note(quote(0, "1", "2", "3"));
        writer.note(quote(1, "1", "2", "3"));
        writer.flush();
        QVERIFY(m_database->securities() != before);
    }
    QCOMPARE(m_database->securities(), before);
}

void tst_quotewriter::staysOutOfAnImport()
{
    QuoteWriter writer(securities(), {"FUT", callName}, futureIsinId);
    writer.note(quote(0, "80.25", "80.75", "80.6"));
    writer.note(quote(1, "2.75", "", ""));
    writer.flush();
    ChainImport(m_database->storage()).import(chain(QStringLiteral("COBALT"), QDate(2024, 6, 21)));
    // Live values are back as soon as the event loop runs.
    QCoreApplication::sendPostedEvents();
    QCOMPARE(prices(future), QStringLiteral("80.25 80.75 80.6 80.6"));
    QCOMPARE(prices(call), QStringLiteral("2.75 - - -"));

    m_database->close();
    m_database->open();
    QCOMPARE(m_database->securities().size(), 4);
    QCOMPARE(prices(future), QStringLiteral("- - - 80.5"));
    QCOMPARE(prices(call), QStringLiteral("2.5 - - -"));
}

void tst_quotewriter::survivesARollback()
{
    const QStringList before = m_database->securities();
    QuoteWriter writer(securities(), {"FUT", callName}, futureIsinId);
    writer.note(quote(0, "", "", "80.6"));
    writer.note(quote(1, "2.75", "", ""));
    writer.flush();
    m_database->storage().rollback();
    QCOMPARE(m_database->securities(), before);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(prices(future), QStringLiteral("- - 80.6 80.6"));
    QCOMPARE(prices(call), QStringLiteral("2.75 - - -"));
    QVERIFY(writer.note(quote(1, "3", "", "")));
    writer.flush();
    QCOMPARE(prices(call), QStringLiteral("3 - - -"));
    writer.takeBack();
    QCOMPARE(m_database->securities(), before);
}

void tst_quotewriter::followsAReplacedSeries()
{
    QuoteWriter writer(securities(), {callName, "COBALT 2024-06-21"}, futureIsinId);
    writer.note(quote(0, "2.75", "", ""));
    QVERIFY(!writer.note(quote(1, "5000", "", "")));
    writer.flush();
    // The same series again, in new rows with new ids, then one that was not there before.
    ChainImport(m_database->storage()).import(amber());
    ChainImport(m_database->storage()).import(chain(QStringLiteral("COBALT"), QDate(2024, 6, 21)));
    QCOMPARE(m_database->fields(call, "isin_id bid"), QStringLiteral("4 2.5"));
    QVERIFY(writer.note(quote(1, "5000", "", "")));
    writer.flush();
    QCOMPARE(m_database->fields(call, "isin_id bid"), QStringLiteral("4 2.75"));
    QCOMPARE(m_database->fields(2, "short_name bid"), QStringLiteral("COBALT 2024-06-21 5000"));
}

void tst_quotewriter::needsThePriceColumns()
{
    Table without(QStringLiteral("securities"), {{QStringLiteral("bid"), FieldType::Decimal, 5}});
    QVERIFY_EXCEPTION_THROWN(QuoteWriter(&without, {}, futureIsinId), Exception);
    QVector<TableColumnDef> columns;
    for (const char* name : {"bid", "ask", "last", "cur_kotir_real"})
        columns.append({QString::fromLatin1(name), FieldType::Double, 0});
    Table wrong(QStringLiteral("securities"), columns);
    QVERIFY_EXCEPTION_THROWN(QuoteWriter(&wrong, {}, futureIsinId), Exception);
}

void tst_quotewriter::worksWithoutATable()
{
    QuoteWriter none(nullptr, {"FUT"}, futureIsinId);
    QVERIFY(!none.hasTable());
    QVERIFY(!none.note(quote(0, "1", "", "")));
    none.flush();

    QuoteWriter writer(securities(), {"FUT"}, futureIsinId);
    writer.note(quote(0, "1", "", ""));
    writer.flush();
    writer.note(quote(0, "2", "", ""));
    m_database->close();
    QVERIFY(!writer.hasTable());
    writer.flush();
    writer.takeBack();
}

PLOT2D_TEST_MAIN(tst_quotewriter)
#include "tst_quotewriter.moc"
