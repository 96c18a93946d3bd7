#include "desk/window/desktest.h"
#include "desk/window/livetable.h"
#include "support/testmain.h"

#include <quotes/quotesdock.h>
#include <quotes/quotesmodel.h>
#include <quotes/quotesview.h>
#include <window/curvewalk.h>
#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/readoutitem.h>
#include <window/seriesfollower.h>

#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotlegend.h>

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QScrollBar>
#include <QToolButton>

#include <qwt_scale_map.h>

/// The table of quotes in a desk's window, and how it and the plot follow each other.
class tst_quotesdock : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void listsTheChosenSeries();
    void showsAtTheMoneyFirst();
    void theKeyboardBeginsThere();
    void aClickMarksThePoint();
    void arrowsMoveTheMark();
    void staysOnTheWalkedCurve();
    void aRowOutOfSightMarksNothing();
    void theWalkSelectsTheRow();
    void hoveringSelectsTheRow();
    void aCursorAtRestSelectsNothing();
    void followsQuotesInPlace();
    void columnsGrowWithTheirNumbers();
    void followsStrikes();
    void hiddenItDoesNothing();
    void filtersTableAndPlot();
    void theBarFilters();
    void saysNothingWithoutASeries();
    void hasEntriesInTheMenu();

private:
    DeskPlot& plot() const { return *m_window->plot(); }
    int rowOf(double strike) const;
    double currentStrike() const;
    void click(double strike) const;
    void moveMouse(double strike, double volatility) const;
    void key(int key) const { QTest::keyClick(plot().canvas(), Qt::Key(key)); }
    ReadOutItem* mark() const;
    bool isMarked(double strike) const;
    QVector<Record> options() const { return LiveTable::options(m_futureIsinId); }

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
    QuotesDock* m_dock = nullptr;
    QuotesView* m_view = nullptr;
    QuotesModel* m_model = nullptr;
    int m_futureIsinId = 0;
};

void tst_quotesdock::init()
{
    m_data = std::make_unique<DeskData>(QString());
    m_futureIsinId = m_data->import(DeskTest::quotedChain(), 0);
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    m_dock = new QuotesDock(m_window.get());
    m_view = m_dock->findChild<QuotesView*>();
    m_model = m_dock->findChild<QuotesModel*>();
    m_window->resize(1300, 640);
    m_window->showSeries(m_futureIsinId, SeriesFacts());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_quotesdock::cleanup()
{
    m_window.reset();
    m_data.reset();
}

int tst_quotesdock::rowOf(double strike) const
{
    const QVector<QuotesRow>& rows = m_model->rows();
    for (int i = 0; i < rows.size(); ++i) {
        if (rows.at(i).strike == strike)
            return i;
    }
    return -1;
}

double tst_quotesdock::currentStrike() const
{
    const QModelIndex current = m_view->currentIndex();
    const bool isSelected = current.isValid() && m_view->selectionModel()->isRowSelected(current.row(), {});
    return isSelected ? m_model->rows().at(current.row()).strike : 0.0;
}

void tst_quotesdock::click(double strike) const
{
    const QModelIndex index = m_model->index(rowOf(strike), 0);
    m_view->scrollTo(index);
    QTest::mouseClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, m_view->visualRect(index).center());
}

