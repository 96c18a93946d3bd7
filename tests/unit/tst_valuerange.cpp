#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/valuerange_p.h>

#include <qwt_scale_div.h>
#include <qwt_series_data.h>

#include <cmath>
#include <limits>
#include <memory>

namespace {

constexpr double largest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Samples whose rectangle is proper even where they are no numbers.
class ProperSamples : public QwtPointSeriesData {
public:
    using QwtPointSeriesData::QwtPointSeriesData;
    QRectF boundingRect() const override { return QRectF(0.0, 0.0, 1.0, 1.0); }
};

/// Samples within a rectangle of a host's own.
class SamplesWithin : public QwtPointSeriesData {
public:
    explicit SamplesWithin(const QRectF& rectangle)
        : QwtPointSeriesData({{105.0, 1.0}})
        , m_rectangle(rectangle)
    {
    }
    QRectF boundingRect() const override { return m_rectangle; }

private:
    QRectF m_rectangle;
};

}

/// minMaxYAtXRange() and roundedXValue().
class tst_valuerange : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void scaleWithoutRange_data();
    void scaleWithoutRange();
    void properRange_data();
    void properRange();
    void samplesThatCount_data();
    void samplesThatCount();
    void curvesThatCount_data();
    void curvesThatCount();
    void foreignCurvesDoNotCount();
    void severalCurves();
    void badSampleStopsEverything();
    void badSampleOfAPassedOverCurve();

    void snapped_data();
    void snapped();
    void withoutPickerPricesAreNotSnapped();
    void snappedToThePickersStep();
    void rangeIsSnappedToThePickersStep();
    void upperEndOnAMultipleOfTheStepIsExclusive();
    void rectangleOfNoNumbers_data();
    void rectangleOfNoNumbers();
    void viewable_data();
    void viewable();

private:
    std::unique_ptr<TestPlot> m_plot;

    void setPriceStep(const char* step);
};

void tst_valuerange::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_valuerange::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_valuerange::init()
{
    m_plot = std::make_unique<TestPlot>();
    m_plot->setAxisScaleDiv(QwtPlot::xBottom, QwtScaleDiv(100.0, 110.0));
}

void tst_valuerange::cleanup()
{
    m_plot.reset();
}

void tst_valuerange::scaleWithoutRange_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<bool>("range");
    QTest::newRow("usual") << 100.0 << 110.0 << true;
    QTest::newRow("empty") << 100.0 << 100.0 << false;
    QTest::newRow("inverted") << 110.0 << 100.0 << false;
    QTest::newRow("hardly apart") << 100.0 << 100.0 * (1.0 + 5e-13) << false;
    QTest::newRow("barely apart enough") << 100.0 << 100.0 * (1.0 + 5e-12) << true;
    QTest::newRow("from zero") << 0.0 << 1e-300 << true;
    QTest::newRow("from NaN") << notANumber << 110.0 << false;
    QTest::newRow("negative prices") << -110.0 << -100.0 << true;
}

void tst_valuerange::scaleWithoutRange()
{
    QFETCH(double, low);
    QFETCH(double, high);
    QFETCH(bool, range);
    m_plot->setAxisScaleDiv(QwtPlot::xBottom, QwtScaleDiv(low, high));
    QVERIFY(m_plot->minMaxYAtXRange() == (range ? std::pair(0.0, 0.0) : std::pair(1.0, -1.0)));
}

void tst_valuerange::properRange_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<bool>("proper");
    const double big = 1e12;
    QTest::newRow("far apart") << 1.0 << 2.0 << true;
    QTest::newRow("equal") << 1.0 << 1.0 << false;
    QTest::newRow("zeros") << 0.0 << 0.0 << false;
    QTest::newRow("inverted") << 2.0 << 1.0 << false;
    QTest::newRow("about zero") << -1e-300 << 1e-300 << true;
    QTest::newRow("nearer than the host tells apart") << big << big + 0.5 << false;
    QTest::newRow("nearer than that, negative") << -big - 0.5 << -big << false;
    QTest::newRow("further") << big << big + 5.0 << true;
    QTest::newRow("further, negative") << -big - 5.0 << -big << true;
    QTest::newRow("NaN below") << notANumber << 1.0 << false;
    QTest::newRow("NaN above") << 1.0 << notANumber << false;
}

void tst_valuerange::properRange()
{
    QFETCH(double, low);
    QFETCH(double, high);
    QFETCH(bool, proper);
    QCOMPARE(ValueRange::isProperRange(low, high), proper);
}

