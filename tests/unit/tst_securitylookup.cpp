#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <limits>

using TestHost::Row;

Q_DECLARE_METATYPE(FieldType)

/// Which future a plot uses.
class tst_securitylookup : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void configurationsWithAFuture_data();
    void configurationsWithAFuture();
    void baseCodeClearsNoIdThatIsNotSet();
    void virtualFuture_data();
    void virtualFuture();

    void nullRecordWithoutRows();
    void nullRecordWithoutBaseCode();
    void rowsThatAreNoCandidates_data();
    void rowsThatAreNoCandidates();

    void idsOf64BitsAreClamped_data();
    void idsOf64BitsAreClamped();
    void nullIdsAreZero();
    void idsOfAWrongType_data();
    void idsOfAWrongType();

    void tablesDroppedWhileThePlotLives();

private:
    static Record futureOf(const QString& baseCode);
};

void tst_securitylookup::init()
{
    TestHost::createSecurities();
    TestHost::createBoards();
    TestHost::addBoard(1, 2, true);
    TestHost::addBoard(1, 3, false);
}

void tst_securitylookup::cleanup()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

Record tst_securitylookup::futureOf(const QString& baseCode)
{
    TestPlot plot(false);
    plot.setBaseCode(baseCode);
    return plot.getFuture();
}

void tst_securitylookup::configurationsWithAFuture_data()
{
    QTest::addColumn<QStringList>("setters");
    QTest::addColumn<QString>("future");

    const auto steps = [](const char* text) { return QString::fromLatin1(text).split(QLatin1Char(' ')); };
    const QString none;
    const QString exact = QStringLiteral("exact");
    const QString earliest = QStringLiteral("earliest");
    QTest::newRow("nothing set") << QStringList() << none;
    QTest::newRow("ISIN id alone") << steps("isin=10") << none;
    QTest::newRow("board id alone") << steps("board=2") << none;
    QTest::newRow("both ids") << steps("isin=10 board=2") << exact;
    QTest::newRow("both ids, board first") << steps("board=2 isin=10") << exact;
    QTest::newRow("base code alone") << steps("code=Amber") << earliest;
    QTest::newRow("ids, then base code") << steps("isin=10 board=2 code=Amber") << earliest;
    QTest::newRow("base code, then ISIN id") << steps("code=Amber isin=10") << none;
    QTest::newRow("base code, then board id") << steps("code=Amber board=2") << none;
    QTest::newRow("base code, then both ids") << steps("code=Amber isin=10 board=2") << exact;
    QTest::newRow("ISIN id 0 is ignored") << steps("code=Amber isin=0") << earliest;
    QTest::newRow("negative ISIN id is ignored") << steps("isin=10 board=2 isin=-1") << exact;
    QTest::newRow("board id -5 is ignored") << steps("code=Amber board=-5") << earliest;
    QTest::newRow("board id 0 is ignored") << steps("isin=10 board=2 board=0") << exact;
    QTest::newRow("empty base code is ignored") << steps("isin=10 board=2 code=") << exact;
    QTest::newRow("ids and code anew clear the ids") << steps("isin=10 code=Amber board=2") << none;
}

void tst_securitylookup::configurationsWithAFuture()
{
    const Record exact = TestHost::addSecurity(TestHost::future());
    const Record earliest = TestHost::addSecurity(
        TestHost::future({{"isin_id", 11}, {"expdate", TestHost::moment(2029, 1, 1)}}));

    QFETCH(QStringList, setters);
    QFETCH(QString, future);
    TestPlot plot(false);
    for (const QString& setter : setters) {
        const QString name = setter.section(QLatin1Char('='), 0, 0);
        const QString value = setter.section(QLatin1Char('='), 1);
        if (name == QLatin1String("isin"))
            plot.setIsinId(value.toInt());
        else if (name == QLatin1String("board"))
            plot.setBoardId(value.toInt());
        else
            plot.setBaseCode(value);
    }
    const Record expected = future == QLatin1String("exact") ? exact
        : future == QLatin1String("earliest")                ? earliest
                                                             : Record();
    QVERIFY(plot.getFuture() == expected);
}

