#include "choosingdesk.h"
#include "desktest.h"
#include "support/testmain.h"

#include <QAccessible>
#include <QCheckBox>
#include <QContextMenuEvent>
#include <QMenu>
#include <QScrollBar>

#include <qwt_legend_label.h>
#include <qwt_plot_canvas.h>

/// The desk's legend: how its entries stand, and the menu of each.
class tst_desklegend : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_desk.reset(); }
    void textIsPaintedAsByTheLabel();
    void columnsAreThoseOfTheSeriesShown();
    void nextSeriesIsLaidOut();
    void allEntriesFitWhenItGetsNarrower();
    void leavesTheCanvasItsRoom();
    void menuOfTheMouse();
    void menuOfTheKeyboard();
    void noMenuElsewhere();
    void menuOutlivesItsCurve();
    void screenReader();

private:
    QStringList shown() const;
    QMenu* openMenu(const QString& title);
    QAction* action(const char* text) const;

    std::unique_ptr<ChoosingDesk> m_desk;
};

namespace {

const QString smile = QStringLiteral("Smile");
const QString bid = QStringLiteral("Bid volatility");
const QString points = QStringLiteral("Implied volatility");
const QString forward = QStringLiteral("Forward");

/// What the platform without a screen says of each menu.
void announceMenu()
{
    QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()");
    QTest::ignoreMessage(QtWarningMsg, "This plugin does not support grabbing the keyboard");
}

}

void tst_desklegend::init()
{
    m_desk = std::make_unique<ChoosingDesk>();
    m_desk->start(DeskView::Volatility, ChoosingDesk::Keeping::Nowhere);
    m_desk->plot->choices().setColorQuestion(
        [](const QString&, const QColor&, QWidget*) { return QColor(); });
}

// The titles of the visible curves, in the plot's order; a remark where a box says otherwise.
QStringList tst_desklegend::shown() const
{
    QStringList titles;
    const QStringList hidden = m_desk->hidden();
    const QList<PriceBased2dPlotCurve*> curves = m_desk->plot->attachedCurves(-1);
    for (const PriceBased2dPlotCurve* curve : curves) {
        if (!hidden.contains(curve->title().text()))
            titles << curve->title().text();
    }
    return titles;
}

void tst_desklegend::textIsPaintedAsByTheLabel()
{
    QVERIFY(m_desk->showWindow(DeskView::Volatility, m_desk->quoted));
    for (const bool checked : {true, false}) {
        m_desk->legend->setCheckBoxChecked(points, checked);
        QwtLegendLabel* own = m_desk->label(points);
        const QRect text = own->textRect();
        const QImage image = own->grab(text).toImage();
        QVERIFY(DeskTest::countPixels(image, QColor(checked ? Qt::black : Qt::darkGray).rgb()) > 20);
        own->removeEventFilter(m_desk->legend);
        QCOMPARE(image, own->grab(text).toImage());
        own->installEventFilter(m_desk->legend);
    }
}

void tst_desklegend::columnsAreThoseOfTheSeriesShown()
{
    m_desk->plot->resize(520, 500);
    for (const DeskView view : {DeskView::Volatility, DeskView::Value, DeskView::Volatility}) {
        DeskPlot fresh;
        fresh.resize(m_desk->plot->size());
        fresh.showSeries(m_desk->quoted, m_desk->quotedSeries(), view);
        QVERIFY(m_desk->showWindow(view, m_desk->quoted));
        QCOMPARE(m_desk->legend->maxColumns(), fresh.findChild<DeskLegend*>()->maxColumns());
        QVERIFY(m_desk->legend->maxColumns() > 1);
        QVERIFY(m_desk->legend->maxColumns() < 5);
    }
}

