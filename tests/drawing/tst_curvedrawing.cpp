#include "pictures.h"
#include "plainanswers.h"
#include "randomcurves.h"

#include "support/testmain.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <QImage>
#include <QPainter>
#include <QTest>

#include <qwt_point_data.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace {

using Order = RandomCurves::Order;
using Pictures::View;

bool isFinite(const QPointF& point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

/// Calls draw(first, last) for the samples from one to the next, but not across what is not finite.
void forEachSegment(const QVector<QPointF>& samples, const std::function<void(int, int)>& draw)
{
    for (int i = 1; i < samples.size(); ++i) {
        if (isFinite(samples[i - 1]) && isFinite(samples[i]))
            draw(i - 1, i);
    }
}

QImage drawnBySegments(const View& view, const QVector<QPointF>& samples, const QwtPlotCurve& curve)
{
    const bool verticalFirst
        = curve.testCurveAttribute(QwtPlotCurve::Inverted) != (curve.orientation() == Qt::Vertical);
    return Pictures::drawn(view, [&](QPainter& painter) {
        painter.setPen(curve.pen());
        forEachSegment(samples, [&](int first, int last) {
            const QPoint from = view.pixel(samples[first]);
            const QPoint to = view.pixel(samples[last]);
            if (curve.style() == QwtPlotCurve::Lines) {
                painter.drawLine(from, to);
                return;
            }
            const QPoint corner = verticalFirst ? QPoint(from.x(), to.y()) : QPoint(to.x(), from.y());
            painter.drawLine(from, corner);
            painter.drawLine(corner, to);
        });
    });
}

QImage drawnByPoints(const View& view, const QVector<QPointF>& samples, const QwtPlotCurve& curve)
{
    return Pictures::drawn(view, [&](QPainter& painter) {
        painter.setPen(curve.pen());
        for (const QPointF& sample : samples) {
            if (!isFinite(sample))
                continue;
            const QPoint pixel = view.pixel(sample);
            if (curve.style() == QwtPlotCurve::Sticks)
                painter.drawLine(
                    pixel.x(), view.pixel(QPointF(0.0, curve.baseline())).y(), pixel.x(), pixel.y());
            else
                painter.drawPoint(pixel);
        }
    });
}

void setRandomData(RandomCurves& random, PriceBased2dPlotCurve& curve, const QVector<QPointF>& samples)
{
    if (random.oneIn(2))
        curve.setSamples(samples);
    else
        setAsArrays(curve, samples);
}

/// The samples whose price is on the canvas.
int seenCount(const QVector<QPointF>& samples, const View& view)
{
    const auto isSeen = [&view](const QPointF& sample) {
        const double x = view.xMap.transform(sample.x());
        return view.canvas.left() <= x && x <= view.canvas.right();
    };
    return static_cast<int>(std::count_if(samples.cbegin(), samples.cend(), isSeen));
}

/// Fails, and keeps both pictures, where they are not the same.
void comparePictures(const QImage& drawn, const QImage& expected, const QString& name)
{
    const QString difference = Pictures::difference(drawn, expected);
    if (difference.isEmpty())
        return;
    drawn.save(QStringLiteral("curvedrawing_drawn.png"));
    expected.save(QStringLiteral("curvedrawing_expected.png"));
    QFAIL(qPrintable(name + QStringLiteral(": ") + difference));
}

/// A series whose class the library does not know, so that Qwt draws it.
class HostSeries : public QwtPointSeriesData {
public:
    using QwtPointSeriesData::QwtPointSeriesData;
};

}

Q_DECLARE_METATYPE(RandomCurves::Order)
Q_DECLARE_METATYPE(QwtPlotCurve::CurveStyle)

class tst_CurveDrawing : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void equalsSegmentsOneByOne_data();
    void equalsSegmentsOneByOne();
    void equalsPointsOneByOne_data();
    void equalsPointsOneByOne();
    void leavesWhatIsTooFarAwayToQwt();
    void looksLikeQwtWhereSoft_data();
    void looksLikeQwtWhereSoft();
    void equalsQwtOnOtherPainters_data();
    void equalsQwtOnOtherPainters();
    void clipsToTheCanvasByItself();
};

void tst_CurveDrawing::equalsSegmentsOneByOne_data()
{
    QTest::addColumn<int>("seed");
    QTest::addColumn<int>("mostSamples");
    QTest::addColumn<Order>("order");
    QTest::addColumn<bool>("bad");
    QTest::addColumn<bool>("steps");
    QTest::addColumn<double>("penWidth");

    QTest::newRow("few") << 1 << 60 << Order::Ascending << false << false << 1.0;
    QTest::newRow("many") << 2 << 4000 << Order::Ascending << false << false << 1.0;
    QTest::newRow("very many") << 3 << 40000 << Order::Ascending << false << false << 1.0;
    QTest::newRow("equal prices") << 4 << 4000 << Order::WithEquals << false << false << 1.0;
    QTest::newRow("any order") << 5 << 300 << Order::Any << false << false << 1.0;
    QTest::newRow("not finite") << 6 << 4000 << Order::Ascending << true << false << 1.0;
    QTest::newRow("any order, not finite") << 7 << 300 << Order::Any << true << false << 1.0;
    QTest::newRow("steps") << 8 << 60 << Order::Ascending << false << true << 1.0;
    QTest::newRow("many steps") << 9 << 4000 << Order::WithEquals << true << true << 1.0;
    QTest::newRow("pen of no width") << 10 << 4000 << Order::Ascending << false << false << 0.0;
    QTest::newRow("pen of 2") << 11 << 8000 << Order::Ascending << false << false << 2.0;
    QTest::newRow("pen of 4, equal prices") << 12 << 8000 << Order::WithEquals << false << false << 4.0;
}

