#include "pixelstretch.h"

#include "support/testmain.h"

#include <plot2d/softfolding_p.h>

#include <QTest>

namespace {

using Samples = PixelStretch::Samples;
using Rectangles = QVector<QRect>;
using Lines = QVector<QLine>;
using Polylines = QVector<Samples>;

constexpr QPointF gap = PixelStretch::gap();

Samples inColumn(int x, const QVector<int>& rows)
{
    Samples samples;
    for (const int row : rows)
        samples.append(QPointF(x, row));
    return samples;
}

/// Rows that go up and down between 0 and a height, so many times.
QVector<int> zigzag(int height, int times)
{
    QVector<int> rows{0};
    for (int i = 0; i < times; ++i)
        rows.append(rows.last() == 0 ? height : 0);
    return rows;
}

/// The passes of the first column, 0 where lines draw it.
int passesOf(const SoftFolding::Strokes& strokes)
{
    for (std::size_t passes = 0; passes < strokes.columns.size(); ++passes) {
        if (!strokes.columns[passes].isEmpty())
            return static_cast<int>(passes);
    }
    return 0;
}

}

class tst_SoftFolding : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void countsPasses_data();
    void countsPasses();
    void fillsColumnsAndTheirEnds();
    void coverOfPasses();
    void linesThroughColumns_data();
    void linesThroughColumns();
    void linesBetweenColumns_data();
    void linesBetweenColumns();
};

void tst_SoftFolding::countsPasses_data()
{
    QTest::addColumn<QVector<int>>("rows");
    QTest::addColumn<int>("passes");
    const auto row = [](const char* name, const QVector<int>& rows, int passes) {
        QTest::newRow(name) << rows << passes;
    };
    row("one sample", {5}, 0);
    row("level", {5, 5, 5}, 0);
    row("once up", {0, 10}, 0);
    row("once up, in steps", {0, 3, 3, 10}, 0);
    row("once down, in steps", {10, 9, 2, 0}, 0);
    row("up, and not quite half down", {0, 10, 6}, 0);
    row("up and half down", {0, 10, 5}, 2);
    row("up and down", {0, 10, 0}, 2);
    row("up and down by a row", {0, 1, 0}, 2);
    row("up and down, and up", {0, 10, 0, 10}, 3);
    row("with a detour", {0, 6, 3, 10}, 2);
    row("with a smaller detour", {0, 6, 4, 10}, 0);
    row("seven times", zigzag(10, 7), 7);
    row("eight times", zigzag(10, 8), 8);
    row("nine times", zigzag(10, 9), 8);
    row("a hundred times", zigzag(10, 100), 8);
    row("sixteen steps", {0, 2, 0, 2, 0, 2, 0, 2, 0, 2, 0, 2, 0, 2, 0, 2, 20}, 2);
    row("twelve steps", {0, 4, 0, 4, 0, 4, 0, 4, 0, 4, 0, 4, 20}, 3);
    row("nine steps", {0, 4, 0, 4, 0, 4, 0, 4, 0, 20}, 3);
    const QVector<int> flat(35, 120);
    row("once up, steep at both ends", QVector<int>{100, 110, 115} + flat + QVector<int>{125, 140, 140}, 0);
    row("up and down between the ends, and back",
        QVector<int>{100, 115} + QVector<int>(18, 115) + QVector<int>{140} + QVector<int>(18, 115)
            + QVector<int>{115, 100},
        2);
    // Of many steps only those at both ends are looked at.
    row("steps in the middle", {0, 2, 0, 2, 0, 2, 0, 2, 0, 20, 0, 20, 0, 2, 0, 2, 0, 2, 0, 2, 0}, 2);
    row("steps at the beginning", {0, 20, 0, 20, 0, 2, 0, 2, 0, 0, 0, 0, 0, 2, 0, 2, 0, 2, 0, 2, 0}, 7);
    row("steps at the end", {0, 2, 0, 2, 0, 2, 0, 2, 0, 0, 0, 0, 0, 2, 0, 2, 0, 20, 0, 20, 0}, 7);
    row("the eighth step", {0, 0, 0, 0, 0, 0, 0, 20, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 3);
    row("the eighth step from the end", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 20, 0, 0, 0, 0, 0, 0, 0}, 3);
}

void tst_SoftFolding::countsPasses()
{
    QFETCH(QVector<int>, rows);
    QFETCH(int, passes);
    const PixelStretch stretch(inColumn(5, rows));
    const auto strokes = SoftFolding::strokes(stretch.stretch());
    QVERIFY(strokes);
    QCOMPARE(passesOf(*strokes), passes);
}

void tst_SoftFolding::fillsColumnsAndTheirEnds()
{
    const PixelStretch stretch(inColumn(5, {3, 13, 3, 13}) + inColumn(6, {20, 24, 20}));
    const auto strokes = SoftFolding::strokes(stretch.stretch());
    QVERIFY(strokes);
    QCOMPARE(strokes->columns[3], (Rectangles{QRect(4, 3, 2, 10)}));
    QCOMPARE(strokes->columns[2], (Rectangles{QRect(5, 20, 2, 4)}));
    QCOMPARE(strokes->ends,
        (Rectangles{QRect(4, 2, 2, 1), QRect(4, 13, 2, 1), QRect(5, 19, 2, 1), QRect(5, 24, 2, 1)}));
}

void tst_SoftFolding::coverOfPasses()
{
    QCOMPARE(SoftFolding::coverOfPasses(0), 0.0);
    QCOMPARE(SoftFolding::coverOfPasses(1), 0.5);
    QCOMPARE(SoftFolding::coverOfPasses(2), 0.75);
    QCOMPARE(SoftFolding::coverOfPasses(8), 1.0 - 1.0 / 256.0);
    QCOMPARE(SoftFolding::coverOfEnds, 0.4375);
}