void tst_quotesdock::moveMouse(double strike, double volatility) const
{
    const QPointF position(plot().canvasMap(QwtPlot::xBottom).transform(strike),
        plot().canvasMap(QwtPlot::yLeft).transform(volatility));
    QMouseEvent move(
        QEvent::MouseMove, position, position, QCursor::pos(), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(plot().canvas(), &move);
}

ReadOutItem* tst_quotesdock::mark() const
{
    const QwtPlotItemList items = plot().itemList();
    for (QwtPlotItem* item : items) {
        if (auto* found = dynamic_cast<ReadOutItem*>(item))
            return found;
    }
    qFatal("no mark");
}

bool tst_quotesdock::isMarked(double strike) const
{
    return mark()->isVisible() && mark()->point().x() == strike;
}

void tst_quotesdock::listsTheChosenSeries()
{
    QCOMPARE(m_model->rowCount(), DeskTest::strikeCount);
    QVERIFY(!m_view->isColumnHidden(int(QuotesColumn::CallBid)));
    const int plain = m_data->import(DeskTest::chain(QStringLiteral("PLAIN")), 0);
    m_window->chooseSeries(plain);
    QVERIFY(m_view->isColumnHidden(int(QuotesColumn::CallBid)));
    QVERIFY(!m_view->isColumnHidden(int(QuotesColumn::CallSettlement)));
    QCOMPARE(m_model->rowCount(), DeskTest::strikeCount);
}

void tst_quotesdock::showsAtTheMoneyFirst()
{
    const QRect row = m_view->visualRect(m_model->index(rowOf(DeskTest::forward), 0));
    const int middle = m_view->viewport()->height() / 2;
    QVERIFY2(std::abs(row.center().y() - middle) < 2 * row.height(), qPrintable(QString::number(row.y())));
}

void tst_quotesdock::theKeyboardBeginsThere()
{
    m_dock->toggleViewAction()->trigger();
    m_dock->toggleViewAction()->trigger();
    QVERIFY(m_view->hasFocus());
    QCOMPARE(currentStrike(), 0.0);
    QVERIFY(!mark()->isVisible());
    QTest::keyClick(m_view, Qt::Key_Down);
    QVERIFY(isMarked(102.5));
}

void tst_quotesdock::aClickMarksThePoint()
{
    QVERIFY(!mark()->isVisible());
    click(105.0);
    QVERIFY(isMarked(105.0));
    QVERIFY(plot().walk()->isActive());
    QVERIFY2(mark()->text().text().startsWith(QStringLiteral("Implied volatility\nStrike 105,")),
        qPrintable(mark()->text().text()));
    click(95.0);
    QVERIFY(isMarked(95.0));
    QCOMPARE(currentStrike(), 95.0);
    QVERIFY(m_view->hasFocus());
    // Again after the mark has gone.
    plot().walk()->end();
    QVERIFY(!mark()->isVisible());
    click(95.0);
    QVERIFY(isMarked(95.0));
}

void tst_quotesdock::arrowsMoveTheMark()
{
    click(100.0);
    QTest::keyClick(m_view, Qt::Key_Down);
    QVERIFY(isMarked(102.5));
    QTest::keyClick(m_view, Qt::Key_Up);
    QTest::keyClick(m_view, Qt::Key_Up);
    QVERIFY(isMarked(97.5));
    QCOMPARE(currentStrike(), 97.5);
    QVERIFY(m_view->hasFocus());
}

void tst_quotesdock::staysOnTheWalkedCurve()
{
    click(100.0);
    plot().canvas()->setFocus();
    key(Qt::Key_Up);
    const QString curve = mark()->text().text().section('\n', 0, 0);
    QVERIFY(curve != QStringLiteral("Implied volatility"));
    m_view->setFocus();
    QTest::keyClick(m_view, Qt::Key_Down);
    QVERIFY(isMarked(102.5));
    QCOMPARE(mark()->text().text().section('\n', 0, 0), curve);
}

void tst_quotesdock::aRowOutOfSightMarksNothing()
{
    click(100.0);
    plot().setAxisScale(QwtPlot::xBottom, 98.0, 108.0, 0.0);
    plot().replot();
    click(80.0);
    QVERIFY(!mark()->isVisible());
    QCOMPARE(currentStrike(), 80.0);
    click(105.0);
    QVERIFY(isMarked(105.0));
}

void tst_quotesdock::theWalkSelectsTheRow()
{
    plot().canvas()->setFocus();
    click(100.0);
    plot().canvas()->setFocus();
    key(Qt::Key_Right);
    QVERIFY(isMarked(102.5));
    QCOMPARE(currentStrike(), 102.5);
    key(Qt::Key_Left);
    key(Qt::Key_Left);
    QCOMPARE(currentStrike(), 97.5);
    QVERIFY(plot().canvas()->hasFocus());
    const QRect row = m_view->visualRect(m_view->currentIndex());
    QVERIFY(m_view->viewport()->rect().contains(row.center()));
}

void tst_quotesdock::hoveringSelectsTheRow()
{
    plot().canvas()->setFocus();
    moveMouse(107.5, DeskTest::volatility(107.5));
    QCOMPARE(currentStrike(), 107.5);
    moveMouse(91.0, DeskTest::volatility(91.0));
    QCOMPARE(currentStrike(), 90.0);
    QVERIFY(plot().canvas()->hasFocus());
    QVERIFY(!plot().walk()->isActive());
    QVERIFY(!mark()->isVisible());
}

void tst_quotesdock::aCursorAtRestSelectsNothing()
{
    moveMouse(107.5, DeskTest::volatility(107.5));
    click(90.0);
    plot().walk()->end();
    plot().replot();
    QCOMPARE(currentStrike(), 90.0);
}

void tst_quotesdock::followsQuotesInPlace()
{
    click(110.0);
    m_view->verticalScrollBar()->setValue(4);
    const int scrolled = m_view->verticalScrollBar()->value();
    const QSignalSpy changes(m_model, SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)));
    const QSignalSpy resets(m_model, SIGNAL(modelReset()));
    const QString before = m_model->index(rowOf(110.0), int(QuotesColumn::CallSettlement)).data().toString();
    LiveTable::price(options(), DeskTest::forward, 0.1);
    QTRY_VERIFY(changes.size() > 0);
    QVERIFY(m_model->index(rowOf(110.0), int(QuotesColumn::CallSettlement)).data().toString() != before);
    QCOMPARE(resets.size(), 0);
    QCOMPARE(currentStrike(), 110.0);
    QCOMPARE(m_view->verticalScrollBar()->value(), scrolled);
    QVERIFY(isMarked(110.0));
}

