#include "database/exception.h"
#include "sampletable.h"
#include "support/testmain.h"
#include "tablejournal.h"

#include <QElapsedTimer>

using namespace SampleTable;

class tst_table : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void columnsAndName();
    void columnsOfOneNameFindTheFirst();
    void columnOfUnknownType();
    void manyColumns();
    void createdRowIsNull();
    void valueOnlyOfFreshRows();
    void dataPtr();
    void record();
    void insertAtPositions();
    void insertPassesOver();
    void removedRowComesBack();
    void removeRows();
    void clearAndReset();
    void resetKeepsListedRows();
    void freeRowKeepsRowsInUse();
    void removalOfManyRowsIsOnePass();
};

void tst_table::columnsAndName()
{
    Table table(QStringLiteral("t"), columns());
    QCOMPARE(table.name(), QStringLiteral("t"));
    QCOMPARE(table.columnCount(), 6);
    QCOMPARE(table.columnIndex(QStringLiteral("price")), int(Price));
    QCOMPARE(table.columnIndex(QStringLiteral("Price")), -1);
    QCOMPARE(table.columnIndex(QString()), -1);
    const QList<TableColumnDef*> definitions = table.fieldDefs();
    QCOMPARE(definitions.size(), 6);
    QCOMPARE(definitions[Price]->name, QStringLiteral("price"));
    QCOMPARE(int(definitions[Price]->decimals), 2);
    QVERIFY(definitions[Price]->type == FieldType::Decimal);
    QVERIFY(definitions == table.fieldDefs());
    QCOMPARE(Table(QStringLiteral("empty"), {}).columnCount(), 0);
}

void tst_table::columnsOfOneNameFindTheFirst()
{
    const Table table(QStringLiteral("t"),
        {{QStringLiteral("a"), FieldType::Text, 0}, {QStringLiteral("b"), FieldType::Int32, 0},
            {QStringLiteral("b"), FieldType::Int64, 0}});
    QCOMPARE(table.columnIndex(QStringLiteral("b")), 1);
}

void tst_table::columnOfUnknownType()
{
    const auto unknown = static_cast<FieldType>(7);
    QVERIFY_EXCEPTION_THROWN(Table(QStringLiteral("t"), {{QStringLiteral("a"), unknown, 0}}), Exception);
}

void tst_table::manyColumns()
{
    QVector<TableColumnDef> definitions;
    const FieldType types[] = {FieldType::Int32, FieldType::Text, FieldType::Decimal, FieldType::Int64};
    for (int i = 0; i < 41; ++i)
        definitions.append({QString::number(i), types[i % 4], 0});
    Table table(QStringLiteral("wide"), definitions);
    const Record record = table.createRow();
    const auto sample = [](int i) {
        return i % 4 == 0 ? QVariant(i)
            : i % 4 == 1  ? QVariant(QString::number(i))
            : i % 4 == 2  ? QVariant::fromValue(decimal::fromUnits(i, 0))
                          : QVariant(qint64(i));
    };
    for (int i = 0; i < 41; i += 2)
        table.value(record, i).setVariant(sample(i));
    for (int i = 0; i < 41; ++i)
        QCOMPARE(record.value(i).toVariant(), i % 2 == 0 ? sample(i) : QVariant());
    for (int i = 1; i < 41; i += 2)
        table.value(record, i).setVariant(sample(i));
    for (int i = 0; i < 41; ++i)
        QCOMPARE(record.value(i).toVariant(), sample(i));
}

void tst_table::createdRowIsNull()
{
    Table table(QStringLiteral("t"), columns());
    const Record record = table.createRow();
    QVERIFY(!record.isNull());
    QVERIFY(!record.isInTable());
    QCOMPARE(record.table(), &table);
    QCOMPARE(table.rowCount(), 0);
    for (int i = 0; i < 6; ++i) {
        QVERIFY(record.value(i).isValid());
        QVERIFY(record.value(i).isNull());
    }
}

void tst_table::valueOnlyOfFreshRows()
{
    Table table(QStringLiteral("t"), columns());
    Table other(QStringLiteral("t"), columns());
    const Record record = makeRow(table, 1);
    QVERIFY(table.value(record, Id).isValid());
    QVERIFY(!table.value(record, -1).isValid());
    QVERIFY(!table.value(record, 6).isValid());
    QVERIFY(!table.value(Record(), Id).isValid());
    QVERIFY(!other.value(record, Id).isValid());
    table.appendRows({record});
    QVERIFY(!table.value(record, Id).isValid());
    table.removeRows({record});
    QVERIFY(!table.value(record, Id).isValid());
}

void tst_table::dataPtr()
{
    Table table(QStringLiteral("t"), columns());
    const Table other(QStringLiteral("t"), columns());
    const Record record = makeRow(table, 5);
    table.appendRows({record});
    QCOMPARE(table.dataPtr(record.row(), Id).toInt32(), 5);
    QVERIFY(table.dataPtr(record.row(), Time).type() == FieldType::Moment);
    QVERIFY(table.dataPtr(record.row(), Name).value() == record.value(Name).value());
    QVERIFY(!table.dataPtr(nullptr, Id).isValid());
    QVERIFY(!table.dataPtr(record.row(), 6).isValid());
    QVERIFY(!table.dataPtr(record.row(), -1).isValid());
    QVERIFY(!other.dataPtr(record.row(), Id).isValid());
}

