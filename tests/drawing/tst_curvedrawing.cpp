#include "randomcurves.h"

#include "support/testmain.h"

#include <plot2d/curvefolding_p.h>
#include <plot2d/pricebased2dplotcurve.h>

#include <QImage>
#include <QPainter>
#include <QTest>

#include <qwt_point_data.h>

#include <algorithm>
#include <cmath>

namespace {

/// A view of samples on an image, some of it outside of the canvas.
struct View {
    QSize image;
    QRect canvas;
    QwtScaleMap xMap;
    QwtScaleMap yMap;
};

QImage blank(const View& view)
{
    QImage image(view.image, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

View randomView(RandomCurves& random)
{
    View view;
    view.image = QSize(random.integer(20, 500), random.integer(20, 300));
    const int margin = random.oneIn(2) ? 0 : random.integer(1, 8);
    view.canvas = QRect(QPoint(0, 0), view.image).adjusted(margin, margin, -margin, -margin);
    const double width = std::pow(10.0, random.number(-1.0, 2.2));
    const double left = random.number(-20.0, 100.0);
    const double height = std::pow(10.0, random.number(-2.0, 1.0));
    const double bottom = random.number(-1.0, 1.0) - height / 2.0;
    view.xMap.setScaleInterval(left, left + width);
    view.xMap.setPaintInterval(view.canvas.left(), view.canvas.right());
    view.yMap.setScaleInterval(bottom, bottom + height);
    view.yMap.setPaintInterval(view.canvas.bottom(), view.canvas.top());
    if (random.oneIn(8))
        view.xMap.setScaleInterval(left + width, left);
    return view;
}

bool isFinite(const QPointF& point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

QImage drawnBySegments(const QVector<QPointF>& samples, const View& view, const QPen& pen,
    QwtPlotCurve::CurveStyle style, bool verticalFirst)
{
    QImage image = blank(view);
    QPainter painter(&image);
    painter.setClipRect(view.canvas);
    painter.setPen(pen);
    const auto pixel = [&view](const QPointF& sample) {
        return QPoint(
            wholePixel(view.xMap.transform(sample.x())), wholePixel(view.yMap.transform(sample.y())));
    };
    for (int i = 1; i < samples.size(); ++i) {
        if (!isFinite(samples[i - 1]) || !isFinite(samples[i]))
            continue;
        const QPoint from = pixel(samples[i - 1]);
        const QPoint to = pixel(samples[i]);
        if (style == QwtPlotCurve::Lines) {
            painter.drawLine(from, to);
        } else {
            const QPoint corner = verticalFirst ? QPoint(from.x(), to.y()) : QPoint(to.x(), from.y());
            painter.drawLine(from, corner);
            painter.drawLine(corner, to);
        }
    }
    return image;
}

void setRandomData(PriceBased2dPlotCurve& curve, const QVector<QPointF>& samples, bool asArrays)
{
    if (!asArrays) {
        curve.setSamples(samples);
        return;
    }
    QVector<double> x;
    QVector<double> y;
    for (const QPointF& sample : samples) {
        x.append(sample.x());
        y.append(sample.y());
    }
    curve.setSamples(x, y);
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

QString differenceOf(const QImage& a, const QImage& b)
{
    int count = 0;
    QPoint first;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (a.pixel(x, y) != b.pixel(x, y) && count++ == 0)
                first = QPoint(x, y);
        }
    }
    return QStringLiteral("%1 pixels, first (%2, %3)").arg(count).arg(first.x()).arg(first.y());
}

}

Q_DECLARE_METATYPE(RandomCurves::Order)

class tst_CurveDrawing : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void equalsSegmentsOneByOne_data();
    void equalsSegmentsOneByOne();
};

void tst_CurveDrawing::equalsSegmentsOneByOne_data()
{
    QTest::addColumn<int>("seed");
    QTest::addColumn<int>("mostSamples");
    QTest::addColumn<RandomCurves::Order>("order");
    QTest::addColumn<bool>("bad");
    QTest::addColumn<bool>("steps");
    QTest::addColumn<double>("penWidth");

    QTest::newRow("few") << 1 << 60 << RandomCurves::Order::Ascending << false << false << 1.0;
    QTest::newRow("many") << 2 << 4000 << RandomCurves::Order::Ascending << false << false << 1.0;
    QTest::newRow("very many") << 3 << 40000 << RandomCurves::Order::Ascending << false << false << 1.0;
    QTest::newRow("equal prices") << 4 << 4000 << RandomCurves::Order::WithEquals << false << false << 1.0;
    QTest::newRow("any order") << 5 << 300 << RandomCurves::Order::Any << false << false << 1.0;
    QTest::newRow("not finite") << 6 << 4000 << RandomCurves::Order::Ascending << true << false << 1.0;
    QTest::newRow("any order, not finite") << 7 << 300 << RandomCurves::Order::Any << true << false << 1.0;
    QTest::newRow("steps") << 8 << 60 << RandomCurves::Order::Ascending << false << true << 1.0;
    QTest::newRow("many steps") << 9 << 4000 << RandomCurves::Order::WithEquals << true << true << 1.0;
    QTest::newRow("pen of no width") << 10 << 4000 << RandomCurves::Order::Ascending << false << false << 0.0;
    QTest::newRow("pen of 2") << 11 << 8000 << RandomCurves::Order::Ascending << false << false << 2.0;
    QTest::newRow("pen of 4, equal prices")
        << 12 << 8000 << RandomCurves::Order::WithEquals << false << false << 4.0;
}

void tst_CurveDrawing::equalsSegmentsOneByOne()
{
    QFETCH(int, seed);
    QFETCH(int, mostSamples);
    QFETCH(RandomCurves::Order, order);
    QFETCH(bool, bad);
    QFETCH(bool, steps);
    QFETCH(double, penWidth);

    // Qt takes its time over wide lines.
    const int cases = penWidth > 1.0 ? 40 : 200;
    int compared = 0;
    RandomCurves random(static_cast<unsigned>(seed));
    for (int i = 0; i < cases; ++i) {
        const QVector<QPointF> samples = random.samples(random.integer(2, mostSamples), order, bad);
        const View view = randomView(random);
        // Wide lines through few samples are left to Qwt, which mitres them.
        if (penWidth > 1.0 && seenCount(samples, view) < 2 * view.image.width())
            continue;
        ++compared;
        const bool inverted = random.oneIn(2);
        PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
        setRandomData(curve, samples, random.oneIn(2));
        curve.setPen(QPen(Qt::blue, penWidth));
        curve.setStyle(steps ? QwtPlotCurve::Steps : QwtPlotCurve::Lines);
        curve.setCurveAttribute(QwtPlotCurve::Inverted, inverted);

        QImage drawn = blank(view);
        QPainter painter(&drawn);
        painter.setClipRect(view.canvas);
        curve.drawSeries(&painter, view.xMap, view.yMap, view.canvas, 0, -1);
        painter.end();
        const bool verticalFirst = inverted != (curve.orientation() == Qt::Vertical);
        const QImage expected = drawnBySegments(samples, view, curve.pen(), curve.style(), verticalFirst);
        if (drawn != expected) {
            drawn.save(QStringLiteral("curvedrawing_drawn.png"));
            expected.save(QStringLiteral("curvedrawing_expected.png"));
            QFAIL(qPrintable(QStringLiteral("case %1 of %2 samples: ").arg(i).arg(samples.size())
                + differenceOf(drawn, expected)));
        }
    }
    QVERIFY(compared > cases / 5);
}

PLOT2D_TEST_MAIN(tst_CurveDrawing)
#include "tst_curvedrawing.moc"
