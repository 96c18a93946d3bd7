#include "pixelstretch.h"

#include "support/testmain.h"

#include <QTest>

using CurveFolding::Rows;
using CurveFolding::Shape;

namespace {

using Samples = PixelStretch::Samples;
using Rectangles = QVector<QRect>;
using Lines = QVector<QLine>;
using Polylines = QVector<Samples>;

/// One pixel wide, from row to row with both.
QRect piece(int x, int top, int bottom)
{
    return QRect(QPoint(x, top), QPoint(x, bottom));
}

constexpr QPointF gap = PixelStretch::gap();
constexpr Rows allRows{-10000, 10000};

}

Q_DECLARE_METATYPE(CurveFolding::Shape)

class tst_CurveFolding : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void straight_data();
    void straight();
    void widePensDrawLinesThemselves();
    void linesThatLeaveThePictureStayAsTheyAre_data();
    void linesThatLeaveThePictureStayAsTheyAre();
    void steps_data();
    void steps();
    void sticks();
    void polylines_data();
    void polylines();
    void rows();
};

void tst_CurveFolding::straight_data()
{
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<Rectangles>("columns");
    QTest::addColumn<Lines>("lines");
    const auto row = [](const char* name, const Samples& samples, const Rectangles& columns,
                         const Lines& lines) { QTest::newRow(name) << samples << columns << lines; };
    row("none", {}, {}, {});
    row("one alone", {{5, 2}}, {}, {});
    row("upwards in a column", {{5, 2}, {5, 9}}, {piece(5, 2, 9)}, {});
    row("downwards in a column", {{5, 9}, {5, 2}}, {piece(5, 2, 9)}, {});
    row("there and back", {{5, 4}, {5, 9}, {5, 2}, {5, 6}}, {piece(5, 2, 9)}, {});
    row("the longest rectangle", {{5, 2}, {5, 25}}, {piece(5, 2, 25)}, {});
    row("longer than a rectangle", {{5, 2}, {5, 26}}, {}, {QLine(5, 2, 5, 26)});
    row("hidden between columns", {{5, 2}, {5, 9}, {6, 5}, {6, 12}}, {piece(5, 2, 9), piece(6, 5, 12)}, {});
    row("level", {{5, 2}, {6, 2}, {7, 2}}, {piece(5, 2, 2), piece(6, 2, 2), piece(7, 2, 2)}, {});
    row("one row up", {{5, 2}, {6, 3}}, {piece(5, 2, 2), piece(6, 3, 3)}, {});
    row("some rows up", {{5, 2}, {6, 7}}, {piece(5, 2, 6), piece(6, 7, 7)}, {});
    row("some rows down", {{5, 7}, {6, 2}}, {piece(5, 3, 7), piece(6, 2, 2)}, {});
    row("back to the left", {{6, 2}, {6, 4}, {5, 10}, {5, 12}}, {piece(6, 2, 4), piece(5, 5, 12)}, {});
    row("a long way up", {{5, 2}, {6, 183}}, {piece(6, 183, 183)}, {QLine(5, 2, 5, 182)});
    row("too long a way up", {{5, 2}, {6, 184}}, {}, {QLine(5, 2, 6, 184)});
    row("over a column", {{5, 2}, {7, 4}}, {}, {QLine(5, 2, 7, 4)});
    row("over a column from a column", {{5, 2}, {5, 4}, {8, 10}}, {piece(5, 2, 4)}, {QLine(5, 4, 8, 10)});
    row("over a column into a column", {{5, 4}, {8, 10}, {8, 14}}, {piece(8, 10, 14)}, {QLine(5, 4, 8, 10)});
    row("broken", {{5, 2}, {6, 4}, gap, {7, 4}, {8, 6}},
        {piece(5, 2, 3), piece(6, 4, 4), piece(7, 4, 5), piece(8, 6, 6)}, {});
    row("broken around one alone", {{5, 2}, {5, 4}, gap, {6, 4}, gap, {7, 5}, {7, 6}},
        {piece(5, 2, 4), piece(7, 5, 6)}, {});
    row("broken in a column", {{5, 2}, {5, 4}, gap, {5, 8}, {5, 9}}, {piece(5, 2, 4), piece(5, 8, 9)}, {});
    row("broken at both ends", {gap, {5, 2}, {5, 4}, gap}, {piece(5, 2, 4)}, {});
}

void tst_CurveFolding::straight()
{
    QFETCH(Samples, samples);
    QFETCH(Rectangles, columns);
    QFETCH(Lines, lines);
    const PixelStretch stretch(samples);
    const auto strokes = CurveFolding::strokes(stretch.stretch(), Shape::Straight, 1, allRows);
    QVERIFY(strokes);
    QCOMPARE(strokes->columns, columns);
    QCOMPARE(strokes->lines, lines);
}

