#include "recordedcurves.h"

#include "support/testmain.h"

#include <plot2d/curvepainter_p.h>

#include <QTest>

#include <qwt_painter.h>
#include <qwt_transform.h>

using namespace RecordedCurves;

namespace {

using CurveFolding::Shape;

/// By its window, as devices with more pixels to a unit do it: Qwt rounds to whole units then, as it does not
/// where a painter is scaled by itself.
Prepare scaledBy(double across, double upright)
{
    return [=](QPainter& painter) {
        constexpr double size = 1000.0;
        painter.setViewport(0, 0, int(size), int(size));
        painter.setWindow(0, 0, int(size / across), int(size / upright));
    };
}

QString nameOf(const RecordingDevice& device)
{
    for (const FilledRectangle& filled : device.rectangles) {
        if (filled.color.alpha() < 255)
            return QStringLiteral("soft strokes");
    }
    return device.polylines.isEmpty() ? QStringLiteral("strokes") : QStringLiteral("polylines");
}

/// What was drawn by a call that has answered so.
QString outcome(const RecordingDevice& device, bool answer)
{
    if (!device.isEmpty())
        return answer ? nameOf(device) : QStringLiteral("drawn, and left to the caller");
    return answer ? QStringLiteral("not drawn, nor left to the caller") : QStringLiteral("nothing");
}

QString drawn(const QPen& used, int samples, const Prepare& prepare, Shape shape = Shape::Straight)
{
    const Curve curve(zigzag(samples));
    RecordingDevice device;
    const bool answer = draws(device, prepare, used,
        [&](QPainter& painter) { return CurvePainter::draw(painter, curve.stretch(), area, shape); });
    return outcome(device, answer);
}

}

Q_DECLARE_METATYPE(RecordedCurves::Prepare)
Q_DECLARE_METATYPE(CurveFolding::Shape)

/// Which curves are drawn, by what, and which are left to the caller: with pens and on painters of all kinds.
class tst_CurvePainter : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pensDecide_data();
    void pensDecide();
    void paintersDecide_data();
    void paintersDecide();
    void cosmeticPensAreNotScaled();
    void shapesDecide_data();
    void shapesDecide();
    void farSamplesAreLeft_data();
    void farSamplesAreLeft();
    void otherEnginesAreLeft();
    void logarithmsAreLeft();
    void samplesToAColumn_data();
    void samplesToAColumn();
    void sticksOfAPen_data();
    void sticksOfAPen();
    void sticksOnOtherPainters_data();
    void sticksOnOtherPainters();
};

void tst_CurvePainter::pensDecide_data()
{
    QTest::addColumn<QPen>("used");
    QTest::addColumn<QString>("hardThroughFew");
    QTest::addColumn<QString>("hardThroughMany");
    QTest::addColumn<QString>("softThroughMany");

    const QString none = QStringLiteral("nothing");
    const QString strokes = QStringLiteral("strokes");
    const QString soft = QStringLiteral("soft strokes");
    const QString lines = QStringLiteral("polylines");
    const auto row = [](const char* name, const QPen& used, const QString& few, const QString& many,
                         const QString& softly) { QTest::newRow(name) << used << few << many << softly; };

    row("one pixel", pen(1.0), strokes, strokes, soft);
    row("one pixel, round", pen(1.0, Qt::RoundCap), strokes, strokes, soft);
    row("no width", pen(0.0), strokes, strokes, soft);
    row("one pixel without a cap", pen(1.0, Qt::FlatCap), none, lines, lines);
    row("no width, no cap", pen(0.0, Qt::FlatCap), none, lines, lines);
    row("less than a pixel", pen(0.5), none, none, none);
    row("nearly a pixel", pen(0.99), none, none, none);
    row("two", pen(2.0), none, strokes, lines);
    row("two, round", pen(2.0, Qt::RoundCap), none, lines, lines);
    row("two without a cap", pen(2.0, Qt::FlatCap), none, lines, lines);
    row("three", pen(3.0), none, lines, lines);
    row("three, round", pen(3.0, Qt::RoundCap), none, lines, lines);
    row("two and a half", pen(2.5), none, lines, lines);
    row("one and a half", pen(1.5), none, lines, lines);
    row("four", pen(4.0), none, strokes, lines);
    row("eight", pen(8.0), none, strokes, lines);
    row("ten", pen(10.0), none, lines, lines);
    row("one, mitred", pen(1.0, Qt::SquareCap, Qt::MiterJoin), strokes, strokes, none);
    row("two, mitred", pen(2.0, Qt::SquareCap, Qt::MiterJoin), none, none, none);
    row("two, mitred as in SVG", pen(2.0, Qt::SquareCap, Qt::SvgMiterJoin), none, none, none);
    row("three, mitred as in SVG", pen(3.0, Qt::SquareCap, Qt::SvgMiterJoin), none, none, none);

    QPen cosmetic = pen(2.0);
    cosmetic.setCosmetic(true);
    row("two, cosmetic", cosmetic, none, lines, lines);
    row("none", QPen(Qt::NoPen), none, none, none);
    row("dashed", QPen(QBrush(Qt::blue), 1.0, Qt::DashLine), none, none, none);
    row("translucent", QPen(QColor(0, 0, 255, 254), 1.0), none, none, none);
    row("transparent", QPen(QColor(0, 0, 255, 0), 1.0), none, none, none);
    row("gradual", QPen(QBrush(QLinearGradient(0.0, 0.0, 9.0, 9.0)), 1.0), none, none, none);
    row("of a pattern", QPen(QBrush(Qt::blue, Qt::Dense4Pattern), 1.0), none, none, none);
}

