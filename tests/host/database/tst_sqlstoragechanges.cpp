#include "storagefixture.h"
#include "support/testmain.h"

#include <functional>
#include <random>

using namespace SampleTable;

namespace {

const QString tableName = QStringLiteral("samples");

const Table::Writer addHundred = [](const Record& record, const Table::FieldAccess& field) {
    field(Id).setInt32(record.value(Id).toInt32() + 100);
};

}

/// Whatever happens to a table between two commits.
class tst_sqlstoragechanges : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void orderIsKept();
    void oftenInsertedAtOnePlace();
    void rowsThatComeBack();
    void resets();
    void rowsThatComeBackAfterAReset();
    void matchesTableOverManyCommits_data();
    void matchesTableOverManyCommits();
    void listenersThatChangeTheTable();
    void commitWithinASignal();
    void manyRows();
    void insertedAndRemovedIsNoChange();
    void changesOfTheLastMomentAreStored();

private:
    std::unique_ptr<StorageFixture> m_fixture;
};

void tst_sqlstoragechanges::init()
{
    m_fixture = std::make_unique<StorageFixture>();
}

void tst_sqlstoragechanges::orderIsKept()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 10, 3));
    storage->commit();
    table.insertRows(0, makeRows(table, 20, 2));
    table.insertRows(3, makeRows(table, 30, 2));
    table.appendRows(makeRows(table, 40, 1));
    storage->commit();
    table.removeRows({table.record(1)});
    table.insertRows(1, makeRows(table, 50, 1));
    storage->commit();
    QCOMPARE(ids(table), (QVector<int>{20, 50, 10, 30, 31, 11, 12, 40}));
    QCOMPARE(ids(*storedTable(m_fixture->path(), tableName)), ids(table));
}

void tst_sqlstoragechanges::oftenInsertedAtOnePlace()
{
    // More often than there are keys between two neighbours, halving them each time.
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 1, 3));
    storage->commit();
    for (int i = 0; i < 50; ++i) {
        table.insertRows(1, makeRows(table, 100 + i, 1));
        table.changeRows({table.record(0)}, addHundred);
        storage->commit();
    }
    QCOMPARE(table.rowCount(), 53);
    QCOMPARE(contentOf(*storedTable(m_fixture->path(), tableName)), contentOf(table));
}

void tst_sqlstoragechanges::rowsThatComeBack()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 1, 4));
    storage->commit();
    const Record first = table.record(0);
    table.removeRows({first});
    table.insertRows(2, {first});
    storage->commit();
    QCOMPARE(ids(*storedTable(m_fixture->path(), tableName)), (QVector<int>{2, 3, 1, 4}));
}

void tst_sqlstoragechanges::resets()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 1, 4));
    storage->commit();
    table.resetRows({table.record(3), makeRow(table, 9), table.record(0)});
    table.appendRows(makeRows(table, 20, 1));
    table.changeRows({table.record(1)}, addHundred);
    table.removeRows({table.record(2)});
    storage->commit();
    QCOMPARE(ids(table), (QVector<int>{4, 109, 20}));
    QCOMPARE(contentOf(*storedTable(m_fixture->path(), tableName)), contentOf(table));
    table.clear();
    storage->commit();
    QCOMPARE(storedTable(m_fixture->path(), tableName)->rowCount(), 0);
}

void tst_sqlstoragechanges::rowsThatComeBackAfterAReset()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 1, 3));
    storage->commit();
    const Record first = table.record(0);
    table.resetRows({table.record(2)});
    storage->commit();
    table.insertRows(0, {first});
    storage->commit();
    QCOMPARE(ids(*storedTable(m_fixture->path(), tableName)), (QVector<int>{1, 3}));
}

void tst_sqlstoragechanges::matchesTableOverManyCommits_data()
{
    QTest::addColumn<quint64>("seed");
    for (quint64 seed = 1; seed <= 4; ++seed)
        QTest::addRow("seed %d", int(seed)) << seed;
}

void tst_sqlstoragechanges::matchesTableOverManyCommits()
{
    QFETCH(quint64, seed);
    std::mt19937_64 engine(seed);
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    QVector<QVariantList> committed;
    const auto anyRow = [&] { return table.record(int(engine() % quint64(table.rowCount() + 1))); };
    for (int step = 0; step < 400; ++step) {
        const quint64 kind = engine() % 20;
        if (kind < 6)
            table.insertRows(int(engine() % 50), makeRows(table, step * 10, int(engine() % 5)));
        else if (kind < 10)
            table.removeRows({anyRow(), anyRow()});
        else if (kind < 16)
            table.changeRows({anyRow(), anyRow()}, addHundred);
        else if (kind < 17)
            table.resetRows({anyRow(), anyRow(), makeRow(table, step)});
        else if (kind < 18) {
            storage->rollback();
            QVERIFY2(contentOf(table) == committed, qPrintable(QString::number(step)));
        } else {
            storage->commit();
            committed = contentOf(table);
            QVERIFY2(contentOf(*storedTable(m_fixture->path(), tableName)) == committed,
                qPrintable(QString::number(step)));
        }
    }
}

