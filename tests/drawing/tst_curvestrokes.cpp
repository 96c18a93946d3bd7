#include "recordedcurves.h"

#include "support/testmain.h"

#include <plot2d/curvepainter_p.h>
#include <plot2d/softfolding_p.h>

#include <QTest>

using namespace RecordedCurves;
using CurveFolding::Shape;

/// The lines and rectangles that a folded curve is drawn by, and how far they reach.
class tst_CurveStrokes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void strokesAreAsWideAsThePen_data();
    void strokesAreAsWideAsThePen();
    void longColumnsAreLines();
    void linesAreJoinedWithinTheRowsOfTheArea_data();
    void linesAreJoinedWithinTheRowsOfTheArea();
    void softStrokesAreAsTheirFoldingSays();
    void polylinesEndAroundTheArea_data();
    void polylinesEndAroundTheArea();
    void softPolylinesEndAroundTheArea();
    void samplesOutsideAreNotDrawn_data();
    void samplesOutsideAreNotDrawn();
    void clipsAPainterThatIsNot_data();
    void clipsAPainterThatIsNot();
    void leavesTheClipOfThePainter();
    void sticksStandOnTheirBaseline();
};

void tst_CurveStrokes::strokesAreAsWideAsThePen_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<QRectF>("expected");
    QTest::newRow("none") << 0.0 << QRectF(10.0, 12.0, 1.0, 9.0);
    QTest::newRow("one") << 1.0 << QRectF(10.0, 12.0, 1.0, 9.0);
    QTest::newRow("two") << 2.0 << QRectF(9.0, 11.0, 2.0, 10.0);
    QTest::newRow("four") << 4.0 << QRectF(8.0, 10.0, 4.0, 12.0);
    QTest::newRow("eight") << 8.0 << QRectF(6.0, 8.0, 8.0, 16.0);
}

void tst_CurveStrokes::strokesAreAsWideAsThePen()
{
    QFETCH(double, width);
    QFETCH(QRectF, expected);
    QVector<QPointF> samples;
    appendColumn(samples, 10.0, {12.0, 20.0, 15.0, 13.0, 17.0, 16.0, 20.0, 18.0});
    const Curve curve(samples);
    for (const bool isSoft : {false, true}) {
        // Sticks are hard on a soft painter as well.
        RecordingDevice device;
        QVERIFY(draws(device, isSoft ? soft : hard, pen(width), [&](QPainter& painter) {
            const QRectF narrow(8.0, 0.0, 4.0, 50.0);
            return isSoft ? CurvePainter::drawSticks(painter, curve.stretch(), narrow, 15.0)
                          : CurvePainter::draw(painter, curve.stretch(), narrow, Shape::Straight);
        }));
        QCOMPARE(bounds(device), QVector<QRectF>{expected});
        QVERIFY(device.lines.isEmpty());
        const FilledRectangle& filled = device.rectangles.first();
        QCOMPARE(filled.color, QColor(Qt::blue));
        QVERIFY(!filled.isSoft && !filled.isOutlined);
    }
}

void tst_CurveStrokes::longColumnsAreLines()
{
    const Curve curve({{10.0, 2.0}, {10.0, 40.0}});
    for (const bool sticks : {false, true}) {
        RecordingDevice device;
        QVERIFY(draws(device, sticks ? soft : hard, pen(1.0), [&](QPainter& painter) {
            return sticks ? CurvePainter::drawSticks(painter, curve.stretch(), area, 2.0)
                          : CurvePainter::draw(painter, curve.stretch(), area, Shape::Straight);
        }));
        QCOMPARE(device.lines, QVector<QLineF>{QLineF(10.0, 2.0, 10.0, 40.0)});
        QVERIFY(device.rectangles.isEmpty());
        QVERIFY(!device.hasSoftLines);
    }
}

void tst_CurveStrokes::linesAreJoinedWithinTheRowsOfTheArea_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<bool>("isJoined");
    // The area has the rows from 20 to 39.
    QTest::newRow("inside") << 25.0 << 30.0 << true;
    QTest::newRow("last row") << 25.0 << 39.0 << true;
    QTest::newRow("below") << 25.0 << 40.0 << false;
    QTest::newRow("first row") << 20.0 << 25.0 << true;
    QTest::newRow("above") << 19.0 << 25.0 << false;
}

