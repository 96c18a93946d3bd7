#include "deskrun.h"
#include "desktest.h"
#include "support/testmain.h"

#include <database/settings.h>

#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

/// The option desk's program as its user runs it: exit codes, messages, pictures and what it keeps.
class tst_optiondesk : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void answersAtOnce_data();
    void answersAtOnce();
    void refusesBadOptions_data();
    void refusesBadOptions();
    void refusesBadChains_data();
    void refusesBadChains();
    void refusesBadDatabases_data();
    void refusesBadDatabases();
    void refusesBadReplays_data();
    void refusesBadReplays();
    void tellsOfAReplayThatGoesWrong();
    void failsToWriteAPicture();
    void needsADisplayForAWindow();
    void drawsTheSize_data();
    void drawsTheSize();
    void drawsTheSameEveryTime();
    void keepsTheChain();
    void fillsAnEmptyDatabaseWithSamples();
    void assumesATime();
    void drawsAsTheSettingsSay();
    void drawsInSpiteOfBrokenSettings();
    void needsAForward();
    void drawsRealCrudeOil();
    void drawsEveryRealExpiry_data();
    void drawsEveryRealExpiry();

private:
    DeskRun run(const QStringList& arguments) { return runDesk(arguments, m_folder->path()); }
    QString path(const char* name) const { return m_folder->filePath(QString::fromLatin1(name)); }
    QByteArray content(const char* name) const;
    void checkPicture(const QStringList& arguments, const QSize& size, int errorLines = 0);

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

constexpr QRgb smileColor = qRgb(0x00, 0x72, 0xb2);
constexpr QRgb red = qRgb(255, 0, 0);

}

void tst_optiondesk::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    DeskTest::write(path("good.csv"), DeskTest::csv());
}

QByteArray tst_optiondesk::content(const char* name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A picture of that size, with smile and forward in it, and its path on standard output.
void tst_optiondesk::checkPicture(const QStringList& arguments, const QSize& size, int errorLines)
{
    const DeskRun result = run(arguments + QStringList{"--picture", "p.png"});
    QVERIFY2(result.exitCode == 0, result.errors);
    QVERIFY2(result.errorLines().size() == errorLines, result.errors);
    QCOMPARE(QFile::decodeName(result.output), QFileInfo(path("p.png")).absoluteFilePath() + '\n');
    const QImage image(path("p.png"));
    QCOMPARE(image.size(), size);
    QVERIFY(DeskTest::countPixels(image, smileColor) > size.width() / 4);
    QVERIFY(DeskTest::countPixels(image, red) > size.height() / 4);
    QVERIFY(DeskTest::countPixels(image, qRgb(255, 255, 255)) > size.width() * size.height() / 4);
}

void tst_optiondesk::answersAtOnce_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QByteArray>("part");
    QTest::newRow("help") << "--help" << QByteArray("--chain <file>");
    QTest::newRow("version") << "--version" << QByteArray("optiondesk ");
}

void tst_optiondesk::answersAtOnce()
{
    QFETCH(QString, option);
    QFETCH(QByteArray, part);
    const DeskRun result = run({option});
    QCOMPARE(result.exitCode, 0);
    QVERIFY(result.output.contains(part));
    QCOMPARE(result.errors, QByteArray());
}

void tst_optiondesk::refusesBadOptions_data()
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

void tst_optiondesk::refusesBadOptions()
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

void tst_optiondesk::refusesBadChains_data()
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

void tst_optiondesk::refusesBadChains()
{
    QFETCH(QByteArray, text);
    QFETCH(int, line);
    DeskTest::write(path("bad.csv"), text);
    QCOMPARE(run({"--chain", "good.csv", "--database", "d.sqlite", "--picture", "p.png"}).exitCode, 0);
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

void tst_optiondesk::refusesBadDatabases_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("text") << QByteArray("no database at all\n").repeated(60);
    QTest::newRow("damaged") << QByteArray("SQLite format 3\0", 16) + QByteArray(5000, '\x5a');
}

void tst_optiondesk::refusesBadDatabases()
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
    QCOMPARE(run({"--database", m_folder->path(), "--picture", "p.png"}).exitCode, 2);
}

void tst_optiondesk::refusesBadReplays_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("begin");
    QTest::newRow("empty") << QByteArray("") << QByteArray("optiondesk: q.csv: ");
    QTest::newRow("no quotes") << QByteArray("time,instrument,last\n") << QByteArray("optiondesk: q.csv: ");
    QTest::newRow("other columns") << QByteArray("a,b,c\n1,2,3\n") << QByteArray("optiondesk: q.csv:1: ");
    QTest::newRow("time goes back") << QByteArray("time,instrument,last\n5,FUT,1\n4,FUT,2\n")
                                    << QByteArray("optiondesk: q.csv:3: ");
}

void tst_optiondesk::refusesBadReplays()
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

