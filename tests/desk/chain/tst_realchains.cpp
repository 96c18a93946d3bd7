#include "chain/chainimport.h"
#include "chain/chainreader.h"
#include "chain/chainstore.h"
#include "chain/chaintables.h"
#include "desk/chain/chaintext.h"
#include "support/testmain.h"

#include <database/database.h>
#include <database/icore.h>
#include <database/sqlstorage.h>

#include <QFileInfo>

namespace {

const QString crudeFile = QStringLiteral("wti_options_on_futures_2012-10-01.csv");
const QString indexFile = QStringLiteral("dax_index_options_2012-02-10.csv");

QString pathOf(const QString& name)
{
    return QStringLiteral(PLOT2D_REALDATA_DIR "/") + name;
}

int countOf(const OptionChain& chain, OptionType type)
{
    int count = 0;
    for (const OptionSeries& series : chain.series)
        count += int(std::count_if(series.quotes.begin(), series.quotes.end(),
            [type](const OptionQuote& quote) { return quote.type == type; }));
    return count;
}

}

/// Public data, not part of the project.
class tst_realchains : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void crude();
    void index();
    void stored_data();
    void stored();
};

void tst_realchains::crude()
{
    if (!QFileInfo::exists(pathOf(crudeFile)))
        QSKIP(qPrintable(pathOf(crudeFile) + " is absent"));
    const OptionChain chain = readChain(pathOf(crudeFile));
    QCOMPARE(ChainText::describe(chain).first(), QStringLiteral("WTI 2012-10-01 step 0.01 decimals 2"));
    QCOMPARE(chain.series.size(), 1);
    QVERIFY(!chain.series.first().expiry.isValid());
    QVERIFY(!chain.series.first().forward);
    QCOMPARE(countOf(chain, OptionType::Call), 165);
    QCOMPARE(countOf(chain, OptionType::Put), 167);
    const QStringList lines = ChainText::describeOptions(chain);
    for (const char* line : {"C 50 s=42.85 v=0 i=7 iv=0.6287884", "C 68 s=24.9 v=0 i=750 iv=0.4128809",
             "P 139 s=46.19 v=0 i=50 iv=0.4930566"})
        QVERIFY2(lines.contains(QLatin1String(line)), line);
    QCOMPARE(lines.first(), QStringLiteral("P 20 s=0.01 v=0 i=1 iv=1.5000463"));
    QCOMPARE(chain.series.first().quotes.last().strike.toString(), QStringLiteral("400"));
}

void tst_realchains::index()
{
    if (!QFileInfo::exists(pathOf(indexFile)))
        QSKIP(qPrintable(pathOf(indexFile) + " is absent"));
    const OptionChain chain = readChain(pathOf(indexFile));
    QCOMPARE(ChainText::describe(chain).first(), QStringLiteral("DAX 2012-02-10 step 0.1 decimals 1"));
    QStringList expiries;
    QSet<QPair<QDate, QString>> strikes;
    for (const OptionSeries& series : chain.series) {
        expiries.append(series.expiry.toString(Qt::ISODate));
        for (const OptionQuote& quote : series.quotes)
            strikes.insert({series.expiry, quote.strike.toString()});
    }
    QCOMPARE(expiries,
        QStringList({"2012-03-16", "2012-06-15", "2012-09-21", "2012-12-21", "2013-06-21", "2013-12-20",
            "2014-06-20", "2014-12-19", "2015-12-18", "2016-12-16"}));
    QCOMPARE(strikes.size(), 628);
    QCOMPARE(ChainText::describeOptions(chain).first(), QStringLiteral("C 500 s=6193.5"));
    QCOMPARE(ChainText::describeOptions(chain).last(), QStringLiteral("P 9000 s=2425.7"));
    const OptionQuote& put = chain.series.first().quotes.at(1);
    QCOMPARE(put.strike.toString() + ' ' + put.settlement->toString(), QStringLiteral("500 0.1"));
}

void tst_realchains::stored_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("crude") << crudeFile;
    QTest::newRow("index") << indexFile;
}

void tst_realchains::stored()
{
    QFETCH(QString, name);
    if (!QFileInfo::exists(pathOf(name)))
        QSKIP(qPrintable(pathOf(name) + " is absent"));
    const OptionChain chain = readChain(pathOf(name));
    SqlStorage::Connection connection;
    connection.databaseName = QStringLiteral(":memory:");
    SqlStorage storage(connection);
    storage.open();
    const ChainTables tables = ChainTables::make();
    storage.attach(tables.securities);
    storage.attach(tables.boards);
    ChainImport(storage).import(chain);
    const std::optional<OptionChain> back = ChainStore::chain(chain.baseCode);
    QVERIFY(back);
    QCOMPARE(ChainText::describe(*back), ChainText::describe(chain));
    ICore::instance()->database()->dropTable("securities");
    ICore::instance()->database()->dropTable("boards");
}

PLOT2D_TEST_MAIN(tst_realchains)
#include "tst_realchains.moc"
