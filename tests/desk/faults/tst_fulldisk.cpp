#include "desk/faults/smalldisk.h"
#include "desk/faults/writtenfiles.h"
#include "desk/window/deskrun.h"
#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <output/plotexport.h>
#include <position/positionfile.h>
#include <window/chainimporter.h>
#include <window/curvelook.h>
#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/desksettings.h>
#include <window/deskwindow.h>
#include <window/importactions.h>
#include <window/positiondesk.h>
#include <work/work.h>

#include <chain/chainstore.h>
#include <database/exception.h>
#include <database/settings.h>
#include <plot2d/pricebased2dplotcurve.h>

#include <functional>
#include <memory>

using namespace WrittenFiles;

namespace {

/// Ways for a disk to refuse what is written to it.
enum class Way { Full, RoomForLittle, RoomForAPart, ReadOnly, FileTooLarge, NoMoreFiles };

constexpr Way allWays[]
    = {Way::Full, Way::RoomForLittle, Way::RoomForAPart, Way::ReadOnly, Way::FileTooLarge, Way::NoMoreFiles};

const char* nameOf(Way way)
{
    static const char* const names[]
        = {"full", "room for little", "room for a part", "read only", "no large files", "no more files"};
    return names[int(way)];
}

/// While it lives, a disk refuses.
class Refusing {
public:
    Refusing(SmallDisk& disk, Way way)
        : m_disk(disk)
        , m_way(way)
    {
        constexpr qint64 part = 8192;
        if (way == Way::Full || way == Way::RoomForLittle || way == Way::RoomForAPart)
            disk.fill(way == Way::Full ? 0 : way == Way::RoomForLittle ? part / 2 : part);
        else if (way == Way::ReadOnly)
            disk.setReadOnly(true);
        else if (way == Way::FileTooLarge)
            m_sizes = std::make_unique<FileSizeLimit>(part / 2);
        else
            m_files = std::make_unique<NoMoreFiles>();
    }
    Refusing(const Refusing&) = delete;
    Refusing& operator=(const Refusing&) = delete;
    ~Refusing()
    {
        if (m_way == Way::ReadOnly)
            m_disk.setReadOnly(false);
        m_disk.free();
    }

private:
    SmallDisk& m_disk;
    const Way m_way;
    std::unique_ptr<FileSizeLimit> m_sizes;
    std::unique_ptr<NoMoreFiles> m_files;
};

/// What a window tells of its imports.
class HeardImports {
public:
    explicit HeardImports(DeskWindow& window)
        : failed(window.imports(), SIGNAL(failed(QString, QString)))
        , imported(window.imports()->importer(), SIGNAL(imported(QString)))
        , m_importer(*window.imports()->importer())
    {
    }

    /// The disk refuses as soon as a file is read: before, there would be nothing to store.
    void refuseOnceRead(SmallDisk& disk, Way way)
    {
        QObject::connect(m_importer.work(), &Work::reached, &m_listener, [this, &disk, way] {
            if (!m_refusing && m_importer.work()->percent() > 50)
                m_refusing = std::make_unique<Refusing>(disk, way);
        });
    }
    void refuseNoMore()
    {
        m_importer.work()->disconnect(&m_listener);
        m_refusing.reset();
    }

    const QSignalSpy failed;
    const QSignalSpy imported;

private:
    ChainImporter& m_importer;
    std::unique_ptr<Refusing> m_refusing;
    QObject m_listener;
};

}

Q_DECLARE_METATYPE(Way)

/// Everything that the desk writes, to a disk that is full or may not be written: the user is told, the old
/// file is as it was, nothing is left lying about, and with room again all goes on.
class tst_fulldisk : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void keepsTheOldFile_data();
    void keepsTheOldFile();
    void settingsAreNotForgotten();
    void positionsAreNotForgotten();
    void windowTellsOfAnImport_data();
    void windowTellsOfAnImport();
    void windowTellsOfAPosition();
    void programTells_data();
    void programTells();
    void startsWithWhatItCannotWrite();

private:
    QVector<Kind> kinds() const;

    std::unique_ptr<DeskData> m_data;
    std::shared_ptr<DeskWindow> m_window;
    std::unique_ptr<SmallDisk> m_disk;
};

void tst_fulldisk::initTestCase()
{
    m_data = std::make_unique<DeskData>(QString());
    const int future = m_data->import(DeskTest::quotedChain(), 0);
    m_window = std::make_shared<DeskWindow>(*m_data, DeskView::Volatility);
    m_window->showSeries(future, SeriesFacts());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QVERIFY(PlotExport::content(*m_window->plot(), ExportFormat::Csv, ExportOptions()).size() > 4096);
}

void tst_fulldisk::cleanupTestCase()
{
    m_window.reset();
    m_data.reset();
}

void tst_fulldisk::init()
{
    m_disk.reset();
    m_disk = std::make_unique<SmallDisk>();
    if (!m_disk->problem().isEmpty())
        QSKIP(qPrintable(m_disk->problem()));
}

