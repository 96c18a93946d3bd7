#include "flow/strikes.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <basic_models/strikebybasecodemodel.h>
#include <plot2d/pricebased2dplotpointmanager.h>

#include <qwt_scale_div.h>

#include <algorithm>
#include <cmath>
#include <memory>

using Manager = PriceBased2dPlotPointManager;

/// PriceBased2dPlotPointManager::calcPlotPoints() over the strikes 100, 110, ... 200.
class tst_plotpoints : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void densifiedInTheView();
    void betweenTwoStrikes();
    void manyStrikesInView();
    void closeView_data();
    void closeView();
    void noView_data();
    void noView();
    void forced_data();
    void forced();
    void noPriceStep_data();
    void noPriceStep();
    void priceStepNeverRead();
    void noInterval();
    void noStrikes_data();
    void noStrikes();
    void descendingStrikes();

private:
    Record m_future;
    std::unique_ptr<TestPlot> m_plot;
    Manager* m_manager = nullptr;

    void look(double low, double high);
    void setPriceStep(const QVariant& step);
};

void tst_plotpoints::init()
{
    TestHost::createSecurities();
    TestHost::createBoards();
    TestHost::addBoard(1, 2, true);
    m_future = TestHost::addSecurity(TestHost::future());
    for (int strike = 100; strike <= 200; strike += 10)
        addOption(QByteArray::number(strike).constData());
    m_plot = std::make_unique<TestPlot>();
    m_plot->setBaseCode(QStringLiteral("Amber"));
    m_plot->createPicker();
    m_manager = new Manager(false, m_plot.get());
    setPriceStep(QStringLiteral("0.01"));
}

void tst_plotpoints::cleanup()
{
    m_plot.reset();
    m_future = Record();
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_plotpoints::look(double low, double high)
{
    m_plot->QwtPlot::setAxisScale(QwtPlot::xBottom, low, high);
    m_plot->updateAxes();
}

void tst_plotpoints::setPriceStep(const QVariant& step)
{
    TestHost::changeRow(m_future, {{"price_step", step}});
    m_plot->picker()->setPriceStep();
}

void tst_plotpoints::densifiedInTheView()
{
    look(131.0, 149.0);
    const QList<double> points = m_manager->calcPlotPoints(false);
    QCOMPARE(points.size(), 11 + 2 * 50);
    QCOMPARE(points.mid(0, 4), QList<double>({100.0, 110.0, 120.0, 130.0}));
    QCOMPARE(points.mid(105), QList<double>({150.0, 160.0, 170.0, 180.0, 190.0, 200.0}));
    for (int i = 0; i < 102; ++i)
        QVERIFY(std::abs(points[3 + i] - (130.0 + i * 10.0 / 51.0)) < 1e-9);
}

void tst_plotpoints::betweenTwoStrikes()
{
    look(141.0, 149.0);
    const QList<double> points = m_manager->calcPlotPoints(false);
    QCOMPARE(points.size(), 11 + 10 * 10);
    QVERIFY(std::is_sorted(points.begin(), points.end()));
}

void tst_plotpoints::manyStrikesInView()
{
    addOption("100.5");
    QCOMPARE(m_plot->priceInterval().minStep, 0.5);
    look(50.0, 250.0);
    const QList<double> points = m_manager->calcPlotPoints(false);
    QCOMPARE(points.size(), 201);
    QCOMPARE(points, m_manager->minStepPoints(100.0, 200.0, 0.5));
}

void tst_plotpoints::closeView_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<bool>("close");
    QTest::newRow("less than a hundred steps") << 131.0 << 230.0 << true;
    QTest::newRow("a hundred steps") << 131.0 << 231.0 << true;
    QTest::newRow("almost a hundred steps") << 131.0 << 231.0 + 5e-11 << true;
    QTest::newRow("more than a hundred steps") << 131.0 << 231.001 << false;
}

void tst_plotpoints::closeView()
{
    QFETCH(double, low);
    QFETCH(double, high);
    QFETCH(bool, close);
    setPriceStep(1);
    look(low, high);
    const QList<double> points = m_manager->calcPlotPoints(false);
    QCOMPARE(points == m_manager->minStepPoints(100.0, 200.0, 1.0), close);
    QCOMPARE(points.isEmpty(), false);
}

