#include "../database/storagefixture.h"
#include "sharingtest.h"
#include "support/testmain.h"

#include <cmath>
#include <limits>

namespace {

const QVector<double>& extremeDoubles()
{
    static const QVector<double> all{0.0, -0.0, 0.1, 1e308, 5e-324, std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()};
    return all;
}

/// New rows, not yet in the table, with the values that are lost most easily on the way.
QVector<Record> extremeRows(Table& table)
{
    const QStringList texts{QString(), QStringLiteral("it's \"quoted\" \\ ; $1 ? %"), QStringLiteral("äöü €"),
        QString::fromUtf8("\xF0\x9F\x93\x88"), QStringLiteral("line\nbreak\ttab"), QStringLiteral("x|y\\|"),
        QString(QChar(QChar::ByteOrderMark)) + QLatin1Char('m'), QString(5000, QLatin1Char('k'))};
    QVector<Record> rows;
    for (int i = 0; i < texts.size(); ++i) {
        rows.append(SampleTable::makeRow(table, i));
        table.value(rows.last(), SampleTable::Ratio).setDouble(extremeDoubles()[i]);
        table.value(rows.last(), SampleTable::Name).setText(texts[i]);
    }
    table.value(rows[0], SampleTable::Id).setInt32(std::numeric_limits<qint32>::min());
    table.value(rows[1], SampleTable::Count).setInt64(std::numeric_limits<qint64>::min());
    table.value(rows[2], SampleTable::Price).setDecimal(decimal::minimum);
    table.value(rows[3], SampleTable::Time).setMoment(std::numeric_limits<qint64>::max());
    for (int column = 0; column < table.columnCount(); ++column)
        table.value(rows[4], column).setNull();
    return rows;
}

}

/// Several storages on one server that stays.
class tst_sharedstorage : public SharingTest {
    Q_OBJECT

private Q_SLOTS:
    void anEmptyDatabaseIsSetUp();
    void desksThatStartTogetherSetItUpOnce();
    void rowsComeToAllDesks();
    void signalsAreThoseOfLocalChanges();
    void onlyWhatHasChangedIsWritten();
    void valuesComeBackBitForBit();
    void whatIsNotCommittedStaysHere();
    void rollbackRestoresRowsAndOrder();
    void aColumnThatIsNewIsAdded();
    void manyRows();
    void aTableThatGoes();
};

void tst_sharedstorage::anEmptyDatabaseIsSetUp()
{
    const auto a = desk();
    QCOMPARE(a->table.rowCount(), 0);
    QVERIFY(!a->storage.hasChanges());
    QCOMPARE(sql(QStringLiteral("SELECT value FROM host_meta WHERE name = 'kind'")),
        QStringList{QStringLiteral("shared host tables")});
}

void tst_sharedstorage::desksThatStartTogetherSetItUpOnce()
{
    std::vector<std::unique_ptr<QThread>> threads;
    QAtomicInt opened;
    for (int i = 0; i < 6; ++i) {
        threads.emplace_back(QThread::create([&] {
            const SharingDesk one(address());
            opened.ref();
        }));
        threads.back()->start();
    }
    for (const auto& thread : threads)
        QVERIFY(thread->wait(60000));
    QCOMPARE(opened.loadRelaxed(), 6);
}

void tst_sharedstorage::rowsComeToAllDesks()
{
    const auto a = desk();
    const auto b = desk();
    a->append(1, 5);
    a->storage.commit();
    requireSame(*a, *b);
    QCOMPARE(SampleTable::ids(b->table), (QVector<int>{1, 2, 3, 4, 5}));

    b->set(3, SampleTable::Price, QVariant::fromValue(decimal::fromUnits(777, 2)));
    b->remove(2);
    b->append(6, 2);
    b->storage.commit();
    QTRY_COMPARE_WITH_TIMEOUT(SampleTable::ids(a->table), (QVector<int>{1, 3, 4, 5, 6, 7}), patience);
    QCOMPARE(a->row(3).value(SampleTable::Price).toDecimal(), decimal::fromUnits(777, 2));
    settle(*b);
    const auto late = desk();
    QCOMPARE(late->content(), a->content());
}

