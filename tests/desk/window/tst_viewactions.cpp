#include "desktest.h"
#include "support/testmain.h"

#include <window/curvewalk.h>
#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/viewcontrol.h>

#include <QCheckBox>
#include <QComboBox>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>
#include <QWheelEvent>

#include <qwt_plot_layout.h>

namespace {

using Command = void (ViewControl::*)();

/// All entries of a menu and its submenus.
QList<QAction*> entriesOf(const QMenu& menu)
{
    QList<QAction*> entries;
    const QList<QAction*> actions = menu.actions();
    for (QAction* const action : actions) {
        if (action->menu())
            entries += entriesOf(*action->menu());
        else if (!action->isSeparator())
            entries += action;
    }
    return entries;
}

}

Q_DECLARE_METATYPE(Command)
Q_DECLARE_METATYPE(Qt::KeyboardModifiers)

/// The keys, the menu and the tool button of the desk's view.
class tst_viewactions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void entriesHaveKeysAndTips();
    void mnemonicsDiffer();
    void keysMoveTheView_data();
    void keysMoveTheView();
    void keysUndoAndRedo();
    void otherWidgetsKeepTheirKeys();
    void arrowsWalkWhileAPointIsMarked();
    void walksByTheMenu();
    void buttonShowsTheAutoScale();
    void buttonSwitchesTheAutoScale();
    void buttonGoesOff_data();
    void buttonGoesOff();
    void anotherSeriesSwitchesTheAutoScaleOn();

private:
    QMenu& viewMenu() const;
    QAction* entry(const QString& text) const;
    QToolButton* button() const;
    DeskPlot& plot() const { return *m_window->plot(); }
    ViewControl& control() const { return *plot().findChild<ViewControl*>(); }
    View view() const { return control().view(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    void zoomFreely() const;

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
    int m_futureIsinId = 0;
};

void tst_viewactions::init()
{
    m_data = std::make_unique<DeskData>(QString());
    m_futureIsinId = m_data->import(DeskTest::chain(), 0);
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    m_window->resize(900, 600);
    m_window->showSeries(m_futureIsinId, SeriesFacts());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_viewactions::cleanup()
{
    m_window.reset();
    m_data.reset();
}

QMenu& tst_viewactions::viewMenu() const
{
    const QList<QAction*> menus = m_window->menuBar()->actions();
    for (const QAction* const one : menus) {
        if (one->text() == QLatin1String("&View"))
            return *one->menu();
    }
    qFatal("no menu");
}

QAction* tst_viewactions::entry(const QString& text) const
{
    const QList<QAction*> entries = entriesOf(viewMenu());
    for (QAction* const one : entries) {
        if (one->text().remove(QLatin1Char('&')) == text)
            return one;
    }
    qFatal("no entry \"%s\"", qPrintable(text));
}

QToolButton* tst_viewactions::button() const
{
    const auto* bar = m_window->findChild<QToolBar*>();
    return qobject_cast<QToolButton*>(bar->widgetForAction(entry(QStringLiteral("Auto-scale"))));
}

// Whatever has the keyboard gets the key.
void tst_viewactions::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

/// Goes where there is room to all sides, with auto-scale off.
void tst_viewactions::zoomFreely() const
{
    plot().resetAutoScale();
    plot().setAxisScale(QwtPlot::xBottom, 90.0, 120.0, 0.0);
    plot().setAxisScale(QwtPlot::yLeft, 0.32, 0.35, 0.0);
    Q_EMIT plot().updateAxisLabels();
    control().forget();
}

void tst_viewactions::entriesHaveKeysAndTips()
{
    QSet<QString> keys;
    int count = 0;
    const QList<QMenu*> menus = m_window->menuBar()->findChildren<QMenu*>();
    for (const QMenu* const menu : menus) {
        const QList<QAction*> actions = menu->actions();
        for (const QAction* const action : actions) {
            if (action->isSeparator() || action->menu())
                continue;
            QVERIFY2(!action->shortcuts().isEmpty(), qPrintable(action->text()));
            QVERIFY2(action->toolTip().size() > action->text().size(), qPrintable(action->text()));
            QCOMPARE(action->statusTip(), action->toolTip());
            const QList<QKeySequence> shortcuts = action->shortcuts();
            for (const QKeySequence& shortcut : shortcuts) {
                QVERIFY2(!keys.contains(shortcut.toString()), qPrintable(shortcut.toString()));
                keys.insert(shortcut.toString());
            }
            ++count;
        }
    }
    QVERIFY2(count >= 22, qPrintable(QString::number(count)));
    for (const char* const key : {"+", "=", "-", "Left", "Right", "Up", "Down", "Home", "Esc", "Backspace",
             "Shift+Backspace", "F2", "Return", "Ctrl+A", "Ctrl+0"})
        QVERIFY2(keys.contains(QLatin1String(key)), key);
}

void tst_viewactions::mnemonicsDiffer()
{
    QSet<QChar> letters;
    const QList<QAction*> actions = viewMenu().actions();
    for (const QAction* const action : actions) {
        if (action->isSeparator())
            continue;
        const QChar letter = action->text().section(QLatin1Char('&'), 1).at(0).toLower();
        QVERIFY2(!letters.contains(letter), qPrintable(action->text()));
        letters.insert(letter);
    }
}

void tst_viewactions::keysMoveTheView_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<Command>("command");
    const Qt::KeyboardModifiers none = Qt::NoModifier;
    const Qt::KeyboardModifiers keypad = Qt::KeypadModifier;
    QTest::newRow("plus") << Qt::Key_Plus << none << Command(&ViewControl::zoomIn);
    QTest::newRow("plus of the keypad") << Qt::Key_Plus << keypad << Command(&ViewControl::zoomIn);
    QTest::newRow("plus without Shift") << Qt::Key_Equal << none << Command(&ViewControl::zoomIn);
    QTest::newRow("minus") << Qt::Key_Minus << none << Command(&ViewControl::zoomOut);
    QTest::newRow("minus of the keypad") << Qt::Key_Minus << keypad << Command(&ViewControl::zoomOut);
    QTest::newRow("left") << Qt::Key_Left << none << Command(&ViewControl::panLeft);
    QTest::newRow("right") << Qt::Key_Right << none << Command(&ViewControl::panRight);
    QTest::newRow("up") << Qt::Key_Up << none << Command(&ViewControl::panUp);
    QTest::newRow("down") << Qt::Key_Down << none << Command(&ViewControl::panDown);
    QTest::newRow("down of the keypad") << Qt::Key_Down << keypad << Command(&ViewControl::panDown);
    QTest::newRow("home") << Qt::Key_Home << none << Command(&ViewControl::fitAll);
    QTest::newRow("reset") << Qt::Key_0 << Qt::KeyboardModifiers(Qt::ControlModifier)
                           << Command(&ViewControl::resetView);
}

void tst_viewactions::keysMoveTheView()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(Command, command);
    QCOMPARE(QApplication::focusWidget(), plot().canvas());
    zoomFreely();
    (control().*command)();
    const View expected = view();
    zoomFreely();
    QVERIFY(view() != expected);
    press(key, modifiers);
    QVERIFY(view() == expected);
}

