#include "../database/storagefixture.h"
#include "sharingtest.h"
#include "support/testmain.h"

namespace {

/// What Qt and this program say while it lives.
class Messages {
public:
    Messages()
    {
        s_text.clear();
        m_before = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
            s_text += text + QLatin1Char('\n');
        });
    }
    ~Messages() { qInstallMessageHandler(m_before); }
    static QString text() { return s_text; }

private:
    static QString s_text;
    QtMessageHandler m_before = nullptr;
};

QString Messages::s_text;

}

/// Addresses that lead nowhere, and databases in which something is not as it should be.
class tst_sharedfaults : public SharingTest {
    Q_OBJECT

private Q_SLOTS:
    void cannotBeOpened_data();
    void cannotBeOpened();
    void passwordFromTheEnvironment();
    void databaseOfSomethingElse();
    void olderLayout_data();
    void olderLayout();
    void badTableAtTheStart_data();
    void badTableAtTheStart();
    void badTableWhileRunning_data();
    void badTableWhileRunning();
    void anotherDatabaseInItsPlace();
    void namesThatCannotBeStored_data();
    void namesThatCannotBeStored();
    void writingThatIsNotAllowedWaits();

private:
    static QString failure(const QString& address)
    {
        return thrownText([&] { const SharingDesk desk(address); });
    }
    void fill() const;
};

void tst_sharedfaults::cannotBeOpened_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("secret");
    QTest::addColumn<QString>("other");
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("reason");
    const QString trader = PostgresServer::traderName();
    const QString right = PostgresServer::password();
    QTest::newRow("wrong password") << trader << QStringLiteral("Wr0ng-Secret") << QString() << QString()
                                    << QStringLiteral("password authentication failed for user \"trader\"");
    QTest::newRow("no password") << trader << QString() << QString() << QString()
                                 << QStringLiteral("no password supplied");
    QTest::newRow("unknown user") << QStringLiteral("nobody1") << right << QString() << QString()
                                  << QStringLiteral("password authentication failed for user \"nobody1\"");
    QTest::newRow("no such database") << trader << right << QStringLiteral("nowhere") << QString()
                                      << QStringLiteral("database \"nowhere\" does not exist");
    QTest::newRow("no server") << trader << right << QString() << QStringLiteral("127.0.0.1:1")
                               << QStringLiteral("Connection refused");
    QTest::newRow("no host") << trader << right << QString() << QStringLiteral("nowhere.invalid")
                             << QStringLiteral("could not translate host name");
    QTest::newRow("no socket") << trader << right << QString() << QStringLiteral("%2Fnonexistent")
                               << QStringLiteral("No such file or directory");
}

void tst_sharedfaults::cannotBeOpened()
{
    QFETCH(QString, user);
    QFETCH(QString, secret);
    QFETCH(QString, other);
    QFETCH(QString, host);
    QFETCH(QString, reason);
    QString text = server().address(other.isEmpty() ? database() : other, user, secret);
    if (!host.isEmpty()) {
        text.replace(QString::fromLatin1(QUrl::toPercentEncoding(server().folder())), host);
        // Nobody answers there, so the program's own limit is none for the machine.
        qunsetenv("PGCONNECT_TIMEOUT");
    }
    const Messages messages;
    const QString told = failure(text);
    QVERIFY2(told.startsWith(QLatin1String("Database \"")), qPrintable(told));
    QVERIFY2(told.contains(reason), qPrintable(told));
    QVERIFY(!told.contains(QLatin1Char('\n')));
    QCOMPARE(Messages::text(), QString());
    if (!secret.isEmpty())
        QVERIFY(!told.contains(secret));
}

void tst_sharedfaults::passwordFromTheEnvironment()
{
    qputenv("PGPASSWORD", PostgresServer::password().toUtf8());
    QFile service(server().folder() + QLatin1String("/services"));
    QVERIFY(service.open(QIODevice::WriteOnly));
    service.write(QStringLiteral("[desk]\nhost=%1\nuser=%2\ndbname=%3\n")
                      .arg(server().folder(), PostgresServer::traderName(), database())
                      .toUtf8());
    service.close();
    qputenv("PGSERVICEFILE", QFile::encodeName(service.fileName()));
    const QString withoutPassword
        = failure(server().address(database(), PostgresServer::traderName(), QString()));
    const QString withService = failure(QStringLiteral("postgresql://?service=desk"));
    const QString unknownService = failure(QStringLiteral("postgresql://?service=nothing"));
    qunsetenv("PGPASSWORD");
    qunsetenv("PGSERVICEFILE");
    QCOMPARE(withoutPassword, QString());
    QCOMPARE(withService, QString());
    QVERIFY2(
        unknownService.contains(QLatin1String("service \"nothing\" not found")), qPrintable(unknownService));
}

