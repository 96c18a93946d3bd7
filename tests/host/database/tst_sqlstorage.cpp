#include "storagefixture.h"
#include "support/testmain.h"

#include <QSqlDatabase>

using namespace SampleTable;

namespace {

const QString tableName = QStringLiteral("samples");

const Table::Writer addHundred = [](const Record& record, const Table::FieldAccess& field) {
    field(Id).setInt32(record.value(Id).toInt32() + 100);
};

}

class tst_sqlstorage : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void openTwice();
    void notOpen();
    void unknownDriver();
    void inMemory();
    void connectionsAreRemoved();
    void attachOfNewTableClearsIt();
    void hasChanges();
    void rollback();
    void severalTables();
    void uncommittedChangesAreGone();
    void attachAgain();
    void twoTablesOfOneName();
    void destroyedTable();

private:
    std::unique_ptr<StorageFixture> m_fixture;
};

void tst_sqlstorage::init()
{
    m_fixture = std::make_unique<StorageFixture>();
}

void tst_sqlstorage::openTwice()
{
    SqlStorage storage(StorageFixture::connection(m_fixture->path()));
    QVERIFY(!storage.isOpen());
    storage.open();
    QVERIFY(storage.isOpen());
    storage.open();
    QVERIFY(storage.isOpen());
    QCOMPARE(m_fixture->files(), QStringList{QStringLiteral("host.db")});
}

void tst_sqlstorage::notOpen()
{
    SqlStorage storage(StorageFixture::connection(m_fixture->path()));
    Table table(tableName, columns());
    QVERIFY(!storage.hasChanges());
    QVERIFY(thrownText([&] { storage.attach(&table); }).contains(m_fixture->path()));
    QVERIFY(thrownText([&] { storage.commit(); }).contains(m_fixture->path()));
    QVERIFY(thrownText([&] { storage.rollback(); }).contains(m_fixture->path()));
    QCOMPARE(m_fixture->files(), QStringList());
}

void tst_sqlstorage::unknownDriver()
{
    SqlStorage::Connection connection;
    connection.driver = QStringLiteral("QNONE");
    connection.databaseName = QStringLiteral("desk");
    connection.hostName = QStringLiteral("server");
    SqlStorage storage(connection);
    const QString text = thrownText([&] { storage.open(); });
    QVERIFY(text.contains(QLatin1String("server/desk")) && text.contains(QLatin1String("QNONE")));
    QVERIFY(!storage.isOpen());
}

void tst_sqlstorage::inMemory()
{
    SqlStorage storage(StorageFixture::connection(QStringLiteral(":memory:")));
    storage.open();
    Table table(tableName, columns());
    storage.attach(&table);
    table.appendRows(makeRows(table, 1, 3));
    storage.commit();
    table.clear();
    storage.rollback();
    QCOMPARE(ids(table), (QVector<int>{1, 2, 3}));
}

void tst_sqlstorage::connectionsAreRemoved()
{
    const int before = QSqlDatabase::connectionNames().size();
    {
        const auto first = m_fixture->open();
        const auto second = m_fixture->open();
        QCOMPARE(QSqlDatabase::connectionNames().size(), before + 2);
        SqlStorage broken(StorageFixture::connection(m_fixture->path(QStringLiteral("no/such.db"))));
        QVERIFY(!thrownText([&] { broken.open(); }).isEmpty());
        QVERIFY(!broken.isOpen());
        QCOMPARE(QSqlDatabase::connectionNames().size(), before + 2);
    }
    QCOMPARE(QSqlDatabase::connectionNames().size(), before);
}

void tst_sqlstorage::attachOfNewTableClearsIt()
{
    const auto storage = m_fixture->open();
    Table table(tableName, columns());
    table.appendRows(makeRows(table, 1, 3));
    const QSignalSpy resets(&table, SIGNAL(reset()));
    storage->attach(&table);
    QCOMPARE(table.rowCount(), 0);
    QCOMPARE(resets.size(), 1);
    QVERIFY(!storage->hasChanges());
    storage->commit();
}

