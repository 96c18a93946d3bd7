#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <output/wholefile.h>

#include <database/exception.h>

#include <QDir>
#include <QTemporaryDir>

#include <csignal>
#include <random>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

/// Files that are there as a whole or not at all, whatever happens while they are written.
class tst_wholefile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void writes_data();
    void writes();
    void keepsPermissionsAndLinks();
    void failsWithTheName_data();
    void failsWithTheName();
    void keepsTheOldFileInAReadOnlyFolder();
    void keepsTheOldFileOnAFullDisk_data();
    void keepsTheOldFileOnAFullDisk();
    void survivesBeingKilled();
    void leavesAPipeWhatItIs();

private:
    QString path(const char* name) const { return m_folder->filePath(QString::fromLatin1(name)); }
    QStringList files() const { return QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

QByteArray content(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Empty where nothing was thrown.
QString reasonOfFailure(const QString& fileName, const QByteArray& bytes)
{
    try {
        WholeFile::write(fileName, bytes);
    } catch (const Exception& error) {
        return error.text();
    }
    return QString();
}

/// While it lives, no file may grow beyond a size, as on a disk that is nearly full.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    void (*m_handler)(int);
    rlimit m_before{};
};

/// While it lives, a user for whom permissions count: not root.
class PlainUser {
public:
    PlainUser()
        : m_wasRoot(geteuid() == 0)
    {
        constexpr uid_t nobody = 65534;
        isPlain = !m_wasRoot || seteuid(nobody) == 0;
    }
    PlainUser(const PlainUser&) = delete;
    PlainUser& operator=(const PlainUser&) = delete;
    ~PlainUser()
    {
        if (m_wasRoot && seteuid(0) != 0)
            qFatal("the test cannot become root again");
    }

    bool isPlain = false;

private:
    bool m_wasRoot;
};

constexpr int largeSize = 4 << 20;

// Replaces the file over and over, and writes a byte to the pipe after each time.
[[noreturn]] void writeForEver(const QString& fileName, int pipe)
{
    const QByteArray contents[] = {QByteArray(largeSize, 'a'), QByteArray(largeSize, 'b')};
    for (int i = 0;; ++i) {
        if (!reasonOfFailure(fileName, contents[i % 2]).isEmpty() || ::write(pipe, "x", 1) != 1)
            _exit(1);
    }
}

}

void tst_wholefile::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_wholefile::writes_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("a new file") << QByteArray() << QByteArray("new");
    QTest::newRow("longer") << QByteArray("old") << QByteArray(largeSize, 'x');
    QTest::newRow("shorter") << QByteArray(largeSize, 'x') << QByteArray("new");
    QTest::newRow("nothing") << QByteArray("old") << QByteArray();
    QTest::newRow("bytes") << QByteArray() << QByteArray("\0\r\n\xff", 4);
}

void tst_wholefile::writes()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    if (!before.isEmpty())
        DeskTest::write(path("f"), before);
    WholeFile::write(path("f"), after);
    QVERIFY(content(path("f")) == after);
    QCOMPARE(files(), QStringList{QStringLiteral("f")});
}

void tst_wholefile::keepsPermissionsAndLinks()
{
    const auto mine = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    DeskTest::write(path("f"), "old");
    QVERIFY(QFile::setPermissions(path("f"), mine));
    QVERIFY(QFile::link(path("f"), path("link")));
    WholeFile::write(path("link"), "new");
    QCOMPARE(content(path("f")), QByteArray("new"));
    QVERIFY(QFileInfo(path("link")).isSymLink());
    QCOMPARE(QFile::permissions(path("f")), mine);
}

void tst_wholefile::failsWithTheName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no such folder") << "none/a.png";
    QTest::newRow("a folder") << "taken";
    QTest::newRow("a file as folder") << "file/a.png";
}

void tst_wholefile::failsWithTheName()
{
    QFETCH(QString, name);
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("taken")));
    DeskTest::write(path("file"), "old");
    const QString fileName = m_folder->filePath(name);
    const QString reason = reasonOfFailure(fileName, "new");
    QVERIFY2(reason.startsWith(fileName + QStringLiteral(": ")), qPrintable(reason));
    QVERIFY2(!reason.contains(QLatin1Char('\n')), qPrintable(reason));
    QCOMPARE(content(path("file")), QByteArray("old"));
}

