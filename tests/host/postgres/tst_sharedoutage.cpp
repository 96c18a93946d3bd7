#include "randomdesks.h"
#include "sharingtest.h"
#include "support/loopgap.h"
#include "support/testmain.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>

using TestSupport::LoopGap;

namespace {

/// A query in this thread that waits for a server that is gone would take longer.
constexpr qint64 longestGap = 2000; // ms

}

/// Storages on a server that is killed, stopped, frozen and started again.
class tst_sharedoutage : public SharingTest {
    Q_OBJECT

private Q_SLOTS:
    void theTableStaysWhileTheServerIsGone_data();
    void theTableStaysWhileTheServerIsGone();
    void commitsWaitAndArriveInTheirOrder();
    void numbersAreThereWithoutAServer();
    void whatWasMissedIsReadAndNoMore();
    void conflictsEndInTheServersOrder();
    void aFrozenServerDoesNotStopTheDesk();
    void aFrozenServerDoesNotStopTheEnd();
    void aFrozenServerDoesNotStopTheJournal();
    void nothingIsLostOrDoubled_data();
    void nothingIsLostOrDoubled();
    void programsThatWriteWhileTheServerIsKilled();

private:
    void requireAll(const RandomDesks& desks);
    void endServer(const QString& how) { how == QLatin1String("kill") ? server().kill() : server().stop(); }
};

void tst_sharedoutage::theTableStaysWhileTheServerIsGone_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("killed") << QStringLiteral("kill");
    QTest::newRow("stopped") << QStringLiteral("stop");
}

void tst_sharedoutage::theTableStaysWhileTheServerIsGone()
{
    QFETCH(QString, how);
    const auto a = desk();
    const auto b = desk();
    a->append(1, 50);
    a->storage.commit();
    QTRY_COMPARE_WITH_TIMEOUT(b->table.rowCount(), 50, patience);
    QTRY_VERIFY_WITH_TIMEOUT(a->isSettled(), patience);
    QSignalSpy status(&b->storage, SIGNAL(statusChanged()));
    QSignalSpy reset(&b->table, SIGNAL(reset()));
    const QVector<QVariantList> before = b->content();

    endServer(how);
    const LoopGap whileGone;
    QTRY_VERIFY_WITH_TIMEOUT(!b->storage.problem().isEmpty(), patience);
    QVERIFY2(!b->storage.problem().contains(QLatin1Char('\n')), qPrintable(b->storage.problem()));
    QVERIFY(!b->storage.problem().contains(PostgresServer::password()));
    QVERIFY(status.count() > 0);
    QCOMPARE(b->content(), before);
    const int turns = whileGone.turns();
    QTRY_VERIFY_WITH_TIMEOUT(whileGone.turns() > turns + 100, patience);
    QVERIFY2(whileGone.longest() < longestGap, qPrintable(QString::number(whileGone.longest())));

    server().start();
    const LoopGap sinceStart;
    QTRY_VERIFY_WITH_TIMEOUT(a->isSettled() && b->isSettled(), patience);
    QCOMPARE(b->content(), before);
    QCOMPARE(reset.count(), 0);
    qInfo("the longest gaps of the event loop were %lld ms without the server and %lld ms since its start",
        whileGone.longest(), sinceStart.longest());
    QVERIFY2(sinceStart.longest() < longestGap, qPrintable(QString::number(sinceStart.longest())));
    // And they follow each other again.
    a->append(51, 1);
    a->storage.commit();
    QTRY_COMPARE_WITH_TIMEOUT(b->table.rowCount(), 51, patience);
}

void tst_sharedoutage::commitsWaitAndArriveInTheirOrder()
{
    const auto a = desk();
    const auto b = desk();
    server().kill();
    QTRY_VERIFY_WITH_TIMEOUT(!a->storage.problem().isEmpty(), patience);
    const LoopGap gap;
    a->append(1, 3);
    a->storage.commit();
    a->set(2, SampleTable::Ratio, 5.0);
    a->storage.commit();
    a->remove(1);
    a->append(4, 1);
    a->storage.commit();
    QVERIFY2(gap.longest() < longestGap, qPrintable(QString::number(gap.longest())));
    QCOMPARE(a->storage.waitingCommits(), 3);
    QCOMPARE(b->table.rowCount(), 0);
    server().start();
    QTRY_COMPARE_WITH_TIMEOUT(SampleTable::ids(b->table), (QVector<int>{2, 3, 4}), patience);
    QCOMPARE(b->row(2).value(SampleTable::Ratio).toDouble(), 5.0);
    QTRY_VERIFY_WITH_TIMEOUT(a->isSettled(), patience);
    QCOMPARE(a->content(), b->content());
}

void tst_sharedoutage::numbersAreThereWithoutAServer()
{
    const auto a = desk();
    server().kill();
    QTRY_VERIFY_WITH_TIMEOUT(!a->storage.problem().isEmpty(), patience);
    QCOMPARE(a->storage.takeNumbers(20000).size(), 20000);
}

