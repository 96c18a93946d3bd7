#include "desktest.h"
#include "support/testmain.h"

#include <window/texts.h>

/// What the desk says of a series.
class tst_texts : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void titles_data();
    void titles();
    void statusCounts_data();
    void statusCounts();
    void forwardsWithTheirSource_data();
    void forwardsWithTheirSource();
    void tellsTheSmilesError();
    void noticesAnAssumedTime();
    void joinsLines();
};

Q_DECLARE_METATYPE(TimeSource)
Q_DECLARE_METATYPE(ForwardSource)

namespace {

using Refusals = QMap<Pricing::Refusal, int>;

ShownSeries series()
{
    ShownSeries result;
    result.data.baseCode = QStringLiteral("WTI");
    result.data.options.expiry = QDate(2012, 11, 14);
    result.market = {92.85, 44.0 / 365.0};
    return result;
}

}

Q_DECLARE_METATYPE(Refusals)

void tst_texts::initTestCase()
{
    QLocale::setDefault(QLocale::c());
}

void tst_texts::titles_data()
{
    QTest::addColumn<QDate>("expiry");
    QTest::addColumn<double>("days");
    QTest::addColumn<TimeSource>("source");
    QTest::addColumn<QString>("title");
    QTest::newRow("dates") << QDate(2012, 11, 14) << 44.0 << TimeSource::Dates
                           << QStringLiteral("WTI \u00b7 expiry 14 Nov 2012 \u00b7 44 days");
    QTest::newRow("one day") << QDate(2012, 11, 4) << 1.0 << TimeSource::Dates
                             << QStringLiteral("WTI \u00b7 expiry 4 Nov 2012 \u00b7 1 day");
    QTest::newRow("inferred") << QDate() << 43.998 << TimeSource::Volatilities
                              << QStringLiteral("WTI \u00b7 44 days (inferred)");
    QTest::newRow("inferred, near") << QDate() << 2.51 << TimeSource::Volatilities
                                    << QStringLiteral("WTI \u00b7 2.5 days (inferred)");
    QTest::newRow("assumed") << QDate(2012, 11, 14) << 30.0 << TimeSource::Assumed
                             << QStringLiteral("WTI \u00b7 expiry 14 Nov 2012 \u00b7 30 days (assumed)");
}

void tst_texts::titles()
{
    QFETCH(QDate, expiry);
    QFETCH(double, days);
    QFETCH(TimeSource, source);
    ShownSeries shown = series();
    shown.data.options.expiry = expiry;
    shown.market.time = days / 365.0;
    shown.timeSource = source;
    QTEST(Texts::title(shown), "title");
}

void tst_texts::statusCounts_data()
{
    using Pricing::Refusal;
    QTest::addColumn<int>("points");
    QTest::addColumn<Refusals>("leftOut");
    QTest::addColumn<QString>("status");
    QTest::newRow("all used") << 149 << Refusals()
                              << QStringLiteral("Forward 92.85 \u00b7 149 points \u00b7 none left out");
    QTest::newRow("two reasons") << 1 << Refusals{{Refusal::BelowIntrinsic, 9}, {Refusal::NoPrice, 3}}
                                 << QStringLiteral(
                                        "Forward 92.85 \u00b7 1 point \u00b7 12 left out: 3 without "
                                        "price, 9 below intrinsic");
    QTest::newRow("nothing") << 0 << Refusals{{Refusal::ZeroPrice, 2}}
                             << QStringLiteral("Forward 92.85 \u00b7 0 points \u00b7 2 left out: 2 at zero");
}

void tst_texts::statusCounts()
{
    QFETCH(int, points);
    QFETCH(Refusals, leftOut);
    ShownSeries shown = series();
    shown.analysis.points.resize(points);
    shown.analysis.leftOut = leftOut;
    QTEST(Texts::status(shown), "status");
}

