#include "host/directory/rowlistener.h"
#include "host/directory/securities.h"
#include "support/testmain.h"

using namespace TestSupport;

class tst_SecurityDirectory : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void withoutTable();
    void findsByIsin();
    void decimals_data();
    void decimals();
    void firstInTheTablesOrder();
    void idsChange();
    void tableResetAndMadeAnew();
    void wrongColumns_data();
    void wrongColumns();
    void askedBeforeTheDirectoryHears();
    void rowsTakenBackByAnotherListener();
};

void tst_SecurityDirectory::cleanup()
{
    database()->dropTable(SecuritiesTable::securitiesName);
}

void tst_SecurityDirectory::withoutTable()
{
    QVERIFY(SecurityDirectory::i());
    QCOMPARE(SecurityDirectory::i(), SecurityDirectory::i());
    QVERIFY(byIsin(10, 2).isNull());
    QCOMPARE(decimalsOf(1, 2, 3), -1);
}

void tst_SecurityDirectory::findsByIsin()
{
    Table* table = createSecurities();
    QVERIFY(byIsin(10, 2).isNull());
    const Record first = makeSecurity(*table, 10, 2, number64(1), 3);
    const Record second = makeSecurity(*table, 10, 4, number64(1), 3);
    const Record third = makeSecurity(*table, -1, 2, number64(1), 3);
    const Record nullIsin = makeSecurity(*table, QVariant(), 2, number64(1), 3);
    const Record nullBoard = makeSecurity(*table, 11, QVariant(), number64(1), 3);
    table->appendRows({nullIsin, nullBoard, first, second, third});
    QVERIFY(byIsin(10, 2) == first);
    QVERIFY(byIsin(10, 4) == second);
    QVERIFY(byIsin(-1, 2) == third);
    QVERIFY(byIsin(10, 3).isNull());
    QVERIFY(byIsin(2, 10).isNull());
    QVERIFY(byIsin(0, 2).isNull());
    QVERIFY(byIsin(11, 0).isNull());
    QVERIFY(byIsin(11, -1).isNull());
}

void tst_SecurityDirectory::decimals_data()
{
    QTest::addColumn<QVariant>("secId");
    QTest::addColumn<QVariant>("decimals");
    QTest::addColumn<int>("expected");

    const QVariant id = number64(Q_INT64_C(9000000001));
    QTest::newRow("zero") << id << QVariant(0) << 0;
    QTest::newRow("usual") << id << QVariant(3) << 3;
    QTest::newRow("most") << id << QVariant(18) << 18;
    QTest::newRow("too many") << id << QVariant(19) << -1;
    QTest::newRow("negative") << id << QVariant(-2) << -1;
    QTest::newRow("null") << id << QVariant() << -1;
    QTest::newRow("the id's low half alone")
        << number64(Q_INT64_C(9000000001) & 0xffffffff) << QVariant(3) << -1;
    QTest::newRow("null id") << QVariant() << QVariant(3) << -1;
}

void tst_SecurityDirectory::decimals()
{
    QFETCH(QVariant, secId);
    QFETCH(QVariant, decimals);
    QFETCH(int, expected);

    Table* table = createSecurities();
    const Record security = makeSecurity(*table, 10, 2, secId, decimals);
    table->appendRows({security});
    QCOMPARE(decimalsOf(1, 2, Q_INT64_C(9000000001)), expected);
    QCOMPARE(decimalsOf(2, 2, Q_INT64_C(9000000001)), -1);
    QCOMPARE(decimalsOf(1, 1, Q_INT64_C(9000000001)), -1);
    QCOMPARE(decimalsOf(1, 2, 0), -1);
}

void tst_SecurityDirectory::firstInTheTablesOrder()
{
    Table* table = createSecurities();
    const auto make = [&](int decimals) { return makeSecurity(*table, 10, 2, number64(5), decimals); };
    const auto finds = [&](const Record& record, int decimals) {
        return byIsin(10, 2) == record && decimalsOf(1, 2, 5) == decimals;
    };
    const Record a = make(1);
    const Record b = make(2);
    const Record c = make(3);
    const Record d = make(4);
    table->appendRows({a});
    QVERIFY(finds(a, 1));
    table->appendRows({b});
    QVERIFY(finds(a, 1));
    table->insertRows(0, {c});
    QVERIFY(finds(c, 3));
    table->insertRows(1, {d});
    QVERIFY(finds(c, 3));
    table->removeRows({c});
    QVERIFY(finds(d, 4));
    table->removeRows({d});
    QVERIFY(finds(a, 1));
    table->removeRows({a});
    QVERIFY(finds(b, 2));
    table->removeRows({b});
    QVERIFY(byIsin(10, 2).isNull());
    QCOMPARE(decimalsOf(1, 2, 5), -1);
    table->appendRows({b, a});
    QVERIFY(finds(b, 2));
}

