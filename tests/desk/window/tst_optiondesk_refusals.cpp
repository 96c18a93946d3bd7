#include "deskprogramtest.h"
#include "support/testmain.h"

/// What the option desk's program refuses: with exit code 2 and one line that says why, before it writes
/// anything.
class tst_optiondesk_refusals : public DeskProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void badOptions_data();
    void badOptions();
    void badChains_data();
    void badChains();
    void badDatabases_data();
    void badDatabases();
    void badReplays_data();
    void badReplays();
};

void tst_optiondesk_refusals::badOptions_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("named");
    QTest::newRow("unknown") << QStringList{"--wrong"} << QByteArray("wrong");
    QTest::newRow("surplus") << QStringList{"good.csv", "other.csv"} << QByteArray("other.csv");
    QTest::newRow("no value") << QStringList{"--chain"} << QByteArray("--chain");
    QTest::newRow("forward") << QStringList{"--forward", "-1"} << QByteArray("--forward");
    QTest::newRow("as-of") << QStringList{"--asof", "2012-02-30"} << QByteArray("2012-02-30");
    QTest::newRow("view") << QStringList{"--view", "gamma"} << QByteArray("gamma");
    QTest::newRow("size") << QStringList{"--size", "100x100"} << QByteArray("100x100");
    QTest::newRow("format") << QStringList{"--picture", "p.xyz"} << QByteArray("p.xyz");
    QTest::newRow("expiry not there") << QStringList{"--chain", "good.csv", "--expiry", "2024-05-01",
        "--picture", "p.png"} << QByteArray("2024-05-01");
    QTest::newRow("as-of after expiry") << QStringList{"--chain", "good.csv", "--asof", "2024-05-01",
        "--picture", "p.png"} << QByteArray("2024-05-01");
    QTest::newRow("line end in a value") << QStringList{"--view", "two\nlines"} << QByteArray("two lines");
}

void tst_optiondesk_refusals::badOptions()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, named);
    const DeskRun result = run(arguments);
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.errorLines().size() == 1, result.errors);
    QVERIFY2(result.errors.contains(named), result.errors);
    QCOMPARE(result.output, QByteArray());
    QVERIFY(!QFile::exists(path("p.png")));
}

void tst_optiondesk_refusals::badChains_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("line");
    QByteArray noise;
    for (int i = 0; i < 5000; ++i)
        noise += char(i * 7919 % 251);
    QTest::newRow("empty") << QByteArray("") << 0;
    QTest::newRow("noise") << noise << -1;
    QTest::newRow("no header") << QByteArray("1,2,3\n4,5,6\n") << -1;
    QTest::newRow("unknown columns") << QByteArray("a,b,c\n1,2,3\n") << 1;
    QTest::newRow("header alone") << QByteArray("type,strike,settlement\n") << -1;
    QTest::newRow("broken last row") << DeskTest::csv() + "TEST,2024-01-02,2024-04-02,C,abc,1\n" << 68;
    QTest::newRow("short row") << DeskTest::csv() + "TEST,2024-01-02\n" << 68;
    QTest::newRow("bad date") << DeskTest::csv() + "TEST,2024-01-02,2024-04-32,C,150,1\n" << 68;
}

void tst_optiondesk_refusals::badChains()
{
    QFETCH(QByteArray, text);
    QFETCH(int, line);
    DeskTest::write(path("bad.csv"), text);
    QCOMPARE(
        run({"--chain", "good.csv", "--database", "d.sqlite", "--picture", "p.png"}).trouble(), QByteArray());
    const QByteArray before = content("d.sqlite");
    QVERIFY(!before.isEmpty());

    for (const char* database : {"d.sqlite", "none.sqlite"}) {
        const DeskRun result = run({"--chain", "bad.csv", "--database", database, "--picture", "q.png"});
        QCOMPARE(result.exitCode, 2);
        QVERIFY2(result.errorLines().size() == 1, result.errors);
        const QByteArray begin = line > 0 ? "optiondesk: bad.csv:" + QByteArray::number(line) + ": "
                                          : QByteArray("optiondesk: bad.csv:");
        QVERIFY2(result.errors.startsWith(begin), result.errors);
        QVERIFY(!QFile::exists(path("q.png")));
    }
    QCOMPARE(content("d.sqlite"), before);
    QVERIFY(!QFile::exists(path("none.sqlite")));
}

void tst_optiondesk_refusals::badDatabases_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("text") << QByteArray("no database at all\n").repeated(60);
    QTest::newRow("damaged") << QByteArray("SQLite format 3\0", 16) + QByteArray(5000, '\x5a');
}

void tst_optiondesk_refusals::badDatabases()
{
    QFETCH(QByteArray, content);
    DeskTest::write(path("d.sqlite"), content);
    for (const QStringList& chain : {QStringList(), QStringList{"--chain", "good.csv"}}) {
        const DeskRun result = run(chain + QStringList{"--database", "d.sqlite", "--picture", "p.png"});
        QCOMPARE(result.exitCode, 2);
        QVERIFY2(result.errorLines().size() == 1, result.errors);
        QVERIFY2(result.errors.contains("d.sqlite"), result.errors);
    }
    QCOMPARE(this->content("d.sqlite"), content);
    QCOMPARE(run({"--database", folder(), "--picture", "p.png"}).exitCode, 2);
}

void tst_optiondesk_refusals::badReplays_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("begin");
    QTest::newRow("empty") << QByteArray("") << QByteArray("optiondesk: q.csv: ");
    QTest::newRow("no quotes") << QByteArray("time,instrument,last\n") << QByteArray("optiondesk: q.csv: ");
    QTest::newRow("other columns") << QByteArray("a,b,c\n1,2,3\n") << QByteArray("optiondesk: q.csv:1: ");
    QTest::newRow("time goes back") << QByteArray("time,instrument,last\n5,FUT,1\n4,FUT,2\n")
                                    << QByteArray("optiondesk: q.csv:3: ");
}

void tst_optiondesk_refusals::badReplays()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, begin);
    DeskTest::write(path("q.csv"), text);
    const DeskRun result = run({"--replay", "q.csv", "--database", "d.sqlite"});
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.errorLines().size() == 1, result.errors);
    QVERIFY2(result.errors.startsWith(begin), result.errors);
    QVERIFY(!QFile::exists(path("d.sqlite")));
}

PLOT2D_TEST_MAIN(tst_optiondesk_refusals)
#include "tst_optiondesk_refusals.moc"
