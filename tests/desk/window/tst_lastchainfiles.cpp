#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <window/chainfiles.h>
#include <window/session.h>

#include <database/settings.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/// The chains of a desk without a database come back from their files.
class tst_lastchainfiles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void areInOrder();
    void areNotMoreThanAFew();
    void comeFromTheSettings();
    void areReadAgain();
    void thatAreGoneAreTold();
    void samplesComeBackAsWell();
    void areNotReadBesideADatabase();
    void giveWayToAChain();

private:
    QString write(const char* name) const
    {
        return DeskTest::write(m_folder.filePath(QString::fromLatin1(name)),
            DeskTest::csv().replace("TEST", QByteArray(name).chopped(4)));
    }

    QTemporaryDir m_folder;
};

void tst_lastchainfiles::areInOrder()
{
    ChainFiles files({QStringLiteral("/a.csv"), QStringLiteral("/b.csv")});
    files.add(QStringLiteral("/c.csv"));
    files.add(QStringLiteral("/a.csv"));
    QCOMPARE(files.names(), QStringList({"/b.csv", "/c.csv", "/a.csv"}));
    files.add(QStringLiteral("d.csv"));
    QCOMPARE(files.names().last(), QDir::current().absoluteFilePath(QStringLiteral("d.csv")));
}

void tst_lastchainfiles::areNotMoreThanAFew()
{
    ChainFiles files({});
    for (int i = 0; i < 30; ++i)
        files.add(QStringLiteral("/%1.csv").arg(i));
    QCOMPARE(files.names().size(), 20);
    QCOMPARE(files.names().first(), QStringLiteral("/10.csv"));
    QCOMPARE(files.names().last(), QStringLiteral("/29.csv"));
}

void tst_lastchainfiles::comeFromTheSettings()
{
    Settings settings(m_folder.filePath(QStringLiteral("s.ini")));
    QCOMPARE(ChainFiles::ofLastSession(nullptr), QStringList());
    QCOMPARE(ChainFiles::ofLastSession(&settings), QStringList());
    settings.setValue(QStringLiteral("session/chainFiles"), QStringList{"/a.csv", "/b.csv"});
    QCOMPARE(ChainFiles::ofLastSession(&settings), QStringList({"/a.csv", "/b.csv"}));
}

void tst_lastchainfiles::areReadAgain()
{
    const QStringList files{write("FIRST.csv"), write("SECOND.csv")};
    const Session session = openSession(CommandLine(), files);
    QCOMPARE(session.chainFiles, files);
    QCOMPARE(session.problems, QStringList());
    QStringList codes;
    const QVector<StoredSeries> all = session.data->series();
    for (const StoredSeries& series : all)
        codes.append(series.baseCode);
    QCOMPARE(codes, QStringList({"FIRST", "SECOND"}));
}

void tst_lastchainfiles::thatAreGoneAreTold()
{
    const QString kept = write("KEPT.csv");
    const QString gone = m_folder.filePath(QStringLiteral("gone.csv"));
    const Session session = openSession(CommandLine(), {gone, kept});
    QCOMPARE(session.chainFiles, QStringList(kept));
    QCOMPARE(session.problems.size(), 1);
    QVERIFY2(session.problems.first().contains(gone), qPrintable(session.problems.first()));
    QCOMPARE(session.data->series().size(), 1);
}

void tst_lastchainfiles::samplesComeBackAsWell()
{
    const QStringList first = openSession(CommandLine()).chainFiles;
    QVERIFY(!first.isEmpty());
    const Session second = openSession(CommandLine(), first);
    QCOMPARE(second.chainFiles, first);
    QCOMPARE(second.problems, QStringList());
}

void tst_lastchainfiles::areNotReadBesideADatabase()
{
    CommandLine options;
    options.database = m_folder.filePath(QStringLiteral("d.sqlite"));
    const Session session = openSession(options, {write("OTHER.csv")});
    QCOMPARE(session.chainFiles, QStringList());
    const QVector<StoredSeries> all = session.data->series();
    QVERIFY(!all.isEmpty());
    for (const StoredSeries& series : all)
        QVERIFY(series.baseCode != QStringLiteral("OTHER"));
}

void tst_lastchainfiles::giveWayToAChain()
{
    CommandLine options;
    options.chainFile = write("GIVEN.csv");
    const Session session = openSession(options, {write("EARLIER.csv")});
    QCOMPARE(session.chainFiles, QStringList(options.chainFile));
    QCOMPARE(session.data->series().size(), 1);
    QCOMPARE(session.data->series().first().baseCode, QStringLiteral("GIVEN"));
}

PLOT2D_TEST_MAIN(tst_lastchainfiles)
#include "tst_lastchainfiles.moc"