void tst_SecurityDirectory::idsChange()
{
    Table* table = createSecurities();
    const Record a = makeSecurity(*table, 10, 2, number64(5), 1);
    const Record b = makeSecurity(*table, 11, 2, number64(6), 2);
    table->appendRows({a, b});
    QVERIFY(byIsin(10, 2) == a);
    changeRows(*table, {a}, {{"isin_id", 11}, {"sec_id", number64(6)}});
    QVERIFY(byIsin(10, 2).isNull());
    QVERIFY(byIsin(11, 2) == a);
    QCOMPARE(decimalsOf(1, 2, 5), -1);
    QCOMPARE(decimalsOf(1, 2, 6), 1);
    changeRows(*table, {a}, {{"isin_id", QVariant()}, {"decimals", 7}});
    QVERIFY(byIsin(11, 2) == b);
    QCOMPARE(decimalsOf(1, 2, 6), 7);
    changeRows(*table, {a, b}, {{"isin_id", 12}});
    QVERIFY(byIsin(12, 2) == a);
    changeRows(*table, {a}, {{"board_id", 3}});
    QVERIFY(byIsin(12, 2) == b);
    QVERIFY(byIsin(12, 3) == a);
    table->removeRows({a, b});
    QVERIFY(byIsin(12, 2).isNull());
    QVERIFY(byIsin(12, 3).isNull());
}

void tst_SecurityDirectory::tableResetAndMadeAnew()
{
    Table* table = createSecurities();
    const Record a = makeSecurity(*table, 10, 2, number64(5), 1);
    const Record b = makeSecurity(*table, 10, 2, number64(5), 2);
    table->appendRows({a});
    QVERIFY(byIsin(10, 2) == a);
    table->resetRows({b});
    QVERIFY(byIsin(10, 2) == b);
    table->clear();
    QVERIFY(byIsin(10, 2).isNull());

    table->appendRows({b});
    QVERIFY(byIsin(10, 2) == b);
    database()->dropTable(SecuritiesTable::securitiesName);
    QVERIFY(byIsin(10, 2).isNull());
    QCOMPARE(decimalsOf(1, 2, 5), -1);

    // The columns stand elsewhere in the new table.
    QVector<TableColumnDef> columns = SecuritiesTable::securitiesColumns();
    std::reverse(columns.begin(), columns.end());
    table = database()->createTable(SecuritiesTable::securitiesName, columns);
    const Record c = makeSecurity(*table, 10, 2, number64(5), 4);
    table->appendRows({c});
    QVERIFY(byIsin(10, 2) == c);
    QCOMPARE(decimalsOf(1, 2, 5), 4);
}

void tst_SecurityDirectory::wrongColumns_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("byIsinId");
    QTest::addColumn<bool>("byIdentity");

    const auto row = [](const char* name, const char* column, FieldType type, const QVariant& value,
                         bool byIsinId, bool byIdentity) {
        QTest::newRow(name) << QString::fromLatin1(column) << static_cast<int>(type) << value << byIsinId
                            << byIdentity;
    };
    row("64 bit isin", "isin_id", FieldType::Int64, number64(10), true, true);
    row("64 bit isin out of range", "isin_id", FieldType::Int64, number64(10 + (Q_INT64_C(1) << 32)), false,
        true);
    row("text isin", "isin_id", FieldType::Text, QStringLiteral("10"), false, true);
    row("decimal isin", "isin_id", FieldType::Decimal, number("10"), false, true);
    row("double board", "board_id", FieldType::Double, 2.0, false, false);
    row("32 bit security", "sec_id", FieldType::Int32, 5, true, true);
    row("moment security", "sec_id", FieldType::Moment, number64(5), true, false);
    row("64 bit decimals", "decimals", FieldType::Int64, number64(3), true, true);
    row("text decimals", "decimals", FieldType::Text, QStringLiteral("3"), true, false);
    row("no isin", "isin_id", FieldType::Text, QStringLiteral("missing"), false, true);
    row("no exchange", "stock_id", FieldType::Text, QStringLiteral("missing"), true, false);
    row("no decimals", "decimals", FieldType::Text, QStringLiteral("missing"), true, false);
}

