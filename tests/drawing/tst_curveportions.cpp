#include "recordedcurves.h"

#include "support/qtversions.h"
#include "support/testmain.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <QPainterPath>
#include <QTest>

#include <qwt_symbol.h>
#include <qwt_transform.h>

#include <limits>
#include <utility>

using RecordedCurves::pen;

namespace {

using Dress = std::function<void(PriceBased2dPlotCurve&)>;
using Portion = std::pair<int, int>;

/// Tells which samples it has Qwt draw.
class PortionedCurve : public PriceBased2dPlotCurve {
public:
    PortionedCurve()
        : PriceBased2dPlotCurve(nullptr, QStringLiteral("curve"))
    {
    }
    mutable Portion drawn{-1, -1};

protected:
    void drawCurve(QPainter* painter, int style, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
        const QRectF& canvas, int from, int to) const override
    {
        drawn = {from, to};
        PriceBased2dPlotCurve::drawCurve(painter, style, xMap, yMap, canvas, from, to);
    }
};

QwtScaleMap pixels()
{
    QwtScaleMap map;
    map.setScaleInterval(0.0, 1000.0);
    map.setPaintInterval(0.0, 1000.0);
    return map;
}

/// One sample for each column from 0.
QVector<QPointF> samplesOfColumns(int count)
{
    QVector<QPointF> samples;
    for (int x = 0; x < count; ++x)
        samples.append(QPointF(x, x % 2 == 0 ? 10.0 : 20.0));
    return samples;
}

Dress withPen(double width)
{
    return [width](PriceBased2dPlotCurve& curve) { curve.setPen(pen(width)); };
}

Dress withStyle(QwtPlotCurve::CurveStyle style, Qt::Orientation orientation = Qt::Vertical,
    const QBrush& brush = Qt::NoBrush)
{
    return [=](PriceBased2dPlotCurve& curve) {
        curve.setStyle(style);
        curve.setOrientation(orientation);
        curve.setBrush(brush);
    };
}

/// With a symbol of a rectangle beside its sample.
Dress withSymbol(const QRectF& rectangle)
{
    return [rectangle](PriceBased2dPlotCurve& curve) {
        QPainterPath path;
        path.addRect(rectangle);
        auto* const symbol = new QwtSymbol(QwtSymbol::Path);
        symbol->setPath(path);
        symbol->setPinPoint(QPointF(0.0, 0.0));
        symbol->setPen(QPen(Qt::NoPen));
        curve.setStyle(QwtPlotCurve::NoCurve);
        curve.setSymbol(symbol);
    };
}

void draw(const PriceBased2dPlotCurve& curve, RecordingDevice& device, const QRectF& canvas, Portion portion)
{
    QPainter painter(&device);
    curve.drawSeries(&painter, pixels(), pixels(), canvas, portion.first, portion.second);
}

}

Q_DECLARE_METATYPE(Dress)
Q_DECLARE_METATYPE(Portion)
Q_DECLARE_METATYPE(QwtPlotCurve::CurveStyle)

/// Which samples of a curve are drawn, and which of its lines the library draws itself.
class tst_CurvePortions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void seenSamples_data();
    void seenSamples();
    void seenFromAfar_data();
    void seenFromAfar();
    void seenSamplesOfStyles_data();
    void seenSamplesOfStyles();
    void logarithms();
    void portionsOfSymbols_data();
    void portionsOfSymbols();
    void noMoreThanAskedFor_data();
    void noMoreThanAskedFor();
    void foldsWhatIsPlain_data();
    void foldsWhatIsPlain();
    void cornersOfSteps_data();
    void cornersOfSteps();
};

