#include "chain/pricestep.h"
#include "support/testmain.h"

class tst_pricestep : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void steps_data();
    void steps();
    void needed_data();
    void needed();
};

void tst_pricestep::steps_data()
{
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<QString>("expected");

    QTest::newRow("none") << QStringList() << "1";
    QTest::newRow("zero") << QStringList{"0"} << "1";
    QTest::newRow("whole") << QStringList{"5", "100", "2500"} << "1";
    QTest::newRow("halves") << QStringList{"5", "7.5"} << "0.5";
    QTest::newRow("quarters") << QStringList{"5", "7.25", "0.5"} << "0.25";
    QTest::newRow("tenths") << QStringList{"0.1", "7"} << "0.1";
    QTest::newRow("halves and tenths") << QStringList{"0.5", "0.2"} << "0.1";
    QTest::newRow("quarters and tenths") << QStringList{"0.25", "0.1"} << "0.05";
    QTest::newRow("twentieths") << QStringList{"0.05", "0.35"} << "0.05";
    QTest::newRow("fortieths") << QStringList{"0.025", "1.3"} << "0.025";
    QTest::newRow("hundredths") << QStringList{"92.85", "0.01"} << "0.01";
    QTest::newRow("eighths") << QStringList{"0.125"} << "0.025";
    QTest::newRow("sixteenths") << QStringList{"0.0625"} << "0.0025";
    QTest::newRow("small") << QStringList{"0.0000005", "0.000001"} << "0.0000005";
    QTest::newRow("smallest") << QStringList{"0.000000000000000001"} << "0.000000000000000001";
    QTest::newRow("large") << QStringList{"999999999999999", "0.5"} << "0.5";
}

void tst_pricestep::steps()
{
    QFETCH(QStringList, values);
    QFETCH(QString, expected);

    QVector<decimal> numbers;
    for (const QString& value : qAsConst(values))
        numbers.append(decimal::fromString(value));
    QCOMPARE(commonStep(numbers).toString(), expected);
}

void tst_pricestep::needed_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("expected");

    QTest::newRow("whole") << "100" << 0;
    QTest::newRow("zero") << "0" << 0;
    QTest::newRow("one") << "0.5" << 1;
    QTest::newRow("four") << "-3.0025" << 4;
    QTest::newRow("all") << "0.000000000000000001" << 18;
}

void tst_pricestep::needed()
{
    QFETCH(QString, value);
    QFETCH(int, expected);

    QCOMPARE(int(neededDecimals(decimal::fromString(value))), expected);
}

PLOT2D_TEST_MAIN(tst_pricestep)
#include "tst_pricestep.moc"
