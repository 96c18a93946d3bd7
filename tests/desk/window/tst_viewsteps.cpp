#include "shownview.h"
#include "support/testmain.h"

#include <plot2d/pricebased2dplotcurve.h>

namespace {

constexpr int notch = 120;
const QwtInterval somePrices(90.0, 120.0);
const QwtInterval someValues(0.28, 0.31);
const QPoint offset(-50, 20);

}

/// Which gestures on the desk's plot can be undone, and in how many steps.
class tst_viewsteps : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void dragOfTheCanvas();
    void dragOfAnAxis_data();
    void dragOfAnAxis();
    void dragThatChangesNothing();
    void dragAfterADoubleClick();
    void dragWithoutARelease();
    void dragWithAnotherButton();
    void turnsWhileDragging();
    void burstOfTheWheel();
    void burstOfKeys();
    void backAndForth();
    void newZoomDropsTheRedo();
    void refusalKeepsTheRedo();
    void autoScaleIsAStep();
    void resetIsAStep();
    void dataAndSizeAreNoSteps();
    void comesBackToNewData();
    void escapeTakesTheDragOfAnAxisBack_data();
    void escapeTakesTheDragOfAnAxisBack();
    void escapeWithoutADrag();
    void anotherSeriesForgetsAll();

private:
    View undone();

    std::unique_ptr<ShownView> m_shown;
};

void tst_viewsteps::init()
{
    m_shown = std::make_unique<ShownView>();
    QVERIFY(m_shown->isShown());
    m_shown->show(somePrices, someValues);
}

void tst_viewsteps::cleanup()
{
    m_shown.reset();
}

View tst_viewsteps::undone()
{
    m_shown->control().undo();
    return m_shown->view();
}

void tst_viewsteps::dragOfTheCanvas()
{
    m_shown->show(somePrices);
    const View before = m_shown->view();
    QSignalSpy changes(&m_shown->control(), SIGNAL(historyChanged()));
    m_shown->drag(m_shown->middle(ShownView::Canvas), offset);
    QVERIFY(changes.size() > 0);
    const View dragged = m_shown->view();
    QVERIFY(dragged.prices != before.prices);
    QVERIFY(!dragged.autoScale);
    m_shown->drag(m_shown->middle(ShownView::Canvas), -2 * offset);
    QVERIFY(m_shown->view() != dragged);
    COMPARE_VIEWS(undone(), dragged);
    COMPARE_VIEWS(undone(), before);
    QVERIFY(!m_shown->control().canUndo());
}

void tst_viewsteps::dragOfAnAxis_data()
{
    QTest::addColumn<int>("place");
    QTest::newRow("prices") << int(ShownView::Prices);
    QTest::newRow("values") << int(ShownView::Values);
}

void tst_viewsteps::dragOfAnAxis()
{
    QFETCH(int, place);
    m_shown->show(somePrices);
    const View before = m_shown->view();
    const QPoint start = m_shown->middle(ShownView::Place(place));
    m_shown->press(start);
    for (int i = 1; i <= 4; ++i)
        m_shown->move(start - QPoint(3 * i, 3 * i));
    m_shown->release(start);
    QVERIFY(m_shown->view() != before);
    QCOMPARE(m_shown->view().autoScale, place == ShownView::Prices);
    COMPARE_VIEWS(undone(), before);
    QVERIFY(!m_shown->control().canUndo());
}

void tst_viewsteps::dragThatChangesNothing()
{
    m_shown->show(somePrices);
    const View before = m_shown->view();
    m_shown->drag(m_shown->middle(ShownView::Canvas), QPoint());
    // Farther than the data.
    m_shown->show({59.0, 141.0});
    const View all = m_shown->view();
    m_shown->drag(m_shown->middle(ShownView::Canvas), QPoint(100, 0));
    COMPARE_VIEWS(m_shown->view(), all);
    QVERIFY(!m_shown->control().canUndo());
    QVERIFY(before != all);
}

