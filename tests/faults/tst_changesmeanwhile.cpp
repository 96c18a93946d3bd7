#include "faults/market.h"
#include "support/testmain.h"

#include <basic_models/strikebymaxsessionmodel.h>

#include <functional>
#include <memory>

namespace {

using Action = std::function<void(Market&)>;

struct Named {
    const char* name;
    Action act;
};

void removeStrikes(Market& market, const QStringList& strikes)
{
    QVector<Record> gone;
    const int column = market.table->columnIndex(QStringLiteral("strike"));
    for (const Record& record : market.table->masterIndex()) {
        const FieldConstValue strike = market.table->dataPtr(record.row(), column);
        if (!strike.isNull() && strikes.contains(TestHost::text(strike.toDecimal())))
            gone << record;
    }
    TestHost::removeRows(gone);
}

/// Adds options in one step, of which nobody has heard before.
void addTogether(const QVector<QByteArray>& strikes)
{
    QVector<TestHost::Row> rows;
    for (const QByteArray& strike : strikes)
        rows << option(strike.constData());
    TestHost::addSecurities(rows);
}

// A model may announce them one after the other.
void addApart(Market&)
{
    addTogether({"105", "115", "125", "135", "145"});
}

void addMany(Market&)
{
    QVector<QByteArray> strikes;
    for (int i = 0; i < 80; ++i)
        strikes << QByteArray::number(100.25 + 0.5 * i);
    addTogether(strikes);
}

void changeStrike(Market& market)
{
    if (TestHost::rowCount(market.table) > 1)
        TestHost::changeRow(TestHost::recordAt(market.table, 1), {{"strike", "95"}});
}

void changeCode(Market& market)
{
    market.plot->setBaseCode(QStringLiteral("Cobalt"));
    market.manager->setPlot(market.plot);
}

void addSession(Market&)
{
    addOption("155", {{"sess_id", 8}});
}

/// What sets the price interval off, and how often the manager announces one where the model tells of the
/// strikes one after the other. The models of some hosts tell of all at once.
struct Cause {
    const char* name;
    Action act;
    int announcements;
};

const QVector<Cause>& causes()
{
    static const QVector<Cause> all{{"one row", [](Market&) { addOption("150"); }, 1},
        {"rows apart", &addApart, 2}, {"many rows", &addMany, 1},
        {"rows leave",
            [](Market& market) {
                removeStrikes(market, {"100", "120", "140"});
            },
            2},
        {"a strike changes", &changeStrike, 1},
        {"the table is emptied", [](Market& market) { TestHost::clear(market.table); }, 1},
        {"the table goes", [](Market& market) { market.remove(Market::Securities); }, 1},
        {"another code", &changeCode, 1}, {"another session", &addSession, 1},
        {"descending",
            [](Market& market) {
                market.model->sort(0, Qt::DescendingOrder);
                market.manager->updatePriceInterval();
            },
            1}};
    return all;
}

/// How often the manager announces an interval with this host, and how often its model tells of strikes.
struct Told {
    int announcements = 0;
    int changes = 0;
};

Told toldOf(const Cause& cause, bool hasSessions)
{
    Market market(hasSessions);
    Told told;
    const QObject listener;
    const auto change = [&told] { ++told.changes; };
    QObject::connect(market.manager, &PriceBased2dPlotPointManager::priceIntervalChanged, &listener,
        [&told] { ++told.announcements; });
    QObject::connect(market.model, &QAbstractItemModel::rowsInserted, &listener, change);
    QObject::connect(market.model, &QAbstractItemModel::rowsRemoved, &listener, change);
    QObject::connect(market.model, &QAbstractItemModel::modelReset, &listener, change);
    cause.act(market);
    return told;
}

/// What a listener does of which it should have thought better.
QVector<Named> reactions()
{
    QVector<Named> all;
    for (int part = 0; part < Market::PartCount; ++part)
        all.append({Market::nameOf(Market::Part(part)),
            [part](Market& market) { market.remove(Market::Part(part)); }});
    const auto whileThere = [](const Action& act) {
        return [act](Market& market) {
            if (market.table && market.model && market.plot && market.manager)
                act(market);
        };
    };
    all.append({"adds", whileThere([](Market&) { addOption("160"); })});
    all.append({"adds apart", whileThere(&addApart)});
    all.append({"takes away", whileThere([](Market& market) {
                    removeStrikes(market, {"110", "130", "105"});
                })});
    all.append({"empties", whileThere([](Market& market) { TestHost::clear(market.table); })});
    all.append({"changes a strike", whileThere(&changeStrike)});
    all.append({"changes the code", whileThere(&changeCode)});
    all.append({"adds a session", whileThere(&addSession)});
    all.append({"filters", whileThere([](Market& market) { market.manager->initCore(FilterParams{1, 2}); })});
    all.append({"turns the order", whileThere([](Market& market) {
                    market.model->sort(0, Qt::DescendingOrder);
                    market.manager->updatePriceInterval();
                })});
    all.append({"takes the plot away", [](Market& market) {
                    if (market.manager)
                        market.manager->setPlot(nullptr);
                }});
    all.append({"asks for points", [](Market& market) {
                    if (market.manager)
                        market.manager->calcPlotPoints(true);
                }});
    return all;
}

/// What the name of a row says of the model.
const char* suffixOf(bool hasSessions)
{
    return hasSessions ? ", sessions" : "";
}

const QVector<Named>& reaction()
{
    static const QVector<Named> all = reactions();
    return all;
}

}

