#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/securitycolumns.h>

#include <QProcess>

namespace {

const char* const withoutColumnsArgument = "--plot-without-columns";
const char* const withoutTableArgument = "--plot-without-table";

const QStringList& columnNames()
{
    static const QStringList names = QStringLiteral(
        "stock_id board_id sec_id expdate base_code price_step sectype option_type strike sess_id isin_id "
        "fut_isin_id base_isin_id bid ask cur_kotir_real cur_kotir old_kotir volat_min volat_max lasttime")
                                         .split(QLatin1Char(' '));
    return names;
}

/// Makes a plot over a securities table with columns missing, or without the table, as a process of its own.
int makePlot(const QStringList& arguments)
{
    TestHost::createBoards();
    if (arguments.at(1) == QLatin1String(withoutColumnsArgument)) {
        const QStringList missing = arguments.value(2).split(QLatin1Char(','), Qt::SkipEmptyParts);
        TestHost::createSecurities(TestHost::without(TestHost::securitiesColumns(), missing));
    }
    const TestPlot plot(false);
    return 0;
}

}

class tst_securitycolumns : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void positions_data();
    void positions();
    void positionsFollowTheTable();
    void withoutTable();
    void missingPositions();
    void plotTakesThePositions();
    void completeTableIsNoError();
    void missingColumnIsFatal_data();
    void missingColumnIsFatal();

private:
    QProcess m_child;

    void runChild(const QStringList& arguments);
};

void tst_securitycolumns::initTestCase()
{
    QCOMPARE(columnNames().size(), SecurityColumns::count);
}

void tst_securitycolumns::cleanup()
{
    TestHost::dropSecurities();
}

void tst_securitycolumns::positions_data()
{
    QTest::addColumn<int>("position");
    for (int i = 0; i < columnNames().size(); ++i)
        QTest::newRow(qPrintable(columnNames().at(i))) << i;
}

void tst_securitycolumns::positions()
{
    QFETCH(int, position);
    const Table* table = TestHost::createSecurities();
    const SecurityColumns columns(table);
    const int index = table->columnIndex(columnNames().at(position));
    QVERIFY(index >= 0);
    QCOMPARE(columns[static_cast<SecurityColumn>(position)], index);
    QVERIFY(columns.missing().isEmpty());
}

void tst_securitycolumns::positionsFollowTheTable()
{
    TestHost::Columns reversed = TestHost::securitiesColumns();
    std::reverse(reversed.begin(), reversed.end());
    const int count = reversed.size();
    const SecurityColumns usual(TestHost::createSecurities());
    const SecurityColumns columns(TestHost::createSecurities(reversed));
    for (int i = 0; i < SecurityColumns::count; ++i) {
        const auto column = static_cast<SecurityColumn>(i);
        QCOMPARE(columns[column], count - 1 - usual[column]);
    }
}

void tst_securitycolumns::withoutTable()
{
    const QString all = QStringLiteral("0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 ");
    const SecurityColumns ofNone;
    const SecurityColumns ofNull(nullptr);
    for (int i = 0; i < SecurityColumns::count; ++i) {
        QCOMPARE(ofNone[static_cast<SecurityColumn>(i)], -1);
        QCOMPARE(ofNull[static_cast<SecurityColumn>(i)], -1);
    }
    QCOMPARE(ofNone.missing(), all);
    QCOMPARE(ofNull.missing(), all);
}

void tst_securitycolumns::missingPositions()
{
    const QStringList names{QStringLiteral("expdate"), QStringLiteral("option_type")};
    const SecurityColumns columns(
        TestHost::createSecurities(TestHost::without(TestHost::securitiesColumns(), names)));
    QCOMPARE(columns.missing(), QStringLiteral("3 7 "));
    QCOMPARE(columns[SecurityColumn::ExpDate], -1);
    QVERIFY(columns[SecurityColumn::BaseCode] >= 0);
}

void tst_securitycolumns::plotTakesThePositions()
{
    const Table* table = TestHost::createSecurities();
    const TestPlot plot(false);
    QCOMPARE(plot.securitiesTable(), table);
    for (int i = 0; i < columnNames().size(); ++i)
        QCOMPARE(
            plot.securityColumns()[static_cast<SecurityColumn>(i)], table->columnIndex(columnNames().at(i)));
}

void tst_securitycolumns::runChild(const QStringList& arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_MESSAGE_PATTERN"),
        QStringLiteral("<%{type}|%{category}|%{file}|%{line}|%{message}>"));
    environment.insert(QStringLiteral("QT_LOGGING_TO_CONSOLE"), QStringLiteral("1"));
    m_child.setProcessEnvironment(environment);
    m_child.start(QCoreApplication::applicationFilePath(), arguments);
    QVERIFY(m_child.waitForFinished());
}

void tst_securitycolumns::completeTableIsNoError()
{
    runChild({QLatin1String(withoutColumnsArgument)});
    QCOMPARE(m_child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_child.exitCode(), 0);
    QVERIFY(!m_child.readAllStandardError().contains("CHECK_COLUMNS_FUNC"));
}

void tst_securitycolumns::missingColumnIsFatal_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("positions");

    const QLatin1String columns(withoutColumnsArgument);
    QTest::newRow("the first") << QStringList{columns, QStringLiteral("stock_id")} << QStringLiteral("0 ");
    QTest::newRow("the last") << QStringList{columns, QStringLiteral("lasttime")} << QStringLiteral("20 ");
    QTest::newRow("one that is never read")
        << QStringList{columns, QStringLiteral("base_isin_id")} << QStringLiteral("12 ");
    QTest::newRow("two") << QStringList{columns, QStringLiteral("option_type,expdate")}
                         << QStringLiteral("3 7 ");
    QTest::newRow("all") << QStringList{columns, columnNames().join(QLatin1Char(','))}
                         << QStringLiteral("0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 ");
    QTest::newRow("the table") << QStringList{QLatin1String(withoutTableArgument)}
                               << QStringLiteral("0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 ");
}

void tst_securitycolumns::missingColumnIsFatal()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, positions);
    runChild(arguments);
    QCOMPARE(m_child.exitStatus(), QProcess::CrashExit);
    const QString place = QStringLiteral("../../../src/plot2d/pricebased2dplot");
    const QString expected = QStringLiteral("<fatal|default|%1|1170|ASSERT failure in CHECK_COLUMNS_FUNC!\n"
                                            "Unsetted struct members found! Members position: %2\n"
                                            "File %1, Line 1170>")
                                 .arg(place, positions);
    const QString written = QString::fromLocal8Bit(m_child.readAllStandardError());
    QVERIFY2(written.contains(expected), qPrintable(written));
}

int main(int argc, char** argv)
{
    TestSupport::preferNoScreen();
    TestSupport::LoudApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() > 1 && arguments.at(1).startsWith(QLatin1String("--plot-without-")))
        return makePlot(arguments);
    return TestSupport::run<tst_securitycolumns>(arguments);
}

#include "tst_securitycolumns.moc"
