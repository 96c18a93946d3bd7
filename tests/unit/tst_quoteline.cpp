#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/quoteline_p.h>

#include <qwt_scale_div.h>

#include <cmath>
#include <limits>
#include <memory>

namespace {

constexpr double largest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double halfOfLargest = 8.988465674311579e307;

/// Samples of a line that no update of these tests would make.
QVector<QPointF> lineAt(double price)
{
    return {{price, -1000.0}, {price, 1000.0}};
}

QVector<QPointF> samplesOf(const PriceBased2dPlotCurve* curve)
{
    QVector<QPointF> samples;
    for (int i = 0; i < static_cast<int>(curve->dataSize()); ++i)
        samples << curve->sample(i);
    return samples;
}

}

/// The line at the current quote: updateCurKotirPoints().
class tst_quoteline : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void ends_data();
    void ends();
    void scaleOfThePlotWidensTheRange();
    void invertedScale();
    void notMoved_data();
    void notMoved();
    void negativeQuoteKeepsThePrice_data();
    void negativeQuoteKeepsThePrice();
    void quoteOfMinusZeroIsNotNegative();
    void notReplotted();

    void onlyTheFirstLineMoves();
    void firstLineOfOtherSizeHidesTheSecond();
    void hiddenLineMoves();
    void curveThatRefusesItsTypeMoves();
    void otherCurvesDoNotMove();
    void withoutCurves();

    void priceOfALine_data();
    void priceOfALine();

private:
    std::unique_ptr<TestPlot> m_plot;
};

void tst_quoteline::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_quoteline::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_quoteline::init()
{
    m_plot = std::make_unique<TestPlot>();
    m_plot->setAxisScaleDiv(QwtPlot::yLeft, QwtScaleDiv(0.0, 15.0));
}

void tst_quoteline::cleanup()
{
    m_plot.reset();
}

void tst_quoteline::ends_data()
{
    QTest::addColumn<double>("scaleLow");
    QTest::addColumn<double>("scaleHigh");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<double>("lower");
    QTest::addColumn<double>("upper");
    const auto row = [](const char* name, QwtInterval scale, QwtInterval range, double lower, double upper) {
        QTest::newRow(name) << scale.minValue() << scale.maxValue() << range.minValue() << range.maxValue()
                            << lower << upper;
    };
    row("scale below", {0.0, 15.0}, {10.0, 20.0}, -2.0, 22.0);
    row("scale above", {10.0, 20.0}, {0.0, 15.0}, -2.0, 22.0);
    row("scale around", {0.0, 20.0}, {5.0, 10.0}, -2.0, 22.0);
    row("scale inside", {5.0, 10.0}, {0.0, 20.0}, -2.0, 22.0);
    row("inverted range, scale alone", {0.0, 20.0}, {15.0, 5.0}, -2.0, 22.0);
    row("zero range, scale alone", {0.0, 20.0}, {0.0, 0.0}, -2.0, 22.0);
    row("no width", {5.0, 5.0}, {5.0, 5.0}, 3.8, 6.2);
    row("hardly any width", {1e6, 1e6}, {1e6, 1e6 + 5e-7}, 1e6 - 1.2, 1e6 + 1.2);
    row("narrow but not without width", {0.0, 1e-9}, {0.0, 0.0}, -1e-10, 1.1e-9);
    row("clamped below", {-1.5e308, 0.0}, {0.0, 0.0}, -halfOfLargest, 1.5e307);
    row("clamped above", {0.0, 1.5e308}, {0.0, 0.0}, -1.5e307, halfOfLargest);
    row("all values", {0.0, 1.0}, {-largest, largest}, -halfOfLargest, halfOfLargest);
    row("all too low", {-largest, -largest}, {-largest, -largest}, -halfOfLargest, -largest);
    row("all too high", {largest, largest}, {largest, largest}, largest, halfOfLargest);
    row("from one infinity to the other", {0.0, 1.0}, {-infinity, infinity}, -halfOfLargest, halfOfLargest);
}

void tst_quoteline::ends()
{
    QFETCH(double, scaleLow);
    QFETCH(double, scaleHigh);
    QFETCH(double, low);
    QFETCH(double, high);
    QFETCH(double, lower);
    QFETCH(double, upper);
    m_plot->setAxisScaleDiv(QwtPlot::yLeft, QwtScaleDiv(scaleLow, scaleHigh));
    const auto* line = addCurve(*m_plot, 0, lineAt(105.0), "quote");
    m_plot->updateCurKotirPoints(low, high, 106.5);
    QCOMPARE(line->dataSize(), std::size_t(2));
    QCOMPARE(line->sample(0).x(), 106.5);
    QCOMPARE(line->sample(1).x(), 106.5);
    QCOMPARE(line->sample(0).y(), lower);
    QCOMPARE(line->sample(1).y(), upper);
}

