#include "desktest.h"
#include "support/testmain.h"

#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/elidedlabel.h>

#include <chain/chainerror.h>
#include <plot2d/pricebased2dplotcurve.h>

#include <QAction>
#include <QComboBox>
#include <QTemporaryDir>

#include <qwt_plot_grid.h>

/// The window: its menus, the choice of the series, and imports.
class tst_deskwindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void saysWhatItShows();
    void actionsHaveShortcutsAndTips();
    void switchesTheView();
    void switchesTheGrid();
    void followsTheAutoScale();
    void choosesTheSeries();
    void showsASeriesWithoutForwardAsEmpty();
    void importsAFile();
    void keepsAllAfterABadImport();

private:
    QAction* action(const QString& text) const;
    QComboBox* box(const char* name) const;
    void choose(QComboBox* box, int index) const;
    QString status() const { return m_window->findChild<ElidedLabel*>()->fullText(); }

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
};

void tst_deskwindow::init()
{
    m_data = std::make_unique<DeskData>(QString());
    m_data->importSamples();
    OptionChain chain = DeskTest::chain();
    OptionSeries calls = chain.series.first();
    calls.expiry = QDate(2024, 6, 21);
    calls.quotes.erase(std::remove_if(calls.quotes.begin(), calls.quotes.end(),
                           [](const OptionQuote& quote) { return quote.type == OptionType::Put; }),
        calls.quotes.end());
    chain.series.append(calls);
    const int futureIsinId = m_data->import(chain, 0);
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    m_window->showSeries(futureIsinId, SeriesFacts());
}

void tst_deskwindow::cleanup()
{
    m_window.reset();
    m_data.reset();
}

QAction* tst_deskwindow::action(const QString& text) const
{
    const QList<QAction*> actions = m_window->findChildren<QAction*>();
    for (QAction* one : actions) {
        if (one->text().remove(QLatin1Char('&')) == text)
            return one;
    }
    qFatal("no action \"%s\"", qPrintable(text));
}

QComboBox* tst_deskwindow::box(const char* name) const
{
    return m_window->findChild<QComboBox*>(QString::fromLatin1(name));
}

void tst_deskwindow::choose(QComboBox* box, int index) const
{
    box->setCurrentIndex(index);
    Q_EMIT box->activated(index);
}

void tst_deskwindow::saysWhatItShows()
{
    QCOMPARE(
        m_window->plot()->title().text(), QStringLiteral("TEST \u00b7 expiry 2 Apr 2024 \u00b7 91 days"));
    QVERIFY2(m_window->windowTitle().startsWith(QStringLiteral("TEST, expiry 2 Apr 2024")),
        qPrintable(m_window->windowTitle()));
    QVERIFY2(status().startsWith(QStringLiteral("Forward ")), qPrintable(status()));
    QVERIFY2(status().contains(QStringLiteral(" (parity) \u00b7 ")), qPrintable(status()));
    QCOMPARE(box("baseCodes")->currentText(), QStringLiteral("TEST"));
    QCOMPARE(box("expiries")->currentText(), QStringLiteral("2 Apr 2024"));
    QCOMPARE(box("expiries")->count(), 2);
}

void tst_deskwindow::actionsHaveShortcutsAndTips()
{
    QSet<QString> shortcuts;
    const QStringList texts{"Import...", "PNG picture...", "Print...", "Quit", "Volatility", "Value",
        "Auto-scale", "Reset view", "Grid"};
    for (const QString& text : texts) {
        const QAction* one = action(text);
        QVERIFY2(!one->shortcut().isEmpty(), qPrintable(text));
        QVERIFY2(one->toolTip().size() > text.size(), qPrintable(text));
        QCOMPARE(one->statusTip(), one->toolTip());
        shortcuts.insert(one->shortcut().toString());
    }
    QCOMPARE(shortcuts.size(), texts.size());
}