void tst_sharedfaults::databaseOfSomethingElse()
{
    sql(QStringLiteral("CREATE TABLE invoices (id INTEGER)"));
    QVERIFY(failure(address()).contains(QLatin1String("it is a database of something else")));
    QCOMPARE(server().runSql(
                 database(), QStringLiteral("SELECT count(*) FROM pg_tables WHERE schemaname = 'public'")),
        QStringList{QStringLiteral("1")});
}

void tst_sharedfaults::olderLayout_data()
{
    QTest::addColumn<QString>("damage");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* name, const char* damage, const char* reason) {
        QTest::newRow(name) << QString::fromLatin1(damage) << QString::fromLatin1(reason);
    };
    row("older format", "UPDATE host_meta SET value = '0' WHERE name = 'format'",
        "its format \"0\" is not known");
    row("no format", "DELETE FROM host_meta WHERE name = 'format'", "its format \"\" is not known");
    row("not shared", "UPDATE host_meta SET value = 'host tables' WHERE name = 'kind'",
        "it is a database of something else");
    row("empty description", "DELETE FROM host_meta", "it is a database of something else");
    row("description of another shape", "ALTER TABLE host_meta RENAME COLUMN value TO val",
        "column \"value\" does not exist");
    row("no counters", "DROP TABLE host_sharing", "relation \"host_sharing\" does not exist");
    row("empty counters", "DELETE FROM host_sharing", "its counters are gone");
    row("no tables", "DROP TABLE host_tables", "relation \"host_tables\" does not exist");
    row("no rows", "DROP TABLE sample", "relation \"sample\" does not exist");
}

void tst_sharedfaults::olderLayout()
{
    QFETCH(QString, damage);
    QFETCH(QString, reason);
    fill();
    sql(damage);
    const Messages messages;
    const QString told = failure(address());
    QVERIFY2(told.contains(reason), qPrintable(told));
    QVERIFY(!told.contains(QLatin1Char('\n')));
    QCOMPARE(Messages::text(), QString());
}

void tst_sharedfaults::badTableAtTheStart_data()
{
    QTest::addColumn<QString>("damage");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* name, const char* damage, const char* reason) {
        QTest::newRow(name) << QString::fromLatin1(damage) << QString::fromLatin1(reason);
    };
    row("a number that is too large",
        "ALTER TABLE sample ALTER id TYPE BIGINT; UPDATE sample SET id = 3000000000",
        "a stored value of \"id\" in \"sample\" cannot be read");
    row("a text in place of a number", "ALTER TABLE sample ALTER id TYPE TEXT",
        "a stored value of \"id\" in \"sample\" cannot be read");
    row("a truth in place of a number", "ALTER TABLE sample ALTER id TYPE BOOLEAN USING true",
        "a stored value of \"id\" in \"sample\" cannot be read");
    row("a text that is no decimal", "UPDATE sample SET price = 'dear'",
        "a stored value of \"price\" in \"sample\" cannot be read");
    row("a text that is no double", "UPDATE sample SET ratio = ''",
        "a stored value of \"ratio\" in \"sample\" cannot be read");
    row("a number in place of a text", "ALTER TABLE sample ALTER name TYPE DOUBLE PRECISION USING 1",
        "a stored value of \"name\" in \"sample\" cannot be read");
    row("no key",
        "ALTER TABLE sample DROP CONSTRAINT sample_pkey; ALTER TABLE sample ALTER host_row_key DROP NOT "
        "NULL; "
        "UPDATE sample SET host_row_key = NULL",
        "a stored row of \"sample\" has no key or place");
    row("no place",
        "ALTER TABLE sample ALTER host_row_order DROP NOT NULL; UPDATE sample SET host_row_order = NULL",
        "a stored row of \"sample\" has no key or place");
    row("a column is gone", "ALTER TABLE sample DROP COLUMN ratio", "column \"ratio\" does not exist");
    row("no column of keys", "ALTER TABLE sample DROP COLUMN host_row_key",
        "column \"host_row_key\" does not exist");
    row("another type in the description", "UPDATE host_columns SET type = 5 WHERE column_name = 'id'",
        "the stored column \"id\" of \"sample\" is of another type");
    row("an unknown type in the description", "UPDATE host_columns SET type = 77 WHERE column_name = 'id'",
        "the stored column \"id\" of \"sample\" is of another type");
}

void tst_sharedfaults::badTableAtTheStart()
{
    QFETCH(QString, damage);
    QFETCH(QString, reason);
    fill();
    sql(damage);
    Table table(QStringLiteral("sample"), SampleTable::columns());
    table.appendRows(SampleTable::makeRows(table, 77, 1));
    SharedStorage storage{PostgresAddress(address())};
    storage.open();
    const QString told = thrownText([&] { storage.attach(&table); });
    QVERIFY2(told.contains(reason), qPrintable(told));
    QCOMPARE(SampleTable::ids(table), QVector<int>{77});
}

