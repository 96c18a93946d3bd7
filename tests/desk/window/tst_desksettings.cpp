#include "desktest.h"
#include "support/locks.h"
#include "support/testmain.h"

#include <window/desksettings.h>

#include <database/settings.h>

#include <QDir>
#include <QTemporaryDir>

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

/// The file of the desk's settings: where it is, and what becomes of one that is broken.
class tst_desksettings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void userFile();
    void keepsInAFolderThatIsNotThere();
    void makesNoFileWithoutNeed();
    void brokenFileIsSetAside_data();
    void brokenFileIsSetAside();
    void keepsEveryBrokenFile();
    void setsAsideWhereADeskWasKilled();
    void leavesWhatCannotBeSetAside();
    void takesOrdinaryValues_data();
    void takesOrdinaryValues();
    void desksAtOnceDoNoHarm();
    void saysThatItCannotWrite();

private:
    QString path(const char* name) const { return m_folder->filePath(QString::fromLatin1(name)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

const QString key = QStringLiteral("key");

QByteArray content(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}

void tst_desksettings::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_desksettings::userFile()
{
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder->path()));
    QCoreApplication::setApplicationName(QStringLiteral("deskname"));
    QCOMPARE(DeskSettings::userFileName(), path("deskname/settings.ini"));
}

void tst_desksettings::keepsInAFolderThatIsNotThere()
{
    {
        DeskSettings settings(path("a/b/s.ini"));
        QVERIFY(settings.problem().isEmpty());
        QVERIFY(settings.host());
        settings.host()->setValue(key, 5);
        QVERIFY(settings.save());
    }
    const DeskSettings again(path("a/b/s.ini"));
    QCOMPARE(again.host()->value(key).toInt(), 5);
}

void tst_desksettings::makesNoFileWithoutNeed()
{
    {
        DeskSettings settings(path("a/s.ini"));
        QVERIFY(settings.save());
    }
    QVERIFY(!QFile::exists(path("a")));
}

void tst_desksettings::brokenFileIsSetAside_data()
{
    QTest::addColumn<QByteArray>("text");
    QByteArray noise;
    for (int i = 0; i < 5000; ++i)
        noise += char(i * 7919 % 251);
    QTest::newRow("noise") << noise;
    QTest::newRow("text") << QByteArray("no settings at all\n");
    QTest::newRow("broken section") << QByteArray("[group\nkey=5\n");
    QTest::newRow("cut short") << QByteArray("[group]\nkey=5\nother");
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("huge") << QByteArray("[group]\nkey=5\n").repeated(400000);
    // More than 16 gigabytes, if one believed it.
    QTest::newRow("list of any length")
        << QByteArray("[group]\nkey=@Variant(\\0\\0\\0\\x9\\x7f\\xff\\xff\\xff)\n");
    QTest::newRow("the same in disguise")
        << QByteArray("[group]\nkey=\\x40\"Var\"\\151ant(\\0\\0\\0\\x9\\x7f\\xff\\xff\\xff)\n");
    QTest::newRow("the same over two lines")
        << QByteArray("[group]\nkey=@Vari\\\nant(\\0\\0\\0\\x9\\x7f\\xff\\xff\\xff)\n");
}

void tst_desksettings::brokenFileIsSetAside()
{
    QFETCH(QByteArray, text);
    const QString file = DeskTest::write(path("s.ini"), text);
    {
        DeskSettings settings(file, DeskSettings::Broken::Leave);
        QVERIFY(!settings.host());
        QVERIFY(settings.problem().startsWith(file + QStringLiteral(": ")));
        QVERIFY(settings.save());
        QCOMPARE(content(file), text);
        QVERIFY(!QFile::exists(path("s.ini.broken")));
    }
    {
        DeskSettings settings(file);
        QVERIFY(settings.problem().startsWith(file + QStringLiteral(": ")));
        QVERIFY(settings.problem().contains(QStringLiteral("s.ini.broken")));
        QVERIFY(!settings.problem().contains(QLatin1Char('\n')));
        QVERIFY(settings.host());
        settings.host()->setValue(key, 5);
        QVERIFY(settings.save());
    }
    QCOMPARE(content(path("s.ini.broken")), text);
    const DeskSettings again(file);
    QCOMPARE(again.problem(), QString());
    QCOMPARE(again.host()->value(key).toInt(), 5);
    QCOMPARE(
        QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), (QStringList{"s.ini", "s.ini.broken"}));
}