void tst_SoftFolding::linesThroughColumns_data()
{
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<Lines>("lines");
    QTest::addColumn<Polylines>("polylines");
    const auto row
        = [](const char* name, const Samples& samples, const Lines& lines, const Polylines& polylines) {
              QTest::newRow(name) << samples << lines << polylines;
          };
    row("none", {}, {}, {});
    row("one alone", {{5, 2}}, {}, {});
    row("two", {{5, 2}, {9, 4}}, {QLine(5, 2, 9, 4)}, {});
    row("three", {{5, 2}, {9, 4}, {12, 3}}, {}, {Samples{{5, 2}, {9, 4}, {12, 3}}});
    row("level in a column", {{5, 2}, {5, 2}, {9, 4}}, {QLine(5, 2, 9, 4)}, {});
    row("a column upwards", {{5, 2}, {5, 4}, {5, 9}}, {QLine(5, 2, 5, 9)}, {});
    row("a column downwards", {{5, 9}, {5, 4}, {5, 2}}, {QLine(5, 9, 5, 2)}, {});
    row("up and a little down", {{5, 0}, {5, 10}, {5, 6}}, {}, {Samples{{5, 0}, {5, 10}, {5, 6}}});
    row("the nearer end first, low", {{5, 3}, {5, 0}, {5, 10}, {5, 9}}, {},
        {Samples{{5, 3}, {5, 0}, {5, 10}, {5, 9}}});
    row("the nearer end first, high", {{5, 7}, {5, 10}, {5, 0}, {5, 1}}, {},
        {Samples{{5, 7}, {5, 10}, {5, 0}, {5, 1}}});
    // The way to both ends is not among the steps that are looked at.
    row("as near: the high end first",
        inColumn(5, {10, 10, 10, 10, 10, 10, 10, 10, 10, 20, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}), {},
        {Samples{{5, 10}, {5, 20}, {5, 0}}});
    row("broken", {{5, 2}, {9, 4}, gap, {12, 3}, {14, 3}}, {QLine(5, 2, 9, 4), QLine(12, 3, 14, 3)}, {});
    row("broken around one alone", {{5, 2}, {9, 4}, gap, {12, 3}, gap, {14, 3}, {15, 4}},
        {QLine(5, 2, 9, 4), QLine(14, 3, 15, 4)}, {});
    row("broken in a column", {{5, 2}, {5, 4}, gap, {5, 8}, {5, 9}}, {QLine(5, 2, 5, 4), QLine(5, 8, 5, 9)},
        {});
}

void tst_SoftFolding::linesThroughColumns()
{
    QFETCH(Samples, samples);
    QFETCH(Lines, lines);
    QFETCH(Polylines, polylines);
    const PixelStretch stretch(samples);
    const auto strokes = SoftFolding::strokes(stretch.stretch());
    QVERIFY(strokes);
    QCOMPARE(strokes->lines, lines);
    Polylines found;
    for (const QPolygonF& line : strokes->polylines)
        found.append(line);
    QCOMPARE(found, polylines);
    QCOMPARE(passesOf(*strokes), 0);
    QVERIFY(strokes->ends.isEmpty());
}

void tst_SoftFolding::linesBetweenColumns_data()
{
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<Lines>("lines");
    QTest::addColumn<int>("pieces");
    const auto row = [](const char* name, const Samples& samples, const Lines& lines, int pieces) {
        QTest::newRow(name) << samples << lines << pieces;
    };
    const Samples first = inColumn(5, {0, 10, 0, 8});
    row("overlapping", first + inColumn(6, {4, 14, 4, 12}), {}, 2);
    row("overlapping, passed twice", inColumn(5, {0, 10, 5}) + inColumn(6, {4, 14, 9}), {}, 2);
    row("beside, and not overlapping", first + inColumn(6, {9, 19, 9, 12}), {QLine(5, 8, 6, 9)}, 2);
    row("apart", first + inColumn(9, {4, 14, 4, 12}), {QLine(5, 8, 9, 4)}, 2);
    row("broken", first + Samples{gap} + inColumn(6, {4, 14, 4, 12}), {}, 2);
    row("broken, apart", first + Samples{gap} + inColumn(9, {4, 14, 4, 12}), {}, 2);
    row("to one sample", first + inColumn(6, {8}), {QLine(5, 8, 6, 8)}, 1);
    row("from one sample", inColumn(4, {2}) + first, {QLine(4, 2, 5, 0)}, 1);
    row("from one sample, at the same row", inColumn(4, {0}) + first, {QLine(4, 0, 5, 0)}, 1);
    row("to a column that is passed once", first + inColumn(6, {8, 20}), {}, 1);
    row("from a column that is passed once", inColumn(4, {0, 8}) + first, {}, 1);
}

void tst_SoftFolding::linesBetweenColumns()
{
    QFETCH(Samples, samples);
    QFETCH(Lines, lines);
    QFETCH(int, pieces);
    const PixelStretch stretch(samples);
    const auto strokes = SoftFolding::strokes(stretch.stretch());
    QVERIFY(strokes);
    QCOMPARE(strokes->lines, lines);
    QCOMPARE(strokes->ends.size(), 2 * pieces);
    QCOMPARE(strokes->polylines.size(), lines.isEmpty() && pieces == 1 ? 1 : 0);
}

PLOT2D_TEST_MAIN(tst_SoftFolding)
#include "tst_softfolding.moc"