void tst_sharedfaults::badTableWhileRunning_data()
{
    badTableAtTheStart_data();
    QTest::newRow("the table is gone")
        << QStringLiteral("DROP TABLE sample") << QStringLiteral("does not exist");
    QTest::newRow("nulls") << QStringLiteral(
        "UPDATE sample SET id = NULL, count = NULL, ratio = NULL, price = NULL, "
        "name = NULL, time = NULL WHERE id = 1")
                           << QString();
}

void tst_sharedfaults::badTableWhileRunning()
{
    QFETCH(QString, damage);
    QFETCH(QString, reason);
    fill();
    SharingDesk desk(address());
    QCOMPARE(desk.table.rowCount(), 5);
    const QVector<QVariantList> before = desk.content();
    sql(damage);
    const bool isGone = damage.startsWith(QLatin1String("DROP"));
    if (!isGone)
        sql(QStringLiteral("UPDATE sample SET host_row_revision = 1000"));
    // As another desk would announce it.
    sql(QStringLiteral("UPDATE host_sharing SET revision = 1000; NOTIFY host_changes, '1000'"));
    if (reason.isEmpty()) {
        QTRY_VERIFY_WITH_TIMEOUT(desk.table.record(0).value(SampleTable::Id).isNull(), patience);
        QVERIFY(desk.isSettled());
        return;
    }
    if (reason.contains(QLatin1String("of another type"))) {
        // Only who connects looks at the description.
        sql(QStringLiteral("SELECT pg_terminate_backend(pid) FROM pg_stat_activity "
                           "WHERE datname = current_database() AND pid <> pg_backend_pid()"));
    }
    QTRY_VERIFY_WITH_TIMEOUT(desk.storage.problem().contains(reason), patience);
    QCOMPARE(desk.content(), before);
    desk.append(10, 1);
    desk.storage.commit();
    QCOMPARE(desk.storage.waitingCommits(), 1);
}

void tst_sharedfaults::anotherDatabaseInItsPlace()
{
    fill();
    SharingDesk desk(address());
    desk.set(1, SampleTable::Ratio, 3.0);
    server().runSql(
        QStringLiteral("postgres"), QStringLiteral("DROP DATABASE %1 WITH (FORCE)").arg(database()));
    QTRY_VERIFY_WITH_TIMEOUT(!desk.storage.problem().isEmpty(), patience);
    server().createDatabase(database());
    QTRY_VERIFY_WITH_TIMEOUT(desk.storage.problem().contains(QLatin1String("its tables are gone")), patience);
    fill();
    QTRY_VERIFY_WITH_TIMEOUT(
        desk.storage.problem().contains(QLatin1String("another one has taken its place")), patience);
    QCOMPARE(desk.table.rowCount(), 5);
    desk.storage.commit();
    QCOMPARE(desk.storage.waitingCommits(), 1);
}

void tst_sharedfaults::namesThatCannotBeStored_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("column");
    QTest::newRow("long table") << QString(64, QLatin1Char('t')) << QStringLiteral("c");
    QTest::newRow("long column") << QStringLiteral("t") << QString(32, QChar(0xe4));
    QTest::newRow("own table") << QStringLiteral("host_removed") << QStringLiteral("c");
    QTest::newRow("own column") << QStringLiteral("t") << QStringLiteral("host_row_order");
    QTest::newRow("no name") << QString() << QStringLiteral("c");
    QTest::newRow("system column") << QStringLiteral("t") << QStringLiteral("ctid");
}

void tst_sharedfaults::namesThatCannotBeStored()
{
    QFETCH(QString, table);
    QFETCH(QString, column);
    Table stored(table, {{column, FieldType::Int32, 0}});
    SharedStorage storage{PostgresAddress(address())};
    storage.open();
    QVERIFY(!thrownText([&] { storage.attach(&stored); }).isEmpty());
}

void tst_sharedfaults::writingThatIsNotAllowedWaits()
{
    fill();
    SharingDesk desk(address());
    sql(QStringLiteral("REVOKE ALL ON sample FROM %1; ALTER TABLE sample OWNER TO admin; "
                       "GRANT SELECT ON sample TO %1")
            .arg(PostgresServer::traderName()));
    desk.append(10, 2);
    desk.storage.commit();
    QTRY_VERIFY_WITH_TIMEOUT(
        desk.storage.problem().contains(QLatin1String("permission denied for table sample")), patience);
    QCOMPARE(desk.storage.waitingCommits(), 1);
    sql(QStringLiteral("GRANT ALL ON sample TO %1").arg(PostgresServer::traderName()));
    QTRY_VERIFY_WITH_TIMEOUT(desk.isSettled(), patience);
    QCOMPARE(sql(QStringLiteral("SELECT count(*) FROM sample")), QStringList{QStringLiteral("7")});
}

void tst_sharedfaults::fill() const
{
    SharingDesk desk(address());
    desk.append(1, 5);
    desk.storage.commit();
    QTRY_VERIFY_WITH_TIMEOUT(desk.isSettled(), patience);
}

PLOT2D_TEST_MAIN(tst_sharedfaults)
#include "tst_sharedfaults.moc"