void tst_quotesdock::columnsGrowWithTheirNumbers()
{
    const auto fits = [this](QuotesColumn column) {
        const QString text = m_model->index(rowOf(DeskTest::forward), int(column)).data().toString();
        QFont bold = m_view->font();
        bold.setBold(true);
        return QFontMetrics(bold).horizontalAdvance(text) < m_view->columnWidth(int(column));
    };
    QVERIFY(fits(QuotesColumn::CallSettlement));
    const int before = m_view->columnWidth(int(QuotesColumn::CallSettlement));
    // A thousand times as much.
    LiveTable::price(options(), 1000.0 * DeskTest::forward, 0.0);
    LiveTable::setQuote(m_futureIsinId, DeskTest::forward);
    m_window->setFilter({false, Pricing::OptionSide::CallsAndPuts, 0});
    QTRY_VERIFY(m_view->columnWidth(int(QuotesColumn::CallSettlement)) > before + 10);
    QVERIFY(fits(QuotesColumn::CallSettlement));
}

void tst_quotesdock::followsStrikes()
{
    click(110.0);
    const QSignalSpy resets(m_model, SIGNAL(modelReset()));
    LiveTable::addStrikes(m_futureIsinId, {55.0, 101.0});
    QTRY_COMPARE(m_model->rowCount(), DeskTest::strikeCount + 2);
    QCOMPARE(rowOf(55.0), 0);
    QVERIFY(rowOf(101.0) > 0);
    QCOMPARE(currentStrike(), 110.0);
    QCOMPARE(resets.size(), 0);
}

void tst_quotesdock::hiddenItDoesNothing()
{
    m_dock->toggleViewAction()->trigger();
    QVERIFY(!m_dock->isVisible());
    const QSignalSpy changes(m_model, SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)));
    const QSignalSpy updates(m_window.get(), SIGNAL(shownChanged()));
    LiveTable::price(options(), DeskTest::forward, 0.1);
    QTRY_VERIFY(updates.size() > 0);
    moveMouse(107.5, DeskTest::volatility(107.5));
    QCOMPARE(changes.size(), 0);
    QCOMPARE(currentStrike(), 0.0);
    m_dock->toggleViewAction()->trigger();
    QTRY_VERIFY(changes.size() > 0);
}