void tst_CurveDrawing::equalsSegmentsOneByOne()
{
    QFETCH(int, seed);
    QFETCH(int, mostSamples);
    QFETCH(Order, order);
    QFETCH(bool, bad);
    QFETCH(bool, steps);
    QFETCH(double, penWidth);

    // Qt takes its time over wide lines.
    const int cases = penWidth > 1.0 ? 40 : 200;
    int compared = 0;
    RandomCurves random(static_cast<unsigned>(seed));
    for (int i = 0; i < cases && !QTest::currentTestFailed(); ++i) {
        const QVector<QPointF> samples = random.samples(random.integer(2, mostSamples), order, bad);
        const View view = Pictures::randomView(random);
        // Wide lines through few samples are left to Qwt, which mitres them.
        if (penWidth > 1.0 && seenCount(samples, view) < 2 * view.image.width())
            continue;
        ++compared;
        PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
        setRandomData(random, curve, samples);
        curve.setPen(QPen(Qt::blue, penWidth));
        curve.setStyle(steps ? QwtPlotCurve::Steps : QwtPlotCurve::Lines);
        curve.setCurveAttribute(QwtPlotCurve::Inverted, random.oneIn(2));
        comparePictures(Pictures::drawnCurve(view, curve), drawnBySegments(view, samples, curve),
            QStringLiteral("case %1 of %2 samples").arg(i).arg(samples.size()));
    }
    QVERIFY(compared > cases / 5);
}

void tst_CurveDrawing::equalsPointsOneByOne_data()
{
    QTest::addColumn<int>("mostSamples");
    QTest::addColumn<Order>("order");
    QTest::addColumn<QwtPlotCurve::CurveStyle>("style");
    QTest::addColumn<double>("penWidth");

    QTest::newRow("few sticks") << 60 << Order::Ascending << QwtPlotCurve::Sticks << 1.0;
    QTest::newRow("many sticks") << 4000 << Order::WithEquals << QwtPlotCurve::Sticks << 1.0;
    QTest::newRow("sticks in any order") << 300 << Order::Any << QwtPlotCurve::Sticks << 1.0;
    QTest::newRow("sticks of 2") << 400 << Order::Ascending << QwtPlotCurve::Sticks << 2.0;
    QTest::newRow("dots") << 4000 << Order::Ascending << QwtPlotCurve::Dots << 1.0;
    QTest::newRow("dots in any order") << 300 << Order::Any << QwtPlotCurve::Dots << 1.0;
}

void tst_CurveDrawing::equalsPointsOneByOne()
{
    QFETCH(int, mostSamples);
    QFETCH(Order, order);
    QFETCH(QwtPlotCurve::CurveStyle, style);
    QFETCH(double, penWidth);

    RandomCurves random(20);
    for (int i = 0; i < 100 && !QTest::currentTestFailed(); ++i) {
        const QVector<QPointF> samples
            = random.samples(random.integer(1, mostSamples), order, random.oneIn(3));
        PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
        setRandomData(random, curve, samples);
        curve.setPen(QPen(Qt::blue, penWidth));
        curve.setStyle(style);
        curve.setBaseline(random.number(-1.0, 1.0));
        curve.setRenderHint(QwtPlotItem::RenderAntialiased, style == QwtPlotCurve::Sticks && random.oneIn(2));
        const View view = Pictures::randomView(random);
        comparePictures(Pictures::drawnCurve(view, curve), drawnByPoints(view, samples, curve),
            QStringLiteral("case %1 of %2 samples").arg(i).arg(samples.size()));
    }
}

void tst_CurveDrawing::leavesWhatIsTooFarAwayToQwt()
{
    RandomCurves random(30);
    for (int i = 0; i < 100 && !QTest::currentTestFailed(); ++i) {
        const QVector<QPointF> samples = random.samples(random.integer(2, 50), Order::Ascending, false);
        View view = Pictures::randomView(random);
        // So far in that neighbours are billions of canvases apart.
        const int seen = random.integer(1, samples.size() - 1);
        const QPointF middle = (samples[seen - 1] + 2.0 * samples[seen]) / 3.0;
        const double width = std::pow(10.0, random.number(-11.0, -6.0));
        view.xMap.setScaleInterval(middle.x() - width, middle.x() + width);
        const double height = std::pow(10.0, random.number(-10.0, 0.0));
        view.yMap.setScaleInterval(middle.y() - height, middle.y() + height);

        PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
        curve.setSamples(samples);
        QwtPlotCurve plain;
        plain.setSamples(samples);
        const QImage expected = Pictures::drawnCurve(view, plain);
        const QImage drawn = Pictures::drawnCurve(view, curve);
        // Qwt draws from where it has cut a line off at the canvas, which moves it by a pixel.
        QVERIFY2(Pictures::meanDifference(drawn, expected) < 3.0,
            qPrintable(Pictures::difference(drawn, expected)));
    }
}

