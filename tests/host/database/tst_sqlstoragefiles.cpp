#include "storagefixture.h"
#include "support/testmain.h"

#include <random>

using namespace SampleTable;

namespace {

const QString tableName = QStringLiteral("samples");

QByteArray randomBytes(quint64 seed, int count)
{
    std::mt19937_64 engine(seed);
    QByteArray bytes;
    for (int i = 0; i < count; ++i)
        bytes.append(static_cast<char>(engine()));
    return bytes;
}

}

/// Files that are not, or not whole, what a storage makes.
class tst_sqlstoragefiles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void refused_data();
    void refused();
    void foreignDatabases_data();
    void foreignDatabases();
    void foreignDatabaseWithJournal();
    void newerFormat();
    void otherKind();
    void folder();
    void missingFolder();
    void emptyFile();
    void damagedPages_data();
    void damagedPages();

private:
    void requireRefusal();
    /// A good database with some rows.
    QByteArray goodFile();

    std::unique_ptr<StorageFixture> m_fixture;
};

void tst_sqlstoragefiles::init()
{
    m_fixture = std::make_unique<StorageFixture>();
}

QByteArray tst_sqlstoragefiles::goodFile()
{
    const QString name = QStringLiteral("good.db");
    {
        Table table(tableName, columns());
        const auto storage = m_fixture->open(name);
        storage->attach(&table);
        table.appendRows(makeRows(table, 1, 2000));
        storage->commit();
    }
    const QByteArray content = readFile(m_fixture->path(name));
    QFile::remove(m_fixture->path(name));
    return content;
}

void tst_sqlstoragefiles::requireRefusal()
{
    const QStringList files = m_fixture->files();
    QVector<QByteArray> before;
    for (const QString& file : files)
        before << readFile(m_fixture->path(file));
    {
        SqlStorage storage(StorageFixture::connection(m_fixture->path()));
        const QString text = thrownText([&] { storage.open(); });
        QVERIFY2(text.contains(m_fixture->path()) && !text.contains(QLatin1Char('\n')), qPrintable(text));
        QVERIFY(!storage.isOpen());
        QCOMPARE(m_fixture->files(), files);
    }
    QCOMPARE(m_fixture->files(), files);
    for (int i = 0; i < files.size(); ++i)
        QCOMPARE(readFile(m_fixture->path(files[i])), before[i]);
}

void tst_sqlstoragefiles::refused_data()
{
    init();
    const QByteArray good = goodFile();
    constexpr int pageSize = 4096;
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("one byte") << QByteArray("S");
    QTest::newRow("text") << QByteArray("a text of some length ").repeated(100);
    QTest::newRow("zeros") << QByteArray(8192, '\0');
    for (quint64 seed = 1; seed <= 5; ++seed)
        QTest::addRow("random %d", int(seed)) << randomBytes(seed, 20000);
    QTest::newRow("SQLite's first words") << good.left(16);
    QTest::newRow("half a header") << good.left(50);
    QTest::newRow("a header alone") << good.left(100);
    QTest::newRow("header and random bytes") << good.left(100) + randomBytes(9, 20000);
    QTest::newRow("first page alone") << good.left(pageSize);
    QTest::newRow("without the last page") << good.left(good.size() - pageSize);
    QTest::newRow("cut within a page") << good.left(good.size() / 2 + 100);
    const int middle = good.size() / 2 / pageSize * pageSize;
    QTest::newRow("a page of random bytes")
        << good.left(middle) + randomBytes(8, pageSize) + good.mid(middle + pageSize);
    QByteArray log = good;
    log[18] = 2;
    log[19] = 2;
    QTest::newRow("turned to a write-ahead log") << log;
}

void tst_sqlstoragefiles::refused()
{
    QFETCH(QByteArray, content);
    QVERIFY(writeFile(m_fixture->path(), content));
    requireRefusal();
}

void tst_sqlstoragefiles::foreignDatabases_data()
{
    QTest::addColumn<QStringList>("statements");
    QTest::newRow("a table") << QStringList{
        QStringLiteral("CREATE TABLE t (a)"), QStringLiteral("INSERT INTO t VALUES (1)")};
    QTest::newRow("a table of our name")
        << QStringList{QStringLiteral("CREATE TABLE host_meta (name, value)")};
    QTest::newRow("with a write-ahead log")
        << QStringList{QStringLiteral("PRAGMA journal_mode = WAL"), QStringLiteral("CREATE TABLE t (a)")};
    QTest::newRow("without a table") << QStringList{QStringLiteral("PRAGMA user_version = 5")};
}