void tst_viewsteps::dragAfterADoubleClick()
{
    const QPoint start = m_shown->middle(ShownView::Prices);
    const View before = m_shown->view();
    m_shown->doubleClickAndHold(start);
    const View fitted = m_shown->view();
    m_shown->move(start - QPoint(5, 0));
    QVERIFY(m_shown->view() != fitted);
    m_shown->release(start - QPoint(5, 0));
    COMPARE_VIEWS(undone(), fitted);
    COMPARE_VIEWS(undone(), before);
}

void tst_viewsteps::dragWithoutARelease()
{
    const QPoint start = m_shown->middle(ShownView::Prices);
    const View before = m_shown->view();
    m_shown->press(start);
    m_shown->move(start - QPoint(5, 0));
    const View dragged = m_shown->view();
    m_shown->press(start);
    m_shown->move(start - QPoint(5, 0));
    m_shown->release(start);
    COMPARE_VIEWS(undone(), dragged);
    COMPARE_VIEWS(undone(), before);

    m_shown->press(start);
    QMouseEvent again(QEvent::MouseButtonDblClick, start, start, QCursor::pos(), Qt::LeftButton,
        Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_shown->plot(), &again);
    QVERIFY(m_shown->view() != before);
    COMPARE_VIEWS(undone(), before);
}

void tst_viewsteps::dragWithAnotherButton()
{
    const QPoint start = m_shown->middle(ShownView::Prices);
    const View before = m_shown->view();
    m_shown->press(start);
    m_shown->move(start - QPoint(5, 0));
    QTest::mouseRelease(&m_shown->plot(), Qt::RightButton, Qt::NoModifier, start);
    m_shown->control().zoomIn();
    m_shown->release(start);
    COMPARE_VIEWS(undone(), before);
}

void tst_viewsteps::turnsWhileDragging()
{
    const View before = m_shown->view();
    const QPoint start = m_shown->middle(ShownView::Prices);
    m_shown->putCursor(start);
    m_shown->press(start);
    m_shown->move(start - QPoint(5, 0));
    m_shown->turn(notch);
    m_shown->move(start - QPoint(10, 0));
    m_shown->control().panRight();
    m_shown->release(start);
    COMPARE_VIEWS(undone(), before);
    QVERIFY(!m_shown->control().canUndo());
}

void tst_viewsteps::burstOfTheWheel()
{
    m_shown->putCursor(m_shown->middle(ShownView::Canvas));
    const View before = m_shown->view();
    const int pause = int(ViewHistory::longestPause);
    for (int i = 0; i < 5; ++i)
        m_shown->turn(notch, Qt::NoModifier, 1000 + i * pause);
    const View zoomed = m_shown->view();
    for (int i = 0; i < 2 * notch; ++i)
        m_shown->turn(-1, Qt::NoModifier, 1001 + 5 * pause);
    QVERIFY(m_shown->view() != zoomed);
    COMPARE_VIEWS(undone(), zoomed);
    COMPARE_VIEWS(undone(), before);
    QVERIFY(!m_shown->control().canUndo());
    m_shown->control().redo();
    COMPARE_VIEWS(m_shown->view(), zoomed);
}

void tst_viewsteps::burstOfKeys()
{
    const View before = m_shown->view();
    m_shown->control().zoomIn();
    m_shown->wait(ViewHistory::longestPause);
    m_shown->control().zoomIn();
    const View zoomed = m_shown->view();
    m_shown->control().panLeft();
    m_shown->control().panUp();
    const View panned = m_shown->view();
    m_shown->wait(ViewHistory::longestPause + 1);
    m_shown->control().panLeft();
    COMPARE_VIEWS(undone(), panned);
    COMPARE_VIEWS(undone(), zoomed);
    COMPARE_VIEWS(undone(), before);
    QVERIFY(!m_shown->control().canUndo());
}