void tst_quoteline::scaleOfThePlotWidensTheRange()
{
    auto* line = addCurve(*m_plot, 0, lineAt(105.0), "quote");
    m_plot->updateCurKotirPoints(10.0, 20.0, 105.0);
    QCOMPARE(samplesOf(line), (QVector<QPointF>{{105.0, -2.0}, {105.0, 22.0}}));
    m_plot->setAxisScaleDiv(QwtPlot::yLeft, QwtScaleDiv(10.0, 20.0));
    m_plot->updateCurKotirPoints(10.0, 20.0, 105.0);
    QCOMPARE(samplesOf(line), (QVector<QPointF>{{105.0, 9.0}, {105.0, 21.0}}));
}

void tst_quoteline::invertedScale()
{
    m_plot->setAxisScaleDiv(QwtPlot::yLeft, QwtScaleDiv(10.0, 0.0));
    auto* line = addCurve(*m_plot, 0, lineAt(105.0), "quote");
    m_plot->updateCurKotirPoints(8.0, 2.0, 106.0);
    QCOMPARE(samplesOf(line), lineAt(105.0));
    m_plot->updateCurKotirPoints(8.0, 18.0, 106.0);
    QCOMPARE(samplesOf(line), (QVector<QPointF>{{106.0, 7.0}, {106.0, 19.0}}));
}

void tst_quoteline::notMoved_data()
{
    QTest::addColumn<QVector<QPointF>>("samples");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<double>("quote");
    const QVector<QPointF> line = lineAt(105.0);
    const double nextAbove = std::nextafter(105.0, infinity);
    const auto row = [](const char* name, const QVector<QPointF>& samples, double low, double high,
                         double quote) { QTest::newRow(name) << samples << low << high << quote; };
    row("no samples", {}, 0.0, 20.0, 106.0);
    row("one sample", {{105.0, 1.0}}, 0.0, 20.0, 106.0);
    row("three samples", {{105.0, 1.0}, {105.0, 2.0}, {105.0, 3.0}}, 0.0, 20.0, 106.0);
    row("three samples, negative quote", {{105.0, 1.0}, {105.0, 2.0}, {105.0, 3.0}}, 0.0, 20.0, -1.0);
    row("two prices", {{105.0, 1.0}, {106.0, 2.0}}, 0.0, 20.0, -1.0);
    row("two prices hardly apart", {{105.0, 1.0}, {nextAbove, 2.0}}, 0.0, 20.0, -1.0);
    row("negative price", lineAt(-105.0), 0.0, 20.0, -1.0);
    row("quote of infinity", line, 0.0, 20.0, infinity);
    row("price of infinity", lineAt(infinity), 0.0, 20.0, -1.0);
    row("price of NaN", lineAt(notANumber), 0.0, 20.0, -1.0);
    row("quote of NaN", line, 0.0, 20.0, notANumber);
    row("low of NaN", line, notANumber, 20.0, 106.0);
    row("high of NaN", line, 0.0, notANumber, 106.0);
}

void tst_quoteline::notMoved()
{
    QFETCH(QVector<QPointF>, samples);
    QFETCH(double, low);
    QFETCH(double, high);
    QFETCH(double, quote);
    const auto* line = addCurve(*m_plot, 0, samples, "quote");
    m_plot->updateCurKotirPoints(low, high, quote);
    QCOMPARE(line->dataSize(), static_cast<std::size_t>(samples.size()));
    for (int i = 0; i < samples.size(); ++i) {
        QCOMPARE(line->sample(i).x(), samples.at(i).x());
        QCOMPARE(line->sample(i).y(), samples.at(i).y());
    }
}

void tst_quoteline::negativeQuoteKeepsThePrice_data()
{
    QTest::addColumn<double>("price");
    QTest::addColumn<double>("quote");
    QTest::newRow("the usual -1") << 105.0 << -1.0;
    QTest::newRow("barely negative") << 105.0 << -std::numeric_limits<double>::denorm_min();
    QTest::newRow("minus infinity") << 105.0 << -infinity;
    QTest::newRow("price zero") << 0.0 << -1.0;
    QTest::newRow("price minus zero") << -0.0 << -1.0;
}

void tst_quoteline::negativeQuoteKeepsThePrice()
{
    QFETCH(double, price);
    QFETCH(double, quote);
    const auto* line = addCurve(*m_plot, 0, lineAt(price), "quote");
    m_plot->updateCurKotirPoints(10.0, 20.0, quote);
    QCOMPARE(samplesOf(line), (QVector<QPointF>{{price, -2.0}, {price, 22.0}}));
}

