#include "desk/window/desktest.h"
#include "desk/window/livetable.h"
#include "support/testmain.h"

#include <seriestree/seriesdock.h>
#include <seriestree/seriesoverlays.h>
#include <seriestree/seriestreemodel.h>
#include <seriestree/seriestreeview.h>
#include <window/curvechoices.h>
#include <window/curvelook.h>
#include <window/deskdata.h>
#include <window/desklegend.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/overlaycurve.h>

#include <chain/chainreader.h>

#include <QAction>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLayout>
#include <QMenu>

#include <qwt_legend_label.h>

/// The tree beside the plot of a desk's window: what the user does there, and what the plot shows of it.
class tst_seriesdock : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void showsAllExpiries();
    void showsTheirValues();
    void unchecksByMouse();
    void checksByKeyboard();
    void choosesByMouse();
    void choosesByKeyboard();
    void followsTheBoxes();
    void showsAgainWhatTheLegendHid();
    void bothBoxesAgree();
    void keepsTheLegendsChoice();
    void theMarkHasTheColorOfTheSmile();
    void listsTheChosenSeriesFirst();
    void followsTheTable();
    void followsComingSeries();
    void showsNothingWithoutAChosenOne();
    void restoresASession();
    void foldsInANarrowWindow();
    void hasAnEntryInTheMenu();
    void showsEveryRealExpiryInTime();

private:
    void open(const OptionChain& chain);
    QStringList overlays() const;
    OverlayCurve* overlay(const QString& title) const;
    QStringList entries() const;
    QModelIndex row(const QString& title) const;
    QPoint boxOf(const QString& title) const;
    QString expiryBox() const { return m_window->findChild<QComboBox*>("expiries")->currentText(); }
    QAction* action() const { return m_dock->toggleViewAction(); }

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
    SeriesDock* m_dock = nullptr;
    SeriesTreeView* m_view = nullptr;
    DeskLegend* m_legend = nullptr;
};

namespace {

const auto april = QStringLiteral("2 Apr 2024");
const auto june = QStringLiteral("21 Jun 2024");
const auto december = QStringLiteral("20 Dec 2024");

// Equal prices are less volatility where there is more time.
OptionChain threeExpiries()
{
    OptionChain chain = DeskTest::chain();
    for (const QDate& expiry : {QDate(2024, 6, 21), QDate(2024, 12, 20)}) {
        OptionSeries series = chain.series.first();
        series.expiry = expiry;
        chain.series.append(series);
    }
    return chain;
}

}

void tst_seriesdock::init()
{
    open(threeExpiries());
}

void tst_seriesdock::cleanup()
{
    m_window.reset();
    m_data.reset();
}

void tst_seriesdock::open(const OptionChain& chain)
{
    cleanup();
    m_data = std::make_unique<DeskData>(QString());
    const int futureIsinId = m_data->import(chain, 0);
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    m_dock = new SeriesDock(m_window.get());
    m_view = m_dock->findChild<SeriesTreeView*>();
    m_legend = m_window->findChild<DeskLegend*>();
    m_window->resize(1000, 640);
    m_window->showSeries(futureIsinId, SeriesFacts());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

QStringList tst_seriesdock::overlays() const
{
    QStringList titles;
    const QList<PriceBased2dPlotCurve*> curves = m_window->plot()->attachedCurves(OverlayCurve::overlayType);
    for (const PriceBased2dPlotCurve* curve : curves) {
        if (curve->isVisible() && curve->isValid())
            titles.append(curve->title().text());
    }
    return titles;
}

OverlayCurve* tst_seriesdock::overlay(const QString& title) const
{
    const QList<PriceBased2dPlotCurve*> curves = m_window->plot()->attachedCurves(OverlayCurve::overlayType);
    for (PriceBased2dPlotCurve* curve : curves) {
        if (curve->title().text() == title)
            return dynamic_cast<OverlayCurve*>(curve);
    }
    qFatal("no curve \"%s\"", qPrintable(title));
}

QStringList tst_seriesdock::entries() const
{
    QStringList titles;
    const QLayout* layout = m_legend->contentsWidget()->layout();
    for (int i = 0; i < layout->count(); ++i)
        titles.append(layout->itemAt(i)->widget()->findChild<QwtLegendLabel*>()->text().text());
    return titles;
}

QModelIndex tst_seriesdock::row(const QString& title) const
{
    const QAbstractItemModel& model = *m_view->model();
    const QModelIndexList found
        = model.match(model.index(0, 0), Qt::DisplayRole, title, 1, Qt::MatchExactly | Qt::MatchRecursive);
    if (found.isEmpty())
        qFatal("no row \"%s\"", qPrintable(title));
    return found.first();
}

QPoint tst_seriesdock::boxOf(const QString& title) const
{
    QStyleOptionViewItem option;
    option.initFrom(m_view);
    option.rect = m_view->visualRect(row(title));
    option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay
        | QStyleOptionViewItem::HasDecoration;
    option.decorationSize = m_view->iconSize();
    return m_view->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, m_view).center();
}

