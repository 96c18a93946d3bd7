#include "host/basic_models/modelmirror.h"
#include "host/basic_models/randomoptions.h"
#include "host/directory/patience.h"
#include "support/testmain.h"

#include <basic_models/strikebymaxsessionmodel.h>

#include <QAbstractItemModelTester>

using namespace TestSupport;

namespace {

/// The first way in which a model differs from what it is to show; empty if there is none.
QString difference(const StrikeByBaseCodeModel& model, Qt::SortOrder order, const ExpectedStrikes& expected,
    bool withRecords)
{
    if (model.rowCount() != static_cast<int>(expected.first.size()))
        return QStringLiteral("%1 strikes instead of %2").arg(model.rowCount()).arg(expected.first.size());
    double step = 0.0;
    decimal before;
    int place = 0;
    for (const auto& [strike, record] : expected.first) {
        const int row = order == Qt::AscendingOrder ? place : model.rowCount() - 1 - place;
        if (model.strike(row) != strike)
            return QStringLiteral("strike %1 instead of %2 in row %3")
                .arg(model.strike(row).toString(), strike.toString())
                .arg(row);
        if (withRecords && model.record(model.index(row, 0)) != record)
            return QStringLiteral("wrong record for strike %1").arg(strike.toString());
        if (place == 1 || (place > 1 && (strike - before).toDouble() < step))
            step = (strike - before).toDouble();
        before = strike;
        ++place;
    }
    return model.minStep() == step ? QString()
                                   : QStringLiteral("step %1 instead of %2").arg(model.minStep()).arg(step);
}

bool isSame(const ModelMirror& mirror, const StrikeByBaseCodeModel& model)
{
    if (static_cast<int>(mirror.strikes().size()) != model.rowCount())
        return false;
    for (int row = 0; row < model.rowCount(); ++row) {
        if (mirror.strikes()[static_cast<std::size_t>(row)] != model.strike(row))
            return false;
    }
    return true;
}

}

class tst_StrikeModelChanges : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void randomChanges_data();
    void randomChanges();
    void randomSessions_data();
    void randomSessions();
    void manyInsertions_data();
    void manyInsertions();
    void manyStrikesAtOnce();
    void manyQuotes();
};

void tst_StrikeModelChanges::randomChanges_data()
{
    QTest::addColumn<quint64>("seed");
    for (quint64 seed = 1; seed <= 8; ++seed)
        QTest::addRow("seed %llu", seed) << seed;
}

void tst_StrikeModelChanges::randomChanges()
{
    QFETCH(quint64, seed);
    RandomOptions options(seed);
    StrikeByBaseCodeModel model(options.table());
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const ModelMirror mirror(&model);
    Qt::SortOrder order = Qt::AscendingOrder;
    model.setBaseCode(QStringLiteral("AMBER"));
    for (int step = 0; step < 400; ++step) {
        const int kind = options.below(50);
        if (kind == 0)
            model.setBaseCode(options.baseCode());
        else if (kind == 1)
            model.sort(0, order = options.below(2) ? Qt::AscendingOrder : Qt::DescendingOrder);
        else
            options.step();
        if (step == 390)
            options.destroyTable();
        const QString wrong = difference(
            model, order, expectedStrikes(options.table(), model.baseCode()), options.below(2) == 0);
        QVERIFY2(wrong.isEmpty(), qPrintable(QStringLiteral("step %1: %2").arg(step).arg(wrong)));
        QVERIFY2(isSame(mirror, model), qPrintable(QStringLiteral("step %1").arg(step)));
        if (!options.table())
            return;
    }
}

void tst_StrikeModelChanges::randomSessions_data()
{
    randomChanges_data();
}

void tst_StrikeModelChanges::randomSessions()
{
    QFETCH(quint64, seed);
    RandomOptions options(seed + 1000);
    StrikeByMaxSessionModel model(options.table());
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const ModelMirror mirror(&model);
    Qt::SortOrder order = Qt::AscendingOrder;
    model.setBaseCode(QStringLiteral("AMBER"));
    for (int step = 0; step < 400; ++step) {
        const int kind = options.below(50);
        if (kind == 0)
            model.setBaseCode(options.baseCode());
        else if (kind == 1)
            model.sort(0, order = options.below(2) ? Qt::AscendingOrder : Qt::DescendingOrder);
        else if (kind < 5)
            model.setFilterParams(options.filter());
        else
            options.step();
        if (step == 390)
            options.destroyTable();
        const ExpectedStrikes expected
            = expectedStrikes(options.table(), model.baseCode(), model.filterParams());
        const QString wrong = difference(model, order, expected, options.below(2) == 0);
        QVERIFY2(wrong.isEmpty(), qPrintable(QStringLiteral("step %1: %2").arg(step).arg(wrong)));
        QVERIFY2(model.session() == expected.session, qPrintable(QStringLiteral("step %1").arg(step)));
        QVERIFY2(isSame(mirror, model), qPrintable(QStringLiteral("step %1").arg(step)));
        if (!options.table())
            return;
    }
}

