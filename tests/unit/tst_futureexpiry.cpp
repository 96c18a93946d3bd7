#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <QDateTime>

#include <ctime>

Q_DECLARE_METATYPE(FieldType)

/// Which of several futures of a base code a plot uses.
class tst_futureexpiry : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void earliestExpiryIsChosen();
    void equalExpiriesKeepTheFirst();
    void nullExpiryBeatsEveryDate();
    void nullExpiryIsTheEpoch();
    void orderIsThatOfTheTable();
    void textExpiries_data();
    void textExpiries();
    void textExpiryIsUtc();
    void unparsableTextIsAnInvalidDate_data();
    void unparsableTextIsAnInvalidDate();
    void expiryOfAWrongType_data();
    void expiryOfAWrongType();
    void expiryOfASingleFutureIsNotRead();

private:
    static Record futureOf(const QString& baseCode);
};

void tst_futureexpiry::init()
{
    TestHost::createSecurities();
    TestHost::createBoards();
    TestHost::addBoard(1, 2, true);
}

void tst_futureexpiry::cleanup()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

Record tst_futureexpiry::futureOf(const QString& baseCode)
{
    TestPlot plot(false);
    plot.setBaseCode(baseCode);
    return plot.getFuture();
}

void tst_futureexpiry::earliestExpiryIsChosen()
{
    TestHost::addSecurity(TestHost::future({{"expdate", TestHost::moment(2030, 9, 20)}}));
    const Record earliest
        = TestHost::addSecurity(TestHost::future({{"expdate", TestHost::moment(2030, 3, 20)}}));
    TestHost::addSecurity(TestHost::future({{"expdate", TestHost::moment(2030, 6, 20)}}));
    TestHost::addSecurity(TestHost::future({{"expdate", TestHost::moment(2030, 3, 20) + 1}}));
    QVERIFY(futureOf(QStringLiteral("Amber")) == earliest);
}

void tst_futureexpiry::equalExpiriesKeepTheFirst()
{
    const Record first = TestHost::addSecurity(TestHost::future());
    TestHost::addSecurity(TestHost::future());
    QVERIFY(futureOf(QStringLiteral("Amber")) == first);
}

void tst_futureexpiry::nullExpiryBeatsEveryDate()
{
    TestHost::addSecurity(TestHost::future({{"expdate", qint64(1)}}));
    const Record undated = TestHost::addSecurity(TestHost::future({{"expdate", QVariant()}}));
    TestHost::addSecurity(TestHost::future());
    QVERIFY(futureOf(QStringLiteral("Amber")) == undated);
}

void tst_futureexpiry::nullExpiryIsTheEpoch()
{
    const Record undated = TestHost::addSecurity(TestHost::future({{"expdate", QVariant()}}));
    TestHost::addSecurity(TestHost::future({{"expdate", qint64(0)}}));
    QVERIFY(futureOf(QStringLiteral("Amber")) == undated);
    const Record before = TestHost::addSecurity(TestHost::future({{"expdate", qint64(-1)}}));
    QVERIFY(futureOf(QStringLiteral("Amber")) == before);
}

void tst_futureexpiry::orderIsThatOfTheTable()
{
    const Record first = TestHost::addSecurity(TestHost::future());
    const Record second = TestHost::addSecurity(TestHost::future());
    Table* table = first.table();
    TestHost::removeRows({first});
    QVERIFY(futureOf(QStringLiteral("Amber")) == second);
    TestHost::prependRow(table, first);
    QVERIFY(futureOf(QStringLiteral("Amber")) == first);
}

void tst_futureexpiry::textExpiries_data()
{
    QTest::addColumn<QString>("later");
    QTest::addColumn<QString>("earlier");
    QTest::newRow("dots with milliseconds") << "2030.06.20 12:30:15.251"
                                            << "2030.06.20 12:30:15.250";
    QTest::newRow("dashes with seconds") << "2030-06-20 12:30:16"
                                         << "2030-06-20 12:30:15";
    QTest::newRow("dots") << "2030.06.21"
                          << "2030.06.20";
    QTest::newRow("dashes") << "2030-06-21"
                            << "2030-06-20";
    QTest::newRow("formats mixed") << "2030-06-20 00:00:01"
                                   << "2030.06.20";
    QTest::newRow("formats mixed the other way") << "2030.06.20 00:00:00.001"
                                                 << "2030-06-20";
}

