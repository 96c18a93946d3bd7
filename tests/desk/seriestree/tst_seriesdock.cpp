#include "desk/seriestree/seriesdesk.h"
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

namespace {

// Milliseconds from the file to the smiles of all its expiries; the sanitizers cost a multiple.
#ifdef PLOT2D_IS_SANITIZED
constexpr int longest = 60000;
#else
constexpr int longest = 5000;
#endif

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

/// The tree beside the plot of a desk's window: what the user does there, and what the plot shows of it.
class tst_seriesdock : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_desk = std::make_unique<SeriesDesk>(threeExpiries()); }
    void cleanup() { m_desk.reset(); }
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
    std::unique_ptr<SeriesDesk> m_desk;
};

void tst_seriesdock::showsAllExpiries()
{
    QCOMPARE(m_desk->overlays(), (QStringList{june, december}));
    for (const QString& title : {june, december}) {
        const OverlayCurve& curve = *m_desk->overlay(title);
        QVERIFY(curve.dataSize() > 100);
        QCOMPARE(m_desk->legend().isCheckBoxChecked(title, std::make_unique<bool>().get()), true);
    }
    QVERIFY(m_desk->overlay(june)->pen().color() != m_desk->overlay(december)->pen().color());
    // At equal prices the longer time is the lower volatility.
    const auto middle = [this](const QString& title) {
        return m_desk->overlay(title)->sample(int(m_desk->overlay(title)->dataSize()) / 2).y();
    };
    QVERIFY(middle(june) > middle(december));
    QCOMPARE(m_desk->window().plot()->attachedCurves(9).size(), 1);
}

void tst_seriesdock::showsTheirValues()
{
    const double volatility = m_desk->overlay(june)->maxYValue();
    const QList<QAction*> actions = m_desk->window().viewMenu().actions();
    for (QAction* one : actions) {
        if (one->text() == QStringLiteral("&Value"))
            one->trigger();
    }
    QCOMPARE(m_desk->window().view(), DeskView::Value);
    QCOMPARE(m_desk->overlays(), (QStringList{june, december}));
    QVERIFY(m_desk->overlay(june)->maxYValue() > 5.0 * volatility);
}

void tst_seriesdock::unchecksByMouse()
{
    QTest::mouseClick(m_desk->view().viewport(), Qt::LeftButton, Qt::NoModifier, m_desk->boxOf(june));
    QCOMPARE(m_desk->overlays(), QStringList{december});
    QCOMPARE(m_desk->view().currentIndex(), m_desk->row(june));
    QCOMPARE(m_desk->entries().contains(june), false);
    QCOMPARE(m_desk->expiryBox(), april);
    QTest::mouseClick(m_desk->view().viewport(), Qt::LeftButton, Qt::NoModifier, m_desk->boxOf(june));
    QTRY_COMPARE(m_desk->overlays(), (QStringList{june, december}));
    QTest::mouseDClick(m_desk->view().viewport(), Qt::LeftButton, Qt::NoModifier, m_desk->boxOf(june));
    QCOMPARE(m_desk->expiryBox(), april);
    QTRY_COMPARE(m_desk->overlays(), (QStringList{june, december}));
    // Neither is one that has been clicked on elsewhere before.
    QTest::mouseClick(m_desk->view().viewport(), Qt::LeftButton, Qt::NoModifier,
        m_desk->view().visualRect(m_desk->row(april)).center());
    for (int i = 0; i < 2; ++i) {
        QTest::mouseClick(m_desk->view().viewport(), Qt::LeftButton, Qt::NoModifier, m_desk->boxOf(december));
        QCOMPARE(m_desk->expiryBox(), april);
    }
    // The chosen one is there anyway.
    QTest::mouseClick(m_desk->view().viewport(), Qt::LeftButton, Qt::NoModifier, m_desk->boxOf(april));
    QCOMPARE(m_desk->overlays(), (QStringList{june, december}));
}

