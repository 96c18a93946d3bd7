#include "pictures.h"
#include "randomcurves.h"

#include "support/testmain.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <QPainter>
#include <QPicture>
#include <QTest>

#include <qwt_curve_fitter.h>
#include <qwt_painter.h>
#include <qwt_point_data.h>
#include <qwt_symbol.h>
#include <qwt_transform.h>

#include <functional>

namespace {

using Dress = std::function<void(PriceBased2dPlotCurve&)>;
using Prepare = std::function<void(QPainter&)>;
using Order = RandomCurves::Order;
using Pictures::View;

/// A series whose class the library does not know, so that Qwt draws it.
class HostSeries : public QwtPointSeriesData {
public:
    using QwtPointSeriesData::QwtPointSeriesData;
};

/// What a test draws, by the library or by Qwt.
struct Drawing {
    View view;
    QVector<QPointF> samples;
    Dress dress = [](PriceBased2dPlotCurve&) {};
    Prepare prepare = [](QPainter&) {};
    int from = 0;
    int to = -1;

    QImage of(QwtSeriesData<QPointF>* series) const
    {
        PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
        curve.setPen(QPen(Qt::blue, 1.0));
        dress(curve);
        curve.setSamples(series);
        return Pictures::drawn(view, [&](QPainter& painter) {
            prepare(painter);
            curve.drawSeries(&painter, view.xMap, view.yMap, view.canvas, from, to);
        });
    }
    double difference() const
    {
        return Pictures::meanDifference(of(new QwtPointSeriesData(samples)), of(new HostSeries(samples)));
    }
};

Drawing randomDrawing(RandomCurves& random, int samples)
{
    Drawing drawing;
    drawing.samples = random.samples(samples, Order::Ascending, false);
    drawing.view = Pictures::randomView(random);
    drawing.view.xMap.setScaleInterval(10.0, 90.0);
    return drawing;
}

QPen bluePen(double width, Qt::PenCapStyle cap, Qt::PenJoinStyle join = Qt::BevelJoin)
{
    return QPen(Qt::blue, width, Qt::SolidLine, cap, join);
}

Dress withPen(const QPen& pen)
{
    return [pen](PriceBased2dPlotCurve& curve) { curve.setPen(pen); };
}

Dress filled(QwtPlotCurve::CurveStyle style, Qt::Orientation orientation, const QColor& color)
{
    return [=](PriceBased2dPlotCurve& curve) {
        curve.setStyle(style);
        curve.setOrientation(orientation);
        curve.setBrush(color);
    };
}

}

Q_DECLARE_METATYPE(Dress)
Q_DECLARE_METATYPE(Prepare)
Q_DECLARE_METATYPE(QwtPlotCurve::CurveStyle)

/// Whatever the painter, the pen and the curve's options: a curve looks as Qwt draws it.
class tst_CurvePainting : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void equalsQwtOnAnyPainter_data();
    void equalsQwtOnAnyPainter();
    void equalsQwtWherePaintersThinLines();
    void equalsQwtWithAnyPen_data();
    void equalsQwtWithAnyPen();
    void equalsQwtInAnyStyle_data();
    void equalsQwtInAnyStyle();
    void equalsQwtOnLogarithmicScales_data();
    void equalsQwtOnLogarithmicScales();
    void equalsQwtForPartsOfTheSamples_data();
    void equalsQwtForPartsOfTheSamples();
    void leavesWhatIsTooFarAwayToQwt_data();
    void leavesWhatIsTooFarAwayToQwt();
    void recordsAsQwt();
};

