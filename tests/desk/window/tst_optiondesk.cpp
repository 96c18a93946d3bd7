#include "deskprogramtest.h"
#include "support/testmain.h"

#include <database/settings.h>

#include <QImage>
#include <QProcess>

/// The option desk's program as its user runs it: exit codes, messages, pictures and what it keeps.
class tst_optiondesk : public DeskProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void answersAtOnce_data();
    void answersAtOnce();
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
    void checkPicture(const QStringList& arguments, const QSize& size, int errorLines = 0);
};

namespace {

constexpr QRgb smileColor = qRgb(0x00, 0x72, 0xb2);
constexpr QRgb red = qRgb(255, 0, 0);

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
    QCOMPARE(result.trouble(), QByteArray());
    QVERIFY(result.output.contains(part));
}

// The window is there by then, and stays.
void tst_optiondesk::tellsOfAReplayThatGoesWrong()
{
    DeskTest::write(path("q.csv"),
        "time,instrument,last\n" + QByteArray("5,FUT,80\n").repeated(2000) + "4,FUT,81\n6,FUT,82\n");
    constexpr int patience = 60000;
    QProcess desk;
    desk.setWorkingDirectory(folder());
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
    const DeskRun window = runDesk({}, folder(), environment);
    QCOMPARE(window.exitCode, 1);
    QVERIFY2(window.errorLines().size() == 1, window.errors);
    QVERIFY2(window.errors.contains("display"), window.errors);

    const DeskRun picture = runDesk({"--picture", "p.png"}, folder(), environment);
    QCOMPARE(picture.trouble(), QByteArray());
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
    QCOMPARE(run({"--picture", "a.png"}).trouble(), QByteArray());
    QCOMPARE(run({"--picture", "b.png"}).trouble(), QByteArray());
    QVERIFY(!content("a.png").isEmpty());
    QVERIFY(content("a.png") == content("b.png"));

    // The smallest picture is as large as it was asked for, whatever fits.
    QCOMPARE(run({"--picture", "c.png", "--size", "200x150"}).trouble(), QByteArray());
    QCOMPARE(QImage(path("c.png")).size(), QSize(200, 150));
}

void tst_optiondesk::keepsTheChain()
{
    QCOMPARE(
        run({"--chain", "good.csv", "--database", "d.sqlite", "--picture", "a.png"}).trouble(), QByteArray());
    const QByteArray before = content("d.sqlite");
    QCOMPARE(run({"--database", "d.sqlite", "--picture", "b.png"}).trouble(), QByteArray());
    QVERIFY(content("a.png") == content("b.png"));
    QCOMPARE(
        run({"--database", "d.sqlite", "--forward", "97", "--picture", "c.png"}).trouble(), QByteArray());
    QVERIFY(content("a.png") != content("c.png"));
    QCOMPARE(content("d.sqlite"), before);
}

void tst_optiondesk::fillsAnEmptyDatabaseWithSamples()
{
    QCOMPARE(run({"--picture", "a.png"}).trouble(), QByteArray());
    QCOMPARE(run({"--database", "d.sqlite", "--picture", "b.png"}).trouble(), QByteArray());
    QVERIFY(content("a.png") == content("b.png"));
    const QByteArray stored = content("d.sqlite");
    QCOMPARE(run({"--database", "d.sqlite", "--picture", "c.png"}).trouble(), QByteArray());
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
        return result.trouble().isEmpty() ? DeskTest::countPixels(QImage(path("p.png")), color) : -1;
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
    checkPicture({"--settings", folder()}, QSize(1000, 640), 1);
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
