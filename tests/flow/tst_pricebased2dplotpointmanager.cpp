#include "flow/strikes.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <basic_models/strikebybasecodemodel.h>
#include <basic_models/strikebymaxsessionmodel.h>
#include <plot2d/pricebased2dplotpointmanager.h>

#include <limits>
#include <memory>

using Manager = PriceBased2dPlotPointManager;

namespace {

const QString code = QStringLiteral("Amber");

PriceInterval interval(double min, double max, double step)
{
    return {min, max, step, true};
}

}

class tst_pricebased2dplotpointmanager : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void metaObjectOfTheManager();
    void startsWithTheFuturesBaseCode();
    void startsWithTheExactFuturesBaseCode();
    void startsWithoutAFuture();
    void followsTheModel();
    void announcesAfterThePlotKnows();
    void sameStrikesAreNotAnnounced();
    void fewStrikes();
    void decimalsUnknown();
    void descendingStrikes();

    void idsOfOtherTypes_data();
    void idsOfOtherTypes();
    void idsOfOneStrikeAreNotRead();
    void idsOf64Bits();

    void withoutAModel();
    void maxSession();
    void filterOfTheOtherModel();
    void setPlot();
    void setPlotSortsUpwards();

    void plotGoesFirst();
    void managerGoesFirst();
    void tableGoesFirst();
    void otherPlotGoesFirst();

private:
    std::unique_ptr<TestPlot> m_plot;
    Table* m_table = nullptr;
};

void tst_pricebased2dplotpointmanager::init()
{
    m_table = TestHost::createSecurities();
    TestHost::createBoards();
    TestHost::addBoard(1, 2, true);
    m_plot = std::make_unique<TestPlot>();
    m_plot->setBaseCode(code);
}

void tst_pricebased2dplotpointmanager::cleanup()
{
    m_plot.reset();
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_pricebased2dplotpointmanager::metaObjectOfTheManager()
{
    const QMetaObject& meta = Manager::staticMetaObject;
    QCOMPARE(meta.className(), "PriceBased2dPlotPointManager");
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(),
        QByteArray("priceIntervalChanged(PriceInterval)"));
    QCOMPARE(meta.method(meta.methodOffset() + 1).methodSignature(), QByteArray("updatePriceInterval()"));
    QCOMPARE(meta.methodCount(), meta.methodOffset() + 2);
}

void tst_pricebased2dplotpointmanager::startsWithTheFuturesBaseCode()
{
    TestHost::addSecurity(TestHost::future());
    addOption("110");
    addOption("100");
    addOption("125");
    addOption("300", {{"base_code", "Cobalt"}});
    const Manager manager(false, m_plot.get());
    QCOMPARE(manager.parent(), m_plot.get());
    QVERIFY(manager.model());
    QVERIFY(!qobject_cast<StrikeByMaxSessionModel*>(manager.model()));
    QCOMPARE(manager.model()->parent(), &manager);
    QCOMPARE(manager.model()->baseCode(), code);
    QCOMPARE(manager.interval(), interval(100.0, 125.0, 10.0));
    QCOMPARE(m_plot->priceInterval(), interval(100.0, 125.0, 10.0));
}

void tst_pricebased2dplotpointmanager::startsWithTheExactFuturesBaseCode()
{
    TestHost::addSecurity(TestHost::future());
    addOption("100");
    addOption("110");
    m_plot->setIsinId(10);
    m_plot->setBoardId(2);
    const Manager manager(false, m_plot.get());
    QCOMPARE(manager.interval(), interval(100.0, 110.0, 10.0));
}

void tst_pricebased2dplotpointmanager::startsWithoutAFuture()
{
    addOption("100");
    addOption("110");
    const Manager manager(false, m_plot.get());
    QVERIFY(manager.model());
    QCOMPARE(manager.model()->baseCode(), QString());
    QCOMPARE(manager.interval(), PriceInterval());
}

