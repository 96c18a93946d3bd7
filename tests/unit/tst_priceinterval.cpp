#include "support/testmain.h"

#include <plot2d/priceinterval.h>

#include <limits>

class tst_PriceInterval : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void resetValue();
    void equalsInAllFields_data();
    void equalsInAllFields();
};

void tst_PriceInterval::resetValue()
{
    const PriceInterval none;
    QCOMPARE(none.minPrice, std::numeric_limits<double>::max());
    QCOMPARE(none.maxPrice, -std::numeric_limits<double>::max());
    QCOMPARE(none.minStep, 0.0);
    QVERIFY(!none.valid);
    QVERIFY(none == PriceInterval());
}

void tst_PriceInterval::equalsInAllFields_data()
{
    QTest::addColumn<PriceInterval>("other");
    QTest::addColumn<bool>("equal");
    QTest::newRow("the same") << PriceInterval{100.0, 200.0, 10.0, true} << true;
    QTest::newRow("another lowest price") << PriceInterval{90.0, 200.0, 10.0, true} << false;
    QTest::newRow("another highest price") << PriceInterval{100.0, 190.0, 10.0, true} << false;
    QTest::newRow("another step") << PriceInterval{100.0, 200.0, 5.0, true} << false;
    QTest::newRow("not valid") << PriceInterval{100.0, 200.0, 10.0, false} << false;
    QTest::newRow("nothing the same") << PriceInterval() << false;
}

void tst_PriceInterval::equalsInAllFields()
{
    QFETCH(PriceInterval, other);
    QFETCH(bool, equal);
    const PriceInterval interval{100.0, 200.0, 10.0, true};
    QCOMPARE(interval == other, equal);
    QCOMPARE(other == interval, equal);
    QCOMPARE(interval != other, !equal);
}

PLOT2D_TEST_MAIN(tst_PriceInterval)
#include "tst_priceinterval.moc"
