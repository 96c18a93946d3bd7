// What goes to paper and into files of vectors holds the samples and no pixels of a screen.

#include "pictures.h"

#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <QBuffer>
#include <QPainter>
#include <QPainterPath>
#include <QPdfWriter>
#include <QPicture>
#include <QTest>

#include <qwt_plot_renderer.h>
#include <qwt_point_data.h>
#include <qwt_symbol.h>

#include <functional>

namespace {

/// A series whose class the library does not know, so that Qwt draws it.
class HostSeries : public QwtPointSeriesData {
public:
    using QwtPointSeriesData::QwtPointSeriesData;
};

/// Draws the same samples once as the library knows them, and once as a host's.
template <class Output> void compareOutputs(const std::function<Output(PriceBased2dPlotCurve&)>& output)
{
    RandomCurves random(1);
    for (const QwtPlotCurve::CurveStyle style :
        {QwtPlotCurve::Lines, QwtPlotCurve::Steps, QwtPlotCurve::Sticks, QwtPlotCurve::Dots}) {
        const QVector<QPointF> samples = random.samples(20000, RandomCurves::Order::Ascending, false);
        PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
        curve.setStyle(style);
        curve.setSamples(samples);
        const Output ours = output(curve);
        curve.setSamples(new HostSeries(samples));
        const Output plain = output(curve);
        QVERIFY2(ours == plain, qPrintable(QStringLiteral("style %1").arg(int(style))));
    }
}

void drawAll(PriceBased2dPlotCurve& curve, QPainter& painter)
{
    QwtScaleMap xMap;
    xMap.setScaleInterval(0.0, 100.0);
    xMap.setPaintInterval(0.0, 300.0);
    QwtScaleMap yMap;
    yMap.setScaleInterval(-1.0, 1.0);
    yMap.setPaintInterval(200.0, 0.0);
    curve.drawSeries(&painter, xMap, yMap, QRectF(0.0, 0.0, 301.0, 201.0), 0, -1);
}

}

class tst_VectorOutput : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void recordedPictures();
    void pdfHoldsTheSamples();
    void renderedPlots();
    void symbolsThatReachIn();
};

void tst_VectorOutput::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_VectorOutput::recordedPictures()
{
    compareOutputs<QByteArray>([](PriceBased2dPlotCurve& curve) {
        QPicture picture;
        QPainter painter(&picture);
        drawAll(curve, painter);
        painter.end();
        return QByteArray(picture.data(), int(picture.size()));
    });
}

void tst_VectorOutput::pdfHoldsTheSamples()
{
    compareOutputs<int>([](PriceBased2dPlotCurve& curve) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        QPainter painter(&writer);
        drawAll(curve, painter);
        painter.end();
        return int(buffer.size());
    });
}

void tst_VectorOutput::renderedPlots()
{
    TestPlot plot;
    plot.resize(300, 200);
    plot.setAxisScale(QwtPlot::xBottom, 0.0, 100.0, 0.0);
    plot.setAxisScale(QwtPlot::yLeft, -1.0, 1.0, 0.0);
    compareOutputs<QImage>([&](PriceBased2dPlotCurve& curve) {
        curve.attach(&plot);
        QImage image(1200, 800, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        constexpr double scale = 4.0;
        painter.scale(scale, scale);
        QwtPlotRenderer().render(&plot, &painter, QRectF(0.0, 0.0, 300.0, 200.0));
        painter.end();
        curve.detach();
        return image;
    });
}

void tst_VectorOutput::symbolsThatReachIn()
{
    QPainterPath path;
    path.addRect(-60.0, -4.0, 60.0, 8.0);
    auto* const symbol = new QwtSymbol(QwtSymbol::Path);
    symbol->setPath(path);
    symbol->setPinPoint(QPointF(0.0, 0.0));
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("curve"));
    curve.setStyle(QwtPlotCurve::NoCurve);
    curve.setSymbol(symbol);
    QVector<QPointF> samples;
    for (int x = 0; x <= 130; x += 2)
        samples.append(QPointF(x, x / 130.0));
    const auto drawn = [&curve] {
        QImage image(602, 402, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.scale(2.0, 2.0);
        drawAll(curve, painter);
        return image;
    };
    curve.setSamples(samples);
    const QImage ours = drawn();
    curve.setSamples(new HostSeries(samples));
    QVERIFY(ours == drawn());
}

PLOT2D_TEST_MAIN(tst_VectorOutput)
#include "tst_vectoroutput.moc"
