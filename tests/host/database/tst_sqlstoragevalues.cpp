#include "storagefixture.h"
#include "support/testmain.h"

#include <cstring>
#include <limits>

using namespace SampleTable;

namespace {

const QString tableName = QStringLiteral("samples");

double doubleOf(quint64 bits)
{
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

const Table::Writer addHundred = [](const Record& record, const Table::FieldAccess& field) {
    field(Id).setInt32(record.value(Id).toInt32() + 100);
};

}

/// What the fields and columns of a table become in SQL and back.
class tst_sqlstoragevalues : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void roundTrip();
    void extremeValues_data();
    void extremeValues();
    void texts();
    void noCharacters_data();
    void noCharacters();
    void nulls();
    void newColumn();
    void columnOfOtherType();
    void columnThatTheTableHasNot();
    void oddNames();
    void unavailableNames();
    void storedValueDoesNotFit();

private:
    std::unique_ptr<StorageFixture> m_fixture;
};

void tst_sqlstoragevalues::init()
{
    m_fixture = std::make_unique<StorageFixture>();
}

void tst_sqlstoragevalues::roundTrip()
{
    Table table(tableName, columns());
    {
        const auto storage = m_fixture->open();
        storage->attach(&table);
        table.appendRows(makeRows(table, -3, 10));
        storage->commit();
    }
    const auto stored = storedTable(m_fixture->path(), tableName);
    QCOMPARE(stored->rowCount(), 10);
    QCOMPARE(contentOf(*stored), contentOf(table));
    QCOMPARE(m_fixture->files(), QStringList{QStringLiteral("host.db")});
}

void tst_sqlstoragevalues::extremeValues_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QVariant>("value");

    const auto add
        = [](const char* name, int column, const QVariant& value) { QTest::newRow(name) << column << value; };
    add("smallest int", Id, std::numeric_limits<qint32>::min());
    add("largest int", Id, std::numeric_limits<qint32>::max());
    add("smallest 64 bits", Count, std::numeric_limits<qint64>::min());
    add("largest 64 bits", Count, std::numeric_limits<qint64>::max());
    add("first moment", Time, std::numeric_limits<qint64>::min());
    add("last moment", Time, std::numeric_limits<qint64>::max());
    add("zero", Ratio, 0.0);
    add("minus zero", Ratio, -0.0);
    add("a third", Ratio, 1.0 / 3.0);
    add("whole double", Ratio, 9007199254740993.0);
    add("largest double", Ratio, std::numeric_limits<double>::max());
    add("smallest double", Ratio, std::numeric_limits<double>::denorm_min());
    add("negative denormal", Ratio, -2.2250738585072009e-308);
    add("infinity", Ratio, std::numeric_limits<double>::infinity());
    add("minus infinity", Ratio, -std::numeric_limits<double>::infinity());
    add("not a number", Ratio, std::numeric_limits<double>::quiet_NaN());
    add("negative not a number", Ratio, doubleOf(0xfff8000000000000ULL));
    add("not a number with a payload", Ratio, doubleOf(0x7ff8000000abcdefULL));
    add("largest decimal", Price, QVariant::fromValue(decimal::maximum));
    add("smallest decimal", Price, QVariant::fromValue(decimal::minimum));
    add("finest decimal", Price, QVariant::fromValue(decimal::fromUnits(-1, 18)));
    add("zero decimal", Price, QVariant::fromValue(decimal()));
}

void tst_sqlstoragevalues::extremeValues()
{
    QFETCH(int, column);
    QFETCH(QVariant, value);
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    const Record record = table.createRow();
    table.value(record, column).setVariant(value);
    table.appendRows({record});
    storage->commit();
    QCOMPARE(contentOf(*storedTable(m_fixture->path(), tableName)), contentOf(table));
}

