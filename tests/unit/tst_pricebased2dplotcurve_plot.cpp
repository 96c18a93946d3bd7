#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotscaledraw.h>

#include <qwt_plot_marker.h>
#include <qwt_symbol.h>

#include <memory>

namespace {

using Points = QVector<PriceBased2dPlotPoint>;

const Points fivePoints{
    {100.0, 1.0, false}, {101.0, 2.0, true}, {102.0, 3.0, false}, {103.0, 4.0, true}, {104.0, 5.0, false}};

QwtPlotMarker* addMarker(TestPlot& plot, bool withSymbol)
{
    auto* marker = new QwtPlotMarker;
    if (withSymbol)
        marker->setSymbol(new QwtSymbol(QwtSymbol::Ellipse));
    marker->attach(&plot);
    return marker;
}

PriceBased2dPlotScaleDraw* priceAxis(TestPlot& plot)
{
    return dynamic_cast<PriceBased2dPlotScaleDraw*>(plot.axisScaleDraw(QwtPlot::xBottom));
}

}

/// What showing and hiding a curve does to its plot.
class tst_pricebased2dplotcurve_plot : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void otherTypesChangeOnlyThemselves_data();
    void otherTypesChangeOnlyThemselves();
    void withoutPlotOnlyTheCurveChanges_data();
    void withoutPlotOnlyTheCurveChanges();
    void plotDestroyedFirst();

    void quoteLineIsShown_data();
    void quoteLineIsShown();
    void quoteLineIsNotShown_data();
    void quoteLineIsNotShown();
    void quoteLineIsHidden();
    void quoteLineRefreshesTheAxisFirst();
    void quoteOfAWrongTypePassesThrough();
    void quoteLineOfAPlotWithoutAxes();
    void quoteLineAfterTheTableIsGone();

private:
    std::unique_ptr<TestPlot> m_plot;

    PriceBased2dPlotCurve* addQuoteLine();
};

void tst_pricebased2dplotcurve_plot::init()
{
    TestHost::createSecurities();
    TestHost::createBoards();
    m_plot = std::make_unique<TestPlot>();
    m_plot->setIsinId(10);
    m_plot->setBoardId(2);
    m_plot->setPriceInterval({100.0, 110.0, 5.0, true});
}

void tst_pricebased2dplotcurve_plot::cleanup()
{
    m_plot.reset();
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

PriceBased2dPlotCurve* tst_pricebased2dplotcurve_plot::addQuoteLine()
{
    return addCurve(*m_plot, 0, {{105.0, 0.0}, {105.0, 1.0}}, "quote");
}

void tst_pricebased2dplotcurve_plot::otherTypesChangeOnlyThemselves_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {-1, 9, 10, 11, 12})
        QTest::addRow("%d", type) << type;
}

void tst_pricebased2dplotcurve_plot::otherTypesChangeOnlyThemselves()
{
    QFETCH(int, type);
    TestHost::addSecurity(TestHost::future({{"cur_kotir", "101"}}));
    auto* curve = addCurve(*m_plot, type, {{100.0, 1.0}}, "a");
    const auto* marker = addMarker(*m_plot, true);
    m_plot->calls.clear();
    curve->setVisible(false);
    QVERIFY(!curve->isVisible());
    QVERIFY(marker->isVisible());
    curve->setVisible(true);
    QVERIFY(curve->isVisible());
    QVERIFY(!priceAxis(*m_plot)->isCurKotirEnabled());
    QVERIFY(m_plot->calls.isEmpty());
}

void tst_pricebased2dplotcurve_plot::withoutPlotOnlyTheCurveChanges_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {-1, 0, 9, 13})
        QTest::addRow("%d", type) << type;
}

void tst_pricebased2dplotcurve_plot::withoutPlotOnlyTheCurveChanges()
{
    QFETCH(int, type);
    PriceBased2dPlotCurve curve(nullptr, QStringLiteral("a"));
    curve.setDataType(type);
    // It counts for whom the curve was made, not where it is attached.
    curve.attach(m_plot.get());
    const auto* marker = addMarker(*m_plot, true);
    curve.setVisible(false);
    QVERIFY(!curve.isVisible());
    QVERIFY(marker->isVisible());
    curve.setVisible(true);
    QVERIFY(curve.isVisible());
    curve.detach();
}

void tst_pricebased2dplotcurve_plot::plotDestroyedFirst()
{
    PriceBased2dPlotCurve line(m_plot.get(), QStringLiteral("quote"));
    line.setDataType(0);
    PriceBased2dPlotCurve marked(m_plot.get(), QStringLiteral("marked"));
    marked.setDataType(13);
    m_plot.reset();
    line.setVisible(false);
    line.setVisible(true);
    QVERIFY(line.isVisible());
    marked.setVisible(false);
    QVERIFY(!marked.isVisible());
    marked.setMarkerSamples(fivePoints);
    QCOMPARE(marked.dataSize(), std::size_t(0));
}

