#include "database/filelock.h"
#include "database/settings.h"
#include "support/locks.h"
#include "support/testmain.h"

#include <random>

namespace {

void write(const QString& fileName, const QByteArray& content)
{
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

QByteArray read(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray randomBytes(quint64 seed, int count)
{
    std::mt19937_64 engine(seed);
    QByteArray bytes;
    for (int i = 0; i < count; ++i)
        bytes.append(static_cast<char>(engine()));
    return bytes;
}

}

class tst_settings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void defaults();
    void survivesRestart();
    void writtenByDestructor();
    void writtenByEventLoop();
    void bytesStayAsTheyAre();
    void remove();
    void groups();
    void partOfOthers();
    void partOutlivesTheWhole();
    void emptyKey();
    void emptyFile();
    void brokenFile_data();
    void brokenFile();
    void fileBreaksLater();
    void unwritableFolder();
    void folderInPlaceOfFile();
    void twoOnOneFile();
    void lockOfAKilledProgram();
    void lockOfALivingProgram();
    void userSettings();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_settings::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_settings::defaults()
{
    const Settings settings(path("a.ini"));
    QVERIFY(!settings.value(QStringLiteral("key")).isValid());
    QCOMPARE(settings.value(QStringLiteral("key"), 5).toInt(), 5);
    QCOMPARE(settings.fileName(), path("a.ini"));
    QVERIFY(!QFile::exists(path("a.ini")));
}

void tst_settings::survivesRestart()
{
    {
        Settings settings(path("a.ini"));
        settings.setValue(QStringLiteral("number"), 5);
        settings.setValue(QStringLiteral("text"), QStringLiteral("\u0416 \"quoted\"; = \n"));
        settings.setValue(QStringLiteral("number"), 6);
        QCOMPARE(settings.value(QStringLiteral("number")).toInt(), 6);
        QVERIFY(settings.sync());
        QCOMPARE(settings.value(QStringLiteral("number")).toInt(), 6);
    }
    const Settings again(path("a.ini"));
    QCOMPARE(again.value(QStringLiteral("number")).toInt(), 6);
    QCOMPARE(again.value(QStringLiteral("text")).toString(), QStringLiteral("\u0416 \"quoted\"; = \n"));
}

void tst_settings::writtenByDestructor()
{
    {
        Settings settings(path("a.ini"));
        settings.setValue(QStringLiteral("number"), 5);
        QVERIFY(!QFile::exists(path("a.ini")));
    }
    QCOMPARE(Settings(path("a.ini")).value(QStringLiteral("number")).toInt(), 5);
}

void tst_settings::writtenByEventLoop()
{
    Settings settings(path("a.ini"));
    settings.setValue(QStringLiteral("number"), 5);
    QTRY_VERIFY(read(path("a.ini")).contains("number=5"));
    settings.setValue(QStringLiteral("number"), 6);
    QTRY_VERIFY(read(path("a.ini")).contains("number=6"));
}

void tst_settings::bytesStayAsTheyAre()
{
    QByteArray all;
    for (int i = 0; i < 256; ++i)
        all.append(static_cast<char>(i));
    const QByteArray samples[] = {QByteArray(), all, QByteArray(3, '\0'), randomBytes(5, 10000),
        QByteArray("@ByteArray(x)"), QByteArray("\0\0\0\1\0\0\0\5", 8)};
    for (const QByteArray& bytes : samples) {
        {
            Settings settings(path("a.ini"));
            settings.setValue(QStringLiteral("bytes"), bytes);
            QVERIFY(settings.sync());
            QCOMPARE(settings.value(QStringLiteral("bytes")).toByteArray(), bytes);
        }
        QCOMPARE(Settings(path("a.ini")).value(QStringLiteral("bytes")).toByteArray(), bytes);
    }
}

void tst_settings::remove()
{
    Settings settings(path("a.ini"));
    settings.setValue(QStringLiteral("a"), 1);
    settings.setValue(QStringLiteral("b"), 2);
    QVERIFY(settings.sync());
    settings.remove(QStringLiteral("a"));
    settings.remove(QStringLiteral("missing"));
    QVERIFY(!settings.value(QStringLiteral("a")).isValid());
    QVERIFY(settings.sync());
    QVERIFY(!settings.value(QStringLiteral("a")).isValid());
    QCOMPARE(settings.value(QStringLiteral("b")).toInt(), 2);
    settings.remove(QStringLiteral("b"));
    settings.setValue(QStringLiteral("b"), 3);
    QCOMPARE(settings.value(QStringLiteral("b")).toInt(), 3);
    QVERIFY(settings.sync());
    QCOMPARE(Settings(path("a.ini")).value(QStringLiteral("b")).toInt(), 3);
}

void tst_settings::groups()
{
    Settings settings(path("a.ini"));
    settings.setValue(QStringLiteral("/window//left/"), 1);
    settings.setValue(QStringLiteral("windows"), 2);
    QCOMPARE(settings.value(QStringLiteral("window/left")).toInt(), 1);
    QVERIFY(settings.sync());
    QCOMPARE(settings.value(QStringLiteral("window/left")).toInt(), 1);
    settings.remove(QStringLiteral("window"));
    settings.setValue(QStringLiteral("window/top"), 3);
    QVERIFY(!settings.value(QStringLiteral("window/left")).isValid());
    QVERIFY(settings.sync());
    QVERIFY(!settings.value(QStringLiteral("window/left")).isValid());
    QCOMPARE(settings.value(QStringLiteral("window/top")).toInt(), 3);
    QCOMPARE(settings.value(QStringLiteral("windows")).toInt(), 2);
}

void tst_settings::partOfOthers()
{
    const QString key = QStringLiteral("key");
    Settings whole(path("a.ini"));
    Settings part(whole, QStringLiteral("/one//two/"));
    Settings inner(part, QStringLiteral("three"));
    const Settings same(whole, QString());
    whole.setValue(key, 1);
    part.setValue(key, 2);
    inner.setValue(key, 3);
    QCOMPARE(part.fileName(), path("a.ini"));
    QCOMPARE(whole.value(key).toInt(), 1);
    QCOMPARE(same.value(key).toInt(), 1);
    QCOMPARE(part.value(key).toInt(), 2);
    QCOMPARE(whole.value(QStringLiteral("one/two/key")).toInt(), 2);
    QCOMPARE(whole.value(QStringLiteral("one/two/three/key")).toInt(), 3);
    QCOMPARE(part.value(QStringLiteral("three/key")).toInt(), 3);
    QVERIFY(!part.value(QString()).isValid());
    part.setValue(QString(), 5);
    QVERIFY(!whole.value(QStringLiteral("one/two")).isValid());

    part.remove(key);
    QVERIFY(!whole.value(QStringLiteral("one/two/key")).isValid());
    QCOMPARE(whole.value(key).toInt(), 1);
    QVERIFY(part.sync());
    QCOMPARE(Settings(path("a.ini")).value(QStringLiteral("one/two/three/key")).toInt(), 3);
}

void tst_settings::partOutlivesTheWhole()
{
    auto whole = std::make_unique<Settings>(path("a.ini"));
    auto part = std::make_unique<Settings>(*whole, QStringLiteral("group"));
    whole->setValue(QStringLiteral("first"), 1);
    whole.reset();
    QVERIFY(!QFile::exists(path("a.ini")));
    part->setValue(QStringLiteral("second"), 2);
    part.reset();
    const Settings again(path("a.ini"));
    QCOMPARE(again.value(QStringLiteral("first")).toInt(), 1);
    QCOMPARE(again.value(QStringLiteral("group/second")).toInt(), 2);
}

void tst_settings::emptyKey()
{
    Settings settings(path("a.ini"));
    settings.setValue(QString(), 1);
    settings.setValue(QStringLiteral("//"), 1);
    settings.remove(QString());
    QCOMPARE(settings.value(QString(), 7).toInt(), 7);
    QVERIFY(settings.sync());
}

void tst_settings::emptyFile()
{
    write(path("a.ini"), QByteArray());
    Settings settings(path("a.ini"));
    settings.setValue(QStringLiteral("a"), 1);
    QVERIFY(settings.sync());
    QVERIFY(read(path("a.ini")).contains("a=1"));
}

void tst_settings::brokenFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("a line of text") << QByteArray("this is no settings file\nat all\n");
    QTest::newRow("zeros") << QByteArray(500, '\0');
    QTest::newRow("an open section") << QByteArray("[section\na=1\n");
    QTest::newRow("a zero among good lines") << QByteArray("[General]\na=1\nb=\0\n", 18);
    for (quint64 seed = 1; seed <= 5; ++seed)
        QTest::addRow("random %d", int(seed)) << randomBytes(seed, 4000);
}

void tst_settings::brokenFile()
{
    QFETCH(QByteArray, content);
    write(path("a.ini"), content);
    {
        Settings settings(path("a.ini"));
        QVERIFY(!settings.sync());
        settings.setValue(QStringLiteral("a"), 1);
        QVERIFY(!settings.sync());
        QVERIFY(!settings.sync());
        QCOMPARE(settings.value(QStringLiteral("a")).toInt(), 1);
        QCOMPARE(read(path("a.ini")), content);
        QVERIFY(QFile::remove(path("a.ini")));
        QVERIFY(settings.sync());
        QVERIFY(read(path("a.ini")).contains("a=1"));
        write(path("a.ini"), content);
        settings.setValue(QStringLiteral("a"), 2);
    }
    QCOMPARE(read(path("a.ini")), content);
}

void tst_settings::fileBreaksLater()
{
    Settings settings(path("a.ini"));
    settings.setValue(QStringLiteral("a"), 1);
    QVERIFY(settings.sync());
    const QByteArray content("now it is\nsomething else");
    write(path("a.ini"), content);
    settings.setValue(QStringLiteral("b"), 2);
    QVERIFY(!settings.sync());
    QCoreApplication::processEvents();
    QCOMPARE(read(path("a.ini")), content);
    QCOMPARE(settings.value(QStringLiteral("b")).toInt(), 2);
}

void tst_settings::unwritableFolder()
{
    // A file in place of the folder holds up the superuser too.
    write(path("folder"), QByteArray("a file"));
    Settings settings(path("folder/a.ini"));
    settings.setValue(QStringLiteral("a"), 1);
    QVERIFY(!settings.sync());
    QVERIFY(!settings.sync());
    QCOMPARE(settings.value(QStringLiteral("a")).toInt(), 1);
    QVERIFY(QFile::remove(path("folder")));
    QVERIFY(settings.sync());
    QCOMPARE(Settings(path("folder/a.ini")).value(QStringLiteral("a")).toInt(), 1);
}

void tst_settings::folderInPlaceOfFile()
{
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("a.ini")));
    Settings settings(path("a.ini"));
    settings.setValue(QStringLiteral("a"), 1);
    QVERIFY(!settings.sync());
    QCOMPARE(settings.value(QStringLiteral("a")).toInt(), 1);
}