void tst_seriesdock::checksByKeyboard()
{
    m_desk->view().setFocus();
    QCOMPARE(m_desk->view().currentIndex(), m_desk->row(april));
    QTest::keyClick(&m_desk->view(), Qt::Key_Down);
    QTest::keyClick(&m_desk->view(), Qt::Key_Down);
    QCOMPARE(m_desk->expiryBox(), april);
    QTest::keyClick(&m_desk->view(), Qt::Key_Space);
    QCOMPARE(m_desk->overlays(), QStringList{june});
    QTest::keyClick(&m_desk->view(), Qt::Key_Space);
    QTRY_COMPARE(m_desk->overlays(), (QStringList{june, december}));
}

void tst_seriesdock::choosesByMouse()
{
    QTest::mouseClick(m_desk->view().viewport(), Qt::LeftButton, Qt::NoModifier,
        m_desk->view().visualRect(m_desk->row(june)).center());
    QCOMPARE(m_desk->expiryBox(), june);
    QVERIFY(m_desk->window().plot()->title().text().contains(june));
    QTRY_COMPARE(m_desk->overlays(), (QStringList{april, december}));
    QVERIFY(m_desk->row(june).data(Qt::FontRole).value<QFont>().bold());
}

void tst_seriesdock::choosesByKeyboard()
{
    m_desk->view().setFocus();
    QTest::keyClick(&m_desk->view(), Qt::Key_Down);
    QTest::keyClick(&m_desk->view(), Qt::Key_Return);
    QCOMPARE(m_desk->expiryBox(), june);
    QVERIFY(m_desk->view().hasFocus());
}

void tst_seriesdock::followsTheBoxes()
{
    auto* box = m_desk->window().findChild<QComboBox*>("expiries");
    box->setCurrentIndex(2);
    Q_EMIT box->activated(2);
    QCOMPARE(m_desk->view().currentIndex(), m_desk->row(december));
    QTRY_COMPARE(m_desk->overlays(), (QStringList{april, june}));
}

void tst_seriesdock::showsAgainWhatTheLegendHid()
{
    m_desk->legend().setCheckBoxChecked(june, false);
    QCOMPARE(m_desk->overlays(), QStringList{december});
    auto* model = m_desk->dock().findChild<SeriesTreeModel*>();
    model->setData(m_desk->row(june), Qt::Unchecked, Qt::CheckStateRole);
    model->setData(m_desk->row(june), Qt::Checked, Qt::CheckStateRole);
    QTRY_COMPARE(m_desk->overlays(), (QStringList{june, december}));
}

void tst_seriesdock::bothBoxesAgree()
{
    const auto inLegend = [this](const QString& title) {
        bool found = false;
        return m_desk->legend().isCheckBoxChecked(title, &found) && found;
    };
    const auto inTree
        = [this](const QString& title) { return m_desk->row(title).data(Qt::CheckStateRole).toInt(); };
    const QSignalSpy changes(&m_desk->dock(), SIGNAL(checksChanged()));
    m_desk->legend().setCheckBoxChecked(june, false);
    QCOMPARE(inTree(june), int(Qt::Unchecked));
    QCOMPARE(changes.size(), 1);
    QCOMPARE(m_desk->dock().unchecked(), QStringList{"TEST 2024-06-21"});
    QVERIFY(m_desk->entries().contains(june));
    m_desk->legend().setCheckBoxChecked(june, true);
    QCOMPARE(inTree(june), int(Qt::Checked));
    QCOMPARE(m_desk->overlays(), (QStringList{june, december}));

    m_desk->legend().setCheckBoxChecked(june, false);
    auto* model = m_desk->dock().findChild<SeriesTreeModel*>();
    model->setData(m_desk->row(june), Qt::Checked, Qt::CheckStateRole);
    QVERIFY(inLegend(june));
    QCOMPARE(m_desk->overlays(), (QStringList{june, december}));
    model->setData(m_desk->row(june), Qt::Unchecked, Qt::CheckStateRole);
    QVERIFY(!m_desk->entries().contains(june));

    m_desk->legend().setCheckBoxChecked(december, false);
    m_desk->window().chooseSeries(model->seriesAt(m_desk->row(june)));
    QTRY_VERIFY(m_desk->entries().contains(december));
    QVERIFY(!inLegend(december));
    QCOMPARE(inTree(december), int(Qt::Unchecked));
    QTRY_VERIFY(inLegend(april));
}

