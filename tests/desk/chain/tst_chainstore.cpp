#include "chain/chainimport.h"
#include "chain/chainstore.h"
#include "desk/chain/chaindatabase.h"
#include "desk/chain/chaintext.h"
#include "support/testmain.h"

#include <database/exception.h>

namespace {

const char* const twoExpiries
    = "underlying,date,expiry,future price,type,strike,bid,ask,last,settle,volume,oi,iv\n"
      "AMB,2012-10-01,2012-11-16,92.85,C,90,4.1,4.3,4.2,4.25,10,100,0.3\n"
      "AMB,2012-10-01,2012-11-16,92.85,P,92.5,,2.3,,,,,\n"
      "AMB,2012-10-01,2012-12-14,93.1,C,90,5.1,5.3,,5.2,0,0,0.31\n";

QStringList described(const QString& baseCode)
{
    const std::optional<OptionChain> chain = ChainStore::chain(baseCode);
    return chain ? ChainText::describe(*chain) : QStringList();
}

}

class tst_chainstore : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_database = std::make_unique<ChainDatabase>(); }
    void cleanup() { m_database.reset(); }

    void roundTrip_data();
    void roundTrip();
    void forward();
    void forwardThatCannotBe();
    void forwardNotStored();
    void storeOfNothing();
    void storedSeries();
    void foreignRows();

private:
    std::unique_ptr<ChainDatabase> m_database;
};

void tst_chainstore::roundTrip_data()
{
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("all fields") << QByteArray(twoExpiries);
    QTest::newRow("no days") << QByteArray("type,strike,close\nC,50,1\nP,50,0\n");
    QTest::newRow("small numbers") << QByteArray(
        "type,strike,close,iv,forward\nC,0.00925,0.0000005,0.123456789012345,"
        "0.0093123456789\n");
    QTest::newRow("large numbers") << QByteArray(
        "type,strike,close,volume,forward\nC,999999999999,123456789.25,"
        "999999999999999,999999999999.5\n");
    QTest::newRow("other letters")
        << QStringLiteral("underlying,type,strike,close\n\u0416\u00f6',C,50,1\n").toUtf8();
}

void tst_chainstore::roundTrip()
{
    QFETCH(QByteArray, text);

    const OptionChain chain = ChainText::read(text);
    ChainImport(m_database->storage()).import(chain);
    QCOMPARE(described(chain.baseCode), ChainText::describe(chain));
    m_database->close();
    m_database->open();
    QCOMPARE(described(chain.baseCode), ChainText::describe(chain));
    const std::optional<OptionChain> back = ChainStore::chain(chain.baseCode);
    for (int index = 0; index < chain.series.size(); ++index) {
        QVERIFY(back->series.at(index).forward == chain.series.at(index).forward);
        for (int quote = 0; quote < chain.series.at(index).quotes.size(); ++quote)
            QVERIFY(back->series.at(index).quotes.at(quote).volatility
                == chain.series.at(index).quotes.at(quote).volatility);
    }
}

void tst_chainstore::forward()
{
    ChainImport importer(m_database->storage());
    importer.import(ChainText::read(twoExpiries));
    const int id = ChainStore::series("AMB").at(1).futureIsinId;
    const double forward = 92.851234567890123;
    QVERIFY(importer.storeForward(id, forward));
    QVERIFY(!m_database->storage().hasChanges());
    QCOMPARE(*ChainStore::seriesById(id)->forward, forward);
    QCOMPARE(*ChainStore::series("AMB").at(0).forward, 92.85);
    m_database->close();
    m_database->open();
    QVERIFY(ChainStore::seriesById(id)->forward == forward);
    QVERIFY(ChainImport(m_database->storage()).storeForward(id, std::nullopt));
    QVERIFY(!ChainStore::seriesById(id)->forward);
    QVERIFY(!ChainStore::options(id).forward);
}

void tst_chainstore::forwardThatCannotBe()
{
    ChainImport importer(m_database->storage());
    importer.import(ChainText::read(twoExpiries));
    const int id = ChainStore::series("AMB").at(0).futureIsinId;
    for (const double forward : {0.0, -1.0, 1e15, std::numeric_limits<double>::infinity(), std::nan("")})
        QVERIFY_EXCEPTION_THROWN(importer.storeForward(id, forward), Exception);
    QCOMPARE(*ChainStore::seriesById(id)->forward, 92.85);
    for (const int other : {0, -1, 99, id + 1})
        QVERIFY(!importer.storeForward(other, 90.0));
}

