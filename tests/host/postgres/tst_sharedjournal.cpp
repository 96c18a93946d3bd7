#include "../database/storagefixture.h"
#include "sharingtest.h"
#include "support/locks.h"
#include "support/testmain.h"

#include <QDir>

#include <cerrno>
#include <cstring>

#include <dlfcn.h>

namespace {

bool removalsFail = false;

}

// Called by the libraries in place of the system's.
extern "C" int remove(const char* file) noexcept
{
    using Remove = int(const char*);
    static auto* const next = reinterpret_cast<Remove*>(::dlsym(RTLD_NEXT, "remove"));
    const char* const suffix = std::strrchr(file, '.');
    if (!removalsFail || !suffix || std::strcmp(suffix, ".unsent") != 0)
        return next(file);
    errno = EACCES;
    return -1;
}

/// Commits that the server has not taken when the program ends.
class tst_sharedjournal : public SharingTest {
    Q_OBJECT

private Q_SLOTS:
    void unsentCommitsOfAnEndedProgram();
    void damagedFilesOfUnsentCommits();
    void filesThatCannotBeRemoved();
};

void tst_sharedjournal::unsentCommitsOfAnEndedProgram()
{
    const QTemporaryDir folder;
    const QString unsent = folder.filePath(QStringLiteral("unsent"));
    {
        SharingDesk desk(address(), unsent);
        desk.append(1, 5);
        desk.storage.commit();
        QTRY_VERIFY_WITH_TIMEOUT(desk.isSettled(), patience);
        server().kill();
        QTRY_VERIFY_WITH_TIMEOUT(!desk.storage.problem().isEmpty(), patience);
        desk.append(6, 2);
        desk.storage.commit();
        desk.remove(1);
        desk.set(2, SampleTable::Ratio, 5.0);
        desk.storage.commit();
        QVERIFY(!desk.storage.close());
    }
    QStringList files = QDir(unsent).entryList({QStringLiteral("*.unsent")});
    QCOMPARE(files.size(), 1);
    const QByteArray content = readFile(unsent + QLatin1Char('/') + files.first());
    QVERIFY(!content.contains(PostgresServer::password().toUtf8()));
    const auto access = QFile(unsent + QLatin1Char('/') + files.first()).permissions();
    QVERIFY(!(access & (QFileDevice::ReadGroup | QFileDevice::ReadOther)));
    // The next program has taken the file over and was killed then.
    QVERIFY(TestSupport::leaveLock(unsent + QLatin1Char('/') + files.first() + QLatin1String(".lock")));
    server().start();
    const SharingDesk next(address(), unsent);
    QCOMPARE(SampleTable::ids(next.table), (QVector<int>{2, 3, 4, 5, 6, 7}));
    QCOMPARE(next.row(2).value(SampleTable::Ratio).toDouble(), 5.0);
    QCOMPARE(QDir(unsent).entryList(QDir::Files), QStringList());
}

void tst_sharedjournal::damagedFilesOfUnsentCommits()
{
    const QTemporaryDir folder;
    QVERIFY(writeFile(folder.filePath(QStringLiteral("a.unsent")), QByteArray()));
    QVERIFY(writeFile(folder.filePath(QStringLiteral("b.unsent")), QByteArray(1000, 'x')));
    {
        SharingDesk desk(address(), folder.path());
        desk.append(1, 5);
        desk.storage.commit();
        settle(desk);
        server().kill();
        desk.append(6, 2);
        desk.storage.commit();
        QVERIFY(!desk.storage.close());
    }
    server().start();
    const QStringList files
        = QDir(folder.path()).entryList({QStringLiteral("*.unsent")}, QDir::Files, QDir::Size);
    QByteArray content;
    for (const QString& file : files) {
        if (file.size() > 10)
            content = readFile(folder.filePath(file));
    }
    QVERIFY(content.size() > 100);
    for (const int size : {int(content.size()) - 1, int(content.size()) / 2, 40}) {
        QVERIFY(writeFile(folder.filePath(QStringLiteral("c%1.unsent").arg(size)), content.left(size)));
    }
    content[content.size() / 2] = char(content[content.size() / 2] ^ 1);
    QVERIFY(writeFile(folder.filePath(QStringLiteral("d.unsent")), content));
    const SharingDesk next(address(), folder.path());
    QCOMPARE(next.table.rowCount(), 7);
    // What nobody can read stays, for somebody to look at.
    QCOMPARE(QDir(folder.path()).entryList({QStringLiteral("*.unsent")}).size(), 6);
}

void tst_sharedjournal::filesThatCannotBeRemoved()
{
    const QTemporaryDir folder;
    const auto files = [&] { return QDir(folder.path()).entryList({QStringLiteral("*.unsent")}).size(); };
    removalsFail = true;
    {
        SharingDesk desk(address(), folder.path());
        desk.append(1, 2);
        desk.storage.commit();
        settle(desk);
    }
    QCOMPARE(files(), 1);
    SharingDesk other(address());
    other.set(1, SampleTable::Ratio, 7.0);
    other.storage.commit();
    settle(other);
    // The server has got what is in the file, and must not get it once more.
    for (const bool fail : {true, false}) {
        removalsFail = fail;
        const SharingDesk next(address(), folder.path());
        QCOMPARE(next.row(1).value(SampleTable::Ratio).toDouble(), 7.0);
        QCOMPARE(files(), fail ? 1 : 0);
    }
    QCOMPARE(sql(QStringLiteral("SELECT count(*) FROM host_writers")), QStringList{QStringLiteral("1")});
}

PLOT2D_TEST_MAIN(tst_sharedjournal)
#include "tst_sharedjournal.moc"