void tst_CurveFolding::widePensDrawLinesThemselves()
{
    const PixelStretch apart({{5, 2}, {5, 4}, {6, 7}, {6, 9}});
    const auto strokes = CurveFolding::strokes(apart.stretch(), Shape::Straight, 2, allRows);
    QCOMPARE(strokes->columns, (Rectangles{piece(5, 2, 4), piece(6, 7, 9)}));
    QCOMPARE(strokes->lines, (Lines{QLine(5, 4, 6, 7)}));

    const PixelStretch overlapping({{5, 2}, {5, 90}, {6, 5}, {6, 120}});
    const auto hidden = CurveFolding::strokes(overlapping.stretch(), Shape::Straight, 2, allRows);
    QCOMPARE(hidden->columns, (Rectangles{piece(5, 2, 90), piece(6, 5, 120)}));
    QCOMPARE(hidden->lines, (Lines{}));
}

void tst_CurveFolding::linesThatLeaveThePictureStayAsTheyAre_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<bool>("stays");
    // The picture has the rows 10 to 20.
    QTest::newRow("inside") << 12 << 15 << false;
    QTest::newRow("over all rows") << 10 << 20 << false;
    QTest::newRow("downwards over all rows") << 20 << 10 << false;
    QTest::newRow("from above") << 9 << 15 << true;
    QTest::newRow("from below") << 21 << 15 << true;
    QTest::newRow("to above") << 15 << 9 << true;
    QTest::newRow("to below") << 15 << 21 << true;
    QTest::newRow("across") << 9 << 21 << true;
    QTest::newRow("outside, where nothing is missed") << 9 << 9 << false;
}

void tst_CurveFolding::linesThatLeaveThePictureStayAsTheyAre()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(bool, stays);
    const PixelStretch stretch({QPointF(5, from), QPointF(6, to)});
    const auto strokes = CurveFolding::strokes(stretch.stretch(), Shape::Straight, 1, Rows{10, 20});
    QCOMPARE(strokes->lines, stays ? Lines{QLine(5, from, 6, to)} : Lines{});
    QCOMPARE(strokes->columns.isEmpty(), stays);
}

void tst_CurveFolding::steps_data()
{
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<Shape>("shape");
    QTest::addColumn<Rectangles>("columns");
    QTest::addColumn<Lines>("lines");
    const Samples apart{{5, 2}, {9, 7}, {12, 3}};
    QTest::newRow("vertical first") << apart << Shape::VerticalFirst
                                    << Rectangles{piece(5, 2, 7), piece(9, 3, 7)}
                                    << Lines{QLine(5, 7, 9, 7), QLine(9, 3, 12, 3)};
    QTest::newRow("horizontal first")
        << apart << Shape::HorizontalFirst << Rectangles{piece(9, 2, 7), piece(12, 3, 7)}
        << Lines{QLine(5, 2, 9, 2), QLine(9, 7, 12, 7)};
    const Samples beside{{5, 2}, {6, 7}};
    QTest::newRow("vertical first, beside")
        << beside << Shape::VerticalFirst << Rectangles{piece(5, 2, 7), piece(6, 7, 7)} << Lines{};
    QTest::newRow("horizontal first, beside")
        << beside << Shape::HorizontalFirst << Rectangles{piece(5, 2, 2), piece(6, 2, 7)} << Lines{};
    const Samples columns{{5, 2}, {5, 4}, {9, 7}, {9, 8}};
    QTest::newRow("vertical first, columns")
        << columns << Shape::VerticalFirst << Rectangles{piece(5, 2, 7), piece(9, 7, 8)}
        << Lines{QLine(5, 7, 9, 7)};
    QTest::newRow("horizontal first, columns")
        << columns << Shape::HorizontalFirst << Rectangles{piece(5, 2, 4), piece(9, 4, 8)}
        << Lines{QLine(5, 4, 9, 4)};
    const Samples broken{{5, 2}, gap, {9, 7}};
    QTest::newRow("vertical first, broken") << broken << Shape::VerticalFirst << Rectangles{} << Lines{};
    QTest::newRow("horizontal first, broken") << broken << Shape::HorizontalFirst << Rectangles{} << Lines{};
}

void tst_CurveFolding::steps()
{
    QFETCH(Samples, samples);
    QFETCH(Shape, shape);
    QFETCH(Rectangles, columns);
    QFETCH(Lines, lines);
    const PixelStretch stretch(samples);
    const auto strokes = CurveFolding::strokes(stretch.stretch(), shape, 1, allRows);
    QVERIFY(strokes);
    QCOMPARE(strokes->columns, columns);
    QCOMPARE(strokes->lines, lines);
}