void tst_CurvePainting::equalsQwtOnAnyPainter_data()
{
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<double>("mostDifference");

    QTest::newRow("translucent") << Prepare([](QPainter& painter) { painter.setOpacity(0.4); }) << 0.0;
    QTest::newRow("mode of its own") << Prepare([](QPainter& painter) {
        painter.setCompositionMode(QPainter::CompositionMode_Difference);
    }) << 0.0;
    // Qwt draws long lines piece by piece, from the first sample that is seen.
    QTest::newRow("sheared") << Prepare([](QPainter& painter) { painter.shear(0.2, 0.0); }) << 1.0;
    // Whole pixels are the same ones; Qwt's own lines are cut off at the canvas, which moves them by one.
    QTest::newRow("moved by pixels") << Prepare([](QPainter& painter) { painter.translate(3.0, -2.0); })
                                     << 3.0;
    QTest::newRow("moved to the right by a part")
        << Prepare([](QPainter& painter) { painter.translate(0.5, 0.0); }) << 0.0;
    QTest::newRow("moved down by a part")
        << Prepare([](QPainter& painter) { painter.translate(0.0, 0.5); }) << 0.0;
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QTest::newRow("as Qt 4") << Prepare([](QPainter& painter) {
        painter.setRenderHint(QPainter::Qt4CompatiblePainting);
    }) << 0.0;
#endif
}

void tst_CurvePainting::equalsQwtOnAnyPainter()
{
    QFETCH(Prepare, prepare);
    QFETCH(double, mostDifference);
    for (const QwtPlotCurve::CurveStyle style :
        {QwtPlotCurve::Lines, QwtPlotCurve::Steps, QwtPlotCurve::Sticks, QwtPlotCurve::Dots}) {
        RandomCurves random(60);
        for (int i = 0; i < 6; ++i) {
            Drawing drawing = randomDrawing(random, 40);
            drawing.prepare = prepare;
            drawing.dress = [style](PriceBased2dPlotCurve& curve) { curve.setStyle(style); };
            const double difference = drawing.difference();
            QVERIFY2(difference <= mostDifference,
                qPrintable(QStringLiteral("style %1, case %2: %3").arg(style).arg(i).arg(difference)));
        }
    }
}

void tst_CurvePainting::equalsQwtWherePaintersThinLines()
{
    // Pens of less than a pixel of the device are paler, the more so the fewer lines there are.
    for (const double width : {1.0, 1.5, 2.0}) {
        RandomCurves random(67);
        for (int i = 0; i < 4; ++i) {
            Drawing drawing = randomDrawing(random, 3000);
            drawing.dress = withPen(bluePen(width, Qt::SquareCap));
            drawing.prepare = [&drawing](QPainter& painter) {
                painter.setWindow(QRect(QPoint(0, 0), 2 * drawing.view.image));
            };
            const double difference = drawing.difference();
            QVERIFY2(difference <= (width < 2.0 ? 0.0 : 6.0), qPrintable(QString::number(difference)));
        }
    }
}

void tst_CurvePainting::equalsQwtWithAnyPen_data()
{
    QTest::addColumn<QPen>("pen");
    QTest::addColumn<bool>("soft");
    QTest::addColumn<double>("mostDifference");

    QPen cosmetic = bluePen(2.0, Qt::SquareCap);
    cosmetic.setCosmetic(true);
    QPen gradual(QBrush(QLinearGradient(0.0, 0.0, 100.0, 100.0)), 1.0);
    // Of 255, on canvases that are mostly covered by the line; without a difference where Qwt draws.
    for (const bool soft : {false, true}) {
        const auto row = [soft](const char* name, const QPen& pen, double mostDifference) {
            QTest::addRow("%s%s", name, soft ? ", soft" : "") << pen << soft << mostDifference;
        };
        row("flat cap", bluePen(1.0, Qt::FlatCap), 8.0);
        row("of no width", bluePen(0.0, Qt::SquareCap), 8.0);
        row("paler than a pixel", bluePen(0.5, Qt::SquareCap), 1.0);
        row("even, square", bluePen(4.0, Qt::SquareCap), 6.0);
        row("even, round", bluePen(4.0, Qt::RoundCap), 6.0);
        row("odd", bluePen(3.0, Qt::SquareCap), 6.0);
        row("between", bluePen(2.5, Qt::SquareCap), 6.0);
        row("very wide", bluePen(10.0, Qt::SquareCap), 6.0);
        row("cosmetic", cosmetic, 6.0);
        row("mitred", bluePen(2.0, Qt::SquareCap, Qt::MiterJoin), 0.0);
        row("mitred as in SVG", bluePen(2.0, Qt::SquareCap, Qt::SvgMiterJoin), 0.0);
        row("of a gradient", gradual, 0.0);
        row("none", QPen(Qt::NoPen), 0.0);
    }
}