void tst_seriesdock::showsAllExpiries()
{
    QCOMPARE(overlays(), (QStringList{june, december}));
    for (const QString& title : {june, december}) {
        const OverlayCurve& curve = *overlay(title);
        QVERIFY(curve.dataSize() > 100);
        QCOMPARE(m_legend->isCheckBoxChecked(title, std::make_unique<bool>().get()), true);
    }
    QVERIFY(overlay(june)->pen().color() != overlay(december)->pen().color());
    // At equal prices the longer time is the lower volatility.
    const auto middle = [this](const QString& title) {
        return overlay(title)->sample(int(overlay(title)->dataSize()) / 2).y();
    };
    QVERIFY(middle(june) > middle(december));
    QCOMPARE(m_window->plot()->attachedCurves(9).size(), 1);
}

void tst_seriesdock::showsTheirValues()
{
    const double volatility = overlay(june)->maxYValue();
    const QList<QAction*> actions = m_window->viewMenu().actions();
    for (QAction* one : actions) {
        if (one->text() == QStringLiteral("&Value"))
            one->trigger();
    }
    QCOMPARE(m_window->view(), DeskView::Value);
    QCOMPARE(overlays(), (QStringList{june, december}));
    QVERIFY(overlay(june)->maxYValue() > 5.0 * volatility);
}

void tst_seriesdock::unchecksByMouse()
{
    QTest::mouseClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, boxOf(june));
    QCOMPARE(overlays(), QStringList{december});
    QCOMPARE(m_view->currentIndex(), row(june));
    QCOMPARE(entries().contains(june), false);
    QCOMPARE(expiryBox(), april);
    QTest::mouseClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, boxOf(june));
    QTRY_COMPARE(overlays(), (QStringList{june, december}));
    QTest::mouseDClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, boxOf(june));
    QCOMPARE(expiryBox(), april);
    QTRY_COMPARE(overlays(), (QStringList{june, december}));
    // Neither is one that has been clicked on elsewhere before.
    QTest::mouseClick(
        m_view->viewport(), Qt::LeftButton, Qt::NoModifier, m_view->visualRect(row(april)).center());
    for (int i = 0; i < 2; ++i) {
        QTest::mouseClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, boxOf(december));
        QCOMPARE(expiryBox(), april);
    }
    // The chosen one is there anyway.
    QTest::mouseClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, boxOf(april));
    QCOMPARE(overlays(), (QStringList{june, december}));
}

void tst_seriesdock::checksByKeyboard()
{
    m_view->setFocus();
    QCOMPARE(m_view->currentIndex(), row(april));
    QTest::keyClick(m_view, Qt::Key_Down);
    QTest::keyClick(m_view, Qt::Key_Down);
    QCOMPARE(expiryBox(), april);
    QTest::keyClick(m_view, Qt::Key_Space);
    QCOMPARE(overlays(), QStringList{june});
    QTest::keyClick(m_view, Qt::Key_Space);
    QTRY_COMPARE(overlays(), (QStringList{june, december}));
}

void tst_seriesdock::choosesByMouse()
{
    QTest::mouseClick(
        m_view->viewport(), Qt::LeftButton, Qt::NoModifier, m_view->visualRect(row(june)).center());
    QCOMPARE(expiryBox(), june);
    QVERIFY(m_window->plot()->title().text().contains(june));
    QTRY_COMPARE(overlays(), (QStringList{april, december}));
    QVERIFY(row(june).data(Qt::FontRole).value<QFont>().bold());
}

void tst_seriesdock::choosesByKeyboard()
{
    m_view->setFocus();
    QTest::keyClick(m_view, Qt::Key_Down);
    QTest::keyClick(m_view, Qt::Key_Return);
    QCOMPARE(expiryBox(), june);
    QVERIFY(m_view->hasFocus());
}

void tst_seriesdock::followsTheBoxes()
{
    auto* box = m_window->findChild<QComboBox*>("expiries");
    box->setCurrentIndex(2);
    Q_EMIT box->activated(2);
    QCOMPARE(m_view->currentIndex(), row(december));
    QTRY_COMPARE(overlays(), (QStringList{april, june}));
}

