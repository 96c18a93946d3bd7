#include "support/testmain.h"

#include <plot2d/pixelvalue_p.h>

class tst_pixelvalue : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void values_data();
    void values();
};

void tst_pixelvalue::values_data()
{
    QTest::addColumn<double>("lower");
    QTest::addColumn<double>("upper");
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("last");
    QTest::addColumn<double>("place");
    QTest::addColumn<double>("expected");
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    const auto row = [](const char* name, QPointF scale, QPointF pixels, double place, double expected) {
        QTest::newRow(name) << scale.x() << scale.y() << pixels.x() << pixels.y() << place << expected;
    };
    row("first pixel", {100.0, 200.0}, {0.0, 50.0}, 0.0, 100.0);
    row("last pixel", {100.0, 200.0}, {0.0, 50.0}, 50.0, 200.0);
    row("between pixels", {100.0, 200.0}, {0.0, 50.0}, 12.5, 125.0);
    row("outside", {100.0, 200.0}, {0.0, 50.0}, -50.0, 0.0);
    row("pixels downwards", {0.0, 10.0}, {40.0, 0.0}, 30.0, 2.5);
    row("one pixel", {0.0, 10.0}, {3.0, 4.0}, 3.5, 5.0);
    row("part of a pixel", {0.0, 10.0}, {3.0, 3.5}, 3.25, 5.0);
    row("scale of one value", {7.0, 7.0}, {0.0, 50.0}, 0.0, 7.0);
    row("no pixels", {100.0, 200.0}, {50.0, 50.0}, 60.0, none);
    row("no pixels, at their place", {100.0, 200.0}, {50.0, 50.0}, 50.0, none);
    row("scale of infinite width", {-1.5e308, 1.5e308}, {0.0, 50.0}, 25.0, none);
    row("place that is no number", {100.0, 200.0}, {0.0, 50.0}, none, none);
}

void tst_pixelvalue::values()
{
    QFETCH(double, lower);
    QFETCH(double, upper);
    QFETCH(double, first);
    QFETCH(double, last);
    QFETCH(double, place);
    QFETCH(double, expected);
    QwtScaleMap map;
    map.setScaleInterval(lower, upper);
    map.setPaintInterval(first, last);
    const double value = PixelValue::at(map, place);
    QCOMPARE(std::isnan(value), std::isnan(expected));
    if (!std::isnan(expected))
        QCOMPARE(value, expected);
    QCOMPARE(PixelValue::isKnown(map), first != last && std::isfinite(upper - lower));
}

PLOT2D_TEST_MAIN(tst_pixelvalue)
#include "tst_pixelvalue.moc"
