#include "storagefixture.h"
#include "support/testmain.h"

#include <QSqlDatabase>
#include <QSqlQuery>

#include <csignal>
#include <sys/resource.h>

using namespace SampleTable;

namespace {

const QString tableName = QStringLiteral("samples");

const Table::Writer addHundred = [](const Record& record, const Table::FieldAccess& field) {
    field(Id).setInt32(record.value(Id).toInt32() + 100);
};

/// While it lives, no file of the process grows beyond a size.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_oldHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limit{bytes, m_old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }

private:
    rlimit m_old{};
    void (*m_oldHandler)(int);
};

}

/// A storage that cannot write what waits.
class tst_sqlstoragefaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void storedRowIsGone();
    void lockedByOther();
    void overtakenByOther();
    void revisionAtItsEnd();
    void keysOutOfOrder();
    void fullDisk();
    void journalCannotBeMade();

private:
    std::unique_ptr<StorageFixture> m_fixture;
};

void tst_sqlstoragefaults::init()
{
    m_fixture = std::make_unique<StorageFixture>();
}

void tst_sqlstoragefaults::storedRowIsGone()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 1, 2));
    storage->commit();
    runSql(m_fixture->path(), QStringLiteral("DELETE FROM samples WHERE id = 1"));
    table.changeRows({table.record(0)}, addHundred);
    QVERIFY(thrownText([&] { storage->commit(); }).contains(m_fixture->path()));
    QVERIFY(storage->hasChanges());
    storage->rollback();
    QCOMPARE(ids(table), QVector<int>{2});
}

void tst_sqlstoragefaults::lockedByOther()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 1, 2));
    {
        QSqlDatabase other = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
        other.setDatabaseName(m_fixture->path());
        QVERIFY(other.open());
        QVERIFY(QSqlQuery(other).exec(QStringLiteral("BEGIN EXCLUSIVE")));
        const QString text = thrownText([&] { storage->commit(); });
        QVERIFY2(
            text.contains(m_fixture->path()) && text.contains(QLatin1String("in use")), qPrintable(text));
        QVERIFY(storage->hasChanges());
        QVERIFY(thrownText([&] { storage->rollback(); }).contains(QLatin1String("in use")));
        QCOMPARE(table.rowCount(), 2);
        SqlStorage late(StorageFixture::connection(m_fixture->path()));
        QVERIFY(thrownText([&] { late.open(); }).contains(QLatin1String("in use")));
        QVERIFY(QSqlQuery(other).exec(QStringLiteral("COMMIT")));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("other"));
    storage->commit();
    QCOMPARE(ids(*storedTable(m_fixture->path(), tableName)), (QVector<int>{1, 2}));
}

void tst_sqlstoragefaults::overtakenByOther()
{
    Table mine(tableName, columns());
    Table theirs(tableName, columns());
    const auto first = m_fixture->open();
    const auto second = m_fixture->open();
    first->attach(&mine);
    second->attach(&theirs);
    mine.appendRows(makeRows(mine, 1, 1));
    theirs.appendRows(makeRows(theirs, 2, 1));
    first->commit();
    // To the second the table was not stored at all when it was attached.
    QVERIFY(!thrownText([&] { second->commit(); }).isEmpty());
    second->rollback();
    QCOMPARE(ids(theirs), QVector<int>{1});
    theirs.appendRows(makeRows(theirs, 3, 1));
    second->commit();

    mine.appendRows(makeRows(mine, 4, 1));
    const QString text = thrownText([&] { first->commit(); });
    QVERIFY2(text.contains(m_fixture->path()) && text.contains(QLatin1String("another program")),
        qPrintable(text));
    QVERIFY(first->hasChanges());
    QCOMPARE(ids(mine), (QVector<int>{1, 4}));
    first->rollback();
    QCOMPARE(ids(mine), (QVector<int>{1, 3}));
}

void tst_sqlstoragefaults::revisionAtItsEnd()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 1, 1));
    storage->commit();
    runSql(m_fixture->path(), QStringLiteral("UPDATE host_tables SET revision = 9223372036854775807"));
    storage->attach(&table);
    for (int id = 2; id < 4; ++id) {
        table.appendRows(makeRows(table, id, 1));
        storage->commit();
        QCOMPARE(runSql(m_fixture->path(), QStringLiteral("SELECT revision FROM host_tables")),
            QVariantList{id - 1});
    }
    QCOMPARE(ids(*storedTable(m_fixture->path(), tableName)), (QVector<int>{1, 2, 3}));
}

void tst_sqlstoragefaults::keysOutOfOrder()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 1, 3));
    storage->commit();
    // Texts come behind all numbers.
    runSql(m_fixture->path(), QStringLiteral("UPDATE samples SET host_row_key = 'x' WHERE id = 2"));
    Table again(tableName, columns());
    const auto other = m_fixture->open();
    const QString text = thrownText([&] { other->attach(&again); });
    QVERIFY2(text.contains(m_fixture->path()) && text.contains(QLatin1String("damaged")), qPrintable(text));
    QCOMPARE(again.rowCount(), 0);
}

void tst_sqlstoragefaults::fullDisk()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 1, 10));
    storage->commit();
    table.appendRows(makeRows(table, 11, 5000));
    {
        const FileSizeLimit limit(100000);
        const QString text = thrownText([&] { storage->commit(); });
        QVERIFY2(text.contains(m_fixture->path()) && !text.contains(QLatin1Char('\n')), qPrintable(text));
        QVERIFY(storage->hasChanges());
        QCOMPARE(storedTable(m_fixture->path(), tableName)->rowCount(), 10);
    }
    storage->commit();
    QVERIFY(!storage->hasChanges());
    QCOMPARE(contentOf(*storedTable(m_fixture->path(), tableName)), contentOf(table));
}

void tst_sqlstoragefaults::journalCannotBeMade()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 1, 3));
    storage->commit();
    const QByteArray before = readFile(m_fixture->path());
    table.removeRows({table.record(0)});
    const QString journal = m_fixture->path() + QLatin1String("-journal");
    QVERIFY(QDir().mkpath(journal));
    QVERIFY(thrownText([&] { storage->commit(); }).contains(m_fixture->path()));
    QVERIFY(storage->hasChanges());
    QCOMPARE(readFile(m_fixture->path()), before);
    QVERIFY(QDir().rmdir(journal));
    storage->commit();
    QCOMPARE(ids(*storedTable(m_fixture->path(), tableName)), (QVector<int>{2, 3}));
}

PLOT2D_TEST_MAIN(tst_sqlstoragefaults)
#include "tst_sqlstoragefaults.moc"