void tst_securitylookup::baseCodeClearsNoIdThatIsNotSet()
{
    TestPlot plot(false);
    plot.setBaseCode(QStringLiteral("Amber"));
    plot.setBaseCode(QString());
    QCOMPARE(plot.baseCode(), QStringLiteral("Amber"));
    plot.setBoardId(2);
    QVERIFY(plot.baseCode().isEmpty());
}

void tst_securitylookup::virtualFuture_data()
{
    QTest::addColumn<int>("isinId");
    QTest::addColumn<int>("boardId");
    QTest::addColumn<bool>("found");
    QTest::newRow("there") << 10 << 2 << true;
    QTest::newRow("other board") << 10 << 3 << false;
    QTest::newRow("other ISIN id") << 11 << 2 << false;
    QTest::newRow("ISIN id 1") << 1 << 1 << true;
    QTest::newRow("ISIN id 0") << 0 << 1 << false;
    QTest::newRow("board id 0") << 1 << 0 << false;
    QTest::newRow("negative ids") << -1 << -1 << false;
}

void tst_securitylookup::virtualFuture()
{
    QFETCH(int, isinId);
    QFETCH(int, boardId);
    QFETCH(bool, found);
    // The rows with ids below 1 stand in the table, so that only the plot's own test refuses them.
    for (const auto& [isin, board] : {std::pair{10, 2}, {1, 1}, {0, 1}, {1, 0}, {-1, -1}})
        TestHost::addSecurity(TestHost::future({{"isin_id", isin}, {"board_id", board}}));

    const TestPlot plot(false);
    const Record record = plot.getVirtualFuture(isinId, boardId);
    QCOMPARE(!record.isNull(), found);
    if (found) {
        const auto id = [&](SecurityColumn column) {
            return plot.securitiesTable()->dataPtr(record.row(), plot.securityColumns()[column]).toInt32();
        };
        QCOMPARE(id(SecurityColumn::IsinId), isinId);
        QCOMPARE(id(SecurityColumn::BoardId), boardId);
    }
}

void tst_securitylookup::nullRecordWithoutRows()
{
    QVERIFY(futureOf(QStringLiteral("Amber")).isNull());
}

void tst_securitylookup::nullRecordWithoutBaseCode()
{
    TestHost::addSecurity(TestHost::future({{"base_code", QString("")}}));
    const TestPlot plot(false);
    QVERIFY(plot.getMinimumDateExerciseFuture().isNull());
}

void tst_securitylookup::rowsThatAreNoCandidates_data()
{
    QTest::addColumn<Row>("changes");
    QTest::addColumn<bool>("candidate");
    QTest::newRow("a future") << Row() << true;
    QTest::newRow("an option") << Row{{"sectype", "O"}} << false;
    QTest::newRow("type in lower case") << Row{{"sectype", "f"}} << false;
    QTest::newRow("null type") << Row{{"sectype", QVariant()}} << false;
    QTest::newRow("other code") << Row{{"base_code", "Cobalt"}} << false;
    QTest::newRow("code in other case") << Row{{"base_code", "AMBER"}} << false;
    QTest::newRow("longer code") << Row{{"base_code", "Amber "}} << false;
    QTest::newRow("null code") << Row{{"base_code", QVariant()}} << false;
    QTest::newRow("board that is not anonymous") << Row{{"board_id", 3}} << false;
    QTest::newRow("unknown board") << Row{{"board_id", 4}} << false;
    QTest::newRow("board of another exchange") << Row{{"stock_id", 2}} << false;
    QTest::newRow("no session") << Row{{"sess_id", 0}} << false;
    QTest::newRow("null session") << Row{{"sess_id", QVariant()}} << false;
    QTest::newRow("negative session") << Row{{"sess_id", -1}} << true;
}

void tst_securitylookup::rowsThatAreNoCandidates()
{
    QFETCH(Row, changes);
    QFETCH(bool, candidate);
    // A row that is skipped must not hide a later one either.
    Row early = changes;
    early.insert("expdate", TestHost::moment(2029, 1, 1));
    const Record tested = TestHost::addSecurity(TestHost::future(early));
    const Record other = TestHost::addSecurity(TestHost::future());
    QVERIFY(futureOf(QStringLiteral("Amber")) == (candidate ? tested : other));
}