void tst_seriesdock::keepsTheLegendsChoice()
{
    m_desk->legend().setCheckBoxChecked(june, false);
    m_desk->window().chooseSeries(
        m_desk->dock().findChild<SeriesTreeModel*>()->seriesAt(m_desk->row(december)));
    QTRY_COMPARE(m_desk->overlays(), QStringList{april});
    QVERIFY(m_desk->entries().contains(june));
}

void tst_seriesdock::theMarkHasTheColorOfTheSmile()
{
    const auto mark = [this] {
        const QPixmap picture = m_desk->row(april).data(Qt::DecorationRole).value<QIcon>().pixmap(18, 14);
        return picture.toImage().pixelColor(picture.rect().center());
    };
    QCOMPARE(mark(), CurveLook::color(CurveRole::Smile));
    m_desk->window().plot()->choices().setColorQuestion(
        [](const QString&, const QColor&, QWidget*) { return QColor(Qt::magenta); });
    Q_EMIT m_desk->legend().colorRequested(CurveLook::title(CurveRole::Smile));
    QCOMPARE(mark(), QColor(Qt::magenta));
}

void tst_seriesdock::listsTheChosenSeriesFirst()
{
    QCOMPARE(m_desk->entries(), (QStringList{"Smile", "Implied volatility", "Forward", june, december}));
    m_desk->window().chooseSeries(
        m_desk->dock().findChild<SeriesTreeModel*>()->seriesAt(m_desk->row(december)));
    QTRY_COMPARE(m_desk->entries(), (QStringList{"Smile", "Implied volatility", "Forward", april, june}));
    m_desk->window().setFilter({true, Pricing::OptionSide::Calls, 0});
    m_desk->window().setFilter({true, Pricing::OptionSide::CallsAndPuts, 0});
    QCOMPARE(m_desk->entries(), (QStringList{"Smile", "Implied volatility", "Forward", april, june}));
    auto* model = m_desk->dock().findChild<SeriesTreeModel*>();
    model->setData(m_desk->row(april), Qt::Unchecked, Qt::CheckStateRole);
    model->setData(m_desk->row(april), Qt::Checked, Qt::CheckStateRole);
    QTRY_COMPARE(m_desk->entries(), (QStringList{"Smile", "Implied volatility", "Forward", april, june}));
}

void tst_seriesdock::followsTheTable()
{
    const int id = m_desk->dock().findChild<SeriesTreeModel*>()->seriesAt(m_desk->row(june));
    OverlayCurve* curve = m_desk->overlay(june);
    const double before = curve->maxYValue();
    const double other = m_desk->overlay(december)->maxYValue();
    LiveTable::price(LiveTable::options(id), DeskTest::forward, 0.1);
    QTRY_VERIFY(curve->maxYValue() > before + 0.05);
    QCOMPARE(m_desk->overlay(june), curve);
    QCOMPARE(m_desk->overlay(december)->maxYValue(), other);

    LiveTable::takePrices(LiveTable::options(id));
    QTRY_COMPARE(m_desk->overlays(), QStringList{december});
    LiveTable::price(LiveTable::options(id), DeskTest::forward, 0.0);
    QTRY_VERIFY(m_desk->overlays().contains(june));
}

void tst_seriesdock::followsComingSeries()
{
    auto* model = m_desk->dock().findChild<SeriesTreeModel*>();
    LiveTable::removeSeries(model->seriesAt(m_desk->row(june)));
    QTRY_COMPARE(m_desk->overlays(), QStringList{december});
    LiveTable::addSeries(model->seriesAt(m_desk->row(december)), QStringLiteral("OTHER"));
    QTRY_COMPARE(model->rowCount(), 2);
    QCOMPARE(m_desk->overlays(), QStringList{december});
    QVERIFY(m_desk->view().isExpanded(model->index(0, 0)));
}

