#include "positiontest.h"
#include "support/locks.h"
#include "support/testmain.h"

#include <position/positionfile.h>
#include <position/positionjson.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <random>

using namespace Position;
using namespace PositionTest;

namespace {

QByteArray contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& fileName, const QByteArray& content)
{
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

QVector<Leg> someLegs()
{
    Leg nameless = leg(LegKind::Future, 2, 0.0, -3.5);
    nameless.expiry = QDate();
    return {leg(LegKind::Call, 1, 92.5, 2.35), farLeg(LegKind::Put, -1000000, 0.01, 0.1 + 0.2), nameless};
}

}

class tst_positionfile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void comesBack();
    void ofEachUnderlying();
    void lockOfAKilledDesk();
    void withoutFile();
    void brokenIsKeptAside_data();
    void brokenIsKeptAside();
    void unreadableStays();
    void unwritableIsSaid();
    void mutatedTextNeverCrashes();

private:
    QString file() const { return m_folder->filePath(QStringLiteral("positions.json")); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_positionfile::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_positionfile::comesBack()
{
    {
        PositionFile positions(m_folder->filePath(QStringLiteral("not/there/yet/positions.json")));
        QVERIFY(positions.problem().isEmpty());
        QVERIFY(positions.legs(QStringLiteral("OIL")).isEmpty());
        QVERIFY(positions.setLegs(QStringLiteral("OIL"), someLegs()));
    }
    const PositionFile positions(m_folder->filePath(QStringLiteral("not/there/yet/positions.json")));
    QVERIFY(positions.problem().isEmpty());
    QCOMPARE(positions.legs(QStringLiteral("OIL")), someLegs());
    QVERIFY(positions.legs(QStringLiteral("GAS")).isEmpty());
}

void tst_positionfile::ofEachUnderlying()
{
    PositionFile one(file());
    PositionFile other(file());
    QVERIFY(one.setLegs(QStringLiteral("OIL"), someLegs()));
    QVERIFY(other.setLegs(QStringLiteral("G\u00d6LD/\"x\""), {leg(LegKind::Put, 1, 5.0, 1.0)}));
    const PositionFile both(file());
    QCOMPARE(both.legs(QStringLiteral("OIL")), someLegs());
    QCOMPARE(both.legs(QStringLiteral("G\u00d6LD/\"x\"")).size(), 1);
    QVERIFY(one.setLegs(QStringLiteral("OIL"), {}));
    QVERIFY(PositionFile(file()).legs(QStringLiteral("OIL")).isEmpty());
    QCOMPARE(PositionFile(file()).legs(QStringLiteral("G\u00d6LD/\"x\"")).size(), 1);
    // A leg that is not valid would make the whole file one that holds no positions.
    QVERIFY(one.setLegs(
        QStringLiteral("OIL"), {leg(LegKind::Call, 0, 5.0, 1.0), leg(LegKind::Call, 1, 5.0, 1.0)}));
    QCOMPARE(PositionFile(file()).legs(QStringLiteral("OIL")).size(), 1);
}

void tst_positionfile::lockOfAKilledDesk()
{
    QVERIFY(TestSupport::leaveLock(file() + QStringLiteral(".lock")));
    PositionFile positions(file());
    QVERIFY(positions.setLegs(QStringLiteral("OIL"), someLegs()));
    QCOMPARE(PositionFile(file()).legs(QStringLiteral("OIL")), someLegs());
}

void tst_positionfile::withoutFile()
{
    PositionFile positions;
    QVERIFY(positions.setLegs(QStringLiteral("OIL"), someLegs()));
    QCOMPARE(positions.legs(QStringLiteral("OIL")), someLegs());
}

void tst_positionfile::brokenIsKeptAside_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray whole = PositionJson::written({{QStringLiteral("OIL"), someLegs()}});
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut off") << whole.left(whole.size() / 2);
    QTest::newRow("something else") << QByteArray("[General]\nx=1\n");
    QTest::newRow("binary") << QByteArray("\0\1\2\xff", 4);
    QTest::newRow("another format") << QByteArray(whole).replace("positions 1", "positions 2");
    QTest::newRow("a quantity of 0") << QByteArray(whole).replace("-1000000", "0");
    QTest::newRow("too large a quantity") << QByteArray(whole).replace("-1000000", "-1000001");
    QTest::newRow("a quantity as text") << QByteArray(whole).replace("-1000000", "\"-1\"");
    QTest::newRow("an unknown kind") << QByteArray(whole).replace("\"put\"", "\"digital\"");
    QTest::newRow("no date") << QByteArray(whole).replace("2024-07-02", "2024-07-32");
    QTest::newRow("no price") << QByteArray(whole).replace("\"price\": 2.35", "\"prize\": 2.35");
    QTest::newRow("a negative price") << QByteArray(whole).replace("\"price\": 2.35", "\"price\": -2.35");
    QTest::newRow("no strike") << QByteArray(whole).replace("\"strike\": 92.5", "\"strikes\": 92.5");
}

