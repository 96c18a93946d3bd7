#include "desk/window/answertimes.h"
#include "desk/window/desktest.h"
#include "longchain.h"
#include "support/loopgap.h"
#include "support/testmain.h"

#include <chain/chaintables.h>
#include <database/table.h>
#include <quotes/quotesdock.h>
#include <seriestree/seriesdock.h>
#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/elidedlabel.h>
#include <window/importactions.h>
#include <work/work.h>
#include <work/workbar.h>

#include <QAction>
#include <QMessageBox>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTemporaryDir>

using LongChain::drop;
using LongChain::rowsOf;

/// Imports beside all else that the window does.
class tst_longwork : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void imports();
    void importsFromTheMenu();
    void importsWhatIsDropped();
    void refusesOtherDrops();
    void refusesASecondOne();
    void cancels_data();
    void cancels();
    void cancelsByEscape();
    void importsAfterACancel();
    void closes_data();
    void closes();
    void tellsOfAnErrorInTheLastRow();
    void tellsOfAFileThatIsNotThere();
    void keepsIdsApart();
    void answersDuringALargeImport();

private:
    /// How the window answers while it imports; gaps in milliseconds.
    struct Answers {
        bool isComplete = false;
        int handledWhileReading = 0;
        int handledWhileMaking = 0;
        qint64 gapBeforeStoring = 0;
        qint64 wholeGap = 0;
    };
    Answers answersDuring(const QString& file);
    ImportActions& commands() const { return *m_window->imports(); }
    ChainImporter& importer() const { return *commands().importer(); }
    QString message() const { return m_window->statusBar()->currentMessage(); }
    QStringList all() const;

    QTemporaryDir m_folder;
    QString m_file;
    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
};

namespace {

// A build without optimisation needs about a tenth of this on an idle machine.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr qint64 longestGap = 1000;
constexpr int strikesOfALargeFile = 400;
#else
constexpr qint64 longestGap = 250;
// With 40 expiries and two options of each strike that is as many as a chain may have.
constexpr int strikesOfALargeFile = 2500;
#endif

// In milliseconds: a machine with other work needs long for an import.
constexpr int patience = 120000;

constexpr int expiriesOfAFile = 8;
constexpr int strikesOfAFile = 500;

// What the platform of the tests says of a box.
constexpr const char* noSizeHints = "This plugin does not support propagateSizeHints()";

// The text of the box that is open, which it closes.
QString dismissBox()
{
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    const QString text = box ? box->text() : QString();
    if (box)
        box->done(QMessageBox::Ok);
    return text;
}

}

void tst_longwork::initTestCase()
{
    m_file = DeskTest::write(
        m_folder.filePath(QStringLiteral("long.csv")), LongChain::text(expiriesOfAFile, strikesOfAFile));
}

