#include "support/testmain.h"

#include <plot2d/columnfold_p.h>

#include <QTest>

#include <tuple>

namespace {

PixelColumn column(int x, int first, int last, int low, int high)
{
    return {x, first, last, low, high, true};
}

bool isSame(const PixelColumn& a, const PixelColumn& b)
{
    return std::tie(a.x, a.first, a.last, a.low, a.high, a.hasLine)
        == std::tie(b.x, b.first, b.last, b.low, b.high, b.hasLine);
}

}

Q_DECLARE_METATYPE(PixelColumn)

class tst_PixelColumn : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void growsWithItsSamples();
    void isFar_data();
    void isFar();
    void covers();
    void isBeside();
    void canJoin_data();
    void canJoin();
    void joinTo_data();
    void joinTo();
    void hidesLineTo_data();
    void hidesLineTo();
};

void tst_PixelColumn::growsWithItsSamples()
{
    const PixelColumn none;
    QVERIFY(isSame(none, {0, 0, 0, 0, 0, false}));
    PixelColumn grown = PixelColumn::at(7, 40);
    QVERIFY(isSame(grown, {7, 40, 40, 40, 40, false}));
    grown.append(30);
    QVERIFY(isSame(grown, {7, 40, 30, 30, 40, true}));
    grown.append(45);
    QVERIFY(isSame(grown, {7, 40, 45, 30, 45, true}));
    grown.append(35);
    QVERIFY(isSame(grown, {7, 40, 35, 30, 45, true}));
    grown.reach(20);
    grown.reach(50);
    grown.reach(40);
    QVERIFY(isSame(grown, {7, 40, 35, 20, 50, true}));
    PixelColumn reached = PixelColumn::at(7, 40);
    reached.reach(50);
    QVERIFY(isSame(reached, {7, 40, 40, 40, 50, false}));
}

void tst_PixelColumn::isFar_data()
{
    QTest::addColumn<PixelColumn>("it");
    QTest::addColumn<bool>("expected");
    QTest::newRow("near") << column(1, 2, 3, 2, 3) << false;
    QTest::newRow("at zero") << column(0, 0, 0, 0, 0) << false;
    QTest::newRow("right") << column(farAway, 2, 3, 2, 3) << true;
    QTest::newRow("left") << column(-farAway, 2, 3, 2, 3) << true;
    QTest::newRow("just near, right") << column(farAway - 1, 2, 3, 2, 3) << false;
    QTest::newRow("just near, left") << column(1 - farAway, 2, 3, 2, 3) << false;
    QTest::newRow("low") << column(1, 2, 3, -farAway, 3) << true;
    QTest::newRow("just near, low") << column(1, 2, 3, 1 - farAway, 3) << false;
    QTest::newRow("high") << column(1, 2, 3, 2, farAway) << true;
    QTest::newRow("just near, high") << column(1, 2, 3, 2, farAway - 1) << false;
}

void tst_PixelColumn::isFar()
{
    QFETCH(PixelColumn, it);
    QTEST(it.isFar(), "expected");
}

void tst_PixelColumn::covers()
{
    const PixelColumn it = column(1, 10, 20, 8, 22);
    for (const int row : {8, 9, 15, 21, 22})
        QVERIFY(it.covers(row));
    for (const int row : {-15, 7, 23, 100})
        QVERIFY(!it.covers(row));
}

void tst_PixelColumn::isBeside()
{
    const PixelColumn it = PixelColumn::at(5, 0);
    for (const int x : {4, 6})
        QVERIFY(it.isBeside(PixelColumn::at(x, 100)));
    for (const int x : {-5, 3, 5, 7})
        QVERIFY(!it.isBeside(PixelColumn::at(x, 0)));
}

void tst_PixelColumn::canJoin_data()
{
    QTest::addColumn<PixelColumn>("from");
    QTest::addColumn<PixelColumn>("to");
    QTest::addColumn<bool>("expected");
    // From the last row of the one to the first row of the other.
    const PixelColumn from = column(5, 0, 10, 0, 10);
    QTest::newRow("right") << from << column(6, 15, 30, 15, 30) << true;
    QTest::newRow("left") << from << column(4, 15, 30, 15, 30) << true;
    QTest::newRow("the same") << from << column(5, 15, 30, 15, 30) << false;
    QTest::newRow("too far to the side") << from << column(7, 15, 30, 15, 30) << false;
    QTest::newRow("the longest up") << from << column(6, 191, 500, 191, 500) << true;
    QTest::newRow("too long up") << from << column(6, 192, 192, 192, 192) << false;
    QTest::newRow("the longest down") << from << column(6, -171, -500, -500, -171) << true;
    QTest::newRow("too long down") << from << column(6, -172, 0, -172, 0) << false;
}