void tst_positionfile::brokenIsKeptAside()
{
    QFETCH(QByteArray, content);
    write(file(), content);
    for (const char* const aside : {".broken", ".broken2"}) {
        write(file(), content);
        PositionFile positions(file());
        const QString name = file() + QLatin1String(aside);
        QVERIFY2(positions.problem().contains(file()), qPrintable(positions.problem()));
        QVERIFY2(positions.problem().contains(name), qPrintable(positions.problem()));
        QCOMPARE(contentOf(name), content);
        QVERIFY(!QFile::exists(file()));
        QVERIFY(positions.legs(QStringLiteral("OIL")).isEmpty());
        // Work goes on.
        QVERIFY(positions.setLegs(QStringLiteral("OIL"), someLegs()));
        QVERIFY(PositionFile(file()).problem().isEmpty());
        QCOMPARE(PositionFile(file()).legs(QStringLiteral("OIL")), someLegs());
    }
}

void tst_positionfile::unreadableStays()
{
    // A folder can be opened by nobody, root included.
    QVERIFY(QDir().mkpath(file()));
    PositionFile positions(file());
    QVERIFY2(positions.problem().contains(file()), qPrintable(positions.problem()));
    QVERIFY(positions.setLegs(QStringLiteral("OIL"), someLegs()));
    QCOMPARE(positions.legs(QStringLiteral("OIL")), someLegs());
    QVERIFY(QDir(file()).exists());
}

void tst_positionfile::unwritableIsSaid()
{
    PositionFile positions(file());
    QVERIFY(QDir().mkpath(file()));
    QVERIFY(!positions.setLegs(QStringLiteral("OIL"), someLegs()));
    QCOMPARE(positions.legs(QStringLiteral("OIL")), someLegs());
    QVERIFY(QDir().rmdir(file()));
    QVERIFY(positions.setLegs(QStringLiteral("OIL"), someLegs()));
    QCOMPARE(PositionFile(file()).legs(QStringLiteral("OIL")), someLegs());
}

void tst_positionfile::mutatedTextNeverCrashes()
{
    const QByteArray whole = PositionJson::written({{QStringLiteral("OIL"), someLegs()}});
    int read = 0;
    for (std::uint64_t seed = 1; seed <= 3000; ++seed) {
        std::mt19937_64 random(seed);
        QByteArray text = whole;
        const int changes = 1 + int(random() % 3);
        for (int i = 0; i < changes; ++i)
            text[int(random() % quint64(text.size()))] = char(random() % 256);
        const auto positions = PositionJson::read(text);
        if (!positions)
            continue;
        ++read;
        for (const QVector<Leg>& legs : *positions) {
            for (const Leg& each : legs)
                QVERIFY2(isValid(each), qPrintable(QString::number(seed)));
        }
    }
    QVERIFY(read > 0 && read < 3000);
}

PLOT2D_TEST_MAIN(tst_positionfile)
#include "tst_positionfile.moc"
