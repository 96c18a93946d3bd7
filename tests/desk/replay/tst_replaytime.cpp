#include "support/testmain.h"

#include <replay/replaytime.h>

Q_DECLARE_METATYPE(TimeForm)

/// The forms of a quote's time.
class tst_replaytime : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void refuses_data();
    void refuses();
};

void tst_replaytime::reads_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<TimeForm>("form");
    QTest::addColumn<qint64>("milliseconds");
    const auto row = [](const char* text, TimeForm form, qint64 milliseconds) {
        QTest::newRow(text) << QString::fromLatin1(text) << form << milliseconds;
    };
    row("0", TimeForm::Elapsed, 0);
    row("1500", TimeForm::Elapsed, 1500);
    row("1500.9", TimeForm::Elapsed, 1500);
    row("99999999999", TimeForm::Elapsed, 99999999999);
    row("100000000000", TimeForm::Epoch, 100000000000);
    row("1710489600123", TimeForm::Epoch, 1710489600123);
    row("1.710489600123e12", TimeForm::Epoch, 1710489600123);
    row("00:00:00", TimeForm::Clock, 0);
    row("09:30:01", TimeForm::Clock, 34201000);
    row("09:30:01.25", TimeForm::Clock, 34201250);
    row("23:59:59.9999", TimeForm::Clock, 86399999);
    row("09:30:01,5", TimeForm::Clock, 34201500);
    row("23:59:59.999", TimeForm::Clock, 86399999);
    row("2024-03-15T08:00:00", TimeForm::DateTime, 1710489600000);
    row("2024-03-15 08:00:00.123", TimeForm::DateTime, 1710489600123);
    row("2024-03-15T08:00:00Z", TimeForm::DateTime, 1710489600000);
    row("2024-03-15T10:00:00.5+02:00", TimeForm::DateTime, 1710489600500);
    row("2024-03-15T03:00:00-0500", TimeForm::DateTime, 1710489600000);
    row("1970-01-01T00:00:00", TimeForm::DateTime, 0);
    // The hour that daylight saving time leaves out in much of the world.
    row("2024-03-31T02:30:00", TimeForm::DateTime, 1711852200000);
}

void tst_replaytime::reads()
{
    QFETCH(QString, text);
    QFETCH(TimeForm, form);
    QFETCH(qint64, milliseconds);
    const std::optional<QuoteTime> time = parseQuoteTime(text);
    QVERIFY(time.has_value());
    QVERIFY(time->form == form);
    QCOMPARE(time->milliseconds, milliseconds);
}

void tst_replaytime::refuses_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text :
        {"", "-1", "5%", "abc", "24:00:00", "09:60:00", "09:30:61", "9:30:00", "09:30", "09:30:00 PM",
            "09:30:00Z", "09:30:00.", "2024-03-15", "2024-02-30T08:00:00", "2024-03-15T25:00:00",
            "2024-03-15X08:00:00", "1969-12-31T23:59:59", "15.03.2024 08:00:00", "1e15", "nan"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void tst_replaytime::refuses()
{
    QFETCH(QString, text);
    QVERIFY(!parseQuoteTime(text));
}

PLOT2D_TEST_MAIN(tst_replaytime)
#include "tst_replaytime.moc"
