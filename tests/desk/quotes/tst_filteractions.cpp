#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <quotes/filteractions.h>
#include <window/deskdata.h>
#include <window/deskwindow.h>

#include <QAction>
#include <QActionGroup>
#include <QMenu>

/// The menu that says which options are shown.
class tst_filteractions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void beginsWithTheFilter();
    void setsTheFilter();
    void followsTheFilter();
    void keepsANumberOfItsOwn();
    void haveShortcutsAndTips();

private:
    QAction* entry(const QActionGroup* group, int value) const;

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
    FilterActions* m_actions = nullptr;
};

void tst_filteractions::init()
{
    m_data = std::make_unique<DeskData>(QString());
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    m_actions = new FilterActions(m_window.get(), &m_window->viewMenu());
}

void tst_filteractions::cleanup()
{
    m_window.reset();
    m_data.reset();
}

QAction* tst_filteractions::entry(const QActionGroup* group, int value) const
{
    const QList<QAction*> actions = group->actions();
    for (QAction* action : actions) {
        if (action->data().toInt() == value)
            return action;
    }
    qFatal("no entry %d", value);
}

void tst_filteractions::beginsWithTheFilter()
{
    QVERIFY(m_actions->outOfTheMoneyOnly()->isChecked());
    QVERIFY(entry(m_actions->sides(), int(Pricing::OptionSide::CallsAndPuts))->isChecked());
    QVERIFY(entry(m_actions->deviations(), 0)->isChecked());
}

void tst_filteractions::setsTheFilter()
{
    m_actions->outOfTheMoneyOnly()->trigger();
    QVERIFY(m_window->filter() == (Pricing::OptionFilter{false, Pricing::OptionSide::CallsAndPuts, 0}));
    entry(m_actions->sides(), int(Pricing::OptionSide::Puts))->trigger();
    QVERIFY(m_window->filter() == (Pricing::OptionFilter{false, Pricing::OptionSide::Puts, 0}));
    entry(m_actions->deviations(), 3)->trigger();
    QVERIFY(m_window->filter() == (Pricing::OptionFilter{false, Pricing::OptionSide::Puts, 3}));
    m_actions->outOfTheMoneyOnly()->trigger();
    QVERIFY(m_window->filter() == (Pricing::OptionFilter{true, Pricing::OptionSide::Puts, 3}));
}

void tst_filteractions::followsTheFilter()
{
    const QSignalSpy changes(m_window.get(), SIGNAL(filterChanged()));
    m_window->setFilter({false, Pricing::OptionSide::Calls, 2});
    QVERIFY(!m_actions->outOfTheMoneyOnly()->isChecked());
    QVERIFY(entry(m_actions->sides(), int(Pricing::OptionSide::Calls))->isChecked());
    QVERIFY(entry(m_actions->deviations(), 2)->isChecked());
    QCOMPARE(changes.size(), 1);
}

void tst_filteractions::keepsANumberOfItsOwn()
{
    m_window->setFilter({true, Pricing::OptionSide::CallsAndPuts, 7});
    QVERIFY(!m_actions->deviations()->checkedAction());
    m_actions->outOfTheMoneyOnly()->trigger();
    QVERIFY(m_window->filter() == (Pricing::OptionFilter{false, Pricing::OptionSide::CallsAndPuts, 7}));
    entry(m_actions->deviations(), 1)->trigger();
    QCOMPARE(m_window->filter().deviations, 1);
}

void tst_filteractions::haveShortcutsAndTips()
{
    QSet<QString> shortcuts;
    const QList<QAction*> all = m_actions->sides()->actions() + m_actions->deviations()->actions()
        + QList<QAction*>{m_actions->outOfTheMoneyOnly()};
    for (const QAction* action : all) {
        QVERIFY(!action->shortcut().isEmpty());
        QVERIFY(action->toolTip().size() > action->text().size());
        QCOMPARE(action->statusTip(), action->toolTip());
        shortcuts.insert(action->shortcut().toString());
    }
    QCOMPARE(shortcuts.size(), all.size());
    // The smile does not move with what is looked at; the user is told.
    QVERIFY(m_actions->outOfTheMoneyOnly()->toolTip().contains(QStringLiteral("smile")));
}

PLOT2D_TEST_MAIN(tst_filteractions)
#include "tst_filteractions.moc"
