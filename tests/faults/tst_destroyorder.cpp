#include "faults/market.h"
#include "support/testmain.h"

#include <database/settings.h>

#include <QCheckBox>
#include <QMouseEvent>
#include <QTemporaryDir>

#include <qwt_plot_layout.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>

namespace {

constexpr quint64 seed = 20240919;

using Order = std::array<Market::Part, Market::PartCount>;

QString nameOf(const Order& order, int length)
{
    QStringList names;
    for (int i = 0; i < length; ++i)
        names << QString::fromLatin1(Market::nameOf(order[std::size_t(i)]));
    return names.join(QLatin1Char(' '));
}

}

/// The parts of a plot destroyed in every order, with events on their way to them, while what is left goes
/// on.
///
/// PLOT2D_ORDERS says how many orders; there are 87178291200, of which 100 are taken unless it says
/// otherwise.
class tst_destroyorder : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anyOrder();
    void pairs_data();
    void pairs();
    void replacements();

private:
    static void postEvents(const Market& market);
    void use(Market& market);
    void destroy(Market& market, const Order& order, int length, std::mt19937_64& random);
    static bool hasFuture(const Market& market);
    static void checkPrices(Market& market);
    static void checkCurves(Market& market);

    QTemporaryDir m_folder;
};

// Queued calls, repaints, layouts, the mouse and deletions that wait.
void tst_destroyorder::postEvents(const Market& market)
{
    for (QObject* object : {static_cast<QObject*>(market.plot), static_cast<QObject*>(market.legend),
             static_cast<QObject*>(market.picker), static_cast<QObject*>(market.panner)}) {
        if (object)
            QCoreApplication::postEvent(object, new QEvent(QEvent::User));
    }
    if (market.manager)
        QMetaObject::invokeMethod(market.manager, "updatePriceInterval", Qt::QueuedConnection);
    if (market.picker)
        QMetaObject::invokeMethod(market.picker, "setPriceStep", Qt::QueuedConnection);
    if (!market.plot)
        return;
    market.plot->update();
    QCoreApplication::postEvent(market.plot, new QEvent(QEvent::LayoutRequest));
    // A drag on the prices; the press on a canvas whose layout is out of date makes Qwt complain.
    const QPointF prices = market.plot->plotLayout()->scaleRect(QwtPlot::xBottom).center();
    for (const QEvent::Type type :
        {QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease}) {
        QCoreApplication::postEvent(market.plot,
            new QMouseEvent(type, prices + QPointF(int(type), 0.0), prices + QPointF(int(type), 0.0),
                QCursor::pos(), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
    }
    QCoreApplication::postEvent(market.plot->canvas(),
        new QMouseEvent(QEvent::MouseMove, QPointF(50.0, 50.0), QPointF(50.0, 50.0), QCursor::pos(),
            Qt::NoButton, Qt::NoButton, Qt::NoModifier));
}

void tst_destroyorder::use(Market& market)
{
    static int strike = 200;
    if (market.table)
        addOption(QByteArray::number(++strike).constData());
    if (market.manager) {
        market.manager->setPlot(market.plot);
        market.manager->initCore(FilterParams{1, 2});
        market.manager->updatePriceInterval();
        market.manager->calcPlotPoints(true);
    }
    if (market.picker) {
        market.picker->setPriceStep();
        market.picker->getClosestCurveParams(market.picker->usedCurves() << market.otherCurve());
    }
    Settings settings(m_folder.filePath(QStringLiteral("s.ini")));
    if (market.legend) {
        market.legend->store(settings);
        const auto boxes = market.legend->findChildren<QCheckBox*>();
        for (QCheckBox* box : boxes)
            box->toggle();
        market.legend->restoreUncheckedItems();
        market.legend->restore(settings);
    }
    if (PriceBased2dPlotCurve* curve = market.otherCurve())
        curve->setVisible(!curve->isVisible());
    if (!market.plot)
        return;
    market.plot->updateYAxisScale();
    market.plot->updateAxisWidgets();
    market.plot->getFuture();
    market.plot->setTrackerColor(Qt::blue);
    market.plot->setCanvasObservers();
    market.plot->setAutoScaleEnabled(!market.plot->autoScaleEnabled());
    const QList<PriceBased2dPlotCurve*> curves = market.plot->attachedCurves(-1);
    for (PriceBased2dPlotCurve* curve : curves)
        curve->setVisible(!curve->isVisible());
}

void tst_destroyorder::destroy(Market& market, const Order& order, int length, std::mt19937_64& random)
{
    for (int i = 0; i < length; ++i) {
        // At any of these moments: before or after use, with the manager serving another plot, with events
        // posted or with them delivered.
        if (random() & 1U)
            use(market);
        if (market.manager && random() & 1U)
            market.manager->setPlot(market.other);
        postEvents(market);
        if (random() & 1U)
            QCoreApplication::processEvents();
        market.remove(order[std::size_t(i)]);
        if (random() & 1U)
            use(market);
    }
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void tst_destroyorder::anyOrder()
{
    const int wanted = qEnvironmentVariableIntValue("PLOT2D_ORDERS");
    const int orders = wanted > 0 ? wanted : 100;
    std::mt19937_64 random(seed);
    Order order;
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = Market::Part(i);
    for (int i = 0; i < orders; ++i) {
        std::shuffle(order.begin(), order.end(), random);
        Market market(i % 4 > 1);
        if (i % 2) {
            market.plot->show();
            QVERIFY(QTest::qWaitForWindowExposed(market.plot));
        }
        destroy(market, order, Market::PartCount, random);
        const QStringList left = market.parts();
        QVERIFY2(left.isEmpty(),
            qPrintable(nameOf(order, Market::PartCount) + QLatin1String(" leaves ") + left.join(", ")));
    }
    qInfo("%d orders", orders);
}

// A future is found by both tables, and the line at the quote is shown only with one.
bool tst_destroyorder::hasFuture(const Market& market)
{
    return market.table && market.boards;
}

// Strikes, interval and price step follow the table as long as there is one.
void tst_destroyorder::checkPrices(Market& market)
{
    if (market.model)
        QCOMPARE(market.model->rowCount(), market.table ? TestHost::rowCount(market.table) - 1 : 0);
    if (market.picker)
        QCOMPARE(market.picker->priceStep(), hasFuture(market) ? 1.0 : -1.0);
    if (market.plot)
        QCOMPARE(market.plot->getFuture().isNull(), !hasFuture(market));
    if (!market.manager)
        return;
    if (market.model && market.table) {
        const int last = market.model->rowCount() - 1;
        const double highest = market.model->strike(last).toDouble();
        QVERIFY(highest > 200.0);
        const double step = market.model->strike(last - 1).toDouble() > 200.0 ? 1.0 : 10.0;
        QCOMPARE(market.manager->interval(), (PriceInterval{100.0, highest, step, true}));
    } else if (market.model) {
        QCOMPARE(market.manager->interval(), PriceInterval());
    }
    const bool hasPoints = market.model && market.picker && hasFuture(market);
    QCOMPARE(market.manager->calcPlotPoints(true).isEmpty(), !hasPoints);
}

// The legend has an entry for each curve that is left and for the one that is not of the library, once the
// plots tell it anew of those whose widgets have gone, and the curves follow their check boxes.
void tst_destroyorder::checkCurves(Market& market)
{
    if (!market.plot || !market.legend)
        return;
    QList<PriceBased2dPlotCurve*> curves = market.plot->attachedCurves(-1);
    if (market.otherCurve())
        curves << market.otherCurve();
    if (market.ownEntries().isEmpty()) {
        market.plot->updateLegend();
        if (market.other)
            market.other->updateLegend();
    }
    QCOMPARE(market.legend->findChildren<QCheckBox*>().size(), curves.size() + 1);
    for (const PriceBased2dPlotCurve* curve : curves) {
        const QString title = curve->title().text();
        // A curve may have been shown and hidden by others since.
        market.legend->setCheckBoxChecked(title, true);
        market.legend->setCheckBoxChecked(title, false);
        QVERIFY2(!curve->isVisible(), qPrintable(title));
        market.legend->setCheckBoxChecked(title, true);
        const bool isQuote = curve->dataType() == PriceBased2dPlotCurve::quoteLineType;
        QVERIFY2(curve->isVisible() == (!isQuote || hasFuture(market)), qPrintable(title));
    }
}

void tst_destroyorder::pairs_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::addColumn<bool>("hasSessions");
    QTest::addColumn<quint64>("seedOfRow");
    quint64 seedOfRow = seed;
    for (int first = 0; first < Market::PartCount; ++first) {
        for (int second = 0; second < Market::PartCount; ++second) {
            if (second == first)
                continue;
            for (const bool hasSessions : {false, true})
                QTest::addRow("%s, then %s%s", Market::nameOf(Market::Part(first)),
                    Market::nameOf(Market::Part(second)), hasSessions ? ", sessions" : "")
                    << first << second << hasSessions << seedOfRow++;
        }
    }
}

// The others live on, and are used.
void tst_destroyorder::pairs()
{
    QFETCH(int, first);
    QFETCH(int, second);
    QFETCH(bool, hasSessions);
    QFETCH(quint64, seedOfRow);
    std::mt19937_64 random(seedOfRow);
    const Order order{Market::Part(first), Market::Part(second)};
    Market market(hasSessions);
    market.plot->show();
    destroy(market, order, 2, random);
    QCOMPARE(market.parts(), Market::partsWithout({order[0], order[1]}));
    use(market);
    QCoreApplication::processEvents();
    QCOMPARE(market.parts(), Market::partsWithout({order[0], order[1]}));
    checkPrices(market);
    checkCurves(market);
}

// Each part may be made anew after it is gone.
void tst_destroyorder::replacements()
{
    Market market;
    market.remove(Market::Manager);
    market.remove(Market::Legend);
    market.remove(Market::Picker);
    market.remove(Market::Securities);
    TestHost::createSecurities();
    TestHost::addSecurity(TestHost::future({{"price_step", "2"}}));
    addOption("300");
    addOption("310");
    // The plot goes on with the table that it knows: a new one is for a new plot.
    QVERIFY(!market.plot->securitiesTable());
    market.remove(Market::Plot);
    market.plot = new TestPlot;
    market.plot->setBaseCode(QStringLiteral("Amber"));
    market.picker = market.plot->createPicker();
    market.picker->setPriceStep();
    QCOMPARE(market.plot->priceStep(), 2.0);
    market.manager = new PriceBased2dPlotPointManager(false, market.plot);
    QCOMPARE(market.manager->interval(), (PriceInterval{300.0, 310.0, 10.0, true}));
}

PLOT2D_TEST_MAIN(tst_destroyorder)
#include "tst_destroyorder.moc"
