#include "positiontest.h"
#include "support/testmain.h"

#include <position/legtexts.h>

#include <QLocale>

#include <limits>

using namespace Position;
using namespace PositionTest;

class tst_legtexts : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QLocale::setDefault(QLocale::c()); }
    void numbers_data();
    void numbers();
    void numbersOfTheLocale();
    void breakEvens();
    void summaries();
};

void tst_legtexts::numbers_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("expected");
    QTest::newRow("zeros go") << 2.5 << 4 << "+2.5";
    QTest::newRow("integers") << 1200.0 << 2 << "+1200";
    QTest::newRow("no decimals") << 1200.0 << 0 << "+1200";
    QTest::newRow("rounds") << 0.12345 << 3 << "+0.123";
    QTest::newRow("negative") << -0.5 << 3 << "-0.5";
    QTest::newRow("zero") << 0.0 << 3 << "0";
    QTest::newRow("rounds to zero") << 1e-9 << 3 << "0";
    QTest::newRow("rounds to zero from below") << -1e-9 << 3 << "0";
}

void tst_legtexts::numbers()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    const QString text = LegTexts::signedNumber(value, decimals);
    QTEST(text, "expected");
    QVERIFY(std::abs(LegTexts::number(text).value() - value) <= 0.5 * std::pow(10.0, -decimals));
}

void tst_legtexts::numbersOfTheLocale()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QCOMPARE(LegTexts::number(1234.5, 2), QStringLiteral("1234,5"));
    QCOMPARE(LegTexts::number(QStringLiteral("1234,5")).value(), 1234.5);
    QCOMPARE(LegTexts::number(QStringLiteral("92.5")).value(), 92.5);
    for (const char* const bad : {"", " ", "a", "1,2,3", "--1", "nan", "inf", "1e999"})
        QVERIFY2(!LegTexts::number(QString::fromLatin1(bad)), bad);
}

void tst_legtexts::breakEvens()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    QCOMPARE(LegTexts::breakEvens({}, 2), QString());
    QCOMPARE(LegTexts::breakEvens({{94.853, 94.853}}, 2), QStringLiteral("94.85"));
    QCOMPARE(LegTexts::breakEvens({{94.85, 94.85}, {105.15, 105.15}}, 2), QStringLiteral("94.85 and 105.15"));
    QCOMPARE(LegTexts::breakEvens({{0.0, 90.0}, {95.0, 95.0}, {110.0, infinity}}, 2),
        QStringLiteral("0 to 90, 95 and above 110"));
}

void tst_legtexts::summaries()
{
    QCOMPARE(LegTexts::summary(Profile(), 2), QString());
    QVector<SeriesValuation> series = bothSeries();
    const QString full = LegTexts::summary(Profile({leg(LegKind::Call, 1, 100.0, 5.0)}, series), 2);
    for (const char* const part : {"Profit now", "break-even 105", "delta", "gamma", "vega", "theta"})
        QVERIFY2(full.contains(QLatin1String(part)), qPrintable(full));
    QVERIFY(!full.contains(QStringLiteral("left out")));
    QVERIFY(LegTexts::summary(Profile({leg(LegKind::Put, 1, 60.0, 70.0)}, series), 2)
                .contains(QStringLiteral("no break-even")));
    series[0].smile.reset();
    const QString blind = LegTexts::summary(Profile({leg(LegKind::Call, 1, 100.0, 5.0)}, series), 2);
    QVERIFY2(blind.contains(QStringLiteral("no volatility")), qPrintable(blind));
    QVERIFY2(blind.contains(QStringLiteral("break-even 105")), qPrintable(blind));
}

PLOT2D_TEST_MAIN(tst_legtexts)
#include "tst_legtexts.moc"
