#include "faults/market.h"
#include "support/testmain.h"

#include <database/settings.h>

#include <QTemporaryDir>

#include <qwt_legend_label.h>

#include <functional>
#include <memory>

/// Listeners that change or delete what a legend is just telling of or building.
class tst_legendmeanwhile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_market = std::make_unique<Market>(); }
    void cleanup();

    void duringAToggle_data();
    void duringAToggle();
    void duringAnIconReset_data();
    void duringAnIconReset();
    void duringARebuild_data();
    void duringARebuild();

private:
    void act(const QString& does);
    void checkEntries() const;

    std::unique_ptr<Market> m_market;
    std::unique_ptr<QwtPlotItem> m_detached;
};

void tst_legendmeanwhile::cleanup()
{
    m_detached.reset();
    m_market.reset();
}

void tst_legendmeanwhile::duringAToggle_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<int>("part");
    QTest::addColumn<int>("when");
    // One entry, or all three.
    const QVector<QPair<const char*, int>> ways{{"one", 1}, {"list", 3}, {"stored", 3}, {"click", 1}};
    for (const auto& [way, signalCount] : ways) {
        for (int part = 0; part < Market::PartCount; ++part) {
            for (int when = 1; when <= signalCount; ++when)
                QTest::addRow("%s: %s at signal %d", way, Market::nameOf(Market::Part(part)), when)
                    << way << part << when;
        }
    }
}