void tst_wholefile::keepsTheOldFileInAReadOnlyFolder()
{
    DeskTest::write(path("f"), "old");
    const QByteArray folder = QFile::encodeName(m_folder->path());
    QCOMPARE(::chmod(folder.constData(), 0555), 0);
    QString reason;
    bool wasPlain = false;
    {
        const PlainUser user;
        wasPlain = user.isPlain;
        reason = reasonOfFailure(path("f"), "new") + reasonOfFailure(path("g"), "new");
    }
    QCOMPARE(::chmod(folder.constData(), 0755), 0);
    if (!wasPlain)
        QSKIP("this user may write everywhere");
    QVERIFY2(reason.contains(path("f") + QStringLiteral(": ")), qPrintable(reason));
    QVERIFY2(reason.contains(path("g") + QStringLiteral(": ")), qPrintable(reason));
    QCOMPARE(files(), QStringList{QStringLiteral("f")});
    QCOMPARE(content(path("f")), QByteArray("old"));
}

void tst_wholefile::keepsTheOldFileOnAFullDisk_data()
{
    QTest::addColumn<int>("limit");
    QTest::newRow("nothing fits") << 0;
    QTest::newRow("a part fits") << largeSize / 2;
    QTest::newRow("all but a byte") << largeSize - 1;
}

void tst_wholefile::keepsTheOldFileOnAFullDisk()
{
    QFETCH(int, limit);
    DeskTest::write(path("f"), "old");
    QString reason;
    {
        const FileSizeLimit full{rlim_t(limit)};
        reason = reasonOfFailure(path("f"), QByteArray(largeSize, 'x'));
        reason += reasonOfFailure(path("g"), QByteArray(largeSize, 'x'));
    }
    QVERIFY2(reason.contains(path("f") + QStringLiteral(": ")), qPrintable(reason));
    QVERIFY2(reason.contains(path("g") + QStringLiteral(": ")), qPrintable(reason));
    QCOMPARE(content(path("f")), QByteArray("old"));
    QCOMPARE(files(), QStringList{QStringLiteral("f")});
}

// At whatever moment: in the middle of a write mostly, as it is most of the time.
void tst_wholefile::survivesBeingKilled()
{
    constexpr int rounds = 25;
    constexpr unsigned seed = 20240315;
    std::mt19937_64 random(seed);
    for (int round = 0; round < rounds; ++round) {
        DeskTest::write(path("f"), QByteArray(largeSize, 'a'));
        int ends[2];
        QCOMPARE(::pipe(ends), 0);
        const pid_t child = ::fork();
        QVERIFY(child >= 0);
        if (child == 0)
            writeForEver(path("f"), ends[1]);
        ::close(ends[1]);
        char byte = 0;
        bool isWriting = ::read(ends[0], &byte, 1) == 1;
        const auto delay = std::chrono::microseconds(random() % 5000);
        const auto end = std::chrono::steady_clock::now() + delay;
        while (std::chrono::steady_clock::now() < end)
            isWriting = isWriting && byte == 'x';
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ::close(ends[0]);
        QVERIFY(isWriting);
        QVERIFY(WIFSIGNALED(status));
        const QStringList all = files();
        for (const QString& name : all) {
            const QByteArray now = content(m_folder->filePath(name));
            QVERIFY2(now.size() == largeSize && now.count(now.at(0)) == largeSize,
                qPrintable(QStringLiteral("seed %1, round %2: %3 of %4 bytes")
                               .arg(seed)
                               .arg(round)
                               .arg(name)
                               .arg(now.size())));
        }
    }
}

void tst_wholefile::leavesAPipeWhatItIs()
{
    const QByteArray pipe = QFile::encodeName(path("pipe"));
    QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
    QVERIFY(reasonOfFailure(path("pipe"), "content").contains(path("pipe")));
    struct stat status { };
    QCOMPARE(stat(pipe.constData(), &status), 0);
    QVERIFY(S_ISFIFO(status.st_mode));
}

PLOT2D_TEST_MAIN(tst_wholefile)
#include "tst_wholefile.moc"