void tst_viewactions::keysUndoAndRedo()
{
    QVERIFY(!entry("Undo zoom or pan")->isEnabled());
    QVERIFY(!entry("Redo zoom or pan")->isEnabled());
    const View before = view();
    press(Qt::Key_Plus);
    const View zoomed = view();
    QVERIFY(zoomed != before);
    QVERIFY(entry("Undo zoom or pan")->isEnabled());
    press(Qt::Key_Backspace);
    QVERIFY(view() == before);
    QVERIFY(!entry("Undo zoom or pan")->isEnabled());
    QVERIFY(entry("Redo zoom or pan")->isEnabled());
    press(Qt::Key_Backspace);
    QVERIFY(view() == before);
    press(Qt::Key_Backspace, Qt::ShiftModifier);
    QVERIFY(view() == zoomed);
    QVERIFY(!entry("Redo zoom or pan")->isEnabled());
    entry("Undo zoom or pan")->trigger();
    QVERIFY(view() == before);
    m_window->showSeries(m_futureIsinId, SeriesFacts());
    QVERIFY(!entry("Redo zoom or pan")->isEnabled());
}

void tst_viewactions::otherWidgetsKeepTheirKeys()
{
    zoomFreely();
    const View before = view();
    m_window->findChild<QComboBox*>(QStringLiteral("baseCodes"))->setFocus();
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Home, Qt::Key_Plus, Qt::Key_F2, Qt::Key_Backspace})
        press(key);
    QVERIFY(view() == before);
    QVERIFY(!plot().walk()->isActive());

    // In the legend the arrows go from one check box to the next.
    auto* const box = plot().findChild<QCheckBox*>();
    box->setFocus();
    QCOMPARE(QApplication::focusWidget(), box);
    press(Qt::Key_Down);
    QVERIFY(view() == before);
    press(Qt::Key_Plus);
    QVERIFY(view() != before);
    press(Qt::Key_Backspace);
    QVERIFY(view() == before);
}

void tst_viewactions::arrowsWalkWhileAPointIsMarked()
{
    zoomFreely();
    control().setAutoScale(true);
    const View before = view();
    QSignalSpy changes(plot().walk(), SIGNAL(activeChanged(bool)));
    press(Qt::Key_Return);
    QCOMPARE(changes.size(), 1);
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down})
        press(key);
    QVERIFY(view() == before);
    // The other keys are still the view's.
    press(Qt::Key_Plus);
    QVERIFY(view() != before);
    QVERIFY(plot().walk()->isActive());
    press(Qt::Key_Backspace);
    press(Qt::Key_Escape);
    QVERIFY(!plot().walk()->isActive());
    QVERIFY(view() == before);
    press(Qt::Key_Left);
    QVERIFY(view() != before);
}