void tst_quoteline::quoteOfMinusZeroIsNotNegative()
{
    const auto* line = addCurve(*m_plot, 0, lineAt(105.0), "quote");
    m_plot->updateCurKotirPoints(10.0, 20.0, -0.0);
    QCOMPARE(samplesOf(line), (QVector<QPointF>{{0.0, -2.0}, {0.0, 22.0}}));
}

void tst_quoteline::notReplotted()
{
    addCurve(*m_plot, 0, lineAt(105.0), "quote");
    m_plot->calls.clear();
    m_plot->updateCurKotirPoints(10.0, 20.0, 106.0);
    QCOMPARE(m_plot->calls, QStringList{"quote line 10 20 106"});
}

void tst_quoteline::onlyTheFirstLineMoves()
{
    addCurve(*m_plot, 9, lineAt(1.0), "value");
    const auto* first = addCurve(*m_plot, 0, lineAt(105.0), "quote");
    const auto* second = addCurve(*m_plot, 0, lineAt(105.0), "quote");
    m_plot->updateCurKotirPoints(10.0, 20.0, 106.0);
    QCOMPARE(first->sample(0).x(), 106.0);
    QCOMPARE(samplesOf(second), lineAt(105.0));
}

void tst_quoteline::firstLineOfOtherSizeHidesTheSecond()
{
    addCurve(*m_plot, 0, {}, "quote");
    const auto* second = addCurve(*m_plot, 0, lineAt(105.0), "quote");
    m_plot->updateCurKotirPoints(10.0, 20.0, 106.0);
    QCOMPARE(samplesOf(second), lineAt(105.0));
}

void tst_quoteline::hiddenLineMoves()
{
    auto* line = addCurve(*m_plot, 0, lineAt(105.0), "quote");
    line->setVisible(false);
    m_plot->updateCurKotirPoints(10.0, 20.0, 106.0);
    QCOMPARE(line->sample(0).x(), 106.0);
    QVERIFY(!line->isVisible());
}

void tst_quoteline::curveThatRefusesItsTypeMoves()
{
    class RefusingCurve : public PriceBased2dPlotCurve {
    public:
        using PriceBased2dPlotCurve::PriceBased2dPlotCurve;
        bool isValidType(int) const override { return !refusing; }
        bool refusing = false;
    };
    auto* line = new RefusingCurve(m_plot.get(), QStringLiteral("quote"));
    line->setDataType(0);
    line->refusing = true;
    line->setSamples(lineAt(105.0));
    line->attach(m_plot.get());
    QVERIFY(m_plot->attachedCurves(0).isEmpty());
    m_plot->updateCurKotirPoints(10.0, 20.0, 106.0);
    QCOMPARE(line->sample(0).x(), 106.0);
}

void tst_quoteline::otherCurvesDoNotMove()
{
    for (const int type : {-1, 9, 13}) {
        const auto* curve = addCurve(*m_plot, type, lineAt(105.0), "value");
        m_plot->updateCurKotirPoints(10.0, 20.0, 106.0);
        QCOMPARE(samplesOf(curve), lineAt(105.0));
    }
}

void tst_quoteline::withoutCurves()
{
    m_plot->updateCurKotirPoints(10.0, 20.0, 106.0);
    QVERIFY(m_plot->itemList().isEmpty());
}

void tst_quoteline::priceOfALine_data()
{
    QTest::addColumn<QVector<QPointF>>("samples");
    QTest::addColumn<bool>("known");
    QTest::newRow("agreed") << lineAt(105.0) << true;
    QTest::newRow("zero") << lineAt(0.0) << true;
    QTest::newRow("zeros of both signs") << QVector<QPointF>{{0.0, 1.0}, {-0.0, 2.0}} << true;
    QTest::newRow("negative") << lineAt(-105.0) << false;
    QTest::newRow("barely negative") << lineAt(-0.5) << false;
    QTest::newRow("NaN") << lineAt(notANumber) << false;
    QTest::newRow("different") << QVector<QPointF>{{105.0, 1.0}, {106.0, 2.0}} << false;
    QTest::newRow("one sample") << QVector<QPointF>{{105.0, 1.0}} << false;
    QTest::newRow("none") << QVector<QPointF>() << false;
}

void tst_quoteline::priceOfALine()
{
    QFETCH(QVector<QPointF>, samples);
    QFETCH(bool, known);
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("quote"));
    curve.setSamples(samples);
    const std::optional<double> price = QuoteLine::price(curve);
    QCOMPARE(price.has_value(), known);
    if (known)
        QCOMPARE(*price, samples.first().x());
}

PLOT2D_TEST_MAIN(tst_quoteline)
#include "tst_quoteline.moc"
