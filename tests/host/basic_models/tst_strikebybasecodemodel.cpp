#include "host/basic_models/options.h"
#include "support/testmain.h"

using namespace TestSupport;

class tst_StrikeByBaseCodeModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void empty();
    void takesOptions_data();
    void takesOptions();
    void data();
    void baseCode();
    void rowsOutside();
    void firstRecordOfAStrike();
    void sort();
    void persistentIndexes();
    void minStep_data();
    void minStep();
    void withoutTable();
    void tableDestroyed();
    void wrongColumns_data();
    void wrongColumns();

private:
    std::unique_ptr<Table> m_table;
    std::unique_ptr<StrikeByBaseCodeModel> m_model;
};

void tst_StrikeByBaseCodeModel::init()
{
    m_table = makeSecurities();
    m_model = std::make_unique<StrikeByBaseCodeModel>(m_table.get());
    m_model->setBaseCode(QStringLiteral("AMBER"));
}

void tst_StrikeByBaseCodeModel::cleanup()
{
    m_model.reset();
    m_table.reset();
}

void tst_StrikeByBaseCodeModel::empty()
{
    QCOMPARE(m_model->rowCount(), 0);
    QCOMPARE(m_model->columnCount(), 1);
    QCOMPARE(m_model->minStep(), 0.0);
    QVERIFY(m_model->strike(0).isZero());
    QVERIFY(m_model->record(QModelIndex()).isNull());
}

void tst_StrikeByBaseCodeModel::takesOptions_data()
{
    QTest::addColumn<QVariant>("strike");
    QTest::addColumn<QVariant>("baseCode");
    QTest::addColumn<QVariant>("sectype");
    QTest::addColumn<QString>("expected");

    const QVariant option = QStringLiteral("O");
    const QVariant code = QStringLiteral("AMBER");
    QTest::newRow("option") << number("100") << code << option << "100";
    QTest::newRow("fraction") << number("0.00001") << code << option << "0.00001";
    QTest::newRow("negative") << number("-37.63") << code << option << "-37.63";
    QTest::newRow("zero") << number("0") << code << option << "0";
    QTest::newRow("no strike") << QVariant() << code << option << "";
    QTest::newRow("other code") << number("100") << QVariant(QStringLiteral("SIX")) << option << "";
    QTest::newRow("other case") << number("100") << QVariant(QStringLiteral("amber")) << option << "";
    QTest::newRow("no code") << number("100") << QVariant() << option << "";
    QTest::newRow("future") << number("100") << code << QVariant(QStringLiteral("F")) << "";
    QTest::newRow("no type") << number("100") << code << QVariant() << "";
    QTest::newRow("type of several letters")
        << number("100") << code << QVariant(QStringLiteral("OPT")) << "100";
}

void tst_StrikeByBaseCodeModel::takesOptions()
{
    QFETCH(QVariant, strike);
    QFETCH(QVariant, baseCode);
    QFETCH(QVariant, sectype);
    QFETCH(QString, expected);

    OptionRow row;
    row.strike = strike;
    row.baseCode = baseCode;
    row.sectype = sectype;
    m_table->appendRows({makeOption(*m_table, row)});
    QCOMPARE(textOf(*m_model), expected);
    QCOMPARE(m_model->rowCount(), expected.isEmpty() ? 0 : 1);
    m_model->setBaseCode(QStringLiteral("AMBER"));
    QCOMPARE(textOf(*m_model), expected);
}

void tst_StrikeByBaseCodeModel::data()
{
    m_table->appendRows(makeStrikes(*m_table, {"110.5", "100"}));
    const QModelIndex second = m_model->index(1, 0);
    QCOMPARE(second.data().toString(), QStringLiteral("110.5"));
    QCOMPARE(second.data(Qt::EditRole).userType(), qMetaTypeId<decimal>());
    QVERIFY(second.data(Qt::EditRole).value<decimal>() == decimal::fromUnits(1105, 1));
    QVERIFY(!second.data(Qt::DecorationRole).isValid());
    QVERIFY(!m_model->data(QModelIndex()).isValid());
    QCOMPARE(m_model->rowCount(second), 0);
    QCOMPARE(m_model->columnCount(second), 0);
}

void tst_StrikeByBaseCodeModel::baseCode()
{
    OptionRow other;
    other.baseCode = QStringLiteral("Cobalt");
    other.strike = number("7");
    OptionRow nameless;
    nameless.baseCode = QStringLiteral("");
    m_table->appendRows(
        {makeStrike(*m_table, "100"), makeOption(*m_table, other), makeOption(*m_table, nameless)});
    QCOMPARE(m_model->baseCode(), QStringLiteral("AMBER"));
    QCOMPARE(textOf(*m_model), QStringLiteral("100"));
    m_model->setBaseCode(QStringLiteral("Cobalt"));
    QCOMPARE(m_model->baseCode(), QStringLiteral("Cobalt"));
    QCOMPARE(textOf(*m_model), QStringLiteral("7"));
    m_model->setBaseCode(QString());
    QCOMPARE(m_model->rowCount(), 0);
    m_table->appendRows({makeOption(*m_table, nameless)});
    changeRows(*m_table, {m_table->record(0)}, {{"base_code", QStringLiteral("")}});
    QCOMPARE(m_model->rowCount(), 0);
}