void tst_CurvePainting::equalsQwtWithAnyPen()
{
    QFETCH(QPen, pen);
    QFETCH(bool, soft);
    QFETCH(double, mostDifference);
    RandomCurves random(61);
    double sum = 0.0;
    constexpr int cases = 4;
    for (int i = 0; i < cases; ++i) {
        Drawing drawing = randomDrawing(random, 3000);
        drawing.dress = withPen(pen);
        drawing.prepare = [soft](QPainter& painter) { painter.setRenderHint(QPainter::Antialiasing, soft); };
        sum += drawing.difference();
    }
    QVERIFY2(sum / cases <= mostDifference, qPrintable(QString::number(sum / cases)));
}

void tst_CurvePainting::equalsQwtInAnyStyle_data()
{
    QTest::addColumn<Dress>("dress");

    for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical}) {
        const char* const name = orientation == Qt::Horizontal ? "across" : "upright";
        QTest::addRow("filled lines, %s", name) << filled(QwtPlotCurve::Lines, orientation, Qt::green);
        QTest::addRow("filled steps, %s", name) << filled(QwtPlotCurve::Steps, orientation, Qt::green);
        QTest::addRow("filled dots, %s", name) << filled(QwtPlotCurve::Dots, orientation, Qt::green);
    }
    QTest::newRow("sticks across") << filled(QwtPlotCurve::Sticks, Qt::Horizontal, Qt::transparent);
    QTest::newRow("no curve") << filled(QwtPlotCurve::NoCurve, Qt::Vertical, Qt::green);
    QTest::newRow("a style of Qwt's users") << filled(QwtPlotCurve::UserCurve, Qt::Vertical, Qt::green);
    QTest::newRow("fitted") << Dress(
        [](PriceBased2dPlotCurve& curve) { curve.setCurveAttribute(QwtPlotCurve::Fitted); });
    QTest::newRow("filled and not clipped") << Dress([](PriceBased2dPlotCurve& curve) {
        curve.setBrush(Qt::green);
        curve.setPaintAttribute(QwtPlotCurve::ClipPolygons, false);
    });
    QTest::newRow("only symbols") << Dress([](PriceBased2dPlotCurve& curve) {
        curve.setStyle(QwtPlotCurve::NoCurve);
        curve.setSymbol(new QwtSymbol(QwtSymbol::Diamond, Qt::red, QPen(Qt::black), QSize(7, 9)));
    });
}

void tst_CurvePainting::equalsQwtInAnyStyle()
{
    QFETCH(Dress, dress);
    RandomCurves random(62);
    for (int i = 0; i < 6; ++i) {
        Drawing drawing = randomDrawing(random, 30);
        drawing.dress = dress;
        QCOMPARE(drawing.difference(), 0.0);
    }
}

void tst_CurvePainting::equalsQwtOnLogarithmicScales_data()
{
    QTest::addColumn<QwtPlotCurve::CurveStyle>("style");
    QTest::newRow("lines") << QwtPlotCurve::Lines;
    QTest::newRow("steps") << QwtPlotCurve::Steps;
    QTest::newRow("sticks") << QwtPlotCurve::Sticks;
    QTest::newRow("dots") << QwtPlotCurve::Dots;
}

void tst_CurvePainting::equalsQwtOnLogarithmicScales()
{
    QFETCH(QwtPlotCurve::CurveStyle, style);
    RandomCurves random(63);
    for (const bool onX : {true, false}) {
        Drawing drawing = randomDrawing(random, 50);
        QwtScaleMap& map = onX ? drawing.view.xMap : drawing.view.yMap;
        map.setTransformation(new QwtLogTransform);
        map.setScaleInterval(0.5, 200.0);
        drawing.dress = [style](PriceBased2dPlotCurve& curve) { curve.setStyle(style); };
        // A logarithm needs something to take it of.
        for (QPointF& sample : drawing.samples)
            sample = QPointF(1.0 + std::abs(sample.x()), 1.0 + 50.0 * std::abs(sample.y()));
        QCOMPARE(drawing.difference(), 0.0);
    }
}

