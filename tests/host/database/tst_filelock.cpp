#include "database/filelock.h"
#include "support/locks.h"
#include "support/testmain.h"

#include <QTemporaryDir>

class tst_filelock : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void ofOneAtATime();
    void whatIsLeftIsTakenOver_data();
    void whatIsLeftIsTakenOver();
    void whatIsNewIsWaitedFor();
    void theLivingKeepIt_data();
    void theLivingKeepIt();
    void whereNoFileCanBe();

private:
    QString file() const { return m_folder->filePath(QStringLiteral("a.lock")); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_filelock::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
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
    QTest::newRow("with half a name") << QByteArray("12");
    QByteArray own;
    {
        FileLock lock(file());
        QVERIFY(lock.tryLock(0));
        QFile written(file());
        QVERIFY(written.open(QIODevice::ReadOnly));
        own = written.readAll();
    }
    // As if the killed one's number had been given anew, to a program of the same name.
    QTest::newRow("with the name of one that runs") << own;
}

void tst_filelock::whatIsLeftIsTakenOver()
{
    QFETCH(QByteArray, content);
    QFile left(file());
    QVERIFY(left.open(QIODevice::WriteOnly));
    QCOMPARE(left.write(content), qint64(content.size()));
    left.close();
    QVERIFY(TestSupport::ageLock(file(), 1500));
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
    QVERIFY(lock.tryLock(5000));
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