void tst_securitylookup::idsOf64BitsAreClamped_data()
{
    QTest::addColumn<qint64>("stored");
    QTest::addColumn<int>("read");
    const int highest = std::numeric_limits<int>::max();
    const int lowest = std::numeric_limits<int>::min();
    QTest::newRow("fits") << qint64(17) << 17;
    QTest::newRow("largest that fits") << qint64(2147483647) << highest;
    QTest::newRow("above") << qint64(2147483648) << highest;
    QTest::newRow("far above, low half 5") << qint64(0x7000000000000005) << highest;
    QTest::newRow("smallest that fits") << qint64(-2147483648LL) << lowest;
    QTest::newRow("below") << qint64(-2147483649LL) << lowest;
    QTest::newRow("far below") << std::numeric_limits<qint64>::min() << lowest;
}

void tst_securitylookup::idsOf64BitsAreClamped()
{
    QFETCH(qint64, stored);
    QFETCH(int, read);
    TestHost::createBoards();
    TestHost::addBoard(read, 2, true);
    TestHost::addBoard(1, read, true);
    TestHost::Columns columns = TestHost::securitiesColumns();
    for (const char* name : {"stock_id", "board_id", "sess_id"})
        columns = TestHost::withType(columns, QString::fromLatin1(name), FieldType::Int64);

    TestHost::createSecurities(columns);
    const Record byStock = TestHost::addSecurity(TestHost::future({{"stock_id", stored}}));
    QVERIFY(futureOf(QStringLiteral("Amber")) == byStock);

    TestHost::createSecurities(columns);
    const Record byBoard = TestHost::addSecurity(TestHost::future({{"board_id", stored}}));
    QVERIFY(futureOf(QStringLiteral("Amber")) == byBoard);

    // A session whose low 32 bits are 0 is a session all the same.
    TestHost::createSecurities(columns);
    TestHost::createBoards();
    TestHost::addBoard(1, 2, true);
    const Record bySession = TestHost::addSecurity(TestHost::future({{"sess_id", qint64(0x100000000)}}));
    QVERIFY(futureOf(QStringLiteral("Amber")) == bySession);
}

void tst_securitylookup::nullIdsAreZero()
{
    TestHost::addBoard(0, 0, true);
    const Record record
        = TestHost::addSecurity(TestHost::future({{"stock_id", QVariant()}, {"board_id", QVariant()}}));
    QVERIFY(futureOf(QStringLiteral("Amber")) == record);
}

void tst_securitylookup::idsOfAWrongType_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<FieldType>("type");
    for (const char* column : {"stock_id", "board_id", "sess_id"}) {
        const QString name = QString::fromLatin1(column);
        QTest::addRow("%s as double", column) << name << FieldType::Double;
        QTest::addRow("%s as decimal", column) << name << FieldType::Decimal;
        QTest::addRow("%s as text", column) << name << FieldType::Text;
        QTest::addRow("%s as moment", column) << name << FieldType::Moment;
    }
}

void tst_securitylookup::idsOfAWrongType()
{
    QFETCH(QString, column);
    QFETCH(FieldType, type);
    TestHost::createSecurities(TestHost::withType(TestHost::securitiesColumns(), column, type));
    // Not a future, of another code and of no session: the ids are read all the same.
    Row row = TestHost::future({{"sectype", "O"}, {"base_code", "Cobalt"}});
    row.insert("sess_id", 0);
    row.insert(column, 1);
    TestHost::addSecurity(row);
    QCOMPARE(TestHost::thrownText([] { futureOf(QStringLiteral("Amber")); }),
        QStringLiteral("Incorrect type conversion."));
}

void tst_securitylookup::tablesDroppedWhileThePlotLives()
{
    TestHost::addSecurity(TestHost::future());
    TestPlot byCode(false);
    byCode.setBaseCode(QStringLiteral("Amber"));
    TestPlot byIds(false);
    byIds.setIsinId(10);
    byIds.setBoardId(2);
    QVERIFY(!byCode.getFuture().isNull());
    QVERIFY(!byIds.getFuture().isNull());

    TestHost::dropBoards();
    QVERIFY(byCode.getFuture().isNull());
    TestHost::dropSecurities();
    QVERIFY(byCode.getFuture().isNull());
    QVERIFY(byIds.getFuture().isNull());
    QVERIFY(!byCode.securitiesTable());
}

PLOT2D_TEST_MAIN(tst_securitylookup)
#include "tst_securitylookup.moc"
