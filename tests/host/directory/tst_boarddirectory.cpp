#include "host/directory/tablerows.h"
#include "support/testmain.h"

#include <database/database.h>
#include <database/icore.h>
#include <directory/boarddirectory.h>
#include <directory/securitiestable.h>

using namespace TestSupport;

class tst_BoardDirectory : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void withoutTable();
    void isAnonym_data();
    void isAnonym();
    void firstBoardCounts();
    void followsTheTable();
    void wrongColumns_data();
    void wrongColumns();

private:
    static Database* database() { return ICore::instance()->database(); }
    static Table* createBoards()
    {
        return database()->createTable(SecuritiesTable::boardsName, SecuritiesTable::boardsColumns());
    }
    static bool isAnonym(int stockId, int boardId)
    {
        return BoardDirectory::i()->isAnonymById(stockId, boardId);
    }
};

void tst_BoardDirectory::cleanup()
{
    database()->dropTable(SecuritiesTable::boardsName);
}

void tst_BoardDirectory::withoutTable()
{
    QVERIFY(BoardDirectory::i());
    QCOMPARE(BoardDirectory::i(), BoardDirectory::i());
    QVERIFY(!isAnonym(1, 2));
}

void tst_BoardDirectory::isAnonym_data()
{
    QTest::addColumn<QVariant>("stockId");
    QTest::addColumn<QVariant>("boardId");
    QTest::addColumn<QVariant>("flag");
    QTest::addColumn<bool>("anonymous");

    QTest::newRow("anonymous") << QVariant(1) << QVariant(2) << QVariant(1) << true;
    QTest::newRow("not anonymous") << QVariant(1) << QVariant(2) << QVariant(0) << false;
    QTest::newRow("not stated") << QVariant(1) << QVariant(2) << QVariant() << false;
    QTest::newRow("other exchange") << QVariant(2) << QVariant(2) << QVariant(1) << false;
    QTest::newRow("other board") << QVariant(1) << QVariant(1) << QVariant(1) << false;
    QTest::newRow("null exchange") << QVariant() << QVariant(2) << QVariant(1) << false;
    QTest::newRow("null board") << QVariant(1) << QVariant() << QVariant(1) << false;
}

void tst_BoardDirectory::isAnonym()
{
    QFETCH(QVariant, stockId);
    QFETCH(QVariant, boardId);
    QFETCH(QVariant, flag);
    QFETCH(bool, anonymous);

    appendRow(*createBoards(), {{"stock_id", stockId}, {"board_id", boardId}, {"is_anonym", flag}});
    QCOMPARE(isAnonym(1, 2), anonymous);
    QVERIFY(!isAnonym(0, 0));
}

void tst_BoardDirectory::firstBoardCounts()
{
    Table* boards = createBoards();
    const Record first = appendRow(*boards, {{"stock_id", 1}, {"board_id", 2}, {"is_anonym", 0}});
    appendRow(*boards, {{"stock_id", 1}, {"board_id", 2}, {"is_anonym", 1}});
    QVERIFY(!isAnonym(1, 2));
    boards->removeRows({first});
    QVERIFY(isAnonym(1, 2));
}

void tst_BoardDirectory::followsTheTable()
{
    QVERIFY(!isAnonym(1, 2));
    Table* boards = createBoards();
    QVERIFY(!isAnonym(1, 2));
    const Record board = appendRow(*boards, {{"stock_id", 1}, {"board_id", 2}, {"is_anonym", 1}});
    QVERIFY(isAnonym(1, 2));
    changeRows(*boards, {board}, {{"is_anonym", 0}});
    QVERIFY(!isAnonym(1, 2));
    changeRows(*boards, {board}, {{"is_anonym", 1}, {"board_id", 3}});
    QVERIFY(!isAnonym(1, 2));
    QVERIFY(isAnonym(1, 3));
    database()->dropTable(SecuritiesTable::boardsName);
    QVERIFY(!isAnonym(1, 3));
    appendRow(*createBoards(), {{"stock_id", 1}, {"board_id", 4}, {"is_anonym", 1}});
    QVERIFY(!isAnonym(1, 3));
    QVERIFY(isAnonym(1, 4));
}

void tst_BoardDirectory::wrongColumns_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("anonymous");

    const auto row
        = [](const char* name, const char* column, FieldType type, const QVariant& value, bool found) {
              QTest::newRow(name) << QString::fromLatin1(column) << static_cast<int>(type) << value << found;
          };
    row("64 bit id", "board_id", FieldType::Int64, number64(2), true);
    row("text id", "board_id", FieldType::Text, QStringLiteral("2"), false);
    row("double id", "stock_id", FieldType::Double, 1.0, false);
    row("64 bit flag", "is_anonym", FieldType::Int64, number64(1), true);
    row("text flag", "is_anonym", FieldType::Text, QStringLiteral("1"), false);
    row("no id", "board_id", FieldType::Int32, QStringLiteral("missing"), false);
    row("no flag", "is_anonym", FieldType::Int32, QStringLiteral("missing"), false);
}

void tst_BoardDirectory::wrongColumns()
{
    QFETCH(QString, column);
    QFETCH(int, type);
    QFETCH(QVariant, value);
    QFETCH(bool, anonymous);

    const bool missing = value == QStringLiteral("missing");
    QVector<TableColumnDef> columns = SecuritiesTable::boardsColumns();
    for (TableColumnDef& definition : columns) {
        if (definition.name == column)
            definition = {missing ? QStringLiteral("other") : column, static_cast<FieldType>(type), 0};
    }
    Table* boards = database()->createTable(SecuritiesTable::boardsName, columns);
    const Record board = boards->createRow();
    const std::initializer_list<std::pair<QString, QVariant>> fields = {
        {QStringLiteral("stock_id"), 1}, {QStringLiteral("board_id"), 2}, {QStringLiteral("is_anonym"), 1}};
    for (const auto& [name, usual] : fields) {
        if (name != column)
            boards->value(board, boards->columnIndex(name)).setVariant(usual);
        else if (!missing)
            boards->value(board, boards->columnIndex(name)).setVariant(value);
    }
    boards->appendRows({board});
    QCOMPARE(isAnonym(1, 2), anonymous);
}

PLOT2D_TEST_MAIN(tst_BoardDirectory)
#include "tst_boarddirectory.moc"