void tst_sqlstoragevalues::texts()
{
    const QString texts[] = {QString(), QStringLiteral(""), QStringLiteral(" "), QStringLiteral("NULL"),
        QStringLiteral("'; DROP TABLE samples; --"), QStringLiteral("\u0416\u4e2d\U0001f600\n\t\r"),
        QStringLiteral("123"), QStringLiteral("1e5"), QString(QChar(0)), QStringLiteral("a\0b"),
        QString(QChar(0xfeff)) + QStringLiteral("mark"), QString(QChar(0xfeff)),
        QString(100000, QLatin1Char('x')), QStringLiteral("? :name @a $b")};
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    for (const QString& text : texts) {
        const Record record = table.createRow();
        table.value(record, Name).setText(text);
        table.appendRows({record});
    }
    storage->commit();
    const auto stored = storedTable(m_fixture->path(), tableName);
    QCOMPARE(stored->rowCount(), int(std::size(texts)));
    for (int i = 0; i < stored->rowCount(); ++i)
        QCOMPARE(stored->record(i).value(Name).toText(), texts[i]);
}

void tst_sqlstoragevalues::noCharacters_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("half a pair") << QString(QStringLiteral("a") + QChar(0xd83d) + QStringLiteral("bc"))
                                 << QStringLiteral("a\ufffdbc");
    QTest::newRow("pairs in wrong order")
        << QString(QString(QChar(0xde00)) + QChar(0xd83d) + QChar(0xd83d) + QChar(0xde00))
        << QStringLiteral("\ufffd\ufffd\U0001f600");
    QTest::newRow("swapped mark") << QString(QString(QChar(0xfffe)) + QStringLiteral("bc"))
                                  << QStringLiteral("\ufffdbc");
    QTest::newRow("last code") << QString(QStringLiteral("b") + QChar(0xffff)) << QStringLiteral("b\ufffd");
}

void tst_sqlstoragevalues::noCharacters()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    const Record record = table.createRow();
    table.value(record, Name).setText(text);
    table.appendRows({record});
    storage->commit();
    QCOMPARE(storedTable(m_fixture->path(), tableName)->record(0).value(Name).toText(), expected);
}

void tst_sqlstoragevalues::nulls()
{
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    table.appendRows({table.createRow(), makeRow(table, 1)});
    storage->commit();
    QCOMPARE(contentOf(*storedTable(m_fixture->path(), tableName)), contentOf(table));
    table.changeRows({table.record(1)}, [](const Record&, const Table::FieldAccess& field) {
        for (int i = 0; i < 6; ++i)
            field(i).setNull();
    });
    storage->commit();
    const auto stored = storedTable(m_fixture->path(), tableName);
    for (int i = 0; i < 6; ++i)
        QVERIFY(stored->record(1).value(i).isNull());
}

void tst_sqlstoragevalues::newColumn()
{
    {
        Table old(tableName, columns().mid(0, 3));
        const auto storage = m_fixture->open();
        storage->attach(&old);
        const Record record = old.createRow();
        old.value(record, Id).setInt32(1);
        old.appendRows({record});
        storage->commit();
    }
    Table table(tableName, columns());
    const auto storage = m_fixture->open();
    storage->attach(&table);
    QCOMPARE(ids(table), QVector<int>{1});
    QVERIFY(table.record(0).value(Name).isNull());
    QVERIFY(!storage->hasChanges());
    storage->commit();
    table.changeRows({table.record(0)},
        [](const Record&, const Table::FieldAccess& field) { field(Name).setText(QStringLiteral("new")); });
    table.appendRows(makeRows(table, 2, 1));
    storage->commit();
    QCOMPARE(contentOf(*storedTable(m_fixture->path(), tableName)), contentOf(table));
}

void tst_sqlstoragevalues::columnOfOtherType()
{
    {
        Table old(tableName, {{QStringLiteral("id"), FieldType::Int64, 0}});
        const auto storage = m_fixture->open();
        storage->attach(&old);
        old.appendRows({old.createRow()});
        storage->commit();
    }
    Table table(tableName, columns());
    table.appendRows(makeRows(table, 5, 2));
    const auto storage = m_fixture->open();
    const QString text = thrownText([&] { storage->attach(&table); });
    QVERIFY2(text.contains(m_fixture->path()) && text.contains(QLatin1String("\"id\"")), qPrintable(text));
    QCOMPARE(ids(table), (QVector<int>{5, 6}));
    table.clear();
    QVERIFY(!storage->hasChanges());
}