void tst_pricebased2dplotcurve_plot::quoteLineIsShown_data()
{
    QTest::addColumn<QVariant>("quote");
    QTest::addColumn<double>("expected");
    QTest::newRow("positive") << QVariant("101.25") << 101.25;
    QTest::newRow("zero") << QVariant("0") << 0.0;
    QTest::newRow("none: the middle of the interval") << QVariant() << 105.0;
}

void tst_pricebased2dplotcurve_plot::quoteLineIsShown()
{
    QFETCH(QVariant, quote);
    QFETCH(double, expected);
    TestHost::addSecurity(TestHost::future({{"cur_kotir", quote}}));
    auto* line = addQuoteLine();
    line->setVisible(false);
    line->setVisible(true);
    QVERIFY(line->isVisible());
    QVERIFY(priceAxis(*m_plot)->isCurKotirEnabled());
    QCOMPARE(priceAxis(*m_plot)->curKotirValue(), expected);
}

void tst_pricebased2dplotcurve_plot::quoteLineIsNotShown_data()
{
    QTest::addColumn<QVariant>("quote");
    QTest::addColumn<int>("isinId");
    QTest::newRow("no future") << QVariant("101.25") << 11;
    QTest::newRow("negative quote") << QVariant("-1") << 10;
    QTest::newRow("barely negative quote") << QVariant("-0.00001") << 10;
}

void tst_pricebased2dplotcurve_plot::quoteLineIsNotShown()
{
    QFETCH(QVariant, quote);
    QFETCH(int, isinId);
    TestHost::addSecurity(TestHost::future({{"cur_kotir", quote}, {"isin_id", isinId}}));
    auto* line = addQuoteLine();
    line->setVisible(false);
    m_plot->setCurKotirValue(77.0);
    m_plot->calls.clear();
    line->setVisible(true);
    QVERIFY(!line->isVisible());
    QVERIFY(!priceAxis(*m_plot)->isCurKotirEnabled());
    QCOMPARE(priceAxis(*m_plot)->curKotirValue(), 77.0);
    QVERIFY(m_plot->calls.isEmpty());
}

void tst_pricebased2dplotcurve_plot::quoteLineIsHidden()
{
    // No future is needed to hide the line.
    auto* line = addQuoteLine();
    m_plot->setCurKotirEnabled(true);
    m_plot->setCurKotirValue(77.0);
    m_plot->calls.clear();
    line->setVisible(false);
    QVERIFY(!line->isVisible());
    QVERIFY(!priceAxis(*m_plot)->isCurKotirEnabled());
    QCOMPARE(priceAxis(*m_plot)->curKotirValue(), 77.0);
    QCOMPARE(m_plot->calls, (QStringList{"replot", "replot"}));
}

void tst_pricebased2dplotcurve_plot::quoteLineRefreshesTheAxisFirst()
{
    TestHost::addSecurity(TestHost::future({{"cur_kotir", "101.25"}}));
    auto* line = addQuoteLine();
    line->setVisible(false);
    int replots = 0;
    m_plot->onReplot = [&] {
        ++replots;
        QVERIFY(priceAxis(*m_plot)->isCurKotirEnabled());
        QCOMPARE(priceAxis(*m_plot)->curKotirValue(), 101.25);
        QVERIFY(!line->isVisible());
    };
    line->setVisible(true);
    QCOMPARE(replots, 2);
    QVERIFY(line->isVisible());
}

void tst_pricebased2dplotcurve_plot::quoteOfAWrongTypePassesThrough()
{
    TestHost::createSecurities(
        TestHost::withType(TestHost::securitiesColumns(), "cur_kotir", FieldType::Double));
    m_plot = std::make_unique<TestPlot>();
    m_plot->setIsinId(10);
    m_plot->setBoardId(2);
    m_plot->setPriceInterval({100.0, 110.0, 5.0, true});
    TestHost::addSecurity(TestHost::future({{"cur_kotir", 101.0}}));
    auto* line = addQuoteLine();
    line->setVisible(false);
    QCOMPARE(TestHost::thrownText([line] { line->setVisible(true); }),
        QStringLiteral("Incorrect type conversion."));
    QVERIFY(!line->isVisible());
    QVERIFY(!priceAxis(*m_plot)->isCurKotirEnabled());
}

void tst_pricebased2dplotcurve_plot::quoteLineOfAPlotWithoutAxes()
{
    TestHost::addSecurity(TestHost::future({{"cur_kotir", "101.25"}}));
    TestPlot bare(false);
    bare.setIsinId(10);
    bare.setBoardId(2);
    auto* line = addCurve(bare, 0, {{105.0, 0.0}, {105.0, 1.0}}, "quote");
    line->setVisible(false);
    QVERIFY(!line->isVisible());
    line->setVisible(true);
    QVERIFY(line->isVisible());
}

void tst_pricebased2dplotcurve_plot::quoteLineAfterTheTableIsGone()
{
    TestHost::addSecurity(TestHost::future({{"cur_kotir", "101.25"}}));
    auto* line = addQuoteLine();
    line->setVisible(false);
    TestHost::dropSecurities();
    line->setVisible(true);
    QVERIFY(!line->isVisible());
}

PLOT2D_TEST_MAIN(tst_pricebased2dplotcurve_plot)
#include "tst_pricebased2dplotcurve_plot.moc"