void tst_plotpoints::noView_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::newRow("inverted") << 149.0 << 131.0;
    QTest::newRow("no width") << 131.0 << 131.0;
    QTest::newRow("fuzzily no width") << 131.0 << 131.0 * (1.0 + 5e-13);
}

void tst_plotpoints::noView()
{
    QFETCH(double, low);
    QFETCH(double, high);
    m_plot->setAxisScaleDiv(QwtPlot::xBottom, QwtScaleDiv(low, high));
    m_plot->updateAxes();
    QVERIFY(m_manager->calcPlotPoints(true).isEmpty());
}

void tst_plotpoints::forced_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<bool>("visible");
    QTest::newRow("left of the strikes") << 10.0 << 99.0 << false;
    QTest::newRow("up to the first strike") << 10.0 << 100.0 << true;
    QTest::newRow("right of the strikes") << 201.0 << 300.0 << false;
    QTest::newRow("from the last strike") << 200.0 << 300.0 << true;
}

void tst_plotpoints::forced()
{
    QFETCH(double, low);
    QFETCH(double, high);
    QFETCH(bool, visible);
    look(low, high);
    QCOMPARE(!m_manager->calcPlotPoints(false).isEmpty(), visible);
    QVERIFY(!m_manager->calcPlotPoints(true).isEmpty());
}

void tst_plotpoints::noPriceStep_data()
{
    QTest::addColumn<QVariant>("step");
    QTest::newRow("null") << QVariant();
    QTest::newRow("zero") << QVariant(0);
    QTest::newRow("negative") << QVariant(-1);
}

void tst_plotpoints::noPriceStep()
{
    QFETCH(QVariant, step);
    look(131.0, 149.0);
    setPriceStep(step);
    QVERIFY(m_plot->priceInterval().valid);
    QVERIFY(m_manager->calcPlotPoints(true).isEmpty());
    delete m_plot->picker();
    QVERIFY(m_manager->calcPlotPoints(true).isEmpty());
}

void tst_plotpoints::priceStepNeverRead()
{
    delete m_plot->picker();
    m_plot->createPicker();
    QCOMPARE(m_plot->priceStep(), -1.0);
    QVERIFY(m_plot->priceInterval().valid);
    for (const QwtInterval& view : {QwtInterval(131.0, 149.0), QwtInterval(131.0, 131.5)}) {
        look(view.minValue(), view.maxValue());
        QVERIFY(m_manager->calcPlotPoints(false).isEmpty());
        QVERIFY(m_manager->calcPlotPoints(true).isEmpty());
    }
    m_plot->picker()->setPriceStep();
    QVERIFY(!m_manager->calcPlotPoints(false).isEmpty());
}

void tst_plotpoints::noInterval()
{
    look(131.0, 149.0);
    m_plot->setPriceInterval(PriceInterval());
    QVERIFY(m_manager->calcPlotPoints(true).isEmpty());
}

void tst_plotpoints::noStrikes_data()
{
    QTest::addColumn<int>("left");
    QTest::newRow("none") << 0;
    QTest::newRow("one") << 1;
}

void tst_plotpoints::noStrikes()
{
    QFETCH(int, left);
    look(131.0, 149.0);
    const PriceInterval before = m_plot->priceInterval();
    QVERIFY(before.valid);
    Table* table = m_future.table();
    while (m_manager->model()->rowCount() > left)
        TestHost::removeRows({TestHost::recordAt(table, TestHost::rowCount(table) - 1)});
    QCOMPARE(m_plot->priceInterval(), PriceInterval());
    QVERIFY(m_manager->calcPlotPoints(true).isEmpty());
    // Whatever the plot believes, there is nothing to evaluate between.
    m_plot->setPriceInterval(before);
    QVERIFY(m_manager->calcPlotPoints(false).isEmpty());
    QVERIFY(m_manager->calcPlotPoints(true).isEmpty());
}

void tst_plotpoints::descendingStrikes()
{
    look(131.0, 149.0);
    m_manager->model()->sort(0, Qt::DescendingOrder);
    QVERIFY(m_plot->priceInterval().valid);
    QVERIFY(m_manager->calcPlotPoints(true).isEmpty());
}

PLOT2D_TEST_MAIN(tst_plotpoints)
#include "tst_plotpoints.moc"
