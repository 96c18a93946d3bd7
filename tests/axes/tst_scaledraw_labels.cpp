#include "axes/scaledrawprobe.h"
#include "support/testmain.h"

#include <qwt_text.h>

#include <cmath>
#include <limits>

using Values = QList<double>;

namespace {

constexpr int bottomAxis = 2;
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

class tst_scaledraw_labels : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void constructed();
    void enablingIsOneBit();
    void insideIsStrict_data();
    void insideIsStrict();
    void quoteIndex();
    void quoteIsStoredAsItIs();
    void candidates();
    void labelIsTheConvertedValue();
    void labelMayBeRichText();
    void noLabelsWithoutAScale();
    void equalDigitsOfTheLabels_data();
    void equalDigitsOfTheLabels();
    void equalDigitsDropTheCache();
    void digitFunctions();
    void maxFractionLength();
};

void tst_scaledraw_labels::constructed()
{
    const PriceBased2dPlotScaleDraw draw(bottomAxis);
    QVERIFY(draw.labelTicks().isEmpty());
    QCOMPARE(draw.labelMargin(), 8);
    QVERIFY(!draw.isPaintedOnce());
    QVERIFY(!draw.isCurKotirEnabled());
    QVERIFY(!draw.isCurKotirInside());
    QCOMPARE(draw.curKotirValue(), -1.0);
    QCOMPARE(draw.curKotirIndex(), -1);
    QCOMPARE(draw.equalDigits(), -1);
    QVERIFY(!draw.isConversionEnabled());
}

void tst_scaledraw_labels::enablingIsOneBit()
{
    ScaleDrawProbe draw(bottomAxis);
    draw.setPixelTicks({100, 200});
    draw.setCurKotirValue(150);
    draw.setCurKotirEnabled(true);
    QVERIFY(draw.isCurKotirEnabled());
    QVERIFY(!draw.isCurKotirInside());
    draw.updateCurKotirStatus();
    QVERIFY(draw.isCurKotirInside());

    draw.setCurKotirEnabled(false);
    QVERIFY(!draw.isCurKotirEnabled());
    QVERIFY(draw.isCurKotirInside());
    draw.updateCurKotirStatus();
    QVERIFY(!draw.isCurKotirInside());
}

void tst_scaledraw_labels::insideIsStrict_data()
{
    QTest::addColumn<double>("lower");
    QTest::addColumn<double>("upper");
    QTest::addColumn<double>("quote");
    QTest::addColumn<bool>("expected");

    const auto row = [](const char* name, double lower, double upper, double quote, bool expected) {
        QTest::newRow(name) << lower << upper << quote << expected;
    };
    row("inside", 100, 200, 150, true);
    row("on the lower bound", 100, 200, 100, false);
    row("just inside the lower bound", 100, 200, std::nextafter(100.0, 200.0), true);
    row("on the upper bound", 100, 200, 200, false);
    row("just inside the upper bound", 100, 200, std::nextafter(200.0, 100.0), true);
    row("below", 100, 200, 99, false);
    row("above", 100, 200, 201, false);
    row("negative", -200, -100, -150, true);
    row("inverted scale", 200, 100, 150, false);
    row("empty scale", 150, 150, 150, false);
    row("NaN", 100, 200, notANumber, false);
    row("infinite", 100, 200, infinity, false);
}

void tst_scaledraw_labels::insideIsStrict()
{
    QFETCH(double, lower);
    QFETCH(double, upper);
    QFETCH(double, quote);
    ScaleDrawProbe draw(bottomAxis);
    draw.setScaleDiv(division(lower, upper, {}));
    draw.setCurKotirValue(quote);
    draw.updateCurKotirStatus();
    QVERIFY(!draw.isCurKotirInside());
    draw.setCurKotirEnabled(true);
    draw.updateCurKotirStatus();
    QTEST(draw.isCurKotirInside(), "expected");
}

void tst_scaledraw_labels::quoteIndex()
{
    ScaleDrawProbe draw(bottomAxis);
    const Values ticks{100, 200, 300};
    for (const auto& [quote, index] : QList<std::pair<double, int>>{
             {50, 0}, {100, 0}, {101, 1}, {300, 2}, {301, 3}, {0, -1}, {-5, -1}, {infinity, 3}}) {
        draw.setCurKotirValue(quote);
        draw.updateCurKotirIndex(ticks);
        QCOMPARE(draw.curKotirIndex(), index);
    }
}

void tst_scaledraw_labels::quoteIsStoredAsItIs()
{
    ScaleDrawProbe draw(bottomAxis);
    for (const double quote : {105.5, 0.0, -3.0, 1e300, infinity, -infinity}) {
        draw.setCurKotirValue(quote);
        QCOMPARE(draw.curKotirValue(), quote);
    }
    // A quote that is nowhere leaves the labels alone.
    draw.setPixelTicks({100, 200});
    draw.setCurKotirEnabled(true);
    draw.setPaintedOnce();
    for (const double quote : {infinity, notANumber}) {
        draw.setCurKotirValue(quote);
        draw.updateLabels();
        QCOMPARE(draw.labelTicks(), (Values{100, 200}));
    }
}

void tst_scaledraw_labels::candidates()
{
    const PriceBased2dPlotScaleDraw draw(bottomAxis);
    const QwtScaleDiv usable(0, 10, {1, 2, 3}, {7.5, 2.5, 5}, {10, 5, 0});
    QCOMPARE(draw.getTicks(usable), (Values{0, 2.5, 5, 7.5, 10}));
    QCOMPARE(draw.getTicks(QwtScaleDiv(5, 5, {}, {}, {5})), Values{});
    QCOMPARE(draw.getTicks(QwtScaleDiv(10, 0, {}, {}, {5})), Values{});
    QCOMPARE(draw.getTicks(QwtScaleDiv()), Values{});
    // Also those that the scale does not reach.
    QCOMPARE(draw.getTicks(division(0, 10, {-5, 5, 15})), (Values{-5, 5, 15}));
}