void tst_PixelColumn::canJoin()
{
    QFETCH(PixelColumn, from);
    QFETCH(PixelColumn, to);
    QTEST(from.canJoin(to), "expected");
}

void tst_PixelColumn::joinTo_data()
{
    QTest::addColumn<PixelColumn>("from");
    QTest::addColumn<PixelColumn>("to");
    QTest::addColumn<PixelColumn>("fromAfterwards");
    QTest::addColumn<PixelColumn>("toAfterwards");
    const auto row = [](const char* name, const PixelColumn& from, const PixelColumn& to,
                         const PixelColumn& fromAfterwards, const PixelColumn& toAfterwards) {
        QTest::newRow(name) << from << to << fromAfterwards << toAfterwards;
    };
    // The end to the right keeps its row, the other rows are the left column's.
    row("right and up", column(5, 0, 10, 0, 10), column(6, 20, 30, 20, 30), column(5, 0, 10, 0, 19),
        column(6, 20, 30, 20, 30));
    row("right and down", column(5, 30, 20, 20, 30), column(6, 10, 0, 0, 10), column(5, 30, 20, 11, 30),
        column(6, 10, 0, 0, 10));
    row("left and up", column(6, 0, 10, 0, 10), column(5, 20, 30, 20, 30), column(6, 0, 10, 0, 10),
        column(5, 20, 30, 11, 30));
    row("left and down", column(6, 30, 20, 20, 30), column(5, 10, 0, 0, 10), column(6, 30, 20, 20, 30),
        column(5, 10, 0, 0, 19));
    row("one row up", column(5, 0, 10, 0, 10), column(6, 11, 30, 11, 30), column(5, 0, 10, 0, 10),
        column(6, 11, 30, 11, 30));
    row("one row down", column(5, 30, 20, 20, 30), column(6, 19, 0, 0, 19), column(5, 30, 20, 20, 30),
        column(6, 19, 0, 0, 19));
    // Nothing to be drawn beyond rows that are there.
    row("level at the bottom", column(5, 30, 20, 20, 30), column(6, 20, 40, 20, 40),
        column(5, 30, 20, 20, 30), column(6, 20, 40, 20, 40));
    row("level at the top", column(5, 10, 20, 10, 20), column(6, 20, 0, 0, 20), column(5, 10, 20, 10, 20),
        column(6, 20, 0, 0, 20));
}

void tst_PixelColumn::joinTo()
{
    QFETCH(PixelColumn, from);
    QFETCH(PixelColumn, to);
    QFETCH(PixelColumn, fromAfterwards);
    QFETCH(PixelColumn, toAfterwards);
    from.joinTo(to);
    QVERIFY(isSame(from, fromAfterwards));
    QVERIFY(isSame(to, toAfterwards));
}

void tst_PixelColumn::hidesLineTo_data()
{
    QTest::addColumn<PixelColumn>("to");
    QTest::addColumn<bool>("expected");
    // From a column of the rows 10 to 20 that is left at row 15.
    QTest::newRow("both reach") << column(6, 18, 12, 12, 18) << true;
    QTest::newRow("to the left") << column(4, 18, 12, 12, 18) << true;
    QTest::newRow("just both reach") << column(6, 20, 15, 15, 20) << true;
    QTest::newRow("not beside") << column(7, 18, 12, 12, 18) << false;
    QTest::newRow("entered above") << column(6, 21, 12, 12, 21) << false;
    QTest::newRow("entered below") << column(6, 9, 18, 9, 18) << false;
    QTest::newRow("left below the other") << column(6, 16, 20, 16, 20) << false;
    QTest::newRow("left above the other") << column(6, 14, 12, 12, 14) << false;
}

void tst_PixelColumn::hidesLineTo()
{
    QFETCH(PixelColumn, to);
    QTEST(column(5, 10, 15, 10, 20).hidesLineTo(to), "expected");
}

PLOT2D_TEST_MAIN(tst_PixelColumn)
#include "tst_pixelcolumn.moc"