void tst_valuerange::samplesThatCount_data()
{
    QTest::addColumn<QVector<QPointF>>("samples");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    const auto row = [](const char* name, const QVector<QPointF>& samples, double min, double max) {
        QTest::newRow(name) << samples << min << max;
    };
    const double nothing = largest;
    row("inside", {{101, 3}, {105, -2}, {109, 1}}, -2, 3);
    row("one", {{105, 7}}, 7, 7);
    row("on the lower end", {{100, 5}, {105, 6}}, 5, 6);
    row("on the upper end", {{105, 6}, {110, 9}}, 6, 6);
    row("on the upper end only", {{110, 9}}, nothing, -nothing);
    row("fuzzily on the lower end, below", {{100 * (1 - 5e-13), 5}}, 5, 5);
    row("below the lower end", {{100 * (1 - 5e-12), 5}}, nothing, -nothing);
    row("fuzzily on the upper end, below", {{110 * (1 - 5e-13), 5}}, 5, 5);
    row("fuzzily on the upper end, above", {{110 * (1 + 5e-13), 5}}, nothing, -nothing);
    row("outside on both sides", {{90, 1}, {120, 2}}, nothing, -nothing);
    row("beyond the upper end the walk stops", {{111, 5}, {105, 9}}, nothing, -nothing);
    row("on the upper end the walk goes on", {{110, 5}, {105, 9}}, 9, 9);
    row("NaN behind the first sample beyond", {{105, 1}, {111, 5}, {112, notANumber}}, 1, 1);
    row("NaN in the first sample beyond", {{105, 1}, {111, notANumber}}, 1, -1);
    row("NaN before the range", {{90, notANumber}, {105, 3}}, 1, -1);
    row("NaN on the upper end", {{105, 3}, {110, notANumber}}, 1, -1);
    row("price of NaN", {{notANumber, 3}}, 1, -1);
    row("infinite value", {{105, infinity}}, 1, -1);
    row("infinite price", {{infinity, 3}}, 1, -1);
    row("minus infinite price", {{-infinity, 3}, {105, 3}}, 1, -1);
    row("largest values", {{105, -largest}, {106, largest}}, -largest, largest);
}

void tst_valuerange::samplesThatCount()
{
    QFETCH(QVector<QPointF>, samples);
    QFETCH(double, min);
    QFETCH(double, max);
    auto* curve = addCurve(*m_plot, 9, {}, "a");
    curve->setData(new ProperSamples(samples));
    QVERIFY(curve->isValid());
    const auto range = m_plot->minMaxYAtXRange();
    QVERIFY2(range == std::pair(min, max),
        qPrintable(QStringLiteral("%1 %2").arg(range.first, 0, 'g', 17).arg(range.second, 0, 'g', 17)));
}

void tst_valuerange::curvesThatCount_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("visible");
    QTest::addColumn<QString>("title");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    for (const int type : {9, 10, 11, 12, 13})
        QTest::addRow("type %d", type) << type << true << "a" << 2.0 << 3.0;
    QTest::newRow("hidden") << 9 << false << "a" << 0.0 << 0.0;
    QTest::newRow("invalid") << 9 << true << "" << 0.0 << 0.0;
    QTest::newRow("without type") << -1 << true << "a" << 0.0 << 0.0;
    QTest::newRow("hidden without type") << -1 << false << "a" << 0.0 << 0.0;
    QTest::newRow("quote line") << 0 << true << "a" << 0.0 << 0.0;
    QTest::newRow("hidden quote line") << 0 << false << "a" << largest << -largest;
    QTest::newRow("hidden invalid quote line") << 0 << false << "" << largest << -largest;
}

void tst_valuerange::curvesThatCount()
{
    QFETCH(int, type);
    QFETCH(bool, visible);
    QFETCH(QString, title);
    QFETCH(double, min);
    QFETCH(double, max);
    auto* curve = addCurve(*m_plot, type, {{101.0, 2.0}, {102.0, 3.0}}, title);
    if (!visible)
        curve->setVisible(false);
    QCOMPARE(curve->isVisible(), visible);
    QVERIFY(m_plot->minMaxYAtXRange() == std::pair(min, max));
}

void tst_valuerange::foreignCurvesDoNotCount()
{
    auto* foreign = new QwtPlotCurve(QStringLiteral("a"));
    foreign->setSamples(QVector<QPointF>{{101.0, notANumber}, {102.0, 3.0}});
    foreign->attach(m_plot.get());
    QVERIFY(m_plot->minMaxYAtXRange() == std::pair(0.0, 0.0));
}

