#include "database/filelock.h"
#include "support/locks.h"
#include "support/testmain.h"

#include <QTemporaryDir>

namespace {

/// What a lock of this program has in its file.
QByteArray ownName()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("own.lock"));
    FileLock lock(name);
    QFile file(name);
    return lock.tryLock(0) && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}

class tst_filelock : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void ofOneAtATime();
    void whatIsLeftIsTakenOver_data();
    void whatIsLeftIsTakenOver();
    void whatIsNewIsWaitedFor();
    void removalOfAKilledOne();
    void heldLong_data();
    void heldLong();
    void theLivingKeepIt_data();
    void theLivingKeepIt();
    void whereNoFileCanBe();

private:
    QString file() const { return m_folder->filePath(QStringLiteral("a.lock")); }
    /// Leaves a lock of a program that has ended, with what it has in its file, some milliseconds ago.
    bool leave(const QByteArray& content, int age) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_filelock::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

bool tst_filelock::leave(const QByteArray& content, int age) const
{
    QFile left(file());
    const bool isWritten = left.open(QIODevice::WriteOnly) && left.write(content) == content.size();
    left.close();
    return isWritten && TestSupport::ageLock(file(), age);
}

void tst_filelock::ofOneAtATime()
{
    FileLock first(file());
    QVERIFY(!QFile::exists(file()));
    QVERIFY(first.tryLock(0));
    QVERIFY(QFile::exists(file()));
    FileLock second(file());
    QVERIFY(!second.tryLock(0));
    first.unlock();
    QVERIFY(!QFile::exists(file()));
    {
        FileLock third(file());
        QVERIFY(third.tryLock(0));
    }
    QVERIFY(second.tryLock(0));
}

void tst_filelock::whatIsLeftIsTakenOver_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("without a name") << QByteArray();
    QTest::newRow("with something else") << QByteArray("something else\n");
    // As if the killed one's number had been given anew, to a program of the same name.
    QTest::newRow("with the name of one that runs") << ownName();
}

void tst_filelock::whatIsLeftIsTakenOver()
{
    QFETCH(QByteArray, content);
    QVERIFY(leave(content, 4000));
    FileLock lock(file());
    QVERIFY(lock.tryLock(0));
    QVERIFY(!FileLock(file()).tryLock(0));
}

void tst_filelock::whatIsNewIsWaitedFor()
{
    // Whoever makes a lock this moment still has to put its name in it.
    QVERIFY(TestSupport::ageLock(file(), 0));
    FileLock lock(file());
    QVERIFY(!lock.tryLock(0));
    QVERIFY(lock.tryLock(10000));
}

void tst_filelock::removalOfAKilledOne()
{
    QVERIFY(TestSupport::ageLock(file(), 4000));
    QVERIFY(TestSupport::ageLock(file() + QStringLiteral(".rmlock"), 4000));
    FileLock lock(file());
    QVERIFY(lock.tryLock(0));
}

void tst_filelock::heldLong_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("without a name") << QByteArray() << true;
    QTest::newRow("of one that runs") << ownName() << false;
    QTest::newRow("of one that has ended") << QByteArray("2147483647\nprogram\n\n") << true;
}

// As in a folder of several machines that does not show here what is held there.
void tst_filelock::heldLong()
{
    QFETCH(QByteArray, content);
    QVERIFY(leave(content, 3600000));
    QTEST(FileLock(file(), FileLock::Held::Long).tryLock(0), "isTaken");
}

void tst_filelock::theLivingKeepIt_data()
{
    QTest::addColumn<bool>("isNamed");
    QTest::newRow("with a name") << true;
    QTest::newRow("without a name") << false;
}

void tst_filelock::theLivingKeepIt()
{
    QFETCH(bool, isNamed);
    FileLock living(file());
    QVERIFY(living.tryLock(0));
    if (!isNamed)
        QVERIFY(QFile::resize(file(), 0));
    QVERIFY(TestSupport::ageLock(file(), 3600000));
    QVERIFY(!FileLock(file()).tryLock(300));
    living.unlock();
    QVERIFY(FileLock(file()).tryLock(0));
}

void tst_filelock::whereNoFileCanBe()
{
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!FileLock(m_folder->filePath(QStringLiteral("not/there/a.lock"))).tryLock(60000));
    QVERIFY(timer.elapsed() < 30000);
}

PLOT2D_TEST_MAIN(tst_filelock)
#include "tst_filelock.moc"
