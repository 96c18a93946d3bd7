#include "faults/hostcolumns.h"
#include "support/childrun.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotpointmanager.h>

using Manager = PriceBased2dPlotPointManager;

namespace {

const QString code = QStringLiteral("Amber");
constexpr char securities[] = "securities";
constexpr char boards[] = "boards";

}

/// Tables that lack columns: without one that a plot relies on there is no plot, without another one it knows
/// less.
class tst_missingcolumns : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void eachColumnMissing_data();
    void eachColumnMissing();
    void columnsThatMayBeMissing_data();
    void columnsThatMayBeMissing();
};

void tst_missingcolumns::cleanup()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_missingcolumns::eachColumnMissing_data()
{
    QTest::addColumn<QStringList>("missing");
    QTest::addColumn<QByteArray>("positions");
    const QStringList names{"stock_id", "board_id", "sec_id", "expdate", "base_code", "price_step", "sectype",
        "option_type", "strike", "sess_id", "isin_id", "fut_isin_id", "base_isin_id", "bid", "ask",
        "cur_kotir_real", "cur_kotir", "old_kotir", "volat_min", "volat_max", "lasttime"};
    QByteArray all;
    for (int i = 0; i < names.size(); ++i) {
        const QByteArray position = QByteArray::number(i) + ' ';
        QTest::newRow(qPrintable(names.at(i))) << QStringList{names.at(i)} << position;
        all += position;
    }
    QTest::newRow("all") << names << all;
}

void tst_missingcolumns::eachColumnMissing()
{
    QFETCH(QStringList, missing);
    QFETCH(QByteArray, positions);
    if (TestSupport::isChild()) {
        TestHost::createSecurities(TestHost::without(TestHost::securitiesColumns(), missing));
        const TestPlot plot(false);
        return;
    }
    const TestSupport::ChildRun run = TestSupport::repeatRowInChild(QProcessEnvironment::systemEnvironment());
    QVERIFY2(run.finished && run.crashed, run.output);
    QVERIFY2(run.output.contains("Members position: " + positions + "\n"), run.output);
}

void tst_missingcolumns::columnsThatMayBeMissing_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QStringList>("missing");
    QTest::newRow("decimals") << securities << QStringList{"decimals"};
    QTest::newRow("all that no position belongs to")
        << securities << QStringList{"decimals", "short_name", "last", "settlement", "volume", "volat"};
    for (const char* column : {"stock_id", "board_id", "is_anonym", "name"})
        QTest::newRow(column) << boards << QStringList{column};
    QTest::newRow("all of the boards") << boards << QStringList{"stock_id", "board_id", "is_anonym", "name"};
}

void tst_missingcolumns::columnsThatMayBeMissing()
{
    QFETCH(QString, table);
    QFETCH(QStringList, missing);
    HostColumns::fill({QLatin1String(boards), QStringLiteral("name"), FieldType::Text, false});
    if (table == QLatin1String(boards)) {
        TestHost::createBoards(TestHost::without(TestHost::boardsColumns(), missing));
        if (missing == QStringList{"name"})
            TestHost::addBoard(1, 2, true);
    } else {
        TestHost::createSecurities(TestHost::without(TestHost::securitiesColumns(), missing));
        TestHost::addSecurity(TestHost::future());
        for (const char* strike : {"100", "110"})
            TestHost::addSecurity(TestHost::future({{"sectype", "O"}, {"strike", strike}}));
    }
    TestPlot plot;
    plot.setBaseCode(code);
    const bool hasFuture = table == QLatin1String(securities) || missing == QStringList{"name"};
    QCOMPARE(plot.getFuture().isNull(), !hasFuture);
    Manager manager(false, &plot);
    const bool hasInterval = table == QLatin1String(boards) && hasFuture;
    QCOMPARE(manager.interval().valid, hasInterval);
}

PLOT2D_TEST_MAIN(tst_missingcolumns)
#include "tst_missingcolumns.moc"