void tst_CurveStrokes::linesAreJoinedWithinTheRowsOfTheArea()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(bool, isJoined);
    const Curve curve({{10.0, from}, {11.0, to}});
    // Rows that the area covers in part are not surely inside.
    for (const QRectF& rows : {QRectF(0.0, 20.0, 100.0, 20.0), QRectF(0.0, 19.5, 100.0, 21.0)}) {
        RecordingDevice device;
        QVERIFY(draws(device, hard, pen(1.0), [&](QPainter& painter) {
            return CurvePainter::draw(painter, curve.stretch(), rows, Shape::Straight);
        }));
        QCOMPARE(device.lines.size(), isJoined ? 0 : 1);
        QCOMPARE(device.rectangles.size(), isJoined ? 2 : 0);
    }
}

void tst_CurveStrokes::softStrokesAreAsTheirFoldingSays()
{
    QVector<QPointF> samples;
    appendColumn(samples, 10.0, {10.0, 20.0, 10.0});
    appendColumn(samples, 11.0, {12.0, 20.0, 12.0, 20.0});
    appendColumn(samples, 12.0, {10.0, 20.0, 10.0, 20.0, 10.0, 20.0, 10.0, 20.0, 10.0, 20.0, 10.0});
    appendColumn(samples, 14.0, {12.0, 20.0, 12.0});
    appendColumn(samples, 15.0, {31.0, 35.0});
    appendColumn(samples, 16.0, {38.0});
    appendColumn(samples, 17.0, {10.0, 20.0, 10.0});
    const Curve curve(samples);
    const auto folded = SoftFolding::strokes(curve.stretch());
    QVERIFY(folded);
    QVERIFY(!folded->columns[2].isEmpty() && !folded->columns[SoftFolding::mostPasses].isEmpty());
    QVERIFY(!folded->lines.isEmpty() && !folded->polylines.isEmpty());

    RecordingDevice device;
    QVERIFY(draws(device, soft, pen(1.0), [&](QPainter& painter) {
        return CurvePainter::draw(painter, curve.stretch(), QRectF(9.0, 0.0, 10.0, 50.0), Shape::Straight);
    }));
    QCOMPARE(device.polylines, folded->polylines);
    QCOMPARE(device.lines.size(), folded->lines.size());
    for (int i = 0; i < device.lines.size(); ++i)
        QCOMPARE(device.lines[i], QLineF(folded->lines[i]));
    QVERIFY(device.hasSoftLines);

    int next = 0;
    const auto compare = [&](const QVector<QRect>& rectangles, double cover) {
        for (const QRect& rectangle : rectangles) {
            QVERIFY(next < device.rectangles.size());
            const FilledRectangle& filled = device.rectangles[next++];
            QColor color(Qt::blue);
            color.setAlphaF(cover);
            QCOMPARE(filled.rectangle, QRectF(rectangle));
            QCOMPARE(filled.color, color);
            QVERIFY(!filled.isSoft && !filled.isOutlined);
        }
    };
    for (int passes = 2; passes <= SoftFolding::mostPasses; ++passes)
        compare(folded->columns[std::size_t(passes)], SoftFolding::coverOfPasses(passes));
    compare(folded->ends, SoftFolding::coverOfEnds);
    QCOMPARE(next, device.rectangles.size());
}

void tst_CurveStrokes::polylinesEndAroundTheArea_data()
{
    QTest::addColumn<QPen>("used");
    QTest::addColumn<double>("reach");
    QTest::newRow("no width") << pen(0.0, Qt::FlatCap) << 1.0;
    QTest::newRow("one") << pen(1.0, Qt::FlatCap) << 1.0;
    QTest::newRow("three") << pen(3.0) << 3.0;
}

void tst_CurveStrokes::polylinesEndAroundTheArea()
{
    QFETCH(QPen, used);
    QFETCH(double, reach);
    const Curve curve(zigzag(1000, -200.0, 200.0));
    const QRectF inside(40.0, 20.0, 20.0, 10.0);
    RecordingDevice device;
    QVERIFY(draws(device, hard, used, [&](QPainter& painter) {
        return CurvePainter::draw(painter, curve.stretch(), inside, Shape::Straight);
    }));
    QVERIFY(!device.polylines.isEmpty());
    QCOMPARE(device.reached(), inside.adjusted(-reach, -reach, reach, reach));
}