void tst_pricebased2dplotpointmanager::followsTheModel()
{
    TestHost::addSecurity(TestHost::future());
    Manager manager(false, m_plot.get());
    QSignalSpy spy(&manager, SIGNAL(priceIntervalChanged(PriceInterval)));
    addOption("100");
    QCOMPARE(spy.count(), 0);
    addOption("110");
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.last().first().value<PriceInterval>(), interval(100.0, 110.0, 10.0));
    const Record third = addOption("115");
    QCOMPARE(spy.count(), 2);
    QCOMPARE(manager.interval(), interval(100.0, 115.0, 5.0));
    addOption("115");
    QCOMPARE(spy.count(), 2);
    TestHost::changeRow(third, {{"strike", "120"}});
    QCOMPARE(spy.count(), 3);
    QCOMPARE(manager.interval(), interval(100.0, 120.0, 5.0));
    TestHost::removeRows({third});
    QCOMPARE(spy.count(), 4);
    QCOMPARE(manager.interval(), interval(100.0, 115.0, 5.0));
    TestHost::clear(m_table);
    QCOMPARE(spy.count(), 5);
    QCOMPARE(spy.last().first().value<PriceInterval>(), PriceInterval());
}

void tst_pricebased2dplotpointmanager::announcesAfterThePlotKnows()
{
    TestHost::addSecurity(TestHost::future());
    Manager manager(false, m_plot.get());
    PriceInterval known;
    connect(&manager, &Manager::priceIntervalChanged, this, [&] { known = m_plot->priceInterval(); });
    addOption("100");
    addOption("110");
    QCOMPARE(known, interval(100.0, 110.0, 10.0));
}

void tst_pricebased2dplotpointmanager::sameStrikesAreNotAnnounced()
{
    TestHost::addSecurity(TestHost::future());
    addOption("100");
    addOption("110");
    Manager manager(false, m_plot.get());
    QSignalSpy spy(&manager, SIGNAL(priceIntervalChanged(PriceInterval)));
    manager.updatePriceInterval();
    manager.model()->setBaseCode(code);
    QCOMPARE(spy.count(), 0);
    m_plot->setPriceInterval(interval(1.0, 2.0, 1.0));
    manager.updatePriceInterval();
    QCOMPARE(spy.count(), 1);
}

void tst_pricebased2dplotpointmanager::fewStrikes()
{
    TestHost::addSecurity(TestHost::future());
    const Record first = addOption("100");
    addOption("110");
    Manager manager(false, m_plot.get());
    QVERIFY(manager.interval().valid);
    QSignalSpy spy(&manager, SIGNAL(priceIntervalChanged(PriceInterval)));
    TestHost::removeRows({first});
    QCOMPARE(manager.interval(), PriceInterval());
    QCOMPARE(spy.count(), 1);
    manager.updatePriceInterval();
    QCOMPARE(spy.count(), 1);
    QVERIFY(manager.calcPlotPoints(true).isEmpty());
}

void tst_pricebased2dplotpointmanager::decimalsUnknown()
{
    TestHost::addSecurity(TestHost::future());
    addOption("100", {{"decimals", QVariant()}});
    addOption("110");
    const Manager manager(false, m_plot.get());
    QCOMPARE(manager.interval(), PriceInterval());
}

void tst_pricebased2dplotpointmanager::descendingStrikes()
{
    TestHost::addSecurity(TestHost::future());
    addOption("100");
    addOption("110");
    Manager manager(false, m_plot.get());
    manager.model()->sort(0, Qt::DescendingOrder);
    manager.updatePriceInterval();
    QCOMPARE(manager.interval(), PriceInterval());
}

void tst_pricebased2dplotpointmanager::idsOfOtherTypes_data()
{
    QTest::addColumn<QString>("column");
    QTest::newRow("stock") << "stock_id";
    QTest::newRow("board") << "board_id";
    QTest::newRow("security") << "sec_id";
}

void tst_pricebased2dplotpointmanager::idsOfOtherTypes()
{
    QFETCH(QString, column);
    m_plot.reset();
    TestHost::createSecurities(TestHost::withType(TestHost::securitiesColumns(), column, FieldType::Double));
    addOption("100");
    addOption("110");
    m_plot = std::make_unique<TestPlot>();
    Manager manager(false, m_plot.get());
    {
        const QSignalBlocker quiet(manager.model());
        manager.model()->setBaseCode(code);
    }
    m_plot->setPriceInterval(interval(1.0, 2.0, 1.0));
    QSignalSpy spy(&manager, SIGNAL(priceIntervalChanged(PriceInterval)));
    QCOMPARE(TestHost::thrownText([&] { manager.updatePriceInterval(); }),
        QStringLiteral("Incorrect type conversion."));
    QCOMPARE(m_plot->priceInterval(), interval(1.0, 2.0, 1.0));
    QCOMPARE(spy.count(), 0);
}

