#include "axes/scaledrawprobe.h"
#include "support/qtversions.h"
#include "support/testmain.h"

#include <cmath>
#include <limits>

using Values = QList<double>;

namespace {

constexpr int bottomAxis = 2;
constexpr int leftAxis = 0;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

QwtScaleDiv division(double lower, double upper, const Values& major, const Values& medium = {})
{
    return QwtScaleDiv(lower, upper, {}, medium, major);
}

QString digits(int count)
{
    return QString(count, QLatin1Char('0'));
}

}

class tst_scaledraw_extent : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void widestLabel();
    void widestLabelOfAnInvertedScale();
    void widestLabelIsRoundedUp();
    void extent_data();
    void extent();
    void extentOfAPixel();
    void rectangleHasAMargin();
    void rectangleOfUnreadableValues_data();
    void rectangleOfUnreadableValues();
    void rectangleFarOffTheScreen();
    void rectangleUsesTheFontOfItsConstruction();
};

void tst_scaledraw_extent::widestLabel()
{
    ScaleDrawProbe draw(bottomAxis);
    const QFont font = QApplication::font();
    draw.text = [](double value) { return digits(static_cast<int>(value)); };
    draw.setScaleDiv(division(0, 10, {1, 2}, {5}));
    QCOMPARE(draw.maxLabelWidth(font), static_cast<int>(std::ceil(draw.labelSize(font, 5).width())));
    // Those beyond the scale do not count, those on its ends do.
    draw.setScaleDiv(division(1, 10, {0, 2, 20}));
    QCOMPARE(draw.maxLabelWidth(font), static_cast<int>(std::ceil(draw.labelSize(font, 2).width())));
    draw.setScaleDiv(division(1, 10, {2, 10}));
    QCOMPARE(draw.maxLabelWidth(font), static_cast<int>(std::ceil(draw.labelSize(font, 10).width())));
    draw.setScaleDiv(division(5, 10, {1, 2}));
    QCOMPARE(draw.maxLabelWidth(font), 0);
    draw.setScaleDiv(division(5, 10, {}));
    QCOMPARE(draw.maxLabelWidth(font), 0);
}

/// Of an inverted division no ticks are chosen, so that Qwt looks for labels, which may be the host's.
void tst_scaledraw_extent::widestLabelOfAnInvertedScale()
{
    class HostsLabels : public PriceBased2dPlotScaleDraw {
    public:
        using PriceBased2dPlotScaleDraw::PriceBased2dPlotScaleDraw;
        QwtText label(double) const override { return QStringLiteral("five"); }
    };
    HostsLabels draw(bottomAxis);
    const QFont font = QApplication::font();
    draw.setScaleDiv(division(10, 0, {5}));
    QVERIFY(draw.maxLabelWidth(font) > 0);
    QCOMPARE(draw.maxLabelWidth(font), draw.QwtScaleDraw::maxLabelWidth(font));
}

void tst_scaledraw_extent::widestLabelIsRoundedUp()
{
    ScaleDrawProbe draw(bottomAxis);
    const QFont font = QApplication::font();
    draw.setLabelRotation(30.0);
    draw.setScaleDiv(division(0, 10, {5}));
    const double width = draw.labelSize(font, 5).width();
    QVERIFY(width != std::floor(width));
    QCOMPARE(draw.maxLabelWidth(font), static_cast<int>(width) + 1);
}

void tst_scaledraw_extent::extent_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<bool>("labels");
    QTest::addColumn<bool>("ticks");
    QTest::addColumn<bool>("backbone");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("minimum");

    const auto row = [](const char* name, int axis, bool labels, bool ticks, bool backbone, int penWidth,
                         const char* text, double minimum) {
        QTest::newRow(name) << axis << labels << ticks << backbone << penWidth << QString::fromLatin1(text)
                            << minimum;
    };
    row("bottom", bottomAxis, true, true, true, 0, "12345", 0.0);
    row("left", leftAxis, true, true, true, 0, "12345", 0.0);
    row("thick pen", leftAxis, true, true, true, 3, "12345", 0.0);
    row("no labels", leftAxis, false, true, true, 1, "12345", 0.0);
    row("no ticks", bottomAxis, true, false, true, 1, "12345", 0.0);
    row("no backbone", bottomAxis, true, true, false, 5, "12345", 0.0);
    row("nothing", bottomAxis, false, false, false, 5, "12345", 0.0);
    row("empty labels take no spacing", leftAxis, true, true, true, 1, "", 0.0);
    row("minimum", leftAxis, true, true, true, 1, "1", 200.0);
    row("minimum below the sum", leftAxis, true, true, true, 1, "1", 1.0);
}

void tst_scaledraw_extent::extent()
{
    QFETCH(int, axis);
    QFETCH(bool, labels);
    QFETCH(bool, ticks);
    QFETCH(bool, backbone);
    QFETCH(int, penWidth);
    QFETCH(QString, text);
    QFETCH(double, minimum);
    const QFont font = QApplication::font();
    ScaleDrawProbe draw(axis);
    draw.text = [&text](double) { return text; };
    // The medium tick's label is none of Qwt's.
    draw.setScaleDiv(division(0, 10, {}, {5}));
    if (axis == bottomAxis)
        draw.setScaleDiv(division(0, 10, {5}));
    draw.setSpacing(7.0);
    TestVersions::setPenWidth(draw, penWidth);
    draw.setMinimumExtent(minimum);
    draw.enableComponent(QwtAbstractScaleDraw::Labels, labels);
    draw.enableComponent(QwtAbstractScaleDraw::Ticks, ticks);
    draw.enableComponent(QwtAbstractScaleDraw::Backbone, backbone);

    const QSizeF size = draw.labelSize(font, 5);
    double expected = 0.0;
    if (labels && !text.isEmpty())
        expected += std::ceil(axis == leftAxis ? size.width() : size.height()) + 7.0;
    if (ticks)
        expected += draw.maxTickLength();
    if (backbone)
        expected += penWidth < 1 ? 1 : penWidth;
    QCOMPARE(draw.extent(font), expected < minimum ? minimum : expected);
}

