#include "flow/strikes.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <plot2d/pricebased2dplotpointmanager.h>

#include <QSignalSpy>

#include <memory>

using Manager = PriceBased2dPlotPointManager;

/// The step between strikes as the point manager takes it from the host's table, and its progressions.
class tst_strikesteps : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void stepOfTheStrikes_data();
    void stepOfTheStrikes();
    void anIntervalThatIsNotValidIsReplaced();
    void stepBeyondTheWidth();
    void stepIsRoundedToTheDecimals();
    void minStepPoints_data();
    void minStepPoints();

private:
    std::unique_ptr<TestPlot> m_plot;
};

namespace {

PriceInterval interval(double max, double step)
{
    return {100.0, max, step, true};
}

}

void tst_strikesteps::init()
{
    TestHost::createSecurities();
    TestHost::createBoards();
    TestHost::addBoard(1, 2, true);
    TestHost::addSecurity(TestHost::future({{"price_step", "0.01"}}));
    m_plot = std::make_unique<TestPlot>();
    m_plot->setBaseCode(QStringLiteral("Amber"));
}

void tst_strikesteps::cleanup()
{
    m_plot.reset();
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_strikesteps::stepOfTheStrikes_data()
{
    QTest::addColumn<QByteArray>("strikes");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("step");
    QTest::newRow("two, the step is the width") << QByteArray("100 110") << 110.0 << 10.0;
    QTest::newRow("two, each twice") << QByteArray("100 110 100 110") << 110.0 << 10.0;
    QTest::newRow("three in the middle of the width") << QByteArray("100 110 105") << 110.0 << 5.0;
    QTest::newRow("three, uneven") << QByteArray("100 110 109") << 110.0 << 1.0;
    QTest::newRow("four") << QByteArray("130 100 120 110") << 130.0 << 10.0;
    QTest::newRow("ten, the step at the end")
        << QByteArray("100 120 140 160 180 200 220 240 260 262.5") << 262.5 << 2.5;
}

void tst_strikesteps::stepOfTheStrikes()
{
    QFETCH(QByteArray, strikes);
    QFETCH(double, max);
    QFETCH(double, step);
    const Manager manager(false, m_plot.get());
    for (const QByteArray& strike : strikes.split(' '))
        addOption(strike.constData());
    QCOMPARE(manager.interval(), interval(max, step));
}

// Two strikes whose distance rounds up to more than the width still span an interval.
void tst_strikesteps::anIntervalThatIsNotValidIsReplaced()
{
    addOption("100");
    addOption("110");
    Manager manager(false, m_plot.get());
    manager.updatePriceInterval();
    const PriceInterval known = m_plot->priceInterval();
    QVERIFY(known.valid);
    QSignalSpy spy(&manager, SIGNAL(priceIntervalChanged(PriceInterval)));
    manager.updatePriceInterval();
    QVERIFY(spy.isEmpty());
    PriceInterval other = known;
    other.valid = false;
    m_plot->setPriceInterval(other);
    manager.updatePriceInterval();
    QCOMPARE(spy.size(), 1);
    QVERIFY(m_plot->priceInterval() == known);
}

void tst_strikesteps::stepBeyondTheWidth()
{
    addOption("100", {{"decimals", 1}});
    addOption("100.25", {{"decimals", 1}});
    Manager manager(false, m_plot.get());
    QCOMPARE(manager.interval(), interval(100.25, 0.3));
    QVERIFY(manager.minStepPoints(100.0, 100.25, 0.3).isEmpty());
    m_plot->createPicker()->setPriceStep();
    m_plot->QwtPlot::setAxisScale(QwtPlot::xBottom, 90.0, 110.0);
    m_plot->updateAxes();
    QCOMPARE(m_plot->priceStep(), 0.01);
    QVERIFY(manager.calcPlotPoints(true).isEmpty());
}

void tst_strikesteps::stepIsRoundedToTheDecimals()
{
    addOption("100", {{"decimals", 1}});
    addOption("100.25", {{"decimals", 3}});
    addOption("101", {{"decimals", 3}});
    const Manager manager(false, m_plot.get());
    QCOMPARE(manager.interval(), interval(101.0, 0.3));
}

void tst_strikesteps::minStepPoints_data()
{
    using Points = QList<double>;
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("step");
    QTest::addColumn<Points>("expected");
    QTest::newRow("four steps") << 100.0 << 2.5 << Points{100.0, 102.5, 105.0, 107.5, 110.0};
    QTest::newRow("not up to the end") << 100.0 << 3.0 << Points{100.0, 103.0, 106.0, 109.0};
    QTest::newRow("one step") << 100.0 << 10.0 << Points{100.0, 110.0};
    QTest::newRow("step beyond the end") << 100.0 << 20.0 << Points{};
    QTest::newRow("from zero") << 0.0 << 1.0 << Points{};
}

void tst_strikesteps::minStepPoints()
{
    QFETCH(double, from);
    QFETCH(double, step);
    QFETCH(QList<double>, expected);
    Manager manager(false, m_plot.get());
    QCOMPARE(manager.minStepPoints(from, 110.0, step), expected);
}

PLOT2D_TEST_MAIN(tst_strikesteps)
#include "tst_strikesteps.moc"
