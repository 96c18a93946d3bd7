#include "database/database.h"
#include "database/exception.h"
#include "database/icore.h"
#include "sampletable.h"
#include "support/testmain.h"

class tst_database : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void createAndFind();
    void createTwice();
    void drop();
    void tableDeletedByOthers();
    void noTableWhileItIsDestroyed();
    void ownsItsTables();
    void core();
    void exception();
};

void tst_database::createAndFind()
{
    Database database;
    QVERIFY(!database.table(QStringLiteral("a")));
    Table* const a = database.createTable(QStringLiteral("a"), SampleTable::columns());
    Table* const unnamed = database.createTable(QString(), {});
    QVERIFY(a && unnamed);
    QCOMPARE(a->columnCount(), 6);
    QCOMPARE(database.table(QStringLiteral("a")), a);
    QCOMPARE(database.table(QString()), unnamed);
    QVERIFY(!database.table(QStringLiteral("A")));
}

void tst_database::createTwice()
{
    Database database;
    Table* const a = database.createTable(QStringLiteral("a"), SampleTable::columns());
    try {
        database.createTable(QStringLiteral("a"), {});
        QFAIL("a second table of the name was made");
    } catch (const Exception& exception) {
        QVERIFY(exception.text().contains(QLatin1String("\"a\"")));
    }
    QCOMPARE(database.table(QStringLiteral("a")), a);
    QCOMPARE(a->columnCount(), 6);
}

void tst_database::drop()
{
    Database database;
    const QPointer<Table> a(database.createTable(QStringLiteral("a"), SampleTable::columns()));
    const QPointer<Table> b(database.createTable(QStringLiteral("b"), SampleTable::columns()));
    QVERIFY(!database.dropTable(QStringLiteral("c")));
    QVERIFY(database.dropTable(QStringLiteral("a")));
    QVERIFY(!a);
    QVERIFY(b);
    QVERIFY(!database.dropTable(QStringLiteral("a")));
    QVERIFY(database.createTable(QStringLiteral("a"), {}));
}

void tst_database::tableDeletedByOthers()
{
    Database database;
    delete database.createTable(QStringLiteral("a"), {});
    QVERIFY(!database.table(QStringLiteral("a")));
}

void tst_database::noTableWhileItIsDestroyed()
{
    Database database;
    Table* const a = database.createTable(QStringLiteral("a"), {});
    bool wasFound = true;
    connect(a, &QObject::destroyed, &database,
        [&] { wasFound = database.table(QStringLiteral("a")) != nullptr; });
    database.dropTable(QStringLiteral("a"));
    QVERIFY(!wasFound);
}

void tst_database::ownsItsTables()
{
    QPointer<Table> a;
    {
        Database database;
        a = database.createTable(QStringLiteral("a"), {});
    }
    QVERIFY(!a);
}

void tst_database::core()
{
    ICore* const core = ICore::instance();
    QVERIFY(core);
    QCOMPARE(ICore::instance(), core);
    Database* const database = core->database();
    QVERIFY(database);
    QCOMPARE(core->database(), database);
    Table* const table = database->createTable(QStringLiteral("securities"), SampleTable::columns());
    QCOMPARE(ICore::instance()->database()->table(QStringLiteral("securities")), table);
    QVERIFY(database->dropTable(QStringLiteral("securities")));
}

void tst_database::exception()
{
    const QString text = QStringLiteral("Strike \u20ac");
    const Exception original(text);
    QCOMPARE(original.text(), text);
    QCOMPARE(QString::fromUtf8(original.what()), text);
    const std::unique_ptr<Exception> copy(original.clone());
    QCOMPARE(copy->text(), text);
    try {
        copy->raise();
        QFAIL("nothing was thrown");
    } catch (const std::exception& thrown) {
        QCOMPARE(QString::fromUtf8(thrown.what()), text);
    }
}

PLOT2D_TEST_MAIN(tst_database)
#include "tst_database.moc"
