#include "axes/scaledrawprobe.h"
#include "support/qtversions.h"
#include "support/testmain.h"

#include <QImage>
#include <QPalette>

#include <algorithm>
#include <cmath>

using Values = QList<double>;

namespace {

constexpr int bottomAxis = 2;

const QColor textColor(10, 120, 30);
const QColor lineColor(20, 40, 200);
const QColor quoteColor(Qt::red);

QPalette palette()
{
    QPalette palette;
    palette.setColor(QPalette::Text, textColor);
    palette.setColor(QPalette::WindowText, lineColor);
    return palette;
}

/// A bottom axis of 400 pixels, one for each unit.
class PaintedAxis : public ScaleDrawProbe {
public:
    explicit PaintedAxis(const QwtScaleDiv& division)
        : ScaleDrawProbe(bottomAxis)
    {
        setLength(400);
        setScaleDiv(division);
        updateLabels();
    }

    void setQuote(double quote, bool enabled = true)
    {
        setCurKotirValue(quote);
        setCurKotirEnabled(enabled);
        updateLabels();
    }

    QImage paint() const
    {
        QImage image(420, 60, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        draw(&painter, palette());
        return image;
    }

    Values drawnLabels() const
    {
        Values values;
        for (const Label& label : labels)
            values.append(label.value);
        return values;
    }

    Values drawnTicks() const
    {
        Values values;
        for (const Tick& tick : ticks)
            values.append(tick.value);
        return values;
    }
};

QwtScaleDiv majorTicks(const Values& ticks)
{
    return QwtScaleDiv(0, 400, {}, {}, ticks);
}

/// Whether a pixel has more of red than of anything else.
bool isReddish(QRgb pixel)
{
    return qRed(pixel) > qGreen(pixel) + 60 && qRed(pixel) > qBlue(pixel) + 60;
}

int reddishPixels(const QImage& image, const QRect& part)
{
    int count = 0;
    for (int y = std::max(part.top(), 0); y <= part.bottom() && y < image.height(); ++y) {
        for (int x = std::max(part.left(), 0); x <= part.right() && x < image.width(); ++x)
            count += isReddish(image.pixel(x, y));
    }
    return count;
}

}

class tst_scaledraw_painting : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void labelsInOrder();
    void quoteHasALabelOfItsOwn_data();
    void quoteHasALabelOfItsOwn();
    void onlyTheQuoteIsRed();
    void eitherFlagShowsTheQuote();
    void quoteIsPaintedRed();
    void labelsOutsideAreNotDrawn();
    void nothingWithoutAPainter();
    void tickTypesInOrder();
    void ticksOutsideAreNotDrawn();
    void tickStaysWithoutItsLabel();
    void tickAtTheQuoteStaysWithoutItsLabel();
    void ticksStayWhenNoLabelFits_data();
    void ticksStayWhenNoLabelFits();
    void linePens();
    void backboneIsNotDrawnAsTheTicksLeftIt();
    void components_data();
    void components();
    void painterIsRestored();
};

void tst_scaledraw_painting::labelsInOrder()
{
    PaintedAxis axis(QwtScaleDiv(0, 400, {50, 150}, {200}, {300, 100}));
    axis.paint();
    QCOMPARE(axis.drawnLabels(), (Values{100, 200, 300}));
    for (const auto& label : axis.labels)
        QCOMPARE(label.color, textColor);
}

void tst_scaledraw_painting::quoteHasALabelOfItsOwn_data()
{
    QTest::addColumn<double>("quote");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<Values>("expected");

    QTest::newRow("between") << 150.0 << true << Values{100, 200, 150};
    QTest::newRow("on a tick") << 200.0 << true << Values{100, 200, 200};
    QTest::newRow("disabled") << 150.0 << false << Values{100, 200};
    QTest::newRow("on the lower bound") << 0.0 << false << Values{100, 200};
    QTest::newRow("on the upper bound") << 400.0 << true << Values{100, 200, 400};
    QTest::newRow("outside") << 401.0 << true << Values{100, 200};
}

void tst_scaledraw_painting::quoteHasALabelOfItsOwn()
{
    QFETCH(double, quote);
    QFETCH(bool, enabled);
    PaintedAxis axis(majorTicks({100, 200}));
    axis.setQuote(quote, enabled);
    axis.paint();
    QTEST(axis.drawnLabels(), "expected");
}

void tst_scaledraw_painting::onlyTheQuoteIsRed()
{
    PaintedAxis axis(majorTicks({100, 200}));
    axis.setQuote(100);
    axis.paint();
    for (const auto& label : axis.labels)
        QCOMPARE(label.color, label.value == 100 ? quoteColor : textColor);

    for (const double close : {100.0000001, std::nextafter(100.0, 200.0)}) {
        axis.setScaleDiv(majorTicks({close, 200}));
        axis.setQuote(100);
        axis.labels.clear();
        axis.paint();
        QCOMPARE(axis.drawnLabels(), (Values{close, 200, 100}));
        QCOMPARE(axis.labels[0].color, textColor);
        QCOMPARE(axis.labels[2].color, quoteColor);
    }

    // Without the flags a tick at the quote is a tick.
    axis.setScaleDiv(majorTicks({100, 200}));
    axis.setQuote(100, false);
    axis.labels.clear();
    axis.paint();
    QCOMPARE(axis.drawnLabels(), (Values{100, 200}));
    QCOMPARE(axis.labels[0].color, textColor);
}

