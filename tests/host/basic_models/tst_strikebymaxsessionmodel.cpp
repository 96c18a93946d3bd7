#include "host/basic_models/options.h"
#include "support/testmain.h"

#include <basic_models/strikebymaxsessionmodel.h>

#include <limits>

using namespace TestSupport;

class tst_StrikeByMaxSessionModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void empty();
    void largestSession_data();
    void largestSession();
    void filter_data();
    void filter();
    void sessionAmongThoseThatPass();
    void sessionsComeAndGo();
    void nullSessionCountsAsZero();
    void wrongColumns_data();
    void wrongColumns();
    void announcesParameters();
    void equalParameters();

private:
    Record append(const char* strike, const QVariant& session);

    std::unique_ptr<Table> m_table;
    std::unique_ptr<StrikeByMaxSessionModel> m_model;
};

void tst_StrikeByMaxSessionModel::init()
{
    m_table = makeSecurities();
    m_model = std::make_unique<StrikeByMaxSessionModel>(m_table.get());
    m_model->setBaseCode(QStringLiteral("AMBER"));
}

void tst_StrikeByMaxSessionModel::cleanup()
{
    m_model.reset();
    m_table.reset();
}

Record tst_StrikeByMaxSessionModel::append(const char* strike, const QVariant& session)
{
    OptionRow row;
    row.strike = number(strike);
    row.session = session;
    const Record option = makeOption(*m_table, row);
    m_table->appendRows({option});
    return option;
}

void tst_StrikeByMaxSessionModel::empty()
{
    QCOMPARE(m_model->rowCount(), 0);
    QCOMPARE(m_model->session(), 0);
    QVERIFY(m_model->filterParams() == FilterParams());
    StrikeByMaxSessionModel withoutTable(nullptr);
    withoutTable.setBaseCode(QStringLiteral("AMBER"));
    withoutTable.setFilterParams(FilterParams{1, 2, 3, 'C'});
    QCOMPARE(withoutTable.rowCount(), 0);
    QCOMPARE(withoutTable.session(), 0);
}

void tst_StrikeByMaxSessionModel::largestSession_data()
{
    QTest::addColumn<QVariantList>("sessions");
    QTest::addColumn<int>("session");
    QTest::addColumn<QString>("strikes");

    // The strikes are 100, 101 and so on.
    QTest::newRow("one") << QVariantList{7} << 7 << "100";
    QTest::newRow("older later") << QVariantList{7, 6} << 7 << "100";
    QTest::newRow("newer later") << QVariantList{6, 7} << 7 << "101";
    QTest::newRow("both") << QVariantList{6, 7, 6, 7} << 7 << "101 103";
    QTest::newRow("null and one") << QVariantList{QVariant(), 1} << 1 << "101";
    QTest::newRow("null and zero") << QVariantList{QVariant(), 0} << 0 << "100 101";
    QTest::newRow("null and negative") << QVariantList{QVariant(), -1} << 0 << "100";
    QTest::newRow("negative") << QVariantList{-3, -2, -2} << -2 << "101 102";
}

void tst_StrikeByMaxSessionModel::largestSession()
{
    QFETCH(QVariantList, sessions);
    QFETCH(int, session);
    QFETCH(QString, strikes);

    int strike = 100;
    for (const QVariant& each : sessions)
        append(QByteArray::number(strike++).constData(), each);
    QCOMPARE(m_model->session(), session);
    QCOMPARE(textOf(*m_model), strikes);
    m_model->setBaseCode(QStringLiteral("AMBER"));
    QCOMPARE(m_model->session(), session);
    QCOMPARE(textOf(*m_model), strikes);
}

void tst_StrikeByMaxSessionModel::filter_data()
{
    QTest::addColumn<int>("stockId");
    QTest::addColumn<int>("boardId");
    QTest::addColumn<int>("futIsinId");
    QTest::addColumn<int>("optionType");
    QTest::addColumn<QString>("strikes");

    QTest::newRow("nothing") << -1 << -1 << -1 << -1 << "1 2 3 4 5 6 7 8";
    QTest::newRow("exchange") << 1 << -1 << -1 << -1 << "2 3 4 5 6 7 8";
    QTest::newRow("board") << -1 << 2 << -1 << -1 << "1 3 4 5 6 7 8";
    QTest::newRow("future") << -1 << -1 << 3 << -1 << "1 2 4 5 7 8";
    QTest::newRow("calls") << -1 << -1 << -1 << int{'C'} << "1 2 3 6 7";
    QTest::newRow("puts") << -1 << -1 << -1 << int{'P'} << "4";
    QTest::newRow("all") << 1 << 2 << 3 << int{'C'} << "7";
    QTest::newRow("other exchange") << 9 << -1 << -1 << -1 << "1";
    QTest::newRow("null is not zero") << 0 << 0 << 0 << 0 << "";
    QTest::newRow("null is no future") << -1 << -1 << 0 << -1 << "";
    QTest::newRow("null is no type") << -1 << -1 << -1 << 0 << "";
    QTest::newRow("empty is no type") << -1 << -1 << -1 << int{'c'} << "";
    QTest::newRow("other negative number") << -2 << -1 << -1 << -1 << "";
    QTest::newRow("no exchange of all") << 5 << 2 << 3 << int{'C'} << "";
    QTest::newRow("exchange of a null board") << 1 << 8 << -1 << -1 << "2";
}