void tst_CurveFolding::sticks()
{
    const PixelStretch stretch({{5, 12}, {6, 4}, {6, 8}, {7, 10}, gap, {8, 40}, {9, 33}, {10, 34}});
    const auto strokes = CurveFolding::sticks(stretch.stretch(), 1, 10);
    QCOMPARE(
        strokes.columns, (Rectangles{piece(5, 10, 12), piece(6, 4, 10), piece(7, 10, 10), piece(9, 10, 33)}));
    QCOMPARE(strokes.lines, (Lines{QLine(8, 10, 8, 40), QLine(10, 10, 10, 34)}));
    const auto wide = CurveFolding::sticks(stretch.stretch(), 2, 10);
    QCOMPARE(wide.columns.size(), 6);
    QCOMPARE(wide.columns[3], piece(8, 10, 40));
    QVERIFY(wide.lines.isEmpty());
}

void tst_CurveFolding::polylines_data()
{
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<Polylines>("expected");
    const auto row = [](const char* name, const Samples& samples, const Polylines& expected) {
        QTest::newRow(name) << samples << expected;
    };
    row("none", {}, {});
    row("one alone", {{5, 2}}, {});
    row("two", {{5, 2}, {9, 4}}, {Samples{{5, 2}, {9, 4}}});
    row("level", {{5, 2}, {6, 2}}, {Samples{{5, 2}, {6, 2}}});
    row("a column upwards", {{5, 2}, {5, 4}, {5, 9}}, {Samples{{5, 2}, {5, 9}}});
    row("a column downwards", {{5, 9}, {5, 4}, {5, 2}}, {Samples{{5, 9}, {5, 2}}});
    row("the nearer end first, low", {{5, 4}, {5, 12}, {5, 2}, {5, 7}},
        {Samples{{5, 4}, {5, 2}, {5, 12}, {5, 7}}});
    row("the nearer end first, high", {{5, 10}, {5, 2}, {5, 12}, {5, 7}},
        {Samples{{5, 10}, {5, 12}, {5, 2}, {5, 7}}});
    row("as near: the high end first", {{5, 7}, {5, 2}, {5, 12}, {5, 9}},
        {Samples{{5, 7}, {5, 12}, {5, 2}, {5, 9}}});
    row("into a column apart", {{5, 2}, {8, 4}, {8, 9}}, {Samples{{5, 2}, {8, 4}, {8, 9}}});
    row("into a column beside that does not reach", {{5, 2}, {5, 4}, {6, 7}, {6, 9}},
        {Samples{{5, 2}, {5, 4}, {6, 7}, {6, 9}}});
    // Where both columns reach, the way from the one into the other is shortened.
    row("through columns that overlap", {{5, 2}, {5, 12}, {6, 5}, {6, 20}},
        {Samples{{5, 2}, {5, 12}, {6, 12}, {6, 5}, {6, 20}}});
    row("through columns whose ends differ", {{5, 2}, {5, 12}, {5, 9}, {6, 8}, {6, 9}, {6, 3}},
        {Samples{{5, 2}, {5, 12}, {5, 9}, {6, 9}, {6, 3}}});
    row("broken", {{5, 2}, {6, 4}, gap, {7, 4}, {8, 6}}, {Samples{{5, 2}, {6, 4}}, Samples{{7, 4}, {8, 6}}});
    row("broken around one alone", {{5, 2}, {5, 4}, gap, {6, 3}, gap, {7, 5}, {7, 6}},
        {Samples{{5, 2}, {5, 4}}, Samples{{7, 5}, {7, 6}}});
    row("broken between overlapping columns", {{5, 2}, {5, 9}, gap, {6, 3}, {6, 8}},
        {Samples{{5, 2}, {5, 9}}, Samples{{6, 3}, {6, 8}}});
}

void tst_CurveFolding::polylines()
{
    QFETCH(Samples, samples);
    QFETCH(Polylines, expected);
    const PixelStretch stretch(samples);
    const auto lines = CurveFolding::polylines(stretch.stretch());
    QVERIFY(lines);
    Polylines found;
    for (const QPolygonF& line : *lines)
        found.append(line);
    QCOMPARE(found, expected);
}

void tst_CurveFolding::rows()
{
    const Rows some{10, 12};
    for (const int row : {10, 11, 12})
        QVERIFY(some.contain(row));
    for (const int row : {-11, 9, 13})
        QVERIFY(!some.contain(row));
    for (const int row : {-1, 0, 1})
        QVERIFY(!Rows().contain(row));
}

PLOT2D_TEST_MAIN(tst_CurveFolding)
#include "tst_curvefolding.moc"