void tst_settings::twoOnOneFile()
{
    Settings first(path("a.ini"));
    Settings second(path("a.ini"));
    first.setValue(QStringLiteral("a"), 1);
    second.setValue(QStringLiteral("b"), 2);
    QVERIFY(first.sync());
    QVERIFY(second.sync());
    QVERIFY(first.sync());
    QCOMPARE(first.value(QStringLiteral("b")).toInt(), 2);
    QCOMPARE(second.value(QStringLiteral("a")).toInt(), 1);
}

void tst_settings::lockOfAKilledProgram()
{
    QVERIFY(TestSupport::leaveLock(path("a.ini.lock")));
    Settings settings(path("a.ini"));
    settings.setValue(QStringLiteral("a"), 1);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(settings.sync());
    QVERIFY(timer.elapsed() < TestSupport::keptByItself / 2);
    QCOMPARE(Settings(path("a.ini")).value(QStringLiteral("a")).toInt(), 1);
    QVERIFY(!QFile::exists(path("a.ini.lock")));
}

void tst_settings::lockOfALivingProgram()
{
    FileLock living(path("a.ini.lock"));
    QVERIFY(living.tryLock(0));
    Settings settings(path("a.ini"));
    // What only reads needs no lock.
    QVERIFY(settings.sync());
    settings.setValue(QStringLiteral("a"), 1);
    QVERIFY(!settings.sync());
    // The write of the event loop comes too early as well.
    QCoreApplication::processEvents();
    QCOMPARE(settings.value(QStringLiteral("a")).toInt(), 1);
    QVERIFY(!QFile::exists(path("a.ini")));
    living.unlock();
    // The next change writes the one before as well.
    settings.setValue(QStringLiteral("b"), 2);
    QTRY_VERIFY(QFile::exists(path("a.ini")));
    QCOMPARE(Settings(path("a.ini")).value(QStringLiteral("a")).toInt(), 1);
    QCOMPARE(Settings(path("a.ini")).value(QStringLiteral("b")).toInt(), 2);
}

void tst_settings::userSettings()
{
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder->path());
    {
        Settings settings;
        QVERIFY(settings.fileName().startsWith(m_folder->path() + QLatin1Char('/')));
        QVERIFY(settings.fileName().endsWith(QCoreApplication::applicationName() + QLatin1String(".ini")));
        settings.setValue(QStringLiteral("a"), 1);
        QVERIFY(settings.sync());
    }
    QCOMPARE(Settings().value(QStringLiteral("a")).toInt(), 1);
}

PLOT2D_TEST_MAIN(tst_settings)
#include "tst_settings.moc"