void tst_viewsteps::backAndForth()
{
    m_shown->show(somePrices);
    QVector<View> views{m_shown->view()};
    m_shown->putCursor(m_shown->middle(ShownView::Canvas));
    m_shown->turn(notch);
    views.append(m_shown->view());
    m_shown->drag(m_shown->middle(ShownView::Canvas), offset);
    views.append(m_shown->view());
    m_shown->doubleClick(m_shown->middle(ShownView::Values));
    views.append(m_shown->view());
    m_shown->control().fitAll();
    views.append(m_shown->view());
    for (int round = 0; round < 3; ++round) {
        for (int i = views.size() - 2; i >= 0; --i)
            COMPARE_VIEWS(undone(), views[i]);
        COMPARE_VIEWS(undone(), views[0]);
        for (int i = 1; i <= views.size(); ++i) {
            m_shown->control().redo();
            COMPARE_VIEWS(m_shown->view(), views[qMin(i, views.size() - 1)]);
        }
    }
}

void tst_viewsteps::newZoomDropsTheRedo()
{
    m_shown->putCursor(m_shown->middle(ShownView::Canvas));
    const View before = m_shown->view();
    m_shown->turn(notch);
    undone();
    QVERIFY(m_shown->control().canRedo());
    m_shown->turn(-notch);
    const View zoomed = m_shown->view();
    QVERIFY(!m_shown->control().canRedo());
    m_shown->control().redo();
    COMPARE_VIEWS(m_shown->view(), zoomed);
    COMPARE_VIEWS(undone(), before);
}

void tst_viewsteps::refusalKeepsTheRedo()
{
    m_shown->control().zoomIn();
    undone();
    // Nothing under the cursor to zoom.
    m_shown->putCursor(m_shown->middle(ShownView::Title));
    m_shown->turn(notch);
    m_shown->drag(m_shown->middle(ShownView::Canvas), QPoint());
    QVERIFY(m_shown->control().canRedo());
}

void tst_viewsteps::autoScaleIsAStep()
{
    const View before = m_shown->view();
    m_shown->control().setAutoScale(true);
    QVERIFY(m_shown->view().autoScale);
    QVERIFY(m_shown->view().values != someValues);
    m_shown->control().setAutoScale(true);
    COMPARE_VIEWS(undone(), before);
    QVERIFY(!m_shown->control().canUndo());
    m_shown->control().setAutoScale(false);
    QVERIFY(m_shown->control().canRedo());
}

void tst_viewsteps::resetIsAStep()
{
    const View before = m_shown->view();
    m_shown->control().resetView();
    QVERIFY(m_shown->view().autoScale);
    QVERIFY(m_shown->view().prices.width() > somePrices.width());
    COMPARE_VIEWS(undone(), before);
}

void tst_viewsteps::dataAndSizeAreNoSteps()
{
    m_shown->show(somePrices);
    const View before = m_shown->view();
    m_shown->control().zoomIn();
    const View zoomed = m_shown->view();
    m_shown->plot().updateSeries(m_shown->series(103.0, 0.1));
    QVERIFY(m_shown->view().values.minValue() > zoomed.values.minValue() + 0.05);
    m_shown->plot().resize(700, 300);
    QCoreApplication::processEvents();
    m_shown->plot().setAxisMode(AxisMode::PercentOfQuote);
    QCOMPARE(undone().prices, before.prices);
    QVERIFY(!m_shown->control().canUndo());
    m_shown->plot().updateSeries(m_shown->series(100.0, 0.0));
    m_shown->plot().resize(900, 600);
    QVERIFY(m_shown->control().canRedo());
    m_shown->control().redo();
    QCOMPARE(m_shown->view().prices, zoomed.prices);
}

