#include "c_api/common.h"
#include "support/testmain.h"

#include <cmath>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

}

class tst_common : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fuzzyCompare_data();
    void fuzzyCompare();
    void volatilityBounds();
};

void tst_common::fuzzyCompare_data()
{
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("second");
    QTest::addColumn<bool>("expected");

    const double largest = std::numeric_limits<double>::max();
    const double smallest = std::numeric_limits<double>::denorm_min();
    QTest::newRow("equal") << 107342.5 << 107342.5 << true;
    QTest::newRow("neighbours") << 1.0 << std::nextafter(1.0, 2.0) << true;
    QTest::newRow("within the tolerance") << 1.0 << 1.0 + 0.9e-12 << true;
    QTest::newRow("beyond the tolerance") << 1.0 << 1.0 + 1.1e-12 << false;
    QTest::newRow("large, within") << 1e15 << 1e15 + 900.0 << true;
    QTest::newRow("large, beyond") << 1e15 << 1e15 + 1100.0 << false;
    QTest::newRow("prices a step apart") << 100.0 << 100.01 << false;
    QTest::newRow("zeros") << 0.0 << -0.0 << true;
    QTest::newRow("zero and little") << 0.0 << 1e-300 << false;
    QTest::newRow("zero and the smallest") << 0.0 << smallest << false;
    QTest::newRow("opposite signs") << 1e-13 << -1e-13 << false;
    QTest::newRow("largest of both signs") << largest << -largest << false;
    QTest::newRow("largest and its neighbour") << largest << std::nextafter(largest, 0.0) << true;
    QTest::newRow("infinities") << infinity << infinity << true;
    QTest::newRow("opposite infinities") << infinity << -infinity << false;
    QTest::newRow("infinity and the largest") << infinity << largest << false;
    QTest::newRow("not a number and itself") << noNumber << noNumber << false;
    QTest::newRow("not a number and zero") << noNumber << 0.0 << false;
    QTest::newRow("not a number and infinity") << noNumber << infinity << false;
}

void tst_common::fuzzyCompare()
{
    QFETCH(double, first);
    QFETCH(double, second);
    QFETCH(bool, expected);
    QCOMPARE(commonFuzzyCompare(first, second), expected);
    QCOMPARE(commonFuzzyCompare(second, first), expected);
    QCOMPARE(commonFuzzyCompare(-first, -second), expected);
}

void tst_common::volatilityBounds()
{
    QCOMPARE(gc_dVolatMinDefault, 0.01);
    QCOMPARE(gc_dVolatMaxDefault, 3.0);
}

PLOT2D_TEST_MAIN(tst_common)
#include "tst_common.moc"
