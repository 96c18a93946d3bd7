#include "../window/deskrun.h"
#include "../window/desktest.h"
#include "host/postgres/postgresserver.h"
#include "support/testmain.h"

#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/seriesselector.h>
#include <window/sharingstatus.h>

#include <chain/chaintables.h>
#include <database/sharedstorage.h>
#include <database/table.h>

#include <QComboBox>
#include <QDir>
#include <QProcess>
#include <QStatusBar>
#include <QTemporaryDir>

/// The window of one desk beside the programs of others, all on one server.
class tst_sharingdesks : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void tellsWhyThereIsNoDatabase_data();
    void tellsWhyThereIsNoDatabase();
    void importsOfOthersAppear();
    void theShownSeriesFollowsAnImport();
    void desksThatStartTogetherHaveTheSamplesOnce();
    void goesOnWithoutTheServer();
    void keepsWhatTheServerDidNotTake();

private:
    void open();
    DeskRun importElsewhere(const QByteArray& csv) const;
    static QByteArray csvOf(const char* baseCode, const char* call);
    static int rowsOf(const QString& baseCode);
    QStringList namesToChoose() const;

    std::unique_ptr<PostgresServer> m_server;
    QString m_address;
    int m_count = 0;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
};

namespace {

constexpr int patience = 60000; // ms

}

void tst_sharingdesks::initTestCase()
{
    const QString obstacle = PostgresServer::obstacle();
    if (!obstacle.isEmpty())
        QSKIP(qPrintable(obstacle));
    m_server = std::make_unique<PostgresServer>();
}

void tst_sharingdesks::init()
{
    PostgresServer::allowSlowConnections();
    m_folder = std::make_unique<QTemporaryDir>();
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_folder->filePath(QStringLiteral("data"))));
    if (!m_server->isRunning())
        m_server->start();
    const QString name = QStringLiteral("chains%1").arg(++m_count);
    m_server->createDatabase(name);
    m_address = m_server->address(name);
}

void tst_sharingdesks::cleanup()
{
    m_window.reset();
    m_data.reset();
}

void tst_sharingdesks::open()
{
    m_data = std::make_unique<DeskData>(m_address);
    m_data->import(DeskTest::quotedChain(QStringLiteral("OURS")), 0);
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    m_window->statusBar()->addPermanentWidget(new SharingStatus(*m_data->shared(), m_window.get()));
    m_window->showSeries(m_data->firstSeries(SeriesFacts()), SeriesFacts());
    m_window->resize(900, 600);
    m_window->show();
}

QByteArray tst_sharingdesks::csvOf(const char* baseCode, const char* call)
{
    QByteArray text = "underlying,quote_date,expiry,future_price,type,strike,bid,ask,settlement\n";
    for (const char* const strike : {"90", "100", "110"}) {
        for (const char* const type : {"C", "P"})
            text += QByteArray(baseCode) + ",2024-01-02,2024-04-02,100," + type + ',' + strike + ",5,15,"
                + call + '\n';
    }
    return text;
}

DeskRun tst_sharingdesks::importElsewhere(const QByteArray& csv) const
{
    const QString file = DeskTest::write(m_folder->filePath(QStringLiteral("chain.csv")), csv);
    return runDesk({QStringLiteral("--chain"), file, QStringLiteral("--database"), m_address,
                       QStringLiteral("--picture"), m_folder->filePath(QStringLiteral("picture.png"))},
        m_folder->path());
}

int tst_sharingdesks::rowsOf(const QString& baseCode)
{
    const Table& table = *ChainTables::find().securities;
    const int column = table.columnIndex(QStringLiteral("base_code"));
    int count = 0;
    for (const Record& row : table.masterIndex())
        count += row.field(column).toString() == baseCode ? 1 : 0;
    return count;
}

QStringList tst_sharingdesks::namesToChoose() const
{
    QStringList names;
    const QComboBox* const box = m_window->findChild<SeriesSelector*>()->findChild<QComboBox*>();
    for (int i = 0; i < box->count(); ++i)
        names << box->itemText(i);
    return names;
}