void tst_sharedstorage::signalsAreThoseOfLocalChanges()
{
    const auto a = desk();
    const auto b = desk();
    QSignalSpy inserted(&b->table, SIGNAL(rowsInserted(QVector<Record>)));
    QSignalSpy changed(&b->table, SIGNAL(rowsChanged(QVector<Record>)));
    QSignalSpy removed(&b->table, SIGNAL(rowsRemoved(QVector<Record>)));
    QSignalSpy reset(&b->table, SIGNAL(reset()));
    a->append(1, 3);
    a->storage.commit();
    QTRY_COMPARE_WITH_TIMEOUT(inserted.count(), 1, patience);
    QCOMPARE(inserted[0][0].value<QVector<Record>>().size(), 3);
    const Record second = b->row(2);

    a->set(2, SampleTable::Count, qlonglong(5));
    a->storage.commit();
    QTRY_COMPARE_WITH_TIMEOUT(changed.count(), 1, patience);
    QCOMPARE(changed[0][0].value<QVector<Record>>(), QVector<Record>{second});
    QCOMPARE(second.value(SampleTable::Count).toInt64(), 5);

    a->remove(2);
    a->storage.commit();
    QTRY_COMPARE_WITH_TIMEOUT(removed.count(), 1, patience);
    QCOMPARE(removed[0][0].value<QVector<Record>>(), QVector<Record>{second});
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(reset.count(), 0);
    QVERIFY(!b->storage.hasChanges());
}

void tst_sharedstorage::onlyWhatHasChangedIsWritten()
{
    const auto a = desk();
    a->append(1, 2);
    a->storage.commit();
    settle(*a);
    QSignalSpy status(&a->storage, SIGNAL(statusChanged()));
    // Lent and taken back.
    a->set(1, SampleTable::Count, qlonglong(5));
    QVERIFY(a->storage.hasChanges());
    a->set(1, SampleTable::Count, qlonglong(10000000000));
    QVERIFY(!a->storage.hasChanges());
    a->storage.commit();
    QCOMPARE(a->storage.waitingCommits(), 0);
    QCOMPARE(status.count(), 0);
    a->set(1, SampleTable::Id, 9);
    a->storage.commit();
    settle(*a);
    QCOMPARE(
        server().runSql(database(),
            QStringLiteral("SELECT id, (host_row_revision > (SELECT min(host_row_revision) FROM sample)) "
                           "FROM sample ORDER BY host_row_order")),
        (QStringList{QStringLiteral("9|t"), QStringLiteral("2|f")}));
}

void tst_sharedstorage::valuesComeBackBitForBit()
{
    const auto a = desk();
    const auto b = desk();
    const QVector<Record> rows = extremeRows(a->table);
    a->table.appendRows(rows);
    const QVector<QVariantList> before = a->content();
    a->storage.commit();
    QTRY_COMPARE_WITH_TIMEOUT(b->table.rowCount(), rows.size(), patience);
    QCOMPARE(b->content(), before);
    settle(*a);
    QCOMPARE(a->content(), before);
    // As changes of fields as well.
    a->table.changeRows(rows, [&](const Record& row, const Table::FieldAccess& field) {
        const int next = (rows.indexOf(row) + 1) % rows.size();
        field(SampleTable::Ratio).setDouble(extremeDoubles()[next]);
        field(SampleTable::Count).setNull();
    });
    const QVector<QVariantList> after = a->content();
    a->storage.commit();
    QTRY_COMPARE_WITH_TIMEOUT(b->content(), after, patience);

    a->set(1, SampleTable::Price, QVariant());
    a->table.changeRows({rows[5]}, [](const Record&, const Table::FieldAccess& field) {
        field(SampleTable::Name)
            .setText(QStringLiteral("a\0b").left(1) + QChar(QChar::Null) + QLatin1Char('b'));
    });
    a->storage.commit();
    settle(*a);
    requireSame(*a, *b);
}