void tst_desklegend::nextSeriesIsLaidOut()
{
    for (const DeskView view : {DeskView::Volatility, DeskView::Volatility, DeskView::Value}) {
        QVERIFY(m_desk->showWindow(view, m_desk->quoted));
        const QList<PriceBased2dPlotCurve*> curves = m_desk->plot->attachedCurves(-1);
        for (const PriceBased2dPlotCurve* curve : curves) {
            const LabelWidget* widget = m_desk->entry(curve->title().text());
            QVERIFY(widget->width() >= widget->sizeHint().width());
            QVERIFY(m_desk->legend->rect().contains(
                QRect(widget->mapTo(m_desk->legend, QPoint()), widget->size())));
        }
    }
}

void tst_desklegend::allEntriesFitWhenItGetsNarrower()
{
    QVERIFY(m_desk->showWindow(DeskView::Volatility, m_desk->quoted));
    for (const int width : {1000, 600, 450, 900}) {
        m_desk->plot->resize(width, 700);
        const QList<PriceBased2dPlotCurve*> curves = m_desk->plot->attachedCurves(-1);
        for (const PriceBased2dPlotCurve* curve : curves) {
            const LabelWidget* widget = m_desk->entry(curve->title().text());
            const auto place = [&] { return QRect(widget->mapTo(m_desk->legend, QPoint()), widget->size()); };
            QTRY_VERIFY2(m_desk->legend->rect().contains(place()), qPrintable(QString::number(width)));
        }
    }
}

void tst_desklegend::leavesTheCanvasItsRoom()
{
    QVERIFY(m_desk->showWindow(DeskView::Volatility, m_desk->quoted));
    const int row = m_desk->entry(smile)->sizeHint().height();
    for (const int height : {700, 400, 300}) {
        m_desk->plot->resize(330, height);
        const int most = std::max(height / 5, 2 * row + 6);
        QTRY_VERIFY2(m_desk->legend->height() <= most && m_desk->legend->height() > 2 * row,
            qPrintable(QStringLiteral("%1 of %2").arg(m_desk->legend->height()).arg(height)));
    }
    QVERIFY(m_desk->plot->canvas()->height() > 60);
    QTRY_VERIFY(m_desk->legend->verticalScrollBar()->isVisible());
}

QMenu* tst_desklegend::openMenu(const QString& title)
{
    announceMenu();
    QwtLegendLabel* target = m_desk->label(title);
    const QPoint place = target->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, target->mapToGlobal(place));
    QApplication::sendEvent(target, &event);
    return m_desk->plot->findChild<QMenu*>();
}

QAction* tst_desklegend::action(const char* text) const
{
    const QList<QAction*> all = m_desk->plot->findChild<QMenu*>()->actions();
    for (QAction* each : all) {
        if (each->text() == QLatin1String(text))
            return each;
    }
    qFatal("no action %s", text);
}

void tst_desklegend::menuOfTheMouse()
{
    QVERIFY(m_desk->showWindow(DeskView::Volatility, m_desk->quoted));
    const QStringList all = shown();
    QCOMPARE(all.size(), 7);
    QVERIFY(openMenu(bid));
    action("&Only this curve")->trigger();
    QCOMPARE(shown(), QStringList(bid));
    action("&All curves")->trigger();
    QCOMPARE(shown(), all);

    // An entry that is unchecked itself.
    m_desk->legend->setCheckBoxChecked(bid, false);
    action("&Only this curve")->trigger();
    QCOMPARE(shown(), QStringList(bid));

    QSignalSpy colors(m_desk->legend, SIGNAL(colorRequested(QString)));
    action("&Colour...")->trigger();
    QCOMPARE(colors.takeFirst(), QVariantList{bid});
    delete m_desk->plot->findChild<QMenu*>();
    // The line would not be valid in another colour.
    QVERIFY(openMenu(forward));
    QVERIFY(!action("&Colour...")->isEnabled());
    action("&Only this curve")->trigger();
    QCOMPARE(shown(), QStringList(forward));
    m_desk->plot->findChild<QMenu*>()->close();
    QTRY_VERIFY(!m_desk->plot->findChild<QMenu*>());
}

