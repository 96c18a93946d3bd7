#include "../database/storagefixture.h"
#include "sharingtest.h"
#include "support/testmain.h"

/// Several storages that write the same rows.
class tst_sharedconflicts : public SharingTest {
    Q_OBJECT

private Q_SLOTS:
    void fieldsOfTheSameRowAreMerged();
    void theLastWriterOfAFieldWins();
    void theSameRowFromTwoDesksIsStoredOnce();
    void rowsOfTheSameKeyInOneCommitStayApart();
    void aReplacedRowComesAnew();
    void aRenamedRowIsAnotherRow();
    void aChangeOfARemovedRowHasNoEffect();
    void rowsWithoutAKeyAreRowsOfTheirOwn();
    void newsDuringUncommittedChanges();
    void allDesksHaveTheSameOrder();
    void numbersAreGivenOnce();
};

void tst_sharedconflicts::fieldsOfTheSameRowAreMerged()
{
    const auto a = desk();
    const auto b = desk();
    a->append(1, 1);
    a->storage.commit();
    requireSame(*a, *b);
    a->set(1, SampleTable::Count, qlonglong(11));
    b->set(1, SampleTable::Ratio, 0.25);
    a->storage.commit();
    b->storage.commit();
    settle(*a);
    settle(*b);
    QTRY_COMPARE_WITH_TIMEOUT(a->row(1).value(SampleTable::Ratio).toDouble(), 0.25, patience);
    QTRY_COMPARE_WITH_TIMEOUT(b->row(1).value(SampleTable::Count).toInt64(), 11, patience);
    requireSame(*a, *b);
}

void tst_sharedconflicts::theLastWriterOfAFieldWins()
{
    const auto a = desk();
    const auto b = desk();
    a->append(1, 1);
    a->storage.commit();
    requireSame(*a, *b);
    a->set(1, SampleTable::Count, qlonglong(11));
    a->storage.commit();
    settle(*a);
    // Committed without having seen the other's.
    b->set(1, SampleTable::Count, qlonglong(22));
    b->storage.commit();
    settle(*b);
    QCOMPARE(b->row(1).value(SampleTable::Count).toInt64(), 22);
    QTRY_COMPARE_WITH_TIMEOUT(a->row(1).value(SampleTable::Count).toInt64(), 22, patience);
}

void tst_sharedconflicts::theSameRowFromTwoDesksIsStoredOnce()
{
    const auto a = desk();
    const auto b = desk();
    a->append(1, 40);
    b->append(1, 40);
    b->table.changeRows({b->table.record(0)},
        [](const Record&, const Table::FieldAccess& field) { field(SampleTable::Ratio).setDouble(7.0); });
    a->storage.commit();
    settle(*a);
    b->storage.commit();
    settle(*b);
    requireSame(*b, *a);
    QCOMPARE(a->table.rowCount(), 40);
    QCOMPARE(a->row(1).value(SampleTable::Ratio).toDouble(), 7.0);
}

void tst_sharedconflicts::rowsOfTheSameKeyInOneCommitStayApart()
{
    const auto a = desk();
    const auto b = desk();
    for (const auto* one : {a.get(), b.get()}) {
        auto& its = const_cast<SharingDesk&>(*one);
        its.append(1, 1);
        its.append(1, 1);
        its.storage.commit();
        settle(its);
    }
    QTRY_COMPARE_WITH_TIMEOUT(SampleTable::ids(a->table), (QVector<int>{1, 1}), patience);
    requireSame(*a, *b);
    // Another one at a later time takes the place of the first.
    a->append(1, 1);
    a->storage.commit();
    settle(*a);
    QCOMPARE(a->table.rowCount(), 2);
    requireSame(*a, *b);
}

void tst_sharedconflicts::aReplacedRowComesAnew()
{
    const auto a = desk();
    const auto b = desk();
    a->append(1, 3);
    a->storage.commit();
    requireSame(*a, *b);
    const Record old = b->row(1);
    a->remove(1);
    a->append(1, 1);
    a->set(1, SampleTable::Ratio, 8.0);
    a->storage.commit();
    QTRY_COMPARE_WITH_TIMEOUT(SampleTable::ids(b->table), (QVector<int>{2, 3, 1}), patience);
    QVERIFY(!old.isInTable());
    requireSame(*a, *b);
    QCOMPARE(sql(QStringLiteral("SELECT count(*) FROM host_removed")), QStringList{"0"});
}