/// Listeners that change or delete what the price interval is just computed from.
class tst_changesmeanwhile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_market.reset(); }

    void announcementsOfACause_data();
    void announcementsOfACause();
    void duringAnInterval_data();
    void duringAnInterval();

private:
    void checkInterval();

    std::unique_ptr<Market> m_market;
};

void tst_changesmeanwhile::announcementsOfACause_data()
{
    QTest::addColumn<int>("cause");
    QTest::addColumn<bool>("hasSessions");
    for (int cause = 0; cause < causes().size(); ++cause) {
        for (const bool hasSessions : {false, true})
            QTest::addRow("%s%s", causes().at(cause).name, suffixOf(hasSessions)) << cause << hasSessions;
    }
}

// At each of them a listener may do what it should not: duringAnInterval() goes through them.
void tst_changesmeanwhile::announcementsOfACause()
{
    QFETCH(int, cause);
    QFETCH(bool, hasSessions);
    const Told told = toldOf(causes().at(cause), hasSessions);
    QCOMPARE(told.announcements, told.changes > 1 ? causes().at(cause).announcements : 1);
}

void tst_changesmeanwhile::duringAnInterval_data()
{
    QTest::addColumn<int>("cause");
    QTest::addColumn<bool>("hasSessions");
    QTest::addColumn<int>("does");
    QTest::addColumn<int>("when");
    for (int row = 0; row < 2 * causes().size(); ++row) {
        const int cause = row / 2;
        const bool hasSessions = row % 2 == 1;
        const int announcements = toldOf(causes().at(cause), hasSessions).announcements;
        for (int does = 0; does < reaction().size(); ++does) {
            for (int when = 1; when <= announcements; ++when)
                QTest::addRow("%s%s: %s at announcement %d", causes().at(cause).name, suffixOf(hasSessions),
                    reaction().at(does).name, when)
                    << cause << hasSessions << does << when;
        }
    }
}

// What stands in the plot is what a new manager would find.
void tst_changesmeanwhile::checkInterval()
{
    if (!m_market->plot || !m_market->manager || !m_market->model
        || m_market->manager->interval() == PriceInterval())
        return;
    const PriceInterval told = m_market->plot->priceInterval();
    m_market->manager->updatePriceInterval();
    QCOMPARE(m_market->plot->priceInterval(), told);
    TestPlot other;
    other.setBaseCode(m_market->plot->baseCode());
    const bool hasSessions = qobject_cast<StrikeByMaxSessionModel*>(m_market->model) != nullptr;
    PriceBased2dPlotPointManager found(hasSessions, &other);
    QVERIFY(found.model());
    found.initCore(m_market->manager->filterParams());
    found.model()->setBaseCode(m_market->model->baseCode());
    found.model()->sort(0, Qt::AscendingOrder);
    found.updatePriceInterval();
    QCOMPARE(found.interval(), told);
}

void tst_changesmeanwhile::duringAnInterval()
{
    QFETCH(int, cause);
    QFETCH(bool, hasSessions);
    QFETCH(int, does);
    QFETCH(int, when);
    m_market = std::make_unique<Market>(hasSessions);
    Market& market = *m_market;
    int calls = 0;
    const QObject listener;
    connect(market.manager, &PriceBased2dPlotPointManager::priceIntervalChanged, &listener, [&] {
        if (++calls == when)
            reaction().at(does).act(market);
    });
    causes().at(cause).act(market);
    QVERIFY(calls >= when);
    checkInterval();
    QCoreApplication::sendPostedEvents();
    if (market.table && market.model && market.plot) {
        addOption("170");
        checkInterval();
    }
}

PLOT2D_TEST_MAIN(tst_changesmeanwhile)
#include "tst_changesmeanwhile.moc"