void tst_sharedoutage::whatWasMissedIsReadAndNoMore()
{
    const auto a = desk();
    const auto b = desk();
    a->append(1, 100);
    a->storage.commit();
    QTRY_COMPARE_WITH_TIMEOUT(b->table.rowCount(), 100, patience);
    // The other desk's connection alone is cut while this one writes.
    QSignalSpy changed(&b->table, SIGNAL(rowsChanged(QVector<Record>)));
    QSignalSpy inserted(&b->table, SIGNAL(rowsInserted(QVector<Record>)));
    QSignalSpy removed(&b->table, SIGNAL(rowsRemoved(QVector<Record>)));
    server().kill();
    QTRY_VERIFY_WITH_TIMEOUT(!a->storage.problem().isEmpty() && !b->storage.problem().isEmpty(), patience);
    a->set(7, SampleTable::Ratio, 5.0);
    a->remove(8);
    a->append(101, 2);
    a->storage.commit();
    server().start();
    QTRY_COMPARE_WITH_TIMEOUT(b->table.rowCount(), 101, patience);
    QTRY_COMPARE_WITH_TIMEOUT(b->row(7).value(SampleTable::Ratio).toDouble(), 5.0, patience);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed[0][0].value<QVector<Record>>().size(), 1);
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(inserted[0][0].value<QVector<Record>>().size(), 2);
    QCOMPARE(removed.count(), 1);
    QCOMPARE(removed[0][0].value<QVector<Record>>().size(), 1);
}

void tst_sharedoutage::conflictsEndInTheServersOrder()
{
    const auto a = desk();
    const auto b = desk();
    a->append(1, 2);
    a->storage.commit();
    QTRY_COMPARE_WITH_TIMEOUT(b->table.rowCount(), 2, patience);
    server().kill();
    QTRY_VERIFY_WITH_TIMEOUT(!a->storage.problem().isEmpty() && !b->storage.problem().isEmpty(), patience);
    a->set(1, SampleTable::Ratio, 5.0);
    a->set(2, SampleTable::Count, qlonglong(5));
    a->storage.commit();
    b->set(1, SampleTable::Ratio, 6.0);
    b->set(2, SampleTable::Ratio, 6.0);
    b->storage.commit();
    server().start();
    QTRY_VERIFY_WITH_TIMEOUT(a->isSettled() && b->isSettled(), patience);
    QTRY_COMPARE_WITH_TIMEOUT(a->content(), b->content(), patience);
    // Either may have come last, but both fields of the other row are there.
    const double last = a->row(1).value(SampleTable::Ratio).toDouble();
    QVERIFY(last == 5.0 || last == 6.0);
    QCOMPARE(a->row(2).value(SampleTable::Count).toInt64(), 5);
    QCOMPARE(a->row(2).value(SampleTable::Ratio).toDouble(), 6.0);
}