void tst_seriesdock::showsNothingWithoutAChosenOne()
{
    auto* model = m_desk->dock().findChild<SeriesTreeModel*>();
    const int id = model->seriesAt(m_desk->row(june));
    LiveTable::takePrices(LiveTable::options(id));
    m_desk->window().chooseSeries(id);
    QVERIFY(!m_desk->window().shownSeries());
    QVERIFY(m_desk->overlays().isEmpty());
    QCOMPARE(m_desk->expiryBox(), june);
    QCOMPARE(model->chosen(), id);
    LiveTable::price(LiveTable::options(id), DeskTest::forward, 0.0);
    QTRY_COMPARE(m_desk->overlays(), (QStringList{april, december}));
}

void tst_seriesdock::restoresASession()
{
    const QSignalSpy changes(&m_desk->dock(), SIGNAL(checksChanged()));
    m_desk->dock().setUnchecked({"TEST 2024-12-20"});
    QCOMPARE(changes.size(), 1);
    QCOMPARE(m_desk->overlays(), QStringList{june});
    QCOMPARE(m_desk->dock().unchecked(), QStringList{"TEST 2024-12-20"});
}

void tst_seriesdock::foldsInANarrowWindow()
{
    QVERIFY(m_desk->dock().isVisible());
    m_desk->window().resize(400, 400);
    QTRY_VERIFY(!m_desk->dock().isVisible());
    QCOMPARE(m_desk->overlays(), (QStringList{june, december}));
    m_desk->window().resize(900, 400);
    QTRY_VERIFY(m_desk->dock().isVisible());

    // What the user hides stays away, what the user shows stays.
    m_desk->action()->trigger();
    QVERIFY(!m_desk->dock().isVisible());
    m_desk->window().resize(400, 400);
    m_desk->window().resize(900, 400);
    QCoreApplication::processEvents();
    QVERIFY(!m_desk->dock().isVisible());
    m_desk->window().resize(400, 400);
    QTRY_COMPARE(m_desk->window().width(), 400);
    m_desk->action()->trigger();
    QVERIFY(m_desk->dock().isVisible());
    m_desk->window().resize(410, 400);
    QTRY_COMPARE(m_desk->window().width(), 410);
    QVERIFY(m_desk->dock().isVisible());
}

void tst_seriesdock::hasAnEntryInTheMenu()
{
    QVERIFY(m_desk->window().viewMenu().actions().contains(m_desk->action()));
    QCOMPARE(m_desk->action()->shortcut(), QKeySequence(QStringLiteral("Ctrl+E")));
    QVERIFY(!m_desk->action()->toolTip().isEmpty());
    QCOMPARE(m_desk->action()->statusTip(), m_desk->action()->toolTip());
    QVERIFY(!m_desk->view().accessibleName().isEmpty());
    m_desk->action()->trigger();
    m_desk->action()->trigger();
    QVERIFY(m_desk->view().hasFocus());
}

void tst_seriesdock::showsEveryRealExpiryInTime()
{
    const QString file = DeskTest::realChain(DeskTest::indexFile);
    if (file.isEmpty())
        QSKIP("the real chain of index options is not there");
    QElapsedTimer clock;
    clock.start();
    m_desk->window().importChain(file);
    QTRY_COMPARE_WITH_TIMEOUT(m_desk->overlays().size(), 9, longest);
    const qint64 needed = clock.elapsed();
    qInfo("%lld ms from the file to ten smiles", needed);
    QVERIFY2(needed < longest, qPrintable(QString::number(needed)));
    QCOMPARE(m_desk->window().plot()->attachedCurves(9).size(), 1);
    for (const QString& title : m_desk->overlays())
        QVERIFY2(m_desk->overlay(title)->dataSize() > 100, qPrintable(title));
}

PLOT2D_TEST_MAIN(tst_seriesdock)
#include "tst_seriesdock.moc"
