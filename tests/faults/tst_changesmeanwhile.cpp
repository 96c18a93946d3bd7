#include "faults/market.h"
#include "support/testmain.h"

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

// The model announces them one after the other.
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

/// What sets the price interval off.
const QVector<Named>& causes()
{
    static const QVector<Named> all{{"one row", [](Market&) { addOption("150"); }}, {"rows apart", &addApart},
        {"many rows", &addMany},
        {"rows leave",
            [](Market& market) {
                removeStrikes(market, {"100", "120", "140"});
            }},
        {"a strike changes", &changeStrike},
        {"the table is emptied", [](Market& market) { TestHost::clear(market.table); }},
        {"the table goes", [](Market& market) { market.remove(Market::Securities); }},
        {"another code", &changeCode}, {"descending", [](Market& market) {
                                            market.model->sort(0, Qt::DescendingOrder);
                                            market.manager->updatePriceInterval();
                                        }}};
    return all;
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

const QVector<Named>& reaction()
{
    static const QVector<Named> all = reactions();
    return all;
}

}

/// Listeners and the host's virtual functions that change or delete what the library is just walking through.
class tst_changesmeanwhile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_market = std::make_unique<Market>(); }
    void cleanup() { m_market.reset(); }

    void duringAnInterval_data();
    void duringAnInterval();
    void duringAReplot_data();
    void duringAReplot();
    void itemsOutliveThePlot();

private:
    void checkInterval();

    std::unique_ptr<Market> m_market;
};

void tst_changesmeanwhile::duringAnInterval_data()
{
    QTest::addColumn<int>("cause");
    QTest::addColumn<int>("does");
    QTest::addColumn<int>("when");
    for (int cause = 0; cause < causes().size(); ++cause) {
        for (int does = 0; does < reaction().size(); ++does) {
            for (int when = 1; when <= 2; ++when)
                QTest::addRow(
                    "%s: %s at announcement %d", causes().at(cause).name, reaction().at(does).name, when)
                    << cause << does << when;
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
}

void tst_changesmeanwhile::duringAnInterval()
{
    QFETCH(int, cause);
    QFETCH(int, does);
    QFETCH(int, when);
    Market& market = *m_market;
    int calls = 0;
    PriceInterval last;
    const QObject listener;
    connect(market.manager, &PriceBased2dPlotPointManager::priceIntervalChanged, &listener,
        [&](const PriceInterval& interval) {
            last = interval;
            if (++calls == when)
                reaction().at(does).act(market);
        });
    causes().at(cause).act(market);
    QVERIFY(calls > 0);
    checkInterval();
    QCoreApplication::sendPostedEvents();
    if (market.table && market.model && market.plot) {
        addOption("170");
        checkInterval();
    }
}

namespace {

/// The calls that end in replots, and what of the host's they call on the way.
const QVector<Named>& drawingCalls()
{
    static const QVector<Named> all{{"auto-scale", [](Market& market) { market.plot->updateYAxisScale(); }},
        {"no auto-scale",
            [](Market& market) {
                market.plot->setAutoScaleEnabled(false);
                market.plot->updateYAxisScale();
            }},
        {"labels", [](Market& market) { market.plot->updateScaleLabels(); }},
        {"axis widgets", [](Market& market) { market.plot->updateAxisWidgets(); }},
        {"vertical scale", [](Market& market) { market.plot->setAxisScale(QwtPlot::yLeft, 0.0, 5.0, 0.0); }},
        {"horizontal scale",
            [](Market& market) { market.plot->setAxisScale(QwtPlot::xBottom, 90.0, 150.0, 0.0); }},
        {"hides the quote", [](Market& market) { market.curve(QStringLiteral("quote"))->setVisible(false); }},
        {"shows the quote",
            [](Market& market) {
                const bool byItself = market.plot->autoReplot();
                market.plot->setAutoReplot(false);
                market.curve(QStringLiteral("quote"))->QwtPlotItem::setVisible(false);
                market.plot->setAutoReplot(byItself);
                market.curve(QStringLiteral("quote"))->setVisible(true);
            }},
        {"hides marked points",
            [](Market& market) { market.curve(QStringLiteral("curve 13"))->setVisible(false); }},
        {"unchecks a curve",
            [](Market& market) { market.legend->setCheckBoxChecked(QStringLiteral("curve 9"), false); }},
        {"unchecks the quote",
            [](Market& market) { market.legend->setCheckBoxChecked(QStringLiteral("quote"), false); }}};
    return all;
}

}

void tst_changesmeanwhile::duringAReplot_data()
{
    QTest::addColumn<int>("call");
    QTest::addColumn<int>("part");
    QTest::addColumn<int>("when");
    QTest::addColumn<bool>("replotsByItself");
    for (int call = 0; call < drawingCalls().size(); ++call) {
        for (int part = 0; part < Market::PartCount; ++part) {
            for (int when = 1; when <= 3; ++when) {
                for (const bool byItself : {false, true})
                    QTest::addRow("%s: %s at replot %d%s", drawingCalls().at(call).name,
                        Market::nameOf(Market::Part(part)), when, byItself ? ", automatic" : "")
                        << call << part << when << byItself;
            }
        }
    }
}

void tst_changesmeanwhile::duringAReplot()
{
    QFETCH(int, call);
    QFETCH(int, part);
    QFETCH(int, when);
    QFETCH(bool, replotsByItself);
    Market& market = *m_market;
    int calls = 0;
    // A replot that has lost its plot must not go on in the base class: it is over for the host as well.
    market.plot->setAutoReplot(replotsByItself);
    market.plot->onReplot = [&] {
        if (++calls == when && part != Market::Plot)
            market.remove(Market::Part(part));
    };
    market.plot->replacesReplot = [&] {
        if (calls + 1 != when || part != Market::Plot)
            return false;
        ++calls;
        market.remove(Market::Plot);
        return true;
    };
    drawingCalls().at(call).act(market);
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    if (market.plot) {
        market.plot->onReplot = nullptr;
        market.plot->updateYAxisScale();
    }
}

// Qwt can be told to leave items alone that belong to the host.
void tst_changesmeanwhile::itemsOutliveThePlot()
{
    Market& market = *m_market;
    market.plot->setAutoDelete(false);
    market.plot->setAutoReplot(true);
    const QwtPlotItemList items = market.plot->itemList();
    PriceBased2dPlotCurve* const curve = market.curve(QStringLiteral("curve 13"));
    QVERIFY(market.plot->attachedMarkers().size() > 1);
    market.plot->replacesReplot = [&] {
        market.remove(Market::Plot);
        return true;
    };
    curve->setVisible(false);
    QVERIFY(!market.plot);
    QVERIFY(!curve->isVisible() && !curve->plot());
    qDeleteAll(items);
}

PLOT2D_TEST_MAIN(tst_changesmeanwhile)
#include "tst_changesmeanwhile.moc"