void tst_StrikeByMaxSessionModel::filter()
{
    QFETCH(int, stockId);
    QFETCH(int, boardId);
    QFETCH(int, futIsinId);
    QFETCH(int, optionType);
    QFETCH(QString, strikes);

    QVector<OptionRow> rows(8);
    rows[0].stockId = 9;
    rows[1].boardId = 8;
    rows[2].futIsinId = 7;
    rows[3].optionType = QStringLiteral("P");
    rows[4].optionType = QVariant();
    rows[5].futIsinId = QVariant();
    rows[7].optionType = QStringLiteral("X");
    for (int i = 0; i < rows.size(); ++i) {
        rows[i].strike = QVariant::fromValue(decimal::fromUnits(i + 1, 0));
        m_table->appendRows({makeOption(*m_table, rows[i])});
    }

    const FilterParams params{stockId, boardId, futIsinId, optionType};
    m_model->setFilterParams(params);
    QVERIFY(m_model->filterParams() == params);
    QCOMPARE(textOf(*m_model), strikes);
    const QVector<Record> all = [&] {
        QVector<Record> taken;
        for (const Record& record : m_table->masterIndex())
            taken.append(record);
        return taken;
    }();
    m_table->clear();
    QCOMPARE(m_model->rowCount(), 0);
    m_table->appendRows(all);
    QCOMPARE(textOf(*m_model), strikes);
}

void tst_StrikeByMaxSessionModel::sessionAmongThoseThatPass()
{
    append("100", 5);
    OptionRow other;
    other.boardId = 8;
    other.session = 9;
    other.strike = number("200");
    m_table->appendRows({makeOption(*m_table, other)});
    QCOMPARE(m_model->session(), 9);
    FilterParams params;
    params.boardId = 2;
    m_model->setFilterParams(params);
    QCOMPARE(m_model->session(), 5);
    QCOMPARE(textOf(*m_model), QStringLiteral("100"));
    changeRows(*m_table, {m_table->record(1)}, {{"board_id", 2}});
    QCOMPARE(m_model->session(), 9);
    QCOMPARE(textOf(*m_model), QStringLiteral("200"));
}

void tst_StrikeByMaxSessionModel::sessionsComeAndGo()
{
    const Record old = append("100", 5);
    append("110", 5);
    QSignalSpy inserted(m_model.get(), SIGNAL(rowsInserted(QModelIndex, int, int)));
    QSignalSpy removed(m_model.get(), SIGNAL(rowsRemoved(QModelIndex, int, int)));
    QSignalSpy reset(m_model.get(), SIGNAL(modelReset()));

    const Record older = append("105", 4);
    changeRows(*m_table, {older}, {{"strike", number("106")}});
    m_table->removeRows({older});
    QCOMPARE(inserted.size() + removed.size() + reset.size(), 0);

    append("120", 5);
    QCOMPARE(inserted.size(), 1);
    const Record next = append("200", 6);
    QCOMPARE(reset.size(), 1);
    QCOMPARE(textOf(*m_model), QStringLiteral("200"));
    changeRows(*m_table, {old}, {{"sess_id", 6}});
    QCOMPARE(reset.size(), 2);
    QCOMPARE(textOf(*m_model), QStringLiteral("100 200"));
    m_table->removeRows({old});
    QCOMPARE(removed.size(), 1);
    m_table->removeRows({next});
    QCOMPARE(reset.size(), 3);
    QCOMPARE(m_model->session(), 5);
    QCOMPARE(textOf(*m_model), QStringLiteral("110 120"));
    QCOMPARE(inserted.size(), 1);
    QCOMPARE(removed.size(), 1);
}