void tst_sqlstoragechanges::listenersThatChangeTheTable()
{
    // The listener comes before the storage, so the storage hears of its changes first.
    Table table(tableName, columns());
    std::function<void(const QVector<Record>&)> reaction;
    const auto react = [&](const QVector<Record>& records) {
        if (const auto action = std::exchange(reaction, nullptr))
            action(records);
    };
    connect(&table, &Table::rowsInserted, this, react);
    connect(&table, &Table::rowsRemoved, this, react);
    connect(&table, &Table::reset, this, [&] { react({}); });
    const auto storage = m_fixture->open();
    storage->attach(&table);

    const auto requireStored = [&] {
        storage->commit();
        QCOMPARE(contentOf(*storedTable(m_fixture->path(), tableName)), contentOf(table));
    };
    reaction = [&](const QVector<Record>& records) { table.removeRows({records[0]}); };
    table.appendRows(makeRows(table, 1, 3));
    requireStored();
    reaction = [&](const QVector<Record>& records) { table.insertRows(0, records); };
    table.removeRows({table.record(1)});
    QCOMPARE(ids(table), (QVector<int>{3, 2}));
    requireStored();
    reaction = [&](const QVector<Record>&) { table.insertRows(1, makeRows(table, 7, 1)); };
    table.clear();
    requireStored();
    reaction = [&](const QVector<Record>&) { table.insertRows(0, makeRows(table, 8, 2)); };
    storage->attach(&table);
    QVERIFY(storage->hasChanges());
    QCOMPARE(ids(table), (QVector<int>{8, 9, 7}));
    requireStored();
    reaction = [&](const QVector<Record>&) { table.resetRows(makeRows(table, 20, 2)); };
    storage->attach(&table);
    QCOMPARE(ids(table), (QVector<int>{20, 21}));
    requireStored();
}

void tst_sqlstoragechanges::commitWithinASignal()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    const auto commit = [&] { storage->commit(); };
    connect(&table, &Table::rowsInserted, this, commit);
    connect(&table, &Table::rowsRemoved, this, commit);
    storage->attach(&table);
    table.appendRows(makeRows(table, 1, 3));
    table.insertRows(1, makeRows(table, 5, 2));
    table.removeRows({table.record(0), table.record(3)});
    storage->commit();
    QCOMPARE(contentOf(*storedTable(m_fixture->path(), tableName)), contentOf(table));
}

void tst_sqlstoragechanges::manyRows()
{
    constexpr int count = 100000;
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 0, count));
    QElapsedTimer timer;
    timer.start();
    storage->commit();
    const qint64 written = timer.restart();
    const auto stored = storedTable(m_fixture->path(), tableName);
    const qint64 read = timer.restart();
    QCOMPARE(contentOf(*stored), contentOf(table));
    timer.restart();
    table.changeRows({table.record(count / 2)}, addHundred);
    storage->commit();
    const qint64 changed = timer.elapsed();
    qInfo("%d rows of six fields: written in %lld ms, read in %lld ms, then one changed in %lld ms", count,
        written, read, changed);
    QVERIFY(written < 30000 && read < 30000);
}

void tst_sqlstoragechanges::insertedAndRemovedIsNoChange()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 1, 2));
    table.changeRows({table.record(0)}, addHundred);
    table.removeRows({table.record(0), table.record(1)});
    QVERIFY(!storage->hasChanges());
}

void tst_sqlstoragechanges::changesOfTheLastMomentAreStored()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows(makeRows(table, 10, 2));
    int announced = 0;
    connect(storage.get(), &SqlStorage::aboutToCommit, &table, [&] {
        ++announced;
        table.changeRows({table.record(0)}, addHundred);
    });
    storage->commit();
    QCOMPARE(announced, 1);
    QCOMPARE(ids(*storedTable(m_fixture->path(), tableName)), (QVector<int>{110, 11}));
    QVERIFY(!storage->hasChanges());
}

PLOT2D_TEST_MAIN(tst_sqlstoragechanges)
#include "tst_sqlstoragechanges.moc"