void tst_StrikeModelChanges::manyInsertions_data()
{
    QTest::addColumn<bool>("descending");
    QTest::newRow("ascending") << false;
    QTest::newRow("descending") << true;
}

void tst_StrikeModelChanges::manyInsertions()
{
    QFETCH(bool, descending);
    const std::unique_ptr<Table> table = makeSecurities();
    StrikeByMaxSessionModel model(table.get());
    model.setBaseCode(QStringLiteral("AMBER"));
    model.sort(0, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
    const Patience patience;
    int found = 0;
    for (int i = 0; i < 50000 && !patience.isOver(); ++i) {
        // A hundred strikes and many options of each.
        const Record option = makeStrike(*table, QByteArray::number(i % 100).constData());
        table->appendRows({option});
        if (!model.record(model.index(0, 0)).isNull())
            ++found;
    }
    QCOMPARE(found, 50000);
    QCOMPARE(model.rowCount(), 100);
}

void tst_StrikeModelChanges::manyStrikesAtOnce()
{
    constexpr int count = 100000;
    const std::unique_ptr<Table> table = makeSecurities();
    StrikeByBaseCodeModel model(table.get());
    model.setBaseCode(QStringLiteral("AMBER"));
    const ModelMirror mirror(&model);
    QVector<Record> even;
    QVector<Record> odd;
    for (int i = 0; i < count; i += 2) {
        even.append(makeStrike(*table, QByteArray::number(i).constData()));
        odd.append(makeStrike(*table, QByteArray::number(i + 1).constData()));
    }
    const Patience patience;
    table->appendRows(even);
    QCOMPARE(model.rowCount(), count / 2);
    table->appendRows(odd);
    QCOMPARE(model.rowCount(), count);
    QCOMPARE(model.minStep(), 1.0);
    table->removeRows(even);
    QCOMPARE(model.rowCount(), count / 2);
    table->removeRows(odd);
    QCOMPARE(model.rowCount(), 0);
    QVERIFY(mirror.strikes().empty());
    QVERIFY(!patience.isOver());
}

void tst_StrikeModelChanges::manyQuotes()
{
    const std::unique_ptr<Table> table = makeSecurities();
    QVector<Record> rows;
    for (int i = 0; i < 20000; ++i) {
        OptionRow row;
        row.strike = QVariant::fromValue(decimal::fromUnits(i / 2, 1));
        row.baseCode = i % 4 < 2 ? QStringLiteral("AMBER") : QStringLiteral("Cobalt");
        rows.append(makeOption(*table, row));
    }
    table->appendRows(rows);
    StrikeByMaxSessionModel model(table.get());
    model.setBaseCode(QStringLiteral("AMBER"));
    QSignalSpy inserted(&model, SIGNAL(rowsInserted(QModelIndex, int, int)));
    QSignalSpy removed(&model, SIGNAL(rowsRemoved(QModelIndex, int, int)));
    QSignalSpy reset(&model, SIGNAL(modelReset()));
    QSignalSpy changed(&model, SIGNAL(dataChanged(QModelIndex, QModelIndex)));
    const int bid = table->columnIndex(QStringLiteral("bid"));
    for (int i = 0; i < 20; ++i) {
        table->changeRows(rows.mid(i * 1000, 1000), [&](const Record&, const Table::FieldAccess& field) {
            field(bid).setDecimal(decimal::fromUnits(i, 2));
        });
    }
    QCOMPARE(inserted.size() + removed.size() + reset.size() + changed.size(), 0);
    QCOMPARE(model.rowCount(), 5000);
}

PLOT2D_TEST_MAIN(tst_StrikeModelChanges)
#include "tst_strikemodelchanges.moc"