void tst_CurvePainter::pensDecide()
{
    QFETCH(QPen, used);
    QTEST(drawn(used, 50, hard), "hardThroughFew");
    QTEST(drawn(used, 400, hard), "hardThroughMany");
    QTEST(drawn(used, 400, soft), "softThroughMany");
    QCOMPARE(drawn(used, 50, soft), QStringLiteral("nothing"));
}

void tst_CurvePainter::paintersDecide_data()
{
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<QString>("throughFew");
    QTest::addColumn<QString>("throughMany");
    QTest::addColumn<QString>("wideThroughMany");

    const QString none = QStringLiteral("nothing");
    const QString strokes = QStringLiteral("strokes");
    const QString lines = QStringLiteral("polylines");
    const auto row = [](const char* name, const Prepare& prepare, const QString& few, const QString& many,
                         const QString& wide) { QTest::newRow(name) << prepare << few << many << wide; };

    row("plain", hard, strokes, strokes, strokes);
    row(
        "translucent", [](QPainter& painter) { painter.setOpacity(0.99); }, none, none, none);
    row(
        "mode of its own",
        [](QPainter& painter) { painter.setCompositionMode(QPainter::CompositionMode_Difference); }, none,
        none, none);
    row(
        "moved by pixels", [](QPainter& painter) { painter.translate(3.0, -2.0); }, strokes, strokes,
        strokes);
    row(
        "moved to the right by a part", [](QPainter& painter) { painter.translate(0.5, 0.0); }, none, lines,
        lines);
    row(
        "moved down by a part", [](QPainter& painter) { painter.translate(0.0, 0.5); }, none, lines, lines);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    row(
        "as Qt 4", [](QPainter& painter) { painter.setRenderHint(QPainter::Qt4CompatiblePainting); }, none,
        lines, lines);
#endif
    row(
        "scaled by itself", [](QPainter& painter) { painter.scale(2.0, 2.0); }, none, none, none);
    row("scaled", scaledBy(2.0, 2.0), none, lines, lines);
    row("scaled down", scaledBy(0.5, 0.5), none, none, lines);
    row("scaled down across", scaledBy(0.5, 2.0), none, none, lines);
    row("scaled down upright", scaledBy(2.0, 0.5), none, none, lines);
    row("scaled down by far", scaledBy(0.4, 0.4), none, none, none);
    row("mirrored", scaledBy(-1.0, -1.0), none, lines, lines);
    row(
        "sheared", [](QPainter& painter) { painter.shear(0.2, 0.0); }, none, none, none);
    row(
        "turned", [](QPainter& painter) { painter.rotate(30.0); }, none, none, none);
}

void tst_CurvePainter::paintersDecide()
{
    QFETCH(Prepare, prepare);
    QTEST(drawn(pen(1.0), 50, prepare), "throughFew");
    QTEST(drawn(pen(1.0), 400, prepare), "throughMany");
    QTEST(drawn(pen(2.0), 400, prepare), "wideThroughMany");
}