void tst_longwork::init()
{
    m_data = std::make_unique<DeskData>(QString());
    const int futureIsinId = m_data->import(DeskTest::chain(), 0);
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    new SeriesDock(m_window.get());
    new QuotesDock(m_window.get());
    m_window->resize(1000, 640);
    m_window->showSeries(futureIsinId, SeriesFacts());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void tst_longwork::cleanup()
{
    m_window.reset();
    m_data.reset();
}

// Whatever the user or another program could see of the data, and of the window.
QStringList tst_longwork::all() const
{
    const ChainTables tables = ChainTables::find();
    QStringList texts = rowsOf(*tables.securities) + rowsOf(*tables.boards);
    if (m_window)
        texts << m_window->windowTitle() << m_window->findChild<ElidedLabel*>()->fullText()
              << QString::number(m_window->futureIsinId());
    return texts;
}

void tst_longwork::imports()
{
    QSignalSpy reached(importer().work(), SIGNAL(reached(int)));
    QSignalSpy imported(&importer(), SIGNAL(imported(QString)));
    commands().import(m_file);
    QVERIFY(importer().isRunning());
    QCOMPARE(m_window->shownSeries()->data.baseCode, QStringLiteral("TEST"));
    QTRY_COMPARE_WITH_TIMEOUT(imported.size(), 1, patience);
    QVERIFY(!importer().isRunning());
    QCOMPARE(m_window->shownSeries()->data.baseCode, QStringLiteral("LONG"));
    QCOMPARE(m_window->shownSeries()->data.options.quotes.size(), 2 * strikesOfAFile);
    QCOMPARE(m_data->series().size(), 1 + expiriesOfAFile);
    QCOMPARE(commands().folder(), m_folder.path());
    QVERIFY2(message().contains(QStringLiteral("long.csv is imported")), qPrintable(message()));
    int last = -1;
    for (const QList<QVariant>& signal : qAsConst(reached)) {
        QVERIFY(signal.first().toInt() > last);
        last = signal.first().toInt();
    }
    QCOMPARE(last, 100);
    QVERIFY2(reached.size() > 5, qPrintable(QString::number(reached.size())));
}

void tst_longwork::importsFromTheMenu()
{
    QString folderAsked;
    commands().setFileQuestion([&](const QString& folder, QWidget*) {
        folderAsked = folder;
        return m_file;
    });
    m_window->setImportFolder(m_folder.path());
    const QList<QAction*> actions = m_window->findChildren<QAction*>();
    for (QAction* const action : actions) {
        if (action->text() == QStringLiteral("&Import..."))
            action->trigger();
    }
    QCOMPARE(folderAsked, m_folder.path());
    QTRY_COMPARE_WITH_TIMEOUT(m_window->shownSeries()->data.baseCode, QStringLiteral("LONG"), patience);
}

void tst_longwork::importsWhatIsDropped()
{
    QVERIFY(m_window->acceptDrops());
    QVERIFY(drop(*m_window, {QUrl::fromLocalFile(m_file)}));
    QTRY_COMPARE_WITH_TIMEOUT(m_window->shownSeries()->data.baseCode, QStringLiteral("LONG"), patience);
}

void tst_longwork::refusesOtherDrops()
{
    QVERIFY(!drop(*m_window, {}));
    QVERIFY(!drop(*m_window, {QUrl(QStringLiteral("http://example.org/long.csv"))}));
    QVERIFY(!drop(*m_window, {QUrl::fromLocalFile(m_file), QUrl::fromLocalFile(m_file)}));
    QVERIFY(!importer().isRunning());
}

void tst_longwork::refusesASecondOne()
{
    QSignalSpy imported(&importer(), SIGNAL(imported(QString)));
    commands().import(m_file);
    const QString second = DeskTest::write(m_folder.filePath(QStringLiteral("second.csv")), DeskTest::csv());
    QVERIFY(drop(*m_window, {QUrl::fromLocalFile(second)}));
    QVERIFY2(message().contains(QStringLiteral("long.csv is being imported")), qPrintable(message()));
    QVERIFY2(message().contains(QStringLiteral("second.csv")), qPrintable(message()));
    QTRY_VERIFY_WITH_TIMEOUT(!importer().isRunning(), patience);
    QCOMPARE(imported, (QList<QList<QVariant>>{{m_file}}));
    commands().import(second);
    QTRY_COMPARE_WITH_TIMEOUT(imported.size(), 2, patience);
    QCOMPARE(m_window->shownSeries()->data.baseCode, QStringLiteral("TEST"));
}

void tst_longwork::cancels_data()
{
    QTest::addColumn<int>("percent");
    QTest::newRow("at the start") << -1;
    QTest::newRow("while the thread starts") << 0;
    QTest::newRow("while it reads") << 20;
    QTest::newRow("when it has read") << 60;
    QTest::newRow("while rows are made") << 65;
    QTest::newRow("when all rows are made") << 90;
}

void tst_longwork::cancels()
{
    QFETCH(int, percent);
    const QStringList before = all();
    QSignalSpy imported(&importer(), SIGNAL(imported(QString)));
    QSignalSpy cancelled(&importer(), SIGNAL(cancelled()));
    QSignalSpy ended(importer().work(), SIGNAL(ended()));
    int reached = -1;
    connect(importer().work(), &Work::reached, this, [&](int now) {
        reached = now;
        if (percent >= 0 && now >= percent)
            importer().work()->cancel();
    });
    commands().import(m_file);
    if (percent < 0)
        importer().work()->cancel();
    QTRY_COMPARE_WITH_TIMEOUT(cancelled.size(), 1, patience);
    disconnect(importer().work(), nullptr, this, nullptr);
    QVERIFY(reached >= percent);
    QVERIFY2(reached < 100, qPrintable(QString::number(reached)));
    QVERIFY(!importer().isRunning());
    QCOMPARE(ended.size(), 1);
    QVERIFY2(message().contains(QStringLiteral("nothing has changed")), qPrintable(message()));
    // Whatever the thread has still to say.
    QTRY_VERIFY_WITH_TIMEOUT(importer().findChildren<QThread*>().isEmpty(), patience);
    QCoreApplication::processEvents();
    QCOMPARE(all(), before);
    QCOMPARE(imported.size(), 0);
    QCOMPARE(m_window->workBar()->current(), nullptr);
}

void tst_longwork::cancelsByEscape()
{
    const QStringList before = all();
    commands().import(m_file);
    QTest::keyClick(m_window->plot(), Qt::Key_Escape);
    QVERIFY(!importer().isRunning());
    QCOMPARE(all(), before);
}

void tst_longwork::importsAfterACancel()
{
    // The thread of the first one may go on for a while.
    QSignalSpy imported(&importer(), SIGNAL(imported(QString)));
    commands().import(m_file);
    importer().cancel();
    commands().import(m_file);
    QTRY_COMPARE_WITH_TIMEOUT(imported.size(), 1, patience);
    QTRY_VERIFY_WITH_TIMEOUT(importer().findChildren<QThread*>().isEmpty(), patience);
    QCoreApplication::processEvents();
    QCOMPARE(imported.size(), 1);
    QCOMPARE(m_data->series().size(), 1 + expiriesOfAFile);
}

void tst_longwork::closes_data()
{
    cancels_data();
}

void tst_longwork::closes()
{
    QFETCH(int, percent);
    const QStringList rows = rowsOf(*ChainTables::find().securities);
    bool closed = false;
    connect(importer().work(), &Work::reached, m_window.get(), [&](int now) {
        if (now >= percent && !closed)
            closed = m_window->close();
    });
    commands().import(m_file);
    QTRY_VERIFY_WITH_TIMEOUT(closed, patience);
    QVERIFY(!importer().isRunning());
    m_window.reset();
    QCoreApplication::processEvents();
    // The loan of the forward goes with the data, not with the window.
    QCOMPARE(rowsOf(*ChainTables::find().securities), rows);

    // Without being closed before.
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    commands().import(m_file);
    m_window.reset();
    QCoreApplication::processEvents();
    QCOMPARE(rowsOf(*ChainTables::find().securities), rows);
}

void tst_longwork::tellsOfAnErrorInTheLastRow()
{
    const QString file = DeskTest::write(m_folder.filePath(QStringLiteral("broken.csv")),
        LongChain::text(expiriesOfAFile, strikesOfAFile) + "LONG,x,y,C,z,1\n");
    const QStringList before = all();
    QSignalSpy imported(&importer(), SIGNAL(imported(QString)));
    QTest::ignoreMessage(QtWarningMsg, noSizeHints);
    QString text;
    // The box has an event loop of its own; it opens after the end of the work.
    connect(
        importer().work(), &Work::ended, this, [&] { text = dismissBox(); }, Qt::QueuedConnection);
    commands().import(file);
    QTRY_VERIFY_WITH_TIMEOUT(!text.isEmpty(), patience);
    const int lastLine = 2 + 2 * expiriesOfAFile * strikesOfAFile;
    QVERIFY2(text.startsWith(QStringLiteral("%1:%2: ").arg(file).arg(lastLine)), qPrintable(text));
    QVERIFY(!importer().isRunning());
    QCOMPARE(imported.size(), 0);
    QCOMPARE(all(), before);
}

void tst_longwork::tellsOfAFileThatIsNotThere()
{
    QTest::ignoreMessage(QtWarningMsg, noSizeHints);
    QString text;
    // The box has an event loop of its own; it opens after the end of the work.
    connect(
        importer().work(), &Work::ended, this, [&] { text = dismissBox(); }, Qt::QueuedConnection);
    commands().import(m_folder.filePath(QStringLiteral("none.csv")));
    QTRY_VERIFY2(text.contains(QStringLiteral("there is no such file")), qPrintable(text));
}

// Rows that come into the table while those of a chain are being made take ids as well.
void tst_longwork::keepsIdsApart()
{
    bool added = false;
    connect(importer().work(), &Work::reached, this, [&](int now) {
        if (now >= 65 && now < 90 && !added) {
            added = true;
            m_data->import(DeskTest::chain(QStringLiteral("BETWEEN")), 0);
        }
    });
    commands().import(m_file);
    QTRY_VERIFY_WITH_TIMEOUT(!importer().isRunning(), patience);
    disconnect(importer().work(), nullptr, this, nullptr);
    QVERIFY(added);
    Table& table = *ChainTables::find().securities;
    const int column = table.columnIndex(QStringLiteral("isin_id"));
    QSet<QString> ids;
    for (const Record& row : table.masterIndex())
        ids.insert(row.field(column).toString());
    QCOMPARE(ids.size(), table.rowCount());
    QCOMPARE(m_data->series().size(), 2 + expiriesOfAFile);
}

tst_longwork::Answers tst_longwork::answersDuring(const QString& file)
{
    QSignalSpy reached(importer().work(), SIGNAL(reached(int)));
    QSignalSpy ended(importer().work(), SIGNAL(ended()));
    AnswerTimes times(*m_window->plot()->canvas());
    const TestSupport::LoopGap gap;
    Answers answers;
    connect(importer().work(), &Work::reached, this, [&](int now) {
        if (now == 60)
            answers.handledWhileReading = times.handledCount();
        if (now == 90) {
            answers.handledWhileMaking = times.handledCount() - answers.handledWhileReading;
            answers.gapBeforeStoring = gap.longest();
        }
    });
    times.start();
    commands().import(file);
    answers.isComplete = ended.wait(patience) && !importer().isRunning() && reached.last().first() == 100;
    times.stop();
    disconnect(importer().work(), nullptr, this, nullptr);
    answers.wholeGap = gap.longest();
    return answers;
}

void tst_longwork::answersDuringALargeImport()
{
    constexpr int expiries = 40;
    const QString file = DeskTest::write(
        m_folder.filePath(QStringLiteral("large.csv")), LongChain::text(expiries, strikesOfALargeFile));
    Answers answers = answersDuring(file);
    // What the window does itself it does in each import; a pause of its thread alone that the machine makes
    // does not come back.
    constexpr int mostImports = 3;
    for (int i = 1; i < mostImports && answers.gapBeforeStoring >= longestGap; ++i) {
        cleanup();
        init();
        answers = answersDuring(file);
    }
    QVERIFY(answers.isComplete);
    QCOMPARE(m_data->series().size(), 1 + expiries);
    const QString figures = QStringLiteral("%1 events while it read, %2 while rows were made, longest gap "
                                           "%3 ms; %4 ms with the storing in one step")
                                .arg(answers.handledWhileReading)
                                .arg(answers.handledWhileMaking)
                                .arg(answers.gapBeforeStoring)
                                .arg(answers.wholeGap);
    qInfo("%s", qPrintable(figures));
    QVERIFY2(answers.handledWhileReading >= 50, qPrintable(figures));
    QVERIFY2(answers.handledWhileMaking >= 5, qPrintable(figures));
    QVERIFY2(answers.gapBeforeStoring < longestGap, qPrintable(figures));
}

PLOT2D_TEST_MAIN(tst_longwork)
#include "tst_longwork.moc"
