#include "desktest.h"
#include "support/testmain.h"

#include <window/desksettings.h>

#include <database/settings.h>

#include <QTemporaryDir>

/// The file of the desk's settings: where it is, and what becomes of one that is broken.
class tst_desksettings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void userFile();
    void keepsInAFolderThatIsNotThere();
    void makesNoFileWithoutNeed();
    void brokenFileStays_data();
    void brokenFileStays();
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

void tst_desksettings::brokenFileStays_data()
{
    QTest::addColumn<QByteArray>("text");
    QByteArray noise;
    for (int i = 0; i < 5000; ++i)
        noise += char(i * 7919 % 251);
    QTest::newRow("noise") << noise;
    QTest::newRow("text") << QByteArray("no settings at all\n");
    QTest::newRow("broken section") << QByteArray("[group\nkey=5\n");
    QTest::newRow("cut short") << QByteArray("[group]\nkey=5\nother");
}

void tst_desksettings::brokenFileStays()
{
    QFETCH(QByteArray, text);
    const QString file = DeskTest::write(path("s.ini"), text);
    {
        DeskSettings settings(file);
        QVERIFY(!settings.host());
        QVERIFY(settings.problem().startsWith(file + QStringLiteral(": ")));
        QVERIFY(!settings.problem().contains(QLatin1Char('\n')));
        QVERIFY(settings.save());
    }
    QCOMPARE(content(file), text);
    QVERIFY(!DeskSettings(m_folder->path()).problem().isEmpty());
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