void tst_sharedconflicts::aRenamedRowIsAnotherRow()
{
    const auto a = desk();
    const auto b = desk();
    a->append(1, 3);
    a->storage.commit();
    requireSame(*a, *b);
    a->set(2, SampleTable::Name, QStringLiteral("another"));
    a->storage.commit();
    QTRY_COMPARE_WITH_TIMEOUT(
        b->row(2).value(SampleTable::Name).toText(), QStringLiteral("another"), patience);
    settle(*a);
    b->append(2, 1);
    b->storage.commit();
    settle(*b);
    QTRY_COMPARE_WITH_TIMEOUT(a->table.rowCount(), 4, patience);
}

void tst_sharedconflicts::aChangeOfARemovedRowHasNoEffect()
{
    const auto a = desk();
    const auto b = desk();
    a->append(1, 2);
    a->storage.commit();
    requireSame(*a, *b);
    a->remove(1);
    a->storage.commit();
    settle(*a);
    b->set(1, SampleTable::Ratio, 8.0);
    b->storage.commit();
    settle(*b);
    QTRY_COMPARE_WITH_TIMEOUT(SampleTable::ids(b->table), QVector<int>{2}, patience);
    requireSame(*a, *b);
}

void tst_sharedconflicts::rowsWithoutAKeyAreRowsOfTheirOwn()
{
    const auto a = desk();
    const auto b = desk();
    for (SharingDesk* one : {a.get(), b.get()}) {
        const Record row = SampleTable::makeRow(one->table, 1);
        one->table.value(row, SampleTable::Name).setNull();
        one->table.appendRows({row});
        one->storage.commit();
    }
    QTRY_COMPARE_WITH_TIMEOUT(a->table.rowCount(), 2, patience);
    requireSame(*a, *b);
}

void tst_sharedconflicts::newsDuringUncommittedChanges()
{
    const auto a = desk();
    const auto b = desk();
    a->append(1, 4);
    a->storage.commit();
    requireSame(*a, *b);
    // Of four rows a field is changed, one is taken out.
    a->set(1, SampleTable::Ratio, 1.5);
    a->set(2, SampleTable::Ratio, 1.5);
    a->remove(3);
    b->set(1, SampleTable::Ratio, 2.5);
    b->set(3, SampleTable::Ratio, 2.5);
    b->remove(4);
    b->storage.commit();
    QTRY_COMPARE_WITH_TIMEOUT(SampleTable::ids(a->table), (QVector<int>{1, 2}), patience);
    QCOMPARE(a->row(1).value(SampleTable::Ratio).toDouble(), 2.5);
    QCOMPARE(a->row(2).value(SampleTable::Ratio).toDouble(), 1.5);
    a->storage.rollback();
    requireSame(*b, *a);
    QCOMPARE(SampleTable::ids(a->table), (QVector<int>{1, 2, 3}));
}

void tst_sharedconflicts::allDesksHaveTheSameOrder()
{
    const auto a = desk();
    const auto b = desk();
    const auto c = desk();
    for (int round = 0; round < 20; ++round) {
        a->append(1000 + 3 * round, 3);
        a->storage.commit();
        b->append(2000 + 3 * round, 3);
        b->storage.commit();
        c->append(3000 + 3 * round, 3);
        c->storage.commit();
    }
    for (const SharingDesk* one : {a.get(), b.get(), c.get()})
        settle(*one);
    QTRY_COMPARE_WITH_TIMEOUT(a->table.rowCount(), 180, patience);
    requireSame(*a, *b);
    requireSame(*a, *c);
    const auto late = desk();
    QCOMPARE(late->content(), a->content());
}

void tst_sharedconflicts::numbersAreGivenOnce()
{
    QSet<qint32> all;
    int count = 0;
    for (int round = 0; round < 3; ++round) {
        const auto a = desk();
        const auto b = desk();
        for (SharingDesk* one : {a.get(), b.get()}) {
            QVector<qint32> numbers;
            const auto take = [&] { numbers += one->storage.takeNumbers(30000); };
            QCOMPARE(thrownText(take), QString());
            QTRY_VERIFY_WITH_TIMEOUT(numbers.size() == 60000 || thrownText(take).isEmpty(), patience);
            count += numbers.size();
            for (const qint32 number : numbers) {
                QVERIFY(number > 0);
                all.insert(number);
            }
        }
    }
    QCOMPARE(count, 3 * 2 * 60000);
    QCOMPARE(all.size(), count);
    // What was left over is used again.
    QVERIFY(sql(QStringLiteral("SELECT next_number FROM host_sharing")).first().toInt() < 12 * 65536);
}

PLOT2D_TEST_MAIN(tst_sharedconflicts)
#include "tst_sharedconflicts.moc"
