#include "chain/chainimport.h"
#include "chain/chainstore.h"
#include "desk/chain/chaindatabase.h"
#include "desk/chain/chaintext.h"
#include "support/testmain.h"

#include <database/database.h>
#include <database/exception.h>
#include <database/icore.h>
#include <database/table.h>
#include <directory/boarddirectory.h>
#include <directory/securitydirectory.h>

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

class tst_chainimport : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_database = std::make_unique<ChainDatabase>(); }
    void cleanup() { m_database.reset(); }

    void tables();
    void rows();
    void unknownDays();
    void directories();
    void ids();
    void replaces();
    void keepsOthers();
    void board();
    void survivesReopening();
    void refusedChains_data();
    void refusedChains();
    void failedCommit_data();
    void failedCommit();
    void noStorage();

private:
    std::unique_ptr<ChainDatabase> m_database;
};

void tst_chainimport::tables()
{
    QCOMPARE(ChainTables::make().securities, m_database->tables().securities);
    QCOMPARE(ChainTables::find().boards, m_database->tables().boards);
    QVERIFY(m_database->tables().securities->columnIndex("fut_isin_id") >= 0);
    QVERIFY(m_database->tables().boards->columnIndex("is_anonym") >= 0);
    ICore::instance()->database()->dropTable("securities");
    QVERIFY(!ChainTables::find().securities);
    QVERIFY(ChainTables::find().boards);
}

void tst_chainimport::rows()
{
    ChainImport(m_database->storage()).import(ChainText::read(twoExpiries));
    QCOMPARE(m_database->tables().securities->rowCount(), 5);
    const auto fields
        = [this](int position, const char* names) { return m_database->fields(position, names); };
    const char* const common
        = "stock_id board_id base_code sess_id price_step decimals volat_min volat_max lasttime";
    for (int position = 0; position < 5; ++position)
        QCOMPARE(fields(position, common), QStringLiteral("1 1 AMB 20121001 0.05 2 - - -"));
    const char* const identity
        = "sectype isin_id sec_id fut_isin_id expdate cur_kotir_real option_type strike";
    QCOMPARE(fields(0, identity), QStringLiteral("F 1 1 - 2012.11.16 00:00:00.000 92.85 - -"));
    QCOMPARE(fields(1, identity), QStringLiteral("O 2 2 1 2012.11.16 00:00:00.000 - C 90"));
    QCOMPARE(fields(2, identity), QStringLiteral("O 3 3 1 2012.11.16 00:00:00.000 - P 92.5"));
    QCOMPARE(fields(3, identity), QStringLiteral("F 4 4 - 2012.12.14 00:00:00.000 93.1 - -"));
    QCOMPARE(fields(4, identity), QStringLiteral("O 5 5 4 2012.12.14 00:00:00.000 - C 90"));
    const char* const prices = "bid ask last settlement volume open_interest volat";
    QCOMPARE(fields(0, prices), QStringLiteral("- - - - - - -"));
    QCOMPARE(fields(1, prices), QStringLiteral("4.1 4.3 4.2 4.25 10 100 0.3"));
    QCOMPARE(fields(2, prices), QStringLiteral("- 2.3 - - - - -"));
    QCOMPARE(fields(2, "short_name"), QStringLiteral("AMB 2012-11-16 P 92.5"));
    QCOMPARE(m_database->boards(), QStringList{"1 1 1 Option chains"});
    QVERIFY(!m_database->storage().hasChanges());
}

void tst_chainimport::unknownDays()
{
    ChainImport(m_database->storage()).import(ChainText::read("type,strike,close\nC,50,1\n"));
    for (int position = 0; position < 2; ++position)
        QCOMPARE(m_database->fields(position, "expdate cur_kotir_real sess_id"), QStringLiteral("- - 1"));
    QCOMPARE(described("TEST"), QStringList({"TEST - step 1 decimals 0", "- -", "C 50 s=1"}));
}

