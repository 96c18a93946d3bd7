#include "faults/exhausted.h"
#include "faults/hostcolumns.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <basic_models/strikebybasecodemodel.h>
#include <directory/boarddirectory.h>
#include <directory/securitydirectory.h>
#include <plot2d/pricebased2dplotpointmanager.h>

#include <memory>
#include <tuple>

using Manager = PriceBased2dPlotPointManager;

namespace {

const QString code = QStringLiteral("Amber");
constexpr PriceInterval whole{100.0, 120.0, 10.0, true};

void fillTables()
{
    HostColumns::fill({QStringLiteral("boards"), QStringLiteral("name"), FieldType::Text, false});
}

}

/// What the library asks of the host and keeps of its answers, when memory runs out at each allocation:
/// nothing is known by halves afterwards.
class tst_allocationfaults_host : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void futures();
    void directoriesThatAreNew();
    void pricesOfTheFuture();
    void plotPoints();
    void strikesOfAnotherCode();

private:
    /// Of a question nothing is kept.
    template <typename Call> void bear(const Call& call) { check(exhaust(call)); }
    template <typename Prepare, typename Call> void bear(const Prepare& prepare, const Call& call)
    {
        check(exhaust(prepare, call));
    }
    static void check(const Exhausted& found);

    std::unique_ptr<TestPlot> m_plot;
};

void tst_allocationfaults_host::init()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QSKIP("Containers of Qt 6 end the process where there is no memory.");
#endif
    fillTables();
    m_plot = std::make_unique<TestPlot>();
    m_plot->setBaseCode(code);
    m_plot->QwtPlot::setAxisScale(QwtPlot::xBottom, 95.0, 125.0);
    m_plot->updateAxes();
}

void tst_allocationfaults_host::cleanup()
{
    m_plot.reset();
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_allocationfaults_host::check(const Exhausted& found)
{
    QVERIFY2(found.problem.isEmpty(), qPrintable(found.problem));
    QVERIFY(found.thrown > 0 || !AllocationFault::coversMalloc());
    qInfo("%ld of %ld faults have ended the call", found.thrown, found.allocations);
}

void tst_allocationfaults_host::futures()
{
    bear([this] { return m_plot->getFuture() == TestHost::recordAt(m_plot->securitiesTable(), 1); });
    QVERIFY(m_plot->getFuture() == TestHost::recordAt(m_plot->securitiesTable(), 1));
    m_plot->setIsinId(11);
    m_plot->setBoardId(2);
    bear([this] { return m_plot->getFuture() == TestHost::recordAt(m_plot->securitiesTable(), 1); });
    QVERIFY(m_plot->getFuture() == TestHost::recordAt(m_plot->securitiesTable(), 1));
}

// They gather the rows of a table at the first question after it was made or emptied. That they listen to it
// comes before: QObject::connect() does not check what malloc() gives it.
void tst_allocationfaults_host::directoriesThatAreNew()
{
    const auto ask = [] {
        return std::make_tuple(SecurityDirectory::i()->recordByIsinId(21, 2).isNull(),
            SecurityDirectory::i()->recordByIsinId(99, 2).isNull(),
            SecurityDirectory::i()->decimalsById(1, 2, 202), BoardDirectory::i()->isAnonymById(1, 2));
    };
    m_plot.reset();
    const auto prepare = [] {
        fillTables();
        SecurityDirectory::i();
        BoardDirectory::i();
    };
    bear(prepare, ask);
    QVERIFY(ask() == std::make_tuple(false, true, 2, true));
}

void tst_allocationfaults_host::pricesOfTheFuture()
{
    PriceBased2dPlotPicker* picker = m_plot->createPicker();
    m_plot->setPriceInterval(whole);
    bear([&] {
        picker->setPriceStep();
        return m_plot->priceStep();
    });
    QCOMPARE(m_plot->priceStep(), 1.0);
    bear([&] { return m_plot->getKotirFromFutureRecord(m_plot->getFuture()).toDouble(); });
    bear([&] { return m_plot->volatMinMax(m_plot->getFuture()); });
}

void tst_allocationfaults_host::plotPoints()
{
    m_plot->createPicker()->setPriceStep();
    for (const double width : {30.0, 3000.0}) {
        m_plot->QwtPlot::setAxisScale(QwtPlot::xBottom, 95.0, 95.0 + width);
        m_plot->updateAxes();
        Manager manager(false, m_plot.get());
        bear([&] { return manager.calcPlotPoints(false); });
        QVERIFY(manager.calcPlotPoints(false).size() > 2);
    }
}

void tst_allocationfaults_host::strikesOfAnotherCode()
{
    StrikeByBaseCodeModel model(m_plot->securitiesTable());
    const auto prepare = [&] { model.setBaseCode(QString()); };
    bear(prepare, [&] {
        model.setBaseCode(code);
        return std::make_tuple(model.rowCount(), model.strike(2), model.minStep());
    });
    QCOMPARE(model.rowCount(), 3);
}

PLOT2D_TEST_MAIN(tst_allocationfaults_host)
#include "tst_allocationfaults_host.moc"