void tst_chainstore::forwardNotStored()
{
    ChainImport importer(m_database->storage());
    importer.import(ChainText::read(twoExpiries));
    m_database->execute(
        "CREATE TRIGGER full BEFORE UPDATE ON securities BEGIN SELECT RAISE(ABORT, 'disk full'); END");
    m_database->execute(
        "CREATE TRIGGER full2 BEFORE DELETE ON securities BEGIN SELECT RAISE(ABORT, 'disk full'); END");
    m_database->execute(
        "CREATE TRIGGER full3 BEFORE INSERT ON securities BEGIN SELECT RAISE(ABORT, 'disk full'); END");
    const QStringList before = m_database->securities();
    QVERIFY_EXCEPTION_THROWN(
        importer.storeForward(ChainStore::series("AMB").at(0).futureIsinId, 90.0), Exception);
    QCOMPARE(m_database->securities(), before);
}

void tst_chainstore::storeOfNothing()
{
    m_database->close();
    QVERIFY(ChainStore::baseCodes().isEmpty());
    QVERIFY(ChainStore::series("AMB").isEmpty());
    QVERIFY(!ChainStore::seriesById(1));
    QVERIFY(ChainStore::options(1).quotes.isEmpty());
    QVERIFY(!ChainStore::chain("AMB"));
}

void tst_chainstore::storedSeries()
{
    ChainImport importer(m_database->storage());
    importer.import(ChainText::read(twoExpiries));
    importer.import(ChainText::read("type,strike,close\nC,50,1\n", "zinc_x.csv"));
    QCOMPARE(ChainStore::baseCodes(), QStringList({"AMB", "ZINC"}));
    const QVector<StoredSeries> series = ChainStore::series("AMB");
    QCOMPARE(series.size(), 2);
    QCOMPARE(series.at(0).baseCode, QStringLiteral("AMB"));
    QCOMPARE(series.at(0).expiry, QDate(2012, 11, 16));
    QCOMPARE(series.at(0).asOf, QDate(2012, 10, 1));
    QCOMPARE(*series.at(0).forward, 92.85);
    QCOMPARE(series.at(0).priceStep.toString(), QStringLiteral("0.05"));
    QCOMPARE(int(series.at(0).decimals), 2);
    QCOMPARE(series.at(0).optionCount, 2);
    QCOMPARE(series.at(1).optionCount, 1);
    const OptionSeries options = ChainStore::options(series.at(0).futureIsinId);
    QCOMPARE(options.expiry, QDate(2012, 11, 16));
    QCOMPARE(options.quotes.size(), 2);
    QVERIFY(!ChainStore::series("ZINC").first().asOf.isValid());
}

void tst_chainstore::foreignRows()
{
    ChainImport(m_database->storage()).import(ChainText::read(twoExpiries));
    const QStringList before = described("AMB");
    const int id = ChainStore::series("AMB").first().futureIsinId;
    const QVariantMap option = {{"stock_id", 1}, {"board_id", 1}, {"sectype", "O"}, {"fut_isin_id", id},
        {"option_type", "C"}, {"strike", QVariant::fromValue(decimal::fromString("77"))}};
    QVariantMap row = option;
    row["board_id"] = 2;
    m_database->addRow(row);
    row = option;
    row["option_type"] = "X";
    m_database->addRow(row);
    row = option;
    row["strike"] = QVariant();
    m_database->addRow(row);
    row = option;
    row["strike"] = QVariant::fromValue(decimal::zero);
    m_database->addRow(row);
    m_database->addRow({});
    m_database->addRow(
        {{"stock_id", 1}, {"board_id", 1}, {"sectype", "F"}, {"base_code", "AMB"}, {"isin_id", 70}});
    m_database->addRow({{"stock_id", 1}, {"board_id", 1}, {"sectype", "F"}, {"isin_id", 71}});
    QCOMPARE(described("AMB"), before);
    QCOMPARE(ChainStore::baseCodes(), QStringList{"AMB"});
    m_database->addRow(option);
    QCOMPARE(ChainStore::options(id).quotes.first().strike.toString(), QStringLiteral("77"));
}

PLOT2D_TEST_MAIN(tst_chainstore)
#include "tst_chainstore.moc"
