#include "desk/window/deskrun.h"
#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <database/settings.h>

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <limits>
#include <random>

/// The program with --export: what it writes, says and answers, on no display.
class tst_deskexport : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void writesEveryFormat();
    void writesTheSize_data();
    void writesTheSize();
    void writesWhatIsAskedFor();
    void writesWhatTheSessionShowed();
    void isTheSameTableInEveryLocale();
    void needsNoDisplay();
    void needsNoDisplayThatAnswers();
    void hasTheOtherExpiries();
    void keepsTheScale();
    void refusesBadOptions_data();
    void refusesBadOptions();
    void failsAndKeepsTheOldFile_data();
    void failsAndKeepsTheOldFile();
    void failsOnAFullDisk();
    void leavesWholeFilesWhenKilled();

private:
    DeskRun run(const QStringList& arguments) const { return runDesk(arguments, m_folder->path()); }
    QString path(const char* name) const { return m_folder->filePath(QString::fromLatin1(name)); }
    QByteArray content(const char* name) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_deskexport::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    DeskTest::write(path("good.csv"), DeskTest::csv());
}

QByteArray tst_deskexport::content(const char* name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void tst_deskexport::writesEveryFormat()
{
    const DeskRun result = run({"--chain", "good.csv", "--export", "a.png", "--export", "b.svg", "--export",
        "c.pdf", "--export", "d.CSV", "--picture", "e.png"});
    QCOMPARE(result.trouble(), QByteArray());
    QByteArray paths;
    for (const char* name : {"e.png", "a.png", "b.svg", "c.pdf", "d.CSV"})
        paths += QFile::encodeName(QFileInfo(path(name)).absoluteFilePath()) + '\n';
    QCOMPARE(result.output, paths);
    QCOMPARE(QImage(path("a.png")).size(), QSize(1000, 640));
    QVERIFY(content("b.svg").contains("</svg>"));
    QVERIFY(content("c.pdf").startsWith("%PDF-1."));
    QVERIFY(content("d.CSV").startsWith("Strike,Smile,Implied volatility\r\n"));
    QCOMPARE(QImage(path("e.png")).size(), QSize(1000, 640));
}

void tst_deskexport::writesTheSize_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QSize>("size");
    QTest::newRow("usual") << QStringList{} << QSize(1000, 640);
    QTest::newRow("small") << QStringList{"--size", "300x200"} << QSize(300, 200);
    QTest::newRow("scaled") << QStringList{"--size", "300x200", "--scale", "3"} << QSize(900, 600);
    QTest::newRow("large") << QStringList{"--size", "1920x1080", "--scale", "4"} << QSize(7680, 4320);
}

void tst_deskexport::writesTheSize()
{
    QFETCH(QStringList, arguments);
    const DeskRun result = run(arguments + QStringList{"--export", "a.png"});
    QCOMPARE(result.trouble(), QByteArray());
    QTEST(QImage(path("a.png")).size(), "size");
}

void tst_deskexport::writesWhatIsAskedFor()
{
    QCOMPARE(run({"--chain", "good.csv", "--view", "value", "--export", "a.csv"}).trouble(), QByteArray());
    QVERIFY(content("a.csv").startsWith("Strike,Call value,Put value,Market price\r\n"));
    QCOMPARE(run({"--chain", "good.csv", "--axis", "percent", "--export", "a.svg"}).trouble(), QByteArray());
    QVERIFY(content("a.svg").contains("percent of the quote"));
    // The samples are prices in every mode.
    QCOMPARE(run({"--chain", "good.csv", "--axis", "percent", "--export", "b.csv"}).trouble(), QByteArray());
    QCOMPARE(run({"--chain", "good.csv", "--export", "c.csv"}).trouble(), QByteArray());
    QCOMPARE(content("b.csv"), content("c.csv"));
}

// As a window would show it; a file is no session of its own.
void tst_deskexport::writesWhatTheSessionShowed()
{
    {
        Settings settings(path("s.ini"));
        settings.setValue(QStringLiteral("session/view"), QStringLiteral("value"));
        settings.setValue(QStringLiteral("session/series"), QStringList{"COBALT", "2024-04-19"});
        settings.setValue(QStringLiteral("session/place"), QStringList{"0", "0", "333", "222", "normal"});
    }
    const QByteArray before = content("s.ini");
    const QStringList stored{"--settings", "s.ini"};
    QCOMPARE(run(stored + QStringList{"--export", "a.csv", "--export", "a.png"}).trouble(), QByteArray());
    QVERIFY(content("a.csv").startsWith("Strike,Call value,"));
    QVERIFY(content("a.csv").contains("\r\n4400,"));
    QCOMPARE(QImage(path("a.png")).size(), QSize(1000, 640));
    QCOMPARE(run(stored + QStringList{"--view", "volatility", "--export", "b.csv"}).trouble(), QByteArray());
    QVERIFY(content("b.csv").startsWith("Strike,Smile,"));
    QCOMPARE(run({"--no-settings", "--export", "c.csv"}).trouble(), QByteArray());
    QVERIFY(content("c.csv").startsWith("Strike,Smile,"));
    QCOMPARE(content("s.ini"), before);
}

void tst_deskexport::isTheSameTableInEveryLocale()
{
    QCOMPARE(run({"--chain", "good.csv", "--export", "a.csv"}).trouble(), QByteArray());
    QProcessEnvironment german = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"LC_ALL", "LANG", "LC_NUMERIC"})
        german.insert(QString::fromLatin1(name), QStringLiteral("de_DE.UTF-8"));
    QCOMPARE(runDesk({"--chain", "good.csv", "--export", "b.csv"}, m_folder->path(), german).trouble(),
        QByteArray());
    QVERIFY(!content("a.csv").isEmpty());
    QCOMPARE(content("b.csv"), content("a.csv"));
}