void tst_CurvePainter::cosmeticPensAreNotScaled()
{
    const Prepare half = scaledBy(0.5, 0.5);
    for (const double width : {0.5, 1.0, 2.0}) {
        QPen cosmetic = pen(width);
        cosmetic.setCosmetic(true);
        QCOMPARE(drawn(cosmetic, 400, half),
            width < 1.0 ? QStringLiteral("nothing") : QStringLiteral("polylines"));
    }
    QCOMPARE(drawn(pen(0.0), 400, half), QStringLiteral("polylines"));
}

void tst_CurvePainter::shapesDecide_data()
{
    QTest::addColumn<Shape>("shape");
    QTest::addColumn<bool>("isStraight");
    QTest::newRow("straight") << Shape::Straight << true;
    QTest::newRow("horizontal first") << Shape::HorizontalFirst << false;
    QTest::newRow("vertical first") << Shape::VerticalFirst << false;
}

void tst_CurvePainter::shapesDecide()
{
    QFETCH(Shape, shape);
    QFETCH(bool, isStraight);
    const auto onlyStraight
        = [&](const char* name) { return isStraight ? QString(name) : QStringLiteral("nothing"); };
    QCOMPARE(drawn(pen(1.0), 50, hard, shape), QStringLiteral("strokes"));
    QCOMPARE(drawn(pen(1.0), 400, hard, shape), QStringLiteral("strokes"));
    QCOMPARE(drawn(pen(2.0), 400, hard, shape), onlyStraight("strokes"));
    QCOMPARE(drawn(pen(3.0), 400, hard, shape), onlyStraight("polylines"));
    QCOMPARE(drawn(pen(1.0), 400, soft, shape), onlyStraight("soft strokes"));
    QCOMPARE(drawn(pen(2.0), 400, soft, shape), onlyStraight("polylines"));
}

void tst_CurvePainter::farSamplesAreLeft_data()
{
    QTest::addColumn<QPen>("used");
    QTest::addColumn<bool>("isSoft");
    QTest::newRow("strokes") << pen(1.0) << false;
    QTest::newRow("soft strokes") << pen(1.0) << true;
    QTest::newRow("polylines") << pen(3.0) << false;
}

void tst_CurvePainter::farSamplesAreLeft()
{
    QFETCH(QPen, used);
    QFETCH(bool, isSoft);
    for (const bool isFar : {false, true}) {
        const Curve curve(zigzag(400, 10.0, isFar ? 1e15 : 20.0));
        RecordingDevice device;
        const bool answer = draws(device, isSoft ? soft : hard, used, [&](QPainter& painter) {
            return CurvePainter::draw(painter, curve.stretch(), area, Shape::Straight);
        });
        QCOMPARE(answer, !isFar);
        QCOMPARE(device.isEmpty(), isFar);
    }
}

void tst_CurvePainter::otherEnginesAreLeft()
{
    const Curve curve(zigzag(50));
    const auto draw = [&](QPainter& painter) {
        return CurvePainter::draw(painter, curve.stretch(), area, Shape::Straight);
    };
    RecordingDevice other(QPaintEngine::User);
    QVERIFY(!draws(other, hard, pen(1.0), draw));
    QVERIFY(other.isEmpty());

    RecordingDevice device;
    const bool isRounding = QwtPainter::roundingAlignment();
    QwtPainter::setRoundingAlignment(false);
    const bool answer = draws(device, hard, pen(1.0), draw);
    QwtPainter::setRoundingAlignment(isRounding);
    QVERIFY(!answer);
    QVERIFY(device.isEmpty());
    QVERIFY(draws(device, hard, pen(1.0), draw));
}

void tst_CurvePainter::logarithmsAreLeft()
{
    const Curve curve(zigzag(50));
    for (const bool onX : {true, false}) {
        CurveFolding::Stretch stretch = curve.stretch();
        QwtScaleMap& map = onX ? stretch.xMap : stretch.yMap;
        map.setTransformation(new QwtLogTransform);
        map.setScaleInterval(1.0, 1000.0);
        RecordingDevice device;
        const auto draw
            = [&](QPainter& painter) { return CurvePainter::draw(painter, stretch, area, Shape::Straight); };
        const auto drawSticks
            = [&](QPainter& painter) { return CurvePainter::drawSticks(painter, stretch, area, 1.0); };
        QVERIFY(!draws(device, hard, pen(1.0), draw));
        QVERIFY(!draws(device, hard, pen(1.0), drawSticks));
        QVERIFY(device.isEmpty());
    }
}