// The window is there by then, and stays.
void tst_optiondesk::tellsOfAReplayThatGoesWrong()
{
    DeskTest::write(path("q.csv"),
        "time,instrument,last\n" + QByteArray("5,FUT,80\n").repeated(2000) + "4,FUT,81\n6,FUT,82\n");
    constexpr int patience = 60000;
    QProcess desk;
    desk.setWorkingDirectory(m_folder->path());
    desk.start(QStringLiteral(OPTIONDESK_PROGRAM), {"--replay", "q.csv", "--speed", "max"});
    desk.setReadChannel(QProcess::StandardError);
    QByteArray line;
    while (!line.endsWith('\n') && desk.waitForReadyRead(patience))
        line += desk.readLine();
    const bool isRunning = desk.state() == QProcess::Running;
    desk.kill();
    desk.waitForFinished();
    QVERIFY2(line.startsWith("optiondesk: the replay has ended: q.csv:2002: \"4\""), line);
    QVERIFY(isRunning);
}

void tst_optiondesk::failsToWriteAPicture()
{
    const DeskRun result = run({"--chain", "good.csv", "--picture", "none/p.png"});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errorLines().size() == 1, result.errors);
    QVERIFY2(result.errors.contains("none/p.png"), result.errors);
    QCOMPARE(result.output, QByteArray());
}

void tst_optiondesk::needsADisplayForAWindow()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_RUNTIME_DIR"})
        environment.remove(QString::fromLatin1(name));
    const DeskRun window = runDesk({}, m_folder->path(), environment);
    QCOMPARE(window.exitCode, 1);
    QVERIFY2(window.errorLines().size() == 1, window.errors);
    QVERIFY2(window.errors.contains("display"), window.errors);

    const DeskRun picture = runDesk({"--picture", "p.png"}, m_folder->path(), environment);
    QCOMPARE(picture.exitCode, 0);
    QCOMPARE(picture.errors, QByteArray());
    QCOMPARE(QImage(path("p.png")).size(), QSize(1000, 640));
}

void tst_optiondesk::drawsTheSize_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QSize>("size");
    QTest::newRow("default") << QStringList() << QSize(1000, 640);
    QTest::newRow("small") << QStringList{"--size", "600x400"} << QSize(600, 400);
    QTest::newRow("large") << QStringList{"--size", "1920x1080"} << QSize(1920, 1080);
    QTest::newRow("high") << QStringList{"--size", "500x3000"} << QSize(500, 3000);
    QTest::newRow("a chain") << QStringList{"--chain", "good.csv"} << QSize(1000, 640);
    QTest::newRow("values") << QStringList{"--chain", "good.csv", "--view", "value"} << QSize(1000, 640);
}

void tst_optiondesk::drawsTheSize()
{
    QFETCH(QStringList, arguments);
    QFETCH(QSize, size);
    checkPicture(arguments, size);
}

void tst_optiondesk::drawsTheSameEveryTime()
{
    QCOMPARE(run({"--picture", "a.png"}).exitCode, 0);
    QCOMPARE(run({"--picture", "b.png"}).exitCode, 0);
    QVERIFY(!content("a.png").isEmpty());
    QVERIFY(content("a.png") == content("b.png"));

    // The smallest picture is as large as it was asked for, whatever fits.
    QCOMPARE(run({"--picture", "c.png", "--size", "200x150"}).exitCode, 0);
    QCOMPARE(QImage(path("c.png")).size(), QSize(200, 150));
}

void tst_optiondesk::keepsTheChain()
{
    QCOMPARE(run({"--chain", "good.csv", "--database", "d.sqlite", "--picture", "a.png"}).exitCode, 0);
    const QByteArray before = content("d.sqlite");
    QCOMPARE(run({"--database", "d.sqlite", "--picture", "b.png"}).exitCode, 0);
    QVERIFY(content("a.png") == content("b.png"));
    QCOMPARE(run({"--database", "d.sqlite", "--forward", "97", "--picture", "c.png"}).exitCode, 0);
    QVERIFY(content("a.png") != content("c.png"));
    QCOMPARE(content("d.sqlite"), before);
}

void tst_optiondesk::fillsAnEmptyDatabaseWithSamples()
{
    QCOMPARE(run({"--picture", "a.png"}).exitCode, 0);
    QCOMPARE(run({"--database", "d.sqlite", "--picture", "b.png"}).exitCode, 0);
    QVERIFY(content("a.png") == content("b.png"));
    const QByteArray stored = content("d.sqlite");
    QCOMPARE(run({"--database", "d.sqlite", "--picture", "c.png"}).exitCode, 0);
    QVERIFY(content("a.png") == content("c.png"));
    QCOMPARE(content("d.sqlite"), stored);
}