void tst_sharingdesks::tellsWhyThereIsNoDatabase_data()
{
    QTest::addColumn<QString>("database");
    QTest::addColumn<QString>("secret");
    QTest::addColumn<QString>("reason");
    const QString right = PostgresServer::password();
    QTest::newRow("no such database")
        << QStringLiteral("nowhere") << right << QStringLiteral("database \"nowhere\" does not exist");
    QTest::newRow("wrong password") << QStringLiteral("postgres") << QStringLiteral("Wr0ng")
                                    << QStringLiteral("password authentication failed");
    QTest::newRow("no address") << QStringLiteral("x?nonsense=") + right << right
                                << QStringLiteral("is not valid");
}

void tst_sharingdesks::tellsWhyThereIsNoDatabase()
{
    QFETCH(QString, database);
    QFETCH(QString, secret);
    QFETCH(QString, reason);
    const QString address = m_server->address(QString(), PostgresServer::traderName(), secret) + database;
    const DeskRun run = runDesk({QStringLiteral("--database"), address, QStringLiteral("--picture"),
                                    m_folder->filePath(QStringLiteral("picture.png"))},
        m_folder->path());
    QVERIFY2(run.exitCode == 2, run.errors.constData());
    QCOMPARE(run.errorLines().size(), 1);
    QVERIFY2(QString::fromUtf8(run.errors).contains(reason), run.errors.constData());
    QVERIFY(!QString::fromUtf8(run.errors).contains(secret));
    QVERIFY(!QFile::exists(m_folder->filePath(QStringLiteral("picture.png"))));
}

void tst_sharingdesks::importsOfOthersAppear()
{
    open();
    const DeskRun run = importElsewhere(csvOf("THEIRS", "12"));
    QCOMPARE(run.trouble(), QByteArray());
    QTRY_VERIFY_WITH_TIMEOUT(namesToChoose().contains(QStringLiteral("THEIRS")), patience);
    QCOMPARE(rowsOf(QStringLiteral("THEIRS")), 7);
    QCOMPARE(m_window->shownSeries()->data.baseCode, QStringLiteral("OURS"));
    // Once more is no more.
    QCOMPARE(importElsewhere(csvOf("THEIRS", "13")).trouble(), QByteArray());
    QTRY_VERIFY_WITH_TIMEOUT(m_data->shared()->problem().isEmpty(), patience);
    QCOMPARE(rowsOf(QStringLiteral("THEIRS")), 7);
}

void tst_sharingdesks::theShownSeriesFollowsAnImport()
{
    open();
    const int before = m_data->firstSeries(SeriesFacts());
    QTRY_COMPARE_WITH_TIMEOUT(m_data->shared()->waitingCommits(), 0, patience);
    QCOMPARE(importElsewhere(csvOf("OURS", "11")).trouble(), QByteArray());
    QTRY_COMPARE_WITH_TIMEOUT(rowsOf(QStringLiteral("OURS")), 7, patience);
    QTRY_VERIFY_WITH_TIMEOUT(
        m_window->shownSeries() && m_window->shownSeries()->data.options.quotes.size() == 6, patience);
    QCOMPARE(m_window->shownSeries()->data.options.quotes.first().settlement, decimal::fromUnits(11, 0));
    // The instruments are the same ones.
    QCOMPARE(m_data->firstSeries(SeriesFacts()), before);
    // Also where another desk gives it another id.
    Table& table = *ChainTables::find().securities;
    m_server->runSql(QStringLiteral("chains%1").arg(m_count),
        QStringLiteral("UPDATE host_sharing SET revision = revision + 1; "
                       "UPDATE securities SET isin_id = isin_id + 1000, fut_isin_id = fut_isin_id + 1000, "
                       "host_row_revision = (SELECT revision FROM host_sharing); "
                       "SELECT pg_notify('host_changes', (SELECT revision::text FROM host_sharing))"));
    QTRY_VERIFY_WITH_TIMEOUT(table.record(0).value(3).toInt32() > 1000, patience);
    QTRY_VERIFY_WITH_TIMEOUT(m_window->shownSeries().has_value(), patience);
    QTRY_COMPARE_WITH_TIMEOUT(m_window->shownSeries()->data.options.quotes.size(), 6, patience);
}