void tst_viewsteps::comesBackToNewData()
{
    m_shown->show(somePrices);
    const View before = m_shown->view();
    m_shown->drag(m_shown->middle(ShownView::Canvas), offset);
    const View dragged = m_shown->view();
    m_shown->plot().updateSeries(m_shown->series(100.0, 0.1));
    // Without auto-scale the data leaves the values alone.
    COMPARE_VIEWS(m_shown->view(), dragged);
    COMPARE_VIEWS(undone(), before);
    const auto [low, high] = m_shown->plot().minMaxYAtXRange();
    QCOMPARE(m_shown->view().values, QwtInterval(low, high));
    QVERIFY(low > before.values.minValue() + 0.05);
    m_shown->control().redo();
    COMPARE_VIEWS(m_shown->view(), dragged);
}

void tst_viewsteps::escapeTakesTheDragOfAnAxisBack_data()
{
    dragOfAnAxis_data();
}

void tst_viewsteps::escapeTakesTheDragOfAnAxisBack()
{
    QFETCH(int, place);
    m_shown->show(somePrices);
    const View before = m_shown->view();
    const QPoint start = m_shown->middle(ShownView::Place(place));
    m_shown->press(start);
    m_shown->move(start - QPoint(5, 5));
    QVERIFY(m_shown->view() != before);
    QTest::keyClick(m_shown->plot().canvas(), Qt::Key_Escape);
    COMPARE_VIEWS(m_shown->view(), before);
    // The hand still holds the button.
    m_shown->move(start - QPoint(10, 10));
    COMPARE_VIEWS(m_shown->view(), before);
    m_shown->release(start - QPoint(10, 10));
    QVERIFY(!m_shown->control().canUndo());

    m_shown->press(start);
    m_shown->move(start - QPoint(5, 5));
    QVERIFY(m_shown->view() != before);
    m_shown->release(start);
    QVERIFY(m_shown->control().canUndo());
}

void tst_viewsteps::escapeWithoutADrag()
{
    m_shown->control().zoomIn();
    const View zoomed = m_shown->view();
    QTest::keyClick(m_shown->plot().canvas(), Qt::Key_Escape);
    COMPARE_VIEWS(m_shown->view(), zoomed);
    m_shown->press(m_shown->middle(ShownView::Canvas));
    QTest::keyClick(m_shown->plot().canvas(), Qt::Key_Escape);
    m_shown->release(m_shown->middle(ShownView::Canvas));
    COMPARE_VIEWS(m_shown->view(), zoomed);
    // There is nothing to take back yet.
    const QPoint start = m_shown->middle(ShownView::Prices);
    m_shown->press(start);
    QTest::keyClick(m_shown->plot().canvas(), Qt::Key_Escape);
    m_shown->move(start - QPoint(5, 0));
    QVERIFY(m_shown->view() != zoomed);
    m_shown->release(start);
}

void tst_viewsteps::anotherSeriesForgetsAll()
{
    m_shown->control().zoomIn();
    m_shown->control().panLeft();
    undone();
    QVERIFY(m_shown->control().canUndo() && m_shown->control().canRedo());
    // Another series comes while the mouse is held.
    m_shown->press(m_shown->middle(ShownView::Canvas));
    QSignalSpy changes(&m_shown->control(), SIGNAL(historyChanged()));
    m_shown->plot().showNothing(QStringLiteral("the reason"));
    QVERIFY(!m_shown->control().canUndo() && !m_shown->control().canRedo());
    QCOMPARE(changes.size(), 1);
    m_shown->plot().showSeries(m_shown->futureIsinId(), m_shown->series(100.0, 0.0), DeskView::Value);
    m_shown->release(m_shown->middle(ShownView::Canvas));
    QVERIFY(!m_shown->control().canUndo());

    m_shown->control().zoomIn();
    QVERIFY(m_shown->control().canUndo());
    m_shown->plot().showSeries(m_shown->futureIsinId(), m_shown->series(100.0, 0.0), DeskView::Volatility);
    QVERIFY(!m_shown->control().canUndo());
}

PLOT2D_TEST_MAIN(tst_viewsteps)
#include "tst_viewsteps.moc"