void tst_StrikeByMaxSessionModel::nullSessionCountsAsZero()
{
    const Record option = append("100", QVariant());
    QSignalSpy reset(m_model.get(), SIGNAL(modelReset()));
    QCOMPARE(m_model->session(), 0);
    QCOMPARE(textOf(*m_model), QStringLiteral("100"));
    changeRows(*m_table, {option}, {{"sess_id", 0}});
    QCOMPARE(reset.size(), 0);
    changeRows(*m_table, {option}, {{"sess_id", 1}});
    QCOMPARE(reset.size(), 1);
    QCOMPARE(m_model->session(), 1);
}

void tst_StrikeByMaxSessionModel::wrongColumns_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("filteredBoard");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("session");

    const auto row = [](const char* name, const char* column, FieldType type, const QVariant& value,
                         int board, int rows, int session) {
        QTest::newRow(name) << QString::fromLatin1(column) << static_cast<int>(type) << value << board << rows
                            << session;
    };
    const QVariant missing = QStringLiteral("missing");
    row("64 bit session", "sess_id", FieldType::Int64, number64(9), 2, 1, 9);
    row("session above 32 bits", "sess_id", FieldType::Int64, number64(Q_INT64_C(1) << 40), 2, 1,
        std::numeric_limits<int>::max());
    row("session below 32 bits", "sess_id", FieldType::Int64, number64(-(Q_INT64_C(1) << 40)), 2, 1,
        std::numeric_limits<int>::min());
    row("null 64 bit session", "sess_id", FieldType::Int64, QVariant(), 2, 1, 0);
    row("text session", "sess_id", FieldType::Text, QStringLiteral("9"), 2, 0, 0);
    row("null text session", "sess_id", FieldType::Text, QVariant(), 2, 0, 0);
    row("no session", "sess_id", FieldType::Int32, missing, 2, 0, 0);
    row("64 bit board", "board_id", FieldType::Int64, number64(2), 2, 1, 1);
    row("text board", "board_id", FieldType::Text, QStringLiteral("2"), 2, 0, 0);
    row("text board, not asked", "board_id", FieldType::Text, QStringLiteral("2"), -1, 1, 1);
    row("no board", "board_id", FieldType::Int32, missing, 2, 0, 0);
}

void tst_StrikeByMaxSessionModel::wrongColumns()
{
    QFETCH(QString, column);
    QFETCH(int, type);
    QFETCH(QVariant, value);
    QFETCH(int, filteredBoard);
    QFETCH(int, rows);
    QFETCH(int, session);

    const bool missing = value == QStringLiteral("missing");
    QVector<TableColumnDef> columns = SecuritiesTable::securitiesColumns();
    for (TableColumnDef& definition : columns) {
        if (definition.name == column)
            definition = {missing ? QStringLiteral("other") : column, static_cast<FieldType>(type), 0};
    }
    Table table(SecuritiesTable::securitiesName, columns);
    const Record option = table.createRow();
    const std::initializer_list<std::pair<QString, QVariant>> fields
        = {{QStringLiteral("strike"), number("100")}, {QStringLiteral("base_code"), QStringLiteral("AMBER")},
            {QStringLiteral("sectype"), QStringLiteral("O")}, {QStringLiteral("sess_id"), 1},
            {QStringLiteral("board_id"), 2}};
    for (const auto& [name, usual] : fields) {
        if (name != column)
            table.value(option, table.columnIndex(name)).setVariant(usual);
        else if (!missing)
            table.value(option, table.columnIndex(name)).setVariant(value);
    }
    table.appendRows({option});
    StrikeByMaxSessionModel model(&table);
    model.setBaseCode(QStringLiteral("AMBER"));
    FilterParams params;
    params.boardId = filteredBoard;
    model.setFilterParams(params);
    QCOMPARE(model.rowCount(), rows);
    QCOMPARE(model.session(), session);
}

void tst_StrikeByMaxSessionModel::announcesParameters()
{
    append("100", 1);
    QSignalSpy reset(m_model.get(), SIGNAL(modelReset()));
    FilterParams params;
    params.optionType = 'C';
    m_model->setFilterParams(params);
    m_model->setFilterParams(params);
    QCOMPARE(reset.size(), 2);
}

void tst_StrikeByMaxSessionModel::equalParameters()
{
    const FilterParams all{1, 2, 3, 'C'};
    QVERIFY(all == (FilterParams{1, 2, 3, 'C'}));
    QVERIFY(all != (FilterParams{0, 2, 3, 'C'}));
    QVERIFY(all != (FilterParams{1, 0, 3, 'C'}));
    QVERIFY(all != (FilterParams{1, 2, 0, 'C'}));
    QVERIFY(all != (FilterParams{1, 2, 3, 'P'}));
}

PLOT2D_TEST_MAIN(tst_StrikeByMaxSessionModel)
#include "tst_strikebymaxsessionmodel.moc"