void tst_valuerange::severalCurves()
{
    addCurve(*m_plot, 0, {{105.0, -50.0}, {105.0, 50.0}}, "quote");
    addCurve(*m_plot, 9, {{101.0, 2.0}, {102.0, 3.0}}, "a");
    addCurve(*m_plot, 9, {{95.0, -40.0}, {109.0, 7.0}, {115.0, 40.0}}, "b");
    addCurve(*m_plot, 13, {{105.0, -1.0}}, "c");
    addCurve(*m_plot, 10, {{105.0, 99.0}}, "d")->setVisible(false);
    addCurve(*m_plot, 10, {{120.0, 99.0}}, "e");
    QVERIFY(m_plot->minMaxYAtXRange() == std::pair(-1.0, 7.0));
}

void tst_valuerange::badSampleStopsEverything()
{
    addCurve(*m_plot, 9, {{101.0, 2.0}}, "a");
    auto* bad = addCurve(*m_plot, 9, {}, "b");
    bad->setData(new ProperSamples({{102.0, infinity}}));
    QVERIFY(bad->isValid());
    addCurve(*m_plot, 9, {{103.0, 4.0}}, "c");
    QVERIFY(m_plot->minMaxYAtXRange() == std::pair(1.0, -1.0));
}

void tst_valuerange::badSampleOfAPassedOverCurve()
{
    addCurve(*m_plot, 9, {{101.0, 2.0}}, "a");
    addCurve(*m_plot, 9, {{102.0, infinity}}, "hidden")->setVisible(false);
    addCurve(*m_plot, 9, {{102.0, infinity}}, QString());
    addCurve(*m_plot, 0, {{102.0, infinity}, {102.0, infinity}}, "quote");
    QVERIFY(m_plot->minMaxYAtXRange() == std::pair(2.0, 2.0));
}

void tst_valuerange::snapped_data()
{
    QTest::addColumn<double>("price");
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("expected");
    const double wholes = 9007199254740992.0; // 2^53
    const auto row = [](const char* name, double price, double step, double expected) {
        QTest::newRow(name) << price << step << expected;
    };
    row("below the half", 102.4, 5.0, 100.0);
    row("half", 102.5, 5.0, 105.0);
    row("above the half", 102.6, 5.0, 105.0);
    row("negative below the half", -102.4, 5.0, -100.0);
    row("negative half goes upwards", -102.5, 5.0, -100.0);
    row("negative above the half", -102.6, 5.0, -105.0);
    row("on the step", 105.0, 5.0, 105.0);
    row("zero", 0.0, 5.0, 0.0);
    row("step zero", 102.4, 0.0, 102.4);
    row("step as good as zero", 102.4, 1e-12, 102.4);
    row("step barely not zero", 102.4, 2e-12, std::floor(102.4 / 2e-12 + 0.5) * 2e-12);
    row("tiny price, step as good as zero", 2.2e-12, 1e-12, 2.2e-12);
    row("tiny price, step barely not zero", 2.2e-12, 1.5e-12, 1.5e-12);
    row("step negative", 102.4, -5.0, 102.4);
    row("step of less than one negative", 102.4, -0.5, 102.4);
    row("many steps", 1000000.0, 0.0001, 1000000.0);
    row("more steps than an int holds", 3000000000.5, 1.0, 3000000001.0);
    row("negative, more than an int holds", -3000000000.5, 1.0, -3000000000.0);
    row("2^53 steps", wholes, 1.0, wholes);
    row("half a step among many", 3500000000000000.5, 1.0, 3500000000000001.0);
    row("last half", wholes / 2.0 - 0.5, 1.0, wholes / 2.0);
    row("odd number of steps beyond the halves", wholes / 2.0 + 1.0, 1.0, wholes / 2.0 + 1.0);
    row("just beyond 2^53 steps", 3137153517942587.0, 0.3, 3137153517942587.0);
    row("beyond 2^53 steps", 1e300, 0.3, 1e300);
    row("result overflows", largest, largest / 1.5, largest);
    row("infinite price", infinity, 5.0, infinity);
    row("price of NaN", notANumber, 5.0, notANumber);
    row("infinite step", 102.4, infinity, 102.4);
}

void tst_valuerange::snapped()
{
    QFETCH(double, price);
    QFETCH(double, step);
    QFETCH(double, expected);
    const double result = ValueRange::snapped(price, step);
    QVERIFY2(result == expected || (std::isnan(result) && std::isnan(expected)),
        qPrintable(QString::number(result, 'g', 17)));
}