void tst_CurveDrawing::looksLikeQwtWhereSoft_data()
{
    QTest::addColumn<int>("samples");
    QTest::addColumn<double>("penWidth");
    QTest::addColumn<double>("mostDifference");

    // Through few samples it is Qwt that draws.
    QTest::newRow("few samples") << 30 << 1.0 << 0.0;
    // Of 255, on canvases that are mostly covered by the line.
    QTest::newRow("many samples") << 20000 << 1.0 << 6.0;
    QTest::newRow("many samples, pen of 2") << 20000 << 2.0 << 2.0;
}

void tst_CurveDrawing::looksLikeQwtWhereSoft()
{
    QFETCH(int, samples);
    QFETCH(double, penWidth);
    QFETCH(double, mostDifference);

    constexpr int cases = 20;
    double sum = 0.0;
    RandomCurves random(40);
    for (int i = 0; i < cases; ++i) {
        const QVector<QPointF> points = random.samples(samples, Order::Ascending, false);
        View view = Pictures::randomView(random);
        const auto [low, high] = PlainAnswers::bounds(points, 0, points.size());
        view.xMap.setScaleInterval(0.0, 100.0);
        view.yMap.setScaleInterval(low, high);
        PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
        curve.setRenderHint(QwtPlotItem::RenderAntialiased, true);
        curve.setPen(QPen(Qt::black, penWidth));
        curve.setSamples(points);
        const QImage drawn = Pictures::drawnCurve(view, curve);
        curve.setSamples(new HostSeries(points));
        const QImage expected = Pictures::drawnCurve(view, curve);
        sum += Pictures::meanDifference(drawn, expected);
    }
    const double difference = sum / cases;
    QVERIFY2(difference <= mostDifference, qPrintable(QString::number(difference)));
}

void tst_CurveDrawing::equalsQwtOnOtherPainters_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("rotation");
    QTest::addColumn<QPen>("pen");

    QTest::newRow("scaled") << 3.0 << 0.0 << QPen(Qt::blue, 1.0);
    QTest::newRow("rotated") << 1.0 << 30.0 << QPen(Qt::blue, 1.0);
    QTest::newRow("dashed") << 1.0 << 0.0 << QPen(Qt::blue, 1.0, Qt::DashLine);
    QTest::newRow("translucent") << 1.0 << 0.0 << QPen(QColor(0, 0, 255, 100), 1.0);
    QTest::newRow("mitred") << 1.0 << 0.0 << QPen(Qt::blue, 3.0, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
}

void tst_CurveDrawing::equalsQwtOnOtherPainters()
{
    QFETCH(double, scale);
    QFETCH(double, rotation);
    QFETCH(QPen, pen);

    RandomCurves random(50);
    for (int i = 0; i < 20 && !QTest::currentTestFailed(); ++i) {
        const QVector<QPointF> samples = random.samples(random.integer(2, 3000), Order::Ascending, false);
        const View view = Pictures::randomView(random);
        const auto draw = [&](QwtSeriesData<QPointF>* series) {
            PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
            curve.setPen(pen);
            curve.setSamples(series);
            return Pictures::drawn(view, [&](QPainter& painter) {
                painter.scale(scale, scale);
                painter.rotate(rotation);
                curve.drawSeries(&painter, view.xMap, view.yMap, view.canvas, 0, -1);
            });
        };
        comparePictures(draw(new QwtPointSeriesData(samples)), draw(new HostSeries(samples)),
            QStringLiteral("case %1 of %2 samples").arg(i).arg(samples.size()));
    }
}

void tst_CurveDrawing::clipsToTheCanvasByItself()
{
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
    curve.setPen(QPen(Qt::blue, 1.0));
    curve.setSamples({{0.0, -10.0}, {10.0, 20.0}});
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QwtScaleMap map;
    map.setScaleInterval(0.0, 10.0);
    map.setPaintInterval(20.0, 80.0);
    curve.drawSeries(&painter, map, map, QRectF(20.0, 20.0, 61.0, 61.0), 0, -1);
    painter.end();
    constexpr int reach = 1;
    const QRect inside = QRect(20, 20, 61, 61).adjusted(-reach, -reach, reach, reach);
    int drawnPixels = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool isDrawn = image.pixelColor(x, y) != Qt::white;
            drawnPixels += isDrawn ? 1 : 0;
            QVERIFY(!isDrawn || inside.contains(x, y));
        }
    }
    QVERIFY(drawnPixels > 50);
}

PLOT2D_TEST_MAIN(tst_CurveDrawing)
#include "tst_curvedrawing.moc"