void tst_scaledraw_painting::eitherFlagShowsTheQuote()
{
    PaintedAxis axis(majorTicks({100, 200}));
    axis.setQuote(150);
    // Off, but inside by the last look at it.
    axis.setCurKotirEnabled(false);
    QVERIFY(axis.isCurKotirInside());
    axis.paint();
    QCOMPARE(axis.drawnLabels(), (Values{100, 200, 150}));
    QCOMPARE(axis.labels.last().color, quoteColor);
}

void tst_scaledraw_painting::quoteIsPaintedRed()
{
    PaintedAxis axis(majorTicks({100, 300}));
    axis.setPaintedOnce();
    axis.setQuote(200);
    const QImage image = axis.paint();
    QVERIFY(reddishPixels(image, axis.tickLabelBoundingRect(200)) > 5);
    QCOMPARE(reddishPixels(image, axis.tickLabelBoundingRect(100)), 0);
    QCOMPARE(reddishPixels(image, axis.tickLabelBoundingRect(300)), 0);
}

void tst_scaledraw_painting::labelsOutsideAreNotDrawn()
{
    PaintedAxis axis(QwtScaleDiv(100, 300, {}, {}, {50, 100, 200, 300, 350}));
    QCOMPARE(axis.labelTicks(), (Values{50, 100, 200, 300, 350}));
    axis.paint();
    QCOMPARE(axis.drawnLabels(), (Values{100, 200, 300}));
}

void tst_scaledraw_painting::nothingWithoutAPainter()
{
    PaintedAxis axis(majorTicks({100}));
    axis.drawTickLabel(nullptr, palette(), 100);
    QVERIFY(axis.labels.isEmpty());

    QImage image(10, 10, QImage::Format_RGB32);
    QPainter painter(&image);
    axis.drawTickLabel(&painter, palette(), 100);
    QCOMPARE(axis.drawnLabels(), Values{100});
    axis.drawTickLabel(&painter, palette(), 400.5);
    QCOMPARE(axis.drawnLabels(), Values{100});
    // The pen stays as the label needed it.
    QCOMPARE(painter.pen().color(), textColor);
}

void tst_scaledraw_painting::tickTypesInOrder()
{
    PaintedAxis axis(QwtScaleDiv(0, 400, {30, 10}, {20}, {300, 100}));
    axis.setTickLength(QwtScaleDiv::MinorTick, 2);
    axis.setTickLength(QwtScaleDiv::MediumTick, 5);
    axis.setTickLength(QwtScaleDiv::MajorTick, 9);
    axis.paint();
    QList<std::pair<double, double>> ticks;
    for (const auto& tick : axis.ticks)
        ticks.append({tick.value, tick.length});
    const QList<std::pair<double, double>> expected{{30, 2}, {10, 2}, {20, 5}, {300, 9}, {100, 9}};
    QCOMPARE(ticks, expected);
    QCOMPARE(axis.backbones, 1);
}

void tst_scaledraw_painting::ticksOutsideAreNotDrawn()
{
    PaintedAxis axis(QwtScaleDiv(100, 300, {50, 150}, {350}, {100, 300, 301}));
    axis.paint();
    QCOMPARE(axis.drawnTicks(), (Values{150, 100, 300}));
}

void tst_scaledraw_painting::tickStaysWithoutItsLabel()
{
    PaintedAxis axis(majorTicks({100, 102, 104, 106}));
    axis.setPaintedOnce();
    axis.updateLabels();
    QVERIFY(axis.labelTicks().size() < 4);
    const QImage image = axis.paint();
    QCOMPARE(axis.ticks.size(), 4);
    const int middle = static_cast<int>(axis.maxTickLength() / 2.0);
    for (const int x : {100, 102, 104, 106}) {
        QCOMPARE(image.pixelColor(x, middle), lineColor);
        QCOMPARE(image.pixelColor(x + 1, middle), QColor(Qt::white));
    }
}

void tst_scaledraw_painting::tickAtTheQuoteStaysWithoutItsLabel()
{
    PaintedAxis axis(majorTicks({100, 200, 300}));
    axis.setPaintedOnce();
    axis.setQuote(200);
    QCOMPARE(axis.labelTicks(), (Values{100, 300}));
    const QImage image = axis.paint();
    QCOMPARE(axis.drawnLabels(), (Values{100, 300, 200}));
    QCOMPARE(axis.labels[0].color, textColor);
    QCOMPARE(axis.labels[1].color, textColor);
    QCOMPARE(axis.labels[2].color, quoteColor);
    QCOMPARE(axis.drawnTicks(), (Values{100, 200, 300}));
    QCOMPARE(image.pixelColor(200, static_cast<int>(axis.maxTickLength() / 2.0)), lineColor);
    QVERIFY(reddishPixels(image, axis.tickLabelBoundingRect(200)) > 5);
}