void tst_texts::forwardsWithTheirSource_data()
{
    QTest::addColumn<double>("forward");
    QTest::addColumn<ForwardSource>("source");
    QTest::addColumn<double>("rate");
    QTest::addColumn<TimeSource>("time");
    QTest::addColumn<QString>("begin");
    const auto row = [](const char* name, double forward, ForwardSource source, double rate, TimeSource time,
                         const char* begin) {
        QTest::newRow(name) << forward << source << rate << time << QString::fromLatin1(begin);
    };
    const TimeSource dates = TimeSource::Dates;
    row("stated", 92.85, ForwardSource::Stated, 0.0, dates, "Forward 92.85 ");
    row("parity", 92.855, ForwardSource::Parity, 0.0, dates, "Forward 92.855 (parity) ");
    row("given", 90.0, ForwardSource::Given, 0.0, dates, "Forward 90.00 (as given) ");
    row("stated, rate", 92.85, ForwardSource::Stated, 0.01187, dates,
        "Forward 92.85 (stated), rate 1.19 % (parity) ");
    row("parity, rate", 92.855, ForwardSource::Parity, 0.01187, dates,
        "Forward 92.855, rate 1.19 % (parity) ");
    row("given, rate below zero", 90.0, ForwardSource::Given, -0.004, TimeSource::Volatilities,
        "Forward 90.00 (as given), rate -0.40 % (parity) ");
    // Over a time that nobody knows a rate would be made up: exp(-0.5 * 44 / 365).
    row("parity, time assumed", 92.855, ForwardSource::Parity, 0.5, TimeSource::Assumed,
        "Forward 92.855, discount factor 0.9415 (parity) ");
}

void tst_texts::forwardsWithTheirSource()
{
    QFETCH(double, forward);
    QFETCH(ForwardSource, source);
    QFETCH(double, rate);
    QFETCH(TimeSource, time);
    QFETCH(QString, begin);
    ShownSeries shown = series();
    shown.market.forward = forward;
    shown.market.rate = rate;
    shown.timeSource = time;
    shown.forwardSource = source;
    const QString status = Texts::status(shown);
    QVERIFY2(status.startsWith(begin), qPrintable(status));
}

void tst_texts::tellsTheSmilesError()
{
    ShownSeries shown = series();
    // Two points of one strike: the smile goes through the middle.
    shown.smile = Pricing::Smile::fit(
        {{100.0, OptionType::Put, 0.30, 1.0, 0.01, true}, {100.0, OptionType::Call, 0.34, 1.0, 0.01, true}});
    QVERIFY(shown.smile.has_value());
    const double points = shown.smile->rmsError() * 100.0;
    QVERIFY(points > 1.0);
    QString expected = QStringLiteral("smile error %1 vol points").arg(points, 0, 'f', 2);
    QVERIFY2(Texts::status(shown).endsWith(expected), qPrintable(Texts::status(shown)));

    shown.smile = Pricing::Smile::fit({{100.0, OptionType::Put, 0.30, 1.0, 0.01, true}});
    QVERIFY2(Texts::status(shown).endsWith(QStringLiteral("smile error below 0.01 vol points")),
        qPrintable(Texts::status(shown)));
}

void tst_texts::noticesAnAssumedTime()
{
    ShownSeries shown = series();
    QVERIFY(Texts::notice(shown).isEmpty());
    shown.timeSource = TimeSource::Volatilities;
    QVERIFY(Texts::notice(shown).isEmpty());
    shown.timeSource = TimeSource::Assumed;
    const QString notice = Texts::notice(shown);
    QVERIFY2(notice.contains(QStringLiteral("30 days")) && notice.contains(QStringLiteral("WTI")),
        qPrintable(notice));
}

void tst_texts::joinsLines()
{
    QCOMPARE(Texts::oneLine(QStringLiteral("a\nb\r\tc\u2028d\x1b\n")), QStringLiteral("a b  c d"));
    QCOMPARE(Texts::oneLine(QString()), QString());
}

PLOT2D_TEST_MAIN(tst_texts)
#include "tst_texts.moc"