void tst_scaledraw_extent::extentOfAPixel()
{
    ScaleDrawProbe draw(leftAxis);
    draw.setScaleDiv(division(0, 10, {5}));
    draw.setSpacing(7.0);
    draw.enableComponent(QwtAbstractScaleDraw::Ticks, false);
    draw.enableComponent(QwtAbstractScaleDraw::Backbone, false);
    // Which text is one pixel wide depends on the font.
    int found = 0;
    QFont font;
    for (const int size : {1, 2, 3, 4}) {
        font.setPixelSize(size);
        for (const char* text : {"1", "i", ".", "'"}) {
            draw.text = [text](double) { return QString::fromLatin1(text); };
            draw.invalidateCache();
            if (draw.maxLabelWidth(font) != 1)
                continue;
            QCOMPARE(draw.extent(font), 8.0);
            ++found;
        }
    }
    if (found == 0)
        QSKIP("no text is one pixel wide");
}

void tst_scaledraw_extent::rectangleHasAMargin()
{
    ScaleDrawProbe draw(bottomAxis);
    draw.setPixelTicks({500});
    const QRect plain = draw.boundingLabelRect(QApplication::font(), 500);
    QVERIFY(plain.isValid());
    QCOMPARE(draw.tickLabelBoundingRect(500), plain.adjusted(-4, -4, 4, 4));
    QCOMPARE(draw.getBoundingRects({500, 1e17}), (QList<QRect>{plain.adjusted(-4, -4, 4, 4), QRect()}));

    draw.text = [](double) { return QStringLiteral("500"); };
    draw.setConversionEnabled(true);
    draw.updateLabels();
    QCOMPARE(draw.labelMargin(), 8);
    draw.setPaintedOnce();
    draw.updateLabels();
    QCOMPARE(draw.labelMargin(), 4);
    QCOMPARE(draw.tickLabelBoundingRect(500), plain.adjusted(-2, -2, 2, 2));
    draw.setConversionEnabled(false);
    draw.updateLabels();
    QCOMPARE(draw.labelMargin(), 8);
}

void tst_scaledraw_extent::rectangleOfUnreadableValues_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("expected");

    QTest::newRow("upper limit") << 1e16 << true;
    QTest::newRow("beyond the upper limit") << std::nextafter(1e16, infinity) << false;
    QTest::newRow("lower limit") << -1e16 << true;
    QTest::newRow("beyond the lower limit") << std::nextafter(-1e16, -infinity) << false;
    QTest::newRow("infinite") << infinity << false;
    QTest::newRow("NaN") << notANumber << false;
}

void tst_scaledraw_extent::rectangleOfUnreadableValues()
{
    QFETCH(double, value);
    ScaleDrawProbe draw(bottomAxis);
    draw.text = [](double) { return QStringLiteral("1"); };
    draw.setLength(1000);
    draw.setScaleDiv(QwtScaleDiv(-2e16, 2e16));
    QTEST(draw.tickLabelBoundingRect(value).isValid(), "expected");
    if (!draw.tickLabelBoundingRect(value).isValid())
        QVERIFY(draw.tickLabelBoundingRect(value).isNull());

    draw.text = [](double) { return QString(); };
    draw.setScaleDiv(QwtScaleDiv(-2e16, 2e16));
    QVERIFY(!draw.tickLabelBoundingRect(value).isValid());
}

void tst_scaledraw_extent::rectangleFarOffTheScreen()
{
    ScaleDrawProbe draw(bottomAxis);
    draw.setLength(1000);
    draw.setScaleDiv(division(0, 1e-6, {}));
    QVERIFY(draw.tickLabelBoundingRect(0.05).isValid());
    QVERIFY(draw.tickLabelBoundingRect(1.0).isNull());
    QVERIFY(draw.tickLabelBoundingRect(-1.0).isNull());
    // A place that no int holds.
    QVERIFY(draw.tickLabelBoundingRect(1e10).isNull());
    // A hundred million pixels are the farthest.
    draw.setScaleDiv(division(0, 1000, {}));
    QVERIFY(draw.tickLabelBoundingRect(1e8).isValid());
    QVERIFY(draw.tickLabelBoundingRect(1e8 + 1.0).isNull());
}

void tst_scaledraw_extent::rectangleUsesTheFontOfItsConstruction()
{
    const QFont before = QApplication::font();
    ScaleDrawProbe draw(bottomAxis);
    draw.setPixelTicks({500});
    const QRect rectangle = draw.tickLabelBoundingRect(500);
    QFont large = before;
    large.setPointSize(40);
    QApplication::setFont(large);
    QCOMPARE(draw.tickLabelBoundingRect(500), rectangle);
    ScaleDrawProbe later(bottomAxis);
    later.setPixelTicks({500});
    QVERIFY(later.tickLabelBoundingRect(500).width() > rectangle.width());
    QApplication::setFont(before);
}

PLOT2D_TEST_MAIN(tst_scaledraw_extent)

#include "tst_scaledraw_extent.moc"
