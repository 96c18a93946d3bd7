#include "desktest.h"
#include "support/testmain.h"

#include <window/bandcurve.h>

#include <QPainter>

#include <qwt_scale_map.h>

/// The bars of the bid-ask band: where they are, and that they are sharp.
class tst_bandcurve : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isAValidCurve();
    void paintsBars_data();
    void paintsBars();
    void narrowsWhereStrikesAreClose();
    void leavesOutWhatIsOutside();
    void paintsFlatBars();
    void paintsNothingOnACanvasOfNoHeight();

private:
    QImage painted(const QVector<QPointF>& samples, double ratio,
        const QRectF& canvas = QRectF(0.0, 0.0, 200.0, 200.0)) const;
};

namespace {

constexpr QRgb barColor = 0xff56b4e9;
constexpr int side = 200;

// Prices from 0 to 200 from left to right, values from 0 to 200 upwards.
QwtScaleMap mapTo(double from, double to)
{
    QwtScaleMap map;
    map.setScaleInterval(0.0, side);
    map.setPaintInterval(from, to);
    return map;
}

QRect boundsOf(const QImage& image)
{
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) == barColor)
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

int coloredPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixel(x, y) != 0xffffffff ? 1 : 0;
    }
    return count;
}

}

QImage tst_bandcurve::painted(const QVector<QPointF>& samples, double ratio, const QRectF& canvas) const
{
    BandCurve band(nullptr, QStringLiteral("Band"));
    band.setPen(QPen(QColor(barColor), 5.0));
    band.setSamples(samples);
    QImage image(qRound(side * ratio), qRound(side * ratio), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    band.drawSeries(&painter, mapTo(0.0, side), mapTo(side, 0.0), canvas, 0, -1);
    return image;
}

void tst_bandcurve::isAValidCurve()
{
    BandCurve band(nullptr, QStringLiteral("Band"));
    QVERIFY(band.isValidType(BandCurve::bandType));
    QVERIFY(!band.isValidType(9));
    band.setDataType(BandCurve::bandType);
    QCOMPARE(band.dataType(), BandCurve::bandType);
    band.setSamples({{1.0, 2.0}, {1.0, 3.0}});
    band.setLegendAttribute(QwtPlotCurve::LegendShowLine);
    QVERIFY(band.isValid());
}

void tst_bandcurve::paintsBars_data()
{
    QTest::addColumn<double>("ratio");
    for (const double ratio : {1.0, 1.25, 1.5, 2.0})
        QTest::newRow(QByteArray::number(ratio)) << ratio;
}

void tst_bandcurve::paintsBars()
{
    QFETCH(double, ratio);
    const QImage image = painted({{100.3, 50.2}, {100.3, 120.7}}, ratio);
    const QRect bar = boundsOf(image);
    QCOMPARE(bar.width(), qRound(7.0 * ratio));
    QVERIFY(std::abs(bar.center().x() - 100.3 * ratio) <= 1.0);
    QVERIFY(std::abs(bar.top() - (side - 120.7) * ratio) <= 1.0);
    QVERIFY(std::abs(bar.bottom() - (side - 50.2) * ratio) <= 1.5);
    // No pixel is blended.
    QCOMPARE(coloredPixels(image), bar.width() * bar.height());
}

void tst_bandcurve::narrowsWhereStrikesAreClose()
{
    const QImage image = painted({{100.0, 50.0}, {100.0, 90.0}, {105.0, 50.0}, {105.0, 90.0}}, 1.0);
    int bars = 0;
    for (int x = 1; x < side; ++x)
        bars += image.pixel(x, 130) == barColor && image.pixel(x - 1, 130) != barColor ? 1 : 0;
    QCOMPARE(bars, 2);
    QVERIFY(coloredPixels(painted({{100.0, 50.0}, {100.0, 90.0}, {100.1, 50.0}, {100.1, 90.0}}, 1.0)) > 0);
}

void tst_bandcurve::leavesOutWhatIsOutside()
{
    QCOMPARE(coloredPixels(painted({{300.0, 50.0}, {300.0, 90.0}}, 1.0)), 0);
    QCOMPARE(coloredPixels(painted({{100.0, 500.0}, {100.0, 900.0}}, 1.0)), 0);
    // One that reaches far beyond is painted as far as is visible.
    const QRect bar = boundsOf(painted({{100.0, -1e12}, {100.0, 1e12}}, 1.0));
    QCOMPARE(bar.top(), 0);
    QCOMPARE(bar.bottom(), side - 1);
}

void tst_bandcurve::paintsFlatBars()
{
    const QRect bar = boundsOf(painted({{100.0, 50.0}, {100.0, 50.0}}, 1.0));
    QCOMPARE(bar.height(), 1);
    QCOMPARE(bar.width(), 7);
}

// A plot that is hardly higher than its axis has a canvas of less than no height.
void tst_bandcurve::paintsNothingOnACanvasOfNoHeight()
{
    const QVector<QPointF> bar{{100.0, 50.0}, {100.0, 150.0}};
    for (const double height : {-40.0, -2.0, -0.5, 0.0})
        QCOMPARE(coloredPixels(painted(bar, 1.0, QRectF(0.0, 100.0, side, height))), 0);
    QVERIFY(coloredPixels(painted(bar, 1.0, QRectF(0.0, 100.0, side, 1.0))) > 0);
}

PLOT2D_TEST_MAIN(tst_bandcurve)
#include "tst_bandcurve.moc"
