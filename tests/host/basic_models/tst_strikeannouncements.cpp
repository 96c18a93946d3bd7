#include "host/basic_models/options.h"
#include "host/directory/rowlistener.h"
#include "support/testmain.h"

#include <database/database.h>
#include <database/icore.h>
#include <directory/securitydirectory.h>

#include <QAbstractItemModelTester>

using namespace TestSupport;

namespace {

/// Writes down what a model announces: "+first-last", "-first-last", "reset".
class Journal : public QObject {
    Q_OBJECT

public:
    explicit Journal(StrikeByBaseCodeModel* model)
    {
        connect(model, SIGNAL(rowsInserted(QModelIndex, int, int)), SLOT(onInserted(QModelIndex, int, int)));
        connect(model, SIGNAL(rowsRemoved(QModelIndex, int, int)), SLOT(onRemoved(QModelIndex, int, int)));
        connect(model, SIGNAL(modelReset()), SLOT(onReset()));
    }

    /// What came since the last call.
    QString take()
    {
        const QString entries = m_entries.join(QLatin1Char(' '));
        m_entries.clear();
        return entries;
    }

private Q_SLOTS:
    void onInserted(const QModelIndex&, int first, int last)
    {
        m_entries << QStringLiteral("+%1-%2").arg(first).arg(last);
    }
    void onRemoved(const QModelIndex&, int first, int last)
    {
        m_entries << QStringLiteral("-%1-%2").arg(first).arg(last);
    }
    void onReset() { m_entries << QStringLiteral("reset"); }

private:
    QStringList m_entries;
};

}

class tst_StrikeAnnouncements : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void insertions_data();
    void insertions();
    void removals_data();
    void removals();
    void descending();
    void manyRuns();
    void optionsOfOneStrike();
    void changes_data();
    void changes();
    void resets();
    void listenerTakesRowsBack();
    void listenerMovesRows();
    void listenerChangesTheTableMeanwhile();
    void firstRowHasARecordMeanwhile();
    void directoryKnowsTheRows();

private:
    std::unique_ptr<Table> m_table;
    std::unique_ptr<StrikeByBaseCodeModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
    std::unique_ptr<Journal> m_journal;
};