void tst_CurvePortions::seenSamples_data()
{
    QTest::addColumn<QRectF>("canvas");
    QTest::addColumn<Portion>("asked");
    QTest::addColumn<Portion>("expected");

    // Two pixels more than the pen is wide, and the next sample.
    const QRectF middle(40.0, 0.0, 20.0, 50.0);
    QTest::newRow("all") << middle << Portion(0, -1) << Portion(36, 64);
    QTest::newRow("all, by number") << middle << Portion(0, 99) << Portion(36, 64);
    QTest::newRow("without the first") << middle << Portion(1, 99) << Portion(36, 64);
    QTest::newRow("from the middle") << middle << Portion(50, -1) << Portion(50, 64);
    QTest::newRow("to the middle") << middle << Portion(0, 50) << Portion(36, 50);
    QTest::newRow("the first alone") << middle << Portion(0, 0) << Portion(0, 0);
    // What is no portion is for Qwt to make one of.
    QTest::newRow("from before the first") << middle << Portion(-1, 99) << Portion(0, 99);
    QTest::newRow("behind the last") << middle << Portion(0, 100) << Portion(0, 99);
    QTest::newRow("far behind the last") << middle << Portion(0, 200) << Portion(0, 99);
    QTest::newRow("backwards") << middle << Portion(50, 20) << Portion(20, 50);
    QTest::newRow("at the end") << QRectF(80.0, 0.0, 30.0, 50.0) << Portion(0, -1) << Portion(76, 99);
    QTest::newRow("at the beginning") << QRectF(-5.0, 0.0, 20.0, 50.0) << Portion(0, -1) << Portion(0, 19);
}

void tst_CurvePortions::seenSamples()
{
    QFETCH(QRectF, canvas);
    QFETCH(Portion, asked);
    QFETCH(Portion, expected);
    PortionedCurve curve;
    curve.setPen(pen(1.0));
    curve.setSamples(samplesOfColumns(100));
    RecordingDevice device;
    draw(curve, device, canvas, asked);
    QCOMPARE(curve.drawn, expected);
}

void tst_CurvePortions::seenFromAfar_data()
{
    QTest::addColumn<Dress>("dress");
    for (const double width : {1e3, 2147483000.0, 1e300, std::numeric_limits<double>::infinity()})
        QTest::addRow("pen of %g", width) << withPen(width);
    QTest::newRow("symbol as wide as integers reach") << Dress([](PriceBased2dPlotCurve& curve) {
        curve.setStyle(QwtPlotCurve::NoCurve);
        auto* const symbol
            = new QwtSymbol(QwtSymbol::Rect, Qt::NoBrush, QPen(Qt::NoPen), QSize(2147483600, 5));
        symbol->setCachePolicy(QwtSymbol::NoCache);
        curve.setSymbol(symbol);
    });
}

// What reaches further than the canvas is wide is seen of all samples.
void tst_CurvePortions::seenFromAfar()
{
    QFETCH(Dress, dress);
    PortionedCurve curve;
    curve.setSamples(samplesOfColumns(100));
    dress(curve);
    RecordingDevice device;
    draw(curve, device, QRectF(40.0, 0.0, 20.0, 50.0), Portion(0, -1));
    QCOMPARE(curve.drawn, Portion(0, 99));
}

void tst_CurvePortions::seenSamplesOfStyles_data()
{
    QTest::addColumn<Dress>("dress");
    QTest::addColumn<Portion>("expected");

    const Portion seen(36, 64);
    const Portion all(0, 99);
    const QBrush green(Qt::green);
    const QBrush transparent(QColor(0, 255, 0, 0));
    QTest::newRow("lines") << withStyle(QwtPlotCurve::Lines) << seen;
    QTest::newRow("lines, filled") << withStyle(QwtPlotCurve::Lines, Qt::Vertical, green) << seen;
    QTest::newRow("lines across") << withStyle(QwtPlotCurve::Lines, Qt::Horizontal) << seen;
    QTest::newRow("lines across, filled") << withStyle(QwtPlotCurve::Lines, Qt::Horizontal, green) << all;
    QTest::newRow("lines across, with nothing seen")
        << withStyle(QwtPlotCurve::Lines, Qt::Horizontal, transparent) << seen;
    QTest::newRow("steps") << withStyle(QwtPlotCurve::Steps) << seen;
    QTest::newRow("steps across, filled") << withStyle(QwtPlotCurve::Steps, Qt::Horizontal, green) << all;
    QTest::newRow("sticks") << withStyle(QwtPlotCurve::Sticks) << seen;
    QTest::newRow("sticks across") << withStyle(QwtPlotCurve::Sticks, Qt::Horizontal) << all;
    QTest::newRow("dots") << withStyle(QwtPlotCurve::Dots) << seen;
    QTest::newRow("dots across") << withStyle(QwtPlotCurve::Dots, Qt::Horizontal) << seen;
    QTest::newRow("dots across, filled") << withStyle(QwtPlotCurve::Dots, Qt::Horizontal, green) << all;
    QTest::newRow("no curve") << withStyle(QwtPlotCurve::NoCurve) << seen;
    QTest::newRow("own style") << withStyle(QwtPlotCurve::UserCurve) << all;
    QTest::newRow("not clipped") << Dress([](PriceBased2dPlotCurve& curve) {
        curve.setPaintAttribute(QwtPlotCurve::ClipPolygons, false);
    }) << all;
    QTest::newRow("no width") << withPen(0.0) << Portion(37, 63);
    QTest::newRow("wide") << withPen(10.0) << Portion(27, 73);
    QTest::newRow("two and a half wide") << withPen(2.5) << Portion(34, 66);
}

