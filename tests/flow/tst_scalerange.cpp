#include "plot2d/scalerange_p.h"
#include "support/testmain.h"

#include <qwt_plot.h>

#include <limits>

namespace {

constexpr double largest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
const QwtInterval kept;

}

class tst_scalerange : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shown_data();
    void shown();
    void divisible_data();
    void divisible();
    void divisibleByTheAxis();
    void acceptable_data();
    void acceptable();
};

void tst_scalerange::shown_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<QwtInterval>("expected"); // invalid where the axis keeps its range
    const int x = QwtPlot::xBottom;
    const int y = QwtPlot::yLeft;
    QTest::newRow("prices") << x << 1.0 << 2.0 << QwtInterval(1.0, 2.0);
    QTest::newRow("one price") << x << 5.0 << 5.0 << kept;
    QTest::newRow("fuzzily one price") << x << 1e6 << 1e6 + 5e-7 << kept;
    QTest::newRow("narrow prices") << x << 5.0 << 5.000000001 << QwtInterval(5.0, 5.000000001);
    QTest::newRow("values") << y << 1.0 << 2.0 << QwtInterval(1.0, 2.0);
    QTest::newRow("one value") << y << 5.0 << 5.0 << QwtInterval(4.0, 6.0);
    QTest::newRow("fuzzily one value") << y << 1e6 << 1e6 + 5e-7 << QwtInterval(1e6 - 1.0, 1e6 + 5e-7 + 1.0);
    QTest::newRow("1e-8 of values") << y << 0.0 << 1e-8 << kept;
    QTest::newRow("more than 1e-8 of values") << y << 0.0 << 1.0001e-8 << QwtInterval(0.0, 1.0001e-8);
}

void tst_scalerange::shown()
{
    QFETCH(int, axis);
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(QwtInterval, expected);
    const auto range = ScaleRange::shown(axis, min, max);
    QCOMPARE(range.has_value(), expected.isValid());
    if (range)
        QCOMPARE(*range, expected);
}

void tst_scalerange::divisible_data()
{
    QTest::addColumn<QwtInterval>("range");
    QTest::addColumn<double>("step");
    QTest::addColumn<bool>("expected");
    QTest::newRow("usual") << QwtInterval(1.0, 2.0) << 0.0 << true;
    QTest::newRow("with a step") << QwtInterval(1.0, 2.0) << 0.25 << true;
    QTest::newRow("too many steps") << QwtInterval(1.0, 2.0) << 1e-12 << false;
    QTest::newRow("no width") << QwtInterval(1e17 - 1.0, 1e17 + 1.0) << 0.0 << false;
    QTest::newRow("infinite width") << QwtInterval(-largest, largest) << 0.0 << false;
}

void tst_scalerange::divisible()
{
    QFETCH(QwtInterval, range);
    QFETCH(double, step);
    const QwtPlot plot;
    QTEST(ScaleRange::isDivisible(plot, QwtPlot::yLeft, range, step), "expected");
}

void tst_scalerange::divisibleByTheAxis()
{
    QwtPlot plot;
    const QwtInterval wide(-5.2e307, 5.2e307);
    plot.setAxisMaxMajor(QwtPlot::xBottom, 1);
    QVERIFY(!ScaleRange::isDivisible(plot, QwtPlot::xBottom, wide, 0.0));
    QVERIFY(ScaleRange::isDivisible(plot, QwtPlot::yLeft, wide, 0.0));
}

void tst_scalerange::acceptable_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<bool>("expected");
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)}) {
        QTest::addRow("usual, %d", axis) << axis << 1.0 << 2.0 << true;
        QTest::addRow("inverted, %d", axis) << axis << 2.0 << 1.0 << false;
        QTest::addRow("infinite below, %d", axis) << axis << -infinity << 1.0 << false;
        QTest::addRow("infinite above, %d", axis) << axis << 1.0 << infinity << false;
        QTest::addRow("NaN below, %d", axis) << axis << notANumber << 1.0 << false;
        QTest::addRow("NaN above, %d", axis) << axis << 1.0 << notANumber << false;
        QTest::addRow("infinite width, %d", axis) << axis << -largest << largest << false;
        QTest::addRow("kept or widened, %d", axis) << axis << 5.0 << 5.0 << true;
    }
    QTest::newRow("kept") << int(QwtPlot::yLeft) << 0.0 << 1e-9 << true;
    QTest::newRow("cannot be widened") << int(QwtPlot::yLeft) << 1e17 << 1e17 << false;
}

void tst_scalerange::acceptable()
{
    QFETCH(int, axis);
    QFETCH(double, min);
    QFETCH(double, max);
    const QwtPlot plot;
    QTEST(ScaleRange::isAcceptable(plot, axis, min, max), "expected");
}

PLOT2D_TEST_MAIN(tst_scalerange)
#include "tst_scalerange.moc"