void tst_viewactions::walksByTheMenu()
{
    QAction* const walk = entry("Walk the points");
    QAction* const leave = entry("Leave the points");
    QVERIFY(!walk->isChecked() && !leave->isEnabled());
    walk->trigger();
    QVERIFY(plot().walk()->isActive() && walk->isChecked() && leave->isEnabled());
    leave->trigger();
    QVERIFY(!plot().walk()->isActive() && !walk->isChecked() && !leave->isEnabled());
    press(Qt::Key_F2);
    QVERIFY(walk->isChecked());
    walk->trigger();
    QVERIFY(!plot().walk()->isActive() && !walk->isChecked());
    plot().showNothing(QString());
    walk->trigger();
    QVERIFY(!plot().walk()->isActive() && !walk->isChecked());
}

void tst_viewactions::buttonShowsTheAutoScale()
{
    QVERIFY(button());
    QVERIFY(button()->isCheckable() && button()->isChecked());
    QVERIFY(!button()->icon().isNull());
    QVERIFY(button()->toolTip().size() > 10);
    const QImage icon = button()->icon().pixmap(16).toImage();
    QCOMPARE(icon.size(), QSize(16, 16));
    int drawn = 0;
    for (int y = 0; y < icon.height(); ++y) {
        for (int x = 0; x < icon.width(); ++x)
            drawn += qAlpha(icon.pixel(x, y)) > 128 ? 1 : 0;
    }
    QVERIFY2(drawn > 50 && drawn < 150, qPrintable(QString::number(drawn)));
}

void tst_viewactions::buttonSwitchesTheAutoScale()
{
    zoomFreely();
    QVERIFY(!button()->isChecked());
    const View before = view();
    QTest::mouseClick(button(), Qt::LeftButton);
    QVERIFY(button()->isChecked());
    QVERIFY(plot().autoScaleEnabled());
    const auto [low, high] = plot().minMaxYAtXRange();
    QCOMPARE(view().values, QwtInterval(low, high));
    press(Qt::Key_Backspace);
    QVERIFY(view() == before);
    QVERIFY(!button()->isChecked());
    entry(QStringLiteral("Auto-scale"))->trigger();
    QVERIFY(button()->isChecked());
    QTest::mouseClick(button(), Qt::LeftButton);
    QVERIFY(!button()->isChecked() && !plot().autoScaleEnabled());
}

void tst_viewactions::buttonGoesOff_data()
{
    QTest::addColumn<QString>("by");
    QTest::addColumn<bool>("off");
    QTest::newRow("wheel") << "wheel" << true;
    QTest::newRow("wheel for the prices") << "control wheel" << false;
    QTest::newRow("drag of the canvas") << "drag" << true;
    QTest::newRow("key for the values") << "up" << true;
    QTest::newRow("key for the prices") << "left" << false;
    QTest::newRow("zoom key") << "plus" << false;
    QTest::newRow("fit") << "home" << false;
}

void tst_viewactions::buttonGoesOff()
{
    QFETCH(QString, by);
    QFETCH(bool, off);
    zoomFreely();
    control().setAutoScale(true);
    const View before = view();
    const QPoint middle = plot().plotLayout()->canvasRect().center().toPoint();
    const QPoint global = plot().mapToGlobal(middle);
    if (by.endsWith(QLatin1String("wheel"))) {
        QCursor::setPos(global);
        QWheelEvent event(middle, global, QPoint(), QPoint(0, 120), Qt::NoButton,
            by == QLatin1String("wheel") ? Qt::NoModifier : Qt::ControlModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&plot(), &event);
    } else if (by == QLatin1String("drag")) {
        QTest::mousePress(plot().canvas(), Qt::LeftButton, Qt::NoModifier, QPoint(300, 200));
        QTest::mouseMove(plot().canvas(), QPoint(280, 200));
        QTest::mouseRelease(plot().canvas(), Qt::LeftButton, Qt::NoModifier, QPoint(280, 200));
    } else {
        press(by == QLatin1String("up")       ? Qt::Key_Up
                : by == QLatin1String("left") ? Qt::Key_Left
                : by == QLatin1String("plus") ? Qt::Key_Plus
                                              : Qt::Key_Home);
    }
    QVERIFY(view() != before);
    QCOMPARE(button()->isChecked(), !off);
    QCOMPARE(entry(QStringLiteral("Auto-scale"))->isChecked(), !off);
    QCOMPARE(plot().autoScaleEnabled(), !off);
}

void tst_viewactions::anotherSeriesSwitchesTheAutoScaleOn()
{
    zoomFreely();
    QVERIFY(!button()->isChecked());
    m_window->showSeries(m_futureIsinId, SeriesFacts());
    QVERIFY(button()->isChecked() && plot().autoScaleEnabled());
    QVERIFY(!control().canUndo());
}

PLOT2D_TEST_MAIN(tst_viewactions)
#include "tst_viewactions.moc"