void tst_table::record()
{
    Table table(QStringLiteral("t"), columns());
    table.appendRows(makeRows(table, 10, 3));
    QCOMPARE(table.record(0).value(Id).toInt32(), 10);
    QCOMPARE(table.record(2).value(Id).toInt32(), 12);
    QVERIFY(table.record(-1).isNull());
    QVERIFY(table.record(3).isNull());
}

void tst_table::insertAtPositions()
{
    Table table(QStringLiteral("t"), columns());
    Journal journal(&table);
    table.insertRows(5, makeRows(table, 1, 2));
    table.insertRows(-3, makeRows(table, 3, 1));
    table.insertRows(1, makeRows(table, 4, 2));
    table.appendRows(makeRows(table, 6, 1));
    QCOMPARE(ids(table), (QVector<int>{3, 4, 5, 1, 2, 6}));
    QCOMPARE(journal.take(), (QStringList{"i 1 2", "i 3", "i 4 5", "i 6"}));
    QVERIFY(table.record(0).isInTable());
}

void tst_table::insertPassesOver()
{
    Table table(QStringLiteral("t"), columns());
    Table other(QStringLiteral("t"), columns());
    Journal journal(&table);
    const Record one = makeRow(table, 1);
    const Record two = makeRow(table, 2);
    const Record foreign = makeRow(other, 3);
    table.appendRows({one, foreign, Record(), one, two});
    table.appendRows({one, foreign});
    table.appendRows({});
    QCOMPARE(ids(table), (QVector<int>{1, 2}));
    QCOMPARE(journal.take(), QStringList{"i 1 2"});
    QVERIFY(!foreign.isInTable());
}

void tst_table::removedRowComesBack()
{
    Table table(QStringLiteral("t"), columns());
    table.appendRows(makeRows(table, 1, 2));
    const Record first = table.record(0);
    table.removeRows({first});
    QVERIFY(!first.isInTable());
    table.appendRows({first});
    QVERIFY(first.isInTable());
    QCOMPARE(ids(table), (QVector<int>{2, 1}));
}

void tst_table::removeRows()
{
    Table table(QStringLiteral("t"), columns());
    Table other(QStringLiteral("t"), columns());
    const QVector<Record> rows = makeRows(table, 1, 6);
    const Record foreign = makeRow(other, 9);
    table.appendRows(rows);
    other.appendRows({foreign});
    Journal journal(&table);
    table.removeRows({rows[4], rows[1], rows[4], Record(), foreign, makeRow(table, 7)});
    QCOMPARE(ids(table), (QVector<int>{1, 3, 4, 6}));
    table.removeRows({rows[0]});
    table.removeRows({rows[0], rows[1]});
    QCOMPARE(ids(table), (QVector<int>{3, 4, 6}));
    QCOMPARE(journal.take(), (QStringList{"r 5 2", "r 1"}));
    QCOMPARE(rows[4].value(Name).toText(), QStringLiteral("row 5"));
    QCOMPARE(rows[4].table(), &table);
    QCOMPARE(other.rowCount(), 1);
}

void tst_table::clearAndReset()
{
    Table table(QStringLiteral("t"), columns());
    Journal journal(&table);
    table.clear();
    table.appendRows(makeRows(table, 1, 3));
    const Record kept = table.record(1);
    table.clear();
    QCOMPARE(table.rowCount(), 0);
    QVERIFY(!kept.isInTable());
    table.resetRows(makeRows(table, 7, 2));
    QCOMPARE(ids(table), (QVector<int>{7, 8}));
    QCOMPARE(journal.take(), (QStringList{"x", "i 1 2 3", "x", "x"}));
}

void tst_table::resetKeepsListedRows()
{
    Table table(QStringLiteral("t"), columns());
    Table other(QStringLiteral("t"), columns());
    table.appendRows(makeRows(table, 1, 3));
    const Record first = table.record(0);
    const Record third = table.record(2);
    table.resetRows({third, makeRow(table, 4), first, third, Record(), makeRow(other, 5)});
    QCOMPARE(ids(table), (QVector<int>{3, 4, 1}));
    QVERIFY(first.isInTable() && third.isInTable());
    QCOMPARE(table.record(0), third);
}

void tst_table::freeRowKeepsRowsInUse()
{
    Table table(QStringLiteral("t"), columns());
    Table other(QStringLiteral("t"), columns());
    const Record record = makeRow(table, 1);
    table.freeRow(record.row());
    table.freeRow(nullptr);
    other.freeRow(record.row());
    table.appendRows({record});
    table.freeRow(record.row());
    QCOMPARE(record.value(Name).toText(), QStringLiteral("row 1"));
}

void tst_table::removalOfManyRowsIsOnePass()
{
    Table table(QStringLiteral("t"), {{QStringLiteral("id"), FieldType::Int32, 0}});
    QVector<Record> all;
    for (int i = 0; i < 200000; ++i) {
        all.append(table.createRow());
        table.value(all.last(), 0).setInt32(i);
    }
    QElapsedTimer timer;
    timer.start();
    table.insertRows(0, all);
    QVector<Record> odd;
    for (int i = 1; i < all.size(); i += 2)
        odd.append(all[i]);
    table.removeRows(odd);
    table.insertRows(1000, odd);
    table.removeRows(odd);
    const qint64 elapsed = timer.elapsed();
    QCOMPARE(table.rowCount(), 100000);
    QCOMPARE(table.record(99999).value(0).toInt32(), 199998);
    qInfo("200,000 rows put in, half of them taken out, put in and taken out: %lld ms", elapsed);
    // One move of the rest for each row would take minutes.
    QVERIFY(elapsed < 10000);
}

PLOT2D_TEST_MAIN(tst_table)
#include "tst_table.moc"