void tst_sharedoutage::aFrozenServerDoesNotStopTheDesk()
{
    const auto a = desk();
    const auto b = desk();
    const LoopGap gap;
    server().freeze();
    a->append(1, 10);
    a->storage.commit();
    QCOMPARE(a->storage.waitingCommits(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(a->storage.problem().contains(QLatin1String("does not answer")), patience);
    QVERIFY2(gap.longest() < longestGap, qPrintable(QString::number(gap.longest())));
    server().thaw();
    QTRY_COMPARE_WITH_TIMEOUT(b->table.rowCount(), 10, patience);
    QTRY_VERIFY_WITH_TIMEOUT(a->isSettled(), patience);
}

void tst_sharedoutage::aFrozenServerDoesNotStopTheEnd()
{
    const QTemporaryDir folder;
    auto a = std::make_unique<SharingDesk>(address(), folder.path());
    server().freeze();
    a->append(1, 10);
    a->storage.commit();
    QElapsedTimer timer;
    timer.start();
    a.reset();
    QVERIFY2(timer.elapsed() < patience, qPrintable(QString::number(timer.elapsed())));
    server().thaw();
    // What could not be sent comes with the next program.
    const SharingDesk next(address(), folder.path());
    QCOMPARE(next.table.rowCount(), 10);
}

void tst_sharedoutage::aFrozenServerDoesNotStopTheJournal()
{
    const QTemporaryDir folder;
    SharingDesk a(address(), folder.path());
    server().freeze();
    a.append(1, 10);
    a.storage.commit();
    const auto size = [&] {
        const QFileInfoList files = QDir(folder.path()).entryInfoList({QStringLiteral("*.unsent")});
        return files.isEmpty() ? 0 : files.first().size();
    };
    QTRY_VERIFY_WITH_TIMEOUT(size() > 0, patience);
    // The worker waits for the server now.
    for (int id = 11; id < 100; id += 10) {
        const qint64 before = size();
        a.append(id, 10);
        a.storage.commit();
        QTRY_VERIFY_WITH_TIMEOUT(size() > before, patience);
    }
    server().thaw();
    settle(a);
    QTRY_COMPARE_WITH_TIMEOUT(size(), qint64(0), patience);
}

void tst_sharedoutage::nothingIsLostOrDoubled_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<quint64>("seed");
    QTest::newRow("killed") << QStringLiteral("kill") << quint64(1);
    QTest::newRow("stopped") << QStringLiteral("stop") << quint64(2);
}

// Three desks write at random while the server is ended again and again, at any moment: in the middle of
// transactions.
void tst_sharedoutage::nothingIsLostOrDoubled()
{
    QFETCH(QString, how);
    QFETCH(quint64, seed);
    std::vector<std::unique_ptr<SharingDesk>> three;
    for (int i = 0; i < 3; ++i)
        three.push_back(desk());
    RandomDesks desks(std::move(three), seed);
    int inTransaction = 0;
    for (int outage = 0; outage < 6; ++outage) {
        for (int i = 0; i < 12; ++i) {
            desks.write();
            QCoreApplication::processEvents();
        }
        inTransaction += desks.waitingCount();
        endServer(how);
        for (int i = 0; i < 4; ++i)
            desks.write();
        server().start();
        if (outage % 2 == 0)
            QTRY_VERIFY_WITH_TIMEOUT(desks.areSettled(), patience);
    }
    QTRY_VERIFY_WITH_TIMEOUT(desks.areSettled(), patience);
    requireAll(desks);
    if (QTest::currentTestFailed())
        return;
    qInfo("%d commits, %d rows, the server was ended with work of %d desks under way", desks.commits(),
        desks.expectedCounts().size(), inTransaction);
    QVERIFY(inTransaction > 0);
}

// Every desk and the server have all that was written, once.
void tst_sharedoutage::requireAll(const RandomDesks& desks)
{
    const QMap<int, qlonglong> expected = desks.expectedCounts();
    for (const auto& one : desks.all())
        QTRY_COMPARE_WITH_TIMEOUT(one->table.rowCount(), expected.size(), patience);
    const auto fresh = desk();
    for (const auto& one : desks.all())
        QTRY_COMPARE_WITH_TIMEOUT(one->content(), fresh->content(), patience);
    QMap<int, qlonglong> stored;
    for (const Record& row : fresh->table.masterIndex())
        stored.insert(row.value(SampleTable::Id).toInt32(), row.value(SampleTable::Count).toInt64());
    QCOMPARE(stored, expected);
    // Exactly as many transactions as commits, whatever has become of their answers.
    QCOMPARE(sql(QStringLiteral("SELECT sum(last_commit) FROM host_writers")),
        QStringList{QString::number(desks.commits())});
    QCOMPARE(sql(QStringLiteral("SELECT revision FROM host_sharing")),
        QStringList{QString::number(desks.commits() + 1)});
}

void tst_sharedoutage::programsThatWriteWhileTheServerIsKilled()
{
    const auto watcher = desk();
    constexpr int programs = 2;
    constexpr int batches = 40;
    constexpr int rowsPerBatch = 25;
    std::vector<std::unique_ptr<QProcess>> writers;
    for (int i = 0; i < programs; ++i) {
        writers.push_back(std::make_unique<QProcess>());
        writers.back()->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        writers.back()->start(QStringLiteral(SHARING_WRITER),
            {address(), QString::number((i + 1) * 100000), QString::number(batches),
                QString::number(rowsPerBatch)});
    }
    for (int i = 0; i < programs; ++i)
        QTRY_VERIFY_WITH_TIMEOUT(!watcher->row((i + 1) * 100000).isNull(), patience);
    for (int kills = 0; kills < 3; ++kills) {
        const int before = watcher->table.rowCount();
        QTRY_VERIFY_WITH_TIMEOUT(watcher->table.rowCount() > before
                || watcher->table.rowCount() == programs * batches * rowsPerBatch,
            patience);
        server().kill();
        server().start();
    }
    for (const auto& writer : writers) {
        QTRY_COMPARE_WITH_TIMEOUT(writer->state(), QProcess::NotRunning, 2 * patience);
        QCOMPARE(writer->exitCode(), 0);
    }
    QTRY_COMPARE_WITH_TIMEOUT(watcher->table.rowCount(), programs * batches * rowsPerBatch, patience);
    QSet<int> ids;
    for (const Record& row : watcher->table.masterIndex())
        ids.insert(row.value(SampleTable::Id).toInt32());
    QCOMPARE(ids.size(), programs * batches * rowsPerBatch);
    const auto fresh = desk();
    QCOMPARE(watcher->content(), fresh->content());
}

PLOT2D_TEST_MAIN(tst_sharedoutage)
#include "tst_sharedoutage.moc"