void tst_scaledraw_labels::labelIsTheConvertedValue()
{
    ScaleDrawProbe draw(bottomAxis);
    draw.setScaleDiv(division(0, 10, {5}));
    draw.setMetricUnit(QStringLiteral("p"));
    QCOMPARE(draw.label(5.25).text(), draw.PriceBased2dPlotScaleDraw::convertedValue(5.25));
    QVERIFY(draw.label(5.25).text().endsWith(QLatin1Char('p')));
    draw.text = [](double value) { return QStringLiteral("<%1>").arg(value); };
    QCOMPARE(draw.label(20.0).text(), QStringLiteral("<20>"));
    draw.text = [](double) { return QString(); };
    QVERIFY(draw.label(5.25).isEmpty());
}

void tst_scaledraw_labels::labelMayBeRichText()
{
    ScaleDrawProbe draw(bottomAxis);
    draw.setScaleDiv(division(0, 10, {5}));
    const QString rich = QStringLiteral("<b>5</b>");
    draw.text = [&rich](double) { return rich; };
    QVERIFY(draw.label(5) == QwtText(rich, QwtText::AutoText));
    QVERIFY(!(draw.label(5) == QwtText(rich, QwtText::PlainText)));
}

void tst_scaledraw_labels::noLabelsWithoutAScale()
{
    ScaleDrawProbe draw(bottomAxis);
    for (const QwtScaleDiv& unusable : {QwtScaleDiv(), QwtScaleDiv(5, 5), QwtScaleDiv(10, 0)}) {
        draw.setScaleDiv(unusable);
        QVERIFY(draw.label(5).isEmpty());
    }
    draw.setScaleDiv(QwtScaleDiv(0, 10));
    QCOMPARE(draw.label(5).text(), draw.convertedValue(5));
}

void tst_scaledraw_labels::equalDigitsOfTheLabels_data()
{
    QTest::addColumn<Values>("ticks");
    QTest::addColumn<int>("expected");

    QTest::newRow("integers") << Values{1234, 1238} << 3;
    QTest::newRow("lengths differ") << Values{99, 101} << 0;
    QTest::newRow("wiped out") << Values{9991, 9992, 10001} << 0;
    QTest::newRow("fractions") << Values{12.345, 12.349} << 4;
    QTest::newRow("single") << Values{100} << std::numeric_limits<int>::min();
    QTest::newRow("negative") << Values{-1238, -1234} << std::numeric_limits<int>::min();
    QTest::newRow("duplicate") << Values{100, 100} << -1;
    QTest::newRow("none") << Values{} << -1;
}

void tst_scaledraw_labels::equalDigitsOfTheLabels()
{
    QFETCH(Values, ticks);
    ScaleDrawProbe draw(bottomAxis);
    draw.setScaleDiv(division(-20000, 20000, ticks));
    draw.updateLabels();
    QCOMPARE(draw.labelTicks(), ticks);
    QTEST(draw.equalDigits(), "expected");
}

void tst_scaledraw_labels::equalDigitsDropTheCache()
{
    ScaleDrawProbe draw(bottomAxis);
    const QFont font = QApplication::font();
    draw.text = [](double) { return digits(1); };
    draw.setPixelTicks({100, 200});
    draw.updateLabels();
    const int narrow = draw.maxLabelWidth(font);
    draw.text = [](double) { return digits(9); };
    QCOMPARE(draw.maxLabelWidth(font), narrow);
    draw.setEqualDigitsNum();
    QVERIFY(draw.maxLabelWidth(font) > narrow);

    // Without an answer the labels stay cached.
    draw.setPixelTicks({100, 100});
    draw.updateLabels();
    const int wide = draw.maxLabelWidth(font);
    draw.text = [](double) { return digits(1); };
    draw.setEqualDigitsNum();
    QCOMPARE(draw.equalDigits(), -1);
    QCOMPARE(draw.maxLabelWidth(font), wide);
}

void tst_scaledraw_labels::digitFunctions()
{
    PriceBased2dPlotScaleDraw draw(bottomAxis);
    QCOMPARE(draw.findEqualDigitsInIntegerPart(1234, 1238, 4), 3);
    QCOMPARE(draw.findEqualDigitsInIntegerPart(-1, 1, 1), -1);
    QCOMPARE(draw.findEqualDigitsInFractionPart(12.345, 12.349), 2);
    QCOMPARE(draw.findEqualDigitsInFractionPart(2, 1), -1);
}

void tst_scaledraw_labels::maxFractionLength()
{
    ScaleDrawProbe draw(bottomAxis);
    draw.setScaleDiv(division(0, 100, {12.345}, {12.349}));
    QCOMPARE(draw.maxFractionLength(), 0);
    draw.updateLabels();
    QCOMPARE(draw.equalDigits(), 4);
    QCOMPARE(draw.maxFractionLength(), 3);
    // It is the candidates of the scale that are looked at, with the equal digits found before.
    draw.setScaleDiv(division(0, 100, {1.00001}));
    QCOMPARE(draw.equalDigits(), 4);
    QCOMPARE(draw.maxFractionLength(), 5);
    draw.setScaleDiv(division(0, 100, {1.5, 1.5}));
    draw.updateLabels();
    QCOMPARE(draw.maxFractionLength(), 0);
}

PLOT2D_TEST_MAIN(tst_scaledraw_labels)

#include "tst_scaledraw_labels.moc"