void tst_CurvePainting::equalsQwtForPartsOfTheSamples_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::newRow("from the middle") << 20 << -1;
    QTest::newRow("a part") << 10 << 30;
    QTest::newRow("one") << 15 << 15;
    QTest::newRow("from before the first") << -5 << 30;
    QTest::newRow("from behind the last") << 60 << -1;
    QTest::newRow("backwards") << 30 << 10;
}

void tst_CurvePainting::equalsQwtForPartsOfTheSamples()
{
    QFETCH(int, from);
    QFETCH(int, to);
    for (const QwtPlotCurve::CurveStyle style :
        {QwtPlotCurve::Lines, QwtPlotCurve::Steps, QwtPlotCurve::Sticks, QwtPlotCurve::Dots}) {
        RandomCurves random(64);
        Drawing drawing = randomDrawing(random, 40);
        drawing.view.yMap.setScaleInterval(-1000.0, 1000.0);
        drawing.view.xMap.setScaleInterval(-10.0, 110.0);
        drawing.from = from;
        drawing.to = to;
        drawing.dress = [style](PriceBased2dPlotCurve& curve) { curve.setStyle(style); };
        QCOMPARE(drawing.difference(), 0.0);
    }
}

void tst_CurvePainting::leavesWhatIsTooFarAwayToQwt_data()
{
    QTest::addColumn<QPen>("pen");
    QTest::addColumn<bool>("soft");
    QTest::newRow("hard") << bluePen(1.0, Qt::SquareCap) << false;
    QTest::newRow("hard, wide") << bluePen(4.0, Qt::SquareCap) << false;
    QTest::newRow("soft") << bluePen(1.0, Qt::SquareCap) << true;
    QTest::newRow("soft, wide") << bluePen(3.0, Qt::RoundCap) << true;
}

void tst_CurvePainting::leavesWhatIsTooFarAwayToQwt()
{
    QFETCH(QPen, pen);
    QFETCH(bool, soft);
    RandomCurves random(66);
    Drawing drawing = randomDrawing(random, 3000);
    for (int i = 0; i < drawing.samples.size(); i += 100)
        drawing.samples[i].setY(i % 200 == 0 ? 1e15 : -1e15);
    drawing.dress = withPen(pen);
    drawing.prepare = [soft](QPainter& painter) { painter.setRenderHint(QPainter::Antialiasing, soft); };
    QCOMPARE(drawing.difference(), 0.0);
}

void tst_CurvePainting::recordsAsQwt()
{
    RandomCurves random(65);
    const Drawing drawing = randomDrawing(random, 300);
    const auto recorded = [&](QwtSeriesData<QPointF>* series) {
        PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
        curve.setPen(QPen(Qt::blue, 1.0));
        curve.setSamples(series);
        QPicture picture;
        QPainter painter(&picture);
        curve.drawSeries(&painter, drawing.view.xMap, drawing.view.yMap, drawing.view.canvas, 0, -1);
        painter.end();
        return QByteArray(picture.data(), static_cast<int>(picture.size()));
    };
    QVERIFY(recorded(new QwtPointSeriesData(drawing.samples)).size() > 100);
    const bool aligned = QwtPainter::roundingAlignment();
    QwtPainter::setRoundingAlignment(false);
    const QByteArray exact = recorded(new HostSeries(drawing.samples));
    const QByteArray ours = recorded(new QwtPointSeriesData(drawing.samples));
    const double onScreen = drawing.difference();
    QwtPainter::setRoundingAlignment(aligned);
    QVERIFY(ours.size() <= exact.size());
    QCOMPARE(onScreen, 0.0);
}

PLOT2D_TEST_MAIN(tst_CurvePainting)
#include "tst_curvepainting.moc"