void tst_futureexpiry::textExpiries()
{
    QFETCH(QString, later);
    QFETCH(QString, earlier);
    TestHost::createSecurities(TestHost::withType(TestHost::securitiesColumns(), "expdate", FieldType::Text));
    TestHost::addSecurity(TestHost::future({{"expdate", later}}));
    const Record earliest = TestHost::addSecurity(TestHost::future({{"expdate", earlier}}));
    TestHost::addSecurity(TestHost::future({{"expdate", later}}));
    QVERIFY(futureOf(QStringLiteral("Amber")) == earliest);
}

void tst_futureexpiry::textExpiryIsUtc()
{
    // West of Greenwich this evening is before the epoch only when it is read as UTC.
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "UTC+6");
    tzset();
    TestHost::createSecurities(TestHost::withType(TestHost::securitiesColumns(), "expdate", FieldType::Text));
    const Record undated = TestHost::addSecurity(TestHost::future({{"expdate", QVariant()}}));
    TestHost::addSecurity(TestHost::future({{"expdate", "1970-01-01 00:00:00"}}));
    const Record before = futureOf(QStringLiteral("Amber"));
    const Record evening = TestHost::addSecurity(TestHost::future({{"expdate", "1969-12-31 23:59:59"}}));
    const Record after = futureOf(QStringLiteral("Amber"));
    if (zone.isNull())
        qunsetenv("TZ");
    else
        qputenv("TZ", zone);
    tzset();
    QVERIFY(before == undated);
    QVERIFY(after == evening);
}

void tst_futureexpiry::unparsableTextIsAnInvalidDate_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("word") << "soon";
    QTest::newRow("empty") << "";
    QTest::newRow("day first") << "20.06.2030";
    QTest::newRow("slashes") << "2030/06/20";
    QTest::newRow("no such day") << "2030.13.45";
    QTest::newRow("dots with seconds only") << "2030.06.20 12:30:15";
    QTest::newRow("dashes with milliseconds") << "2030-06-20 12:30:15.250";
}

void tst_futureexpiry::unparsableTextIsAnInvalidDate()
{
    QFETCH(QString, text);
    QDateTime invalid;
    invalid.setTimeSpec(Qt::UTC);
    const qint64 moment = invalid.toMSecsSinceEpoch();
    const auto textOf = [](qint64 milliseconds) {
        return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC).toString("yyyy.MM.dd HH:mm:ss.zzz");
    };

    TestHost::createSecurities(TestHost::withType(TestHost::securitiesColumns(), "expdate", FieldType::Text));
    TestHost::addSecurity(TestHost::future({{"expdate", textOf(moment + 1)}}));
    const Record unreadable = TestHost::addSecurity(TestHost::future({{"expdate", text}}));
    QVERIFY(futureOf(QStringLiteral("Amber")) == unreadable);
    const Record earlier = TestHost::addSecurity(TestHost::future({{"expdate", textOf(moment - 1)}}));
    QVERIFY(futureOf(QStringLiteral("Amber")) == earlier);
}

void tst_futureexpiry::expiryOfAWrongType_data()
{
    QTest::addColumn<FieldType>("type");
    QTest::newRow("32 bits") << FieldType::Int32;
    QTest::newRow("64 bits") << FieldType::Int64;
    QTest::newRow("double") << FieldType::Double;
    QTest::newRow("decimal") << FieldType::Decimal;
}

void tst_futureexpiry::expiryOfAWrongType()
{
    QFETCH(FieldType, type);
    TestHost::createSecurities(TestHost::withType(TestHost::securitiesColumns(), "expdate", type));
    TestHost::addSecurity(TestHost::future({{"expdate", 1}}));
    TestHost::addSecurity(TestHost::future({{"expdate", 2}}));
    QCOMPARE(TestHost::thrownText([] { futureOf(QStringLiteral("Amber")); }),
        QStringLiteral("Incorrect type conversion."));
}

void tst_futureexpiry::expiryOfASingleFutureIsNotRead()
{
    TestHost::createSecurities(
        TestHost::withType(TestHost::securitiesColumns(), "expdate", FieldType::Int32));
    const Record only = TestHost::addSecurity(TestHost::future({{"expdate", 1}}));
    TestHost::addSecurity(TestHost::future({{"expdate", 2}, {"sectype", "O"}}));
    QVERIFY(futureOf(QStringLiteral("Amber")) == only);
}

PLOT2D_TEST_MAIN(tst_futureexpiry)
#include "tst_futureexpiry.moc"