void tst_pricebased2dplotpointmanager::idsOfOneStrikeAreNotRead()
{
    m_plot.reset();
    TestHost::createSecurities(
        TestHost::withType(TestHost::securitiesColumns(), QStringLiteral("stock_id"), FieldType::Double));
    addOption("100");
    m_plot = std::make_unique<TestPlot>();
    Manager manager(false, m_plot.get());
    manager.model()->setBaseCode(code);
    QCOMPARE(manager.model()->rowCount(QModelIndex()), 1);
    QCOMPARE(TestHost::thrownText([&] { manager.updatePriceInterval(); }), QStringLiteral("nothing thrown"));
    QCOMPARE(manager.interval(), PriceInterval());
}

void tst_pricebased2dplotpointmanager::idsOf64Bits()
{
    m_plot.reset();
    auto columns
        = TestHost::withType(TestHost::securitiesColumns(), QStringLiteral("stock_id"), FieldType::Int64);
    columns = TestHost::withType(columns, QStringLiteral("board_id"), FieldType::Int64);
    TestHost::createSecurities(columns);
    TestHost::addSecurity(TestHost::future());
    // An id beyond 32 bits counts as the largest inside, which another row has.
    constexpr qint64 beyond = (1LL << 40) + 1;
    addOption("100", {{"stock_id", beyond}, {"sec_id", 5000000000LL}});
    addOption("100.25");
    addOption("101");
    TestHost::addSecurity(TestHost::future({{"stock_id", std::numeric_limits<int>::max()},
        {"sec_id", 5000000000LL}, {"base_code", "Cobalt"}, {"decimals", 1}}));
    m_plot = std::make_unique<TestPlot>();
    m_plot->setBaseCode(code);
    const Manager manager(false, m_plot.get());
    QCOMPARE(manager.interval(), interval(100.0, 101.0, 0.3));
}

void tst_pricebased2dplotpointmanager::withoutAModel()
{
    Manager orphan(false, nullptr);
    QVERIFY(!orphan.model());
    QVERIFY(orphan.calcPlotPoints(true).isEmpty());
    QCOMPARE(orphan.filterParams(), FilterParams());
    orphan.updatePriceInterval();

    TestHost::dropSecurities();
    Manager manager(true, m_plot.get());
    QVERIFY(!manager.model());
    manager.initCore(TestHost::filter(1, 2, 3, 'C'));
    QCOMPARE(manager.filterParams(), FilterParams());
    QVERIFY(manager.calcPlotPoints(true).isEmpty());
    manager.updatePriceInterval();
    manager.setPlot(m_plot.get());
    QCOMPARE(manager.interval(), PriceInterval());
}

void tst_pricebased2dplotpointmanager::maxSession()
{
    TestHost::addSecurity(TestHost::future());
    addOption("100");
    addOption("110");
    addOption("200", {{"sess_id", 8}, {"option_type", "C"}});
    addOption("220", {{"sess_id", 8}, {"option_type", "C"}});
    addOption("230", {{"sess_id", 8}, {"option_type", "P"}});
    Manager manager(true, m_plot.get());
    QVERIFY(qobject_cast<StrikeByMaxSessionModel*>(manager.model()));
    QCOMPARE(manager.model()->baseCode(), QString());
    QCOMPARE(manager.filterParams(), FilterParams());

    manager.setPlot(m_plot.get());
    QCOMPARE(manager.model()->baseCode(), code);
    QCOMPARE(manager.interval(), interval(200.0, 230.0, 10.0));
    manager.initCore(TestHost::filter(1, 2, -1, 'C'));
    QCOMPARE(manager.filterParams(), TestHost::filter(1, 2, -1, 'C'));
    QCOMPARE(manager.interval(), interval(200.0, 220.0, 20.0));
}