void tst_optiondesk::assumesATime()
{
    QByteArray text = DeskTest::csv();
    text.replace(",expiry", ",note");
    DeskTest::write(path("undated.csv"), text);
    const DeskRun result = run({"--chain", "undated.csv", "--picture", "p.png"});
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.errorLines().size() == 1, result.errors);
    QVERIFY2(result.errors.contains("30 days"), result.errors);
    checkPicture({"--chain", "undated.csv", "--expiry", "20240402"}, QSize(1000, 640));
    checkPicture({"--chain", "undated.csv"}, QSize(1000, 640), 1);
}

void tst_optiondesk::drawsAsTheSettingsSay()
{
    // The smile (type 9) is hidden, and the bid is violet.
    const QByteArray hidden = QByteArray::fromHex("000000010000000500000001 010000000009");
    const QRgb violet = qRgb(0x71, 0x35, 0xa8);
    for (const char* file : {"s.ini", "config/optiondesk/settings.ini"}) {
        Settings settings(path(file));
        settings.setValue(QStringLiteral("volatility/legendItemKeys"), hidden);
        settings.setValue(QStringLiteral("curveColors/Bid volatility"), QStringLiteral("#7135a8"));
    }
    const QByteArray before = content("s.ini");
    const auto count = [&](const QStringList& arguments, QRgb color) {
        const DeskRun result = run(arguments + QStringList{"--picture", "p.png"});
        return result.exitCode == 0 && result.errors.isEmpty()
            ? DeskTest::countPixels(QImage(path("p.png")), color)
            : -1;
    };
    // The tree has a mark of that colour.
    constexpr int mark = 50;
    const auto isHidden = [](int pixels) { return pixels >= 0 && pixels < mark; };
    QVERIFY(isHidden(count({"--settings", "s.ini"}, smileColor)));
    QVERIFY(count({"--settings", "s.ini"}, violet) > 20);
    QVERIFY(isHidden(count({}, smileColor)));
    QVERIFY(count({"--settings", "other.ini"}, smileColor) > 250);
    QVERIFY(count({"--no-settings"}, smileColor) > 250);
    QCOMPARE(count({"--no-settings"}, violet), 0);
    // In the other view the same type is another curve.
    QVERIFY(count({"--settings", "s.ini", "--view", "value"}, smileColor) > 250);
    // A picture is no choice.
    QCOMPARE(content("s.ini"), before);
    QVERIFY(!QFile::exists(path("other.ini")));
}

void tst_optiondesk::drawsInSpiteOfBrokenSettings()
{
    const QByteArray broken("[volatility\nlegendItemKeys=5\n");
    DeskTest::write(path("s.ini"), broken);
    checkPicture({"--settings", "s.ini"}, QSize(1000, 640), 1);
    QVERIFY(run({"--settings", "s.ini", "--picture", "p.png"}).errors.startsWith("optiondesk: s.ini: "));
    QCOMPARE(content("s.ini"), broken);
    checkPicture({"--settings", m_folder->path()}, QSize(1000, 640), 1);
}

void tst_optiondesk::needsAForward()
{
    DeskTest::write(path("calls.csv"), "type,strike,settlement\nC,90,12.1\nC,100,5.1\nC,110,2.2\nC,120,1\n");
    const DeskRun result = run({"--chain", "calls.csv", "--picture", "p.png", "--database", "d.sqlite"});
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.errorLines().size() == 1, result.errors);
    QVERIFY2(result.errors.contains("forward"), result.errors);
    QVERIFY(!QFile::exists(path("d.sqlite")));
    checkPicture(
        {"--chain", "calls.csv", "--forward", "100", "--expiry", "2030-01-01", "--asof", "2029-10-01"},
        QSize(1000, 640));
}

void tst_optiondesk::drawsRealCrudeOil()
{
    const QString file = DeskTest::realChain(DeskTest::crudeOilFile);
    if (file.isEmpty())
        QSKIP("the real chain of crude oil is not there");
    checkPicture({"--chain", file}, QSize(1000, 640));
    checkPicture({"--chain", file, "--view", "value"}, QSize(1000, 640));
    checkPicture({"--chain", file, "--expiry", "2012-11-14"}, QSize(1000, 640));
}

void tst_optiondesk::drawsEveryRealExpiry_data()
{
    QTest::addColumn<QString>("expiry");
    for (const char* expiry : {"2012-03-16", "2012-06-15", "2012-09-21", "2012-12-21", "2013-06-21",
             "2013-12-20", "2014-06-20", "2014-12-19", "2015-12-18", "2016-12-16"})
        QTest::newRow(expiry) << QString::fromLatin1(expiry);
}

void tst_optiondesk::drawsEveryRealExpiry()
{
    QFETCH(QString, expiry);
    const QString file = DeskTest::realChain(DeskTest::indexFile);
    if (file.isEmpty())
        QSKIP("the real chain of index options is not there");
    checkPicture({"--chain", file, "--expiry", expiry}, QSize(1000, 640));
    checkPicture({"--chain", file, "--expiry", expiry, "--view", "value"}, QSize(1000, 640));
}

PLOT2D_TEST_MAIN(tst_optiondesk)
#include "tst_optiondesk.moc"