QVector<Kind> tst_fulldisk::kinds() const
{
    return {settings(), positions(), database(), exported(ExportFormat::Png, "png", m_window),
        exported(ExportFormat::Svg, "svg", m_window), exported(ExportFormat::Pdf, "pdf", m_window),
        exported(ExportFormat::Csv, "csv", m_window)};
}

void tst_fulldisk::keepsTheOldFile_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<Way>("way");
    QTest::addColumn<bool>("hasOld");
    for (int kind = 0; kind < kinds().size(); ++kind) {
        for (const Way way : allWays) {
            // A table is small enough for a part.
            if (way == Way::RoomForAPart && QByteArray(kinds().at(kind).name) == "csv")
                continue;
            for (const bool hasOld : {true, false})
                QTest::addRow("%s, %s, %s", kinds().at(kind).name, nameOf(way), hasOld ? "old" : "new")
                    << kind << way << hasOld;
        }
    }
}

void tst_fulldisk::keepsTheOldFile()
{
    QFETCH(int, kind);
    QFETCH(Way, way);
    QFETCH(bool, hasOld);
    const Kind one = kinds().at(kind);
    // There is one database at a time.
    const bool isDatabase = QByteArray(one.name) == "database";
    if (isDatabase)
        cleanupTestCase();
    const auto restore = qScopeGuard([&] {
        if (isDatabase)
            initTestCase();
    });
    const QString fileName = m_disk->path(QStringLiteral("f"));
    if (hasOld)
        QCOMPARE(one.write(fileName, 1), QString());
    const QByteArray before = content(fileName);
    const QStringList filesBefore = m_disk->files();
    QString told;
    {
        const Refusing refusing(*m_disk, way);
        told = one.write(fileName, 2);
    }
    QVERIFY2(told.contains(fileName) && !told.contains(QLatin1Char('\n')), qPrintable(told));
    // A database is made, without tables, before there is something to store in it.
    if (!isDatabase || hasOld) {
        QCOMPARE(m_disk->files(), filesBefore);
        QCOMPARE(content(fileName), before);
    }
    QVERIFY(m_disk->files().size() <= 1);
    QCOMPARE(one.read(fileName), hasOld ? 1 : 0);
    QCOMPARE(one.write(fileName, 2), QString());
    QCOMPARE(one.read(fileName), 2);
}

// What could not be written is written with the next change.
void tst_fulldisk::settingsAreNotForgotten()
{
    const QString fileName = m_disk->path(QStringLiteral("s.ini"));
    DeskSettings desk(fileName);
    desk.host()->setValue(QStringLiteral("early"), 1);
    QVERIFY(desk.save());
    {
        const Refusing refusing(*m_disk, Way::Full);
        desk.host()->setValue(QStringLiteral("meanwhile"), 2);
        QVERIFY(!desk.save());
        QCOMPARE(desk.host()->value(QStringLiteral("meanwhile")).toInt(), 2);
        QCOMPARE(desk.host()->value(QStringLiteral("early")).toInt(), 1);
    }
    desk.host()->setValue(QStringLiteral("late"), 3);
    QVERIFY(desk.save());
    const Settings again(fileName);
    QCOMPARE(again.value(QStringLiteral("early")).toInt(), 1);
    QCOMPARE(again.value(QStringLiteral("meanwhile")).toInt(), 2);
    QCOMPARE(again.value(QStringLiteral("late")).toInt(), 3);
}

void tst_fulldisk::positionsAreNotForgotten()
{
    const QString fileName = m_disk->path(QStringLiteral("p.json"));
    Position::PositionFile file(fileName);
    QVERIFY(file.setLegs(QStringLiteral("ONE"), legsOf(1)));
    {
        const Refusing refusing(*m_disk, Way::Full);
        QVERIFY(!file.setLegs(QStringLiteral("ONE"), legsOf(2)));
        QCOMPARE(file.legs(QStringLiteral("ONE")), legsOf(2));
    }
    // The same once more is not taken for written.
    QVERIFY(file.setLegs(QStringLiteral("ONE"), legsOf(2)));
    QCOMPARE(Position::PositionFile(fileName).legs(QStringLiteral("ONE")), legsOf(2));
}

void tst_fulldisk::windowTellsOfAnImport_data()
{
    QTest::addColumn<Way>("way");
    // A disk on which a file is being written does not become one that may only be read.
    for (const Way way :
        {Way::Full, Way::RoomForLittle, Way::RoomForAPart, Way::FileTooLarge, Way::NoMoreFiles})
        QTest::newRow(nameOf(way)) << way;
}