void tst_desklegend::menuOfTheKeyboard()
{
    QVERIFY(m_desk->showWindow(DeskView::Volatility, m_desk->quoted));
    m_desk->box(bid)->setFocus();
    announceMenu();
    QTest::keyClick(m_desk->plot->windowHandle(), Qt::Key_F10, Qt::ShiftModifier);
    QMenu* menu = m_desk->plot->findChild<QMenu*>();
    QVERIFY(menu && menu->isVisible());
    QCOMPARE(menu->title(), bid);
    const QPoint below = m_desk->box(bid)->mapToGlobal(m_desk->box(bid)->rect().bottomLeft());
    QVERIFY((menu->pos() - below).manhattanLength() <= 2);
    // Down to the first, and take it.
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    QCOMPARE(shown(), QStringList(bid));
    QTRY_VERIFY(!m_desk->plot->findChild<QMenu*>());

    m_desk->box(smile)->setFocus();
    announceMenu();
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
    QApplication::sendEvent(m_desk->box(smile), &menuKey);
    QVERIFY(menuKey.isAccepted());
    menu = m_desk->plot->findChild<QMenu*>();
    QVERIFY(menu);
    QCOMPARE(menu->title(), smile);
}

void tst_desklegend::noMenuElsewhere()
{
    QVERIFY(m_desk->showWindow(DeskView::Volatility, m_desk->quoted));
    m_desk->plot->canvas()->setFocus();
    QTest::keyClick(m_desk->plot->windowHandle(), Qt::Key_F10, Qt::ShiftModifier);
    QVERIFY(!m_desk->plot->findChild<QMenu*>());
    const QPoint corner = m_desk->legend->rect().bottomRight();
    QVERIFY(!m_desk->entry(smile)->geometry().contains(corner));
    QContextMenuEvent event(QContextMenuEvent::Mouse, corner, m_desk->legend->mapToGlobal(corner));
    QApplication::sendEvent(m_desk->legend, &event);
    QVERIFY(!m_desk->plot->findChild<QMenu*>());
    QVERIFY(!event.isAccepted());
}

void tst_desklegend::menuOutlivesItsCurve()
{
    QVERIFY(m_desk->showWindow(DeskView::Volatility, m_desk->quoted));
    QVERIFY(openMenu(bid));
    QVERIFY(m_desk->showWindow(DeskView::Value, m_desk->quoted));
    QSignalSpy spy(m_desk->legend, SIGNAL(visibilityChanged(QString, bool)));
    action("&Only this curve")->trigger();
    QCOMPARE(spy.count(), 4);
    action("&All curves")->trigger();
    QCOMPARE(spy.count(), 8);
    m_desk->plot->showNothing(QStringLiteral("the reason"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    action("&Only this curve")->trigger();
    action("&Colour...")->trigger();
    QCOMPARE(spy.count(), 8);
}

void tst_desklegend::screenReader()
{
    QVERIFY(m_desk->showWindow(DeskView::Volatility, m_desk->quoted));
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(openMenu(bid));
    QVERIFY(reader);
    QCOMPARE(reader->role(), QAccessible::PopupMenu);
    QVERIFY(reader->text(QAccessible::Name).contains(bid));
    QCOMPARE(reader->childCount(), 4);
    QCOMPARE(reader->child(0)->text(QAccessible::Name), QStringLiteral("Only this curve"));
    for (const QAction* each : m_desk->plot->findChild<QMenu*>()->actions())
        QVERIFY(each->isSeparator() || !each->statusTip().isEmpty());
    reader = QAccessible::queryAccessibleInterface(m_desk->box(bid));
    QCOMPARE(reader->text(QAccessible::Name), bid);
}

PLOT2D_TEST_MAIN(tst_desklegend)
#include "tst_desklegend.moc"