void tst_sharingdesks::desksThatStartTogetherHaveTheSamplesOnce()
{
    std::vector<std::unique_ptr<QProcess>> desks;
    for (int i = 0; i < 3; ++i) {
        desks.push_back(std::make_unique<QProcess>());
        desks.back()->start(QStringLiteral(OPTIONDESK_PROGRAM),
            {QStringLiteral("--database"), m_address, QStringLiteral("--picture"),
                m_folder->filePath(QStringLiteral("picture%1.png").arg(i))});
    }
    for (const auto& desk : desks) {
        QVERIFY(desk->waitForFinished(patience));
        const QByteArray errors = desk->readAllStandardError();
        QVERIFY2(desk->exitCode() == 0 && errors.isEmpty(), errors.constData());
    }
    m_data = std::make_unique<DeskData>(m_address);
    QSet<QString> names;
    QSet<qint32> ids;
    const Table& table = *ChainTables::find().securities;
    const int name = table.columnIndex(QStringLiteral("short_name"));
    const int isinId = table.columnIndex(QStringLiteral("isin_id"));
    for (const Record& row : table.masterIndex()) {
        names.insert(row.field(name).toString());
        ids.insert(row.value(isinId).toInt32());
    }
    QVERIFY(table.rowCount() > 100);
    QCOMPARE(names.size(), table.rowCount());
    QCOMPARE(ids.size(), table.rowCount());
    for (const StoredSeries& series : m_data->series())
        QVERIFY2(series.optionCount > 0, qPrintable(series.baseCode));
}

void tst_sharingdesks::goesOnWithoutTheServer()
{
    open();
    const SharingStatus& status = *m_window->findChild<SharingStatus*>();
    QTRY_COMPARE_WITH_TIMEOUT(m_data->shared()->waitingCommits(), 0, patience);
    QVERIFY2(!status.text().contains(QLatin1String("No connection")), qPrintable(status.text()));
    m_server->kill();
    QTRY_VERIFY_WITH_TIMEOUT(status.text().startsWith(QLatin1String("No connection to ")), patience);
    QVERIFY(m_window->shownSeries().has_value());
    const QString file = DeskTest::write(m_folder->filePath(QStringLiteral("new.csv")), csvOf("LATER", "12"));
    m_window->importChain(file);
    QCOMPARE(m_window->shownSeries()->data.baseCode, QStringLiteral("LATER"));
    QTRY_VERIFY_WITH_TIMEOUT(status.text().endsWith(QLatin1String("1 change waits")), patience);
    for (const QLabel* const label : m_window->findChildren<QLabel*>()) {
        QVERIFY(!label->text().contains(PostgresServer::password()));
        QVERIFY(!label->toolTip().contains(PostgresServer::password()));
    }
    QTRY_VERIFY_WITH_TIMEOUT(status.width() >= status.sizeHint().width(), patience);
    m_server->start();
    QTRY_VERIFY_WITH_TIMEOUT(!status.text().contains(QLatin1String("No connection")), patience);
    QTRY_COMPARE_WITH_TIMEOUT(m_data->shared()->waitingCommits(), 0, patience);
    QCOMPARE(m_server->runSql(QStringLiteral("chains%1").arg(m_count),
                 QStringLiteral("SELECT count(*) FROM securities WHERE base_code = 'LATER'")),
        QStringList{QStringLiteral("7")});
    // And others are heard again.
    QCOMPARE(importElsewhere(csvOf("THEIRS", "12")).trouble(), QByteArray());
    QTRY_VERIFY_WITH_TIMEOUT(namesToChoose().contains(QStringLiteral("THEIRS")), patience);
}

void tst_sharingdesks::keepsWhatTheServerDidNotTake()
{
    open();
    QTRY_COMPARE_WITH_TIMEOUT(m_data->shared()->waitingCommits(), 0, patience);
    m_server->kill();
    m_data->import(DeskTest::quotedChain(QStringLiteral("UNSENT")), 0);
    m_window.reset();
    const QString reason = m_data->close();
    QVERIFY2(reason.contains(QLatin1String("could not be stored")), qPrintable(reason));
    QVERIFY(!reason.contains(PostgresServer::password()));
    m_data.reset();
    m_server->start();
    m_data = std::make_unique<DeskData>(m_address);
    QCOMPARE(rowsOf(QStringLiteral("UNSENT")), 2 * DeskTest::strikeCount + 1);
}

PLOT2D_TEST_MAIN(tst_sharingdesks)
#include "tst_sharingdesks.moc"
