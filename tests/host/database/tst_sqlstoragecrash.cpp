#include "storagefixture.h"
#include "storagewriter.h"
#include "support/testmain.h"

#include <QProcess>

#include <random>

namespace {

/// The last number of a whole line, or the given one.
int lastNumber(const QByteArray& output, int otherwise)
{
    const int end = output.lastIndexOf('\n');
    return end < 0 ? otherwise : output.left(end).split('\n').last().toInt();
}

}

/// Kills a program that commits, at random moments.
class tst_sqlstoragecrash : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyAcknowledgedCommitIsThere();
    void killsWhileTheDatabaseIsMade();

private:
    /// Runs the writer for a time and kills it; the last commit that it told of.
    static int runAndKill(const QString& fileName, std::mt19937_64& engine, int leastLines, int lastKnown);
    static void requireWholeCommits(const QString& fileName, int acknowledged);
};

int tst_sqlstoragecrash::runAndKill(
    const QString& fileName, std::mt19937_64& engine, int leastLines, int lastKnown)
{
    QProcess writer;
    writer.setProcessChannelMode(QProcess::SeparateChannels);
    writer.start(QStringLiteral(STORAGE_WRITER), {fileName});
    if (!writer.waitForStarted())
        return -1;
    QByteArray output;
    while (output.count('\n') < leastLines && writer.waitForReadyRead(20000))
        output += writer.readAllStandardOutput();
    // From here on any moment will do; the writer goes on meanwhile.
    QElapsedTimer timer;
    timer.start();
    const qint64 end = qint64(engine() % 30000000);
    while (timer.nsecsElapsed() < end) { }
    writer.kill();
    writer.waitForFinished();
    output += writer.readAllStandardOutput();
    const QByteArray errors = writer.readAllStandardError();
    if (output.count('\n') < leastLines || !errors.isEmpty())
        qWarning("the writer stopped or complained: %s", errors.constData());
    return lastNumber(output, lastKnown);
}

void tst_sqlstoragecrash::requireWholeCommits(const QString& fileName, int acknowledged)
{
    SqlStorage storage(StorageFixture::connection(fileName));
    storage.open();
    Table counter(StorageWriter::counterName(), StorageWriter::counterColumns());
    Table batches(StorageWriter::batchesName(), StorageWriter::batchesColumns());
    storage.attach(&counter);
    storage.attach(&batches);
    const int last = counter.rowCount() ? counter.record(0).value(0).toInt32() : 0;
    // A commit may be done without the time to tell of it.
    QVERIFY2(last == acknowledged || last == acknowledged + 1,
        qPrintable(QStringLiteral("%1 acknowledged, %2 stored").arg(acknowledged).arg(last)));

    const int first = std::max(1, last - StorageWriter::batchesKept + 1);
    QCOMPARE(batches.rowCount(), (last - first + 1) * StorageWriter::rowsPerCommit);
    for (int i = 0; i < batches.rowCount(); ++i) {
        const Record record = batches.record(i);
        QCOMPARE(record.value(0).toInt32(), first + i / StorageWriter::rowsPerCommit);
        QCOMPARE(record.value(1).toInt32(), i % StorageWriter::rowsPerCommit);
    }
}

void tst_sqlstoragecrash::everyAcknowledgedCommitIsThere()
{
    const StorageFixture fixture;
    std::mt19937_64 engine(1);
    int acknowledged = 0;
    int journals = 0;
    constexpr int kills = 30;
    for (int i = 0; i < kills; ++i) {
        acknowledged = runAndKill(fixture.path(), engine, 1 + int(engine() % 6), acknowledged);
        QVERIFY(acknowledged > 0);
        journals += fixture.files().size() > 1 ? 1 : 0;
        requireWholeCommits(fixture.path(), acknowledged);
        if (QTest::currentTestFailed())
            return;
    }
    qInfo("%d kills after %d commits, %d of them within a transaction", kills, acknowledged, journals);
    QVERIFY(journals > 0);
}

void tst_sqlstoragecrash::killsWhileTheDatabaseIsMade()
{
    std::mt19937_64 engine(2);
    for (int i = 0; i < 20; ++i) {
        const StorageFixture fixture;
        const int acknowledged = runAndKill(fixture.path(), engine, 0, 0);
        QVERIFY(acknowledged >= 0);
        requireWholeCommits(fixture.path(), acknowledged);
        if (QTest::currentTestFailed())
            return;
    }
}

PLOT2D_TEST_MAIN(tst_sqlstoragecrash)
#include "tst_sqlstoragecrash.moc"
