#include "support/testmain.h"

#include <position/breakevens.h>

#include <cmath>
#include <limits>

using namespace Position;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
using Ranges = QVector<QPair<double, double>>;

Ranges rangesOf(const QVector<BreakEven>& found)
{
    Ranges ranges;
    for (const BreakEven& each : found)
        ranges.append({each.low, each.high});
    return ranges;
}

bool areNear(const Ranges& a, const Ranges& b, double tolerance)
{
    const auto near = [tolerance](double x, double y) { return x == y || std::abs(x - y) <= tolerance; };
    bool all = a.size() == b.size();
    for (int i = 0; all && i < a.size(); ++i)
        all = near(a[i].first, b[i].first) && near(a[i].second, b[i].second);
    return all;
}

}

Q_DECLARE_METATYPE(Ranges)
Q_DECLARE_METATYPE(CurvedProfit)

class tst_breakevens : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void polygons_data();
    void polygons();
    void roundingCountsAsZero();
    void curves_data();
    void curves();
};

void tst_breakevens::polygons_data()
{
    QTest::addColumn<QVector<QPointF>>("points");
    QTest::addColumn<double>("lastSlope");
    QTest::addColumn<Ranges>("expected");
    using Points = QVector<QPointF>;
    QTest::newRow("nothing") << Points{} << 1.0 << Ranges{};
    QTest::newRow("a slope alone") << Points{{0.0, -5.0}} << 1.0 << Ranges{{5.0, 5.0}};
    QTest::newRow("away from zero") << Points{{0.0, -5.0}} << -1.0 << Ranges{};
    QTest::newRow("level") << Points{{0.0, 5.0}, {10.0, 5.0}} << 0.0 << Ranges{};
    QTest::newRow("between two") << Points{{0.0, -1.0}, {4.0, 3.0}} << 0.0 << Ranges{{1.0, 1.0}};
    QTest::newRow("at a corner") << Points{{0.0, -1.0}, {4.0, 0.0}, {6.0, 2.0}} << 0.0 << Ranges{{4.0, 4.0}};
    QTest::newRow("touches") << Points{{0.0, 2.0}, {4.0, 0.0}, {6.0, 2.0}} << 0.0 << Ranges{{4.0, 4.0}};
    QTest::newRow("lies") << Points{{0.0, 2.0}, {4.0, 0.0}, {6.0, 0.0}, {8.0, 0.0}} << -1.0
                          << Ranges{{4.0, 8.0}};
    QTest::newRow("lies for ever") << Points{{0.0, 2.0}, {4.0, 0.0}} << 0.0 << Ranges{{4.0, infinity}};
    QTest::newRow("is nothing") << Points{{0.0, 0.0}} << 0.0 << Ranges{{0.0, infinity}};
    QTest::newRow("begins at zero") << Points{{0.0, 0.0}, {2.0, 2.0}} << -2.0
                                    << Ranges{{0.0, 0.0}, {3.0, 3.0}};
    QTest::newRow("lies twice") << Points{{0.0, 0.0}, {2.0, 0.0}, {3.0, 1.0}, {4.0, 0.0}} << 0.0
                                << Ranges{{0.0, 2.0}, {4.0, infinity}};
}

void tst_breakevens::polygons()
{
    QFETCH(QVector<QPointF>, points);
    QFETCH(double, lastSlope);
    PolygonProfit profit;
    profit.points = points;
    profit.lastSlope = lastSlope;
    QTEST(rangesOf(breakEvens(profit)), "expected");
}

void tst_breakevens::roundingCountsAsZero()
{
    PolygonProfit profit;
    profit.points = {{0.0, 1.0}, {5.0, 1e-14}, {6.0, -1e-14}};
    profit.lastSlope = 1e-15;
    QCOMPARE(breakEvens(profit).size(), 2);
    profit.rounding = 1e-13;
    QCOMPARE(breakEvens(profit).size(), 1);
    QVERIFY(breakEvens(profit).first().isPoint() == false);
    profit.slopeRounding = 1e-14;
    QCOMPARE(rangesOf(breakEvens(profit)), (Ranges{{5.0, infinity}}));
}

void tst_breakevens::curves_data()
{
    QTest::addColumn<CurvedProfit>("profit");
    QTest::addColumn<Ranges>("expected");
    const auto row = [](const char* name, const std::function<double(double)>& at, double lastSlope,
                         const Ranges& expected) {
        QTest::newRow(name) << CurvedProfit{at, {100.0}, lastSlope, 1e-9} << expected;
    };
    row("none", [](double) { return 1.0; }, 0.0, {});
    row("one", [](double x) { return std::log(x / 90.0); }, 0.0, {{90.0, 90.0}});
    row("two", [](double x) { return (x - 80.0) * (x - 120.0); }, 1.0, {{80.0, 80.0}, {120.0, 120.0}});
    // Closer together than the prices that are searched.
    row("two close", [](double x) { return (x - 101.23) * (x - 101.27); }, 1.0,
        {{101.23, 101.23}, {101.27, 101.27}});
    row("two close from below", [](double x) { return -(x - 101.23) * (x - 101.27); }, -1.0,
        {{101.23, 101.23}, {101.27, 101.27}});
    row("touches", [](double x) { return (x - 111.111) * (x - 111.111); }, 1.0, {{111.111, 111.111}});
    row("at a centre", [](double x) { return x - 100.0; }, 1.0, {{100.0, 100.0}});
    row("far below", [](double x) { return x - 0.02; }, 1.0, {{0.02, 0.02}});
    row("beyond all", [](double x) { return x - 5e7; }, 1.0, {{5e7, 5e7}});
    row("no centre counts for nothing", [](double x) { return std::max(x - 100.0, 0.0) - 3.0; }, 1.0,
        {{103.0, 103.0}});
}

void tst_breakevens::curves()
{
    QFETCH(CurvedProfit, profit);
    QFETCH(Ranges, expected);
    const Ranges found = rangesOf(breakEvens(profit));
    QString text;
    QDebug(&text) << found;
    QVERIFY2(areNear(found, expected, 1e-4), qPrintable(text));
    profit.centres.clear();
    QVERIFY(breakEvens(profit).isEmpty());
}

PLOT2D_TEST_MAIN(tst_breakevens)
#include "tst_breakevens.moc"
