#include "host/directory/patience.h"
#include "host/directory/rowlistener.h"
#include "host/directory/securities.h"
#include "support/testmain.h"

#include <directory/optionalfield.h>

#include <random>

using namespace TestSupport;

class tst_SecurityDirectoryChanges : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void randomChanges_data();
    void randomChanges();
    void manyInsertionsWithQuestions_data();
    void manyInsertionsWithQuestions();
    void manyQuotesWithQuestions();
    void manyRowsOfOneKey();
};

void tst_SecurityDirectoryChanges::cleanup()
{
    database()->dropTable(SecuritiesTable::securitiesName);
}

namespace {

class RandomSecurities {
public:
    explicit RandomSecurities(std::uint64_t seed)
        : m_random(seed)
    {
    }

    void step()
    {
        Table* table = database()->table(SecuritiesTable::securitiesName);
        const int kind = below(100);
        if (!table)
            createSecurities();
        else if (kind < 45)
            table->insertRows(place(*table), rows(*table, below(5)));
        else if (kind < 65)
            table->removeRows(some(*table));
        else if (kind < 90)
            change(*table);
        else if (kind < 94)
            table->resetRows(rows(*table, below(8)));
        else if (kind < 96)
            table->clear();
        else if (kind < 98)
            database()->dropTable(SecuritiesTable::securitiesName);
    }

    int below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(m_random); }
    QVariant id() { return below(8) == 0 ? QVariant() : QVariant(below(4)); }
    QVariant id64() { return below(8) == 0 ? QVariant() : number64(below(3)); }

private:
    int place(const Table& table)
    {
        const int kind = below(3);
        return kind == 0 ? 0 : kind == 1 ? table.rowCount() : below(table.rowCount() + 1);
    }

    QVector<Record> rows(Table& table, int count)
    {
        QVector<Record> made;
        for (int i = 0; i < count; ++i)
            made.append(makeSecurity(table, id(), id(), id64(), below(20)));
        return made;
    }

    QVector<Record> some(const Table& table)
    {
        QVector<Record> chosen;
        for (const Record& record : table.masterIndex()) {
            if (below(4) == 0)
                chosen.append(record);
        }
        return chosen;
    }

    void change(Table& table)
    {
        const int isin = table.columnIndex(QStringLiteral("isin_id"));
        const int board = table.columnIndex(QStringLiteral("board_id"));
        const int sec = table.columnIndex(QStringLiteral("sec_id"));
        const int bid = table.columnIndex(QStringLiteral("bid"));
        table.changeRows(some(table), [&](const Record&, const Table::FieldAccess& field) {
            const int kind = below(4);
            if (kind == 0)
                field(isin).setVariant(id());
            else if (kind == 1)
                field(board).setVariant(id());
            else if (kind == 2)
                field(sec).setVariant(id64());
            else
                field(bid).setDecimal(decimal::fromUnits(below(1000), 2));
        });
    }

    std::mt19937_64 m_random;
};

bool has(const Record& record, const Table& table, const char* column, qint64 id)
{
    return OptionalField::integer(record.value(table.columnIndex(QString::fromLatin1(column)))) == id;
}

Record expectedByIsin(int isinId, int boardId)
{
    if (const Table* table = database()->table(SecuritiesTable::securitiesName)) {
        for (const Record& record : table->masterIndex()) {
            if (has(record, *table, "isin_id", isinId) && has(record, *table, "board_id", boardId))
                return record;
        }
    }
    return Record();
}

int expectedDecimals(int stockId, int boardId, qint64 secId)
{
    if (const Table* table = database()->table(SecuritiesTable::securitiesName)) {
        for (const Record& record : table->masterIndex()) {
            if (has(record, *table, "stock_id", stockId) && has(record, *table, "board_id", boardId)
                && has(record, *table, "sec_id", secId)) {
                const int decimals = record.value(table->columnIndex(QStringLiteral("decimals"))).toInt32();
                return decimals <= 18 ? decimals : -1;
            }
        }
    }
    return -1;
}

}