void tst_desksettings::keepsEveryBrokenFile()
{
    for (const char* text : {"first", "second", "third"}) {
        DeskTest::write(path("s.ini"), text);
        QVERIFY(DeskSettings(path("s.ini")).host());
    }
    QCOMPARE(content(path("s.ini.broken")), QByteArray("first"));
    QCOMPARE(content(path("s.ini.broken2")), QByteArray("second"));
    QCOMPARE(content(path("s.ini.broken3")), QByteArray("third"));
}

void tst_desksettings::setsAsideWhereADeskWasKilled()
{
    const QString file = DeskTest::write(path("s.ini"), "no settings at all\n");
    QVERIFY(TestSupport::leaveLock(file + QStringLiteral(".aside")));
    const DeskSettings settings(file);
    QVERIFY(settings.host());
    QVERIFY(QFile::exists(path("s.ini.broken")));
}

void tst_desksettings::leavesWhatCannotBeSetAside()
{
    const DeskSettings folder(m_folder->path());
    QVERIFY(!folder.host());
    QVERIFY(folder.problem().contains(QStringLiteral("left as it is")));
    QVERIFY(QFileInfo(m_folder->path()).isDir());
}

void tst_desksettings::takesOrdinaryValues_data()
{
    QTest::addColumn<QVariant>("value");
    QByteArray bytes;
    for (int i = 0; i < 256; ++i)
        bytes += char(i);
    QTest::newRow("bytes") << QVariant(bytes);
    QTest::newRow("at") << QVariant(QStringLiteral("@home \\x40 \"quoted\""));
    QTest::newRow("list") << QVariant(QStringList{"a, b", "@", "", "c;d"});
    QTest::newRow("letters") << QVariant(QStringLiteral("\u03c3 \u00e4"));
}

void tst_desksettings::takesOrdinaryValues()
{
    QFETCH(QVariant, value);
    {
        DeskSettings settings(path("s.ini"));
        settings.host()->setValue(key, value);
        QVERIFY(settings.save());
    }
    const DeskSettings again(path("s.ini"));
    QCOMPARE(again.problem(), QString());
    QCOMPARE(again.host()->value(key), value);
}

// Each of them writes a value of its own over and over, and kills itself at some moment.
void tst_desksettings::desksAtOnceDoNoHarm()
{
    constexpr int desks = 4;
    constexpr int writes = 25;
    QVector<pid_t> children;
    for (int desk = 0; desk < desks; ++desk) {
        const pid_t child = ::fork();
        QVERIFY(child >= 0);
        if (child == 0) {
            DeskSettings settings(path("s.ini"));
            for (int i = 1; i <= writes && settings.host(); ++i) {
                settings.host()->setValue(QStringLiteral("desk%1/count").arg(desk), i);
                if (!settings.save())
                    ::_exit(1);
            }
            ::kill(::getpid(), SIGKILL);
        }
        children.append(child);
    }
    for (const pid_t child : qAsConst(children)) {
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY(WIFSIGNALED(status));
    }
    const DeskSettings after(path("s.ini"));
    QCOMPARE(after.problem(), QString());
    for (int desk = 0; desk < desks; ++desk)
        QCOMPARE(after.host()->value(QStringLiteral("desk%1/count").arg(desk)).toInt(), writes);
}

void tst_desksettings::saysThatItCannotWrite()
{
    DeskTest::write(path("file"), QByteArray());
    DeskSettings settings(path("file/s.ini"));
    QVERIFY(settings.host());
    settings.host()->setValue(key, 5);
    QVERIFY(!settings.save());
    QCOMPARE(settings.host()->value(key).toInt(), 5);
}

PLOT2D_TEST_MAIN(tst_desksettings)
#include "tst_desksettings.moc"