void tst_StrikeByBaseCodeModel::rowsOutside()
{
    m_table->appendRows(makeStrikes(*m_table, {"100", "110"}));
    QVERIFY(m_model->strike(-1).isZero());
    QVERIFY(m_model->strike(2).isZero());
    QVERIFY(m_model->record(QModelIndex()).isNull());
    QVERIFY(m_model->record(m_model->index(2, 0)).isNull());
    const QModelIndex late = m_model->index(1, 0);
    m_table->removeRows({m_table->record(1)});
    QVERIFY(m_model->record(late).isNull());
    StrikeByBaseCodeModel other(m_table.get());
    other.setBaseCode(QStringLiteral("AMBER"));
    QVERIFY(!m_model->record(m_model->index(0, 0)).isNull());
    QVERIFY(m_model->record(other.index(0, 0)).isNull());
}

void tst_StrikeByBaseCodeModel::firstRecordOfAStrike()
{
    const auto first = [&] { return m_model->record(m_model->index(0, 0)); };
    const QVector<Record> same = makeStrikes(*m_table, {"100", "100", "100", "100", "100"});
    m_table->appendRows({same[0]});
    QVERIFY(first() == same[0]);
    m_table->appendRows({makeStrike(*m_table, "110"), same[1]});
    QVERIFY(first() == same[0]);
    m_table->insertRows(0, {same[2]});
    QVERIFY(first() == same[2]);
    m_table->insertRows(1, {same[3]});
    QVERIFY(first() == same[2]);
    m_table->removeRows({same[2]});
    QVERIFY(first() == same[3]);
    m_table->removeRows({same[3]});
    QVERIFY(first() == same[0]);
    // A row that stood before the others becomes an option of the strike.
    OptionRow future;
    future.sectype = QStringLiteral("F");
    const Record late = makeOption(*m_table, future);
    m_table->insertRows(0, {late});
    QVERIFY(first() == same[0]);
    changeRows(*m_table, {late}, {{"sectype", QStringLiteral("O")}});
    QVERIFY(first() == late);
    m_table->resetRows({same[1], same[4]});
    QVERIFY(first() == same[1]);
    QCOMPARE(m_model->rowCount(), 1);
}

void tst_StrikeByBaseCodeModel::sort()
{
    m_table->appendRows(makeStrikes(*m_table, {"110", "90", "100"}));
    QCOMPARE(textOf(*m_model), QStringLiteral("90 100 110"));
    QSignalSpy layout(m_model.get(), SIGNAL(layoutChanged()));
    QSignalSpy reset(m_model.get(), SIGNAL(modelReset()));
    m_model->sort(0, Qt::DescendingOrder);
    QCOMPARE(layout.size(), 1);
    QCOMPARE(textOf(*m_model), QStringLiteral("110 100 90"));
    m_model->sort(1, Qt::AscendingOrder);
    m_model->sort(-1, Qt::AscendingOrder);
    QCOMPARE(layout.size(), 1);
    m_model->sort(0, Qt::DescendingOrder);
    QCOMPARE(layout.size(), 2);
    QCOMPARE(textOf(*m_model), QStringLiteral("110 100 90"));
    QCOMPARE(reset.size(), 0);

    m_table->appendRows(makeStrikes(*m_table, {"95", "120", "80"}));
    QCOMPARE(textOf(*m_model), QStringLiteral("120 110 100 95 90 80"));
    QCOMPARE(m_model->minStep(), 5.0);
    m_table->removeRows({m_table->record(0)});
    QCOMPARE(textOf(*m_model), QStringLiteral("120 100 95 90 80"));
    m_model->setBaseCode(QStringLiteral("AMBER"));
    QCOMPARE(textOf(*m_model), QStringLiteral("120 100 95 90 80"));
    m_model->sort(0, Qt::AscendingOrder);
    QCOMPARE(textOf(*m_model), QStringLiteral("80 90 95 100 120"));
}

void tst_StrikeByBaseCodeModel::persistentIndexes()
{
    m_table->appendRows(makeStrikes(*m_table, {"90", "100", "110"}));
    const QPersistentModelIndex low(m_model->index(0, 0));
    const QPersistentModelIndex high(m_model->index(2, 0));
    m_model->sort(0, Qt::DescendingOrder);
    QCOMPARE(low.row(), 2);
    QCOMPARE(high.row(), 0);
    m_table->appendRows(makeStrikes(*m_table, {"95", "120"}));
    QCOMPARE(low.data().toString(), QStringLiteral("90"));
    QCOMPARE(high.data().toString(), QStringLiteral("110"));
    m_table->removeRows({m_table->record(0)});
    QVERIFY(!low.isValid());
    QCOMPARE(high.row(), 1);
}