void tst_chainimport::directories()
{
    ChainImport(m_database->storage()).import(ChainText::read(twoExpiries));
    QVERIFY(BoardDirectory::i()->isAnonymById(chainStockId, chainBoardId));
    const QVector<StoredSeries> series = ChainStore::series("AMB");
    const Record future = SecurityDirectory::i()->recordByIsinId(series.at(0).futureIsinId, chainBoardId);
    QVERIFY(future == m_database->tables().securities->record(0));
    QCOMPARE(SecurityDirectory::i()->decimalsById(chainStockId, chainBoardId, 1), 2);
}

void tst_chainimport::ids()
{
    m_database->addRow(
        {{"stock_id", 7}, {"board_id", 9}, {"isin_id", 40}, {"sec_id", 1000LL}, {"sectype", "F"}});
    m_database->addRow(
        {{"stock_id", 7}, {"board_id", 9}, {"isin_id", 3}, {"fut_isin_id", 50}, {"sec_id", 5LL}});
    ChainImport(m_database->storage()).import(ChainText::read(twoExpiries));
    QCOMPARE(m_database->fields(2, "isin_id sec_id"), QStringLiteral("51 1001"));

    m_database->addRow({{"isin_id", std::numeric_limits<int>::max()}});
    m_database->storage().commit();
    const QStringList before = m_database->securities();
    QVERIFY_EXCEPTION_THROWN(
        ChainImport(m_database->storage()).import(ChainText::read(twoExpiries)), Exception);
    QCOMPARE(m_database->securities(), before);
}

void tst_chainimport::replaces()
{
    ChainImport importer(m_database->storage());
    importer.import(ChainText::read(twoExpiries));
    const int oldId = ChainStore::series("AMB").at(0).futureIsinId;
    importer.import(
        ChainText::read("underlying,date,expiry,type,strike,close\nAMB,2012-10-02,2012-11-16,P,95,3.5\n"));
    QCOMPARE(described("AMB"),
        QStringList({"AMB 2012-10-02 step 0.05 decimals 2", "2012-11-16 -", "P 95 s=3.5",
            "2012-12-14 93.099999999999994", "C 90 b=5.1 a=5.3 s=5.2 v=0 i=0 iv=0.31"}));
    QCOMPARE(m_database->tables().securities->rowCount(), 4);
    QVERIFY(ChainStore::series("AMB").at(0).futureIsinId > oldId);

    // A series of no expiry is replaced by one of no expiry.
    importer.import(ChainText::read("type,strike,close\nC,50,1\nC,51,1\n"));
    importer.import(ChainText::read("type,strike,close\nC,52,1\n"));
    QCOMPARE(ChainText::describeOptions(*ChainStore::chain("TEST")), QStringList{"C 52 s=1"});
}

void tst_chainimport::keepsOthers()
{
    m_database->addRow({{"stock_id", 2}, {"board_id", 1}, {"base_code", "AMB"}, {"sectype", "F"}});
    m_database->addRow({{"stock_id", 1}, {"board_id", 1}, {"base_code", "amb"}, {"sectype", "F"}});
    const QStringList others = m_database->securities();
    ChainImport(m_database->storage()).import(ChainText::read(twoExpiries));
    ChainImport(m_database->storage()).import(ChainText::read(twoExpiries));
    QCOMPARE(m_database->securities().mid(0, 2), others);
    QCOMPARE(m_database->tables().securities->rowCount(), 7);
}

void tst_chainimport::board()
{
    Table* const boards = m_database->tables().boards;
    const Record row = boards->createRow();
    for (const char* column : {"stock_id", "board_id"})
        boards->value(row, boards->columnIndex(QLatin1String(column))).setInt32(1);
    boards->value(row, boards->columnIndex("is_anonym")).setInt32(0);
    boards->value(row, boards->columnIndex("name")).setText("Main");
    boards->appendRows({row});
    ChainImport(m_database->storage()).import(ChainText::read(twoExpiries));
    ChainImport(m_database->storage()).import(ChainText::read(twoExpiries));
    QCOMPARE(ChainDatabase::rowsOf(boards), QStringList{"1 1 1 Main"});
}