void tst_SecurityDirectoryChanges::randomChanges_data()
{
    QTest::addColumn<quint64>("seed");
    for (quint64 seed = 1; seed <= 8; ++seed)
        QTest::addRow("seed %llu", seed) << seed;
}

void tst_SecurityDirectoryChanges::randomChanges()
{
    QFETCH(quint64, seed);
    RandomSecurities securities(seed);
    for (int step = 0; step < 500; ++step) {
        securities.step();
        // Several changes may come between two questions.
        if (securities.below(3) == 0)
            continue;
        for (int first = 0; first < 4; ++first) {
            for (int second = 0; second < 4; ++second) {
                QVERIFY2(byIsin(first, second) == expectedByIsin(first, second),
                    qPrintable(
                        QStringLiteral("isin %1, board %2, step %3").arg(first).arg(second).arg(step)));
                QVERIFY2(decimalsOf(1, first, second) == expectedDecimals(1, first, second),
                    qPrintable(QStringLiteral("board %1, sec %2, step %3").arg(first).arg(second).arg(step)));
            }
        }
    }
}

void tst_SecurityDirectoryChanges::manyInsertionsWithQuestions_data()
{
    QTest::addColumn<bool>("heardFirst");
    QTest::newRow("after the insertion") << false;
    QTest::newRow("by a listener before the directory") << true;
}

void tst_SecurityDirectoryChanges::manyInsertionsWithQuestions()
{
    QFETCH(bool, heardFirst);
    Table* table = createSecurities();
    int found = 0;
    const auto ask = [&](const QVector<Record>& rows) {
        const int isinId = rows.first().value(table->columnIndex(QStringLiteral("isin_id"))).toInt32();
        if (byIsin(isinId, 2) == rows.first() && decimalsOf(1, 2, isinId) == 3)
            ++found;
    };
    std::unique_ptr<RowListener> listener;
    if (heardFirst)
        listener = std::make_unique<RowListener>(table, SIGNAL(rowsInserted(QVector<Record>)), ask);
    QVERIFY(byIsin(0, 2).isNull());

    const Patience patience;
    for (int i = 0; i < 100000 && !patience.isOver(); ++i) {
        const QVector<Record> rows{makeSecurity(*table, i, 2, number64(i), 3)};
        table->appendRows(rows);
        if (!heardFirst)
            ask(rows);
    }
    QCOMPARE(found, 100000);
    QVERIFY(!byIsin(50000, 2).isNull());
}

void tst_SecurityDirectoryChanges::manyQuotesWithQuestions()
{
    Table* table = createSecurities();
    QVector<Record> rows;
    for (int i = 0; i < 100000; ++i)
        rows.append(makeSecurity(*table, i, 2, number64(i), 3));
    table->appendRows(rows);

    const Patience patience;
    int found = 0;
    for (int i = 0; i < 2000 && !patience.isOver(); ++i) {
        changeRows(*table, rows.mid(i * 50, 50), {{"bid", number("1.25")}, {"ask", number("1.5")}});
        if (byIsin(i, 2) == rows.at(i) && decimalsOf(1, 2, i) == 3)
            ++found;
    }
    QCOMPARE(found, 2000);
}

void tst_SecurityDirectoryChanges::manyRowsOfOneKey()
{
    Table* table = createSecurities();
    QVector<Record> rows;
    for (int i = 0; i < 50000; ++i)
        rows.append(makeSecurity(*table, 0, 2, number64(0), 3));
    table->appendRows(rows);
    QVERIFY(byIsin(0, 2) == rows.first());

    const Patience patience;
    int found = 0;
    for (int i = 0; i + 1 < 2000 && !patience.isOver(); ++i) {
        table->removeRows({rows.at(i)});
        if (byIsin(0, 2) == rows.at(i + 1))
            ++found;
    }
    QCOMPARE(found, 1999);
    table->removeRows(rows.mid(2000));
    QVERIFY(byIsin(0, 2) == rows.at(1999));
}

PLOT2D_TEST_MAIN(tst_SecurityDirectoryChanges)
#include "tst_securitydirectorychanges.moc"