void tst_StrikeByBaseCodeModel::minStep_data()
{
    QTest::addColumn<QStringList>("strikes");
    QTest::addColumn<double>("step");

    const auto row = [](const char* strikes, double step) {
        QTest::newRow(strikes) << QString::fromLatin1(strikes).split(QLatin1Char(' ')) << step;
    };
    row("100", 0.0);
    row("100 100", 0.0);
    row("100 110", 10.0);
    row("100 110 115 130", 5.0);
    row("115 100 130 110", 5.0);
    // In doubles the distances come out as 0.09999999999999998 and 0.10000000000000009.
    row("0.7 0.8 0.9", 0.1);
    row("1.1 1.2 1.3", 0.1);
    row("100000000000.00001 100000000000.00002", 0.00001);
    row("-5 0 7", 5.0);
}

void tst_StrikeByBaseCodeModel::minStep()
{
    QFETCH(QStringList, strikes);
    QFETCH(double, step);

    for (const QString& strike : strikes)
        m_table->appendRows({makeStrike(*m_table, strike.toLatin1().constData())});
    // Exactly, hence no QCOMPARE.
    QVERIFY(m_model->minStep() == step);
    m_model->sort(0, Qt::DescendingOrder);
    QVERIFY(m_model->minStep() == step);
}

void tst_StrikeByBaseCodeModel::withoutTable()
{
    StrikeByBaseCodeModel model(nullptr);
    model.setBaseCode(QStringLiteral("AMBER"));
    model.sort(0, Qt::DescendingOrder);
    QCOMPARE(model.baseCode(), QStringLiteral("AMBER"));
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.minStep(), 0.0);
}

void tst_StrikeByBaseCodeModel::tableDestroyed()
{
    m_table->appendRows(makeStrikes(*m_table, {"90", "100"}));
    const QPersistentModelIndex index(m_model->index(1, 0));
    QSignalSpy reset(m_model.get(), SIGNAL(modelReset()));
    m_table.reset();
    QCOMPARE(reset.size(), 1);
    QCOMPARE(m_model->rowCount(), 0);
    QVERIFY(!index.isValid());
    m_model->setBaseCode(QStringLiteral("Cobalt"));
    QCOMPARE(m_model->rowCount(), 0);
}

void tst_StrikeByBaseCodeModel::wrongColumns_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");

    const auto row = [](const char* name, const char* column, FieldType type, const QVariant& value) {
        QTest::newRow(name) << QString::fromLatin1(column) << static_cast<int>(type) << value;
    };
    row("text strike", "strike", FieldType::Text, QStringLiteral("100"));
    row("double strike", "strike", FieldType::Double, 100.0);
    row("base code of a number", "base_code", FieldType::Int32, 7);
    row("type of a number", "sectype", FieldType::Int32, int{'O'});
    row("no strike", "strike", FieldType::Text, QStringLiteral("missing"));
    row("no base code", "base_code", FieldType::Text, QStringLiteral("missing"));
    row("no type", "sectype", FieldType::Text, QStringLiteral("missing"));
}

void tst_StrikeByBaseCodeModel::wrongColumns()
{
    QFETCH(QString, column);
    QFETCH(int, type);
    QFETCH(QVariant, value);

    const bool missing = value == QStringLiteral("missing");
    QVector<TableColumnDef> columns = SecuritiesTable::securitiesColumns();
    for (TableColumnDef& definition : columns) {
        if (definition.name == column)
            definition = {missing ? QStringLiteral("other") : column, static_cast<FieldType>(type), 0};
    }
    Table table(SecuritiesTable::securitiesName, columns);
    const Record option = table.createRow();
    const std::initializer_list<std::pair<QString, QVariant>> fields
        = {{QStringLiteral("strike"), number("100")}, {QStringLiteral("base_code"), QStringLiteral("7")},
            {QStringLiteral("sectype"), QStringLiteral("O")}};
    for (const auto& [name, usual] : fields) {
        if (name != column)
            table.value(option, table.columnIndex(name)).setVariant(usual);
        else if (!missing)
            table.value(option, table.columnIndex(name)).setVariant(value);
    }
    table.appendRows({option});
    StrikeByBaseCodeModel model(&table);
    model.setBaseCode(QStringLiteral("7"));
    QCOMPARE(model.rowCount(), 0);
    table.resetRows({option});
    QCOMPARE(model.rowCount(), 0);
}

PLOT2D_TEST_MAIN(tst_StrikeByBaseCodeModel)
#include "tst_strikebybasecodemodel.moc"
