#include "sampletable.h"
#include "support/testmain.h"

#include <memory>

using namespace SampleTable;

class tst_indexlist : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void empty();
    void order();
    void survivesChanges_data();
    void survivesChanges();
    void survivesTheTable();
    void tableMayChangeDuringAWalk();
    void listsOfDifferentMoments();
    void keepsNoRowsAfterwards();
    void millionRows();
};

void tst_indexlist::empty()
{
    QCOMPARE(IndexList().size(), 0);
    QVERIFY(IndexList().begin() == IndexList().end());
    const Table table(QStringLiteral("t"), columns());
    const IndexList list = table.masterIndex();
    QCOMPARE(list.size(), 0);
    QVERIFY(list.begin() == list.end());
}

void tst_indexlist::order()
{
    Table table(QStringLiteral("t"), columns());
    table.appendRows(makeRows(table, 1, 3));
    table.insertRows(0, makeRows(table, 9, 1));
    const IndexList list = table.masterIndex();
    QCOMPARE(list.size(), 4);
    QCOMPARE(ids(list), (QVector<int>{9, 1, 2, 3}));
    IndexList::const_iterator it = list.begin();
    ++it;
    QVERIFY(it != list.end());
    QCOMPARE(*it, table.record(1));
}

void tst_indexlist::survivesChanges_data()
{
    QTest::addColumn<int>("change");
    QTest::newRow("insertion") << 0;
    QTest::newRow("removal of one") << 1;
    QTest::newRow("removal of several") << 2;
    QTest::newRow("clear") << 3;
    QTest::newRow("reset") << 4;
}

void tst_indexlist::survivesChanges()
{
    QFETCH(int, change);
    Table table(QStringLiteral("t"), columns());
    table.appendRows(makeRows(table, 1, 5));
    const IndexList list = table.masterIndex();
    const IndexList copy = list;
    if (change == 0)
        table.insertRows(2, makeRows(table, 8, 2));
    else if (change == 1)
        table.removeRows({table.record(2)});
    else if (change == 2)
        table.removeRows({table.record(0), table.record(4)});
    else if (change == 3)
        table.clear();
    else
        table.resetRows({table.record(4), table.record(3)});
    QCOMPARE(ids(list), (QVector<int>{1, 2, 3, 4, 5}));
    QCOMPARE(ids(copy), ids(list));
    QVERIFY(ids(table) != ids(list));
}

void tst_indexlist::survivesTheTable()
{
    IndexList before;
    IndexList atTheEnd;
    {
        Table table(QStringLiteral("t"), columns());
        table.appendRows(makeRows(table, 1, 4));
        before = table.masterIndex();
        table.removeRows({table.record(1)});
        atTheEnd = table.masterIndex();
    }
    QCOMPARE(ids(before), (QVector<int>{1, 2, 3, 4}));
    QCOMPARE(ids(atTheEnd), (QVector<int>{1, 3, 4}));
    QVERIFY(!(*before.begin()).table());
}

void tst_indexlist::tableMayChangeDuringAWalk()
{
    Table table(QStringLiteral("t"), columns());
    table.appendRows(makeRows(table, 0, 100));
    QVector<int> walked;
    for (const Record& record : table.masterIndex()) {
        walked.append(record.value(Id).toInt32());
        table.removeRows({record});
        table.insertRows(0, makeRows(table, 1000 + walked.last(), 2));
    }
    QCOMPARE(walked.size(), 100);
    for (int i = 0; i < 100; ++i)
        QCOMPARE(walked[i], i);
    QCOMPARE(table.rowCount(), 200);
}

void tst_indexlist::listsOfDifferentMoments()
{
    Table table(QStringLiteral("t"), columns());
    QVector<IndexList> lists;
    for (int i = 0; i < 20; ++i) {
        lists.append(table.masterIndex());
        table.appendRows(makeRows(table, i, 1));
    }
    for (int i = 0; i < 20; ++i)
        QCOMPARE(lists[i].size(), i);
    lists.remove(3, 10);
    table.clear();
    QCOMPARE(ids(lists.last()).last(), 18);
}

void tst_indexlist::keepsNoRowsAfterwards()
{
    // A text tells by its sharing whether its row is still there.
    Table table(QStringLiteral("t"), columns());
    QString text = QStringLiteral("a text ") + QString::number(1);
    const Record record = table.createRow();
    table.value(record, Name).setText(text);
    table.appendRows({record});
    IndexList list = table.masterIndex();
    const_cast<Record&>(record) = Record();
    table.clear();
    QVERIFY(!text.isDetached());
    list = IndexList();
    QVERIFY(text.isDetached());
}

void tst_indexlist::millionRows()
{
    constexpr int count = 1000000;
    Table table(QStringLiteral("t"),
        {{QStringLiteral("a"), FieldType::Int32, 0}, {QStringLiteral("b"), FieldType::Int32, 0},
            {QStringLiteral("text"), FieldType::Text, 0}, {QStringLiteral("c"), FieldType::Int32, 0}});
    QVector<Record> records;
    records.reserve(count);
    for (int i = 0; i < count; ++i) {
        const Record record = table.createRow();
        table.value(record, 0).setInt32(i);
        table.value(record, 1).setInt32(2 * i);
        table.value(record, 3).setInt32(-i);
        records.append(record);
    }
    table.appendRows(records);

    QElapsedTimer timer;
    timer.start();
    qint64 sum = 0;
    for (const Record& record : table.masterIndex()) {
        unsigned char* const row = record.row();
        sum += table.dataPtr(row, 0).toInt32() + table.dataPtr(row, 1).toInt32()
            + table.dataPtr(row, 3).toInt32();
    }
    const qint64 elapsed = timer.elapsed();
    QCOMPARE(sum, qint64(count) * (count - 1));
    qInfo("a walk over %d rows with three reads each: %lld ms", count, elapsed);
    QVERIFY(elapsed < 5000);
}

PLOT2D_TEST_MAIN(tst_indexlist)
#include "tst_indexlist.moc"