void tst_sqlstorage::hasChanges()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    QVERIFY(!storage->hasChanges());
    table.appendRows(makeRows(table, 1, 2));
    QVERIFY(storage->hasChanges());
    storage->commit();
    QVERIFY(!storage->hasChanges());
    table.changeRows({table.record(0)}, addHundred);
    QVERIFY(storage->hasChanges());
    storage->commit();
    QVERIFY(!storage->hasChanges());
    table.removeRows({table.record(0)});
    QVERIFY(storage->hasChanges());
    storage->commit();
    QVERIFY(!storage->hasChanges());
    table.clear();
    QVERIFY(storage->hasChanges());
    storage->rollback();
    QVERIFY(!storage->hasChanges());
    QCOMPARE(ids(table), QVector<int>{2});
}

void tst_sqlstorage::rollback()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 1, 3));
    storage->commit();
    const auto before = contentOf(table);
    const QSignalSpy resets(&table, SIGNAL(reset()));
    storage->rollback();
    QCOMPARE(resets.size(), 0);
    const Record removed = table.record(0);
    table.changeRows({removed}, addHundred);
    table.removeRows({removed});
    table.insertRows(1, makeRows(table, 7, 2));
    storage->rollback();
    QCOMPARE(resets.size(), 1);
    QCOMPARE(contentOf(table), before);
    QVERIFY(!storage->hasChanges());
    QCOMPARE(removed.value(Id).toInt32(), 101);
    table.appendRows(makeRows(table, 8, 1));
    storage->commit();
    QCOMPARE(ids(*storedTable(m_fixture->path(), tableName)), (QVector<int>{1, 2, 3, 8}));
}

void tst_sqlstorage::severalTables()
{
    Table first(tableName, columns());
    Table second(QStringLiteral("others"), columns());
    const auto storage = m_fixture->open();
    storage->attach(&first);
    storage->attach(&second);
    first.appendRows(makeRows(first, 1, 2));
    second.appendRows(makeRows(second, 5, 1));
    storage->commit();
    first.clear();
    second.appendRows(makeRows(second, 6, 1));
    storage->commit();
    QCOMPARE(storedTable(m_fixture->path(), tableName)->rowCount(), 0);
    QCOMPARE(ids(*storedTable(m_fixture->path(), QStringLiteral("others"))), (QVector<int>{5, 6}));
}

void tst_sqlstorage::uncommittedChangesAreGone()
{
    Table table(tableName, columns());
    {
        const auto storage = m_fixture->open();
        storage->attach(&table);
        table.appendRows(makeRows(table, 1, 2));
        storage->commit();
        table.appendRows(makeRows(table, 3, 2));
    }
    QCOMPARE(table.rowCount(), 4);
    QCOMPARE(ids(*storedTable(m_fixture->path(), tableName)), (QVector<int>{1, 2}));
}

void tst_sqlstorage::attachAgain()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 1, 2));
    storage->commit();
    table.appendRows(makeRows(table, 3, 1));
    storage->attach(&table);
    QCOMPARE(ids(table), (QVector<int>{1, 2}));
    QVERIFY(!storage->hasChanges());
    table.appendRows(makeRows(table, 4, 1));
    storage->commit();
    QCOMPARE(ids(*storedTable(m_fixture->path(), tableName)), (QVector<int>{1, 2, 4}));
}

void tst_sqlstorage::twoTablesOfOneName()
{
    Table first(tableName, columns());
    Table second(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&first);
    QVERIFY(thrownText([&] { storage->attach(&second); }).contains(tableName));
}

void tst_sqlstorage::destroyedTable()
{
    const auto storage = m_fixture->open();
    {
        Table table(tableName, columns());
        storage->attach(&table);
        table.appendRows(makeRows(table, 1, 2));
        storage->commit();
        table.appendRows(makeRows(table, 3, 2));
        QVERIFY(storage->hasChanges());
    }
    QVERIFY(!storage->hasChanges());
    storage->commit();
    storage->rollback();
    Table again(tableName, columns());
    storage->attach(&again);
    QCOMPARE(ids(again), (QVector<int>{1, 2}));
}

PLOT2D_TEST_MAIN(tst_sqlstorage)
#include "tst_sqlstorage.moc"