void tst_sqlstoragefiles::foreignDatabases()
{
    QFETCH(QStringList, statements);
    for (const QString& statement : statements)
        runSql(m_fixture->path(), statement);
    QVERIFY(QFileInfo(m_fixture->path()).size() > 0);
    requireRefusal();
}

void tst_sqlstoragefiles::foreignDatabaseWithJournal()
{
    // What a crashed program left beside its database is for that program to put right.
    runSql(m_fixture->path(), QStringLiteral("CREATE TABLE t (a)"));
    const QByteArray journal = QByteArray::fromHex("d9d505f920a163d7") + QByteArray(1000, '\1');
    QVERIFY(writeFile(m_fixture->path(QStringLiteral("host.db-journal")), journal));
    requireRefusal();
}

void tst_sqlstoragefiles::newerFormat()
{
    QVERIFY(writeFile(m_fixture->path(), goodFile()));
    runSql(m_fixture->path(), QStringLiteral("UPDATE host_meta SET value = '2' WHERE name = 'format'"));
    requireRefusal();
}

void tst_sqlstoragefiles::otherKind()
{
    QVERIFY(writeFile(m_fixture->path(), goodFile()));
    runSql(m_fixture->path(), QStringLiteral("DROP TABLE host_meta"));
    requireRefusal();
    runSql(m_fixture->path(), QStringLiteral("CREATE TABLE host_meta (name TEXT, value TEXT)"));
    requireRefusal();
}

void tst_sqlstoragefiles::folder()
{
    QVERIFY(QDir().mkpath(m_fixture->path()));
    requireRefusal();
}

void tst_sqlstoragefiles::missingFolder()
{
    SqlStorage storage(StorageFixture::connection(m_fixture->path(QStringLiteral("no/host.db"))));
    const QString text = thrownText([&] { storage.open(); });
    QVERIFY2(
        text.contains(QLatin1String("no/host.db")) && !text.contains(QLatin1Char('\n')), qPrintable(text));
    QCOMPARE(m_fixture->files(), QStringList());
}

void tst_sqlstoragefiles::emptyFile()
{
    QVERIFY(writeFile(m_fixture->path(), QByteArray()));
    {
        Table table(tableName, columns());
        const auto storage = m_fixture->open();
        storage->attach(&table);
        table.appendRows(makeRows(table, 1, 1));
        storage->commit();
    }
    QCOMPARE(ids(*storedTable(m_fixture->path(), tableName)), QVector<int>{1});
}

void tst_sqlstoragefiles::damagedPages_data()
{
    QTest::addColumn<quint64>("seed");
    for (quint64 seed = 1; seed <= 40; ++seed)
        QTest::addRow("seed %d", int(seed)) << seed;
}

void tst_sqlstoragefiles::damagedPages()
{
    // Damage anywhere behind the header is either told of, or it lies where nothing is kept or in a value.
    QFETCH(quint64, seed);
    static const QByteArray good = goodFile();
    std::mt19937_64 engine(seed);
    QByteArray content = good;
    const int from = 100 + int(engine() % quint64(content.size() - 600));
    const int length = 1 + int(engine() % 500);
    content.replace(from, length, randomBytes(seed, length));
    QVERIFY(writeFile(m_fixture->path(), content));

    Table table(tableName, columns());
    table.appendRows(makeRows(table, 7, 1));
    SqlStorage storage(StorageFixture::connection(m_fixture->path()));
    const QString text = thrownText([&] {
        storage.open();
        storage.attach(&table);
    });
    if (text.isEmpty()) {
        QVERIFY(table.rowCount() > 0);
    } else {
        QVERIFY2(text.contains(m_fixture->path()) && !text.contains(QLatin1Char('\n')), qPrintable(text));
        QCOMPARE(ids(table), QVector<int>{7});
    }
    QCOMPARE(readFile(m_fixture->path()), content);
    QCOMPARE(m_fixture->files(), QStringList{QStringLiteral("host.db")});
}

PLOT2D_TEST_MAIN(tst_sqlstoragefiles)
#include "tst_sqlstoragefiles.moc"
