#include "pictures.h"

#include <plot2d/columnwalk_p.h>

#include <QPainter>

#include <cmath>
#include <cstdlib>

QPoint Pictures::View::pixel(const QPointF& sample) const
{
    return QPoint(wholePixel(xMap.transform(sample.x())), wholePixel(yMap.transform(sample.y())));
}

Pictures::View Pictures::randomView(RandomCurves& random)
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

QImage Pictures::drawn(const View& view, const std::function<void(QPainter&)>& draw)
{
    QImage image(view.image, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setClipRect(view.canvas);
    draw(painter);
    return image;
}

QImage Pictures::drawnCurve(const View& view, const QwtPlotCurve& curve)
{
    return drawn(view, [&](QPainter& painter) {
        painter.setRenderHint(QPainter::Antialiasing, curve.testRenderHint(QwtPlotItem::RenderAntialiased));
        curve.drawSeries(&painter, view.xMap, view.yMap, view.canvas, 0, -1);
    });
}

QString Pictures::difference(const QImage& a, const QImage& b)
{
    int count = 0;
    QPoint first;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (a.pixel(x, y) != b.pixel(x, y) && count++ == 0)
                first = QPoint(x, y);
        }
    }
    return count == 0 ? QString()
                      : QStringLiteral("%1 pixels, first (%2, %3)").arg(count).arg(first.x()).arg(first.y());
}

double Pictures::meanDifference(const QImage& a, const QImage& b)
{
    double sum = 0.0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            sum += std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q))
                + std::abs(qBlue(p) - qBlue(q));
        }
    }
    return sum / (3.0 * a.width() * a.height());
}