// The plot hears of it first, and the listener second.
void tst_legendmeanwhile::duringAToggle()
{
    QFETCH(QString, way);
    QFETCH(int, part);
    QFETCH(int, when);
    Market& market = *m_market;
    const QTemporaryDir folder;
    Settings settings(folder.filePath(QStringLiteral("s.ini")));
    const QStringList titles{"curve 9", "curve 10", "curve 13"};
    if (way == QLatin1String("stored")) {
        for (const QString& title : titles)
            market.curve(title)->QwtPlotItem::setVisible(false);
        market.legend->store(settings);
    }
    market.plot->show();
    QVERIFY(QTest::qWaitForWindowExposed(market.plot));
    int calls = 0;
    const QObject listener;
    connect(market.legend, &PriceBased2dPlotLegend::visibilityChanged, &listener, [&] {
        if (++calls == when)
            market.remove(Market::Part(part));
    });
    if (way == QLatin1String("one")) {
        market.legend->setCheckBoxChecked(titles.first(), false);
    } else if (way == QLatin1String("list")) {
        market.legend->setUncheckedItems(titles);
        market.legend->restoreUncheckedItems();
    } else if (way == QLatin1String("stored")) {
        market.legend->restore(settings);
    } else {
        const auto labels = market.legend->findChildren<QwtLegendLabel*>();
        QPointer<QwtLegendLabel> label = labels.at(1);
        QTest::mousePress(label, Qt::LeftButton);
        if (label)
            QTest::mouseRelease(label, Qt::LeftButton);
    }
    QVERIFY(calls >= when);
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

void tst_legendmeanwhile::duringAnIconReset_data()
{
    QTest::addColumn<int>("part");
    for (int part = 0; part < Market::PartCount; ++part)
        QTest::newRow(Market::nameOf(Market::Part(part))) << part;
}

void tst_legendmeanwhile::duringAnIconReset()
{
    QFETCH(int, part);
    Market& market = *m_market;
    int calls = 0;
    int signalsAfter = 0;
    const QObject listener;
    connect(market.legend, &PriceBased2dPlotLegend::visibilityChanged, &listener, [&] { ++signalsAfter; });
    // The copy outlives the plot that calls it.
    const std::function<void()> removal = [&] {
        ++calls;
        market.remove(Market::Part(part));
    };
    market.plot->onIconReset = [&removal] { removal(); };
    market.legend->setCheckBoxChecked(QStringLiteral("curve 10"), false);
    QCOMPARE(calls, 1);
    QCOMPARE(signalsAfter, market.legend ? 1 : 0);
    if (market.legend)
        QCOMPARE(market.legend->uncheckedItems(), QStringList{QStringLiteral("curve 10")});
}

namespace {

/// A legend whose host does something of its own each time that an entry is made or filled.
class RestlessLegend : public PriceBased2dPlotLegend {
public:
    using PriceBased2dPlotLegend::PriceBased2dPlotLegend;

    QWidget* createWidget(const QwtLegendData& legendData) const override
    {
        QWidget* widget = PriceBased2dPlotLegend::createWidget(legendData);
        if (onCreate)
            onCreate();
        return widget;
    }
    void updateWidget(QWidget* widget, const QwtLegendData& legendData) override
    {
        if (onUpdate)
            onUpdate();
        PriceBased2dPlotLegend::updateWidget(widget, legendData);
    }

    std::function<void()> onCreate;
    std::function<void()> onUpdate;
};

}

void tst_legendmeanwhile::duringARebuild_data()
{
    QTest::addColumn<QString>("place");
    QTest::addColumn<QString>("does");
    for (const char* place : {"entry made", "entry filled", "data changed"}) {
        for (const char* does : {"toggles", "forgets", "adds a curve", "renames a curve", "detaches a curve",
                 "stores", "restores", "picker", "panner", "manager", "securities"}) {
            // What Qwt is about to fill in is the old title then.
            if (QByteArray(place) == "entry filled" && QByteArray(does) == "renames a curve")
                continue;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
            // Qwt walks over the plot's own list of items, and lists of Qt 6 close up behind the walk.
            if (QByteArray(place) != "data changed" && QByteArray(does) == "detaches a curve")
                continue;
#endif
            QTest::addRow("%s: %s", place, does) << place << does;
        }
    }
    for (const char* does : {"legend", "other legend"})
        QTest::addRow("data changed: %s", does) << "data changed" << does;
}

void tst_legendmeanwhile::act(const QString& does)
{
    Market& market = *m_market;
    const QTemporaryDir folder;
    Settings settings(folder.filePath(QStringLiteral("s.ini")));
    PriceBased2dPlotCurve* first = market.curve(QStringLiteral("curve 9"));
    if (does == "toggles")
        market.legend->setCheckBoxChecked(QStringLiteral("curve 9"), false);
    else if (does == "forgets")
        market.legend->updateItemMaps();
    else if (does == "adds a curve")
        addCurve(*market.plot, 11, {{1.0, 1.0}, {2.0, 2.0}}, QStringLiteral("new"));
    else if (does == "renames a curve")
        first->setTitle(QStringLiteral("renamed"));
    else if (does == "detaches a curve")
        m_detached.reset((first->detach(), first));
    else if (does == "stores")
        market.legend->store(settings);
    else if (does == "restores")
        market.legend->restore(settings);
    else if (does == "legend")
        delete market.legend;
    else if (does == "other legend")
        market.plot->insertLegend(new PriceBased2dPlotLegend(market.plot), QwtPlot::LeftLegend);
    for (int part = 0; part < Market::PartCount; ++part) {
        if (does == QLatin1String(Market::nameOf(Market::Part(part))) && part != Market::Legend)
            market.remove(Market::Part(part));
    }
}

// The entries are those of the curves that are there.
void tst_legendmeanwhile::checkEntries() const
{
    const QList<PriceBased2dPlotCurve*> curves = m_market->plot->attachedCurves(-1);
    for (const PriceBased2dPlotCurve* curve : curves) {
        bool found = false;
        const QString title = curve->title().text();
        m_market->legend->setCheckBoxChecked(title, false);
        QVERIFY2(!m_market->legend->isCheckBoxChecked(title, &found) && found, qPrintable(title));
    }
}

void tst_legendmeanwhile::duringARebuild()
{
    QFETCH(QString, place);
    QFETCH(QString, does);
    Market& market = *m_market;
    delete market.legend;
    QPointer<RestlessLegend> legend = new RestlessLegend(market.plot);
    market.legend = legend;
    legend->initCore();
    int calls = 0;
    const auto actOnce = [&] {
        // Once, or it would have no end.
        if (++calls == 3)
            act(does);
    };
    const QObject listener;
    if (place == "entry made")
        legend->onCreate = actOnce;
    else if (place == "entry filled")
        legend->onUpdate = actOnce;
    // Qwt goes on with the legend that it inserts; with those that it updates it does not.
    market.plot->insertLegend(legend, QwtPlot::RightLegend);
    if (place == "data changed") {
        connect(market.plot, &QwtPlot::legendDataChanged, &listener, actOnce);
        market.plot->updateLegend();
    }
    QVERIFY(calls >= 3);
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    if (!legend || does == "other legend")
        return;
    legend->onUpdate = nullptr;
    legend->onCreate = nullptr;
    checkEntries();
}

PLOT2D_TEST_MAIN(tst_legendmeanwhile)
#include "tst_legendmeanwhile.moc"