void tst_StrikeAnnouncements::init()
{
    m_table = makeSecurities();
    m_model = std::make_unique<StrikeByBaseCodeModel>(m_table.get());
    m_model->setBaseCode(QStringLiteral("AMBER"));
    m_tester = std::make_unique<QAbstractItemModelTester>(
        m_model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    m_journal = std::make_unique<Journal>(m_model.get());
}

void tst_StrikeAnnouncements::cleanup()
{
    m_tester.reset();
    m_model.reset();
    m_table.reset();
}

void tst_StrikeAnnouncements::insertions_data()
{
    QTest::addColumn<QStringList>("strikes");
    QTest::addColumn<QString>("announced");
    QTest::addColumn<QString>("result");

    // The model has 20, 40 and 60.
    const auto row = [](const char* strikes, const char* announced, const char* result) {
        QTest::newRow(strikes) << QString::fromLatin1(strikes).split(QLatin1Char(' '))
                               << QString::fromLatin1(announced) << QString::fromLatin1(result);
    };
    row("10", "+0-0", "10 20 40 60");
    row("30", "+1-1", "20 30 40 60");
    row("70", "+3-3", "20 40 60 70");
    row("40", "", "20 40 60");
    row("33 31 32 32", "+1-3", "20 31 32 33 40 60");
    row("70 10 30", "+0-0 +2-2 +5-5", "10 20 30 40 60 70");
    row("55 50 10 5 60", "+0-1 +4-5", "5 10 20 40 50 55 60");
}

void tst_StrikeAnnouncements::insertions()
{
    QFETCH(QStringList, strikes);
    QFETCH(QString, announced);
    QFETCH(QString, result);

    m_table->appendRows(makeStrikes(*m_table, {"20", "40", "60"}));
    QCOMPARE(m_journal->take(), QStringLiteral("+0-2"));
    QVector<Record> rows;
    for (const QString& strike : strikes)
        rows.append(makeStrike(*m_table, strike.toLatin1().constData()));
    m_table->appendRows(rows);
    QCOMPARE(m_journal->take(), announced);
    QCOMPARE(textOf(*m_model), result);
}

void tst_StrikeAnnouncements::removals_data()
{
    QTest::addColumn<QVector<int>>("positions");
    QTest::addColumn<QString>("announced");
    QTest::addColumn<QString>("result");

    // The model has 10 to 60, the table these, and 30 a second time.
    QTest::newRow("first") << QVector<int>{0} << "-0-0"
                           << "20 30 40 50 60";
    QTest::newRow("last") << QVector<int>{5} << "-5-5"
                          << "10 20 30 40 50";
    QTest::newRow("neighbours") << QVector<int>{1, 0} << "-0-1"
                                << "30 40 50 60";
    QTest::newRow("apart") << QVector<int>{4, 3, 0} << "-0-0 -2-3"
                           << "20 30 60";
    QTest::newRow("one of two") << QVector<int>{2} << ""
                                << "10 20 30 40 50 60";
    QTest::newRow("the other of two") << QVector<int>{6} << ""
                                      << "10 20 30 40 50 60";
    QTest::newRow("both") << QVector<int>{6, 2} << "-2-2"
                          << "10 20 40 50 60";
    QTest::newRow("around one that stays") << QVector<int>{1, 2, 3} << "-1-1 -2-2"
                                           << "10 30 50 60";
    QTest::newRow("all") << QVector<int>{0, 1, 2, 3, 4, 5, 6} << "-0-5"
                         << "";
}

void tst_StrikeAnnouncements::removals()
{
    QFETCH(QVector<int>, positions);
    QFETCH(QString, announced);
    QFETCH(QString, result);

    m_table->appendRows(makeStrikes(*m_table, {"10", "20", "30", "40", "50", "60", "30"}));
    m_journal->take();
    QVector<Record> rows;
    for (int position : positions)
        rows.append(m_table->record(position));
    m_table->removeRows(rows);
    QCOMPARE(m_journal->take(), announced);
    QCOMPARE(textOf(*m_model), result);
}

void tst_StrikeAnnouncements::descending()
{
    m_model->sort(0, Qt::DescendingOrder);
    m_table->appendRows(makeStrikes(*m_table, {"20", "40", "60"}));
    m_journal->take();
    m_table->appendRows(makeStrikes(*m_table, {"10", "30", "35", "70"}));
    QCOMPARE(m_journal->take(), QStringLiteral("+0-0 +3-4 +6-6"));
    QCOMPARE(textOf(*m_model), QStringLiteral("70 60 40 35 30 20 10"));
    m_table->removeRows({m_table->record(0), m_table->record(3), m_table->record(6)});
    QCOMPARE(m_journal->take(), QStringLiteral("-0-0 -4-5"));
    QCOMPARE(textOf(*m_model), QStringLiteral("60 40 35 30"));
}

void tst_StrikeAnnouncements::manyRuns()
{
    const auto odd = [&](int count) {
        QVector<Record> rows;
        for (int i = 0; i < count; ++i)
            rows.append(makeStrike(*m_table, QByteArray::number(2 * i + 1).constData()));
        return rows;
    };
    QVector<Record> even;
    for (int i = 0; i < 100; ++i)
        even.append(makeStrike(*m_table, QByteArray::number(2 * i).constData()));
    m_table->appendRows(even);
    QCOMPARE(m_journal->take(), QStringLiteral("+0-99"));

    const QVector<Record> fewRuns = odd(32);
    m_table->appendRows(fewRuns);
    QCOMPARE(m_journal->take().count(QLatin1Char('+')), 32);
    QCOMPARE(m_model->rowCount(), 132);
    m_table->removeRows(fewRuns);
    QCOMPARE(m_journal->take().count(QLatin1Char('-')), 64);
    QCOMPARE(m_model->rowCount(), 100);

    const QVector<Record> manyRuns = odd(33);
    m_table->appendRows(manyRuns);
    QCOMPARE(m_journal->take(), QStringLiteral("reset"));
    QCOMPARE(m_model->rowCount(), 133);
    m_table->removeRows(manyRuns);
    QCOMPARE(m_journal->take(), QStringLiteral("reset"));
    QCOMPARE(m_model->rowCount(), 100);
}

void tst_StrikeAnnouncements::optionsOfOneStrike()
{
    const QVector<Record> same = makeStrikes(*m_table, {"100", "100.00", "100.00001"});
    m_table->appendRows({same[0]});
    QCOMPARE(m_journal->take(), QStringLiteral("+0-0"));
    m_table->appendRows({same[1]});
    QCOMPARE(m_journal->take(), QString());
    m_table->appendRows({same[2]});
    QCOMPARE(m_journal->take(), QStringLiteral("+1-1"));
    m_table->removeRows({same[0]});
    QCOMPARE(m_journal->take(), QString());
    m_table->removeRows({same[1]});
    QCOMPARE(m_journal->take(), QStringLiteral("-0-0"));
}

void tst_StrikeAnnouncements::changes_data()
{
    QTest::addColumn<QByteArray>("column");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("announced");
    QTest::addColumn<QString>("result");

    // The table's rows: options of 100 and 110, a future of 120, an option of another code of 130.
    const auto row = [](const char* name, const char* column, const QVariant& value, int position,
                         const char* announced, const char* result) {
        QTest::newRow(name) << QByteArray(column) << value << position << QString::fromLatin1(announced)
                            << QString::fromLatin1(result);
    };
    row("quote", "bid", number("1.5"), 0, "", "100 110");
    row("session", "sess_id", 5, 0, "", "100 110");
    row("board", "board_id", QVariant(), 0, "", "100 110");
    row("same strike", "strike", number("100.0"), 0, "", "100 110");
    row("same code", "base_code", QStringLiteral("AMBER"), 0, "", "100 110");
    row("other strike", "strike", number("105"), 0, "reset", "105 110");
    row("strike of another", "strike", number("110"), 0, "reset", "110");
    row("no strike", "strike", QVariant(), 0, "reset", "110");
    row("other code", "base_code", QStringLiteral("Cobalt"), 0, "reset", "110");
    row("no code", "base_code", QVariant(), 0, "reset", "110");
    row("other type", "sectype", QStringLiteral("F"), 0, "reset", "110");
    row("future becomes an option", "sectype", QStringLiteral("O"), 2, "reset", "100 110 120");
    row("strike of a future", "strike", number("105"), 2, "", "100 110");
    row("code becomes this one", "base_code", QStringLiteral("AMBER"), 3, "reset", "100 110 130");
    row("strike of another code", "strike", number("105"), 3, "", "100 110");
}

void tst_StrikeAnnouncements::changes()
{
    QFETCH(QByteArray, column);
    QFETCH(QVariant, value);
    QFETCH(int, row);
    QFETCH(QString, announced);
    QFETCH(QString, result);

    OptionRow future;
    future.strike = number("120");
    future.sectype = QStringLiteral("F");
    OptionRow other;
    other.strike = number("130");
    other.baseCode = QStringLiteral("Cobalt");
    m_table->appendRows(makeStrikes(*m_table, {"100", "110"}));
    m_table->appendRows({makeOption(*m_table, future), makeOption(*m_table, other)});
    m_journal->take();
    changeRows(*m_table, {m_table->record(row)}, {{column.constData(), value}});
    QCOMPARE(m_journal->take(), announced);
    QCOMPARE(textOf(*m_model), result);
}

void tst_StrikeAnnouncements::resets()
{
    const QVector<Record> rows = makeStrikes(*m_table, {"100", "110", "120"});
    m_table->appendRows(rows);
    m_journal->take();
    m_model->setBaseCode(QStringLiteral("AMBER"));
    QCOMPARE(m_journal->take(), QStringLiteral("reset"));
    m_model->setBaseCode(QStringLiteral("Cobalt"));
    QCOMPARE(m_journal->take(), QStringLiteral("reset"));
    m_model->setBaseCode(QStringLiteral("AMBER"));
    m_journal->take();
    m_table->resetRows({rows[2]});
    QCOMPARE(m_journal->take(), QStringLiteral("reset"));
    QCOMPARE(textOf(*m_model), QStringLiteral("120"));
    m_table->clear();
    QCOMPARE(m_journal->take(), QStringLiteral("reset"));
    QCOMPARE(m_model->rowCount(), 0);
}

void tst_StrikeAnnouncements::listenerTakesRowsBack()
{
    // The listener must hear before the model, so the model is made again after it.
    m_tester.reset();
    const QVector<Record> rows = makeStrikes(*m_table, {"100", "110"});
    const RowListener listener(m_table.get(), SIGNAL(rowsInserted(QVector<Record>)),
        [&](const QVector<Record>&) { m_table->removeRows({rows[0]}); });
    StrikeByBaseCodeModel model(m_table.get());
    model.setBaseCode(QStringLiteral("AMBER"));
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    m_table->appendRows(rows);
    QCOMPARE(textOf(model), QStringLiteral("110"));
    QVERIFY(model.record(model.index(0, 0)) == rows[1]);
}

void tst_StrikeAnnouncements::listenerMovesRows()
{
    m_tester.reset();
    const QVector<Record> rows = makeStrikes(*m_table, {"100", "100", "110"});
    m_table->appendRows(rows);
    const RowListener listener(m_table.get(), SIGNAL(rowsRemoved(QVector<Record>)),
        [&](const QVector<Record>& removed) { m_table->appendRows(removed); });
    StrikeByBaseCodeModel model(m_table.get());
    model.setBaseCode(QStringLiteral("AMBER"));
    QVERIFY(model.record(model.index(0, 0)) == rows[0]);
    m_table->removeRows({rows[0]});
    QVERIFY(rows[0].isInTable());
    QCOMPARE(textOf(model), QStringLiteral("100 110"));
    QVERIFY(model.record(model.index(0, 0)) == rows[1]);
}

void tst_StrikeAnnouncements::listenerChangesTheTableMeanwhile()
{
    m_table->appendRows(makeStrikes(*m_table, {"20", "40"}));
    const QVector<Record> more = makeStrikes(*m_table, {"10", "30", "50"});
    bool done = false;
    QObject context;
    QObject::connect(m_model.get(), &QAbstractItemModel::rowsInserted, &context, [&] {
        if (done)
            return;
        done = true;
        m_table->removeRows({more[1]});
        m_table->appendRows(makeStrikes(*m_table, {"45"}));
        changeRows(*m_table, {m_table->record(0)}, {{"strike", number("25")}});
    });
    m_table->appendRows(more);
    QVERIFY(done);
    QCOMPARE(textOf(*m_model), QStringLiteral("10 25 40 45 50"));
}

void tst_StrikeAnnouncements::firstRowHasARecordMeanwhile()
{
    bool always = true;
    QObject context;
    const auto check = [&] { always = always && !m_model->record(m_model->index(0, 0)).isNull(); };
    QObject::connect(m_model.get(), &QAbstractItemModel::rowsInserted, &context, check);
    QObject::connect(m_model.get(), &QAbstractItemModel::rowsRemoved, &context, check);
    const QVector<Record> rows = makeStrikes(*m_table, {"10", "20", "30", "40", "50", "60"});
    m_table->appendRows(rows);
    m_table->removeRows({rows[2], rows[0], rows[4]});
    QCOMPARE(textOf(*m_model), QStringLiteral("20 40 60"));
    m_table->appendRows({rows[0], rows[2], rows[4]});
    QCOMPARE(textOf(*m_model), QStringLiteral("10 20 30 40 50 60"));
    QVERIFY(always);
}

void tst_StrikeAnnouncements::directoryKnowsTheRows()
{
    Database* database = ICore::instance()->database();
    Table* table
        = database->createTable(SecuritiesTable::securitiesName, SecuritiesTable::securitiesColumns());
    StrikeByBaseCodeModel model(table);
    model.setBaseCode(QStringLiteral("AMBER"));
    QVector<int> decimals;
    QObject context;
    const auto ask = [&] { decimals << SecurityDirectory::i()->decimalsById(1, 2, 5); };
    QObject::connect(&model, &QAbstractItemModel::rowsInserted, &context, ask);
    QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &context, ask);
    QObject::connect(&model, &QAbstractItemModel::modelReset, &context, ask);

    const Record option = makeStrike(*table, "100");
    table->value(option, table->columnIndex(QStringLiteral("decimals"))).setInt32(3);
    table->value(option, table->columnIndex(QStringLiteral("sec_id"))).setInt64(5);
    table->appendRows({option});
    changeRows(*table, {option}, {{"strike", number("110")}, {"sec_id", number64(6)}});
    changeRows(*table, {option}, {{"strike", number("120")}, {"sec_id", number64(5)}});
    table->removeRows({option});
    QCOMPARE(decimals, (QVector<int>{3, -1, 3, -1}));
    database->dropTable(SecuritiesTable::securitiesName);
    QCOMPARE(decimals, (QVector<int>{3, -1, 3, -1, -1}));
}

PLOT2D_TEST_MAIN(tst_StrikeAnnouncements)
#include "tst_strikeannouncements.moc"