void tst_sharedstorage::whatIsNotCommittedStaysHere()
{
    const auto a = desk();
    const auto b = desk();
    a->append(1, 1);
    a->storage.commit();
    requireSame(*a, *b);
    a->append(2, 1);
    a->set(1, SampleTable::Ratio, 9.0);
    b->append(3, 1);
    b->storage.commit();
    QTRY_VERIFY_WITH_TIMEOUT(!a->row(3).isNull(), patience);
    QVERIFY(b->row(2).isNull());
    QCOMPARE(a->row(1).value(SampleTable::Ratio).toDouble(), 9.0);
    QVERIFY(a->storage.hasChanges());
}

void tst_sharedstorage::rollbackRestoresRowsAndOrder()
{
    const auto a = desk();
    a->append(1, 6);
    a->storage.commit();
    settle(*a);
    const QVector<QVariantList> before = a->content();
    a->set(4, SampleTable::Ratio, 9.0);
    a->set(2, SampleTable::Ratio, 9.0);
    a->remove(2);
    a->remove(5);
    a->append(7, 2);
    a->table.insertRows(0, SampleTable::makeRows(a->table, 9, 1));
    a->storage.rollback();
    QCOMPARE(a->content(), before);
    QVERIFY(!a->storage.hasChanges());
    a->table.clear();
    a->storage.rollback();
    QCOMPARE(a->content(), before);
    a->storage.commit();
    QCOMPARE(a->storage.waitingCommits(), 0);
}

void tst_sharedstorage::aColumnThatIsNewIsAdded()
{
    const auto a = desk();
    a->append(1, 1);
    a->storage.commit();
    settle(*a);
    QVector<TableColumnDef> columns = SampleTable::columns();
    columns.append({QStringLiteral("note"), FieldType::Text, 0});
    Table wider(QStringLiteral("sample"), columns);
    SharedStorage storage{PostgresAddress(address())};
    storage.open();
    storage.attach(&wider, {QStringLiteral("name")});
    QCOMPARE(wider.rowCount(), 1);
    QVERIFY(wider.record(0).value(6).isNull());
    wider.changeRows({wider.record(0)}, [](const Record&, const Table::FieldAccess& field) {
        field(6).setText(QStringLiteral("new"));
        field(SampleTable::Ratio).setDouble(4.0);
    });
    storage.commit();
    QTRY_COMPARE_WITH_TIMEOUT(a->row(1).value(SampleTable::Ratio).toDouble(), 4.0, patience);
}

void tst_sharedstorage::manyRows()
{
    const auto a = desk();
    const auto b = desk();
    QSignalSpy inserted(&b->table, SIGNAL(rowsInserted(QVector<Record>)));
    a->append(1, 20000);
    QElapsedTimer timer;
    timer.start();
    a->storage.commit();
    const qint64 committed = timer.elapsed();
    QTRY_COMPARE_WITH_TIMEOUT(b->table.rowCount(), 20000, 120000);
    qInfo("20000 rows: commit() took %lld ms, the other desk had them after %lld ms", committed,
        timer.elapsed());
    QCOMPARE(inserted.count(), 1);
    requireSame(*a, *b);
    a->table.clear();
    a->storage.commit();
    QTRY_COMPARE_WITH_TIMEOUT(b->table.rowCount(), 0, 120000);
}

void tst_sharedstorage::aTableThatGoes()
{
    const auto a = desk();
    const auto b = desk();
    auto other = std::make_unique<Table>(QStringLiteral("other"), SampleTable::columns());
    a->storage.attach(other.get());
    other->appendRows(SampleTable::makeRows(*other, 1, 2));
    QVERIFY(a->storage.hasChanges());
    other.reset();
    QVERIFY(!a->storage.hasChanges());
    a->append(1, 1);
    a->storage.commit();
    requireSame(*a, *b);
    QCOMPARE(thrownText([&] { a->storage.attach(&a->table, {QStringLiteral("nothing")}); }),
        QStringLiteral("The table \"sample\" has no column \"nothing\" for its key."));
}

PLOT2D_TEST_MAIN(tst_sharedstorage)
#include "tst_sharedstorage.moc"