void tst_SecurityDirectory::wrongColumns()
{
    QFETCH(QString, column);
    QFETCH(int, type);
    QFETCH(QVariant, value);
    QFETCH(bool, byIsinId);
    QFETCH(bool, byIdentity);

    const bool missing = value == QStringLiteral("missing");
    QVector<TableColumnDef> columns = SecuritiesTable::securitiesColumns();
    for (TableColumnDef& definition : columns) {
        if (definition.name == column)
            definition = {missing ? QStringLiteral("other") : column, static_cast<FieldType>(type), 0};
    }
    Table* table = database()->createTable(SecuritiesTable::securitiesName, columns);
    const Record security = table->createRow();
    const std::initializer_list<std::pair<QString, QVariant>> fields = {{QStringLiteral("stock_id"), 1},
        {QStringLiteral("board_id"), 2}, {QStringLiteral("sec_id"), number64(5)},
        {QStringLiteral("isin_id"), 10}, {QStringLiteral("decimals"), 3}};
    for (const auto& [name, usual] : fields) {
        if (name != column)
            table->value(security, table->columnIndex(name)).setVariant(usual);
        else if (!missing)
            table->value(security, table->columnIndex(name)).setVariant(value);
    }
    table->appendRows({security});
    QCOMPARE(!byIsin(10, 2).isNull(), byIsinId);
    QCOMPARE(decimalsOf(1, 2, 5), byIdentity ? 3 : -1);
}

void tst_SecurityDirectory::askedBeforeTheDirectoryHears()
{
    Table* table = createSecurities();
    const Record old = makeSecurity(*table, 9, 2, number64(4), 1);
    table->appendRows({old});
    QVector<Record> found;
    const auto ask = [&](const QVector<Record>&) { found << byIsin(10, 2) << byIsin(9, 2); };
    const RowListener inserted(table, SIGNAL(rowsInserted(QVector<Record>)), ask);
    const RowListener removed(table, SIGNAL(rowsRemoved(QVector<Record>)), ask);
    const RowListener changed(table, SIGNAL(rowsChanged(QVector<Record>)), ask);
    QVERIFY(byIsin(9, 2) == old);

    const Record a = makeSecurity(*table, 10, 2, number64(5), 1);
    const Record b = makeSecurity(*table, 10, 2, number64(5), 2);
    table->appendRows({a});
    QCOMPARE(found, (QVector<Record>{a, old}));
    found.clear();
    table->insertRows(0, {b});
    QCOMPARE(found, (QVector<Record>{b, old}));
    found.clear();
    table->removeRows({b});
    QCOMPARE(found, (QVector<Record>{a, old}));
    found.clear();
    changeRows(*table, {a}, {{"isin_id", 11}});
    QCOMPARE(found, (QVector<Record>{Record(), old}));
    QVERIFY(byIsin(11, 2) == a);

    const Record d = makeSecurity(*table, 13, 2, number64(7), 1);
    const Record e = makeSecurity(*table, 13, 2, number64(7), 2);
    table->appendRows({d});
    table->removeRows({d});
    table->appendRows({e});
    table->appendRows({d});
    QVERIFY(byIsin(13, 2) == e);
}

void tst_SecurityDirectory::rowsTakenBackByAnotherListener()
{
    Table* table = createSecurities();
    const Record a = makeSecurity(*table, 10, 2, number64(5), 1);
    const Record b = makeSecurity(*table, 10, 2, number64(5), 2);
    const Record c = makeSecurity(*table, 11, 2, number64(6), 3);
    table->appendRows({c});
    const RowListener inserted(
        table, SIGNAL(rowsInserted(QVector<Record>)), [&](const QVector<Record>& rows) {
            if (rows.contains(a) && rows.size() > 1)
                table->removeRows({a});
        });
    const RowListener removed(table, SIGNAL(rowsRemoved(QVector<Record>)), [&](const QVector<Record>& rows) {
        if (rows.contains(b))
            table->insertRows(0, {b});
    });
    QVERIFY(byIsin(11, 2) == c);

    table->appendRows({a, b});
    QVERIFY(byIsin(10, 2) == b);
    table->appendRows({a});
    QVERIFY(byIsin(10, 2) == b);
    table->removeRows({a});
    table->insertRows(0, {a});
    QVERIFY(byIsin(10, 2) == a);
    table->removeRows({b});
    QVERIFY(b.isInTable());
    QVERIFY(byIsin(10, 2) == b);
}

PLOT2D_TEST_MAIN(tst_SecurityDirectory)
#include "tst_securitydirectory.moc"
