#include "quotes/filteractions.h"

#include <window/deskwindow.h>
#include <window/menuentry.h>

#include <QAction>
#include <QActionGroup>
#include <QMenu>

namespace {

QList<QKeySequence> keys(const QString& text)
{
    return {QKeySequence(text)};
}

void checkValue(const QActionGroup& group, int value)
{
    const QList<QAction*> actions = group.actions();
    for (QAction* const action : actions) {
        if (action->data().toInt() == value)
            action->setChecked(true);
    }
}

}

FilterActions::FilterActions(DeskWindow* window, QMenu* menu)
    : QObject(menu)
    , m_window(window)
    , m_sides(new QActionGroup(this))
    , m_deviations(new QActionGroup(this))
{
    QMenu& filter = *menu->addMenu(tr("Fi&lter"));
    filter.setToolTipsVisible(true);
    m_outOfTheMoneyOnly = add(filter,
        {tr("&Out of the money only"), keys(QStringLiteral("Ctrl+M")),
            tr("Show puts below the forward and calls from it upwards alone; the smile stays fitted to all "
               "of these whatever is shown")},
        nullptr, 0);
    m_outOfTheMoneyOnly->setIconText(tr("OTM"));
    connect(m_outOfTheMoneyOnly, SIGNAL(triggered()), this, SLOT(onTriggered()));
    filter.addSeparator();
    addSides(filter);
    filter.addSeparator();
    addDeviations(filter);
    connect(m_sides, SIGNAL(triggered(QAction*)), this, SLOT(onTriggered()));
    connect(m_deviations, SIGNAL(triggered(QAction*)), this, SLOT(onTriggered()));
    connect(window, SIGNAL(filterChanged()), this, SLOT(onFilterChanged()));
    onFilterChanged();
}

QAction* FilterActions::add(QMenu& menu, const MenuEntry& entry, QActionGroup* group, int value)
{
    QAction* const action = addEntry(menu, entry);
    action->setCheckable(true);
    action->setData(value);
    if (group)
        group->addAction(action);
    return action;
}

void FilterActions::addSides(QMenu& menu)
{
    add(menu,
        {tr("Calls &and puts"), keys(QStringLiteral("Ctrl+Shift+A")),
            tr("Show the points, bands and quotes of calls and puts")},
        m_sides, int(Pricing::OptionSide::CallsAndPuts));
    add(menu,
        {tr("&Calls only"), keys(QStringLiteral("Ctrl+Shift+C")),
            tr("Show the points, bands and quotes of calls alone")},
        m_sides, int(Pricing::OptionSide::Calls));
    add(menu,
        {tr("&Puts only"), keys(QStringLiteral("Ctrl+Shift+P")),
            tr("Show the points, bands and quotes of puts alone")},
        m_sides, int(Pricing::OptionSide::Puts));
}

void FilterActions::addDeviations(QMenu& menu)
{
    add(menu,
        {tr("All &strikes"), keys(QStringLiteral("Ctrl+Shift+0")),
            tr("Show the points, bands and quotes of all strikes")},
        m_deviations, 0);
    for (int i = 1; i <= mostDeviations; ++i) {
        QAction* const action = add(menu,
            {i == 1 ? tr("Within &1 deviation") : tr("Within &%1 deviations").arg(i),
                keys(QStringLiteral("Ctrl+Shift+%1").arg(i)),
                tr("Show strikes of which the logarithm is within so many standard deviations of the "
                   "forward's, by the volatility at the forward: %1")
                    .arg(i)},
            m_deviations, i);
        action->setIconText(QStringLiteral("\u00b1%1\u03c3").arg(i));
    }
}

void FilterActions::onTriggered()
{
    Pricing::OptionFilter filter;
    filter.outOfTheMoneyOnly = m_outOfTheMoneyOnly->isChecked();
    filter.side = Pricing::OptionSide(m_sides->checkedAction()->data().toInt());
    // A number that the menu does not have comes from elsewhere, and stays.
    const QAction* const deviations = m_deviations->checkedAction();
    filter.deviations = deviations ? deviations->data().toInt() : m_window->filter().deviations;
    m_window->setFilter(filter);
}

void FilterActions::onFilterChanged()
{
    const Pricing::OptionFilter& filter = m_window->filter();
    m_outOfTheMoneyOnly->setChecked(filter.outOfTheMoneyOnly);
    checkValue(*m_sides, int(filter.side));
    if (QAction* const checked = m_deviations->checkedAction())
        checked->setChecked(false);
    checkValue(*m_deviations, filter.deviations);
}