void tst_CurvePortions::seenSamplesOfStyles()
{
    QFETCH(Dress, dress);
    PortionedCurve curve;
    curve.setPen(pen(1.0));
    dress(curve);
    curve.setSamples(samplesOfColumns(100));
    RecordingDevice device;
    draw(curve, device, QRectF(40.0, 0.0, 20.0, 50.0), {0, -1});
    QTEST(curve.drawn, "expected");
}

void tst_CurvePortions::logarithms()
{
    PortionedCurve curve;
    curve.setPen(pen(1.0));
    QVector<QPointF> samples = samplesOfColumns(100);
    samples.removeFirst();
    curve.setSamples(samples);
    for (const bool onX : {true, false}) {
        QwtScaleMap logarithmic = pixels();
        logarithmic.setTransformation(new QwtLogTransform);
        logarithmic.setScaleInterval(1.0, 1000.0);
        RecordingDevice device;
        QPainter painter(&device);
        curve.drawSeries(&painter, onX ? logarithmic : pixels(), onX ? pixels() : logarithmic,
            QRectF(40.0, 0.0, 20.0, 50.0), 0, -1);
        QCOMPARE(curve.drawn, onX ? Portion(0, 98) : Portion(35, 63));
    }
}

void tst_CurvePortions::portionsOfSymbols_data()
{
    QTest::addColumn<QRectF>("symbol");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("expected");

    // The canvas begins at 1540; Qwt draws five hundred symbols at a time.
    const QRectF small(-3.0, -3.0, 6.0, 6.0);
    QTest::newRow("from the first") << small << 0 << 1500;
    QTest::newRow("from the third") << small << 3 << 1503;
    QTest::newRow("from near") << small << 1040 << 1040;
    QTest::newRow("reaching out to the left") << QRectF(-60.0, -3.0, 6.0, 6.0) << 0 << 1000;
    QTest::newRow("reaching out to the right") << QRectF(54.0, -3.0, 6.0, 6.0) << 0 << 1000;
    QTest::newRow("wide") << QRectF(-30.0, -3.0, 60.0, 6.0) << 0 << 1000;
    QTest::newRow("high") << QRectF(-3.0, -30.0, 6.0, 60.0) << 0 << 1000;
}

void tst_CurvePortions::portionsOfSymbols()
{
    QFETCH(QRectF, symbol);
    QFETCH(int, from);
    PortionedCurve curve;
    withSymbol(symbol)(curve);
    curve.setSamples(samplesOfColumns(2000));
    RecordingDevice device;
    draw(curve, device, QRectF(1540.0, 0.0, 100.0, 50.0), {from, -1});
    QTEST(curve.drawn.first, "expected");
}

void tst_CurvePortions::noMoreThanAskedFor_data()
{
    QTest::addColumn<Dress>("dress");
    const QBrush green(Qt::green);
    for (const auto style :
        {QwtPlotCurve::Lines, QwtPlotCurve::Steps, QwtPlotCurve::Sticks, QwtPlotCurve::Dots}) {
        QTest::addRow("style %d", style) << withStyle(style);
        QTest::addRow("style %d, filled", style) << withStyle(style, Qt::Vertical, green);
        QTest::addRow("style %d, dashed", style) << Dress([style](PriceBased2dPlotCurve& curve) {
            curve.setStyle(style);
            curve.setPen(QPen(QBrush(Qt::blue), 1.0, Qt::DashLine));
        });
    }
    QTest::newRow("symbols") << Dress([](PriceBased2dPlotCurve& curve) {
        curve.setStyle(QwtPlotCurve::NoCurve);
        curve.setSymbol(new QwtSymbol(QwtSymbol::Rect, Qt::red, Qt::NoPen, QSize(1, 1)));
    });
}

