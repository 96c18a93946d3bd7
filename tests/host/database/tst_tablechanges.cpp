#include "database/exception.h"
#include "support/testmain.h"
#include "tablejournal.h"

#include <functional>
#include <memory>
#include <stdexcept>

using namespace SampleTable;

namespace {

const Table::Writer addHundred = [](const Record& record, const Table::FieldAccess& field) {
    field(Id).setInt32(record.value(Id).toInt32() + 100);
};

}

/// Rows of a table that are written, and writers and slots that change the table meanwhile.
class tst_tablechanges : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changeRows();
    void changeRowsPassesOver();
    void changeRowsWithThrowingWriter();
    void writerMayChangeTheTable();
    void writerMayDestroyTheTable();
    void slotsMayChangeTheTable();
    void slotMayDestroyTheTable();
};

void tst_tablechanges::changeRows()
{
    Table table(QStringLiteral("t"), columns());
    table.appendRows(makeRows(table, 1, 3));
    Journal journal(&table);
    table.changeRows({table.record(2), table.record(0), table.record(2)}, addHundred);
    QCOMPARE(ids(table), (QVector<int>{101, 2, 103}));
    QCOMPARE(journal.take(), QStringList{"c 103 101"});

    const Record record = table.record(1);
    table.changeRows({record}, [](const Record&, const Table::FieldAccess& field) {
        field(Name).setNull();
        field(Price).setDecimal(decimal::maximum);
        QVERIFY(!field(-1).isValid());
        QVERIFY(!field(6).isValid());
    });
    QVERIFY(record.value(Name).isNull());
    QVERIFY(record.value(Price).toDecimal() == decimal::maximum);
    QCOMPARE(journal.take(), QStringList{"c 2"});

    table.changeRows({record}, [](const Record&, const Table::FieldAccess&) {});
    QCOMPARE(journal.take(), QStringList());
}

void tst_tablechanges::changeRowsPassesOver()
{
    Table table(QStringLiteral("t"), columns());
    Table other(QStringLiteral("t"), columns());
    other.appendRows(makeRows(other, 5, 1));
    table.appendRows(makeRows(table, 1, 1));
    const Record removed = table.record(0);
    table.removeRows({removed});
    Journal journal(&table);
    table.changeRows({Record(), removed, makeRow(table, 2), other.record(0)}, addHundred);
    QCOMPARE(removed.value(Id).toInt32(), 1);
    QCOMPARE(other.record(0).value(Id).toInt32(), 5);
    QCOMPARE(journal.take(), QStringList());
}

void tst_tablechanges::changeRowsWithThrowingWriter()
{
    Table table(QStringLiteral("t"), columns());
    table.appendRows(makeRows(table, 1, 4));
    Journal journal(&table);
    const auto throwsAtThird = [](const Record& record, const Table::FieldAccess& field) {
        if (record.value(Id).toInt32() == 3)
            field(Name).setInt32(1);
        addHundred(record, field);
    };
    const QVector<Record> all{table.record(0), table.record(1), table.record(2), table.record(3)};
    QVERIFY_EXCEPTION_THROWN(table.changeRows(all, throwsAtThird), Exception);
    QCOMPARE(ids(table), (QVector<int>{101, 102, 3, 4}));
    // The writer had its hand on the third, so it may have been written in part.
    QCOMPARE(journal.take(), QStringList{"c 101 102 3"});

    const auto throwsAtOnce
        = [](const Record&, const Table::FieldAccess&) { throw std::runtime_error("stop"); };
    QVERIFY_EXCEPTION_THROWN(table.changeRows(all, throwsAtOnce), std::runtime_error);
    QCOMPARE(journal.take(), QStringList());
}

void tst_tablechanges::writerMayChangeTheTable()
{
    Table table(QStringLiteral("t"), columns());
    table.appendRows(makeRows(table, 1, 3));
    Journal journal(&table);
    const QVector<Record> all{table.record(0), table.record(1), table.record(2)};
    table.changeRows(all, [&](const Record& record, const Table::FieldAccess& field) {
        table.removeRows({all[0], all[1]});
        if (record == all[0])
            QVERIFY(!field(Id).isValid());
        else
            addHundred(record, field);
    });
    QCOMPARE(ids(table), QVector<int>{103});
    QCOMPARE(journal.take(), (QStringList{"r 1 2", "c 103"}));
}

void tst_tablechanges::writerMayDestroyTheTable()
{
    auto table = std::make_unique<Table>(QStringLiteral("t"), columns());
    table->appendRows(makeRows(*table, 1, 2));
    const QVector<Record> all{table->record(0), table->record(1)};
    table->changeRows(all, [&](const Record&, const Table::FieldAccess& field) {
        table.reset();
        QVERIFY(!field(Id).isValid());
    });
    QCOMPARE(ids(all), (QVector<int>{1, 2}));
}

void tst_tablechanges::slotsMayChangeTheTable()
{
    Table table(QStringLiteral("t"), columns());
    Journal journal(&table);
    journal.reaction = [&] { table.appendRows(makeRows(table, 10, 1)); };
    table.appendRows(makeRows(table, 1, 3));
    QCOMPARE(ids(table), (QVector<int>{1, 2, 3, 10}));
    QCOMPARE(journal.take(), (QStringList{"i 1 2 3", "i 10"}));

    journal.reaction = [&] { table.resetRows(makeRows(table, 20, 1)); };
    table.removeRows({table.record(0), table.record(1)});
    QCOMPARE(ids(table), QVector<int>{20});
    QCOMPARE(journal.take(), (QStringList{"r 1 2", "x"}));

    journal.reaction = [&] { table.clear(); };
    table.changeRows({table.record(0)}, addHundred);
    QCOMPARE(table.rowCount(), 0);
    QCOMPARE(journal.take(), (QStringList{"c 120", "x"}));

    journal.reaction = [&] { table.appendRows(makeRows(table, 30, 2)); };
    table.clear();
    QCOMPARE(ids(table), (QVector<int>{30, 31}));
}

void tst_tablechanges::slotMayDestroyTheTable()
{
    using Action = std::function<void(Table&)>;
    const Action actions[] = {[](Table& table) { table.appendRows(makeRows(table, 5, 1)); },
        [](Table& table) { table.removeRows({table.record(0)}); }, [](Table& table) { table.clear(); },
        [](Table& table) { table.changeRows({table.record(1)}, addHundred); }};
    for (const Action& action : actions) {
        auto* const table = new Table(QStringLiteral("t"), columns());
        const QPointer<Table> watch(table);
        table->appendRows(makeRows(*table, 1, 2));
        Journal journal(table);
        journal.reaction = [table] { delete table; };
        action(*table);
        QVERIFY(!watch);
    }
}

PLOT2D_TEST_MAIN(tst_tablechanges)
#include "tst_tablechanges.moc"
