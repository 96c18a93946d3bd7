#include "support/testmain.h"

#include <plot2d/fuzzyequality_p.h>

#include <cmath>
#include <limits>

class tst_FuzzyEquality : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void equal_data();
    void equal();
    void zero_data();
    void zero();
};

void tst_FuzzyEquality::equal_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<bool>("expected");
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    constexpr double smallest = std::numeric_limits<double>::denorm_min();
    const auto row = [](const char* name, double x, double y, bool expected) {
        QTest::newRow(name) << x << y << expected;
    };
    row("the same", 1.5, 1.5, true);
    row("far apart", 1.0, 2.0, false);
    row("opposite", 1.0, -1.0, false);
    row("at the tolerance", 1e12, 1e12 + 1.0, true);
    row("at the tolerance, negative", -1e12, -1e12 - 1.0, true);
    row("beyond the tolerance", 1e12, std::nextafter(1e12 + 1.0, infinity), false);
    row("at the tolerance of the larger one only", 1e12 - 1.0, 1e12, false);
    row("zeros", 0.0, -0.0, true);
    row("zero and the smallest", 0.0, smallest, false);
    row("NaN", notANumber, notANumber, false);
    row("NaN and a number", notANumber, 1.0, false);
}

void tst_FuzzyEquality::equal()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(bool, expected);
    QCOMPARE(isFuzzyEqual(x, y), expected);
    QCOMPARE(isFuzzyEqual(y, x), expected);
}

void tst_FuzzyEquality::zero_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<bool>("expected");
    QTest::newRow("zero") << 0.0 << true;
    QTest::newRow("negative zero") << -0.0 << true;
    QTest::newRow("at the tolerance") << 1e-12 << true;
    QTest::newRow("at the tolerance, negative") << -1e-12 << true;
    QTest::newRow("beyond the tolerance") << std::nextafter(1e-12, 1.0) << false;
    QTest::newRow("beyond the tolerance, negative") << std::nextafter(-1e-12, -1.0) << false;
    QTest::newRow("infinity") << std::numeric_limits<double>::infinity() << false;
    QTest::newRow("NaN") << std::numeric_limits<double>::quiet_NaN() << false;
}

void tst_FuzzyEquality::zero()
{
    QFETCH(double, x);
    QFETCH(bool, expected);
    QCOMPARE(isFuzzyZero(x), expected);
}

PLOT2D_TEST_MAIN(tst_FuzzyEquality)
#include "tst_fuzzyequality.moc"