void tst_scaledraw_painting::ticksStayWhenNoLabelFits_data()
{
    QTest::addColumn<Values>("candidates");
    QTest::addColumn<double>("quote");
    QTest::newRow("one") << Values{100} << 105.0;
    QTest::newRow("two") << Values{100, 105} << 110.0;
}

void tst_scaledraw_painting::ticksStayWhenNoLabelFits()
{
    QFETCH(Values, candidates);
    QFETCH(double, quote);
    PaintedAxis axis(QwtScaleDiv(0, 400, {50}, {}, candidates));
    axis.setPaintedOnce();
    axis.setQuote(quote, false);
    QCOMPARE(axis.labelTicks(), Values{});
    QCOMPARE(axis.curKotirIndex(), -1);
    axis.paint();
    QCOMPARE(axis.drawnLabels(), Values{});
    QCOMPARE(axis.drawnTicks(), Values{50} + candidates);
    QCOMPARE(axis.backbones, 1);
}

void tst_scaledraw_painting::linePens()
{
    PaintedAxis axis(majorTicks({100}));
    TestVersions::setPenWidth(axis, 3);
    QImage image(420, 60, QImage::Format_RGB32);
    QPainter painter(&image);
    QPen painterPen(Qt::green, 11, Qt::DashLine, Qt::RoundCap);
    painterPen.setCosmetic(true);
    painter.setPen(painterPen);
    axis.draw(&painter, palette());
    QCOMPARE(axis.linePens.size(), 2);
    for (const QPen& pen : axis.linePens) {
        QCOMPARE(pen.color(), lineColor);
        QCOMPARE(pen.width(), 3);
        QCOMPARE(pen.capStyle(), Qt::FlatCap);
        QVERIFY(!pen.isCosmetic());
        QCOMPARE(pen.style(), Qt::DashLine);
    }
    // Both colours are those of the current group.
    QPalette disabled = palette();
    disabled.setColor(QPalette::Disabled, QPalette::Text, Qt::cyan);
    disabled.setColor(QPalette::Disabled, QPalette::WindowText, Qt::magenta);
    disabled.setCurrentColorGroup(QPalette::Disabled);
    axis.linePens.clear();
    axis.labels.clear();
    axis.draw(&painter, disabled);
    QCOMPARE(axis.linePens.first().color(), QColor(Qt::magenta));
    QCOMPARE(axis.labels.first().color, QColor(Qt::cyan));
}

void tst_scaledraw_painting::backboneIsNotDrawnAsTheTicksLeftIt()
{
    PaintedAxis axis(majorTicks({100}));
    axis.penLeftByTicks = QPen(Qt::cyan, 9);
    axis.paint();
    QCOMPARE(axis.backbones, 1);
    QCOMPARE(axis.linePens.last().color(), lineColor);
    QCOMPARE(axis.linePens.last().width(), TestVersions::penWidth(axis));
}

void tst_scaledraw_painting::components_data()
{
    QTest::addColumn<int>("component");
    QTest::newRow("labels") << int(QwtAbstractScaleDraw::Labels);
    QTest::newRow("ticks") << int(QwtAbstractScaleDraw::Ticks);
    QTest::newRow("backbone") << int(QwtAbstractScaleDraw::Backbone);
}

void tst_scaledraw_painting::components()
{
    QFETCH(int, component);
    PaintedAxis axis(majorTicks({100, 200}));
    axis.setQuote(150);
    for (const auto other :
        {QwtAbstractScaleDraw::Labels, QwtAbstractScaleDraw::Ticks, QwtAbstractScaleDraw::Backbone})
        axis.enableComponent(other, other == component);
    axis.paint();
    QCOMPARE(axis.labels.size(), component == QwtAbstractScaleDraw::Labels ? 3 : 0);
    QCOMPARE(axis.ticks.size(), component == QwtAbstractScaleDraw::Ticks ? 2 : 0);
    QCOMPARE(axis.backbones, component == QwtAbstractScaleDraw::Backbone ? 1 : 0);
}

void tst_scaledraw_painting::painterIsRestored()
{
    PaintedAxis axis(majorTicks({100, 200}));
    axis.setQuote(150);
    QImage image(420, 60, QImage::Format_RGB32);
    QPainter painter(&image);
    const QPen pen(Qt::green, 4, Qt::DotLine, Qt::RoundCap);
    painter.setPen(pen);
    axis.draw(&painter, palette());
    QCOMPARE(painter.pen(), pen);
    QVERIFY(painter.worldTransform().isIdentity());
}

PLOT2D_TEST_MAIN(tst_scaledraw_painting)

#include "tst_scaledraw_painting.moc"