void tst_valuerange::withoutPickerPricesAreNotSnapped()
{
    QCOMPARE(m_plot->roundedXValue(102.4), 102.4);
    m_plot->createPicker();
    QCOMPARE(m_plot->priceStep(), -1.0);
    QCOMPARE(m_plot->roundedXValue(102.4), 102.4);
}

void tst_valuerange::setPriceStep(const char* step)
{
    TestHost::createBoards();
    TestHost::createSecurities();
    m_plot = std::make_unique<TestPlot>();
    m_plot->setAxisScaleDiv(QwtPlot::xBottom, QwtScaleDiv(100.0, 110.0));
    TestHost::addSecurity(TestHost::future({{"price_step", QString::fromLatin1(step)}}));
    m_plot->setIsinId(10);
    m_plot->setBoardId(2);
    QVERIFY(QMetaObject::invokeMethod(m_plot->createPicker(), "setPriceStep"));
}

void tst_valuerange::snappedToThePickersStep()
{
    setPriceStep("5");
    QCOMPARE(m_plot->priceStep(), 5.0);
    QCOMPARE(m_plot->roundedXValue(102.4), 100.0);
    setPriceStep("0");
    QCOMPARE(m_plot->priceStep(), 0.0);
    QCOMPARE(m_plot->roundedXValue(102.4), 102.4);
}

void tst_valuerange::rangeIsSnappedToThePickersStep()
{
    setPriceStep("5");
    m_plot->setAxisScaleDiv(QwtPlot::xBottom, QwtScaleDiv(101.0, 109.0));
    addCurve(*m_plot, 9, {{100.0, 1.0}, {105.0, 2.0}, {109.5, 3.0}, {110.0, 4.0}}, "a");
    QVERIFY(m_plot->minMaxYAtXRange() == std::pair(1.0, 3.0));
    m_plot->setAxisScaleDiv(QwtPlot::xBottom, QwtScaleDiv(101.0, 102.0));
    QVERIFY(m_plot->minMaxYAtXRange() == std::pair(1.0, -1.0));
}

void tst_valuerange::upperEndOnAMultipleOfTheStepIsExclusive()
{
    setPriceStep("5");
    addCurve(*m_plot, 9, {{100.0, 1.0}, {105.0, 2.0}, {110.0, 4.0}}, "a");
    QVERIFY(m_plot->minMaxYAtXRange() == std::pair(1.0, 2.0));
}

void tst_valuerange::rectangleOfNoNumbers_data()
{
    QTest::addColumn<QRectF>("rectangle");
    QTest::addColumn<QRectF>("expected");
    QTest::newRow("numbers") << QRectF(1.0, 2.0, 3.0, 4.0) << QRectF(1.0, 2.0, 3.0, 4.0);
    QTest::newRow("no prices") << QRectF(notANumber, 2.0, notANumber, 4.0) << QRectF();
    QTest::newRow("no values") << QRectF(1.0, notANumber, 3.0, notANumber) << QRectF();
    QTest::newRow("neither") << QRectF(notANumber, notANumber, notANumber, notANumber) << QRectF();
}

void tst_valuerange::rectangleOfNoNumbers()
{
    QFETCH(QRectF, rectangle);
    auto* curve = addCurve(*m_plot, 9, {}, "a");
    curve->setData(new SamplesWithin(rectangle));
    QTEST(ValueRange::boundingRectangle({curve}), "expected");
}

void tst_valuerange::viewable_data()
{
    QTest::addColumn<QRectF>("curves");
    QTest::addColumn<bool>("expected");
    QTest::newRow("usual") << QRectF(1.0, 2.0, 3.0, 4.0) << true;
    QTest::newRow("one value") << QRectF(1.0, 2.0, 3.0, 0.0) << true;
    QTest::newRow("one price") << QRectF(1.0, 2.0, 0.0, 4.0) << false;
    QTest::newRow("none") << QRectF() << false;
    QTest::newRow("negative width") << QRectF(1.0, 2.0, -3.0, 4.0) << false;
    QTest::newRow("negative height") << QRectF(1.0, 2.0, 3.0, -4.0) << false;
    QTest::newRow("infinite") << QRectF(-infinity, -infinity, infinity, infinity) << true;
    QTest::newRow("NaN") << QRectF(notANumber, notANumber, notANumber, notANumber) << true;
}

void tst_valuerange::viewable()
{
    QFETCH(QRectF, curves);
    QTEST(ValueRange::canBeViewed(curves), "expected");
}

PLOT2D_TEST_MAIN(tst_valuerange)
#include "tst_valuerange.moc"