void tst_quotesdock::filtersTableAndPlot()
{
    const auto points = [this] { return int(plot().attachedCurves(13).value(0)->dataSize()); };
    const int all = points();
    const PriceBased2dPlotCurve* smile = plot().attachedCurves(9).value(0);
    const int smileSize = int(smile->dataSize());
    const QSignalSpy changes(m_window.get(), SIGNAL(filterChanged()));
    m_window->setFilter({true, Pricing::OptionSide::Calls, 2});
    m_window->setFilter({true, Pricing::OptionSide::Calls, 2});
    QCOMPARE(changes.size(), 1);
    QVERIFY(points() > 3 && points() < all / 2 + 1);
    QVERIFY(m_model->rows().first().strike >= DeskTest::forward);
    QVERIFY(m_view->isColumnHidden(int(QuotesColumn::PutBid)));
    QCOMPARE(plot().attachedCurves(9).value(0), smile);
    QCOMPARE(int(smile->dataSize()), smileSize);
    // The filter stays with other quotes and for other series.
    LiveTable::price(options(), DeskTest::forward, 0.01);
    QTRY_VERIFY(points() < all / 2 + 1);
    m_window->chooseSeries(m_data->import(DeskTest::chain(QStringLiteral("PLAIN")), 0));
    QVERIFY(m_model->rows().first().strike >= DeskTest::forward);
    m_window->setFilter({false, Pricing::OptionSide::CallsAndPuts, 0});
    QVERIFY(points() > all);
    QCOMPARE(m_model->rowCount(), DeskTest::strikeCount);
}

void tst_quotesdock::theBarFilters()
{
    auto* button = m_dock->findChild<QToolButton*>(QStringLiteral("outOfTheMoneyOnly"));
    QVERIFY(button && button->isChecked());
    button->click();
    QVERIFY(!m_window->filter().outOfTheMoneyOnly);
    const QList<QComboBox*> boxes = m_dock->findChildren<QComboBox*>();
    QCOMPARE(boxes.size(), 2);
    boxes.at(0)->setCurrentIndex(2);
    Q_EMIT boxes.at(0)->activated(2);
    boxes.at(1)->setCurrentIndex(3);
    Q_EMIT boxes.at(1)->activated(3);
    QVERIFY(m_window->filter() == (Pricing::OptionFilter{false, Pricing::OptionSide::Puts, 3}));
    m_window->setFilter({true, Pricing::OptionSide::Calls, 1});
    QVERIFY(button->isChecked());
    QCOMPARE(boxes.at(0)->currentIndex(), 1);
    QCOMPARE(boxes.at(1)->currentIndex(), 1);
    for (const QComboBox* box : boxes)
        QVERIFY(!box->accessibleName().isEmpty() && !box->toolTip().isEmpty());
}

void tst_quotesdock::saysNothingWithoutASeries()
{
    LiveTable::takePrices(options());
    LiveTable::setQuote(m_futureIsinId, 0.0);
    QTRY_VERIFY(!m_window->shownSeries());
    QCOMPARE(m_model->rowCount(), 0);
}

void tst_quotesdock::hasEntriesInTheMenu()
{
    const QAction* action = m_dock->toggleViewAction();
    QVERIFY(m_window->viewMenu().actions().contains(const_cast<QAction*>(action)));
    QCOMPARE(action->shortcut(), QKeySequence(QStringLiteral("Ctrl+T")));
    QCOMPARE(action->statusTip(), action->toolTip());
    QVERIFY(!m_view->accessibleName().isEmpty());
}

PLOT2D_TEST_MAIN(tst_quotesdock)
#include "tst_quotesdock.moc"