void tst_seriesdock::showsAgainWhatTheLegendHid()
{
    m_legend->setCheckBoxChecked(june, false);
    QCOMPARE(overlays(), QStringList{december});
    auto* model = m_dock->findChild<SeriesTreeModel*>();
    model->setData(row(june), Qt::Unchecked, Qt::CheckStateRole);
    model->setData(row(june), Qt::Checked, Qt::CheckStateRole);
    QTRY_COMPARE(overlays(), (QStringList{june, december}));
}

void tst_seriesdock::bothBoxesAgree()
{
    const auto inLegend = [this](const QString& title) {
        bool found = false;
        return m_legend->isCheckBoxChecked(title, &found) && found;
    };
    const auto inTree = [this](const QString& title) { return row(title).data(Qt::CheckStateRole).toInt(); };
    const QSignalSpy changes(m_dock, SIGNAL(checksChanged()));
    m_legend->setCheckBoxChecked(june, false);
    QCOMPARE(inTree(june), int(Qt::Unchecked));
    QCOMPARE(changes.size(), 1);
    QCOMPARE(m_dock->unchecked(), QStringList{"TEST 2024-06-21"});
    QVERIFY(entries().contains(june));
    m_legend->setCheckBoxChecked(june, true);
    QCOMPARE(inTree(june), int(Qt::Checked));
    QCOMPARE(overlays(), (QStringList{june, december}));

    m_legend->setCheckBoxChecked(june, false);
    auto* model = m_dock->findChild<SeriesTreeModel*>();
    model->setData(row(june), Qt::Checked, Qt::CheckStateRole);
    QVERIFY(inLegend(june));
    QCOMPARE(overlays(), (QStringList{june, december}));
    model->setData(row(june), Qt::Unchecked, Qt::CheckStateRole);
    QVERIFY(!entries().contains(june));

    m_legend->setCheckBoxChecked(december, false);
    m_window->chooseSeries(model->seriesAt(row(june)));
    QTRY_VERIFY(entries().contains(december));
    QVERIFY(!inLegend(december));
    QCOMPARE(inTree(december), int(Qt::Unchecked));
    QTRY_VERIFY(inLegend(april));
}

void tst_seriesdock::keepsTheLegendsChoice()
{
    m_legend->setCheckBoxChecked(june, false);
    m_window->chooseSeries(m_dock->findChild<SeriesTreeModel*>()->seriesAt(row(december)));
    QTRY_COMPARE(overlays(), QStringList{april});
    QVERIFY(entries().contains(june));
}

void tst_seriesdock::theMarkHasTheColorOfTheSmile()
{
    const auto mark = [this] {
        const QPixmap picture = row(april).data(Qt::DecorationRole).value<QIcon>().pixmap(18, 14);
        return picture.toImage().pixelColor(picture.rect().center());
    };
    QCOMPARE(mark(), CurveLook::color(CurveRole::Smile));
    m_window->plot()->choices().setColorQuestion(
        [](const QString&, const QColor&, QWidget*) { return QColor(Qt::magenta); });
    Q_EMIT m_legend->colorRequested(CurveLook::title(CurveRole::Smile));
    QCOMPARE(mark(), QColor(Qt::magenta));
}

void tst_seriesdock::listsTheChosenSeriesFirst()
{
    QCOMPARE(entries(), (QStringList{"Smile", "Implied volatility", "Forward", june, december}));
    m_window->chooseSeries(m_dock->findChild<SeriesTreeModel*>()->seriesAt(row(december)));
    QTRY_COMPARE(entries(), (QStringList{"Smile", "Implied volatility", "Forward", april, june}));
    m_window->setFilter({true, Pricing::OptionSide::Calls, 0});
    m_window->setFilter({true, Pricing::OptionSide::CallsAndPuts, 0});
    QCOMPARE(entries(), (QStringList{"Smile", "Implied volatility", "Forward", april, june}));
    auto* model = m_dock->findChild<SeriesTreeModel*>();
    model->setData(row(april), Qt::Unchecked, Qt::CheckStateRole);
    model->setData(row(april), Qt::Checked, Qt::CheckStateRole);
    QTRY_COMPARE(entries(), (QStringList{"Smile", "Implied volatility", "Forward", april, june}));
}