void tst_CurvePortions::noMoreThanAskedFor()
{
    QFETCH(Dress, dress);
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
    curve.setPen(pen(1.0));
    dress(curve);
    // Far enough apart for the pixels around a sample.
    constexpr double distance = 10.0;
    QVector<QPointF> samples = samplesOfColumns(100);
    for (QPointF& sample : samples)
        sample.rx() *= distance;
    curve.setSamples(samples);
    RecordingDevice device;
    draw(curve, device, QRectF(0.0, 0.0, 1000.0, 50.0), {20, 30});
    QVERIFY(!device.isEmpty());
    const QRectF reached = device.reached();
    QVERIFY2(195.0 < reached.left() && reached.left() < 205.0, qPrintable(QString::number(reached.left())));
    QVERIFY2(
        295.0 < reached.right() && reached.right() < 305.0, qPrintable(QString::number(reached.right())));
}

void tst_CurvePortions::foldsWhatIsPlain_data()
{
    QTest::addColumn<Dress>("dress");
    QTest::addColumn<bool>("isFolded");

    const QBrush green(Qt::green);
    for (const auto style : {QwtPlotCurve::Lines, QwtPlotCurve::Steps}) {
        QTest::addRow("style %d", style) << withStyle(style) << true;
        QTest::addRow("style %d across", style) << withStyle(style, Qt::Horizontal) << true;
        QTest::addRow("style %d, filled", style) << withStyle(style, Qt::Vertical, green) << false;
        QTest::addRow("style %d, with nothing seen", style)
            << withStyle(style, Qt::Vertical, QColor(0, 255, 0, 0)) << true;
        QTest::addRow("style %d, with next to nothing", style)
            << withStyle(style, Qt::Vertical, QColor(0, 255, 0, 1)) << false;
        QTest::addRow("style %d, without a brush's pattern", style)
            << withStyle(style, Qt::Vertical, QBrush(Qt::green, Qt::NoBrush)) << true;
    }
    QTest::newRow("sticks") << withStyle(QwtPlotCurve::Sticks) << true;
    QTest::newRow("sticks across") << withStyle(QwtPlotCurve::Sticks, Qt::Horizontal) << false;
    QTest::newRow("fitted") << Dress([](PriceBased2dPlotCurve& curve) {
        curve.setCurveAttribute(QwtPlotCurve::Fitted);
    }) << false;
    QTest::newRow("fitted by nothing") << Dress([](PriceBased2dPlotCurve& curve) {
        curve.setCurveAttribute(QwtPlotCurve::Fitted);
        curve.setCurveFitter(nullptr);
    }) << true;
    QTest::newRow("with a fitter that is not used")
        << Dress([](PriceBased2dPlotCurve& curve) { curve.setCurveFitter(new QwtSplineCurveFitter); })
        << true;
}

void tst_CurvePortions::foldsWhatIsPlain()
{
    QFETCH(Dress, dress);
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
    curve.setPen(pen(1.0));
    dress(curve);
    curve.setSamples(RecordedCurves::zigzag(400));
    RecordingDevice device;
    draw(curve, device, RecordedCurves::area, {0, -1});
    // Qwt makes lines of all samples; what is folded are rectangles.
    QTEST(!device.rectangles.isEmpty(), "isFolded");
}

void tst_CurvePortions::cornersOfSteps_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<bool>("isInverted");
    QTest::addColumn<double>("row");
    QTest::newRow("upright") << Qt::Vertical << false << 20.0;
    QTest::newRow("upright, inverted") << Qt::Vertical << true << 10.0;
    QTest::newRow("across") << Qt::Horizontal << false << 10.0;
    QTest::newRow("across, inverted") << Qt::Horizontal << true << 20.0;
}

void tst_CurvePortions::cornersOfSteps()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(bool, isInverted);
    QFETCH(double, row);
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
    curve.setPen(pen(1.0));
    withStyle(QwtPlotCurve::Steps, orientation)(curve);
    curve.setCurveAttribute(QwtPlotCurve::Inverted, isInverted);
    curve.setSamples({{10.0, 10.0}, {40.0, 20.0}});
    RecordingDevice device;
    draw(curve, device, RecordedCurves::area, {0, -1});
    QCOMPARE(device.lines, QVector<QLineF>{QLineF(10.0, row, 40.0, row)});
}

PLOT2D_TEST_MAIN(tst_CurvePortions)
#include "tst_curveportions.moc"