void tst_deskwindow::switchesTheView()
{
    QVERIFY(action("Volatility")->isChecked());
    QCOMPARE(m_window->plot()->attachedCurves(9).size(), 1);
    action("Value")->trigger();
    QVERIFY(!action("Volatility")->isChecked());
    QCOMPARE(m_window->plot()->attachedCurves(9).size(), 0);
    QCOMPARE(m_window->plot()->attachedCurves(11).size(), 1);
    action("Volatility")->trigger();
    QCOMPARE(m_window->plot()->attachedCurves(9).size(), 1);
    QCOMPARE(m_window->plot()->attachedCurves(11).size(), 0);
}

void tst_deskwindow::switchesTheGrid()
{
    const QwtPlotItem* grid = m_window->plot()->itemList(QwtPlotItem::Rtti_PlotGrid).value(0);
    QVERIFY(grid && grid->isVisible());
    action("Grid")->trigger();
    QVERIFY(!grid->isVisible());
    action("Grid")->trigger();
    QVERIFY(grid->isVisible());
}

void tst_deskwindow::followsTheAutoScale()
{
    QVERIFY(action("Auto-scale")->isChecked());
    // What the plot emits when the user drags or zooms.
    m_window->plot()->resetAutoScale();
    QVERIFY(!action("Auto-scale")->isChecked());
    QVERIFY(!m_window->plot()->autoScaleEnabled());
    action("Auto-scale")->trigger();
    QVERIFY(m_window->plot()->autoScaleEnabled());
    m_window->plot()->resetAutoScale();
    action("Reset view")->trigger();
    QVERIFY(m_window->plot()->autoScaleEnabled());
    QVERIFY(action("Auto-scale")->isChecked());
}

void tst_deskwindow::choosesTheSeries()
{
    QComboBox* codes = box("baseCodes");
    for (int i = 0; i < codes->count(); ++i) {
        const QString code = codes->itemText(i);
        choose(codes, i);
        QVERIFY(m_window->shownSeries().has_value());
        QCOMPARE(m_window->shownSeries()->data.baseCode, code);
        QVERIFY2(m_window->plot()->title().text().startsWith(code), qPrintable(code));
        const double forward = m_window->shownSeries()->market.forward;
        QCOMPARE(m_window->plot()->attachedCurves(0).value(0)->sample(0).x(), forward);
    }
}

void tst_deskwindow::showsASeriesWithoutForwardAsEmpty()
{
    choose(box("expiries"), 1);
    QVERIFY(!m_window->shownSeries().has_value());
    QVERIFY(m_window->plot()->attachedCurves(-1).isEmpty());
    QVERIFY2(status().contains(QStringLiteral("no forward")), qPrintable(status()));
    action("Value")->trigger();
    QVERIFY(m_window->plot()->attachedCurves(-1).isEmpty());
    choose(box("expiries"), 0);
    QVERIFY(m_window->shownSeries().has_value());
    QCOMPARE(m_window->plot()->attachedCurves(11).size(), 1);
}

void tst_deskwindow::importsAFile()
{
    const QTemporaryDir folder;
    QByteArray text = DeskTest::csv();
    text.replace("TEST", "FRESH");
    m_window->importChain(DeskTest::write(folder.filePath(QStringLiteral("fresh.csv")), text));
    QCOMPARE(m_window->shownSeries()->data.baseCode, QStringLiteral("FRESH"));
    QCOMPARE(box("baseCodes")->currentText(), QStringLiteral("FRESH"));
    QVERIFY(m_data->series().size() >= 6);
}

void tst_deskwindow::keepsAllAfterABadImport()
{
    const QTemporaryDir folder;
    const QString file = DeskTest::write(
        folder.filePath(QStringLiteral("broken.csv")), DeskTest::csv() + "TEST,x,y,C,z,1\n");
    const int seriesBefore = m_data->series().size();
    QVERIFY_EXCEPTION_THROWN(m_window->importChain(file), ChainError);
    QCOMPARE(m_data->series().size(), seriesBefore);
    QCOMPARE(m_window->shownSeries()->data.baseCode, QStringLiteral("TEST"));
    QVERIFY(!m_window->plot()->getKotirFromFutureRecord(m_window->plot()->getFuture()).isZero());
}

PLOT2D_TEST_MAIN(tst_deskwindow)
#include "tst_deskwindow.moc"
