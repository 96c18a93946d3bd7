#include "sampletable.h"
#include "support/testmain.h"

using namespace SampleTable;

class tst_record : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nullRecord();
    void copiesAndMoves();
    void equalityAndHash();
    void fields();
    void outlivesItsPlaceInTheTable();
    void outlivesTheTable();
    void outlivesTheTableInMixedOrder();
    void isAMetaType();
};

void tst_record::nullRecord()
{
    const Record record;
    QVERIFY(record.isNull());
    QVERIFY(!record.table());
    QVERIFY(!record.row());
    QVERIFY(!record.isInTable());
    QVERIFY(record.field(0).isNull());
    QVERIFY(!record.value(0).isValid());
    QVERIFY(Record(nullptr).isNull());
    QVERIFY(Record() == record);
}

void tst_record::copiesAndMoves()
{
    Table table(QStringLiteral("t"), columns());
    Record first = makeRow(table, 1);
    Record second(first);
    QVERIFY(second == first);
    Record third(std::move(first));
    QVERIFY(first.isNull());
    QVERIFY(third == second);
    first = third;
    third = std::move(second);
    QVERIFY(second.isNull());
    Record& self = first;
    first = self;
    first = std::move(self);
    QCOMPARE(first.value(Id).toInt32(), 1);
    third = Record();
    QCOMPARE(first.value(Name).toText(), QStringLiteral("row 1"));
    first = makeRow(table, 2);
    QCOMPARE(first.value(Id).toInt32(), 2);
}

void tst_record::equalityAndHash()
{
    Table table(QStringLiteral("t"), columns());
    const Record one = makeRow(table, 1);
    const Record alike = makeRow(table, 1);
    QVERIFY(one != alike);
    QVERIFY(one == Record(one.row()));
    QCOMPARE(qHash(one, 7), qHash(Record(one), 7));
    QCOMPARE((QSet<Record>{one, alike, one}).size(), 2);
}

void tst_record::fields()
{
    Table table(QStringLiteral("t"), columns());
    const Record record = makeRow(table, 250);
    QCOMPARE(record.field(Price).toString(), QStringLiteral("2.5"));
    QCOMPARE(record.field(Name).toChar(), 'r');
    QCOMPARE(record.value(Count).toInt64(), qint64(2500000000000));
    QVERIFY(!record.value(6).isValid());
    QVERIFY(!record.value(-1).isValid());
    QVERIFY(record.field(99).isNull());
}

void tst_record::outlivesItsPlaceInTheTable()
{
    Table table(QStringLiteral("t"), columns());
    table.appendRows(makeRows(table, 1, 2));
    const Record removed = table.record(0);
    QVERIFY(removed.isInTable());
    table.removeRows({removed});
    QVERIFY(!removed.isInTable());
    QCOMPARE(removed.table(), &table);
    QCOMPARE(removed.value(Name).toText(), QStringLiteral("row 1"));
    const Record cleared = table.record(0);
    table.clear();
    QVERIFY(!cleared.isInTable());
    QCOMPARE(cleared.value(Id).toInt32(), 2);
}

void tst_record::outlivesTheTable()
{
    Record inTable;
    Record fresh;
    Record removed;
    {
        Table table(QStringLiteral("t"), columns());
        table.appendRows(makeRows(table, 1, 2));
        inTable = table.record(0);
        removed = table.record(1);
        table.removeRows({removed});
        fresh = makeRow(table, 3);
    }
    int id = 1;
    for (const Record& record : {inTable, removed, fresh}) {
        QVERIFY(!record.isNull());
        QVERIFY(!record.table());
        QVERIFY(!record.isInTable());
        QCOMPARE(record.value(Name).toText(), QStringLiteral("row %1").arg(id));
        QCOMPARE(record.field(Id).toString(), QString::number(id++));
        QVERIFY(!record.value(6).isValid());
    }
}

void tst_record::outlivesTheTableInMixedOrder()
{
    QVector<Record> held;
    for (int round = 0; round < 3; ++round) {
        Table table(QStringLiteral("t"), columns());
        table.appendRows(makeRows(table, round * 10, 10));
        for (int i = 0; i < 10; i += 2)
            held.append(table.record(i));
    }
    while (!held.isEmpty()) {
        const Record record = held.takeAt(held.size() / 2);
        QCOMPARE(record.value(Name).toText(), QStringLiteral("row %1").arg(record.value(Id).toInt32()));
    }
}

void tst_record::isAMetaType()
{
    Table table(QStringLiteral("t"), columns());
    const Record record = makeRow(table, 1);
    QCOMPARE(QVariant::fromValue(record).value<Record>(), record);
}

PLOT2D_TEST_MAIN(tst_record)
#include "tst_record.moc"