void tst_pricebased2dplotpointmanager::filterOfTheOtherModel()
{
    Manager manager(false, m_plot.get());
    manager.initCore(TestHost::filter(1, 2, 3, 'C'));
    QCOMPARE(manager.filterParams(), FilterParams());
    QCOMPARE(FilterParams(), TestHost::filter(-1, -1, -1, -1));
}

void tst_pricebased2dplotpointmanager::setPlot()
{
    TestHost::addSecurity(TestHost::future());
    addOption("100");
    addOption("110");
    addOption("300", {{"base_code", "Cobalt"}});
    addOption("350", {{"base_code", "Cobalt"}});
    Manager manager(false, m_plot.get());
    StrikeByBaseCodeModel* model = manager.model();
    QSignalSpy resets(model, SIGNAL(modelReset()));
    manager.setPlot(m_plot.get());
    QCOMPARE(resets.count(), 0);

    TestPlot other;
    other.setBaseCode(QStringLiteral("Cobalt"));
    manager.setPlot(&other);
    QCOMPARE(resets.count(), 1);
    QCOMPARE(manager.model(), model);
    QCOMPARE(manager.parent(), m_plot.get());
    QCOMPARE(manager.interval(), interval(300.0, 350.0, 50.0));
    QCOMPARE(other.priceInterval(), interval(300.0, 350.0, 50.0));
    QCOMPARE(m_plot->priceInterval(), interval(100.0, 110.0, 10.0));

    manager.setPlot(nullptr);
    QCOMPARE(manager.interval(), PriceInterval());
    QVERIFY(manager.calcPlotPoints(true).isEmpty());
}

/// Whoever has turned the strikes round meanwhile.
void tst_pricebased2dplotpointmanager::setPlotSortsUpwards()
{
    TestHost::addSecurity(TestHost::future());
    for (const char* strike : {"300", "350", "400"})
        addOption(strike, {{"base_code", "Cobalt"}});
    Manager manager(false, m_plot.get());
    manager.model()->sort(0, Qt::DescendingOrder);
    TestPlot other;
    other.setBaseCode(QStringLiteral("Cobalt"));
    manager.setPlot(&other);
    QCOMPARE(manager.model()->rowCount(), 3);
    for (int row = 0; row < 3; ++row)
        QCOMPARE(manager.model()->strike(row).toDouble(), 300.0 + 50.0 * row);
}

void tst_pricebased2dplotpointmanager::plotGoesFirst()
{
    TestHost::addSecurity(TestHost::future());
    const QPointer<Manager> manager(new Manager(false, m_plot.get()));
    const QPointer<StrikeByBaseCodeModel> model(manager->model());
    addOption("100");
    m_plot.reset();
    QVERIFY(!manager);
    QVERIFY(!model);
    addOption("110");
}

void tst_pricebased2dplotpointmanager::managerGoesFirst()
{
    TestHost::addSecurity(TestHost::future());
    addOption("100");
    auto manager = std::make_unique<Manager>(false, m_plot.get());
    addOption("110");
    manager.reset();
    addOption("120");
    QCOMPARE(m_plot->priceInterval(), interval(100.0, 110.0, 10.0));
}

void tst_pricebased2dplotpointmanager::tableGoesFirst()
{
    TestHost::addSecurity(TestHost::future());
    addOption("100");
    addOption("110");
    Manager manager(false, m_plot.get());
    TestHost::dropSecurities();
    QCOMPARE(manager.interval(), PriceInterval());
    QVERIFY(manager.calcPlotPoints(true).isEmpty());
}

void tst_pricebased2dplotpointmanager::otherPlotGoesFirst()
{
    TestHost::addSecurity(TestHost::future());
    addOption("100");
    addOption("110");
    Manager manager(false, m_plot.get());
    {
        TestPlot other;
        other.setBaseCode(code);
        manager.setPlot(&other);
    }
    addOption("120");
    QCOMPARE(manager.interval(), PriceInterval());
    QVERIFY(manager.calcPlotPoints(true).isEmpty());
}

PLOT2D_TEST_MAIN(tst_pricebased2dplotpointmanager)
#include "tst_pricebased2dplotpointmanager.moc"