void tst_chainimport::survivesReopening()
{
    ChainImport(m_database->storage()).import(ChainText::read(twoExpiries));
    const QStringList securities = m_database->securities();
    const QStringList boards = m_database->boards();
    m_database->close();
    QVERIFY(ChainStore::baseCodes().isEmpty());
    m_database->open();
    QCOMPARE(m_database->securities(), securities);
    QCOMPARE(m_database->boards(), boards);
}

void tst_chainimport::refusedChains_data()
{
    QTest::addColumn<QString>("what");

    for (const char* what :
        {"base code", "series", "quotes", "step", "decimals", "forward", "infinite forward"})
        QTest::newRow(what) << QString::fromLatin1(what);
}

void tst_chainimport::refusedChains()
{
    QFETCH(QString, what);

    ChainImport importer(m_database->storage());
    importer.import(ChainText::read(twoExpiries));
    const QStringList before = m_database->securities();
    OptionChain chain = ChainText::read(twoExpiries);
    if (what == "base code")
        chain.baseCode.clear();
    else if (what == "series")
        chain.series.clear();
    else if (what == "quotes")
        chain.series.last().quotes.clear();
    else if (what == "step")
        chain.priceStep = decimal::zero;
    else if (what == "decimals")
        chain.decimals = 19;
    else if (what == "forward")
        chain.series.last().forward = -1.0;
    else
        chain.series.last().forward = std::numeric_limits<double>::infinity();
    QVERIFY_EXCEPTION_THROWN(importer.import(chain), Exception);
    QCOMPARE(m_database->securities(), before);
    QVERIFY(!m_database->storage().hasChanges());
}

void tst_chainimport::failedCommit_data()
{
    QTest::addColumn<QString>("trigger");
    QTest::addColumn<bool>("hasChain");

    const QString abort = "CREATE TRIGGER full BEFORE %1 BEGIN SELECT RAISE(ABORT, 'disk full'); END";
    QTest::newRow("first import") << abort.arg("INSERT ON securities WHEN NEW.strike IS NOT NULL") << false;
    QTest::newRow("boards") << abort.arg("INSERT ON boards") << false;
    QTest::newRow("second import, insert") << abort.arg("INSERT ON securities WHEN NEW.isin_id > 8") << true;
    QTest::newRow("second import, delete") << abort.arg("DELETE ON securities") << true;
}

void tst_chainimport::failedCommit()
{
    QFETCH(QString, trigger);
    QFETCH(bool, hasChain);

    ChainImport importer(m_database->storage());
    OptionChain chain = ChainText::read(twoExpiries);
    if (hasChain) {
        importer.import(chain);
    } else {
        // The first commit makes the SQL tables.
        m_database->addRow({{"stock_id", 5}});
        m_database->storage().commit();
        const Record row = m_database->tables().boards->createRow();
        m_database->tables().boards->value(row, 0).setInt32(5);
        m_database->tables().boards->appendRows({row});
        m_database->storage().commit();
    }
    const QStringList securities = m_database->securities();
    const QStringList boards = m_database->boards();
    m_database->execute(trigger);
    chain.series.first().quotes.first().bid = decimal::fromString("1");
    QVERIFY_EXCEPTION_THROWN(importer.import(chain), Exception);
    QVERIFY(!m_database->storage().hasChanges());
    QCOMPARE(m_database->securities(), securities);
    QCOMPARE(m_database->boards(), boards);
    m_database->close();
    m_database->open();
    QCOMPARE(m_database->securities(), securities);
    QCOMPARE(m_database->boards(), boards);

    m_database->execute("DROP TRIGGER full");
    ChainImport(m_database->storage()).import(chain);
    QCOMPARE(described("AMB"), ChainText::describe(chain));
}

void tst_chainimport::noStorage()
{
    SqlStorage closed{SqlStorage::Connection()};
    QVERIFY_EXCEPTION_THROWN(ChainImport(closed).import(ChainText::read(twoExpiries)), Exception);
}

PLOT2D_TEST_MAIN(tst_chainimport)
#include "tst_chainimport.moc"