void tst_CurvePainter::samplesToAColumn_data()
{
    QTest::addColumn<int>("samples");
    QTest::addColumn<int>("begin");
    QTest::addColumn<QString>("expected");
    QTest::newRow("two") << 200 << 0 << QStringLiteral("polylines");
    QTest::newRow("nearly two") << 199 << 0 << QStringLiteral("nothing");
    QTest::newRow("a part of more") << 300 << 101 << QStringLiteral("nothing");
    QTest::newRow("a larger part of more") << 300 << 100 << QStringLiteral("polylines");
}

void tst_CurvePainter::samplesToAColumn()
{
    QFETCH(int, samples);
    QFETCH(int, begin);
    const Curve curve(zigzag(samples));
    RecordingDevice device;
    const bool answer = draws(device, hard, pen(3.0), [&](QPainter& painter) {
        return CurvePainter::draw(painter, curve.stretch(begin), area, Shape::Straight);
    });
    QTEST(outcome(device, answer), "expected");
}

void tst_CurvePainter::sticksOfAPen_data()
{
    QTest::addColumn<QPen>("used");
    QTest::addColumn<bool>("areDrawn");
    QTest::newRow("one") << pen(1.0) << true;
    QTest::newRow("no width") << pen(0.0) << true;
    QTest::newRow("two") << pen(2.0) << true;
    QTest::newRow("eight") << pen(8.0) << true;
    QTest::newRow("one without a cap") << pen(1.0, Qt::FlatCap) << false;
    QTest::newRow("two without a cap") << pen(2.0, Qt::FlatCap) << false;
    QTest::newRow("three") << pen(3.0) << false;
    QTest::newRow("ten") << pen(10.0) << false;
    QTest::newRow("dashed") << QPen(QBrush(Qt::blue), 1.0, Qt::DashLine) << false;
    QTest::newRow("less than a pixel") << pen(0.5) << false;
}

void tst_CurvePainter::sticksOfAPen()
{
    QFETCH(QPen, used);
    QFETCH(bool, areDrawn);
    const Curve curve(zigzag(20));
    RecordingDevice device;
    const bool answer = draws(device, hard, used,
        [&](QPainter& painter) { return CurvePainter::drawSticks(painter, curve.stretch(), area, 5.0); });
    QCOMPARE(answer, areDrawn);
    QCOMPARE(device.rectangles.size(), areDrawn ? 20 : 0);
}

void tst_CurvePainter::sticksOnOtherPainters_data()
{
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<bool>("areDrawn");
    QTest::newRow("plain") << Prepare(hard) << true;
    QTest::newRow("moved") << Prepare([](QPainter& painter) { painter.translate(5.0, 5.0); }) << true;
    QTest::newRow("moved by a part") << Prepare([](QPainter& painter) { painter.translate(0.5, 0.0); })
                                     << false;
    QTest::newRow("scaled") << Prepare([](QPainter& painter) { painter.scale(2.0, 2.0); }) << false;
    QTest::newRow("translucent") << Prepare([](QPainter& painter) { painter.setOpacity(0.5); }) << false;
    QTest::newRow("soft and clipped") << Prepare([](QPainter& painter) {
        soft(painter);
        painter.setClipRect(area);
    }) << true;
}

void tst_CurvePainter::sticksOnOtherPainters()
{
    QFETCH(Prepare, prepare);
    QFETCH(bool, areDrawn);
    const Curve curve(zigzag(20));
    RecordingDevice device;
    const bool answer = draws(device, prepare, pen(1.0),
        [&](QPainter& painter) { return CurvePainter::drawSticks(painter, curve.stretch(), area, 5.0); });
    QCOMPARE(answer, areDrawn);
    QCOMPARE(device.isEmpty(), !areDrawn);
}

PLOT2D_TEST_MAIN(tst_CurvePainter)
#include "tst_curvepainter.moc"