void tst_fulldisk::windowTellsOfAnImport()
{
    QFETCH(Way, way);
    cleanupTestCase();
    const auto restore = qScopeGuard([this] { initTestCase(); });
    const QTemporaryDir folder;
    const QString chainFile = DeskTest::write(folder.filePath(QStringLiteral("chain.csv")), DeskTest::csv());
    const QString fileName = m_disk->path(QStringLiteral("d.sqlite"));
    {
        DeskData data(fileName);
        const int future = data.import(chainOf(1), 0);
        DeskWindow window(data, DeskView::Volatility);
        window.showSeries(future, SeriesFacts());
        const QStringList filesBefore = m_disk->files();
        // The window's own answer is a dialog.
        QVERIFY(window.imports()->disconnect(SIGNAL(failed(QString, QString)), &window));
        HeardImports heard(window);
        heard.refuseOnceRead(*m_disk, way);
        window.imports()->import(chainFile);
        QTRY_COMPARE_WITH_TIMEOUT(heard.failed.count() + heard.imported.count(), 1, 20000);
        if (way == Way::NoMoreFiles && heard.imported.count() == 1) {
            // All that it needs was open before: then it is stored whole.
            QVERIFY(heard.failed.isEmpty());
            return;
        }
        QCOMPARE(heard.failed.count(), 1);
        const QString told = heard.failed.first().at(1).toString();
        QVERIFY2(told.contains(fileName), qPrintable(told));
        QCOMPARE(ChainStore::series().size(), chainOf(1).series.size());
        QCOMPARE(window.futureIsinId(), future);
        heard.refuseNoMore();
        QCOMPARE(m_disk->files(), filesBefore);
        window.imports()->import(chainFile);
        QTRY_COMPARE_WITH_TIMEOUT(heard.imported.count(), 1, 20000);
    }
    const DeskData again(fileName);
    QCOMPARE(ChainStore::series().size(), chainOf(1).series.size());
}

void tst_fulldisk::windowTellsOfAPosition()
{
    const QString fileName = m_disk->path(QStringLiteral("p.json"));
    QCOMPARE(m_window->position()->setFile(fileName), QString());
    QSignalSpy said(m_window->position(), SIGNAL(said(QString)));
    const Refusing refusing(*m_disk, Way::Full);
    QVERIFY(QMetaObject::invokeMethod(m_window->position(), "addLeg"));
    QTRY_COMPARE(said.count(), 1);
    QVERIFY(said.first().first().toString().contains(QStringLiteral("could not be written")));
    QCOMPARE(m_disk->files(), QStringList());
}

void tst_fulldisk::programTells_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("name");
    QTest::addColumn<Way>("way");
    for (const Way way : {Way::Full, Way::RoomForLittle, Way::ReadOnly}) {
        const auto row = [way](const char* option, const char* name) {
            QTest::addRow("%s, %s", name, nameOf(way)) << QStringList{option, name} << name << way;
        };
        row("--picture", "a.png");
        row("--export", "a.svg");
        row("--export", "a.pdf");
        row("--export", "a.csv");
        row("--database", "a.sqlite");
    }
}

void tst_fulldisk::programTells()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, name);
    QFETCH(Way, way);
    const QTemporaryDir folder;
    const QString chainFile = DeskTest::write(folder.filePath(QStringLiteral("chain.csv")), DeskTest::csv());
    const bool isDatabase = arguments.first() == QLatin1String("--database");
    arguments.last() = m_disk->path(name);
    arguments << QStringLiteral("--no-settings") << QStringLiteral("--chain") << chainFile;
    if (isDatabase)
        arguments << QStringLiteral("--export") << folder.filePath(QStringLiteral("other.csv"));
    DeskRun run;
    {
        const Refusing refusing(*m_disk, way);
        run = runDesk(arguments, folder.path());
        QCOMPARE(m_disk->files(), isDatabase && way != Way::ReadOnly ? QStringList{name} : QStringList());
    }
    QVERIFY2(run.exitCode == (isDatabase ? 2 : 1), run.errors);
    QVERIFY2(run.errors.contains(QFile::encodeName(m_disk->path(name))), run.errors);
    QCOMPARE(run.errorLines().size(), 1);
    QCOMPARE(run.output, QByteArray());
    run = runDesk(arguments, folder.path());
    QCOMPARE(run.trouble(), QByteArray());
}

// Settings and positions that may be read but not written are no reason not to start.
void tst_fulldisk::startsWithWhatItCannotWrite()
{
    const QTemporaryDir folder;
    const QString chainFile = DeskTest::write(folder.filePath(QStringLiteral("chain.csv")), DeskTest::csv());
    QCOMPARE(settings().write(m_disk->path(QStringLiteral("s.ini")), 1), QString());
    QCOMPARE(positions().write(m_disk->path(QStringLiteral("p.json")), 1), QString());
    for (const Way way : {Way::Full, Way::ReadOnly}) {
        const Refusing refusing(*m_disk, way);
        const QStringList before = m_disk->files();
        const DeskRun run = runDesk({"--settings", m_disk->path(QStringLiteral("s.ini")), "--positions",
                                        m_disk->path(QStringLiteral("p.json")), "--chain", chainFile,
                                        "--export", folder.filePath(QStringLiteral("a.csv"))},
            folder.path());
        QCOMPARE(run.trouble(), QByteArray());
        QCOMPARE(m_disk->files(), before);
    }
    QCOMPARE(settings().read(m_disk->path(QStringLiteral("s.ini"))), 1);
    QCOMPARE(positions().read(m_disk->path(QStringLiteral("p.json"))), 1);
}

PLOT2D_TEST_MAIN(tst_fulldisk)
#include "tst_fulldisk.moc"