void tst_deskexport::needsNoDisplay()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_RUNTIME_DIR"})
        environment.remove(QString::fromLatin1(name));
    const DeskRun result = runDesk({"--export", "a.pdf"}, m_folder->path(), environment);
    QCOMPARE(result.trouble(), QByteArray());
    QVERIFY(content("a.pdf").startsWith("%PDF"));
}

void tst_deskexport::needsNoDisplayThatAnswers()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":65000"));
    const DeskRun result = runDesk({"--export", "a.pdf"}, m_folder->path(), environment);
    QCOMPARE(result.trouble(), QByteArray());
    QVERIFY(content("a.pdf").startsWith("%PDF"));
}

// Their smiles are fitted beside all else, and waited for.
void tst_deskexport::hasTheOtherExpiries()
{
    QCOMPARE(run({"--export", "a.csv"}).trouble(), QByteArray());
    const QByteArray head = content("a.csv").split('\n').first();
    QVERIFY2(head.contains(",21 Jun 2024") && head.contains(",20 Sep 2024"), head);
}

void tst_deskexport::keepsTheScale()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("1.5"));
    const DeskRun result
        = runDesk({"--picture", "a.png", "--size", "800x500"}, m_folder->path(), environment);
    QCOMPARE(result.trouble(), QByteArray());
    const QImage image(path("a.png"));
    QCOMPARE(image.size(), QSize(1200, 750));
    // The line of the quote is one pixel of the screen's wide.
    constexpr QRgb forwardColor = qRgb(255, 0, 0);
    QVERIFY(DeskTest::countPixels(image, forwardColor) > 200);
}

void tst_deskexport::refusesBadOptions_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("format") << QStringList{"--export", "a.png", "--export", "a.gif"};
    QTest::newRow("scale") << QStringList{"--export", "a.png", "--scale", "9"};
    QTest::newRow("chain") << QStringList{"--export", "a.png", "--chain", "none.csv"};
}

void tst_deskexport::refusesBadOptions()
{
    QFETCH(QStringList, arguments);
    DeskTest::write(path("a.png"), "old");
    const DeskRun result = run(arguments);
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.errorLines().size() == 1, result.errors);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(content("a.png"), QByteArray("old"));
}

void tst_deskexport::failsAndKeepsTheOldFile_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("named");
    QTest::newRow("no such folder") << QStringList{"--export", "none/a.png"} << QByteArray("none/a.png: ");
    QTest::newRow("a folder") << QStringList{"--export", "taken.csv"} << QByteArray("taken.csv: ");
    QTest::newRow("too large") << QStringList{"--export", "a.png", "--size", "10000x10000", "--scale", "4"}
                               << QByteArray("a.png: a picture of 40000 by 40000");
}

void tst_deskexport::failsAndKeepsTheOldFile()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, named);
    DeskTest::write(path("a.png"), "old");
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("taken.csv")));
    const DeskRun result = run(arguments);
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errorLines().size() == 1, result.errors);
    QVERIFY2(result.errors.startsWith("optiondesk: " + named), result.errors);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(content("a.png"), QByteArray("old"));
}

// No file may become larger than 4 kB there.
void tst_deskexport::failsOnAFullDisk()
{
    DeskTest::write(path("a.png"), "old");
    QProcess desk;
    desk.setWorkingDirectory(m_folder->path());
    desk.start(QStringLiteral("sh"),
        {"-c", "ulimit -f 8; exec \"$@\"", "sh", OPTIONDESK_PROGRAM, "--no-settings", "--export", "a.png"});
    QVERIFY(desk.waitForFinished(60000));
    const QByteArray errors = desk.readAllStandardError();
    QCOMPARE(desk.exitStatus(), QProcess::NormalExit);
    QVERIFY2(desk.exitCode() == 1, errors);
    QVERIFY2(errors.startsWith("optiondesk: a.png: ") && errors.count('\n') == 1, errors);
    QCOMPARE(content("a.png"), QByteArray("old"));
}

// Mostly while it draws, now and then while it writes.
void tst_deskexport::leavesWholeFilesWhenKilled()
{
    // The lesser of two runs: with the time of one that stalls most kills would come after the end.
    qint64 usual = std::numeric_limits<qint64>::max();
    for (int i = 0; i < 2; ++i) {
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(run({"--chain", "good.csv", "--export", "new.csv"}).trouble(), QByteArray());
        usual = std::min(usual, timer.elapsed());
    }
    const QByteArray whole = content("new.csv");
    constexpr unsigned seed = 815;
    std::mt19937_64 random(seed);
    int killed = 0;
    for (int round = 0; round < 12; ++round) {
        DeskTest::write(path("a.csv"), "old");
        QProcess desk;
        desk.setWorkingDirectory(m_folder->path());
        desk.start(QStringLiteral(OPTIONDESK_PROGRAM),
            {"--no-settings", "--chain", "good.csv", "--export", "a.csv"});
        QVERIFY(desk.waitForStarted());
        // Until some moment up to its usual end.
        if (!desk.waitForFinished(int((qint64(random()) & 0xffff) * usual / 0xffff))) {
            desk.kill();
            QVERIFY(desk.waitForFinished());
            ++killed;
        }
        const QByteArray now = content("a.csv");
        QVERIFY2(now == "old" || now == whole,
            qPrintable(QStringLiteral("seed %1, round %2").arg(seed).arg(round)));
    }
    QVERIFY(killed > 0);
    const QStringList files = QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden);
    QVERIFY2(files.size() <= 3 + 1, qPrintable(files.join(QLatin1Char(' '))));
}

PLOT2D_TEST_MAIN(tst_deskexport)
#include "tst_deskexport.moc"