void tst_sqlstoragevalues::columnThatTheTableHasNot()
{
    Table full(tableName, columns());
    {
        const auto storage = m_fixture->open();
        storage->attach(&full);
        full.appendRows(makeRows(full, 1, 2));
        storage->commit();
    }
    {
        Table narrow(tableName, columns().mid(0, 1));
        const auto storage = m_fixture->open();
        storage->attach(&narrow);
        narrow.changeRows({narrow.record(0)}, addHundred);
        storage->commit();
    }
    full.changeRows({full.record(0)}, addHundred);
    QCOMPARE(contentOf(*storedTable(m_fixture->path(), tableName)), contentOf(full));
}

void tst_sqlstoragevalues::oddNames()
{
    const QStringList names{QStringLiteral("a.b"), QStringLiteral("\"quoted\""), QStringLiteral("with \"one"),
        QStringLiteral("select"), QStringLiteral("two words?"), QStringLiteral(":name"),
        QStringLiteral("it's [here]"), QStringLiteral("\u0426\u0435\u043d\u0430")};
    QVector<TableColumnDef> definitions;
    for (const QString& name : names)
        definitions.append({name, FieldType::Text, 0});
    for (const QString& name : names) {
        Table table(name, definitions);
        const auto storage = m_fixture->open();
        storage->attach(&table);
        const Record record = table.createRow();
        for (int i = 0; i < names.size(); ++i)
            table.value(record, i).setText(name + names[i]);
        table.appendRows({record, table.createRow()});
        storage->commit();
        table.changeRows({table.record(1)}, [&](const Record&, const Table::FieldAccess& field) {
            field(0).setText(QStringLiteral("changed"));
        });
        storage->commit();
        const auto before = contentOf(table);
        table.clear();
        storage->rollback();
        QCOMPARE(contentOf(table), before);
    }
}

void tst_sqlstoragevalues::unavailableNames()
{
    const auto storage = m_fixture->open();
    const auto refusal = [&](const QString& table, const QStringList& columnNames) {
        QVector<TableColumnDef> definitions;
        for (const QString& name : columnNames)
            definitions.append({name, FieldType::Int32, 0});
        Table candidate(table, definitions);
        return thrownText([&] { storage->attach(&candidate); });
    };
    QVERIFY(refusal(QStringLiteral("Host_Meta"), {}).contains(QLatin1String("Host_Meta")));
    QVERIFY(refusal(QString(), {}).contains(m_fixture->path()));
    QVERIFY(
        refusal(QStringLiteral("t"), {QStringLiteral("host_row_key")}).contains(QLatin1String("host_row")));
    QVERIFY(refusal(QStringLiteral("t"), {QStringLiteral("a"), QStringLiteral("A")})
                .contains(QLatin1String("A")));
    QVERIFY(!refusal(QStringLiteral("t"), {QString()}).isEmpty());
    QCOMPARE(refusal(QStringLiteral("t"), {}), QString());
}

void tst_sqlstoragevalues::storedValueDoesNotFit()
{
    Table table(tableName, columns());
    {
        const auto storage = m_fixture->open();
        storage->attach(&table);
        table.appendRows(makeRows(table, 1, 2));
        storage->commit();
    }
    const QStringList assignments{QStringLiteral("id = 3000000000"), QStringLiteral("id = 'x'"),
        QStringLiteral("id = 1.5"), QStringLiteral("count = 1e300"), QStringLiteral("ratio = 'much'"),
        QStringLiteral("ratio = 'nan:7'"), QStringLiteral("price = '1,5'"), QStringLiteral("name = x'00ff'"),
        QStringLiteral("time = 'now'")};
    const QByteArray good = readFile(m_fixture->path());
    for (const QString& assignment : assignments) {
        runSql(m_fixture->path(), QStringLiteral("UPDATE samples SET ") + assignment);
        const auto storage = m_fixture->open();
        const auto before = contentOf(table);
        const QString text = thrownText([&] { storage->attach(&table); });
        QVERIFY2(
            text.contains(m_fixture->path()) && text.contains(assignment.left(2)), qPrintable(assignment));
        QCOMPARE(contentOf(table), before);
        QVERIFY(writeFile(m_fixture->path(), good));
    }
}

PLOT2D_TEST_MAIN(tst_sqlstoragevalues)
#include "tst_sqlstoragevalues.moc"