void tst_CurveStrokes::softPolylinesEndAroundTheArea()
{
    QVector<QPointF> samples;
    for (int x = 0; x < 100; ++x)
        appendColumn(samples, x, {-10.0 * x, 10.0 * x, 10.0 * x});
    const Curve curve(samples);
    const QRectF inside(40.0, 20.0, 20.0, 10.0);
    RecordingDevice device;
    QVERIFY(draws(device, soft, pen(1.0), [&](QPainter& painter) {
        return CurvePainter::draw(painter, curve.stretch(), inside, Shape::Straight);
    }));
    QVERIFY(!device.polylines.isEmpty() && device.lines.isEmpty());
    QCOMPARE(device.reached(), inside.adjusted(-1.0, -1.0, 1.0, 1.0));
}

void tst_CurveStrokes::samplesOutsideAreNotDrawn_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<bool>("areSticks");
    QTest::addColumn<QRectF>("expected");
    // As far as the pen reaches around the area, and the next sample to both sides.
    QTest::newRow("no width") << 0.0 << false << QRectF(38.0, 10.0, 25.0, 11.0);
    QTest::newRow("one") << 1.0 << false << QRectF(38.0, 10.0, 25.0, 11.0);
    QTest::newRow("sticks") << 1.0 << true << QRectF(38.0, 5.0, 25.0, 16.0);
    QTest::newRow("wide sticks") << 4.0 << true << QRectF(33.0, 3.0, 34.0, 19.0);
}

void tst_CurveStrokes::samplesOutsideAreNotDrawn()
{
    QFETCH(double, width);
    QFETCH(bool, areSticks);
    const Curve curve(zigzag(100));
    const QRectF narrow(40.0, 0.0, 20.0, 50.0);
    RecordingDevice device;
    QVERIFY(draws(device, hard, pen(width), [&](QPainter& painter) {
        return areSticks ? CurvePainter::drawSticks(painter, curve.stretch(), narrow, 5.0)
                         : CurvePainter::draw(painter, curve.stretch(), narrow, Shape::Straight);
    }));
    QTEST(device.reached(), "expected");
}

void tst_CurveStrokes::clipsAPainterThatIsNot_data()
{
    QTest::addColumn<QPen>("used");
    QTest::addColumn<bool>("isSoft");
    QTest::addColumn<double>("reach");
    QTest::newRow("no width") << pen(0.0) << false << 1.0;
    QTest::newRow("one") << pen(1.0) << false << 1.0;
    QTest::newRow("four") << pen(4.0) << false << 4.0;
    QTest::newRow("polylines") << pen(3.0) << false << 3.0;
    QTest::newRow("soft") << pen(1.0) << true << 1.0;
}

void tst_CurveStrokes::clipsAPainterThatIsNot()
{
    QFETCH(QPen, used);
    QFETCH(bool, isSoft);
    QFETCH(double, reach);
    const Curve curve(zigzag(400));
    const QRectF inside(40.0, 10.0, 20.0, 9.0);
    RecordingDevice device;
    QVERIFY(draws(device, isSoft ? soft : hard, used, [&](QPainter& painter) {
        return CurvePainter::draw(painter, curve.stretch(), inside, Shape::Straight);
    }));
    QVERIFY(!device.clips.isEmpty());
    for (const QRectF& clip : device.clips)
        QCOMPARE(clip, inside.adjusted(-reach, -reach, reach, reach));
}

void tst_CurveStrokes::leavesTheClipOfThePainter()
{
    const Curve curve(zigzag(400));
    const QRectF clip(10.0, 0.0, 500.0, 500.0);
    const Prepare prepare = [&](QPainter& painter) { painter.setClipRect(clip); };
    RecordingDevice device;
    QVERIFY(draws(device, prepare, pen(1.0), [&](QPainter& painter) {
        return CurvePainter::draw(painter, curve.stretch(), area, Shape::Straight);
    }));
    QVERIFY(draws(device, prepare, pen(1.0),
        [&](QPainter& painter) { return CurvePainter::drawSticks(painter, curve.stretch(), area, 0.0); }));
    QVERIFY(!device.clips.isEmpty());
    for (const QRectF& used : device.clips)
        QCOMPARE(used, clip);
}

void tst_CurveStrokes::sticksStandOnTheirBaseline()
{
    const Curve curve({{10.0, 12.0}, {11.0, 3.0}});
    RecordingDevice device;
    QVERIFY(draws(device, hard, pen(1.0),
        [&](QPainter& painter) { return CurvePainter::drawSticks(painter, curve.stretch(), area, 5.0); }));
    const QVector<QRectF> expected{QRectF(10.0, 5.0, 1.0, 8.0), QRectF(11.0, 3.0, 1.0, 3.0)};
    QCOMPARE(bounds(device), expected);
}

PLOT2D_TEST_MAIN(tst_CurveStrokes)
#include "tst_curvestrokes.moc"