void tst_seriesdock::followsTheTable()
{
    const int id = m_dock->findChild<SeriesTreeModel*>()->seriesAt(row(june));
    OverlayCurve* curve = overlay(june);
    const double before = curve->maxYValue();
    const double other = overlay(december)->maxYValue();
    LiveTable::price(LiveTable::options(id), DeskTest::forward, 0.1);
    QTRY_VERIFY(curve->maxYValue() > before + 0.05);
    QCOMPARE(overlay(june), curve);
    QCOMPARE(overlay(december)->maxYValue(), other);

    LiveTable::takePrices(LiveTable::options(id));
    QTRY_COMPARE(overlays(), QStringList{december});
    LiveTable::price(LiveTable::options(id), DeskTest::forward, 0.0);
    QTRY_VERIFY(overlays().contains(june));
}

void tst_seriesdock::followsComingSeries()
{
    auto* model = m_dock->findChild<SeriesTreeModel*>();
    LiveTable::removeSeries(model->seriesAt(row(june)));
    QTRY_COMPARE(overlays(), QStringList{december});
    LiveTable::addSeries(model->seriesAt(row(december)), QStringLiteral("OTHER"));
    QTRY_COMPARE(model->rowCount(), 2);
    QCOMPARE(overlays(), QStringList{december});
    QVERIFY(m_view->isExpanded(model->index(0, 0)));
}

void tst_seriesdock::showsNothingWithoutAChosenOne()
{
    auto* model = m_dock->findChild<SeriesTreeModel*>();
    const int id = model->seriesAt(row(june));
    LiveTable::takePrices(LiveTable::options(id));
    m_window->chooseSeries(id);
    QVERIFY(!m_window->shownSeries());
    QVERIFY(overlays().isEmpty());
    QCOMPARE(expiryBox(), june);
    QCOMPARE(model->chosen(), id);
    LiveTable::price(LiveTable::options(id), DeskTest::forward, 0.0);
    QTRY_COMPARE(overlays(), (QStringList{april, december}));
}

void tst_seriesdock::restoresASession()
{
    const QSignalSpy changes(m_dock, SIGNAL(checksChanged()));
    m_dock->setUnchecked({"TEST 2024-12-20"});
    QCOMPARE(changes.size(), 1);
    QCOMPARE(overlays(), QStringList{june});
    QCOMPARE(m_dock->unchecked(), QStringList{"TEST 2024-12-20"});
}

void tst_seriesdock::foldsInANarrowWindow()
{
    QVERIFY(m_dock->isVisible());
    m_window->resize(400, 400);
    QTRY_VERIFY(!m_dock->isVisible());
    QCOMPARE(overlays(), (QStringList{june, december}));
    m_window->resize(900, 400);
    QTRY_VERIFY(m_dock->isVisible());

    // What the user hides stays away, what the user shows stays.
    action()->trigger();
    QVERIFY(!m_dock->isVisible());
    m_window->resize(400, 400);
    m_window->resize(900, 400);
    QCoreApplication::processEvents();
    QVERIFY(!m_dock->isVisible());
    m_window->resize(400, 400);
    QTRY_COMPARE(m_window->width(), 400);
    action()->trigger();
    QVERIFY(m_dock->isVisible());
    m_window->resize(410, 400);
    QTRY_COMPARE(m_window->width(), 410);
    QVERIFY(m_dock->isVisible());
}

void tst_seriesdock::hasAnEntryInTheMenu()
{
    QVERIFY(m_window->viewMenu().actions().contains(action()));
    QCOMPARE(action()->shortcut(), QKeySequence(QStringLiteral("Ctrl+E")));
    QVERIFY(!action()->toolTip().isEmpty());
    QCOMPARE(action()->statusTip(), action()->toolTip());
    QVERIFY(!m_view->accessibleName().isEmpty());
    action()->trigger();
    action()->trigger();
    QVERIFY(m_view->hasFocus());
}

void tst_seriesdock::showsEveryRealExpiryInTime()
{
    const QString file = DeskTest::realChain(DeskTest::indexFile);
    if (file.isEmpty())
        QSKIP("the real chain of index options is not there");
    QElapsedTimer clock;
    clock.start();
    m_window->importChain(file);
    QTRY_COMPARE(overlays().size(), 9);
    const qint64 needed = clock.elapsed();
    qInfo("%lld ms from the file to ten smiles", needed);
    QVERIFY(needed < 5000);
    QCOMPARE(m_window->plot()->attachedCurves(9).size(), 1);
    for (const QString& title : overlays())
        QVERIFY2(overlay(title)->dataSize() > 100, qPrintable(title));
}

PLOT2D_TEST_MAIN(tst_seriesdock)
#include "tst_seriesdock.moc"
