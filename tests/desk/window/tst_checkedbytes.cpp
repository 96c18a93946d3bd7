#include "support/testmain.h"

#include <window/checkedbytes.h>

/// Bytes as texts: they come back, and damage is seen.
class tst_checkedbytes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void comeBack_data();
    void comeBack();
    void damageIsSeen();
    void otherTextsAreNone_data();
    void otherTextsAreNone();
};

void tst_checkedbytes::comeBack_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("zeros") << QByteArray(5, '\0');
    QTest::newRow("any") << QByteArray("\0\xff\r\n,;\"\\", 8);
    QTest::newRow("many") << QByteArray(100000, 'x');
}

void tst_checkedbytes::comeBack()
{
    QFETCH(QByteArray, bytes);
    const auto again = CheckedBytes::fromTexts(CheckedBytes::toTexts(bytes));
    QVERIFY(again.has_value());
    QCOMPARE(*again, bytes);
}

void tst_checkedbytes::damageIsSeen()
{
    const QStringList good = CheckedBytes::toTexts(QByteArray("some bytes"));
    for (int text = 0; text < good.size(); ++text) {
        for (int place = 0; place < good.at(text).size(); ++place) {
            QStringList damaged = good;
            const QChar before = damaged.at(text).at(place);
            damaged[text][place] = before == QLatin1Char('7') ? QLatin1Char('8') : QLatin1Char('7');
            QVERIFY2(!CheckedBytes::fromTexts(damaged), qPrintable(damaged.join(QLatin1Char(' '))));
            damaged[text] = good.at(text).left(place);
            QVERIFY2(!CheckedBytes::fromTexts(damaged), qPrintable(damaged.join(QLatin1Char(' '))));
        }
    }
}

void tst_checkedbytes::otherTextsAreNone_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("none") << QStringList();
    QTest::newRow("one") << QStringList{"AAAA"};
    QTest::newRow("empty ones") << QStringList{"", ""};
    QTest::newRow("one more") << CheckedBytes::toTexts("x") + QStringList{"x"};
}

void tst_checkedbytes::otherTextsAreNone()
{
    QFETCH(QStringList, texts);
    QVERIFY(!CheckedBytes::fromTexts(texts));
}

PLOT2D_TEST_MAIN(tst_checkedbytes)
#include "tst_checkedbytes.moc"
